#include "foundation/ImageMemory.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vorntools {

namespace {

#if defined(MADV_HUGEPAGE) && defined(MADV_FREE)

constexpr std::size_t kWorthwhile = std::size_t{32} << 20;
constexpr std::size_t kHugePage = std::size_t{2} << 20;

/** The large buffer that is kept for the next image when it is released. Never destroyed: strings may go after it. */
struct LargeBuffer {
    char* bytes = nullptr;
    std::size_t size = 0;
    bool isUsed = false;
};
LargeBuffer large;

/** Whole huge pages, which the system is advised to use: one that does not take the advice serves small ones. */
char* allocateHugePages(std::size_t i_size) {
    void* p_buffer = nullptr;
    if (::posix_memalign(&p_buffer, kHugePage, i_size) != 0) return nullptr;
    ::madvise(p_buffer, i_size, MADV_HUGEPAGE);
    return static_cast<char*>(p_buffer);
}

char* allocateLarge(std::size_t i_size) {
    if (large.isUsed) return allocateHugePages(i_size);
    // A buffer that is much too large would hold more memory than the image needs.
    const bool fits = i_size <= large.size && i_size > large.size / 2;
    if (!fits) {
        std::free(large.bytes);
        large.bytes = allocateHugePages(i_size);
        large.size = large.bytes ? i_size : 0;
    }
    large.isUsed = large.bytes != nullptr;
    return large.bytes;
}

char* allocate(std::size_t i_size) {
    return i_size > kWorthwhile ? allocateLarge(i_size) : static_cast<char*>(std::malloc(i_size));
}

/** Keeps the large buffer; the system may take its pages whenever it needs memory. */
bool keep(const char* ip_buffer) {
    if (!ip_buffer || ip_buffer != large.bytes) return false;
    constexpr std::size_t page = 4096;
    if (::madvise(large.bytes, large.size / page * page, MADV_FREE) != 0) {
        std::free(large.bytes);
        large.bytes = nullptr;
        large.size = 0;
    }
    large.isUsed = false;
    return true;
}

#else

char* allocate(std::size_t i_size) { return static_cast<char*>(std::malloc(i_size)); }

bool keep(const char*) { return false; }

#endif

} // namespace

char* allocateImage(std::size_t i_length) {
    char* const p_buffer = allocate(i_length + 1);
    if (p_buffer) p_buffer[i_length] = '\0';
    return p_buffer;
}

void releaseImage(char* ip_buffer) {
    if (!keep(ip_buffer)) std::free(ip_buffer);
}

} // namespace vorntools
