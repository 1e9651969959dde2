// Any bytes as a catalogue: whoever asks it or writes it anew gets an answer or is told that it is none; asking leaves
// the file as it is.

#include "tools/vorntools/archive/DocumentTree.h"
#include "tools/vorntools/archive/Orphans.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"
#include "tools/vorntools/catalogue/CatalogueUpdate.h"
#include "tools/vorntools/catalogue/Database.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;

/** The catalogue's file, removed at the end. */
class CatalogueFile {
public:
    CatalogueFile()
        : m_file(fs::temp_directory_path() /
                 ("vorntools_fuzz_" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {}
    ~CatalogueFile() {
        std::error_code ignored;
        fs::remove(m_file, ignored);
    }
    CatalogueFile(const CatalogueFile&) = delete;
    CatalogueFile& operator=(const CatalogueFile&) = delete;

    void write(const std::string& bytes) const {
        std::ofstream(m_file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string bytes() const {
        std::ifstream stream(m_file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::string name() const { return m_file.u8string(); }

private:
    const fs::path m_file;
};

/** Everything that the commands ask; duplicates are left out, since they read the files that a catalogue names. */
void ask(const std::string& file) {
    CatalogueSet catalogues({file});
    catalogues.lookedAt();
    catalogues.otherFiles();
    catalogues.walkedFiles();
    std::string first;
    std::size_t pictures = 0;
    catalogues.forEach([&](const DocumentFacts& facts) {
        if (first.empty()) first = facts.found.fullName;
        pictures += catalogues.previewOf(facts.found.fullName).size();
    });
    Archive all;
    catalogues.fill(all);
    for (const MissingTarget& missing : all.missing()) all.candidatesOf(missing);
    findOrphans(all);
    for (const DocumentTree::Direction direction : {DocumentTree::Uses, DocumentTree::UsedBy})
        for (const unsigned int depth : {0U, 1U, 2U}) {
            Archive some;
            if (!catalogues.fillTree(some, first, direction, depth)) continue;
            const std::size_t rows = DocumentTree(some, some.find(first), direction, depth).rows().size();
            if (rows <= some.links().size() + 1) continue;
            std::fprintf(stderr, "broken: more lines than links\n");
            std::abort();
        }
}

/** Without any document: all that the catalogue tells of has gone. */
void update(const std::string& file) {
    catalogue::UpdateOptions options;
    options.file = file;
    JournalFile journal("");
    catalogue::update(options, DocumentSearch(true), journal);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const CatalogueFile file;
    const std::string bytes(data, data + size);
    file.write(bytes);
    try {
        ask(file.name());
    } catch (const DatabaseError&) { // said to whoever asks
    }
    if (file.bytes() != bytes) {
        std::fprintf(stderr, "broken: asking has changed the catalogue\n");
        std::abort();
    }
    try {
        update(file.name());
        ask(file.name());
    } catch (const DatabaseError&) { // as above
    }
    return 0;
}
