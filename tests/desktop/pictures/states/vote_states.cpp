#include "desktop/pictures/states/vote_states.h"

#include "charts/vote_screen/vote_words.h"

namespace qrn::pictures {

namespace {

constexpr int kShort = 0, kLong = 1, kTen = 2, kFour = 3, kScripts = 4, kRightToLeft = 5, kHundred = 6;

struct Words {
  const char *scale, *item;
  std::vector<std::string> options;
};

const std::vector<Words>& words() {
  static const std::vector<Words> all{
      {"Likelihood",
       "Piles meet unmapped cables in the river bed",
       {"Rare", "Unlikely", "Possible", "Likely", "Almost certain"}},
      {"How likely is it that this happens to us before the harbour front is opened to the public?",
       "The contractor for the piling works finds unmapped power and data cables in the river bed, stops for "
       "several weeks until their owners are found, and claims the cost of all the time that is lost there.",
       {"Rare: not in our lifetime", "Unlikely: once in a generation", "Possible: once in ten years",
        "Likely: every second year or so, as the records of the last decades show",
        "Almost certain: several times a year"}},
      {"Value to the town",
       "A ferry to the north bank every quarter of an hour",
       {"None at all", "Very low", "Low", "Rather low", "Middling", "Rather high", "High", "Very high",
        "Extreme", "Beyond compare"}},
      {"Which of these describes best what you think?",
       "Close the front to cars on Sundays",
       {"We should do it at once and without any condition, since most other towns on the river have done it",
        "We should try it for one summer and ask those who live there what they think of it afterwards",
        "We should wait until the new car park behind the station is open, and then decide",
        "We should not do it"}},
      {"对城镇的价值",
       "我们应该先清理内港，还是先修建防波堤？请每一位参加者投票，并说明理由。",
       {"很低", "ต่ำมาก", "मध्यम", "높음", "非常に高い"}},
      {"الاحتمال",
       "تصطدم الركائز بكابلات غير مرسومة على الخرائط في قاع النهر",
       {"نادر", "غير محتمل", "ממכן", "محتمل", "شبه مؤكد"}},
      {"Share", "How much of the front shall be green, in percent?", std::vector<std::string>(100, "")}};
  return all;
}

// One state. Votes go to the options in the shares given, and on from the start.
struct Row {
  const char* name;
  int words;
  int voted, room;
  std::vector<int> counts;  // none: the vote is open
  const char* corner;       // of the statistics
  int numbers;              // 0 numbers, 1 percent, 2 both
  const char* status;
  bool code;     // to join
  bool waiting;  // those missing are named
  bool stored;   // places of the exercise's own
};

const std::vector<Row>& rows() {
  static const char* lost =
      "The link to the controller is lost. The votes received so far are kept. Trying to link again...";
  static const std::vector<int> typical{0, 2, 31, 38, 27}, ten{0, 1, 4, 9, 12, 30, 22, 11, 6, 3},
      none{0, 0, 0, 0, 0};
  static const std::vector<int> hundred = [] {
    std::vector<int> counts(100);
    for (int i = 0; i < 200; ++i) ++counts[static_cast<std::size_t>((i * i * 7 + 3 * i) % 83)];
    return counts;
  }();
  static const std::vector<Row> all{
      {"open", kShort, 57, 103, {}, "TR", 2, "", true, true, false},
      {"open-keypads", kShort, 88, 103, {}, "TR", 2, "", false, true, false},
      {"open-first", kShort, 0, 0, {}, "TR", 2, "", true, false, false},
      {"open-no-keypads", kShort, 0, 0, {}, "TR", 2, "", false, false, false},
      {"open-everyone", kShort, 103, 103, {}, "TR", 2, "", true, false, false},
      {"open-link-lost", kShort, 57, 103, {}, "TR", 2, lost, false, true, false},
      {"open-long", kLong, 57, 1204, {}, "TL", 2, lost, true, true, false},
      {"open-ten", kTen, 57, 103, {}, "BR", 2, "", true, true, false},
      {"open-four", kFour, 57, 103, {}, "TR", 2, "", true, true, false},
      {"open-scripts", kScripts, 57, 103, {}, "TR", 2, "", true, true, false},
      {"open-right-to-left", kRightToLeft, 57, 103, {}, "TR", 2, "", true, true, false},
      {"open-stored", kShort, 57, 103, {}, "BL", 2, "", false, true, true},
      {"result", kShort, 98, 103, typical, "TR", 2, "", false, false, false},
      {"result-everyone", kShort, 98, 98, typical, "BR", 0, "", false, false, false},
      {"result-top-left", kShort, 98, 103, typical, "TL", 1, "", false, false, false},
      {"result-long", kLong, 98, 1204, typical, "BL", 2, "", false, false, false},
      {"result-ten", kTen, 98, 103, ten, "TR", 2, "", false, false, false},
      {"result-four", kFour, 98, 103, {9, 40, 0, 49}, "TR", 2, "", false, false, false},
      {"result-scripts", kScripts, 98, 103, typical, "TR", 2, "", false, false, false},
      {"result-right-to-left", kRightToLeft, 98, 103, typical, "TR", 2, "", false, false, false},
      {"result-hundred", kHundred, 200, 200, hundred, "TR", 1, "", false, false, false},
      {"result-stored", kShort, 98, 103, typical, "BL", 2, "", false, false, true},
      {"result-nobody", kShort, 0, 103, none, "TR", 2, "", false, false, false},
      {"result-none-counts", kShort, 12, 103, none, "TR", 2, "", false, false, false},
  };
  return all;
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

VoteQuestion questionOf(const Row& row, const host::Ground& ground, int width, int height) {
  const Words& text = words()[static_cast<std::size_t>(row.words)];
  VoteQuestion question;
  question.width = width * kTwipsPerPixel;
  question.height = height * kTwipsPerPixel;
  question.ground = ground;
  host::Surface behind;
  static_cast<host::Ground&>(behind) = ground;
  question.look = chooseLook(behind);
  question.scale = text.scale;
  question.item = text.item;
  question.at = 7;
  question.of = 80;
  for (std::size_t i = 0; i < text.options.size(); ++i)
    question.options.push_back({std::to_string(i + 1), text.options[i], -1});
  if (row.stored)
    question.stored = storedPlaces(question.width, question.height, text.options.size());
  question.percentOrNumber = row.numbers;
  question.statsCorner = row.corner;
  question.aside = true;
  return question;
}

VoteNow nowOf(const Row& row) {
  VoteNow now;
  now.closed = now.barsShown = !row.counts.empty();
  now.count = grouped(std::to_string(row.voted));
  now.voted = row.voted;
  now.room = row.room;
  now.counts = row.counts;
  now.status = row.status;
  now.joinAddress = row.code ? "192.168.100.120:7878" : "";
  if (row.waiting)
    now.waiting = WaitingFor{"Waiting for...", {"3", "7", "12", "15", "18", "21"}, row.room - row.voted};
  int votes = 0, sum = 0, value = 0;
  for (const int count : row.counts) {
    votes += count;
    sum += count * ++value;
  }
  now.abstains = votes > 0 ? 0 : row.voted;
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
  for (const Row& row : rows())
    states.push_back({row.name, voteModel(questionOf(row, ground, width, height), nowOf(row))});
  return states;
}

host::Ground plainGround(bool dark) {
  host::Ground ground;
  ground.background = ground.backgroundEnd = look::untoldGround(dark);
  return ground;
}

}  // namespace qrn::pictures
