#include "charts/chart_ticks.h"

#include <algorithm>
#include <cmath>

#include "core/common.h"

namespace qrn {

namespace {

constexpr double kMostSteps = 50;

double roundStep(double range) {
  const double power = std::pow(10.0, std::floor(std::log10(range / 4)));
  for (const double factor : {1.0, 2.0, 2.5, 5.0})
    if (range / (factor * power) <= 5.0 + 1e-9)
      return factor * power;
  return 10 * power;
}

std::string axisNumber(double value, const std::string& format) {
  if (!format.empty() && format.back() == '%')
    return numberText(value, "0%");
  return plainNumber(roundPlaces(value, 6));
}

void setRange(ChartTicks& ticks, const TChart& chart) {
  const ChartAxis& axis = chart.Axis.Left;
  ticks.low = axis.Minimum;
  ticks.high = axis.Maximum;
  double least = 0, most = 0;
  for (int n = 0; n < chart.seriesCount(); ++n)
    for (const ChartPoint& point : chart.SERIES(n).points) {
      least = std::min(least, point.value);
      most = std::max(most, point.value);
    }
  if (axis.Automatic || axis.AutomaticMinimum)
    ticks.low = least;
  if (axis.Automatic || axis.AutomaticMaximum)
    ticks.high = most;
  if (!(ticks.high > ticks.low))
    ticks.high = ticks.low + 1;
}

}  // namespace

std::string numberText(double value, const std::string& format) {
  const bool percent = !format.empty() && format.back() == '%';
  const bool decimals = format.find(".00") != std::string::npos;
  return formatPlaces(percent ? value * 100 : value, decimals ? 2 : 0) + (percent ? "%" : "");
}

ChartTicks chartTicks(const TChart& chart) {
  ChartTicks ticks;
  setRange(ticks, chart);
  const double range = ticks.high - ticks.low, own = chart.Axis.Left.Increment;
  ticks.step = range <= kMostSteps * own ? own : roundStep(range);
  const auto& words = chart.Axis.Left.Labels.Item;
  const std::string format = chart.seriesCount() > 0 ? chart.SERIES(0).ValueFormat : "0";
  for (int i = 0; ticks.valueOf(i) <= ticks.high + ticks.step * 1e-6; ++i) {
    const auto at = static_cast<std::size_t>(i);
    ticks.texts.push_back(at < words.size() && !words[at].empty() ? words[at]
                                                                  : axisNumber(ticks.valueOf(i), format));
  }
  return ticks;
}

}  // namespace qrn
