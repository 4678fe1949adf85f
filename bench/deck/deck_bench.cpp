// What storing one vote costs beside one plain write and flush of the same bytes on the same disk, for a
// small and a large deck, and what opening and saving cost. `ratio` is time over plain time.
//
//   deck_bench [--benchmark_filter=...]       TMPDIR chooses the disk
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "adapters/deck/deck.h"

namespace {

using Clock = std::chrono::steady_clock;
using qrn::deck::Deck;

constexpr std::string_view kP = "http://schemas.openxmlformats.org/presentationml/2006/main";
constexpr std::string_view kR = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr int kSlides = 200;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string relationships(const std::vector<std::array<std::string, 3>>& all) {
  std::string text = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
  for (const auto& one : all)
    text += "<Relationship Id=\"" + one[0] + "\" Type=\"" + std::string(kR) + "/" + one[1] + "\" Target=\"" +
            one[2] + "\"/>";
  return text + "</Relationships>";
}

// A deck with 200 slides and `megabytes` of media that do not pack.
class BenchDeck {
 public:
  explicit BenchDeck(std::int64_t megabytes) {
    const char* base = std::getenv("TMPDIR");
    folder_ = std::string(base == nullptr ? "/tmp" : base) + "/deck_benchXXXXXX";
    if (::mkdtemp(folder_.data()) == nullptr)
      std::abort();
    std::mt19937_64 random(1);
    std::string media(static_cast<std::size_t>(megabytes) << 20, '\0');
    for (std::size_t i = 0; i + 8 <= media.size(); i += 8) {
      const std::uint64_t number = random();
      std::copy_n(reinterpret_cast<const char*>(&number), 8, media.begin() + static_cast<std::ptrdiff_t>(i));
    }
    add("[Content_Types].xml",
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
        "Extension=\"xml\" "
        "ContentType=\"application/xml\"/></Types>");
    add("_rels/.rels", relationships({{"r1", "officeDocument", "ppt/presentation.xml"}}));
    const std::string names = " xmlns:p=\"" + std::string(kP) + "\" xmlns:r=\"" + std::string(kR) + "\">";
    std::string list = "<p:presentation" + names + "<p:sldIdLst>";
    std::vector<std::array<std::string, 3>> of;
    for (int i = 1; i <= kSlides; ++i) {
      const std::string number = std::to_string(i);
      list += "<p:sldId id=\"" + std::to_string(255 + i) + "\" r:id=\"r" + number + "\"/>";
      of.push_back({"r" + number, "slide", "slides/slide" + number + ".xml"});
      add("ppt/slides/slide" + number + ".xml", "<p:sld" + names + "<p:cSld><p:spTree/></p:cSld></p:sld>");
    }
    add("ppt/presentation.xml", list + "</p:sldIdLst></p:presentation>");
    add("ppt/_rels/presentation.xml.rels", relationships(of));
    add("ppt/media/film.mp4", media);
    zip_t* zip = zip_open(file().c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [name, text] : parts_) {
      const zip_int64_t at =
          zip_file_add(zip, name.c_str(), zip_source_buffer(zip, text.data(), text.size(), 0), 0);
      if (name.find("media") != std::string::npos)
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(at), ZIP_CM_STORE, 0);
    }
    if (zip_close(zip) != 0)
      std::abort();
    parts_.clear();
  }
  ~BenchDeck() { std::filesystem::remove_all(folder_); }
  BenchDeck(const BenchDeck&) = delete;
  BenchDeck& operator=(const BenchDeck&) = delete;
  std::string file() const { return folder_ + "/talk.pptx"; }
  std::string plainFile() const { return folder_ + "/plain"; }

 private:
  void add(const std::string& name, std::string text) { parts_.emplace_back(name, std::move(text)); }
  std::string folder_;
  std::vector<std::pair<std::string, std::string>> parts_;
};

// The record of one item voted by 100 keypads.
std::string voteRecord() {
  std::string record = "1C0;";
  for (int i = 0; i < 100; ++i) record += std::to_string(i % 9 + 1) + ";";
  return record + "\r\n";
}

void AppendVote(benchmark::State& state) {
  const BenchDeck bench(state.range(0));
  const auto deck = Deck::open(bench.file());
  const int plain = ::open(bench.plainFile().c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  const std::string record = voteRecord();
  qrn::host::Tags& tags = deck->Slides(1).tags();
  tags.Add("QRNVOTES", std::string(static_cast<std::size_t>(state.range(1)) << 20, 'x'));
  double ours = 0, theirs = 0;
  for (auto _ : state) {
    auto start = Clock::now();
    tags.Append("QRNVOTES", record);
    const double once = secondsSince(start);
    ours += once;
    state.SetIterationTime(once);
    start = Clock::now();
    if (::write(plain, record.data(), record.size()) < 0 || ::fdatasync(plain) != 0)
      state.SkipWithError("the plain file cannot be written");
    theirs += secondsSince(start);
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

void Open(benchmark::State& state) {
  const BenchDeck bench(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(Deck::open(bench.file())->SlideCount());
}
BENCHMARK(Open)->ArgName("media_MB")->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);

// Beside copying and flushing a file of that size.
void Save(benchmark::State& state) {
  const BenchDeck bench(state.range(0));
  const auto deck = Deck::open(bench.file());
  double ours = 0, theirs = 0;
  int number = 0;
  for (auto _ : state) {
    deck->Slides(1).tags().Add("QRNVOTES", std::to_string(++number));
    auto start = Clock::now();
    deck->Save();
    const double once = secondsSince(start);
    ours += once;
    state.SetIterationTime(once);
    start = Clock::now();
    std::filesystem::copy_file(bench.file(), bench.plainFile(),
                               std::filesystem::copy_options::overwrite_existing);
    const int copy = ::open(bench.plainFile().c_str(), O_RDWR);
    ::fsync(copy);
    ::close(copy);
    theirs += secondsSince(start);
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

}  // namespace

BENCHMARK_MAIN();
