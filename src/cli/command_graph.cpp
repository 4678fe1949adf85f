// graph: the average graph or the matrix graph as a picture, with the place of every element beside it.
#include <algorithm>

#include "charts/xy_vote_average_graph.h"
#include "cli/commands.h"
#include "cli/geometry.h"
#include "cli/workshop.h"
#include "core/glo.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/system.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn::cli {

namespace {

PlotRequest plotRequest(const std::vector<int>& pairs) {
  if (pairs.size() % 2 != 0 || pairs.size() > 8)
    throw UsageError("--pairs takes one to four pairs of a vertical and a horizontal assessment");
  PlotRequest request = kNoPairs;
  std::copy(pairs.begin(), pairs.end(), request.begin());
  return request;
}

void checkEnding(const std::string& file) {
  const std::size_t dot = file.rfind('.');
  const std::string ending = dot == std::string::npos ? "" : file.substr(dot);
  if (ending != ".png" && ending != ".jpg" && ending != ".svg")
    throw UsageError("--out takes a file that ends in .png, .jpg or .svg, not " + file);
}

}  // namespace

void runGraph(const GraphArguments& arguments, const CliHooks& hooks) {
  checkEnding(arguments.out);
  const PlotRequest request = plotRequest(arguments.pairs);
  Workshop workshop(arguments.deck, Access::read, hooks);
  workshop.loadExercise(arguments.slide);
  registerGraphForms();
  const host::Surface& surface =
      arguments.kind == "average"
          ? drawAverageGraph(arguments.assessment, arguments.widthPx, arguments.heightPx)
          : drawMatrixGraph(request, arguments.widthPx, arguments.heightPx);
  hooks.saveSurface(surface, arguments.out, arguments.widthPx, arguments.heightPx);
  if (!arguments.geometry.empty())
    host::host().files->write(arguments.geometry, geometryJson(surface));
}

}  // namespace qrn::cli
