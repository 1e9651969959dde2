#ifndef TESTS_SUPPORT_LIBRARY_ALLOCATIONS_H
#define TESTS_SUPPORT_LIBRARY_ALLOCATIONS_H

#include <cstddef>

/** What the library asks of operator new while one of its methods runs: its own objects and the texts and lists that it
 * makes, not what the platform needs for an answer. Where nobody can tell who asks there are none. */
namespace libraryAllocations {

/** Counts from now on. */
void count();
/** Ends counting or refusing. @return the pieces since count() */
std::size_t end();

/** Refuses one of the pieces that were counted when the same was done before, from 1. */
void refuse(std::size_t nth);

} // namespace libraryAllocations

#endif
