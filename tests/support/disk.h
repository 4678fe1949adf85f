// Folders, files and processes of the machine, for tests that need the true ones.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::test {

// A folder of its own for one test, gone with it.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  const std::string& path() const { return path_; }
  std::vector<std::string> names() const;

 private:
  std::string path_;
};

std::vector<std::string> namesIn(const std::string& folder);  // sorted
std::string readFile(const std::string& path);
void writeFile(const std::string& path, std::string_view text);

// Runs `body` in a process of its own; its result, 98 for an exception, 99 when it was killed.
int inChild(const std::function<int()>& body);
// Gives up the rights of root, which no file mode stops, but for those of a group. For children only.
void becomeNobody(const unsigned* group = nullptr);
// Files may grow so far; more is an error and no signal. For children only.
void limitFiles(unsigned long bytes);

}  // namespace qrn::test
