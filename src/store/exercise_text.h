// The exercise text: all of an exercise as lines of comma-separated values, as it stands in the slide tag
// qrnMatrix and in .mtx and .mtt files.
//
// Values are told apart by type, not by line: texts in double quotes without escaping, plain decimal numbers,
// #TRUE# and #FALSE#; lines end in CR LF; text is UTF-8 (a text that is not is read as Windows-1252). At the
// end stand named settings, of which unknown ones are skipped.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "core/glo.h"

namespace qrn {

// Loads an exercise into `glo`: from the file, or with an empty path from the tag qrnMatrix of the vote
// slide. Damaged text loads what it can. False only for an empty tag, after "Could not find Matrix vote on
// slide."; in mode "DISPLAY" that also unloads all forms and ends the program.
bool LoadXY(const std::string& path);

// Stores `glo` in the tag qrnMatrix of the vote slide, or with a path in that file. Double quotes in texts
// become single quotes in `glo` too. False, after a report, when it could not be stored.
bool saveXY(const std::string& path = "");

// The exercise stands as it is stored, and whether it has changed since: a run that changed nothing stores
// nothing.
void noteExerciseAtRest();
bool exerciseChanged();

// Under them: the text of an exercise, and the text into `glo` with all that follows a load (categories
// repaired, identifiers rebuilt, warnings given). False when there is no text at all; `glo` is then as it
// was.
std::string writeExerciseText(Glo& exercise);
bool readExerciseText(const std::string& text);

// How the last text read had come: to its end or cut short, and how many of its values made no sense.
struct ExerciseTextReport {
  bool complete = true;
  int damagedValues = 0;
  std::set<std::string> missingFonts;  // names that became "Arial"
};
const ExerciseTextReport& lastExerciseTextReport();

// Whether a text begins as an exercise text does: an empty text, eight numbers, the number of items.
bool looksLikeExerciseText(const std::string& text);

// What "ends the program" means; set by the entry.
extern std::function<void()> endProgramHook;

// File name for a new exercise: "New-", date and minute, ".mtx". kNullName stands for "not named yet".
std::string newExerciseName();
inline constexpr const char* kNullName = "\\NULL";

// On the notes page of the vote slide: takes the run's .mtx name out of the text, and adds the sentence
// "This slide is a quorin Matrix exercise" when it is not there.
void SaveXMLtoPPTSlide();

// Writes `text` to `path` over any file there; an empty path is "qrn_matrix_temp_mtx.txt" under TEMP.
void writeTextFileContents(const std::string& text, const std::string& path = "");

}  // namespace qrn
