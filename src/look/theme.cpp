#include "look/theme.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "look/colour.h"

namespace qrn::look {

namespace {

// Colours as people write them, red first.
constexpr std::int32_t web(std::int32_t rgb) {
  return ((rgb >> 16) & 0xff) | (rgb & 0xff00) | ((rgb & 0xff) << 16);
}

struct Palette {
  std::int32_t ground, text, quiet, data, highlight, allWell, alarm;
  std::int32_t veil;  // what surfaces, tracks and lines are made of, thinly
  double surface, track, grid;
};

constexpr Palette kDark{web(0x13233A), web(0xF4F7FB), web(0xAEBBCB), web(0x5AA9FF),
                        web(0xFFC857), web(0x69D4A5), web(0xFF8A80), web(0xFFFFFF),
                        0.08,          0.09,          0.13};
constexpr Palette kLight{web(0xFBFCFA), web(0x14202E), web(0x4A5A6C), web(0x1F66C1),
                         web(0xB45F06), web(0x1C7A55), web(0xB3261E), web(0x14202E),
                         0.05,          0.07,          0.13};
constexpr double kRestShare = 0.55, kAxisShare = 0.45;

constexpr std::array<double, 4> kParts{0.065, 0.042, 0.033, 0.028};

bool isDark(std::int32_t ground) {
  return contrastRatio(ground, kWhite) >= contrastRatio(ground, kBlack);
}

}  // namespace

// White or black always reads on a colour; the theme's own inks are taken as far as they do.
std::int32_t inkOn(std::int32_t colour) {
  return isDark(colour) ? tintUntil(kDark.text, kWhite, colour, kTextContrast)
                        : tintUntil(kLight.text, kBlack, colour, kTextContrast);
}

std::int32_t untoldGround(bool dark) {
  return dark ? kDark.ground : kLight.ground;
}

Theme themeFor(const Slide& slide) {
  Theme theme;
  const std::int32_t wanted = slide.ground >= 0 ? slide.ground : kDark.ground;
  theme.dark = isDark(wanted);
  const Palette& palette = theme.dark ? kDark : kLight;
  theme.ground = wanted;
  const std::int32_t goal = theme.dark ? kWhite : kBlack;
  const auto readable = [&](std::int32_t colour, double ratio) {
    return tintUntil(colour, goal, theme.ground, ratio);
  };
  const auto veiled = [&](double share) { return blend(theme.ground, palette.veil, share); };
  theme.text = readable(palette.text, kTextContrast);
  theme.quiet = readable(palette.quiet, kTextContrast);
  const bool accentReads = slide.accent >= 0 && contrastForAll(slide.accent, theme.ground) >= kShapeContrast;
  theme.data = accentReads ? slide.accent : readable(palette.data, kShapeContrast);
  theme.dataRest =
      tintUntil(blend(theme.ground, theme.data, kRestShare), theme.data, theme.ground, kShapeContrast);
  theme.highlight = readable(palette.highlight, kTextContrast);
  theme.allWell = readable(palette.allWell, kTextContrast);
  theme.alarm = readable(palette.alarm, kTextContrast);
  theme.surface = veiled(palette.surface);
  theme.track = veiled(palette.track);
  theme.grid = veiled(palette.grid);
  theme.axis = veiled(kAxisShare);
  theme.onData = inkOn(theme.data);
  theme.onHighlight = inkOn(theme.highlight);
  return theme;
}

double partOfHeight(Size size) {
  return kParts.at(static_cast<std::size_t>(size));
}

double points(Size size, double surfaceHeight) {
  constexpr double kTwipsPerPoint = 20, kTwipsPerPixel = 15, kRounding = 0.001;
  const double pixels = partOfHeight(size) * surfaceHeight / kTwipsPerPixel;
  return std::ceil(pixels - kRounding) * kTwipsPerPixel / kTwipsPerPoint;
}

Size smaller(Size size) {
  return static_cast<Size>(std::min(static_cast<int>(size) + 1, static_cast<int>(Size::floor)));
}

double eased(double part) {
  const double t = std::clamp(part, 0.0, 1.0);
  return t * t * (3 - 2 * t);
}

double easedOut(double part) {
  const double rest = 1 - std::clamp(part, 0.0, 1.0);
  return 1 - rest * rest * rest;
}

}  // namespace qrn::look
