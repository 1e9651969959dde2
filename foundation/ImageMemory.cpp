#include "foundation/ImageMemory.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vorntools {

namespace {

#if defined(MADV_HUGEPAGE)

constexpr std::size_t kWorthwhile = std::size_t{32} << 20;
constexpr std::size_t kHugePage = std::size_t{2} << 20;

/** Whole huge pages, which the system is advised to use: one that does not take the advice serves small ones. */
char* allocateHugePages(std::size_t i_size) {
    void* p_buffer = nullptr;
    if (::posix_memalign(&p_buffer, kHugePage, i_size) != 0) return nullptr;
    ::madvise(p_buffer, i_size, MADV_HUGEPAGE);
    return static_cast<char*>(p_buffer);
}

char* allocate(std::size_t i_size) {
    return i_size > kWorthwhile ? allocateHugePages(i_size) : static_cast<char*>(std::malloc(i_size));
}

#else

char* allocate(std::size_t i_size) { return static_cast<char*>(std::malloc(i_size)); }

#endif

} // namespace

char* allocateImage(std::size_t i_length) {
    char* const p_buffer = allocate(i_length + 1);
    if (p_buffer) p_buffer[i_length] = '\0';
    return p_buffer;
}

} // namespace vorntools
