#include "desktop/slide_show_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "core/windows/presentation_windows.h"

namespace qrn::desktop {

namespace {

constexpr int kCursorHidesAfterMs = 2500;
constexpr int kMostDigits = 4;

bool isForward(int key) {
  switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Space:
    case Qt::Key_PageDown:
    case Qt::Key_N:
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return true;
    default:
      return false;
  }
}

bool isBackward(int key) {
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_PageUp:
    case Qt::Key_Up:
    case Qt::Key_P:
    case Qt::Key_Backspace:
      return true;
    default:
      return false;
  }
}

void writeNote(QPainter& painter, const QRect& area, const QString& text, Qt::Alignment place) {
  QFont font("Arial");
  font.setPixelSize(std::max(18, area.height() / 28));
  painter.setFont(font);
  const int pad = font.pixelSize() / 2;
  QRect box =
      painter.fontMetrics().boundingRect(area, Qt::AlignCenter, text).adjusted(-pad, -pad / 2, pad, pad / 2);
  box.moveCenter(area.center());
  if (place & Qt::AlignBottom)
    box.moveBottom(area.bottom() - pad);
  painter.fillRect(box, QColor(0x12, 0x26, 0x3a));
  painter.setPen(Qt::white);
  painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace

SlideShowWindow::SlideShowWindow(host::Presentation& deck, SlidePictures& pictures, Calls calls)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      deck_(deck),
      pictures_(pictures),
      calls_(std::move(calls)),
      hideCursor_(new QTimer(this)) {
  setObjectName("slideShow");
  setWindowTitle("quorin matrix slide show");
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::BlankCursor);
  hideCursor_->setSingleShot(true);
  hideCursor_->callOnTimeout(this, [this] { setCursor(Qt::BlankCursor); });
}

void SlideShowWindow::start(int slide) {
  if (slide < 1)
    slide = shownSlide(1, 1);
  showFullScreen();
  raise();
  activateWindow();
  setFocus();
  if (slide > 0)
    arriveAt(slide);
}

void SlideShowWindow::GotoSlide(int index) {
  deck_.Slides(index);  // throws for a slide that is not there
  showSlide(index);
}

void SlideShowWindow::next() {
  if (atEnd_) {
    endShow();
    return;
  }
  const int slide = shownSlide(slide_ + 1, 1);
  if (slide > 0) {
    arriveAt(slide);
    return;
  }
  atEnd_ = true;
  update();
}

void SlideShowWindow::previous() {
  const int slide = atEnd_ ? slide_ : shownSlide(slide_ - 1, -1);
  if (slide > 0)
    showSlide(slide);
}

void SlideShowWindow::arriveAt(int slide) {
  showSlide(slide);
  if (holdsExercise(deck_.Slides(slide)) && calls_.exerciseReached)
    calls_.exerciseReached(slide);
}

void SlideShowWindow::endShow() {
  hide();
  if (calls_.ended)
    calls_.ended();
}

void SlideShowWindow::pictureArrived(int slide) {
  if (slide != slide_)
    return;
  shown_ = QPixmap();
  update();
}

int SlideShowWindow::shownSlide(int from, int step) const {
  for (int slide = from; slide >= 1 && slide <= deck_.SlideCount(); slide += step)
    if (!deck_.Slides(slide).Hidden())
      return slide;
  return 0;
}

void SlideShowWindow::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (typeDigit(key))
    return;
  const bool number = !typed_.isEmpty() && (key == Qt::Key_Return || key == Qt::Key_Enter);
  if (number)
    jumpToTyped();
  typed_.clear();
  update();
  if (number)
    return;
  if (key == Qt::Key_B || key == Qt::Key_Period)
    toggleBlank(Qt::black);
  else if (key == Qt::Key_W || key == Qt::Key_Comma)
    toggleBlank(Qt::white);
  else if (key == Qt::Key_Escape)
    endShow();
  else if (blank_.isValid() && (isForward(key) || isBackward(key)))
    toggleBlank(blank_);
  else if (isForward(key))
    next();
  else if (isBackward(key))
    previous();
  else if (key == Qt::Key_Home)
    arriveAt(std::max(1, shownSlide(1, 1)));
  else if (key == Qt::Key_End)
    arriveAt(std::max(1, shownSlide(deck_.SlideCount(), -1)));
  else
    QWidget::keyPressEvent(event);
}

bool SlideShowWindow::typeDigit(int key) {
  if (key < Qt::Key_0 || key > Qt::Key_9)
    return false;
  if (typed_.size() < kMostDigits)
    typed_ += QChar('0' + (key - Qt::Key_0));
  update();
  return true;
}

void SlideShowWindow::jumpToTyped() {
  const int slide = typed_.toInt();
  if (slide >= 1 && slide <= deck_.SlideCount())
    arriveAt(slide);
}

void SlideShowWindow::toggleBlank(const QColor& colour) {
  blank_ = blank_.isValid() ? QColor() : colour;
  update();
}

void SlideShowWindow::showSlide(int slide) {
  slide_ = slide;
  atEnd_ = false;
  blank_ = QColor();
  shown_ = QPixmap();
  if (const int after = shownSlide(slide + 1, 1))
    pictures_.want(after);
  pictures_.picture(slide);
  update();
}

void SlideShowWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    next();
}

void SlideShowWindow::mouseMoveEvent(QMouseEvent*) {
  setCursor(Qt::ArrowCursor);
  hideCursor_->start(kCursorHidesAfterMs);
}

void SlideShowWindow::wheelEvent(QWheelEvent* event) {
  if (event->angleDelta().y() < 0)
    next();
  else if (event->angleDelta().y() > 0)
    previous();
}

// What is inside of the contents is the slide; the rest is black.
void SlideShowWindow::resizeEvent(QResizeEvent*) {
  const host::WindowRect slide =
      AdjustSlideShowRECTforScreenRatio({0, 0, width(), height()}, deck_.SlideWidth(), deck_.SlideHeight());
  setContentsMargins(slide.left, slide.top, width() - slide.right, height() - slide.bottom);
}

void SlideShowWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect all = rect();
  painter.fillRect(all, blank_.isValid() ? blank_ : QColor(Qt::black));
  if (!blank_.isValid() && atEnd_) {
    writeNote(painter, all, "End of the slide show. Space or a click leaves.", Qt::AlignCenter);
  } else if (!blank_.isValid() && slide_ > 0) {
    const double ratio = devicePixelRatioF();
    const QSize wanted =
        (QSizeF(pictures_.pictureSize()).scaled(QSizeF(all.size()) * ratio, Qt::KeepAspectRatio)).toSize();
    if (shown_.isNull() || shown_.size() != wanted) {
      shown_ = QPixmap::fromImage(
          pictures_.picture(slide_).scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
      shown_.setDevicePixelRatio(ratio);
    }
    const QSize inside = (QSizeF(wanted) / ratio).toSize();
    painter.drawPixmap(QPoint((all.width() - inside.width()) / 2, (all.height() - inside.height()) / 2),
                       shown_);
  }
  if (!typed_.isEmpty())
    writeNote(painter, all, "Go to slide " + typed_, Qt::AlignBottom);
}

void SlideShowWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  endShow();
}

}  // namespace qrn::desktop
