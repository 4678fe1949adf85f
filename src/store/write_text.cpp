#include "core/common.h"
#include "host/host.h"
#include "host/system.h"
#include "store/exercise_text.h"

namespace qrn {

void writeTextFileContents(const std::string& text, const std::string& path) {
  const host::Host& world = host::host();
  const std::string to =
      path.empty() ? joinPath(world.environment->Environ("TEMP"), "qrn_matrix_temp_mtx.txt") : path;
  world.files->write(to, text);
}

}  // namespace qrn
