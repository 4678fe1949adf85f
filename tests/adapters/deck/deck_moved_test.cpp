// A deck that is renamed, moved, deleted or replaced while it is open, or while its journal waits, loses
// nothing.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;
using deck::OpenOptions;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const OpenOptions kReading{true, nullptr, "", {}, {}};

class DeckMoved : public ::testing::Test {
 protected:
  std::unique_ptr<Deck> open() {
    OpenOptions options;
    options.tell = [this](const std::string& text) { told.push_back(text); };
    return Deck::open(file, options);
  }
  static void vote(Deck& deck, const char* text) { deck.Slides(1).tags().Append("QRNVOTES", text); }
  static std::string votesIn(const std::string& path, const OpenOptions& options = {}) {
    return Deck::open(path, options)->Slides(1).tags().Item("QRNVOTES");
  }
  static std::string saveFailure(Deck& deck) {
    try {
      deck.Save();
    } catch (const HostError& error) {
      return error.what();
    }
    return "saved";
  }
  // Opens, votes, lets `then` act and is killed.
  void killedRun(const std::function<void(Deck&)>& then) {
    EXPECT_EQ(inChild([&] {
                const auto deck = Deck::open(file);
                vote(*deck, "1;");
                then(*deck);
                ::raise(SIGKILL);
                return 0;
              }),
              99);
  }

  TempFolder folder;
  std::string file = folder.deck(), moved = folder.file("moved.pptx");
  std::vector<std::string> told;
};

TEST_F(DeckMoved, IsFollowedWithAllThatStandsBesideIt) {
  std::filesystem::create_directory(folder.file("sub"));
  for (const std::string& to : {moved, folder.file("sub/talk.pptx")}) {
    for (const bool journalStarted : {true, false}) {
      SCOPED_TRACE(to + (journalStarted ? " with a journal" : ""));
      file = folder.deck();
      told.clear();
      writeFile(to + ".journal", "of a deck that stood there before");
      const auto deck = open();
      deck->tags().Add("A", "1");
      deck->Save();
      if (journalStarted)
        vote(*deck, "1;");
      std::filesystem::rename(file, to);
      EXPECT_FALSE(deck->ReadOnly());
      EXPECT_EQ(deck->WhyNoVotes(), "");
      vote(*deck, "2;");
      vote(*deck, "3;");
      EXPECT_THAT(told, ElementsAre(AllOf(HasSubstr(file), HasSubstr(to),
                                          HasSubstr(journalStarted ? to + ".journal" : ""))));
      EXPECT_EQ(deck->FullName(), to);
      EXPECT_EQ(votesIn(to, kReading), journalStarted ? "1;2;3;" : "2;3;");
      EXPECT_THROW(Deck::open(to), deck::DeckInUse);
      EXPECT_TRUE(std::filesystem::exists(to + ".backup"));
      EXPECT_EQ(readFile(to + ".journal.1"), "of a deck that stood there before");
      deck->Save();
      EXPECT_EQ(votesIn(to, kReading), journalStarted ? "1;2;3;" : "2;3;");
      for (const char* left : {"", ".journal", ".lock", ".backup"})
        EXPECT_FALSE(std::filesystem::exists(file + left)) << left;
      for (const auto& one : std::filesystem::directory_iterator(std::filesystem::path(to).parent_path()))
        if (one.path().string().rfind(to, 0) == 0)
          std::filesystem::remove(one.path());
    }
  }
}

TEST_F(DeckMoved, WithItsWholeFolderIsFollowed) {
  std::filesystem::create_directory(folder.file("one"));
  std::filesystem::rename(file, folder.file("one/talk.pptx"));
  file = folder.file("one/talk.pptx");
  const auto deck = open();
  vote(*deck, "1;");
  std::filesystem::rename(folder.file("one"), folder.file("two"));
  vote(*deck, "2;");
  deck->Save();
  EXPECT_EQ(votesIn(folder.file("two/talk.pptx"), kReading), "1;2;");
  EXPECT_FALSE(std::filesystem::exists(folder.file("one")));
  EXPECT_THAT(told, ElementsAre(HasSubstr(folder.file("two/talk.pptx"))));
}

TEST_F(DeckMoved, FindsTheJournalOfAKilledRun) {
  for (const bool readOnlyFirst : {true, false}) {
    file = folder.deck();
    killedRun([&](Deck& deck) {
      deck.Save();
      vote(deck, "2;");
      std::filesystem::rename(file, moved);
    });
    folder.deck({2, false, false, false, false});  // another deck takes the old name
    if (readOnlyFirst) {
      EXPECT_EQ(votesIn(moved, kReading), "1;2;");
      EXPECT_TRUE(std::filesystem::exists(file + ".journal"));
    }
    const auto deck = Deck::open(moved);
    EXPECT_EQ(deck->Slides(1).tags().Item("QRNVOTES"), "1;2;");
    EXPECT_THAT(deck->foreignSaveWarning().value_or(""), AllOf(HasSubstr(file), HasSubstr(moved)));
    EXPECT_FALSE(std::filesystem::exists(file + ".journal"));
    vote(*deck, "3;");
    deck->Save();
    EXPECT_EQ(votesIn(moved, kReading), "1;2;3;");
  }
}

TEST_F(DeckMoved, TheJournalGoesAlongAtTheEndToo) {
  {
    const auto deck = open();
    vote(*deck, "1;");
    std::filesystem::rename(file, moved);
  }
  EXPECT_THAT(folder.names(), ElementsAre("moved.pptx", "moved.pptx.journal"));
}

TEST_F(DeckMoved, AMomentWithoutTheDeckIsNoMove) {
  const auto deck = open();
  std::filesystem::rename(file, moved);
  std::thread savesByRenaming([&] {
    ::usleep(10000);
    writeFile(file, "the new deck");
  });
  vote(*deck, "1;");
  savesByRenaming.join();
  EXPECT_TRUE(std::filesystem::exists(file + ".journal"));
  EXPECT_TRUE(told.empty());
  EXPECT_THAT(saveFailure(*deck), HasSubstr("changed by another program"));
}

TEST_F(DeckMoved, ASecondNameOfTheSameFileIsNoMove) {
  std::filesystem::create_hard_link(file, moved);
  killedRun([](Deck&) {});
  EXPECT_EQ(votesIn(moved), "");
  EXPECT_EQ(votesIn(file), "1;");
}

TEST_F(DeckMoved, AJournalOfADeckThatWasOnlyLikeThisOneIsToldAndLeftAlone) {
  std::filesystem::copy_file(file, moved);  // as to another disk, or from the same template
  const std::string other = folder.file("other.pptx");
  killedRun([](Deck&) {});
  EXPECT_EQ(Deck::open(moved)->foreignSaveWarning(), std::nullopt) << "the deck of the journal is there";
  std::filesystem::remove(file);
  std::filesystem::rename(folder.deck({2, false, false, false, false}), other);
  EXPECT_EQ(Deck::open(other)->foreignSaveWarning(), std::nullopt) << "not like it";
  for (const OpenOptions& options : {kReading, OpenOptions{}}) {
    const auto deck = Deck::open(moved, options);
    EXPECT_EQ(deck->Slides(1).tags().Item("QRNVOTES"), "");
    EXPECT_THAT(
        deck->foreignSaveWarning().value_or(""),
        AllOf(HasSubstr(file + ".journal"), HasSubstr("one stored change"), HasSubstr(moved + ".journal")));
  }
  std::filesystem::rename(file + ".journal", moved + ".journal");
  EXPECT_EQ(votesIn(moved), "1;");
  EXPECT_EQ(Deck::open(moved)->foreignSaveWarning(), std::nullopt);
}

TEST_F(DeckMoved, OpenUnderItsFormerNameIsInUse) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t holder = ::fork();
  if (holder == 0) {
    const auto deck = Deck::open(file);
    char end = 0;
    ::close(ends[1]);
    std::filesystem::rename(file, moved);
    std::filesystem::create_directory(file + ".ready");
    ::_exit(::read(ends[0], &end, 1) == 0 ? 0 : 1);
  }
  while (!std::filesystem::exists(file + ".ready")) ::usleep(1000);
  EXPECT_THROW(Deck::open(moved), deck::DeckInUse);
  EXPECT_EQ(votesIn(moved, kReading), "");
  ::close(ends[1]);
  int status = 0;
  ::waitpid(holder, &status, 0);
  EXPECT_NO_THROW(Deck::open(moved)) << "its holder has ended";
}

TEST_F(DeckMoved, WhereAnotherProgramHasOpenedItMeanwhileTheJournalStays) {
  {
    const auto deck = open();
    vote(*deck, "1;");
    std::filesystem::rename(file, moved);
    const int lock = ::open((moved + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    vote(*deck, "2;");
    vote(*deck, "3;");
    EXPECT_THAT(told, ElementsAre(AllOf(HasSubstr(moved), HasSubstr("another program"))));
    EXPECT_THAT(saveFailure(*deck), AllOf(HasSubstr(moved), HasSubstr(file + ".journal")));
    EXPECT_FALSE(std::filesystem::exists(moved + ".journal"));
    told.clear();
    ::close(lock);
  }
  EXPECT_EQ(votesIn(moved), "1;2;3;");
}

TEST_F(DeckMoved, AJournalThatMayNotGoWithItStaysAndIsFound) {
  if (::geteuid() != 0)
    GTEST_SKIP() << "only root can play another user";
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
  const std::string sub = folder.file("sub"), there = sub + "/talk.pptx";
  EXPECT_EQ(inChild([&] {
              becomeNobody();
              const auto deck = open();
              vote(*deck, "1;");
              std::filesystem::create_directory(sub);
              std::filesystem::rename(file, there);
              std::filesystem::permissions(sub, std::filesystem::perms(0555));
              vote(*deck, "2;");
              return told.size() == 1 && told[0].find(file + ".journal") != std::string::npos ? 0 : 1;
            }),
            0);
  EXPECT_EQ(votesIn(there), "1;2;");
}

TEST_F(DeckMoved, ADeletedDeckIsToldAndItsVotesStay) {
  const std::string bytes = readFile(file);
  {
    const auto deck = open();
    vote(*deck, "1;");
    std::filesystem::remove(file);
    EXPECT_FALSE(deck->ReadOnly());
    EXPECT_THAT(deck->WhyNoVotes(), HasSubstr(file + " is gone"));
    vote(*deck, "2;");
    vote(*deck, "3;");
    EXPECT_THAT(told, ElementsAre(AllOf(HasSubstr(file + " is gone"), HasSubstr(file + ".journal"))));
    EXPECT_THAT(saveFailure(*deck), AllOf(HasSubstr(file + " is gone"), HasSubstr("not saved"),
                                          HasSubstr(file + ".journal"), HasSubstr("Put the deck back")));
    EXPECT_THAT(folder.names(), ElementsAre("talk.pptx.journal", "talk.pptx.lock")) << "made anew in silence";
  }
  writeFile(file, bytes);
  EXPECT_EQ(votesIn(file), "1;2;3;");
}

TEST_F(DeckMoved, AJournalDeletedOrMovedAloneIsWrittenAnew) {
  for (const bool deleted : {true, false}) {
    file = folder.deck();
    {
      const auto deck = open();
      vote(*deck, "1;");
      deleted ? (void)std::filesystem::remove(file + ".journal")
              : std::filesystem::rename(file + ".journal", folder.file("elsewhere"));
      vote(*deck, "2;");
    }
    EXPECT_EQ(votesIn(file), "1;2;");
    std::filesystem::remove(file + ".journal");
  }
}

TEST_F(DeckMoved, NotesOfOpenDecksGoWithThem) {
  const std::string notes = folder.path() + "-state/quorin-matrix/open";
  {
    const auto deck = open();
    EXPECT_FALSE(std::filesystem::is_empty(notes));
  }
  EXPECT_TRUE(std::filesystem::is_empty(notes));
  killedRun([&](Deck&) {
    std::filesystem::remove(file + ".journal");
    std::filesystem::remove(file);
  });
  EXPECT_FALSE(std::filesystem::is_empty(notes));
  file = folder.deck();
  open().reset();
  EXPECT_TRUE(std::filesystem::is_empty(notes)) << "left by a killed run";
}

}  // namespace
}  // namespace qrn::test
