#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "host/dialogs.h"

namespace qrn::qt {

// A question in type that can be read from afar. The text is shown as it stands, its lines broken at
// kTextWidth.
class QuestionBox : public QDialog {
 public:
  QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, QWidget* parent);
  host::Answer answer() const { return answer_; }  // that of Esc until a button was taken
  QString text() const { return text_; }

  static constexpr int kTextWidth = 640;  // pixels

 private:
  QString text_;
  host::Answer answer_;
};

}  // namespace qrn::qt
