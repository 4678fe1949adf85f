// Opening the vote records of an exercise and scoring all of it, against plain passes over the same bytes,
// best against best in the same run:
//   "open"   taking the text and indexing it, over finding the lines and the key behind each one's last comma
//   "score"  every average, deviation and diversity, over adding up the digits
//   "both"   the two together, over adding up the digits; 3 or less is the aim
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "core/glo.h"
#include "made_up_votes.h"
#include "stopwatch.h"
#include "store/scores/all_scores.h"

namespace {

using qrn::glo;
using qrn::bench::seconds;

std::string makeExercise(int items, int keypads) {
  static_cast<qrn::Exercise&>(glo) = qrn::Exercise();
  glo.risks.assign(static_cast<std::size_t>(items) + 1, qrn::RiskRecord());
  for (int i = 0; i < items; ++i) glo.risks[static_cast<std::size_t>(i)].sortKey = i + 1;
  for (std::size_t a = 0; a < qrn::kAssessments; ++a) {
    glo.assessmentInfo[a].active = true;
    glo.scaleLabels[a].assign(qrn::bench::kScalePoints + 1, "");
  }
  return qrn::bench::voteRecords(items, qrn::kAssessments, keypads);
}

// Written so that the compiler takes many bytes at a time.
std::uint32_t sumOfDigits(const std::string& text) {
  std::uint32_t sum = 0;
  for (const char c : text) {
    const auto digit = static_cast<std::uint8_t>(c - '0');
    sum += digit < 10 ? digit : std::uint8_t{0};
  }
  return sum;
}

std::size_t findKeys(const std::string& text) {
  std::size_t sum = 0;
  const char* const end = text.data() + text.size();
  for (const char* line = text.data(); line < end;) {
    const auto* next =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    const auto* comma = static_cast<const char*>(::memrchr(line, ',', static_cast<std::size_t>(next - line)));
    sum += static_cast<std::size_t>(next - comma);
    line = next + 1;
  }
  return sum;
}

void openAndScore(benchmark::State& state) {
  const std::string text = makeExercise(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  glo.postalRecords.assign("");
  double open = 1e9, score = 1e9, both = 1e9, sum = 1e9, keys = 1e9;
  for (auto _ : state) {
    std::string copy = text;
    glo.voteRecords.forget();
    const double opened = seconds([&] { glo.voteRecords.assign(std::move(copy)); });
    const double scored = seconds([] { qrn::GetAllScores(); });
    sum = std::min(sum, seconds([&] { benchmark::DoNotOptimize(sumOfDigits(text)); }));
    keys = std::min(keys, seconds([&] { benchmark::DoNotOptimize(findKeys(text)); }));
    open = std::min(open, opened);
    score = std::min(score, scored);
    both = std::min(both, opened + scored);
    state.SetIterationTime(opened + scored);
  }
  if (glo.risks[0].average[0] <= 1)
    state.SkipWithError("the votes have not been scored");
  const double tokens = static_cast<double>(state.range(0) * qrn::kAssessments * state.range(1));
  state.counters["open"] = open / keys;
  state.counters["score"] = score / sum;
  state.counters["both"] = both / sum;
  state.counters["sum_ns_per_byte"] = sum * 1e9 / static_cast<double>(text.size());
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
