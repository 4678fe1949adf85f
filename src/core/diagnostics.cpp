#include "core/diagnostics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "base/errors.h"
#include "base/text.h"
#include "core/common.h"
#include "core/options.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/presentation.h"
#include "host/system.h"

#ifndef QUORIN_VERSION
#define QUORIN_VERSION "0.0.0"
#endif

namespace qrn {
namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr const char* kPresentationProgram = "Microsoft PowerPoint";

struct LogTimes {
  bool timerRead = false;
  double timerStart = 0;
  std::int64_t counterStart = 0;
  bool logged = false;
  double first = 0, last = 0;
};
LogTimes g_times;

template <class... Values>
std::string formatted(const char* format, Values... values) {
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

// "[DD/MM/YY] hh:mm:ss.???"; `seconds` since midnight.
std::string stamp(const host::DateTime& date, double seconds) {
  const long long ms = std::llround(seconds * 1000);
  return formatted("[%02d/%02d/%02d] %02d:%02d:%02d.%03d", date.day, date.month, date.year % 100,
                   static_cast<int>(ms / 3600000 % 24), static_cast<int>(ms / 60000 % 60),
                   static_cast<int>(ms / 1000 % 60), static_cast<int>(ms % 1000));
}

// With a point whatever the locale.
std::string thousandths(const char* format, double seconds) {
  const long long ms = std::llround(std::max(seconds, 0.0) * 1000);
  return formatted(format, ms / 1000, ms % 1000);
}

void appendToLog(const char* name, const host::DateTime& date, const std::string& line) {
  const std::string file = name + formatted("%04d_%02d_%02d.log", date.year, date.month, date.day);
  try {
    host::host().files->append(joinPath(host::host().environment->logFolder(), file), line + kLineEnd);
  } catch (const std::exception&) {
    // A log that cannot be written must not stop a workshop.
  }
}

std::string presentableMessage(const std::string& description) {
  if (description.find(kPresentationProgram) == std::string::npos)
    return "An error has occurred: " + description;
  return std::string("PowerPoint has encountered an unexpected error.") + kLineEnd +
         "Save your current work and restart PowerPoint." + kLineEnd + "Details: " + description;
}

std::string logEntry(const clsError& error) {
  constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const host::DateTime now = host::host().clock->now();
  std::string entry;
  const auto line = [&](const char* name, const std::string& value) {
    entry += std::string(name) + ": " + value + kLineEnd;
  };
  line("Date",
       formatted("%02d-%s-%04d", now.day, kMonths[static_cast<std::size_t>(now.month - 1) % 12], now.year));
  line("Time", formatted("%02d:%02d:%02d", now.hour, now.minute, now.second));
  line("Number", std::to_string(error.ErrNumber));
  line("Description", error.ErrDescription);
  line("Module", error.ObjectName);
  line("Procedure", error.ProcedureName);
  line("Line", std::to_string(error.ErrLineNumber));
  if (!error.ShowUser)
    line("Message Supressed", "True");
  line("App", kProgramName);
  line("Version", programVersion());
  const auto* program = host::host().presentationProgram;
  line("Location", program != nullptr ? program->AddInPath() : "");
  line("Extra Info", error.ExtraInfo);
  return entry + std::string(60, '-') + kLineEnd;
}

}  // namespace

std::string programVersion() {
  return QUORIN_VERSION;
}

ErrInfo errInfoOf(const std::exception& error) {
  const auto* told = dynamic_cast<const HostError*>(&error);
  return {told != nullptr ? told->number() : 0, error.what(), "", 0};
}

void clsError::StoreErrInfo(const ErrInfo& Err) {
  ErrNumber = Err.Number;
  ErrDescription = Err.Description;
  ErrHelpFile = Err.HelpFile;
  HelpContext = Err.HelpContext;
}

void clsError::StoreAppInfo(const std::string& module, const std::string& procedure, int line,
                            bool showUser) {
  ObjectName = module;
  ProcedureName = procedure;
  ErrLineNumber = line;
  ShowUser = showUser;
}

void clsError::Show() {
  const host::Host& world = host::host();
  try {
    const std::string folder = joinPath(world.environment->Environ("APPDATA"), "quorin");
    if (!world.files->folderExists(folder))
      world.files->makeFolder(folder);
    world.files->append(joinPath(folder, "Err.log"), logEntry(*this));
  } catch (const std::exception&) {
    // The log is the last resort; the message below still tells the person.
  }
  ExtraInfo.clear();
  if (ShowUser && world.dialogs != nullptr)
    world.dialogs->MsgBox(presentableMessage(ErrDescription), host::kTitle, host::Buttons::ok,
                          host::Icon::exclamation);
}

clsError& errorReporter() {
  static clsError reporter;
  return reporter;
}

void reportError(const std::exception& error, const std::string& module, const std::string& procedure,
                 bool showUser) {
  clsError& reporter = errorReporter();
  reporter.StoreErrInfo(errInfoOf(error));
  reporter.StoreAppInfo(module, procedure, 0, showUser);
  reporter.Show();
}

void writeDebugLog(std::string_view first, std::string_view second, std::string_view message) {
  if (!iniOptions().logEventsToFile)
    return;
  const host::DateTime date = host::host().clock->now();
  const double now = highResolutionTimer();
  if (!g_times.logged) {
    g_times.logged = true;
    g_times.first = g_times.last = now;
  }
  std::string line = stamp(date, now) + " | " + thousandths("%03lld.%03lld", now - g_times.first) + " | " +
                     kProgramName + " (" + programVersion() + ") | " +
                     thousandths("%lld.%03lld", now - g_times.last);
  for (const std::string_view part : {first, second}) line.append(" | [").append(part).append("]");
  appendToLog("qrn_debug_", date, line.append(" | ").append(message));
  g_times.last = now;
}

void writeVoteDataLog(std::string_view tag, std::string_view text) {
  if (!iniOptions().logEventsToFile)
    return;
  const host::DateTime date = host::host().clock->now();
  std::string line = stamp(date, highResolutionTimer()) + " | " + upperCase(tag) + "|";
  appendToLog("qrn_vote_data_debug_", date, line.append(text));
}

double highResolutionTimer() {
  const host::Clock& clock = *host::host().clock;
  if (!g_times.timerRead) {
    g_times.timerRead = true;
    g_times.timerStart = clock.Timer();
    g_times.counterStart = clock.microseconds();
  }
  return g_times.timerStart + static_cast<double>(clock.microseconds() - g_times.counterStart) / 1e6;
}

void resetDiagnostics() {
  g_times = LogTimes{};
}

}  // namespace qrn
