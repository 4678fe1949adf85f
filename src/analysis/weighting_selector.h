// The dialog that sets how much each assessment counts in the weighted cumulative averages.
#pragma once

#include <array>

#include "core/records.h"
#include "host/controls.h"

namespace qrn {

inline constexpr const char* kWeightingForm = "weightingSelector";

struct weightingSelector : host::ControlForm {
  weightingSelector();
  void cmd_reset_Click();             // asks, then every weight is 1
  void step(int assessment, int by);  // 1 to 9; a weight stays at 1 at least

  std::array<int, kAssessments> weight{};  // as the dialog shows them; the exercise has them after OK
  std::array<bool, kAssessments> weightingOn{};

 protected:
  std::string take() override;  // one step of the history

 private:
  void addRow(int assessment);
};

void registerWeightingForm();

}  // namespace qrn
