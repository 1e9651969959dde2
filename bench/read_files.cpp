// Opens, reads and closes files, and does nothing with them: what document_files.py measures the command line against.
// Names come from standard input, a line each. Usage:
//
//     read_files             whole files
//     read_files --ends      4 KiB at the beginning and 16 KiB at the end, as little as tells anything of a document

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace {

bool readWhole(int file, std::vector<char>& buffer) {
    ssize_t count = 0;
    do count = ::read(file, buffer.data(), buffer.size());
    while (count > 0);
    return count == 0;
}

bool readEnds(int file, std::vector<char>& buffer) {
    constexpr off_t first = 4096, last = 16384;
    struct stat facts;
    if (::fstat(file, &facts) != 0) return false;
    const off_t from = facts.st_size > last ? facts.st_size - last : 0;
    return ::pread(file, buffer.data(), first, 0) >= 0 && ::pread(file, buffer.data(), last, from) >= 0;
}

} // namespace

int main(int argc, char** argv) {
    const bool ends = argc == 2 && std::strcmp(argv[1], "--ends") == 0;
    std::vector<char> buffer(std::size_t{128} << 10);
    std::string name;
    std::ios::sync_with_stdio(false);
    while (std::getline(std::cin, name)) {
        const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
        const bool done = file >= 0 && (ends ? readEnds(file, buffer) : readWhole(file, buffer));
        if (file >= 0) ::close(file);
        if (done) continue;
        std::perror(name.c_str());
        return 1;
    }
    return 0;
}
