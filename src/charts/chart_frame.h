// The frame of a chart: its fonts, header and titles, and the plot between the texts.
#pragma once

#include "charts/chart_sheet.h"

namespace qrn {

// Draws the header and the titles of the axes, and settles fonts, scale and geometry.
void frameChart(ChartSheet& s);

}  // namespace qrn
