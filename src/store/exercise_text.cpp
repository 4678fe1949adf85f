#include "store/exercise_text.h"

namespace qrn {

std::function<void()> endProgramHook;

}  // namespace qrn
