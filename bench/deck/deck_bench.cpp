// What storing one vote, opening and saving cost. `ratio` is time over the time of the best plain code for
// the same bytes on the same disk, told at each benchmark; it is taken in turns with ours.
//
//   deck_bench [--benchmark_filter=...]       TMPDIR chooses the disk
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <zip.h>
#include <zlib.h>

#include <filesystem>
#include <memory>
#include <pugixml.hpp>
#include <string>

#include "adapters/deck/deck.h"
#include "deck/bench_deck.h"
#include "made_up_votes.h"
#include "stopwatch.h"

namespace {

using qrn::bench::BenchDeck;
using qrn::bench::seconds;
using qrn::deck::Deck;

constexpr int kSlides = 200, kKeypads = 650;

void require(bool done) {
  if (!done)
    std::abort();
}

// One write and flush of the record.
void AppendVote(benchmark::State& state) {
  const BenchDeck bench(kSlides, state.range(0));
  const auto deck = Deck::open(bench.file());
  const int plain = ::open(bench.plainFile().c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  std::mt19937 random(1);
  const std::string record = qrn::bench::voteRecord(random, 1, 1, 100);
  qrn::host::Tags& tags = deck->Slides(1).tags();
  tags.Add("QRNVOTES", std::string(static_cast<std::size_t>(state.range(1)) << 20, 'x'));
  double ours = 0, theirs = 0;
  for (auto _ : state) {
    const double once = seconds([&] { tags.Append("QRNVOTES", record); });
    ours += once;
    state.SetIterationTime(once);
    theirs += seconds([&] {
      require(::write(plain, record.data(), record.size()) > 0);
      require(::fdatasync(plain) == 0);
    });
  }
  ::close(plain);
  state.counters["ratio"] = ours / theirs;
}
BENCHMARK(AppendVote)
    ->ArgNames({"media_MB", "votes_MB"})
    ->Args({1, 0})
    ->Args({100, 0})
    ->Args({100, 5})
    ->UseManualTime()
    ->Iterations(2000)
    ->Unit(benchmark::kMicrosecond);

std::string readPart(zip_t* zip, const char* name) {
  zip_stat_t info;
  require(zip_stat(zip, name, 0, &info) == 0);
  std::string text(info.size, '\0');
  zip_file_t* stream = zip_fopen(zip, name, 0);
  require(zip_fread(stream, text.data(), text.size()) == static_cast<zip_int64_t>(text.size()));
  zip_fclose(stream);
  return text;
}

// The directory, and the two parts that list the slides, unpacked and parsed.
int countPlainly(const std::string& file) {
  zip_t* zip = zip_open(file.c_str(), ZIP_RDONLY, nullptr);
  pugi::xml_document presentation, relationships;
  presentation.load_string(readPart(zip, "ppt/presentation.xml").c_str());
  relationships.load_string(readPart(zip, "ppt/_rels/presentation.xml.rels").c_str());
  zip_discard(zip);
  int slides = 0;
  for (const auto& slide : presentation.document_element().child("p:sldIdLst").children())
    slides += slide.attribute("r:id").empty() ? 0 : 1;
  return relationships.document_element().first_child().empty() ? 0 : slides;
}

void Open(benchmark::State& state) {
  const BenchDeck bench(static_cast<int>(state.range(0)), state.range(1));
  double ours = 1e9, theirs = 1e9;
  for (auto _ : state) {
    const double once =
        seconds([&] { require(Deck::open(bench.file())->SlideCount() == static_cast<int>(state.range(0))); });
    ours = std::min(ours, once);
    state.SetIterationTime(once);
    theirs = std::min(theirs, seconds([&] { require(countPlainly(bench.file()) == state.range(0)); }));
  }
  state.counters["ratio"] = ours / theirs;
}
BENCHMARK(Open)
    ->ArgNames({"slides", "media_MB"})
    ->Args({200, 1})
    ->Args({200, 100})
    ->Args({2000, 1})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// As anyone would who must not lose a file: a copy, flushed, renamed over the old one, the folder flushed.
void replacePlainly(const BenchDeck& bench) {
  const std::string copy = bench.plainFile() + ".new";
  std::filesystem::copy_file(bench.file(), copy, std::filesystem::copy_options::overwrite_existing);
  const int file = ::open(copy.c_str(), O_RDWR), folder = ::open(bench.folder().c_str(), O_RDONLY);
  require(::fsync(file) == 0 && ::rename(copy.c_str(), bench.plainFile().c_str()) == 0 &&
          ::fsync(folder) == 0);
  ::close(file);
  ::close(folder);
}

void Save(benchmark::State& state) {
  const BenchDeck bench(kSlides, state.range(0));
  const auto deck = Deck::open(bench.file());
  double ours = 0, theirs = 0;
  int number = 0;
  for (auto _ : state) {
    deck->Slides(1).tags().Add("QRNVOTES", std::to_string(++number));
    const double once = seconds([&] { deck->Save(); });
    ours += once;
    state.SetIterationTime(once);
    theirs += seconds([&] { replacePlainly(bench); });
  }
  state.counters["ratio"] = ours / theirs;
}
BENCHMARK(Save)
    ->ArgName("media_MB")
    ->Arg(1)
    ->Arg(100)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);

void packPlainly(const std::string& text, int level) {
  uLongf size = compressBound(text.size());
  std::string packed(size, '\0');
  require(compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                    reinterpret_cast<const Bytef*>(text.data()), text.size(), level) == Z_OK);
  benchmark::DoNotOptimize(packed);
}

// A change on a slide that holds this much of votes, beside packing those votes at the zip tools' usual
// level,
// 6. `bytes` is the size of the deck over that of the votes.
void SaveVotes(benchmark::State& state) {
  const BenchDeck bench(kSlides, 1);
  const auto deck = Deck::open(bench.file());
  qrn::host::Tags& tags = deck->Slides(1).tags();
  const int items = static_cast<int>((state.range(0) << 20) / (9 * (2 * kKeypads + 25)));
  const std::string votes = qrn::bench::voteRecords(items, 9, kKeypads);
  const auto deckSize = [&] { return static_cast<double>(std::filesystem::file_size(bench.file())); };
  const double before = deckSize();
  tags.Add("QRNVOTES", votes);
  double ours = 1e9, theirs = 1e9;
  int number = 0;
  for (auto _ : state) {
    tags.Add("QRNMATRIXLOG", std::to_string(++number));
    const double once = seconds([&] { deck->Save(); });
    ours = std::min(ours, once);
    state.SetIterationTime(once);
    theirs = std::min(theirs, seconds([&] { packPlainly(votes, 6); }));
  }
  state.counters["ratio"] = ours / theirs;
  state.counters["best_ms"] = ours * 1000;
  state.counters["bytes"] = (deckSize() - before) / static_cast<double>(votes.size());
}
BENCHMARK(SaveVotes)
    ->ArgName("votes_MB")
    ->Arg(1)
    ->Arg(6)
    ->Arg(24)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
