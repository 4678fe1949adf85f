// A folder of its own for each test's controller, and the main thread's loop in small.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "adapters/link/link.h"
#include "support/cases.h"
#include "support/disk.h"

namespace qrn::test {

class LinkTest : public CaseTest {
 protected:
  LinkTest() {
    options.announceFolder = folder;
    options.extraArguments = {"--port", "0", "--hurry", "--grace", "5"};
    options.arrived = [shared = arrivals] {
      const std::lock_guard<std::mutex> lock(shared->mutex);
      ++shared->count;
      shared->changed.notify_all();
    };
  }

  // Listens from the start, and is up.
  struct Linked : link::WebSocketLink {
    explicit Linked(LinkTest& test, bool start = false) : WebSocketLink(test.options) {
      test.listen(*this);
      EXPECT_TRUE(makeLink(start)) << lastError();
    }
  };
  void listen(link::WebSocketLink& to) {
    to.FromQrnCtrl = [this](const std::string& text) { received.push_back(text); };
    to.linkLost = [this] { ++losses; };
  }
  // Drains at each arrival until `done` holds; false when it does not within three seconds.
  bool pump(link::WebSocketLink& of, const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    while (!done()) {
      std::unique_lock<std::mutex> lock(arrivals->mutex);
      if (!arrivals->changed.wait_until(lock, end, [this] { return arrivals->count > 0; }))
        return false;
      arrivals->count = 0;
      lock.unlock();
      of.drain();
    }
    return true;
  }
  // Keypad and vote of every piece received, the last press of a keypad counting.
  std::map<int, std::string> votesReceived() const {
    std::map<int, std::string> votes;
    for (std::string text : received)
      for (std::size_t at = text.find("],"); at != std::string::npos; at = text.find("],")) {
        text.erase(0, at + 2);
        const std::size_t semicolon = text.find(';');
        votes[std::stoi(text)] = text.substr(semicolon + 1, text.find("],") - semicolon - 1);
      }
    return votes;
  }
  static void startVote(link::WebSocketLink& of, int options_) {
    const std::string count = "options=" + std::to_string(options_);
    for (const char* text :
         {"voteType=9", "preVoteText=How likely?", "voteText=|Rare|Likely", "postVotedText=Vote Submitted",
          "limits=0", "allocation=0", "points=0", count.c_str(), "StartFrom=1", "Clear", "StartVote"})
      of.sendToController(text);
  }

  struct Arrivals {
    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
  };
  const std::shared_ptr<Arrivals> arrivals = std::make_shared<Arrivals>();  // outlives every link
  const Folder home;
  const std::string folder = home.path();
  link::LinkOptions options;
  std::vector<std::string> received;
  int losses = 0;
};

}  // namespace qrn::test
