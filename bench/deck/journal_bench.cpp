// What one vote costs the journal: its record, and the progress that is stored behind it. The progress is one
// text with a line per item; `ratio` is what it adds over the bytes of the vote record itself, `plain_ratio`
// what the text written out whole would.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "adapters/deck/deck.h"
#include "core/glo.h"
#include "deck/bench_deck.h"
#include "stopwatch.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "support/test_host.h"

namespace {

using qrn::glo;

constexpr int kKeypads = 100;

void prepare(qrn::deck::Deck& deck, int items) {
  glo = qrn::Glo();
  glo.oPresentation = &deck;
  glo.oVoteSlide = &deck.Slides(1);
  glo.maxKeypads = kKeypads;
  glo.liveVotes.assign(kKeypads + 1, "7");
  glo.voteAssessmentNumber = glo.currentAssessment = 1;
  glo.assessmentInfo[0].active = true;
  glo.risks.assign(static_cast<std::size_t>(items) + 1, qrn::RiskRecord());
  for (int i = 0; i < items; ++i) glo.risks[static_cast<std::size_t>(i)].sortKey = i;
}

void VoteAndProgress(benchmark::State& state) {
  qrn::test::TestHost world;
  const qrn::bench::BenchDeck bench(1, 0);
  const std::string journal = bench.file() + ".journal";
  const auto deck = qrn::deck::Deck::open(bench.file());
  const int items = static_cast<int>(state.range(0));
  prepare(*deck, items);
  qrn::writeLogBefore(0, 1);
  std::uintmax_t records = 0, progress = 0, whole = 0, votes = 0;
  for (auto _ : state) {
    glo.currentItem = glo.currentRisk = static_cast<int>(votes++);
    const std::uintmax_t before = std::filesystem::file_size(journal);
    qrn::SaveCVotes();
    const std::uintmax_t between = std::filesystem::file_size(journal);
    qrn::writeLog();
    records += between - before;
    progress += std::filesystem::file_size(journal) - between;
    whole += qrn::qrnMatrixLog(false).size();
  }
  const auto perVote = [&](std::uintmax_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(votes);
  };
  state.counters["record_bytes"] = perVote(records);
  state.counters["progress_bytes"] = perVote(progress);
  state.counters["bytes_per_vote"] = perVote(records + progress);
  state.counters["ratio"] = static_cast<double>(progress) / static_cast<double>(records);
  state.counters["plain_ratio"] = static_cast<double>(whole) / static_cast<double>(records);
  glo = qrn::Glo();
}
// Each item once.
BENCHMARK(VoteAndProgress)->ArgName("items")->Arg(100)->Iterations(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(VoteAndProgress)->ArgName("items")->Arg(400)->Iterations(400)->Unit(benchmark::kMicrosecond);

// Votes that are only in the journal, taken up when the deck is opened again. `ratio` is the time for that
// over the time that opening the same deck takes when they stand in it; a replay that copied what is there
// for each vote would let it grow with the number of votes.
void Replay(benchmark::State& state) {
  const qrn::bench::BenchDeck bench(1, 0);
  const std::string record = "25/11/2026,10:00:00," + std::string(kKeypads * 2, '7') + ",1C1\r\n";
  {
    const auto deck = qrn::deck::Deck::open(bench.file());
    for (int vote = 0; vote < state.range(0); ++vote) deck->Slides(1).tags().Append("QRNVOTES", record);
  }
  const std::string saved = bench.file() + ".saved.pptx";
  std::filesystem::copy_file(bench.file(), saved);
  std::filesystem::copy_file(bench.file() + ".journal", saved + ".journal");
  qrn::deck::Deck::open(saved)->Save();
  const auto votesOf = [](const std::string& file) {
    return qrn::deck::Deck::open(file)->Slides(1).tags().Item("QRNVOTES").size();
  };
  double replay = 0, plain = 0;
  for (auto _ : state) {
    replay += qrn::bench::seconds([&] { benchmark::DoNotOptimize(votesOf(bench.file())); });
    plain += qrn::bench::seconds([&] { benchmark::DoNotOptimize(votesOf(saved)); });
  }
  state.counters["ratio"] = replay / plain;
}
BENCHMARK(Replay)->ArgName("votes")->Arg(500)->Arg(2000)->Arg(8000)->Unit(benchmark::kMillisecond);

// The text of the progress alone.
void ProgressText(benchmark::State& state) {
  qrn::test::TestHost world;
  glo = qrn::Glo();
  glo.risks.assign(static_cast<std::size_t>(state.range(0)) + 1, qrn::RiskRecord());
  glo.currentAssessment = 1;
  for (auto _ : state) benchmark::DoNotOptimize(qrn::qrnMatrixLog(false).size());
}
BENCHMARK(ProgressText)->ArgName("items")->Arg(100)->Arg(400)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
