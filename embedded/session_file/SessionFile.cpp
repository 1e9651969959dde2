#include "embedded/SessionFile.h"

#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/session_file/SessionSections.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace embedded {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t(256) << 20U;

SessionFileResult failure(const std::string& error) { return {false, error}; }

/** Reads a whole file; the error, empty when there is none. */
std::string readFile(const std::string& path, std::string& text) {
    SystemFile file;
    if (!file.open(path)) return "cannot be opened";
    std::vector<char> buffer(std::size_t(1) << 16U);
    for (;;) {
        const long count = file.read(buffer.data(), buffer.size());
        if (count < 0) return "cannot be read";
        if (count == 0) return std::string();
        if (text.size() + static_cast<std::size_t>(count) > kLargestFile) return "larger than 256 MiB";
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

/** Writes a new file beside the old one and puts it in its place. */
bool replaceFile(const fs::path& path, const std::string& text) {
    fs::path beside = path;
    beside += ".new";
    std::ofstream file(beside, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    std::error_code error;
    if (file) fs::rename(beside, path, error);
    if (file && !error) return true;
    std::error_code ignored;
    fs::remove(beside, ignored);
    return false;
}

/** The folder of a file, with a separator at its end. */
std::string folderOf(const std::string& path) {
    std::error_code error;
    const fs::path file = fs::absolute(fs::u8path(path), error);
    std::string folder = (error ? fs::u8path(path) : file).parent_path().u8string();
    if (!folder.empty() && !isSeparator(folder.back())) folder += systemSeparator();
    return folder;
}

void readSession(Session& session, const std::string& path, const JsonField& root) {
    const std::vector<JsonField> members = root.members();
    std::set<std::string> seen;
    for (const JsonField& member : members) {
        if (!SessionSection::find(member.key())) member.fail("unknown key");
        if (!seen.insert(member.key()).second) member.fail("given twice");
    }
    const SectionReader reader(session, folderOf(path));
    for (const SessionSection* section : SessionSection::all())
        if (const auto field = root.optional(section->key)) section->read(*field, reader);
}

Json writeSession(Session& session) {
    Json root = Json::object();
    for (const SessionSection* section : SessionSection::all()) {
        try {
            Json written = section->write(session);
            if (!written.isNull()) root[section->key] = std::move(written);
        } catch (const SaveFault& fault) {
            throw SaveFault{section->key + fault.place + ": " + fault.message, {}};
        }
    }
    return root;
}

} // namespace

SessionFileResult loadSessionText(const std::string& path, const std::string& text) {
    Session& session = Session::current();
    session.reset();
    SessionFileResult result;
    try {
        const JsonValue root = parseJson(text);
        readSession(session, path, JsonField(root));
        return result;
    } catch (const JsonFault& fault) {
        result = failure(path + ":" + std::to_string(fault.line) + ": " + fault.message);
    } catch (const std::exception& exception) {
        result = failure(path + ": " + exception.what());
    }
    session.reset();
    return result;
}

SessionFileResult loadSession(const std::string& path) {
    std::string text;
    const std::string error = readFile(path, text);
    if (error.empty()) return loadSessionText(path, text);
    Session::current().reset();
    return failure(path + ": " + error);
}

SessionFileResult sessionText(std::string& text) {
    text.clear();
    try {
        text = writeSession(Session::current()).dumpLines() + "\n";
        return {};
    } catch (const SaveFault& fault) {
        return failure(fault.message);
    } catch (const std::exception& exception) {
        return failure(exception.what());
    }
}

SessionFileResult saveSession(const std::string& path) {
    std::string text;
    const SessionFileResult result = sessionText(text);
    if (!result.ok) return failure(path + ": " + result.error);
    try {
        if (replaceFile(fs::u8path(path), text)) return result;
    } catch (const std::exception&) {
        // A name that the system cannot even spell.
    }
    return failure(path + ": cannot be written");
}

} // namespace embedded
