// The sentences of a vote screen.
#pragma once

#include <functional>
#include <string>

#include "charts/vote_screen/vote_request.h"

namespace qrn {

std::string stepWords(const VoteQuestion& question);  // "7 of 80"
std::string averageWords(double average);

struct CountWords {
  std::string strong, quiet;  // "57" and "of 103 voted"; a count that is no number stands alone
};
CountWords countWords(const VoteNow& now);

// Who is missing, in as many numbers as `fits` says there is room for; that everyone has voted; that nobody
// is there yet. "" when there is nothing to say.
std::string toldWords(const VoteNow& now, const std::function<bool(const std::string&)>& fits);

// Why a result has no bars, in numbers; "" when it has some.
std::string noticeWords(const VoteNow& now);

// Digits in groups of three: "1,204".
std::string grouped(std::string digits);

}  // namespace qrn
