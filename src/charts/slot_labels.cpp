#include "charts/slot_labels.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace qrn {

namespace {

using host::SurfaceFont;

constexpr double kSlotShare = 0.94;   // that a text takes of its slot at most
constexpr double kLines = 3;          // of a label at most
constexpr double kLeastWhole = 0.85;  // of the font: whole texts are not set smaller
constexpr double kLargestKey = 1.4;   // of the font: identifiers that stand alone
constexpr double kKeyGap = 0.12;      // of a slot, between two of them
constexpr double kColumnGap = 24;     // pixels at 1024x768
constexpr int kMostColumns = 6;

double widestOf(const std::vector<std::string>& texts, const SurfaceFont& font) {
  double widest = 0;
  for (const std::string& text : texts) widest = std::max(widest, textWidth(text, font));
  return widest;
}

// Width and height of lines of captions that are set already.
double heightOf(const std::vector<std::string>& captions, const SurfaceFont& font) {
  std::ptrdiff_t most = 1;
  for (const std::string& caption : captions)
    most = std::max(most, 1 + std::count(caption.begin(), caption.end(), '\n'));
  return static_cast<double>(most) * lineHeight(font);
}

bool isWhole(const FittedText& fitted, const std::string& text) {
  std::string joined = fitted.caption;
  std::replace(joined.begin(), joined.end(), '\n', ' ');
  return joined == text;
}

// Every text whole in its slot, all in one size; false when one does not fit.
bool setWhole(SlotLabels& set, const std::vector<std::string>& texts, SurfaceFont font) {
  const double smallest = font.size * kLeastWhole;
  for (const std::string& text : texts) {
    const FittedText fitted = fitText(text, font, set.width, kLines * lineHeight(font), smallest);
    if (!isWhole(fitted, text))
      return false;
    font.size = fitted.font.size;  // the next is no larger
  }
  for (const std::string& text : texts)
    set.captions.push_back(joined(host::wrapBalanced(text, font, set.width), "\n"));
  set.font = font;
  return true;
}

void setCut(SlotLabels& set, const std::vector<std::string>& texts, const SurfaceFont& font) {
  for (const std::string& text : texts)
    set.captions.push_back(fitText(text, font, set.width, kLines * lineHeight(font), font.size).caption);
}

// What stands before ":", as large as the slot allows; where even the smallest is too wide, every second,
// third ...
void setKeys(SlotLabels& set, const std::vector<std::string>& texts, const SurfaceFont& font, bool keyed,
             const SlotRoom& room) {
  const double gap = std::max(2 * room.pixel, kKeyGap * room.slot), least = room.smallest;
  for (const std::string& text : texts) set.captions.push_back(text.substr(0, text.find(':')));
  double widest = widestOf(set.captions, font);
  if (widest <= 0)
    return;
  const double largest = font.size * (keyed ? kLargestKey : 1);
  const double fitting = std::floor(font.size * (room.slot - gap) / widest * 4) / 4;
  set.font.size = std::min(largest, std::max(fitting, least));
  widest *= set.font.size / font.size;
  set.every = std::max(1, static_cast<int>(std::ceil((widest + gap) / room.slot - 1e-6)));
  set.width = set.every * room.slot - gap;
  for (std::string& caption : set.captions) caption = cutToWidth(caption, set.font, set.width);
}

SlotLabels::Legend legendIn(const std::vector<std::string>& texts, const SurfaceFont& font,
                            const SlotRoom& room) {
  SlotLabels::Legend legend;
  const double gap = kColumnGap * room.pixel, widest = widestOf(texts, font);
  const auto fitting = static_cast<int>((room.legendWidth + gap) / (widest + gap));
  const int columns = std::clamp(fitting, 1, kMostColumns), count = static_cast<int>(texts.size());
  legend.font = font;
  legend.perColumn = (count + columns - 1) / columns;
  legend.columnWidth = (room.legendWidth + gap) / columns;
  legend.height = legend.perColumn * lineHeight(font);
  if (legend.height > room.legendHeight)
    return {};
  legend.rows = texts;  // fewer columns than fit would be too high
  return legend;
}

}  // namespace

bool textsFitBelow(const std::vector<std::string>& texts, const SurfaceFont& font, double slot) {
  SlotLabels set;
  set.width = slot * kSlotShare;
  return setWhole(set, texts, font);
}

SlotLabels setSlotLabels(const std::vector<std::string>& texts, const ChartLabels& labels,
                         const SurfaceFont& font, const SlotRoom& room) {
  SlotLabels set;
  set.font = font;
  set.width = std::min(room.slot * kSlotShare, room.slot * (1 - labels.Separation / 100.0) - 4 * room.pixel);
  const bool lines = labels.MultiLine && room.slot > 6 * textWidth("n", font);
  if (!lines || !setWhole(set, texts, font)) {
    if (lines && !labels.Keyed)
      setCut(set, texts, font);
    else
      setKeys(set, texts, font, labels.Keyed, room);
  }
  set.height = heightOf(set.captions, set.font);
  if (!labels.Keyed || set.every > 1 || texts.empty() ||
      isWhole({set.captions.front(), {}, 0, 0}, texts.front()))
    return set;
  SurfaceFont small = font;
  const double least = std::min(font.size, room.smallest);
  for (; small.size >= least && set.legend.rows.empty(); small.size *= kLeastWhole)
    set.legend = legendIn(texts, small, room);
  return set;
}

}  // namespace qrn
