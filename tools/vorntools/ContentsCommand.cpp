#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentCondition.h"
#include "tools/vorntools/DocumentContents.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"

#include "VornToolsDocumentFile.h"
#include "VornToolsLinks.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

/** What a document's file is made of. */
struct Contents {
    bool read = false; ///< false: nothing else is known
    unsigned long long size = 0;
    DocumentCondition condition;
    int version = 0, release = 0, servicePack = 0;
    std::vector<ContentsEntry> entries;
};

Contents readContents(const std::string& document) {
    Contents contents;
    VornToolsDocumentFile file;
    if (FAILED(file.open(textOf(document)))) return contents;
    contents.size = file.getSize();
    const std::unique_ptr<VornToolsString> image(file.readLinkImage());
    contents.read = image || contents.size == 0;
    if (!contents.read) return contents;
    contents.condition = conditionOf(file, document);
    if (image) VornToolsLinks::getVersion(image.get(), contents.version, contents.release, contents.servicePack);
    contents.entries = entriesOf(file);
    return contents;
}

Json jsonOf(const ContentsEntry& entry) {
    Json dates = Json::array();
    for (const std::string& date : entry.dates) dates.push_back(textOrNull(date));
    return Json::object({{"name", entry.name},
                         {"parent", entry.parent == 0 ? Json() : Json(entry.parent)},
                         {"kind", entry.isStream ? "stream" : "storage"},
                         {"size", entry.isStream ? Json(entry.size) : Json()},
                         {"pieces", entry.pieces},
                         {"dates", std::move(dates)}});
}

Json jsonOf(const std::string& document, const Contents& contents) {
    if (!contents.read) return Json::object({{"document", document}, {"error", "cannot be read"}});
    Json entries = Json::array();
    for (const ContentsEntry& entry : contents.entries) entries.push_back(jsonOf(entry));
    return Json::object({{"document", document},
                         {"condition", contents.condition.json()},
                         {"version", Json::array({contents.version, contents.release, contents.servicePack})},
                         {"size", contents.size},
                         {"entries", std::move(entries)}});
}

/** Prints the entries as a tree. Those that a damaged directory puts below each other in a circle stand at its end. */
class Tree {
public:
    explicit Tree(const std::vector<ContentsEntry>& entries)
        : m_entries(entries), m_below(entries.size() + 1), m_isShown(entries.size() + 1) {
        for (std::size_t i = 1; i <= entries.size(); ++i)
            m_below[static_cast<std::size_t>(entries[i - 1].parent)].push_back(i);
    }

    void print() {
        for (const std::size_t entry : m_below[0]) addWithAllBelow(entry);
        for (std::size_t entry = 1; entry <= m_entries.size(); ++entry) addWithAllBelow(entry);
        m_table.print();
    }

private:
    /** A tree that is deeper than any document's would be wider than any screen. */
    static constexpr std::size_t kDeepest = 20;

    void addWithAllBelow(std::size_t top) {
        std::vector<std::pair<std::size_t, std::size_t>> open = {{top, 0}}; // with the depth
        while (!open.empty()) {
            const auto [entry, depth] = open.back();
            open.pop_back();
            if (m_isShown[entry]) continue;
            m_isShown[entry] = true;
            add(m_entries[entry - 1], depth);
            for (auto below = m_below[entry].rbegin(); below != m_below[entry].rend(); ++below)
                open.emplace_back(*below, depth + 1);
        }
    }

    void add(const ContentsEntry& entry, std::size_t depth) {
        m_table.add({std::string(2 * std::min(depth, kDeepest), ' ') + entry.name,
                     entry.isStream ? std::to_string(entry.size) : "",
                     entry.pieces > 1 ? std::to_string(entry.pieces) : "", entry.dates.front()});
    }

    const std::vector<ContentsEntry>& m_entries;
    std::vector<std::vector<std::size_t>> m_below; ///< numbers of entries by that of their parent, from 1
    std::vector<bool> m_isShown;
    Table m_table{{{"NAME"}, {"BYTES", Table::Kind::number}, {"PIECES", Table::Kind::number}, {"DATE"}}};
};

void printTree(const std::string& document, const Contents& contents) {
    if (!contents.read) return complain(document + " cannot be read");
    print(printable(document) + "  V" + std::to_string(contents.version) + " R" + std::to_string(contents.release) +
          " SP" + std::to_string(contents.servicePack) + "  " + std::to_string(contents.size) + " bytes" +
          (contents.condition.text.empty() ? "" : "  " + contents.condition.text) + "\n");
    Tree(contents.entries).print();
    print("\n");
}

int runContents(CommonOptions& options) {
    if (!options.completeNames()) return ExitUnusable;
    DocumentSearch search;
    bool usable = options.search(search);
    JournalFile journal(options.journal);
    bool findings = false;
    for (const std::string& document : documentsOf(search, options.names)) {
        const Contents contents = readContents(document);
        const std::string name = search.asGiven(document);
        options.json ? printJson(jsonOf(name, contents)) : printTree(name, contents);
        usable = usable && contents.read;
        findings = findings || contents.condition.isFinding;
        journal.take();
    }
    if (!journal.finish() || !usable) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addContentsCommand(Command& program) {
    const auto options = std::make_shared<CommonOptions>();
    Command& command = program.command("contents", "What a document's file is made of: streams, sizes, dates",
                                       [options] { return runContents(*options); });
    options->addNamesTo(command, "file", "Documents, and folders searched with all below them");
    options->addOutputTo(command);
}
