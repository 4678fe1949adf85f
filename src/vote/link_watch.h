// Looks after the link to the controller while a vote is open.
#pragma once

#include <cstdint>

#include "charts/vote_screen/vote_screen.h"

namespace qrn {

// A lost link is told on the form's status line and made again every few seconds; then the vote is opened
// anew on the controller. The votes received so far stay as they are.
class LinkWatch {
 public:
  explicit LinkWatch(VoteForm& form);
  ~LinkWatch();
  LinkWatch(const LinkWatch&) = delete;
  LinkWatch& operator=(const LinkWatch&) = delete;
  void check();  // one look, from the loop that waits for the vote

 private:
  void tell(const char* line);
  void reopenVote();

  VoteForm& form_;
  bool lost_ = false;
  std::int64_t nextTry_ = 0, tellUntil_ = 0;  // microseconds
};

}  // namespace qrn
