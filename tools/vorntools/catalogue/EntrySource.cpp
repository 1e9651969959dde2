#include "tools/vorntools/catalogue/EntrySource.h"

#include "tools/vorntools/archive/FileContent.h"
#include "tools/vorntools/catalogue/Packet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace catalogue {

namespace {

constexpr std::size_t kChecksumSize = 64;

/** An answer, its length in front. */
std::string packed(CatalogueEntry entry) {
    PacketWriter body, head;
    Transfer<PacketWriter> transfer(body);
    transfer(entry);
    auto size = static_cast<std::int64_t>(body.bytes().size());
    head.number(size);
    return head.bytes() + body.bytes();
}

std::size_t helpersFor(std::size_t documents, int jobs) {
    return std::max<std::size_t>(1, std::min(static_cast<std::size_t>(jobs), documents));
}

[[noreturn]] void failBecauseHelperEnded() {
    throw std::runtime_error("a process that reads documents has ended too early");
}

/** A checksum, or blanks for none: always as long. */
std::string framed(const std::string& checksum) {
    return checksum.empty() ? std::string(kChecksumSize, ' ') : checksum;
}

} // namespace

EntrySource::EntrySource(std::vector<const FoundDocument*> documents, int jobs, JournalFile& journal)
    : m_documents(std::move(documents)), m_jobs(helpersFor(m_documents.size(), jobs)), m_journal(journal) {
    m_journal.take(); // what came before is told once
    if (m_jobs == 1) return;
    m_helpers = std::make_unique<host::Helpers>(m_jobs, [&](std::size_t helper, const host::Helpers::Send& send) {
        for (std::size_t i = helper; i < m_documents.size(); i += m_jobs)
            send(packed(read(m_reader, *m_documents[i], m_journal)));
    });
}

CatalogueEntry EntrySource::read(EntryReader& reader, const FoundDocument& document, JournalFile& journal) {
    CatalogueEntry entry = reader.read(document.fullName, document.exists, document.hasDat);
    entry.journal = journal.takeLines();
    return entry;
}

CatalogueEntry EntrySource::receive(std::size_t helper) {
    std::int64_t size = 0;
    std::string bytes;
    bool isWhole = m_helpers->receive(helper, reinterpret_cast<char*>(&size), sizeof size);
    if (isWhole) {
        bytes.resize(static_cast<std::size_t>(size));
        isWhole = m_helpers->receive(helper, &bytes[0], bytes.size());
    }
    if (!isWhole) failBecauseHelperEnded();
    CatalogueEntry entry;
    PacketReader packet(bytes);
    Transfer<PacketReader> transfer(packet);
    transfer(entry);
    return entry;
}

CatalogueEntry EntrySource::next() {
    const std::size_t at = m_next++;
    CatalogueEntry entry = m_helpers ? receive(at % m_jobs) : read(m_reader, *m_documents[at], m_journal);
    m_journal.add(entry.journal);
    return entry;
}

ChecksumSource::ChecksumSource(std::vector<std::string> files, int jobs)
    : m_files(std::move(files)), m_jobs(helpersFor(m_files.size(), jobs)) {
    if (m_jobs == 1) return;
    m_helpers = std::make_unique<host::Helpers>(m_jobs, [&](std::size_t helper, const host::Helpers::Send& send) {
        for (std::size_t i = helper; i < m_files.size(); i += m_jobs) send(framed(sha256Of(m_files[i])));
    });
}

std::string ChecksumSource::next() {
    const std::size_t at = m_next++;
    if (!m_helpers) return sha256Of(m_files[at]);
    std::string checksum(kChecksumSize, ' ');
    if (!m_helpers->receive(at % m_jobs, &checksum[0], checksum.size())) failBecauseHelperEnded();
    return checksum.front() == ' ' ? std::string() : checksum;
}

} // namespace catalogue
