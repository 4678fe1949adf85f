// ChartDisplay: fills the charts of the result forms. The forms are told apart by their names.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "charts/tchart.h"
#include "host/forms.h"

namespace qrn {

// One row of a result form's list: "identifier: text".
struct ListRow {
  std::string text;
  int risk = -1;  // index into glo.risks
  int sortKey = 0;
};

// What the procedures below need of a form with results.
struct ChartForm : host::Form {
  using Form::Form;
  TChart chart;
  std::vector<ListRow> List1;
  int ListIndex = -1;  // selected row of List1
  int assessment = 1;  // the assessment picked, 1-based
  int round = 0;       // 0 the current result, 1 and up a stored round
  int risk = 0;        // item of a distribution, index into glo.risks
  bool drawDiversity = false;
  bool onOnePage = false;          // nobody can turn pages: an automatic bar count leaves none out
  bool withIdentifier = true;      // labels show "A: text" rather than the text alone
  int distributionAxisLabels = 0;  // 1 cuts the texts, 2 shows numbers
  int distributionAxisLabelLength = 0;
  int formOptions = 0;  // scale of `sifterVoteForm` and `Criteria_Master`
  int formStartFrom = 1;
  std::string infoText;  // items without data, as shown behind the info button
  bool infoButton = false;
};

inline constexpr int kAverageChart = 17;  // `kind` of AddData for the average chart

// Values of glo.averageDisplayKind; the even number is the twin of each.
enum AverageDisplayKind : int {
  kPlainAverage = 0,
  kCumulative = 19,
  kWeightedCumulative = 21,
  kMultiPlot1 = 23,
  kMultiPlot2 = 25,
  kDiversity = 27
};

// Text of an item; three blanks for an empty one, and for an index outside the list.
std::string GetItemText(int item);

// True when the item is in a selected category, or when none is left out.
bool inCategoriesShown(int item);

// Value of an item on the average chart for glo.averageDisplayKind, and whether it has a score there.
struct ChartValue {
  bool present = false;
  double value = 0;
};
ChartValue averageChartValue(const ChartForm& form, int item);

// Identifier, ": " and the text of an item; an item without identifier gets the one its ID gives.
std::string itemLabel(int item);

// Scale of the form's assessment, or of the form itself where it carries one.
struct ChartScale {
  int options = 0;
  int startFrom = 1;
};
ChartScale scaleOf(const ChartForm& form);

// Fills series `series` of the form's chart. Kind 17: one point for each shown item, and List1 with them.
// Other kinds: the distribution of the votes in glo.liveVotes over the options of the form's assessment,
// abstains into glo.abstainCount.
void AddData(ChartForm& form, long kind, int series);

// Texts of the bottom axis: the options of the form's assessment. `withData` also labels the points of
// `series`; `label` is the title of the axis.
void AddAxisLabels(ChartForm& form, int series, bool withData, const std::string& label);

// Gives the axes the fonts and colours of the graph settings, sized to the form. Labels are cut by "..." at
// lowering, where the width of their slots is known; the chart keeps their whole text.
void ResizeChartAxes(ChartForm& form);

// Sets the header, its font shrunk point by point until the text fits the form's width.
void ResizeChartTitle(ChartForm& form, const std::string& title);

// Draws the average chart of the form's assessment, or of glo.averageDisplayKind.
void DisplayAverageChart(ChartForm& form);

}  // namespace qrn
