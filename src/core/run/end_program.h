// The one end of every run.
#pragma once

namespace qrn {

// Ends the run: closes the vote, stores the exercise, the outcome and the presentation, hands the show back.
// A second call does nothing. `autoClose`: the show has gone, and the user is told; `keepOpen1`, `keepOpen2`:
// the exercise is not stored. Loops that wait for a vote come to their end by themselves; `glo.closing` tells
// callers to return.
void endProgram(bool autoClose = false, bool keepOpen1 = false, bool keepOpen2 = false);

// Unloads all forms but xyVote, blankForm, infoForm and comms.
void UnloadNonEssentialForms();

// Unloads what is left and lets go of the presentation. For the program's last moment, when no form's code
// runs.
void releaseObjects();

}  // namespace qrn
