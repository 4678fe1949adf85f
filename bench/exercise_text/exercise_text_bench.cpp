// Storing and loading an exercise of 5,000 items, each beside the best plain code for the same values:
// writing numbers and quoted texts into one text, and reading them from it, numbers as numbers. `ratio` is
// best over best in the same run.
#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/glo.h"
#include "core/model.h"
#include "stopwatch.h"
#include "store/exercise_text.h"
#include "store/full_exercise.h"
#include "support/test_host.h"

namespace {

using qrn::glo;
using qrn::bench::bestSeconds;

constexpr int kItems = 5000, kRuns = 25;

struct Value {
  std::variant<long, double, std::string> value;
  bool quoted = false;
  char behind = ',';  // '\n': a line ends
};

std::variant<long, double, std::string> plainValue(std::string_view text) {
  const char* const end = text.data() + text.size();
  long whole = 0;
  if (const auto read = std::from_chars(text.data(), end, whole); read.ec == std::errc() && read.ptr == end)
    return whole;
  double number = 0;
  if (const auto read = std::from_chars(text.data(), end, number); read.ec == std::errc() && read.ptr == end)
    return number;
  return std::string(text);
}

std::vector<Value> readPlainly(std::string_view text, std::size_t count) {
  std::vector<Value> values;
  values.reserve(count);
  for (std::size_t at = 0; at < text.size();) {
    Value one;
    if (text[at] == '"') {
      const std::size_t quote = text.find('"', at + 1);
      one.value = std::string(text.substr(at + 1, quote - at - 1));
      one.quoted = true;
      at = quote + 1;
    } else {
      std::size_t end = at;
      while (end < text.size() && text[end] != ',' && text[end] != '\r') ++end;
      one.value = plainValue(text.substr(at, end - at));
      at = end;
    }
    one.behind = at < text.size() && text[at] == ',' ? ',' : '\n';
    at += one.behind == ',' ? 1 : 2;
    values.push_back(std::move(one));
  }
  return values;
}

template <class Number>
void appendNumber(std::string& text, Number number) {
  std::array<char, 32> digits;
  text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

std::string writePlainly(const std::vector<Value>& values, std::size_t size) {
  std::string text;
  text.reserve(size);
  for (const Value& one : values) {
    if (one.quoted)
      text += '"';
    if (const long* whole = std::get_if<long>(&one.value))
      appendNumber(text, *whole);
    else if (const double* number = std::get_if<double>(&one.value))
      appendNumber(text, *number);
    else
      text += std::get<std::string>(one.value);
    if (one.quoted)
      text += '"';
    one.behind == ',' ? text += ',' : text += "\r\n";
  }
  return text;
}

// The exercise at hand, its text in "/plain.txt", and the text's values.
struct World {
  World() {
    glo.oVoteSlide = &host.presentation.slide(1);
    glo.matrixPath = "/tmp/t/quorin/";
    qrn::initXYVote();
    qrn::test::fillExercise(glo, kItems);
    text = qrn::writeExercise(glo);
    values = readPlainly(text, 0);
    qrn::saveXY();
    const std::size_t rewritten = writePlainly(values, 0).size();
    if (rewritten * 100 < text.size() * 99 || rewritten * 99 > text.size() * 100)
      std::abort();  // the plain code does another work
  }
  qrn::test::TestHost host;
  std::string text;
  std::vector<Value> values;
};

void report(benchmark::State& state, double ours, double plain) {
  state.counters["ours_ms"] = ours * 1000;
  state.counters["plain_ms"] = plain * 1000;
  state.counters["ratio"] = ours / plain;
}

void SaveExercise(benchmark::State& state) {
  World world;
  for (auto _ : state) {
    const double plain = bestSeconds(
        kRuns, [&] { world.host.files.files["/plain.txt"] = writePlainly(world.values, world.text.size()); });
    report(state, bestSeconds(kRuns, [] { qrn::saveXY(); }), plain);
  }
}
BENCHMARK(SaveExercise)->Iterations(1)->Unit(benchmark::kMillisecond);

void LoadExercise(benchmark::State& state) {
  World world;
  for (auto _ : state) {
    world.host.files.files["/plain.txt"] = world.text;
    const double plain = bestSeconds(kRuns, [&] {
      benchmark::DoNotOptimize(readPlainly(world.host.files.read("/plain.txt"), world.values.size()));
    });
    report(state, bestSeconds(kRuns, [] { qrn::LoadXY(""); }), plain);
  }
  if (glo.itemCount() != kItems)
    state.SkipWithError("the exercise has not been loaded");
}
BENCHMARK(LoadExercise)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
