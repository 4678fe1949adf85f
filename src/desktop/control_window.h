// The one window of every dialog that is told as data: a calm card over what is on the screen, which is
// dimmed meanwhile. It shows the controls of a host::ControlForm and gives back what the person does with
// them.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "adapters/qt/staged_dialog.h"
#include "desktop/mnemonics.h"
#include "desktop/window_stack.h"
#include "host/controls.h"
#include "look/theme.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace qrn::desktop {

class PanelView;

class ControlWindow : public QWidget {
 public:
  ControlWindow(host::ControlForm& form, WindowStack& stack);
  void sync();  // shows what the form holds
  void focusFirst();
  void standOver();  // takes the place and the dimmed picture of the window in front

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
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
  // The words before a field or above a list; Alt with its letter goes there.
  QLabel* captionOf(const host::Control& control, QWidget* field);
  QHBoxLayout* footRow();
  QPushButton* footButton(const std::string& caption, bool primary, void (host::ControlForm::*press)());
  // Both buttons say the same: one of them is enough.
  bool dismissesAlike() const { return form_.dismissCaption == form_.acceptCaption; }
  void took(const host::Control& control, const std::string& value);
  void fitCard();  // around what it holds, in the middle
  void fitList(const host::Control& control, PanelView& view);
  void placeCard();
  QSize most() const;  // that a card may take
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
  std::map<std::string, QWidget*> widgets_;   // by the name of the control
  Mnemonics mnemonics_;
  QPushButton *dismiss_ = nullptr, *accept_ = nullptr;
  std::string refused_;  // why the last value was not taken
};

// Attaches a window to a form made of controls.
host::FormRegistry::ViewMaker controlView(WindowStack& stack);

}  // namespace qrn::desktop
