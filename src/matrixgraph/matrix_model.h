// The matrix graph as a function: what is asked for and the exercise in `glo` give surface, geometry and the
// items on it.
#pragma once

#include <string>
#include <vector>

#include "matrixgraph/axis_plan.h"
#include "matrixgraph/graph_canvas.h"
#include "matrixgraph/graph_parts.h"
#include "matrixgraph/key_cover.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

struct MatrixRequest {
  PlotRequest pairs = kNoPairs;
  double width = 0, height = 0;  // twips
  bool skew = false;             // every scale point owns a cell
  bool diversity = false;        // both axes run 0 to 100
  bool graphFilter = false;      // the graph is narrowed by its own filter form
};

struct MatrixModel {
  GraphCanvas canvas;  // surface, plot area, fonts
  AxisPlan across, up;
  ScaleSizes scaleSizes{1, 1};  // of the first pair, 1 at least
  int withoutPoints = 0;  // an assessment without voting points; then the graph ends with its axis lines
  std::vector<PlottedItem> plotted;  // items that stand in some pair, in list order
  std::array<PairSpans, kPairs> spans{};
  std::array<std::int32_t, kPairs> discs{};  // what the keys of each pair stand on
  int lastPair = 0;                          // whose top items stand out
  std::string dataMessage;                   // kDataMessage and a line for each item without votes

  // Shows what the view lets through, and keys as they look in it.
  void show(const GraphView& view);
  void setTitle(const std::string& text);
  // How the item shown alone looks while its key grows; everything else stays.
  void grow(const GraphView& view);
  // Scores of a pair at a place, `x` across and `y` upwards, beyond the scales too; and the way back.
  PlotPoint scoresAt(int pair, PlotPoint place) const;
  PlotPoint placeOf(int pair, PlotPoint scores) const;

 private:
  // An element that stands out, and how it looks when it does not.
  struct Dressed {
    host::Element* element;
    host::Element plain;
  };
  void dress(const GraphView& view);
  void undress();
  void tellBehind(const std::vector<KeyInFront>& fronts);

  std::vector<Dressed> dressed_;
};

// Scores and multi-plots must have been computed, and every item must have its identifier.
MatrixModel plotMatrix(const MatrixRequest& request);

}  // namespace qrn
