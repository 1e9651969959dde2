#include "tools/vorntools/catalogue/CatalogueSet.h"

#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"
#include "tools/vorntools/catalogue/CatalogueTree.h"
#include "tools/vorntools/catalogue/Schema.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <unordered_set>
#include <utility>

using catalogue::FileId;

/** Statements are made once the file is known for a catalogue. */
struct CatalogueSet::Opened {
    explicit Opened(const std::string& file) : database(fullNameOf(file), file) {
        catalogue::checkIsCatalogue(database);
        database.execute("BEGIN"); // one answer, whatever another program writes meanwhile
        reader.emplace(database);
    }

    Database database;
    std::optional<catalogue::Reader> reader;
};

namespace {

std::string asItIs(const std::string& name) { return name; }

} // namespace

CatalogueSet::CatalogueSet(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::u8path(file), error))
            throw DatabaseError("no such file: " + file);
        m_opened.push_back(std::make_unique<Opened>(file));
    }
}

CatalogueSet::~CatalogueSet() = default;

bool CatalogueSet::isComplete() {
    bool complete = true;
    for (const auto& opened : m_opened) {
        if (opened->reader->isComplete()) continue;
        complain(opened->database.name() + " is not complete: folders could not be read");
        complete = false;
    }
    return complete;
}

void CatalogueSet::forEach(const std::function<void(const DocumentFacts&)>& take, bool withLinks) {
    std::unordered_set<std::string> taken;
    for (const auto& opened : m_opened)
        for (const FileId document : opened->reader->documents()) {
            const DocumentFacts facts = opened->reader->facts(document, withLinks);
            if (m_opened.size() == 1 || taken.insert(facts.found.fullName).second) take(facts);
        }
}

std::vector<std::string> CatalogueSet::namesOf(std::vector<std::string> (catalogue::Reader::*names)()) {
    std::vector<std::string> result;
    std::unordered_set<std::string> known;
    for (const auto& opened : m_opened)
        for (std::string& name : (*opened->reader.*names)())
            if (m_opened.size() == 1 || known.insert(name).second) result.push_back(std::move(name));
    return result;
}

std::vector<std::string> CatalogueSet::otherFiles() { return namesOf(&catalogue::Reader::otherFiles); }

std::vector<std::string> CatalogueSet::walkedFiles() { return namesOf(&catalogue::Reader::walkedFiles); }

void CatalogueSet::fill(Archive& archive, bool withLinks) {
    forEach([&](const DocumentFacts& facts) { archive.add(facts); }, withLinks);
    archive.finish(otherFiles(), asItIs);
}

bool CatalogueSet::fillTree(Archive& archive, const std::string& fullName, DocumentTree::Direction direction,
                            unsigned int depth) {
    std::vector<catalogue::Reader*> readers;
    for (const auto& opened : m_opened) readers.push_back(&*opened->reader);
    catalogue::TreeFiller filler(archive, std::move(readers), depth);
    if (!(direction == DocumentTree::Uses ? filler.addUses(fullName) : filler.addUsers(fullName))) return false;
    std::vector<std::string> others;
    addNamesakes(archive, direction == DocumentTree::Uses, others);
    archive.finish(others, asItIs);
    return true;
}

/** Files among which a target was chosen by its name, and, if wanted, those that a missing one may mean. */
void CatalogueSet::addNamesakes(Archive& archive, bool ofMissing, std::vector<std::string>& others) {
    std::unordered_set<std::string> names;
    for (const ArchiveLink& link : archive.links())
        if (link.rule == LinkRule::ByName || (ofMissing && link.rule == LinkRule::NotFound))
            names.insert(folded(lastName(archive.text(link.stored))));
    for (const auto& opened : m_opened)
        for (const std::string& name : names)
            for (const FileId file : opened->reader->filesOfName(name)) {
                if (opened->reader->isDocument(file))
                    archive.add(opened->reader->nameFacts(file));
                else
                    others.push_back(opened->reader->nameOf(file));
            }
}

std::string CatalogueSet::previewOf(const std::string& fullName) {
    for (const auto& opened : m_opened) {
        const FileId file = opened->reader->find(fullName);
        std::string picture = file == 0 ? std::string() : opened->reader->preview(file);
        if (!picture.empty()) return picture;
    }
    return {};
}

std::vector<std::string> CatalogueSet::lookedAt() {
    std::vector<std::string> folders;
    for (const auto& opened : m_opened) {
        Statement row(opened->database, "SELECT folder FROM looked_at ORDER BY position");
        while (row.next()) folders.push_back(row.text(0));
    }
    return folders;
}
