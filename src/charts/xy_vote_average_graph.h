// The average graph: one bar per item, its average on an assessment or a mean over assessments.
#pragma once

#include <string>
#include <vector>

#include "charts/chart_display.h"
#include "charts/chart_layout.h"
#include "host/actions.h"
#include "host/panel.h"
#include "host/surface.h"

namespace qrn {

struct xyVoteAverageGraph : host::Form {
  xyVoteAverageGraph();
  void Form_Load() override;
  host::ActionTable actions() override;
  void Form_Resize() override;
  void Form_MouseDown(int button, double x, double y) override;

  // assessmentNumber below 10: the averages of that assessment; 10 and 11: multi-plot 1 and 2. roundNumber 0
  // is the current result.
  void drawGraph(int assessmentNumber, int roundNumber);
  void drawGraphCategories();            // plain averages again
  void drawGraphCategoriesCumulative();  // mean of the assessments voted
  void drawGraphCategoriesWeightedCumulative();
  void drawGraphMultiPlot(int plot);  // 0 or 1
  void drawGraphDiversity();
  void redraw();  // the kind shown, with fresh data
  std::string DoCategoryLabel() const;

  void cmd_info_Click();
  void cmd_close_Click();
  void showList();
  void hideList();
  void selectItem(int row);  // outside List1: nothing happens
  void showPage(int page);   // 1-based, held inside the pages there are

  // The graph as positioned elements; rebuilt only when the data or the size has changed.
  const host::Surface& surface();

  ChartRequest request;
  TChart chart;
  host::Panel List1;     // a row for each bar; its id is the index into glo.risks
  std::string infoText;  // items without data, as shown behind the info button
  bool infoButton = false;
  bool listVisible = false;
  bool averageLabelVisible = false;  // Alt+D: the mean of all bars
  bool diversityButtonVisible = false;
  bool buttonsVisible = false;
  bool cmd_scrollVisible = false;  // more items than a page holds
  std::string averageLabel;        // "Average: 3.21"
  std::string labelCategory;

 private:
  std::vector<host::Action> walkActions();
  std::vector<host::Action> assessmentActions();
  std::vector<host::Action> kindActions();
  std::vector<host::Action> valueActions();
  std::vector<host::Action> panelActions();
  std::vector<host::Action> formActions();
  void askAndRedraw(const char* dialog);
  void openMenu();
  void show(int displayKind);  // glo.averageDisplayKind
  bool shows(int kind) const;
  int lastRow() const { return static_cast<int>(List1.rows().size()) - 1; }
  void draw();
  void pageOn();

  ChartSurface lowered_;
};

// Makes the forms of this room known to the form registry.
void registerChartForms();

// The graph without a window: loads the form at that size in pixels and returns what it would show. The
// reference stays good while the form is loaded. Throws HostError (bad data) for an assessment outside 1
// to 11.
const host::Surface& drawAverageGraph(int assessment, int widthPx, int heightPx);

}  // namespace qrn
