// Style sheets in the colours and sizes of the theme that the slides give.
#pragma once

#include <QString>

#include "look/theme.h"

class QRect;
class QWidget;

namespace qrn::qt {

// The sheet with colours for @card, @field, @line, @text, @quiet, @data, @onData, @highlight, @onHighlight,
// @alarm and @surface, and pixels for @item, @word, @label, @floor, @half (of a label) and @gap on a screen
// of `height` rows.
QString themed(QString sheet, const look::Theme& theme, int height);
int pixels(look::Size size, int height);
// Rows of the screen that `over` stands on (null: the first screen).
int screenHeight(const QWidget* over);
// What the room sees of a window, on the screen: of a slide show the slide, without the bars beside it.
QRect placeOf(const QWidget& window);

}  // namespace qrn::qt
