// The platform's calls on folders and paths.
#include "CATLib.h"
#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/Profile.h"
#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/text/TextBytes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

using namespace embedded;
namespace fs = std::filesystem;

namespace {

struct Entry {
    std::string name;
    bool isFile = false;
};

/** What is still to come of a folder: first what is known already, then the rest in the system's order. */
struct OpenFolder {
    std::string path;
    std::vector<Entry> known;
    std::size_t next = 0; ///< of the known ones
    fs::directory_iterator rest;

    bool isAtEnd() const { return next == known.size() && rest == fs::directory_iterator(); }
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

/** Name of an entry; empty when it is no text. */
std::string nameOf(const fs::directory_entry& entry) {
    try {
        return entry.path().filename().u8string();
    } catch (const std::exception&) {
        return {};
    }
}

/** The next entry of the rest, which is over after an error. */
Entry takeFromRest(OpenFolder& folder) {
    std::error_code isNone;
    const bool isFile = !folder.rest->is_symlink(isNone) && folder.rest->is_regular_file(isNone);
    Entry entry{nameOf(*folder.rest), isFile};
    folder.rest.increment(isNone);
    return entry;
}

/** Begins with "." and ".."; false when there is no such folder. Throws nothing for a name that is no text. */
bool begin(OpenFolder& folder) {
    try {
        std::error_code error;
        folder.rest = fs::directory_iterator(fs::u8path(folder.path), error);
        folder.known = {{".", false}, {"..", false}};
        return !error;
    } catch (const std::exception&) {
        return false;
    }
}

void putInOrder(OpenFolder& folder) {
    const FolderOrder order = switches().folderOrder;
    if (order == FolderOrder::system) return;
    const auto dots = static_cast<std::ptrdiff_t>(folder.known.size());
    while (folder.rest != fs::directory_iterator()) folder.known.push_back(takeFromRest(folder));
    const auto first = folder.known.begin() + (order == FolderOrder::reversed ? dots : 0);
    std::sort(first, folder.known.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
    if (order == FolderOrder::reversed) std::reverse(first, folder.known.end());
}

/** The parts of a list of folders, or the one folder that it is. */
std::vector<std::string> foldersOf(const std::string& paths) {
    std::vector<std::string> folders;
    std::size_t from = 0;
    std::size_t end = switches().pathLists ? paths.find(systemListSeparator()) : std::string::npos;
    for (; end != std::string::npos; end = paths.find(systemListSeparator(), from)) {
        folders.push_back(paths.substr(from, end - from));
        from = end + 1;
    }
    folders.push_back(paths.substr(from));
    return folders;
}

} // namespace

CATLibStatus CATOpenDirectory(const char* iPath, CATDirectory* oDir) {
    if (fails("CATOpenDirectory") || !isText(iPath) || !oDir) return CATLibError;
    auto folder = std::make_unique<OpenFolder>();
    folder->path = fromEightBit(iPath);
    if (folder->path == lastFileRead() || !begin(*folder)) return CATLibError;
    putInOrder(*folder);
    oDir->handle = folder.release();
    ++Accounting::get().live().files;
    return CATLibSuccess;
}

CATLibStatus CATReadDirectory(CATDirectory* iDir, CATDirectoryEntry* oEntry, int* oEndOfDir) {
    OpenFolder* const folder = folderOf(iDir);
    if (!folder) Accounting::get().breach("a folder that is not open was read");
    if (!folder || !oEntry || !oEndOfDir) return CATLibError;
    // Where there is no entry to tell, the name stays as it was.
    const FaultFlavour flavour = Failures::get().ask("CATReadDirectory");
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput) copyName("stale", oEntry->name);
        if (flavour == FaultFlavour::nullOutput) oEntry->name[0] = '\0';
        return flavour == FaultFlavour::nullOutput ? CATLibSuccess : CATLibError;
    }
    if (folder->isAtEnd()) {
        *oEndOfDir = 1;
        return CATLibSuccess;
    }
    const Entry entry = folder->next < folder->known.size() ? folder->known[folder->next++] : takeFromRest(*folder);
    lastFileRead() = entry.isFile ? joinedName(folder->path, entry.name) : std::string();
    if (switches().entryWithEndOfFolder && folder->isAtEnd()) *oEndOfDir = 1;
    return copyName(toEightBit(entry.name), oEntry->name) ? CATLibSuccess : CATLibError;
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
    for (const std::string& folder : foldersOf(fromEightBit(iPaths))) {
        const std::string path = joinedName(folder, fromEightBit(iFilename));
        FileFacts facts;
        if (!examineFile(path, facts) || !facts.isFile) continue;
        found = toEightBit(absoluteName(path));
        return found.c_str();
    }
    return nullptr;
}

void CATMakePath(const char* iDir, const char* iFileName, char* oFullpath) {
    if (!oFullpath) return;
    copyName(iDir && iFileName ? joinedName(iDir, iFileName) : std::string(), oFullpath);
}
