// Writes a large document from a real one, for document_files.py: its streams, none smaller, in their order, and
// between them geometry of bytes that nothing can compress, with a directory of all. Usage:
//
//     write_large_document DOCUMENT BYTES OUTPUT [--far-end]
//
// With --far-end all geometry stands in front, so that what the links are read from ends the file.

#include "tests/support/DocumentContainer.h"

#include "VornToolsDocumentFile.h"
#include "VornToolsString.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

struct SourceEntry {
    std::string name;
    int parent = 0;
    bool isStream = false;
    std::string bytes;
};

std::vector<SourceEntry> readEntries(const char* document) {
    std::vector<SourceEntry> entries;
    VornToolsDocumentFile file;
    if (FAILED(file.open(document))) return entries;
    for (int i = 1; i <= file.getEntryCount(); ++i) {
        SourceEntry entry;
        CATUnicodeString name;
        unsigned char isStream = 0;
        unsigned int size = 0;
        int pieces = 0;
        file.getEntry(i, name, entry.parent, isStream, size, pieces);
        entry.name = name.ConvertToChar();
        entry.isStream = isStream != 0;
        if (entry.isStream) {
            const std::unique_ptr<VornToolsString> bytes(file.readStream(i));
            if (bytes) entry.bytes.assign(bytes->bytes(), bytes->size());
        }
        entries.push_back(entry);
    }
    return entries;
}

/** Geometry of a length in so many containers. */
class Geometry {
public:
    Geometry(std::size_t length, std::size_t containers) : m_each(length / containers) {}

    void addTo(DocumentContainer& file) {
        std::string bytes(m_each, '\0');
        for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
            const std::uint64_t number = m_numbers();
            std::memcpy(&bytes[at], &number, std::min(sizeof number, bytes.size() - at));
        }
        file.container("CGMGeom", bytes);
    }

private:
    std::size_t m_each;
    std::mt19937_64 m_numbers;
};

std::string largeDocument(const std::vector<SourceEntry>& entries, std::size_t length, bool farEnd) {
    constexpr std::size_t containers = 8;
    DocumentContainer file("");
    Geometry geometry(length, containers);
    std::size_t written = 0;
    std::vector<std::uint32_t> storages(entries.size() + 1, file.root());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool isTime = farEnd ? written < containers : written < containers * i / entries.size();
        for (std::size_t more = isTime ? (farEnd ? containers : 1) : 0; more > 0; --more, ++written)
            geometry.addTo(file);
        const SourceEntry& entry = entries[i];
        const std::uint32_t parent = storages[static_cast<std::size_t>(entry.parent)];
        if (entry.isStream)
            file.stream(entry.name, entry.bytes, parent);
        else if (entry.parent != 0 && entry.name != "CATIA1") // these two every container has
            storages[i + 1] = file.storage(entry.name, parent);
    }
    for (; written < containers; ++written) geometry.addTo(file);
    return file.bytes();
}

} // namespace

int main(int argc, char** argv) {
    const bool farEnd = argc == 5 && std::strcmp(argv[4], "--far-end") == 0;
    if (argc != 4 && !farEnd) {
        std::fprintf(stderr, "usage: write_large_document DOCUMENT BYTES OUTPUT [--far-end]\n");
        return 2;
    }
    const std::vector<SourceEntry> entries = readEntries(argv[1]);
    const std::size_t length = std::strtoull(argv[2], nullptr, 10);
    std::size_t known = 0;
    for (const SourceEntry& entry : entries) known += entry.bytes.size();
    std::ofstream output(argv[3], std::ios::binary);
    if (!entries.empty()) output << largeDocument(entries, length > known ? length - known : 0, farEnd);
    output.close();
    if (!entries.empty() && output) return 0;
    std::fprintf(stderr, "cannot %s\n", entries.empty() ? "read the document's directory" : "write the output");
    return 1;
}
