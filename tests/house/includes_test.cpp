// Holds the sources against the house plan that CMake writes: which target owns which file, and whose headers
// it named.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/cases.h"
#include "support/disk.h"

namespace qrn::test {
namespace {

struct PlanLine {
  std::string target;
  std::string folder;  // from the root of the project
  std::vector<std::string> rooms;
  std::vector<std::string> sources;
};

using FileReader = std::function<std::string(const std::string& pathFromRoot)>;

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);)
    if (!part.empty())
      parts.push_back(part);
  return parts;
}

std::string stem(const std::string& path) {
  return path.substr(0, path.rfind('.'));
}

std::string folderOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

// Whether the folder lies in one of these rooms of src, or below one.
bool liesIn(const std::string& folder, const std::set<std::string>& rooms) {
  const std::vector<std::string> parts = split(folder, '/');
  return parts.size() > 1 && parts[0] == "src" && rooms.count(parts[1]) != 0;
}

bool isLogic(const std::string& folder) {
  return liesIn(folder, {"core", "store", "analysis", "vote", "compare", "charts", "matrixgraph", "authoring",
                         "output", "host", "look"});
}

// Below the logic, with the system's own headers besides the standard library.
bool isBase(const std::string& folder) {
  return liesIn(folder, {"base"});
}

class House {
 public:
  explicit House(const std::vector<PlanLine>& plan) : plan_(plan) {
    for (const PlanLine& line : plan) {
      for (const std::string& source : line.sources) owner_[line.folder + "/" + stem(source)] = &line;
      folders_.emplace(line.folder, &line);
    }
  }

  // A header without a source of its own belongs to the target of its folder.
  const PlanLine* ownerOf(const std::string& path) const {
    const auto it = owner_.find(stem(path));
    if (it != owner_.end())
      return it->second;
    if (path.size() > 2 && path.compare(path.size() - 2, 2, ".h") != 0)
      return nullptr;
    const auto folder = folders_.find(folderOf(path));
    return folder == folders_.end() ? nullptr : folder->second;
  }

  // A folder is a room: whatever sits higher than the rest of it needs a folder of its own.
  void findSharedFolders(std::vector<std::string>& complaints) const {
    for (const PlanLine& line : plan_)
      if (folders_.at(line.folder) != &line)
        complaints.push_back(line.folder + ": two targets, " + folders_.at(line.folder)->target + " and " +
                             line.target);
  }

  void findCircles(std::vector<std::string>& complaints) const {
    std::map<std::string, const PlanLine*> byName;
    for (const PlanLine& line : plan_) byName[line.target] = &line;
    std::set<std::string> done, open;
    const std::function<void(const PlanLine&)> walk = [&](const PlanLine& line) {
      open.insert(line.target);
      for (const std::string& room : line.rooms) {
        const auto next = byName.find(room);
        if (next == byName.end() || done.count(room) != 0)
          continue;
        if (open.count(room) != 0)
          complaints.push_back("circle of targets: " + line.target + " and " + room);
        else
          walk(*next->second);
      }
      open.erase(line.target);
      done.insert(line.target);
    };
    for (const PlanLine& line : plan_)
      if (done.count(line.target) == 0)
        walk(line);
  }

 private:
  const std::vector<PlanLine>& plan_;
  std::map<std::string, const PlanLine*> owner_;
  std::map<std::string, const PlanLine*> folders_;
};

void checkFile(const House& house, const std::string& path, const std::string& text,
               std::vector<std::string>& complaints) {
  const PlanLine* self = house.ownerOf(path);
  if (self == nullptr) {
    complaints.push_back(path + ": no target lists this file");
    return;
  }
  static const std::regex include(R"(^\s*#\s*include\s*([<"])([^">]+)[">])");
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (!std::regex_search(line, match, include))
      continue;
    const std::string name = match[2];
    if (match[1] == "<") {
      const char* foreign = isLogic(self->folder) ? "./Q" : isBase(self->folder) ? "Q" : "";
      if (name.find_first_of(foreign) != std::string::npos)
        complaints.push_back(path + ": the logic includes <" + name + ">");
      continue;
    }
    const PlanLine* other = house.ownerOf(name.rfind("controller/", 0) == 0 ? name : "src/" + name);
    if (other == nullptr)
      complaints.push_back(path + ": \"" + name + "\" belongs to no target");
    else if (other != self &&
             std::find(self->rooms.begin(), self->rooms.end(), other->target) == self->rooms.end())
      complaints.push_back(path + ": \"" + name + "\" is in " + other->target + ", which " + self->target +
                           " does not name");
    else if ((isLogic(self->folder) || isBase(self->folder)) && !isLogic(other->folder) &&
             !isBase(other->folder))
      complaints.push_back(path + ": the logic includes \"" + name + "\"");
  }
}

// Lines "target|folder|rooms,|sources,|..." as the build writes them.
std::vector<PlanLine> readPlan(const std::string& text) {
  std::vector<PlanLine> plan;
  for (const std::string& line : split(text, '\n')) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '|');) fields.push_back(field);
    if (fields.size() >= 4)
      plan.push_back({fields[0], fields[1], split(fields[2], ','), split(fields[3], ',')});
  }
  return plan;
}

// One complaint per wrong include, unowned file, circle of targets or shared folder; `files` are paths from
// the root.
std::vector<std::string> checkIncludes(const std::vector<PlanLine>& plan,
                                       const std::vector<std::string>& files, const FileReader& read) {
  const House house(plan);
  std::vector<std::string> complaints;
  for (const std::string& path : files) checkFile(house, path, read(path), complaints);
  house.findCircles(complaints);
  house.findSharedFolders(complaints);
  return complaints;
}

TEST(House, EveryIncludeIsOneItsTargetNamed) {
  const std::filesystem::path root = QUORIN_ROOT;
  std::vector<std::string> files;
  for (const char* side : {"src", "controller"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / side))
      if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
        files.push_back(std::filesystem::relative(entry.path(), root).generic_string());
  ASSERT_GT(files.size(), 30U);
  const auto plan = readPlan(readFile(QUORIN_BUILD "/house-plan.txt"));
  ASSERT_FALSE(plan.empty());
  for (const std::string& complaint :
       checkIncludes(plan, files, [&](const std::string& path) { return readFile(root / path); }))
    ADD_FAILURE() << complaint;
}

// What is found in plans and files that are told.
class HouseCase : public CaseTest {
 protected:
  HouseCase() {
    // target NAME FOLDER ROOMS SOURCES: ROOMS and SOURCES with a comma behind each
    on("target", [this](const Words& words) {
      plan_ += words[0] + "|" + words[1] + "|" + words[2] + "|" + words[3] + "|plain\n";
    });
    // file PATH TEXT; plan: of the targets alone
    on("file", [this](const Words& words) { complain({words[0]}, words.rest(1)); });
    on("plan", [this](const Words&) { complain({}, ""); });
  }
  void complain(const std::vector<std::string>& files, const std::string& text) {
    const std::vector<PlanLine> plan = readPlan(plan_);
    for (const std::string& line : checkIncludes(plan, files, [&](const std::string&) { return text; }))
      tell(line);
  }

 private:
  std::string plan_;
};

const bool kRegistered = registerCases<HouseCase>("HouseCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
