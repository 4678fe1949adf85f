// Start and end of the program: one run, one exercise.
#pragma once

#include <functional>
#include <string>

namespace qrn {

// What the entry asks of the rooms above it. The program's wiring fills it before Main; an empty function is
// skipped.
struct EntryHooks {
  std::function<void()> startVote;                 // brings up xyVoteRuntime and runs its startProcess
  std::function<void()> checkResume;               // asks how to go on with an unfinished process
  std::function<void(const std::string&)> Wizard;  // reserved for what the wizard wants to know of the start
  std::function<void()> selectFirstRow;            // the first row of the editor's grid
};

EntryHooks& entryHooks();

// Splits the command line, attaches to the presentation program, picks the exercise of the slide, decides the
// mode and opens the first form. Returns when that form waits for the user; `glo.closing` tells that the run
// has ended already.
void Main(const std::string& commandLine);

// Loads the exercise settings named in "default.txt" of the installation; without that file nothing happens.
void LoadDefaultTemplate();

}  // namespace qrn
