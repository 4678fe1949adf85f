#pragma once

#include <QLabel>
#include <QWidget>

namespace qrn::qt {

// The small status window: one line of text that takes no key and no focus.
class InfoWindow : public QWidget {
 public:
  InfoWindow();
  // Shows the line in the middle of `over` (or of the screen) and lets it stand for 0.1 second.
  void showLine(const QString& line, const QWidget* over);

 private:
  QLabel* label_;
};

}  // namespace qrn::qt
