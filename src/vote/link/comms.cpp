#include "vote/link/comms.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/controller.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/system.h"
#include "vote/link/keypad_arrays.h"

namespace qrn {

namespace {

constexpr const char* kModule = "comms";
constexpr const char* kMessageTitle = "Error: matrix.exe";
constexpr double kReadySeconds = 10.0;
// After a link could not be made, commands that follow one another do not each try again.
constexpr double kLinkPauseSeconds = 2.0;
constexpr int kDecodeInterval = 100;  // milliseconds

bool within(std::int64_t since, double seconds) {
  return since >= 0 && static_cast<double>(host::host().clock->microseconds() - since) < seconds * 1e6;
}

}  // namespace

comms::comms()
    : host::Form(formName::comms), tmr_decodeDataFromController(kDecodeInterval, [this] { takeWaiting(); }) {}

void comms::Form_Load() {
  makeLink();
}

void comms::Form_Unload() {
  if (host::host().controller)
    host::host().controller->FromQrnCtrl = nullptr;
}

bool comms::linked() const {
  return host::host().controller && host::host().controller->linked();
}

void comms::makeLink() {
  host::ControllerLink* oQrn = host::host().controller;
  if (!oQrn)
    return;
  oQrn->FromQrnCtrl = [this](const std::string& data) { oQrn_FromQrnCtrl(data); };
  try {
    oQrn->makeLink(false);
  } catch (const std::exception&) {
    // No controller to share is the usual case: one is started below.
  }
  try {
    if (!oQrn->linked())
      oQrn->makeLink(true);
  } catch (const std::exception& error) {
    reportError(error, kModule, "Form_Load");
  }
  // What waited in the queue has been acknowledged to the keypads: it is taken, not dropped with the old
  // link.
  takeWaiting();
}

bool comms::StartVote(bool reconnect, bool silent) {
  if (glo.voteType == 0)
    glo.voteType = voteKind::singleDigit;
  if (glo.postVotedText.empty())
    glo.postVotedText = "Vote Submitted";
  if (host::host().controller != nullptr)
    host::host().controller->describeVote(glo.voteTitle);
  const std::string commands[] = {"voteType=" + std::to_string(glo.voteType),
                                  "preVoteText=" + glo.preVoteText,
                                  "voteText=" + glo.voteText,
                                  "postVotedText=" + glo.postVotedText,
                                  "limits=" + std::to_string(glo.limits),
                                  "allocation=" + std::to_string(glo.allocation),
                                  "points=" + std::to_string(glo.points),
                                  "options=" + std::to_string(glo.options),
                                  "StartFrom=" + std::to_string(glo.startFrom),
                                  "Clear",
                                  "StartVote"};
  voteOpened = std::all_of(std::begin(commands), std::end(commands), [&](const std::string& command) {
    return SendCommandToController(command, reconnect && command == commands[0], silent);
  });
  voteStartedAt = host::host().clock->Timer();
  // The upper bound of the captions: one less than their number, -1 without any.
  const auto bars = std::count(glo.voteText.begin(), glo.voteText.end(), '|');
  glo.voteTextOptionCount = glo.voteText.empty() ? -1 : static_cast<std::int32_t>(bars);
  return true;
}

void comms::EndVote() {
  SendCommandToController("EndVote", true, true);
}

bool comms::SendCommandToController(const std::string& command, bool reconnect, bool silent) {
  try {
    if (!linked() && reconnect && !within(linkFailedAt_, kLinkPauseSeconds)) {
      makeLink();
      linkFailedAt_ = linked() ? -1 : host::host().clock->microseconds();
    }
    if (!linked()) {
      if (!silent)
        host::host().dialogs->MsgBox("Unable to initialize link with quorin controller", kMessageTitle,
                                     host::Buttons::ok, host::Icon::information);
      return false;
    }
    if (controllerIsReady()) {
      host::host().controller->sendToController(command);
      return true;
    }
    if (!silent)
      host::host().dialogs->MsgBox("quorin controller failed to fully initialize", kMessageTitle,
                                   host::Buttons::ok, host::Icon::information);
  } catch (const std::exception& error) {
    reportError(error, kModule, "SendCommandToController");
  }
  return false;
}

// Waits for it, but not again shortly after it has been waited for in vain.
bool comms::controllerIsReady() {
  const auto ready = [] { return host::host().controller->controllerReady(); };
  if (ready() || (!within(notReadyAt_, kReadySeconds) && host::waitUntil(ready, kReadySeconds)))
    notReadyAt_ = -1;
  else if (!within(notReadyAt_, kReadySeconds))
    notReadyAt_ = host::host().clock->microseconds();
  return notReadyAt_ < 0;
}

void comms::ReadPortInfo() {
  SendCommandToController("BaseInfo", true, true);
  if (host::host().files->fileExists(glo.appPath + markerFile::keyboard))
    glo.baseType = kKeyboardBase;
  if (glo.baseType == kKeyboardBase && glo.keyboardFlag == 0)
    glo.keyboardFlag = 1;
  if (glo.baseType.empty())
    glo.baseType = "HW";
  ResizeVoteArrays(true);
}

void comms::oQrn_FromQrnCtrl(const std::string& data) {
  txt_dataFromController += "\r\n" + data;
  tmr_decodeDataFromController.setEnabled(true);
}

void comms::takeWaiting() {
  tmr_decodeDataFromController.setEnabled(false);
  const std::string data = std::exchange(txt_dataFromController, {});
  DecodeDataFromController(data);
}

comms& theComms() {
  return host::host().forms->as<comms>(formName::comms);
}

void registerComms() {
  host::host().forms->define(formName::comms, [] { return std::make_unique<comms>(); });
}

}  // namespace qrn
