// The commands uses and used-by: one tree, read in two directions.

#include "tools/vorntools/Commands.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/ArchiveOutput.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/archive/DocumentTree.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

/** Deeper levels are not indented further: a chain of documents may be longer than any line. */
constexpr std::size_t kMostIndented = 32;

struct TreeOptions {
    CommonOptions common;
    std::string file;
    int depth = 0;
    bool flat = false;
    bool dot = false;
};

const char* markText(TreeRow::Mark mark) {
    switch (mark) {
    case TreeRow::SeeAbove: return "see above";
    case TreeRow::SeeBelow: return "see below";
    case TreeRow::Cycle: return "cycle";
    case TreeRow::Cut: return "more below";
    case TreeRow::Plain: break;
    }
    return "";
}

/** Prints what was found, in each of its forms. */
class TreePrinter {
public:
    TreePrinter(const Archive& archive, Index top, DocumentTree::Direction direction, const TreeOptions& options)
        : m_archive(archive), m_top(top), m_direction(direction), m_options(options),
          m_tree(archive, top, direction, static_cast<unsigned int>(options.depth)) {}

    void print() const {
        if (m_options.dot)
            printDot();
        else if (m_options.common.json)
            for (const TreeRow& row : m_options.flat ? m_tree.nearest() : m_tree.rows()) printJson(jsonOf(row));
        else
            m_options.flat ? printFlat() : printTree();
    }

private:
    const ArchiveLink* linkOf(const TreeRow& row) const {
        return row.link == kNoIndex ? nullptr : &m_archive.links()[row.link];
    }
    std::string nameOf(const TreeRow& row) const {
        return row.document != kNoIndex ? m_archive.nameOf(row.document)
                                        : std::string(m_archive.text(linkOf(row)->stored));
    }
    std::string remarkOf(const TreeRow& row) const;
    Json jsonOf(const TreeRow& row) const;
    void printTree() const;
    void printFlat() const;
    void printDot() const;

    const Archive& m_archive;
    const Index m_top;
    const DocumentTree::Direction m_direction;
    const TreeOptions& m_options;
    const DocumentTree m_tree;
};

/** What stands behind a name: what has to be known of the document, then where it is opened. */
std::string TreePrinter::remarkOf(const TreeRow& row) const {
    std::string remark;
    const auto add = [&remark](const std::string& text) {
        if (!text.empty()) remark += (remark.empty() ? "" : "; ") + text;
    };
    const ArchiveLink* const link = linkOf(row);
    if (row.document == kNoIndex) {
        add("missing");
        add(shown(m_archive, *link).candidates.text());
        return remark;
    }
    if (link && m_direction == DocumentTree::Uses) {
        const ShownTarget target = shown(m_archive, *link);
        if (target.chosenAmong > 0) add("found " + target.ruleText());
    }
    add(conditionToTell(m_archive, row.document));
    add(markText(row.mark));
    return remark;
}

Json TreePrinter::jsonOf(const TreeRow& row) const {
    const ArchiveLink* const link = linkOf(row);
    Json json = Json::object({{"level", row.level}, {"document", nameOf(row)}, {"exists", row.document != kNoIndex}});
    json.add("condition", row.document == kNoIndex
                              ? Json()
                              : textOrNull(std::string(m_archive.text(m_archive.document(row.document).condition))));
    json.add("mark", textOrNull(markText(row.mark)));
    json.add("from", link ? Json(m_archive.nameOf(link->from)) : Json());
    json.add("to", link && link->target != kNoIndex ? Json(m_archive.nameOf(link->target)) : Json());
    if (link) shown(m_archive, *link).addTo(json);
    return json;
}

void TreePrinter::printTree() const {
    std::vector<const char*> lines; // in front of a name, a piece a level
    for (const TreeRow& row : m_tree.rows()) {
        lines.resize(std::min<std::size_t>(row.level, kMostIndented));
        std::string text;
        for (std::size_t i = 0; i + 1 < lines.size(); ++i) text += lines[i];
        if (row.level > 0) text += row.isLast ? "\xE2\x94\x94\xE2\x94\x80 " : "\xE2\x94\x9C\xE2\x94\x80 ";
        if (row.level > 0) lines.back() = row.isLast ? "   " : "\xE2\x94\x82  ";
        if (row.level > kMostIndented) text += "[" + std::to_string(row.level) + "] ";
        const std::string remark = remarkOf(row);
        ::print(text + printable(nameOf(row)) + (remark.empty() ? "" : "  (" + printable(remark) + ")") + "\n");
    }
}

void TreePrinter::printFlat() const {
    Table table({{"LEVEL", Table::Kind::number}, {"DOCUMENT", Table::Kind::path}, {"REMARK"}});
    for (const TreeRow& row : m_tree.nearest())
        if (row.level > 0) table.add({std::to_string(row.level), nameOf(row), remarkOf(row)});
    table.print();
}

/** Each link once, from the document to what it points to; what is missing dashed. */
void TreePrinter::printDot() const {
    ::print("digraph links {\n  rankdir=LR;\n  node [shape=box];\n  " + dotQuoted(m_archive.nameOf(m_top)) +
            " [style=bold];\n");
    for (const TreeRow& row : m_tree.rows()) {
        const ArchiveLink* const link = linkOf(row);
        if (!link) continue;
        const bool missing = link->target == kNoIndex;
        const std::string style = missing ? " [color=red, style=dashed]" : "";
        const std::string target =
            dotQuoted(missing ? std::string(m_archive.text(link->stored)) : m_archive.nameOf(link->target));
        if (missing) ::print("  " + target + style + ";\n");
        ::print("  " + dotQuoted(m_archive.nameOf(link->from)) + " -> " + target + style + ";\n");
    }
    ::print("}\n");
}

/** Of the tree: whether something in it is missing or damaged; whether a document could not be read, so that links may
 * be missing. */
ExitCode judge(const Archive& archive, const DocumentTree& tree) {
    ExitCode code = ExitFine;
    for (const TreeRow& row : tree.nearest())
        if (row.document == kNoIndex || archive.document(row.document).isDamaged) code = ExitFindings;
    for (Index i = 0; i < archive.documents().size(); ++i) {
        if (!archive.document(i).isUnreadable) continue;
        complain(archive.nameOf(i) + " cannot be read");
        code = ExitUnusable;
    }
    return code;
}

/** Reads what the question takes, from the folders. @return false, said on standard error, when it cannot all be read
 */
bool readTree(const TreeOptions& options, DocumentTree::Direction direction, JournalFile& journal, Archive& archive) {
    ArchiveReader::What what;
    what.jobs = options.common.jobs;
    ArchiveReader reader(archive, journal, what);
    std::vector<std::string> names = options.common.names;
    names.push_back(options.file);
    const bool complete = reader.walk(names);
    if (direction == DocumentTree::Uses)
        reader.readNeeded({fullNameOf(options.file)}, static_cast<unsigned int>(options.depth));
    else
        reader.readAll();
    reader.finish();
    return complete;
}

/** Why the question cannot be asked; empty when it can. */
std::string refusalToAsk(const TreeOptions& options, DocumentTree::Direction direction) {
    if (!options.common.catalogues.empty())
        return options.common.names.empty() ? "" : "name folders, or catalogues, not both";
    if (direction == DocumentTree::UsedBy && options.common.names.empty()) return "name folders or a catalogue";
    std::error_code ignored;
    return std::filesystem::is_regular_file(std::filesystem::u8path(options.file), ignored)
               ? ""
               : "no such file: " + options.file;
}

int runTree(const TreeOptions& options, DocumentTree::Direction direction) {
    const std::string refusal = refusalToAsk(options, direction);
    if (!refusal.empty()) {
        complain(refusal);
        return ExitUnusable;
    }
    if (!options.common.loadSession()) return ExitUnusable;
    JournalFile journal(options.common.journal);
    Archive archive;
    bool complete = true;
    const std::string file = fullNameOf(options.file);
    if (options.common.catalogues.empty()) {
        complete = readTree(options, direction, journal, archive);
    } else {
        CatalogueSet catalogues(options.common.catalogues);
        complete = catalogues.isComplete();
        if (!catalogues.fillTree(archive, file, direction, static_cast<unsigned int>(options.depth))) {
            complain("no catalogue has " + options.file);
            return ExitUnusable;
        }
    }
    const Index top = archive.find(file);
    TreePrinter(archive, top, direction, options).print();
    if (!journal.finish() || !complete) return ExitUnusable;
    return judge(archive, DocumentTree(archive, top, direction, static_cast<unsigned int>(options.depth)));
}

void addTreeCommand(Command& program, const char* name, const char* description, DocumentTree::Direction direction) {
    const auto options = std::make_shared<TreeOptions>();
    Command& command = program.command(name, description, [=] { return runTree(*options, direction); });
    command.value("file", "FILE", "The document", &options->file).required();
    if (direction == DocumentTree::Uses)
        command.value("folder", "FOLDER",
                      "Where candidates for what is missing are looked for: folders with all below "
                      "them",
                      &options->common.names);
    else
        command.value("folder", "FOLDER", "Folders with all below them, and documents, that may use it",
                      &options->common.names);
    command.value("--depth", "N", "Levels below the document; 0: all", &options->depth).between(0, 1000000);
    command.flag("--flat", "Every document once, by its level, instead of a tree", options->flat).excludes("--dot");
    command.flag("--dot", "A graph for Graphviz", options->dot).excludes("--json");
    if (direction == DocumentTree::UsedBy) options->common.addJobsTo(command);
    options->common.addTo(command);
    options->common.addCatalogueTo(command).excludes("--session");
}

} // namespace

void addUsesCommand(Command& program) {
    addTreeCommand(program, "uses", "Everything that a document needs, as a tree, and what of it is missing",
                   DocumentTree::Uses);
}

void addUsedByCommand(Command& program) {
    addTreeCommand(program, "used-by", "Every document that needs a document, directly or through others",
                   DocumentTree::UsedBy);
}
