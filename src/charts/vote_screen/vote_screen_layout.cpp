#include "charts/vote_screen/vote_screen_layout.h"

#include <algorithm>

namespace qrn {

namespace {

constexpr double kMargin = 0.03;    // of the width, left and right
constexpr double kStatsEdge = 100;  // twips between the statistics and the edges
constexpr double kCountWidth = 0.14, kFootTop = 0.875, kFootHeight = 0.1;

bool isSet(const LayoutRect& stored) {
  return stored.width > 0;
}

bool atTop(const std::string& corner) {
  return !corner.empty() && corner[0] != 'B';
}
bool atBottom(const std::string& corner) {
  return !corner.empty() && corner[0] == 'B';
}
bool atRight(const std::string& corner) {
  return corner.size() == 2 && corner[1] == 'R';
}

// Down to the next stored place below it that stands in the way, else to the foot of the screen.
double roomBelow(const AssessmentRecord& assessment, int options, const LayoutRect& from,
                 double screenHeight) {
  double bottom = screenHeight * 0.97;
  const auto look = [&](const LayoutRect& other) {
    const bool aside = other.left >= from.left + from.width || other.left + other.width <= from.left;
    if (isSet(other) && !aside && other.top > from.top)
      bottom = std::min(bottom, static_cast<double>(other.top));
  };
  look(assessment.lbl_Risk);
  look(assessment.lbl_Assessment);
  for (int i = 0; i < options && i < static_cast<int>(assessment.lbl_Criteria.size()); ++i)
    look(assessment.lbl_Criteria[static_cast<std::size_t>(i)]);
  return std::max(0.0, bottom - from.top);
}

Place storedPlace(const AssessmentRecord& assessment, const ScreenNeeds& needs, const LayoutRect& stored) {
  Place place{stored.left, stored.top, stored.width, stored.height};
  if (place.Height <= 0)
    place.Height = roomBelow(assessment, needs.options, stored, needs.height);
  return movedInside(place, needs.width, needs.height);
}

// Stored places of the options; an option without one follows under the one before it.
std::vector<Place> storedCriteria(const AssessmentRecord& assessment, const ScreenNeeds& needs) {
  std::vector<Place> places;
  if (!isSet(assessment.lbl_Criteria[0]))
    return places;
  for (int i = 0; i < needs.options; ++i) {
    const std::size_t n = static_cast<std::size_t>(i);
    if (n < assessment.lbl_Criteria.size() && isSet(assessment.lbl_Criteria[n])) {
      places.push_back(storedPlace(assessment, needs, assessment.lbl_Criteria[n]));
      continue;
    }
    Place next = places.back();
    next.Height = std::min(next.Height, needs.height * 0.06);
    next.Top += next.Height;
    places.push_back(movedInside(next, needs.width, needs.height));
  }
  return places;
}

void placeStatsAndFoot(const ScreenNeeds& needs, ScreenPlaces& places) {
  const double W = needs.width, H = needs.height, margin = kMargin * W;
  const bool countLeft = needs.statsCorner == "BR";
  const double statsLeft = atRight(needs.statsCorner) ? W - kStatsEdge - needs.statsWidth : kStatsEdge;
  const double statsTop = atBottom(needs.statsCorner) ? H - kStatsEdge - needs.statsHeight : kStatsEdge;
  places.stats = {statsLeft, statsTop, needs.statsWidth, needs.statsHeight};
  places.count = {countLeft ? margin : W - margin - kCountWidth * W, kFootTop * H, kCountWidth * W,
                  kFootHeight * H};
  double left = margin, right = W - margin;
  (countLeft ? left : right) += (countLeft ? 1 : -1) * (kCountWidth * W + margin);
  if (atBottom(needs.statsCorner))
    (countLeft ? right : left) += (countLeft ? -1 : 1) * (needs.statsWidth + kStatsEdge);
  places.status = {left, (kFootTop + 0.01) * H, std::max(0.1 * W, right - left), (kFootHeight - 0.02) * H};
}

void placeQuestion(const ScreenNeeds& needs, ScreenPlaces& places) {
  const double W = needs.width, H = needs.height, margin = kMargin * W;
  const double inset =
      atTop(needs.statsCorner) ? std::clamp(needs.statsWidth + 2 * kStatsEdge - margin, 0.0, 0.36 * W) : 0;
  places.risk = {margin + inset, 0.025 * H, W - 2 * (margin + inset), 0.2 * H};
  places.assessment = {margin, 0.24 * H, W - 2 * margin, 0.1 * H};
}

void placeOptions(const ScreenNeeds& needs, double optionShare, ScreenPlaces& places) {
  const double W = needs.width, H = needs.height, margin = kMargin * W;
  const double top = 0.365 * H;
  const double bottom =
      std::min(kFootTop * H, atBottom(needs.statsCorner) ? places.stats.Top : H) - 0.015 * H;
  const double inside = W - 2 * margin;
  places.options = {margin, top, needs.bars ? inside * optionShare : inside, bottom - top};
  const double barsLeft = margin + inside * optionShare + 0.015 * W;
  places.bars = {barsLeft, top, W - margin - barsLeft, bottom - top};
}

// Bars of a stored layout: in the chart's place, else right of the options, else in the right part of the
// screen.
void placeStoredBars(const AssessmentRecord& assessment, const ScreenNeeds& needs, ScreenPlaces& places) {
  const LayoutRect& chart = assessment.img_chart;
  if (isSet(chart) && chart.height > 0) {
    places.bars = movedInside({chart.left, chart.top, chart.width, chart.height}, needs.width, needs.height);
    places.barsBesideOptions = false;
    return;
  }
  double right = 0;
  for (const Place& option : places.criteria) right = std::max(right, option.Right());
  right = std::min(right, needs.width * 0.7);
  places.bars = {right + 0.01 * needs.width, places.criteria.front().Top, needs.width * 0.98 - right,
                 places.criteria.back().Bottom() - places.criteria.front().Top};
  places.bars.Width = std::max(0.1 * needs.width, needs.width * 0.97 - places.bars.Left);
}

}  // namespace

ScreenPlaces screenPlaces(const AssessmentRecord& assessment, const ScreenNeeds& needs, double optionShare) {
  ScreenPlaces places;
  placeStatsAndFoot(needs, places);
  placeQuestion(needs, places);
  placeOptions(needs, optionShare, places);
  places.riskStored = isSet(assessment.lbl_Risk);
  places.assessmentStored = isSet(assessment.lbl_Assessment);
  if (places.riskStored)
    places.risk = storedPlace(assessment, needs, assessment.lbl_Risk);
  if (places.assessmentStored)
    places.assessment = storedPlace(assessment, needs, assessment.lbl_Assessment);
  places.criteria = storedCriteria(assessment, needs);
  if (!places.criteria.empty())
    placeStoredBars(assessment, needs, places);
  if (assessment.Img_VC.left > 0 || assessment.Img_VC.top > 0) {
    places.count.Left = assessment.Img_VC.left;
    places.count.Top = assessment.Img_VC.top;
    places.count = movedInside(places.count, needs.width, needs.height);
  }
  const double keypadsWidth = std::max(places.bars.Width, 0.3 * needs.width);
  places.keypads = {needs.width * (1 - kMargin) - keypadsWidth, places.options.Top, keypadsWidth,
                    places.options.Height};
  return places;
}

Place movedInside(Place place, double width, double height) {
  place.Width = std::min(place.Width, width);
  place.Height = std::min(place.Height, height);
  place.Left = std::clamp(place.Left, 0.0, width - place.Width);
  place.Top = std::clamp(place.Top, 0.0, height - place.Height);
  return place;
}

}  // namespace qrn
