#include "examples/library/Examples.h"

#include "VornToolsString.h"
#include "VornToolsVector.h"

#include <cstdio>

void useVornToolsString() {
    //! [VornToolsString]
    // A name as documents hold it: 16-bit characters, the low byte first, here behind two other bytes.
    constexpr char stored[] = "\x7f\x01"
                              "B\0o\0l\0t\0";
    constexpr unsigned int toTheEnd = 0xFFFFFFFF;
    constexpr unsigned int everySecondByte = 1;
    const VornToolsString bytes(stored, sizeof stored - 1);
    const int found = bytes.indexOf(VornToolsString("Bolt", 4), 0, toTheEnd, everySecondByte);
    if (found < 0) return;
    const std::unique_ptr<VornToolsString> name(
        bytes.subString(static_cast<unsigned int>(found), toTheEnd, everySecondByte));
    std::printf("%s at %d of %u bytes\n", name->bytes(), found, bytes.size());
    //! [VornToolsString]
}

void useVornToolsVector() {
    //! [VornToolsVector]
    VornToolsVector<int> releases;
    for (int release = 11; release <= 34; ++release) releases.append(release);
    std::printf("%u releases, the last is %d; room for %u\n", releases.size(), releases[releases.size() - 1],
                releases.capacity());
    //! [VornToolsVector]
}
