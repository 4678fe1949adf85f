// Votes on their slide, what they come to, and where a process stood: told as conversations.
#include "store/vote_store.h"

#include "core/edit.h"
#include "core/options.h"
#include "core/vote_record_text.h"
#include "store/progress_log.h"
#include "store/scores/all_scores.h"
#include "store/scores/results.h"
#include "store/statistics.h"
#include "store/votes_rec_conversion.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

struct RunningForm : host::Form, HasVoteBoxes {
  explicit RunningForm(const Words& words)
      : host::Form("xyVoteRuntime"), item(words.word(0)), assessment(words.word(1)) {}
  VoteFormBoxes boxes() const override {
    if (item == "fails")
      throw HostError(Fault::program, std::stoi(assessment), "Type mismatch");
    return {item, assessment};
  }
  std::string item, assessment;
};

class VoteCase : public RunCase {
 protected:
  VoteCase() {
    items({"12", "7"});
    glo.maxKeypads = 6;
    glo.voteAssessmentNumber = 1;
    glo.assessmentInfo[1].active = false;
    voteSaved = [this](const std::string& line) {
      tell("told " + line);
      if (slideTags().Item("QRNVOTES").find(line + "\r\n") == std::string::npos)
        tell("before it was stored");
    };
    voteCommands();
    tagCommands();
    scoreCommands();
    logCommands();
    recordCommands();
  }
  ~VoteCase() override {
    voteSaved = nullptr;
    world.forms.unload("xyVoteRuntime");
    forgetLeftoverVotes();
  }
  void tellVotes(bool found, const auto& votes) {
    std::string line = found ? "found" : "none";
    for (const auto& vote : votes)
      if constexpr (requires { vote.empty(); })
        line += vote.empty() ? " \"\"" : " " + vote;
      else
        line += " " + std::to_string(vote);
    tell(line);
  }
  void voteCommands() {
    on("save", [this](const Words&) { tell(SaveCVotes() ? "" : "not saved"); });
    on("saved", [this](const Words& words) {
      runLine("votes " + words.rest(0));
      runLine("save");
    });
    on("load", [this](const Words& words) { tellVotes(LoadVotes(words.word(0)), glo.liveVotes); });
    on("postal", [this](const Words& words) { tellVotes(LoadPostalVotes(words.word(0)), glo.postalVotes); });
    on("correct", [](const Words& words) { modifyVoteResult(words[0]); });
    on("leftovers", [this](const Words&) { tell(std::to_string(leftoverVotes())); });
    on("dropleftovers", [](const Words&) { forgetLeftoverVotes(); });
    on("saveleftovers", [this](const Words&) { tell(saveLeftoverVotes() ? "" : "not saved"); });
    // The slide is read anew, of a deck in that folder.
    on("anew", [this](const Words& words) {
      if (!words.empty())
        world.presentation.folder = words[0];
      glo.voteRecords.forget();
    });
    on("mirror", [this](const Words&) {
      if (glo.voteRecords.text() != slideTags().Item("QRNVOTES"))
        tell("the slide holds something else");
    });
  }
  void tagCommands() {
    // current TAG show SHOWN WINDOW: the slide to open, with or without a running show
    on("current", [this](const Words& words) {
      world.presentation.tagStore.values["QRNCURRENTSLIDE"] = words[0];
      world.program.showRuns = words[1] == "show";
      world.program.show.index = words.number(2);
      world.program.window.index = words.number(3);
      const int slide = readCurrentSlide();
      tell("slide ", slide, ", show at ", world.program.show.index, ", window at ",
           world.program.window.index, world.presentation.tagStore.Item("qrnCurrentSlide"));
    });
    on("keypads", [this](const Words&) { ReadActiveKeypads(), tellVotes(true, glo.activeKeypads); });
    on("sifter", [](const Words&) { LoadSifterSorterData(); });
    on("convert", [this](const Words& words) { tell(escaped(convertVotesRec(words.rest(1), words[0]))); });
  }
  void tellScore(int item, std::size_t a) {
    const RiskRecord& risk = glo.risks[static_cast<std::size_t>(item)];
    tell("average ", risk.average[a], ", deviation ", risk.standardDeviation[a], ", diversity ",
         risk.diversity[a], ", ", risk.counted[a], " counted, ", glo.abstainCount, " abstain");
  }
  void scoreCommands() {
    // stats ITEM ASSESSMENT [FORM]
    on("stats", [this](const Words& words) {
      const StatsTarget target = SetStats(words.number(0), words.number(1), words.word(2));
      if (target.risk >= 0 && target.risk < glo.itemCount() && target.assessment >= 0 &&
          target.assessment < kSlots)
        tellScore(target.risk, static_cast<std::size_t>(target.assessment));
    });
    on("round", [this](const Words& words) {
      SetStats(0, words.number(0), "", words.number(1), words.rest(2));
      const RoundRecord& round =
          glo.risks[0]
              .rounds[static_cast<std::size_t>(words.number(0))][static_cast<std::size_t>(words.number(1))];
      tell(round.label, ": ", round.average, " of ", round.counted);
    });
    on("form", [this](const Words& words) {
      world.forms.unload("xyVoteRuntime");
      world.forms.define("xyVoteRuntime", [words] { return std::make_unique<RunningForm>(words); });
      world.forms.load("xyVoteRuntime");
    });
    on("refresh", [](const Words& words) { refreshScores(words.number(0)); });
    on("scores", [](const Words&) { GetAllScores(); });
    on("has", [this](const Words& words) {
      tell(glo.risks[static_cast<std::size_t>(words.number(0))].hasScore(
               static_cast<std::size_t>(words.number(1)))
               ? "a score"
               : "no score");
    });
    on("results", [this](const Words& words) {
      for (const ItemResult& item : results()) tellResult(item, words);
    });
    on("groups", [this](const Words& words) {  // [ITEM ASSESSMENT]
      for (const GroupScore& group :
           demographicGroupScores(words.number(0), words.empty() ? 1 : words.number(1)))
        tell(group.groupName, " ", group.average, " of ", group.participants);
    });
  }
  void tellResult(const ItemResult& item, const Words& assessments) {
    std::ostringstream text;
    text << item.identifier << " " << item.id << (item.voting ? " " : " not voting ") << item.text << " "
         << item.sortKey << ":";
    const auto value = [&](const char* name, const std::optional<float>& number) {
      text << name;
      number ? text << *number : text << "-";
    };
    for (const std::string& word : assessments) {
      const std::size_t a = std::stoul(word);
      value(" | ", item.average[a]);
      value(" ", item.standardDeviation[a]);
      value(" ", item.diversity[a]);
      if (a < kAssessments)
        text << " of " << item.participants[a] << ", " << item.abstains[a];
    }
    tell(text.str());
  }
  void logCommands() {
    on("writelog", [](const Words& words) { writeLog(words.word(0) == "finished"); });
    on("modified", [this](const Words&) { tell(exerciseHistory().modified() ? "yes" : "no"); });
    on("due", [this](const Words&) { tell(votesDue() ? "due" : "none due"); });
    on("dueOf", [this](const Words& words) {
      runLine("set " + words.as(0));
      runLine("due");
    });
    on("resetlog", [](const Words&) { resetLogState(); });
    on("readlog", [this](const Words&) {
      std::string marks = readlog() ? "read:" : "nothing:";
      for (int i = 0; i < glo.itemCount(); ++i) {
        const RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
        marks += " " + std::to_string(risk.sortKey) + (risk.newItem ? "n" : "") + (risk.voted[0] ? "1" : "") +
                 (risk.voted[1] ? "2" : "");
      }
      tell(marks);
    });
    // place BY ITEM ASSESSMENT: what the log names for the next vote
    on("place", [this](const Words& words) {
      items({"12", "7", "30"});
      glo.runByOption = words.number(0);
      glo.currentItem = words.number(1);
      glo.currentAssessment = words.number(2);
      writeLog();
      const std::string log = slideTags().Item("QRNMATRIXLOG");
      const std::size_t from = log.find("assessment = "), to = log.find("\r\npair");
      tell(escaped(log.substr(from, to - from)));
    });
  }
  void recordCommands() {
    on("records", [this](const Words& words) { records.assign(words.rest(0)); });
    on("more", [this](const Words& words) { records.append(words.rest(0)); });
    on("forget", [this](const Words&) { records.forget(); });
    on("all", [this](const Words&) {
      tell(escaped(records.text()), " (", std::to_string(records.recordCount()),
           (records.known() ? ")" : ") unknown"));
    });
    on("last", [this](const Words& words) {
      for (const std::string& key : words)
        tell(key + ": " +
             (records.lastLine(key).data() == nullptr ? "-" : std::string(records.lastLine(key))));
    });
  }

  VoteRecordText records;
};

const bool kRegistered = registerCases<VoteCase>("VoteStoreCase", QUORIN_CASES "/votes.case");
const bool kScores = registerCases<VoteCase>("ScoresCase", QUORIN_CASES "/scores.case");
const bool kLog = registerCases<VoteCase>("ProgressLogCase", QUORIN_CASES "/progress_log.case");

}  // namespace
}  // namespace qrn::test
