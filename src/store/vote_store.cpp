#include "store/vote_store.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "analysis/filter/filters.h"
#include "base/errors.h"
#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"
#include "store/postal_records.h"
#include "store/vote_line.h"

namespace qrn {

std::function<void(const std::string& line)> voteSaved;

namespace {

constexpr const char* kModule = "VoteStore";
constexpr const char* kLineEnd = "\r\n";

// Records that a failing disk has left in memory, with the deck and the slide that they belong to.
struct LeftoverVote {
  std::string deck;
  int slideID = 0;
  std::string line;
};
std::vector<LeftoverVote> g_leftover;

host::Slide& voteSlide() {
  if (glo.oVoteSlide == nullptr)
    throw HostError(Fault::program, 91, "There is no vote slide");
  return *glo.oVoteSlide;
}

std::string deckName() {
  return glo.oPresentation == nullptr ? "" : glo.oPresentation->FullName();
}

int voteSlideID() {
  return glo.oVoteSlide == nullptr ? 0 : glo.oVoteSlide->slideID();
}

bool belongsHere(const LeftoverVote& vote) {
  return vote.slideID == voteSlideID() && vote.deck == deckName();
}

std::string dateAndTime() {
  const host::DateTime now = host::host().clock->now();
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%02d/%02d/%04d,%02d:%02d:%02d", now.day, now.month, now.year,
                now.hour, now.minute, now.second);
  return text.data();
}

// A vote as it stands in the record. What would break the record's line is left out of it.
std::string savedToken(const std::string& vote) {
  if (vote == "-2")
    return "X;";
  if (vote == "-1" || vote == "-100")
    return "-;";
  if (vote == "10")
    return "A;";
  std::string token = vote;
  std::erase_if(token, [](char c) { return c == ',' || c == ';' || c == '"' || c == '\r' || c == '\n'; });
  return token.empty() ? "-;" : token + ";";
}

std::string correctedToken(const std::string& vote) {
  const double value = qrnVal(vote);
  if (value == kAbstained)
    return "X;";
  if (value == kNoVote)
    return "-;";
  if (value == kKeyZero)
    return "A;";
  return value >= 0 && value <= 9 ? plainNumber(value) + ";" : "";
}

// Keypads that a record has a place for. With phones there could be many more than are in the room.
std::size_t recordWidth() {
  std::size_t width = glo.liveVotes.empty() ? 0 : glo.liveVotes.size() - 1;
  if (glo.baseType != "PHONES")
    return width;
  double highest = 0;
  for (const std::string& keypad : glo.activeKeypads) highest = std::max(highest, qrnVal(keypad));
  while (width > 0 && static_cast<double>(width) > highest && savedToken(glo.liveVotes[width - 1]) == "-;")
    --width;
  return width;
}

std::string votesField(std::string (*token)(const std::string&)) {
  std::string votes;
  for (std::size_t i = 0, width = recordWidth(); i < width; ++i) votes += token(glo.liveVotes[i]);
  return votes;
}

// A cut-off line at the end of the records must not swallow the record that follows it.
std::string separatedLine(const std::string& line, bool afterCutLine) {
  return (afterCutLine ? kLineEnd : "") + line + kLineEnd;
}

bool endsInsideLine(const std::string& text) {
  return !text.empty() && text.back() != '\n' && text.back() != '\r';
}

void tellVoteSaved(const std::string& line) {
  if (voteSaved)
    trapErrors(kModule, "voteSaved", [&] { voteSaved(line); });
}

// Puts the left-over records of this slide and `line` onto the disk, oldest first.
void storeLines(const std::string& line, bool afterCutLine) {
  for (auto it = g_leftover.begin(); it != g_leftover.end();) {
    if (!belongsHere(*it)) {
      ++it;
      continue;
    }
    host::Tags& tags = voteSlide().tags();
    tags.Append(tagName::votes, separatedLine(it->line, endsInsideLine(tags.Item(tagName::votes))));
    const std::string stored = it->line;
    it = g_leftover.erase(it);
    afterCutLine = false;
    tellVoteSaved(stored);
  }
  if (line.empty())
    return;
  voteSlide().tags().Append(tagName::votes, separatedLine(line, afterCutLine));
  tellVoteSaved(line);
}

bool askToRetry(const std::exception& error) {
  if (host::host().dialogs == nullptr)
    return false;
  const std::string text = std::string("The votes could not be saved to the slide:") + kLineEnd +
                           error.what() + kLineEnd + kLineEnd + "Would you like to try again?" + kLineEnd +
                           "No keeps them in memory until the next vote is saved.";
  return host::host().dialogs->MsgBox(text, host::kTitle, host::Buttons::yesNo, host::Icon::critical,
                                      host::Answer::yes) == host::Answer::yes;
}

// Stores until it works or the facilitator gives up.
bool storeWithRetry(const std::string& line, bool afterCutLine) {
  while (true) {
    try {
      storeLines(line, afterCutLine);
      return true;
    } catch (const std::exception& error) {
      reportError(error, kModule, "SaveCVotes");
      if (!askToRetry(error))
        return false;
    }
  }
}

std::string currentRecord() {
  return dateAndTime() + "," + votesField(savedToken) + "," +
         voteKey(glo.currentRisk, glo.voteAssessmentNumber);
}

void setPostalVotes(const std::vector<int>& votes) {
  glo.postalVotes = votes;
  glo.postalVotes.push_back(0);
}

// Keypads that count get the votes of the record, all others are not voted.
void fillLiveVotes(const std::vector<int>& votes) {
  for (std::size_t k = 0; k < votes.size(); ++k)
    if (keypadCounts(glo.keypadIncluded, k))
      glo.liveVotes[k] = std::to_string(votes[k]);
}

bool loadRecord(std::string_view line) {
  const VoteLine record(line);
  const std::vector<int> votes = decodeVotes(record.votes());
  glo.maxKeypads = std::max(glo.maxKeypads, static_cast<int>(votes.size()));
  sizeVoteArrays();
  std::fill(glo.liveVotes.begin(), glo.liveVotes.end(), "-100");
  setPostalVotes({});
  if (record.votes().empty() && record.postal().empty())
    return false;
  includeKeypads();
  fillLiveVotes(votes);
  setPostalVotes(decodePostal(record.postal()));
  return true;
}

// What stands behind the fourth field, with its comma.
std::string_view behindKey(std::string_view line) {
  std::size_t comma = std::string_view::npos;
  for (int field = 0; field < 4; ++field) {
    comma = line.find(',', comma + 1);
    if (comma == std::string_view::npos)
      return {};
  }
  return line.substr(comma);
}

void addLeftover() {
  for (const LeftoverVote& vote : g_leftover)
    if (belongsHere(vote))
      glo.voteRecords.append(separatedLine(vote.line, glo.voteRecords.endsInsideLine()));
}

void replaceRecord(std::string text, const std::string& key) {
  HomogoniseLineFeeds(text);
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = rest.find(kLineEnd);
    const std::string_view line = rest.substr(0, end);
    if (upperCase(getField(line, 4)) == upperCase(key)) {
      const std::string changed = getField(line, 1) + "," + getField(line, 2) + "," +
                                  votesField(correctedToken) + "," + getField(line, 4) +
                                  std::string(behindKey(line));
      text.replace(static_cast<std::size_t>(line.data() - text.data()), line.size(), changed);
      voteSlide().tags().Add(tagName::votes, text);
      glo.voteRecords.assign(std::move(text));
      addLeftover();
      return;
    }
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
  }
}

// "a,b,c" without a separator at either end; elements with a blank in them fall out.
std::vector<std::string> keypadList(std::string_view text) {
  if (!text.empty() && text.front() == ',')
    text.remove_prefix(1);
  if (!text.empty() && text.back() == ',')
    text.remove_suffix(1);
  std::vector<std::string> list;
  for (const std::string_view element : splitFields(text, ','))
    if (element.find(' ') == std::string_view::npos)
      list.emplace_back(element);
  if (list.empty())
    list.emplace_back();
  return list;
}

host::View* shownView(host::PresentationProgram& program) {
  return program.SlideShowWindowsCount() > 0 ? program.SlideShowView() : program.ActiveWindowView();
}

int takeCurrentSlide() {
  int slide = 0;
  if (glo.oPresentation != nullptr) {
    slide = static_cast<int>(
        std::clamp(qrnVal(glo.oPresentation->tags().Item(tagName::currentSlide)), 0.0, 32767.0));
    glo.oPresentation->tags().Delete(tagName::currentSlide);
  }
  host::View* view = glo.oPowerPoint == nullptr ? nullptr : shownView(*glo.oPowerPoint);
  if (view == nullptr)
    return slide;
  if (slide < 1)
    return view->SlideIndex();
  if (view->SlideIndex() != slide)
    view->GotoSlide(slide);
  return slide;
}

}  // namespace

std::string voteKey(int risk, int assessment) {
  const bool exists = risk >= 0 && risk <= upperBound(glo.risks);
  return recordKey(exists ? glo.item(risk).sortKey : 0, assessment);
}

bool SaveCVotes() {
  readVoteRecords();
  const std::string line = currentRecord();
  const bool afterCutLine = glo.voteRecords.endsInsideLine();
  const bool stored = storeWithRetry(line, afterCutLine);
  if (stored)
    writeVoteDataLog("MATRIX VOTES SAVED TO SLIDE", line);
  else
    g_leftover.push_back({deckName(), voteSlideID(), line});
  if (glo.voteRecords.known())
    glo.voteRecords.append(separatedLine(line, afterCutLine));
  return stored;
}

bool saveLeftoverVotes() {
  return leftoverVotes() == 0 || (storeWithRetry("", false) && leftoverVotes() == 0);
}

int leftoverVotes() {
  return static_cast<int>(std::count_if(g_leftover.begin(), g_leftover.end(), belongsHere));
}

void forgetLeftoverVotes() {
  std::erase_if(g_leftover, belongsHere);
}

void readVoteRecords() {
  if (glo.voteRecords.known())
    return;
  trapErrors(kModule, "LoadVotes", [] {
    glo.voteRecords.assign(voteSlide().tags().Item(tagName::votes));
    addLeftover();
  });
}

void readPostalRecords() {
  if (!glo.postalRecords.known())
    trapErrors(kModule, "LoadPostalVotes",
               [] { glo.postalRecords.assign(voteSlide().tags().Item(tagName::postalVotes)); });
}

bool LoadVotes(const std::string& key) {
  bool found = false;
  trapErrors(kModule, "LoadVotes", [&] {
    readVoteRecords();
    found = loadRecord(glo.voteRecords.lastLine(key));
  });
  return found;
}

bool LoadPostalVotes(const std::string& key) {
  std::vector<int> votes;
  trapErrors(kModule, "LoadPostalVotes", [&] {
    votes = PostalRecords().votesOf(key);
    if (!votes.empty())
      setPostalVotes(votes);
  });
  return !votes.empty();
}

void modifyVoteResult(const std::string& key) {
  trapErrors(
      kModule, "modifyVoteResult",
      [&] {
        const std::string text = voteSlide().tags().Item(tagName::votes);
        if (!text.empty())
          replaceRecord(text, key);
        else if (host::host().dialogs != nullptr)
          host::host().dialogs->MsgBox("Could not find any results for this process.", host::kTitle);
      },
      true);
}

int readCurrentSlide() {
  int slide = 0;
  trapErrors(kModule, "readCurrentSlide", [&] { slide = takeCurrentSlide(); });
  return slide;
}

void ReadActiveKeypads() {
  trapErrors(kModule, "ReadActiveKeypads", [] {
    glo.activeKeypads = keypadList(
        glo.oPresentation == nullptr ? "" : glo.oPresentation->tags().Item(tagName::activeKeypads));
  });
}

void LoadSifterSorterData() {
  glo.sifterLines.clear();
  readVoteRecords();
  const std::string_view text = glo.voteRecords.text();
  for (std::size_t mark = text.find("[SSD]"); mark != std::string_view::npos;) {
    const std::size_t before = text.rfind('\n', mark), end = std::min(text.find('\r', mark), text.size());
    const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
    glo.sifterLines.emplace_back(text.substr(start, end - start));
    mark = text.find("[SSD]", end);
  }
  glo.hasSifterData = !glo.sifterLines.empty();
}

void sizeVoteArrays() {
  const std::size_t size = static_cast<std::size_t>(std::max(glo.maxKeypads, 0)) + 1;
  if (glo.liveVotes.size() < size)
    glo.liveVotes.resize(size, "-100");
  if (glo.keypadIncluded.size() < glo.liveVotes.size())
    glo.keypadIncluded.resize(glo.liveVotes.size(), 1);
}

}  // namespace qrn
