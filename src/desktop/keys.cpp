#include "desktop/keys.h"

#include <array>
#include <utility>

#include "host/forms.h"

namespace qrn::desktop {

namespace {

namespace key = host::key;

constexpr std::array<std::pair<int, int>, 28> kNamedKeys{{
    {Qt::Key_Backspace, key::back}, {Qt::Key_Tab, key::tab},
    {Qt::Key_Backtab, key::tab},    {Qt::Key_Clear, key::clear},
    {Qt::Key_Return, key::enter},   {Qt::Key_Enter, key::enter},
    {Qt::Key_Escape, key::escape},  {Qt::Key_Space, key::space},
    {Qt::Key_PageUp, key::pageUp},  {Qt::Key_PageDown, key::pageDown},
    {Qt::Key_End, key::end},        {Qt::Key_Home, key::home},
    {Qt::Key_Left, key::left},      {Qt::Key_Up, key::up},
    {Qt::Key_Right, key::right},    {Qt::Key_Down, key::down},
    {Qt::Key_Insert, key::insert},  {Qt::Key_Delete, key::del},
    {Qt::Key_Super_R, 92},          {Qt::Key_Menu, 93},
    {Qt::Key_Equal, key::equal},    {Qt::Key_Plus, key::equal},
    {Qt::Key_Minus, key::minus},    {Qt::Key_Underscore, key::minus},
    {Qt::Key_Comma, 188},           {Qt::Key_Less, 188},
    {Qt::Key_Period, 190},          {Qt::Key_Slash, 191},
}};

constexpr std::array<std::pair<int, int>, 6> kKeypadKeys{{{Qt::Key_Asterisk, key::multiply},
                                                          {Qt::Key_Plus, key::add},
                                                          {Qt::Key_Minus, key::subtract},
                                                          {Qt::Key_Period, 110},
                                                          {Qt::Key_Comma, 110},
                                                          {Qt::Key_Slash, 111}}};

// Above the digits of a keyboard, from 1 to 0.
constexpr std::array<int, 10> kShiftedDigits{
    Qt::Key_Exclam,      Qt::Key_At,        Qt::Key_NumberSign, Qt::Key_Dollar,    Qt::Key_Percent,
    Qt::Key_AsciiCircum, Qt::Key_Ampersand, Qt::Key_Asterisk,   Qt::Key_ParenLeft, Qt::Key_ParenRight};
constexpr unsigned kScanCodeOf1 = 10;  // X11 and Wayland number the digit row from here on

template <std::size_t N>
int lookUp(const std::array<std::pair<int, int>, N>& table, int qtKey) {
  for (const auto& [from, to] : table)
    if (from == qtKey)
      return to;
  return 0;
}

int shiftMask(Qt::KeyboardModifiers modifiers) {
  return ((modifiers & Qt::ShiftModifier) ? key::shiftMask : 0) |
         ((modifiers & Qt::ControlModifier) ? key::ctrlMask : 0) |
         ((modifiers & Qt::AltModifier) ? key::altMask : 0);
}

// The digit key that was struck with Shift, whatever the layout writes above it.
int shiftedDigit(const QKeyEvent& event) {
  if (!(event.modifiers() & Qt::ShiftModifier) || (event.modifiers() & Qt::KeypadModifier))
    return 0;
  const unsigned scan = event.nativeScanCode();
  if (scan >= kScanCodeOf1 && scan < kScanCodeOf1 + 10)
    return '0' + static_cast<int>((scan - kScanCodeOf1 + 1) % 10);
  if (scan != 0)
    return 0;
  for (std::size_t i = 0; i < kShiftedDigits.size(); ++i)
    if (kShiftedDigits[i] == event.key())
      return '0' + static_cast<int>((i + 1) % 10);
  return 0;
}

int codeOf(const QKeyEvent& event) {
  const int qtKey = event.key();
  if (event.modifiers() & Qt::KeypadModifier) {
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
      return key::numpad0 + (qtKey - Qt::Key_0);
    if (const int code = lookUp(kKeypadKeys, qtKey))
      return code;
  }
  if (const int digit = shiftedDigit(event))
    return digit;
  if ((qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) || (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z))
    return qtKey;
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
    return key::f1 + (qtKey - Qt::Key_F1);
  return lookUp(kNamedKeys, qtKey);
}

int asciiOf(const QKeyEvent& event, int code) {
  if (event.modifiers() & Qt::AltModifier)
    return 0;
  switch (code) {
    case key::enter:
    case key::escape:
    case key::back:
    case key::space:
      return code;
    default:
      break;
  }
  const QString text = event.text();
  if (text.size() != 1 || text[0].unicode() == 0 || text[0].unicode() > 255 || text[0].unicode() == 127)
    return 0;
  return text[0].unicode();
}

}  // namespace

KeyStroke classicKey(const QKeyEvent& event) {
  KeyStroke stroke;
  if (event.isAutoRepeat())
    return stroke;
  stroke.keyCode = codeOf(event);
  stroke.shift = shiftMask(event.modifiers());
  stroke.keyAscii = asciiOf(event, stroke.keyCode);
  return stroke;
}

}  // namespace qrn::desktop
