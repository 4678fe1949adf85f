// The value axis of a chart: its range, its steps and what stands at them.
#pragma once

#include <string>
#include <vector>

#include "charts/tchart.h"

namespace qrn {

// A value as "0", "0.00" or "0.00%" writes it.
std::string numberText(double value, const std::string& format);

struct ChartTicks {
  double low = 0, high = 1, step = 1;
  std::vector<std::string> texts;  // the words of the scale, else numbers; one for each step
  double valueOf(int i) const { return low + i * step; }
  double count() const { return texts.size() > 1 ? static_cast<double>(texts.size() - 1) : 1; }
};
ChartTicks chartTicks(const TChart& chart);

}  // namespace qrn
