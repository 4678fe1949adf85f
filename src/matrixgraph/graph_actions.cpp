// What the matrix graph can do, told once: its keys, menus, buttons and help read this table.
#include "analysis/multiplot_form.h"
#include "core/glo.h"
#include "core/show_keys.h"
#include "host/help.h"
#include "host/host.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn {

namespace {

namespace key = host::key;
using host::Action;
using host::kAnyShift;
using Actions = std::vector<Action>;

constexpr int kDigits = 10;

// The groups that the digits filter by.
const std::vector<DemographicInfoGroup>& defaultGroups() {
  static const std::vector<DemographicInfoGroup> none;
  for (const DemographicInfo& question : glo.demographicQuestions)
    if (question.isDefault)
      return question.groups;
  return none;
}

}  // namespace

host::ActionTable xyVoteGraph::actions() {
  return host::ActionTable(
      host::together({itemActions(), pairActions(), filterActions(), viewActions(), formActions()}));
}

// A digit without a group shows everyone.
std::vector<host::Action> xyVoteGraph::filterActions() {
  const std::vector<DemographicInfoGroup>& groups = defaultGroups();
  Actions rows;
  for (int digit = 0; digit < kDigits; ++digit) {
    const auto group = static_cast<std::size_t>(digit - 1);
    const bool shown = !groups.empty() && (digit == 0 || group < groups.size());
    rows.push_back({.name = "menuDemographics" + std::to_string(digit),
                    .caption = !shown       ? ""
                               : digit == 0 ? "Everyone"
                                            : groups[group].groupName,
                    .keys = {{'0' + digit, 0}},
                    .menus = shown ? std::vector<std::string>{kMenu + std::string("/Votes of")}
                                   : std::vector<std::string>{},
                    .perform = [this, digit] { filterByDigit(digit); },
                    .checked =
                        [digit, group] {
                          const auto& now = defaultGroups();
                          return digit == 0
                                     ? !glo.demographicFilterOn
                                     : glo.demographicFilterOn && group < now.size() && now[group].selected;
                        },
                    .help = digit == 0 && shown ? "The votes of everyone" : ""});
  }
  return rows;
}

std::vector<host::Action> xyVoteGraph::viewActions() {
  return {{.name = "menuDiversity",
           .caption = "Diversity",
           .keys = {{key::f3, kAnyShift}},
           .menus = {kMenu},
           .perform = [this] { menuDiversity(); },
           .checked = [this] { return showingDiversity; },
           .help = "How far the votes lie apart, in place of the averages"},
          {.name = "cmd_list",
           .caption = "List of items",
           .keys = {{'L', key::altMask}},
           .menus = {kMenu, kItemMenu, host::kCommandBar},
           .perform = [this] { cmd_list_Click(); },
           .checked = [this] { return listVisible; }},
          {.name = "cmd_info",
           .caption = "Items without data",
           .keys = {{'I', key::altMask}},
           .menus = {kMenu},
           .perform = [this] { cmd_info_Click(); },
           .enabled = [this] { return cmd_info; }},
          {.name = "showButtons",
           .caption = "Show the buttons",
           .keys = {{key::up, key::altMask}},
           .perform = [this] { buttonsVisible = true; }},
          {.name = "hideButtons",
           .caption = "Hide the buttons",
           .keys = {{key::down, key::altMask}},
           .perform = [this] { buttonsVisible = false; }}};
}

std::vector<host::Action> xyVoteGraph::pairActions() {
  Actions rows;
  rows.push_back({.name = "menuHideShowAllPlots",
                  .caption = "All items",
                  .keys = {{'A', key::ctrlMask}, {key::multiply, key::ctrlMask}, {'8', key::ctrlMask}},
                  .menus = {kMenu, kHideShowMenu, kItemMenu},
                  .perform = [this] { showAll(); },
                  .help = "Show all items in all pairs"});
  for (int pair = 1; pair <= kPairs; ++pair) {
    const std::string number = std::to_string(pair);
    rows.push_back({.name = "menuHideShowRound" + number,
                    .caption = "Pair " + number,
                    .menus = {kMenu + std::string("/Pairs"), kHideShowMenu},
                    .perform = [this, pair] { menuHideShowRound(pair); },
                    .enabled = [this, pair] { return onGraph(pair); },
                    .checked = [this, pair] { return view.roundVisible[static_cast<std::size_t>(pair - 1)]; },
                    .separated = pair == 1});
  }
  rows.push_back({.name = "menuPairLines",
                  .caption = "Lines between pairs",
                  .menus = {kMenu + std::string("/Pairs"), kHideShowMenu},
                  .perform = [this] { menuPairLines(); },
                  .enabled = [this] { return onGraph(2) || onGraph(3) || onGraph(4); },
                  .checked = [this] { return view.pairLines; },
                  .separated = true});
  return rows;
}

// What is there for one item stands in its menu while the list has a row of it.
std::vector<host::Action> xyVoteGraph::itemActions() {
  const bool listed = List1.rowOfId(selectedRiskIndex) >= 0;
  const std::string one = listed ? glo.item(selectedRiskIndex).identifier : std::string();
  const auto menuIf = [&](bool there) {
    return listed && there ? std::vector<std::string>{kItemMenu} : std::vector<std::string>{};
  };
  const host::FormRegistry& forms = *host::host().forms;
  std::vector<host::KeyStroke> suffixes = host::keyRange('0', '9', key::shiftMask);
  return {{.name = "itemMenuAlone",
           .caption = "Show " + one + " alone",
           .menus = menuIf(true),
           .perform = [this, one] { showLetter(one); }},
          {.name = "itemMenuDistribution",
           .caption = "Distribution of " + one,
           .menus = menuIf(forms.isDefined(kDistributionForm)),
           .perform = [this, one] { PlotItemDistribution(one); }},
          {.name = "itemMenuOpen",
           .caption = "Open " + one + "...",
           .menus = menuIf(forms.isDefined(kItemForm)),
           .perform = [this, risk = selectedRiskIndex] { openItem(risk); }},
          {.name = "letters",
           .caption = std::string("Show the item of that letter alone") +
                      (forms.isDefined(kDistributionForm) ? "; again: its distribution" : ""),
           .keys = host::keyRange('A', 'Z'),
           .performKey = [this](int letter) { letterKey(static_cast<char>(letter)); },
           .typed = true},
          {.name = "itemKeySuffix",
           .caption = "Letters mean A3, B3...; 0 and 1: A, B again",
           .keys = std::move(suffixes),
           .performKey = [this](int digit) {
             itemKeySuffix = digit <= '1' ? "" : std::string(1, static_cast<char>(digit));
           }}};
}

std::vector<host::Action> xyVoteGraph::formActions() {
  return {{.name = "cmd_hideShow",
           .caption = "Hide and show...",
           .menus = {host::kCommandBar},
           .perform = [this] { host::popUp(*this, kHideShowMenu); }},
          {.name = "popupMenuCategory",
           .caption = "Menu",
           .keys = {{key::f10, 0}, {key::f10, key::shiftMask}, {key::rightSuper, kAnyShift}},
           .menus = {host::kCommandBar},
           .perform = [this] { host::popUp(*this, kMenu); }},
          {.name = "xyVoteGraphPopupMultiPlot",
           .caption = "MultiPlots...",
           .menus = {kMenu},
           .perform =
               [this] {
                 if (host::askWith(kMultiPlotForm))
                   tmr_load.setEnabled(true);
               },
           .separated = true},
          [this] {
            Action help = host::helpAction(*this);
            help.menus = {kMenu, host::kCommandBar};
            help.separated = true;
            return help;
          }(),
          {.name = "escape",
           .caption = displayedInShow() ? "All items again" : "All items again, then close the graph",
           .keys = {{key::escape, kAnyShift}, {key::space, kAnyShift}},
           .perform = [this] { escapeOrSpace(); }},
          {.name = "goOn",
           .caption = displayedInShow() ? "Go on with the show" : "",
           .keys = showKeys(),
           .perform = [this] { cmd_close_Click(); },
           .enabled = displayedInShow},
          {.name = "cmd_close",
           .caption = "Close the graph",
           .menus = {kMenu, host::kCommandBar},
           .perform = [this] { cmd_close_Click(); }}};
}

// Keys
void xyVoteGraph::Form_KeyDown(int keyCode, int shift) {
  const host::ActionTable table = actions();
  const Action* action = table.forKey(keyCode, shift);
  if (action == nullptr || (List1.rows().size() < 2 && action->name != "goOn" && action->name != "help"))
    return;
  keyHandled = true;
  table.performKey(keyCode, shift);
  host::host().forms->refresh(name);
}

void xyVoteGraph::Form_KeyPress(int keyAscii) {
  if (List1.rows().size() >= 2)
    actions().performTyped(keyAscii);
}

}  // namespace qrn
