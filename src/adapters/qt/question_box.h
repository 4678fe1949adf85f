#pragma once

#include <QString>
#include <vector>

#include "adapters/qt/staged_dialog.h"
#include "host/dialogs.h"

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace qrn::qt {

// A question in type that can be read from afar. The text is shown as it stands. Enter takes the answer that
// is named, Esc the safe one, letters their own.
class QuestionBox : public StagedDialog {
 public:
  QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, host::Answer enter,
              QWidget* parent);
  host::Answer answer() const { return answer_; }  // the safe one until a button was taken
  QString text() const { return text_; }

 private:
  QPushButton* answerButton(const char* caption, host::Answer answer, bool primary);

  QString text_;
  host::Answer answer_;
};

// Asks for a line of text.
class InputCard : public StagedDialog {
 public:
  InputCard(const QString& prompt, const QString& preset, QWidget* parent);
  QString text() const;

 private:
  QLineEdit* edit_;
};

}  // namespace qrn::qt
