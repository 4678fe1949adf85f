#include "render/text_block.h"

#include <QPaintEngine>
#include <cmath>

#include "render/colours.h"
#include "render/fonts.h"

namespace qrn::render {

namespace {

constexpr double kOverhang = 0.25;  // of the type's size
constexpr double kEven = 0.01;      // pixels of type that nobody sees

std::vector<std::string> linesOf(const host::Element& label) {
  QString text = toQt(label.caption);
  text.replace("\r\n", "\n").replace('\r', '\n');
  if (label.wordWrap && label.width > 0)
    return host::wrapText(fromQt(text), label.font, label.width);
  std::vector<std::string> lines;
  for (const QString& one : text.split('\n')) lines.push_back(fromQt(one));
  return lines;
}

}  // namespace

TextBlock setText(const host::Element& label, double scale) {
  const host::SurfaceFont& font = label.font;
  const double step = lineHeight(font.name, font.size) * scale;
  const double overhang = font.size * kTwipsPerPoint * scale * kOverhang;
  double baseline = ascent(font.name, font.size, font.bold, font.italic) * scale;
  TextBlock block;
  for (const std::string& text : linesOf(label)) {
    const double width = textWidth(text, font.name, font.size, font.bold, font.italic) * scale;
    const double left = label.align == host::Align::left    ? 0
                        : label.align == host::Align::right ? -width
                                                            : -width / 2;
    block.box |= QRectF(left - overhang, baseline - step, width + 2 * overhang, 1.5 * step);
    block.lines.push_back({toQt(text), left, baseline});
    baseline += step;
  }
  return block;
}

QPointF anchorOf(const host::Element& label, const Mapping& mapping) {
  const double share = label.align == host::Align::left ? 0 : label.align == host::Align::right ? 1 : 0.5;
  return mapping.point(label.left + label.width * share, label.top);
}

// Pictures are set in whole pixels of type: one of another size is stretched from the next to it, so that it
// is as wide as it was measured.
void drawText(QPainter& painter, const TextBlock& block, const host::Element& label, double scale,
              QPointF anchor) {
  QFont font = deviceFont(label.font, scale, painter.device()->logicalDpiY());
  painter.setPen(toColour(label.colour));
  const double pixels = label.font.size * kTwipsPerPoint * scale, whole = std::max(1.0, std::round(pixels));
  if (painter.paintEngine()->type() != QPaintEngine::Raster || std::abs(pixels - whole) < kEven) {
    painter.setFont(font);
    for (const TextBlock::Line& line : block.lines)
      painter.drawText(anchor + QPointF(line.left, line.baseline), line.text);
    return;
  }
  font.setPixelSize(static_cast<int>(whole));
  const double stretch = pixels / whole;
  const QTransform before = painter.worldTransform();
  painter.setFont(font);
  painter.translate(anchor);
  painter.scale(stretch, stretch);
  for (const TextBlock::Line& line : block.lines)
    painter.drawText(QPointF(line.left, line.baseline) / stretch, line.text);
  painter.setWorldTransform(before);
}

}  // namespace qrn::render
