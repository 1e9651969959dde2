#include "tests/support/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::size_t livePieces = 0;
std::size_t liveBytes = 0;
std::size_t liveAtBeginning = 0;
allocations::Counts counts{};

std::size_t refusedSize = 0;
std::size_t untilRefusal = 0; ///< 0: none is refused
bool wasRefused = false;

std::size_t sizeOf(void* piece) {
#if defined(_WIN32)
    return piece ? _msize(piece) : 0;
#else
    return malloc_usable_size(piece);
#endif
}

bool isRefused(std::size_t size) {
    if (untilRefusal == 0 || size < refusedSize || --untilRefusal > 0) return false;
    wasRefused = true;
    return true;
}

void* allocate(std::size_t size) noexcept {
    void* const piece = isRefused(size) ? nullptr : std::malloc(std::max<std::size_t>(size, 1));
    if (!piece) return nullptr;
    const std::size_t taken = sizeOf(piece);
    ++livePieces;
    liveBytes += taken;
    ++counts.made;
    counts.written += taken;
    if (liveBytes > liveAtBeginning) counts.peak = std::max(counts.peak, liveBytes - liveAtBeginning);
    return piece;
}

void release(void* piece) noexcept {
    if (piece) --livePieces;
    liveBytes -= sizeOf(piece);
    std::free(piece);
}

} // namespace

namespace allocations {

std::size_t live() { return livePieces; }

Counts take() {
    const Counts taken = counts;
    counts = Counts();
    liveAtBeginning = liveBytes;
    return taken;
}

bool refuse(std::size_t nth, std::size_t smallest) {
    const bool refused = wasRefused;
    wasRefused = false;
    untilRefusal = nth;
    refusedSize = smallest;
    return refused;
}

} // namespace allocations

void* operator new(std::size_t size) {
    if (void* const piece = allocate(size)) return piece;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* piece) noexcept { release(piece); }
void operator delete[](void* piece) noexcept { release(piece); }
void operator delete(void* piece, std::size_t) noexcept { release(piece); }
void operator delete[](void* piece, std::size_t) noexcept { release(piece); }
