// A deck opened for one subcommand, with the exercise of one slide in glo.
#pragma once

#include <memory>
#include <string>

#include "cli/commands.h"
#include "cli/headless.h"
#include "host/presentation.h"

namespace qrn::cli {

enum class Access { read, write };

class Workshop {
 public:
  // Opens the deck and puts it and the terminal dialogs in place as the host. Throws HostError.
  Workshop(const DeckArguments& deck, Access access, const CliHooks& hooks);
  ~Workshop();

  host::Presentation& presentation() { return *presentation_; }
  // The slide by number; a number outside the deck is a HostError that names the range, a damaged slide one
  // that says what is wrong with it.
  host::Slide& slide(int number);
  // Makes `number` the vote slide and loads its exercise and vote records into glo. Throws when it has none.
  void loadExercise(int number);
  // The same without looking for an exercise: glo holds the defaults.
  void selectSlide(int number);

 private:
  std::unique_ptr<host::Presentation> presentation_;
  std::unique_ptr<HeadlessProgram> program_;
  TerminalDialogs dialogs_;
};

}  // namespace qrn::cli
