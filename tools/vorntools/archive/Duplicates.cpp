#include "tools/vorntools/archive/Duplicates.h"

#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <tuple>
#include <utility>

namespace {

constexpr std::size_t kPieceBytes = std::size_t(1) << 16U;

/** Reads a file piece by piece. */
class Pieces {
public:
    explicit Pieces(std::string_view fullName)
        : m_stream(std::filesystem::u8path(fullName), std::ios::binary), m_good(m_stream.is_open()) {}

    /** False at the end and when the file cannot be read. */
    bool next(std::string& piece) {
        piece.resize(kPieceBytes);
        m_stream.read(&piece[0], static_cast<std::streamsize>(piece.size()));
        piece.resize(static_cast<std::size_t>(m_stream.gcount()));
        m_good = m_good && !m_stream.bad();
        return !piece.empty();
    }
    bool good() const { return m_good; }

private:
    std::ifstream m_stream;
    bool m_good;
};

/** A number that files of the same bytes share. @return false when the file cannot be read */
bool digestOf(std::string_view fullName, std::uint64_t& digest) {
    constexpr std::uint64_t kStart = 0xCBF29CE484222325U, kPrime = 0x100000001B3U;
    Pieces pieces(fullName);
    digest = kStart;
    for (std::string piece; pieces.next(piece);) {
        piece.resize((piece.size() + sizeof digest - 1) / sizeof digest * sizeof digest);
        for (std::size_t at = 0; at < piece.size(); at += sizeof digest) {
            std::uint64_t word = 0;
            std::memcpy(&word, piece.data() + at, sizeof word);
            digest = (digest ^ word) * kPrime;
            digest ^= digest >> 32U;
        }
    }
    return pieces.good();
}

bool haveSameBytes(std::string_view a, std::string_view b) {
    Pieces first(a), second(b);
    for (std::string piece, other;;) {
        const bool more = first.next(piece);
        if (second.next(other) != more || piece != other || !first.good() || !second.good()) return false;
        if (!more) return true;
    }
}

/** Sorts the documents of one group by what they hold. */
class Comparison {
public:
    Comparison(const Archive& archive, std::vector<Duplicate>& documents)
        : m_archive(archive), m_documents(documents) {}

    void run() {
        // Whoever is alone with size and last save needs not be read.
        std::map<std::pair<std::uint64_t, std::string>, std::vector<Duplicate*>> alike;
        for (Duplicate& document : m_documents)
            alike[{m_archive.document(document.document).size, document.identity.save}].push_back(&document);
        for (auto& [key, documents] : alike) {
            if (documents.size() == 1)
                documents.front()->content = ++m_contents;
            else
                compareBytes(documents);
        }
        numberOrigins();
        renumber(&Duplicate::content);
        renumber(&Duplicate::origin);
    }

private:
    std::string_view fileOf(const Duplicate& document) const {
        return m_archive.text(m_archive.document(document.document).fullName);
    }

    void compareBytes(const std::vector<Duplicate*>& documents) {
        std::map<std::uint64_t, const Duplicate*> first;
        for (Duplicate* const document : documents) {
            std::uint64_t digest = 0;
            const bool read = digestOf(fileOf(*document), digest);
            const auto known = read ? first.find(digest) : first.end();
            const bool same = known != first.end() && haveSameBytes(fileOf(*known->second), fileOf(*document));
            document->content = same ? known->second->content : ++m_contents;
            if (read) first.emplace(digest, document);
        }
    }

    /** Documents of the same bytes have the same identity, if any. */
    void numberOrigins() {
        std::map<std::pair<std::string, unsigned int>, unsigned int> origins;
        for (Duplicate& document : m_documents) {
            const std::string& uuid = document.identity.uuid;
            const auto origin = origins.emplace(std::make_pair(uuid, uuid.empty() ? document.content : 0),
                                                static_cast<unsigned int>(origins.size() + 1));
            document.origin = origin.first->second;
        }
    }

    /** From 1, in the order in which the documents stand. */
    void renumber(unsigned int Duplicate::*number) {
        std::map<unsigned int, unsigned int> numbers;
        for (Duplicate& document : m_documents)
            document.*number =
                numbers.emplace(document.*number, static_cast<unsigned int>(numbers.size() + 1)).first->second;
    }

    const Archive& m_archive;
    std::vector<Duplicate>& m_documents;
    unsigned int m_contents = 0;
};

DocumentIdentity identityOf(const Archive& archive, Index number) {
    const ArchiveDocument& document = archive.document(number);
    const auto text = [&](Index at) { return std::string(archive.text(at)); };
    if (!document.hasIdentity) return readIdentity(text(document.fullName));
    return {text(document.uuid), text(document.save), text(document.saved)};
}

DuplicateGroup::Relation relationOf(const std::vector<Duplicate>& documents) {
    unsigned int contents = 0, origins = 0;
    for (const Duplicate& document : documents) {
        contents = std::max(contents, document.content);
        origins = std::max(origins, document.origin);
    }
    if (contents == 1) return DuplicateGroup::SameBytes;
    if (origins == 1) return DuplicateGroup::SavedApart;
    return origins == documents.size() ? DuplicateGroup::Strangers : DuplicateGroup::Mixed;
}

} // namespace

const char* relationName(DuplicateGroup::Relation relation) {
    switch (relation) {
    case DuplicateGroup::SameBytes: return "same bytes";
    case DuplicateGroup::SavedApart: return "saved apart";
    case DuplicateGroup::Strangers: return "strangers";
    case DuplicateGroup::Mixed: break;
    }
    return "mixed";
}

std::vector<DuplicateGroup> findDuplicates(const Archive& archive) {
    std::vector<DuplicateGroup> groups;
    for (const Rows<Index> files : archive.sameNames()) {
        DuplicateGroup group;
        for (const Index file : files) {
            const std::string_view fullName = archive.text(archive.document(file).fullName);
            if (group.name.empty()) group.name = lastName(fullName);
            group.documents.push_back({file, identityOf(archive, file)});
        }
        Comparison(archive, group.documents).run();
        group.relation = relationOf(group.documents);
        groups.push_back(std::move(group));
    }
    return groups;
}
