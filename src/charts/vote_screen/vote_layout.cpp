#include "charts/vote_screen/vote_layout.h"

#include <algorithm>
#include <cmath>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/live_bars.h"
#include "charts/vote_screen/vote_words.h"

namespace qrn {

namespace {

using look::Size;

// Parts of the height, but for those that are called wide.
constexpr double kHeadTop = 0.047, kItemTop = 0.105, kRowsTop = 0.30, kRowsEnd = 0.785;
constexpr double kUsualPitch = 0.104, kLeastPitch = 0.044, kCrowdedPitch = 0.04, kBelowItem = 0.035;
constexpr int kLargeLines = 3;  // an item of more is set smaller
constexpr double kItemLeast = 0.15, kItemMost = 0.30;
constexpr double kKeySide = 0.053, kKeyGap = 0.026, kRowGap = 0.012;
constexpr double kBarHeight = 0.064, kBarOfPitch = 0.66, kGutter = 0.045;
constexpr double kLeastBar = 0.13;  // of the width
constexpr double kAsideWidth = 0.31, kAsideWide = 0.18, kAsideGap = 0.03, kMarkGap = 0.022;
constexpr double kOptionShare = 0.40;  // of the room between the margins, at most, where bars stand beside
constexpr double kTrackTop = 0.861, kTrackHeight = 0.012, kFootTop = 0.885;
constexpr double kStatusTop = 0.787, kStatusHeight = 0.068;
constexpr double kStatsEdge = 100;  // twips between the statistics and the edges
constexpr double kStatsPadding = 0.01;
constexpr double kUntouchedStatsSize = 20;  // points
constexpr double kCountShare = 0.36;        // of the foot, wide

class Layouter {
 public:
  explicit Layouter(const VoteQuestion& question)
      : q_(question),
        W_(question.width),
        H_(question.height),
        left_(look::kMarginX * W_),
        right_(W_ - left_) {}

  VoteLayout run() {
    placeStats();
    placeHead();
    placeAside();
    placeRows();
    placeFoot();
    placeStoredTexts(q_, out_);
    if (hasStoredOptions(q_))
      placeStoredOptions(q_, out_);
    return std::move(out_);
  }

 private:
  double size(Size step) const { return look::points(step, H_); }
  bool corner(char side, char end) const {
    return q_.statsCorner.size() == 2 && q_.statsCorner[0] == side && q_.statsCorner[1] == end;
  }

  void placeStats();
  void placeHead();
  void placeStep();
  void placeAside();
  void placeRows();
  void placeKeys(double pitch);
  double optionRoom() const;
  void tellSome(double pitch);
  double rowsTop() const;
  double rowsEnd() const { return out_.aside.Width > 0 ? out_.aside.Left - kAsideGap * H_ : right_; }
  void spreadRows(const std::vector<SetText>& set, double top, double room, double pitch);
  void placeBars(double pitch);
  void placeFoot();

  const VoteQuestion& q_;
  const double W_, H_, left_, right_;
  VoteLayout out_;
  double keySide_ = 0, keyWidth_ = 0, textWidth_ = 0;
};

void Layouter::placeStats() {
  const double scale = graphScale(W_, H_);
  const FontRecord& stored = q_.stored.font4;
  const bool chosen = stored.size != kUntouchedStatsSize;
  const double points = std::max(size(Size::floor), chosen ? stored.size * scale : 0);
  out_.statsFont = typeOf(stored, points, stored.bold);
  if (q_.statsCorner.empty())
    return;
  const double width = textWidth("Standard Deviation: 00.00", out_.statsFont);
  const double height = q_.statsLines * lineHeight(out_.statsFont);
  const double marginY = look::kMarginY * H_;
  const bool atRight = corner('T', 'R') || corner('B', 'R'), atFoot = corner('B', 'L') || corner('B', 'R');
  out_.statsText = {atRight ? right_ - width : left_, atFoot ? H_ - marginY - height : marginY, width,
                    height};
  const Place& text = out_.statsText;
  const double pad = kStatsPadding * H_;
  const double left = atRight ? text.Left - pad : kStatsEdge, top = atFoot ? text.Top - pad : kStatsEdge;
  const double right = atRight ? W_ - kStatsEdge : text.Right() + pad;
  const double foot = atFoot ? H_ - kStatsEdge : text.Bottom() + pad;
  out_.stats = {left, top, right - left, foot - top};
  out_.statsAlign = atRight ? host::Align::right : host::Align::left;
}

// The item gets as much height as leaves every option its row.
void Layouter::placeHead() {
  double left = left_, right = right_;
  if (corner('T', 'R'))
    right = std::min(right, out_.stats.Left - kAsideGap * H_);
  if (corner('T', 'L'))
    left = std::max(left, out_.stats.Right() + kAsideGap * H_);
  const host::SurfaceFont scaleFont = typeOf(q_.stored.titleFont, 0, true);
  const double line = lineHeight(typeOf(q_.stored.titleFont, size(Size::label), true));
  const double step = textWidth("  " + stepWords(q_), typeOf(q_.stored.titleFont, size(Size::label), false));
  out_.scale.text =
      setText(q_.scale, scaleFont, {size(Size::label), size(Size::floor)}, right - left - step, 1.7 * line);
  out_.scale.place = {left, kHeadTop * H_, right - left, out_.scale.text.height};
  const double top = std::max(kItemTop * H_, out_.scale.place.Bottom() + 0.015 * H_);
  const double rows = static_cast<double>(q_.options.size()) * kLeastPitch * H_;
  const double room = std::clamp((kRowsEnd - kBelowItem) * H_ - top - rows, kItemLeast * H_, kItemMost * H_);
  const host::SurfaceFont itemFont = typeOf(q_.stored.font2, 0, true);
  out_.item.text = setText(q_.item, itemFont, {size(Size::item)}, right - left, room);
  if (!out_.item.text.whole || out_.item.text.lines > kLargeLines)
    out_.item.text = setText(q_.item, itemFont, {size(Size::word)}, right - left, room);
  out_.item.place = {left, top, right - left, out_.item.text.height};
  placeStep();
  if (q_.stored.titleAlign == 1)
    out_.scale.align = host::Align::right;
  if (q_.stored.itemAlign == 1)
    out_.item.align = host::Align::right;
}

// Behind the last line of the scale, or in its place.
void Layouter::placeStep() {
  const std::string words = stepWords(q_);
  if (words.empty())
    return;
  const PlacedText& scale = out_.scale;
  const std::string last = scale.text.caption.substr(scale.text.caption.rfind('\n') + 1);
  const double behind =
      last.empty() ? 0 : textWidth(last, scale.text.font) + 0.35 * scale.text.font.size * kTwipsPerPoint;
  const host::SurfaceFont font = typeOf(q_.stored.titleFont, scale.text.font.size, false);
  const double width = textWidth(words, font), line = lineHeight(font);
  if (behind + width <= scale.place.Width && q_.stored.titleAlign != 1)
    out_.step = {scale.place.Left + behind, scale.place.Bottom() - line, width, line};
}

double Layouter::rowsTop() const {
  const double natural = static_cast<double>(q_.options.size()) * kUsualPitch;
  const double usual = std::min(kRowsTop, kRowsEnd - natural) * H_;
  return std::max(out_.item.place.Bottom() + kBelowItem * H_, usual);
}

void Layouter::placeAside() {
  const double top = rowsTop();
  const double width = std::min(kAsideWidth * H_, kAsideWide * W_);
  if (q_.aside)
    out_.aside = {right_ - width, top, width, kRowsEnd * H_ - top};
}

// All options at one size, as large as lets all of them stand whole.
void Layouter::placeRows() {
  const auto count = static_cast<double>(q_.options.size());
  if (count < 1)
    return;
  const double top = rowsTop(), room = kRowsEnd * H_ - top;
  const double pitch = std::min(kUsualPitch * H_, room / count);
  const bool crowd = pitch < kCrowdedPitch * H_;
  out_.markFont = {"Arial", size(Size::label), true, false, false};
  out_.countFont = {"Arial", size(Size::floor), false, false, false};
  placeKeys(crowd ? kLeastPitch * H_ : pitch);
  const double most = q_.bars ? optionRoom() : rowsEnd() - left_ - out_.indent;
  std::vector<std::string> texts;
  for (const VoteOption& option : q_.options) texts.push_back(option.text);
  const std::vector<double> sizes = crowd
                                        ? std::vector{size(Size::floor)}
                                        : std::vector{size(Size::word), size(Size::label), size(Size::floor)};
  const std::vector<SetText> set =
      setTogether(texts, typeOf(q_.stored.font3, 0, q_.stored.font3.bold), sizes, std::max(0.0, most),
                  crowd ? count * kLeastPitch * H_ : room, kRowGap * H_);
  spreadRows(set, top, room, crowd ? pitch : std::max(pitch, kLeastPitch * H_));
  if (crowd)
    tellSome(pitch);
  if (q_.bars)
    placeBars(crowd ? pitch : std::max(pitch, kLeastPitch * H_));
}

// Rows share a pitch where the tallest allows it; else each takes what it needs.
void Layouter::spreadRows(const std::vector<SetText>& set, double top, double room, double pitch) {
  const auto count = static_cast<double>(set.size());
  double used = 0, tallest = 0, lowest = room;
  for (const SetText& text : set) {
    used += text.height;
    textWidth_ = std::max(textWidth_, text.width);
    tallest = std::max(tallest, text.height + kRowGap * H_);
    lowest = std::min(lowest, text.height);
  }
  const bool crowd = pitch < kLeastPitch * H_, even = crowd || tallest * count <= room;
  const double gap = std::min((room - used) / count, kBelowItem * H_);
  const double side = even ? keySide_ : std::min(keySide_, 0.96 * (lowest + gap));
  double y = top;
  for (const SetText& text : set) {
    const double height = crowd  ? pitch
                          : even ? std::max(std::min(pitch, room / count), tallest)
                                 : text.height + gap;
    const double middle = y + height / 2;
    VoteRow& row = out_.rows.emplace_back();
    row.option.text = text;
    row.option.place = {left_ + out_.indent, middle - text.height / 2, textWidth_, text.height};
    row.key = {left_, middle - side / 2, keyWidth_, side};
    row.track = {0, y, 0, height};
    y += height;
  }
}

// Bars keep some width, however long the options are.
double Layouter::optionRoom() const {
  const double beside = markWidth(q_, out_) + (kMarkGap + kGutter) * H_ + kLeastBar * W_;
  return std::min(kOptionShare * (right_ - left_), rowsEnd() - left_ - out_.indent - beside);
}

void Layouter::placeKeys(double pitch) {
  keySide_ = std::min(kKeySide * H_, 0.92 * pitch);
  out_.keyFont = {"Arial", size(keySide_ < kKeySide * H_ ? Size::floor : Size::label), true, false, false};
  double widest = 0;
  for (const VoteOption& option : q_.options) widest = std::max(widest, textWidth(option.key, out_.keyFont));
  keyWidth_ = std::max(keySide_, widest + 0.3 * keySide_);
  out_.indent = keyWidth_ + kKeyGap * H_;
}

// Of very many options the first, the last and some between are told; on a scale of 100 every 25th.
void Layouter::tellSome(double pitch) {
  const std::size_t last = out_.rows.size() - 1;
  const auto apart = static_cast<std::size_t>(std::ceil(kLeastPitch * H_ / pitch));
  const std::size_t step = last >= 99 ? 25 : std::max<std::size_t>(apart, 2);
  // 0 or 1, then 25, 50, 75 and the last
  const std::size_t first = out_.rows.size() == 100 && q_.options.front().key != "0" ? 1 : 0;
  for (std::size_t i = 1; i < last; ++i)
    out_.rows[i].marked = out_.rows[i].told = (i + first) % step == 0 && i >= apart && last - i >= apart;
}

// Bars between the options and the column at the right, all equally thick.
void Layouter::placeBars(double pitch) {
  if (pitch < 0.9 * lineHeight(out_.markFont))
    out_.markFont.size = out_.countFont.size;
  const double from = left_ + out_.indent + textWidth_ + kGutter * H_;
  const double end = rowsEnd();
  const double to = end - markWidth(q_, out_) - kMarkGap * H_;
  double least = pitch;
  for (const VoteRow& row : out_.rows) least = std::min(least, row.track.Height);
  const double thick = std::min(kBarHeight * H_, kBarOfPitch * least);
  for (VoteRow& row : out_.rows)
    row.track = {from, row.track.Middle() - thick / 2, std::max(0.0, to - from), thick};
  out_.bars = {from, out_.rows.front().track.Top, end - from,
               out_.rows.back().track.Bottom() - out_.rows.front().track.Top};
}

void Layouter::placeFoot() {
  double left = left_, right = right_;
  if (corner('B', 'L'))
    left = std::max(left, out_.stats.Right() + kAsideGap * H_);
  if (corner('B', 'R'))
    right = std::min(right, out_.stats.Left - kAsideGap * H_);
  out_.track = {left, kTrackTop * H_, right - left, kTrackHeight * H_};
  const double height = (1 - look::kMarginY - kFootTop) * H_;
  const double part = kCountShare * (right_ - left_);
  out_.count = {left, kFootTop * H_, part, height};
  if (const LayoutRect& stored = q_.stored.Img_VC; stored.left > 0 || stored.top > 0)
    out_.count = {stored.left, stored.top, part, height};
  out_.told = {left + part, kFootTop * H_, right - left - part, height};
  out_.status = {left, kStatusTop * H_, right - left, kStatusHeight * H_};
}

}  // namespace

VoteLayout layOut(const VoteQuestion& question) {
  return Layouter(question).run();
}

host::SurfaceFont typeOf(const FontRecord& stored, double size, bool bold) {
  return {stored.name.empty() ? "Arial" : stored.name, size, bold, stored.italic, stored.underline};
}

Place movedInside(Place place, double width, double height) {
  place.Width = std::min(place.Width, width);
  place.Height = std::min(place.Height, height);
  place.Left = std::clamp(place.Left, 0.0, width - place.Width);
  place.Top = std::clamp(place.Top, 0.0, height - place.Height);
  return place;
}

double markWidth(const VoteQuestion& question, const VoteLayout& layout) {
  const BarMark widest = barMark(100, 100, question.percentOrNumber);
  return textWidth(widest.strong, layout.markFont) + textWidth(widest.quiet, layout.countFont);
}

}  // namespace qrn
