// Preloaded in front of a program, this lets each open and each read of a file below a folder take longer, as on a file
// server: LD_PRELOAD=libslow_files.so SLOW_FILES=/folder vorntools ...

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr useconds_t kMicroseconds = 5000;

/** The function that this library stands in front of. */
template <class Function>
Function* next(const char* name) {
    void* const found = ::dlsym(RTLD_NEXT, name);
    Function* function = nullptr;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

const char* folder() {
    static const char* const name = std::getenv("SLOW_FILES");
    return name ? name : "/nowhere";
}

bool isBelow(const char* name) { return std::strncmp(name, folder(), std::strlen(folder())) == 0; }

bool isFileBelow(int file) {
    struct stat facts;
    if (::fstat(file, &facts) != 0 || !S_ISREG(facts.st_mode)) return false;
    char link[64], name[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = ::readlink(link, name, sizeof name - 1);
    if (length <= 0) return false;
    name[length] = '\0';
    return isBelow(name);
}

int openSlowly(const char* function, const char* name, int flags, mode_t mode) {
    if (isBelow(name)) ::usleep(kMicroseconds);
    return next<int(const char*, int, ...)>(function)(name, flags, mode);
}

mode_t modeOf(int flags, va_list arguments) { return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0; }

} // namespace

extern "C" {

int open(const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openSlowly("open", name, flags, mode);
}

int open64(const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openSlowly("open64", name, flags, mode);
}

FILE* fopen(const char* name, const char* mode) {
    if (isBelow(name)) ::usleep(kMicroseconds);
    return next<FILE*(const char*, const char*)>("fopen")(name, mode);
}

FILE* fopen64(const char* name, const char* mode) {
    if (isBelow(name)) ::usleep(kMicroseconds);
    return next<FILE*(const char*, const char*)>("fopen64")(name, mode);
}

ssize_t read(int file, void* bytes, size_t count) {
    if (isFileBelow(file)) ::usleep(kMicroseconds);
    return next<ssize_t(int, void*, size_t)>("read")(file, bytes, count);
}

ssize_t pread(int file, void* bytes, size_t count, off_t from) {
    if (isFileBelow(file)) ::usleep(kMicroseconds);
    return next<ssize_t(int, void*, size_t, off_t)>("pread")(file, bytes, count, from);
}

size_t fread(void* bytes, size_t size, size_t count, FILE* stream) {
    if (isFileBelow(::fileno(stream))) ::usleep(kMicroseconds);
    return next<size_t(void*, size_t, size_t, FILE*)>("fread")(bytes, size, count, stream);
}
}
