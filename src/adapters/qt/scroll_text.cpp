#include "adapters/qt/scroll_text.h"

#include <QLabel>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

namespace qrn::qt {

namespace {

constexpr int kFewestLetters = 16;    // of the narrowest text, in its size
constexpr double kLeastHeight = 2.4;  // likewise: as high as the sign beside it

}  // namespace

ScrollText::ScrollText(const QString& text, int type, int width, int most, QWidget* parent)
    : QScrollArea(parent) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setStyleSheet(QString("font-size: %1px;").arg(type));
  label->setWordWrap(true);
  setWidget(label);
  setWidgetResizable(true);
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  label->ensurePolished();
  const auto room = [metrics = label->fontMetrics(), width](const QString& part) {
    return metrics.boundingRect(QRect(0, 0, width, 1 << 20), Qt::TextWordWrap | Qt::AlignLeft, part).size();
  };
  const int wide = room(text).width() + 4, high = label->heightForWidth(wide) + 4;
  const int line = room("x\nx").height() - room("x").height();
  const int whole = most / line * line;
  const bool scrolls = high > whole;
  label->setMinimumHeight(high);
  label->setAlignment(Qt::AlignLeft | (scrolls ? Qt::AlignTop : Qt::AlignVCenter));
  size_ = {std::max(kFewestLetters * type, wide + (scrolls ? type : 0)),
           scrolls ? whole : std::max(static_cast<int>(kLeastHeight * type), high)};
  setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  verticalScrollBar()->setSingleStep(line);
  if (!scrolls)
    return;
  scrollBy(Qt::Key_Up, -line);
  scrollBy(Qt::Key_Down, line);
  scrollBy(Qt::Key_PageUp, line - whole);
  scrollBy(Qt::Key_PageDown, whole - line);
  scrollBy(Qt::Key_Home, -high);
  scrollBy(Qt::Key_End, high);
}

void ScrollText::scrollBy(Qt::Key key, int pixels) {
  auto* shortcut = new QShortcut(key, window());
  connect(shortcut, &QShortcut::activated, this,
          [this, pixels] { verticalScrollBar()->setValue(verticalScrollBar()->value() + pixels); });
}

}  // namespace qrn::qt
