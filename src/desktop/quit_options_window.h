// The dialog of the Esc key during a vote, as the form `xyVoteQuitOptions` holds it.
#pragma once

#include <QListWidget>
#include <QWidget>

#include "desktop/window_stack.h"
#include "host/forms.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::desktop {

class QuitOptionsWindow : public QWidget {
 public:
  QuitOptionsWindow(xyVoteQuitOptions& form, double scale);
  void sync();  // shows what the form holds

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool focusNextPrevChild(bool next) override;  // Tab is a key of the dialog

 private:
  QListWidget* makeList(const QString& name);
  bool formStands() const;
  int px(int pixels) const { return static_cast<int>(pixels * scale_); }
  bool moveInTargets(int keyCode, int shift);
  void mark();

  enum class Zone { options, items, assessments };
  Zone zone_ = Zone::options;  // where Up and Down move
  xyVoteQuitOptions& form_;
  double scale_;  // of type, against a screen of 1080 rows
  QListWidget *options_, *items_, *assessments_;
  QWidget* targets_;
};

class QuitOptionsView : public host::FormView {
 public:
  QuitOptionsView(xyVoteQuitOptions& form, WindowStack& stack);
  ~QuitOptionsView() override;
  void show(bool modal) override;
  void hide() override;
  void refresh() override { window_.sync(); }
  void bringToFront() override;

 private:
  WindowStack& stack_;
  QuitOptionsWindow window_;
};

}  // namespace qrn::desktop
