// The one look of the desktop: palette, type and spacing. Every pair of colours used for text has a contrast
// of 4.5 to 1 or better, and nothing is told by colour alone.
#pragma once

#include <QColor>

class QApplication;

namespace qrn::desktop {

namespace look {
inline const QColor ground(0xf3, 0xf5, 0xf8), card(0xff, 0xff, 0xff), line(0xc9, 0xd1, 0xdb),
    edge(0x7d, 0x8b, 0x9b), greyed(0x66, 0x73, 0x82), ink(0x14, 0x20, 0x2e), quietInk(0x4a, 0x5a, 0x6c),
    accent(0x1f, 0x66, 0xc1), accentSoft(0xde, 0xe9, 0xf8), onAccent(0xff, 0xff, 0xff),
    mark(0x9a, 0x4a, 0x00), markSoft(0xff, 0xf1, 0xe0), bad(0xa3, 0x1a, 0x1a), badSoft(0xfd, 0xe8, 0xe8);
// The board with the code is made for the projector.
inline const QColor board(0x0c, 0x13, 0x1d), boardInk(0xf4, 0xf7, 0xfb), boardQuiet(0xae, 0xbb, 0xcb),
    boardMark(0xff, 0xc8, 0x57), boardWell(0x69, 0xd4, 0xa5);
inline constexpr int grid = 8;       // pixels; every distance is a multiple of it
inline constexpr int bodyType = 15;  // pixels
inline constexpr int titleType = 22;
}  // namespace look

void applyStyle(QApplication& application);

}  // namespace qrn::desktop
