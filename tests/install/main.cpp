#include "VornCache.h"
#include "VornToolsVersion.h"

#include "embedded/Accounting.h"

#include <cstdio>

static_assert(VORNTOOLS_VERSION >= VORNTOOLS_VERSION_OF(1, 0, 0), "the headers tell their version");

/** Asks the installed library for the state of a document that has no DAT file: it is new. */
int main() {
    VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNotModified;
    {
        VornCache cache;
        cache.addDocument("no such folder/Gear.CATPart", nullptr);
        cache.getModifiedStatus("no such folder/Gear.CATPart", flag);
    }
    const bool right = flag == VornCache::ModifiedFlagNew && embedded::Accounting::get().live().references == 0;
    std::puts(right ? "the installed library answers" : "the installed library gave a wrong answer");
    return right ? 0 : 1;
}
