#include "host/panel.h"

#include <algorithm>
#include <cctype>
#include <set>

#include "base/text.h"
#include "host/forms.h"

namespace qrn::host {

void Panel::setRows(std::vector<PanelRow> rows) {
  std::set<int> ids;
  for (const int row : selected_) ids.insert(rows_[static_cast<std::size_t>(row)].id);
  const int currentId = exists(current_) ? rows_[static_cast<std::size_t>(current_)].id : 0;
  const bool hadCurrent = exists(current_);
  rows_ = std::move(rows);
  selected_.clear();
  for (int row = 0; row < static_cast<int>(rows_.size()); ++row)
    if (ids.count(rows_[static_cast<std::size_t>(row)].id) != 0)
      selected_.push_back(row);
  current_ = anchor_ = hadCurrent ? rowOfId(currentId) : -1;
}

bool Panel::isSelected(int row) const {
  return std::binary_search(selected_.begin(), selected_.end(), row);
}

int Panel::rowOfId(int id) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const PanelRow& row) { return row.id == id; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

bool Panel::shown(int row) const {
  int depth = rows_[static_cast<std::size_t>(row)].depth;
  for (int above = row - 1; above >= 0 && depth > 0; --above) {
    const PanelRow& one = rows_[static_cast<std::size_t>(above)];
    if (one.depth >= depth)
      continue;
    if (!one.open)
      return false;
    depth = one.depth;
  }
  return true;
}

void Panel::select(int row, How how) {
  if (!exists(row) || !rows_[static_cast<std::size_t>(row)].enabled)
    return;
  if (!multiSelect || how == How::alone) {
    selected_ = {row};
    anchor_ = row;
  } else if (how == How::add) {
    const auto place = std::lower_bound(selected_.begin(), selected_.end(), row);
    if (place != selected_.end() && *place == row)
      selected_.erase(place);
    else
      selected_.insert(place, row);
    anchor_ = row;
  } else {
    const auto [first, last] = std::minmax(exists(anchor_) ? anchor_ : row, row);
    selected_.clear();
    for (int one = first; one <= last; ++one)
      if (rows_[static_cast<std::size_t>(one)].enabled && shown(one))
        selected_.push_back(one);
  }
  current_ = row;
  if (selectionChanged)
    selectionChanged(row);
}

void Panel::selectAll() {
  if (!multiSelect || rows_.empty())
    return;
  anchor_ = 0;
  select(step(static_cast<int>(rows_.size()), -1), How::range);
}

void Panel::toggle(int row) {
  if (!exists(row))
    return;
  PanelRow& one = rows_[static_cast<std::size_t>(row)];
  if (!one.checkable || !one.enabled)
    return;
  one.checked = !one.checked;
  if (toggled)
    toggled(row);
}

void Panel::setOpen(int row, bool open) {
  if (!exists(row))
    return;
  rows_[static_cast<std::size_t>(row)].open = open;
  if (exists(current_) && !shown(current_))
    select(row);
}

// The row `by` enabled, shown rows further on, held at the ends.
int Panel::step(int from, int by) const {
  const int direction = by < 0 ? -1 : 1;
  int found = from;
  for (int left = std::abs(by), row = from + direction; left > 0 && exists(row); row += direction)
    if (rows_[static_cast<std::size_t>(row)].enabled && shown(row)) {
      found = row;
      --left;
    }
  return found;
}

bool Panel::treeKey(int keyCode) {
  const PanelRow& row = rows_[static_cast<std::size_t>(current_)];
  const bool hasRows =
      exists(current_ + 1) && rows_[static_cast<std::size_t>(current_) + 1].depth > row.depth;
  if (keyCode == key::right && hasRows) {
    row.open ? select(step(current_, 1)) : setOpen(current_, true);
    return true;
  }
  if (keyCode != key::left || (row.depth == 0 && !(hasRows && row.open)))
    return false;
  if (hasRows && row.open) {
    setOpen(current_, false);
    return true;
  }
  int above = current_;
  while (rows_[static_cast<std::size_t>(above)].depth >= row.depth) --above;
  select(above);
  return true;
}

// Where a key of the cursor leads; nothing for other keys.
std::optional<int> Panel::cursorKey(int keyCode, int rowsOfPage) const {
  const int end = static_cast<int>(rows_.size());
  switch (keyCode) {
    case key::up:
      return step(exists(current_) ? current_ : end, -1);
    case key::down:
      return step(current_, 1);
    case key::pageUp:
      return step(exists(current_) ? current_ : end, -rowsOfPage);
    case key::pageDown:
      return step(current_, rowsOfPage);
    case key::home:
      return step(-1, 1);
    case key::end:
      return step(end, -1);
    default:
      return std::nullopt;
  }
}

bool Panel::keyDown(int keyCode, int shift, int rowsOfPage) {
  if (rows_.empty())
    return false;
  if (const std::optional<int> row = cursorKey(keyCode, rowsOfPage)) {
    select(*row, multiSelect && (shift & key::shiftMask) != 0 ? How::range : How::alone);
    return true;
  }
  if (keyCode == 'A' && shift == key::ctrlMask && multiSelect) {
    selectAll();
    return true;
  }
  if (!exists(current_))
    return false;
  if (keyCode == key::space && rows_[static_cast<std::size_t>(current_)].checkable) {
    toggle(current_);
    return true;
  }
  if (keyCode == key::enter && activated) {
    activated(current_);
    return true;
  }
  return treeKey(keyCode);
}

bool Panel::typeAhead(const std::string& text) {
  const int count = static_cast<int>(rows_.size());
  for (int i = 0; i < count && !text.empty(); ++i) {
    const int row = (std::max(current_, 0) + i) % count;
    const PanelRow& one = rows_[static_cast<std::size_t>(row)];
    if (one.enabled && shown(row) && !one.cells.empty() && beginsWithWord(one.cells.front(), text)) {
      select(row);
      return true;
    }
  }
  return false;
}

}  // namespace qrn::host
