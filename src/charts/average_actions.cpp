// What the average graph can do, told once: its keys, menu, buttons and help read this table.
#include <algorithm>

#include "analysis/multiplot.h"
#include "analysis/multiplot_form.h"
#include "analysis/weighting_selector.h"
#include "charts/average_kinds.h"
#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "core/show_keys.h"
#include "host/help.h"
#include "host/host.h"

namespace qrn {

namespace {

namespace key = host::key;
using host::Action;
using host::kAnyShift;
using Actions = std::vector<Action>;

constexpr const char* kMenu = "menuAverage";
constexpr int kPickedByKey = 6;  // assessments that have a digit

std::string inMenu(const char* within) {
  return std::string(kMenu) + "/" + within;
}

bool inUse(int assessment) {
  return glo.running(assessment).active;
}

}  // namespace

host::ActionTable xyVoteAverageGraph::actions() {
  return host::ActionTable(host::together(
      {walkActions(), assessmentActions(), kindActions(), valueActions(), panelActions(), formActions()}));
}

std::vector<host::Action> xyVoteAverageGraph::walkActions() {
  return {
      {.name = "previous",
       .caption = "The item before",
       .keys = {{key::left, 0}, {key::up, 0}},
       .perform = [this] { selectItem(std::max(List1.current() - 1, 0)); }},
      {.name = "next",
       .caption = "The next item",
       .keys = {{key::right, 0}, {key::down, 0}},
       .perform = [this] { selectItem(std::min(List1.current() + 1, lastRow())); }},
      {.name = "first",
       .caption = "The first item",
       .keys = {{key::home, 0}},
       .perform = [this] { selectItem(0); }},
      {.name = "last",
       .caption = "The last item",
       .keys = {{key::end, 0}},
       .perform = [this] { selectItem(lastRow()); }},
      {.name = "pageBack",
       .caption = "The page before",
       .keys = {{key::pageUp, 0}},
       .perform = [this] { showPage(chart.Page.Current - 1); }},
      {.name = "pageOn",
       .caption = displayedInShow() ? "The next page; behind the last one the show goes on" : "The next page",
       .keys = {{key::pageDown, 0}},
       .perform = [this] { pageOn(); }},
      {.name = "goOn",
       .caption = displayedInShow() ? "Go on with the show" : "",
       .keys = {{'N', 0}},
       .perform = [this] { cmd_close_Click(); },
       .enabled = displayedInShow}};
}

std::vector<host::Action> xyVoteAverageGraph::assessmentActions() {
  Actions rows;
  for (int a = 1; a <= kAssessments; ++a) {
    const bool there = inUse(a);
    rows.push_back({.name = "assessment" + std::to_string(a),
                    .caption = there ? glo.assessmentTitles[static_cast<std::size_t>(a - 1)] : "",
                    .keys = a <= kPickedByKey ? std::vector<host::KeyStroke>{{'0' + a, key::altMask}}
                                              : std::vector<host::KeyStroke>{},
                    .menus = there ? std::vector<std::string>{kMenu} : std::vector<std::string>{},
                    .perform = [this, a] { drawGraph(a, 0); },
                    .enabled = [a] { return inUse(a); },
                    .checked = [this, a] { return shows(kPlainAverage) && request.assessment == a; }});
  }
  return rows;
}

std::vector<host::Action> xyVoteAverageGraph::kindActions() {
  Actions rows;
  // On and off of a kind that is drawn in place of the plain averages.
  const auto addSwitch = [&](const char* base, const char* caption, int kind) {
    for (const bool on : {true, false})
      rows.push_back({.name = base + std::string(on ? "On" : "Off"),
                      .caption = on ? "On" : "Off",
                      .menus = {inMenu(caption)},
                      .perform = [this, on, kind] { on ? show(kind) : drawGraphCategories(); },
                      .checked = [this, on, kind] { return shows(kind) == on; },
                      .separated = on && kind == kCumulative});
  };
  addSwitch("menuDisplayShowCumulative", "Cumulative averages", kCumulative);
  addSwitch("menuDisplayShowWeightedCumulative", "Weighted cumulative averages", kWeightedCumulative);
  for (const int plot : {0, 1})
    if (multiPlotSetUp(plot))
      rows.push_back({.name = "multiPlot" + std::to_string(plot + 1),
                      .caption = multiPlotName(plot),
                      .menus = {kMenu},
                      .perform = [this, plot] { drawGraphMultiPlot(plot); },
                      .checked = [this, plot] { return shows(plot == 0 ? kMultiPlot1 : kMultiPlot2); }});
  return rows;
}

std::vector<host::Action> xyVoteAverageGraph::valueActions() {
  return {{.name = "diversity",
           .caption = "Diversity",
           .menus = {kMenu},
           .perform = [this] { shows(kDiversity) ? drawGraphCategories() : drawGraphDiversity(); },
           .checked = [this] { return shows(kDiversity); }},
          {.name = kWeightingForm,
           .caption = "Weightings...",
           .keys = {{'U', 0}},
           .menus = {kMenu},
           .perform = [this] { askAndRedraw(kWeightingForm); },
           .separated = true,
           .help = "The weights of the weighted cumulative averages"},
          {.name = "xyVoteGraphPopupMultiPlot",
           .caption = "MultiPlots...",
           .menus = {kMenu},
           .perform = [this] { askAndRedraw(kMultiPlotForm); }},
          {.name = "redraw", .caption = "Draw it again", .keys = {{key::f3, 0}}, .perform = [this] {
             redraw();
           }}};
}

std::vector<host::Action> xyVoteAverageGraph::panelActions() {
  return {{.name = "averageLabel",
           .caption = "Mean of all bars",
           .keys = {{'D', key::altMask}},
           .menus = {kMenu},
           .perform = [this] { averageLabelVisible = !averageLabelVisible; },
           .checked = [this] { return averageLabelVisible; }},
          {.name = "diversityButton",
           .caption = "Show the button for diversity",
           .keys = {{'D', key::altMask | key::shiftMask}},
           .perform = [this] { diversityButtonVisible = true; }},
          {.name = "cmd_list",
           .caption = "List of items",
           .keys = {{'L', 0}, {'L', key::altMask}},
           .menus = {kMenu, host::kCommandBar},
           .perform = [this] { listVisible ? hideList() : showList(); },
           .checked = [this] { return listVisible; }},
          {.name = "cmd_info",
           .caption = "Items without data",
           .keys = {{'I', 0}, {'I', key::altMask}},
           .menus = {kMenu},
           .perform = [this] { cmd_info_Click(); },
           .enabled = [this] { return infoButton; }},
          {.name = "showButtons",
           .caption = "Show the buttons",
           .keys = {{key::up, key::altMask}},
           .perform = [this] { buttonsVisible = true; }},
          {.name = "hideButtons",
           .caption = "Hide the buttons",
           .keys = {{key::down, key::altMask}},
           .perform = [this] { buttonsVisible = false; }}};
}

std::vector<host::Action> xyVoteAverageGraph::formActions() {
  Action help = host::helpAction(*this);
  help.menus = {kMenu, host::kCommandBar};
  help.separated = true;
  Action button{.name = "cmd_diversity",
                .caption = "Diversity",
                .menus = {host::kCommandBar},
                .perform = [this] { actions().perform("diversity"); },
                .checked = [this] { return shows(kDiversity); }};
  const Actions before = diversityButtonVisible ? Actions{std::move(button)} : Actions{};
  return host::together({before,
                         {{.name = kMenu,
                           .caption = "Menu",
                           .keys = {{key::f10, key::shiftMask}, {key::f10, 0}, {key::rightSuper, kAnyShift}},
                           .menus = {host::kCommandBar},
                           .perform = [this] { host::popUp(*this, kMenu); }},
                          std::move(help),
                          {.name = "cmd_close",
                           .caption = "Close the graph",
                           .menus = {kMenu, host::kCommandBar},
                           .perform = [this] { cmd_close_Click(); }},
                          {.name = "escape",
                           .caption = displayedInShow() ? "" : "Close the graph",
                           .keys = {{key::escape, 0}},
                           .perform = [this] { cmd_close_Click(); },
                           .enabled = [] { return !displayedInShow(); }}}});
}

bool xyVoteAverageGraph::shows(int kind) const {
  return averageKind(glo.averageDisplayKind).kind == kind;
}

// The right button opens the menu over the item that it hits.
void xyVoteAverageGraph::Form_MouseDown(int button, double x, double y) {
  const host::Hit hit = host::hitTest(
      surface(), x, y,
      [](const host::ElementArray&, const host::Element& element) { return element.item != host::kNoItem; });
  if (hit)
    selectItem(hit.element->index);
  else if (const std::optional<int> point = lowered_.geometry().pointAt(x, y))
    selectItem(*point);
  if (button == host::mouse::right)
    openMenu();
}

void xyVoteAverageGraph::openMenu() {
  host::popUp(*this, kMenu, true);
}

// What is up is drawn with what the dialog has set.
void xyVoteAverageGraph::askAndRedraw(const char* dialog) {
  if (host::askWith(dialog) && host::host().forms->find(name) == this)
    redraw();
}

}  // namespace qrn
