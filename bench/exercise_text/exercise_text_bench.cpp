// Storing and loading 5,000 items, each against a plain reading of the same text: taken from the file and
// split at commas and line ends into strings. The ratio says how much of the time is ours.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "core/model.h"
#include "store/exercise_text.h"
#include "store/full_exercise.h"
#include "support/test_host.h"

namespace {

constexpr int kItems = 5000;
constexpr int kRuns = 25;

template <class Work>
double bestMilliseconds(Work work) {
  double best = 1e9;
  for (int run = 0; run < kRuns; ++run) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    best = std::min(best, time.count());
  }
  return best;
}

std::size_t splitPlainly(const std::string& text) {
  std::vector<std::string> values;
  std::size_t from = 0;
  for (std::size_t at = 0; at < text.size(); ++at)
    if (text[at] == ',' || text[at] == '\n') {
      values.push_back(text.substr(from, at - from));
      from = at + 1;
    }
  return values.size();
}

}  // namespace

int main() {
  using qrn::glo;
  qrn::test::TestHost world;
  glo.oVoteSlide = &world.presentation.slide(1);
  glo.matrixPath = "/tmp/t/quorin/";
  qrn::initXYVote();
  qrn::test::fillExercise(glo, kItems);
  world.files.files["/plain.txt"] = qrn::writeExercise(glo);
  const std::size_t bytes = world.files.files["/plain.txt"].size();

  std::size_t values = 0;
  const double plain = bestMilliseconds([&] { values = splitPlainly(world.files.read("/plain.txt")); });
  const double save = bestMilliseconds([] { qrn::saveXY(); });
  const double load = bestMilliseconds([] { qrn::LoadXY(""); });
  std::printf("%d items, %zu bytes, %zu values\n", kItems, bytes, values);
  std::printf("read and split plainly  %8.2f ms\n", plain);
  std::printf("saveXY                  %8.2f ms  ratio %.2f\n", save, save / plain);
  std::printf("LoadXY                  %8.2f ms  ratio %.2f\n", load, load / plain);
  return glo.itemCount() == kItems ? 0 : 1;
}
