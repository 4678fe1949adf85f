// The slide show: full screen, slide pictures on black. Moving forward or jumping onto a slide that holds an
// exercise asks for its run; moving back onto one shows the slide alone, so that one can get past it.
#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <functional>

#include "desktop/slide_pictures.h"
#include "host/presentation.h"

class QTimer;

namespace qrn::desktop {

class SlideShowWindow : public QWidget, public host::View {
 public:
  struct Calls {
    std::function<void(int slide)> exerciseReached;
    std::function<void()> ended;
  };
  SlideShowWindow(host::Presentation& deck, SlidePictures& pictures, Calls calls);

  void start(int slide);  // 0: the first slide that is not hidden
  int SlideIndex() const override { return slide_; }
  void GotoSlide(int index) override;  // shows the slide and asks for no run
  void next();
  void previous();
  void arriveAt(int slide);  // a jump by the person
  void endShow();
  void pictureArrived(int slide);
  bool atEnd() const { return atEnd_; }
  bool blank() const { return blank_.isValid(); }

  // The nearest slide from `from` on that is shown, in steps of +1 or -1; 0 when there is none.
  int shownSlide(int from, int step) const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void showSlide(int slide);
  void toggleBlank(const QColor& colour);
  bool typeDigit(int key);
  void jumpToTyped();

  host::Presentation& deck_;
  SlidePictures& pictures_;
  Calls calls_;
  int slide_ = 0;
  bool atEnd_ = false;
  QColor blank_;   // invalid: the slide shows
  QString typed_;  // digits of a slide number
  QPixmap shown_;  // the slide at the window's size; null: to be made
  QTimer* hideCursor_;
};

}  // namespace qrn::desktop
