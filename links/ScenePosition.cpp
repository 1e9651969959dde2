#include "links/ScenePosition.h"

#include "VornToolsScenes.h"
#include "foundation/AutomationValue.h"
#include "foundation/JournalFrame.h"
#include "links/Obtain.h"

#include "CATIAPosition.h"
#include "CATIASceneProduct.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace vorntools {

bool readPosition(CATIASceneProduct* ipi_data, Position& o_position) {
    InterfacePtr<CATIAPosition> sp_position;
    if (FAILED(obtain(sp_position, [=](CATIAPosition*& o_found) { return ipi_data->get_Position(o_found); })))
        return false;
    Position unknown;
    unknown.fill(std::numeric_limits<double>::quiet_NaN());
    const long size = static_cast<long>(unknown.size());
    AutomationNumbers numbers(unknown.data(), size);
    return numbers && SUCCEEDED(sp_position->GetComponents(numbers.get())) && numbers.read(o_position.data(), size) &&
           std::all_of(o_position.begin(), o_position.end(), [](double i_value) { return std::isfinite(i_value); });
}

CATUnicodeString positionText(Position i_position) {
    constexpr std::size_t text_size = 320; // "-1.234567890123456E-308 " twelve times, and more
    char text[text_size];
    VornToolsScenes::getMatrixString(i_position.data(), text);
    return CATUnicodeString(text);
}

} // namespace vorntools

using namespace vorntools;

void VornToolsScenes::getMatrixString(double i_values[12], char* op_buffer) {
    const JournalFrame frame(_CteCLASS_NAME, "getMatrixString");
    if (!op_buffer) return;
    *op_buffer = '\0';
    if (!i_values) return;
    char* p_end = op_buffer;
    for (std::size_t i = 0; i < kIdentityPosition.size(); ++i) {
        char number[32];
        const int length = std::snprintf(number, sizeof number, i == 0 ? "%.16G" : " %.16G", i_values[i]);
        // The locale's decimal separator.
        p_end = std::replace_copy(number, number + length, p_end, ',', '.');
    }
    *p_end = '\0';
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature that callers know
void VornToolsScenes::multiplyPositionMatrix(double* ip_a, double* ip_b, double* op_result) {
    std::optional<JournalFrame> frame;
    if (VornDebugOptions::getDebugModeValue()) frame.emplace(_CteCLASS_NAME, "multiplyPositionMatrix");
    if (!ip_a || !ip_b || !op_result) return;
    Position result = kIdentityPosition;
    for (std::size_t column = 0; column < 4; ++column) {
        const double* const p_b = ip_b + 3 * column;
        for (std::size_t row = 0; row < 3; ++row)
            result[3 * column + row] = ip_a[row] * p_b[0] + ip_a[3 + row] * p_b[1] + ip_a[6 + row] * p_b[2];
    }
    for (std::size_t row = 0; row < 3; ++row) result[9 + row] += ip_a[9 + row];
    std::copy(result.begin(), result.end(), op_result);
}
