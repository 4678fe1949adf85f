// Pictures of the forms: the vote, its exit dialog, the average graph and the matrix graph.
#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "core/windows/blank_form.h"
#include "desktop/form_windows.h"
#include "desktop/pictures/made_up_deck.h"
#include "desktop/pictures/made_up_exercise.h"
#include "desktop/pictures/pictures.h"
#include "desktop/window_stack.h"
#include "host/host.h"
#include "host/names.h"
#include "matrixgraph/xy_vote_graph.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::pictures {

namespace {

struct Crowd {
  const char* name;
  int items, points, keypads;
};
constexpr std::array<Crowd, 3> kCrowds{{{"few", 4, 3, 8}, {"typical", 12, 5, 40}, {"crowded", 400, 10, 100}}};

class FormPictures {
 public:
  FormPictures(Album& album, desktop::WindowStack& stack, QSize size, Crowd crowd)
      : album_(album), stack_(stack), size_(size), crowd_(crowd) {
    fillExercise(deck_, crowd.items, crowd.points, crowd.keypads);
  }
  ~FormPictures() {
    for (const std::string& name : forms().loadedNames()) forms().unload(name);
    forms().releaseUnloaded();
  }

  void takeVote();
  void takeQuitOptions();
  void takeAverageGraph();
  void takeMatrixGraph();

 private:
  static host::FormRegistry& forms() { return *host::host().forms; }
  template <class T>
  T& shown(const std::string& name) {
    T& form = forms().as<T>(name);
    stack_.placeForm(name, QRect(QPoint(0, 0), size_));
    forms().show(name);
    return form;
  }
  void take(const std::string& form, const char* state) {
    forms().refresh(form);
    if (QWidget* window = stack_.formWindow(form))
      album_.take(*window, QString("%1-%2-%3").arg(QString::fromStdString(form), crowd_.name, state));
  }

  Album& album_;
  desktop::WindowStack& stack_;
  QSize size_;
  Crowd crowd_;
  MadeUpDeck deck_{8};
};

void FormPictures::takeVote() {
  auto& form = shown<xyVoteRuntime>(formName::runtime);
  DisplayVote(1, 1, 0, form);
  form.SetVotesCastCount("17");
  form.ShowKeypads({"Waiting for...", {"3", "7", "12", "18", "21", "22", "30", "31"}, 23}, true);
  take(formName::runtime, "open");
  form.ShowKeypads({}, false);
  form.ShowVotesCastControl(false);
  form.UpdateBars();
  form.average = 3.21;
  form.state = VoteState::resultUp;
  form.ShowBars(true);
  form.ShowAverageScore(
      "Average: 3.21\r\nStandard Deviation: 1.07\r\nDiversity: 42.5%\r\nParticipants: 40\r\nAbstains: 2",
      true);
  take(formName::runtime, "result");
  form.state = VoteState::prepared;
}

void FormPictures::takeQuitOptions() {
  forms().show(formName::quitOptions);
  if (QWidget* window = stack_.front())
    album_.take(*window, QString("xyVoteQuitOptions-%1").arg(crowd_.name));
}

void FormPictures::takeAverageGraph() {
  auto& form = shown<xyVoteAverageGraph>(formName::averageGraph);
  form.drawGraph(1, 0);
  take(formName::averageGraph, "plain");
  form.showList();
  take(formName::averageGraph, "list");
}

void FormPictures::takeMatrixGraph() {
  auto& form = shown<xyVoteGraph>(formName::matrixGraph);
  form.tmr_load_Timer();
  take(formName::matrixGraph, "plain");
  form.cmd_list_Click();
  take(formName::matrixGraph, "list");
  form.cmd_list_Click();
  form.Form_KeyPress('b');
  take(formName::matrixGraph, "zoomed");
  form.actions().perform("showButtons");
  take(formName::matrixGraph, "buttons");
}

}  // namespace

void takeForms(Album& album) {
  desktop::WindowStack stack;
  registerBlankForm();
  registerVoteForms();
  registerGraphForms();
  desktop::attachFormWindows(*host::host().forms, stack);
  for (const QSize size : kSizes)
    for (const Crowd& crowd : kCrowds) {
      FormPictures pictures(album, stack, size, crowd);
      pictures.takeVote();
      if (size == kSizes[0])  // its size is its own
        pictures.takeQuitOptions();
      pictures.takeAverageGraph();
      pictures.takeMatrixGraph();
    }
  FormPictures pictures(album, stack, kSizes[1], {"scripts", 12, 5, 40});
  translateExercise();
  pictures.takeVote();
  pictures.takeAverageGraph();
  pictures.takeMatrixGraph();
}

}  // namespace qrn::pictures
