// The one global exercise state, in two slices: what a file keeps and what the run holds.
#pragma once

#include "core/exercise.h"
#include "core/session.h"

namespace qrn {

struct Glo : Exercise, Session {};

extern Glo glo;

}  // namespace qrn
