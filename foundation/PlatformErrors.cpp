#include "foundation/PlatformErrors.h"

#include "CATError.h"
#include "CATErrorMacros.h"

// The platform takes this word where it does not use the language's exceptions. What it throws then passes over the
// destructors between throw and catch: whatever the guarded work holds would never be released.
#if defined(try)
#error "NATIVE_EXCEPTION has to be defined: the platform's own exceptions release nothing that is held"
#endif

namespace vorntools {

bool runOnPlatform(void (*ip_work)(void*), void* ip_argument) {
    bool is_done = false;
    CATTry {
        ip_work(ip_argument);
        is_done = true;
    }
    // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): the platform throws pointers
    CATCatch(CATError, p_error) { p_error->Release(); }
    CATEndTry;
    return is_done;
}

} // namespace vorntools
