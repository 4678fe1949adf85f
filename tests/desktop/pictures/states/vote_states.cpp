#include "desktop/pictures/states/vote_states.h"

#include <algorithm>
#include <stdexcept>

#include "charts/vote_screen/vote_words.h"
#include "support/cases.h"

namespace qrn::pictures {

namespace {

// The lines of vote_states.case: WORDS SCALE ITEM OPTION ..., and NAME WORDS VOTED ROOM ... of a state.
const std::vector<test::CaseStep>& linesOf(const std::string& part) {
  static const std::vector<test::CaseText> all = test::readCases(QUORIN_VOTE_STATES);
  return std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.name == part; })->steps;
}

test::Words wordsOf(const std::string& name) {
  for (const test::CaseStep& line : linesOf("words"))
    if (test::Words words(line.text); words[0] == name)
      return words;
  throw std::runtime_error("there are no words " + name);
}

// What a word such as corner=TL says, or what goes without saying.
std::string valueIn(const test::Words& row, const std::string& name, const std::string& usual) {
  for (const std::string& word : row)
    if (word.starts_with(name + "="))
      return word.substr(name.size() + 1);
  return usual;
}

AssessmentRecord storedPlaces(double width, double height, std::size_t options) {
  AssessmentRecord record;
  record.font2 = {"Arial", 30, true};
  record.font3 = {"Arial", 24};
  record.titleFont = {"Arial", 22};
  const auto rect = [&](double w, double h, double x, double y) {
    return LayoutRect{static_cast<float>(w * width), static_cast<float>(h * height),
                      static_cast<float>(x * width), static_cast<float>(y * height)};
  };
  record.lbl_Risk = rect(0.8, 0.18, 0.1, 0.06);
  record.lbl_Assessment = rect(0.8, 0.06, 0.1, 0.25);
  for (std::size_t i = 0; i < options; ++i)
    record.lbl_Criteria[i] = rect(0.9, 0.08, 0.05, 0.34 + 0.09 * static_cast<double>(i));
  return record;
}

VoteQuestion questionOf(const test::Words& row, const host::Ground& ground, int width, int height) {
  const test::Words text = wordsOf(row[1]);
  VoteQuestion question;
  question.width = width * kTwipsPerPixel;
  question.height = height * kTwipsPerPixel;
  question.ground = ground;
  host::Surface behind;
  static_cast<host::Ground&>(behind) = ground;
  question.look = chooseLook(behind);
  question.scale = text[1];
  question.item = text[2];
  question.at = 7;
  question.of = 80;
  for (std::size_t i = 3; i < text.size(); ++i)
    question.options.push_back({std::to_string(i - 2), text[i], -1});
  if (row.has("stored"))
    question.stored = storedPlaces(question.width, question.height, question.options.size());
  question.percentOrNumber = std::stoi(valueIn(row, "numbers", "2"));
  question.statsCorner = valueIn(row, "corner", "TR");
  question.aside = true;
  return question;
}

VoteNow nowOf(const test::Words& row) {
  VoteNow now;
  for (const std::string& count : test::Words(valueIn(row, "counts", "")))
    now.counts.push_back(std::stoi(count));
  now.closed = now.barsShown = !now.counts.empty();
  now.count = grouped(row[2]);
  now.voted = row.number(2);
  now.room = row.number(3);
  now.joinAddress = row.has("code") ? "192.168.100.120:7878" : "";
  if (row.has("lost"))
    now.status =
        "The link to the controller is lost. The votes received so far are kept. Trying to link again...";
  if (row.has("waiting"))
    now.waiting = WaitingFor{"Waiting for...", {"3", "7", "12", "15", "18", "21"}, now.room - now.voted};
  int votes = 0, sum = 0, value = 0;
  for (const int count : now.counts) {
    votes += count;
    sum += count * ++value;
  }
  now.abstains = votes > 0 ? 0 : now.voted;
  if (votes == 0)
    return now;
  now.average = static_cast<double>(sum) / votes;
  now.stats = "Average: " + averageWords(*now.average) +
              "\nStandard Deviation: 0.82\nDiversity: 40.83%\nParticipants: " + std::to_string(votes);
  return now;
}

}  // namespace

std::vector<VoteState> voteStates(const host::Ground& ground, int width, int height) {
  std::vector<VoteState> states;
  for (const test::CaseStep& line : linesOf("states")) {
    const test::Words row(line.text);
    states.push_back({row[0], voteModel(questionOf(row, ground, width, height), nowOf(row))});
  }
  return states;
}

host::Ground plainGround(bool dark) {
  host::Ground ground;
  ground.background = ground.backgroundEnd = look::untoldGround(dark);
  return ground;
}

}  // namespace qrn::pictures
