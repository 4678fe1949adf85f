#include "charts/chart_display.h"

#include <algorithm>
#include <cmath>

#include "analysis/filter/categories_membership.h"
#include "analysis/multiplot.h"
#include "charts/look/graph_look.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "store/counted_votes.h"

namespace qrn {

namespace {

constexpr int kRecommendedBars = 35;
constexpr double kMostPoints = 10;
constexpr int kWideScale = 100, kWideStep = 25;

RiskRecord& riskAt(int item) {
  return glo.risks[static_cast<std::size_t>(item)];
}

bool hasAnyScore(const RiskRecord& risk) {
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (risk.hasScore(a))
      return true;
  return false;
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

std::string optionLabel(const ChartForm& form, const ChartScale& scale, int i) {
  if (form.name == "xyVoteBalance")
    return i < static_cast<int>(kBalanceBins.size()) ? kBalanceBins[static_cast<std::size_t>(i)] : "";
  const bool distribution = form.name == "xyVoteDistributionGraph";
  if (scale.options == kWideScale)
    return std::to_string(i == 0 ? scale.startFrom : i);
  if (distribution && form.distributionAxisLabels == 2)
    return std::to_string(i + scale.startFrom);
  const std::string text = criterionText(form.assessment, i);
  return distribution && form.distributionAxisLabels == 1
             ? firstCharacters(text, form.distributionAxisLabelLength)
             : text;
}

void addAverages(ChartForm& form, ChartSeries& series) {
  form.List1.clear();
  form.ListIndex = -1;
  for (int item = 0; item < glo.itemCount(); ++item) {
    const RiskRecord& risk = riskAt(item);
    if (!risk.voting || !inCategoriesShown(item))
      continue;
    const ChartValue value = averageChartValue(form, item);
    if (!value.present)
      continue;
    const std::string row = withoutLineFeeds(itemLabel(item));
    series.Add(value.value, form.withIdentifier ? row : withoutLineFeeds(GetItemText(item)),
               glo.runByAverageGraphBarColour);
    form.List1.push_back({row, item, risk.sortKey});
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

void addDistribution(ChartForm& form, ChartSeries& series) {
  const ChartScale scale = scaleOf(form);
  const std::vector<int> counts = countVotes(scale.options);
  const bool stored = form.assessment >= 1 && form.assessment <= kAssessments;
  const auto& colours =
      stored ? glo.assessments[static_cast<std::size_t>(form.assessment - 1)].pointColours : glo.barColours1;
  for (int value = 0; value <= scale.options; ++value) {
    const int option = value - scale.startFrom;
    series.Add(counts[static_cast<std::size_t>(value)],
               withoutLineFeeds(criterionText(form.assessment, option)),
               colours[static_cast<std::size_t>(std::max(option, 0) % kPointColours)]);
  }
  if (scale.startFrom == 1)
    series.Delete(0);  // the series starts from the first option
  else
    series.Delete(scale.options);
}

struct Bounds {
  double low = 0, high = 0;
};

Bounds boundsOf(int assessment) {
  const AssessmentRecord& record = glo.assessments[static_cast<std::size_t>(assessment - 1)];
  if (record.voteType == 3)
    return {0, 100};
  const int points = std::max(glo.labelCount(assessment - 1), record.scalePointCount);
  return {static_cast<double>(record.startFrom), static_cast<double>(record.startFrom + points - 1)};
}

// Low and high bound of what the average chart shows; an empty range leaves the scale to the data.
Bounds averageBounds(const ChartForm& form) {
  switch (glo.averageDisplayKind) {
    case kMultiPlot1:
    case kMultiPlot1 + 1:
      return {0, static_cast<double>(GetMultiPlotMaxScale(0, true, true))};
    case kMultiPlot2:
    case kMultiPlot2 + 1:
      return {0, static_cast<double>(GetMultiPlotMaxScale(1, true, true))};
    case kDiversity:
    case kDiversity + 1:
      return {0, 1};
    case kCumulative:
    case kCumulative + 1:
    case kWeightedCumulative:
    case kWeightedCumulative + 1:
      break;
    default:
      return form.assessment >= 1 && form.assessment <= kAssessments ? boundsOf(form.assessment) : Bounds{};
  }
  Bounds all;
  bool first = true;
  for (int a = 1; a <= kAssessments; ++a) {
    if (!glo.assessmentInfo[static_cast<std::size_t>(a - 1)].active)
      continue;
    const Bounds one = boundsOf(a);
    all.low = first ? one.low : std::min(all.low, one.low);
    all.high = first ? one.high : std::max(all.high, one.high);
    first = false;
  }
  const bool weighted = glo.averageDisplayKind >= kWeightedCumulative;
  return {weighted ? 0 : all.low, all.high};  // a missing average pulls a weighted value below the scales
}

void setValueAxis(ChartForm& form, long kind) {
  ChartAxis& axis = form.chart.Axis.Left;
  axis.AutomaticMaximum = axis.AutomaticMinimum = axis.Automatic = false;
  Bounds bounds;
  if (kind == kAverageChart) {
    bounds = averageBounds(form);
    const bool points = glo.averageDisplayKind == kPlainAverage && bounds.high - bounds.low <= kMostPoints;
    axis.Increment = points ? 1 : 0;  // every point of the scale is named
  } else {
    for (const ChartPoint& point : form.chart.SERIES(0).points)
      bounds.high = std::max(bounds.high, point.value);
    axis.Increment = bounds.high <= 5 ? 1 : 0;  // votes are whole
  }
  axis.Automatic = axis.AutomaticMaximum = axis.AutomaticMinimum = !(bounds.high > bounds.low);
  axis.Minimum = bounds.low;
  axis.Maximum = bounds.high;
}

// Bars that can still be told apart and named at the form's width.
int legibleBars(const ChartForm& form) {
  const double scale = graphScale(form.ScaleWidth, form.ScaleHeight);
  host::SurfaceFont font{glo.graphLabelFont.name, glo.graphLabelFont.size * scale, true, false, false};
  const double one = textWidth("W99", font);
  return std::max(kRecommendedBars, one > 0 ? static_cast<int>(form.ScaleWidth * 0.85 / one) : 0);
}

void setPages(ChartForm& form) {
  TChart& chart = form.chart;
  const int wanted = glo.runByAverageBarCount;
  chart.Page.MaxPointsPerPage = !glo.barCountAuto ? wanted
                                : form.onOnePage  ? 0
                                                  : std::min(wanted, legibleBars(form));
  chart.Page.ScaleLastPage = false;
  chart.Page.Current = std::clamp(chart.Page.Current, 1, chart.pageCount());
}

}  // namespace

std::string GetItemText(int item) {
  return isItem(item) && !riskAt(item).text.empty() ? riskAt(item).text : "   ";
}

std::string itemLabel(int item) {
  RiskRecord& risk = riskAt(item);
  return risk.identifier.empty() ? GetItemLabel(risk) : risk.identifier + ": " + risk.text;
}

bool inCategoriesShown(int item) {
  for (int i = 0; i < upperBound(glo.categories); ++i)
    if (!glo.categories[static_cast<std::size_t>(i)].Selected)
      return IsInCategorySingle(item);
  return true;
}

ChartScale scaleOf(const ChartForm& form) {
  if (form.name == "sifterVoteForm" || form.name == "Criteria_Master")
    return {form.formOptions, form.formStartFrom};
  if (form.assessment < 1 || form.assessment > kAssessments)
    return {};
  const AssessmentRecord& record = glo.assessments[static_cast<std::size_t>(form.assessment - 1)];
  return {record.scalePointCount > 0 ? record.scalePointCount : glo.labelCount(form.assessment - 1),
          record.startFrom};
}

ChartValue averageChartValue(const ChartForm& form, int item) {
  const RiskRecord& risk = riskAt(item);
  const auto a = static_cast<std::size_t>(std::clamp(form.assessment, 1, kAssessments) - 1);
  switch (glo.averageDisplayKind) {
    case kCumulative:
    case kCumulative + 1:
      return {hasAnyScore(risk), risk.cumulative};
    case kWeightedCumulative:
    case kWeightedCumulative + 1:
      return {hasAnyScore(risk), risk.weightedCumulative};
    case kMultiPlot1:
    case kMultiPlot1 + 1:
      return {risk.hasScore(9), risk.average[9]};
    case kMultiPlot2:
    case kMultiPlot2 + 1:
      return {risk.hasScore(10), risk.average[10]};
    case kDiversity:
    case kDiversity + 1:
      return {risk.hasScore(a), risk.diversity[a]};
    default:
      break;
  }
  if (form.round < 1 || form.round > kRounds)
    return {risk.hasScore(a), risk.average[a]};
  const RoundRecord& round = risk.rounds[a][static_cast<std::size_t>(form.round - 1)];
  return {round.counted > 0, round.average};
}

void AddData(ChartForm& form, long kind, int series) {
  trapErrors("ChartDisplay", "AddData", [&] {
    glo.abstainCount = 0;
    ChartSeries& target = form.chart.SERIES(series);
    target.points.clear();
    if (kind == kAverageChart)
      addAverages(form, target);
    else
      addDistribution(form, target);
    setValueAxis(form, kind);
  });
}

void AddAxisLabels(ChartForm& form, int series, bool withData, const std::string& label) {
  trapErrors("ChartDisplay", "AddAxisLabels", [&] {
    ChartLabels& labels = form.chart.Axis.Bottom.Labels;
    labels.Clear();
    labels.MultiLine = true;
    labels.Keyed = withData && form.withIdentifier;
    form.chart.Axis.Bottom.title = label;
    const auto add = [&](const std::string& text) {
      const std::string clean = withoutLineFeeds(text);
      labels.Item.push_back(clean.empty() ? "." : clean);
    };
    if (withData) {
      for (const ChartPoint& point : form.chart.SERIES(series).points) add(point.label);
    } else {
      const ChartScale scale = scaleOf(form);
      const bool bins = form.name == "xyVoteBalance", wide = !bins && scale.options == kWideScale;
      const int count = bins ? static_cast<int>(kBalanceBins.size()) : wide ? kWideScale + 1 : scale.options;
      for (int i = 0; i < count; i += wide ? kWideStep : 1) add(optionLabel(form, scale, i));
    }
    form.chart.Axis.Left.title = form.drawDiversity ? "Diversity" : "";
    ResizeChartAxes(form);
  });
}

void ResizeChartAxes(ChartForm& form) {
  for (ChartAxis* axis : {&form.chart.Axis.Bottom, &form.chart.Axis.Left}) {
    axis->Labels.Font = glo.graphLabelFont;
    axis->Labels.Font.bold = true;  // graphs are read from the back row
    axis->Labels.Font.colour = glo.runByGraphLabelColour;
    axis->Labels.Separation = 4;
    axis->AxisPen.Color = axis->GridPen.Color = glo.runByGraphGridColour;
  }
}

void ResizeChartTitle(ChartForm& form, const std::string& title) {
  ChartHeader& header = form.chart.Header;
  header.Text = {withoutLineFeeds(title)};
  const FontRecord& own = glo.matrixTitleFont;
  header.Font = {own.name, own.size, own.bold, own.italic, false, false, glo.fontColour};
  const double scale = graphScale(form.ScaleWidth, form.ScaleHeight), room = form.ScaleWidth * 0.94;
  const auto width = [&] {
    return textWidth(header.Text.front(), {header.Font.name, header.Font.size * scale, header.Font.bold,
                                           header.Font.italic, false});
  };
  while (header.Font.size > glo.graphLabelFont.size && width() > room) header.Font.size -= 1;
}

void DisplayAverageChart(ChartForm& form) {
  trapErrors("ChartDisplay", "DisplayAverageChart", [&] {
    TChart& chart = form.chart;
    chart.RemoveAllSeries();
    chart.Aspect.View3D = false;
    chart.Zoom.Enable = chart.Scroll.Enable = false;
    chart.BevelWidth = 0;
    const int bars = chart.AddSeries(SeriesKind::asBar);
    const bool percent = glo.averageDisplayKind == kDiversity || glo.averageDisplayKind == kDiversity + 1;
    chart.SERIES(bars).ValueFormat = percent ? "0.00%" : "0.00";
    chart.SERIES(bars).BarStyle = glo.opt_avbarstyle;
    chart.SERIES(bars).BarPen.Visible = false;
    chart.SERIES(bars).Gradient = glo.chk_avgradient != 0;
    chart.SERIES(bars).StartColor = glo.GradientFillStartColour;
    chart.highlightColour = glo.pointHighlightColour;
    chart.selectedPoint = -1;
    AddData(form, kAverageChart, bars);
    AddAxisLabels(form, bars, true, "");
    setPages(form);
  });
}

}  // namespace qrn
