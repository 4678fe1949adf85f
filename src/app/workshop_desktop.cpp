#include "app/workshop_desktop.h"

#include <QTimer>
#include <memory>
#include <utility>
#include <vector>

#include "adapters/deck/deck.h"
#include "app/neighbours.h"
#include "base/errors.h"
#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/model.h"
#include "core/run/end_program.h"
#include "core/run/entry.h"
#include "core/windows/blank_form.h"
#include "desktop/desktop.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "matrixgraph/xy_vote_graph.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/vote_plan.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::app {

namespace {

void registerForms() {
  registerComms();
  registerBlankForm();
  registerVoteForms();
  registerGraphForms();
}

// Nobody is asked or told anything while slides are only looked at.
struct QuietDialogs : host::Dialogs {
  host::Answer MsgBox(const std::string&, const std::string&, host::Buttons buttons, host::Icon,
                      std::optional<host::Answer>) override {
    return host::safeAnswer(buttons);
  }
  std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> FileDialog(const host::FileQuestion&) override { return std::nullopt; }
  void Info(const std::string&) override {}
};

// Puts the state of any run aside for its lifetime.
class Aside {
 public:
  Aside() : dialogs_(std::exchange(host::host().dialogs, &quiet_)), kept_(std::exchange(glo, Glo{})) {}
  ~Aside() {
    glo = std::move(kept_);
    host::host().dialogs = dialogs_;
  }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;

 private:
  QuietDialogs quiet_;
  host::Dialogs* dialogs_;
  Glo kept_;
};

// What stands on a slide, read beside the state of any run.
std::optional<desktop::ExerciseFacts> exerciseFacts(host::Slide& slide) {
  if (slide.tags().Item(tagName::exercise).empty())
    return std::nullopt;
  const Aside aside;
  glo.oVoteSlide = &slide;
  initXYVote();
  static_cast<Exercise&>(glo) = readExercise(slide.tags().Item(tagName::exercise), glo).exercise;
  readVoteRecords();
  desktop::ExerciseFacts facts;
  facts.name = glo.listTitle;
  facts.items = glo.itemCount();
  for (const AssessmentInfoRecord& info : glo.assessmentInfo) facts.assessments += info.active ? 1 : 0;
  facts.votes = static_cast<int>(glo.voteRecords.recordCount());
  if (readlog() && glo.resumePending) {
    const VoteProgress progress = voteProgress();
    facts.voted = progress.voted;
    facts.due = progress.due;
  }
  return facts;
}

// The slide that a command line of fields shows: the number in the place of the mode, or the first exercise
// of the deck for a mode that shows or votes the current one. 0 for other modes.
int shownSlide(const std::string& fields, host::Presentation& deck) {
  std::vector<std::string> words;
  SplitPPTTag(fields, ",", words);
  const std::string mode = words.size() > 1 ? upperCase(trimBlanks(words[1])) : "";
  const int number = static_cast<int>(qrnVal(mode));
  if (number > 0)
    return number <= deck.SlideCount() ? number : 0;
  if (mode != runMode::display && mode != runMode::seriesVote)
    return 0;
  for (int slide = 1; slide <= deck.SlideCount(); ++slide)
    if (!deck.Slides(slide).tags().Item(tagName::exercise).empty())
      return slide;
  return 0;
}

void fillEntryHooks() {
  entryHooks().startVote = [] {
    host::FormRegistry& forms = *host::host().forms;
    forms.show(formName::runtime);
    forms.as<xyVoteRuntime>(formName::runtime).startProcess();
  };
}

}  // namespace

WorkshopDesktop::WorkshopDesktop(Neighbours& neighbours) : neighbours_(neighbours) {
  desktop::DesktopHooks hooks;
  hooks.runExercise = [this](int slide) { runExercise(slide); };
  hooks.room = [this] { return neighbours_.room(); };
  hooks.chooseAddress = [this](const std::string& host) { neighbours_.chooseAddress(host); };
  hooks.openDeck = [this](const std::string& file) { return neighbours_.openDeckWithQuestions(file); };
  hooks.exerciseFacts = [this](host::Slide& slide) -> std::optional<desktop::ExerciseFacts> {
    return running_ ? std::nullopt : exerciseFacts(slide);
  };
  hooks.deckNotice = [](host::Presentation& presentation) {
    auto* deck = dynamic_cast<deck::Deck*>(&presentation);
    std::string notice = presentation.WhyNoVotes();
    if (const auto warning = deck != nullptr ? deck->foreignSaveWarning() : std::nullopt)
      notice += (notice.empty() ? "" : "\n") + *warning;
    return notice.empty() ? std::nullopt : std::optional<std::string>(notice);
  };
  hooks.installFolder = neighbours_.installFolder();
  desktop_ = std::make_unique<desktop::Desktop>(std::move(hooks));
  host::host().presentationProgram = &desktop_->program();
  host::host().windows = &desktop_->windows();
  neighbours_.setDialogParent([this] { return desktop_->dialogParent(); });
  neighbours_.setTroubleNotice([this](const std::string& text) { desktop_->sayTrouble(text); });
  neighbours_.setStatusLine([this](const std::string& line) {
    desktop_->sayProgress(line);
    if (!line.empty())
      writeDebugLog(formName::info, "", line);
  });
  neighbours_.onRoomChanged([this](const host::RoomState& room) { desktop_->roomChanged(room); });
  registerForms();
  desktop_->attachWindows(*host::host().forms);
  fillEntryHooks();
}

WorkshopDesktop::~WorkshopDesktop() {
  neighbours_.setDialogParent({});
  neighbours_.setTroubleNotice({});
  neighbours_.setStatusLine({});
  neighbours_.onRoomChanged({});
  host::host().presentationProgram = nullptr;
  host::host().windows = nullptr;
}

int WorkshopDesktop::run(const std::string& deck) {
  return desktop_->exec(deck);
}

// A command line that shows an exercise needs a show to stand in, so the show starts first and brings the run
// about.
int WorkshopDesktop::runFields(const std::string& deck, const std::string& fields) {
  QTimer::singleShot(0, [this, deck, fields] {
    if (!desktop_->openDeck(deck))
      return;
    const int slide = shownSlide(fields, *desktop_->program().ActivePresentation());
    if (slide > 0)
      desktop_->startShow(slide);
    else
      desktop_->run([&] { runCommandLine(fields); });
  });
  return desktop_->exec();
}

// One run, one exercise. Without a show the exercise is opened by starting the show on its slide, which
// brings the run about.
void WorkshopDesktop::runExercise(int slide) {
  if (desktop_->program().SlideShowWindowsCount() == 0)
    desktop_->startShow(slide);
  else
    runCommandLine("QRNMATRIX," + std::to_string(slide));
}

void WorkshopDesktop::runCommandLine(const std::string& fields) {
  if (running_)
    return;
  running_ = true;
  const std::unique_ptr<bool, void (*)(bool*)> done(&running_, [](bool* running) { *running = false; });
  try {
    neighbours_.room();
  } catch (const HostError&) {
    // without a controller the vote itself offers the keyboard
  }
  glo = Glo{};
  Main(fields);
  if (!glo.closing)
    endProgram();
  releaseObjects();
}

}  // namespace qrn::app
