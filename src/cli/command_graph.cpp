// graph: the average graph or the matrix graph as a picture, with the place of every element beside it.
#include <algorithm>
#include <iostream>
#include <set>
#include <string>

#include "analysis/multiplot.h"
#include "base/errors.h"
#include "charts/xy_vote_average_graph.h"
#include "cli/commands.h"
#include "cli/geometry.h"
#include "cli/workshop.h"
#include "core/common.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/system.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn::cli {

namespace {

constexpr double kTwipsPerPixel = 15;

PlotRequest plotRequest(const std::vector<int>& pairs) {
  if (pairs.size() % 2 != 0 || pairs.size() > 8)
    throw UsageError("--pairs takes one to four pairs of a vertical and a horizontal assessment");
  PlotRequest request = kNoPairs;
  std::copy(pairs.begin(), pairs.end(), request.begin());
  return request;
}

void checkEnding(const std::string& file) {
  const std::size_t dot = file.rfind('.');
  std::string ending = dot == std::string::npos ? "" : file.substr(dot);
  for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  if (ending != ".png" && ending != ".jpg" && ending != ".jpeg" && ending != ".svg")
    throw UsageError("--out takes a file that ends in .png, .jpg or .svg, not " + file);
}

// A multi-plot has no values before it is made of something.
void checkMultiPlots(const GraphArguments& arguments) {
  const std::vector<int> shown =
      arguments.kind == "average" ? std::vector<int>{arguments.assessment} : arguments.pairs;
  for (const int value : shown)
    if (value >= kMultiPlotSlot && value <= kSlots && !multiPlotSetUp(value - kMultiPlotSlot))
      throw HostError(Fault::badData, 5,
                      "MultiPlot " + std::to_string(value - kMultiPlotSlot + 1) +
                          " is not set up: there is nothing to draw");
}

bool standsInside(const host::Element& element, const host::Surface& surface) {
  return element.visible && element.left < surface.width && element.right() > 0 &&
         element.top < surface.height && element.bottom() > 0;
}

// Why no bar and no item stands inside the picture; "" when one does.
std::string whyEmpty(const host::Surface& surface) {
  std::set<int> outside;
  for (const host::ElementArray& array : surface.arrays()) {
    if (array.name() != "bars" &&
        !(array.name().starts_with("labelRisk") && !array.name().ends_with("Shadow")))
      continue;
    for (const host::Element& element : array) {
      if (standsInside(element, surface))
        return "";
      if (element.item != host::kNoItem)
        outside.insert(element.item);
    }
  }
  if (outside.empty())
    return "No item has a score to show; the graph is empty";
  return std::to_string(outside.size()) + (outside.size() == 1 ? " item is" : " items are") +
         " off the scale; the graph is empty";
}

// The picture and its geometry, or neither.
void saveGraph(const host::Surface& surface, const GraphArguments& arguments, const CliHooks& hooks) {
  host::Files& files = *host::host().files;
  if (!arguments.geometry.empty())
    files.write(arguments.geometry, geometryJson(surface));
  try {
    hooks.saveSurface(surface, arguments.out, arguments.widthPx, arguments.heightPx);
  } catch (...) {
    if (!arguments.geometry.empty() && files.fileExists(arguments.geometry))
      files.Kill(arguments.geometry);
    throw;
  }
}

}  // namespace

void runGraph(const GraphArguments& arguments, const CliHooks& hooks) {
  checkEnding(arguments.out);
  if (arguments.geometry == arguments.out)
    throw UsageError("--out and --geometry take two files");
  const PlotRequest request = plotRequest(arguments.pairs);
  setScreenDimensions(arguments.widthPx * kTwipsPerPixel, arguments.heightPx * kTwipsPerPixel);
  Workshop workshop(arguments, Access::read, hooks);
  workshop.loadExercise(arguments.slide);
  checkMultiPlots(arguments);
  registerGraphForms();
  const host::Surface& surface =
      arguments.kind == "average"
          ? drawAverageGraph(arguments.assessment, arguments.widthPx, arguments.heightPx)
          : drawMatrixGraph(request, arguments.widthPx, arguments.heightPx);
  saveGraph(surface, arguments, hooks);
  if (const std::string why = whyEmpty(surface); !why.empty())
    std::cerr << "quorin-matrix: " << why << "\n";
}

}  // namespace qrn::cli
