// Runs the built programs as a user would, in a folder of their own.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/disk.h"

namespace qrn::test {

struct Outcome {
  int code = -1;  // exit code; -1 when it ended by a signal
  std::string out, err;
};

// quorin-matrix with these words; `prepare` is called in its process before it starts.
Outcome matrix(const std::vector<std::string>& words, const std::function<void()>& prepare = {});

// A `vote` that is killed (SIGKILL) `milliseconds` after its start; returns the lines it had printed.
std::vector<std::string> killedVote(const std::vector<std::string>& words, int milliseconds);

class TempFolder : public Folder {
 public:
  // A copy of the sample deck, ready to be voted.
  std::string sampleDeck(const std::string& name = "deck.pptx") const;
};

std::vector<std::string> lines(const std::string& text);

}  // namespace qrn::test
