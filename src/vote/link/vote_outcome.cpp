#include "vote/link/vote_outcome.h"

#include <algorithm>
#include <string>

#include "base/errors.h"
#include "base/text.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/names.h"
#include "host/presentation.h"

namespace qrn {

namespace {

struct Text {
  VoteOutcome outcome;
  const char* text;
};
// Of two with one text the first is read.
constexpr Text kTexts[] = {{VoteOutcome::held, "Vote finished"},   {VoteOutcome::again, "revote"},
                           {VoteOutcome::leaveAll, "Quit ALL"},    {VoteOutcome::leaveThis, "Vote Finished"},
                           {VoteOutcome::jump, "Vote Finished"},   {VoteOutcome::seriesExit, "exit"},
                           {VoteOutcome::seriesLast, "jump last"}, {VoteOutcome::seriesJump, "jump"}};

VoteOutcome written = VoteOutcome::none;  // by this program
bool tagTookIt = true;                    // the tag holds `written`
std::string stale;                        // a tag value that could not be deleted

host::Tags& tags() {
  if (glo.oPresentation == nullptr)
    throw HostError(Fault::program, 91, "There is no presentation");
  return glo.oPresentation->tags();
}

std::string textOf(VoteOutcome outcome) {
  const auto* found = std::find_if(std::begin(kTexts), std::end(kTexts),
                                   [&](const Text& each) { return each.outcome == outcome; });
  return found == std::end(kTexts) ? "" : found->text;
}

std::string tagText() {
  const std::string text = glo.oPresentation == nullptr ? "" : tags().Item(tagName::voteTerminated);
  return text == stale ? "" : text;
}

}  // namespace

void writeOutcome(VoteOutcome outcome) {
  written = outcome;
  tagTookIt = trapErrors("vote_outcome", "writeOutcome",
                         [&] { tags().Add(tagName::voteTerminated, textOf(outcome)); });
  if (tagTookIt)
    stale.clear();
}

void writeOutcomeIfNone(VoteOutcome value) {
  if (outcome() == VoteOutcome::none)
    writeOutcome(value);
}

void deleteOutcome() {
  written = VoteOutcome::none;
  tagTookIt = true;
  stale.clear();
  if (!trapErrors("vote_outcome", "deleteOutcome", [] { tags().Delete(tagName::voteTerminated); }))
    stale = tagText();
}

VoteOutcome outcome() {
  const std::string text = tagText();
  if (!tagTookIt || (!text.empty() && text == textOf(written)))
    return written;
  if (text.empty())
    return VoteOutcome::none;
  const std::string plain = upperCase(replaceAll(text, "\"", ""));
  const auto* found = std::find_if(std::begin(kTexts), std::end(kTexts),
                                   [&](const Text& each) { return upperCase(each.text) == plain; });
  return found == std::end(kTexts) ? VoteOutcome::held : found->outcome;
}

}  // namespace qrn
