#include "tools/vorntools/archive/Duplicates.h"

#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/DocumentPacket.h"
#include "tools/vorntools/archive/FileContent.h"
#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace {

/** Bytes of files that are kept to be compared with others. */
constexpr std::size_t kMostKept = std::size_t(1) << 26U;

struct How {
    Evidence evidence;
    std::size_t mostKept; ///< as ContentComparison takes it
};

/** Sorts the documents of one group by what they hold. */
class Comparison {
public:
    Comparison(const Archive& archive, std::vector<Duplicate>& documents, const How& how)
        : m_archive(archive), m_documents(documents), m_how(how) {}

    void run() {
        // Whoever is alone with size and last save needs not be read.
        std::map<std::pair<std::uint64_t, Index>, Alike> alike;
        for (Duplicate& document : m_documents) {
            const ArchiveDocument& row = m_archive.document(document.document);
            alike[{row.size, row.save}].push_back(&document);
        }
        for (auto& [key, documents] : alike) compare(documents);
        numberOrigins();
        renumber(&Duplicate::content);
        renumber(&Duplicate::origin);
    }

    /** Whether what counts as one content has been seen to hold the same bytes. */
    bool hasComparedAll() const { return m_hasComparedAll; }

private:
    /** What may hold the same bytes. */
    using Alike = std::vector<Duplicate*>;

    std::string fileOf(const Duplicate& document) const {
        return std::string(m_archive.text(m_archive.document(document.document).fullName));
    }
    Index checksumOf(const Duplicate& document) const { return m_archive.document(document.document).checksum; }

    void compare(const Alike& documents) {
        const auto isKnown = [this](const Duplicate* document) { return checksumOf(*document) != 0; };
        if (documents.size() == 1)
            setContent(*documents.front(), true);
        else if (std::any_of(documents.begin(), documents.end(), isKnown))
            compareChecksums(documents);
        else if (m_how.evidence == Evidence::Save && m_archive.document(documents.front()->document).save != 0)
            believeSave(documents);
        else
            compareBytes(documents);
    }

    void believeSave(const Alike& documents) {
        m_hasComparedAll = false;
        for (Duplicate* const document : documents)
            setContent(*document, document == documents.front(), documents.front());
    }

    void compareBytes(const Alike& documents) {
        ContentComparison comparison(m_how.mostKept);
        std::vector<const Duplicate*> first; ///< of each content
        for (Duplicate* const document : documents) {
            const std::optional<std::size_t> content = comparison.add(fileOf(*document));
            const bool isFirst = !content || *content == first.size();
            if (content && isFirst) first.push_back(document);
            document->isUnread = !content;
            setContent(*document, isFirst, isFirst ? nullptr : first[*content]);
        }
    }

    void compareChecksums(const Alike& documents) {
        std::map<std::string, const Duplicate*> first;
        for (Duplicate* const document : documents) {
            const Index known = checksumOf(*document);
            const std::string sum = known != 0 ? std::string(m_archive.text(known)) : sha256Of(fileOf(*document));
            const auto added = first.emplace(sum, document);
            document->isUnread = sum.empty();
            const bool isFirst = sum.empty() || added.second;
            setContent(*document, isFirst, isFirst ? nullptr : added.first->second);
        }
    }

    /** @param same a document of the same bytes, which has the same identity */
    void setContent(Duplicate& document, bool isNew, const Duplicate* same = nullptr) {
        document.content = isNew ? ++m_contents : same->content;
        document.identity = isNew ? identityOf(document) : same->identity;
    }

    DocumentIdentity identityOf(const Duplicate& document) const {
        const ArchiveDocument& row = m_archive.document(document.document);
        const auto text = [&](Index at) { return std::string(m_archive.text(at)); };
        if (!row.hasIdentity) return readIdentity(text(row.fullName));
        return {text(row.uuid), text(row.save), text(row.saved)};
    }

    /** Documents of the same bytes have the same identity, if any. */
    void numberOrigins() {
        std::map<std::pair<std::string, unsigned int>, unsigned int> origins;
        for (Duplicate& document : m_documents) {
            const std::string& uuid = document.identity.uuid;
            const auto origin = origins.emplace(std::make_pair(uuid, uuid.empty() ? document.content : 0),
                                                static_cast<unsigned int>(origins.size() + 1));
            document.origin = origin.first->second;
        }
    }

    /** From 1, in the order in which the documents stand. */
    void renumber(unsigned int Duplicate::*number) {
        std::map<unsigned int, unsigned int> numbers;
        for (Duplicate& document : m_documents)
            document.*number =
                numbers.emplace(document.*number, static_cast<unsigned int>(numbers.size() + 1)).first->second;
    }

    const Archive& m_archive;
    std::vector<Duplicate>& m_documents;
    const How m_how;
    unsigned int m_contents = 0;
    bool m_hasComparedAll = true;
};

DuplicateGroup::Relation relationOf(const std::vector<Duplicate>& documents, bool hasComparedAll) {
    unsigned int contents = 0, origins = 0;
    for (const Duplicate& document : documents) {
        contents = std::max(contents, document.content);
        origins = std::max(origins, document.origin);
    }
    if (contents == 1) return hasComparedAll ? DuplicateGroup::SameBytes : DuplicateGroup::SameSave;
    if (origins == 1) return DuplicateGroup::SavedApart;
    return origins == documents.size() ? DuplicateGroup::Strangers : DuplicateGroup::Mixed;
}

DuplicateGroup groupOf(const Archive& archive, const Rows<Index>& files, const How& how) {
    DuplicateGroup group;
    for (const Index file : files) {
        const std::string_view fullName = archive.text(archive.document(file).fullName);
        if (group.name.empty()) group.name = lastName(fullName);
        group.documents.emplace_back();
        group.documents.back().document = file;
    }
    Comparison comparison(archive, group.documents, how);
    comparison.run();
    group.relation = relationOf(group.documents, comparison.hasComparedAll());
    return group;
}

} // namespace

template <class Move>
void transfer(Move& move, Duplicate& document) {
    move(document.document, document.identity, document.content, document.isUnread, document.origin);
}

template <class Move>
void transfer(Move& move, DuplicateGroup& group) {
    move(group.name, group.relation, group.documents);
}

namespace {

/** One group, as the process has it that compares it. */
struct ComparedGroup {
    DuplicateGroup group;
    std::string journal; ///< what the library told meanwhile
};

template <class Move>
void transfer(Move& move, ComparedGroup& answer) {
    move(answer.group, answer.journal);
}

} // namespace

const char* relationName(DuplicateGroup::Relation relation) {
    switch (relation) {
    case DuplicateGroup::SameBytes: return "same bytes";
    case DuplicateGroup::SameSave: return "same save";
    case DuplicateGroup::SavedApart: return "saved apart";
    case DuplicateGroup::Strangers: return "strangers";
    case DuplicateGroup::Mixed: break;
    }
    return "mixed";
}

std::vector<DuplicateGroup> findDuplicates(const Archive& archive, Evidence evidence, int jobs, JournalFile& journal) {
    const std::vector<Rows<Index>> names = archive.sameNames();
    std::size_t documents = 0;
    for (const Rows<Index>& files : names) documents += files.size();
    const std::size_t processes = std::min(processesFor(jobs, documents), std::max<std::size_t>(names.size(), 1));
    journal.take(); // what came before is told once
    Turns<ComparedGroup> answers(names.size(), processes, [&](std::size_t i) {
        ComparedGroup answer = {groupOf(archive, names[i], {evidence, kMostKept / processes}), {}};
        answer.journal = journal.takeLines();
        return answer;
    });
    std::vector<DuplicateGroup> groups;
    for (std::size_t i = 0; i < names.size(); ++i) {
        ComparedGroup answer = answers.next();
        journal.add(answer.journal);
        groups.push_back(std::move(answer.group));
    }
    return groups;
}
