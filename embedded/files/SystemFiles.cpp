#include "embedded/files/SystemFiles.h"
#include "embedded/Accounting.h"

#include <filesystem>
#include <string>
#include <system_error>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#else
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace embedded {

namespace {

bool isPossibleName(std::string_view name) { return !name.empty() && name.find('\0') == std::string_view::npos; }

} // namespace

#if defined(_WIN32)

namespace {

/** Longer names need the form that switches the system's limit off. */
constexpr std::size_t kShortName = 240;
constexpr long long kTicksPerSecond = 10000000;
constexpr long long kSecondsFrom1601To1970 = 11644473600;

std::wstring wideName(std::string_view name) {
    if (!isPossibleName(name) || name.size() > 32000) return {};
    const int size = static_cast<int>(name.size());
    std::wstring wide(name.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name.data(), size, &wide[0], size);
    wide.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    const bool hasDrive = wide.size() > kShortName && wide[1] == L':';
    if (!hasDrive) return wide;
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    return L"\\\\?\\" + wide;
}

long long joined(DWORD high, DWORD low) { return static_cast<long long>(high) << 32 | low; }

} // namespace

bool examineFile(std::string_view name, FileFacts& facts) {
    facts = FileFacts();
    const std::wstring wide = wideName(name);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (wide.empty() || !GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &data)) return false;
    facts.isFile = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    facts.size = joined(data.nFileSizeHigh, data.nFileSizeLow);
    facts.changed = joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime) / kTicksPerSecond -
                    kSecondsFrom1601To1970;
    return true;
}

bool SystemFile::open(std::string_view name) {
    close();
    const std::wstring wide = wideName(name);
    if (wide.empty()) return false;
    const HANDLE handle =
        CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    m_handle = handle;
    ++Accounting::get().live().files;
    return true;
}

long SystemFile::read(char* bytes, std::size_t size) {
    DWORD count = 0;
    if (!m_handle || !ReadFile(m_handle, bytes, static_cast<DWORD>(size), &count, nullptr)) return -1;
    return static_cast<long>(count);
}

void SystemFile::close() {
    if (!m_handle) return;
    CloseHandle(m_handle);
    m_handle = nullptr;
    --Accounting::get().live().files;
}

bool copyFileOnDisk(std::string_view source, std::string_view target) {
    const std::wstring from = wideName(source);
    const std::wstring to = wideName(target);
    return !from.empty() && !to.empty() && CopyFileW(from.c_str(), to.c_str(), FALSE);
}

bool cutFileOnDisk(std::string_view name, long long size) {
    const std::wstring wide = wideName(name);
    if (wide.empty()) return false;
    const HANDLE handle = CreateFileW(wide.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    LARGE_INTEGER end;
    end.QuadPart = size;
    const bool cut = SetFilePointerEx(handle, end, nullptr, FILE_BEGIN) && SetEndOfFile(handle);
    CloseHandle(handle);
    return cut;
}

bool renameFileOnDisk(std::string_view name, std::string_view newName) {
    const std::wstring from = wideName(name);
    const std::wstring to = wideName(newName);
    return !from.empty() && !to.empty() && MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING);
}

bool deleteFileOnDisk(std::string_view name) {
    const std::wstring wide = wideName(name);
    const DWORD attributes = wide.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (DeleteFileW(wide.c_str())) return true;
    SetFileAttributesW(wide.c_str(), attributes);
    return false;
}

const char* systemSeparator() { return "\\"; }

char systemListSeparator() { return ';'; }

#else

bool examineFile(std::string_view name, FileFacts& facts) {
    facts = FileFacts();
    struct stat data;
    if (!isPossibleName(name) || ::stat(name.data(), &data) != 0) return false;
    facts.isFile = !S_ISDIR(data.st_mode);
    facts.size = static_cast<long long>(data.st_size);
    facts.changed = static_cast<long long>(data.st_mtime);
    return true;
}

bool SystemFile::open(std::string_view name) {
    close();
    if (!isPossibleName(name)) return false;
    m_handle = ::open(name.data(), O_RDONLY | O_CLOEXEC);
    if (m_handle < 0) return false;
    ++Accounting::get().live().files;
    return true;
}

long SystemFile::read(char* bytes, std::size_t size) {
    if (m_handle < 0) return -1;
    ssize_t count = 0;
    do count = ::read(m_handle, bytes, size);
    while (count < 0 && errno == EINTR);
    return static_cast<long>(count);
}

void SystemFile::close() {
    if (m_handle < 0) return;
    ::close(m_handle);
    m_handle = -1;
    --Accounting::get().live().files;
}

bool copyFileOnDisk(std::string_view source, std::string_view target) {
    FileFacts facts;
    if (!isPossibleName(target) || !examineFile(source, facts) || !facts.isFile) return false;
    std::error_code error;
    const std::filesystem::path from(source);
    const std::filesystem::path to(target);
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    if (error) return false;
    std::filesystem::last_write_time(to, std::filesystem::last_write_time(from, error), error);
    return !error;
}

bool cutFileOnDisk(std::string_view name, long long size) {
    return isPossibleName(name) && ::truncate(name.data(), static_cast<off_t>(size)) == 0;
}

bool renameFileOnDisk(std::string_view name, std::string_view newName) {
    FileFacts facts;
    return isPossibleName(newName) && examineFile(name, facts) && facts.isFile &&
           std::rename(name.data(), newName.data()) == 0;
}

bool deleteFileOnDisk(std::string_view name) { return isPossibleName(name) && ::unlink(name.data()) == 0; }

const char* systemSeparator() { return "/"; }

char systemListSeparator() { return ':'; }

#endif

std::string absoluteName(const std::string& name) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(std::filesystem::u8path(name), error);
    return error ? name : absolute.u8string();
}

} // namespace embedded
