// What the program tells about itself: the error reporter, the debug log and the vote data log.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace qrn {

inline constexpr const char* kProgramName = "quorin-matrix";
std::string programVersion();

// An error as a handler sees it. Numbers are the classic ones (see HostError); 0 for errors without one.
struct ErrInfo {
  int Number = 0;
  std::string Description, HelpFile;
  int HelpContext = 0;
};
ErrInfo errInfoOf(const std::exception& error);

// The error reporter. Each handler calls, in this order, StoreErrInfo, StoreAppInfo and Show, which appends
// to Err.log in the folder "quorin" under APPDATA and, when told so, puts up a message. Reporting never
// throws.
class clsError {
 public:
  int ErrLineNumber = 0, ErrNumber = 0, HelpContext = 0;
  std::string ErrDescription, ErrHelpFile, ObjectName, ProcedureName, ExtraInfo;
  bool ShowUser = false;

  void StoreErrInfo(const ErrInfo& Err);
  void StoreAppInfo(const std::string& module, const std::string& procedure, int line, bool showUser);
  void Show();  // clears ExtraInfo afterwards
};
clsError& errorReporter();

// The three calls in one, for a catch clause.
void reportError(const std::exception& error, const std::string& module, const std::string& procedure,
                 bool showUser = false);

// Runs `body`; an exception is reported under that name. True when it went through.
template <class Body>
bool trapErrors(const std::string& module, const std::string& procedure, Body&& body, bool showUser = false) {
  try {
    body();
    return true;
  } catch (const std::exception& error) {
    reportError(error, module, procedure, showUser);
    return false;
  }
}

// Debug log "qrn_debug_YYYY_MM_DD.log" in the log folder, one line a call; silent unless the option
// "LOGEVENTS TO FILE" is on. `first` and `second` stand in brackets before the message.
void writeDebugLog(std::string_view first, std::string_view second, std::string_view message);
// Vote data log "qrn_vote_data_debug_YYYY_MM_DD.log" beside it, under the same option: TAG|text.
void writeVoteDataLog(std::string_view tag, std::string_view text);

// Seconds since midnight at the first reading, from then on moved by the steady counter.
double highResolutionTimer();
// Forgets the first reading and the first and last log call: a new run begins.
void resetDiagnostics();

}  // namespace qrn
