#include "embedded/text/TextBytes.h"

#include "embedded/text/CodePage.h"

namespace embedded {

std::string fromEightBit(std::string_view bytes) {
    return TextBytes::usesCodePage() ? fromCodePage(bytes) : std::string(bytes);
}

std::string toEightBit(std::string_view text) {
    return TextBytes::usesCodePage() ? toCodePage(text) : std::string(text);
}

} // namespace embedded
