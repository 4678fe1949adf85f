// A folder of its own for each test's controller, and the main thread's loop in small.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "adapters/link/link.h"

namespace qrn::test {

class LinkTest : public ::testing::Test {
 protected:
  LinkTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorin-link-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    options.announceFolder = folder;
    options.extraArguments = {"--port", "0", "--hurry", "--grace", "5"};
    options.arrived = [shared = arrivals] {
      const std::lock_guard<std::mutex> lock(shared->mutex);
      ++shared->count;
      shared->changed.notify_all();
    };
  }
  ~LinkTest() override {
    std::error_code ignored;  // a controller that is ending may take its own files away meanwhile
    std::filesystem::remove_all(folder, ignored);
  }

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
  static void startVote(link::WebSocketLink& of, int options_) {
    for (const std::string& text :
         {std::string("voteType=9"), std::string("preVoteText=How likely?"),
          std::string("voteText=|Rare|Likely"), std::string("postVotedText=Vote Submitted"),
          std::string("limits=0"), std::string("allocation=0"), std::string("points=0"),
          "options=" + std::to_string(options_), std::string("StartFrom=1"), std::string("Clear"),
          std::string("StartVote")})
      of.sendToController(text);
  }

  struct Arrivals {
    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
  };
  const std::shared_ptr<Arrivals> arrivals = std::make_shared<Arrivals>();  // outlives every link
  std::string folder;
  link::LinkOptions options;
  std::vector<std::string> received;
  int losses = 0;
};

}  // namespace qrn::test
