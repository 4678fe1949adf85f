#include "desktop/flow_row.h"

#include <algorithm>

namespace qrn::desktop {

FlowRow::FlowRow(int gap, Qt::Alignment alignment) : gap_(gap), alignment_(alignment) {
  setContentsMargins(0, 0, 0, 0);
}

FlowRow::~FlowRow() {
  qDeleteAll(items_);
}

QSize FlowRow::sizeHint() const {
  QSize whole;
  for (const QLayoutItem* item : items_)
    if (!item->isEmpty())
      whole = QSize(whole.width() + item->sizeHint().width() + (whole.isEmpty() ? 0 : gap_),
                    std::max(whole.height(), item->sizeHint().height()));
  return whole;
}

QSize FlowRow::minimumSize() const {
  QSize widest;
  for (const QLayoutItem* item : items_)
    if (!item->isEmpty())
      widest = widest.expandedTo(item->sizeHint());
  return widest;
}

void FlowRow::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  arrange(place, true);
}

int FlowRow::arrange(const QRect& place, bool move) const {
  int top = place.top();
  for (qsizetype at = 0; at < items_.size();) {
    qsizetype end = at;
    int width = 0, height = 0;
    for (; end < items_.size(); ++end) {
      const QSize size = items_[end]->isEmpty() ? QSize(0, 0) : items_[end]->sizeHint();
      const int wider = width + (width > 0 && size.width() > 0 ? gap_ : 0) + size.width();
      if (width > 0 && wider > place.width())
        break;
      width = wider;
      height = std::max(height, size.height());
    }
    int left = place.left() + (alignment_ & Qt::AlignHCenter ? std::max(0, place.width() - width) / 2 : 0);
    for (; at < end; ++at) {
      if (items_[at]->isEmpty())
        continue;
      const QSize size = items_[at]->sizeHint();
      if (move)
        items_[at]->setGeometry(QRect(QPoint(left, top + (height - size.height()) / 2), size));
      left += size.width() + gap_;
    }
    top += height + (at < items_.size() ? gap_ : 0);
  }
  return top - place.top();
}

}  // namespace qrn::desktop
