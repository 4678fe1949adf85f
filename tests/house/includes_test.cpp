#include "house/includes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace qrn::test {
namespace {

std::string readWhole(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(House, EveryIncludeIsOneItsTargetNamed) {
  const std::filesystem::path root = QUORIN_ROOT;
  std::vector<std::string> files;
  for (const char* side : {"src", "controller"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / side))
      if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
        files.push_back(std::filesystem::relative(entry.path(), root).generic_string());
  ASSERT_GT(files.size(), 30U);
  const auto plan = readPlan(readWhole(std::filesystem::path(QUORIN_BUILD) / "house-plan.txt"));
  ASSERT_FALSE(plan.empty());
  for (const std::string& complaint :
       checkIncludes(plan, files, [&](const std::string& path) { return readWhole(root / path); }))
    ADD_FAILURE() << complaint;
}

struct Case {
  const char* name;
  const char* file;
  const char* text;
  const char* complaint;  // "" when all is well
};

void PrintTo(const Case& c, std::ostream* out) {
  *out << c.name;
}

class WrongInclude : public ::testing::TestWithParam<Case> {};

TEST_P(WrongInclude, IsNamed) {
  const auto plan = readPlan(
      "quorin_base|src/base||disk.cpp,|plain\n"
      "quorin_core|src/core||glo.cpp,|plain\n"
      "quorin_store|src/store|quorin_core,|vote_store.cpp,|plain\n"
      "quorin_qt|src/adapters/qt|quorin_core,|dialogs.cpp,|foreign\n");
  const Case& c = GetParam();
  const auto complaints =
      checkIncludes(plan, {c.file}, [&](const std::string&) { return std::string(c.text); });
  if (*c.complaint == 0) {
    EXPECT_TRUE(complaints.empty()) << complaints.front();
  } else {
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_NE(complaints[0].find(c.complaint), std::string::npos) << complaints[0];
  }
}

INSTANTIATE_TEST_SUITE_P(
    House, WrongInclude,
    ::testing::Values(
        Case{"down", "src/store/vote_store.cpp", "#include \"core/glo.h\"\n#include <string>\n", ""},
        Case{"header_only", "src/store/vote_store.cpp", "#include \"core/records.h\"\n", ""},
        Case{"up", "src/core/glo.cpp", "#include \"store/vote_store.h\"\n", "does not name"},
        Case{"not_named", "src/adapters/qt/dialogs.cpp", "#include \"store/vote_store.h\"\n",
             "does not name"},
        Case{"qt_in_logic", "src/store/vote_store.cpp", "#include <QString>\n", "the logic includes"},
        Case{"c_header_in_logic", "src/store/vote_store.cpp", "#include <zip.h>\n", "the logic includes"},
        Case{"foreign_outside", "src/adapters/qt/dialogs.cpp", "#include <QString>\n", ""},
        Case{"posix_in_base", "src/base/disk.cpp", "#include <unistd.h>\n", ""},
        Case{"qt_in_base", "src/base/disk.cpp", "#include <QString>\n", "the logic includes"},
        Case{"host_in_base", "src/base/disk.cpp", "#include \"core/glo.h\"\n", "does not name"},
        Case{"orphan", "src/store/lost.cpp", "", "no target lists"}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(House, CirclesAndSharedFoldersAreNamed) {
  for (const char* plan : {"a|src/core|b,|x.cpp,|plain\nb|src/store|a,|y.cpp,|plain\n",
                           "a|src/core||x.cpp,|plain\nb|src/core||y.cpp,|plain\n"})
    EXPECT_EQ(checkIncludes(readPlan(plan), {}, [](const std::string&) { return std::string(); }).size(), 1U)
        << plan;
}

}  // namespace
}  // namespace qrn::test
