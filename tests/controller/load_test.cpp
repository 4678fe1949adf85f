// A thousand phones on one controller: every press arrives, and every phone learns that it counts.
#include <sys/resource.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <iostream>
#include <map>

#include "adapters/link/controller_process.h"
#include "adapters/link/link_fixture.h"

namespace qrn::test {
namespace {

namespace beast = boost::beast;
using tcp = boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr std::size_t phones = 1000;

struct Tally {
  std::size_t joined = 0, asked = 0, counted = 0, failed = 0;
};

// Joins, presses as soon as it is asked, and then waits to hear that it counts.
class LoadPhone : public std::enable_shared_from_this<LoadPhone> {
 public:
  LoadPhone(boost::asio::io_context& io, Tally& tally) : socket_(io), tally_(tally) {}
  void run(int port) {
    const auto self = shared_from_this();
    socket_.next_layer().async_connect(
        {boost::asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(port)},
        [self](beast::error_code error) {
          if (error)
            return self->fail();
          self->socket_.async_handshake("127.0.0.1", "/phone", [self](beast::error_code refused) {
            if (refused)
              return self->fail();
            self->say("join - 0");
            self->read();
          });
        });
  }

 private:
  void say(const std::string& text) {
    beast::error_code error;
    socket_.write(boost::asio::buffer(text), error);  // a few bytes into an empty socket: does not wait
    if (error)
      fail();
  }
  void read() {
    socket_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
      if (error)
        return;
      self->heard(beast::buffers_to_string(self->buffer_.data()));
      self->buffer_.clear();
      self->read();
    });
  }
  void heard(const std::string& text) {
    if (text.rfind("you\n", 0) == 0) {
      keypad_ = std::stol(text.substr(11));
      ++tally_.joined;
    } else if (text.rfind("vote\n", 0) == 0) {
      ++tally_.asked;
      say("press 1 " + std::to_string(1 + keypad_ % 5));
    } else if (text.find("standing=counted") != std::string::npos) {
      ++tally_.counted;
    }
  }
  void fail() { ++tally_.failed; }

  beast::websocket::stream<tcp::socket> socket_;
  beast::flat_buffer buffer_;
  Tally& tally_;
  long keypad_ = 0;
};

class LoadTest : public LinkTest {
 protected:
  // Runs the phones and the program in turn until `done`; milliseconds that it took, or -1 after 20 seconds.
  long run(const std::function<bool()>& done) {
    const auto start = Clock::now();
    while (!done()) {
      if (Clock::now() - start > std::chrono::seconds(20))
        return -1;
      io.run_for(std::chrono::milliseconds(1));
      io.restart();
      program->drain();
    }
    return static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
  }
  std::map<long, std::string> votesReceived() const {
    std::map<long, std::string> votes;
    for (std::string text : received)
      for (std::size_t at = text.find("],"); at != std::string::npos; at = text.find("],")) {
        text.erase(0, at + 2);
        votes[std::stol(text)] = text.substr(text.find(';') + 1, 1);
      }
    return votes;
  }

  boost::asio::io_context io;
  std::unique_ptr<link::WebSocketLink> program;
};

TEST_F(LoadTest, EveryPressOfAThousandPhonesArrivesAndCounts) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  options.controllerPath = QUORIN_CONTROLLER;
  options.extraArguments.insert(options.extraArguments.end(), {"--keypads", "1-1000"});
  program = std::make_unique<link::WebSocketLink>(options);
  listen(*program);
  ASSERT_TRUE(program->makeLink(true)) << program->lastError();

  Tally tally;
  const int port = link::announcedIn(folder)->port;
  for (std::size_t i = 0; i < phones; ++i) std::make_shared<LoadPhone>(io, tally)->run(port);
  const long joining = run([&] { return tally.joined + tally.failed == phones; });
  ASSERT_EQ(tally.joined, phones) << tally.failed << " failed";

  startVote(*program, 5);
  const long voting = run([&] { return tally.counted == phones; });
  EXPECT_EQ(tally.asked, phones);
  EXPECT_EQ(tally.counted, phones);
  program->sendToController("EndVote");
  const auto votes = votesReceived();
  ASSERT_EQ(votes.size(), phones);
  for (const auto& [keypad, vote] : votes) EXPECT_EQ(vote, std::to_string(1 + keypad % 5)) << keypad;
  std::cout << phones << " phones: all joined after " << joining << " ms, all votes counted " << voting
            << " ms after the start of the vote, in " << received.size() << " blocks\n";
}

}  // namespace
}  // namespace qrn::test
