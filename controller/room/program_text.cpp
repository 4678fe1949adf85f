#include "controller/room/program_text.h"

#include <algorithm>
#include <map>
#include <optional>

#include "adapters/link/wire/wire.h"
#include "base/text.h"

namespace qrn::controller {

namespace {

// Name and value at the first "=", the name in lower case.
std::optional<std::pair<std::string, std::string_view>> setting(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos)
    return std::nullopt;
  return std::make_pair(lowerCase(text.substr(0, equals)), text.substr(equals + 1));
}

void takeNumber(std::string_view text, long& into) {
  const bool negative = link::startsWith(text, "-");
  const auto number = link::wholeNumber(negative ? text.substr(1) : text);
  if (number && *number <= 1000000)
    into = static_cast<long>(negative ? -*number : *number);
}

std::vector<long> allowedVotes(std::string_view list) {
  std::vector<long> values;
  while (!list.empty() && values.size() < static_cast<std::size_t>(maxButtons)) {
    const std::string_view piece = list.substr(0, list.find(','));
    list.remove_prefix(std::min(list.size(), piece.size() + 1));
    long value = -1;
    takeNumber(piece, value);
    if (value >= 0 && std::count(values.begin(), values.end(), value) == 0)
      values.push_back(value);
  }
  return values;
}

std::string yes(bool value) {
  return value ? "True" : "False";
}

}  // namespace

Command commandOf(std::string_view text) {
  static const std::map<std::string, Command> whole{{"clear", Command::clear},
                                                    {"startvote", Command::startVote},
                                                    {"endvote", Command::endVote},
                                                    {"kboard", Command::keyboardOn},
                                                    {"kboard-off", Command::keyboardOff},
                                                    {"baseinfo", Command::baseInfo},
                                                    {"getnames", Command::getNames},
                                                    {"votesstored", Command::votesStored},
                                                    {"endwizard", Command::noted},
                                                    {"readactivekeypads", Command::noted},
                                                    {"showaudio", Command::noted}};
  if (const auto found = setting(text)) {
    VoteSettings unused;
    if (found->first == "addtask" || found->first == "deletetask")
      return Command::noted;
    return applySetting(text, unused) ? Command::setting : Command::unknown;
  }
  const auto it = whole.find(lowerCase(text.substr(0, 32)));
  return it == whole.end() ? Command::unknown : it->second;
}

bool applySetting(std::string_view text, VoteSettings& settings) {
  static const std::map<std::string, long VoteSettings::*> numbers{
      {"votetype", &VoteSettings::voteType},     {"limits", &VoteSettings::limits},
      {"allocation", &VoteSettings::allocation}, {"points", &VoteSettings::points},
      {"options", &VoteSettings::options},       {"startfrom", &VoteSettings::startFrom}};
  static const std::map<std::string, std::string VoteSettings::*> texts{
      {"scale", &VoteSettings::scale},
      {"prevotetext", &VoteSettings::preVoteText},
      {"votetext", &VoteSettings::voteText},
      {"postvotedtext", &VoteSettings::postVotedText}};
  const auto found = setting(text);
  if (!found)
    return false;
  const auto& [name, value] = *found;
  if (const auto number = numbers.find(name); number != numbers.end())
    takeNumber(value, settings.*(number->second));
  else if (const auto words = texts.find(name); words != texts.end())
    settings.*(words->second) = value;
  else if (name == "abstain")
    settings.abstain = lowerCase(value) == "true" || value == "-1" || value == "1";
  else if (name == "pcaoptions")
    settings.allowedVotes = allowedVotes(value);
  else
    return false;
  return true;
}

std::string joinedText(const KeyBlock& block) {
  return "BASETYPE=" + block.baseType + "\r\nNUMKEYPADS=" + std::to_string(block.keypads) +
         "\r\nJOINED=" + joined(block.joined, ",") + "\r\n";
}

std::string keyBlockText(const KeyBlock& block) {
  std::string text;
  const auto line = [&](const char* key, const std::string& value) {
    text += std::string(key) + "=" + value + "\r\n";
  };
  line("BASETYPE", block.baseType);
  line("MAX_KPADS", std::to_string(block.highest));
  line("KEYPADSNOTVOTEDLO", std::to_string(block.lowest));
  line("KEYPADSNOTVOTEDHI", std::to_string(block.highest));
  line("KEYPADSNOTVOTEDPOPUPON", std::to_string(block.popupOn));
  line("KEYPADSNOTVOTEDHOWMANYTOSHOW", std::to_string(block.howManyToShow));
  line("KEYPADSNOTVOTEDCLOSE", block.closePercent > 0 ? "1" : "0");
  line("KEYPADSNOTVOTEDCLOSEPERCENT", std::to_string(block.closePercent));
  line("NUMKEYPADS", std::to_string(block.keypads));
  line("PRESENT", joined(block.present, ","));
  if (!block.joined.empty())
    line("JOINED", joined(block.joined, ","));
  for (const Base& base : block.bases)
    line("OFFSET", std::to_string(base.number) + "," + std::to_string(base.offset) + "," +
                       std::to_string(base.first) + "," + std::to_string(base.last) + "," + yes(!base.used));
  line("SCROLLINGDISPLAY", "False");
  line("USEOFFSETS", yes(block.useOffsets));
  return text;
}

std::string nameListText(const std::vector<std::pair<long, std::string>>& names) {
  std::string text = "StartListOfNames\r\n";
  for (const auto& [keypad, name] : names) {
    std::string clean = name;
    for (char& c : clean)
      if (c == ',' || c == '\r' || c == '\n')
        c = ' ';
    text += std::to_string(keypad) + "," + clean + "," + std::to_string(keypad) + "\r\n";
  }
  return text + "EndListOfNames";
}

std::string pressText(long vote, const std::vector<Press>& presses) {
  std::string text = "[" + std::to_string(vote);
  for (const Press& press : presses) text += "]," + std::to_string(press.keypad) + ";" + press.vote;
  return text;
}

}  // namespace qrn::controller
