#include "matrixgraph/graph_canvas.h"

#include <algorithm>
#include <cmath>

#include "core/glo.h"

namespace qrn {

namespace {

constexpr int kNumberedScale = 2;  // glo.OptionScatterScale
constexpr double kKeySize = 20;    // points at 1024x768
constexpr double kFewKeys = 50;

host::SurfaceFont scaledFont(const std::string& name, double size, bool bold, bool italic, double scale) {
  host::SurfaceFont font;
  if (!name.empty())
    font.name = name;
  font.size = (size > 0 ? size : 12) * scale;
  font.bold = bold;
  font.italic = italic;
  return font;
}

// The keys are what the back row must read: a few are at least kKeySize large, more shrink with the room that
// each has, down to the size of the exercise. A larger one of its own stays.
double keySize(double own, int keys) {
  return std::max(own > 0 ? own : 12, kKeySize * std::sqrt(std::min(1.0, kFewKeys / std::max(keys, 1))));
}

}  // namespace

void GraphCanvas::begin(double formWidth, double formHeight, int keys) {
  surface = {};
  surface.width = formWidth;
  surface.height = formHeight;
  setGraphBackground(surface, glo.matrixBackgroundFlag ? glo.matrixBackgroundFile : "");
  look = chooseLook(surface);
  addPanel(surface, look);
  scale = graphScale(formWidth, formHeight);
  const FontRecord &plot = glo.itemPlotFont, &own = glo.graphLabelFont;
  labelFont = scaledFont(plot.name, keySize(plot.size, keys), plot.bold, plot.italic, scale);
  labelFont.underline = plot.underline;
  captionFont = scaledFont(own.name, own.size, own.bold, own.italic, scale);
  axisTitleFont = scaledFont(own.name, static_cast<int>((own.size > 0 ? own.size : 12) * 1.2), own.bold,
                             own.italic, scale);
  titleFont = scaledFont(glo.matrixTitleFont.name, glo.matrixTitleFont.size, glo.matrixTitleFont.bold,
                         glo.matrixTitleFont.italic, scale);
  keyWidth = textWidth(std::string("W") + kPairMarks[3], labelFont);
  keyHeight = lineHeight(labelFont);
  area = placePlotArea(formWidth, formHeight, glo.OptionScatterScale == kNumberedScale);
}

host::Element makeLabel(const std::string& caption, const host::SurfaceFont& font) {
  host::Element label;
  label.caption = caption;
  label.font = font;
  return label;
}

host::Element makeLine(double x1, double y1, double x2, double y2) {
  host::Element line;
  line.kind = host::Element::Kind::line;
  line.x1 = x1;
  line.y1 = y1;
  line.x2 = x2;
  line.y2 = y2;
  return line;
}

}  // namespace qrn
