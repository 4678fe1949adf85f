#include "analysis/multiplot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "analysis/progress_line.h"
#include "core/common.h"
#include "core/glo.h"

namespace qrn {

namespace {

constexpr std::size_t kOther = 9;  // the flag of the other plot
constexpr float kUnset = -1;

// What one item's value is made of.
struct Parts {
  const MultiPlotRecord& settings;
  const RiskRecord& item;
  bool hasOther = false;
  float other = 0;
  std::string otherNote;

  // Calls `take(average, note)` for each assessment that takes part.
  template <class Take>
  void forEach(bool reverse, Take take) const {
    for (std::size_t i = 0; i < kAssessments; ++i) {
      const std::size_t a = reverse ? kAssessments - 1 - i : i;
      if (settings.Assessments[a])
        take(item.average[a], "(" + std::to_string(a + 1) + ")");
    }
  }
};

float sumOf(const Parts& parts, int& count) {
  float v = 0;
  parts.forEach(false, [&](float average, const std::string&) {
    v += average;
    ++count;
  });
  if (parts.hasOther) {
    v += parts.other;
    ++count;
  }
  return v;
}

float highestOf(const Parts& parts, std::string& note) {
  float v = 0;
  const auto take = [&](float average, const std::string& from) {
    if (average > v) {
      v = average;
      note = from;
    }
  };
  parts.forEach(false, take);
  if (parts.hasOther)
    take(parts.other, parts.otherNote);
  return v;
}

// The first part counts whatever it is; after it scores of 0 are passed over.
float lowestOf(const Parts& parts, std::string& note) {
  float v = kUnset;
  parts.forEach(false, [&](float average, const std::string& from) {
    if (v == kUnset || (average < v && average > 0)) {
      v = average;
      note = from;
    }
  });
  if (parts.hasOther && parts.other < v && v != kUnset) {
    v = parts.other;
    note = parts.otherNote;
  }
  if (v != kUnset)
    return v;
  note = "0";
  return 0;
}

float productOf(const Parts& parts) {
  float v = kUnset;
  const auto take = [&](float average, const std::string&) {
    if (v == kUnset)
      v = average;
    else if (average > 0)
      v *= average;
  };
  parts.forEach(false, take);
  if (parts.hasOther && parts.other > 0)
    take(parts.other, parts.otherNote);
  return v == kUnset ? 0 : v;
}

float quotientOf(const Parts& parts) {
  const bool reverse = parts.settings.ReverseCalc;
  const bool useOther = parts.hasOther && parts.other > 0;
  float v = reverse && useOther ? parts.other : kUnset;
  parts.forEach(reverse, [&](float average, const std::string&) {
    if (v == kUnset)
      v = average;
    else if (average > 0)
      v = v > 0 ? v / average : average;
  });
  if (!reverse && useOther)
    v = v == kUnset ? parts.other : v / parts.other;
  return v == kUnset ? 0 : v;
}

float valueOf(const Parts& parts, std::string& note) {
  int count = 0;
  switch (static_cast<PlotType>(parts.settings.PlotType)) {
    case PlotType::cumulative:
      return sumOf(parts, count);
    case PlotType::cumulativeAverage: {
      const float sum = sumOf(parts, count);
      return count > 0 ? sum / static_cast<float>(count) : 0;
    }
    case PlotType::highest:
      return highestOf(parts, note);
    case PlotType::lowest:
      return lowestOf(parts, note);
    case PlotType::product:
      return productOf(parts);
    case PlotType::quotient:
      return quotientOf(parts);
  }
  return 0;
}

// The votes behind an item's value: those of all the parts. A part that nobody voted on goes into the value
// as it stands, but alone it makes no score.
int countedIn(const MultiPlotRecord& settings, const RiskRecord& item, std::size_t otherSlot) {
  int counted = settings.Assessments[kOther] ? item.counted[otherSlot] : 0;
  for (std::size_t a = 0; a < kAssessments; ++a) counted += settings.Assessments[a] ? item.counted[a] : 0;
  return counted;
}

// Two plots may feed on each other; the one that is being worked on is not begun again.
class InWork {
 public:
  explicit InWork(bool& flag) : flag_(flag) { flag_ = true; }
  ~InWork() { flag_ = false; }
  InWork(const InWork&) = delete;
  InWork& operator=(const InWork&) = delete;

 private:
  bool& flag_;
};

std::int64_t combine(PlotType type, std::int64_t top, std::int64_t part) {
  constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
  switch (type) {
    case PlotType::highest:
    case PlotType::quotient:
      return std::max(top, part);
    case PlotType::lowest:
      return std::min(top, part);
    case PlotType::product:
      return std::min(std::max<std::int64_t>(top, 1) * std::max<std::int64_t>(part, 1), kLargest);
    default:
      return std::min(top + part, kLargest);
  }
}

int topOfScales(int plot, bool roundToStep, bool useData) {
  const MultiPlotRecord& settings = glo.multiPlot[static_cast<std::size_t>(plot)];
  const PlotType type = static_cast<PlotType>(settings.PlotType);
  std::int64_t top = 0;
  int parts = 0;
  for (std::size_t a = 0; a <= kOther; ++a) {
    if (!settings.Assessments[a])
      continue;
    const int part = a == kOther ? GetMultiPlotMaxScale(1 - plot, roundToStep, useData)
                                 : glo.assessments[a].scalePointCount + 1;
    top = combine(type, top, part);
    ++parts;
  }
  if (type == PlotType::cumulativeAverage && parts > 0)
    return RoundUp(static_cast<double>(top) / parts);
  return static_cast<int>(top);
}

int topOfData(int plot) {
  int top = 0;
  for (int i = 0; i < glo.itemCount(); ++i)
    top = std::max(
        top, RoundUp(static_cast<double>(glo.item(i).average[kOther + static_cast<std::size_t>(plot)])));
  return top;
}

bool isPlot(int plot) {
  return plot == 0 || plot == 1;
}

}  // namespace

bool multiPlotSetUp(int plot) {
  if (!isPlot(plot))
    return false;
  const MultiPlotRecord& settings = glo.multiPlot[static_cast<std::size_t>(plot)];
  const auto end = settings.Assessments.begin() + kOther + 1;
  return settings.Enabled && std::find(settings.Assessments.begin(), end, true) != end;
}

void GetMultiPlotValues(int plot) {
  static std::array<bool, 2> inWork{};
  if (!isPlot(plot) || inWork[static_cast<std::size_t>(plot)])
    return;
  const ProgressLine progress("Assigning " + multiPlotName(plot) + " values");
  const InWork guard(inWork[static_cast<std::size_t>(plot)]);
  const std::size_t slot = kOther + static_cast<std::size_t>(plot),
                    otherSlot = kOther + 1 - static_cast<std::size_t>(plot);
  const MultiPlotRecord& settings = glo.multiPlot[static_cast<std::size_t>(plot)];
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& item = glo.item(i);
    item.average[slot] = 0;
    item.counted[slot] = 0;
    item.plotText[slot].clear();
  }
  if (settings.Assessments[kOther])
    GetMultiPlotValues(1 - plot);
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& item = glo.item(i);
    const Parts parts{settings, item, settings.Assessments[kOther], item.average[otherSlot],
                      std::to_string(otherSlot)};
    item.average[slot] = valueOf(parts, item.plotText[slot]);
    item.counted[slot] = countedIn(settings, item, otherSlot);
    item.active[slot] = true;
  }
}

int GetMultiPlotAxisScaleStep(int maximum) {
  struct Step {
    int above, step;
  };
  constexpr std::array<Step, 8> kSteps{
      {{50000, 10000}, {10000, 5000}, {5000, 1000}, {1000, 500}, {500, 100}, {100, 50}, {50, 10}, {10, 5}}};
  for (const Step& entry : kSteps)
    if (maximum > entry.above)
      return entry.step;
  return 1;
}

int GetMultiPlotMaxScale(int plot, bool roundToStep, bool useData) {
  static std::array<bool, 2> inWork{};
  if (!isPlot(plot) || inWork[static_cast<std::size_t>(plot)])
    return 0;
  const InWork guard(inWork[static_cast<std::size_t>(plot)]);
  const PlotType type = static_cast<PlotType>(glo.multiPlot[static_cast<std::size_t>(plot)].PlotType);
  int top = topOfScales(plot, roundToStep, useData);
  if (useData && type != PlotType::highest && type != PlotType::lowest)
    if (const int data = topOfData(plot); data > 0)
      top = data;
  const int step = GetMultiPlotAxisScaleStep(top);
  if (!roundToStep || top % step == 0)
    return top;
  return static_cast<int>(
      std::min<std::int64_t>((std::int64_t{top} / step + 1) * step, std::numeric_limits<int>::max()));
}

std::string multiPlotName(int plot) {
  if (!isPlot(plot))
    return "";
  const std::string& name = glo.assessmentTitles[kOther + static_cast<std::size_t>(plot)];
  return name.empty() ? "MultiPlot " + std::to_string(plot + 1) : name;
}

}  // namespace qrn
