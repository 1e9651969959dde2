// Names of nodes and the file with the prefixes of ignore nodes. The input is the name up to its first NUL (or all of
// it) and then the bytes of the prefix file.

#include "ExchangeFolder.h"

#include "VornToolsCommon.h"
#include "VornToolsIgnoreNodes.h"

struct VornToolsIgnoreNodesTestAccess {
    static bool startsWithPrefix(VornToolsIgnoreNodes& nodes, const CATUnicodeString& text) {
        unsigned char result = 0;
        nodes.isStartedByPrefix(text, result);
        return result != 0;
    }
    static std::string formatted(VornToolsIgnoreNodes& nodes, const std::string& description) {
        CATUnicodeString text(description.data(), description.size());
        nodes.setFormatInstanceDescription(text);
        return bytesOf(text);
    }
};

namespace {

using Access = VornToolsIgnoreNodesTestAccess;

bool isAscii(const std::string& bytes) {
    for (const char c : bytes)
        if (static_cast<unsigned char>(c) > 127) return false;
    return true;
}

void checkPrefixes(const std::string& name, const std::string& file) {
    VornToolsIgnoreNodes nodes;
    bool ended = false;
    bool expected = false;
    for (const std::string& prefix : linesOf(file, ended))
        expected = expected || (!prefix.empty() && name.compare(0, prefix.size(), prefix) == 0);
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
    static const ExchangeFolder folder;
    const std::string bytes(data, data + size);
    const std::size_t nul = bytes.find('\0');
    const std::string name = bytes.substr(0, nul);
    const std::string file = nul == std::string::npos ? std::string() : bytes.substr(nul + 1);
    folder.write("IgnoreNodesIdentifiers.txt", file);
    embedded::Environment& environment = embedded::Session::current().environment();
    environment.configurationDirectory = folder.nameOf("");
    environment.localCacheDirectory = "D:\\cache\\";
    environment.releaseCacheDirectories = {"/network/"};
    environment.separator = size % 2 != 0 ? "/" : "\\";

    checkPrefixes(name, file);
    checkDescription(name);
    checkCacheName(name);
    checkCacheName(name + ".cgr");
    checkCacheName("D:\\cache\\cgr\\" + name + ".CATPart.cgr");
    requireTidiness();
    return 0;
}
