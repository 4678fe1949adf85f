// A run from its command line to what it shows, and to its end, told as conversations.
#include "core/run/entry.h"

#include "analysis/orders.h"
#include "base/text.h"
#include "core/edit.h"
#include "core/run/end_program.h"
#include "core/windows/blank_form.h"
#include "core/windows/presentation_windows.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "support/run_case.h"
#include "vote/link/comms.h"

namespace qrn::test {
namespace {

// A program that may run for the second time, beside others of its kind.
struct SecondProgram : MemoryProgram {
  bool PreviousInstance() const override { return previous; }
  bool AppActivate(const std::string&) override { return others; }
  void CloseApplication(const std::string& title) override { closed += title; }
  bool previous = false, others = false;
  std::string closed;
};

struct FragilePresentation : MemoryPresentation {
  FragilePresentation() : MemoryPresentation(3) {}
  void Save() override { throw HostError(Fault::world, 61, "The disk is full"); }
};

// A slide whose picture tells which of its shapes were seen.
struct ShownSlide : MemorySlide {
  ShownSlide() : MemorySlide(900, 1) {}
  void Export(const std::string& file, std::string_view format, int width, int height) override {
    what =
        file + " " + std::string(format) + " " + std::to_string(width) + "x" + std::to_string(height) + ":";
    for (const MemoryShape& shape : shapes) what += shape.visible ? " " + shape.name : "";
    if (fails)
      throw HostError(Fault::world, 5, "no pictures here");
  }
  bool fails = false;
  std::string what;
};

class EntryCase : public RunCase {
 protected:
  EntryCase() {
    glo = Glo{};
    host::host().presentationProgram = &program;
    program.presentation = &world.presentation;
    program.showRuns = true;
    program.show.index = program.window.index = 2;
    world.link.canShare = world.link.canStart = false;
    registerComms();
    registerBlankForm();
    for (const char* name : {"Wizard", "xyVoteRuntime", "xyVoteAverageGraph", "xyVoteGraph"})
      world.forms.define(name, [this, name] {
        tell(name, " comes up");
        world.forms.attach(name, [](host::Form&) { return std::make_unique<host::FormView>(); });
        if (std::string(name).ends_with("Graph"))  // somebody looks at it
          world.at(2, [this, name] { world.forms.unload(name); });
        return std::make_unique<host::Form>(name);
      });
    entryHooks() = EntryHooks{[this] { tell("the vote begins"); }};
    runCommands();
    slideCommands();
    programCommands();
    backgroundCommands();
  }
  ~EntryCase() override {
    releaseObjects();
    entryHooks() = EntryHooks{};
  }
  MemorySlide& slide() { return world.presentation.slide(2); }
  // exercise [new] KEY ...
  static std::string exercise(Words keys) {
    const bool asNew = keys.word(0) == "new";
    if (asNew)
      keys.erase(keys.begin());
    beginExercise();
    glo.listTitle = "Risks";
    glo.assessments[0].lbl_Risk = {1536, 0, 7680, 5760};
    items(keys);
    for (RiskRecord& risk : glo.risks) risk.newItem = asNew;
    return writeExercise(glo);
  }
  void runCommands() {
    // main LINE: what comes up, and whether the run has ended
    on("main", [this](const Words& words) {
      releaseObjects();
      world.program.keysSent.clear();
      Main(words.rest(0));
      tell(replaceAll(take(), "\n", ", "), glo.closing ? "ended" : "runs",
           program.keysSent.empty() ? "" : ", keys " + program.keysSent);
      program.keysSent.clear();
    });
    on("split", [this](const Words& words) {
      glo = Glo{};
      splitCommandLine(words.rest(0));
      tell(glo.cmdFile + "|" + glo.cmdMode + "|" + glo.cmdSlide + "|" + glo.cmdField4 + "|" + glo.cmdField5);
    });
    on("modes", [this](const Words& words) {
      glo = Glo{};
      splitCommandLine(words.rest(0));
      applyModes();
      tell(glo.cmdFile + "|" + glo.cmdMode + "|" + glo.cmdSlide);
    });
    on("windows", [this](const Words&) { host::host().windows = &windows; });
    on("input", [this](const Words& words) { world.expectInputBox(words.rest(1), words[0]); });
    on("forms", [this](const Words&) {
      std::string names;
      for (const std::string& name : world.forms.loadedNames())
        names += name + (world.forms.isVisible(name) ? "* " : " ");
      tell(names.empty() ? "none" : names);
    });
    // A vote that goes on until it is abandoned, or that ends the program twice.
    on("startvote", [this](const Words& words) {
      entryHooks().startVote = [this, does = words[0]] {
        world.forms.show("xyVoteRuntime");
        if (does == "waits") {
          host::waitUntil([] { return glo.voteAbandoned != 0; });
          return;
        }
        editTitle();
        glo.keyboardTurnedOn = true;
        world.link.sent.clear();
        endProgram();
        endProgram();
      };
    });
    on("end", [this](const Words& words) {
      endProgram(words.word(0) == "yes", words.word(1) == "yes");
      tell("keys " + program.keysSent);
    });
  }
  static void editTitle() {
    Edit edit("Title");
    glo.listTitle = "Changed";
    edit.commit();
  }
  // Tags and exercises are those of slide 2.
  void slideCommands() {
    on("exercise", [this](const Words& words) {
      slide().tagStore.values.clear();
      slide().tagStore.Add("qrnMatrix", exercise(words));
      glo = Glo{};
    });
    on("put", [this](const Words&) {  // the exercise at hand
      slide().tagStore.values.clear();
      slide().tagStore.Add("qrnMatrix", writeExercise(glo));
    });
    on("onslide", [this](const Words& words) {
      if (words.size() > 1)
        slide().tagStore.Add(words[0], words.rest(1));
      else
        tell(escaped(slide().tagStore.Item(words[0])));
    });
    on("stopped", [this](const Words& words) {
      slide().tagStore.Add("QRNVOTES", "1/1/2026,9:00:00,5;6;,1C1\r\n");
      if (!words.empty())
        slide().tagStore.Add("qrnMatrixLog",
                             "category = 1\r\nassessment = 1\r\nrisk = 1\r\nprocess finished = " + words[0] +
                                 "\r\nrisk list\r\n" + unescaped(words.rest(1)));
    });
    // file NAME TEXT; "exercise" stands for the text of one with two items, and more may follow it
    on("file", [this](const Words& words) {
      files.files[words[0]] =
          words.word(1) == "exercise" ? exercise(Words("1 2 3")) + words.word(2) : words.rest(1);
      glo = words.word(1) == "exercise" ? Glo{} : glo;
    });
    on("nofile", [this](const Words& words) { files.files.erase(words[0]); });
    on("files", [this](const Words&) {
      for (const auto& [name, text] : files.files) tell(name);
    });
    on("oldslide", [this](const Words&) {
      slide().shapes = {MemoryShape("matrix"), MemoryShape("Title 1")};
      slide().notes = {MemoryShape("Notes", "see Old.mtx")};
    });
    on("shapes", [this](const Words&) {
      for (const MemoryShape& shape : slide().shapes) tell(shape.name + (shape.deleted ? " deleted" : ""));
      for (const MemoryShape& shape : slide().notes) tell("note: " + escaped(shape.text));
    });
    on("label", [this](const Words&) {
      const LayoutRect& label = glo.assessments[0].lbl_Risk;
      const host::WindowRect& show = glo.PowerPointSlideShow_RECT;
      tell(label.left / static_cast<float>(15 * show.width()), " of its width, ",
           label.top / static_cast<float>(15 * show.height()), " of its height");
    });
    on("passing", [this](const Words&) {
      for (const std::string& name : world.presentation.runTags) tell(name);
    });
    on("saves", [this](const Words&) { tell(world.presentation.saves); });
    // What a run may do to an exercise; `edit sort` sorts in a step of its own.
    on("edit", [](const Words& words) {
      if (words.word(0) == "title")
        return editTitle();
      Edit edit("Sort");
      reorderListAlpha(false);
      edit.commit();
    });
    on("undo", [](const Words&) { exerciseHistory().undo(); });
    on("sort", [](const Words&) { reorderListAlpha(false); });
    on("voted", [](const Words& words) { markVoted(words.number(0), 1); });
    on("group", [](const Words&) { glo.demographicQuestions.resize(1); });
    // Ends the run; whether the slide holds another text then.
    on("stores", [this](const Words&) {
      const std::string before = slide().tagStore.Item("qrnMatrix");
      endProgram();
      tell(slide().tagStore.Item("qrnMatrix") == before ? "nothing" : "the exercise");
    });
    on("changed", [this](const Words&) {
      tell(slide().tagStore.Item("qrnMatrix").find("Changed") == std::string::npos ? "no" : "yes");
    });
  }
  void programCommands() {
    // program [stopped] [noshow] [nodeck] [fulldisk] [second] [others] [readonly] [fulltags]
    on("program", [this](const Words& words) {
      program.running = !words.has("stopped");
      program.showRuns = !words.has("noshow");
      program.presentation = words.has("nodeck")     ? nullptr
                             : words.has("fulldisk") ? &full
                                                     : &world.presentation;
      slide().tagStore.failAtWrite = words.has("fulltags") ? 1 : 0;
      program.previous = words.has("second");
      program.others = words.has("others");
      world.presentation.whyNoVotes = words.has("readonly") ? "The folder is read-only." : "";
    });
    on("showat", [this](const Words& words) { program.show.index = words.number(0); });
    on("shows", [this](const Words&) { tell(program.show.index); });
    on("closed", [this](const Words&) { tell(std::exchange(program.closed, "")); });
    on("nofolders", [this](const Words& words) { files.folderFault = words.number(0); });
    on("link", [this](const Words&) { world.link.canShare = true; });
    on("sent", [this](const Words&) {
      for (const std::string& command : std::exchange(world.link.sent, {})) tell(command);
    });
    on("fault", [this](const Words& words) {
      tell(files.files["/appdata/quorin/Err.log"].find(words.rest(0)) == std::string::npos ? "no" : "yes");
      files.files.erase("/appdata/quorin/Err.log");
    });
  }
  void backgroundCommands() {
    // background [fails]: of a slide with a visible shape and a hidden one
    on("background", [this](const Words& words) {
      ShownSlide shown;
      shown.shapes = {MemoryShape("a"), MemoryShape("b")};
      shown.shapes[1].visible = false;
      shown.fails = words.word(0) == "fails";
      glo.oPresentation = &world.presentation;
      glo.oVoteSlide = &shown;
      glo.matrixPath = "/tmp/t/quorin/";
      glo.usePPTBackground = true;
      blankForm form;
      form.DoBackground();
      tell(shown.what);
      tell("'", form.background.file, "'", (form.background.gradient ? " gradient " : " plain "),
           form.surface.background, (shown.shapes[0].visible ? " a" : ""),
           (shown.shapes[1].visible ? " b" : ""));
      glo.oVoteSlide = nullptr;
    });
    on("settings", [this](const Words& words) {
      glo.backgroundFile = words[0];
      glo.backgroundMode = words.number(1);
      tell("'" + currentBackground().file + "'" + (currentBackground().gradient ? " gradient" : " plain"));
    });
    // ratio LEFT TOP RIGHT BOTTOM WIDTH HEIGHT: where a slide of that size stands in that show
    on("ratio", [this](const Words& words) {
      const host::WindowRect at = AdjustSlideShowRECTforScreenRatio(
          {words.number(0), words.number(1), words.number(2), words.number(3)}, words.number(4),
          words.number(5));
      tell(at.left, " ", at.top, " ", at.right, " ", at.bottom);
    });
  }

  MemoryFiles& files = world.files;
  FragilePresentation full;
  SecondProgram program;
  TellingWindows windows{[this](const std::string& what) { tell(what); }, {0, 0, 1024, 768}};
};

const bool kRegistered = registerCases<EntryCase>("EntryCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
