#include "foundation/ImageMemory.h"

#include <cstdint>
#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vorntools {

namespace {

/** Advice only: a system that does not take it serves small pages. */
void adviseHugePages(const char* ip_buffer, std::size_t i_size) {
#if defined(MADV_HUGEPAGE)
    constexpr std::size_t worthwhile = std::size_t{32} << 20;
    constexpr std::uintptr_t page = 4096;
    if (i_size <= worthwhile) return;
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(ip_buffer) + page - 1) / page * page;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(ip_buffer) + i_size) / page * page;
    ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    static_cast<void>(ip_buffer);
    static_cast<void>(i_size);
#endif
}

} // namespace

char* allocateImage(std::size_t i_length) {
    char* const p_buffer = static_cast<char*>(std::malloc(i_length + 1));
    if (!p_buffer) return nullptr;
    adviseHugePages(p_buffer, i_length + 1);
    p_buffer[i_length] = '\0';
    return p_buffer;
}

} // namespace vorntools
