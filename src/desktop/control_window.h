// The one window of every dialog that is told as data: a calm card over what is on the screen, which is
// dimmed meanwhile. It shows the controls of a host::ControlForm and gives back what the person does with
// them.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

#include "adapters/qt/staged_dialog.h"
#include "desktop/window_stack.h"
#include "host/controls.h"
#include "look/theme.h"

class QLabel;
class QPushButton;

namespace qrn::desktop {

class ControlWindow : public QWidget {
 public:
  ControlWindow(host::ControlForm& form, WindowStack& stack);
  void sync();  // shows what the form holds
  void focusFirst();
  void standOver();  // takes the place and the dimmed picture of the window in front

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool formStands() const;
  void build();
  QWidget* widgetFor(host::Control& control);
  QWidget* checkBox(host::Control& control);
  QWidget* radioButtons(host::Control& control);
  QWidget* comboBox(host::Control& control);
  QWidget* lineEdit(host::Control& control);
  QWidget* panelBox(host::Control& control);
  QWidget* pushButton(host::Control& control);
  QPushButton* footButton(const std::string& caption, bool primary, void (host::ControlForm::*press)());
  void took(const host::Control& control, const std::string& value);
  void fitCard();  // around what it holds, in the middle
  int px(look::Size size) const;

  host::ControlForm& form_;
  WindowStack& stack_;
  look::Theme theme_;
  qt::Scrim scrim_;
  QWidget* card_;
  QLabel* problem_;
  QWidget* first_ = nullptr;                  // where the keyboard begins
  std::vector<std::function<void()>> syncs_;  // one per control with something to show
  std::vector<std::function<void()>> sizes_;  // of what takes more room the more it holds
  std::string refused_;                       // why the last value was not taken
};

// Attaches a window to a form made of controls.
host::FormRegistry::ViewMaker controlView(WindowStack& stack);

}  // namespace qrn::desktop
