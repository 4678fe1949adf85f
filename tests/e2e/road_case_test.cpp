// The subcommands of the built program, told as conversations: words in, exit code and texts out.
#include "adapters/deck/journal.h"
#include "e2e/program.h"
#include "support/disk_case.h"

namespace qrn::test {
namespace {

class RoadCase : public DiskCase {
 protected:
  RoadCase() : DiskCase(folder, "deck.pptx") {
    folder.sampleDeck();
    // matrix WORD ...: what it prints, and the code when it is not 0; files stand in the folder of the deck
    on("matrix", [this](const Words& words) { run(words, true); });
    on("told", [this](const Words& words) { run(words, false); });  // without its output
    on("exactly", [this](const Words& words) {
      tell("'" + escaped(matrix({words[0], folder.file(words[1]), "--get", words.rest(2)}).out) + "'");
    });
    on("journal", [this](const Words&) { writeFile(folder.file("deck.pptx.journal"), foreignJournal()); });
    on("is", [this](const Words& words) {
      const std::string file = folder.file(words[0]);
      tell(!std::filesystem::exists(file)       ? "gone"
           : readFile(file) == foreignJournal() ? "the journal"
                                                : std::to_string(readFile(file).size()) + " bytes");
    });
    on("spoil", [this](const Words& words) {
      std::string bytes = readFile(folder.file("deck.pptx"));
      bytes.replace(bytes.find(words[0]) + 60, 40, 40, '?');
      writeFile(folder.file("deck.pptx"), bytes);
    });
  }
  std::string shown(std::string told) const override { return replaceAll(told, folder.file(""), ""); }

 private:
  static std::string foreignJournal() {
    const std::string head = deck::journalHead(std::string(32, '0'));
    return head +
           deck::journalRecord(head.size(), deck::journalPayload({deck::Change::Kind::add, 0, "A", "a", 0}));
  }
  void run(const std::vector<std::string>& words, bool output) {
    std::vector<std::string> full = words;
    for (std::string& word : full)
      if (word.find('.') != std::string::npos && word[0] != '.' && word[0] != '/')
        word = folder.file(word);
    const Outcome outcome = matrix(full);
    if (output)
      for (const std::string& line : lines(outcome.out)) tell(escaped(line));
    for (const std::string& line : lines(outcome.err)) tell("! " + escaped(line));
    if (outcome.code != 0)
      tell("code ", outcome.code);
  }

  TempFolder folder;
};

const bool kRegistered = registerCases<RoadCase>("RoadCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
