#ifndef TESTS_SUPPORT_ALLOCATIONS_H
#define TESTS_SUPPORT_ALLOCATIONS_H

#include <cstddef>

/** What operator new hands out: a program that is linked with this has one that counts and may refuse. */
namespace allocations {

/** Whether the libraries of the program use it, too. Elsewhere nothing is refused and the counts say nothing. */
#if defined(_WIN32)
constexpr bool areAllSeen = false;
#else
constexpr bool areAllSeen = true;
#endif

/** Pieces handed out and not given back. */
std::size_t live();

struct Counts {
    std::size_t peak;    ///< most bytes live at a time beyond those at the beginning, as much as was set aside
    std::size_t made;    ///< pieces handed out
    std::size_t written; ///< bytes handed out altogether
};
/** Counts since the last call. */
Counts take();

/** Refuses the n-th piece of at least so many bytes, from 1, with std::bad_alloc; 0 refuses none any more.
 * @param counts whether a piece counts now; null: always. @return whether the one before was refused */
bool refuse(std::size_t nth, std::size_t smallest, bool (*counts)() = nullptr);

} // namespace allocations

#endif
