// Holds the sources against the house plan that CMake writes: which target owns which file, and whose headers
// it named. Returns one complaint per wrong include, unowned file or circle of targets.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace qrn::test {

struct PlanLine {
  std::string target;
  std::string folder;  // from the root of the project
  std::vector<std::string> rooms;
  std::vector<std::string> sources;
};

// Lines "target|folder|rooms,|sources,|..." as the build writes them.
std::vector<PlanLine> readPlan(const std::string& text);

using FileReader = std::function<std::string(const std::string& pathFromRoot)>;

// `files` are the paths from the root of every .h and .cpp below src.
std::vector<std::string> checkIncludes(const std::vector<PlanLine>& plan,
                                       const std::vector<std::string>& files, const FileReader& read);

}  // namespace qrn::test
