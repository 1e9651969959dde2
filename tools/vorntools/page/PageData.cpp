#include "tools/vorntools/page/PageData.h"

#include "tools/vorntools/Text.h"
#include "tools/vorntools/archive/Orphans.h"
#include "tools/vorntools/archive/Paths.h"

#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace {

/** JSON on its way to a stream, which takes it in large pieces, the last one by flush(). */
class JsonStream {
public:
    explicit JsonStream(std::ostream& stream) : m_stream(stream) {}

    JsonStream& operator<<(std::string_view json) {
        m_text += json;
        if (m_text.size() >= kWrittenAtOnce) flush();
        return *this;
    }
    JsonStream& operator<<(char json) {
        m_text += json;
        return *this;
    }
    template <class Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
    JsonStream& operator<<(Number number) {
        std::array<char, 24> digits{};
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }
    /** A text of any bytes, between quotation marks. */
    void text(std::string_view bytes) {
        m_text += '"';
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t begin = at;
            while (at < bytes.size() && isPlainLetter(bytes[at]) && !isEscaped(bytes[at])) ++at;
            m_text += bytes.substr(begin, at - begin);
            if (at == bytes.size()) break;
            if (bytes[at] == '<')
                m_text += "\\u003c";
            else if (isEscaped(bytes[at]))
                (m_text += '\\') += bytes[at];
            at += isEscaped(bytes[at]) ? 1 : appendPrintable(bytes, at, m_text);
        }
        *this << std::string_view("\"");
    }
    void flush() {
        m_stream.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
        m_text.clear();
    }

private:
    static constexpr std::size_t kWrittenAtOnce = std::size_t(1) << 16U;

    static bool isEscaped(char letter) { return letter == '"' || letter == '\\' || letter == '<'; }

    std::ostream& m_stream;
    std::string m_text;
};

/** Texts that recur, numbered in the order in which they first appear. */
template <class Value>
class Numbered {
public:
    std::size_t numberOf(const Value& value) {
        const auto [place, isNew] = m_numbers.emplace(value, m_numbers.size());
        if (isNew) m_values.push_back(&place->first);
        return place->second;
    }
    const std::vector<const Value*>& values() const { return m_values; }

private:
    std::map<Value, std::size_t> m_numbers;
    std::vector<const Value*> m_values;
};

class PageWriter {
public:
    PageWriter(std::ostream& stream, const Archive& archive, const std::vector<Index>& listed,
               const std::vector<DuplicateGroup>& duplicates)
        : m_stream(stream), m_archive(archive), m_listed(listed), m_duplicates(duplicates),
          m_nodes(archive.documents().size(), kNoIndex) {
        for (std::size_t i = 0; i < listed.size(); ++i) m_nodes[listed[i]] = static_cast<Index>(i);
        for (Index document = 0; document < m_nodes.size(); ++document)
            if (m_nodes[document] == kNoIndex) {
                m_nodes[document] = static_cast<Index>(listed.size() + m_elsewhere.size());
                m_elsewhere.push_back(document);
            }
    }

    void write(const PageOrigin& origin) {
        m_stream << "{\"format\":1,\"program\":\"vorntools " VORNTOOLS_VERSION "\"";
        member("looked_at", origin.lookedAt, [this](const std::string& name) { text(name); });
        const long long tenths = std::llround(origin.seconds * 10);
        m_stream << ",\"date\":\"" << origin.date << "\",\"seconds\":" << tenths / 10 << '.' << tenths % 10;
        member("complaints", origin.complaints, [this](const std::string& complaint) { text(complaint); });
        names();
        states();
        findings();
        links();
        others();
        duplicates();
        orphans();
        m_stream << "}\n";
        m_stream.flush();
    }

private:
    void text(std::string_view bytes) { m_stream.text(bytes); }
    template <class List, class Write>
    void array(const List& list, const Write& write) {
        m_stream << '[';
        bool isFirst = true;
        for (const auto& element : list) {
            if (!isFirst) m_stream << ',';
            isFirst = false;
            write(element);
        }
        m_stream << ']';
    }
    template <class List, class Write>
    void member(const char* name, const List& list, const Write& write) {
        m_stream << ",\"" << name << "\":";
        array(list, write);
    }
    /** A row for each document of the list. */
    template <class Write>
    void column(const char* name, const Write& write) {
        member(name, m_listed, [&](Index document) { write(m_archive.document(document)); });
    }
    template <class List>
    void numbers(const char* name, const List& list) {
        member(name, list, [this](auto number) { m_stream << number; });
    }
    void texts(const char* name, const Numbered<std::string>& values) {
        member(name, values.values(), [this](const std::string* value) { text(*value); });
    }

    /** Folders, and how many documents of the list each of them has: neighbours share one. */
    void names() {
        std::vector<std::string> folders;
        std::vector<std::size_t> counts;
        for (const Index document : m_listed) {
            const std::string_view name = m_archive.text(m_archive.document(document).name);
            const std::string_view folder = name.substr(0, name.size() - lastName(name).size());
            if (folders.empty() || folders.back() != folder) {
                folders.emplace_back(folder);
                counts.push_back(0);
            }
            ++counts.back();
        }
        member("folders", folders, [this](const std::string& folder) { text(folder); });
        numbers("in_folder", counts);
        column("name", [this](const ArchiveDocument& document) { text(lastName(m_archive.text(document.name))); });
    }

    void states() {
        Numbered<std::pair<Index, Index>> states;
        Numbered<std::string> versions, loadTypes;
        column("state", [&](const ArchiveDocument& document) {
            m_stream << states.numberOf({document.status, document.reason});
        });
        column("version", [&](const ArchiveDocument& document) { m_stream << versions.numberOf(versionOf(document)); });
        column("load_type", [&](const ArchiveDocument& document) {
            m_stream << loadTypes.numberOf(std::string(m_archive.text(document.loadType)));
        });
        member("states", states.values(), [this](const std::pair<Index, Index>* state) {
            array(std::initializer_list<Index>{state->first, state->second},
                  [this](Index number) { text(m_archive.text(number)); });
        });
        texts("versions", versions);
        texts("load_types", loadTypes);
        column("size", [this](const ArchiveDocument& document) { m_stream << document.size; });
        column("changed", [this](const ArchiveDocument& document) { m_stream << document.modified; });
        const auto textColumn = [this](const char* name, Index ArchiveDocument::*field) {
            column(name, [=](const ArchiveDocument& document) { text(m_archive.text(document.*field)); });
        };
        textColumn("item_revision", &ArchiveDocument::itemRevision);
        textColumn("dataset", &ArchiveDocument::dataset);
        textColumn("named_reference", &ArchiveDocument::namedReference);
    }
    static std::string versionOf(const ArchiveDocument& document) {
        if (document.version == 0) return {};
        return "V" + std::to_string(document.version) + " R" + std::to_string(document.release) + " SP" +
               std::to_string(document.servicePack);
    }

    void findings() {
        const auto those = [this](bool ArchiveDocument::*flag, bool value) {
            std::vector<std::size_t> places;
            for (std::size_t i = 0; i < m_listed.size(); ++i)
                if (m_archive.document(m_listed[i]).*flag == value) places.push_back(i);
            return places;
        };
        numbers("unread", those(&ArchiveDocument::isUnreadable, true));
        numbers("gone", those(&ArchiveDocument::exists, false));
        std::vector<std::size_t> of;
        std::vector<std::string> words;
        std::vector<int> finding;
        for (std::size_t i = 0; i < m_listed.size(); ++i) {
            const ArchiveDocument& document = m_archive.document(m_listed[i]);
            const std::string_view condition = m_archive.text(document.condition);
            if (!document.isDamaged && condition != "empty") continue;
            of.push_back(i);
            words.emplace_back(condition);
            finding.push_back(document.isDamaged ? 1 : 0);
        }
        sparse("condition", of, words);
        numbers("condition_finding", finding);
        notes();
        ghosts();
    }
    void sparse(const char* name, const std::vector<std::size_t>& of, const std::vector<std::string>& words) {
        m_stream << ",\"" << name << "\":{\"of\":";
        array(of, [this](std::size_t place) { m_stream << place; });
        member("text", words, [this](const std::string& word) { text(word); });
        m_stream << '}';
    }

    static std::string wordsFor(LinkDifference::Kind kind) {
        if (kind == LinkDifference::OnlyRecorded) return "the DAT file names it, the document does not: ";
        if (kind == LinkDifference::OnlyInDocument) return "the document names it, its DAT file does not: ";
        return "the PDM could not resolve it, and it is there: ";
    }
    /** Where document and DAT file differ. */
    void notes() {
        std::vector<std::size_t> of;
        std::vector<std::string> words;
        for (std::size_t i = 0; i < m_listed.size(); ++i) {
            const ArchiveDocument& document = m_archive.document(m_listed[i]);
            const auto add = [&](std::string word) {
                of.push_back(i);
                words.push_back(std::move(word));
            };
            if (document.unresolved > 0)
                add("links that the PDM could not resolve: " + std::to_string(document.unresolved));
            for (const ArchiveDifference& difference : m_archive.differencesOf(m_listed[i]))
                add(wordsFor(difference.kind) + std::string(m_archive.text(difference.name)));
        }
        sparse("notes", of, words);
    }

    void ghosts() {
        std::vector<std::size_t> of;
        std::vector<const Ghost*> all;
        for (std::size_t i = 0; i < m_listed.size(); ++i)
            for (const Ghost& ghost : m_archive.ghostsOf(m_listed[i])) {
                of.push_back(i);
                all.push_back(&ghost);
            }
        m_stream << ",\"ghosts\":{\"of\":";
        array(of, [this](std::size_t place) { m_stream << place; });
        member("name", all, [this](const Ghost* ghost) { text(m_archive.text(ghost->name)); });
        member("live", all, [this](const Ghost* ghost) { m_stream << (ghost->isLive ? 1 : 0); });
        m_stream << '}';
    }

    /** On the page first the documents of the list, then files elsewhere, then what is missing. */
    std::size_t nodeOf(const ArchiveLink& link) const {
        if (link.target != kNoIndex) return m_nodes[link.target];
        return m_listed.size() + m_elsewhere.size() + link.missing;
    }
    std::string kindsOf(const ArchiveLink& link) const {
        std::string kinds;
        std::set<Index> seen;
        for (const LinkElement& element : m_archive.elementsOf(link))
            if (seen.insert(element.kind).second)
                kinds.append(kinds.empty() ? "" : ", ").append(m_archive.text(element.kind));
        return kinds;
    }
    /** Files of one name among which the target was found by its name; 0: there was no choice. */
    std::size_t chosenAmong(const ArchiveLink& link) const {
        const std::size_t count = link.rule == LinkRule::ByName ? m_archive.countOfName(link.target) : 0;
        return count > 1 ? count : 0;
    }
    void links() {
        Numbered<std::tuple<std::string, const char*, int, std::size_t>> hows;
        m_stream << ",\"links\":{\"count\":";
        array(m_listed, [this](Index document) { m_stream << m_archive.linksOf(document).size(); });
        const char* between = "";
        m_stream << ",\"to\":[";
        for (const Index document : m_listed)
            for (const ArchiveLink& link : m_archive.linksOf(document)) {
                m_stream << between << nodeOf(link);
                between = ",";
            }
        between = "";
        m_stream << "],\"how\":[";
        for (const Index document : m_listed)
            for (const ArchiveLink& link : m_archive.linksOf(document)) {
                m_stream << between
                         << hows.numberOf({kindsOf(link), ruleName(link.rule), link.uses, chosenAmong(link)});
                between = ",";
            }
        m_stream << "]}";
        member("hows", hows.values(), [this](const auto* how) {
            const auto& [kinds, rule, uses, among] = *how;
            m_stream << '[';
            text(kinds);
            m_stream << ",\"" << rule << "\"," << uses << ',' << among << ']';
        });
    }

    void others() {
        std::vector<std::string_view> names;
        std::vector<std::size_t> there, counts(m_elsewhere.size(), 0), totals = counts, to, agree;
        for (const Index document : m_elsewhere) {
            if (m_archive.document(document).exists) there.push_back(names.size());
            names.push_back(m_archive.text(m_archive.document(document).name));
        }
        for (const MissingTarget& missing : m_archive.missing()) {
            const Candidates candidates = m_archive.candidatesOf(missing);
            names.push_back(m_archive.text(missing.stored));
            counts.push_back(candidates.nearest.size());
            totals.push_back(candidates.count);
            for (const Candidate& candidate : candidates.nearest) {
                to.push_back(m_nodes[candidate.file]);
                agree.push_back(candidate.agreeing);
            }
        }
        m_stream << ",\"others\":{\"name\":";
        array(names, [this](std::string_view name) { text(name); });
        numbers("there", there);
        numbers("count", counts);
        numbers("total", totals);
        numbers("to", to);
        numbers("agree", agree);
        m_stream << '}';
    }

    void duplicates() {
        std::vector<std::pair<std::string, std::vector<std::size_t>>> groups;
        for (const DuplicateGroup& group : m_duplicates) {
            std::vector<std::size_t> places;
            for (const Duplicate& duplicate : group.documents)
                if (m_nodes[duplicate.document] < m_listed.size()) places.push_back(m_nodes[duplicate.document]);
            if (places.size() > 1) groups.emplace_back(relationName(group.relation), std::move(places));
        }
        member("duplicates", groups, [this](const auto& group) {
            m_stream << "[\"" << group.first << "\",";
            array(group.second, [this](std::size_t place) { m_stream << place; });
            m_stream << ']';
        });
    }

    /** Documents that nobody points to, but for those that are made for that. */
    void orphans() {
        std::vector<std::size_t> places;
        for (const Orphan& orphan : findOrphans(m_archive))
            if (!orphan.isTop() && m_nodes[orphan.document] < m_listed.size())
                places.push_back(m_nodes[orphan.document]);
        numbers("orphans", places);
    }

    JsonStream m_stream;
    const Archive& m_archive;
    const std::vector<Index>& m_listed;
    const std::vector<DuplicateGroup>& m_duplicates;
    std::vector<Index> m_nodes;     ///< numbers on the page, by document of the archive
    std::vector<Index> m_elsewhere; ///< documents of the archive that are not in the list
};

} // namespace

std::vector<Index> listedOf(const Archive& archive) {
    std::vector<Index> listed;
    for (Index document = 0; document < archive.documents().size(); ++document)
        if (archive.document(document).role == ArchiveDocument::Walked) listed.push_back(document);
    return listed;
}

void writePageData(std::ostream& stream, const Archive& archive, const std::vector<Index>& listed,
                   const std::vector<DuplicateGroup>& duplicates, const PageOrigin& origin) {
    PageWriter(stream, archive, listed, duplicates).write(origin);
}
