// The matrix graph at 1920x1080 with four pairs, shadows and lines: laid out, painted, and repainted after
// keys and while a label is dragged. Milliseconds, best of some runs; ratios in the same run:
//   "growth"    a full redraw (layout and paint) of 800 items against 200; linear is about 4
//   "paint"     all elements drawn by plain painter code against the same elements drawn by the program
//   "zoom"      the plain drawing against showing one item alone; "show_all" against all items again
//   "drag"      the plain drawing against one step of a dragged label
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cmath>
#include <random>
#include <string>

#include "adapters/qt/text_measure.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "core/model.h"
#include "graphs/plain_painter.h"
#include "matrixgraph/xy_vote_graph.h"
#include "render/picture_store.h"
#include "render/surface_canvas.h"
#include "stopwatch.h"
#include "support/test_host.h"

namespace {

using qrn::glo;
using qrn::bench::bestSeconds;

constexpr qrn::PlotRequest kFourPairs{1, 2, 3, 4, 5, 6, 7, 8};
constexpr int kKeypads = 100, kRuns = 9, kFew = 200, kTold = 500, kMany = 800;
constexpr QSize kScreen(1920, 1080);

// Items spread over the whole plot and move by about a point from pair to pair.
std::string votes(std::mt19937& random, double mean) {
  std::normal_distribution<double> spread(mean, 0.8);
  std::string text;
  for (int k = 0; k < kKeypads; ++k) {
    const double vote = std::fmin(5, std::fmax(1, std::round(spread(random))));
    text += std::to_string(static_cast<int>(vote)) + ";";
  }
  return text;
}

void makeExercise(int items) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> start(1, 5), move(-1, 1);
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
    double mean[2] = {start(random), start(random)};
    for (int a = 1; a <= 8; ++a) {
      records += "14/03/2026,09:00:00," + votes(random, mean[a % 2]) + "," + std::to_string(i) + "C" +
                 std::to_string(a) + "\r\n";
      mean[a % 2] += move(random);
    }
  }
  for (std::size_t a = 0; a < 8; ++a) {
    glo.scaleLabels[a] = {"very low", "low", "medium", "high", "very high", ""};
    glo.assessments[a].scalePointCount = 5;
    glo.assessmentInfo[a].active = true;
  }
  glo.voteRecords.assign(std::move(records));
}

class Graph {
 public:
  explicit Graph(int items) {
    makeExercise(items);
    redraw();
  }
  void layOut() {
    benchmark::DoNotOptimize(&qrn::drawMatrixGraph(kFourPairs, kScreen.width(), kScreen.height()));
  }
  void paint() { benchmark::DoNotOptimize(canvas.update(form().surface(), kScreen)); }
  void redraw() {
    layOut();
    canvas = {};
    paint();
  }
  qrn::xyVoteGraph& form() { return qrn::host::host().forms->as<qrn::xyVoteGraph>("xyVoteGraph"); }

  // Best time of `change(run)` and its repaint; `back(run)` and its repaint stand outside of it. No two runs
  // that follow each other may come to the same picture, which may still be kept.
  template <class Change, class Back>
  double repaint(Change change, Back back) {
    double best = 1e9;
    for (int run = 0; run < kRuns; ++run) {
      best = std::min(best, qrn::bench::seconds([&] {
                        change(run);
                        paint();
                      }));
      back(run);
      paint();
    }
    return best;
  }

  qrn::render::SurfaceCanvas canvas;
};

double dragStep(Graph& graph) {
  qrn::xyVoteGraph& form = graph.form();
  const qrn::host::Element& label = *form.surface().find("labelRiskRound2", kTold / 2);
  double x = label.left + label.width / 2;
  const double y = label.top + label.height / 2;
  form.Form_MouseDown(qrn::host::mouse::left, x, y);
  const double best = graph.repaint([&](int) { form.Form_MouseMove(x += 90, y + 600); }, [](int) {});
  form.Form_MouseUp(x, y);
  return best;
}

double fullRedraw(int items) {
  Graph graph(items);
  return bestSeconds(kRuns, [&] { graph.redraw(); });
}

void BM_MatrixGraph(benchmark::State& state) {
  qrn::test::TestHost world;
  qrn::qt::QtTextMeasure measure;
  qrn::host::host().textMeasure = &measure;
  qrn::registerGraphForms();
  for (auto _ : state) {
    auto& counters = state.counters;
    const auto told = [&](const char* name, double seconds) { counters[name] = seconds * 1000; };
    Graph graph(kTold);
    qrn::xyVoteGraph& form = graph.form();
    qrn::bench::PlainPainter plain(kScreen);
    const double byHand = bestSeconds(kRuns, [&] { plain.paint(form.surface()); });
    qrn::render::pictureStore() = {};
    told("first_ms", qrn::bench::seconds([&] { graph.redraw(); }));
    const double redraw = bestSeconds(kRuns, [&] { graph.redraw(); });
    const double paint = bestSeconds(kRuns, [&] {
      graph.canvas = {};
      graph.paint();
    });
    const auto all = [&](int) { form.menuHideShowAllPlots(); };
    const auto one = [&](int run) {
      form.ShowSingleItem(form.model().plotted[static_cast<std::size_t>(run)].risk);
    };
    const auto pairOf = [&](int run) { form.menuHideShowRound(run % 3 + 2); };
    const double zoom = graph.repaint(one, all);
    const double showAll = graph.repaint(all, one);
    all(0);
    const double pair = graph.repaint(pairOf, pairOf);
    const double lines = graph.repaint([&](int) { form.menuPairLines(); },
                                       [&](int run) {
                                         form.menuPairLines();
                                         pairOf(run);
                                         graph.paint();
                                         pairOf(run);
                                       });
    const double drag = dragStep(graph);
    told("redraw_ms", redraw);
    told("layout_ms", bestSeconds(kRuns, [&] { graph.layOut(); }));
    told("paint_ms", paint);
    told("plain_ms", byHand);
    told("zoom_ms", zoom);
    told("show_all_ms", showAll);
    told("pair_ms", pair);
    told("lines_ms", lines);
    told("drag_ms", drag);
    counters["paint"] = byHand / paint;
    counters["zoom"] = byHand / zoom;
    counters["show_all"] = byHand / showAll;
    counters["drag"] = byHand / drag;
    counters["growth"] = fullRedraw(kMany) / fullRedraw(kFew);
  }
}
BENCHMARK(BM_MatrixGraph)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
