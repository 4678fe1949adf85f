// The small lines around a graph: which filter is in force, and what stands at the foot.
#pragma once

#include <string>

#include "charts/look/graph_look.h"
#include "host/surface.h"

namespace qrn {

inline constexpr double kFootMargin = 240;  // twips from the foot line to the bottom edge

struct GraphNotes {
  host::Element filter;  // "lbl_filter", invisible when no filter applies
  host::Element foot;    // "LabelCategory", invisible when it has no text
};

// Places both on a surface of that size so that they leave each other and a centred title of `titleWidth`
// alone; what does not fit is cut by "..." and stands whole in the tool tip. `margin` is the distance of the
// foot from the sides, `footSize` its type in points where that is larger.
GraphNotes makeNotes(const host::Surface& surface, const GraphLook& look, const host::SurfaceFont& font,
                     double titleWidth, const std::string& footText, double margin, bool graphFilter,
                     double footSize = 0);
void addNotes(GraphNotes notes, host::Surface& surface);

}  // namespace qrn
