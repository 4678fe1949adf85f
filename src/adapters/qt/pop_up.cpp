#include "adapters/qt/pop_up.h"

#include <QCursor>
#include <QPainter>
#include <QScreen>

#include "adapters/qt/marks.h"
#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "render/render.h"

namespace qrn::qt {

namespace {

constexpr int kBoxEdge = 2;  // pixels of the line round a box

constexpr const char* kSheet = R"(
  QMenu { background: @card; color: @text; border: 2px solid @line; padding: @gappx;
          font-size: @floorpx; }
  QMenu::item { padding: @gappx @labelpx @gappx @wordpx; border-radius: 6px; }
  QMenu::item:selected { background: @data; color: @onData; }
  QMenu::item:disabled { color: @quiet; background: transparent; }
  QMenu::right-arrow { image: none; width: 0; }
  QMenu::separator { height: 2px; background: @line; margin: @gappx; }
  QMenu::indicator { width: @halfpx; height: @halfpx; left: @gappx; border-radius: 4px; border: 2px solid @line; }
  QMenu::indicator:checked { background: @highlight; border-color: @highlight; }
)";

QString plain(const std::string& text) {
  return QString::fromStdString(text).replace('&', "&&");
}

}  // namespace

// Where the style sheet has its boxes.
void TickedMenu::paintEvent(QPaintEvent* event) {
  QMenu::paintEvent(event);
  const look::Theme theme = slideTheme();
  const int height = screenHeight(this), gap = pixels(look::Size::floor, height) / 4,
            side = pixels(look::Size::label, height) / 2 + 2 + 2 * kBoxEdge;
  QPainter painter(this);
  for (QAction* action : actions())
    if (action->isCheckable() && action->isChecked()) {
      const QRect row = actionGeometry(action);
      drawTick(painter, QRect(row.left() + gap, row.center().y() - side / 2, side, side),
               render::toColour(theme.onHighlight));
    }
}

PopUp::PopUp(const std::vector<host::MenuRow>& rows, QWidget* parent) : TickedMenu(parent) {
  setObjectName("popUp");
  setStyleSheet(themed(kSheet, slideTheme(), screenHeight(parent)));
  for (const host::MenuRow& row : rows) addRow(row);
  connect(this, &QMenu::triggered, this,
          [this](const QAction* action) { chosen_ = action->objectName().toStdString(); });
}

QMenu* PopUp::menuOf(const std::string& group) {
  if (group.empty())
    return this;
  const QString title = plain(group) + "\t\u203a";  // the arrow of the style is too small for a room
  for (QAction* action : actions())
    if (action->menu() && action->text() == title)
      return action->menu();
  auto* menu = new TickedMenu(title, this);
  addMenu(menu);
  return menu;
}

void PopUp::addRow(const host::MenuRow& row) {
  QMenu* menu = menuOf(row.group);
  if (row.separated && !menu->isEmpty())
    menu->addSeparator();
  QAction* action = menu->addAction(plain(row.caption) + (row.key.empty() ? "" : "\t" + plain(row.key)));
  action->setObjectName(QString::fromStdString(row.name));
  action->setEnabled(row.enabled);
  action->setCheckable(row.checkable);
  action->setChecked(row.checked);
}

void PopUp::showAt(bool mouse) {
  if (mouse) {
    popup(QCursor::pos());
    return;
  }
  const QRect over = parentWidget() ? QRect(parentWidget()->mapToGlobal(QPoint()), parentWidget()->size())
                                    : screen()->geometry();
  ensurePolished();
  popup(over.center() - QRect(QPoint(), sizeHint()).center());
  for (QAction* action : actions())
    if (action->isEnabled() && !action->isSeparator()) {
      setActiveAction(action);  // the keyboard begins there
      return;
    }
}

}  // namespace qrn::qt
