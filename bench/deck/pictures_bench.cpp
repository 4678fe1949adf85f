// What pictures of slides cost this program itself, with stand-ins for LibreOffice and pdftoppm that take no
// time: all thumbnails of a deck, then slides exported large, when they are new and once more from the cache.
// Microseconds of processor time a slide; `..._growth` is that of 2,000 slides over that of 30 and should
// be 1.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "adapters/deck/deck.h"
#include "deck/bench_deck.h"
#include "stopwatch.h"

namespace {

using qrn::bench::BenchDeck;
using qrn::deck::Deck;

constexpr int kFew = 30, kMany = 2000, kRuns = 3;
constexpr int kExported = 30;  // slides, all over the deck
constexpr std::size_t kThumbnailBytes = 8000, kPictureBytes = 150000;

void writeBytes(const std::string& file, std::size_t count) {
  std::ofstream(file, std::ios::binary) << std::string(count, 'x');
}

// This program under the name of `soffice`.
int convert(int count, char** words) {
  for (int i = 1; i + 1 < count; ++i)
    if (std::string_view(words[i]) == "--outdir")
      writeBytes(std::string(words[i + 1]) + "/deck.pdf", 1000);
  return 0;
}

// And of `pdftoppm -f FIRST -l LAST ... PDF STEM`.
int draw(int count, char** words) {
  const int first = std::atoi(words[2]), last = std::atoi(words[4]);
  const std::string stem = words[count - 1];
  if (first == last) {
    writeBytes(stem + ".jpg", kPictureBytes);
    return 0;
  }
  const std::size_t digits = std::to_string(last).size();
  for (int page = first; page <= last; ++page) {
    const std::string number = std::to_string(page);
    writeBytes(stem + "-" + std::string(digits - number.size(), '0') + number + ".jpg", kThumbnailBytes);
  }
  return 0;
}

struct Cost {
  double thumbnails = 1e9, pictures = 1e9, again = 1e9;  // processor seconds a slide
};

double processorSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

template <class Body>
double costOf(int slides, Body body) {
  const double start = processorSeconds();
  body();
  return (processorSeconds() - start) / slides;
}

void exportSome(Deck& deck, const std::string& file) {
  for (int i = 0; i < kExported; ++i)
    deck.Slides(1 + i * deck.SlideCount() / kExported).Export(file, "JPG", 1920, 1080);
}

void takeThumbnails(Deck& deck) {
  int taken = 0;
  for (auto run = deck.ExportAll(320, 180); !run->hasEnded();) run->next() ? ++taken : ::usleep(1000);
  if (taken != deck.SlideCount())
    std::abort();
}

Cost costOf(int slides) {
  const BenchDeck bench(slides, 1);
  Cost cost;
  for (int run = 0; run < kRuns; ++run) {
    qrn::deck::OpenOptions options;
    options.cacheFolder = bench.folder() + "/cache" + std::to_string(run);
    const auto deck = Deck::open(bench.file(), options);
    const std::string file = bench.folder() + "/out.jpg";
    cost.thumbnails = std::min(cost.thumbnails, costOf(slides, [&] { takeThumbnails(*deck); }));
    cost.pictures = std::min(cost.pictures, costOf(kExported, [&] { exportSome(*deck, file); }));
    cost.again = std::min(cost.again, costOf(kExported, [&] { exportSome(*deck, file); }));
  }
  return cost;
}

void Pictures(benchmark::State& state) {
  for (auto _ : state) {
    const Cost few = costOf(kFew), many = costOf(kMany);
    state.counters["thumbnail_us"] = many.thumbnails * 1e6;
    state.counters["picture_us"] = many.pictures * 1e6;
    state.counters["again_us"] = many.again * 1e6;
    state.counters["thumbnail_growth"] = many.thumbnails / few.thumbnails;
    state.counters["picture_growth"] = many.pictures / few.pictures;
    state.counters["again_growth"] = many.again / few.again;
  }
}
BENCHMARK(Pictures)->Iterations(1)->Unit(benchmark::kMillisecond);

std::string ownFile() {
  return std::filesystem::read_symlink("/proc/self/exe").string();
}

}  // namespace

int main(int count, char** words) {
  const std::string name = std::filesystem::path(words[0]).filename().string();
  if (name == "soffice")
    return convert(count, words);
  if (name == "pdftoppm")
    return draw(count, words);
  std::string programs = (std::filesystem::temp_directory_path() / "pictures_benchXXXXXX").string();
  if (::mkdtemp(programs.data()) == nullptr)
    return 1;
  for (const char* program : {"/soffice", "/pdftoppm"})
    std::filesystem::create_symlink(ownFile(), programs + program);
  ::setenv("PATH", programs.c_str(), 1);
  benchmark::Initialize(&count, words);
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(programs);
  return 0;
}
