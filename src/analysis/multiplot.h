// Derived assessments: a value per item computed from the averages of chosen assessments. Plot 0 is
// MultiPlot 1.
#pragma once

#include <string>

namespace qrn {

enum class PlotType { cumulative = 0, highest, lowest, product, cumulativeAverage, quotient };

// Whether the plot is enabled and made of something.
bool multiPlotSetUp(int plot);

// Values of all items into average[9 + plot], with plotText telling which part gave a highest or lowest. An
// item has a score there when it has one in any part.
// Where the two plots feed on each other the second uses what the first held when it was asked for.
void GetMultiPlotValues(int plot);

// Caption step of an axis that ends at `maximum`.
int GetMultiPlotAxisScaleStep(int maximum);

// Top of the axis: from the scales, or from the data with `useData` and data above 0; rounded up to a whole
// step with `roundToStep`.
int GetMultiPlotMaxScale(int plot, bool roundToStep, bool useData);

// Name of the plot, "MultiPlot 1" or "MultiPlot 2" when it has none.
std::string multiPlotName(int plot);

}  // namespace qrn
