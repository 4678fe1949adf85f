#include "cli/headless.h"

#include <iostream>

namespace qrn::cli {

host::Answer TerminalDialogs::MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                                     host::Icon, std::optional<host::Answer>) {
  ++told;
  std::cerr << title << ": " << text << std::endl;
  const host::Answer answer = host::safeAnswer(buttons);
  if (answer != host::Answer::ok)
    std::cerr << (answer == host::Answer::no ? "(answered No)" : "(cancelled)") << std::endl;
  return answer;
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
