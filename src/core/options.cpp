#include "core/options.h"

#include <array>

#include "base/text.h"
#include "base/utf8.h"
#include "core/common.h"
#include "host/host.h"
#include "host/system.h"

namespace qrn {
namespace {

std::string iniText(std::string_view folderVariable) {
  const std::string folder = host::host().environment->Environ(folderVariable);
  if (folder.empty())
    return "";
  const std::string path = joinPath(folder, "quorin\\qrn.ini");
  try {
    return toUtf8(readTextFile(path));
  } catch (const std::exception&) {
    return "";  // an ini file that cannot be read counts as absent
  }
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find_first_of("\r\n");
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return trimBlanks(line);
}

std::string withoutQuotes(std::string_view value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back())
    value = value.substr(1, value.size() - 2);
  return std::string(value);
}

struct Flag {
  const char* section;
  const char* key;
  bool IniOptions::*member;
};

constexpr std::array<Flag, 12> kFlags{
    {{"DEBUG", "LOGEVENTS TO FILE", &IniOptions::logEventsToFile},
     {"DEBUG", "SHOW ALL ERRORS", &IniOptions::showAllErrors},
     {"DEBUG", "DISABLE MATRIX FADE WINDOWS", &IniOptions::disableMatrixFadeWindows},
     {"DEBUG", "DISABLE PARTICIPANT LIST", &IniOptions::disableParticipantList},
     {"DEBUG", "MINIMIZE WINDOWS ON SLIDE SHOW START", &IniOptions::minimizeWindowsOnSlideShowStart},
     {"DEBUG", "DISABLE FORCE SLIDE SHOW TOPMOST", &IniOptions::disableForceSlideShowTopmost},
     {"DEBUG", "DISABLE FORCE SLIDE SHOW NOTOPMOST", &IniOptions::disableForceSlideShowNoTopmost},
     {"DEBUG", "DISABLE DISABLING PPT WINDOWS", &IniOptions::disableDisablingPptWindows},
     {"DEBUG", "HIDE PPT EDIT WINDOWS IN SET RESULTS DISPLAY MODE",
      &IniOptions::hidePptEditWindowsInSetResultsDisplayMode},
     {"DEBUG", "DISABLE PPT SAVE AFTER VOTE CLOSE", &IniOptions::disablePptSaveAfterVoteClose},
     {"VOLTRAND OPTIONS", "DEBUG ACCEPT DETECT AS VOTES", &IniOptions::debugAcceptDetectAsVotes},
     {"VOLTRAND OPTIONS", "SHOW BASE STATUS DURING LIVE VOTE", &IniOptions::showBaseStatusDuringLiveVote}}};

}  // namespace

IniOptions& iniOptions() {
  static IniOptions options;
  return options;
}

void ReadGlobalSettingsFromINIFile() {
  const std::string own = iniText("APPDATA"), everybody = iniText("ALLUSERSPROFILE");
  const auto value = [&](std::string_view section, std::string_view key) {
    auto found = iniValue(own, section, key);
    return found ? found : iniValue(everybody, section, key);
  };
  IniOptions options;
  for (const Flag& flag : kFlags)
    options.*flag.member = qrnVal(value(flag.section, flag.key).value_or("0")) != 0;
  options.chartExportFormat =
      value("QUORIN OPTIONS", "CHART EXPORT FORMAT").value_or(options.chartExportFormat);
  iniOptions() = options;
}

std::optional<std::string> iniValue(std::string_view text, std::string_view section, std::string_view key) {
  const std::string wantedSection = upperCase(section), wantedKey = upperCase(key);
  bool inside = false;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.empty() || line.front() == ';')
      continue;
    if (line.front() == '[') {
      inside = upperCase(trimBlanks(line.substr(1, line.find(']') - 1))) == wantedSection;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (inside && equals != std::string_view::npos &&
        upperCase(trimBlanks(line.substr(0, equals))) == wantedKey)
      return withoutQuotes(trimBlanks(line.substr(equals + 1)));
  }
  return std::nullopt;
}

}  // namespace qrn
