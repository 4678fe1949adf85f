// The mouse on the matrix graph and on the list beside it: labels are selected, dragged and opened.
#include <algorithm>
#include <cmath>

#include "core/glo.h"
#include "host/host.h"
#include "matrixgraph/plot_items.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn {

namespace {

constexpr double kDragBegins = 4 * kTwipsPerPixel;  // a shorter way is a click

bool isKey(const host::ElementArray& array, const host::Element&) {
  const GraphArray* row = graphArray(array.name());
  return row != nullptr && row->part == Part::key;
}

int riskOf(const host::Element& label) {
  for (int risk = 0; risk < glo.itemCount(); ++risk)
    if (glo.item(risk).ID == label.item)
      return risk;
  return -1;
}

}  // namespace

void xyVoteGraph::Form_MouseDown(int button, double x, double y) {
  drag_ = {};
  const host::Hit hit = host::hitTest(surface(), x, y, isKey);
  if (button == host::mouse::right)
    return hit ? RightClickItem(*hit.element) : host::popUp(*this, kMenu, true);
  if (!hit)
    return;
  drag_ = {hit.array->name(), hit.element->index, x - hit.element->left, y - hit.element->top, x, y, false};
  selectItem(riskOf(*hit.element));
}

void xyVoteGraph::Form_MouseMove(double x, double y) {
  if (drag_.array.empty())
    return;
  drag_.moving = drag_.moving || std::hypot(x - drag_.pressX, y - drag_.pressY) >= kDragBegins;
  if (drag_.moving)
    moveLabel(x - drag_.offsetX, y - drag_.offsetY);
}

void xyVoteGraph::Form_MouseUp(double x, double y) {
  Form_MouseMove(x, y);
  const bool moved = drag_.moving;
  drag_ = {};
  if (moved)
    showView();  // what it covered, and what covers it now
}

// The shadow goes with its label; line, blob and centre stay where the score is.
void xyVoteGraph::moveLabel(double left, double top) {
  const GraphArray* row = graphArray(drag_.array);
  host::Element& label = *model_.canvas.surface.find(drag_.array, drag_.index);
  label.left = left;
  label.top = top;
  placeShadow(*arrayOf(model_.canvas.surface, Part::shadow, row->pair).find(drag_.index), label);
  host::host().forms->refresh(name);
}

void xyVoteGraph::Form_DblClick(double x, double y) {
  drag_ = {};
  if (const host::Hit hit = host::hitTest(surface(), x, y, isKey))
    DblClickItem(*hit.element);
}

void xyVoteGraph::DblClickItem(const host::Element& label) {
  openItem(riskOf(label));
}

void xyVoteGraph::RightClickItem(const host::Element& label) {
  selectItem(riskOf(label));
  host::popUp(*this, kItemMenu, true);
}

void xyVoteGraph::List1_DblClick(int row) {
  openItem(riskOfRow(row));
}

// -1: beside the rows.
void xyVoteGraph::List1_RightClick(int row) {
  host::popUp(*this, riskOfRow(row) < 0 ? kMenu : kItemMenu, true);
}

int xyVoteGraph::riskOfRow(int row) const {
  return row < 0 ? -1 : List1.rows()[static_cast<std::size_t>(row)].id;
}

// An item that has no row leaves the list as it is.
void xyVoteGraph::selectItem(int risk) {
  if (risk < 0)
    return;
  if (const int row = List1.rowOfId(risk); row >= 0 && row != List1.current())
    return List1.select(row);  // and here again
  selectedRiskIndex = risk;
  view.selectedItem = glo.item(risk).ID;
  showView();
}

void xyVoteGraph::openItem(int risk) {
  if (risk < 0)
    return;
  host::FormRegistry& forms = *host::host().forms;
  if (forms.isDefined(kItemForm))
    forms.showModal(kItemForm);
  if (forms.find(name) != this)
    return;
  showRiskList();
  selectItem(risk);
}

}  // namespace qrn
