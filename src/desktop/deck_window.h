// The edit window: the slides of the open deck, the one at hand in large, and what can be done with them.
#pragma once

#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <functional>

#include "desktop/notice_bar.h"
#include "desktop/slide_list.h"
#include "desktop/slide_pictures.h"

namespace qrn::desktop {

// Shows a picture as large as it fits, on the window's ground.
class PictureView : public QWidget {
 public:
  explicit PictureView(QWidget* parent) : QWidget(parent) { setMinimumSize(240, 160); }
  void setPicture(const QImage& image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image_;
  QPixmap scaled_;
};

// A line of text that ends in "…" where it does not fit; the tool tip holds all of it.
class ElidedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  QSize minimumSizeHint() const override { return {1, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class DeckWindow : public QMainWindow, public host::View {
 public:
  struct Calls {
    std::function<void()> open, save, showKeypads, leave;
    std::function<void(int slide)> startShow;  // 0: from the beginning
    std::function<void(int slide)> runExercise;
  };
  DeckWindow(SlidePictures& pictures, ExerciseFactsOf factsOf, Calls calls);

  void setDeck(host::Presentation* deck);
  void slidesChanged();  // their tags, their number
  void pictureArrived(int slide);
  void setBusy(bool busy);        // an exercise runs: nothing can be started
  void say(const QString& line);  // the line at the foot
  // The same for a step that takes time: seen at once, though the step lets no event through. "" takes away
  // what was said of the last one.
  void sayProgress(const QString& line);
  NoticeBar& notice() { return *notice_; }

  int SlideIndex() const override;
  void GotoSlide(int index) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void makeMenus();
  void makeEmptyPage();
  void makeDeckPage();
  QWidget* makeDetail();
  // An action without a deck to work on is greyed, unless it needs none.
  QAction* action(QMenu* menu, const QString& text, const QList<QKeySequence>& keys, const QString& tip,
                  std::function<void()> call, bool needsDeck);
  QPushButton* button(const QString& text, const QString& tip, std::function<void()> call);
  void showCurrent();
  void showWhatCanBeDone();
  void giveFocusBack();
  void openExercise();
  void showKeys();

  SlidePictures& pictures_;
  SlideListModel model_;
  Calls calls_;
  host::Presentation* deck_ = nullptr;
  bool busy_ = false;
  QString progress_;
  QPointer<QWidget> focusBefore_;  // the run
  QList<QAction*> deckActions_;
  QStackedWidget* pages_;
  NoticeBar* notice_;
  QListView* list_ = nullptr;
  QLabel *title_ = nullptr, *facts_ = nullptr, *line_, *place_;
  PictureView* picture_ = nullptr;
  QPushButton *showButton_ = nullptr, *exerciseButton_ = nullptr, *openButton_ = nullptr;
  QAction* exerciseAction_ = nullptr;
};

}  // namespace qrn::desktop
