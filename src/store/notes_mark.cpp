#include "base/text.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/presentation.h"
#include "store/exercise_text.h"

namespace qrn {
namespace {

constexpr const char* kSentence = "This slide is a quorin Matrix exercise";

// The file name is known in upper case, the slide tells it as it was typed.
void removeName(std::string& text, const std::string& name) {
  if (name.empty())
    return;
  const std::string wanted = upperCase(name);
  std::size_t at = 0;
  while ((at = upperCase(text).find(wanted, at)) != std::string::npos) text.erase(at, name.size());
}

}  // namespace

void SaveXMLtoPPTSlide() {
  if (glo.oVoteSlide == nullptr)
    return;
  trapErrors("exercise_text", "SaveXMLtoPPTSlide", [] {
    for (host::Shape* shape : glo.oVoteSlide->NotesPageShapes()) {
      if (!shape->HasTextFrame())
        continue;
      std::string text = shape->Text();
      const std::string before = text;
      if (upperCase(glo.cmdFile).find(".MTX") != std::string::npos)
        removeName(text, glo.cmdFile);
      if (text.find(kSentence) == std::string::npos)
        text += std::string(kSentence) + "\r\n";
      if (text != before)
        shape->SetText(text);
      return;
    }
  });
}

}  // namespace qrn
