// ChartDisplay: from what a form asks for, and the exercise in `glo`, to a chart. Forms are told apart by
// their names.
#pragma once

#include <string>
#include <vector>

#include "charts/tchart.h"
#include "core/records.h"

namespace qrn {

// One row of a result form's list: "identifier: text".
struct ListRow {
  std::string text;
  int risk = -1;  // index into glo.risks
};

struct ChartRequest {
  std::string form;              // name of the form that asks
  double width = 0, height = 0;  // twips
  int assessment = 1;            // 1-based
  int round = 0;                 // 0 the current result, 1 and up a stored round
  bool drawDiversity = false;
  bool onOnePage = false;          // nobody can turn pages: an automatic bar count leaves none out
  bool withIdentifier = true;      // labels show "A: text" rather than the text alone
  int distributionAxisLabels = 0;  // 1 cuts the texts, 2 shows numbers
  int distributionAxisLabelLength = 0;
  int options = 0,
      startFrom = 1;  // scale of the forms that carry one: `sifterVoteForm` and `Criteria_Master`
};

struct ChartModel {
  TChart chart;
  std::vector<ListRow> rows;  // of the average chart: one for each point
};

inline constexpr int kAverageChart = 17;  // `kind` of AddData for the average chart

// Text of an item; three blanks for an empty one, and for an index outside the list.
std::string GetItemText(int item);

// True when the item is in a selected category, or when none is left out.
bool inCategoriesShown(int item);

// That no item has votes `onWhat`: nobody's yet, or none of those that the demographic filter leaves.
std::string nobodyVoted(const std::string& onWhat);

// Gives every item without an identifier the one that its ID gives; graphs name items by it.
void giveIdentifiers();

// Identifier, ": " and the text of an item.
std::string itemLabel(int item);

// Scale of the assessment asked for, or of the form itself where it carries one.
struct ChartScale {
  int options = 0;
  int startFrom = 1;
};
ChartScale scaleOf(const ChartRequest& request);

// Fills series `series` of the chart. Kind 17: one point for each shown item, and the rows with them. Other
// kinds: the distribution of the votes in glo.liveVotes over the options of the assessment, abstains into
// glo.abstainCount.
void AddData(const ChartRequest& request, ChartModel& model, long kind, int series);

// Texts of the bottom axis: the options of the assessment. `withData` labels the points of `series` instead;
// `label` is the title of the axis.
void AddAxisLabels(const ChartRequest& request, TChart& chart, int series, bool withData,
                   const std::string& label);

// Gives the axes the fonts and colours of the graph settings, sized to the form. Labels are cut by "..." at
// lowering, where the width of their slots is known; the chart keeps their whole text.
void ResizeChartAxes(TChart& chart);

// Sets the header, its font shrunk point by point until the text fits the width asked for.
void ResizeChartTitle(const ChartRequest& request, TChart& chart, const std::string& title);

// The average chart of the assessment asked for, or of glo.averageDisplayKind, whose values have been
// computed; its first page.
ChartModel DisplayAverageChart(const ChartRequest& request);

}  // namespace qrn
