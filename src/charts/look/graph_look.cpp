#include "charts/look/graph_look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/presentation.h"
#include "host/system.h"

namespace qrn {

using look::kBlack;
using look::kWhite;
using look::luminance;
using look::luminanceRatio;

namespace {

constexpr int kHueSpread = 24;
constexpr double kComfort = 7.0;  // contrast of white or black that leaves room for tints that still read

// Colours that can lie behind the graph.
std::vector<std::int32_t> coloursBehind(const host::Surface& background) {
  if (!background.backgroundFile.empty())
    return {kBlack, kWhite};  // a picture may hold anything
  if (!background.gradient)
    return {background.background};
  std::vector<std::int32_t> steps;
  for (int i = 0; i <= 16; ++i)
    steps.push_back(blend(background.background, background.backgroundEnd, i / 16.0));
  return steps;
}

// Entries of the presentation's scheme; -1 without one.
constexpr int kBackgroundEntry = 1, kAccentEntry = 5;
std::int32_t slideColour(int entry) {
  return glo.oPresentation != nullptr ? glo.oPresentation->SchemeColour(entry) : -1;
}

// Over a picture whose tone is known the theme stays as it is; the panel is as thick as that needs.
bool reads(const look::Theme& theme, const GraphLook& look) {
  const auto holds = [&](std::int32_t colour, double ratio) {
    return readableColour(colour, look, ratio) == colour;
  };
  return holds(theme.text, kTextContrast) && holds(theme.quiet, kTextContrast) &&
         holds(theme.highlight, kShapeContrast) && holds(theme.allWell, kShapeContrast) &&
         holds(theme.alarm, kShapeContrast) && holds(theme.data, kShapeContrast);
}

// The look with light or dark text and the thinnest panel that makes it comfortable. A panel in the picture's
// own tone lets the picture keep its colour and fades only what stands out of it.
GraphLook lookWith(bool lightText, const std::vector<std::int32_t>& behind, std::int32_t tone = -1) {
  GraphLook look;
  look.lightText = lightText;
  look.panelColour = look::untoldGround(lightText);
  if (tone >= 0 && luminanceRatio(lightText ? 1 : 0, luminance(tone)) >= kComfort)
    look.panelColour = tone;
  const look::Theme theme = look::themeFor({look.panelColour, slideColour(kAccentEntry)});
  for (int step = 0; step <= 20; ++step) {
    look.panelOpacity = step / 20.0;
    look.darkest = 1;
    look.lightest = 0;
    for (const std::int32_t colour : behind) {
      const double l = luminance(blend(colour, look.panelColour, look.panelOpacity));
      look.darkest = std::min(look.darkest, l);
      look.lightest = std::max(look.lightest, l);
    }
    if (luminanceRatio(lightText ? 1 : 0, lightText ? look.lightest : look.darkest) >= kComfort &&
        (tone < 0 || reads(theme, look)))
      break;
  }
  return look;
}

// Distance between the strongest and the weakest channel: 0 for greys.
int spread(std::int32_t colour) {
  const int r = colour & 0xff, g = (colour >> 8) & 0xff, b = (colour >> 16) & 0xff;
  return std::max({r, g, b}) - std::min({r, g, b});
}

// The theme of the ground that most of the background has; where something else can lie behind, it reads
// there too.
look::Theme themeOf(const GraphLook& look, const host::Surface& background) {
  const std::int32_t most = background.pictureTone >= 0          ? background.pictureTone
                            : !background.backgroundFile.empty() ? look.panelColour
                            : background.gradient
                                ? blend(background.background, background.backgroundEnd, 0.5)
                                : background.background;
  look::Theme theme =
      look::themeFor({blend(most, look.panelColour, look.panelOpacity), slideColour(kAccentEntry)});
  if (background.pictureTone >= 0)
    return theme;
  for (std::int32_t* text : {&theme.text, &theme.quiet, &theme.highlight, &theme.allWell, &theme.alarm})
    *text = readableColour(*text, look);
  for (std::int32_t* shape : {&theme.data, &theme.dataRest})
    *shape = readableColour(*shape, look, kShapeContrast);
  return theme;
}

GraphLook lookFor(const host::Surface& background) {
  const std::vector<std::int32_t> behind = coloursBehind(background);
  if (background.pictureTone >= 0)
    return lookWith(textOn(background.pictureTone) == kWhite, behind, background.pictureTone);
  if (!background.backgroundFile.empty()) {
    // Unknown: the colour of the labels says what the graph was made for.
    const std::int32_t label = glo.runByGraphLabelColour;
    return lookWith(contrastRatio(label, kBlack) >= contrastRatio(label, kWhite), behind);
  }
  return std::ranges::min({lookWith(true, behind), lookWith(false, behind)}, {}, &GraphLook::panelOpacity);
}

}  // namespace

double graphScale(double width, double height) {
  const double scale = std::min(width / (1024 * kTwipsPerPixel), height / (768 * kTwipsPerPixel));
  return scale > 0 ? scale : 1;
}

GraphLook chooseLook(const host::Surface& background) {
  GraphLook look = lookFor(background);
  look.theme = themeOf(look, background);
  return look;
}

std::int32_t readableColour(std::int32_t colour, const GraphLook& look, double ratio) {
  const std::int32_t goal = look.lightText ? kWhite : kBlack;
  const double behind = look.lightText ? look.lightest : look.darkest;
  const std::int32_t start = colour < 0 ? goal : colour;
  const bool hasHue = spread(start) >= kHueSpread;
  for (int step = 0; step < 20; ++step) {
    const std::int32_t tint = blend(start, goal, step / 20.0);
    const double l = luminance(tint);
    if ((look.lightText ? l > behind : l < behind) && luminanceRatio(l, behind) >= ratio)
      return hasHue || step == 0 ? tint : goal;  // a grey that does not read has no hue to save
  }
  return goal;
}

std::int32_t textOn(std::int32_t colour) {
  return contrastRatio(kWhite, colour) >= contrastRatio(kBlack, colour) ? kWhite : kBlack;
}

void setGraphBackground(host::Surface& surface, const std::string& file) {
  const host::Files& files = *host::host().files;
  const std::string slide = glo.usePPTBackground ? glo.matrixPath + "matrix_background.jpg" : "";
  const std::int32_t tone = glo.usePPTBackground ? slideColour(kBackgroundEntry) : -1;
  for (const std::string& candidate : {file, slide, glo.backgroundFile}) {
    if (candidate.empty() || !files.fileExists(candidate))
      continue;
    surface.backgroundFile = candidate;
    surface.pictureTone = candidate == slide ? tone : -1;
    break;
  }
  const auto colour = [](const std::array<int, 3>& rgb) { return host::RGB(rgb[0], rgb[1], rgb[2]); };
  const Exercise untouched;
  const bool themes = glo.usePPTBackground && glo.backgroundStart == untouched.backgroundStart &&
                      glo.backgroundEnd == untouched.backgroundEnd;
  const std::int32_t ground = tone >= 0 ? tone : look::untoldGround(true);
  const bool painted = tone < 0 && !themes;
  surface.background = painted ? colour(glo.backgroundStart) : ground;
  surface.backgroundEnd = painted ? colour(glo.backgroundEnd) : ground;
  surface.gradient = surface.background != surface.backgroundEnd;
}

host::SurfaceFont themedFont(const FontRecord& own, double untouched, look::Size size, double surfaceHeight,
                             bool bold) {
  host::SurfaceFont font;
  if (!own.name.empty())
    font.name = own.name;
  const double themes = look::points(size, surfaceHeight);
  // sizes of the exercise are told for a screen 768 pixels high
  const double scaled = own.size * surfaceHeight / (768 * kTwipsPerPixel);
  font.size = own.size <= 0 || own.size == untouched
                  ? themes
                  : std::max(scaled, look::points(look::Size::floor, surfaceHeight));
  font.bold = bold;
  font.italic = own.italic;
  font.underline = own.underline;
  return font;
}

void addPanel(host::Surface& surface, const GraphLook& look) {
  if (look.panelOpacity <= 0)
    return;
  const auto add = [&](int index, double outX, double outY, double opacity) {
    host::Element panel;
    panel.kind = host::Element::Kind::rectangle;
    panel.left = outX * surface.width;
    panel.top = outY * surface.height;
    panel.width = surface.width - 2 * panel.left;
    panel.height = surface.height - 2 * panel.top;
    panel.backColour = look.panelColour;
    panel.opacity = opacity;
    panel.bordered = false;
    surface.add(host::Layer::background, "graphPanel", index, std::move(panel));
  };
  if (surface.pictureTone < 0)
    return add(0, 0, 0, look.panelOpacity);
  // Rings that lie on each other: together they have the whole opacity where the margins end.
  constexpr int kRings = 6;
  constexpr double kFade = 0.018;
  const double each = 1 - std::pow(1 - std::min(look.panelOpacity, 0.99), 1.0 / kRings);
  for (int ring = 0; ring < kRings; ++ring) {
    const double out = kFade * (kRings - ring) / kRings;
    add(ring, look::kMarginX - out, look::kMarginY - out, each);
  }
}

std::int32_t softened(std::int32_t colour, const GraphLook& look) {
  return blend(readableColour(colour, look),
               look.lightText ? host::RGB(48, 48, 48) : host::RGB(208, 208, 208), 0.5);
}

double textWidth(const std::string& text, const host::SurfaceFont& font) {
  return host::host().textMeasure->TextWidth(text, font.name, font.size, font.bold, font.italic);
}

double lineHeight(const host::SurfaceFont& font) {
  return host::host().textMeasure->LineHeight(font.name, font.size);
}

double topForBaseline(double y, const host::SurfaceFont& font) {
  return y - host::host().textMeasure->Ascent(font.name, font.size, font.bold, font.italic);
}

double topForMiddle(double y, const host::SurfaceFont& font) {
  const double capital = host::host().textMeasure->CapHeight(font.name, font.size, font.bold, font.italic);
  return topForBaseline(y + capital / 2, font);
}

std::string cutToWidth(const std::string& text, const host::SurfaceFont& font, double width) {
  if (textWidth(text, font) <= width)
    return text;
  std::vector<std::size_t> ends{0};  // byte length of each possible cut
  while (ends.back() != text.size())
    ends.push_back(ends.back() + std::max<std::size_t>(1, characterAt(text, ends.back()).length));
  const auto tooLong = std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) {
    return textWidth(text.substr(0, end) + "...", font) <= width;
  });
  if (tooLong == ends.begin())
    return "";
  const std::size_t end = *std::prev(tooLong);
  std::string cut = text.substr(0, end);
  // at a whole word, where that leaves at least half
  if (const std::size_t blank = text[end] == ' ' ? end : cut.rfind(' ');
      blank != std::string::npos && 2 * blank >= cut.size())
    cut.resize(blank);
  while (!cut.empty() && cut.back() == ' ') cut.pop_back();
  return cut + "...";
}

// A line that others followed: marked as cut even where it would fit.
static std::string endWithDots(const std::string& line, const host::SurfaceFont& font, double width) {
  const std::string marked = line + "...";
  return textWidth(marked, font) <= width ? marked : cutToWidth(marked + ".", font, width);
}

FittedText fitText(const std::string& text, host::SurfaceFont font, double width, double height,
                   double smallest) {
  FittedText fitted;
  std::vector<std::string> lines;
  for (;;) {
    lines = host::wrapText(text, font, width);
    const bool wide = std::any_of(lines.begin(), lines.end(),
                                  [&](const std::string& line) { return textWidth(line, font) > width; });
    const bool tall = static_cast<double>(lines.size()) * lineHeight(font) > height;
    if ((!wide && !tall) || font.size <= smallest)
      break;
    font.size = std::max(smallest, font.size - 1);
  }
  const auto room = static_cast<std::size_t>(std::max(1.0, std::floor(height / lineHeight(font) + 1e-9)));
  if (lines.size() > room) {
    lines.resize(room);
    lines.back() = endWithDots(lines.back(), font, width);
  }
  for (std::string& line : lines) line = cutToWidth(line, font, width);
  fitted.caption = joined(lines, "\n");
  fitted.font = font;
  fitted.width = textWidth(fitted.caption, font);
  fitted.height = static_cast<double>(lines.size()) * lineHeight(font);
  return fitted;
}

}  // namespace qrn
