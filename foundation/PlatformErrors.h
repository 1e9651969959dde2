#ifndef FOUNDATION_PLATFORM_ERRORS_H
#define FOUNDATION_PLATFORM_ERRORS_H

#include <type_traits>
#include <utility>

namespace vorntools {

/** Runs the work on its argument. @return false when the platform threw one of its errors, which is released; whatever
 * else is thrown passes through */
bool runOnPlatform(void (*ip_work)(void*), void* ip_argument);

/**
 * Runs work with an answer.
 *
 * @param i_run that keeps in what the work throws
 * @return what the work answers, i_otherwise when it did not come to its end
 */
template <class Work, class Otherwise>
auto answerOf(bool (*i_run)(void (*)(void*), void*), Work&& i_work, Otherwise&& i_otherwise)
    -> std::decay_t<decltype(i_work())> {
    using Answer = std::decay_t<decltype(i_work())>;
    struct Call {
        std::remove_reference_t<Work>& work;
        Answer answer;
    } call{i_work, Answer(std::forward<Otherwise>(i_otherwise))};
    i_run(
        [](void* ip_call) {
            auto& io_call = *static_cast<Call*>(ip_call);
            io_call.answer = io_call.work();
        },
        &call);
    return std::move(call.answer);
}

/**
 * Makes an error that the platform throws a failure, and lets everything else pass: for single calls of the platform.
 * The work of exported methods is guarded, which does this as well.
 *
 * @return what the work answers, i_otherwise when it did not come to its end
 */
template <class Work, class Otherwise>
auto onPlatform(Work&& i_work, Otherwise&& i_otherwise) -> std::decay_t<decltype(i_work())> {
    return answerOf(runOnPlatform, std::forward<Work>(i_work), std::forward<Otherwise>(i_otherwise));
}

} // namespace vorntools

#endif
