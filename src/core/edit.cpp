#include "core/edit.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "core/glo.h"
#include "core/item_label.h"

namespace qrn {
namespace {

int g_openEdits = 0;
std::vector<ExerciseView*> g_views;

// What tells the items of a list apart for their votes: the sortKey, and which of the items with it.
std::vector<std::int64_t> voteIdentities(const std::vector<RiskRecord>& risks) {
  std::unordered_map<int, std::int32_t> seen;
  std::vector<std::int64_t> identities;
  identities.reserve(risks.size());
  for (const RiskRecord& risk : risks)
    identities.push_back((std::int64_t{risk.sortKey} << 32) + seen[risk.sortKey]++);
  return identities;
}

// Gives the items of `to` the scores that they have in `from`. Items that are not there keep what they had.
void carryScores(const Exercise& from, Exercise& to) {
  std::unordered_map<std::int64_t, std::size_t> places;
  const auto known = voteIdentities(from.risks), wanted = voteIdentities(to.risks);
  for (std::size_t i = 0; i + 1 < known.size(); ++i) places.emplace(known[i], i);
  for (std::size_t i = 0; i + 1 < wanted.size(); ++i) {
    RiskRecord& risk = to.risks[i];
    if (const auto found = places.find(wanted[i]); found != places.end())
      static_cast<ItemScores&>(risk) = from.risks[found->second];
    risk.identifier = itemIdentifier(risk.ID);
  }
}

void exchange(Exercise& other) {
  Exercise& now = glo;
  carryScores(now, other);
  std::swap(now, other);
}

// `x` is used up.
ExerciseChange changeBetween(Exercise x, const Exercise& y) {
  ExerciseChange change;
  const auto alike = [](bool& differs, auto& left, const auto& right) {
    if (left == right)
      return;
    differs = true;
    left = right;
  };
  alike(change.items, x.risks, y.risks);
  alike(change.categories, x.categories, y.categories);
  alike(change.assessments, x.assessments, y.assessments);
  alike(change.assessments, x.assessmentInfo, y.assessmentInfo);
  alike(change.assessments, x.assessmentTitles, y.assessmentTitles);
  alike(change.assessments, x.scaleLabels, y.scaleLabels);
  change.settings = !(x == y);
  return change;
}

}  // namespace

void tellViews(const ExerciseChange& change) {
  const std::vector<ExerciseView*> told = g_views;  // a view may make others come and go
  for (ExerciseView* view : told)
    if (std::find(g_views.begin(), g_views.end(), view) != g_views.end())
      view->changed_(change);
}

// History -----------------------------------------------------------------------------------------

ExerciseHistory& exerciseHistory() {
  static ExerciseHistory history;
  return history;
}

void ExerciseHistory::touched() {
  if (g_openEdits == 0)
    storedAt_.reset();
}

bool ExerciseHistory::undo() {
  if (g_openEdits > 0 || done_ == 0)
    return false;
  --done_;
  return exchangeWith(steps_[done_]);
}

bool ExerciseHistory::redo() {
  if (g_openEdits > 0 || done_ == steps_.size())
    return false;
  ++done_;
  return exchangeWith(steps_[done_ - 1]);
}

bool ExerciseHistory::exchangeWith(Step& step) {
  exchange(step.other);
  tellViews(changeBetween(step.other, glo));
  return true;
}

std::string ExerciseHistory::undoName() const {
  return done_ == 0 ? "" : steps_[done_ - 1].name;
}

std::string ExerciseHistory::redoName() const {
  return done_ == steps_.size() ? "" : steps_[done_].name;
}

void ExerciseHistory::add(std::string name, Exercise before) {
  steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(done_), steps_.end());
  if (storedAt_ && *storedAt_ > done_)
    storedAt_.reset();
  steps_.push_back({std::move(name), std::move(before)});
  ++done_;
}

// Edit --------------------------------------------------------------------------------------------

Edit::Edit(std::string name) : name_(std::move(name)), before_(glo) {
  ++g_openEdits;
}

Edit::~Edit() {
  if (committed_)
    return;
  --g_openEdits;
  exchange(before_);
}

bool Edit::commit() {
  if (committed_)
    return false;
  committed_ = true;
  --g_openEdits;
  const Exercise& now = glo;
  if (before_ == now)
    return false;
  const ExerciseChange change = changeBetween(before_, now);
  if (g_openEdits == 0) {
    exerciseHistory().add(std::move(name_), std::move(before_));
    tellViews(change);
  }
  return true;
}

// Views -------------------------------------------------------------------------------------------

ExerciseView::ExerciseView(std::function<void(const ExerciseChange&)> changed)
    : changed_(std::move(changed)) {
  g_views.push_back(this);
}

ExerciseView::~ExerciseView() {
  std::erase(g_views, this);
}

}  // namespace qrn
