#include "charts/chart_display.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "analysis/filter/categories_membership.h"
#include "base/text.h"
#include "base/utf8.h"
#include "charts/average_kinds.h"
#include "charts/chart_layout.h"
#include "charts/look/graph_look.h"
#include "charts/slot_labels.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "host/names.h"
#include "store/counted_votes.h"

namespace qrn {

namespace {

constexpr double kMostPoints = 10;
constexpr int kWideScale = 100, kWideStep = 25;

RiskRecord& riskAt(int item) {
  return glo.item(item);
}

bool isItem(int item) {
  return item >= 0 && item < glo.itemCount();
}

// The twelve bins of the comparison vote.
constexpr std::array<const char*, 12> kBalanceBins{"<10", "10s", "20s", "30s", "40s", "50s",
                                                   "60s", "70s", "80s", "90s", "100", "0"};

std::string withoutLineFeeds(std::string text) {
  text = replaceAll(replaceAll(std::move(text), "\r\n", " "), "\n", " ");
  return replaceAll(std::move(text), "\r", " ");
}

std::string criterionText(int assessment, int option) {
  const auto& labels = glo.scaleLabels.at(static_cast<std::size_t>(assessment - 1));
  const auto at = static_cast<std::size_t>(option);
  return at < labels.size() ? labels[at] : "";
}

// The words of a scale where each of its points has one.
std::vector<std::string> scaleWords(int assessment) {
  std::vector<std::string> words;
  for (int option = 0; option < glo.labelCount(assessment - 1); ++option)
    words.push_back(withoutLineFeeds(criterionText(assessment, option)));
  const bool whole =
      std::none_of(words.begin(), words.end(), [](const std::string& word) { return word.empty(); });
  return whole ? words : std::vector<std::string>{};
}

std::string optionLabel(const ChartRequest& request, const ChartScale& scale, int i) {
  if (request.form == formName::balance)
    return kBalanceBins.at(static_cast<std::size_t>(i));
  const bool distribution = request.form == formName::distributionGraph;
  if (scale.options == kWideScale)
    return std::to_string(i == 0 ? scale.startFrom : i);
  if (distribution && request.distributionAxisLabels == 2)
    return std::to_string(i + scale.startFrom);
  const std::string text = criterionText(request.assessment, i);
  return distribution && request.distributionAxisLabels == 1
             ? firstCharacters(text, request.distributionAxisLabelLength)
             : text;
}

// What the average chart says beside its bars.
struct AverageFacts {
  int items = 0;             // that take part, with a score or without
  int fewest = 0, most = 0;  // votes behind one bar
};

std::string orderOf(const std::vector<ChartPoint>& points) {
  const auto byValue = [](const ChartPoint& a, const ChartPoint& b) { return a.value < b.value; };
  if (points.size() < 2 || points.front().value == points.back().value)
    return "";
  if (std::is_sorted(points.begin(), points.end(), byValue))
    return "lowest first";
  return std::is_sorted(points.rbegin(), points.rend(), byValue) ? "highest first" : "";
}

// The assessment that the values are of, "" where they are of several.
std::string scaleName(const ChartRequest& request) {
  const AverageKind& kind = averageKind(glo.averageDisplayKind);
  const bool one = kind.kind == kPlainAverage || kind.kind == kDiversity;
  return one ? glo.assessmentTitles.at(static_cast<std::size_t>(request.assessment - 1)) : "";
}

void tellFacts(TChart& chart, const ChartSeries& series, const AverageFacts& facts,
               const std::string& scale) {
  const auto shown = static_cast<int>(series.points.size());
  const std::string part = std::to_string(shown) + " of " + std::to_string(facts.items);
  if (glo.itemCount() == 0)
    chart.Message = "There are no items yet";
  else if (facts.items == 0)
    chart.Message = "None of the " + std::to_string(glo.itemCount()) + " items is in what is shown";
  else if (shown == 0)
    chart.Message = nobodyVoted(scale.empty() ? "" : " on " + scale) + " (" + part + ")";
  std::vector<std::string> said;
  if (facts.most > 0)
    said.push_back((facts.fewest < facts.most ? std::to_string(facts.fewest) + " to " : "") +
                   std::to_string(facts.most) + (facts.most == 1 ? " vote each" : " votes each"));
  if (shown > 0 && shown < facts.items)
    said.push_back(part + " items have votes");
  if (const std::string order = orderOf(series.points); !order.empty())
    said.push_back(order);
  chart.Header.Sub = joined(said, " \u00b7 ");
}

void addAverages(const ChartRequest& request, ChartModel& model, ChartSeries& series) {
  const AverageKind& kind = averageKind(glo.averageDisplayKind);
  model.rows.clear();
  AverageFacts facts;
  for (int item = 0; item < glo.itemCount(); ++item) {
    const RiskRecord& risk = riskAt(item);
    if (!risk.voting || !inCategoriesShown(item))
      continue;
    ++facts.items;
    const ChartValue value = kind.value(request, risk);
    if (!value.present)
      continue;
    facts.fewest = series.points.empty() ? value.votes : std::min(facts.fewest, value.votes);
    facts.most = std::max(facts.most, value.votes);
    const std::string row = withoutLineFeeds(itemLabel(item));
    series.Add(value.value, request.withIdentifier ? row : withoutLineFeeds(GetItemText(item)),
               glo.runByAverageGraphBarColour, risk.ID);
    model.rows.push_back({row, item});
  }
  tellFacts(model.chart, series, facts, scaleName(request));
}

// Votes on each value 0 to `options`; abstains are counted where the exercise allows them.
std::vector<int> countVotes(int options) {
  std::vector<int> counts(static_cast<std::size_t>(options) + 1);
  const CountedVotes counted = countedVotes();
  for (const float vote : counted.values)
    if (vote <= static_cast<float>(options))
      ++counts[static_cast<std::size_t>(vote)];
  glo.abstainCount += counted.abstains;
  return counts;
}

void addDistribution(const ChartRequest& request, ChartSeries& series) {
  const ChartScale scale = scaleOf(request);
  const std::vector<int> counts = countVotes(scale.options);
  const auto& colours = glo.assessment(request.assessment).pointColours;
  for (int value = 0; value <= scale.options; ++value) {
    const int option = value - scale.startFrom;
    series.Add(counts[static_cast<std::size_t>(value)],
               withoutLineFeeds(criterionText(request.assessment, option)),
               colours[static_cast<std::size_t>(std::max(option, 0) % kPointColours)]);
  }
  if (scale.startFrom == 1)
    series.Delete(0);  // the series starts from the first option
  else
    series.Delete(scale.options);
}

void setValueAxis(const ChartRequest& request, TChart& chart, long kind) {
  ChartAxis& axis = chart.Axis.Left;
  ChartBounds bounds;
  if (kind == kAverageChart) {
    const AverageKind& shown = averageKind(glo.averageDisplayKind);
    bounds = shown.bounds(request);
    const bool points = shown.points && bounds.high - bounds.low <= kMostPoints;
    axis.Increment = points ? 1 : 0;  // every point of the scale is named
  } else {
    for (const ChartPoint& point : chart.SERIES(0).points) bounds.high = std::max(bounds.high, point.value);
    axis.Increment = bounds.high <= 5 ? 1 : 0;  // votes are whole
  }
  axis.Automatic = axis.AutomaticMaximum = axis.AutomaticMinimum = !(bounds.high > bounds.low);
  axis.Minimum = bounds.low;
  axis.Maximum = bounds.high;
}

// How the bars of an average chart lie, and how many share a page.
constexpr int kMostStanding = 8;  // bars whose whole texts stand below them
constexpr int kLeastOnPage = 10, kMostOnPage = 12;
constexpr int kLeastOfTwoLines = 7, kMostOfTwoLines = 8;
constexpr int kMostLying = 22;          // rows of text on one page
constexpr double kStandingWidth = 0.8;  // of the width, at least, for bars that stand

host::SurfaceFont labelFont(const ChartRequest& request, const TChart& chart,
                            look::Size size = look::Size::label) {
  return themedFont(chart.Axis.Bottom.Labels.Font, kUntouchedType, size, request.height, false);
}

// Ten to twelve, so many that the pages are few; where texts need two lines and several pages are needed in
// any case, fewer that stand whole.
int lyingOnPage(int bars, bool twoLines) {
  if (bars <= kLeastOnPage)
    return kLeastOnPage;
  const int most = twoLines ? kMostOfTwoLines : kMostOnPage, pages = (bars + most - 1) / most;
  int page = twoLines ? kLeastOfTwoLines : kLeastOnPage;
  while ((bars + page - 1) / page > pages) ++page;
  return page;
}

int barsOnPage(const ChartRequest& request, const TChart& chart) {
  if (!glo.barCountAuto)
    return glo.runByAverageBarCount;
  if (request.onOnePage)
    return 0;
  const host::SurfaceFont font = labelFont(request, chart, look::Size::floor);  // the page shrinks to it
  const auto& texts = chart.Axis.Bottom.Labels.Item;
  const bool wide = std::any_of(texts.begin(), texts.end(), [&](const std::string& text) {
    return textWidth(text, font) > kTextColumn * request.width;
  });
  return lyingOnPage(chart.pointCount(), wide);
}

// Bars stand while every text stands whole below its own; a page of more than can be read side by side has
// standing bars again, with keys below.
bool barsStand(const ChartRequest& request, const TChart& chart, int onPage) {
  const auto& texts = chart.Axis.Bottom.Labels.Item;
  const int places = onPage > 0 ? std::min(onPage, chart.pointCount()) : chart.pointCount();
  if (places > kMostLying || places == 0)
    return true;
  if (places > kMostStanding)
    return false;
  return textsFitBelow(texts, labelFont(request, chart), request.width * kStandingWidth / places);
}

}  // namespace

std::string GetItemText(int item) {
  return isItem(item) && !riskAt(item).text.empty() ? riskAt(item).text : "   ";
}

void giveIdentifiers() {
  for (int item = 0; item < glo.itemCount(); ++item)
    if (RiskRecord& risk = riskAt(item); risk.identifier.empty())
      GetItemLabel(risk);
}

std::string itemLabel(int item) {
  return riskAt(item).identifier + ": " + riskAt(item).text;
}

std::string nobodyVoted(const std::string& onWhat) {
  return glo.demographicFilterOn ? "Nobody in the chosen groups has voted" + onWhat
                                 : "No item has votes" + onWhat + " yet";
}

bool inCategoriesShown(int item) {
  for (int i = 0; i < upperBound(glo.categories); ++i)
    if (!glo.categories[static_cast<std::size_t>(i)].Selected)
      return IsInCategorySingle(item);
  return true;
}

ChartScale scaleOf(const ChartRequest& request) {
  if (request.form == formName::sifterVote || request.form == "Criteria_Master")
    return {request.options, request.startFrom};
  const AssessmentRecord& record = glo.assessment(request.assessment);
  return {record.scalePointCount > 0 ? record.scalePointCount : glo.labelCount(request.assessment - 1),
          record.startFrom};
}

void AddData(const ChartRequest& request, ChartModel& model, long kind, int series) {
  trapErrors("ChartDisplay", "AddData", [&] {
    glo.abstainCount = 0;
    ChartSeries& target = model.chart.SERIES(series);
    target.points.clear();
    if (kind == kAverageChart)
      addAverages(request, model, target);
    else
      addDistribution(request, target);
    setValueAxis(request, model.chart, kind);
  });
}

void AddAxisLabels(const ChartRequest& request, TChart& chart, int series, bool withData,
                   const std::string& label) {
  trapErrors("ChartDisplay", "AddAxisLabels", [&] {
    ChartLabels& labels = chart.Axis.Bottom.Labels;
    labels.Clear();
    labels.MultiLine = true;
    labels.Keyed = withData && request.withIdentifier;
    chart.Axis.Bottom.title = label;
    const auto add = [&](const std::string& text) {
      const std::string clean = withoutLineFeeds(text);
      labels.Item.push_back(clean.empty() ? "." : clean);
    };
    if (withData) {
      for (const ChartPoint& point : chart.SERIES(series).points) add(point.label);
    } else {
      const ChartScale scale = scaleOf(request);
      const bool bins = request.form == formName::balance, wide = !bins && scale.options == kWideScale;
      const int count = bins ? static_cast<int>(kBalanceBins.size()) : wide ? kWideScale + 1 : scale.options;
      for (int i = 0; i < count; i += wide ? kWideStep : 1) add(optionLabel(request, scale, i));
    }
    chart.Axis.Left.title = request.drawDiversity ? "Diversity" : "";
    ResizeChartAxes(chart);
  });
}

void ResizeChartAxes(TChart& chart) {
  for (ChartAxis* axis : {&chart.Axis.Bottom, &chart.Axis.Left}) {
    axis->Labels.Font = glo.graphLabelFont;
    axis->Labels.Font.colour = glo.runByGraphLabelColour;
    axis->Labels.Separation = 4;
    axis->AxisPen.Color = axis->GridPen.Color = glo.runByGraphGridColour;
  }
}

void ResizeChartTitle(const ChartRequest& request, TChart& chart, const std::string& title) {
  ChartHeader& header = chart.Header;
  header.Text = {withoutLineFeeds(title)};
  const FontRecord& own = glo.matrixTitleFont;
  const double points = kHeightOfSizes / kTwipsPerPoint;  // of the whole height
  const double size = own.size == Exercise{}.matrixTitleFont.size
                          ? std::round(look::partOfHeight(look::Size::item) * points)
                          : own.size;
  const double least = look::partOfHeight(look::Size::word) * points;
  header.Font = {own.name, size, true, own.italic, false, false, glo.fontColour};
  const double room = request.width * (1 - 2 * look::kMarginX);
  const auto width = [&] { return textWidth(header.Text.front(), headerFont(chart, request.height)); };
  while (header.Font.size > least && width() > room) header.Font.size -= 1;
}

ChartModel DisplayAverageChart(const ChartRequest& request) {
  ChartModel model;
  trapErrors("ChartDisplay", "DisplayAverageChart", [&] {
    TChart& chart = model.chart;
    const AverageKind& kind = averageKind(glo.averageDisplayKind);
    const Exercise untouched;
    const int bars = chart.AddSeries(SeriesKind::asBar);
    chart.SERIES(bars).ValueFormat = kind.valueFormat;
    chart.SERIES(bars).BarPen.Visible = false;
    chart.SERIES(bars).Gradient = glo.chk_avgradient != 0;
    chart.SERIES(bars).StartColor = glo.GradientFillStartColour;
    if (glo.pointHighlightColour != untouched.pointHighlightColour)
      chart.highlightColour = glo.pointHighlightColour;
    AddData(request, model, kAverageChart, bars);
    AddAxisLabels(request, chart, bars, true, "");
    ResizeChartTitle(request, chart, kind.title(request));
    if (chart.Axis.Left.Increment == 1)
      chart.Axis.Left.Labels.Item = scaleWords(request.assessment);
    chart.Page.MaxPointsPerPage = barsOnPage(request, chart);
    if (!barsStand(request, chart, chart.Page.MaxPointsPerPage))
      chart.SERIES(bars).kind = SeriesKind::asHorizBar;
  });
  return model;
}

}  // namespace qrn
