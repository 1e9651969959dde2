#include "tools/vorntools/catalogue/CatalogueEntry.h"

#include "tools/vorntools/System.h"
#include "tools/vorntools/Text.h"

#include "VornToolsDocumentFile.h"

CatalogueEntry EntryReader::read(const std::string& fullName, bool exists, bool hasDat) {
    CatalogueEntry entry;
    DocumentFacts& facts = entry.facts;
    facts.found = {fullName, fullName, exists, hasDat};
    facts.status = examine(facts.found);
    if (!exists || !isCatiaDocument(fullName)) return entry;
    facts.links = readDocumentLinks(fullName, "", m_memory);
    if (hasDat) facts.recorded = readRecordedLinks(fullName);
    facts.identity.emplace();
    VornToolsDocumentFile file;
    if (FAILED(file.open(textOf(fullName)))) return entry;
    facts.identity = readIdentity(file);
    entry.streams = entriesOf(file);
    entry.preview = pictureOf(file);
    return entry;
}
