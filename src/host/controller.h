// The link to the controller process: text out, text blocks in.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qrn::host {

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
  // Called likewise when the link is lost after it had been made.
  std::function<void()> linkLost;
};

}  // namespace qrn::host
