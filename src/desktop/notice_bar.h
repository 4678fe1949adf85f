#pragma once

#include <QFrame>
#include <QLabel>

namespace qrn::desktop {

// One line of plain words over the window's contents, told apart by its word as well as its colour.
class NoticeBar : public QFrame {
 public:
  enum class Kind { note, error };
  explicit NoticeBar(QWidget* parent);
  void say(Kind kind, const QString& text);  // "" takes it away
  QString text() const { return isVisibleTo(parentWidget()) ? text_->text() : QString(); }

 private:
  QLabel *word_, *text_;
};

}  // namespace qrn::desktop
