// A text that is as large as it needs to be, up to a height; beyond that it scrolls, by wheel and keys.
#pragma once

#include <QScrollArea>

namespace qrn::qt {

class ScrollText : public QScrollArea {
 public:
  // Lines break at `width`; `most` is the height that it may take. All in pixels.
  ScrollText(const QString& text, int type, int width, int most, QWidget* parent);
  QSize sizeHint() const override { return size_; }
  QSize minimumSizeHint() const override { return size_; }

 private:
  void scrollBy(Qt::Key key, int pixels);  // whichever part of the window has the keyboard

  QSize size_;
};

}  // namespace qrn::qt
