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

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <dlfcn.h>
#include <sys/ioctl.h>
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

int terminalWidth() {
    CONSOLE_SCREEN_BUFFER_INFO info;
    const bool known = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) != 0;
    return known ? info.srWindow.Right - info.srWindow.Left + 1 : 0;
}

bool enableColors() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (!GetConsoleMode(output, &mode)) return true; // no console: whoever asked for colours wants the codes
    return SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

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

int terminalWidth() {
    winsize size = {};
    return outputIsTerminal() && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool enableColors() { return true; }

#endif

std::string readInput() {
#if defined(_WIN32)
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    std::string text;
    char piece[1U << 16U];
    for (std::size_t size; (size = std::fread(piece, 1, sizeof piece, stdin)) > 0;) text.append(piece, size);
    return text;
}

void prepareOutput() {
    constexpr std::size_t kBuffer = std::size_t(1) << 16U;
    std::setvbuf(stdout, nullptr, _IOFBF, kBuffer);
#if defined(_WIN32)
    SetConsoleOutputCP(CP_UTF8);
#endif
}

} // namespace host
