// Pictures of the average graph and the matrix graph in their states: a row of the table for each.
#include <functional>

#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "desktop/form_windows.h"
#include "desktop/pictures/made_up_deck.h"
#include "desktop/pictures/made_up_exercise.h"
#include "desktop/pictures/pictures.h"
#include "desktop/window_stack.h"
#include "host/host.h"
#include "host/names.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn::pictures {

namespace {

constexpr std::array<int, 5> kCrowds{4, 20, 26, 100, 400};
constexpr std::array<QSize, 2> kScreens{kSizes[0], kSizes[1]};

host::FormRegistry& forms() {
  return *host::host().forms;
}

xyVoteGraph& matrix() {
  return forms().as<xyVoteGraph>(formName::matrixGraph);
}

xyVoteAverageGraph& average() {
  return forms().as<xyVoteAverageGraph>(formName::averageGraph);
}

void drawMatrix(std::initializer_list<int> pairs) {
  glo.currentPlotPairings = kNoPairs;
  std::copy(pairs.begin(), pairs.end(), glo.currentPlotPairings.begin());
  matrix().tmr_load_Timer();
}

struct State {
  const char *form, *name;
  std::function<void()> reach;
};

const std::vector<State>& states() {
  static const std::vector<State> table{
      {formName::matrixGraph, "pair",
       [] {
         drawMatrix({1, 2});
       }},
      {formName::matrixGraph, "zoomed",
       [] {
         drawMatrix({1, 2});
         matrix().Form_KeyPress('b');
       }},
      {formName::matrixGraph, "picked",
       [] {
         drawMatrix({1, 2});
         matrix().List1_Click(2);
       }},
      {formName::matrixGraph, "pairs",
       [] {
         drawMatrix({1, 2, 3, 4});
       }},
      {formName::matrixGraph, "pairs-zoomed",
       [] {
         drawMatrix({1, 2, 3, 4});
         matrix().Form_KeyPress('c');
       }},
      {formName::matrixGraph, "list",
       [] {
         drawMatrix({1, 2});
         matrix().cmd_list_Click();
       }},
      {formName::matrixGraph, "missing",
       [] {
         keepVotes(glo.itemCount() / 3);
         drawMatrix({1, 2});
       }},
      {formName::matrixGraph, "empty",
       [] {
         keepVotes(0);
         drawMatrix({1, 2});
       }},
      {formName::averageGraph, "plain", [] { average().drawGraph(1, 0); }},
      {formName::averageGraph, "picked",
       [] {
         average().drawGraph(1, 0);
         average().selectItem(1);
       }},
      {formName::averageGraph, "list",
       [] {
         average().drawGraph(1, 0);
         average().showList();
       }},
      {formName::averageGraph, "cumulative", [] { average().drawGraphCategoriesCumulative(); }},
      {formName::averageGraph, "missing",
       [] {
         keepVotes(glo.itemCount() / 3);
         average().drawGraph(1, 0);
       }},
      {formName::averageGraph, "empty",
       [] {
         keepVotes(0);
         average().drawGraph(1, 0);
       }},
  };
  return table;
}

// Everything else is alike for crowds of any size.
bool wanted(const State& state, int items) {
  const std::string name = state.name;
  return items == 20 || name == "pair" || name == "list" || name == "plain" || name == "zoomed" ||
         name == "pairs";
}

void takeState(Album& album, desktop::WindowStack& stack, const State& state, int items, bool light,
               QSize size) {
  MadeUpDeck deck(8);
  deck.setScheme(light ? kLightScheme : kDarkScheme);
  fillExercise(deck, items, 5, 40);
  forms().load(state.form);
  stack.placeForm(state.form, QRect(QPoint(0, 0), size));
  forms().show(state.form);
  state.reach();
  forms().refresh(state.form);
  deliverEvents();
  if (QWidget* window = stack.formWindow(state.form))
    album.take(*window,
               QString("%1-%2-%3-%4").arg(state.form, state.name).arg(items).arg(light ? "light" : "dark"));
  for (const std::string& name : forms().loadedNames()) forms().unload(name);
  forms().releaseUnloaded();
}

}  // namespace

void takeGraphs(Album& album) {
  desktop::WindowStack stack;
  registerGraphForms();
  desktop::attachFormWindows(forms(), stack);
  for (const QSize size : kScreens)
    for (const State& state : states())
      for (const int items : kCrowds)
        for (const bool light : {false, true})
          if (wanted(state, items))
            takeState(album, stack, state, items, light, size);
}

}  // namespace qrn::pictures
