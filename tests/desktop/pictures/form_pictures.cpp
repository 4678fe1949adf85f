// Pictures of the forms in their states and of what stands over them: a row of the table for each.
#include <QApplication>
#include <QDialog>
#include <QMenu>

#include "adapters/qt/dialogs.h"
#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "core/windows/blank_form.h"
#include "desktop/form_windows.h"
#include "desktop/pictures/made_up_deck.h"
#include "desktop/pictures/made_up_exercise.h"
#include "desktop/pictures/pictures.h"
#include "desktop/window_stack.h"
#include "host/controls.h"
#include "host/help.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "matrixgraph/xy_vote_graph.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::pictures {

namespace {

constexpr const char *kVote = formName::runtime, *kAverage = formName::averageGraph,
                     *kMatrix = formName::matrixGraph;

struct Crowd {
  const char* name;
  int items, points, keypads;
};
constexpr Crowd kCrowds[]{{"few", 4, 3, 8},      {"typical", 12, 5, 40}, {"20", 20, 5, 40},
                          {"26", 26, 5, 40},     {"100", 100, 5, 40},    {"crowded", 400, 10, 100},
                          {"scripts", 12, 5, 40}};

host::FormRegistry& forms() {
  return *host::host().forms;
}

template <class Graph>
Graph& graph(const char* name, double votesKept) {
  if (votesKept < 1)
    keepVotes(static_cast<int>(glo.itemCount() * votesKept));
  return forms().as<Graph>(name);
}

xyVoteAverageGraph& average(double votesKept = 1) {
  auto& form = graph<xyVoteAverageGraph>(kAverage, votesKept);
  form.drawGraph(1, 0);
  return form;
}

xyVoteGraph& matrix(int count = 2, double votesKept = 1) {
  auto& form = graph<xyVoteGraph>(kMatrix, votesKept);
  glo.currentPlotPairings = kNoPairs;
  for (int i = 0; i < count; ++i) glo.currentPlotPairings[static_cast<std::size_t>(i)] = i + 1;
  form.tmr_load_Timer();
  return form;
}

xyVoteRuntime& vote() {
  auto& form = forms().as<xyVoteRuntime>(kVote);
  DisplayVote(1, 1, 0, form);
  form.SetVotesCastCount("17");
  form.ShowKeypads({"Waiting for...", {"3", "7", "12", "18", "21", "22", "30", "31"}, 23}, true);
  return form;
}

void showResult() {
  xyVoteRuntime& form = vote();
  form.ShowKeypads({}, false);
  form.ShowVotesCastControl(false);
  form.UpdateBars();
  form.average = 3.21;
  form.state = VoteState::resultUp;
  form.ShowBars(true);
  form.ShowAverageScore(
      "Average: 3.21\r\nStandard Deviation: 1.07\r\nDiversity: 42.5%\r\nParticipants: 40\r\nAbstains: 2",
      true);
}

void ask(const char* text, host::Buttons buttons, host::Icon icon, std::optional<host::Answer> enter = {}) {
  host::host().dialogs->MsgBox(text, host::kTitle, buttons, icon, enter);
}

void question() {
  ask("Data already exists for this meeting. Would you like to continue from where it was previously "
      "stopped?\r\n\r\nCancel will return to editor mode",
      host::Buttons::yesNoCancel, host::Icon::question, host::Answer::yes);
}

void input() {
  host::host().dialogs->InputBox("Please enter the new item", host::kTitle, "Benches along the quay");
}

enum class Taken {
  forEveryCrowd,
  forOne,
  inItsOwnSize,
  overTheForm,  // shows itself over the form and returns when it is answered
  overTheDesk   // the same over another window
};

struct State {
  const char *form, *name;
  Taken taken;
  void (*reach)();
};

using enum Taken;
constexpr State kStates[]{
    {kVote, "open", forEveryCrowd, [] { vote(); }},
    {kVote, "result", forEveryCrowd, showResult},
    {kVote, "exit", inItsOwnSize, [] { forms().show(formName::quitOptions); }},
    {kMatrix, "pair", forEveryCrowd, [] { matrix(); }},
    {kMatrix, "zoomed", forEveryCrowd, [] { matrix().Form_KeyPress('b'); }},
    {kMatrix, "pairs", forEveryCrowd, [] { matrix(4); }},
    {kMatrix, "list", forEveryCrowd, [] { matrix().cmd_list_Click(); }},
    {kMatrix, "pairs-zoomed", forOne, [] { matrix(4).Form_KeyPress('c'); }},
    {kMatrix, "picked", forOne, [] { matrix().List1_Click(2); }},
    {kMatrix, "missing", forOne, [] { matrix(2, 0.34); }},
    {kMatrix, "empty", forOne, [] { matrix(2, 0); }},
    {kMatrix, "buttons", forOne, [] { matrix().actions().perform("showButtons"); }},
    {kAverage, "plain", forEveryCrowd, [] { average(); }},
    {kAverage, "list", forEveryCrowd, [] { average().showList(); }},
    {kAverage, "picked", forOne, [] { average().selectItem(1); }},
    {kAverage, "cumulative", forOne, [] { average().drawGraphCategoriesCumulative(); }},
    {kAverage, "missing", forOne, [] { average(0.34); }},
    {kAverage, "empty", forOne, [] { average(0); }},
    {kMatrix, "question", overTheForm, question},
    {kMatrix, "question-at-desk", overTheDesk, question},
    {kMatrix, "message", overTheForm,
     [] {
       ask("Matrix is closing because the PowerPoint slide show is no longer running.\r\n\r\n"
           "All data collected prior to this has been saved.",
           host::Buttons::ok, host::Icon::information);
     }},
    {kMatrix, "long-message", overTheForm,
     [] {
       ask(qPrintable(QString("Benches along the quay, Likelihood\r\n").repeated(60)), host::Buttons::ok,
           host::Icon::information);
     }},
    {kMatrix, "warning", overTheForm,
     [] { ask("Must have at least 2 options", host::Buttons::okCancel, host::Icon::exclamation); }},
    {kMatrix, "input", overTheForm, input},
    {kMatrix, "input-at-desk", overTheDesk, input},
    {kMatrix, "file", overTheForm,
     [] {
       host::host().dialogs->FileDialog(
           {false, "/usr/share", "", "Presentations (*.pptx)|*.pptx", "Open a deck"});
     }},
    {kMatrix, "menu", overTheForm,
     [] { host::host().dialogs->Menu(matrix().actions().menu("popupMenuCategory"), false); }},
    {kMatrix, "help", overTheForm, [] { host::showHelp(matrix()); }},
    {kAverage, "help", overTheForm, [] { host::showHelp(average()); }},
    {kAverage, "multiplots", overTheForm, [] { average().actions().perform("xyVoteGraphPopupMultiPlot"); }},
    {kAverage, "weightings", overTheForm, [] { average().actions().perform("weightingSelector"); }},
};

void takeTop(Album& album, const desktop::WindowStack& stack, const QString& name) {
  QWidget* top = QApplication::activePopupWidget();
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (!top && widget->isVisible() && qobject_cast<QDialog*>(widget))
      top = widget;
  album.take(top ? *top : *stack.front(), name);
  if (top) {
    top->close();
    return;
  }
  for (const std::string& form : forms().loadedNames())
    if (auto* dialog = dynamic_cast<host::ControlForm*>(forms().find(form)))
      host::strikeKeys(*dialog, "Esc");
}

void takeOver(Album& album, desktop::WindowStack& stack, const State& state, const QString& name) {
  constexpr int kSettledMs = 50;
  state.form == kMatrix ? void(matrix()) : void(average());
  QWidget desk;
  desk.resize(1024, 768);
  desk.setVisible(state.taken == overTheDesk);
  qt::QtDialogs dialogs([&] { return state.taken == overTheDesk ? &desk : stack.front(); });
  host::Dialogs* before = std::exchange(host::host().dialogs, &dialogs);
  host::Timer settled(kSettledMs, [&] {
    takeTop(album, stack, name);
    settled.setEnabled(false);
  });
  settled.setEnabled(true);
  state.reach();
  host::host().dialogs = before;
}

void takeState(Album& album, desktop::WindowStack& stack, const State& state, const Crowd& crowd, bool dark,
               QSize size) {
  MadeUpDeck deck(8, dark ? kDarkScheme : kLightScheme);
  fillExercise(deck, crowd.items, crowd.points, crowd.keypads);
  if (crowd.name == std::string("scripts"))
    translateExercise();
  forms().load(state.form);
  stack.placeForm(state.form, QRect(QPoint(0, 0), size));
  forms().show(state.form);
  const QString name =
      QString("%1-%2-%3-%4").arg(state.form, crowd.name, state.name, dark ? "dark" : "light");
  if (state.taken >= overTheForm) {
    takeOver(album, stack, state, name);
  } else {
    state.reach();
    forms().refresh(state.form);
    deliverEvents();
    album.take(*stack.front(), name);
  }
  for (const std::string& loaded : forms().loadedNames()) forms().unload(loaded);
  forms().releaseUnloaded();
}

// Everything else is alike for crowds of any size and on the largest screen.
bool wanted(const State& state, const Crowd& crowd, bool dark, QSize size) {
  const bool typical = crowd.name == std::string("typical");
  if (state.taken == inItsOwnSize)
    return typical && size == kSizes[0];
  if (size == kSizes[2])
    return typical && dark && state.taken == forEveryCrowd;
  if (state.taken >= overTheForm)
    return typical && (dark || state.taken == overTheForm) &&
           (size == kSizes[1] || state.name == std::string("question"));
  return state.taken == forEveryCrowd || crowd.items == 20;
}

}  // namespace

void takeForms(Album& album) {
  desktop::WindowStack stack;
  registerBlankForm();
  registerVoteForms();
  registerGraphForms();
  desktop::attachFormWindows(forms(), stack);
  for (const QSize size : kSizes)
    for (const State& state : kStates)
      for (const Crowd& crowd : kCrowds)
        for (const bool dark : {false, true})
          if (wanted(state, crowd, dark, size))
            takeState(album, stack, state, crowd, dark, size);
}

}  // namespace qrn::pictures
