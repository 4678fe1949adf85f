#include "vote/vote_case.h"
#include "base/text.h"

#include <algorithm>

#include "charts/xy_vote_average_graph.h"
#include "controller/room_options.h"
#include "core/common.h"
#include "core/run/end_program.h"
#include "core/run/entry.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/vote_plan.h"

namespace qrn::test {

namespace {

constexpr std::size_t kMany = 80;

std::string screenText(const xyVoteRuntime& form) {
  const host::Element* missing = form.surface().find("uctl_kpadsNotVoted", 0);
  const VoteLabel &count = form.uctl_votesCast.label, &words = form.lbl_averageScore;
  return std::string(form.state == VoteState::open       ? "open"
                     : form.state == VoteState::resultUp ? "result"
                                                         : "other") +
         (form.cursorShown ? ", cursor" : "") + (form.bars.Visible ? ", bars" : "") +
         (form.average ? ", mark" : "") +
         (!words.Visible                  ? ""
          : form.state == VoteState::open ? ", " + words.Caption
                                          : ", average") +
         (count.Visible ? ": " : ": no ") + count.Caption +
         (missing == nullptr ? "" : "; " + missing->caption) +
         (form.lbl_status.Caption.empty() ? "" : "; " + form.lbl_status.Caption);
}

// Keeps what a window would show: what stood on the form when it was painted last.
struct Painted : host::FormView {
  Painted(xyVoteRuntime& form, std::string& kept) : form_(form), kept_(kept) {}
  void show(bool) override { refresh(); }
  void refresh() override { kept_ = screenText(form_); }
  xyVoteRuntime& form_;
  std::string& kept_;
};

}  // namespace

RoomLink::RoomLink(controller::RoomOptions options)
    : room(std::move(options),
           {.programWaiting = [this] { fetch(); },
            .toPhone = [](controller::PhoneId, const controller::SharedText&) {},
            .log = [](const std::string&) {},
            .keypadGiven = [](long, const std::string&) {},
            .phonesChanged = [] {},
            .newToken = [this] { return std::string(31, '0') + std::to_string(++tokens_ % 10); },
            .now =
                [] {
                  return controller::Moment{1'000'000, 1000};
                }}) {}

void RoomLink::fetch() {
  while (const auto frame = room.nextForProgram()) {
    room.fromProgram("Received=" + std::to_string(++frames_));
    if (FromQrnCtrl)
      FromQrnCtrl(*frame);
  }
}

VoteCase::VoteCase() {
  glo.baseType = "HW";
  glo.keypadsNotVotedHi = 4;
  glo.activeKeypads = {"1", "2", "3"};
  registerComms();
  registerVoteForms();
  world.forms.attach("xyVoteRuntime", [this](host::Form& form) {
    return std::make_unique<Painted>(dynamic_cast<xyVoteRuntime&>(form), painted_);
  });
  world.link.onSend = [this](const std::string& command) {
    if (command == cut_)
      world.link.linkUp = false;
    if (command == "StartVote")
      opened();
  };
  runCommands();
  formCommands();
  linkCommands();
  roomCommands();
  countCommands();
  keypadCommands();
  resumeCommands();
}

VoteCase::~VoteCase() {
  entryHooks() = EntryHooks{};
  forgetLeftoverVotes();
  for (const std::string& name : world.forms.loadedNames()) world.forms.unload(name);
  host::host().controller = &world.link;
}

void VoteCase::TestBody() {
  RunCase::TestBody();
  EXPECT_LT(world.clock.micros, std::int64_t{240} * 1000000) << "somebody was left waiting";
}

void VoteCase::key(const std::string& words) {
  for (const host::KeyStroke& stroke : host::readKeys(words))
    runtime().Form_KeyDown(stroke.code, stroke.shift);
}

void VoteCase::press(int keypad, const std::string& vote) {
  world.link.says("[1]," + std::to_string(keypad) + ";" + vote);
}

// Keypads 1, 2, 3 vote at once; the facilitator closes, looks at the result and goes on.
void VoteCase::ordinary(const std::string& votes) {
  world.at(0.2, [this, votes] {
    for (std::size_t i = 0; i < votes.size(); ++i) press(static_cast<int>(i) + 1, std::string(1, votes[i]));
  });
  for (const double seconds : {1.0, 2.0}) world.at(seconds, [this] { key("Space"); });
}

void VoteCase::opened() {
  const auto script = scripts_.find(++opens_);
  if (script != scripts_.end())
    script->second();
  else
    ordinary("345");
}

// "3;4;5;-; 10C1": the votes of each record and its key.
void VoteCase::tellSaved(std::size_t from) {
  std::vector<std::string> lines, keys;
  SplitPPTTag(slideTags().Item("QRNVOTES"), "\r\n", lines);
  for (std::size_t i = from; i < lines.size(); ++i)
    keys.push_back(getField(lines[i], 3) == "3;4;5;-;" ? getField(lines[i], 4)
                                                       : getField(lines[i], 3) + getField(lines[i], 4));
  tell(joined(keys, " "));
}

void VoteCase::tellSent() {
  std::vector<std::string>& sent = room_ ? room_->sent : world.link.sent;
  tell(escaped(joined(std::exchange(sent, {}), " | ")));
}

void VoteCase::runCommands() {
  // vote N {: what happens in the Nth vote that opens, instead of keypads 1, 2, 3 pressing 3, 4, 5
  on("vote", [this](const Words& words) { scripts_[std::stoul(words[0])] = later(words, 1); });
  on("ordinary", [this](const Words& words) { ordinary(words.word(0)); });
  on("press", [this](const Words& words) { press(words.number(0), words.word(1)); });
  on("key", [this](const Words& words) { key(words.rest(0)); });
  // what has been saved; a plain key stands for 3;4;5;-;
  on("run", [this](const Words&) {
    const std::size_t before = splitFields(slideTags().Item("QRNVOTES"), '\n').size();
    runtime().startProcess();
    tellSaved(slideTags().Item("QRNVOTES").empty() ? 0 : before - 1);
  });
  on("saved", [this](const Words&) { tellSaved(0); });
  on("again", [this](const Words&) {
    scripts_.clear();
    opens_ = 0;
    for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
    store("");
  });
  on("cutoff", [](const Words&) { glo.quitRequested = true, glo.voteAbandoned = 1; });
  on("progress", [this](const Words&) {
    const bool read = readlog();
    const VoteProgress progress = voteProgress();
    tell(progress.voted, " of ", progress.due, (read && glo.resumePending ? ", to go on" : ""));
  });
  on("resume", [this](const Words&) {
    scripts_.clear();
    readlog();
    runtime().startProcess();
    tellSaved(0);
  });
  on("keeplog", [this](const Words&) { before_ = slideTags().Item("qrnMatrixLog"); });
  on("putlog", [this](const Words&) { slideTags().Add("qrnMatrixLog", before_); });
}

void VoteCase::formCommands() {
  on("choose", [this](const Words& words) {
    if (!world.forms.isVisible("xyVoteQuitOptions"))
      return tell("nobody asks");
    auto& dialog = world.forms.as<xyVoteQuitOptions>("xyVoteQuitOptions");
    static const std::map<std::string, xyVoteQuitOptions::Option> options{
        {"go-to", xyVoteQuitOptions::goTo},
        {"back", xyVoteQuitOptions::goBackOne},
        {"restart", xyVoteQuitOptions::restartThisVote},
        {"continue", xyVoteQuitOptions::continueVoting},
        {"graph", xyVoteQuitOptions::goToGraph},
        {"quit-all", xyVoteQuitOptions::quitAllVotes},
        {"quit-this", xyVoteQuitOptions::quitThisVote}};
    dialog.List1.select(words.number(1));
    dialog.choose(options.at(words[0]));
  });
  // dialog [key KEYS | pick LIST ROW | open LIST ROW]: in what asks how to go on, and how it stands then
  on("dialog", [this](const Words& words) {
    auto& asks = dynamic_cast<xyVoteQuitOptions&>(*world.forms.find("xyVoteQuitOptions"));
    host::Panel* const panels[] = {&asks.options, &asks.List1, &asks.List2};
    if (words.word(0) == "key")
      host::strikeKeys(asks, words.rest(1));
    else if (words.size() > 2)
      panels[words.number(1)]->select(words.number(2));
    if (words.word(0) == "open")
      panels[words.number(1)]->activated(words.number(2));
    if (!world.forms.isVisible("xyVoteQuitOptions"))
      return;
    std::string text = asks.acceptCaption + " or " + asks.dismissCaption + ", at " + asks.focus;
    for (const host::Panel* panel : panels)
      for (std::size_t i = 0; i < panel->rows().size(); ++i)
        text += (i == 0 ? "\n" : "; ") + panel->rows()[i].cells[0] +
                (panel->isSelected(static_cast<int>(i)) ? "*" : "");
    tell(text);
  });
  on("unload", [this](const Words& words) {
    tell(world.forms.unload(words[0], words.word(1) == "user") ? "" : "stays");
  });
  on("hide", [this](const Words& words) { world.forms.hide(words[0]); });
  on("forms", [this](const Words&) { tell(joined(world.forms.loadedNames(), " ")); });
  on("screen", [this](const Words&) { tell(painted_); });
  on("windows", [this](const Words&) { host::host().windows = &windows_; });
  on("fail", [this](const Words& words) {  // so many seconds from now each
    for (const std::string& word : words)
      world.at(std::stod(word), [] { throw HostError(Fault::program, 5, "something fails"); });
  });
  on("graph", [this](const Words& words) { defineGraph(words[0]); });
  on("outcome", [this](const Words& words) {
    if (!words.empty()) {
      deleteOutcome();
      if (words[0] != "gone")
        world.presentation.tags().Add("qrnVoteTerminated", words.rest(0));
    }
    tell(static_cast<int>(outcome()), " ", world.presentation.tags().Item("qrnVoteTerminated"));
  });
  on("write", [this](const Words& words) {
    writeOutcome(static_cast<VoteOutcome>(words.number(0)));
    tell(std::to_string(static_cast<int>(outcome())));
  });
  on("load", [this](const Words&) { runtime(); });
  // result HOW [ITEM]: a first vote whose result is left by Esc and so
  on("result", [this](const Words& words) {
    runLine("again");
    scripts_[1] = [this, how = words.as(0)] {
      for (const char* line : {"at 0.2 press 1 3", "at 1 key Space", "at 1.5 key Esc"}) runLine(line);
      runLine("at 1.7 choose " + how);
      if (how == "continue")
        runLine("at 2 key Space");
    };
    runLine("run");
    tell(std::exchange(glo.returnToEditor, false) ? "back to the editor" : "");
  });
}

// A graph that turns the list round, takes the votes for its own or, with the average graphs, only comes up;
// they go by themselves, but for one that takes.
void VoteCase::defineGraph(const std::string& does) {
  struct Graph : host::Form {
    explicit Graph(std::string does) : Form("xyVoteGraph"), does_(std::move(does)) {}
    void Form_Load() override {
      if (does_ == "reverses")
        std::reverse(glo.risks.begin(), glo.risks.end() - 1);
      else if (does_ == "takes")
        glo.liveVotes.assign(5, "1");
    }
    std::string does_;
  };
  if (does == "average")
    registerChartForms();
  world.forms.define("xyVoteGraph", [does] { return std::make_unique<Graph>(does); });
  if (does == "takes")
    return;
  closer_ = std::make_unique<host::Timer>(100, [this] {
    for (const char* name : {"xyVoteGraph", "xyVoteAverageGraph"})
      if (world.forms.isVisible(name)) {
        const auto* average = dynamic_cast<xyVoteAverageGraph*>(world.forms.find(name));
        tell(average == nullptr ? "graph" : "average " + std::to_string(average->request.assessment));
        world.forms.hide(name);
      }
  });
  closer_->setEnabled(true);
}

void VoteCase::linkCommands() {
  // link up|lost|shared|new|ready|unready: whether there is one, and what could be had; cut COMMAND: lost
  // behind it
  on("link", [this](const Words& words) {
    ScriptedLink& link = world.link;
    cut_ = words.word(0) == "cut" ? words.word(1) : "";
    for (const std::string& word : words) {
      link.linkUp = word == "up" || (word != "lost" && link.linkUp);
      link.canShare = word == "shared" || (word != "lost" && link.canShare);
      link.canStart = word == "new" || (word != "lost" && link.canStart);
      link.ready = word == "ready" || (word != "unready" && link.ready);
    }
  });
  on("made", [this](const Words&) { tell(std::exchange(world.link.made, "")); });
  on("makelink", [](const Words&) { theComms().makeLink(); });
  on("linked", [this](const Words&) { tell(theComms().linked() ? "yes" : "no"); });
  on("sent", [this](const Words&) { tellSent(); });
  // send COMMAND [reconnect] [loud]
  on("send", [this](const Words& words) {
    const std::int64_t before = world.clock.micros;
    if (!theComms().SendCommandToController(words[0], words.has("reconnect"), !words.has("loud")))
      tell("lost");
    if (const auto waited = (world.clock.micros - before + 500000) / 1000000; waited > 0)
      tell("after ", waited, " s");
    tellSent();
  });
  on("start", [this](const Words&) {
    theComms().StartVote();
    tellSent();
    tell(theComms().voteOpened ? "opened at " + std::to_string(static_cast<int>(theComms().voteStartedAt)) +
                                     (world.link.described.empty() ? "" : ", about " + world.link.described)
                               : "not opened");
  });
  on("listen", [this](const Words& words) {
    theComms().VoteRx = [this, bad = words.number(0)](std::int32_t keypad, const std::string& vote) {
      if (keypad == bad)
        throw HostError(Fault::program, 9, "out of range");
      tell(keypad, ": ", vote, " (", glo.baseType, ")");
    };
  });
  on("says", [this](const Words& words) { world.link.says(words.rest(0)); });
  on("queue", [this](const Words&) {
    tell(escaped(theComms().txt_dataFromController) +
         (theComms().tmr_decodeDataFromController.enabled() ? " waits" : "-"));
  });
  on("decode", [](const Words& words) { theComms().DecodeDataFromController(words.rest(0)); });
  on("names", [this](const Words&) {
    std::string text;
    for (const KeypadName& entry : glo.keypadNames)
      text += std::to_string(entry.keypad) + "/" + entry.name + "/" + std::to_string(entry.number) + " ";
    tell(text + (theComms().chk_GotNames ? "got" : "-"));
  });
}

void VoteCase::resumeCommands() {
  on("manyitems", [this](const Words&) { manyItems(); });
  on("visit", [this](const Words& words) { visit(std::stoul(words[0])); });
  on("keep", [this](const Words&) {
    slideTags().values["QRNMATRIX"] += "\r\n";  // a text that saving would write otherwise
    before_ = "";
    for (const auto& [name, value] : slideTags().values) before_ += name + value;
  });
  on("kept", [this](const Words&) {
    std::string now;
    for (const auto& [name, value] : slideTags().values) now += name + value;
    tell(now == before_ ? "" : "changed");
  });
  // what votes there are of how many items
  on("tally", [this](const Words&) {
    std::vector<std::string> lines;
    SplitPPTTag(slideTags().Item("QRNVOTES"), "\r\n", lines);
    std::map<std::string, int> keys;
    for (const std::string& line : lines) ++keys[getField(line, 4)];
    tell(lines.size(), " votes of ", keys.size(), " items");
  });
  on("late", [this](const Words&) {
    RiskRecord late = glo.risks[0];
    late.text = "Late";
    late.sortKey = 1000;
    late.newItem = true;
    glo.risks.insert(glo.risks.end() - 1, late);
    slideTags().Add("qrnMatrix", writeExercise(glo));
    world.at(1, [this] {
      tell(world.forms.isVisible("newItemsForm") ? "new items?" : "");
      world.forms.unload("newItemsForm");
    });
  });
}

// Neither the keys nor the names stand in the order of the list.
void VoteCase::manyItems() {
  world.program.showRuns = true;
  for (const char* name : {"xyVote", "newItemsForm"})
    world.forms.define(name, [name] { return std::make_unique<host::Form>(name); });
  entryHooks() = EntryHooks{[this] {
    world.forms.show("xyVoteRuntime");
    runtime().startProcess();
  }};
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < kMany; ++i) keys.push_back(std::to_string(1 + 11 * i % kMany));
  items(keys);
  for (RiskRecord& risk : glo.risks) risk.newItem = true;
  glo.risks.back() = {};
  glo.assessmentInfo[1].active = false;
  slideTags().Add("qrnMatrix", writeExercise(glo));
}

// One run of the program: so many votes, then "Quit all votes" while there are more.
void VoteCase::visit(std::size_t votes) {
  opens_ = 0;
  scripts_.clear();
  for (std::size_t i = 1; i <= votes; ++i)
    scripts_[i] = [this] {
      world.at(0.05, [this] { press(1, "3"), press(2, "4"); });
      world.at(0.3, [this] { key("Space"); });
      world.at(0.7, [this] { key("PageDown"); });
    };
  scripts_[votes + 1] = [this] {
    world.at(0.1, [this] { key("Esc"); });
    world.at(0.2, [this] {
      world.forms.as<xyVoteQuitOptions>("xyVoteQuitOptions").choose(xyVoteQuitOptions::quitAllVotes);
    });
  };
  Main("QRNMATRIX,DISPLAY");
  endProgram();  // the editor, should it be up, is closed
  releaseObjects();
}

}  // namespace qrn::test
