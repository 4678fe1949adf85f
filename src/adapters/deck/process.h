// Running a program and waiting for its end.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qrn::deck {

// Full path of a program in PATH, "" when it is not there.
std::string findProgram(const std::string& name);
// Exit code; nothing when it could not be started, was killed, or had to be ended after `limitSeconds`. The
// message loop goes on meanwhile. The program and all that it started share one group, which ends with it.
std::optional<int> runProgram(const std::vector<std::string>& command, double limitSeconds);

}  // namespace qrn::deck
