// Arithmetic of colours: 32-bit values with red lowest.
#pragma once

#include <cstdint>

namespace qrn::look {

inline constexpr double kTextContrast = 4.5;   // text against what is behind it
inline constexpr double kShapeContrast = 3.0;  // lines, bars, keys
inline constexpr std::int32_t kWhite = 0xffffff, kBlack = 0;

// Relative luminance by WCAG 2.1, 0 to 1. A system colour (top bit set) counts as white.
double luminance(std::int32_t colour);

// Contrast of two luminances, or of two colours: 1 to 21.
double luminanceRatio(double a, double b);
double contrastRatio(std::int32_t a, std::int32_t b);

// From one colour to another, channel by channel; `share` 0 to 1.
std::int32_t blend(std::int32_t from, std::int32_t to, double share);

// The tint of `colour` on its way to `goal` that is nearest to it and has `ratio` against `ground` for all
// eyes.
std::int32_t tintUntil(std::int32_t colour, std::int32_t goal, std::int32_t ground, double ratio);

// The colour as people without one kind of cone see it (Machado, Oliveira and Fernandes, 2009, full
// severity).
enum class Deficiency { protanopia, deuteranopia, tritanopia };
std::int32_t seenWith(Deficiency deficiency, std::int32_t colour);

// The least contrast that anybody sees between two colours: with all cones, or without one kind.
double contrastForAll(std::int32_t a, std::int32_t b);

}  // namespace qrn::look
