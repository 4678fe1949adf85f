// The one door through which the exercise at hand is changed once it is loaded, and the history behind it.
//
//   Edit edit("Rename item");
//   glo.risks[3].text = "Flood";
//   edit.commit();
//
// Steps are whole exercises. Undo and redo never touch what voting makes of an item: scores stay with the
// item that has the sortKey.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/exercise.h"

namespace qrn {

// What a change has touched.
struct ExerciseChange {
  bool items = false;  // what items hold, which items there are, or their order
  bool categories = false;
  bool assessments = false;  // titles, scales, looks, place in the running order
  bool settings = false;     // anything else
  bool operator==(const ExerciseChange&) const = default;
};

class ExerciseHistory {
 public:
  // False when there is nothing to take back or to do again, or while an edit is open.
  bool undo();
  bool redo();
  std::string undoName() const;  // of the step that undo would take back; "" without one
  std::string redoName() const;
  // Whether a step stands between the exercise at hand and the one stored last.
  bool modified() const { return storedAt_ != done_; }
  void stored() { storedAt_ = done_; }
  // What is kept has changed by no step that a person could take back: votes take the mark of new items away,
  // a run sorts the list, groups are chosen. Inside an edit, its step says so.
  void touched();
  // Another exercise is at hand, in which nothing has been edited; `stored` when it is what is stored.
  void begin(bool stored = true) {
    *this = ExerciseHistory();
    if (!stored)
      storedAt_.reset();
  }

 private:
  friend class Edit;
  // `other` is the exercise before the step while it is done, and the one after it while it is undone.
  struct Step {
    std::string name;
    Exercise other;
  };
  void add(std::string name, Exercise before);
  bool exchangeWith(Step& step);

  std::vector<Step> steps_;
  std::size_t done_ = 0;                      // steps before this one are done, the others undone
  std::optional<std::size_t> storedAt_ = 0U;  // nothing: no number of undos leads back to what is stored
};
ExerciseHistory& exerciseHistory();

// One step in the making. What has not been committed when it ends is taken back. An edit inside another one
// becomes part of that one's step.
class Edit {
 public:
  explicit Edit(std::string name);
  ~Edit();
  Edit(const Edit&) = delete;
  Edit& operator=(const Edit&) = delete;
  // True when something has changed. Views are told then, and the history has one step more.
  bool commit();

 private:
  std::string name_;
  Exercise before_;
  bool committed_ = false;
};

// Told of every change of the exercise, by edit, undo or redo, while it lives.
class ExerciseView {
 public:
  explicit ExerciseView(std::function<void(const ExerciseChange&)> changed);
  ~ExerciseView();
  ExerciseView(const ExerciseView&) = delete;
  ExerciseView& operator=(const ExerciseView&) = delete;

 private:
  friend void tellViews(const ExerciseChange&);
  std::function<void(const ExerciseChange&)> changed_;
};

}  // namespace qrn
