#include "matrixgraph/plot_items.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "analysis/multiplot.h"
#include "base/text.h"
#include "charts/chart_display.h"
#include "core/glo.h"
#include "host/names.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr std::int32_t kComplement = 0xffffff;
constexpr double kRing = 0.07, kDotSize = 0.42, kKeySides = 0.62;  // of the type's size
constexpr std::size_t kCrowd = 60;
constexpr double kCrowdLines = 0.2;
constexpr double kGhostDisc = 0.26, kGhostText = 0.5;  // of the way from the ground

const RiskRecord& riskAt(int risk) {
  return glo.item(risk);
}

std::size_t slotOf(int assessment) {
  return static_cast<std::size_t>(assessment - 1);
}

// Of a multi-plot, from 0; 0 for all others.
std::size_t plotOf(int assessment) {
  return static_cast<std::size_t>(std::max(0, assessment - kMultiPlotSlot));
}

host::Element& place(host::Element& label, PlotPoint centre, double width, double height) {
  label.width = width;
  label.height = height;
  label.left = centre.x - width / 2;
  label.top = centre.y - height / 2;
  label.align = host::Align::centre;
  return label;
}

// From the centre of a label towards `other`, the point where its box ends; the centre when `other` is
// inside.
PlotPoint edgeTowards(PlotPoint centre, PlotPoint other, double width, double height) {
  const double dx = other.x - centre.x, dy = other.y - centre.y;
  const double tx = dx != 0 ? width / 2 / std::fabs(dx) : 2, ty = dy != 0 ? height / 2 / std::fabs(dy) : 2;
  const double t = std::min(tx, ty);
  return t < 1 ? PlotPoint{centre.x + t * dx, centre.y + t * dy} : centre;
}

std::string tipOf(int risk, int vertical, int horizontal) {
  const RiskRecord& record = riskAt(risk);
  std::string notes;
  for (const int assessment : {vertical, horizontal})
    if (assessment >= kMultiPlotSlot)
      notes += record.plotText[slotOf(assessment)];
  return notes.empty() ? record.identifier + ": " + record.text : notes + record.identifier;
}

}  // namespace

ScaleSpan scaleSpan(int assessment, bool diversity, int multiPlotTop) {
  if (diversity)
    return {0, 100};
  if (assessment >= kMultiPlotSlot) {
    const int step = GetMultiPlotAxisScaleStep(multiPlotTop);
    return {static_cast<double>(step), static_cast<double>(multiPlotTop - step)};
  }
  const AssessmentRecord& scale = glo.assessments[slotOf(assessment)];
  if (scale.voteType == 3)
    return {0, 100};
  return {static_cast<double>(scale.startFrom), static_cast<double>(scale.scalePointCount - 1)};
}

double itemFraction(int risk, int assessment, bool diversity, int multiPlotTop) {
  const RiskRecord& record = riskAt(risk);
  const std::size_t slot = slotOf(assessment);
  const ScaleSpan span = scaleSpan(assessment, diversity, multiPlotTop);
  const float value = diversity ? record.diversity[slot] * 100 : record.average[slot];
  return scoreFraction(value - static_cast<float>(span.low), static_cast<float>(span.range));
}

void dressKey(host::Element& key, std::int32_t disc) {
  key.backColour = disc;
  static std::pair<std::int32_t, std::int32_t> last{-1, 0};  // most keys are alike
  if (last.first != disc)
    last = {disc, look::inkOn(disc)};
  key.colour = last.second;
}

void placeShadow(host::Element& shadow, const host::Element& label) {
  shadow.left = label.left + kTwipsPerPixel;
  shadow.top = label.top + kTwipsPerPixel;
}

ItemPlotter::ItemPlotter(GraphCanvas& canvas, const PlotRequest& request, bool diversity,
                         std::string& dataMessage)
    : canvas_(canvas),
      request_(request),
      diversity_(diversity),
      dataMessage_(dataMessage),
      items_(static_cast<std::size_t>(std::max(0, glo.itemCount()))) {
  int risk = 0;
  for (PlottedItem& item : items_) {
    item.id = riskAt(risk).ID;
    item.risk = risk++;
  }
  for (const int pair : usedPairs(request)) lastPair_ = pair;
  for (const int assessment : request)
    if (assessment >= kMultiPlotSlot)
      multiPlotTop_.at(plotOf(assessment)) = GetMultiPlotMaxScale(assessment - kMultiPlotSlot, true, true);
}

double ItemPlotter::fraction(int risk, int assessment) const {
  return itemFraction(risk, assessment, diversity_, multiPlotTop_.at(plotOf(assessment)));
}

ItemPlotter::PairLook ItemPlotter::lookOf(int pair) const {
  const auto p = static_cast<std::size_t>(pair);
  host::Surface& surface = canvas_.surface;
  const look::Theme& theme = canvas_.theme();
  const Exercise untouched;
  PairLook look{pair, arrayOf(surface, Part::key, pair), arrayOf(surface, Part::shadow, pair),
                arrayOf(surface, Part::dot, pair), arrayOf(surface, Part::ghost, pair)};
  look.disc = glo.blobColours[p] == untouched.blobColours[p]
                  ? (pair == lastPair_ ? theme.data : theme.dataRest)
                  : readableColour(glo.blobColours[p], canvas_.look, kShapeContrast);
  const bool crowd = items_.size() > kCrowd;  // single lines are seen when their item is shown alone
  const std::int32_t own = pair > 0 ? glo.checkDrawLineColor[p - 1] : 0;
  look.line = own != 0 ? readableColour(own, canvas_.look, kShapeContrast)
              : crowd  ? blend(theme.ground, theme.axis, kCrowdLines)
                       : look::tintUntil(theme.axis, theme.text, theme.ground, kShapeContrast);
  return look;
}

void ItemPlotter::plotPair(int pair) {
  const std::size_t vertical = slotOf(verticalOf(request_, pair)),
                    horizontal = slotOf(horizontalOf(request_, pair));
  const PairLook look = lookOf(pair);
  discs_[static_cast<std::size_t>(pair)] = look.disc;
  const auto span = [&](int assessment) {
    return scaleSpan(assessment, diversity_, multiPlotTop_.at(plotOf(assessment)));
  };
  spans_[static_cast<std::size_t>(pair)] = {span(verticalOf(request_, pair)),
                                            span(horizontalOf(request_, pair))};
  int n = 0;
  for (PlottedItem& item : items_) {
    const RiskRecord& record = riskAt(item.risk);
    if (!record.active[vertical] || !record.active[horizontal] || !record.voting ||
        !inCategoriesShown(item.risk))
      continue;
    if (hasData(item.risk, pair))
      addItem(item, look, ++n);
  }
}

std::vector<PlottedItem> ItemPlotter::takePlotted() {
  markTop();
  std::erase_if(items_, [](const PlottedItem& item) {
    return std::all_of(item.n.begin(), item.n.end(), [](int n) { return n == 0; });
  });
  return std::move(items_);
}

// The three that stand highest on both scales of the last pair together, in the upper half of either; fewer
// where the next one stands as high as the last of them.
void ItemPlotter::markTop() {
  constexpr std::size_t kTop = 3;
  constexpr std::size_t kLeast = 8;  // among fewer items nothing has to stand out
  const auto p = static_cast<std::size_t>(lastPair_);
  const PlotArea& area = canvas_.area;
  std::vector<std::pair<double, PlottedItem*>> high;
  std::size_t standing = 0;
  for (PlottedItem& item : items_) {
    if (!item.onScale[p])
      continue;
    ++standing;
    const double across = (item.centre[p].x - area.X1) / (area.X2 - area.X1),
                 up = (area.Y2 - item.centre[p].y) / (area.Y2 - area.Y1);
    if (across >= 0.5 && up >= 0.5)
      high.push_back({across + up, &item});
  }
  if (standing < kLeast)
    return;
  std::ranges::stable_sort(high, std::greater(), [](const auto& one) { return one.first; });
  std::size_t count = std::min(kTop, high.size());
  constexpr double kSame = 1e-3;
  while (count > 0 && count < high.size() && high[count - 1].first - high[count].first < kSame) --count;
  for (std::size_t i = 0; i < count; ++i) {
    high[i].second->top = true;
    dressKey(*arrayOf(canvas_.surface, Part::key, lastPair_).find(high[i].second->n[p]),
             canvas_.theme().highlight);
  }
}

// Each miss is told, in the order met; the message does not name computed values.
bool ItemPlotter::hasData(int risk, int pair) {
  bool complete = true;
  for (const int assessment : {verticalOf(request_, pair), horizontalOf(request_, pair)}) {
    if (assessment < kMultiPlotSlot)
      tellIfMissing(dataMessage_, riskAt(risk), assessment);
    complete = complete && riskAt(risk).hasScore(slotOf(assessment));
  }
  return complete;
}

void ItemPlotter::addItem(PlottedItem& item, const PairLook& look, int n) {
  const auto p = static_cast<std::size_t>(look.pair);
  const int vertical = verticalOf(request_, look.pair), horizontal = horizontalOf(request_, look.pair);
  const double across = fraction(item.risk, horizontal);
  const double up = fraction(item.risk, vertical);
  item.n[p] = n;
  item.centre[p] = pointOf(canvas_.area, across, up);
  item.onScale[p] = across != kOffScale && up != kOffScale;

  addKey(item, look, tipOf(item.risk, vertical, horizontal));
  joinToPairBefore(item, look);
}

// The key on its disc, and all that may stand in its place.
void ItemPlotter::addKey(const PlottedItem& item, const PairLook& look, const std::string& tip) {
  const auto p = static_cast<std::size_t>(look.pair);
  const look::Theme& theme = canvas_.theme();
  const double type = canvas_.labelFont.size * kTwipsPerPoint;
  const int n = item.n[p];
  host::Element label = makeLabel(riskAt(item.risk).identifier + kPairMarks[look.pair], canvas_.labelFont);
  label.item = item.id;
  label.opaque = true;
  label.cornerRadius = canvas_.keyHeight / 2;
  label.ringWidth = kRing * type;
  label.ringColour = theme.ground;
  place(label, item.centre[p],
        std::max(canvas_.keyHeight, textWidth(label.caption, label.font) + kKeySides * type),
        canvas_.keyHeight);
  dressKey(label, look.disc);
  host::Element shadow = makeLabel(label.caption, label.font);
  shadow.item = item.id;
  shadow.width = label.width;
  shadow.height = label.height;
  shadow.align = label.align;
  shadow.colour = kComplement - label.colour;
  placeShadow(shadow, label);
  look.shadows.add(n, std::move(shadow));
  host::Element ghost = label;
  ghost.ringWidth = 0;
  ghost.backColour = blend(theme.ground, look.disc, kGhostDisc);
  ghost.colour = blend(ghost.backColour, theme.text, kGhostText);
  look.ghosts.add(n, std::move(ghost));
  host::Element dot;
  dot.kind = host::Element::Kind::ellipse;
  dot.item = item.id;
  dot.toolTip = tip;
  dot.colour = theme.ground;
  dot.borderWidth = canvas_.px(1);
  place(dot, item.centre[p], kDotSize * type, kDotSize * type);
  look.dots.add(n, std::move(dot));
  label.toolTip = tip;
  look.keys.add(n, std::move(label));
}

// A line shows only between two places that are both on the plot.
void ItemPlotter::joinToPairBefore(PlottedItem& item, const PairLook& look) {
  const auto p = static_cast<std::size_t>(look.pair);
  if (p == 0 || item.n[p - 1] == 0)
    return;
  item.joined[p] = item.onScale[p - 1] && item.onScale[p];
  const PlotPoint from = item.centre[p - 1], to = item.centre[p];
  host::Element line = makeLine(from.x, from.y, to.x, to.y);
  line.item = item.id;
  line.colour = look.line;
  line.borderWidth = canvas_.px(1.5);
  host::Element blob;
  blob.kind = host::Element::Kind::ellipse;
  blob.item = item.id;
  const double size = canvas_.px(8);
  place(blob, edgeTowards(to, from, look.keys.find(item.n[p])->width + size, canvas_.keyHeight + size), size,
        size);
  blob.backColour = look.line;
  blob.bordered = false;
  arrayOf(canvas_.surface, Part::line, look.pair).add(item.n[p], std::move(line));
  arrayOf(canvas_.surface, Part::blob, look.pair).add(item.n[p], std::move(blob));
}

}  // namespace qrn
