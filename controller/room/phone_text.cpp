#include "controller/room/phone_text.h"

#include "adapters/link/wire/wire.h"
#include "base/text.h"

namespace qrn::controller {

namespace {

class FrameText {
 public:
  explicit FrameText(const char* word) : text_(word) {}
  FrameText& line(const char* key, std::string_view value) {
    text_ += '\n';
    text_ += key;
    text_ += '=';
    for (std::size_t i = 0; i < value.size(); ++i) {
      const char c = value[i];
      if (c == '\\')
        text_ += "\\\\";
      else if (c == '\n' || (c == '\r' && (i + 1 == value.size() || value[i + 1] != '\n')))
        text_ += "\\n";
      else if (c != '\r')
        text_ += c;
    }
    return *this;
  }
  FrameText& line(const char* key, long value) { return line(key, std::to_string(value)); }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

std::optional<PhoneFrame> readJoin(std::string_view rest) {
  PhoneFrame frame;
  const std::string_view token = takeField(rest, ' ');
  const auto keypad = link::wholeNumber(rest);
  if ((token != "-" && !link::isToken(token)) || !keypad || *keypad > 65535)
    return std::nullopt;
  frame.token = token == "-" ? "" : std::string(token);
  frame.keypad = static_cast<long>(*keypad);
  return frame;
}

std::optional<PhoneFrame> readPress(std::string_view rest) {
  PhoneFrame frame;
  const auto vote = link::wholeNumber(takeField(rest, ' '));
  if (!vote || rest.empty() || rest.find_first_not_of("0123456789|X") != std::string_view::npos)
    return std::nullopt;
  frame.kind = PhoneFrame::Kind::press;
  frame.vote = static_cast<long>(*vote);
  frame.text = rest;
  return frame;
}

const char* kindWord(VoteKind kind) {
  switch (kind) {
    case VoteKind::rank:
      return "rank";
    case VoteKind::tag:
      return "tag";
    case VoteKind::order:
      return "order";
    case VoteKind::allocate:
      return "allocate";
    case VoteKind::scale:
      break;
  }
  return "scale";
}

const char* reasonWord(WaitReason reason) {
  switch (reason) {
    case WaitReason::ended:
      return "ended";
    case WaitReason::keyboard:
      return "keyboard";
    case WaitReason::interrupted:
      return "interrupted";
    case WaitReason::idle:
      break;
  }
  return "idle";
}

// A prompt such as "   Vote Now" is no question; the caption list is told line by line.
void addOptions(FrameText& frame, const VoteSettings& settings) {
  const auto captions = captionsOf(settings);
  if (kindOf(settings) != VoteKind::scale) {
    for (const std::string& caption : captions) frame.line("item", caption);
    return;
  }
  for (const long value : buttonValues(settings))
    frame.line("option", std::to_string(value) + " " + captionFor(settings, captions, value));
}

}  // namespace

std::optional<PhoneFrame> readPhoneFrame(std::string_view frame) {
  if (frame.size() > maxPhoneFrame)
    return std::nullopt;
  const std::string_view first = takeField(frame, ' ');
  if (first == "join")
    return readJoin(frame);
  return first == "press" ? readPress(frame) : std::nullopt;
}

std::string welcomeFrame(long keypad, const std::string& token, const std::string& run) {
  return FrameText("you").line("keypad", keypad).line("token", token).line("run", run).take();
}

std::string fullFrame() {
  return "full";
}

std::string rehearsalFrame(long keypads) {
  return FrameText("rehearsal").line("keypads", keypads).take();
}

std::string voteFrame(long vote, const VoteSettings& settings) {
  FrameText frame("vote");
  frame.line("vote", vote).line("kind", kindWord(kindOf(settings)));
  frame.line("from", lowestVote(settings)).line("to", highestVote(settings));
  frame.line("abstain", mayAbstain(settings) ? 1 : 0);
  frame.line("limit", settings.limits).line("points", settings.points).line("total", settings.allocation);
  frame.line("scale", settings.scale)
      .line("question", settings.preVoteText)
      .line("after", settings.postVotedText);
  addOptions(frame, settings);
  return frame.take();
}

std::string yoursFrame(long vote, const std::string& press, bool counted, bool programLinked) {
  return FrameText("yours")
      .line("vote", vote)
      .line("press", press)
      .line("standing", counted         ? "counted"
                        : programLinked ? "sending"
                                        : "kept")
      .take();
}

std::string waitFrame(WaitReason reason, Result result, const std::string& press) {
  FrameText frame("wait");
  frame.line("why", reasonWord(reason));
  frame.line("result", result == Result::counted ? "counted" : result == Result::late ? "late" : "none");
  return frame.line("press", press).take();
}

std::string refusedFrame(const std::string& reason) {
  return FrameText("refused").line("reason", reason).take();
}

std::string storedFrame() {
  return "stored";
}

}  // namespace qrn::controller
