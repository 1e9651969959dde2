#include "tools/vorntools/System.h"

#include <algorithm>
#include <cstdio>
#include <thread>

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
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <memory>
#include <string_view>
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
    return {true, static_cast<std::uint64_t>(state.st_size), static_cast<std::int64_t>(state.st_mtime), 0, 0};
}

NeighbourStates::~NeighbourStates() = default;

FileState NeighbourStates::stateOf(const std::string& file) { return host::stateOf(file); }

std::error_code listFolder(const std::string& folder, std::vector<FolderEntry>& entries) {
    std::error_code error;
    std::filesystem::directory_iterator entry(std::filesystem::u8path(folder), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        entries.push_back(
            {entry->path().filename().u8string(), entry->is_directory(ignored), entry->is_symlink(ignored)});
    }
    return error;
}

WriteZip* zipWriter() { return nullptr; }

GetSqlite* sqlite() { return nullptr; }

bool Helpers::areThere() { return false; }

Helpers::Helpers(std::size_t count, const std::function<void(std::size_t, const Send&)>&) : m_wanted(count) {}

Helpers::~Helpers() = default;

bool Helpers::receive(std::size_t, std::size_t, std::string&) { return false; }

bool Helpers::refill(Process&) { return false; }

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

namespace {

FileState stateIn(int folder, const char* file) {
    struct stat state {};
    if (::fstatat(folder, file, &state, 0) != 0) return {};
    return {true, static_cast<std::uint64_t>(state.st_size), static_cast<std::int64_t>(state.st_mtime),
            static_cast<std::int64_t>(state.st_mtim.tv_nsec), static_cast<std::uint64_t>(state.st_ino)};
}

} // namespace

FileState stateOf(const std::string& file) { return stateIn(AT_FDCWD, file.c_str()); }

NeighbourStates::~NeighbourStates() {
    if (m_folder >= 0) ::close(m_folder);
}

FileState NeighbourStates::stateOf(const std::string& file) {
    const std::size_t end = file.rfind('/') + 1;
    if (end == 0) return host::stateOf(file);
    if (file.compare(0, end, m_name) != 0) {
        if (m_folder >= 0) ::close(m_folder);
        m_name.assign(file, 0, end);
        m_folder = ::open(m_name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }
    // A folder that must not be read may be passed all the same.
    return m_folder < 0 ? host::stateOf(file) : stateIn(m_folder, file.c_str() + end);
}

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

bool isFolderIn(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat state {};
    return ::fstatat(::dirfd(folder), entry.d_name, &state, 0) == 0 && S_ISDIR(state.st_mode);
}

/** Whether somebody can go through what an entry holds: a pipe keeps its reader waiting. A link to nothing stays, so
 * that it is told. */
bool isFileOrFolderIn(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return entry.d_type == DT_REG || entry.d_type == DT_DIR;
    struct stat state {};
    return ::fstatat(::dirfd(folder), entry.d_name, &state, 0) != 0 || S_ISREG(state.st_mode) || S_ISDIR(state.st_mode);
}

bool isLinkIn(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
    struct stat state {};
    return ::fstatat(::dirfd(folder), entry.d_name, &state, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(state.st_mode);
}

} // namespace

// std::filesystem would put a path together for each name: folders may have many.
std::error_code listFolder(const std::string& folder, std::vector<FolderEntry>& entries) {
    const std::unique_ptr<DIR, CloseFolder> opened(::opendir(folder.c_str()));
    if (!opened) return {errno, std::generic_category()};
    for (;;) {
        errno = 0;
        const dirent* const entry = ::readdir(opened.get());
        if (!entry) return {errno, std::generic_category()};
        const std::string_view name = entry->d_name;
        if (name == "." || name == ".." || !isFileOrFolderIn(opened.get(), *entry)) continue;
        entries.push_back({std::string(name), isFolderIn(opened.get(), *entry), isLinkIn(opened.get(), *entry)});
    }
}

namespace {

/** A function of a library that the program does not need to start; null where it is not there. */
template <class Function>
Function* functionOf(const char* library, const char* name) {
    void* const loaded = ::dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const found = loaded ? ::dlsym(loaded, name) : nullptr;
    Function* function = nullptr;
    static_assert(sizeof function == sizeof found, "both are the address of a function");
    std::memcpy(&function, &found, sizeof function);
    return function;
}

} // namespace

WriteZip* zipWriter() { return functionOf<WriteZip>("libVornToolsZip.so", "vornToolsWriteZip"); }

GetSqlite* sqlite() { return functionOf<GetSqlite>("libVornToolsCatalogue.so", "vornToolsSqlite"); }

namespace {

constexpr std::size_t kReceivedAtOnce = std::size_t(1) << 16U;

void sendAll(int pipe, const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t sent = ::write(pipe, bytes.data() + at, bytes.size() - at);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) ::_exit(1); // nobody listens any more
        at += static_cast<std::size_t>(sent);
    }
}

/** The life of a helper. Nothing of this process is finished twice: neither its output nor its open files. */
[[noreturn]] void runHelper(std::size_t number, int pipe,
                            const std::function<void(std::size_t, const Helpers::Send&)>& work) {
    try {
        work(number, [pipe](const std::string& bytes) { sendAll(pipe, bytes); });
    } catch (const std::exception&) { // whoever waits finds the pipe ended
        ::_exit(1);
    }
    ::_exit(0);
}

} // namespace

bool Helpers::areThere() { return true; }

Helpers::Helpers(std::size_t count, const std::function<void(std::size_t, const Send&)>& work) : m_wanted(count) {
    std::fflush(nullptr);
    for (std::size_t i = 0; i < count; ++i) {
        int ends[2];
        if (::pipe(ends) != 0) break;
        const pid_t process = ::fork();
        if (process == 0) {
            // A pipe that another helper holds open would not end with this process.
            for (const Process& other : m_processes) ::close(other.pipe);
            ::close(ends[0]);
            runHelper(i, ends[1], work);
        }
        ::close(ends[1]);
        if (process < 0) {
            ::close(ends[0]);
            break;
        }
        m_processes.push_back({process, ends[0]});
    }
}

Helpers::~Helpers() {
    for (const Process& helper : m_processes) {
        ::close(helper.pipe);
        ::kill(helper.process, SIGKILL);
        ::waitpid(helper.process, nullptr, 0);
    }
}

bool Helpers::receive(std::size_t helper, std::size_t count, std::string& bytes) {
    if (helper >= m_processes.size()) return false;
    Process& process = m_processes[helper];
    while (count > 0) {
        if (process.taken == process.received && !refill(process)) return false;
        const std::size_t piece = std::min(count, process.received - process.taken);
        bytes.append(process.buffer, process.taken, piece);
        process.taken += piece;
        count -= piece;
    }
    return true;
}

bool Helpers::refill(Process& process) {
    process.buffer.resize(kReceivedAtOnce);
    ssize_t received = 0;
    do received = ::read(process.pipe, process.buffer.data(), process.buffer.size());
    while (received < 0 && errno == EINTR);
    process.taken = 0;
    process.received = received > 0 ? static_cast<std::size_t>(received) : 0;
    return received > 0;
}

bool outputIsTerminal() { return ::isatty(STDOUT_FILENO) != 0; }

bool errorIsTerminal() { return ::isatty(STDERR_FILENO) != 0; }

int terminalWidth() {
    winsize size = {};
    return outputIsTerminal() && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool enableColors() { return true; }

#endif

std::size_t processors() { return std::max(1U, std::thread::hardware_concurrency()); }

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
    static char buffer[1U << 16U]; // given none, not every system takes as many
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
#if defined(_WIN32)
    SetConsoleOutputCP(CP_UTF8);
#endif
}

} // namespace host
