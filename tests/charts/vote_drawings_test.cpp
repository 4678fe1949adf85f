// The vote screen as it is drawn, told in case files: where everything stands, in which type and colour.
#include "base/errors.h"
#include "charts/vote_screen/vote_screen.h"
#include "core/model.h"
#include "support/drawing.h"
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
    on("show", [this](const Words&) { DisplayVote(0, 1, -1, form_); });
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
    on("drawing", [this](const Words&) { tell(drawingOf(form_.surface())); });
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

  PlainVoteForm form_;
};

const bool kRegistered = registerCases<VoteDrawings>("VoteDrawings", QUORIN_CASES "/vote_drawings.case");

}  // namespace
}  // namespace qrn::test
