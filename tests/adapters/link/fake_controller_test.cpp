// The link against controllers that misbehave.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <fstream>

#include "adapters/link/link_fixture.h"
#include "adapters/link/wire/wire.h"

namespace qrn::test {
namespace {

using tcp = boost::asio::ip::tcp;
namespace websocket = boost::beast::websocket;
using Socket = websocket::stream<tcp::socket>;

constexpr const char* hello = "Hello=quorin-controller,1,0";

// Announces itself, takes as many links as the test has scripts, one after another, and does with each what
// its script says.
class FakeController {
 public:
  using Script = std::function<void(Socket&)>;
  FakeController(const std::string& folder, Script script)
      : FakeController(folder, std::vector<Script>{std::move(script)}) {}
  FakeController(const std::string& folder, std::vector<Script> scripts) : scripts_(std::move(scripts)) {
    link::Announcement announcement;
    announcement.port = acceptor_.local_endpoint().port();
    announcement.token = std::string(32, 'a');
    std::ofstream(link::announceFile(folder)) << link::announcementText(announcement);
    thread_ = std::thread([this] {
      for (const Script& script : scripts_) serve(script);
    });
  }
  ~FakeController() {
    for (std::size_t i = 0; i < scripts_.size(); ++i) callOnce();
    thread_.join();
  }

 private:
  void serve(const Script& script) {
    try {
      Socket socket(acceptor_.accept());
      socket.accept();
      script(socket);
    } catch (const std::exception&) {
      // The link has gone, as some of the tests want it.
    }
  }
  // A caller that goes at once: whoever still waits for the link sees that none will come.
  void callOnce() {
    tcp::socket caller(io_);
    boost::system::error_code ignored;
    caller.connect(acceptor_.local_endpoint(), ignored);
  }
  boost::asio::io_context io_;
  tcp::acceptor acceptor_{io_, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0)};
  std::vector<Script> scripts_;
  std::thread thread_;
};

void write(Socket& socket, const std::string& text) {
  socket.write(boost::asio::buffer(text));
}

std::string read(Socket& socket) {
  boost::beast::flat_buffer buffer;
  socket.read(buffer);
  return boost::beast::buffers_to_string(buffer.data());
}

void readUntil(Socket& socket, const std::string& text) {
  while (read(socket) != text) continue;
}

class FakedController : public LinkTest {};

TEST_F(FakedController, RubbishIsPassedOnAsText) {
  FakeController controller(folder, [](Socket& socket) {
    write(socket, hello);
    for (const char* text : {"fc", "=;=\r\n[[[", "Hello=somebody"}) write(socket, text);
    readUntil(socket, "EndVote");
  });
  Linked link(*this);
  ASSERT_TRUE(pump(link, [&] { return received.size() == 3; }));
  EXPECT_EQ(received, (std::vector<std::string>{"fc", "=;=\r\n[[[", "Hello=somebody"}));
  link.sendToController("EndVote");
}

TEST_F(FakedController, AFrameTooLongEndsTheLinkWithAReason) {
  FakeController controller(folder, [](Socket& socket) {
    write(socket, hello);
    read(socket);
    write(socket, std::string(link::maxMessage + 1, 'x'));
    read(socket);
  });
  Linked link(*this);
  link.sendToController("EndVote");
  ASSERT_TRUE(pump(link, [&] { return losses == 1; }));
  EXPECT_EQ(link.lastError(), "The controller sent a message that is too long.");
  EXPECT_TRUE(received.empty());
}

TEST_F(FakedController, WithoutHelloThereIsNoLinkAndTheWaitIsBounded) {
  options.connectTimeout = std::chrono::milliseconds(200);
  const std::vector<std::pair<const char*, const char*>> cases{
      {"", "The controller does not answer."}, {"Good day", "What answers there is no quorin controller."}};
  for (const auto& [says, reason] : cases) {
    FakeController controller(folder, [says = says](Socket& socket) {
      if (*says != 0)
        write(socket, says);
      read(socket);
    });
    link::WebSocketLink link(options);
    listen(link);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(link.makeLink(false));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));  // far from for ever
    EXPECT_EQ(link.lastError(), reason);
    link.drain();
    EXPECT_EQ(losses, 0) << "what was never made is not lost";
  }
}

// The controller tells keypads that their press counts when it is acknowledged, so every acknowledgement must
// stand for a press that the program has, and none may stand for one that came after the end of its vote.
TEST_F(FakedController, APressIsTakenAndAcknowledgedOnlyWhileItsVoteRuns) {
  std::vector<std::string> heard;
  {
    FakeController controller(folder, [&](Socket& socket) {
      write(socket, hello);
      write(socket, "[9],1;1");  // before any vote
      readUntil(socket, "StartVote");
      write(socket, "[9],2;2");  // of the vote before
      write(socket, "VoteOpened=10");
      write(socket, "[10],3;3");
      for (std::string text = read(socket); text != "EndVote"; text = read(socket)) heard.push_back(text);
      write(socket, "[10],4;4");  // too late
      write(socket, "done");
      readUntil(socket, "bye");
    });
    Linked link(*this);
    startVote(link, 5);
    ASSERT_TRUE(pump(link, [&] { return !received.empty(); }));
    link.sendToController("EndVote");
    ASSERT_TRUE(pump(link, [&] { return received.back() == "done"; }));
    link.sendToController("bye");
  }
  EXPECT_EQ(received, (std::vector<std::string>{"[10],3;3", "done"}));
  ASSERT_FALSE(heard.empty());
  EXPECT_EQ(heard.back(), "Received=4");
}

TEST_F(FakedController, AVoteThatTheControllerHeldOpenGoesOnInsteadOfBeginningAnew) {
  std::vector<std::string> heard;
  {
    FakeController controller(folder, {[](Socket& socket) {
                                         write(socket, hello);
                                         readUntil(socket, "StartVote");
                                         write(socket, "VoteOpened=1");
                                         write(socket, "[1],1;5");
                                         readUntil(socket, "Received=2");
                                       },
                                       [&](Socket& socket) {
                                         write(socket, "Hello=quorin-controller,1,1");
                                         write(socket, "[1],2;3");
                                         for (int i = 0; i < 14; ++i) heard.push_back(read(socket));
                                       }});
    Linked link(*this);
    startVote(link, 5);
    ASSERT_TRUE(pump(link, [&] { return losses == 1; }));
    ASSERT_TRUE(link.makeLink(false)) << link.lastError();
    startVote(link, 5);
    ASSERT_TRUE(pump(link, [&] { return received.size() == 2; }));
    link.sendToController("EndVote");
    startVote(link, 4);
  }
  EXPECT_EQ(received, (std::vector<std::string>{"[1],1;5", "[1],2;3"}));
  ASSERT_EQ(heard.size(), 14U);
  EXPECT_EQ(heard[8], "StartFrom=1");
  EXPECT_EQ(heard[9], "Received=1") << "neither Clear nor StartVote";
  EXPECT_EQ(heard[10], "EndVote");
  EXPECT_EQ(heard[11], "voteType=9");
}

TEST_F(FakedController, AHandlerMayDrainAgainAndMakeTheLinkAnew) {
  FakeController controller(folder, [](Socket& socket) {
    write(socket, hello);
    write(socket, "one");
    write(socket, "two");
    readUntil(socket, "leave");
  });
  options.connectTimeout = std::chrono::milliseconds(200);
  link::WebSocketLink link(options);
  link.FromQrnCtrl = [&](const std::string& text) {
    received.push_back(text);
    while (received.size() < 2) link.drain();
  };
  bool again = true;
  link.linkLost = [&] {
    ++losses;
    again = link.makeLink(false);
  };
  ASSERT_TRUE(link.makeLink(false)) << link.lastError();
  ASSERT_TRUE(pump(link, [&] { return received.size() == 2; }));
  EXPECT_EQ(received, (std::vector<std::string>{"one", "two"}));
  link.sendToController("leave");
  ASSERT_TRUE(pump(link, [&] { return losses == 1; }));
  EXPECT_FALSE(again);
}

}  // namespace
}  // namespace qrn::test
