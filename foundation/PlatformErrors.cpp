#include "foundation/PlatformErrors.h"

#include "CATError.h"
#include "CATErrorMacros.h"

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
