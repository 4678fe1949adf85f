// Texts, numbers, a new exercise, logs and options, told as conversations.
#include "base/utf8.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/item_label.h"
#include "core/model.h"
#include "core/options.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

class CoreCase : public RunCase {
 protected:
  CoreCase() {
    resetDiagnostics();
    textCommands();
    numberCommands();
    modelCommands();
    logCommands();
    editCommands();
  }
  ~CoreCase() override {
    setDecimalSeparator('\0');
    iniOptions() = IniOptions{};
  }
  void textCommands() {
    on("split", [this](const Words& words) {
      std::vector<std::string> pieces{"left over"};
      SplitPPTTag(words[0], words[1], pieces);
      std::string all;
      for (const std::string& piece : pieces) all += "[" + escaped(piece) + "]";
      tell(all.empty() ? "nothing" : all);
    });
    on("ends", [this](const Words& words) {
      std::string text = words.rest(0);
      HomogoniseLineFeeds(text);
      tell(escaped(text));
    });
    on("fields", [this](const Words& words) {
      for (int n = 0; n <= 5; ++n) tell(n, ": ", getField(words.rest(0), n));
    });
    on("utf8", [this](const Words& words) { tell(toUtf8(words.rest(0))); });
    on("changed", [this](const Words& words) { tell(toUtf8(words[0]) == words[0] ? "no" : "yes"); });
    on("characters", [this](const Words& words) {
      std::ostringstream all;
      for (const std::uint32_t code : characters(words[0])) all << std::hex << code << " ";
      tell(all.str(), "(", std::to_string(characterCount(words[0])), ")");
    });
    on("path", [this](const Words& words) { tell(joinPath(words[0], words[1])); });
    on("label", [this](const Words& words) {
      RiskRecord risk;
      risk.text = "Fire";
      risk.ID = words.number(0);
      const std::string label = GetItemLabel(risk);
      tell(label + ", " + risk.identifier);
    });
    on("running", [this](const Words& words) { tell(Check4App(words[0]) ? "yes" : "no"); });
    on("stop", [this](const Words&) { world.program.running = false; });
    on("file", [this](const Words& words) { world.files.files[words[0]] = words.rest(1); });
    on("nofiles", [this](const Words&) { world.files.files.clear(); });
    on("text", [this](const Words& words) { tell("'" + readTextFile(words[0]) + "'"); });
    on("form", [this](const Words& words) {
      world.forms.define(words[0], [name = words[0]] { return std::make_unique<host::Form>(name); });
      world.forms.load(words[0]);
    });
    on("anyform", [this](const Words& words) {
      tell(Check4Form(words.word(0), words.word(1), words.word(2)) ? "yes" : "no");
    });
  }
  void numberCommands() {
    // val TEXT: with a point and with a comma as the separator of decimals
    on("val", [this](const Words& words) {
      std::string both;
      for (const char separator : {'.', ','}) {
        setDecimalSeparator(separator);
        both += plainNumber(qrnVal(words.rest(0))) + " ";
      }
      setDecimalSeparator('\0');
      tell(both + plainNumber(qrnVal(words.rest(0))));
    });
    on("numeric", [this](const Words& words) { tell(isNumeric(words.word(0)) ? "yes" : "no"); });
    on("up", [this](const Words& words) { tell(std::to_string(RoundUp(std::stod(words[0])))); });
    on("single", [this](const Words& words) { tell(plainNumber(std::stof(words[0]))); });
    on("double", [this](const Words& words) {
      const double value = std::stod(words[0]);
      tell(valueParse(plainNumber(value)) == value ? "" : "another: " + plainNumber(value));
    });
    on("places", [this](const Words& words) { tell(formatPlaces(std::stod(words[0]), words.number(1))); });
    on("singleplaces", [this](const Words& words) {
      tell(formatPlaces(static_cast<double>(std::stof(words[0])), words.number(1)));
    });
  }
  void modelCommands() {
    on("new", [](const Words&) { initXYVote(); });
    on("master", [this](const Words&) {
      world.presentation.titleFont = host::MasterFont{"Georgia", 40, true, false, true, 77};
      world.presentation.scheme = {{1, 111}, {5, 555}, {10, 101}};
    });
    on("assessments", [](const Words& words) { InitAssessmentInfo(words.word(0) == "keep"); });
    on("remaining", [this](const Words& words) {
      glo.matrixAxes = {words.number(0), words.number(1)};
      setRemainingAssessments();
      runLine("show remainingAssessments");
    });
    on("counts", [this](const Words&) {
      tell(glo.itemCount(), " items, ", upperBound(glo.categories), " category, lists of ",
           upperBound(glo.ownerLists), " and ", upperBound(glo.rootCauseLists), ", the last of ",
           upperBound(glo.rootCauseLists.at(6).values), ", a bar of ", glo.barColours3[9]);
    });
    on("rounds", [this](const Words&) {
      RiskRecord one, two;
      tell(std::as_const(one).rounds[3][4].counted, " before");
      two.rounds[10][10].label.clear();
      tell(one.rounds == two.rounds ? "alike when empty" : "differ when empty");
      two.rounds[3][4] = {"1st", 2.5F};
      tell(one.rounds == two.rounds ? "alike" : "differ by " + two.rounds[3][4].label);
      tell(one == two ? "the same item" : "another item");  // scores are not the exercise
    });
  }
  void editCommands() {
    on("begin", [](const Words&) { exerciseHistory().begin(); });
    on("edit", [this](const Words& words) {
      Edit edit(words[0]);
      runBlock();
      edit.commit();
    });
    on("giveup", [this](const Words& words) {
      const Edit edit(words[0]);
      runBlock();
    });
    on("stored", [](const Words&) { exerciseHistory().stored(); });
    on("undo", [this](const Words&) { tell(exerciseHistory().undo() ? "" : "not undone"); });
    on("history", [this](const Words&) {
      const ExerciseHistory& history = exerciseHistory();
      tell("undo '", history.undoName(), "', redo '", history.redoName(), "'",
           history.modified() ? ", modified" : "");
    });
    on("view", [this](const Words&) {
      view_.emplace([this](const ExerciseChange& change) {
        changes_ += std::string("changed:") + (change.items ? " items" : "") +
                    (change.categories ? " categories" : "") + (change.assessments ? " assessments" : "") +
                    (change.settings ? " settings" : "") + "\n";
      });
    });
    on("changes", [this](const Words&) { tell(std::exchange(changes_, "")); });
    on("noview", [this](const Words&) { view_.reset(); });
  }
  void logCommands() {
    on("report", [](const Words& words) {
      clsError& reporter = errorReporter();
      reporter.ExtraInfo = words[0];
      reporter.StoreErrInfo({53, "File not found", "", 0});
      reporter.StoreAppInfo("store", "LoadXY", 120, false);
      reporter.Show();
    });
    // trap [world] MESSAGE: an error that is shown
    on("trap", [this](const Words& words) {
      const bool trapped = !trapErrors(
          "m", "p",
          [&] {
            if (words[0] == "world")
              throw HostError(Fault::world, 61, words.rest(1));
            if (words[0] != "nothing")
              throw std::runtime_error(words.rest(0));
          },
          true);
      tell(trapped ? "trapped" : "all is well");
    });
    on("logs", [this](const Words&) {
      for (const auto& [name, text] : world.files.files) {
        std::string shownText = escaped(text);
        if (const std::size_t at = shownText.find(programVersion()); at != std::string::npos)
          shownText.replace(at, programVersion().size(), "VERSION");
        tell(name + ": " + shownText);
      }
    });
    on("debug", [](const Words& words) { writeDebugLog(words[0], words[1], words.rest(2)); });
    on("votelog", [](const Words& words) { writeVoteDataLog(words[0], words.rest(1)); });
    on("logging", [](const Words&) { iniOptions().logEventsToFile = true; });
    on("later", [this](const Words& words) {
      world.clock.micros += static_cast<std::int64_t>(std::stod(words[0]) * 1e6);
    });
    on("hour", [this](const Words& words) { world.clock.start.hour = words.number(0); });
    on("timer", [this](const Words&) { tell(std::to_string(highResolutionTimer())); });
    on("options", [this](const Words&) {
      ReadGlobalSettingsFromINIFile();
      const IniOptions& o = iniOptions();
      tell(std::string(o.logEventsToFile ? "logs, " : "") + (o.showAllErrors ? "shows all, " : "") +
           (o.disableDisablingPptWindows ? "leaves windows, " : "") +
           (o.disableParticipantList ? "no list, " : "") + (o.debugAcceptDetectAsVotes ? "detects, " : "") +
           o.chartExportFormat);
    });
  }

  std::optional<ExerciseView> view_;
  std::string changes_;
};

const bool kRegistered = registerCases<CoreCase>("CoreCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
