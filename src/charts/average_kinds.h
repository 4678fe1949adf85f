// What the average graph can show of each item, one row for each kind.
#pragma once

#include <string>

#include "charts/chart_display.h"
#include "core/records.h"

namespace qrn {

// Values of glo.averageDisplayKind; the even number is the twin of each.
enum AverageDisplayKind : int {
  kPlainAverage = 0,
  kCumulative = 19,
  kWeightedCumulative = 21,
  kMultiPlot1 = 23,
  kMultiPlot2 = 25,
  kDiversity = 27
};

struct ChartValue {
  bool present = false;
  double value = 0;
  int votes = 0;  // that it is made of; 0 where it is made of other values
};

struct ChartBounds {
  double low = 0, high = 0;  // equal: the data makes the scale
};

struct AverageKind {
  int kind;
  const char* valueFormat;
  bool points;        // the scale is that of the voted points
  bool tellsMissing;  // items without data are listed behind the info button
  // Computes what is shown; false: the user has been told why it cannot be.
  bool (*compute)(const ChartRequest& request);
  std::string (*title)(const ChartRequest& request);
  ChartValue (*value)(const ChartRequest& request, const RiskRecord& item);
  ChartBounds (*bounds)(const ChartRequest& request);
};

// Of any value of glo.averageDisplayKind; what is no other kind is the plain average.
const AverageKind& averageKind(int displayKind);

}  // namespace qrn
