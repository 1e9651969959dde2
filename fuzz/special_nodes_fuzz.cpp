// Names of nodes and the file with the prefixes of ignore nodes. The input is the name up to its first NUL (or all of
// it) and then the bytes of the prefix file.

#include "VornToolsCommon.h"
#include "VornToolsIgnoreNodes.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

struct VornToolsIgnoreNodesTestAccess {
    static bool startsWithPrefix(VornToolsIgnoreNodes& nodes, const CATUnicodeString& text) {
        unsigned char result = 0;
        nodes.isStartedByPrefix(text, result);
        return result != 0;
    }
    static std::string formatted(VornToolsIgnoreNodes& nodes, const std::string& description) {
        CATUnicodeString text(description.data(), description.size());
        nodes.setFormatInstanceDescription(text);
        return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
    }
};

namespace {

using Access = VornToolsIgnoreNodesTestAccess;

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/** A folder of this process for the prefix file, removed at the end. */
class Folder {
public:
    Folder() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_folder = std::filesystem::temp_directory_path() / ("vorntools_fuzz_" + std::to_string(now));
        std::filesystem::create_directories(m_folder);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    void writePrefixes(const std::string& bytes) const {
        std::ofstream(m_folder / "IgnoreNodesIdentifiers.txt", std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    /** Ends with a separator: whatever the session joins names with, the file is found. */
    std::string name() const { return (m_folder / "").u8string(); }

private:
    std::filesystem::path m_folder;
};

/** The file's lines, read a second way: LF or CR LF ends a line. */
std::vector<std::string> linesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = bytes.find('\n', begin);
        std::string line = bytes.substr(begin, end == std::string::npos ? end : end - begin);
        if (end != std::string::npos && !line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty()) lines.push_back(line);
        begin = end == std::string::npos ? bytes.size() : end + 1;
    }
    return lines;
}

bool isAscii(const std::string& bytes) {
    for (const char c : bytes)
        if (static_cast<unsigned char>(c) > 127) return false;
    return true;
}

void checkPrefixes(const std::string& name, const std::string& file) {
    VornToolsIgnoreNodes nodes;
    const std::vector<std::string> prefixes = linesOf(file);
    bool expected = false;
    for (const std::string& prefix : prefixes) expected = expected || name.compare(0, prefix.size(), prefix) == 0;
    // Characters of several bytes may be cut by a prefix: the platform then sees no match.
    const bool starts = Access::startsWithPrefix(nodes, CATUnicodeString(name.data(), name.size()));
    require(starts == expected || (!starts && !isAscii(name)), "a prefix that is told the other way");
    require(embedded::Journal::get().contains("the ignore nodes prefix file was loaded"), "a file that was not loaded");
}

void checkDescription(const std::string& description) {
    VornToolsIgnoreNodes nodes;
    const std::string marked = Access::formatted(nodes, description);
    require(marked.compare(0, 10, "IgnoreNode") == 0, "a description without the marker");
    require(Access::formatted(nodes, marked) == marked, "a description that is marked twice");
}

void checkCacheName(const std::string& name) {
    CATUnicodeString source;
    const HRESULT code =
        VornToolsCommon::extractFileNameFromCacheFileName(CATUnicodeString(name.data(), name.size()), source);
    require(code == S_OK, "a cached name that fails");
    require(source.IsNull() == static_cast<int>(name.empty()), "a name without a source");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const std::string bytes(data, data + size);
    const std::size_t nul = bytes.find('\0');
    const std::string name = bytes.substr(0, nul);
    const std::string file = nul == std::string::npos ? std::string() : bytes.substr(nul + 1);
    folder.writePrefixes(file);
    embedded::Environment& environment = embedded::Session::current().environment();
    environment.configurationDirectory = folder.name();
    environment.localCacheDirectory = "D:\\cache\\";
    environment.releaseCacheDirectories = {"/network/"};
    environment.separator = size % 2 != 0 ? "/" : "\\";

    checkPrefixes(name, file);
    checkDescription(name);
    checkCacheName(name);
    checkCacheName(name + ".cgr");
    checkCacheName("D:\\cache\\cgr\\" + name + ".CATPart.cgr");
    require(embedded::Accounting::get().live().files == 0, "files left open");
    require(embedded::Accounting::get().takeBreaches().empty(), "a rule of the platform");
    require(embedded::Journal::get().open() == 0, "journal frames left open");
    embedded::Journal::get().clear();
    embedded::ErrorReports::get().take();
    return 0;
}
