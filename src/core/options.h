// Options of the installation, from qrn.ini.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrn {

struct IniOptions {
  // [DEBUG]
  bool logEventsToFile = false;                  // LOGEVENTS TO FILE
  bool showAllErrors = false;                    // SHOW ALL ERRORS
  bool disableMatrixFadeWindows = false;         // DISABLE MATRIX FADE WINDOWS
  bool disableParticipantList = false;           // DISABLE PARTICIPANT LIST
  bool minimizeWindowsOnSlideShowStart = false;  // MINIMIZE WINDOWS ON SLIDE SHOW START
  bool disableForceSlideShowTopmost = false;     // DISABLE FORCE SLIDE SHOW TOPMOST
  bool disableForceSlideShowNoTopmost = false;   // DISABLE FORCE SLIDE SHOW NOTOPMOST
  bool disableDisablingPptWindows = false;       // DISABLE DISABLING PPT WINDOWS
  bool hidePptEditWindowsInSetResultsDisplayMode =
      false;                                  // HIDE PPT EDIT WINDOWS IN SET RESULTS DISPLAY MODE
  bool disablePptSaveAfterVoteClose = false;  // DISABLE PPT SAVE AFTER VOTE CLOSE
  // [VOLTRAND OPTIONS]
  bool debugAcceptDetectAsVotes = false;      // DEBUG ACCEPT DETECT AS VOTES
  bool showBaseStatusDuringLiveVote = false;  // SHOW BASE STATUS DURING LIVE VOTE
  // [QUORIN OPTIONS]
  std::string chartExportFormat = "EMF";  // CHART EXPORT FORMAT
};

// The options in force; the defaults until ReadGlobalSettingsFromINIFile has run.
IniOptions& iniOptions();

// Reads qrn.ini in the folder "quorin" under APPDATA; a key that is missing there, or all of them when the
// file is, under ALLUSERSPROFILE. A value is true when qrnVal of it is not 0.
void ReadGlobalSettingsFromINIFile();

// Value of a key in the text of an ini file: section and key in any case, blanks around the value and one
// pair of quotes around it dropped. Nothing when the section or key is missing.
std::optional<std::string> iniValue(std::string_view text, std::string_view section, std::string_view key);

}  // namespace qrn
