#include "look/colour.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qrn::look {

namespace {

int channel(std::int32_t colour, int shift) {
  return (colour >> shift) & 0xff;
}

std::int32_t packed(int red, int green, int blue) {
  return red | (green << 8) | (blue << 16);
}

std::array<double, 256> linearTable() {
  std::array<double, 256> table{};
  for (std::size_t value = 0; value < table.size(); ++value) {
    const double c = static_cast<double>(value) / 255.0;
    table[value] = c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  }
  return table;
}

double linear(int value) {
  static const std::array<double, 256> table = linearTable();
  return table[static_cast<std::size_t>(value)];
}

int encoded(double light) {
  const double c = std::clamp(light, 0.0, 1.0);
  return static_cast<int>(
      std::lround(255 * (c <= 0.0031308 ? c * 12.92 : 1.055 * std::pow(c, 1 / 2.4) - 0.055)));
}

using Matrix = std::array<std::array<double, 3>, 3>;

constexpr std::array<Matrix, 3> kSeen{{
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}},
}};

using Light = std::array<double, 3>;  // linear, red first

Light lightOf(std::int32_t colour) {
  return {linear(channel(colour, 0)), linear(channel(colour, 8)), linear(channel(colour, 16))};
}

Light seenLight(Deficiency deficiency, const Light& light) {
  Light seen{};
  const Matrix& matrix = kSeen.at(static_cast<std::size_t>(deficiency));
  for (std::size_t row = 0; row < 3; ++row)
    seen[row] = std::clamp(matrix[row][0] * light[0] + matrix[row][1] * light[1] + matrix[row][2] * light[2],
                           0.0, 1.0);
  return seen;
}

double luminanceOf(const Light& light) {
  return 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
}

}  // namespace

double luminance(std::int32_t colour) {
  if (colour < 0)
    return 1;
  return luminanceOf(lightOf(colour));
}

double luminanceRatio(double a, double b) {
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

double contrastRatio(std::int32_t a, std::int32_t b) {
  return luminanceRatio(luminance(a), luminance(b));
}

std::int32_t blend(std::int32_t from, std::int32_t to, double share) {
  const auto mixed = [&](int shift) {
    const int a = channel(from, shift), b = channel(to, shift);
    return static_cast<int>(std::lround(a + (b - a) * share));
  };
  return packed(mixed(0), mixed(8), mixed(16));
}

std::int32_t tintUntil(std::int32_t colour, std::int32_t goal, std::int32_t ground, double ratio) {
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const std::int32_t tint = blend(colour, goal, static_cast<double>(step) / kSteps);
    if (contrastForAll(tint, ground) >= ratio)
      return tint;
  }
  return goal;
}

std::int32_t seenWith(Deficiency deficiency, std::int32_t colour) {
  const Light seen = seenLight(deficiency, lightOf(colour));
  return packed(encoded(seen[0]), encoded(seen[1]), encoded(seen[2]));
}

double contrastForAll(std::int32_t a, std::int32_t b) {
  const Light one = lightOf(a), other = lightOf(b);
  double least = luminanceRatio(luminanceOf(one), luminanceOf(other));
  for (const Deficiency kind : {Deficiency::protanopia, Deficiency::deuteranopia, Deficiency::tritanopia})
    least = std::min(least,
                     luminanceRatio(luminanceOf(seenLight(kind, one)), luminanceOf(seenLight(kind, other))));
  return least;
}

}  // namespace qrn::look
