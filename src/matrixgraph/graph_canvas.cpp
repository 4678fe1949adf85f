#include "matrixgraph/graph_canvas.h"

#include <algorithm>

#include "core/glo.h"

namespace qrn {

namespace {

constexpr int kNumberedScale = 2;  // glo.OptionScatterScale
constexpr int kFewKeys = 40;       // more are set in the smallest size
constexpr double kDisc = 1.4;      // of the type's size: the disc around a key
constexpr double kUntouchedSize = 12, kUntouchedTitle = 18;

}  // namespace

void GraphCanvas::begin(double formWidth, double formHeight, int keys) {
  surface.width = formWidth;
  surface.height = formHeight;
  setGraphBackground(surface, glo.matrixBackgroundFlag ? glo.matrixBackgroundFile : "");
  look = chooseLook(surface);
  addPanel(surface, look);
  scale = graphScale(formWidth, formHeight);
  const auto font = [&](const FontRecord& own, double untouched, look::Size size, bool bold) {
    return themedFont(own, untouched, size, formHeight, bold);
  };
  const look::Size keySize = keys <= kFewKeys ? look::Size::label : look::Size::floor;
  labelFont = font(glo.itemPlotFont, kUntouchedSize, keySize, glo.itemPlotFont.bold);
  captionFont = font(glo.graphLabelFont, kUntouchedSize, look::Size::floor, false);
  axisTitleFont = captionFont;
  axisTitleFont.size *= look::partOfHeight(look::Size::label) / look::partOfHeight(look::Size::floor);
  axisTitleFont.bold = true;
  titleFont = font(glo.matrixTitleFont, kUntouchedTitle, look::Size::word, true);
  keyWidth = textWidth(std::string("W") + kPairMarks[3], labelFont);
  keyHeight = std::max(keyWidth, kDisc * labelFont.size * kTwipsPerPoint);
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
