#include "desktop/side_list.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
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

SideList::SideList(SideListSource source, QWidget* parent) : QListWidget(parent), source_(std::move(source)) {
  setObjectName("List1");
  setFocusPolicy(Qt::NoFocus);  // the keys are the form's
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTextElideMode(Qt::ElideRight);
  setUniformItemSizes(true);
  hide();
}

int SideList::rowAt(const QMouseEvent& event) const {
  return row(itemAt(event.position().toPoint()));
}

// What is told may end the list, so nothing follows it.
void SideList::mouseReleaseEvent(QMouseEvent* event) {
  QListWidget::mouseReleaseEvent(event);
  const int row = rowAt(*event);
  if (row < 0)
    return;
  if (event->button() == Qt::LeftButton)
    source_.chosen(row);
  else if (event->button() == Qt::RightButton && source_.menuAsked)
    source_.menuAsked(row);
}

void SideList::mouseDoubleClickEvent(QMouseEvent* event) {
  const int row = rowAt(*event);
  if (row >= 0 && event->button() == Qt::LeftButton && source_.opened)
    source_.opened(row);
}

void SideList::showLines() {
  while (count() > static_cast<int>(lines_.size())) delete takeItem(count() - 1);
  for (int row = 0; row < static_cast<int>(lines_.size()); ++row) {
    const QString line = render::toQt(lines_[static_cast<std::size_t>(row)]).simplified();
    if (row == count())
      addItem(line);
    if (item(row)->text() != line)
      item(row)->setText(line);
    item(row)->setToolTip(line);
  }
}

int SideList::sync() {
  const QWidget& window = *parentWidget();
  if (!source_.visible()) {
    hide();
    return 0;
  }
  const QSignalBlocker quiet(this);
  if (std::vector<std::string> lines = source_.lines(); lines != lines_) {
    lines_ = std::move(lines);
    showLines();
  }
  setCurrentRow(source_.current());
  const int width = static_cast<int>(window.width() * kShare);
  const QRect place(window.width() - width, 0, width, window.height());
  if (geometry() != place || isHidden()) {
    setGeometry(place);
    setStyleSheet(themed("QListWidget { background: @surface; border: none; font-size: %1px; outline: none; }"
                         "QListWidget::item { border: none; padding: %2px; color: @text; }"
                         "QListWidget::item:selected { background: @data; color: @onData; }",
                         window)
                      .arg(typeFor(window))
                      .arg(typeFor(window) / 3));
    show();
  }
  return width;
}

InfoButton::InfoButton(InfoSource source, QWidget* parent)
    : QPushButton("i", parent), source_(std::move(source)) {
  setObjectName("cmd_info");
  setFocusPolicy(Qt::NoFocus);
  setToolTip("Items without data (Alt+I)");
  connect(this, &QPushButton::clicked, this, [this] { source_.clicked(); });
  hide();
}

// In the upper right corner of the graph, where neither titles nor captions stand.
void InfoButton::sync(int graphWidth) {
  const QWidget& window = *parentWidget();
  setVisible(source_.visible());
  const int side = 2 * typeFor(window);
  setGeometry(graphWidth - side * 3 / 2, side / 4, side, side);
  setStyleSheet(themed("background: @surface; color: @text; border: 2px solid @quiet; border-radius: %1px; "
                       "font-size: %2px; font-weight: bold; padding: 0; min-height: 0;",
                       window)
                    .arg(side / 2)
                    .arg(typeFor(window)));
}

}  // namespace qrn::desktop
