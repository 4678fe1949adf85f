// Defaults of a new exercise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qrn {

// Sets every saved member of `glo` to its default: an empty list, one category "unallocated", assessment 0
// alone active. Runs once in Main, before anything else touches `glo`.
void initXYVote();

// Defaults of the eleven assessment records: the master fonts of the presentation where there is one, else
// Arial; point colours from its scheme, else glo.barColours1. `keepFonts` false makes the records anew; true
// keeps the fonts and whatever else these defaults do not name.
void InitAssessmentInfo(bool keepFonts);

// The colour of a vote point is one that nobody has chosen: the scheme's or the usual one.
bool isDefaultPointColour(std::size_t point, std::int32_t colour);

// The three shades per vote point in glo.barColours1, 2 and 3.
void setDefaultBarColours();

// glo.remainingAssessments: the numbers (from 1) of the assessments that are not in glo.matrixAxes, then -1.
void setRemainingAssessments();

}  // namespace qrn
