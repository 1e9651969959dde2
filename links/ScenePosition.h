#ifndef LINKS_SCENE_POSITION_H
#define LINKS_SCENE_POSITION_H

#include "CATUnicodeString.h"

#include <array>

class CATIASceneProduct;

namespace vorntools {

/** The three columns of the rotation, then the translation. */
using Position = std::array<double, 12>;
constexpr Position kIdentityPosition = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

/** Reads where a scene shows a product. False when it does not tell all twelve numbers. */
bool readPosition(CATIASceneProduct* ipi_data, Position& o_position);

CATUnicodeString positionText(Position i_position);

} // namespace vorntools

#endif
