// Dialogs as cards: over a window without a frame, which the room sees, a card in the theme with the
// rest dimmed; over the facilitator's window a dialog in the style of the application.
#pragma once

#include <QDialog>
#include <QPixmap>
#include <utility>

#include "look/theme.h"

class QPushButton;

namespace qrn::qt {

// The style sheet of a card, its buttons and its fields.
QString cardSheet(const look::Theme& theme, int height);

// What lies behind a card, dimmed.
class Scrim {
 public:
  explicit Scrim(const look::Theme& theme) : theme_(theme) {}
  void take(QPixmap behind) { behind_ = std::move(behind); }  // as large as what it is painted on
  void paint(QWidget& on) const;

 private:
  look::Theme theme_;
  QPixmap behind_;
};

class StagedDialog : public QDialog {
 public:
  explicit StagedDialog(QWidget* over);

 protected:
  QWidget* card() const { return card_; }
  bool staged() const { return staged_; }
  const look::Theme& theme() const { return theme_; }
  int type() const;        // pixels of the text
  int textWidth() const;   // pixels at which its lines break
  int textHeight() const;  // pixels that it may take, so that its buttons have room beneath
  QPushButton* makeButton(const QString& caption, bool primary);
  void standInTheMiddle();  // once everything is in the card

  void paintEvent(QPaintEvent* event) override;

 private:
  bool staged_;
  look::Theme theme_;
  Scrim scrim_;
  QWidget* card_;
};

}  // namespace qrn::qt
