#pragma once

#include <QColor>
#include <cstdint>

namespace qrn::render {

// A colour of the surface, red lowest; values with the top bit set name the classic system colours.
QColor toColour(std::int32_t colour);

}  // namespace qrn::render
