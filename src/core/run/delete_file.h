// Files that may be held by another program for a moment.
#pragma once

#include <string>

namespace qrn {

// Deletes the file, and tries for five seconds where it cannot be deleted; then throws HostError. No name is
// no file.
void deleteUntilGone(const std::string& file);

}  // namespace qrn
