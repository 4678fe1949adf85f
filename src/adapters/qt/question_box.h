#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "host/dialogs.h"

class QPushButton;

namespace qrn::qt {

// A question in type that can be read from afar. The text is shown as it stands, its lines broken at
// kTextWidth.
class QuestionBox : public QDialog {
 public:
  QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, host::Answer enter,
              QWidget* parent);
  host::Answer answer() const { return answer_; }  // the safe one until a button was taken
  QString text() const { return text_; }

  static constexpr int kTextWidth = 640;  // pixels

 private:
  QPushButton* makeButton(const char* caption, host::Answer answer, double scale);

  QString text_;
  host::Answer answer_;
};

}  // namespace qrn::qt
