#include "desktop/side_list.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "host/actions.h"
#include "look/theme.h"
#include "render/colours.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr double kShare = 0.28;                // of the window's width
constexpr double kEdge = 0.023, kTop = 0.037;  // free right of it, above and below, of width and height
constexpr double kRow = 1.5;                   // of the type's size

int typeFor(const QWidget& window) {
  return std::max(16, static_cast<int>(window.height() * look::partOfHeight(look::Size::floor)));
}

QString themed(const char* sheet, const QWidget& window) {
  return qt::themed(sheet, slideTheme(), window.height());
}

// As many whole words as there is room for.
QString wholeWords(const QString& text, const QFontMetrics& metrics, int room) {
  if (metrics.horizontalAdvance(text) <= room)
    return text;
  const QString cut = metrics.elidedText(text, Qt::ElideRight, room);
  const auto blank = cut.lastIndexOf(' ');
  return blank > cut.size() / 2 ? cut.left(blank) + " \u2026" : cut;
}

// A row "key: text" with its key on a disc, as on the graph.
class KeyedRow : public QStyledItemDelegate {
 public:
  KeyedRow(look::Theme theme, QObject* list) : QStyledItemDelegate(list), theme_(theme) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {0, static_cast<int>(kRow * option.fontMetrics.ascent() * 1.1)};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QString line = index.data(Qt::DisplayRole).toString();
    const auto colon = std::max<qsizetype>(0, line.indexOf(':'));
    const bool chosen = option.state.testFlag(QStyle::State_Selected),
               marked = index.data(Qt::FontRole).isValid();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const QRectF row = QRectF(option.rect).adjusted(2, 1, -2, -1);
    if (chosen) {
      painter->setBrush(render::toColour(theme_.data));
      painter->drawRoundedRect(row, row.height() / 4, row.height() / 4);
    }
    const std::int32_t disc = chosen ? theme_.onData : marked ? theme_.highlight : theme_.data;
    const double left = key(*painter, row, line.left(colon), disc);
    painter->setFont(option.font);
    painter->setPen(render::toColour(chosen ? theme_.onData : theme_.text));
    const QRectF text(left, row.top(), row.right() - left - row.height() / 5, row.height());
    painter->drawText(
        text, Qt::AlignLeft | Qt::AlignVCenter,
        wholeWords(line.mid(colon + 1).trimmed(), QFontMetrics(option.font), static_cast<int>(text.width())));
    painter->restore();
  }

 private:
  // Gives where the text begins.
  double key(QPainter& painter, const QRectF& row, const QString& text, std::int32_t disc) const {
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(std::max(1, static_cast<int>(row.height() * 0.56)));
    painter.setFont(font);
    const double height = row.height() * 0.84, wide = painter.fontMetrics().horizontalAdvance(text);
    const double width = std::max(height, wide + height * 0.5), space = std::max(width, height * 1.5);
    const QRectF box(row.left() + row.height() * 0.2 + (space - width) / 2, row.center().y() - height / 2,
                     width, height);
    painter.setBrush(render::toColour(disc));
    painter.drawRoundedRect(box, height / 2, height / 2);
    painter.setPen(render::toColour(look::inkOn(disc)));
    painter.drawText(box, Qt::AlignCenter, text);
    return row.left() + row.height() * 0.45 + space;
  }

  const look::Theme theme_;
};

}  // namespace

SideList::SideList(SideListSource source, QWidget* parent)
    : PanelView(*source.panel, "List1", parent), source_(std::move(source)) {
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setFocusPolicy(Qt::NoFocus);  // the keys are the form's
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
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
  }
  sync();
  return width;
}

void SideList::setLook(const QWidget& window) {
  const int type = typeFor(window), gap = type / 3;
  delete std::exchange(rows_, new KeyedRow(slideTheme(), this));
  setItemDelegate(rows_);
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
