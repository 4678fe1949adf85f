// Any bytes as an exercise text: the load ends, and what it leaves is an exercise that can be stored.
#include <cstdint>
#include <cstdlib>

#include "core/model.h"
#include "store/exercise_text.h"
#include "store/quiet_dialogs.h"
#include "support/test_host.h"

namespace {

void require(bool condition) {
  if (!condition)
    std::abort();
}

void requireSpareElements() {
  using qrn::glo;
  require(!glo.risks.empty() && glo.categories.size() >= 2);
  require(glo.risks.back() == qrn::RiskRecord{});
  std::size_t allocated = 0;
  for (const auto& category : glo.categories) {
    require(!category.CategoryItems.empty());
    allocated += category.CategoryItems.size() - 1;
  }
  require(glo.itemCount() == 0 || allocated > 0);
  for (const auto& labels : glo.scaleLabels) require(!labels.empty() && labels.back().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static qrn::test::TestHost world;
  static qrn::test::QuietDialogs quiet;
  world.files.files.clear();
  qrn::initXYVote();
  if (qrn::readExerciseText(std::string(reinterpret_cast<const char*>(data), size))) {
    requireSpareElements();
    require(!qrn::writeExerciseText(qrn::glo).empty());
  }
  return 0;
}
