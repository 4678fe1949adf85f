// Votes told as conversations: a facilitator at the keys, a controller that answers, a whole run.
#pragma once

#include <deque>

#include "controller/room/room.h"
#include "host/windows.h"
#include "support/run_case.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::test {

// The controller's own room at the other end of the link, in this process.
class RoomLink : public host::ControllerLink {
 public:
  explicit RoomLink(controller::RoomOptions options);
  bool makeLink(bool) override { return true; }
  bool linked() const override { return true; }
  bool controllerReady() override { return true; }
  void sendToController(std::string_view text) override {
    sent.emplace_back(text);
    room.fromProgram(text);
  }
  controller::Room room;
  std::vector<std::string> sent;

 private:
  void fetch();
  long frames_ = 0, tokens_ = 0;
};

class VoteCase : public RunCase {
 protected:
  VoteCase();
  ~VoteCase() override;
  void TestBody() override;
  xyVoteRuntime& runtime() { return world.forms.as<xyVoteRuntime>("xyVoteRuntime"); }

 private:
  void runCommands();
  void formCommands();
  void linkCommands();
  void roomCommands();
  void countCommands();
  void keypadCommands();
  void resumeCommands();
  void key(const std::string& words);
  void press(int keypad, const std::string& vote);
  void ordinary(const std::string& votes);
  void opened();
  void tellSaved(std::size_t from);
  void tellSent();
  void defineGraph(const std::string& does);
  void manyItems();
  void visit(std::size_t votes);

  std::map<std::size_t, std::function<void()>> scripts_;  // by the number of the vote
  std::size_t opens_ = 0;
  std::string before_;  // the slide's tags
  std::string painted_, cut_;
  TellingWindows windows_{[this](const std::string& text) { tell(text); }};
  uctlKpadsNotVoted missing_;
  std::unique_ptr<RoomLink> room_;
  std::unique_ptr<host::Timer> closer_;
};

}  // namespace qrn::test
