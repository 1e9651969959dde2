#include "tools/vorntools/archive/Packing.h"

#include "tools/vorntools/System.h"
#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace fs = std::filesystem;

namespace {

const std::string kPartSuffix = ".part";

/** How many parts of their folders all files share. */
std::size_t countCommonParts(const Archive& archive, const std::vector<Index>& documents) {
    PathParts common;
    for (const Index document : documents) {
        const PathParts folder = partsOfFolder(archive.text(archive.document(document).fullName));
        if (document == documents.front()) common = folder;
        const auto differs = std::mismatch(common.begin(), common.end(), folder.begin(), folder.end()).first;
        common.erase(differs, common.end());
    }
    return common.size();
}

/** The path behind some of its parts; the colon of a drive, which no folder may have, is left out. */
std::string pathBehind(std::string_view fullName, std::size_t count) {
    const PathParts parts = partsOf(fullName);
    std::string path;
    for (std::size_t i = count; i < parts.size(); ++i) {
        const bool isDrive = i == 0 && !parts[0].empty() && parts[0].back() == ':';
        if (!parts[i].empty())
            path += (path.empty() ? "" : "/") + std::string(parts[i].substr(0, parts[i].size() - isDrive));
    }
    return path;
}

/** Names of files that differ by more than letter case. */
class FreeNames {
public:
    std::string take(const std::string& name) {
        if (m_taken.insert(folded(name)).second) return name;
        const std::size_t file = name.rfind('/') + 1, dot = name.rfind('.');
        const std::size_t end = dot == std::string::npos || dot <= file ? name.size() : dot;
        // Behind the last number that was given, so that a thousand files of one name do not try a million.
        for (unsigned int& number = m_numbers.emplace(folded(name), 1).first->second;;) {
            std::string other = name.substr(0, end) + " (" + std::to_string(++number) + ")" + name.substr(end);
            if (m_taken.insert(folded(other)).second) return other;
        }
    }

private:
    std::unordered_set<std::string> m_taken;
    std::unordered_map<std::string, unsigned int> m_numbers;
};

bool isThereAtAll(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(file, ignored));
}

/** Files and folders that were made; what is not kept is removed again. */
class MadeFiles {
public:
    MadeFiles() = default;
    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;
    ~MadeFiles() {
        std::error_code ignored;
        for (auto made = m_made.rbegin(); made != m_made.rend(); ++made) fs::remove(*made, ignored);
    }

    std::error_code makeFolder(const fs::path& folder) {
        std::error_code error;
        if (folder.empty() || fs::is_directory(folder, error)) return {};
        error = makeFolder(folder.parent_path());
        if (!error && fs::create_directory(folder, error)) m_made.push_back(folder);
        return error;
    }
    /** Copies a file with its date. Under its name it is whole. */
    std::error_code copy(const fs::path& from, const fs::path& to) {
        std::error_code error = makeFolder(to.parent_path());
        const fs::path part = fs::path(to) += kPartSuffix;
        if (!error && isThereAtAll(part)) error = std::make_error_code(std::errc::file_exists);
        if (error) return error;
        m_made.push_back(part);
        fs::copy_file(from, part, error);
        if (!error) fs::last_write_time(part, fs::last_write_time(from, error), error);
        if (!error) fs::rename(part, to, error);
        if (!error) m_made.back() = to;
        return error;
    }
    void keep() { m_made.clear(); }

private:
    std::vector<fs::path> m_made;
};

std::string fileOf(const Archive& archive, const PackItem& item) {
    return std::string(archive.text(archive.document(item.document).fullName));
}

} // namespace

std::vector<PackItem> planPack(const Archive& archive, const std::vector<Index>& documents, bool flat) {
    const std::size_t common = countCommonParts(archive, documents);
    FreeNames names;
    std::vector<PackItem> items;
    for (const Index document : documents) {
        const std::string_view fullName = archive.text(archive.document(document).fullName);
        const std::string wanted = flat ? std::string(lastName(fullName)) : pathBehind(fullName, common);
        std::string name = names.take(wanted);
        const bool isRenamed = name != wanted;
        items.push_back({document, std::move(name), isRenamed});
    }
    return items;
}

std::string packIntoFolder(const Archive& archive, const std::vector<PackItem>& items, const std::string& folder) {
    const fs::path target = fs::u8path(folder);
    for (const PackItem& item : items)
        if (isThereAtAll(target / fs::u8path(item.name)))
            return (target / fs::u8path(item.name)).u8string() + " exists already";
    MadeFiles made;
    if (const std::error_code error = made.makeFolder(target)) return folder + " cannot be made: " + error.message();
    for (const PackItem& item : items) {
        const fs::path file = target / fs::u8path(item.name);
        if (const std::error_code error = made.copy(fs::u8path(fileOf(archive, item)), file))
            return file.u8string() + " cannot be written: " + error.message();
    }
    made.keep();
    return {};
}

std::string packIntoZip(const Archive& archive, const std::vector<PackItem>& items, const std::string& zipFile) {
    if (isThereAtAll(fs::u8path(zipFile))) return zipFile + " exists already";
    WriteZip* const write = host::zipWriter();
    if (!write) return "packing into a ZIP file is not built in";
    std::vector<std::string> files;
    for (const PackItem& item : items) files.push_back(fileOf(archive, item));
    std::vector<ZipItem> list;
    for (std::size_t i = 0; i < items.size(); ++i) list.push_back({files[i].c_str(), items[i].name.c_str()});
    char message[256] = "";
    if (write(zipFile.c_str(), list.data(), list.size(), message, sizeof message)) return {};
    return zipFile + " cannot be written: " + message;
}
