#pragma once

#include <QMenu>
#include <string>
#include <vector>

#include "host/actions.h"

namespace qrn::qt {

// A menu that ticks the rows that are on.
class TickedMenu : public QMenu {
 public:
  using QMenu::QMenu;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A pop-up menu in the theme, large enough for the room. Its rows name their keys; rows of one group stand in
// a menu of their own.
class PopUp : public TickedMenu {
 public:
  PopUp(const std::vector<host::MenuRow>& rows, QWidget* parent);
  void showAt(bool mouse);                               // at the pointer, else in the middle of the parent
  const std::string& chosen() const { return chosen_; }  // name of a row, "" until one was taken

 private:
  QMenu* menuOf(const std::string& group);
  void addRow(const host::MenuRow& row);

  std::string chosen_;
};

}  // namespace qrn::qt
