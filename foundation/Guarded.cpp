// The library's one catch of what is no error of the platform. No header of the platform may be included here: there
// the words below are macros.

#include "foundation/Guarded.h"

#include "foundation/PlatformErrors.h"

#include <new>
#include <stdexcept>

namespace vorntools {

bool runGuarded(void (*ip_work)(void*), void* ip_argument) {
    try {
        return runOnPlatform(ip_work, ip_argument);
    } catch (...) {
        return false;
    }
}

bool runGuardedButForeign(void (*ip_work)(void*), void* ip_argument) {
    try {
        return runOnPlatform(ip_work, ip_argument);
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

} // namespace vorntools
