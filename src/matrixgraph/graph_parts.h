// What the matrix graph is made of, and what of it is seen.
#pragma once

#include <array>

#include "host/surface.h"
#include "matrixgraph/plot_area.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

// A dot stands for a key that another one covers; a ghost for a key while one item is shown alone.
enum class Part { key, shadow, line, blob, dot, ghost };

// A control array with one element for each plotted item of its pair. A line and its blob lead to the pair
// from the one before.
struct GraphArray {
  const char* name;
  host::Layer layer;
  Part part;
  int pair;  // from 0
};

inline constexpr std::array<GraphArray, 22> kGraphArrays{{
    {"labelRisk", host::Layer::keys, Part::key, 0},
    {"labelRiskRound2", host::Layer::keys, Part::key, 1},
    {"labelRiskRound3", host::Layer::keys, Part::key, 2},
    {"labelRiskRound4", host::Layer::keys, Part::key, 3},
    {"labelRiskShadow", host::Layer::shadows, Part::shadow, 0},
    {"labelRiskRound2Shadow", host::Layer::shadows, Part::shadow, 1},
    {"labelRiskRound3Shadow", host::Layer::shadows, Part::shadow, 2},
    {"labelRiskRound4Shadow", host::Layer::shadows, Part::shadow, 3},
    {"lineRound1ToRound2", host::Layer::lines, Part::line, 1},
    {"lineRound2ToRound3", host::Layer::lines, Part::line, 2},
    {"lineRound3ToRound4", host::Layer::lines, Part::line, 3},
    {"endOfLine1to2Blob", host::Layer::blobs, Part::blob, 1},
    {"endOfLine2to3Blob", host::Layer::blobs, Part::blob, 2},
    {"endOfLine3to4Blob", host::Layer::blobs, Part::blob, 3},
    {"dot", host::Layer::shadows, Part::dot, 0},
    {"dotRound2", host::Layer::shadows, Part::dot, 1},
    {"dotRound3", host::Layer::shadows, Part::dot, 2},
    {"dotRound4", host::Layer::shadows, Part::dot, 3},
    {"ghost", host::Layer::ghosts, Part::ghost, 0},
    {"ghostRound2", host::Layer::ghosts, Part::ghost, 1},
    {"ghostRound3", host::Layer::ghosts, Part::ghost, 2},
    {"ghostRound4", host::Layer::ghosts, Part::ghost, 3},
}};

const GraphArray* graphArray(const std::string& name);  // null for arrays that hold no items
const GraphArray& graphArray(Part part, int pair);
host::ElementArray& arrayOf(host::Surface& surface, Part part, int pair);  // made when it is not there yet

// The scales of a pair, upwards and across.
struct PairSpans {
  ScaleSpan up, across;
};

// One item on the graph, by pair.
struct PlottedItem {
  int risk = -1;  // index into glo.risks
  int id = host::kNoItem;
  bool top = false;             // among the highest on both scales
  std::array<int, kPairs> n{};  // index in the arrays of the pair; 0: not plotted there
  std::array<PlotPoint, kPairs> centre{};
  std::array<bool, kPairs> onScale{};
  std::array<bool, kPairs> joined{};   // a line runs here from the pair before
  std::array<bool, kPairs> covered{};  // another key stands where its own would
};

inline constexpr double kGrown = 1.4;  // the key of an item shown alone, against the others

// Everything that decides what is seen of the items.
struct GraphView {
  std::array<bool, kPairs> roundVisible{};
  int zoomedItem = host::kNoItem;    // ID of the item shown alone
  int selectedItem = host::kNoItem;  // ID of the item with a ring
  double growth = kGrown;            // of the key of the item shown alone
  bool pairLines = true;
  bool covering = true;  // a key that another one covers becomes a dot
  bool shadows = false;  // of keys; the discs that they stand on make them needless
};

// Whether the element of an item in that array is seen.
bool isShown(const GraphArray& array, const PlottedItem& item, const GraphView& view);

}  // namespace qrn
