#include "tools/vorntools/System.h"

#include <algorithm>
#include <cstdio>

#include <sys/stat.h>
#include <sys/types.h>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <filesystem>

#include <io.h>
#include <shellapi.h>
#else
#include <dlfcn.h>
#include <unistd.h>

#include <cstring>
#endif

namespace host {

#if defined(_WIN32)

namespace {

std::string utf8(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, &text[0], size, nullptr, nullptr);
    text.pop_back();
    return text;
}

} // namespace

std::vector<std::string> arguments(int count, char** values) {
    // The values of main() are in the system's own 8-bit encoding, which lacks most letters.
    int wideCount = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &wideCount);
    if (!wide) return std::vector<std::string>(values + std::min(count, 1), values + count);
    std::vector<std::string> result;
    for (int i = 1; i < wideCount; ++i) result.push_back(utf8(wide[i]));
    LocalFree(wide);
    return result;
}

FileState stateOf(const std::string& file) {
    struct _stat64 state {};
    const std::filesystem::path path = std::filesystem::u8path(file);
    if (_wstat64(path.c_str(), &state) != 0) return {};
    return {true, static_cast<std::uint64_t>(state.st_size), static_cast<std::int64_t>(state.st_mtime)};
}

WriteZip* zipWriter() { return nullptr; }

bool outputIsTerminal() { return _isatty(_fileno(stdout)) != 0; }

bool errorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

#else

std::vector<std::string> arguments(int count, char** values) {
    return std::vector<std::string>(values + std::min(count, 1), values + count);
}

FileState stateOf(const std::string& file) {
    struct stat state {};
    if (::stat(file.c_str(), &state) != 0) return {};
    return {true, static_cast<std::uint64_t>(state.st_size), static_cast<std::int64_t>(state.st_mtime)};
}

WriteZip* zipWriter() {
    void* const library = ::dlopen("libVornToolsZip.so", RTLD_NOW | RTLD_LOCAL);
    void* const found = library ? ::dlsym(library, "vornToolsWriteZip") : nullptr;
    WriteZip* writer = nullptr;
    static_assert(sizeof writer == sizeof found, "both are the address of a function");
    std::memcpy(&writer, &found, sizeof writer);
    return writer;
}

bool outputIsTerminal() { return ::isatty(STDOUT_FILENO) != 0; }

bool errorIsTerminal() { return ::isatty(STDERR_FILENO) != 0; }

#endif

void prepareOutput() {
    constexpr std::size_t kBuffer = std::size_t(1) << 16U;
    std::setvbuf(stdout, nullptr, _IOFBF, kBuffer);
#if defined(_WIN32)
    SetConsoleOutputCP(CP_UTF8);
#endif
}

} // namespace host
