// The matrix graph: every item at its average on one assessment across and on another upwards, in up to four
// pairs.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "charts/chart_display.h"
#include "host/forms.h"
#include "host/surface.h"
#include "host/wait.h"
#include "matrixgraph/axis_plan.h"
#include "matrixgraph/graph_canvas.h"
#include "matrixgraph/plot_items.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

struct MenuEntry {
  bool enabled = false;
  bool checked = false;
};

struct xyVoteGraph : host::Form {
  xyVoteGraph();
  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(int keyCode, int shift) override;
  void Form_KeyPress(int keyAscii) override;
  void Form_Resize() override;

  void tmr_load_Timer();
  void drawGraph(int pair1First, int pair1Second, int pair2First, int pair2Second, int pair3First,
                 int pair3Second, int pair4First, int pair4Second);
  bool AxisLabels(const PlotRequest& request,
                  bool skew);  // false: voting points are missing, the form is closing

  void menuHideShowAllPlots();
  void menuHideShowRound(int pair);  // 1 to 4
  void menuPairLines();
  void menuDiversity();
  void ShowSingleItem(int risk);
  void PlotItemDistribution(const std::string& key);
  void gotoDistributionGraph(const PlotRequest& pairs);
  void cmd_info_Click();
  void cmd_list_Click();
  void cmd_close_Click();
  void showRiskList();

  const host::Surface& surface() const { return canvas_.surface.surface(); }
  host::Element* element(const std::string& array, int index) { return canvas_.surface.find(array, index); }
  int elementCount(const std::string& array) const {
    return canvas_.surface.count(array);
  }  // highest index + 1

  // State
  std::string itemKeySuffix;  // "" or the digit of the keys asked for
  std::string zoomedItemKey;  // the item shown alone, "" when all are
  int selectedRiskIndex = -1;
  bool showingMultiPlot = false, showingDiversity = false, graphFailed = false;
  bool keyHandled = false;
  bool graphFilterActive = false;
  float xScaleMax = 0, yScaleMax = 0;  // tops of computed axes, 0 for scales of voting points
  ScaleSizes scaleSizes{1, 1};         // of the first pair, 1 at least
  std::array<bool, kPairs> roundVisible{};
  std::array<MenuEntry, kPairs> menuHideShowRoundN;
  MenuEntry menuPairLinesEntry{true, true};
  MenuEntry menuDemographicsOn{true, false}, menuDemographicsOff{true, true},
      menuDemographicsModify{true, false};
  bool shadowsOn = true;
  bool cmd_info = false;  // the button beside the axes is shown
  bool buttonsVisible = false, listVisible = false;
  std::string graphTitle;  // as shown, after the ampersand rule
  std::vector<ListRow> List1;
  int ListIndex = -1;
  std::vector<PlottedItem> plotted;  // in list order
  int distributionRisk = -1;         // the last request to the distribution graph
  PlotRequest distributionPairs = kNoPairs;
  host::Timer tmr_load;

 private:
  void fillPairs();
  void computeMultiPlots(const PlotRequest& request);
  std::vector<PlottedItem> plotPairs(const PlotRequest& request);
  void layTitles(const PlotRequest& request);
  void failGraph();
  void applyVisibility();
  void applyVisibility(int pair);  // from 0
  void setTitle(const std::string& text);
  void showAll();
  void showLetter(const std::string& key);
  int selectListRow(const std::string& key);  // index into glo.risks, -1 when no row has the key
  void zoomTo(int risk, const std::string& key);
  void reportUnlisted(const std::string& key);
  bool handlePlainKeys(int keyCode);
  bool handleShiftedKeys(int keyCode, int shift);
  void filterByDigit(int digit);
  void escapeOrSpace();

  GraphCanvas canvas_;
  double topCaptionHeight_ = 0;
  int zoomedRisk_ = -1;  // the item shown alone, index into glo.risks
};

// Makes the forms of this room and of the charts below it known to the form registry.
void registerGraphForms();

// The graph without a window: loads the form at that size in pixels and draws `pairs` (kNoPairs: those of the
// exercise). The reference stays good while the form is loaded. Throws HostError (bad data) when it cannot be
// shown.
const host::Surface& drawMatrixGraph(const PlotRequest& pairs, int widthPx, int heightPx);

}  // namespace qrn
