#include "support/run_case.h"

#include <algorithm>
#include <sstream>

#include "base/text.h"
#include "core/item_label.h"
#include "core/model.h"
#include "support/members.h"

namespace qrn::test {

namespace {

void makeItems(const std::vector<std::string>& sortKeys) {
  glo.risks.assign(sortKeys.size() + 1, RiskRecord{});
  for (std::size_t i = 0; i < sortKeys.size(); ++i) {
    glo.risks[i].sortKey = std::stoi(sortKeys[i]);
    glo.risks[i].ID = static_cast<int>(i);
    glo.risks[i].text = "item " + sortKeys[i];
    glo.risks[i].voting = true;
  }
}

void addQuestion(Words words) {
  DemographicInfo question;
  if (words[0] == "default")
    question.isDefault = true, words.erase(words.begin());
  question.votes = words[0];
  for (std::size_t i = 1; i < words.size(); ++i) {
    const bool chosen = words[i].ends_with('*');
    const std::size_t name = words[i].find('=') + 1;
    question.groups.push_back(
        {std::stoi(words[i]), words[i].substr(name, words[i].size() - name - (chosen ? 1 : 0)), chosen});
  }
  question.groupCount = static_cast<std::int32_t>(question.groups.size());
  question.isDefault |= words[0].empty();
  glo.demographicQuestions.push_back(question);
}

}  // namespace

void addItems(int count) {
  std::vector<std::string> keys;
  for (int i = 0; i < count; ++i) keys.push_back(std::to_string(i));
  makeItems(keys);
  for (RiskRecord& risk : glo.risks) {
    risk.identifier = itemIdentifier(risk.ID);
    risk.active.fill(true);
  }
}

void addScale(int assessment, const std::string& title, int points, int startFrom) {
  const auto a = static_cast<std::size_t>(assessment - 1);
  glo.scaleLabels[a].clear();
  for (int i = 1; i <= points; ++i) glo.scaleLabels[a].push_back("s" + std::to_string(i));
  glo.scaleLabels[a].emplace_back();
  glo.assessments[a].scalePointCount = points;
  glo.assessments[a].startFrom = startFrom;
  glo.assessmentTitles[a] = title;
  glo.assessmentInfo[a].active = true;
}

void addVote(int item, int assessment, const std::string& votes) {
  glo.voteRecords.append("14/03/2026,09:00:00," + votes + "," + std::to_string(glo.item(item).sortKey) + "C" +
                         std::to_string(assessment) + "\r\n");
}

void beginRun(TestHost& world) {
  glo = Glo{};
  glo.oPowerPoint = &world.program;
  glo.oPresentation = &world.presentation;
  glo.oVoteSlide = &world.presentation.slide(1);
  glo.appPath = "/install/";
  glo.matrixPath = "/tmp/t/quorin/";
  beginExercise();
}

void beginExercise() {
  static_cast<Exercise&>(glo) = Exercise{};
  initXYVote();
  glo.CheckAutoSave = 0;
  makeItems({"10", "11", "12"});
  const char* const texts[] = {"Fire", "Flood", "Theft"};
  for (std::size_t i = 0; i < 3; ++i) glo.risks[i].text = texts[i];
  for (std::size_t a = 0; a < 9; ++a) {
    glo.assessmentInfo[a].active = a < 2;
    glo.scaleLabels[a] = {"low", "some", "middle", "much", "high", ""};
  }
  glo.assessmentTitles[0] = "Impact";
  glo.assessmentTitles[1] = "Likelihood";
}

RunCase::RunCase() {
  beginRun(world);
  memberCommands();
  worldCommands();
}

void RunCase::items(const std::vector<std::string>& sortKeys) {
  makeItems(sortKeys);
}

void RunCase::store(const std::string& text) {
  slideTags().values["QRNVOTES"] = text;
  glo.voteRecords.forget();
}

std::string RunCase::newErrors() {
  const std::string& log = world.files.files["/appdata/quorin/Err.log"];
  std::istringstream lines(log.substr(std::min(errorsTold_, log.size())));
  errorsTold_ = log.size();
  std::string errors;
  for (std::string line; std::getline(lines, line);)
    for (const char* kind : {"Number: ", "Description: ", "Procedure: "})
      if (line.starts_with(kind))
        errors += line.substr(std::string(kind).size(), line.find('\r') - std::string(kind).size()) +
                  (*kind == 'P' ? "\n" : ", ");
  return errors;
}

void RunCase::memberCommands() {
  on("set", [](const Words& words) { setMember(words.word(0), words.rest(1)); });
  on("show", [this](const Words& words) {
    for (const std::string& path : words) tell(path + " = " + memberText(path));
  });
  on("items", [](const Words& words) { items(words); });
  on("fresh", [](const Words&) { beginExercise(); });
  on("question", [](const Words& words) { addQuestion(words); });
  on("noquestions", [](const Words&) { glo.demographicQuestions.clear(); });
  on("votes", [](const Words& words) {
    glo.liveVotes = words;
    glo.liveVotes.emplace_back("9");  // the spare element, which nothing reads
  });
}

void RunCase::worldCommands() {
  const auto tagCommand = [this](MemoryTags& tags, const Words& words) {
    if (words.size() == 1)
      return tell(escaped(tags.Item(words[0])));
    tags.values[upperCase(words[0])] = words[1].empty() ? "" : words.rest(1);
    glo.voteRecords.forget();
    glo.postalRecords.forget();
  };
  on("tag", [this, tagCommand](const Words& words) { tagCommand(slideTags(), words); });
  on("decktag", [this, tagCommand](const Words& words) { tagCommand(world.presentation.tagStore, words); });
  on("asks", [this](const Words& words) { world.expectAnswer(words.rest(1), words[0]); });
  on("at", [this](const Words& words) { world.at(std::stod(words.word(0)), later(words, 1)); });
  on("wait", [](const Words& words) { host::waitUntil([] { return false; }, std::stod(words.word(0))); });
  on("full", [this](const Words& words) {
    int& fails = words.word(1) == "files"  ? world.files.failAtWrite
                 : words.word(1) == "deck" ? world.presentation.tagStore.failAtWrite
                                           : slideTags().failAtWrite;
    fails = words.number(0);
  });
  on("ends", [this](const Words&) { host::host().run = &run_; });
  on("errors", [this](const Words&) { tell(newErrors()); });
  on("infos", [this](const Words&) {
    for (const std::string& info : world.dialogs.infos) tell(info.empty() ? "-" : escaped(info));
    world.dialogs.infos.clear();
  });
}

}  // namespace qrn::test
