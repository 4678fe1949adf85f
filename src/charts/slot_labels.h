// How the labels below standing bars are set: whole where that fits, else their identifiers alone, with the
// whole texts in a legend below when there is room.
#pragma once

#include <string>
#include <vector>

#include "charts/look/graph_look.h"
#include "charts/tchart.h"
#include "host/surface.h"

namespace qrn {

inline constexpr double kSmallestChartType = 8;  // points at 1024x768

struct SlotRoom {
  double slot = 0;          // width of one bar's place, twips
  double legendWidth = 0;   // of all columns together
  double legendHeight = 0;  // at most; 0 for no legend
  double scale = 1;         // of type and distances, 1 at 1024x768
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

SlotLabels setSlotLabels(const std::vector<std::string>& texts, const ChartLabels& labels,
                         const host::SurfaceFont& font, const SlotRoom& room);

}  // namespace qrn
