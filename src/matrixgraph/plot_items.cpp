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
  std::string notes;
  for (const int assessment : {vertical, horizontal})
    if (assessment >= kMultiPlotSlot)
      notes += record.plotText[slotOf(assessment)];
  return notes.empty() ? record.identifier + ": " + record.text : notes + record.identifier;
}

}  // namespace

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
  for (std::size_t i = 0; i < items_.size(); ++i) {
    items_[i].risk = static_cast<int>(i);
    items_[i].id = glo.risks[i].ID;
  }
  for (int plot = 0; plot < 2; ++plot)
    if (std::count(request.begin(), request.end(), kMultiPlotSlot + plot) > 0)
      multiPlotTop_[static_cast<std::size_t>(plot)] = GetMultiPlotMaxScale(plot, true, true);
}

double ItemPlotter::fraction(int risk, int assessment) const {
  const std::size_t plot = assessment == kMultiPlotSlot + 1 ? 1 : 0;
  return itemFraction(risk, assessment, diversity_, multiPlotTop_[plot]);
}

ItemPlotter::PairLook ItemPlotter::lookOf(int pair) const {
  const auto p = static_cast<std::size_t>(pair);
  host::Surface& surface = canvas_.surface;
  const std::int32_t own = pair > 0 ? glo.checkDrawLineColor[p - 1] : 0;
  return {pair,
          arrayOf(surface, Part::key, pair),
          arrayOf(surface, Part::shadow, pair),
          pair > 0 ? &arrayOf(surface, Part::line, pair) : nullptr,
          pair > 0 ? &arrayOf(surface, Part::blob, pair) : nullptr,
          keyColour(glo.blobColours[p], canvas_.look),
          readableColour(own != 0 ? own : glo.blobColours[p], canvas_.look, kShapeContrast)};
}

void ItemPlotter::plotPair(int pair) {
  const std::size_t vertical = slotOf(verticalOf(request_, pair)),
                    horizontal = slotOf(horizontalOf(request_, pair));
  const PairLook look = lookOf(pair);
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

void ItemPlotter::addItem(PlottedItem& item, const PairLook& look, int n) {
  const auto p = static_cast<std::size_t>(look.pair);
  const int vertical = verticalOf(request_, look.pair), horizontal = horizontalOf(request_, look.pair);
  const double across = fraction(item.risk, horizontal);
  const double up = fraction(item.risk, vertical);
  item.n[p] = n;
  item.centre[p] = pointOf(canvas_.area, across, up);
  item.onScale[p] = across != kOffScale && up != kOffScale;

  host::Element label = makeLabel(riskAt(item.risk).identifier + kPairMarks[look.pair], canvas_.labelFont);
  label.item = item.id;
  label.colour = look.key;
  const double width = std::max(canvas_.keyWidth, textWidth(label.caption, label.font));
  place(label, item.centre[p], width, canvas_.keyHeight);
  host::Element shadow = label;
  placeShadow(shadow, label);
  shadow.colour = kComplement - label.colour;
  label.toolTip = tipOf(item.risk, vertical, horizontal);
  look.shadows.add(n, std::move(shadow));
  look.keys.add(n, std::move(label));
  if (look.pair > 0)
    joinToPairBefore(item, look, width);
}

// A line shows only between two places that are both on the plot.
void ItemPlotter::joinToPairBefore(PlottedItem& item, const PairLook& look, double width) {
  const auto p = static_cast<std::size_t>(look.pair);
  if (item.n[p - 1] == 0)
    return;
  item.joined[p] = item.onScale[p - 1] && item.onScale[p];
  const PlotPoint from = item.centre[p - 1], to = item.centre[p];
  host::Element line = makeLine(from.x, from.y, to.x, to.y);
  line.item = item.id;
  line.colour = look.line;
  line.borderWidth = canvas_.px(2);
  host::Element blob;
  blob.kind = host::Element::Kind::ellipse;
  blob.item = item.id;
  const double size = canvas_.px(8);
  place(blob, edgeTowards(to, from, width + size, canvas_.keyHeight), size, size);
  blob.backColour = look.line;
  blob.bordered = false;
  look.lines->add(item.n[p], std::move(line));
  look.blobs->add(item.n[p], std::move(blob));
}

}  // namespace qrn
