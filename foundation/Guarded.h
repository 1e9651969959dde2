#ifndef FOUNDATION_GUARDED_H
#define FOUNDATION_GUARDED_H

#include "foundation/PlatformErrors.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace vorntools {

/** Runs the work on its argument. @return false when it threw something, which is dropped */
bool runGuarded(void (*ip_work)(void*), void* ip_argument);

/**
 * Keeps what is thrown from leaving the library; above all std::bad_alloc, which an input may provoke by its size. For
 * the work of an exported method between its JournalFrame and its answer: the frame is made outside, so that it ends on
 * this path as well. What the work holds is released by its destructors; outputs that it has begun to fill are the
 * caller's to clear, and best written at the end of the work.
 *
 *     if (!guarded([&] { list = readList(); })) list.RemoveAll();
 *
 * @return false when the work did not come to its end
 */
template <class Work>
bool guarded(Work&& i_work) {
    using Plain = std::remove_reference_t<Work>;
    const auto run = [](void* ip_work) { (*static_cast<Plain*>(ip_work))(); };
    return runGuarded(run, const_cast<void*>(static_cast<const void*>(std::addressof(i_work))));
}

/** As runGuarded, but what is neither an error of the platform nor the want of memory passes through. */
bool runGuardedButForeign(void (*ip_work)(void*), void* ip_argument);

/**
 * The same for work with an answer.
 *
 *     return guarded([&] { return readAll(frame, list); }, E_FAIL);
 *
 * @return what the work answers, i_otherwise when it did not come to its end
 */
template <class Work, class Otherwise>
auto guarded(Work&& i_work, Otherwise&& i_otherwise) -> std::decay_t<decltype(i_work())> {
    return answerOf(runGuarded, std::forward<Work>(i_work), std::forward<Otherwise>(i_otherwise));
}

/**
 * The same for work that may switch a work mode: what a switch throws that is no error of the platform is passed on.
 *
 * @return what the work answers, i_otherwise when it did not come to its end
 */
template <class Work, class Otherwise>
auto guardedButForeign(Work&& i_work, Otherwise&& i_otherwise) -> std::decay_t<decltype(i_work())> {
    return answerOf(runGuardedButForeign, std::forward<Work>(i_work), std::forward<Otherwise>(i_otherwise));
}

} // namespace vorntools

#endif
