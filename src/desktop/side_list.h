// The list beside a graph, and the small button that tells which items lack data.
#pragma once

#include <QPushButton>
#include <functional>

#include "desktop/panel_view.h"
#include "host/forms.h"

namespace qrn::desktop {

class KeyedRows;

struct SideListSource {
  std::function<bool()> visible;
  host::Panel* panel = nullptr;
};

class SideList : public PanelView {
 public:
  SideList(SideListSource source, QWidget* parent);
  // Takes what the panel holds and stands at the right of the parent. Returns the width it takes, 0 when
  // hidden.
  int stand();
  const QStringList& lines(int row) const;  // of its text, once it stands

 private:
  void setLook(const QWidget& window);
  void setRows();

  SideListSource source_;
  KeyedRows* rows_;
  bool stale_ = true;  // other rows, or another room for them
};

// Does the row "cmd_info" of the form's table, and is seen while that can be done.
class InfoButton : public QPushButton {
 public:
  InfoButton(host::Form& form, QWidget* parent);
  void sync(int graphWidth);  // pixels, without the list beside it

 private:
  host::Form& form_;
};

}  // namespace qrn::desktop
