#include "desktop/style.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace qrn::desktop {

namespace {

QPalette calmPalette() {
  QPalette palette;
  palette.setColor(QPalette::Window, look::ground);
  palette.setColor(QPalette::WindowText, look::ink);
  palette.setColor(QPalette::Base, look::card);
  palette.setColor(QPalette::AlternateBase, look::ground);
  palette.setColor(QPalette::Text, look::ink);
  palette.setColor(QPalette::Button, look::card);
  palette.setColor(QPalette::ButtonText, look::ink);
  palette.setColor(QPalette::ToolTipBase, look::ink);
  palette.setColor(QPalette::ToolTipText, look::card);
  palette.setColor(QPalette::Highlight, look::accent);
  palette.setColor(QPalette::HighlightedText, look::onAccent);
  palette.setColor(QPalette::PlaceholderText, look::quietInk);
  palette.setColor(QPalette::Link, look::accent);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x6b, 0x78, 0x86));
  return palette;
}

// Fusion without the icons that some desktops put on the buttons of questions.
class PlainStyle : public QProxyStyle {
 public:
  PlainStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
      return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
  }
};

constexpr const char* kSheet = R"(
QMenuBar { background: #ffffff; border-bottom: 1px solid #c9d1db; padding: 2px 8px; }
QMenuBar::item { padding: 6px 12px; border-radius: 4px; }
QMenuBar::item:selected { background: #dce9f7; color: #16222f; }
QMenu { background: #ffffff; border: 1px solid #c9d1db; padding: 4px; }
QMenu::item { padding: 8px 32px 8px 16px; border-radius: 4px; }
QMenu::item:selected { background: #0b57a4; color: #ffffff; }
QMenu::item:disabled { color: #6b7886; background: transparent; }
QMenu::separator { height: 1px; background: #c9d1db; margin: 4px 8px; }
QPushButton { background: #ffffff; border: 1px solid #7d8b9b; border-radius: 6px; padding: 8px 16px; min-height: 20px; }
QPushButton:hover { background: #dce9f7; border-color: #0b57a4; }
QPushButton:pressed { background: #c4daf0; }
QPushButton:focus { border: 3px solid #0b57a4; padding: 6px 14px; }
QPushButton:default { background: #0b57a4; color: #ffffff; border-color: #0b57a4; }
QPushButton:default:hover { background: #084680; }
QPushButton:default:focus { border: 3px solid #16222f; padding: 6px 14px; }
QPushButton:disabled { background: #f3f5f8; color: #6b7886; border-color: #c9d1db; }
QLineEdit { background: #ffffff; border: 1px solid #7d8b9b; border-radius: 6px; padding: 8px; }
QLineEdit:focus { border: 3px solid #0b57a4; padding: 6px; }
QInputDialog QLabel { font-size: 20px; }
QInputDialog QLineEdit { min-width: 480px; font-size: 20px; }
QInputDialog QPushButton { min-width: 88px; }
QToolTip { background: #16222f; color: #ffffff; border: none; padding: 6px 8px; }
QStatusBar { background: #ffffff; border-top: 1px solid #c9d1db; }
QStatusBar::item { border: none; }
QScrollBar:vertical { background: #f3f5f8; width: 14px; margin: 0; }
QScrollBar::handle:vertical { background: #8593a3; border-radius: 5px; min-height: 40px; margin: 2px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
)";

}  // namespace

void applyStyle(QApplication& application) {
  application.setStyle(new PlainStyle);
  application.setPalette(calmPalette());
  QFont font("Arial");
  font.setPixelSize(look::bodyType);
  application.setFont(font);
  application.setStyleSheet(kSheet);
}

}  // namespace qrn::desktop
