#include "vote/run_graphs.h"

#include <algorithm>
#include <string>

#include "analysis/multiplot.h"
#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"

namespace qrn {

namespace {

bool scalar(int assessment) {
  return glo.assessment(assessment).voteType == scaleKind::scalar;
}

}  // namespace

void showAverageGraph(int assessment) {
  host::FormRegistry& forms = *host::host().forms;
  if (!forms.isDefined(formName::averageGraph) || glo.closing)
    return;
  if (auto* graph = dynamic_cast<xyVoteAverageGraph*>(&forms.load(formName::averageGraph)))
    graph->drawGraph(assessment, 0);
  forms.showModal(formName::averageGraph);
  forms.unload(formName::averageGraph);
}

void showMatrixGraph() {
  host::FormRegistry& forms = *host::host().forms;
  if (!forms.isDefined(formName::matrixGraph) || glo.closing)
    return;
  forms.showModal(formName::matrixGraph);
  forms.unload(formName::matrixGraph);
}

void showEndOfAssessmentGraphs(int assessment) {
  const std::size_t a = static_cast<std::size_t>(assessment - 1);
  if (glo.runByShowAverages[a] != 0 && scalar(assessment))
    showAverageGraph(assessment);
  if (assessment > 1 && glo.runningOrderAverageGraph[a] != 0 && glo.scoredCount() > 1)
    showMatrixGraph();
}

void showEndOfItemGraphs() {
  for (int a = 1; a <= kAssessments; ++a)
    if (glo.isScored(a) && glo.runByShowAverages[static_cast<std::size_t>(a - 1)] != 0)
      showAverageGraph(a);
  if (glo.runByShowScatter != 0 && glo.scoredCount() > 1)
    showMatrixGraph();
}

void showEndOfProcessGraphs() {
  if (glo.runByShowAveragesEnd != 0)
    for (int a = 1; a <= kAssessments; ++a)
      if (glo.isScored(a))
        showAverageGraph(a);
  for (const int plot : {0, 1})
    if (glo.runByShowAverages[9] != 0 && multiPlotSetUp(plot))
      showAverageGraph(10 + plot);
  if ((glo.runByShowAveragesEnd != 0 || glo.runningOrderAverageGraph[0] != 0) && glo.scoredCount() > 1)
    showMatrixGraph();
}

}  // namespace qrn
