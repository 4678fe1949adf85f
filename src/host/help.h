// The help of a form: its keys, made from its action table.
#pragma once

#include "host/actions.h"
#include "host/controls.h"

namespace qrn::host {

struct formHelp : ControlForm {
  formHelp();
  void Form_KeyDown(int keyCode, int shift) override;  // F1 and Space close it as Esc does
  void tell(const std::vector<KeyHelp>& help);

  Panel List1;  // keys, what they do
};

inline constexpr const char* kHelpForm = "formHelp";

// Shows the keys of a form until the person has read them; not while help is up already.
void showHelp(Form& form);
// The row that a form puts into its table for it.
Action helpAction(Form& form);

}  // namespace qrn::host
