// The road of a vote through the built programs: deck, controller, saved records, results, graphs.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "e2e/program.h"

namespace qrn::test {
namespace {

using Json = nlohmann::json;

constexpr const char* kSlide = "4";
constexpr int kItems = 20, kActive = 4;

std::vector<std::string> voteWords(const std::string& deck, int keypads, const std::string& by = "item") {
  return {"vote", deck, "--slide", kSlide, "--rehearse", std::to_string(keypads), "--seed", "7", "--by", by};
}

std::vector<std::string> savedLines(const std::vector<std::string>& printed) {
  std::vector<std::string> saved;
  for (const std::string& line : printed)
    if (line.rfind("saved ", 0) == 0)
      saved.push_back(line.substr(6));
  return saved;
}

std::vector<std::string> storedRecords(const std::string& deck) {
  const Outcome tags = matrix({"tags", deck, "--slide", kSlide, "--get", "QRNVOTES"});
  EXPECT_EQ(tags.code, 0) << tags.err;
  return lines(tags.out);
}

// Mean of the votes of one record, worked out from its text alone.
double meanOf(const std::string& record) {
  const std::string votes = record.substr(record.find(',', record.find(',') + 1) + 1);
  double sum = 0, count = 0;
  for (const char c : votes.substr(0, votes.find(','))) {
    if (c >= '0' && c <= '9') {
      sum += c - '0';
      ++count;
    }
  }
  return count > 0 ? sum / count : 0;
}

// An installation that logs what it does.
class Road : public ::testing::Test {
 protected:
  Road() {
    std::filesystem::create_directory(folder.file("quorin"));
    writeFile(folder.file("quorin/qrn.ini"), "[DEBUG]\nLOGEVENTS TO FILE=1\n");
    ::setenv("XDG_CONFIG_HOME", folder.file("").c_str(), 1);
    ::setenv("TMPDIR", folder.file("").c_str(), 1);
  }
  ~Road() override {
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("TMPDIR");
  }
  // The vote data logs of all runs: one file a day, two around midnight.
  std::string voteDataLog() const {
    std::string text;
    for (const auto& file :
         std::filesystem::directory_iterator(folder.file("quorin-" + std::to_string(::getuid()))))
      if (file.path().filename().string().rfind("qrn_vote_data_debug_", 0) == 0)
        text += readFile(file.path());
    return text;
  }

  TempFolder folder;
};

TEST_F(Road, VotesEveryItemAndResultsAndGraphsFollowFromTheRecords) {
  const std::string deck = folder.sampleDeck();
  const Outcome empty = matrix({"graph", deck, "--slide", kSlide, "--kind", "average", "--assessment", "2",
                                "--out", folder.file("empty.JPEG")});
  EXPECT_EQ(empty.code, 0);
  EXPECT_NE(empty.err.find("No item has a score"), std::string::npos) << empty.err;
  const Outcome vote = matrix(voteWords(deck, 12));
  ASSERT_EQ(vote.code, 0) << vote.err;
  const std::vector<std::string> saved = savedLines(lines(vote.out));
  ASSERT_EQ(saved.size(), static_cast<std::size_t>(kItems * kActive));
  EXPECT_EQ(storedRecords(deck), saved);

  const Outcome info = matrix({"info", deck, "--json"});
  const Json slide = Json::parse(info.out)["slides"][3];
  EXPECT_EQ(slide["items"], kItems);
  EXPECT_EQ(slide["assessments"], kActive);
  EXPECT_EQ(slide["records"], kItems * kActive);

  const Outcome results = matrix({"results", deck, "--slide", kSlide, "--json"});
  ASSERT_EQ(results.code, 0) << results.err;
  const Json json = Json::parse(results.out);
  ASSERT_EQ(json["items"].size(), static_cast<std::size_t>(kItems));
  for (const Json& item : json["items"]) {
    for (std::size_t a = 0; a < kActive; ++a) {
      const std::string key = "," + std::to_string(item["sortKey"].get<int>()) + "C" + std::to_string(a + 1);
      const auto record = std::find_if(saved.begin(), saved.end(), [&](const std::string& line) {
        return line.size() > key.size() && line.compare(line.size() - key.size(), key.size(), key) == 0;
      });
      ASSERT_NE(record, saved.end()) << key;
      EXPECT_NEAR(item["average"][a].get<double>(), meanOf(*record), 1e-5) << key;
      EXPECT_EQ(item["participants"][a], 12) << key;
    }
  }

  const std::string geometry = folder.file("geometry.json");
  const Outcome graph =
      matrix({"graph", deck, "--slide", kSlide, "--kind", "matrix", "--pairs", "2,1", "--size", "1024x768",
              "--out", folder.file("matrix.png"), "--geometry", geometry});
  ASSERT_EQ(graph.code, 0) << graph.err;
  EXPECT_EQ(graph.out + graph.err, "");
  EXPECT_EQ(readFile(folder.file("matrix.png")).substr(1, 3), "PNG");
  std::map<std::string, std::pair<double, double>> centres;
  double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
  const Json drawn = Json::parse(readFile(geometry));
  for (const Json& element : drawn["elements"]) {
    if (element["array"] == "labelRisk" && element["index"] != 0)
      centres[element["caption"]] = {element["left"].get<double>() + element["width"].get<double>() / 2,
                                     element["top"].get<double>() + element["height"].get<double>() / 2};
    if (element["array"] == "horizontalLine" && element["index"] == 0) {
      x1 = element["x1"];
      x2 = element["x2"];
      y2 = element["y1"];
    }
    if (element["array"] == "verticalLine" && element["index"] == 0)
      y1 = std::min(element["y1"].get<double>(), element["y2"].get<double>());
  }
  ASSERT_EQ(centres.size(), static_cast<std::size_t>(kItems));
  EXPECT_NEAR(x1, 15360 * 128.0 / 800, 15);
  EXPECT_NEAR(y1, 11520 * 64.0 / 600, 15);
  for (const Json& item : json["items"]) {
    const auto at = centres[item["identifier"]];
    const double across = std::round(item["average"][0].get<double>() * 100) / 100;
    const double upwards = std::round(item["average"][1].get<double>() * 100) / 100;
    EXPECT_NEAR(at.first, x1 + (across - 1) / 4 * (x2 - x1), 20) << item["identifier"];
    EXPECT_NEAR(at.second, y2 - (upwards - 1) / 4 * (y2 - y1), 20) << item["identifier"];
  }
}

TEST_F(Road, EveryVoteThatWasToldAsSavedSurvivesAKill) {
  const std::string deck = folder.sampleDeck();
  std::set<std::string> told;
  bool killedInMidRun = false;
  for (const int milliseconds : {600, 1100, 1700, 2300, 3100}) {
    const std::vector<std::string> saved = savedLines(
        killedVote(voteWords(deck, 8, milliseconds % 200 == 100 ? "assessment" : "item"), milliseconds));
    killedInMidRun = killedInMidRun || !saved.empty();
    told.insert(saved.begin(), saved.end());
    const std::vector<std::string> stored = storedRecords(deck);
    for (const std::string& record : told)
      EXPECT_NE(std::find(stored.begin(), stored.end(), record), stored.end()) << "lost: " << record;
    EXPECT_EQ(matrix({"info", deck}).code, 0);
  }
  const std::string log = voteDataLog();
  for (const std::string& record : told)
    EXPECT_NE(log.find("MATRIX VOTES SAVED TO SLIDE|" + record), std::string::npos)
        << "not logged: " << record;
  EXPECT_TRUE(killedInMidRun) << "no vote was saved before a kill: the times are too short for this machine";
  // The rest is voted in the end, whatever the order was in between, and nothing twice.
  EXPECT_EQ(matrix(voteWords(deck, 8)).code, 0);
  const std::vector<std::string> stored = storedRecords(deck);
  std::set<std::string> keys;
  for (const std::string& record : stored) keys.insert(record.substr(record.rfind(',') + 1));
  EXPECT_EQ(keys.size(), std::size_t{kItems * kActive});
  EXPECT_EQ(stored.size(), keys.size());
}

}  // namespace
}  // namespace qrn::test
