#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

/** The fuzz target this program is linked with. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fs = std::filesystem;

namespace {

/** The folder's files in order of their names, so that two runs are the same. */
std::vector<fs::path> filesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->is_regular_file(error)) files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return false;
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    // A buffer of the exact size lets a sanitizer see every read beyond it.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

} // namespace

/** Runs the fuzz target on every file of the folders given. A folder without files is an error: it would test nothing.
 */
int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const std::vector<fs::path> files = filesOf(argv[i]);
        if (files.empty()) {
            std::fprintf(stderr, "%s: no files to replay\n", argv[i]);
            return 1;
        }
        for (const fs::path& file : files) {
            if (!replay(file)) {
                std::fprintf(stderr, "%s: cannot be read\n", file.u8string().c_str());
                return 1;
            }
            ++count;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return count > 0 ? 0 : 1;
}
