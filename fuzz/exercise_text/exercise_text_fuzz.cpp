// Any bytes as an exercise text: the reading ends, and what it gives is an exercise that can be written.
#include <cstdint>
#include <cstdlib>

#include "store/exercise_text.h"
#include "support/test_host.h"

namespace {

void require(bool condition) {
  if (!condition)
    std::abort();
}

void requireSpareElements(const qrn::Exercise& x) {
  require(!x.risks.empty() && x.categories.size() >= 2);
  require(x.risks.back() == qrn::RiskRecord{});
  std::size_t allocated = 0;
  for (const auto& category : x.categories) {
    require(!category.CategoryItems.empty());
    allocated += category.CategoryItems.size() - 1;
  }
  require(x.itemCount() == 0 || allocated > 0);
  for (const auto& labels : x.scaleLabels) require(!labels.empty() && labels.back().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static qrn::test::TestHost world;
  static const qrn::Exercise base = [] {
    qrn::Exercise x;
    x.categories.resize(2);
    for (auto& labels : x.scaleLabels) labels.resize(1);
    return x;
  }();
  const qrn::ExerciseReading reading =
      qrn::readExercise(std::string(reinterpret_cast<const char*>(data), size), base);
  requireSpareElements(reading.exercise);
  require(!qrn::writeExercise(reading.exercise).empty());
  return 0;
}
