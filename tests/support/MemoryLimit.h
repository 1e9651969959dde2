#ifndef TESTS_SUPPORT_MEMORY_LIMIT_H
#define TESTS_SUPPORT_MEMORY_LIMIT_H

#include <cstddef>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer) || __has_feature(thread_sanitizer)
#define TESTS_SANITIZED 1
#endif
#endif

// Sanitizers need the whole address space.
#if defined(__linux__) && !defined(TESTS_SANITIZED) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

constexpr bool kCanLimitMemory = true;

/** Runs `work()` in a copy of this process that can take blocks of together so many bytes, besides small ones.
 * @return what it answers; false when it was left by an exception or a signal */
template <class Work>
bool holdsWithMemory(std::size_t bytes, Work&& work) {
    constexpr std::size_t kSmall = std::size_t{1} << 16;
    const auto run = [&]() noexcept {
        unsigned long pages = 0;
        std::FILE* const file = std::fopen("/proc/self/statm", "r");
        if (!file || std::fscanf(file, "%lu", &pages) != 1) return false;
        std::fclose(file);
        rlimit limit = {};
        limit.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
        limit.rlim_max = limit.rlim_cur + bytes;
        if (setrlimit(RLIMIT_AS, &limit) != 0) return false;
        // What was freed before is no memory to count on.
        while (std::malloc(kSmall)) {
        }
        limit.rlim_cur = limit.rlim_max;
        return setrlimit(RLIMIT_AS, &limit) == 0 && work();
    };
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) _exit(run() ? 0 : 1);
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

#else

constexpr bool kCanLimitMemory = false;

template <class Work>
bool holdsWithMemory(std::size_t, Work&&) {
    return true;
}

#endif

#endif
