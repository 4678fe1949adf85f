// The link to the controller process: text out, text blocks in.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::host {

// An address of this machine at which phones may join.
struct JoinAddress {
  std::string host;    // "192.168.1.20"
  std::string card;    // name of its network card; "" for one that was given
  bool likely = true;  // false: phones hardly get there, as through a tunnel

  bool operator==(const JoinAddress&) const = default;
};

// The room as the controller tells it.
struct RoomState {
  std::string address;  // what phones type, "192.168.1.20:7878"; "" while they cannot reach this machine
  std::string page;  // the page to project, for a browser on this machine; "" before the controller has told
  std::vector<JoinAddress> candidates;  // addresses to choose from, the likeliest first
  long phones = 0;                      // joined
  long rehearse = 0;                    // keypads that vote by themselves
  bool takesPhones = true;              // there are keypad numbers for phones

  bool operator==(const RoomState&) const = default;
};

class ControllerLink {
 public:
  virtual ~ControllerLink() = default;
  // Takes the running controller, or starts one when `startNew`. False when there is no link after it.
  virtual bool makeLink(bool startNew) = 0;
  virtual bool linked() const = 0;
  virtual std::string lastError() const { return ""; }  // why there is no link
  virtual bool controllerReady() = 0;
  virtual void sendToController(std::string_view text) = 0;
  // Called from inside DoEvents() on the main thread, one call per text block, in the order of arrival.
  std::function<void(const std::string& data)> FromQrnCtrl;
  virtual RoomState room() const { return {}; }
  // Name of the scale of the votes that are started from now on, for phones to show above the item; "": none.
  virtual void describeVote(const std::string& /*scale*/) {}
  // Phones shall join at this one of the candidates; "": at the likeliest.
  virtual void chooseAddress(const std::string& /*host*/) {}
  // Called likewise when the state of the room has changed.
  std::function<void()> roomChanged;
  // Called likewise when the link is lost after it had been made.
  std::function<void()> linkLost;
};

}  // namespace qrn::host
