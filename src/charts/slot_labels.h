// How the labels below standing bars are set: whole where that fits, else their identifiers alone, with the
// whole texts in a legend below when there is room.
#pragma once

#include <string>
#include <vector>

#include "charts/look/graph_look.h"
#include "charts/tchart.h"
#include "host/surface.h"

namespace qrn {

struct SlotRoom {
  double slot = 0;                // width of one bar's place, twips
  double legendWidth = 0;         // of all columns together
  double legendHeight = 0;        // at most; 0 for no legend
  double pixel = kTwipsPerPixel;  // at 1024x768, twips
  double smallest = 8;            // type, points
};

struct SlotLabels {
  std::vector<std::string> captions;  // one for each slot, broken into lines
  host::SurfaceFont font;
  int every = 1;     // 2: every second caption is shown ...
  double width = 0;  // of the room of one caption, twips
  double height = 0;
  struct Legend {
    std::vector<std::string> rows;  // one for each slot, "" for none; empty without a legend
    host::SurfaceFont font;
    int perColumn = 0;
    double columnWidth = 0, height = 0;
  } legend;
};

// Whether each text stands whole below its bar, in the font or a little smaller.
bool textsFitBelow(const std::vector<std::string>& texts, const host::SurfaceFont& font, double slot);

SlotLabels setSlotLabels(const std::vector<std::string>& texts, const ChartLabels& labels,
                         const host::SurfaceFont& font, const SlotRoom& room);

}  // namespace qrn
