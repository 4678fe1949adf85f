#include "vote/link_watch.h"

#include "core/glo.h"
#include "host/controller.h"
#include "host/host.h"
#include "host/names.h"
#include "host/system.h"
#include "vote/link/comms.h"

namespace qrn {

namespace {

constexpr std::int64_t kSecond = 1000000;
constexpr std::int64_t kFirstTry = kSecond / 2, kTryEvery = 2 * kSecond, kTellFor = 5 * kSecond;
constexpr const char* kLost =
    "The link to the controller is lost. The votes received so far are kept. Trying to link again...";
constexpr const char* kBack = "The link to the controller is back. Keypads can vote again.";

std::int64_t now() {
  return host::host().clock->microseconds();
}

// Keyboard votes need no controller.
bool linkNeeded() {
  return glo.baseType != kKeyboardBase;
}

}  // namespace

LinkWatch::LinkWatch(VoteForm& form) : form_(form) {}

LinkWatch::~LinkWatch() {
  form_.ShowStatus("");
}

void LinkWatch::check() {
  comms& link = theComms();
  if (!lost_ && (!link.linked() || !link.voteOpened) && linkNeeded()) {
    lost_ = true;
    nextTry_ = now() + kFirstTry;
    tellUntil_ = 0;
    tell(kLost);
  } else if (lost_ && !link.linked() && now() >= nextTry_) {
    link.makeLink();
    nextTry_ = now() + kTryEvery;
  } else if (lost_ && link.linked() && host::host().controller->controllerReady()) {
    lost_ = false;
    reopenVote();
    tellUntil_ = now() + kTellFor;
    tell(kBack);
  } else if (tellUntil_ > 0 && now() >= tellUntil_) {
    tellUntil_ = 0;
    tell("");
  }
}

void LinkWatch::tell(const char* line) {
  form_.ShowStatus(line);
  host::host().forms->refresh(form_.name);
}

void LinkWatch::reopenVote() {
  comms& link = theComms();
  link.SendCommandToController(glo.abstainEnabled ? "Abstain=True" : "Abstain=False", false, true);
  link.StartVote(false, true);
}

}  // namespace qrn
