#include "tools/vorntools/Files.h"

#include "tools/vorntools/Output.h"

#include "VornToolsCommon.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

const std::string kDatSuffix = ".dat";

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool contains(const std::vector<std::string>& sorted, const std::string& text) {
    return std::binary_search(sorted.begin(), sorted.end(), text);
}

} // namespace

bool isCatiaDocument(const std::string& name) {
    switch (VornToolsCommon::returnDocumentType(textOf(name))) {
    case VornToolsCommon::DocumentTypeProduct:
    case VornToolsCommon::DocumentTypePart:
    case VornToolsCommon::DocumentTypeDrawing:
    case VornToolsCommon::DocumentTypeProcess:
    case VornToolsCommon::DocumentTypeAnalysis:
    case VornToolsCommon::DocumentTypeCatalog: return true;
    default: return false;
    }
}

bool DocumentSearch::search(const std::vector<std::string>& names) {
    bool complete = true;
    for (const std::string& name : names) {
        std::error_code error;
        const fs::file_status status = fs::status(fs::u8path(name), error);
        if (fs::is_directory(status)) {
            complete = searchFolder(name) && complete;
        } else if (fs::exists(status)) {
            m_found.push_back({name, true, fs::exists(fs::u8path(name + kDatSuffix), error)});
        } else {
            complain("no such file or folder: " + name);
            complete = false;
        }
    }
    return complete;
}

bool DocumentSearch::searchFolder(const std::string& folder) {
    std::error_code error;
    fs::directory_iterator entry(fs::u8path(folder), error);
    std::vector<std::string> files, folders;
    while (!error && entry != fs::directory_iterator()) {
        std::error_code ignored;
        const bool isFolder = entry->is_directory(ignored);
        if (!isFolder) files.push_back(entry->path().filename().u8string());
        if (isFolder && !entry->is_symlink(ignored)) folders.push_back(entry->path().filename().u8string());
        entry.increment(error);
    }
    if (error) complain("cannot read folder " + folder + ": " + error.message());

    bool complete = !error;
    const std::string prefix = (fs::u8path(folder) / "").u8string();
    addFolder(prefix, files);
    std::sort(folders.begin(), folders.end());
    for (const std::string& name : folders) complete = searchFolder(prefix + name) && complete;
    return complete;
}

void DocumentSearch::addFolder(const std::string& prefix, std::vector<std::string>& files) {
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        if (!endsWith(file, kDatSuffix)) {
            const bool hasDat = contains(files, file + kDatSuffix);
            if (hasDat || isCatiaDocument(file)) m_found.push_back({prefix + file, true, hasDat});
            continue;
        }
        const std::string document = file.substr(0, file.size() - kDatSuffix.size());
        if (!contains(files, document)) m_found.push_back({prefix + document, false, true});
    }
}
