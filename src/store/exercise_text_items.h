// The blocks of the exercise text that hold something of every item.
#pragma once

#include "core/exercise.h"
#include "store/exercise_text_archive.h"
#include "store/exercise_text_reader.h"

namespace qrn::mtx {

void readItems(ExerciseReader& a, Exercise& x);
void readBenchmarks(TextReader& a, Exercise& x);

template <class Archive>
void activeFlags(Archive& a, RiskRecord& risk) {
  auto& on = risk.active;
  a.line(B(on[0]), B(on[1]), B(on[2]), B(on[3]), B(on[4]), B(on[5]), B(on[6]), B(on[7]), B(on[8]), B(on[9]),
         B(on[10]));
}

// The list: count, then two lines per item.
template <class Archive>
void itemLines(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    readItems(a, x);
  } else {
    a.elements(x.risks, [&](RiskRecord& risk) {
      a.line(Q(risk.text), I(risk.ID), I(risk.sortKey), B(risk.voting), T(risk.notes));
      activeFlags(a, risk);
    });
  }
}

template <class Walk>
void eachItem(Exercise& x, Walk walk) {
  for (int i = 0; i < x.itemCount(); ++i) walk(x.risks[static_cast<std::size_t>(i)]);
}

// Look-up values of the items. This block carries a count of its own; values beyond the list are passed over.
template <class Archive>
void itemLookUps(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    const std::size_t count = a.count().value_or(0);
    RiskRecord beyond;
    for (std::size_t i = 0; i < count; ++i) {
      RiskRecord& risk = i + 1 < x.risks.size() ? x.risks[i] : beyond;
      a.list(risk.owners);
      a.list(risk.rootCauses);
    }
  } else {
    int count = x.itemCount();
    a.line(L(count));
    eachItem(x, [&](RiskRecord& risk) {
      a.list(risk.owners);
      a.list(risk.rootCauses);
    });
  }
}

template <class Archive>
void itemBenchmarks(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    readBenchmarks(a, x);
  } else {
    eachItem(x, [&](RiskRecord& risk) {
      for (std::size_t i = 0; i < kAssessments; ++i) a.put(S(risk.benchmark[i]));
      a.line(I(risk.sortKey));
    });
  }
}

}  // namespace qrn::mtx
