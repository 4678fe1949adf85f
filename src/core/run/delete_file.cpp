#include "core/run/delete_file.h"

#include "base/errors.h"
#include "core/common.h"
#include "host/host.h"
#include "host/system.h"
#include "host/wait.h"

namespace qrn {

void deleteUntilGone(const std::string& file) {
  constexpr double kDeleteSeconds = 5;
  if (file.empty())
    return;
  std::string reason;
  const bool gone = host::waitUntil(
      [&] {
        try {
          host::host().files->Kill(file);
        } catch (const HostError& error) {
          reason = error.what();
        }
        return !fileExists(file);
      },
      kDeleteSeconds);
  if (!gone)
    throw HostError(Fault::world, 70, "The file cannot be deleted: " + file + " (" + reason + ")");
}

}  // namespace qrn
