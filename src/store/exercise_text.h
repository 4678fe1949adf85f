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
#include <vector>

#include "core/exercise.h"

namespace qrn {

// The exercise as a value ------------------------------------------------------------------------

// What a text has given, and what is to be told about it.
struct ExerciseReading {
  Exercise exercise;
  bool complete = true;                // false: the text was cut short, or there was none
  bool itemsWhole = true;              // false: the list of items is not all there
  int damagedValues = 0;               // values that made no sense and left their members as they stood
  std::set<std::string> missingFonts;  // names that became "Arial"
  std::vector<std::string> messages;   // about its categories
};
enum class ReadFor { run, wizard };

// Reads a text, with all that follows (categories repaired, identifiers made). What the text does not hold
// stands as in `base`, whose layoutScreen the lengths are meant for. Damaged text gives what it can.
ExerciseReading readExercise(const std::string& text, Exercise base, ReadFor purpose = ReadFor::run);

std::string writeExercise(Exercise exercise);

// The doors of the run ----------------------------------------------------------------------------

// Loads an exercise into `glo`: from the file, or with an empty path from the tag qrnMatrix of the vote
// slide. False only for an empty tag, after "Could not find Matrix vote on slide."; in mode "DISPLAY" that
// also unloads all forms and ends the program.
bool LoadXY(const std::string& path);

// Stores `glo` in the tag qrnMatrix of the vote slide, or with a path in that file. Double quotes in texts
// become single quotes in `glo` too. False, after a report, when it could not be stored.
bool saveXY(const std::string& path = "");

// Makes what was read the exercise at hand: `glo` takes it, and what there is to tell is told and logged.
void takeExercise(const ExerciseReading& reading);

// Whether a text begins as an exercise text does: an empty text, eight numbers, the number of items.
bool looksLikeExerciseText(const std::string& text);
// File name for a new exercise: "New-", date and minute, ".mtx". kNullName stands for "not named yet".
std::string newExerciseName();
inline constexpr const char* kNullName = "\\NULL";

// On the notes page of the vote slide: takes the run's .mtx name out of the text, and adds the sentence
// "This slide is a quorin Matrix exercise" when it is not there.
void SaveXMLtoPPTSlide();

// Writes `text` to `path` over any file there; an empty path is "qrn_matrix_temp_mtx.txt" under TEMP.
void writeTextFileContents(const std::string& text, const std::string& path = "");

}  // namespace qrn
