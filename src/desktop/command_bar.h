// The buttons of a form at the foot of its window, made from its action table.
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "host/actions.h"
#include "host/forms.h"

class QPushButton;

namespace qrn::desktop {

class CommandBar : public QWidget {
 public:
  CommandBar(host::Form& form, std::function<bool()> shown, QWidget* parent);
  // Takes what the table says now; stands in the middle of the foot of that width in pixels.
  int sync(int width);

 private:
  void make(const std::vector<host::MenuRow>& rows);
  void press(const std::string& name);

  host::Form& form_;
  std::function<bool()> shown_;
  std::vector<QPushButton*> buttons_;
  std::vector<std::string> names_;  // of the rows that the buttons stand for
};

}  // namespace qrn::desktop
