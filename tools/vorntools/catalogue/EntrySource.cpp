#include "tools/vorntools/catalogue/EntrySource.h"

#include "tools/vorntools/catalogue/Packet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace catalogue {

namespace {

/** An answer, its length in front. */
std::string packed(CatalogueEntry entry) {
    PacketWriter body, head;
    Transfer<PacketWriter> transfer(body);
    transfer(entry);
    auto size = static_cast<std::int64_t>(body.bytes().size());
    head.number(size);
    return head.bytes() + body.bytes();
}

} // namespace

EntrySource::EntrySource(std::vector<const FoundDocument*> documents, int jobs, JournalFile& journal)
    : m_documents(std::move(documents)),
      m_jobs(std::max<std::size_t>(1, std::min(static_cast<std::size_t>(jobs), m_documents.size()))),
      m_journal(journal) {
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
    if (!isWhole) throw std::runtime_error("a process that reads documents has ended too early");
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

} // namespace catalogue
