// Output, folders and files that fail under a vote: told, and no vote is lost.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#include "e2e/program.h"

namespace qrn::test {
namespace {

constexpr std::size_t kVotes = 8;

// The sample with two items to vote on.
std::string shortDeck(const TempFolder& folder) {
  const std::string deck = folder.sampleDeck(), text = folder.file("exercise.mtx");
  EXPECT_EQ(matrix({"mtx", "export", deck, "--slide", "4", "--out", text}).code, 0);
  std::string exercise = readFile(text);
  const std::string voting = ",#TRUE#,\"\"";
  for (std::size_t at = exercise.find(",2,2" + voting);
       (at = exercise.find(voting, at)) != std::string::npos;)
    exercise.replace(at, voting.size(), ",#FALSE#,\"\"");
  writeFile(text, exercise);
  EXPECT_EQ(matrix({"mtx", "import", deck, "--slide", "4", "--from", text}).code, 0);
  return deck;
}

std::vector<std::string> voteWords(const std::string& deck) {
  return {"vote", deck, "--slide", "4", "--rehearse", "3", "--seed", "7"};
}

std::vector<std::string> stored(const std::string& deck) {
  return lines(matrix({"tags", deck, "--slide", "4", "--get", "QRNVOTES"}).out);
}

void outputToFullDisk() {
  ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO);
}

void outputClosed() {
  ::close(STDOUT_FILENO);
}

void outputToNobody() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0)
    ::_exit(126);
  ::dup2(ends[1], STDOUT_FILENO);
  ::close(ends[0]);
}

void filesUpTo(rlim_t bytes) {
  const rlimit limit{bytes, bytes};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(Output, ThatCannotBeWrittenIsToldAndCostsNoVote) {
  for (const auto& [spoil, word] :
       {std::pair{&outputToFullDisk, "full"}, {&outputClosed, "closed"}, {&outputToNobody, "nobody"}}) {
    SCOPED_TRACE(word);
    const TempFolder folder;
    const std::string deck = shortDeck(folder);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--help"}, {"info", "--help"}, {"info", deck}, voteWords(deck)}) {
      const Outcome outcome = matrix(words, spoil);
      // Where nobody reads there is nobody to tell.
      const bool read = spoil != &outputToNobody;
      EXPECT_EQ(outcome.code, read ? 1 : 141) << words[0];
      EXPECT_EQ(outcome.err.find("could not be written") != std::string::npos, read) << outcome.err;
      EXPECT_TRUE(read || outcome.err.empty()) << outcome.err;
    }
    EXPECT_EQ(stored(deck).size(), kVotes);
  }
}

TEST(Windows, WithoutADisplayAreToldAndAMistypedWordIsWrongUse) {
  const TempFolder folder;
  for (const auto& [word, code, told] : {std::tuple{std::string("resluts"), 2, "neither a subcommand nor"},
                                         {folder.sampleDeck(), 1, "no display"}}) {
    const Outcome outcome = matrix({word}, [] {
      for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(name);
    });
    EXPECT_EQ(outcome.code, code) << word;
    EXPECT_NE(outcome.err.find(told), std::string::npos) << outcome.err;
  }
}

TEST(Output, NeverGoesOverTheDeckOrAnother) {
  const TempFolder folder;
  const std::string deck = folder.sampleDeck(), other = folder.sampleDeck("other.pptx");
  const std::string same = folder.file("same.svg"), picture = folder.file("picture.svg"),
                    whole = readFile(deck);
  std::filesystem::create_hard_link(deck, same);
  const std::vector<std::string> graph{"graph", deck, "--slide", "4", "--kind", "average", "--out"},
      text{"mtx", "export", deck, "--slide", "4", "--journal", "aside", "--out"};
  writeFile(deck + ".journal", "no journal");
  for (const auto& [words, more] : {std::pair{text, std::vector{deck}},
                                    {text, {other}},
                                    {graph, {same}},
                                    {graph, {picture, "--geometry", other}},
                                    {graph, {picture, "--geometry", deck + ".journal"}}}) {
    std::vector<std::string> all = words;
    all.insert(all.end(), more.begin(), more.end());
    const Outcome outcome = matrix(all);
    EXPECT_EQ(outcome.code, 1) << more.back();
    EXPECT_NE(outcome.err.find(more.back() + " is "), std::string::npos) << outcome.err;
    EXPECT_TRUE(readFile(deck) == whole && readFile(other) == whole && !std::filesystem::exists(picture));
    EXPECT_EQ(readFile(deck + ".journal"), "no journal");
  }
}

TEST(Import, OfACutTextLosesNothing) {
  const TempFolder folder;
  const std::string deck = folder.sampleDeck(), text = folder.file("cut.mtx");
  const auto get = [&](const char* tag) { return matrix({"tags", deck, "--slide", "4", "--get", tag}).out; };
  const auto import = [&](const std::string& content) {
    writeFile(text, content);
    return matrix({"mtx", "import", deck, "--slide", "4", "--from", text});
  };
  const std::string whole = get("QRNMATRIX"), bytes = readFile(deck);
  const std::size_t last = whole.find("\r\n\"", whole.find(",19,19,#"));
  for (const std::size_t length : {whole.find(",2,2,#"), last - 90}) {
    const Outcome outcome = import(whole.substr(0, length));
    EXPECT_EQ(outcome.code, 1) << length;
    EXPECT_NE(outcome.err.find("nothing was changed"), std::string::npos) << outcome.err;
    EXPECT_EQ(readFile(deck), bytes);
  }
  const Outcome outcome = import(whole.substr(0, whole.find("\"unallocated\"")));
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("cut short: 20 items could be read"), std::string::npos) << outcome.err;
  const std::string second = get("QRNMATRIX");
  EXPECT_EQ(get("QRNMATRIXDAMAGED"), whole);
  import(whole.substr(0, whole.rfind("|")));
  EXPECT_EQ(get("QRNMATRIXDAMAGED") + get("QRNMATRIXDAMAGED2"), whole + second);
}

TEST(Disk, ADeckThatIsNotToBeSavedAfterAVoteKeepsEveryByte) {
  const TempFolder folder;
  const std::string deck = shortDeck(folder), before = readFile(deck);
  std::filesystem::create_directory(folder.file("quorin"));
  writeFile(folder.file("quorin/qrn.ini"), "[DEBUG]\nDISABLE PPT SAVE AFTER VOTE CLOSE=1\n");
  const std::string settings = folder.file("");
  const Outcome vote = matrix(voteWords(deck), [&] { ::setenv("XDG_CONFIG_HOME", settings.c_str(), 1); });
  EXPECT_EQ(vote.code, 0);
  EXPECT_NE(vote.err.find("kept in the journal beside it"), std::string::npos) << vote.err;
  EXPECT_EQ(readFile(deck), before);
  EXPECT_EQ(stored(deck).size(), kVotes);
}

TEST(Disk, AReadOnlyFolderIsToldBeforeTheRoomVotes) {
  const TempFolder folder;
  const std::string deck = folder.sampleDeck();
  std::filesystem::permissions(deck, std::filesystem::perms(0666));
  std::filesystem::permissions(folder.file(""), std::filesystem::perms(0555));
  const Outcome vote = matrix(voteWords(deck), [] { becomeNobody(); });
  std::filesystem::permissions(folder.file(""), std::filesystem::perms(0755));
  if (vote.code == 127)
    GTEST_SKIP() << "another user may not run the program here";
  EXPECT_EQ(vote.code, 1);
  EXPECT_EQ(vote.out, "");
  EXPECT_NE(vote.err.find("The vote was not started. Nothing can be stored in"), std::string::npos)
      << vote.err;
}

TEST(Disk, ADeckThatIsRenamedWhileTheRoomVotesIsSavedUnderItsNewName) {
  const TempFolder folder;
  const std::string deck = shortDeck(folder), moved = folder.file("renamed.pptx");
  std::thread somebody([&] {
    for (int i = 0; i < 10000 && readFile(deck + ".journal").size() < 500; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::filesystem::rename(deck, moved);
  });
  const Outcome vote = matrix(voteWords(deck));
  somebody.join();
  EXPECT_EQ(vote.code, 0) << vote.err;
  EXPECT_NE(vote.err.find(deck + " was renamed or moved to " + moved), std::string::npos) << vote.err;
  EXPECT_EQ(stored(moved).size(), kVotes);
  for (const char* left : {"", ".journal", ".lock"})
    EXPECT_FALSE(std::filesystem::exists(deck + left)) << left;
}

TEST(Disk, AFileThatMayNotGrowIsToldLikeAFullDisk) {
  const TempFolder folder;
  const std::string deck = shortDeck(folder);
  const Outcome none = matrix(voteWords(deck), [] { filesUpTo(0); });
  EXPECT_EQ(none.code, 1);
  EXPECT_NE(none.err.find("could not be started. Cannot write"), std::string::npos) << none.err;
  EXPECT_NE(none.err.find("disk is full"), std::string::npos) << none.err;
  const Outcome vote = matrix(voteWords(deck), [] { filesUpTo(2000); });
  EXPECT_EQ(vote.code, 1) << "-1: killed";
  EXPECT_NE(vote.err.find("disk is full"), std::string::npos) << vote.err;
  const std::vector<std::string> kept = stored(deck);
  int told = 0;
  for (const std::string& line : lines(vote.out)) {
    if (line.rfind("saved ", 0) != 0)
      continue;
    ++told;
    EXPECT_NE(std::find(kept.begin(), kept.end(), line.substr(6)), kept.end()) << "lost: " << line;
  }
  EXPECT_GT(told, 0);
}

}  // namespace
}  // namespace qrn::test
