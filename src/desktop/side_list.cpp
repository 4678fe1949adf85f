#include "desktop/side_list.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "desktop/keyed_rows.h"
#include "host/actions.h"
#include "look/theme.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr double kShare = 0.28;                // of the window's width
constexpr double kEdge = 0.023, kTop = 0.037;  // free right of it, above and below, of width and height

int typeFor(const QWidget& window) {
  return std::max(16, static_cast<int>(window.height() * look::partOfHeight(look::Size::floor)));
}

QString themed(const char* sheet, const QWidget& window) {
  return qt::themed(sheet, slideTheme(), window.height());
}

}  // namespace

SideList::SideList(SideListSource source, QWidget* parent)
    : PanelView(*source.panel, "List1", parent), source_(std::move(source)), rows_(new KeyedRows(this)) {
  setFocusPolicy(Qt::NoFocus);  // the keys are the form's
  setItemDelegate(rows_);
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(model(), &QAbstractItemModel::modelReset, this, [this] { stale_ = true; });
  hide();
}

int SideList::stand() {
  const QWidget& window = *parentWidget();
  if (!source_.visible()) {
    hide();
    return 0;
  }
  const int width = static_cast<int>(window.width() * kShare),
            edge = static_cast<int>(window.width() * kEdge), top = static_cast<int>(window.height() * kTop);
  const QRect place(window.width() - width, top, width - edge, window.height() - 2 * top);
  if (geometry() != place || isHidden()) {
    setLook(window);
    setGeometry(place);
    show();
    stale_ = true;
  }
  sync();
  if (std::exchange(stale_, false))
    setRows();
  return width;
}

// Anew for other rows and another room alone: measuring takes its time.
void SideList::setRows() {
  ensurePolished();
  updateGeometries();  // the header takes its part
  const QScrollBar& bar = *verticalScrollBar();
  const int wide = bar.sizeHint().width();
  rows_->set(source_.panel->rows(), font(),
             {viewport()->width() + (bar.isVisible() ? wide : 0), viewport()->height(), wide});
  doItemsLayout();
  if (currentIndex().isValid())
    scrollTo(currentIndex());
}

const QStringList& SideList::lines(int row) const {
  return rows_->lines(row);
}

void SideList::setLook(const QWidget& window) {
  const int type = typeFor(window), gap = type / 3;
  rows_->setTheme(slideTheme());
  setStyleSheet(
      themed("QTreeView { background: @surface; border: none; border-radius: %2px; font-size: %1px; outline: "
             "none; padding: 0 %2px %2px %2px; }"
             "QHeaderView { background: transparent; border: none; }"
             "QHeaderView::section { background: transparent; border: none; color: @quiet; font-size: %1px; "
             "padding: %2px; }"
             "QScrollBar:vertical { background: transparent; width: %2px; margin: 0; }"
             "QScrollBar::handle:vertical { background: @line; border-radius: %3px; min-height: %1px; }"
             "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }",
             window)
          .arg(type)
          .arg(gap)
          .arg(gap / 2));
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
