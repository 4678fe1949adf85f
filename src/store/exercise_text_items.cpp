#include "store/exercise_text_items.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"
#include "store/exercise_text_notes.h"

namespace qrn::mtx {

// An item whose text is there is kept, however much of the rest is missing. Its identity and key are set
// beforehand so that a damaged number does not make two items one.
void readItems(ExerciseReader& a, Exercise& x) {
  constexpr std::size_t kShortestItem = 32;  // sixteen values with their separators
  const auto told = a.count();
  if (!told)
    return;
  x.risks.assign(1, RiskRecord{});
  x.risks.reserve(std::min(*told, a.remaining() / kShortestItem + 1) + 1);
  NotesEnds notesEnds(a.text());
  bool inStep = true;
  for (std::size_t i = 0; i < *told; ++i) {
    std::string text;
    inStep = inStep && a.nextIsQuoted();
    a.take(Q(text));
    x.risks.emplace_back();
    RiskRecord& risk = x.risks[i];
    risk.text = std::move(text);
    risk.ID = risk.sortKey = static_cast<int>(i);
    a.line(I(risk.ID), I(risk.sortKey), B(risk.voting));
    a.takeQuoted(T(risk.notes), [&](std::size_t open) { return notesEnds.of(i, open); });
    a.passToFlags();
    activeFlags(a, risk);
    risk.active[9] = risk.active[10] = true;
  }
  a.itemsWhole = inStep && !a.atEnd() && !a.nextIsQuoted();
}

// One whole line per item. Nine fields belong to the item of that line, by position and without the last; ten
// fields belong to the items whose sortKey is the tenth.
void readBenchmarks(TextReader& a, Exercise& x) {
  using Values = std::array<float, kAssessments>;
  std::unordered_map<int, Values> byKey;
  const auto valueOf = [&](std::string_view field, float& value) {
    TextReader one(field);
    if (!one.atEnd())
      one.take(S(value));
    if (one.damaged() > 0)
      a.countDamage();
  };
  for (int i = 0; i < x.itemCount(); ++i) {
    const auto fields = splitFields(trimBlanks(a.wholeLine()), ',');
    if (fields.size() == kAssessments) {
      for (std::size_t f = 0; f + 1 < fields.size(); ++f)
        valueOf(fields[f], x.risks[static_cast<std::size_t>(i)].benchmark[f]);
    } else if (fields.size() == kAssessments + 1) {
      const auto key = leadingNumber(fields.back());
      Values& values = byKey[static_cast<int>(std::clamp(key.value_or(-32768), -32768.0, 32767.0))];
      for (std::size_t f = 0; f < values.size(); ++f) valueOf(fields[f], values[f]);
    } else {
      a.countDamage();
    }
  }
  eachItem(x, [&](RiskRecord& risk) {
    if (const auto found = byKey.find(risk.sortKey); found != byKey.end())
      std::copy(found->second.begin(), found->second.end(), risk.benchmark.begin());
  });
}

}  // namespace qrn::mtx
