#include "charts/chart_display.h"

#include <algorithm>
#include <array>

#include "analysis/filter/categories_membership.h"
#include "base/text.h"
#include "base/utf8.h"
#include "charts/average_kinds.h"
#include "charts/look/graph_look.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "host/names.h"
#include "store/counted_votes.h"

namespace qrn {

namespace {

constexpr int kRecommendedBars = 35;
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

std::string firstCharacters(const std::string& text, int count) {
  std::string cut;
  for (const std::uint32_t code : characters(text)) {
    if (count-- <= 0)
      break;
    appendCharacter(cut, code);
  }
  return cut;
}

std::string criterionText(int assessment, int option) {
  if (assessment < 1 || assessment > kAssessments)
    return "";
  const auto& labels = glo.scaleLabels[static_cast<std::size_t>(assessment - 1)];
  return option >= 0 && option < upperBound(labels) ? labels[static_cast<std::size_t>(option)] : "";
}

std::string optionLabel(const ChartRequest& request, const ChartScale& scale, int i) {
  if (request.form == formName::balance)
    return i < static_cast<int>(kBalanceBins.size()) ? kBalanceBins[static_cast<std::size_t>(i)] : "";
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

void addAverages(const ChartRequest& request, ChartModel& model, ChartSeries& series) {
  const AverageKind& kind = averageKind(glo.averageDisplayKind);
  model.rows.clear();
  for (int item = 0; item < glo.itemCount(); ++item) {
    const RiskRecord& risk = riskAt(item);
    if (!risk.voting || !inCategoriesShown(item))
      continue;
    const ChartValue value = kind.value(request, risk);
    if (!value.present)
      continue;
    const std::string row = withoutLineFeeds(itemLabel(item));
    series.Add(value.value, request.withIdentifier ? row : withoutLineFeeds(GetItemText(item)),
               glo.runByAverageGraphBarColour, risk.ID);
    model.rows.push_back({row, item});
  }
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
  const bool stored = request.assessment >= 1 && request.assessment <= kAssessments;
  const auto& colours = stored ? glo.assessment(request.assessment).pointColours : glo.barColours1;
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

// Bars that can still be told apart and named at that width.
int legibleBars(const ChartRequest& request) {
  const double scale = graphScale(request.width, request.height);
  host::SurfaceFont font{glo.graphLabelFont.name, glo.graphLabelFont.size * scale, true, false, false};
  const double one = textWidth("W99", font);
  return std::max(kRecommendedBars, one > 0 ? static_cast<int>(request.width * 0.85 / one) : 0);
}

int barsOnPage(const ChartRequest& request) {
  if (!glo.barCountAuto)
    return glo.runByAverageBarCount;
  return request.onOnePage ? 0 : std::min(glo.runByAverageBarCount, legibleBars(request));
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

bool inCategoriesShown(int item) {
  for (int i = 0; i < upperBound(glo.categories); ++i)
    if (!glo.categories[static_cast<std::size_t>(i)].Selected)
      return IsInCategorySingle(item);
  return true;
}

ChartScale scaleOf(const ChartRequest& request) {
  if (request.form == formName::sifterVote || request.form == "Criteria_Master")
    return {request.options, request.startFrom};
  if (request.assessment < 1 || request.assessment > kAssessments)
    return {};
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
    axis->Labels.Font.bold = true;  // graphs are read from the back row
    axis->Labels.Font.colour = glo.runByGraphLabelColour;
    axis->Labels.Separation = 4;
    axis->AxisPen.Color = axis->GridPen.Color = glo.runByGraphGridColour;
  }
}

void ResizeChartTitle(const ChartRequest& request, TChart& chart, const std::string& title) {
  ChartHeader& header = chart.Header;
  header.Text = {withoutLineFeeds(title)};
  const FontRecord& own = glo.matrixTitleFont;
  header.Font = {own.name, own.size, own.bold, own.italic, false, false, glo.fontColour};
  const double scale = graphScale(request.width, request.height), room = request.width * 0.94;
  const auto width = [&] {
    return textWidth(header.Text.front(), {header.Font.name, header.Font.size * scale, header.Font.bold,
                                           header.Font.italic, false});
  };
  while (header.Font.size > glo.graphLabelFont.size && width() > room) header.Font.size -= 1;
}

ChartModel DisplayAverageChart(const ChartRequest& request) {
  ChartModel model;
  trapErrors("ChartDisplay", "DisplayAverageChart", [&] {
    TChart& chart = model.chart;
    const AverageKind& kind = averageKind(glo.averageDisplayKind);
    const int bars = chart.AddSeries(SeriesKind::asBar);
    chart.SERIES(bars).ValueFormat = kind.valueFormat;
    chart.SERIES(bars).BarPen.Visible = false;
    chart.SERIES(bars).Gradient = glo.chk_avgradient != 0;
    chart.SERIES(bars).StartColor = glo.GradientFillStartColour;
    chart.highlightColour = glo.pointHighlightColour;
    AddData(request, model, kAverageChart, bars);
    AddAxisLabels(request, chart, bars, true, "");
    ResizeChartTitle(request, chart, kind.title(request));
    chart.Page.MaxPointsPerPage = barsOnPage(request);
    chart.Page.ScaleLastPage = false;
  });
  return model;
}

}  // namespace qrn
