// The dialog in which the two multi-plots are put together.
#pragma once

#include <array>
#include <string>

#include "core/records.h"
#include "host/controls.h"

namespace qrn {

inline constexpr const char* kMultiPlotForm = "multiplot";

struct multiplot : host::ControlForm {
  multiplot();
  // Takes what the dialog holds as the settings of that plot, 0 or 1; they are the exercise's after OK. `ok`
  // is false, and the person told, when the plot is enabled and made of nothing.
  void SaveMultiPlotSettings(int plot, bool& ok);
  void opt_multiPlot_Click(int plot);  // saves the plot shown, then shows that one
  void chkReverseDivisionOrder_Click();

 protected:
  std::string take() override;

 private:
  static constexpr std::size_t kBoxes = 10, kOther = 9;  // the last box is the other plot
  void addBoxes();
  void addKind();
  void showPlot(int plot);
  std::size_t titleOf(int plot) const { return kAssessments + static_cast<std::size_t>(plot); }

  std::array<MultiPlotRecord, 2> plots_;
  std::array<std::string, 2> names_;
  std::array<std::string, kAssessments> titles_;
  // What the dialog shows of the plot at hand.
  int shown_ = 0;
  MultiPlotRecord now_;
  std::string name_;
};

void registerMultiPlotForm();

}  // namespace qrn
