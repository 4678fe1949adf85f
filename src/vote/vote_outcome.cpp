#include "vote/vote_outcome.h"

#include <algorithm>

#include "core/common.h"
#include "core/diagnostics.h"
#include "host/host.h"
#include "host/presentation.h"

namespace qrn {

namespace {

constexpr const char* kTag = "qrnVoteTerminated";

std::string unwritten;  // an outcome that the tag did not take
std::string stale;      // a tag value that could not be deleted

host::Tags& tags() {
  return host::host().presentationProgram->ActivePresentation()->tags();
}

std::string tagValue() {
  const std::string value = tags().Item(kTag);
  return value == stale ? "" : value;
}

}  // namespace

void writeOutcome(const std::string& value) {
  unwritten.clear();
  const bool written = trapErrors("vote_outcome", "writeOutcome", [&] { tags().Add(kTag, value); });
  if (written)
    stale.clear();
  else
    unwritten = value;
}

void writeOutcomeIfNone(const std::string& value) {
  if (outcome().empty())
    writeOutcome(value);
}

void deleteOutcome() {
  unwritten.clear();
  stale.clear();
  if (!trapErrors("vote_outcome", "deleteOutcome", [] { tags().Delete(kTag); }))
    stale = tags().Item(kTag);
}

std::string outcome() {
  std::string text = replaceAll(unwritten.empty() ? tagValue() : unwritten, "\"", "");
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

}  // namespace qrn
