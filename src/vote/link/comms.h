// The hidden form that owns the link to the controller: commands out, text blocks in, and the roster of the
// room's keypads. Nothing else talks to the controller.
//
// What arrives is queued in `txt_dataFromController` and decoded by `tmr_decodeDataFromController` inside
// host::DoEvents(), so a key press never runs inside the link's own call.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/forms.h"
#include "host/wait.h"

namespace qrn {

struct comms : host::Form {
  comms();

  void Form_Load() override;
  void Form_Unload() override;
  bool Form_QueryUnload(bool byUser) override { return !byUser; }

  // Opens a vote: sends the vote settings of `glo` in the protocol's fixed order, then "Clear" and
  // "StartVote". Always true; `voteOpened` tells whether all of it went out. The first command that is lost
  // ends the row: a controller must not open a vote with half of its settings.
  bool StartVote(bool reconnect = true, bool silent = true);
  void EndVote();
  // The only way out. `reconnect` makes a missing link again, `silent` keeps the two failure messages away. A
  // command that finds no link, or no ready controller within 10 seconds, is lost; so are those that follow
  // it closely, without another wait. False when it was lost.
  bool SendCommandToController(const std::string& command, bool reconnect, bool silent);
  // Asks for the base data, which arrives later, and sizes the keypad arrays to what is known now.
  void ReadPortInfo();
  // Takes one received block: name list, key=value lines, cursor lines, then votes.
  void DecodeDataFromController(const std::string& data);
  // Makes the keypads of the last scan, or those of the present list that have voted, the room's keypads.
  // They stand in the presentation tag "ActiveKeypads", in a rehearsal in `glo` alone.
  void WriteActiveKeypads(bool fromScan);

  void takeWaiting();  // decodes what waits in the queue
  bool linked() const;
  void makeLink();

  // One key press. The vote at hand sets it; without a handler presses are dropped.
  std::function<void(std::int32_t keypad, const std::string& vote)> VoteRx;

  bool chk_GotNames = false;           // ticked when a name list has come
  std::string txt_dataFromController;  // what has arrived and is not yet decoded
  host::Timer tmr_decodeDataFromController;
  bool voteOpened = false;   // the last StartVote went out as a whole
  double voteStartedAt = 0;  // seconds since midnight of the last "StartVote"

 private:
  void oQrn_FromQrnCtrl(const std::string& data);
  void decodeKeyLine(std::string_view line);
  void decodeOffset(std::string_view value);
  void takePresent(std::string_view value);
  static void takeJoined(std::string_view value);
  void decodeVotes(const std::vector<std::string_view>& lines);
  bool controllerIsReady();

  std::int64_t linkFailedAt_ = -1, notReadyAt_ = -1;  // microseconds; -1 when it went well last time

  bool presentTold_ = false;       // the controller knows who is there
  bool emptyScanWritten_ = false;  // an empty scan is told to the controller once, not with every answer
};

// The loaded form; the first call loads it and makes the link.
comms& theComms();

// Defines the form in the registry of the host.
void registerComms();

}  // namespace qrn
