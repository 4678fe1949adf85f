// A whole redraw of the matrix graph with four pairs, and the toggles that must not redraw. Ratios, best
// against best in the same run:
//   "growth"  800 items against 200; a redraw that stays linear gives about 4
//   "zoom"    a redraw against showing one item alone and all again
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "core/glo.h"
#include "core/item_label.h"
#include "core/model.h"
#include "matrixgraph/xy_vote_graph.h"
#include "support/test_host.h"

namespace {

using qrn::glo;

constexpr qrn::PlotRequest kFourPairs{1, 2, 3, 4, 5, 6, 7, 8};
constexpr int kKeypads = 100, kRuns = 5, kFew = 200, kMany = 800;

void makeExercise(int items) {
  glo = qrn::Glo{};
  qrn::initXYVote();
  glo.postalRecords.assign("");
  glo.risks.assign(static_cast<std::size_t>(items) + 1, qrn::RiskRecord{});
  std::string records;
  for (int i = 0; i < items; ++i) {
    qrn::RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
    risk.ID = risk.sortKey = i;
    risk.identifier = qrn::itemIdentifier(i);
    risk.text = "item " + std::to_string(i);
    risk.voting = true;
    risk.active.fill(true);
    for (int a = 1; a <= 8; ++a) {
      std::string votes;
      for (int k = 0; k < kKeypads; ++k) votes += std::to_string((i * 7 + a * 3 + k * k) % 5 + 1) + ";";
      records += "14/03/2026,09:00:00," + votes + "," + std::to_string(i) + "C" + std::to_string(a) + "\r\n";
    }
  }
  for (std::size_t a = 0; a < 8; ++a) {
    glo.scaleLabels[a] = {"1", "2", "3", "4", "5", ""};
    glo.assessments[a].scalePointCount = 5;
    glo.assessmentInfo[a].active = true;
  }
  glo.voteRecords.assign(std::move(records));
}

template <class Body>
double best(Body body) {
  double least = 1e9;
  for (int run = 0; run < kRuns; ++run) {
    const auto start = std::chrono::steady_clock::now();
    body();
    least = std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return least;
}

double redraw(int items) {
  makeExercise(items);
  return best([] { benchmark::DoNotOptimize(&qrn::drawMatrixGraph(kFourPairs, 1920, 1080)); });
}

void BM_MatrixGraph(benchmark::State& state) {
  qrn::test::TestHost world;
  qrn::registerGraphForms();
  for (auto _ : state) {
    const double few = redraw(kFew), many = redraw(kMany);
    auto& form = world.forms.as<qrn::xyVoteGraph>("xyVoteGraph");
    const double zoom = best([&] {
      form.ShowSingleItem(form.model().plotted.front().risk);
      form.menuHideShowAllPlots();
    });
    state.counters["redraw_ms"] = many * 1000;
    state.counters["growth"] = many / few;
    state.counters["zoom"] = many / zoom;
  }
}
BENCHMARK(BM_MatrixGraph)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
