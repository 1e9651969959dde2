#ifndef TOOLS_VORNTOOLS_PACKET_H
#define TOOLS_VORNTOOLS_PACKET_H

// How one process of this program hands values to another: the same order for writing and reading. A type of several
// values says which by a function of its own:
//
//     template <class Move>
//     void transfer(Move& move, Size& size) {
//         move(size.width, size.height);
//     }

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

class PacketWriter {
public:
    void number(std::int64_t& value) { m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void text(std::string& value) {
        auto size = static_cast<std::int64_t>(value.size());
        number(size);
        m_bytes += value;
    }
    std::string takeBytes() { return std::move(m_bytes); }

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
        value.assign(m_bytes, m_at, static_cast<std::size_t>(size));
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
    template <class Value>
    void move(Value& value) {
        if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
            auto number = static_cast<std::int64_t>(value);
            m_packet.number(number);
            value = static_cast<Value>(number);
        } else {
            transfer(*this, value);
        }
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

    Packet& m_packet;
};

template <class Value>
std::string packed(Value value) {
    PacketWriter packet;
    Transfer<PacketWriter> move(packet);
    move(value);
    return packet.takeBytes();
}

/** @param bytes that packed() made of a Value. @throws std::runtime_error when they are not whole */
template <class Value>
Value unpacked(const std::string& bytes) {
    PacketReader packet(bytes);
    Transfer<PacketReader> move(packet);
    Value value;
    move(value);
    return value;
}

#endif
