#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/ArchiveOutput.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>

namespace {

struct LinksOptions {
    CommonOptions common;
    std::string type;
    bool dot = false;
    bool ghosts = false;
    bool missing = false;
};

/** What was looked at so far. */
struct Summary {
    std::size_t documents = 0, found = 0, missing = 0, damaged = 0, unreadable = 0;
    std::size_t findings = 0; ///< documents that somebody has to look at

    void add(const Summary& other) {
        documents += other.documents;
        found += other.found;
        missing += other.missing;
        damaged += other.damaged;
        unreadable += other.unreadable;
        findings += other.findings;
    }
    void say() const {
        summarize(std::to_string(documents) + (documents == 1 ? " document, " : " documents, ") +
                  std::to_string(found + missing) + (found + missing == 1 ? " link: " : " links: ") +
                  std::to_string(found) + " found, " + std::to_string(missing) + " missing; " +
                  std::to_string(damaged) + " damaged" +
                  (unreadable > 0 ? ", " + std::to_string(unreadable) + " unreadable" : ""));
    }
};

template <class Move>
void transfer(Move& move, Summary& summary) {
    move(summary.documents, summary.found, summary.missing, summary.damaged, summary.unreadable, summary.findings);
}

/** How a full name is written, and which files there are. */
struct Surroundings {
    std::function<std::string(const std::string&)> asGiven;
    std::function<std::vector<std::string>()> files; ///< full names of all that were walked
};

/** The files that were walked, by their names. Put in order when something is missing or was chosen among several. */
class WalkedFiles {
public:
    explicit WalkedFiles(const Surroundings& surroundings) : m_surroundings(surroundings) {}

    /** @param document full name of the one that has the target */
    ShownTarget shown(Target target, const std::string& document) {
        ShownTarget result;
        if (target.isMissing()) {
            result.name = target.stored;
            result.candidates = ::shown(index().candidates(target.stored, document),
                                        [this](Index file) { return m_surroundings.asGiven(m_files[file]); });
        } else {
            result.name = m_surroundings.asGiven(target.found);
            const std::size_t count = target.rule == LinkRule::ByName ? index().count(target.found) : 0;
            result.chosenAmong = count > 1 ? count : 0;
        }
        result.target = std::move(target);
        return result;
    }

private:
    const NameIndex& index() {
        if (m_index) return *m_index;
        m_index.emplace();
        m_files = m_surroundings.files();
        for (std::size_t i = 0; i < m_files.size(); ++i) m_index->add(m_files[i], static_cast<Index>(i));
        m_index->sort();
        return *m_index;
    }

    const Surroundings& m_surroundings;
    std::vector<std::string> m_files;
    std::optional<NameIndex> m_index;
};

/** What a document points to, with its names as the command line writes them. */
class Listed {
public:
    Listed(const Surroundings& surroundings, WalkedFiles& files, const std::string& document, DocumentLinks links,
           const LinksOptions& options)
        : m_surroundings(surroundings), m_options(options), m_document(surroundings.asGiven(document)),
          m_links(std::move(links)) {
        for (Target& target : targetsOf(m_links, document))
            m_targets.push_back(files.shown(std::move(target), document));
    }

    /** What is printed. */
    std::string text() const {
        if (m_options.common.json) return json().dump() + "\n";
        if (!m_links.read) return {};
        return m_options.dot ? dot() : table();
    }
    /** What is said besides; empty for nothing. */
    std::string complaint() const {
        return m_links.read || m_options.common.json ? std::string() : m_document + " cannot be read";
    }
    void addTo(Summary& summary) const {
        ++summary.documents;
        summary.unreadable += m_links.read ? 0 : 1;
        summary.damaged += m_links.condition.isFinding ? 1 : 0;
        for (const ShownTarget& target : m_targets) ++(target.target.isMissing() ? summary.missing : summary.found);
        summary.findings += m_links.anyMissing() || m_links.condition.isFinding ? 1 : 0;
    }

private:
    Json json() const;
    Json jsonOf(const std::vector<NamedDocument>& documents) const;
    Json jsonOf(const OtherNamed& other) const;
    Json jsonOf(const TypedLink& link) const;
    std::vector<std::string> liveGhosts() const;
    void addRows(const ShownTarget& target, Table& table) const;
    void addReferences(Table& table) const;
    std::string table() const;
    std::string dot() const;

    const Surroundings& m_surroundings;
    const LinksOptions& m_options;
    const std::string m_document;
    const DocumentLinks m_links;
    std::vector<ShownTarget> m_targets;
};

Json Listed::jsonOf(const std::vector<NamedDocument>& documents) const {
    Json array = Json::array();
    for (const NamedDocument& document : documents)
        array.push_back(Json::object({{"name", m_surroundings.asGiven(document.name)}, {"exists", document.exists}}));
    return array;
}

Json Listed::jsonOf(const OtherNamed& other) const {
    return Json::object({{"kind", other.kind},
                         {"name", m_surroundings.asGiven(other.document.name)},
                         {"exists", other.document.exists},
                         {"uses", other.uses}});
}

/** A link that says only which element it means has no document that could be there or not. */
Json Listed::jsonOf(const TypedLink& link) const {
    const bool named = !link.document.name.empty();
    return Json::object({{"type", link.type},
                         {"name", named ? Json(m_surroundings.asGiven(link.document.name)) : Json()},
                         {"exists", named ? Json(link.document.exists) : Json()},
                         {"reference", link.reference},
                         {"tag_found", link.tagFound}});
}

Json Listed::json() const {
    if (!m_links.read) return Json::object({{"document", m_document}, {"error", "cannot be read"}});
    Json links = Json::array();
    for (const TypedLink& link : m_links.links) links.push_back(jsonOf(link));
    Json others = Json::array();
    for (const OtherNamed& other : m_links.others) others.push_back(jsonOf(other));
    Json object = Json::object({{"document", m_document},
                                {"condition", m_links.condition.json()},
                                {"version", Json::array({m_links.version, m_links.release, m_links.servicePack})},
                                {"part_files", jsonOf(m_links.partFiles)},
                                {"context_products", jsonOf(m_links.contextProducts)},
                                {"context_parts", jsonOf(m_links.contextParts)},
                                {"other_documents", others},
                                {"external_references", m_links.externalReferences},
                                {"links", links}});
    Json targets = Json::array();
    for (const ShownTarget& target : m_targets) {
        Json row = Json::object({{"name", target.name}, {"exists", !target.target.isMissing()}});
        target.addTo(row);
        targets.push_back(std::move(row));
    }
    object.add("targets", targets);
    if (!m_options.ghosts) return object;
    object.add("ghosts", m_links.ghosts);
    object.add("live_ghosts", liveGhosts());
    return object;
}

/** Those whose last name is that of a target as well. */
std::vector<std::string> Listed::liveGhosts() const {
    std::unordered_set<std::string> names;
    for (const ShownTarget& target : m_targets) names.insert(folded(lastName(target.target.stored)));
    std::vector<std::string> live;
    for (const std::string& ghost : m_links.ghosts)
        if (names.count(folded(lastName(ghost))) > 0) live.push_back(ghost);
    return live;
}

void Listed::addRows(const ShownTarget& target, Table& table) const {
    const bool isMissing = target.target.isMissing();
    table.add({isMissing ? "missing" : "", target.kindsText(), std::to_string(target.target.uses), target.name,
               target.ruleText(), isMissing || target.target.rule == LinkRule::AsStored ? "" : target.target.stored,
               target.elementsText()},
              isMissing ? Tone::alarm : Tone::plain);
    for (const ShownCandidate& candidate : target.candidates.nearest)
        table.add({"", "perhaps", "", candidate.name, candidate.agreement(), "", ""});
    if (!target.candidates.rest().empty()) table.add({"", "", "", target.candidates.rest(), "", "", ""});
}

/** Links that mean an element and name no document. */
void Listed::addReferences(Table& table) const {
    for (const TypedLink& link : m_links.links)
        if (link.document.name.empty()) table.add({"", link.type, "", "", "", "", link.reference});
}

std::string Listed::table() const {
    const std::string heading = printable(m_document) + "  V" + std::to_string(m_links.version) + " R" +
                                std::to_string(m_links.release) + " SP" + std::to_string(m_links.servicePack) +
                                (m_links.condition.isTold() ? "  " + m_links.condition.text : "") + "\n";
    Table table({{""},
                 {"LINK"},
                 {"USES", Table::Kind::number},
                 {"DOCUMENT", Table::Kind::path},
                 {"FOUND"},
                 {"STORED AS"},
                 {"ELEMENT"}});
    for (const ShownTarget& target : m_targets) addRows(target, table);
    addReferences(table);
    if (m_options.ghosts) {
        const std::vector<std::string> live = liveGhosts();
        const std::unordered_set<std::string> names(live.begin(), live.end());
        for (const std::string& ghost : m_links.ghosts)
            table.add({"unused", "ghost", "0", ghost, names.count(ghost) > 0 ? "name in use" : "", "", ""});
    }
    return heading + table.text() + "\n";
}

/** Edges to every document once, those to missing ones dashed; as text for Graphviz. */
std::string Listed::dot() const {
    const std::string source = dotQuoted(m_document);
    std::string lines = "  " + source + ";\n";
    for (const ShownTarget& target : m_targets) {
        const std::string name = dotQuoted(target.name);
        const std::string style = target.target.isMissing() ? " [color=red, style=dashed]" : "";
        const std::string end = name + style + ";\n";
        if (target.target.isMissing()) (lines += "  ") += end;
        (((lines += "  ") += source) += " -> ") += end;
    }
    return lines;
}

/** What one missing target is to those that want it. */
void printMissing(const Archive& archive, const MissingTarget& missing, bool json) {
    const std::string name(archive.text(missing.stored));
    const ShownCandidates candidates = shown(archive, archive.candidatesOf(missing));
    if (!json) {
        print(printable(name) + "\n");
        for (const Index link : archive.linksTo(missing))
            print("  wanted by  " + printable(archive.nameOf(archive.links()[link].from)) + "\n");
        for (const ShownCandidate& candidate : candidates.nearest) {
            const std::string agreement = candidate.agreement().empty() ? "" : "  (" + candidate.agreement() + ")";
            print("  perhaps    " + printable(candidate.name) + agreement + "\n");
        }
        if (!candidates.rest().empty()) print("             " + candidates.rest() + "\n");
        return;
    }
    Json wantedBy = Json::array();
    for (const Index number : archive.linksTo(missing)) {
        const ArchiveLink& link = archive.links()[number];
        wantedBy.push_back(Json::object(
            {{"document", archive.nameOf(link.from)}, {"uses", link.uses}, {"kinds", kindsOf(archive, link)}}));
    }
    Json object = Json::object({{"missing", name}, {"wanted_by", wantedBy}});
    candidates.addTo(object);
    printJson(object);
}

/** @return false, said on standard error, when not all can be read */
bool fillWithLinks(Archive& archive, const LinksOptions& options, JournalFile& journal) {
    if (!options.common.catalogues.empty()) {
        CatalogueSet catalogues(options.common.catalogues);
        catalogues.fill(archive);
        return catalogues.isComplete();
    }
    ArchiveReader::What what;
    what.linkType = options.type;
    what.jobs = options.common.jobs;
    ArchiveReader reader(archive, journal, what);
    const bool complete = reader.walk(options.common.names, options.common.excluded);
    reader.readAll();
    reader.finish();
    return complete;
}

/** The list turned round: each missing document with those that want it, the most wanted first. */
int runMissing(const LinksOptions& options) {
    JournalFile journal(options.common.journal);
    Archive archive;
    bool usable = fillWithLinks(archive, options, journal);
    Summary summary;
    for (Index i = 0; i < archive.documents().size(); ++i) {
        const ArchiveDocument& document = archive.document(i);
        if (document.isUnreadable) complain(archive.nameOf(i) + " cannot be read");
        summary.documents += document.hasLinks || document.isUnreadable ? 1 : 0;
        summary.unreadable += document.isUnreadable ? 1 : 0;
        summary.damaged += document.isDamaged ? 1 : 0;
    }
    for (const ArchiveLink& link : archive.links()) ++(link.target == kNoIndex ? summary.missing : summary.found);
    std::vector<const MissingTarget*> missing;
    for (const MissingTarget& target : archive.missing()) missing.push_back(&target);
    std::stable_sort(missing.begin(), missing.end(), [&](const MissingTarget* a, const MissingTarget* b) {
        return archive.linksTo(*a).size() > archive.linksTo(*b).size();
    });
    for (const MissingTarget* const target : missing) printMissing(archive, *target, options.common.json);
    if (!options.common.json) summary.say();
    if (!journal.finish() || !usable || summary.unreadable > 0) return ExitUnusable;
    return summary.missing + summary.damaged > 0 ? ExitFindings : ExitFine;
}

/** What is shown of one document. */
struct LinksAnswer {
    std::string text, complaint;
    Summary summary;
    std::string journal; ///< what the library told meanwhile
};

template <class Move>
void transfer(Move& move, LinksAnswer& answer) {
    move(answer.text, answer.complaint, answer.summary, answer.journal);
}

/** Shows one document after the other and counts what they amount to. */
class LinksListing {
public:
    LinksListing(const Surroundings& surroundings, const LinksOptions& options)
        : m_surroundings(surroundings), m_options(options), m_files(surroundings) {
        if (options.dot) print("digraph links {\n  rankdir=LR;\n  node [shape=box];\n");
    }

    /** Works out what is shown of one document. */
    LinksAnswer answer(const std::string& document, DocumentLinks links) {
        const Listed listed(m_surroundings, m_files, document, std::move(links), m_options);
        LinksAnswer answer = {listed.text(), listed.complaint(), {}, {}};
        listed.addTo(answer.summary);
        return answer;
    }
    void add(const LinksAnswer& answer) {
        print(answer.text);
        if (!answer.complaint.empty()) complain(answer.complaint);
        m_summary.add(answer.summary);
    }
    ExitCode finish() const {
        if (m_options.dot)
            print("}\n");
        else if (!m_options.common.json)
            m_summary.say();
        if (m_summary.unreadable > 0) return ExitUnusable;
        return m_summary.findings > 0 ? ExitFindings : ExitFine;
    }

private:
    const Surroundings& m_surroundings;
    const LinksOptions& m_options;
    WalkedFiles m_files;
    Summary m_summary;
};

int listFolders(const LinksOptions& options) {
    JournalFile journal(options.common.journal);
    DocumentSearch search(!options.dot);
    const bool complete = options.common.search(search);
    const std::vector<std::string> documents = documentsOf(search, options.common.names);
    const Surroundings surroundings = {[&](const std::string& name) { return search.asGiven(name); },
                                       [&] {
                                           std::vector<std::string> files;
                                           for (const FoundDocument& found : search.found())
                                               if (found.exists) files.push_back(found.fullName);
                                           files.insert(files.end(), search.others().begin(), search.others().end());
                                           return files;
                                       }};
    journal.take(); // what came before is told once
    LinkMemory memory;
    LinksListing listing(surroundings, options);
    {
        const std::size_t processes = processesFor(options.common.jobs, documents.size());
        Turns<LinksAnswer> answers(documents.size(), processes, [&](std::size_t i) {
            LinksAnswer answer = listing.answer(documents[i], readDocumentLinks(documents[i], options.type, memory));
            answer.journal = journal.takeLines();
            return answer;
        });
        Progress progress(documents.size(), "documents");
        for (std::size_t i = 0; i < documents.size(); ++i) {
            const LinksAnswer answer = answers.next();
            journal.add(answer.journal);
            listing.add(answer);
            progress.step();
        }
    }
    const ExitCode code = listing.finish();
    return journal.finish() && complete ? code : ExitUnusable;
}

int listCatalogues(const LinksOptions& options) {
    CatalogueSet catalogues(options.common.catalogues);
    const Surroundings surroundings = {[](const std::string& name) { return name; },
                                       [&] { return catalogues.walkedFiles(); }};
    LinksListing listing(surroundings, options);
    catalogues.forEach([&](const DocumentFacts& facts) {
        if (facts.links) listing.add(listing.answer(facts.found.fullName, *facts.links));
    });
    const ExitCode code = listing.finish();
    return catalogues.isComplete() ? code : ExitUnusable;
}

int runLinks(LinksOptions& options) {
    if (!options.common.completeNames() || !options.common.loadSession()) return ExitUnusable;
    if (options.missing) return runMissing(options);
    return options.common.catalogues.empty() ? listFolders(options) : listCatalogues(options);
}

} // namespace

void addLinksCommand(Command& program) {
    const auto options = std::make_shared<LinksOptions>();
    Command& command = program.command("links", "What each document points to, where it is found, what is missing",
                                       [options] { return runLinks(*options); });
    options->common.addNamesTo(command, "file", "Documents, and folders searched with all below them");
    command
        .value("--type", "TYPE",
               "Typed links to list: MML, MMLASSY, MMLDrawing (by default all, of a drawing MMLDrawing)",
               &options->type)
        .oneOf({"MML", "MMLASSY", "MMLDrawing"});
    command.flag("--dot", "A graph for Graphviz instead of tables", options->dot).excludes("--json");
    command
        .flag("--missing",
              "What is missing, who wants it, and which files have its name, instead of each document's links",
              options->missing)
        .excludes("--dot");
    command.flag("--ghosts", "Also documents that the file names but nothing uses any more", options->ghosts);
    options->common.addJobsTo(command);
    options->common.addTo(command);
    options->common.addCatalogueTo(command).excludes("--type");
}
