// The places that an exercise keeps for the texts of a vote, and bars that stand clear of them.
#include <algorithm>
#include <cmath>
#include <vector>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/vote_layout.h"

namespace qrn {

namespace {

constexpr double kBarsEnd = 0.84;  // parts of the height and width
constexpr double kLeastBarsWide = 0.2, kLeastBarsHigh = 0.15, kLeastRow = 0.036;
constexpr double kGap = 0.015, kNarrowed = 0.55, kNextOption = 0.06;
constexpr double kPixel = 0.75;        // points
constexpr double kAverageRoom = 0.03;  // before bars, for the mark of the average
constexpr double kKeysRoom = 1500;     // twips for the text behind a key, at least
constexpr double kBarOfRow = 0.66, kThickest = 0.064;

bool isSet(const LayoutRect& stored) {
  return stored.width > 0;
}

host::Align alignOf(int stored) {
  return stored == 0 || stored == 1 ? static_cast<host::Align>(stored) : host::Align::centre;
}

// Down to the next stored place below it that stands in the way, else to the foot of the screen.
double roomBelow(const VoteQuestion& question, const LayoutRect& from) {
  double bottom = question.height * 0.97;
  const auto look = [&](const LayoutRect& other) {
    const bool beside = other.left >= from.left + from.width || other.left + other.width <= from.left;
    if (isSet(other) && !beside && other.top > from.top)
      bottom = std::min(bottom, static_cast<double>(other.top));
  };
  look(question.stored.lbl_Risk);
  look(question.stored.lbl_Assessment);
  const auto& options = question.stored.lbl_Criteria;
  std::for_each_n(options.begin(), std::min(question.options.size(), options.size()), look);
  return std::max(0.0, bottom - from.top);
}

Place storedPlace(const VoteQuestion& question, const LayoutRect& stored) {
  Place place{stored.left, stored.top, stored.width, stored.height};
  if (place.Height <= 0)
    place.Height = roomBelow(question, stored);
  return movedInside(place, question.width, question.height);
}

// Type is drawn in whole pixels.
double wholePixels(double points) {
  return std::round(points / kPixel) * kPixel;
}

// The stored size and smaller ones, none below the floor.
std::vector<double> sizesFrom(const VoteQuestion& question, const FontRecord& font) {
  const double floor = look::points(look::Size::floor, question.height);
  const double wanted = font.size * graphScale(question.width, question.height);
  std::vector<double> sizes;
  for (double size = wanted; size > floor; size *= 0.85) sizes.push_back(wholePixels(size));
  sizes.push_back(floor);
  return sizes;
}

PlacedText placed(const VoteQuestion& question, const std::string& text, const FontRecord& font, Place place,
                  int align, double indent = 0) {
  PlacedText result;
  place.Left += indent;
  place.Width = std::max(kTwipsPerPixel, place.Width - indent);
  result.text =
      setText(text, typeOf(font, 0, font.bold), sizesFrom(question, font), place.Width, place.Height);
  result.place = place;
  result.place.Height = result.text.height;
  result.align = alignOf(align);
  return result;
}

// Where its words stand, whatever room it was given.
Place inkOf(const PlacedText& label) {
  Place ink = label.place;
  const double spare = std::max(0.0, ink.Width - label.text.width);
  ink.Left += label.align == host::Align::left ? 0 : label.align == host::Align::right ? spare : spare / 2;
  ink.Width -= spare;
  return ink;
}

bool apart(const Place& a, const Place& b) {
  return std::min(a.Right(), b.Right()) <= std::max(a.Left, b.Left) ||
         std::min(a.Bottom(), b.Bottom()) <= std::max(a.Top, b.Top);
}

std::vector<Place> optionPlaces(const VoteQuestion& question) {
  std::vector<Place> places;
  for (std::size_t i = 0; i < question.options.size(); ++i) {
    const auto& stored = question.stored.lbl_Criteria;
    if (i < stored.size() && isSet(stored[i])) {
      places.push_back(storedPlace(question, stored[i]));
      continue;
    }
    Place next = places.back();  // one without a place follows under the one before it
    next.Height = std::min(next.Height, question.height * kNextOption);
    next.Top += next.Height;
    places.push_back(movedInside(next, question.width, question.height));
  }
  return places;
}

void setOptions(const VoteQuestion& question, double share, VoteLayout& layout) {
  const double indent = layout.indent;
  const double keyWidth = layout.rows.empty() ? 0 : layout.rows.front().key.Width;
  const double keySide = layout.rows.empty() ? 0 : layout.rows.front().key.Height;
  std::vector<Place> places = optionPlaces(question);
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i].Width = std::max(places[i].Width * share, indent + kKeysRoom);
    VoteRow& row = layout.rows[i];
    row.option = placed(question, question.options[i].text, question.stored.font3, places[i],
                        question.stored.scaleAlign, indent);
    const Place ink = inkOf(row.option);
    row.key = {ink.Left - indent, ink.Middle() - keySide / 2, keyWidth, keySide};
    row.told = true;
  }
}

// The largest free part of the screen beside, below or above the options; none has no size.
Place freePart(const VoteQuestion& question, const VoteLayout& layout) {
  Place all{question.width, question.height, 0, 0};
  double right = 0, bottom = 0;
  for (const VoteRow& row : layout.rows) {
    const Place ink = inkOf(row.option);
    all.Left = std::min(all.Left, row.key.Left);
    all.Top = std::min({all.Top, ink.Top, row.key.Top});
    right = std::max(right, ink.Right());
    bottom = std::max({bottom, ink.Bottom(), row.key.Bottom()});
  }
  all.Width = right - all.Left;
  all.Height = bottom - all.Top;
  const double W = question.width, H = question.height, gap = kGap * W, end = kBarsEnd * H;
  const double rows = static_cast<double>(layout.rows.size()) * kLeastRow * H;
  const double left = look::kMarginX * W, edge = layout.aside.Width > 0 ? layout.aside.Left - gap : W - left,
               top = std::min(all.Top, end);
  const double low = std::min(std::max(all.Bottom(), top + std::max(kLeastBarsHigh * H, rows)), end);
  const std::vector<Place> parts{{},
                                 {all.Right() + gap, top, edge - all.Right() - gap, low - top},
                                 {left, top, all.Left - gap - left, low - top},
                                 {left, all.Bottom() + gap, edge - left, end - all.Bottom() - gap},
                                 {left, look::kMarginY * H, edge - left, all.Top - gap - look::kMarginY * H}};
  return std::ranges::max(parts, {}, [&](const Place& part) {
    const bool large = part.Width >= kLeastBarsWide * W && part.Height >= std::max(kLeastBarsHigh * H, rows);
    const bool clear = apart(inkOf(layout.item), part) && apart(inkOf(layout.scale), part);
    return large && clear ? part.Width * part.Height : 0;
  });
}

bool clearOfTexts(const VoteLayout& layout, const Place& part) {
  return apart(inkOf(layout.item), part) && apart(inkOf(layout.scale), part) &&
         std::all_of(layout.rows.begin(), layout.rows.end(), [&](const VoteRow& row) {
           return apart(inkOf(row.option), part) && apart(row.key, part);
         });
}

// Each bar in the row of its option where the part stands beside them, else rows of their own.
void placeBars(const VoteQuestion& question, const Place& part, VoteLayout& layout) {
  const auto count = static_cast<double>(layout.rows.size());
  const bool beside = std::all_of(layout.rows.begin(), layout.rows.end(), [&](const VoteRow& row) {
    return row.option.place.Middle() > part.Top && row.option.place.Middle() < part.Bottom();
  });
  double pitch = part.Height / count;
  for (std::size_t i = 1; beside && i < layout.rows.size(); ++i)
    pitch = std::min(pitch, layout.rows[i].option.place.Middle() - layout.rows[i - 1].option.place.Middle());
  layout.ownKeys = !beside || pitch <= 0;
  if (layout.ownKeys)
    pitch = part.Height / count;
  const double H = question.height, thick = std::min(kBarOfRow * pitch, kThickest * H);
  const double keys =
      layout.ownKeys ? layout.rows.front().key.Width + kGap * question.width : kAverageRoom * H;
  const double span = part.Width - keys - markWidth(question, layout) - kGap * question.width;
  layout.bars = part;
  const bool marked = pitch > 0.8 * lineHeight(layout.countFont);
  double next = part.Top + pitch / 2;
  for (VoteRow& row : layout.rows) {
    const double middle = layout.ownKeys ? next : row.option.place.Middle();
    next += pitch;
    row.marked = marked;
    row.track = {part.Left + keys, middle - thick / 2, std::max(0.0, span), thick};
  }
}

}  // namespace

bool hasStoredOptions(const VoteQuestion& question) {
  return isSet(question.stored.lbl_Criteria[0]) && !question.options.empty();
}

void placeStoredTexts(const VoteQuestion& question, VoteLayout& layout) {
  const AssessmentRecord& stored = question.stored;
  const bool item = isSet(stored.lbl_Risk), scale = isSet(stored.lbl_Assessment);
  if (item)
    layout.item = placed(question, question.item, stored.font2, storedPlace(question, stored.lbl_Risk),
                         stored.itemAlign);
  if (!scale)
    return;
  Place place = storedPlace(question, stored.lbl_Assessment);
  if (item && place.Left == layout.item.place.Left && place.Top == layout.item.place.Top) {
    place.Top = layout.item.place.Bottom();
    place = movedInside(place, question.width, question.height);
  }
  layout.step = {};
  layout.scale = placed(question, question.scale, stored.titleFont, place, stored.titleAlign);
}

// The column at the right has no place of its own in a stored layout: it stands where nothing else does.
void placeStoredOptions(const VoteQuestion& question, VoteLayout& layout) {
  setOptions(question, 1, layout);
  if (!clearOfTexts(layout, layout.aside))
    layout.aside = {};
  if (!question.bars)
    return;
  const LayoutRect& chart = question.stored.img_chart;
  Place part{chart.left, chart.top, chart.width, chart.height};
  part = movedInside(part, question.width, question.height);
  if (!isSet(chart) || chart.height <= 0 || !clearOfTexts(layout, part))
    part = freePart(question, layout);
  if (part.Width <= 0) {  // options that fill the screen give way
    setOptions(question, kNarrowed, layout);
    part = freePart(question, layout);
  }
  if (part.Width <= 0) {
    layout.aside = {};
    part = freePart(question, layout);
  }
  if (!apart(layout.aside, part))
    layout.aside = {};
  placeBars(question, part, layout);
}

}  // namespace qrn
