#pragma once

#include "look/theme.h"

namespace qrn {

// The theme that the presentation's own colours give; without a presentation the dark one.
look::Theme slideTheme();

}  // namespace qrn
