#include "tools/vorntools/archive/ArchiveReader.h"

#include "tools/vorntools/DocumentContents.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/DocumentPacket.h"
#include "tools/vorntools/archive/Paths.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

/** One document, as the process has it that reads it. */
struct ReadDocument {
    DocumentFacts facts;
    std::string picture; ///< a JPEG; empty for none, and when nobody wants it
    std::string journal; ///< what the library told of it
};

template <class Move>
void transfer(Move& move, ReadDocument& answer) {
    move(answer.facts, answer.picture, answer.journal);
}

} // namespace

DocumentFacts ArchiveReader::factsOf(const FoundDocument& found) {
    DocumentFacts facts;
    facts.found = found;
    const host::FileState state = m_states.stateOf(found.fullName);
    facts.size = state.size;
    facts.modified = state.modified;
    return facts;
}

void ArchiveReader::read(DocumentFacts& facts, bool isGiven) {
    const FoundDocument& found = facts.found;
    if (m_what.status) facts.status = examine(found);
    if (m_what.links && found.exists && (isGiven || isCatiaDocument(found.name)))
        facts.links = readDocumentLinks(found.fullName, m_what.linkType, m_memory);
    if (m_what.recorded && facts.links && found.hasDat) facts.recorded = readRecordedLinks(found.fullName);
}

void ArchiveReader::readAll() {
    std::unordered_set<std::string> given;
    for (const std::string& name : m_names) given.insert(fullNameOf(name));
    const std::vector<FoundDocument>& found = m_search.found();
    if (m_what.takePicture) m_memory.reader.setPreviewRead(1);
    m_journal.take(); // what came before is told once
    Turns<ReadDocument> answers(found.size(), processesFor(m_what.jobs, found.size()), [&](std::size_t i) {
        ReadDocument answer = {factsOf(found[i]), {}, {}};
        // What has no DAT file was found for what it is called.
        read(answer.facts, !found[i].hasDat || given.count(found[i].fullName) > 0);
        if (m_what.takePicture && answer.facts.links) answer.picture = pictureOf(m_memory.reader);
        answer.journal = m_journal.takeLines();
        return answer;
    });
    Progress progress(found.size(), "documents");
    for (std::size_t i = 0; i < found.size(); ++i) {
        ReadDocument answer = answers.next();
        m_journal.add(answer.journal);
        const Index document = m_archive.add(answer.facts);
        if (!answer.picture.empty()) m_what.takePicture(document, std::move(answer.picture));
        progress.step();
    }
}

void ArchiveReader::readNeeded(const std::vector<std::string>& fullNames, unsigned int depth) {
    std::unordered_map<std::string, const FoundDocument*> walked;
    for (const FoundDocument& found : m_search.found()) walked.emplace(fileKey(found.fullName), &found);
    std::unordered_set<std::string> known(fullNames.begin(), fullNames.end());
    std::vector<std::string> wanted = fullNames;
    unsigned int level = 0;
    for (std::size_t i = 0, nextLevel = wanted.size(); i < wanted.size(); ++i) {
        if (i == nextLevel) {
            ++level;
            nextLevel = wanted.size();
        }
        const std::string fullName = fullNameOf(wanted[i]);
        if (m_archive.has(fullName)) continue;
        const auto found = walked.find(fileKey(fullName));
        DocumentFacts facts = factsOf(found != walked.end() ? *found->second
                                                            : FoundDocument{m_search.asGiven(fullName), fullName, true,
                                                                            host::stateOf(fullName + ".dat").isThere});
        if (found == walked.end()) facts.role = ArchiveDocument::Named;
        read(facts, i < fullNames.size());
        m_journal.take();
        m_archive.add(facts);
        if (!facts.links || (depth > 0 && level == depth)) continue;
        for (const Target& target : targetsOf(*facts.links, fullName))
            if (!target.isMissing() && known.insert(target.found).second) wanted.push_back(target.found);
    }
}

void ArchiveReader::finish() {
    for (const FoundDocument& found : m_search.found())
        if (!m_archive.has(found.fullName)) m_archive.add(factsOf(found));
    m_archive.finish(m_search.others(), [this](const std::string& name) { return m_search.asGiven(name); });
}
