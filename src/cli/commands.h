// One function per subcommand. They throw HostError for what went wrong in the world and UsageError for what
// was asked wrongly; the caller turns both into a message and an exit code.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/cli.h"

namespace qrn::cli {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct DeckArguments {
  std::string deck;
  Journal journal = Journal::refuse;
};

struct InfoArguments : DeckArguments {
  bool json = false;
};

struct MtxArguments : DeckArguments {
  std::string from, out;
  int slide = 0;
};

struct TagsArguments : DeckArguments {
  std::string from;
  int slide = 0;  // 0: the presentation's tags
  std::optional<std::string> get, set, remove;
};

struct VoteArguments : DeckArguments {
  int slide = 0;
  RehearsalOptions rehearsal;
  std::string by;  // "item", "assessment", or "" for what the exercise says
};

struct ResultsArguments : DeckArguments {
  int slide = 0;
  bool json = false;
};

struct GraphArguments : DeckArguments {
  std::string kind, out, geometry;
  int slide = 0;
  int assessment = 1;
  std::vector<int> pairs;  // V,H[,V,H...]; empty: the exercise's own
  int widthPx = 1920, heightPx = 1080;
};

void runInfo(const InfoArguments&, const CliHooks&);
void runMtxExport(const MtxArguments&, const CliHooks&);
void runMtxImport(const MtxArguments&, const CliHooks&);
void runTags(const TagsArguments&, const CliHooks&);
void runVote(const VoteArguments&, const CliHooks&);
void runResults(const ResultsArguments&, const CliHooks&);
void runGraph(const GraphArguments&, const CliHooks&);

}  // namespace qrn::cli
