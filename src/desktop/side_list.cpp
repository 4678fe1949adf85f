#include "desktop/side_list.h"

#include <algorithm>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "host/actions.h"
#include "look/theme.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr double kShare = 0.3;  // of the window's width

int typeFor(const QWidget& window) {
  return std::max(16, static_cast<int>(window.height() * look::partOfHeight(look::Size::floor)));
}

QString themed(const char* sheet, const QWidget& window) {
  return qt::themed(sheet, slideTheme(), window.height());
}

}  // namespace

SideList::SideList(SideListSource source, QWidget* parent)
    : PanelView(*source.panel, "List1", parent), source_(std::move(source)) {
  setFocusPolicy(Qt::NoFocus);  // the keys are the form's
  hide();
}

int SideList::stand() {
  const QWidget& window = *parentWidget();
  if (!source_.visible()) {
    hide();
    return 0;
  }
  const int width = static_cast<int>(window.width() * kShare);
  const QRect place(window.width() - width, 0, width, window.height());
  if (geometry() != place || isHidden()) {
    setGeometry(place);
    setStyleSheet(themed("QTreeView { background: @surface; border: none; font-size: %1px; outline: none; }"
                         "QTreeView::item { border: none; padding: %2px; color: @text; }"
                         "QTreeView::item:selected { background: @data; color: @onData; }",
                         window)
                      .arg(typeFor(window))
                      .arg(typeFor(window) / 3));
    show();
  }
  sync();
  return width;
}

InfoButton::InfoButton(host::Form& form, QWidget* parent) : QPushButton("i", parent), form_(form) {
  setObjectName("cmd_info");
  setFocusPolicy(Qt::NoFocus);
  connect(this, &QPushButton::clicked, this, [this] { form_.actions().perform("cmd_info"); });
  hide();
}

// In the upper right corner of the graph, where neither titles nor captions stand.
void InfoButton::sync(int graphWidth) {
  const QWidget& window = *parentWidget();
  const host::ActionTable table = form_.actions();
  const host::Action* info = table.find("cmd_info");
  setVisible(info != nullptr && host::isEnabled(*info));
  if (isHidden())
    return;
  setToolTip(render::toQt(info->caption + " (" + host::keyName(info->keys.front()) + ")"));
  const int side = 2 * typeFor(window);
  setGeometry(graphWidth - side * 3 / 2, side / 4, side, side);
  setStyleSheet(themed("background: @surface; color: @text; border: 2px solid @quiet; border-radius: %1px; "
                       "font-size: %2px; font-weight: bold; padding: 0; min-height: 0;",
                       window)
                    .arg(side / 2)
                    .arg(typeFor(window)));
}

}  // namespace qrn::desktop
