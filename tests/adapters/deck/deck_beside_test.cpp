// What stands beside a deck: whose it is, who may read it, and that nobody's leftovers stop anybody.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/overwrite.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::ElementsAre;

constexpr unsigned kNobody = 65534;

struct Standing {
  unsigned mode, user, group;
  bool operator==(const Standing&) const = default;
};

void PrintTo(const Standing& standing, std::ostream* out) {
  *out << std::oct << standing.mode << std::dec << " " << standing.user << ":" << standing.group;
}

Standing standingOf(const std::string& file) {
  struct stat info {};
  EXPECT_EQ(::stat(file.c_str(), &info), 0) << file;
  return {info.st_mode & 07777U, info.st_uid, info.st_gid};
}

TEST(DeckBeside, EveryFileTakesAfterTheDeckAndTheDeckAfterItself) {
  const bool root = ::geteuid() == 0;
  const unsigned user = root ? kNobody : ::geteuid(), group = root ? kNobody : ::getegid();
  for (const unsigned mode : {0600U, 0640U, 0666U, 0400U}) {
    const TempFolder folder;
    const std::string file = folder.deck();
    ASSERT_EQ(::chown(file.c_str(), user, group), 0);
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
    const Standing neighbour{mode | 0600U, user, group};
    const auto deck = Deck::open(file);
    deck->Slides(1).tags().Add("QRNVOTES", "secret");
    EXPECT_EQ(standingOf(file + ".journal"), neighbour);
    EXPECT_EQ(standingOf(file + ".lock"), neighbour);
    if (deck->ReadOnly())
      continue;
    deck->Save();
    EXPECT_EQ(standingOf(file + ".backup"), neighbour);
    EXPECT_EQ(standingOf(file), (Standing{mode, user, group}));
  }
}

TEST(DeckBeside, AGroupIsKeptByWhoeverBelongsToIt) {
  if (::geteuid() != 0)
    GTEST_SKIP() << "only root can play another user";
  const TempFolder folder;
  const std::string file = folder.deck();
  constexpr gid_t kTeam = 4711;
  ASSERT_EQ(::chown(file.c_str(), 0, kTeam), 0);
  ASSERT_EQ(::chmod(file.c_str(), 0660), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  EXPECT_EQ(inChild([&] {
              ::setgroups(1, &kTeam);
              becomeNobody();
              const auto deck = Deck::open(file);
              deck->tags().Add("A", "1");
              deck->Save();
              return 0;
            }),
            0);
  EXPECT_EQ(standingOf(file), (Standing{0660, kNobody, kTeam}));
  EXPECT_EQ(standingOf(file + ".backup"), (Standing{0660, kNobody, kTeam}));
}

// By name, by any link, and where nothing stands yet.
TEST(DeckBeside, NothingOfADeckNorAnotherDeckIsWrittenOver) {
  const TempFolder folder;
  const std::string file = folder.deck(), other = folder.file("Other.PPTX");
  for (const char* name : {"Other.PPTX", "talk.pptx.backup", "talk.pptx.lock.2", "picture.svg"})
    writeFile(folder.file(name), "x");
  std::filesystem::create_hard_link(file, folder.file("hard.svg"));
  std::filesystem::create_symlink(folder.file("talk.pptx.lock.2"), folder.file("soft.svg"));
  std::filesystem::create_symlink(other, folder.file("other.svg"));
  std::filesystem::create_symlink(folder.path(), folder.file("way"));
  std::filesystem::create_symlink("talk.pptx", folder.file("short.pptx"));
  for (const char* name : {"talk.pptx", "way/talk.pptx", "./way/talk.pptx.journal", "talk.pptx.journal",
                           "talk.pptx.journal.3", "talk.pptx.backup", "talk.pptx.lock", "talk.pptx.lock.2",
                           "hard.svg", "soft.svg", "Other.PPTX", "other.svg"})
    for (const std::string& deck : {file, folder.file("way/short.pptx")})
      EXPECT_NE(deck::whyNotOverwritten(folder.file(name), deck), "") << name;
  for (const char* name : {"picture.svg", "new.pptx", "talk.svg", "talk.pptx.svg", "nowhere/x.svg"})
    EXPECT_EQ(deck::whyNotOverwritten(folder.file(name), file), "") << name;
}

std::string whyNotOpened(const std::string& file) {
  try {
    Deck::open(file);
  } catch (const deck::DeckInUse& error) {
    return error.what();
  }
  return "opened";
}

// Files of root in a folder where only their owner may take them away.
TEST(DeckBeside, AnotherUsersLeftoversStopNobody) {
  if (::geteuid() != 0)
    GTEST_SKIP() << "only root can play another user";
  for (const unsigned folderMode : {0777U, 01777U}) {
    SCOPED_TRACE(folderMode);
    const TempFolder folder;
    const std::string file = folder.deck();
    ASSERT_EQ(::chown(file.c_str(), kNobody, kNobody), 0);
    for (const char* leftover : {"talk.pptx.lock", ".talk.pptx.quorin-new", ".talk.pptx.backup.quorin-new"}) {
      writeFile(folder.file(leftover), "1");
      ASSERT_EQ(::chmod(folder.file(leftover).c_str(), 0600), 0);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), folderMode), 0);
    EXPECT_EQ(inChild([&] {
                becomeNobody();
                const auto deck = Deck::open(file);
                deck->tags().Add("A", "1");
                deck->Save();
                return whyNotOpened(file) == "opened" ? 1 : 0;
              }),
              0)
        << "98: stopped, 1: opened twice";
    EXPECT_EQ(Deck::open(file)->tags().Item("A"), "1");
  }
}

TEST(DeckBeside, ALockThatIsHeldHoldsWhoeverMayOpenItsFile) {
  if (::geteuid() != 0)
    GTEST_SKIP() << "only root can play another user";
  const struct {
    const char* name;
    unsigned mode;
    const char* told;
  } cases[] = {{"talk.pptx.lock", 0600, "in use"},
               {"talk.pptx.lock", 0644, "(process 77)"},
               {"talk.pptx.lock.2", 0600, "in use"}};
  for (const auto& one : cases) {
    const TempFolder folder;
    const std::string file = folder.deck(), path = folder.file(one.name);
    writeFile(path, "77");
    ASSERT_EQ(::chmod(path.c_str(), one.mode), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    const int lock = ::open(path.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    EXPECT_EQ(inChild([&] {
                becomeNobody();
                return whyNotOpened(file).find(one.told) != std::string::npos ? 0 : 1;
              }),
              0)
        << one.name << " " << one.mode;
    ::close(lock);
    EXPECT_EQ(whyNotOpened(file), "opened");
  }
}

TEST(DeckBeside, ALockOfAnotherIsNotTakenAway) {
  const TempFolder folder;
  const std::string file = folder.deck();
  {
    const auto deck = Deck::open(file);
    std::filesystem::remove(file + ".lock");
    writeFile(file + ".lock", "another program's");
  }
  EXPECT_EQ(readFile(file + ".lock"), "another program's");
}

TEST(DeckBeside, AnotherUsersJournalGoesOn) {
  if (::geteuid() != 0)
    GTEST_SKIP() << "only root can play another user";
  const TempFolder folder;
  const std::string file = folder.deck();
  { Deck::open(file)->tags().Add("A", "1"); }
  ASSERT_EQ(::chown(file.c_str(), kNobody, kNobody), 0);
  ASSERT_EQ(::chmod((file + ".journal").c_str(), 0644), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  EXPECT_EQ(inChild([&] {
              becomeNobody();
              Deck::open(file)->tags().Append("A", "2");
              return 0;
            }),
            0);
  EXPECT_EQ(Deck::open(file)->tags().Item("A"), "12");
}

// Two letters in three bytes: a cut must not leave half of one.
std::string longName(const std::string& end) {
  std::string name;
  while (name.size() + 3 + end.size() <= 255) name += "a\xC3\xA9";
  return name + std::string(255 - name.size() - end.size(), 'x') + end;
}

TEST(DeckBeside, NamesAsLongAsTheFileSystemTakes) {
  const TempFolder folder;
  for (const std::string end : {"1.pptx", "2.pptx"}) {
    const std::string file = folder.file(longName(end));
    std::filesystem::rename(folder.deck(), file);
    { Deck::open(file)->tags().Add("A", end); }
    const auto deck = Deck::open(file);
    EXPECT_EQ(deck->tags().Item("A"), end) << "the journal is found again";
    deck->Save();
    std::filesystem::rename(folder.deck({2, false, false, false, false}), file);
    EXPECT_TRUE(Deck::open(file, {true, nullptr, "", {}})->tagsDropped()) << "the backup is found again";
  }
  for (const std::string& name : folder.names()) {
    EXPECT_LE(name.size(), 255U);
    EXPECT_EQ(name.find("\xC3~"), std::string::npos) << name;
  }
}

TEST(DeckBeside, ExtendedAttributesStayOverASave) {
  const TempFolder folder;
  const std::string file = folder.deck();
  const std::string value("from\0the archive", 16);
  if (::setxattr(file.c_str(), "user.origin", value.data(), value.size(), 0) != 0)
    GTEST_SKIP() << "no extended attributes on this file system";
  ASSERT_EQ(::setxattr(file.c_str(), "user.empty", "", 0, 0), 0);
  const auto deck = Deck::open(file);
  deck->tags().Add("A", "1");
  deck->Save();
  std::string got(100, '\0');
  got.resize(static_cast<std::size_t>(
      std::max<ssize_t>(0, ::getxattr(file.c_str(), "user.origin", got.data(), got.size()))));
  EXPECT_EQ(got, value);
  EXPECT_EQ(::getxattr(file.c_str(), "user.empty", nullptr, 0), 0);
}

}  // namespace
}  // namespace qrn::test
