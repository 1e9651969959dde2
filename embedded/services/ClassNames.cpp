#include "embedded/services/ClassNames.h"

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

const char* internedClassName(const char* name) {
    static auto& names = *new std::vector<std::unique_ptr<const std::string>>;
    const std::string_view wanted = name ? name : "";
    for (const auto& known : names)
        if (*known == wanted) return known->c_str();
    return names.emplace_back(std::make_unique<const std::string>(wanted))->c_str();
}

bool acceptsClass(const char* held, const char* wanted) {
    return !wanted || !*wanted || held == wanted || std::strcmp(held, wanted) == 0;
}

} // namespace embedded
