// The resume point of a running process, kept in the slide tag qrnMatrixLog.
#pragma once

#include <string>

namespace qrn {

// Marks the current item as voted on glo.currentAssessment and stores where to go on: the next item, or the
// next assessment, by the running order. With `processFinished` nothing is left to resume.
void writeLog(bool processFinished = false);

// Text that writeLog stores.
std::string qrnMatrixLog(bool processFinished);

// Restores the resume point into glo (logRisk, logAssessment, the counters, the flags and the items' marks).
// False when the tag is empty. glo.resumePending tells whether there is a process to resume.
bool readlog();

// Start of a process: first category, first assessment, nothing to resume, all assessments open.
void resetLogState();

}  // namespace qrn
