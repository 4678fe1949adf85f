// Old vote files beside the presentation.
#pragma once

#include <string>
#include <string_view>

namespace qrn {

// Records out of the text of a "votes.rec" file for the exercise file `mtxName` (with its ".mtx"); "" for
// none.
std::string convertVotesRec(std::string_view text, std::string_view mtxName);

}  // namespace qrn
