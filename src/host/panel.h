// A list, grid or tree as state: rows with cells, marks and check boxes, what is selected, and what is to
// happen when somebody selects, opens, ticks or drags. Windows show a panel and turn keys and mouse into its
// calls; no pixel is known here.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qrn::host {

struct PanelRow {
  std::vector<std::string> cells;  // one per column; a list has one
  int id = 0;                      // what the row stands for, as its owner counts
  int depth = 0;                   // trees: 0 at the root; the rows below a row follow it
  bool enabled = true;
  bool checkable = false, checked = false;
  bool marked = false;  // stands out: a top item, the row at hand
  bool open = true;     // trees: what is below it shows
};

struct PanelColumn {
  std::string title;
  double width = 0;      // share of the panel's width; 0 takes what is left
  bool atRight = false;  // numbers
};

class Panel {
 public:
  // What the owner of the panel wants to hear of; each may be left out.
  std::function<void(int row)> selectionChanged;
  std::function<void(int row)> activated;   // double click, Enter
  std::function<void(int row)> toggled;     // its check box, after the change
  std::function<void(int row)> menuWanted;  // right click, Shift+F10; -1: beside the rows
  // A row was dragged before row `to` (rows().size(): to the end), or onto it in a tree. The owner moves.
  std::function<void(int from, int to, bool onto)> dropped;

  bool multiSelect = false;
  bool canDrag = false;
  std::vector<PanelColumn> columns;

  // New rows; what was selected stays selected where its id still is there.
  void setRows(std::vector<PanelRow> rows);
  const std::vector<PanelRow>& rows() const { return rows_; }
  int current() const { return current_; }                        // -1: none
  const std::vector<int>& selected() const { return selected_; }  // ascending
  bool isSelected(int row) const;
  int rowOfId(int id) const;  // -1: none
  bool shown(int row) const;  // no row above it in the tree is closed

  enum class How { alone, add, range };        // plain click, with Ctrl, with Shift
  void select(int row, How how = How::alone);  // outside the rows, or on a disabled one: nothing happens
  void selectAll();
  void toggle(int row);
  void setOpen(int row, bool open);
  // Up, Down, PageUp, PageDown, Home, End, Space, Enter, Left and Right in trees, Ctrl+A. False: not a key of
  // the panel.
  bool keyDown(int keyCode, int shift, int rowsOfPage = 10);
  // The next row from the one at hand on that begins with the text, without regard to case; false when there
  // is none.
  bool typeAhead(const std::string& text);

 private:
  bool exists(int row) const { return row >= 0 && row < static_cast<int>(rows_.size()); }
  int step(int from, int by) const;
  std::optional<int> cursorKey(int keyCode, int rowsOfPage) const;
  bool treeKey(int keyCode);

  std::vector<PanelRow> rows_;
  std::vector<int> selected_;
  int current_ = -1, anchor_ = -1;
};

}  // namespace qrn::host
