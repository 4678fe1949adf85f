// The vote screen as it is drawn, told in case files: where everything stands, in which type and colour.
#include "base/errors.h"
#include "charts/vote_screen/vote_screen.h"
#include "charts/vote_screen/vote_words.h"
#include "core/model.h"
#include "support/drawing.h"
#include "support/members.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

struct PlainVoteForm : VoteForm {
  PlainVoteForm() : VoteForm("xyVoteRuntime") {}
  void ResetForNewVote() override {}
};

class VoteDrawings : public RunCase {
 protected:
  VoteDrawings() {
    screen(1920, 1080);
    on("screen", [this](const Words& words) { screen(words.number(0), words.number(1)); });
    on("item", [](const Words& words) { glo.risks[0].text = words.rest(0); });
    on("options", [](const Words& words) {
      glo.scaleLabels[0] = words;
      glo.scaleLabels[0].emplace_back();
    });
    on("numbered", [](const Words& words) {
      glo.scaleLabels[0].assign(static_cast<std::size_t>(words.number(0)) + 1, "");
      glo.assessments[0].scalePointCount = words.number(0);
    });
    on("show", [this](const Words& words) {
      form_.state = {};
      DisplayVote(words.number(0), 1, words.size() > 1 ? words.number(1) : -1, form_);
    });
    on("master", [this](const Words& words) {  // colours of the deck's own title and body type
      world.presentation.titleFont.emplace().colour = words.number(0);
      world.presentation.bodyFont.emplace().colour = words.number(1);
    });
    on("scored", [this](const Words& words) {
      form_.average = std::stod(words[0]);
      tell(drawingOf(form_.surface(), {"averageMark"}));
    });
    on("counted", [this](const Words& words) {
      form_.SetVotesCastCount(words.word(0));
      tell(drawingOf(form_.surface(), {"track", "uctl_kpadsNotVoted", "uctl_votesCast"}));
    });
    on("sound", [this](const Words& words) {
      world.files.files["gong.wav"] = "x";
      form_.uctl_votesCast.PlaySound(words.word(0));
      tell(world.sound.played.size());
    });
    on("count", [this](const Words& words) { form_.SetVotesCastCount(words.rest(0)); });
    on("status", [this](const Words& words) { form_.ShowStatus(words.rest(0)); });
    // waiting MISSING KEYPAD ...
    on("waiting", [this](const Words& words) {
      form_.ShowKeypads({"Waiting for...", {words.begin() + 1, words.end()}, words.number(0)}, true);
    });
    on("result", [this](const Words&) { showResult(); });
    on("statistics", [this](const Words& words) {
      form_.average = std::stod(words[0]);
      form_.ShowAverageScore(words.rest(1), true);
    });
    on("drawing", [this](const Words& words) { tell(drawingOf(form_.surface(), words)); });
    // member PATH ...: as "show" has it elsewhere
    on("member", [this](const Words& words) {
      for (const std::string& path : words) tell(path, " = ", memberText(path));
    });
    on("numbers",
       [this](const Words&) { tell(form_.txt_AssNum, "/", form_.txt_RiskNum, "/", form_.displayedRound); });
    on("grow", [this](const Words&) {
      host::host().windows = &windows_;
      form_.GrowBars();
    });
    on("bars", [this](const Words& words) { form_.ShowBars(words[0] == "on"); });
    on("counts", [this](const Words&) {
      for (const int count : CountVotes(1, 2)) tell(count);
    });
    // beside LEFT TOP WIDTH: the options stand there, one below the other
    on("beside", [this](const Words& words) {
      for (int i = 0; i < 3; ++i)
        setMember("assessments.0.lbl_Criteria." + std::to_string(i),
                  words[0] + " " + std::to_string(words.number(1) + 800 * i) + " " + words[2] + " 700");
      for (const char* line : {"show", "result", "drawing barTrack barKey optionKey"}) runLine(line);
    });
    on("cornered", [this](const Words& words) {
      glo.opt_StatsBoxPosition = words[0];
      for (const char* line :
           {"show", "result", "statistics 2 Average: 2", "drawing lbl_averageScore lbl_Risk"})
        runLine(line);
    });
    wordCommands();
    // room PHONES REHEARSED [taken]: what the link knows, and the code to join that is shown
    on("room", [this](const Words& words) {
      link_.state.phones = words.number(0);
      link_.state.rehearse = words.number(1);
      link_.state.takesPhones = words.has("taken");
      link_.linkUp = !words.has("lost");
      host::host().controller = &link_;
      tell(drawingOf(form_.surface(), {"joinCode"}));
    });
  }
  void wordCommands() {
    // words COUNT VOTED ROOM [closed COUNT ...]
    on("words", [this](const Words& words) {
      VoteNow now;
      now.count = words[0];
      now.voted = words.number(1);
      now.room = words.number(2);
      now.closed = words.has("closed");
      for (std::size_t i = 4; i < words.size(); ++i) now.counts.push_back(words.number(i));
      now.abstains = 3;
      if (now.room > 0)
        now.waiting = WaitingFor{"Waiting for...", {"3", "4"}, now.room - now.voted};
      tell(countWords(now).strong, " | ", countWords(now).quiet, " | ",
           toldWords(now, [](const std::string&) { return true; }), " | ", noticeWords(now));
    });
    // narrow CHARACTERS MISSING KEYPAD ...
    on("narrow", [this](const Words& words) {
      VoteNow now;
      now.room = words.number(1);
      now.waiting = WaitingFor{"Waiting for...", {words.begin() + 2, words.end()}, now.room};
      tell(toldWords(now, [most = static_cast<std::size_t>(words.number(0))](const std::string& text) {
        return text.size() <= most;
      }));
    });
    on("mark", [this](const Words& words) {
      const BarMark mark = barMark(words.number(0), words.number(1), words.number(2));
      tell("'", mark.strong, "' '", mark.quiet, "'");
    });
  }
  void screen(int width, int height) {
    form_.ScaleWidth = width * 15.0;
    form_.ScaleHeight = height * 15.0;
    form_.LayOutAgain();
  }
  void showResult() {
    form_.UpdateBars();
    form_.ShowBars(true);
    form_.ShowKeypads({}, false);
    form_.state = VoteState::resultUp;
  }

  struct Link : ScriptedLink {
    Link() { linkUp = true, state.address = "192.168.1.20:7878"; }
    host::RoomState room() const override { return state; }
    host::RoomState state;
  } link_;
  TellingWindows windows_{[](const std::string&) {}};
  PlainVoteForm form_;
};

const bool kRegistered = registerCases<VoteDrawings>("VoteDrawings", QUORIN_CASES "/vote_drawings.case") &&
                         registerCases<VoteDrawings>("VoteScreenCase", QUORIN_CASES "/vote_screen.case");

}  // namespace
}  // namespace qrn::test
