#include "cli/cli.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <map>

#include "base/errors.h"
#include "cli/commands.h"
#include "core/options.h"

namespace qrn::cli {

namespace {

std::string checkSlide(const std::string& text) {
  constexpr int kMost = 32767;
  int number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = end.ec == std::errc() && end.ptr == text.data() + text.size();
  return whole && number >= 1 && number <= kMost ? "" : "takes a slide number from 1 to 32767, not " + text;
}

void addSlide(CLI::App& command, int& slide, bool required = true) {
  auto* option = command.add_option("--slide", slide, "slide number, from 1")->check(checkSlide);
  if (required)
    option->required();
}

void addDeck(CLI::App& command, DeckArguments& arguments) {
  static const std::map<std::string, Journal> choices{
      {"refuse", Journal::refuse}, {"apply", Journal::apply}, {"aside", Journal::aside}};
  command.add_option("DECK", arguments.deck, "the .pptx deck")->required();
  command
      .add_option(
          "--journal", arguments.journal,
          "what to do with a journal beside the deck that is damaged or belongs to another state of it: "
          "apply what fits, move it aside, or refuse the deck (default)")
      ->transform(CLI::Transformer(choices))
      ->option_text("apply|aside|refuse");
}

// "1920x1080" to two positive numbers.
std::string parseSize(const std::string& text, int& width, int& height) {
  char end = 0;
  if (std::sscanf(text.c_str(), "%dx%d%c", &width, &height, &end) == 2 && width >= 64 && height >= 48 &&
      width <= 16384 && height <= 16384)
    return "";
  return "takes WIDTHxHEIGHT in pixels, 64x48 to 16384x16384, not " + text;
}

// Every subcommand with its arguments, and what to run once they are parsed.
class Parser {
 public:
  explicit Parser(const CliHooks& hooks) : hooks_(hooks) {
    app_.require_subcommand(1);
    addInfo();
    addMtx();
    addTags();
    addVote();
    addResults();
    addGraph();
  }

  int run(const std::vector<std::string>& words) {
    try {
      if (!parsed(words))
        return kWrongUsage;
      ReadGlobalSettingsFromINIFile();
      checkOutputs();
      if (action_)
        action_();
      if (std::cout.flush())
        return kDone;
      if (hooks_.nobodyReadsOutput())
        return kNobodyReads;
      throw HostError(Fault::world, 61, "The output could not be written");
    } catch (const UsageError& error) {
      std::cerr << "quorin-matrix: " << error.what() << "\n";
      return kWrongUsage;
    } catch (const std::exception& error) {
      std::cerr << "quorin-matrix: " << error.what() << "\n";
      return kFailed;
    }
  }

 private:
  // False when the words were wrong, which has been told; without an action when they asked for help.
  bool parsed(const std::vector<std::string>& words) {
    try {
      std::vector<std::string> reversed(words.rbegin(), words.rend());
      app_.parse(reversed);
    } catch (const CLI::ParseError& error) {
      action_ = nullptr;
      return app_.exit(error, std::cout, std::cerr) == 0;
    }
    return true;
  }

  // A file that a subcommand writes.
  CLI::Option* addOutput(CLI::App& command, const char* name, const DeckArguments& deck, std::string& file,
                         const char* help) {
    outputs_.push_back({deck, file});
    return command.add_option(name, file, help)->check([](const std::string& named) {
      return std::string(named.empty() ? "names no file" : "");
    });
  }

  // Before anything is opened, so that nothing is touched.
  void checkOutputs() const {
    for (const auto& [deck, file] : outputs_)
      if (const std::string why = file.empty() ? "" : hooks_.whyNotOverwritten(file, deck.deck); !why.empty())
        throw HostError(Fault::world, 75, why);
  }

  void addInfo() {
    auto* command = app_.add_subcommand("info", "lists the slides of a deck and what is on them");
    addDeck(*command, info_);
    command->add_flag("--json", info_.json, "as JSON");
    command->callback([this] { action_ = [this] { runInfo(info_, hooks_); }; });
  }

  void addMtx() {
    auto* command = app_.add_subcommand("mtx", "moves an exercise text between a slide and a file");
    command->require_subcommand(1);
    auto* out = command->add_subcommand("export", "writes the exercise of a slide to a file");
    addDeck(*out, mtx_);
    addSlide(*out, mtx_.slide);
    addOutput(*out, "--out", mtx_, mtx_.out, "the file to write")->required();
    out->callback([this] { action_ = [this] { runMtxExport(mtx_, hooks_); }; });
    auto* in = command->add_subcommand("import", "reads the exercise of a slide from a file");
    addDeck(*in, mtx_);
    addSlide(*in, mtx_.slide);
    in->add_option("--from", mtx_.from, "the file to read")->required();
    in->callback([this] { action_ = [this] { runMtxImport(mtx_, hooks_); }; });
  }

  void addTags() {
    auto* command =
        app_.add_subcommand("tags", "lists, reads and writes tags of a slide or of the presentation");
    addDeck(*command, tags_);
    addSlide(*command, tags_.slide, false);
    auto* get = command->add_option("--get", tags_.get, "print the value of this tag");
    auto* set = command->add_option("--set", tags_.set, "give this tag the contents of a file");
    auto* remove = command->add_option("--delete", tags_.remove, "delete this tag");
    auto* from = command->add_option("--from", tags_.from, "the file with the value, - for standard input");
    get->excludes(set)->excludes(remove);
    set->excludes(remove)->needs(from);
    from->needs(set);
    command->callback([this] { action_ = [this] { runTags(tags_, hooks_); }; });
  }

  void addVote() {
    auto* command = app_.add_subcommand("vote", "votes the whole exercise of a slide with rehearsal keypads");
    addDeck(*command, vote_);
    addSlide(*command, vote_.slide);
    command->add_option("--rehearse", vote_.rehearsal.keypads, "number of rehearsal keypads")
        ->required()
        ->check(CLI::Range(1, 10000));
    command->add_option("--seed", vote_.rehearsal.seed, "seed of the rehearsal votes")->required();
    command->add_option("--by", vote_.by, "item or assessment")->check(CLI::IsMember({"item", "assessment"}));
    command->callback([this] { action_ = [this] { runVote(vote_, hooks_); }; });
  }

  void addResults() {
    auto* command = app_.add_subcommand("results", "prints the results of the exercise of a slide");
    addDeck(*command, results_);
    addSlide(*command, results_.slide);
    command->add_flag("--json", results_.json, "as JSON");
    command->callback([this] { action_ = [this] { runResults(results_, hooks_); }; });
  }

  void addGraph() {
    auto* command = app_.add_subcommand("graph", "draws a graph of the exercise of a slide to a file");
    addDeck(*command, graph_);
    addSlide(*command, graph_.slide);
    command->add_option("--kind", graph_.kind, "average or matrix")
        ->required()
        ->check(CLI::IsMember({"average", "matrix"}));
    command
        ->add_option("--assessment", graph_.assessment,
                     "assessment of the average graph, from 1; 10 and 11 are the multi-plots")
        ->check(CLI::Range(1, 11));
    command
        ->add_option("--pairs", graph_.pairs, "V,H[,V,H...]: vertical and horizontal assessment of each pair")
        ->delimiter(',')
        ->check(CLI::Range(1, 11));
    command->add_option("--size", size_, "WIDTHxHEIGHT in pixels")->check([this](const std::string& text) {
      return parseSize(text, graph_.widthPx, graph_.heightPx);
    });
    addOutput(*command, "--out", graph_, graph_.out, "FILE.png, .jpg or .svg")->required();
    addOutput(*command, "--geometry", graph_, graph_.geometry,
              "FILE.json for the place of every element, in twips");
    command->callback([this] { action_ = [this] { runGraph(graph_, hooks_); }; });
  }

  struct Output {
    const DeckArguments& deck;
    const std::string& file;
  };
  const CliHooks& hooks_;
  std::vector<Output> outputs_;
  CLI::App app_{"quorin matrix: the workshop beside the slide deck", "quorin-matrix"};
  std::function<void()> action_;
  InfoArguments info_;
  MtxArguments mtx_;
  TagsArguments tags_;
  VoteArguments vote_;
  ResultsArguments results_;
  GraphArguments graph_;
  std::string size_;
};

}  // namespace

bool isSubcommand(const std::vector<std::string>& words) {
  static const std::vector<std::string> names{"info", "mtx", "tags", "vote", "results", "graph"};
  return !words.empty() && std::find(names.begin(), names.end(), words.front()) != names.end();
}

int runSubcommand(const std::vector<std::string>& words, const CliHooks& hooks) {
  return Parser(hooks).run(words);
}

}  // namespace qrn::cli
