// The subcommands: the same work as the windows do, without a window. Documented in docs/cli.md.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qrn::host {
class ControllerLink;
class Presentation;
class Surface;
}  // namespace qrn::host

namespace qrn::cli {

inline constexpr int kDone = 0, kFailed = 1, kWrongUsage = 2;
inline constexpr int kNobodyReads = 141;  // as of a tool that SIGPIPE ends

struct RehearsalOptions {
  int keypads = 0;
  unsigned seed = 0;
};

// What becomes of a journal beside the deck that is damaged or belongs to another state of it; one that
// belongs is always applied.
enum class Journal { refuse, apply, aside };

struct DeckRequest {
  std::string file;
  bool readOnly = false;
  Journal journal = Journal::refuse;
};

// What the program's main chose for the work behind the subcommands.
struct CliHooks {
  std::function<std::unique_ptr<host::Presentation>(const DeckRequest&)> openDeck;
  std::function<std::unique_ptr<host::ControllerLink>(const RehearsalOptions&)> makeLink;
  // Draws to a file, format by its ending; throws HostError.
  std::function<void(const host::Surface&, const std::string& file, int widthPx, int heightPx)> saveSurface;
  // Whether the reader of the output has gone; there is nobody to tell it then.
  std::function<bool()> nobodyReadsOutput;
  // Why a file may not be written while that deck is worked on, "" when it may.
  std::function<std::string(const std::string& target, const std::string& deck)> whyNotOverwritten;
};

// True when the first word names a subcommand.
bool isSubcommand(const std::vector<std::string>& words);

// Runs one subcommand; the host's world (clock, files, loop, text measuring) is already in place.
int runSubcommand(const std::vector<std::string>& words, const CliHooks& hooks);

}  // namespace qrn::cli
