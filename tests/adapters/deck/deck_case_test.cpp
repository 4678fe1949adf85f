// Decks told as conversations: what is stored in them, what other programs do to them and what stands beside
// them.
#include <sys/wait.h>

#include <sstream>
#include <thread>

#include "adapters/deck/bytes.h"
#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/journal.h"
#include "adapters/deck/open_asking.h"
#include "adapters/deck/overwrite.h"
#include "adapters/deck/package.h"
#include "adapters/deck/splice.h"
#include "base/errors.h"
#include "support/disk_case.h"
#include "support/test_host.h"

namespace qrn::test {
namespace {

using deck::Deck;
using deck::OpenOptions;
namespace fs = std::filesystem;

class DeckCase : public DiskCase {
 protected:
  DeckCase() : DiskCase(folder, "talk.pptx") {
    folder.deck();
    fileCommands();
    partCommands();
    openCommands();
    tagCommands();
    slideCommands();
    processCommands();
  }
  std::string shown(std::string told) const override {
    told = replaceAll(replaceAll(told, folder.path() + "/", ""), folder.path(), "FOLDER");
    return replaceAll(told, "process " + std::to_string(process_), "process US");
  }
  Deck& deck() { return *decks_.back(); }
  host::Tags& tagsOf(const std::string& slide) {
    return slide == "deck" ? deck().tags() : deck().Slides(std::stoi(slide)).tags();
  }
  static OpenOptions reading() { return {true, nullptr, "", {}, {}}; }

 private:
  void fileCommands() {
    // deck [clean] [FILE] [slides=N] [strict] [bom] [absolute] [tagged]
    on("deck", [this](const Words& words) {
      DeckOptions options;
      std::string name = "talk.pptx";
      for (const std::string& word : words)
        if (word.starts_with("slides="))
          options.slides = std::stoi(word.substr(7));
        else if (word == "clean")
          for (const std::string& old : folder.names()) fs::remove_all(folder.file(old));
        else if (word.find('.') != std::string::npos)
          name = word;
        else
          (word == "strict"     ? options.strict
           : word == "bom"      ? options.bom
           : word == "absolute" ? options.absolute
                                : options.tagged) = true;
      writeZip(folder.file(name), deckParts(options));
    });
    // unfit KIND SLIDE NAME VALUE NUMBER or unfit PAYLOAD: a journal of A=a, of that, and of c behind A
    on("unfit", [this](const Words& words) { writeJournal(words); });
    // spliced OFFSET GOES COMES TEXT ...: what these places make of three characters
    on("spliced", [this](const Words& words) {
      const std::string before = "a\xC3\xA4z";
      std::string splice;
      deck::put(splice, deck::checksum(before));
      for (std::size_t i = 0; i < words.size(); ++i)
        if (i % 4 < 3)
          deck::put(splice, static_cast<std::uint32_t>(std::stoul(words[i])));
        else
          splice += words[i];
      tell(deck::spliced(before, splice).value_or("refused"));
    });
    on("soon", [this](const Words& words) {
      soon_ = std::jthread([file = path(words, 0), text = words.rest(1)] {
        ::usleep(10000);
        writeFile(file, text);
      });
    });
    on("joined", [this](const Words&) { soon_.join(); });
    on("notes", [this](const Words&) {
      tell(fs::is_empty(folder.path() + "-state/quorin-matrix/open") ? "none" : "noted");
    });
  }
  void writeJournal(const Words& words) {
    using deck::Change;
    const std::string splice = deck::spliceOf("a", "b", 100).value();
    const auto change = [&] {
      return deck::journalPayload({static_cast<Change::Kind>(words[0][0]),
                                   static_cast<std::uint32_t>(std::stoul(words[1])), words[2],
                                   words[3] == "SPLICE" ? splice : words[3], std::stoul(words[4])});
    };
    std::string bytes = deck::journalHead(deck::Package(folder.file("talk.pptx")).fingerprint());
    for (const std::string& one : {deck::journalPayload({Change::Kind::add, 300, "A", "a", 0}),
                                   words.size() == 1 ? words[0] : change(),
                                   deck::journalPayload({Change::Kind::append, 300, "A", "c", 1})})
      bytes += deck::journalRecord(bytes.size(), one);
    writeFile(folder.file("talk.pptx.journal"), bytes);
  }
  // Parts are those of talk.pptx, changed as another program would.
  void partCommands() {
    const auto change = [this](const std::function<void(PartList&)>& act) {
      PartList parts = readZip(folder.file("talk.pptx"));
      act(parts);
      writeZip(folder.file("talk.pptx"), parts);
    };
    on("part", [change](const Words& words) {
      change([&](PartList& parts) {
        part(parts, words[0]) = replaced(part(parts, words[0]), words[1], words.word(2));
      });
    });
    on("newpart", [change](const Words& words) {
      change([&](PartList& parts) { part(parts, words[0]) = words.rest(1); });
    });
    on("longpart", [change](const Words& words) {
      change([&](PartList& parts) { part(parts, words[0]).assign(std::stoul(words[1]), ' '); });
    });
    on("nopart", [change](const Words& words) {
      change([&](PartList& parts) {
        std::erase_if(parts, [&](const auto& one) { return one.first.find(words[0]) != std::string::npos; });
      });
    });
    // count PART TEXT: how often it stands there
    on("count", [this](const Words& words) {
      PartList parts = readZip(folder.file("talk.pptx"));
      const std::string& text = part(parts, words[0]);
      int times = 0;
      for (std::size_t at = 0; (at = text.find(words.rest(1), at)) != std::string::npos; ++at) ++times;
      tell(times);
    });
    on("copypart", [change](const Words& words) {
      change([&](PartList& parts) { part(parts, words[1]) = std::string(part(parts, words[0])); });
    });
    on("utf16", [change](const Words& words) {
      change([&](PartList& parts) {
        std::string& text = part(parts, words[0]);
        std::string wide = "\xFF\xFE";
        for (const char c : replaced(text, "UTF-8", "UTF-16")) wide += {c, '\0'};
        text = wide;
      });
    });
    // What has changed in the parts since "parts": the piece between what is the same at both ends.
    on("parts", [this](const Words&) { parts_ = readZip(folder.file("talk.pptx")); });
    on("changes", [this](const Words& words) { tellChanges(words.word(0)); });
  }
  void tellChanges(const std::string& only) {
    for (const auto& [name, text] : readZip(folder.file("talk.pptx")))
      if (text != part(parts_, name) && name.find(only) != std::string::npos)
        tell(name, ": ", changeOf(part(parts_, name), text));
  }
  void openCommands() {
    // open [FILE] [reading] [apply] [aside]: the deck at hand from now on, until "close" gives back the one
    // before
    on("open", [this](const Words& words) {
      OpenOptions options;
      std::string name;
      for (const std::string& word : words)
        if (word == "reading")
          options.readOnly = true;
        else if (word == "apply" || word == "aside")
          options.otherJournal = word == "apply" ? deck::OtherJournal::apply : deck::OtherJournal::setAside;
        else
          name = word;
      options.tell = [this](const std::string& text) { tell("told: " + escaped(text)); };
      const std::string file = folder.file(name.empty() ? "talk.pptx" : name);
      decks_.push_back(dialogs_.expected.empty() ? Deck::open(file, options)
                                                 : deck::openAsking(file, options));
      if (const auto warning = deck().foreignSaveWarning())
        tell("warning: " + escaped(*warning));
    });
    // answer WORD: what the next "open" is told when it asks about the journal
    on("answer", [this](const Words& words) {
      host::host().dialogs = &dialogs_;
      std::optional<host::Answer> answer;  // none: Enter
      if (words[0] != "enter")
        answer = words[0] == "yes" ? host::Answer::yes : host::Answer::no;
      dialogs_.expected.push_back({"msg", "store what fits", answer, {}});
    });
    on("close", [this](const Words&) { decks_.pop_back(); });
    // peek [FILE]: all tags of it, the deck's and then slide after slide
    on("peek",
       [this](const Words& words) { tell(escaped(stateOf(*Deck::open(path(words, 0), reading())))); });
    // opens: whether it does, and leaves all as it was
    on("opens", [this](const Words& words) { tellOpens(path(words, 0)); });
    // spoilt COMMAND: whether a deck opens that this is done to; survives "COMMAND" ...: what one stores then
    on("spoilt", [this](const Words& words) {
      for (const std::string& line : {std::string("deck clean"), words.as(0), std::string("opens")})
        runLine(line);
    });
    on("survives", [this](const Words& words) {
      runLine("deck clean");
      for (const std::string& line : words) runLine(line);
      for (const char* line : {"open", "add 1 A 1", "save", "close", "peek"}) runLine(line);
    });
    on("overwrite", [this](const Words& words) {
      const std::string why = deck::whyNotOverwritten(folder.file(words[0]), folder.file(words[1]));
      tell(why.empty() ? "may be" : why);
    });
    on("save", [this](const Words&) { deck().Save(); });
    on("saved", [this](const Words&) { tell(deck().Saved() ? "yes" : "no"); });
    on("names", [this](const Words&) { tell(deck().path() + " " + deck().FullName()); });
    on("votes", [this](const Words&) {
      tell((deck().ReadOnly() ? "read-only " : "") +
           (deck().WhyNoVotes().empty() ? "may be stored" : deck().WhyNoVotes()));
    });
    on("restore", [this](const Words&) {
      const deck::RestoreResult result = deck().restoreFromBackup();
      tell(result.tags, " tags");
      for (const std::string& line : result.notPlaced) tell("not placed: " + line);
      tell(escaped(deck().foreignSaveWarning().value_or("")));
    });
  }
  void tellOpens(const std::string& file) {
    const std::string before = fs::is_regular_file(file) ? readFile(file) : "";
    const std::size_t names = folder.names().size();
    std::string told = "opened";
    try {
      const auto one = Deck::open(file);
      for (int i = 1; i <= one->SlideCount() && told == "opened"; ++i)
        if (const std::string damage = one->Slides(i).Damage(); !damage.empty())
          told = damage;
    } catch (const HostError& error) {
      told = error.what();
      if (error.fault() == Fault::program)
        told += " (a fault of the program)";
    }
    tell(escaped(told));
    if (names != folder.names().size() || (fs::is_regular_file(file) && readFile(file) != before))
      tell("and has left something behind");
  }
  // SLIDE is a number or "deck"
  void tagCommands() {
    on("add", [this](const Words& words) { tagsOf(words[0]).Add(words[1], words.rest(2)); });
    on("addlong", [this](const Words& words) {
      tagsOf(words[0]).Add(words[1], std::string(std::stoul(words[2]), 'x'));
    });
    on("append", [this](const Words& words) { tagsOf(words[0]).Append(words[1], words.rest(2)); });
    on("vote", [this](const Words& words) { tagsOf("1").Append("QRNVOTES", words.rest(0)); });
    on("delete", [this](const Words& words) { tagsOf(words[0]).Delete(words[1]); });
    on("tag", [this](const Words& words) { tell("'" + escaped(tagsOf(words[0]).Item(words[1])) + "'"); });
    on("tags", [this](const Words& words) {
      const std::string names = joined(tagsOf(words[0]).Names(), " ");
      tell(names.empty() ? "none" : names);
    });
    on("runtags", [this](const Words& words) { deck().SetRunTags(words); });
    on("state", [this](const Words&) { tell(escaped(stateOf(deck()))); });
  }
  void slideCommands() {
    on("slides", [this](const Words&) {
      for (int i = 1; i <= deck().SlideCount(); ++i) {
        host::Slide& slide = deck().Slides(i);
        tell(slide.slideIndex(), ": ", slide.slideID(), " ", slide.Title(), (slide.Hidden() ? " hidden" : ""),
             (slide.Damage().empty() ? "" : ", damaged: " + slide.Damage()));
      }
      tell(deck().SlideWidth(), " x ", deck().SlideHeight());
    });
    on("slide", [this](const Words& words) { deck().Slides(words.number(0)); });
    on("new",
       [this](const Words& words) { tell("at ", deck().AddTitleOnlySlide(words.number(0)).slideIndex()); });
    // shapes SLIDE [notes]
    on("shapes", [this](const Words& words) {
      for (host::Shape* shape : shapesOf(words)) {
        static const std::map<host::PlaceholderType, std::string> kinds{
            {host::PlaceholderType::title, " title"}, {host::PlaceholderType::other, " placeholder"}};
        const auto kind = kinds.find(shape->Placeholder());
        tell(shape->Name() + (kind == kinds.end() ? "" : kind->second) + (shape->Visible() ? "" : " hidden") +
             ": " + (shape->HasTextFrame() ? escaped(shape->Text()) : "no text"));
      }
    });
    // shape SLIDE notes|slide NUMBER hide|show|delete|TEXT
    on("shape", [this](const Words& words) {
      host::Shape& shape = *shapesOf(words).at(static_cast<std::size_t>(words.number(2) - 1));
      const std::string what = words.rest(3);
      if (what == "delete")
        shape.Delete();
      else if (what == "hide" || what == "show")
        shape.SetVisible(what == "show");
      else
        shape.SetText(what);
    });
    on("look", [this](const Words&) {
      for (const auto& font : {deck().MasterTitleFont(), deck().MasterBodyFont()}) {
        if (font)
          tell("'", font->name, "' ", font->size, font->bold ? " bold" : "", font->italic ? " italic" : "",
               font->underline ? " underlined " : " ", std::hex, font->colour);
        else
          tell("no font");
      }
      std::ostringstream scheme;
      for (int entry = 0; entry <= 11; ++entry) {
        const std::int32_t colour = deck().SchemeColour(entry);
        scheme << (entry > 0 ? " " : "") << (colour < 0 ? "-" : "") << std::hex << (colour < 0 ? 0 : colour);
      }
      tell(scheme.str());
    });
  }
  std::vector<host::Shape*> shapesOf(const Words& words) {
    host::Slide& slide = deck().Slides(words.number(0));
    return words.word(1) == "notes" ? slide.NotesPageShapes() : slide.Shapes();
  }
  void processCommands() {
    on("holder", [this](const Words&) {
      EXPECT_EQ(::pipe(ends_), 0);
      holder_ = ::fork();
      if (holder_ == 0) {
        char end = 0;
        ::close(ends_[1]);
        runBlock();
        fs::create_directory(folder.file("ready"));
        ::_exit(::read(ends_[0], &end, 1) == 0 && !HasFailure() ? 0 : 1);
      }
      while (!fs::exists(folder.file("ready"))) ::usleep(1000);
    });
    on("letgo", [this](const Words&) {
      ::close(ends_[1]);
      int status = 0;
      ::waitpid(holder_, &status, 0);
      tell(status == 0 ? "" : "failed");
    });
  }

  void leave() override { decks_.clear(); }

  ScriptedDialogs dialogs_;
  TempFolder folder;
  const pid_t process_ = ::getpid();
  std::vector<std::unique_ptr<Deck>> decks_;
  PartList parts_;
  std::jthread soon_;
  int ends_[2] = {};
  pid_t holder_ = 0;
};

const bool kRegistered = registerCases<DeckCase>("DeckCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
