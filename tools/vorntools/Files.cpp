#include "tools/vorntools/Files.h"

#include "tools/vorntools/Output.h"
#include "tools/vorntools/System.h"

#include "VornToolsCommon.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

const std::string kDatSuffix = ".dat";

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/** The name of a folder with a separator at its end. */
std::string withSeparator(const std::string& folder) { return (fs::u8path(folder) / "").u8string(); }

/** One letter or set of letters of a pattern, which begins at a place, against a letter. */
struct Letter {
    bool isMatch;
    std::size_t next; ///< place behind it in the pattern
};

/** A set that is not closed is no set: its bracket means itself. */
Letter matchSet(const std::string& pattern, std::size_t at, char letter) {
    std::size_t i = at + 1;
    const bool isNegative = i < pattern.size() && (pattern[i] == '!' || pattern[i] == '^');
    if (isNegative) ++i;
    bool isIn = false;
    for (const std::size_t first = i; i < pattern.size() && (pattern[i] != ']' || i == first); ++i) {
        const bool isRange = i + 2 < pattern.size() && pattern[i + 1] == '-' && pattern[i + 2] != ']';
        const char last = isRange ? pattern[i + 2] : pattern[i];
        isIn = isIn || (letter >= pattern[i] && letter <= last);
        if (isRange) i += 2;
    }
    if (i >= pattern.size()) return {letter == '[', at + 1};
    return {isIn != isNegative, i + 1};
}

Letter matchLetter(const std::string& pattern, std::size_t at, char letter) {
    if (pattern[at] == '?') return {true, at + 1};
    if (pattern[at] == '[') return matchSet(pattern, at, letter);
    if (pattern[at] == '\\' && at + 1 < pattern.size()) return {letter == pattern[at + 1], at + 2};
    return {letter == pattern[at], at + 1};
}

bool contains(const std::vector<std::string>& sorted, const std::string& text) {
    return std::binary_search(sorted.begin(), sorted.end(), text);
}

} // namespace

bool isCatiaDocument(const std::string& name) { return isCatiaType(VornToolsCommon::returnDocumentType(textOf(name))); }

bool isCatiaType(int type) {
    switch (type) {
    case VornToolsCommon::DocumentTypeProduct:
    case VornToolsCommon::DocumentTypePart:
    case VornToolsCommon::DocumentTypeDrawing:
    case VornToolsCommon::DocumentTypeProcess:
    case VornToolsCommon::DocumentTypeAnalysis:
    case VornToolsCommon::DocumentTypeCatalog: return true;
    default: return false;
    }
}

bool matches(const std::string& pattern, const std::string& text) {
    // Behind a star the rest of the pattern is tried at every place; an earlier star never has to be tried again.
    std::size_t at = 0, star = std::string::npos, starAt = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = ++at;
            starAt = i;
            continue;
        }
        const Letter letter = at < pattern.size() ? matchLetter(pattern, at, text[i]) : Letter{false, at};
        if (letter.isMatch) {
            at = letter.next;
            ++i;
        } else if (star != std::string::npos) {
            at = star;
            i = ++starAt;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == '*') ++at;
    return at == pattern.size();
}

std::string fullNameOf(const std::string& name) {
    // Behind a link to a folder, ".." is not the folder in front of it: what goes up is followed on the disk.
    fs::path up, rest;
    for (const fs::path& part : fs::u8path(name)) {
        rest /= part;
        if (part != "..") continue;
        up /= rest;
        rest.clear();
    }
    std::error_code error;
    const fs::path full = up.empty() ? fs::absolute(rest, error) : fs::canonical(up, error) / rest;
    return error ? name : full.lexically_normal().make_preferred().u8string();
}

bool DocumentSearch::search(const std::vector<std::string>& names) {
    bool complete = true;
    for (const std::string& name : names) {
        std::error_code error;
        const fs::file_status status = fs::status(fs::u8path(name), error);
        if (fs::is_directory(status)) {
            addGiven(name, withSeparator(name));
            complete = searchFolder(name) && complete;
        } else if (fs::exists(status)) {
            const std::string file = fs::u8path(name).filename().u8string();
            const std::string prefix = name.substr(0, name.size() - file.size());
            addGiven(prefix.empty() ? "." : prefix, prefix);
            add({name, fullNameOf(name), true, fs::exists(fs::u8path(name + kDatSuffix), error)});
        } else {
            complain("no such file or folder: " + name);
            complete = false;
        }
    }
    return complete;
}

std::string DocumentSearch::asGiven(const std::string& name) const {
    const auto known = m_indices.find(name);
    if (known != m_indices.end()) return m_found[known->second].name;
    for (const std::size_t length : m_folderLengths) {
        if (length > name.size()) continue;
        const auto folder = m_folders.find(name.substr(0, length));
        if (folder != m_folders.end()) return folder->second + name.substr(length);
    }
    return name;
}

void DocumentSearch::addGiven(const std::string& folder, const std::string& prefix) {
    const std::string fullPrefix = withSeparator(fullNameOf(folder));
    m_folders.emplace(fullPrefix, prefix);
    m_folderLengths.insert(fullPrefix.size());
}

void DocumentSearch::add(FoundDocument document) {
    if (m_indices.emplace(document.fullName, m_found.size()).second) m_found.push_back(std::move(document));
}

bool DocumentSearch::isExcluded(const std::string& prefix, const std::string& name) const {
    std::string path;
    return std::any_of(m_excluded.begin(), m_excluded.end(), [&](const std::string& pattern) {
        if (pattern.find('/') == std::string::npos) return matches(pattern, name);
        if (path.empty()) path = fs::u8path(prefix + name).generic_u8string();
        return matches(pattern, path);
    });
}

bool DocumentSearch::searchFolder(const std::string& folder) {
    const std::string prefix = withSeparator(folder);
    std::vector<host::FolderEntry> entries;
    const std::error_code error = host::listFolder(folder, entries);
    std::vector<std::string> files, folders;
    for (host::FolderEntry& entry : entries)
        if (!entry.isFolder)
            files.push_back(std::move(entry.name));
        else if (!entry.isLink)
            folders.push_back(std::move(entry.name));
    if (error) complain("cannot read folder " + folder + ": " + error.message());

    bool complete = !error;
    addFolder(prefix, files);
    std::sort(folders.begin(), folders.end());
    for (const std::string& name : folders)
        if (!isExcluded(prefix, name)) complete = searchFolder(prefix + name) && complete;
    return complete;
}

void DocumentSearch::addFolder(const std::string& prefix, std::vector<std::string>& files) {
    const std::string fullPrefix = withSeparator(fullNameOf(prefix));
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        const bool isDat = endsWith(file, kDatSuffix);
        const std::string document = isDat ? file.substr(0, file.size() - kDatSuffix.size()) : file;
        if (isExcluded(prefix, document)) continue;
        if (!isDat) {
            const bool hasDat = contains(files, file + kDatSuffix);
            if (hasDat || isCatiaDocument(file))
                add({prefix + file, fullPrefix + file, true, hasDat});
            else if (m_keepsOthers)
                m_others.push_back(fullPrefix + file);
            continue;
        }
        if (!contains(files, document)) add({prefix + document, fullPrefix + document, false, true});
    }
}

std::vector<std::string> documentsOf(const DocumentSearch& search, const std::vector<std::string>& names) {
    std::set<std::string> given;
    for (const std::string& name : names) given.insert(fullNameOf(name));
    std::vector<std::string> documents;
    for (const FoundDocument& found : search.found())
        // Without a DAT file nothing but its suffix made it a document.
        if (found.exists && (!found.hasDat || given.count(found.fullName) > 0 || isCatiaDocument(found.name)))
            documents.push_back(found.fullName);
    return documents;
}
