#include "matrixgraph/plot_note.h"

#include <algorithm>

#include "analysis/multiplot.h"
#include "charts/chart_display.h"
#include "core/glo.h"
#include "matrixgraph/axis_titles.h"

namespace qrn {

namespace {

int scored(const std::vector<int>& items, int assessment) {
  return static_cast<int>(std::count_if(items.begin(), items.end(), [&](int item) {
    return glo.item(item).hasScore(static_cast<std::size_t>(assessment - 1));
  }));
}

std::string counted(int some, std::size_t all) {
  return std::to_string(some) + " of " + std::to_string(all);
}

// Votes on each scale that takes part, in the order of the pairs.
std::string votesByScale(const PlotRequest& request, const std::vector<int>& items) {
  std::string text;
  std::vector<int> told;
  for (const int assessment : request) {
    if (assessment <= 0 || std::count(told.begin(), told.end(), assessment) > 0)
      continue;
    told.push_back(assessment);
    text += (text.empty() ? " " : ", ") + axisTitle(assessment) + " " +
            counted(scored(items, assessment), items.size());
  }
  return text;
}

}  // namespace

std::vector<int> itemsShown() {
  std::vector<int> items;
  for (int item = 0; item < glo.itemCount(); ++item)
    if (glo.item(item).voting && inCategoriesShown(item))
      items.push_back(item);
  return items;
}

PlotNote plotNote(const PlotRequest& request, const std::vector<PlottedItem>& plotted) {
  if (glo.itemCount() == 0)
    return {"There are no items yet", true};
  const std::vector<int> items = itemsShown();
  if (items.empty())
    return {"None of the " + std::to_string(glo.itemCount()) + " items is in what is shown", true};
  if (plotted.empty())
    return {nobodyVoted(" on both scales") + "." + votesByScale(request, items), true};
  const auto off = std::count_if(plotted.begin(), plotted.end(), [](const PlottedItem& item) {
    return std::none_of(item.onScale.begin(), item.onScale.end(), [](bool on) { return on; });
  });
  std::string text;
  if (plotted.size() < items.size())
    text = counted(static_cast<int>(plotted.size()), items.size()) + " items have votes on both scales";
  if (off > 0)
    text += (text.empty() ? "" : ", ") + std::to_string(off) + " off the scale";
  return {text, false};
}

}  // namespace qrn
