#include "charts/vote_screen/vote_words.h"

#include <numeric>

#include "core/common.h"

namespace qrn {

namespace {

std::string number(int value) {
  return grouped(std::to_string(value));
}

bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789,") == std::string::npos;
}

// As many labels as fit, and how many more there are.
std::string waitingWords(const WaitingFor& waiting, const std::function<bool(const std::string&)>& fits) {
  if (waiting.all < 1)
    return "";
  for (std::size_t named = waiting.labels.size(); named > 0; --named) {
    std::string words = waiting.title;
    for (std::size_t i = 0; i < named; ++i) words += " " + waiting.labels[i];
    if (const int more = waiting.all - static_cast<int>(named); more > 0)
      words += " and " + number(more) + " more";
    if (fits(words))
      return words;
  }
  return waiting.title + " " + number(waiting.all) + (waiting.all == 1 ? " keypad" : " keypads");
}

}  // namespace

std::string grouped(std::string digits) {
  const std::size_t first = !digits.empty() && digits[0] == '-' ? 1 : 0;
  for (std::size_t at = digits.size(); at > first + 3;) digits.insert(at -= 3, ",");
  return digits;
}

std::string stepWords(const VoteQuestion& question) {
  return question.of > 0 ? number(question.at) + " of " + number(question.of) : "";
}

std::string averageWords(double average) {
  return formatPlaces(average, 2);
}

CountWords countWords(const VoteNow& now) {
  if (now.closed)
    return {number(now.voted), now.room > 0 ? "of " + number(now.room) + " voted" : "voted"};
  if (!isNumber(now.count))
    return {now.count, ""};
  return {now.count, now.room > 0 ? "of " + number(now.room) + " voted" : "voted"};
}

std::string toldWords(const VoteNow& now, const std::function<bool(const std::string&)>& fits) {
  if (now.room > 0 && now.voted >= now.room)
    return "Everyone has voted";
  if (now.closed)
    return now.room > 0 ? number(now.room - now.voted) + " did not vote" : "";
  if (now.waiting)
    return waitingWords(*now.waiting, fits);
  if (now.room == 0 && now.voted == 0 && !now.keyboard)
    return now.joinAddress.empty() ? "No keypads yet. The vote counts each as it comes."
                                   : "No keypads yet. Phones join with the code.";
  return "";
}

std::string noticeWords(const VoteNow& now) {
  if (!now.closed || std::accumulate(now.counts.begin(), now.counts.end(), 0) > 0)
    return "";
  if (now.voted == 0)
    return now.room > 0 ? "Nobody has voted. 0 of " + number(now.room) + " keypads pressed a key."
                        : "Nobody has voted. No keypad pressed a key.";
  std::string words = number(now.voted) + " voted, and none of these votes counts here.";
  if (now.abstains > 0)
    words += " " + number(now.abstains) + " abstained.";
  return words;
}

}  // namespace qrn
