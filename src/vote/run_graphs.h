// The graphs that the running order shows while an exercise is voted. They are forms above this room, asked
// for by name; a graph that is not there is passed over. Each call returns when the graph has gone.
#pragma once

namespace qrn {

void showAverageGraph(int assessment);  // 1 to 9; 10 and 11 are the multi-plots
void showMatrixGraph();

void showEndOfAssessmentGraphs(int assessment);  // 1 to 9
void showEndOfItemGraphs();
void showEndOfProcessGraphs();

}  // namespace qrn
