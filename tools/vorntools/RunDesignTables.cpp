#include "tools/vorntools/RunCommand.h"

#include "CATDocument.h"
#include "CATIDesignTable.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "CATListOfInt.h"
#include "UTILFile.h"
#include "VornCache.h"
#include "VornToolsCommon.h"

#include <cstdio>
#include <cstdlib>

namespace {

/** A design table of a document. */
struct DesignTable {
    CATUnicodeString name, file;
    int index = 0; ///< in the lists of what was read; 0: it could not be
};

/** The design tables of a document that can be read, as parallel lists, and all that it has. */
struct DesignTables {
    explicit DesignTables(const embedded::Document& document) {
        VornToolsCommon::getDesignTableSheet(document.get(), nullptr, 0, paths, files, sheets, configurations,
                                             checksums, associated, names);
        CATListValCATISpecObject_var found;
        VornToolsCommon::getDesignTableList(document.get(), nullptr, 0, &found);
        int next = 1;
        for (int i = 1; i <= found.Size(); ++i) addTable(found[i], next);
        // Documents of other kinds have tables that only reading finds.
        for (; next <= paths.Size(); ++next) all.push_back({names[next], paths[next], next});
    }
    CATListValCATUnicodeString paths, files, checksums, associated, names;
    CATRawCollint sheets, configurations;
    std::vector<DesignTable> all;

private:
    /** Tables are read in their order, and those that cannot be are left out. */
    void addTable(const CATIDesignTable_var& object, int& next) {
        DesignTable table;
        VornToolsCommon::getDesignTableName(object, table.name);
        VornToolsCommon::getDesignTableFullFilename(object, table.file);
        const std::string file = fileNameOf(bytesOf(table.file));
        const bool isRead = next <= paths.Size() && names[next] == table.name &&
                            bytesOf(files[next]) == file.substr(0, file.rfind('.'));
        if (isRead) table = {table.name, paths[next], next++};
        all.push_back(std::move(table));
    }
};

/** Calls `visit(document, tables)` for every document that has design tables. */
template <class Visit>
void forEachDocumentWithTables(Visit&& visit) {
    const embedded::Session& session = embedded::Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const embedded::Document document = session.documentAt(i);
        const DesignTables tables(document);
        if (!tables.all.empty()) visit(document, tables);
    }
}

/** Why a table cannot be read. */
const char* problemOf(const DesignTable& table) {
    return UTILFile::existingFile(table.file) ? "not readable" : "missing file";
}

/** The names of a text in which "!!!" stands in front of each. */
Json namesIn(const std::string& text) {
    const std::string mark = "!!!";
    Json names = Json::array();
    for (std::size_t at = text.find(mark); at != std::string::npos;) {
        const std::size_t begin = at + mark.size();
        at = text.find(mark, begin);
        names.push_back(text.substr(begin, at == std::string::npos ? at : at - begin));
    }
    return names;
}

int listDesignTables(bool json) {
    bool complete = true;
    Listing listing(json,
                    {"document", "table", "file", "sheet", "configuration", "checksum", "associated_files", "problem"});
    forEachDocumentWithTables([&](const embedded::Document& document, const DesignTables& tables) {
        for (const DesignTable& table : tables.all) {
            const int i = table.index;
            const Json name = bytesOf(table.name);
            const Json file = bytesOf(table.file);
            if (i == 0) {
                listing.add({document.name(), name, file, Json(), Json(), Json(), Json::array(), problemOf(table)});
                complete = false;
                continue;
            }
            listing.add({document.name(), name, file, tables.sheets[i], tables.configurations[i],
                         bytesOf(tables.checksums[i]), namesIn(bytesOf(tables.associated[i])), Json()});
        }
    });
    listing.print();
    return complete ? ExitFine : ExitFindings;
}

/** Entries of a design table: sheets and configurations with the checksums that the PDM knows, if it knows any. */
struct Entries {
    CATListValCATUnicodeString sheets, configurations, known;
};

/** Parses "sheet:configuration"; false, and said on standard error, for another text. */
bool parseEntries(const std::vector<std::string>& texts, Entries& entries) {
    for (const std::string& text : texts) {
        int sheet = 0;
        int configuration = 0;
        int length = 0;
        if (std::sscanf(text.c_str(), "%9d:%9d%n", &sheet, &configuration, &length) != 2 ||
            static_cast<std::size_t>(length) != text.size()) {
            complain("SHEET:CONFIGURATION is expected, not " + text);
            return false;
        }
        entries.sheets.Append(textOf(std::to_string(sheet)));
        entries.configurations.Append(textOf(std::to_string(configuration)));
    }
    return true;
}

/** What the DAT file of a document says of its table. The file lists no table with its entries, so that only a document
 * with one table can have them. */
Entries recordedEntries(const embedded::Document& document) {
    VornCache cache;
    const CATUnicodeString name = textOf(document.name());
    Entries entries;
    if (FAILED(cache.addDocument(name, document.get())) || !cache.isDesignTable(name)) return entries;
    cache.getDesignTableSheets(name, entries.sheets);
    cache.getDesignTableConfigs(name, entries.configurations);
    cache.getDesignTableCksums(name, entries.known);
    const int size = entries.sheets.Size();
    return entries.configurations.Size() == size && entries.known.Size() == size ? entries : Entries();
}

/** The entries of the table at an index: those asked for, else those recorded, else the current configuration. */
Entries entriesOf(const embedded::Document& document, const DesignTables& tables, int index, const Entries& asked) {
    if (asked.sheets.Size() > 0) return asked;
    Entries entries = tables.all.size() == 1 ? recordedEntries(document) : Entries();
    if (entries.sheets.Size() > 0) return entries;
    entries.sheets.Append(textOf(std::to_string(tables.sheets[index])));
    entries.configurations.Append(textOf(std::to_string(tables.configurations[index])));
    return entries;
}

/** One call an entry: an entry without a checksum then leaves the others where they are. */
CATUnicodeString checksumOf(const embedded::Document& document, const CATUnicodeString& file,
                            const CATUnicodeString& sheet, const CATUnicodeString& configuration) {
    CATListValCATUnicodeString sheets, configurations, checksums;
    sheets.Append(sheet);
    configurations.Append(configuration);
    CATListValCATUnicodeString* sheetList = &sheets;
    CATListValCATUnicodeString* configurationList = &configurations;
    CATListValCATUnicodeString* checksumList = &checksums;
    unsigned char found = 0;
    VornToolsCommon::calculateCheckSums(document.get(), file, nullptr, 0, sheetList, configurationList, checksumList,
                                        found);
    return checksums.Size() == 1 ? checksums[1] : CATUnicodeString();
}

/** The number that the library takes a text for. */
Json numberIn(const CATUnicodeString& text) { return std::strtol(text.ConvertToChar(), nullptr, 10); }

/** Adds a row an entry; true when one is not what the PDM knows. */
bool addChecksums(const embedded::Document& document, const CATUnicodeString& file, const Entries& entries,
                  Listing& listing) {
    bool changed = false;
    for (int i = 1; i <= entries.sheets.Size(); ++i) {
        const CATUnicodeString checksum = checksumOf(document, file, entries.sheets[i], entries.configurations[i]);
        const bool isKnown = i <= entries.known.Size();
        const bool differs = isKnown && entries.known[i] != checksum;
        listing.add({document.name(), bytesOf(file), numberIn(entries.sheets[i]), numberIn(entries.configurations[i]),
                     textOrNull(bytesOf(checksum)), isKnown ? Json(bytesOf(entries.known[i])) : Json(),
                     isKnown ? Json(differs) : Json(), Json()});
        changed = changed || differs;
    }
    return changed;
}

int listChecksums(bool json, const std::vector<std::string>& texts) {
    Entries asked;
    if (!parseEntries(texts, asked)) return ExitUnusable;
    bool fine = true;
    Listing listing(json, {"document", "file", "sheet", "configuration", "checksum", "recorded", "changed", "problem"});
    forEachDocumentWithTables([&](const embedded::Document& document, const DesignTables& tables) {
        for (const DesignTable& table : tables.all) {
            if (table.index == 0) {
                listing.add(
                    {document.name(), bytesOf(table.file), Json(), Json(), Json(), Json(), Json(), problemOf(table)});
                fine = false;
            } else if (addChecksums(document, table.file, entriesOf(document, tables, table.index, asked), listing)) {
                fine = false;
            }
        }
    });
    listing.print();
    return fine ? ExitFine : ExitFindings;
}

} // namespace

void addDesignTableTopics(Topics& topics) {
    const auto common = topics.options();
    topics.add("design-tables", "Design tables of every document: file, sheet, configuration and its checksum",
               [common] { return listDesignTables(common->json); });
    const auto entries = std::make_shared<std::vector<std::string>>();
    Command& checksums =
        topics.add("checksums", "Checksums of the configurations that the DAT files record, and which changed since",
                   [common, entries] { return listChecksums(common->json, *entries); });
    checksums.value("entries", "SHEET:CONFIGURATION", "Other entries than those that are recorded", entries.get());
}
