// The platform's calls on folders and paths.
#include "CATLib.h"
#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

using namespace embedded;
namespace fs = std::filesystem;

namespace {

/** The entries still to come: "." and ".." first, as most systems give them. */
struct OpenFolder {
    std::string path;
    fs::directory_iterator next;
    int dots = 2;
};

/** The entry that was read last when it is a file. A search through folders tries to open each entry, and the folder
 * has told already that this one is none. */
std::string& lastFileRead() {
    static std::string& path = *new std::string;
    return path;
}

OpenFolder* folderOf(const CATDirectory* directory) {
    return directory ? static_cast<OpenFolder*>(directory->handle) : nullptr;
}

bool isText(const char* text) { return text && *text; }

/** Copies with the terminator; false when there is no room for it. */
bool copyName(const std::string& name, char* out) {
    const std::size_t length = std::min(name.size(), std::size_t{CATMaxPathSize - 1});
    std::memcpy(out, name.data(), length);
    out[length] = '\0';
    return length == name.size();
}

/** The folder's first entry; throws nothing for a name that is no text. */
bool openFolder(const char* path, fs::directory_iterator& first) {
    try {
        std::error_code error;
        first = fs::directory_iterator(fs::u8path(path), error);
        return !error;
    } catch (const std::exception&) {
        return false;
    }
}

/** Name of an entry; empty when it is no text. */
std::string nameOf(const fs::directory_entry& entry) {
    try {
        return entry.path().filename().u8string();
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

CATLibStatus CATOpenDirectory(const char* iPath, CATDirectory* oDir) {
    if (fails("CATOpenDirectory") || !isText(iPath) || !oDir) return CATLibError;
    fs::directory_iterator first;
    if (iPath == lastFileRead() || !openFolder(iPath, first)) return CATLibError;
    oDir->handle = new OpenFolder{iPath, std::move(first)};
    ++Accounting::get().live().files;
    return CATLibSuccess;
}

CATLibStatus CATReadDirectory(CATDirectory* iDir, CATDirectoryEntry* oEntry, int* oEndOfDir) {
    OpenFolder* const folder = folderOf(iDir);
    if (!folder || !oEntry || !oEndOfDir) return CATLibError;
    oEntry->name[0] = '\0';
    const FaultFlavour flavour = Failures::get().ask("CATReadDirectory");
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput) copyName("stale", oEntry->name);
        return flavour == FaultFlavour::nullOutput ? CATLibSuccess : CATLibError;
    }
    if (folder->dots > 0) {
        copyName(folder->dots-- == 2 ? "." : "..", oEntry->name);
        return CATLibSuccess;
    }
    if (folder->next == fs::directory_iterator()) {
        *oEndOfDir = 1;
        return CATLibSuccess;
    }
    const std::string name = nameOf(*folder->next);
    std::error_code endsTheFolder;
    const bool isFile = !folder->next->is_symlink(endsTheFolder) && folder->next->is_regular_file(endsTheFolder);
    lastFileRead() = isFile ? joinedName(folder->path, name) : std::string();
    folder->next.increment(endsTheFolder);
    return copyName(name, oEntry->name) ? CATLibSuccess : CATLibError;
}

CATLibStatus CATCloseDirectory(CATDirectory* iDir) {
    OpenFolder* const folder = folderOf(iDir);
    if (!folder) {
        Accounting::get().breach("a folder that is not open was closed");
        return CATLibError;
    }
    delete folder;
    iDir->handle = nullptr;
    --Accounting::get().live().files;
    return CATLibSuccess;
}

const char* CATFindPath(const char* iFilename, const char* iPaths) {
    static std::string& found = *new std::string;
    if (fails("CATFindPath") || !isText(iFilename) || !isText(iPaths)) return nullptr;
    const std::string path = joinedName(iPaths, iFilename);
    FileFacts facts;
    if (!examineFile(path, facts) || !facts.isFile) return nullptr;
    found = path;
    return found.c_str();
}

void CATMakePath(const char* iDir, const char* iFileName, char* oFullpath) {
    if (!oFullpath) return;
    copyName(iDir && iFileName ? joinedName(iDir, iFileName) : std::string(), oFullpath);
}
