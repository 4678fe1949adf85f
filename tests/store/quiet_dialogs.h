// Dialogs that take every message, for texts damaged in all ways. In place for their lifetime.
#pragma once

#include "host/dialogs.h"
#include "host/host.h"

namespace qrn::test {

class QuietDialogs : public host::Dialogs {
 public:
  QuietDialogs() : before_(host::host().dialogs) { host::host().dialogs = this; }
  ~QuietDialogs() override { host::host().dialogs = before_; }
  host::Answer MsgBox(const std::string&, const std::string&, host::Buttons, host::Icon,
                      std::optional<host::Answer>) override {
    return host::Answer::ok;
  }
  std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  std::optional<std::string> FileDialog(const host::FileQuestion&) override { return {}; }
  void Info(const std::string&) override {}

 private:
  host::Dialogs* before_;
};

}  // namespace qrn::test
