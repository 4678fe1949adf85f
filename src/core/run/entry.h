// Start of the program: one run, one exercise.
#pragma once

#include <functional>
#include <string>

namespace qrn {

// What the entry asks of the rooms above it. The program's wiring fills it before Main.
struct EntryHooks {
  std::function<void()> startVote;  // brings up xyVoteRuntime and runs its startProcess
};
EntryHooks& entryHooks();

// Attaches to the presentation program, takes the command line apart, picks the exercise of the slide and
// opens the first form by mode. In modes "DISPLAY" and "SERIES VOTE" it runs the vote, or shows the results
// of a finished one, and ends the program. `glo.closing` tells whether the run has ended; if not, a form
// waits for the user.
void Main(const std::string& commandLine);

// glo.cmdFile, cmdMode, cmdSlide, cmdField4 and cmdField5 from the command line, trimmed and in upper case.
void splitCommandLine(const std::string& commandLine);
// What the mode stands for; "MAKE" asks for file and mode first.
void applyModes();

// Takes an old exercise file beside the presentation, with its votes, into the vote slide and deletes it.
// False when the file is not there, or is not to take the place of votes on the slide. The file stays when
// the slide did not take its text.
bool convertExerciseFile();

// Loads the settings of the default template that the installation names; without one nothing happens.
void LoadDefaultTemplate();

// Runs the vote by itself when the exercise of the slide is not finished; true when it has done so. A process
// that was stopped is asked about first, which may change glo.cmdMode and glo.cmdSlide. Where votes cannot be
// stored that is told, and no vote runs.
bool AutoStart();
// Asks how to go on with a process that was stopped: continue; clear and restart; leave the votes
// (glo.cmdSlide "VotesNotCleared"); go to the editor (glo.cmdMode "SETUP").
void checkResume();
// Shows the average graph and then the matrix graph, each until it is closed or the show moves on.
void showGraphs();

}  // namespace qrn
