#include "charts/graph_notes.h"

#include <algorithm>

#include "analysis/filter/filters.h"
#include "core/glo.h"

namespace qrn {

namespace {

constexpr double kFilterMargin = 240;  // twips from the edges
constexpr double kLeastSide = 0.1;     // of the width that a title leaves free on each side

void setText(host::Element& line, const std::string& text, double room, double height) {
  line.caption = cutToWidth(text, line.font, room);
  line.toolTip = text;
  line.width = textWidth(line.caption, line.font);
  line.height = height;
}

std::int32_t inkOf(std::int32_t own, const GraphLook& look) {
  return own == kUntouched ? look.theme.text : readableColour(own, look);
}

}  // namespace

GraphNotes makeNotes(const host::Surface& surface, const GraphLook& look, const host::SurfaceFont& font,
                     double titleWidth, const std::string& footText, double margin, bool graphFilter,
                     double footSize) {
  GraphNotes notes;
  const double width = surface.width, line = lineHeight(font);
  host::Element& filter = notes.filter;
  filter.font = font;
  const double side = std::max(width * kLeastSide, (width - titleWidth) / 2) - 2 * kFilterMargin;
  setText(filter, filterCaption(graphFilter), side, line);
  const FilterLine place = showFilter(0, 0, width, surface.height, filter.width, line, graphFilter);
  filter.visible = place.visible;
  filter.left = place.left;
  filter.top = place.top;
  filter.align = place.align;
  filter.colour = inkOf(place.colour, look);

  host::Element& foot = notes.foot;
  foot.font = font;
  foot.font.size = std::max(font.size, footSize);
  const bool filterBelow = filter.visible && filter.top > surface.height / 2;
  setText(foot, footText, width - 2 * margin - (filterBelow ? filter.width + margin : 0),
          lineHeight(foot.font));
  const bool onTheRight = filterBelow && filter.left < width / 2;
  foot.left = onTheRight ? width - margin - foot.width : margin;
  foot.align = onTheRight ? host::Align::right : host::Align::left;
  foot.top = surface.height - kFootMargin - foot.height;
  foot.visible = !footText.empty();
  foot.colour = inkOf(glo.runByGraphLabelColour, look);
  return notes;
}

void addNotes(GraphNotes notes, host::Surface& surface) {
  surface.add(host::Layer::titles, "lbl_filter", 0, std::move(notes.filter));
  surface.add(host::Layer::titles, "LabelCategory", 0, std::move(notes.foot));
}

}  // namespace qrn
