#include "charts/chart_sheet.h"

#include <algorithm>

namespace qrn {

using host::Element;
using host::Layer;
using host::SurfaceFont;

double ChartSheet::px(double pixels) const {
  return pixels * kTwipsPerPixel * graphScale(surface.width, surface.height);
}

std::int32_t ChartSheet::coloured(std::int32_t own, std::int32_t themes) const {
  return own == kUntouched ? themes : readableColour(own, look);
}

int ChartSheet::itemOf(int point) const {
  const auto& points = chart.SERIES(0).points;
  return point < static_cast<int>(points.size()) ? points[static_cast<std::size_t>(point)].item
                                                 : host::kNoItem;
}

std::string ChartSheet::slotText(int point) const {
  const auto& items = chart.Axis.Bottom.Labels.Item;
  return point >= 0 && point < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(point)] : "";
}

int ChartSheet::endOfPage(const ChartSeries& series) const {
  return std::min(geometry.first + geometry.shown, static_cast<int>(series.points.size()));
}

Element& ChartSheet::label(const char* array, int index, const std::string& caption, const SurfaceFont& font,
                           Layer layer) {
  Element element;
  element.caption = caption;
  element.font = font;
  return surface.add(layer, array, index, std::move(element));
}

Element& ChartSheet::line(Layer layer, const char* array, int index) {
  Element element;
  element.kind = Element::Kind::line;
  return surface.add(layer, array, index, std::move(element));
}

void place(Element& element, double left, double top, double width, double height) {
  element.left = left;
  element.top = top;
  element.width = width;
  element.height = height;
}

void ends(Element& line, double x1, double y1, double x2, double y2) {
  line.x1 = x1;
  line.y1 = y1;
  line.x2 = x2;
  line.y2 = y2;
}

}  // namespace qrn
