#ifndef TOOLS_VORNTOOLS_CATALOGUE_PACKET_H
#define TOOLS_VORNTOOLS_CATALOGUE_PACKET_H

// How one process of this program hands what it has read to another: the same order for writing and reading.

#include "tools/vorntools/catalogue/CatalogueEntry.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace catalogue {

class PacketWriter {
public:
    void number(std::int64_t& value) { m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void text(std::string& value) {
        auto size = static_cast<std::int64_t>(value.size());
        number(size);
        m_bytes += value;
    }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

class PacketReader {
public:
    explicit PacketReader(const std::string& bytes) : m_bytes(bytes) {}
    void number(std::int64_t& value) {
        need(sizeof value);
        m_bytes.copy(reinterpret_cast<char*>(&value), sizeof value, m_at);
        m_at += sizeof value;
    }
    void text(std::string& value) {
        std::int64_t size = 0;
        number(size);
        need(static_cast<std::size_t>(size));
        value = m_bytes.substr(m_at, static_cast<std::size_t>(size));
        m_at += static_cast<std::size_t>(size);
    }

private:
    void need(std::size_t size) const {
        if (size > m_bytes.size() - m_at) throw std::runtime_error("a process of the program has sent half an answer");
    }
    const std::string& m_bytes;
    std::size_t m_at = 0;
};

/** Moves values one way or the other. */
template <class Packet>
class Transfer {
public:
    explicit Transfer(Packet& packet) : m_packet(packet) {}

    template <class... Values>
    void operator()(Values&... values) {
        (move(values), ...);
    }

private:
    template <class Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
    void move(Number& value) {
        auto number = static_cast<std::int64_t>(value);
        m_packet.number(number);
        value = static_cast<Number>(number);
    }
    void move(std::string& value) { m_packet.text(value); }
    template <class Value>
    void move(std::vector<Value>& values) {
        auto count = values.size();
        move(count);
        values.resize(count);
        for (Value& value : values) move(value);
    }
    template <class Value>
    void move(std::optional<Value>& value) {
        bool isThere = value.has_value();
        move(isThere);
        if (isThere && !value) value.emplace();
        if (isThere) move(*value);
    }
    void move(FoundDocument& found) { (*this)(found.name, found.fullName, found.exists, found.hasDat); }
    void move(DocumentStatus& status) {
        (*this)(status.document, status.dat, status.layout, status.itemRevision, status.dataset, status.namedReference,
                status.loadType, status.status, status.reason, status.linked, status.unresolved, status.designTable);
    }
    void move(NamedDocument& document) { (*this)(document.name, document.exists, document.stored, document.uses); }
    void move(OtherNamed& other) { (*this)(other.kind, other.document, other.uses); }
    void move(TypedLink& link) { (*this)(link.type, link.document, link.reference, link.tagFound); }
    void move(DocumentLinks& links) {
        (*this)(links.read, links.condition.text, links.condition.isFinding, links.version, links.release,
                links.servicePack, links.savedPath, links.partFiles, links.contextProducts, links.contextParts,
                links.externalReferences, links.links, links.others, links.ghosts);
    }
    void move(RecordedName& recorded) {
        int kind = recorded.kind;
        (*this)(kind, recorded.name);
        recorded.kind = static_cast<RecordedName::Kind>(kind);
    }
    void move(RecordedLinks& recorded) { (*this)(recorded.tellsLinks, recorded.names); }
    void move(DocumentIdentity& identity) { (*this)(identity.uuid, identity.save, identity.saved); }
    void move(DocumentFacts& facts) { (*this)(facts.found, facts.status, facts.links, facts.recorded, facts.identity); }
    void move(ContentsEntry& entry) {
        (*this)(entry.name, entry.parent, entry.isStream, entry.size, entry.pieces, entry.dates[0], entry.dates[1],
                entry.dates[2]);
    }
    void move(CatalogueEntry& entry) { (*this)(entry.facts, entry.streams, entry.preview, entry.journal); }

    Packet& m_packet;
};

} // namespace catalogue

#endif
