// What a method handed out as one text, whatever its types are.
#ifndef TESTS_SUPPORT_OUTPUTS_H
#define TESTS_SUPPORT_OUTPUTS_H

#include "CATBaseUnknown.h"
#include "CATBaseUnknown_var.h"
#include "CATUnicodeString.h"
#include "VornToolsString.h"
#include "VornToolsVector.h"

#include <string>
#include <type_traits>
#include <vector>

std::string textOfOutput(const std::string& output);
std::string textOfOutput(const CATUnicodeString& output);
std::string textOfOutput(const VornToolsString& output);
std::string textOfOutput(const CATBaseUnknown* output);
std::string textOfOutput(const CATBaseUnknown_var& output);
template <class T>
std::string textOfOutput(const VornToolsVector<T>& output);
template <class T>
std::string textOfOutput(const std::vector<T>& output);

/** Of what is told by its value, points to what is told by its own, or is a list of the platform. */
template <class T>
std::string textOfOutput(const T& output) {
    if constexpr (std::is_enum_v<T> || std::is_arithmetic_v<T>) {
        return std::to_string(static_cast<std::conditional_t<std::is_floating_point_v<T>, T, long long>>(output));
    } else if constexpr (std::is_convertible_v<T, const CATBaseUnknown*>) {
        return textOfOutput(static_cast<const CATBaseUnknown*>(output));
    } else if constexpr (std::is_pointer_v<T>) {
        return output ? textOfOutput(*output) : "null";
    } else {
        std::string text = "[";
        for (int i = 1; i <= output.Size(); ++i) text += textOfOutput(output[i]) + ",";
        return text + "]";
    }
}

template <class T>
std::string textOfOutput(const std::vector<T>& output) {
    std::string text = "[";
    for (const T& element : output) text += textOfOutput(element) + ",";
    return text + "]";
}

template <class T>
std::string textOfOutput(const VornToolsVector<T>& output) {
    std::string text = "[";
    for (unsigned int i = 0; i < output.size(); ++i) text += textOfOutput(output[i]) + ",";
    return text + "]";
}

template <class... Outputs>
std::string textOfOutputs(const Outputs&... outputs) {
    return ((textOfOutput(outputs) + "; ") + ... + std::string());
}

/** Whether an output is as a failure leaves it: null, 0, without characters or elements. */
template <class T>
bool isEmptyOutput(const T& output) {
    return textOfOutput(output) == textOfOutput(T());
}

#endif
