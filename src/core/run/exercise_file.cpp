// An old exercise file beside the presentation, taken into the slide.
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/storable.h"
#include "base/text.h"
#include "base/utf8.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/run/delete_file.h"
#include "core/run/entry.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"
#include "store/exercise_text.h"
#include "store/votes_rec_conversion.h"

namespace qrn {

namespace {

constexpr const char* kModule = "Vote";

// The command line comes in upper case; the file's own spelling is found in its folder. "" when it is not
// there.
std::string pathInAnyCase(const std::string& folder, const std::string& name) {
  const std::string path = joinPath(folder, name);
  if (fileExists(path))
    return path;
  for (const std::string& entry : host::host().files->list(folder))
    if (upperCase(entry) == upperCase(name))
      return joinPath(folder, entry);
  return "";
}

void replaceTag(const char* key, const std::string& value) {
  host::Tags& tags = glo.oVoteSlide->tags();
  tags.Delete(key);
  tags.Add(key, value);
}

void takeVotes(const std::string& folder, const std::string& exerciseName) {
  const std::string path = pathInAnyCase(folder, "votes.rec");
  if (path.empty())
    return;
  const std::string records = convertVotesRec(toUtf8(readTextFile(path)), exerciseName);
  if (records.empty())
    return;
  glo.oVoteSlide->tags().Delete(tagName::exercise);
  glo.oVoteSlide->tags().Add(tagName::convertedVotes, records);
}

// Votes on the slide belong to the exercise that would go. Without a person to say so, they stay.
bool mayReplaceVotes(const std::string& name) {
  if (glo.oVoteSlide->tags().Item(tagName::votes).empty())
    return true;
  return host::host().dialogs->MsgBox(
             "Slide " + std::to_string(glo.currentSlide) + " has votes already. Converting " + name +
                 " puts another exercise in the place of theirs, and its own votes if it has some.\r\nDo you "
                 "want to "
                 "replace them?",
             host::kTitle, host::Buttons::yesNo, host::Icon::exclamation) == host::Answer::yes;
}

void deleteMatrixShapes() {
  for (host::Shape* shape : glo.oVoteSlide->Shapes())
    if (shape->Name() == "matrix")
      shape->Delete();
}

void storeForGood(const std::string& text, const std::string& path) {
  if (glo.oVoteSlide->tags().Item(tagName::exercise) != text)
    throw HostError(Fault::world, 0, "The slide did not take the exercise, the file stays: " + path);
  glo.oPresentation->Save();
}

}  // namespace

bool convertExerciseFile() {
  const std::string folder = glo.tempPath;
  const std::string path = pathInAnyCase(folder, glo.cmdFile);
  if (path.empty())
    return false;
  const std::string name = path.substr(path.size() - glo.cmdFile.size());  // in its own spelling
  const std::string text = storable(toUtf8(readTextFile(path)));           // as the slide will have it
  if (!mayReplaceVotes(name))
    return false;
  trapErrors(kModule, "Main", [&] { takeVotes(folder, name); });
  trapErrors(kModule, "Main", [&] { replaceTag("qrnMatrix", text); });
  const std::size_t extension = upperCase(glo.cmdFile).rfind(".MTX");
  const std::string log = pathInAnyCase(folder, glo.cmdFile.substr(0, extension) + ".LOG");
  trapErrors(kModule, "Main", [] { glo.oVoteSlide->tags().Delete("qrnMatrixLog"); });
  trapErrors(kModule, "Main", [] { SaveXMLtoPPTSlide(); });
  trapErrors(kModule, "Main", [] { deleteMatrixShapes(); });
  // Both files go only when the slide holds the text for good.
  const bool taken = trapErrors(
      kModule, "Main", [&] { storeForGood(text, path); }, true);
  if (!taken)
    return true;
  trapErrors(kModule, "Main", [&] { deleteUntilGone(path); });
  trapErrors(kModule, "Main", [&] { deleteUntilGone(log); });
  glo.cmdSlide = glo.cmdFile;
  glo.cmdFile = cmdWord::slideHoldsExercise;
  return true;
}

}  // namespace qrn
