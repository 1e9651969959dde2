#include "foundation/ImageMemory.h"

#include <atomic>
#include <cstdlib>
#include <mutex>

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
    std::mutex lock;
    std::atomic<char*> bytes{nullptr};
    std::size_t size = 0;
    bool isUsed = false;
};
LargeBuffer& large() {
    static LargeBuffer* const p_buffer = new LargeBuffer;
    return *p_buffer;
}

/** Whole huge pages, which the system is advised to use: one that does not take the advice serves small ones. */
char* allocateHugePages(std::size_t i_size) {
    void* p_buffer = nullptr;
    if (::posix_memalign(&p_buffer, kHugePage, i_size) != 0) return nullptr;
    ::madvise(p_buffer, i_size, MADV_HUGEPAGE);
    return static_cast<char*>(p_buffer);
}

char* allocateLarge(std::size_t i_size) {
    LargeBuffer& buffer = large();
    const std::lock_guard<std::mutex> guard(buffer.lock);
    if (buffer.isUsed) return allocateHugePages(i_size);
    // A buffer that is much too large would hold more memory than the image needs.
    const bool fits = i_size <= buffer.size && i_size > buffer.size / 2;
    if (!fits) {
        std::free(buffer.bytes);
        buffer.bytes = allocateHugePages(i_size);
        buffer.size = buffer.bytes ? i_size : 0;
    }
    buffer.isUsed = buffer.bytes != nullptr;
    return buffer.bytes;
}

char* allocate(std::size_t i_size) {
    return i_size > kWorthwhile ? allocateLarge(i_size) : static_cast<char*>(std::malloc(i_size));
}

/** Keeps the large buffer; the system may take its pages whenever it needs memory. */
bool keep(const char* ip_buffer) {
    LargeBuffer& buffer = large();
    if (!ip_buffer || ip_buffer != buffer.bytes.load(std::memory_order_relaxed)) return false;
    const std::lock_guard<std::mutex> guard(buffer.lock);
    constexpr std::size_t page = 4096;
    if (::madvise(buffer.bytes, buffer.size / page * page, MADV_FREE) != 0) {
        std::free(buffer.bytes);
        buffer.bytes = nullptr;
        buffer.size = 0;
    }
    buffer.isUsed = false;
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
