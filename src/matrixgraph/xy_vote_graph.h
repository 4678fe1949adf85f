// The form of the matrix graph: every item at its average on one assessment across and on another upwards, in
// up to four pairs.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "charts/chart_display.h"
#include "host/actions.h"
#include "host/names.h"
#include "host/panel.h"
#include "host/surface.h"
#include "host/wait.h"
#include "matrixgraph/matrix_model.h"

namespace qrn {

struct xyVoteGraph : host::Form {
  xyVoteGraph();
  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(int keyCode, int shift) override;
  void Form_KeyPress(int keyAscii) override;
  host::ActionTable actions() override;
  void Form_Resize() override;
  void Form_MouseDown(int button, double x, double y) override;
  void Form_MouseMove(double x, double y) override;
  void Form_MouseUp(double x, double y) override;
  void Form_DblClick(double x, double y) override;

  void tmr_load_Timer();
  void drawGraph(int pair1First, int pair1Second, int pair2First, int pair2Second, int pair3First,
                 int pair3Second, int pair4First, int pair4Second);

  void menuHideShowAllPlots();
  void menuHideShowRound(int pair);  // 1 to 4
  void menuPairLines();
  void menuDiversity();
  void ShowSingleItem(int risk);
  void PlotItemDistribution(const std::string& keyOrIndex);
  void gotoDistributionGraph(const PlotRequest& pairs);
  // A label on the graph: its item and its list row are selected. A double click opens the item's form, where
  // there is one, and builds the list anew.
  void DblClickItem(const host::Element& label);
  void RightClickItem(const host::Element& label);
  void List1_Click(int row) { List1.select(row); }
  void List1_DblClick(int row);
  void List1_RightClick(int row);
  void cmd_info_Click();
  void cmd_list_Click();
  void cmd_close_Click();
  void showRiskList();

  const host::Surface& surface() const { return model_.canvas.surface; }
  const MatrixModel& model() const { return model_; }

  // State
  std::string itemKeySuffix;  // "" or the digit of the keys asked for
  std::string zoomedItemKey;  // the item shown alone, "" when all are
  int selectedRiskIndex = -1;
  bool showingMultiPlot = false, showingDiversity = false, graphFailed = false;
  bool keyHandled = false;
  bool graphFilterActive = false;
  GraphView view;         // what is seen of the items
  bool cmd_info = false;  // the button beside the axes is shown
  bool buttonsVisible = false, listVisible = false;
  std::string graphTitle;
  host::Panel List1;          // a row for each item on the graph; its id is the index into glo.risks
  int distributionRisk = -1;  // the last request to the distribution graph
  PlotRequest distributionPairs = kNoPairs;
  host::Timer tmr_load;
  host::Timer tmr_grow;  // while the key of the item shown alone grows

 private:
  void failGraph();
  void plot(const PlotRequest& request);
  void showView();
  void tmr_grow_Timer();
  MatrixRequest requestFor(const PlotRequest& pairs) const;
  void setTitle(const std::string& text);
  void showAll();
  void showLetter(const std::string& key);
  int selectListRow(const std::string& key);  // index into glo.risks, -1 when no row has the key
  const PlottedItem* plottedItem(int risk) const;
  void zoomTo(int risk, const std::string& key);
  void reportUnlisted(const std::string& key);
  static constexpr const char* kMenu = "popupMenuCategory";
  static constexpr const char* kHideShowMenu = "menuHideShowRound";
  static constexpr const char* kItemMenu = "listPopupMenu";
  static constexpr const char* kItemForm = "editBox_Form";
  static constexpr const char* kDistributionForm = formName::distributionGraph;
  std::vector<host::Action> filterActions();
  std::vector<host::Action> viewActions();
  std::vector<host::Action> pairActions();
  std::vector<host::Action> itemActions();
  std::vector<host::Action> formActions();
  bool onGraph(int pair) const;  // 1 to 4; it was drawn
  void letterKey(char letter);
  void filterByDigit(int digit);
  void escapeOrSpace();
  int riskOfRow(int row) const;  // -1 outside the list
  const std::string& textOfRow(int row) const;
  void selectItem(int risk);
  void openItem(int risk);

  // A label under the pressed mouse, and where in it the press was.
  struct Drag {
    std::string array;
    int index = 0;
    double offsetX = 0, offsetY = 0, pressX = 0, pressY = 0;
    bool moving = false;
  };
  void moveLabel(double left, double top);

  MatrixModel model_;
  Drag drag_;  // no array: none
  std::int64_t growsSince_ = 0;
};

// Makes the forms of this room and of the charts below it known to the form registry.
void registerGraphForms();

// The graph without a window: loads the form at that size in pixels and draws `pairs` (kNoPairs: those of the
// exercise), every key in its place whether others cover it or not. The reference stays good while the form
// is loaded. Throws HostError (bad data) when it cannot be shown.
const host::Surface& drawMatrixGraph(const PlotRequest& pairs, int widthPx, int heightPx);

}  // namespace qrn
