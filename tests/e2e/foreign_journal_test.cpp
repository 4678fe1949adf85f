// A deck with a journal of another state beside it: every subcommand says so and has a way on.
#include <gtest/gtest.h>

#include "adapters/deck/journal.h"
#include "e2e/program.h"

namespace qrn::test {
namespace {

std::string foreignJournal() {
  const std::string head = deck::journalHead(std::string(32, '0'));
  return head +
         deck::journalRecord(head.size(), deck::journalPayload({deck::Change::Kind::add, 0, "A", "a", 0}));
}

struct Choice {
  const char* journal;
  bool writes;
  int code;
  const char *out, *told;
  bool stays, aside;  // the journal in its place and under another name afterwards
};

TEST(ForeignJournal, IsRefusedAppliedOrMovedAsideAndNeverLost) {
  for (const Choice& choice :
       {Choice{"", false, 1, "", "--journal apply", true, false},
        Choice{"refuse", true, 1, "", "--journal aside", true, false},
        Choice{"apply", false, 0, "a", "", true, false}, Choice{"apply", true, 0, "a", "", false, true},
        Choice{"aside", false, 0, "", "set aside as", false, true},
        Choice{"aside", true, 0, "", "set aside as", false, true}}) {
    const TempFolder folder;
    const std::string deck = folder.sampleDeck(), journal = deck + ".journal";
    writeFile(journal, foreignJournal());
    writeFile(folder.file("b"), "b");
    std::vector<std::string> words = {"tags", deck};
    if (*choice.journal != '\0')
      words.insert(words.end(), {"--journal", choice.journal});
    std::vector<std::string> read = words, write = words;
    read.insert(read.end(), {"--get", "A"});
    write.insert(write.end(), {"--set", "B", "--from", folder.file("b")});
    Outcome outcome = matrix(choice.writes ? write : read);
    const std::string name = std::string(choice.journal) + (choice.writes ? " writing" : " reading");
    EXPECT_EQ(outcome.code, choice.code) << name;
    EXPECT_NE(outcome.err.find(choice.told), std::string::npos) << name << ": " << outcome.err;
    if (choice.writes && choice.code == 0)
      outcome = matrix({"tags", deck, "--get", "A"});
    EXPECT_EQ(outcome.out, choice.out) << name << outcome.err;
    EXPECT_EQ(readFile(choice.stays ? journal : journal + ".1"), foreignJournal()) << name;
    EXPECT_EQ(std::filesystem::exists(journal), choice.stays) << name;
    EXPECT_EQ(std::filesystem::exists(journal + ".1"), choice.aside) << name;
  }
}

TEST(ForeignJournal, EverySubcommandTakesTheChoice) {
  const TempFolder folder;
  const std::string deck = folder.sampleDeck(), out = folder.file("out");
  writeFile(deck + ".journal", foreignJournal());
  const std::vector<std::vector<std::string>> all = {
      {"info", deck},
      {"results", deck, "--slide", "4"},
      {"mtx", "export", deck, "--slide", "4", "--out", out},
      {"graph", deck, "--slide", "4", "--kind", "average", "--out", out + ".png"},
      {"mtx", "import", deck, "--slide", "2", "--from", out},
      {"vote", deck, "--slide", "1", "--rehearse", "2", "--seed", "1"}};
  for (std::vector<std::string> words : all) {
    EXPECT_NE(matrix(words).err.find("--journal apply"), std::string::npos) << words[0];
    words.insert(words.end(), {"--journal", "apply"});
    EXPECT_EQ(matrix(words).err.find("journal"), std::string::npos) << words[0];
    writeFile(deck + ".journal", foreignJournal());
  }
}

}  // namespace
}  // namespace qrn::test
