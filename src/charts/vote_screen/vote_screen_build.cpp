#include <algorithm>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/vote_screen.h"
#include "charts/vote_screen/whole_text.h"
#include "core/glo.h"
#include "core/layout.h"

namespace qrn {

namespace {

using host::Element;
using host::Layer;

// Type of the default layout, in points of a screen of 1024x768; type shrinks from here until all of it fits.
constexpr double kItemSize = 34, kAssessmentSize = 24, kOptionSize = 28, kCountSize = 34, kStatsSize = 16,
                 kSmallSize = 18;
constexpr double kReadableOption = 16;  // below this, options get more of the width
constexpr double kOptionShare = 0.52, kWideOptionShare = 0.68;
constexpr double kRowGap = 0.25;      // between options, in line heights
constexpr double kBarHeight = 0.75;   // of the row
constexpr double kThickestBar = 900;  // twips at 1024x768
constexpr double kPadding = 90;       // twips
constexpr std::int32_t kWhite = 0xffffff, kBlack = 0, kStatusBack = 0xc0f0ff;

host::SurfaceFont typeOf(const FontRecord& stored, double size) {
  return {stored.name.empty() ? "Arial" : stored.name, size, stored.bold, stored.italic, stored.underline};
}

host::Align alignOf(int stored) {
  return stored == 0 || stored == 1 ? static_cast<host::Align>(stored) : host::Align::centre;
}

// The caption with both blanks behind the number, which breaking into lines would make one.
std::string optionText(const VoteLabel& label) {
  const std::size_t blanks = label.Caption.find(".  ");
  std::string text = label.Caption;
  if (blanks != std::string::npos)
    text.replace(blanks + 1, 1, "\u00a0");
  return text;
}

void put(VoteLabel& label, const Place& place, const WholeText& text) {
  label.Left = place.Left;
  label.Top = place.Top;
  label.Width = place.Width;
  label.Height = text.height;
  label.Font = text.font;
}

Element labelElement(const VoteLabel& label) {
  Element element;
  element.visible = label.Visible;
  element.left = label.Left;
  element.top = label.Top;
  element.width = label.Width;
  element.height = label.Height;
  element.caption = label.Caption;
  element.font = label.Font;
  element.align = label.Alignment;
  element.colour = label.ForeColor;
  return element;
}

Element rectangleElement(const Place& place, std::int32_t fill) {
  Element element;
  element.kind = Element::Kind::rectangle;
  element.left = place.Left;
  element.top = place.Top;
  element.width = place.Width;
  element.height = place.Height;
  element.backColour = fill;
  element.bordered = false;
  return element;
}

}  // namespace

// Turns the model of a form into places, type sizes and elements.
struct VoteScreenBuilder {
  explicit VoteScreenBuilder(VoteForm& target)
      : form(target),
        surface(target.surface_),
        record(fitted(glo.assessments[static_cast<std::size_t>(std::max(1, target.displayedAssessment) - 1)],
                      glo.layoutScreen, {target.ScaleWidth, target.ScaleHeight})),
        scale(graphScale(target.ScaleWidth, target.ScaleHeight)) {}

  void build();
  void chooseBackground();  // all there is before the first question

 private:
  void chooseNeeds();
  void placeQuestion();
  double placeOptions(double share);
  void placeStoredOptions();
  void placeSmallLabels();
  void addOptions();
  void addBars();
  void addBarRow(std::size_t option, const Place& row);
  void addCount();
  void addKeypads();
  void addStatusAndStats();
  // The stored colour where it can be read, else plain white or black.
  std::int32_t text(std::int32_t stored) const {
    const bool readable = readableColour(stored, form.look_) == stored;
    return readable ? stored : form.look_.lightText ? kWhite : kBlack;
  }
  double typeSize(const FontRecord& stored, double preset) const {
    return (stored.size > 0 ? stored.size : preset) * scale;
  }

  VoteForm& form;
  host::Surface& surface;
  const AssessmentRecord record;
  double scale;
  ScreenNeeds needs;
  WholeText riskText, assessmentText;
  std::vector<WholeText> optionTexts;
};

void VoteScreenBuilder::build() {
  chooseBackground();
  chooseNeeds();
  form.places_ = screenPlaces(record, needs, kOptionShare);
  if (form.places_.criteria.empty()) {
    if (placeOptions(kOptionShare) < kReadableOption * scale && needs.bars)
      placeOptions(kWideOptionShare);
  } else {
    placeStoredOptions();
  }
  placeQuestion();
  placeSmallLabels();
  Element risk = labelElement(form.lbl_Risk);
  risk.caption = riskText.caption;
  surface.add(Layer::titles, "lbl_Risk", 0, std::move(risk));
  Element assessment = labelElement(form.lbl_assessment);
  assessment.caption = assessmentText.caption;
  surface.add(Layer::titles, "lbl_assessment", 0, std::move(assessment));
  addOptions();
  addBars();
  addCount();
  addKeypads();
  addStatusAndStats();
}

void VoteScreenBuilder::chooseBackground() {
  surface.clear();
  surface.width = form.ScaleWidth;
  surface.height = form.ScaleHeight;
  setGraphBackground(surface, form.bgndImage);
  form.look_ = chooseLook(surface);
  addPanel(surface, form.look_);
}

void VoteScreenBuilder::chooseNeeds() {
  needs.width = form.ScaleWidth;
  needs.height = form.ScaleHeight;
  needs.options = static_cast<int>(form.lbl_Criteria.size());
  needs.bars = glo.runByShowBarGraph != 0;
  form.lbl_averageScore.Font = typeOf(record.font4, kStatsSize * scale);
  const bool hint = glo.opt_abstain;  // how to abstain stands there while the vote runs
  if (glo.CheckAverageScoreIndicator != 1 && !hint)
    return;
  const host::SurfaceFont& font = form.lbl_averageScore.Font;
  needs.statsCorner = glo.opt_StatsBoxPosition.empty() ? "TL" : glo.opt_StatsBoxPosition;
  needs.statsWidth = textWidth("Standard Deviation: 00.00", font) + 2 * kPadding;
  needs.statsHeight = (hint ? 5 : 4) * lineHeight(font);
}

void VoteScreenBuilder::placeQuestion() {
  ScreenPlaces& places = form.places_;
  const double itemSize = places.riskStored ? typeSize(record.font2, 18) : kItemSize * scale;
  riskText =
      setWhole(form.lbl_Risk.Caption, typeOf(record.font2, itemSize), places.risk.Width, places.risk.Height);
  if (!places.riskStored)
    places.risk.Top += (places.risk.Height - riskText.height) / 2;
  put(form.lbl_Risk, places.risk, riskText);
  form.lbl_Risk.Alignment = alignOf(record.itemAlign);
  form.lbl_Risk.ForeColor = text(record.font2.colour);

  const bool sameSpot = places.riskStored && places.assessmentStored &&
                        places.assessment.Left == places.risk.Left &&
                        places.assessment.Top == places.risk.Top;
  if (sameSpot) {
    places.assessment.Top = places.risk.Top + riskText.height;
    places.assessment = movedInside(places.assessment, needs.width, needs.height);
  }
  const double titleSize = places.assessmentStored ? typeSize(record.titleFont, 16) : kAssessmentSize * scale;
  assessmentText = setWhole(form.lbl_assessment.Caption, typeOf(record.titleFont, titleSize),
                            places.assessment.Width, places.assessment.Height);
  put(form.lbl_assessment, places.assessment, assessmentText);
  form.lbl_assessment.Alignment = alignOf(record.titleAlign);
  form.lbl_assessment.ForeColor = text(record.titleFont.colour);
}

// Options under each other at one size, rows spread over the room there is. Gives that size.
double VoteScreenBuilder::placeOptions(double share) {
  form.places_ = screenPlaces(record, needs, share);
  const Place& room = form.places_.options;
  std::vector<std::string> captions;
  for (const VoteLabel& label : form.lbl_Criteria) captions.push_back(optionText(label));
  optionTexts =
      setWholeTogether(captions, typeOf(record.font3, kOptionSize * scale), room.Width, room.Height, kRowGap);
  double used = 0;
  for (const WholeText& option : optionTexts) used += option.height;
  const double gap = optionTexts.empty() ? 0 : (room.Height - used) / static_cast<double>(optionTexts.size());
  double top = room.Top + gap / 2;
  for (std::size_t i = 0; i < optionTexts.size(); ++i) {
    put(form.lbl_Criteria[i], {room.Left, top, room.Width, optionTexts[i].height}, optionTexts[i]);
    form.lbl_Criteria[i].Alignment = host::Align::left;
    top += optionTexts[i].height + gap;
  }
  return optionTexts.empty() ? kOptionSize * scale : optionTexts.front().font.size;
}

void VoteScreenBuilder::placeStoredOptions() {
  optionTexts.clear();
  for (std::size_t i = 0; i < form.lbl_Criteria.size(); ++i) {
    const Place& place = form.places_.criteria[i];
    optionTexts.push_back(setWhole(form.lbl_Criteria[i].Caption,
                                   typeOf(record.font3, typeSize(record.font3, 16)), place.Width,
                                   place.Height));
    put(form.lbl_Criteria[i], place, optionTexts.back());
    form.lbl_Criteria[i].Alignment = alignOf(record.scaleAlign);
  }
}

void VoteScreenBuilder::placeSmallLabels() {
  const ScreenPlaces& places = form.places_;
  const host::SurfaceFont small = {"Arial", kSmallSize * scale, false, false, false};
  put(form.lbl_averageScore, places.stats, {"", form.lbl_averageScore.Font, needs.statsHeight, 0});
  const bool right = needs.statsCorner.size() == 2 && needs.statsCorner[1] == 'R';
  form.lbl_averageScore.Alignment = right ? host::Align::right : host::Align::left;
  form.lbl_averageScore.ForeColor = text(record.font4.colour);
  put(form.lbl_status, places.status, {"", small, places.status.Height, 0});
  form.lbl_status.ForeColor = kBlack;
  VoteLabel& count = form.uctl_votesCast.label;
  put(count, places.count, {"", {"Arial", kCountSize * scale, true, false, false}, places.count.Height, 0});
  count.Left += kPadding;
  count.Width -= 2 * kPadding;
  count.Alignment = host::Align::centre;
}

void VoteScreenBuilder::addOptions() {
  for (std::size_t i = 0; i < form.lbl_Criteria.size(); ++i) {
    form.lbl_Criteria[i].ForeColor = text(record.font3.colour);
    Element element = labelElement(form.lbl_Criteria[i]);
    element.caption = optionTexts[i].caption;
    surface.add(Layer::captions, "lbl_Criteria", static_cast<int>(i), std::move(element));
  }
}

void VoteScreenBuilder::addBars() {
  if (!needs.bars || form.lbl_Criteria.empty())
    return;
  const Place& area = form.places_.bars;
  double size = optionTexts.front().font.size;
  for (const WholeText& option : optionTexts) size = std::min(size, option.font.size);
  const double rowHeight = area.Height / static_cast<double>(form.lbl_Criteria.size());
  form.markFont_ =
      setWhole("100% (0000)", {"Arial", size, true, false, false}, area.Width * 0.45, rowHeight).font;
  const double numbers = form.places_.barsBesideOptions ? 0 : textWidth("00.", form.markFont_) + kPadding;
  form.barSpan_ = std::max(
      kPadding, area.Width - numbers -
                    textWidth(BarMark(1000, 1000, glo.graphPercentOrNumber), form.markFont_) - 2 * kPadding);
  for (std::size_t i = 0; i < form.lbl_Criteria.size(); ++i) {
    const VoteLabel& option = form.lbl_Criteria[i];
    Place row{area.Left + numbers, area.Top + rowHeight * static_cast<double>(i), area.Width, rowHeight};
    if (form.places_.barsBesideOptions) {
      row.Top = option.Top;
      row.Height = option.Height;
    }
    addBarRow(i, row);
  }
}

void VoteScreenBuilder::addBarRow(std::size_t option, const Place& row) {
  const int index = static_cast<int>(option);
  double smallest = row.Height;
  if (form.places_.barsBesideOptions)
    for (const WholeText& other : optionTexts) smallest = std::min(smallest, other.height);
  const double thick = std::min(smallest * kBarHeight, kThickestBar * scale);
  const std::int32_t point = record.pointColours[std::min(option, record.pointColours.size() - 1)];
  Element bar = rectangleElement({row.Left, row.Top + (row.Height - thick) / 2, 0, thick},
                                 readableColour(point, form.look_, kShapeContrast));
  bar.visible = false;
  bar.bordered = record.chartOutline;
  bar.colour = form.look_.lightText ? kWhite : kBlack;
  surface.add(Layer::bars, "bar", index, std::move(bar));
  VoteLabel mark;
  mark.Font = form.markFont_;
  mark.ForeColor = form.look_.lightText ? kWhite : kBlack;
  mark.Height = lineHeight(mark.Font);
  mark.Top = row.Top + (row.Height - mark.Height) / 2;
  mark.Width = textWidth("100% (00000)", mark.Font);
  surface.add(Layer::captions, "barMark", index, labelElement(mark));
  if (form.places_.barsBesideOptions)
    return;
  mark.Caption = std::to_string(index + record.startFrom) + ".";
  mark.Left = form.places_.bars.Left;
  mark.Width = row.Left - mark.Left;
  surface.add(Layer::captions, "barNumber", index, labelElement(mark));
}

// White on black or black on white, whatever stands out from the background.
void VoteScreenBuilder::addCount() {
  VoteLabel& label = form.uctl_votesCast.label;
  const std::int32_t back = form.look_.lightText ? kWhite : kBlack;
  label.ForeColor = textOn(back);
  Element box = rectangleElement(form.places_.count, back);
  box.visible = label.Visible;
  surface.add(Layer::panel, "uctl_votesCast", 0, std::move(box));
  surface.add(Layer::panel, "uctl_votesCast", 1, labelElement(label));
}

void VoteScreenBuilder::addKeypads() {
  const Place& place = form.places_.keypads;
  const host::SurfaceFont type = {"Arial", kSmallSize * scale, false, false, false};
  Element panel = rectangleElement(place, kWhite);
  panel.bordered = true;
  panel.visible = form.lbl_kpads.Visible;
  surface.add(Layer::panel, "uctl_kpadsNotVoted", 0, std::move(panel));
  const double title = lineHeight(type);
  const double inside = place.Width - 2 * kPadding;
  put(form.lbl_kpadsTitle, {place.Left + kPadding, place.Top + kPadding, inside, title},
      {"", type, title, 1});
  form.lbl_kpadsTitle.Font.bold = true;
  const double room = place.Height - title - 3 * kPadding;
  put(form.lbl_kpads, {place.Left + kPadding, place.Top + title + 2 * kPadding, inside, room},
      {"", type, room, 0});
  form.lbl_kpadsTitle.ForeColor = form.lbl_kpads.ForeColor = kBlack;
  surface.add(Layer::panel, "uctl_kpadsNotVoted", 1, labelElement(form.lbl_kpadsTitle));
  surface.add(Layer::panel, "uctl_kpadsNotVoted", 2, labelElement(form.lbl_kpads));
}

void VoteScreenBuilder::addStatusAndStats() {
  Element status = labelElement(form.lbl_status);
  status.opaque = true;
  status.backColour = kStatusBack;
  surface.add(Layer::panel, "lbl_status", 0, std::move(status));
  Element stats = labelElement(form.lbl_averageScore);
  if (record.font4Flag) {
    stats.opaque = true;
    stats.backColour = record.font4Colour;
    stats.colour = contrastRatio(record.font4.colour, record.font4Colour) >= kTextContrast
                       ? record.font4.colour
                       : textOn(record.font4Colour);
    form.lbl_averageScore.ForeColor = stats.colour;
  }
  surface.add(Layer::panel, "lbl_averageScore", 0, std::move(stats));
}

void VoteForm::LayOutAgain() {
  if (displayedAssessment < 1)
    return VoteScreenBuilder(*this).chooseBackground();
  VoteScreenBuilder(*this).build();
  const bool barsShown = bars.Visible;
  bars.counts.clear();
  UpdateBars();
  ShowBars(barsShown);
  fitCount();
  ShowStatus(lbl_status.Caption);
  ShowKeypads(lbl_kpadsTitle.Caption, lbl_kpads.Caption, lbl_kpads.Visible);
}

}  // namespace qrn
