// The subcommands of the built program, told as conversations: words in, exit code and texts out.
#include <array>
#include <nlohmann/json.hpp>
#include <thread>

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
    // with WORLD WORD ...: the same, where the output is full, closed or read by nobody, there is no display,
    // or files may grow to small=BYTES
    on("with",
       [this](const Words& words) { run(Words(words.as(1)), true, [how = words[0]] { spoilWorld(how); }); });
    // into FILE WORD ...: what is printed
    on("into", [this](const Words& words) {
      writeFile(folder.file(words[0]), matrix(inFolder(Words(words.as(1)))).out);
    });
    // json FILE PLACE ...: what stands there, such as /items/0/average/0
    on("json", [this](const Words& words) {
      const auto json = nlohmann::json::parse(readFile(path(words, 0)));
      for (std::size_t i = 1; i < words.size(); ++i)
        tell(words[i], " ", json.at(nlohmann::json::json_pointer(words[i])).dump());
    });
    // once FILE BYTES COMMAND: in the midst of what follows, when the file has grown so far; joined
    on("once", [this](const Words& words) {
      once_ = std::jthread([file = path(words, 0), bytes = words.number(1), act = later(words, 2)] {
        for (int i = 0; i < 10000 && readFile(file).size() < static_cast<std::size_t>(bytes); ++i)
          std::this_thread::sleep_for(std::chrono::milliseconds(2));
        act();
      });
    });
    on("joined", [this](const Words&) { once_.join(); });
    // only FILE TEXT INSTEAD BEHIND: instead of each text behind that place; upto FILE TEXT: its first
    on("only", [this](const Words& words) {
      std::string text = readFile(path(words, 0));
      const std::size_t behind = text.find(words[3]);
      writeFile(path(words, 0), text.substr(0, behind) + replaceAll(text.substr(behind), words[1], words[2]));
    });
    on("upto", [this](const Words& words) {
      std::filesystem::resize_file(path(words, 0), readFile(path(words, 0)).find(words[1]));
    });
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
  static void spoilWorld(const std::string& how) {
    std::array<int, 2> ends{};
    if (how == "full")
      ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO);
    else if (how == "closed")
      ::close(STDOUT_FILENO);
    else if (how == "nobody" && ::pipe2(ends.data(), O_CLOEXEC) == 0)
      ::dup2(ends[1], STDOUT_FILENO), ::close(ends[0]);
    else if (how == "nodisplay")
      for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(name);
    else if (how.starts_with("small="))
      limitFiles(std::stoul(how.substr(6))), std::signal(SIGXFSZ, SIG_DFL);
    else
      ::_exit(126);
  }
  std::vector<std::string> inFolder(std::vector<std::string> words) const {
    for (std::string& word : words)
      if (word.find('.') != std::string::npos && word[0] != '.' && word[0] != '/')
        word = folder.file(word);
    return words;
  }
  void run(const std::vector<std::string>& words, bool output, const std::function<void()>& spoil = {}) {
    const Outcome outcome = matrix(inFolder(words), [&] {
      for (const char* home : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"}) ::setenv(home, folder.path().c_str(), 1);
      if (spoil)
        spoil();
    });
    if (outcome.code == 127)
      GTEST_SKIP() << "another user may not run the program here";
    if (output)
      for (const std::string& line : lines(outcome.out)) tell(escaped(line));
    for (const std::string& line : lines(outcome.err)) tell("! " + escaped(line));
    if (outcome.code != 0)
      tell("code ", outcome.code);
  }

  TempFolder folder;
  std::jthread once_;
};

const bool kRegistered = registerCases<RoadCase>("RoadCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
