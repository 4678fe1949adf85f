#include "adapters/qt/themed.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <utility>
#include <vector>

#include "look/colour.h"
#include "render/render.h"

namespace qrn::qt {

namespace {

constexpr double kCardLift = 0.06;  // a card stands out of the ground by this much of the text's colour

}  // namespace

// The longer words come first where one begins with another.
QString themed(QString sheet, const look::Theme& theme, int height) {
  using look::Size;
  const std::int32_t card = look::blend(theme.ground, theme.text, kCardLift);
  const std::int32_t field = look::blend(theme.ground, theme.text, 2 * kCardLift);
  const std::int32_t line = look::tintUntil(theme.grid, theme.text, card, look::kShapeContrast);
  const std::pair<const char*, std::int32_t> colours[] = {{"@onHighlight", theme.onHighlight},
                                                          {"@highlight", theme.highlight},
                                                          {"@onData", theme.onData},
                                                          {"@data", theme.data},
                                                          {"@surface", theme.surface},
                                                          {"@card", card},
                                                          {"@field", field},
                                                          {"@line", line},
                                                          {"@text", theme.text},
                                                          {"@quiet", theme.quiet},
                                                          {"@alarm", theme.alarm}};
  for (const auto& [word, colour] : colours) sheet.replace(word, render::toColour(colour).name());
  const std::pair<const char*, int> sizes[] = {
      {"@item", pixels(Size::item, height)},          {"@word", pixels(Size::word, height)},
      {"@label", pixels(Size::label, height)},        {"@floor", pixels(Size::floor, height)},
      {"@half", pixels(Size::label, height) / 2 + 2}, {"@gap", pixels(Size::floor, height) / 4}};
  for (const auto& [word, size] : sizes) sheet.replace(word, QString::number(size));
  return sheet;
}

int pixels(look::Size size, int height) {
  return static_cast<int>(look::partOfHeight(size) * height);
}

int screenHeight(const QWidget* over) {
  const QScreen* screen = over ? over->screen() : QGuiApplication::primaryScreen();
  return screen->geometry().height();
}

QRect placeOf(const QWidget& window) {
  const QRect inside = window.contentsRect();
  return {window.mapToGlobal(inside.topLeft()), inside.size()};
}

}  // namespace qrn::qt
