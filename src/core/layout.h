// Stored places of the voting screens, from one size of screen to another.
#pragma once

#include "core/exercise.h"

namespace qrn {

// The assessment with every length of its layout, meant for the screen `from`, made for the screen `to`.
AssessmentRecord fitted(AssessmentRecord assessment, const ScreenDimensions& from,
                        const ScreenDimensions& to);

// Makes all layouts of `x` those of another screen.
void fitLayout(Exercise& x, const ScreenDimensions& screen);

}  // namespace qrn
