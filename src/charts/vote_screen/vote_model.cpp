#include "charts/vote_screen/vote_model.h"

#include <algorithm>
#include <numeric>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/live_bars.h"
#include "charts/vote_screen/vote_words.h"

namespace qrn {

namespace {

using host::Element;
using host::Layer;
using look::Size;

constexpr double kThinnestTrack = 0.01;  // thinner ones would be a pattern
constexpr double kKeyRadius = 0.009, kBarRadius = 0.011, kCardRadius = 0.018;  // parts of the height
constexpr double kAverage = 0.125, kUnderAverage = 0.012, kMarkSide = 0.022, kMarkGap = 0.006;
constexpr double kCardPadding = 0.006, kWordGap = 0.3;  // of the type's size
constexpr double kCardSide = 0.29;
constexpr std::int32_t kCard = 0xffffff;  // what cameras want behind a code
constexpr std::int32_t kUntouched = 0;

Element label(const Place& place, const std::string& caption, const host::SurfaceFont& font,
              std::int32_t colour, host::Align align = host::Align::left) {
  Element e;
  e.left = place.Left;
  e.top = place.Top;
  e.width = place.Width;
  e.height = place.Height;
  e.caption = caption;
  e.font = font;
  e.colour = colour;
  e.align = align;
  return e;
}

Element box(const Place& place, std::int32_t fill, double radius = 0) {
  Element e;
  e.kind = Element::Kind::rectangle;
  e.left = place.Left;
  e.top = place.Top;
  e.width = place.Width;
  e.height = place.Height;
  e.backColour = fill;
  e.cornerRadius = radius;
  e.bordered = false;
  return e;
}

// One line whose capitals have their middle at `y`.
Place lineAt(double left, double width, double y, const host::SurfaceFont& font) {
  return {left, topForMiddle(y, font), width, lineHeight(font)};
}

class Drawing {
 public:
  Drawing(const VoteQuestion& question, const VoteLayout& layout, const VoteNow& now)
      : q_(question), l_(layout), now_(now), theme_(question.look.theme), H_(question.height) {}

  host::Surface run() {
    out_.width = q_.width;
    out_.height = q_.height;
    static_cast<host::Ground&>(out_) = q_.ground;
    addPanel(out_, q_.look);
    if (q_.item.empty())
      return std::move(out_);  // nothing is asked yet
    head();
    options();
    if (const std::string words = noticeWords(now_); !words.empty())
      notice(words);
    else if (now_.barsShown && q_.bars)
      bars();
    average();
    joinCode();
    foot();
    stats();
    return std::move(out_);
  }

 private:
  void head();
  void options();
  void key(const char* name, std::size_t option, const Place& place);
  void bars();
  void bar(std::size_t option, int most);
  void mark(std::size_t option, int total);
  void notice(const std::string& words);
  void average();
  void averageMark();
  void joinCode();
  void foot();
  void count();
  void told();
  void stats();

  host::SurfaceFont type(Size size, bool bold = false) const {
    return {"Arial", look::points(size, H_), bold, false, false};
  }
  // A colour that the exercise has chosen, where it reads.
  std::int32_t ink(std::int32_t stored, std::int32_t themes, double ratio = look::kTextContrast) const {
    return stored != kUntouched && readableColour(stored, q_.look, ratio) == stored ? stored : themes;
  }
  // Lines that run from the right end together at the right of their block.
  void words(Layer layer, const char* name, int index, const PlacedText& text, std::int32_t colour) {
    Place place = text.place;
    const bool turned = text.text.rightToLeft && text.align == host::Align::left;
    if (turned)
      place.Width = std::min(place.Width, text.text.width);
    out_.add(
        layer, name, index,
        label(place, text.text.caption, text.text.font, colour, turned ? host::Align::right : text.align));
  }

  const VoteQuestion& q_;
  const VoteLayout& l_;
  const VoteNow& now_;
  const look::Theme& theme_;
  const double H_;
  host::Surface out_;
};

void Drawing::head() {
  words(Layer::titles, "lbl_Risk", 0, l_.item, ink(q_.stored.font2.colour, theme_.text));
  const std::int32_t quiet = ink(q_.stored.titleFont.colour, theme_.quiet);
  if (!q_.scale.empty())
    words(Layer::titles, "lbl_assessment", 0, l_.scale, quiet);
  if (l_.step.Width > 0) {
    const host::SurfaceFont font = typeOf(q_.stored.titleFont, l_.scale.text.font.size, false);
    out_.add(Layer::titles, "step", 0, label(l_.step, stepWords(q_), font, theme_.quiet));
  }
}

void Drawing::key(const char* name, std::size_t option, const Place& place) {
  Element e = label(place, q_.options[option].key, l_.keyFont, theme_.text, host::Align::centre);
  e.opaque = true;
  e.backColour = theme_.surface;
  e.cornerRadius = kKeyRadius * H_;
  out_.add(Layer::keys, name, static_cast<int>(option), std::move(e));
}

void Drawing::options() {
  if (!q_.showOptions)
    return;
  for (std::size_t i = 0; i < l_.rows.size(); ++i) {
    const VoteRow& row = l_.rows[i];
    if (!row.told)
      continue;
    key("optionKey", i, row.key);
    PlacedText option = row.option;
    const SetText& text = option.text;
    option.place.Top =
        topForMiddle(option.place.Middle() - (text.lines - 1) * lineHeight(text.font) / 2, text.font);
    words(Layer::captions, "lbl_Criteria", static_cast<int>(i), option,
          ink(q_.stored.font3.colour, theme_.text));
  }
}

void Drawing::bars() {
  const int total = std::accumulate(now_.counts.begin(), now_.counts.end(), 0);
  const int most = now_.counts.empty() ? 0 : *std::max_element(now_.counts.begin(), now_.counts.end());
  const std::size_t rows = std::min(l_.rows.size(), now_.counts.size());
  for (std::size_t i = 0; i < rows; ++i) {
    const VoteRow& row = l_.rows[i];
    if (row.track.Width <= 0)
      continue;
    bar(i, most);
    if (row.marked || (now_.counts[i] == most && row.track.Height * 2 > kBarRadius * H_))
      mark(i, total);
    if (l_.ownKeys && row.marked) {
      Place place = row.key;
      place.Left = l_.bars.Left;
      place.Height = std::min(place.Height, row.track.Height * 1.4);
      place.Top = row.track.Middle() - place.Height / 2;
      key("barKey", i, place);
    }
  }
}

// The longest bar fills its track. The mode stands out by its strength as well as by its length.
void Drawing::bar(std::size_t option, int most) {
  const int index = static_cast<int>(option), count = now_.counts[option];
  const Place& track = l_.rows[option].track;
  const double radius = std::min(kBarRadius * H_, track.Height / 2);
  if (track.Height >= kThinnestTrack * H_)
    out_.add(Layer::grid, "barTrack", index, box(track, theme_.track, radius));
  if (count <= 0)
    return;
  Place filled = track;
  filled.Width = std::max(2 * radius, track.Width * count / most * now_.grown);
  const std::int32_t themes = count == most ? theme_.data : theme_.dataRest;
  const std::int32_t chosen = q_.options[option].colour;
  const std::int32_t colour = chosen < 0 ? themes : readableColour(chosen, q_.look, look::kShapeContrast);
  out_.add(Layer::bars, "bar", index, box(filled, colour, radius));
}

void Drawing::mark(std::size_t option, int total) {
  const int index = static_cast<int>(option), count = now_.counts[option];
  const BarMark texts = barMark(count, total, q_.percentOrNumber);
  const Place& track = l_.rows[option].track;
  const double left = track.Right() + kMarkSide * H_, y = track.Middle();
  const double strong = textWidth(texts.strong, l_.markFont);
  out_.add(Layer::captions, "barMark", index,
           label(lineAt(left, strong, y, l_.markFont), texts.strong, l_.markFont,
                 count > 0 ? theme_.text : theme_.quiet));
  if (texts.quiet.empty())
    return;
  // Both numbers stand on one line.
  Place place = lineAt(left + strong, textWidth(texts.quiet, l_.countFont), y, l_.countFont);
  const double base = topForMiddle(y, l_.markFont) - topForBaseline(0, l_.markFont);
  place.Top = topForBaseline(base, l_.countFont);
  out_.add(Layer::captions, "barCount", index, label(place, texts.quiet, l_.countFont, theme_.quiet));
}

// In the place of the bars, when there are none.
void Drawing::notice(const std::string& words) {
  if (!now_.barsShown || l_.bars.Width <= 0)
    return;
  const SetText text =
      setText(words, type(Size::label), {look::points(Size::label, H_), look::points(Size::floor, H_)},
              l_.bars.Width, H_ / 3);
  const double top = std::min(l_.rows.front().track.Top, H_ - text.height);
  out_.add(Layer::captions, "notice", 0,
           label({l_.bars.Left, top, l_.bars.Width, text.height}, text.caption, text.font, theme_.text));
}

void Drawing::average() {
  if (!now_.average)
    return;
  averageMark();
  if (l_.aside.Width <= 0)
    return;
  host::SurfaceFont font = type(Size::item, true);
  font.size = look::points(Size::item, H_) * kAverage / look::partOfHeight(Size::item);
  const std::string number = averageWords(*now_.average);
  font.size *= std::min(1.0, l_.aside.Width / textWidth(number, font));
  const double top = l_.rows.empty() ? l_.aside.Top : l_.rows.front().key.Top;
  const double capitals = topForBaseline(0, font) - topForMiddle(0, font);  // half a capital, upwards
  const double middle = top - capitals;
  const Place place = lineAt(l_.aside.Left, l_.aside.Width, middle, font);
  out_.add(Layer::captions, "average", 0, label(place, number, font, theme_.highlight, host::Align::right));
  const host::SurfaceFont small = type(Size::label);
  const double under = middle - capitals + kUnderAverage * H_;
  out_.add(Layer::captions, "average", 1,
           label({l_.aside.Left, under, l_.aside.Width, lineHeight(small)}, "average", small, theme_.quiet,
                 host::Align::right));
}

// Beside the bars, at the height that the average has between the options.
void Drawing::averageMark() {
  const double place = *now_.average - q_.stored.startFrom;
  const auto last = static_cast<double>(l_.rows.size()) - 1;
  if (l_.rows.empty() || l_.rows.front().track.Width <= 0 || !now_.barsShown || place < 0 || place > last ||
      l_.ownKeys)
    return;
  const auto above = static_cast<std::size_t>(place);
  const std::size_t below = std::min(above + 1, l_.rows.size() - 1);
  const double part = place - static_cast<double>(above);
  const double y = l_.rows[above].track.Middle() * (1 - part) + l_.rows[below].track.Middle() * part;
  const double side = kMarkSide * H_;
  Element mark =
      box({l_.rows[above].track.Left - side - kMarkGap * H_, y - side / 2, side, side}, theme_.highlight);
  mark.kind = Element::Kind::triangle;
  out_.add(Layer::axes, "averageMark", 0, std::move(mark));
}

// For phones that come late, in the column that the average takes later.
void Drawing::joinCode() {
  if (now_.joinAddress.empty() || now_.closed)
    return;
  const host::SurfaceFont font = type(Size::floor);
  const double line = lineHeight(font);
  const double side = std::min({kCardSide * H_, l_.aside.Width, l_.aside.Height - line});
  if (side <= 0)
    return;
  const Place card{l_.aside.Right() - side, l_.aside.Top, side, side};
  out_.add(Layer::keys, "joinCode", 0, box(card, kCard, kCardRadius * H_));
  const double inside = kCardPadding * H_;
  Element code = box({card.Left + inside, card.Top + inside, side - 2 * inside, side - 2 * inside}, kCard);
  code.kind = Element::Kind::code;
  code.caption = "http://" + now_.joinAddress + "/";
  out_.add(Layer::keys, "joinCode", 1, std::move(code));
  const double wide = std::max(side, textWidth(now_.joinAddress, font));
  out_.add(Layer::keys, "joinCode", 2,
           label({card.Right() - wide, card.Bottom() + 0.4 * line, wide, line}, now_.joinAddress, font,
                 theme_.quiet, wide > side ? host::Align::right : host::Align::centre));
}

void Drawing::foot() {
  if (now_.room > 0) {
    const bool everyone = now_.voted >= now_.room;
    const double radius = l_.track.Height / 2;
    out_.add(Layer::panel, "track", 0, box(l_.track, theme_.track, radius));
    Place filled = l_.track;
    filled.Width *= std::min(1.0, static_cast<double>(now_.voted) / now_.room);
    if (now_.voted > 0) {
      filled.Width = std::max(filled.Width, filled.Height);
      out_.add(Layer::panel, "track", 1,
               box(filled, everyone || now_.closed ? theme_.allWell : theme_.data, radius));
    }
  }
  count();
  told();
  if (now_.status.empty())
    return;
  const double floor = look::points(Size::floor, H_);
  const SetText text = setText(now_.status, type(Size::floor), {floor}, l_.status.Width, l_.status.Height);
  out_.add(Layer::panel, "lbl_status", 0,
           label({l_.status.Left, l_.status.Bottom() - text.height, l_.status.Width, text.height},
                 text.caption, text.font, theme_.alarm));
}

void Drawing::count() {
  const CountWords texts = countWords(now_);
  const host::SurfaceFont strong = type(Size::word, true), quiet = type(Size::label);
  const double first = textWidth(texts.strong, strong), gap = kWordGap * quiet.size * kTwipsPerPoint;
  const double second = texts.quiet.empty() ? 0 : gap + textWidth(texts.quiet, quiet);
  Place place = l_.count;
  place.Width = first + second;
  place.Height = lineHeight(strong);
  place = movedInside(place, q_.width, q_.height);
  if (now_.clickable)
    out_.add(Layer::panel, "uctl_votesCast", 0, box(place, theme_.ground)).opacity = 0;
  out_.add(Layer::panel, "uctl_votesCast", 1,
           label({place.Left, place.Top, first, place.Height}, texts.strong, strong, theme_.text));
  const double base = place.Top - topForBaseline(0, strong);
  if (!texts.quiet.empty())
    out_.add(Layer::panel, "uctl_votesCast", 2,
             label({place.Left + first + gap, topForBaseline(base, quiet), second - gap, lineHeight(quiet)},
                   texts.quiet, quiet, theme_.quiet));
}

// The end of the foot: who is missing, that nobody is, or that nobody is there yet.
void Drawing::told() {
  const bool well = now_.room > 0 && now_.voted >= now_.room;
  const host::SurfaceFont font = type(well ? Size::label : Size::floor);
  const double width = l_.told.Width;
  std::string words =
      toldWords(now_, [&](const std::string& text) { return textWidth(text, font) <= width; });
  if (words.empty())
    return;
  const host::SurfaceFont strong = type(Size::word, true);
  const double base = l_.told.Top - topForBaseline(0, strong);
  const SetText text = setText(words, font, {font.size}, width, 2 * lineHeight(font));
  const double top = text.lines > 1 ? l_.told.Top : topForBaseline(base, font);
  out_.add(Layer::panel, "uctl_kpadsNotVoted", 0,
           label({l_.told.Left, top, width, text.height}, text.caption, font,
                 well ? theme_.allWell : theme_.quiet, host::Align::right));
}

// The label reaches into the corner; its words keep to the margins.
void Drawing::stats() {
  if (now_.stats.empty() || l_.stats.Width <= 0)
    return;
  std::int32_t colour = ink(q_.stored.font4.colour, theme_.quiet);
  if (q_.stored.font4Flag) {
    const std::int32_t back = q_.stored.font4Colour;
    out_.add(Layer::panel, "lbl_averageScore", 0, box(l_.stats, back));
    if (contrastRatio(colour, back) < look::kTextContrast)
      colour = textOn(back);
  }
  out_.add(Layer::panel, "lbl_averageScore", 1,
           label(l_.statsText, now_.stats, l_.statsFont, colour, l_.statsAlign));
}

}  // namespace

host::Surface voteModel(const VoteQuestion& question, const VoteLayout& layout, const VoteNow& now) {
  return Drawing(question, layout, now).run();
}

host::Surface voteModel(const VoteQuestion& question, const VoteNow& now) {
  return voteModel(question, layOut(question), now);
}

}  // namespace qrn
