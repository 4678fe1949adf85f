// The outcome of the last vote: the presentation tag qrnVoteTerminated. Should the tag not be writable, the
// outcome still holds for this run, so a full disk never leaves the facilitator's keys dead.
#pragma once

#include <string>

namespace qrn {

void writeOutcome(const std::string& value);
void writeOutcomeIfNone(const std::string& value);
void deleteOutcome();
// Double quotes removed, lower case; "" while there is none.
std::string outcome();

}  // namespace qrn
