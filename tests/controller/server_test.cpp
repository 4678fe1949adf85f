// The built controller from outside: who is let in, what the pages are, and a thousand phones that vote.
#include <sys/resource.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <deque>
#include <filesystem>

#include "adapters/link/controller_process.h"
#include "adapters/link/link_fixture.h"

namespace qrn::test {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
namespace websocket = boost::beast::websocket;
using tcp = boost::asio::ip::tcp;
// What a page must not take for its own.
const std::string kAddress = "<vote&\"'>.local";
using Headers = std::vector<std::pair<std::string, std::string>>;

class Phone {
 public:
  explicit Phone(int port) : socket_(io_) {
    socket_.next_layer().connect({boost::asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(port)});
    socket_.handshake("127.0.0.1:" + std::to_string(port), "/phone");
  }
  void say(const std::string& text) { socket_.write(boost::asio::buffer(text)); }
  // The next frame that begins with `word`; "" when the controller has closed the socket.
  std::string hear(const std::string& word) {
    for (;;) {
      beast::flat_buffer buffer;
      beast::error_code error;
      socket_.read(buffer, error);
      if (error)
        return "";
      const std::string text = beast::buffers_to_string(buffer.data());
      if (text.rfind(word, 0) == 0)
        return text;
    }
  }

 private:
  boost::asio::io_context io_;
  websocket::stream<tcp::socket> socket_;
};

class ServerTest : public LinkTest {
 protected:
  void SetUp() override {
    options.controllerPath = QUORIN_CONTROLLER;
    options.address = kAddress;
    options.extraArguments.insert(options.extraArguments.end(), {"--keypads", "1-1000"});
    program = std::make_unique<Linked>(*this, true);
    ASSERT_TRUE(program->linked());
    announced = *link::announcedIn(folder);
  }

  tcp::socket reach(boost::asio::io_context& io) const {
    tcp::socket socket(io);
    socket.connect({boost::asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(announced.port)});
    return socket;
  }
  // One request; of an answer that opens a WebSocket only the head is read.
  http::response<http::string_body> get(const std::string& path, const Headers& headers = {}) {
    boost::asio::io_context io;
    tcp::socket socket = reach(io);
    http::request<http::empty_body> request(http::verb::get, path, 11);
    request.set(http::field::host, "127.0.0.1:" + std::to_string(announced.port));
    for (const auto& [name, value] : headers) request.set(name, value);
    http::write(socket, request);
    beast::flat_buffer buffer;
    http::response_parser<http::string_body> parser;
    http::read_header(socket, buffer, parser);
    if (parser.get().result() != http::status::switching_protocols)
      http::read(socket, buffer, parser);
    return parser.release();
  }
  unsigned int knock(const std::string& path, Headers headers) {
    headers.insert(headers.end(), {{"Connection", "Upgrade"},
                                   {"Upgrade", "websocket"},
                                   {"Sec-WebSocket-Version", "13"},
                                   {"Sec-WebSocket-Key", "dGhlIHNhbXBsZSBub25jZQ=="}});
    return get(path, headers).result_int();
  }

  std::unique_ptr<link::WebSocketLink> program;
  link::Announcement announced;
};

TEST_F(ServerTest, OnlyTheProgramMaySpeakAsTheProgramAndOnlyOurPageAsAPhone) {
  const std::string right = "Bearer " + announced.token;
  const std::string own = "http://127.0.0.1:" + std::to_string(announced.port);
  struct Case {
    const char* path;
    Headers headers;
    unsigned int status;
  };
  const std::vector<Case> cases{
      {"/program", {}, 401},
      {"/program", {{"Authorization", "Bearer " + std::string(32, '0')}}, 401},
      {"/program", {{"Authorization", right}, {"Origin", own}}, 403},
      {"/program", {{"Authorization", right}, {"X-Quorin-Instance", "another"}}, 409},
      {"/phone", {{"Origin", "http://evil.example"}}, 403},
      {"/phone", {{"Origin", own}}, 101},
      {"/phone", {}, 101},
      {"/other", {}, 404}};
  for (const Case& c : cases) EXPECT_EQ(knock(c.path, c.headers), c.status) << c.path;
  EXPECT_TRUE(program->linked());
}

TEST_F(ServerTest, PagesCarryNothingForeign) {
  for (const char* path :
       {"/", "/phone.css", "/phone.js", "/join", "/join.css", "/join.js", "/icon.svg", "/join.svg"}) {
    const auto response = get(path);
    EXPECT_EQ(response.result_int(), 200U) << path;
    EXPECT_GT(response.body().size(), 100U) << path;
    EXPECT_EQ(response.body().find("https://"), std::string::npos) << path;
    EXPECT_EQ(response["Content-Security-Policy"].substr(0, 18), "default-src 'none'") << path;
    const std::string type(response["Content-Type"]), name = path;
    EXPECT_NE(type.find(name.ends_with("js")    ? "javascript"
                        : name.ends_with("css") ? "css"
                        : name.ends_with("svg") ? "svg"
                                                : "html"),
              type.npos);
    for (const char* said :
         {"Cache-Control: no-cache", "X-Content-Type-Options: nosniff", "Referrer-Policy: no-referrer"})
      EXPECT_EQ(response[std::string(said).substr(0, std::string(said).find(':'))],
                std::string(said).substr(std::string(said).find(' ') + 1));
  }
  EXPECT_NE(get("/join").body().find("address=&lt;vote&amp;&quot;&#39;&gt;.local:"), std::string::npos);
  EXPECT_NE(get("/join").body().find("127.0.0.1:" + std::to_string(announced.port)), std::string::npos);
  EXPECT_EQ(get("/join").body().find('%'), std::string::npos) << "a mark was left in the page";
  EXPECT_EQ(get("/../etc/passwd").result_int(), 404U);
}

// A dark frame of seven modules stands in three corners of the code, a white one inside it, and all around
// nothing.
TEST_F(ServerTest, TheCodeIsWholeAndHasRoomAroundIt) {
  const std::string svg = get("/join.svg").body();
  const int size = std::stoi(svg.substr(svg.find("viewBox=\"0 0 ") + 13));
  const auto dark = [&](int x, int y) {
    return svg.find("M" + std::to_string(x) + " " + std::to_string(y) + "h1v1h-1z") != std::string::npos;
  };
  for (int i = 0; i < 7; ++i)
    for (const int at : {4, size - 11})
      EXPECT_TRUE(dark(at + i, 4) && dark(4, at + i) && dark(4 + i, at + 6)) << at + i;
  for (int i = 0; i < size; ++i)
    EXPECT_FALSE(dark(3, i) || dark(size - 4, i) || dark(i, 3) || dark(i, size - 4)) << i;
  EXPECT_FALSE(dark(5, 5) || dark(9, 5) || dark(size - 6, 5));
}

TEST_F(ServerTest, AConnectionServesAsManyPagesAsItsBrowserAsksFor) {
  boost::asio::io_context io;
  tcp::socket socket = reach(io);
  beast::flat_buffer buffer;
  for (const char* wish : {"keep-alive", "keep-alive", "close"}) {
    http::request<http::empty_body> request(http::verb::get, "/icon.svg", 11);
    request.set(http::field::host, "127.0.0.1");
    request.set(http::field::connection, wish);
    http::write(socket, request);
    http::response<http::string_body> response;
    http::read(socket, buffer, response);
    EXPECT_EQ(response.result_int(), 200U);
    EXPECT_EQ(response.keep_alive(), std::string(wish) == "keep-alive");
  }
  beast::error_code error;
  char more = 0;
  socket.read_some(boost::asio::buffer(&more, 1), error);
  EXPECT_EQ(error, boost::asio::error::eof);
}

TEST_F(ServerTest, APhoneVotesChangesItsMindAndComesBackAfterTheControllerWasReplaced) {
  std::string token;
  {
    Phone phone(announced.port);
    phone.say("join - 0");
    const std::string welcome = phone.hear("you");
    ASSERT_EQ(welcome.find("you\nkeypad=1\ntoken="), 0U) << welcome;
    token = welcome.substr(19, 32);
    program->describeVote("Likelihood");
    startVote(*program, 5);
    EXPECT_NE(phone.hear("vote").find("\nscale=Likelihood\nquestion=How likely?\n"), std::string::npos);
    for (const std::string vote : {"4", "2"}) {
      phone.say("press 1 " + vote);
      ASSERT_TRUE(pump(*program, [&] { return !received.empty() && received.back() == "[1],1;" + vote; }));
      EXPECT_EQ(phone.hear("yours"), "yours\nvote=1\npress=" + vote + "\nstanding=counted");
    }
    program->sendToController("EndVote");
    EXPECT_EQ(phone.hear("wait\nwhy=ended"), "wait\nwhy=ended\nresult=counted\npress=2");
  }
  kill(static_cast<pid_t>(program->controllerProcess()), SIGKILL);
  ASSERT_TRUE(pump(*program, [&] { return losses == 1; }));
  ASSERT_TRUE(program->makeLink(true)) << program->lastError();
  Phone other(link::announcedIn(folder)->port);
  other.say("join - 1");
  EXPECT_EQ(other.hear("you").find("you\nkeypad=2\n"), 0U) << "keypad 1 is kept for its phone";
  Phone back(link::announcedIn(folder)->port);
  back.say("join " + token + " 0");
  EXPECT_EQ(back.hear("you").find("you\nkeypad=1\n"), 0U);
}

TEST_F(ServerTest, TheProgramHearsHowManyPhonesAreInAndSaysWhereTheyJoin) {
  int told = 0;
  program->roomChanged = [&] { ++told; };
  const auto hear = [&](const std::function<bool(const host::RoomState&)>& wanted) {
    return pump(*program, [&] { return wanted(program->room()); });
  };
  const std::string port = ":" + std::to_string(announced.port);
  ASSERT_TRUE(hear([](const host::RoomState& room) { return !room.page.empty(); })) << "told at once";
  EXPECT_EQ(program->room().address, kAddress + port);
  EXPECT_EQ(program->room().page, "http://127.0.0.1" + port + "/join");
  {
    Phone phone(announced.port);
    phone.say("join - 0");
    EXPECT_TRUE(hear([](const host::RoomState& room) { return room.phones == 1; }));
  }
  EXPECT_TRUE(hear([](const host::RoomState& room) { return room.phones == 0; }));
  EXPECT_GE(told, 3);
  for (const std::string& text : received) EXPECT_NE(text.substr(0, 5), "Room=") << "the link's own";

  const host::JoinAddress other = program->room().candidates.back();
  program->chooseAddress(other.host);
  const auto chosen = [&](const host::RoomState& room) { return room.address == other.host + port; };
  EXPECT_TRUE(hear(chosen));
  EXPECT_NE(get("/room").body().find("address=" + other.host + port + "\n"), std::string::npos);
  kill(static_cast<pid_t>(program->controllerProcess()), SIGTERM);
  ASSERT_TRUE(pump(*program, [&] { return losses == 1; }));
  EXPECT_FALSE(std::filesystem::exists(folder + "/controller.announce"));
  ASSERT_TRUE(program->makeLink(true)) << program->lastError();
  EXPECT_TRUE(hear([&](const host::RoomState& room) { return room.address.find(other.host) == 0; }))
      << "the choice holds for the next controller too";
}

TEST_F(ServerTest, HostileFramesCostTheirSenderTheSocketAndNobodyElse) {
  Phone good(announced.port);
  good.say("join - 0");
  ASSERT_NE(good.hear("you"), "");
  for (const std::string& frame : {std::string("press 1 1"), std::string("{\"a\":1}"), std::string(5000, 'x'),
                                   std::string("join - 0\njoin - 0")}) {
    Phone bad(announced.port);
    try {
      bad.say(frame);
    } catch (const std::exception&) {
      continue;  // closed before all of it was out
    }
    EXPECT_EQ(bad.hear("you"), "") << frame.substr(0, 40);
  }
  Phone flood(announced.port);
  flood.say("join - 0");
  try {
    for (int i = 0; i < 2000; ++i) flood.say("press 0 1");
  } catch (const std::exception&) {
    // closed in the midst of it
  }
  while (flood.hear("refused") != "") continue;
  startVote(*program, 5);
  ASSERT_NE(good.hear("vote"), "");
  good.say("press 1 3");
  EXPECT_TRUE(pump(*program, [&] { return !received.empty() && received.back() == "[1],1;3"; }));
  EXPECT_NE(good.hear("yours"), "");
  program->sendToController("preVoteText=" + std::string(500000, 'x'));
  for (int i = 0; i < 30; ++i) program->sendToController("StartVote");
  EXPECT_TRUE(pump(*program, [&] { return program->room().phones == 0; }));  // who does not read is dropped
}

TEST_F(ServerTest, ARoomWithoutItsProgramGoesOnForATimeAndWhoSaysNothingDoesNot) {
  program.reset();
  options.keepRunning = true;
  options.extraArguments = {"--port",    "0", "--end-with-link", "--grace", "1", "--patience", "1",
                            "--silence", "1", "--max-clients",   "0"};
  auto away = std::make_unique<Linked>(*this, true);
  announced = *link::announcedIn(folder);
  Phone phone(announced.port);
  phone.say("join - 0");
  startVote(*away, 5);
  ASSERT_NE(phone.hear("vote"), "");
  away.reset();
  usleep(100000);
  phone.say("press 1 3");
  EXPECT_EQ(phone.hear("yours"), "yours\nvote=1\npress=3\nstanding=kept");
  boost::asio::io_context io;
  tcp::socket mute = reach(io);
  away = std::make_unique<Linked>(*this);
  Phone silent(announced.port);
  silent.say("join - 0");
  for (const long there : {2, 0}) EXPECT_TRUE(pump(*away, [&] { return away->room().phones == there; }));
  char more = 0;
  EXPECT_THROW(mute.read_some(boost::asio::buffer(&more, 1)), std::exception);
  EXPECT_EQ(get("/icon.svg").result_int(), 200U) << "the grace is over, but there is a program";
  away.reset();
  for (int i = 0; i < 30 && link::announcedIn(folder); ++i) usleep(100000);
  EXPECT_FALSE(link::announcedIn(folder));
}

TEST_F(ServerTest, EveryPressOfAThousandPhonesArrivesAndCounts) {
  constexpr std::size_t kPhones = 1000;
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  std::deque<Phone> phones;
  for (std::size_t i = 0; i < kPhones; ++i) phones.emplace_back(announced.port).say("join - 0");
  startVote(*program, 5);
  for (std::size_t i = 0; i < kPhones; ++i) {
    ASSERT_NE(phones[i].hear("vote"), "") << i;
    phones[i].say("press 1 " + std::to_string(1 + i % 5));
  }
  ASSERT_TRUE(pump(*program, [&] { return votesReceived().size() == kPhones; }));
  for (std::size_t i = 0; i < kPhones; ++i)
    ASSERT_EQ(phones[i].hear("yours"),
              "yours\nvote=1\npress=" + std::to_string(1 + i % 5) + "\nstanding=counted");
  std::map<std::string, std::size_t> byVote;
  for (const auto& [keypad, vote] : votesReceived()) ++byVote[vote];
  EXPECT_EQ(byVote,
            (std::map<std::string, std::size_t>{{"1", 200}, {"2", 200}, {"3", 200}, {"4", 200}, {"5", 200}}));
}

}  // namespace
}  // namespace qrn::test
