#include "cli/headless.h"

#include <iostream>

namespace qrn::cli {

host::Answer TerminalDialogs::MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                                     host::Icon) {
  ++told;
  std::cerr << title << ": " << text << std::endl;
  switch (buttons) {
    case host::Buttons::ok:
      return host::Answer::ok;
    case host::Buttons::okCancel:
      return host::Answer::cancel;
    case host::Buttons::yesNo:
    case host::Buttons::yesNoCancel:
      break;
  }
  std::cerr << "(answered No)" << std::endl;
  return host::Answer::no;
}

std::optional<std::string> TerminalDialogs::InputBox(const std::string& prompt, const std::string& title,
                                                     const std::string&) {
  std::cerr << title << ": " << prompt << " (cancelled)" << std::endl;
  return std::nullopt;
}

std::optional<std::string> TerminalDialogs::FileDialog(const host::FileQuestion& question) {
  std::cerr << question.title << " (cancelled)" << std::endl;
  return std::nullopt;
}

// Progress of the windows; a subcommand that takes long says its own.
void TerminalDialogs::Info(const std::string&) {}

}  // namespace qrn::cli
