#include "store/progress_log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "store/vote_store.h"

namespace qrn {

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr std::size_t kHeadRoom = 512, kItemRoom = 32;  // bytes of the text, about
constexpr std::string_view kRiskList = "risk list";
constexpr std::string_view kFinished = "process finished";
constexpr std::string_view kRecords = "records";  // that the log knows of

struct Place {
  int risk = 0, assessment = 1;
};

// The vote after that of `item` on `assessment`: by item the next item of the assessment, by assessment the
// next assessment of the item that is in use and not voted.
Place nextVote(int item, int assessment) {
  if (glo.runByOption == 0)
    return item + 1 < glo.itemCount() ? Place{item + 1, assessment} : Place{0, assessment + 1};
  for (int a = assessment; a < kAssessments && item < glo.itemCount(); ++a) {
    const RiskRecord& risk = glo.item(item);
    if (glo.assessmentInfo[static_cast<std::size_t>(a)].active && !risk.voted[static_cast<std::size_t>(a)])
      return {item, a + 1};
  }
  return {item + 1, 1};
}

std::string word(bool flag) {
  return flag ? "True" : "False";
}

// "sortKey,new,voted": the voted marks are one digit per assessment.
void appendItemLine(std::string& text, const RiskRecord& item) {
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), item.sortKey).ptr;
  text.append(digits.data(), end).append(item.newItem ? ",True," : ",False,");
  for (std::size_t a = 0; a < kAssessments; ++a) text += item.voted[a] ? '1' : '0';
  text += kLineEnd;
}

bool isWord(std::string_view text, std::string_view wanted) {
  return upperCase(trimBlanks(text)) == upperCase(wanted);
}

int wholeNumber(std::string_view text) {
  return static_cast<int>(std::clamp(qrnVal(text), -32768.0, 32767.0));
}

void readValue(std::string_view name, std::string_view value) {
  const std::pair<const char*, int*> counters[] = {{"category", &glo.logCategory},
                                                   {"pairCount", &glo.logPairCount},
                                                   {"cumulativePairCount", &glo.logCumulativePairCount}};
  for (const auto& [counter, number] : counters)
    if (isWord(name, counter))
      *number = wholeNumber(value);
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (isWord(name, "a" + std::to_string(a + 1)))
      glo.logAssessments[a] = isWord(value, "True");
  if (isWord(name, "Assessment index"))
    glo.voteStep = wholeNumber(value);
}

void readItemLine(std::string_view line) {
  const int sortKey = wholeNumber(getField(line, 1));
  const std::string marks = getField(line, 3);
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& item = glo.item(i);
    if (item.sortKey != sortKey)
      continue;
    item.newItem = isWord(getField(line, 2), "True");
    for (std::size_t a = 0; a < std::min<std::size_t>(marks.size(), kAssessments); ++a)
      item.voted[a] = marks[a] == '1';
  }
}

// Marks the vote of this record as voted.
void takeVote(std::string_view line) {
  const std::string key = upperCase(getField(line, 4));
  const std::size_t letter = std::min(key.find('C'), key.size());
  const int sortKey = wholeNumber(key.substr(0, letter)),
            assessment = wholeNumber(key.substr(std::min(letter + 1, key.size())));
  for (int i = 0; i < glo.itemCount(); ++i)
    if (glo.item(i).sortKey == sortKey)
      markVoted(i, assessment);
}

// Takes the votes whose records are newer than the log. Fewer records than it knows of: they have been
// cleared since, and what is there now belongs to a new process.
void takeUnloggedVotes(std::size_t logged) {
  readVoteRecords();
  if (glo.voteRecords.recordCount() < logged) {
    logged = 0;
    for (RiskRecord& item : glo.risks) item.voted.fill(false);
  }
  if (glo.voteRecords.recordCount() == logged)
    return;
  std::vector<std::string> lines;
  SplitPPTTag(glo.voteRecords.text(), kLineEnd, lines);
  std::size_t record = 0;
  for (const std::string& line : lines)
    if (VoteRecordText::hasKey(line) && ++record > logged)
      takeVote(line);
}

void readLogText(const std::string& text) {
  std::vector<std::string> lines;
  SplitPPTTag(text, kLineEnd, lines);
  bool inList = false, finished = false;
  int records = -1;
  for (const std::string& line : lines) {
    const std::size_t equals = line.find('=');
    const bool named = equals != std::string::npos;
    if (named && isWord(line.substr(0, equals), kRecords))  // older logs have it before the list
      records = static_cast<int>(std::clamp(qrnVal(line.substr(equals + 1)), 0.0, 2147483647.0));
    else if (inList)
      readItemLine(line);
    else if (isWord(line, kRiskList))
      inList = true;
    else if (named && isWord(line.substr(0, equals), kFinished))
      finished = isWord(line.substr(equals + 1), "True");
    else if (named)
      readValue(line.substr(0, equals), line.substr(equals + 1));
  }
  if (records >= 0 && !finished)
    takeUnloggedVotes(static_cast<std::size_t>(records));
  glo.resumePending = !finished;
}

std::string logText(Place place, bool processFinished) {
  std::string text;
  text.reserve(kHeadRoom + static_cast<std::size_t>(glo.itemCount()) * kItemRoom);
  const auto line = [&](std::string_view name, const std::string& value) {
    text.append(name).append(" = ").append(value).append(kLineEnd);
  };
  const std::pair<const char*, int> counters[] = {{"category", glo.logCategory},
                                                  {"assessment", place.assessment},
                                                  {"risk", place.risk},
                                                  {"pairCount", glo.logPairCount},
                                                  {"cumulativePairCount", glo.logCumulativePairCount}};
  for (const auto& [counter, number] : counters) line(counter, std::to_string(number));
  for (std::size_t a = 0; a < kAssessments; ++a)
    line("a" + std::to_string(a + 1), word(glo.logAssessments[a]));
  line("Assessment index", std::to_string(glo.voteStep));
  line(kFinished, word(processFinished));
  text.append(kRiskList).append(kLineEnd);
  for (int i = 0; i < glo.itemCount(); ++i) appendItemLine(text, glo.item(i));
  line(kRecords, std::to_string(glo.voteRecords.recordCount()));
  return text;
}

void storeLog(const std::string& text) {
  if (glo.oVoteSlide != nullptr)
    glo.oVoteSlide->tags().Add(tagName::progress, text);
}

}  // namespace

void markVoted(int item, int assessment) {
  if (item < 0 || item >= glo.itemCount() || assessment < 1 || assessment > kAssessments)
    return;
  RiskRecord& risk = glo.item(item);
  risk.voted[static_cast<std::size_t>(assessment - 1)] = true;
  if (std::exchange(risk.newItem, false))
    exerciseHistory().touched();
}

void writeLog(bool processFinished) {
  trapErrors("ProgressLog", "writeLog", [&] {
    if (!processFinished)
      markVoted(glo.currentItem, glo.currentAssessment);
    if (host::host().dialogs != nullptr)
      host::host().dialogs->Info("Writing Log File");
    readVoteRecords();
    storeLog(qrnMatrixLog(processFinished));
  });
  if (host::host().dialogs != nullptr)
    host::host().dialogs->Info("");
}

void writeLogBefore(int item, int assessment) {
  trapErrors("ProgressLog", "writeLog", [&] {
    readVoteRecords();
    storeLog(logText(Place{item, assessment}, false));
  });
}

std::string qrnMatrixLog(bool processFinished) {
  return logText(nextVote(glo.currentItem, glo.currentAssessment), processFinished);
}

bool isAsked(int item, int assessment) {
  const int kind = glo.assessment(assessment).voteType;
  return glo.item(item).voting && kind != scaleKind::sifter && kind != scaleKind::balance;
}

bool isVotable(int item, int assessment) {
  return isAsked(item, assessment) && glo.labelCount(assessment - 1) >= 2;
}

bool votesDue() {
  for (std::size_t a = 0; a < kAssessments; ++a)
    for (int item = 0; glo.assessmentInfo[a].active && item < glo.itemCount(); ++item)
      if (isVotable(item, static_cast<int>(a) + 1) && !glo.item(item).voted[a])
        return true;
  return false;
}

bool readlog() {
  bool found = false;
  resetLogState();
  trapErrors("ProgressLog", "readlog", [&] {
    const std::string text = glo.oVoteSlide == nullptr ? "" : glo.oVoteSlide->tags().Item(tagName::progress);
    found = !text.empty();
    if (found)
      readLogText(text);
  });
  return found;
}

void resetLogState() {
  glo.logCategory = 1;
  glo.logPairCount = glo.logCumulativePairCount = 0;
  glo.resumePending = false;
  glo.logAssessments.fill(true);
  for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
}

}  // namespace qrn
