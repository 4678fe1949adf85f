// What arrives from the controller: who is in the room, its settings, names and votes.
#include <algorithm>
#include <cmath>
#include <vector>

#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/windows.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"

namespace qrn {

namespace {

// Pieces between separators; a text without one is one piece.
std::vector<std::string_view> pieces(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> result;
  for (std::size_t start = 0;;) {
    const std::size_t end = text.find(separator, start);
    result.push_back(text.substr(start, end == std::string_view::npos ? end : end - start));
    if (end == std::string_view::npos)
      return result;
    start = end + separator.size();
  }
}

// Whole part of a number, kept inside the 32-bit range.
std::int32_t toLong(std::string_view text) {
  const double value = std::trunc(qrnVal(text));
  return static_cast<std::int32_t>(std::clamp(value, -2147483648.0, 2147483647.0));
}

int to16Bits(std::string_view text) {
  return static_cast<std::int16_t>(toLong(text));
}

bool toBoolean(std::string_view text) {
  return sameWord(text, "true") || (!sameWord(text, "false") && qrnVal(text) != 0);
}

std::string withoutOuterCommas(std::string text) {
  if (!text.empty() && text.front() == ',')
    text.erase(0, 1);
  if (!text.empty() && text.back() == ',')
    text.pop_back();
  return text;
}

// The keypads of the present list that have voted, with commas between.
std::string votedKeypads() {
  std::vector<std::string> voted;
  for (const std::string& keypad : glo.activeKeypads) {
    const std::int32_t number = toLong(keypad);
    if (number < 1 || number > upperBound(glo.liveVotes))
      continue;
    if (qrnVal(glo.liveVotes[static_cast<std::size_t>(number - 1)]) > -1)
      voted.push_back(keypad);
  }
  return joined(voted, ",");
}

// The room's keypads, none without a list.
std::vector<std::string> room() {
  std::vector<std::string> list = glo.activeKeypads;
  std::erase(list, "");
  return list;
}

// Makes `list`, numbers with commas between, the room's keypads.
void keepRoom(const std::string& list) {
  glo.activeKeypads.clear();
  for (const std::string_view keypad : pieces(list, ",")) glo.activeKeypads.emplace_back(keypad);
  if (glo.roomRehearsed || !glo.oPresentation ||
      glo.oPresentation->tags().Item(tagName::activeKeypads) == list)
    return;
  glo.oPresentation->tags().Add(tagName::activeKeypads, list);
}

void takeNames(const std::vector<std::string_view>& lines) {
  const auto start = std::find_if(lines.begin(), lines.end(),
                                  [](std::string_view line) { return sameWord(line, "StartListOfNames"); });
  if (lines.end() - start < 2)
    return;
  glo.keypadNames.assign(1, KeypadName{});
  for (auto line = start + 1; line != lines.end() && !sameWord(*line, "EndListOfNames"); ++line) {
    const std::vector<std::string_view> fields = pieces(*line, ",");
    if (fields.size() != 3)
      continue;
    glo.keypadNames.back() = {toLong(fields[0]), std::string(fields[1]), toLong(fields[2])};
    glo.keypadNames.emplace_back();
  }
}

bool isVoteLine(std::string_view line) {
  return line.find("],") != std::string_view::npos;
}

void freeCursorWhenAsked(const std::vector<std::string_view>& lines) {
  for (const std::string_view line : lines)
    if (!isVoteLine(line) && (sameWord(line, "fc") || sameWord(line, "FreeCursor")) && host::host().windows)
      host::host().windows->freeCursor();
}

// Keys whose value is a plain number.
int* numberOf(const std::string& keyword) {
  static const std::vector<std::pair<const char*, int Session::*>> keys{
      {"KEYPADSNOTVOTEDLO", &Session::keypadsNotVotedLo},
      {"KEYPADSNOTVOTEDHI", &Session::keypadsNotVotedHi},
      {"KEYPADSNOTVOTEDPOPUPON", &Session::keypadsNotVotedPopupOn},
      {"KEYPADSNOTVOTEDHOWMANYTOSHOW", &Session::keypadsNotVotedHowManyToShow},
      {"KEYPADSNOTVOTEDCLOSE", &Session::keypadsNotVotedClose},
      {"KEYPADSNOTVOTEDCLOSEPERCENT", &Session::keypadsNotVotedClosePercent},
      {"NUMKEYPADS", &Session::numKeypads}};
  for (const auto& [name, member] : keys)
    if (keyword == name)
      return &(glo.*member);
  return nullptr;
}

}  // namespace

void comms::DecodeDataFromController(const std::string& data) {
  if (data.empty())
    return;
  try {
    const std::vector<std::string_view> lines = pieces(data, "\r\n");
    if (containsWord(data, "EndListOfNames")) {
      takeNames(lines);
      chk_GotNames = true;
    }
    if (containsWord(data, "BASETYPE"))
      for (const std::string_view line : lines) decodeKeyLine(line);
    freeCursorWhenAsked(lines);
    decodeVotes(lines);
  } catch (const std::exception& error) {
    reportError(error, formName::comms, "DecodeDataFromController");
  }
}

void comms::WriteActiveKeypads(bool fromScan) {
  if (!glo.scanMarked)
    return;
  std::string list = glo.activeKeypadList;
  if (!fromScan)
    list = votedKeypads();
  keepRoom(withoutOuterCommas(list));
  SendCommandToController("ReadActiveKeypads", true, true);
  if (fromScan) {
    glo.activeKeypadList.clear();
    ReadPortInfo();
  }
}

void comms::decodeKeyLine(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos)
    return;
  const std::string keyword = upperCase(line.substr(0, equals));
  const std::string_view value = line.substr(equals + 1);
  if (keyword == "BASETYPE") {
    glo.baseType = value.substr(0, 2) == "FW" ? "FW" : std::string(value);
    if (value != kKeyboardBase)  // the keyboard stands in for the keypads of whatever room it is
      glo.roomRehearsed = value == "REHEARSAL";
  } else if (keyword == "PRESENT")
    takePresent(value);
  else if (keyword == "JOINED")
    takeJoined(value);
  else if (keyword == "OFFSET")
    decodeOffset(value);
  else if (keyword == "USEOFFSETS")
    glo.useOffsets = toBoolean(value);
  else if (int* number = numberOf(keyword)) {
    *number = to16Bits(value);
    // In an open vote as well: the answer may come behind the start of the first one.
    if (number == &glo.keypadsNotVotedHi)
      ResizeVoteArrays(true);
  }
}

// Who is in the room, where the controller knows. Keypads of the list that are not there are not waited for;
// those that are there and not in the list have been left out by the facilitator, except in a rehearsal.
void comms::takePresent(std::string_view value) {
  presentTold_ = true;
  const std::vector<std::string_view> present = pieces(value, ",");
  std::vector<std::string> list = room();
  std::erase_if(list, [&](const std::string& keypad) {
    return std::find(present.begin(), present.end(), keypad) == present.end();
  });
  keepRoom(list.empty() || glo.roomRehearsed ? std::string(value) : joined(list, ","));
}

// Who is there and has not been before.
void comms::takeJoined(std::string_view value) {
  std::vector<std::string> list = room();
  for (const std::string_view keypad : pieces(value, ","))
    if (!keypad.empty() && std::find(list.begin(), list.end(), keypad) == list.end())
      list.emplace_back(keypad);
  std::stable_sort(list.begin(), list.end(),
                   [](const std::string& a, const std::string& b) { return qrnVal(a) < qrnVal(b); });
  keepRoom(joined(list, ","));
}

void comms::decodeOffset(std::string_view value) {
  if (!glo.roomRehearsed)
    ReadActiveKeypads();
  glo.scanMarked = true;
  const std::vector<std::string_view> fields = pieces(value, ",");
  if (fields.size() < 5)
    return;
  const int base = to16Bits(fields[0]), offset = to16Bits(fields[1]);
  if (base < 0)
    return;
  if (glo.baseOffsets.size() <= static_cast<std::size_t>(base))
    glo.baseOffsets.resize(static_cast<std::size_t>(base) + 1);
  glo.baseOffsets[static_cast<std::size_t>(base)] = offset;
  if (fields[4] == "False") {
    const int last = to16Bits(fields[3]) + offset;
    for (int keypad = to16Bits(fields[2]) + offset; keypad <= last; ++keypad) {
      glo.activeKeypadList += std::to_string(keypad) + ",";
      const std::string port =
          std::to_string(keypad - offset) + "," + std::to_string(offset) + "," + std::to_string(base);
      if (std::find(glo.keypadPortInfo.begin(), glo.keypadPortInfo.end(), port) == glo.keypadPortInfo.end())
        glo.keypadPortInfo.push_back(port);
    }
  }
  // Who tells who is there need not be scanned: with nobody there each answer would call for the next one.
  if (!glo.oPresentation || !room().empty() || presentTold_)
    return;
  // With no base in use each answer would call for the next one: an empty scan is told once.
  const bool emptyScan = glo.activeKeypadList.empty();
  if (!emptyScan || !emptyScanWritten_)
    WriteActiveKeypads(true);
  emptyScanWritten_ = emptyScan;
}

// `[1],3;5],4;6`: what stands behind "]," is a keypad and its vote.
void comms::decodeVotes(const std::vector<std::string_view>& lines) {
  for (const std::string_view line : lines) {
    if (!isVoteLine(line))
      continue;
    std::string plain(line);
    std::erase(plain, '[');
    for (const std::string_view piece : pieces(plain, "],")) {
      const std::vector<std::string_view> fields = pieces(piece, ";");
      if (fields.size() == 2 && VoteRx)
        VoteRx(toLong(fields[0]), std::string(fields[1]));
    }
  }
}

}  // namespace qrn
