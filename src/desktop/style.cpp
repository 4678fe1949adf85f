#include "desktop/style.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <utility>

#include "render/fonts.h"

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
    palette.setColor(QPalette::Disabled, role, look::greyed);
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
QMenuBar { background: @card; border-bottom: 1px solid @line; padding: 2px 8px; }
QMenuBar::item { padding: 6px 12px; border-radius: 4px; }
QMenuBar::item:selected { background: @soft; color: @ink; }
QMenu { background: @card; border: 1px solid @line; padding: 4px; }
QMenu::item { padding: 8px 32px 8px 16px; border-radius: 4px; }
QMenu::item:selected { background: @accent; color: @card; }
QMenu::item:disabled { color: @greyed; background: transparent; }
QMenu::separator { height: 1px; background: @line; margin: 4px 8px; }
QPushButton { background: @card; border: 1px solid @edge; border-radius: 6px; padding: 8px 16px; min-height: 20px; }
QPushButton:hover { background: @soft; border-color: @accent; }
QPushButton:pressed { background: @softDark; }
QPushButton:focus { border: 3px solid @accent; padding: 6px 14px; }
QPushButton:default { background: @accent; color: @card; border-color: @accent; }
QPushButton:default:hover { background: @accentDark; }
QPushButton:default:focus { border: 3px solid @ink; padding: 6px 14px; }
QPushButton:disabled { background: @ground; color: @greyed; border-color: @line; }
QLineEdit { background: @card; border: 1px solid @edge; border-radius: 6px; padding: 8px; }
QLineEdit:focus { border: 3px solid @accent; padding: 6px; }
QToolTip { background: @ink; color: @card; border: none; padding: 6px 8px; }
QStatusBar { background: @card; border-top: 1px solid @line; }
QStatusBar::item { border: none; }
QScrollBar:vertical { background: @ground; width: 14px; margin: 0; }
QScrollBar::handle:vertical { background: @edge; border-radius: 5px; min-height: 40px; margin: 2px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
)";

QString sheet() {
  QString text(kSheet);
  const std::pair<const char*, QColor> colours[] = {{"@accentDark", look::accent.darker(125)},
                                                    {"@accent", look::accent},
                                                    {"@softDark", look::accentSoft.darker(108)},
                                                    {"@soft", look::accentSoft},
                                                    {"@line", look::line},
                                                    {"@edge", look::edge},
                                                    {"@greyed", look::greyed},
                                                    {"@ink", look::ink},
                                                    {"@ground", look::ground},
                                                    {"@card", look::card}};
  for (const auto& [word, colour] : colours) text.replace(word, colour.name());
  return text;
}

}  // namespace

void applyStyle(QApplication& application) {
  application.setStyle(new PlainStyle);
  application.setPalette(calmPalette());
  render::addFallbacks("Arial");  // all windows are set in it
  QFont font("Arial");
  font.setPixelSize(look::bodyType);
  application.setFont(font);
  application.setStyleSheet(sheet());
}

}  // namespace qrn::desktop
