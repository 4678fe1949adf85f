// The resume point of a running process, kept in the slide tag qrnMatrixLog.
#pragma once

#include <string>

namespace qrn {

// Marks the current item as voted on glo.currentAssessment and stores where to go on: the next item, or the
// next assessment, by the running order. With `processFinished` nothing is left to resume.
void writeLog(bool processFinished = false);

// Stores that the process stands before the vote of `item` (index into risks) on `assessment` (1 to 9), and
// that the records so far are known. Nothing is marked as voted.
void writeLogBefore(int item, int assessment);

// Text that writeLog stores.
std::string qrnMatrixLog(bool processFinished);

// Restores the resume point into glo (logRisk, logAssessment, the counters, the flags and the items' marks).
// False when the tag is empty. glo.resumePending tells whether there is a process to resume. A vote whose
// record is newer than the log (the run was killed between the two) counts as voted.
bool readlog();

// Start of a process: first category, first assessment, nothing to resume, all assessments open.
void resetLogState();

}  // namespace qrn
