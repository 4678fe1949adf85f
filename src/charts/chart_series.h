// What a chart shows of its values: bars with their values, or points that a line joins.
#pragma once

#include "charts/chart_sheet.h"

namespace qrn {

void drawSeries(ChartSheet& s, const ChartSeries& series);

}  // namespace qrn
