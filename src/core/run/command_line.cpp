#include <array>
#include <string>
#include <string_view>

#include "base/text.h"
#include "core/common.h"
#include "core/glo.h"
#include "core/run/entry.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"

namespace qrn {

namespace {

constexpr const char* kDebugTitle = "Debug mode";

std::string ask(const std::string& prompt, const std::string& preset) {
  return upperCase(host::host().dialogs->InputBox(prompt, kDebugTitle, preset).value_or(""));
}

}  // namespace

void splitCommandLine(const std::string& commandLine) {
  glo.cmdFile = commandLine;
  if (commandLine.empty())
    return;
  const std::array<std::string*, 5> targets{&glo.cmdFile, &glo.cmdMode, &glo.cmdSlide, &glo.cmdField4,
                                            &glo.cmdField5};
  const std::string line = commandLine;  // the first target is written below
  const auto fields = splitFields(line, ',');
  for (std::size_t i = 0; i < fields.size() && i < targets.size(); ++i)
    *targets[i] = upperCase(trimBlanks(fields[i]));
}

void applyModes() {
  if (glo.cmdMode == "MAKE") {
    glo.cmdFile = ask("What file? *.mtx or qrnmatrix for v4", "");
    glo.cmdMode = ask("What type? Setup (S), Slidenumber, Wizard (W)", "S");
  }
  if (glo.cmdMode == runMode::wizard)
    glo.cmdFile = glo.cmdMode;
  if (glo.cmdMode == "S")
    glo.cmdMode = runMode::setup;
  if (glo.cmdMode == "W")
    glo.cmdFile = runMode::wizard;
  if (isNumeric(glo.cmdMode) && qrnVal(glo.cmdMode) > 0) {
    glo.cmdSlide = glo.cmdMode;
    glo.cmdMode = runMode::display;
  }
}

}  // namespace qrn
