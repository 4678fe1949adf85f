// Exercises for tests: one with every stored member away from its default, and lists of any length.
#pragma once

#include "core/exercise.h"

namespace qrn::test {

// `x` as initXYVote leaves it becomes an exercise of `items` items in which no stored member has its default.
void fillExercise(qrn::Exercise& x, int items);

// What a load makes of the text written from `x`: the members that are not stored, or not read back into the
// place they were written from, differ.
qrn::Exercise afterReload(const qrn::Exercise& x);

}  // namespace qrn::test
