// Opening the vote records of an exercise and scoring all of it, against one plain pass over the same bytes
// that does nothing but add up the digits. Ratios are best against best, in the same run:
//   "open"   taking the text and indexing it
//   "score"  every average, deviation and diversity
//   "both"   the two together; 3 or less is the aim
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <random>
#include <string>

#include "core/glo.h"
#include "store/scores/all_scores.h"

namespace {

using qrn::glo;

constexpr int kScalePoints = 5;

std::string recordLine(std::mt19937& random, int sortKey, int assessment, int keypads) {
  std::string line = "14/03/2026,09:00:00,";
  for (int k = 0; k < keypads; ++k) {
    const unsigned long draw = random() % 20;
    line += draw == 0   ? 'X'
            : draw == 1 ? '-'
                        : static_cast<char>('1' + static_cast<int>(draw % kScalePoints));
    line += ';';
  }
  return line + "," + std::to_string(sortKey) + "C" + std::to_string(assessment) + "\r\n";
}

std::string makeExercise(int items, int keypads) {
  static_cast<qrn::Exercise&>(glo) = qrn::Exercise();
  std::mt19937 random(7);
  std::string text;
  glo.risks.assign(static_cast<std::size_t>(items) + 1, qrn::RiskRecord());
  for (int i = 0; i < items; ++i) glo.risks[static_cast<std::size_t>(i)].sortKey = i + 1;
  for (std::size_t a = 0; a < qrn::kAssessments; ++a) {
    glo.assessmentInfo[a].active = true;
    glo.scaleLabels[a].assign(kScalePoints + 1, "");
    for (int i = 0; i < items; ++i) text += recordLine(random, i + 1, static_cast<int>(a) + 1, keypads);
  }
  return text;
}

// Not inlined and not hinted at: what anyone would write.
std::uint64_t sumOfDigits(const std::string& text) {
  std::uint64_t sum = 0;
  for (const char c : text)
    if (c >= '0' && c <= '9')
      sum += static_cast<std::uint64_t>(c - '0');
  return sum;
}

template <class Body>
double seconds(Body body) {
  const auto start = std::chrono::steady_clock::now();
  body();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void openAndScore(benchmark::State& state) {
  const std::string text = makeExercise(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  glo.postalRecords.assign("");
  double open = 1e9, score = 1e9, both = 1e9, plain = 1e9;
  for (auto _ : state) {
    std::string copy = text;
    glo.voteRecords.forget();
    const double opened = seconds([&] { glo.voteRecords.assign(std::move(copy)); });
    const double scored = seconds([] { qrn::GetAllScores(); });
    plain = std::min(plain, seconds([&] { benchmark::DoNotOptimize(sumOfDigits(text)); }));
    open = std::min(open, opened);
    score = std::min(score, scored);
    both = std::min(both, opened + scored);
    state.SetIterationTime(opened + scored);
  }
  if (glo.risks[0].average[0] <= 1)
    state.SkipWithError("the votes have not been scored");
  const double tokens = static_cast<double>(state.range(0) * qrn::kAssessments * state.range(1));
  state.counters["open"] = open / plain;
  state.counters["score"] = score / plain;
  state.counters["both"] = both / plain;
  state.counters["plain_ns_per_byte"] = plain * 1e9 / static_cast<double>(text.size());
  state.counters["ns_per_vote"] = both * 1e9 / tokens;
}

void sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"items", "keypads"})->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);
  for (const int keypads : {650, 10000})
    for (const int items : {125, 500, 2000}) bench->Args({items, keypads});
}

BENCHMARK(openAndScore)->Apply(sizes);

}  // namespace

BENCHMARK_MAIN();
