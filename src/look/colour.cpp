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

double linear(int value) {
  const double c = value / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
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

}  // namespace

double luminance(std::int32_t colour) {
  if (colour < 0)
    return 1;
  return 0.2126 * linear(channel(colour, 0)) + 0.7152 * linear(channel(colour, 8)) +
         0.0722 * linear(channel(colour, 16));
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
  const std::array<double, 3> light{linear(channel(colour, 0)), linear(channel(colour, 8)),
                                    linear(channel(colour, 16))};
  std::array<int, 3> seen{};
  for (std::size_t row = 0; row < 3; ++row) {
    const auto& m = kSeen.at(static_cast<std::size_t>(deficiency)).at(row);
    seen.at(row) = encoded(m[0] * light[0] + m[1] * light[1] + m[2] * light[2]);
  }
  return packed(seen[0], seen[1], seen[2]);
}

double contrastForAll(std::int32_t a, std::int32_t b) {
  double least = contrastRatio(a, b);
  for (const Deficiency kind : {Deficiency::protanopia, Deficiency::deuteranopia, Deficiency::tritanopia})
    least = std::min(least, contrastRatio(seenWith(kind, a), seenWith(kind, b)));
  return least;
}

}  // namespace qrn::look
