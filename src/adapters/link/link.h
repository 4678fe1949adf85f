// The link to a controller process over a WebSocket on the loopback address, one text frame per message.
//
// The socket lives on a thread of its own. What it receives waits until the main thread calls drain(), which
// is the only place where FromQrnCtrl and linkLost are called; the program's message loop calls it at every
// yield.
//
// A press counts from the moment its block has been handed to FromQrnCtrl: the controller is told so, and
// tells the keypad. A block that is not handed over when the program sends "EndVote" is dropped and the
// keypad learns that it was too late, so no press of one vote can be taken for a press of the next.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/controller.h"

namespace qrn::link {

struct LinkOptions {
  std::string controllerPath;  // "": quorin-controller beside the running program
  int rehearse = 0;            // keypads that vote by themselves; 0: phones
  std::uint64_t seed = 1;      // of the rehearsal keypads
  std::string announceFolder;  // "": the user's runtime folder
  std::string address;         // host name or address at which phones join; "" to find it out
  std::vector<std::string> extraArguments;
  std::chrono::milliseconds startTimeout{5000};    // longest wait for a controller that is being started
  std::chrono::milliseconds connectTimeout{2000};  // longest wait for one that is running
  bool keepRunning = false;                        // a controller started here stays when the link goes
  std::function<void()> arrived;  // called on the link's own thread when there is something to drain
};

// The folder where controllers of this user announce themselves: $XDG_RUNTIME_DIR/quorin, or a folder of the
// temporary folder, or of the home folder, that only this user may enter. Makes it when it is missing.
std::string defaultAnnounceFolder();

class WebSocketLink : public host::ControllerLink {
 public:
  explicit WebSocketLink(LinkOptions options);
  ~WebSocketLink() override;  // ends a controller that it started, unless it is to keep running
  WebSocketLink(const WebSocketLink&) = delete;
  WebSocketLink& operator=(const WebSocketLink&) = delete;

  // Returns with the link ready, or after the time limit of the options without one. With `startNew`, a
  // controller that this link had started and that still runs is joined again.
  bool makeLink(bool startNew) override;
  bool linked() const override;
  bool controllerReady() override;
  void sendToController(std::string_view text) override;
  host::RoomState room() const override;
  void describeVote(const std::string& scale) override;
  void chooseAddress(const std::string& host) override;  // holds for later controllers of this link too

  // Hands over what has arrived, in order, then reports a lost link once. Main thread only; may be entered
  // again from inside the calls it makes.
  void drain();

  std::string lastError() const override;  // why there is no link, for the log; "" when nothing went wrong
  long controllerProcess() const;          // process id of the controller; 0 before

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace qrn::link
