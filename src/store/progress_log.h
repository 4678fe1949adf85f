// The resume point of a running process, kept in the slide tag qrnMatrixLog.
#pragma once

#include <string>

namespace qrn {

// Marks item `item` (index into risks) as voted on `assessment` (1 to 9); a new item is none any more. Out of
// range: nothing.
void markVoted(int item, int assessment);

// Marks the current item as voted on glo.currentAssessment and stores the progress, with the place of the
// next vote by the running order for readers outside. With `processFinished` nothing is left to resume.
void writeLog(bool processFinished = false);

// Stores that the process stands before the vote of `item` (index into risks) on `assessment` (1 to 9), and
// that the records so far are known. Nothing is marked as voted.
void writeLogBefore(int item, int assessment);

// Text that writeLog stores.
std::string qrnMatrixLog(bool processFinished);

// Restores the counters, the flags and the items' marks into glo. What is due is told by the marks, which go
// by key: the place in the log would grow old with the order of the list. False when the tag is empty.
// glo.resumePending tells whether there is a process to resume. A vote whose record is newer than the log
// (the run was killed between the two) counts as voted, and what no log tells is as at the start of a
// process.
bool readlog();

// Whether a process comes to that vote: the item takes part and the assessment is voted item by item.
bool isAsked(int item, int assessment);
// Whether it can be voted then: on a scale of two points at least.
bool isVotable(int item, int assessment);

// Whether a vote is left that the running order has and readlog has not marked. A process without one is
// finished, whatever its log says.
bool votesDue();

// Start of a process: first category, nothing voted, nothing to resume, all assessments open.
void resetLogState();

}  // namespace qrn
