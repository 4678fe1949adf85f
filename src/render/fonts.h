// Fonts of the one painter. Sizes are points and lengths twips, as on every surface; text is laid out without
// hinting, so its width grows evenly with its size and a picture of any width breaks its lines alike.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "host/surface.h"

namespace qrn::render {

inline constexpr double kTwipsPerPixel = 15, kTwipsPerPoint = 20;

QString toQt(std::string_view utf8);
std::string fromQt(const QString& text);

// Gives a font the families that draw what it cannot: other scripts and emoji. Those of this file have them;
// any other place that draws with a font calls it once for the name.
void addFallbacks(const QString& name);

// The font for a device of that many dots per inch, `scale` pixels for a twip.
QFont deviceFont(const host::SurfaceFont& font, double scale, int dotsPerInch);

// Twips. The width is that of the widest line; line ends are LF, CR or CR LF.
double textWidth(std::string_view text, const std::string& name, double size, bool bold, bool italic);
double lineHeight(const std::string& name, double size);
double ascent(const std::string& name, double size, bool bold, bool italic);
double capHeight(const std::string& name, double size, bool bold, bool italic);
bool fontInstalled(const std::string& name);

// Where a line may break inside a text of a script that sets no blanks between words, in bytes.
std::vector<std::size_t> breaksInside(std::string_view word);

}  // namespace qrn::render
