#include "matrixgraph/plot_items.h"

#include <algorithm>
#include <cmath>

#include "analysis/multiplot.h"
#include "charts/chart_display.h"
#include "core/common.h"
#include "core/glo.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr std::int32_t kComplement = 0xffffff;
constexpr double kKeyContrast = 7;  // keys stand among lines and on shadows

const RiskRecord& riskAt(int risk) {
  return glo.risks[static_cast<std::size_t>(risk)];
}

std::size_t slotOf(int assessment) {
  return static_cast<std::size_t>(assessment - 1);
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

// A background of middle tone leaves no hue at that contrast; there the plain contrast of text has to do.
std::int32_t keyColour(std::int32_t wanted, const GraphLook& look) {
  const std::int32_t strong = readableColour(wanted, look, kKeyContrast);
  const std::int32_t goal = look.lightText ? 0xffffff : 0;
  return strong == goal ? readableColour(wanted, look) : strong;
}

std::string tipOf(int risk, int vertical, int horizontal) {
  const RiskRecord& record = riskAt(risk);
  const std::string label = itemLabel(risk);
  std::string notes;
  for (const int assessment : {vertical, horizontal})
    if (assessment >= kMultiPlotSlot)
      notes += record.plotText[slotOf(assessment)];
  return notes.empty() ? label : notes + record.identifier;
}

}  // namespace

const PairArrays& pairArrays(int pair) {
  static constexpr std::array<PairArrays, kPairs> kArrays{{
      {"labelRisk", "labelRiskShadow", "", ""},
      {"labelRiskRound2", "labelRiskRound2Shadow", "lineRound1ToRound2", "endOfLine1to2Blob"},
      {"labelRiskRound3", "labelRiskRound3Shadow", "lineRound2ToRound3", "endOfLine2to3Blob"},
      {"labelRiskRound4", "labelRiskRound4Shadow", "lineRound3ToRound4", "endOfLine3to4Blob"},
  }};
  return kArrays[static_cast<std::size_t>(pair)];
}

double itemFraction(int risk, int assessment, bool diversity, int multiPlotTop) {
  const RiskRecord& record = riskAt(risk);
  const std::size_t slot = slotOf(assessment);
  if (diversity)
    return scoreFraction(record.diversity[slot] * 100, 100);
  if (assessment >= kMultiPlotSlot) {
    const auto step = static_cast<float>(GetMultiPlotAxisScaleStep(multiPlotTop));
    return scoreFraction(record.average[slot] - step, static_cast<float>(multiPlotTop) - step);
  }
  const AssessmentRecord& scale = glo.assessments[slot];
  if (scale.voteType == 3)
    return scoreFraction(record.average[slot], 100);
  return scoreFraction(record.average[slot] - static_cast<float>(scale.startFrom),
                       static_cast<float>(scale.scalePointCount - 1));
}

std::string keyOfCaption(const std::string& caption) {
  std::string key = caption;
  for (int pair = 1; pair < kPairs; ++pair) key = replaceAll(std::move(key), kPairMarks[pair], "");
  return key;
}

ItemPlotter::ItemPlotter(GraphCanvas& canvas, const PlotRequest& request, bool diversity,
                         std::string& dataMessage)
    : canvas_(canvas),
      request_(request),
      diversity_(diversity),
      dataMessage_(dataMessage),
      items_(static_cast<std::size_t>(std::max(0, glo.itemCount()))) {
  for (std::size_t i = 0; i < items_.size(); ++i) items_[i].risk = static_cast<int>(i);
  for (int plot = 0; plot < 2; ++plot)
    if (std::count(request.begin(), request.end(), kMultiPlotSlot + plot) > 0)
      multiPlotTop_[static_cast<std::size_t>(plot)] = GetMultiPlotMaxScale(plot, true, true);
}

double ItemPlotter::fraction(int risk, int assessment) const {
  const std::size_t plot = assessment == kMultiPlotSlot + 1 ? 1 : 0;
  return itemFraction(risk, assessment, diversity_, multiPlotTop_[plot]);
}

void ItemPlotter::plotPair(int pair) {
  const std::size_t vertical = slotOf(verticalOf(request_, pair)),
                    horizontal = slotOf(horizontalOf(request_, pair));
  int n = 0;
  for (PlottedItem& item : items_) {
    const RiskRecord& record = riskAt(item.risk);
    if (!record.active[vertical] || !record.active[horizontal] || !record.voting ||
        !inCategoriesShown(item.risk))
      continue;
    if (hasData(item.risk, pair))
      addItem(item, pair, ++n);
  }
}

std::vector<PlottedItem> ItemPlotter::takePlotted() {
  std::erase_if(items_, [](const PlottedItem& item) {
    return std::all_of(item.n.begin(), item.n.end(), [](int n) { return n == 0; });
  });
  return std::move(items_);
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

void ItemPlotter::addItem(PlottedItem& item, int pair, int n) {
  const auto p = static_cast<std::size_t>(pair);
  const int vertical = verticalOf(request_, pair), horizontal = horizontalOf(request_, pair);
  const double across = fraction(item.risk, horizontal);
  const double up = fraction(item.risk, vertical);
  item.n[p] = n;
  item.centre[p] = pointOf(canvas_.area, across, up);
  item.onScale[p] = across != kOffScale && up != kOffScale;

  const PairArrays& arrays = pairArrays(pair);
  host::Element label = makeLabel(arrays.label, n, "", canvas_.labelFont);
  label.toolTip = tipOf(item.risk, vertical, horizontal);  // gives the item its identifier when it has none
  label.caption = riskAt(item.risk).identifier + kPairMarks[pair];
  label.colour = keyColour(glo.blobColours[p], canvas_.look);
  const double width = std::max(canvas_.keyWidth, textWidth(label.caption, label.font));
  place(label, item.centre[p], width, canvas_.keyHeight);
  host::Element shadow = label;
  shadow.array = arrays.shadow;
  shadow.toolTip.clear();
  shadow.left += kTwipsPerPixel;
  shadow.top += kTwipsPerPixel;
  shadow.colour = kComplement - label.colour;
  canvas_.surface.add(Layer::shadows, std::move(shadow));
  canvas_.surface.add(Layer::labels, std::move(label));
  if (pair > 0)
    joinToPairBefore(item, pair, width);
}

// A line shows only between two places that are both on the plot.
void ItemPlotter::joinToPairBefore(PlottedItem& item, int pair, double width) {
  const auto p = static_cast<std::size_t>(pair);
  if (item.n[p - 1] == 0)
    return;
  item.joined[p] = item.onScale[p - 1] && item.onScale[p];
  const PairArrays& arrays = pairArrays(pair);
  const PlotPoint from = item.centre[p - 1], to = item.centre[p];
  const std::int32_t own = glo.checkDrawLineColor[p - 1];
  host::Element line = makeLine(arrays.line, item.n[p], from.x, from.y, to.x, to.y);
  line.colour = readableColour(own != 0 ? own : glo.blobColours[p], canvas_.look, kShapeContrast);
  line.borderWidth = canvas_.px(2);
  line.visible = item.joined[p];
  host::Element blob;
  blob.kind = host::Element::Kind::ellipse;
  blob.array = arrays.blob;
  blob.index = item.n[p];
  const double size = canvas_.px(8);
  place(blob, edgeTowards(to, from, width + size, canvas_.keyHeight), size, size);
  blob.backColour = line.colour;
  blob.bordered = false;
  blob.visible = item.joined[p];
  canvas_.surface.add(Layer::lines, std::move(line));
  canvas_.surface.add(Layer::shapes, std::move(blob));
}

}  // namespace qrn
