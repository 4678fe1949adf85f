// The link against controllers that misbehave, and how it starts and shares true ones.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <csignal>
#include <optional>

#include "adapters/link/link_fixture.h"
#include "adapters/link/wire/wire.h"

namespace qrn::test {
namespace {

using tcp = boost::asio::ip::tcp;
namespace websocket = boost::beast::websocket;
using Socket = websocket::stream<tcp::socket>;

// Announces itself, takes as many links as there are scripts, one after another, and does with each what its
// script says.
class FakeController {
 public:
  using Script = std::vector<std::string>;
  FakeController(const std::string& folder, std::vector<Script> scripts) : scripts_(std::move(scripts)) {
    link::Announcement announcement;
    announcement.port = acceptor_.local_endpoint().port();
    announcement.token = std::string(32, 'a');
    writeFile(link::announceFile(folder), link::announcementText(announcement));
    thread_ = std::thread([this] {
      for (const Script& script : scripts_) serve(script);
    });
  }
  ~FakeController() { join(); }
  // What was collected, when the links have gone.
  std::vector<std::string> join() {
    for (std::size_t i = 0; i < scripts_.size() && thread_.joinable(); ++i) callOnce();
    if (thread_.joinable())
      thread_.join();
    return collected_;
  }

 private:
  void serve(const Script& script) {
    try {
      Socket socket(acceptor_.accept());
      socket.accept();
      for (const std::string& line : script) perform(socket, line.substr(0, line.find(' ')), Words(line));
    } catch (const std::exception&) {
      // The link has gone, as some of the tests want it.
    }
  }
  // says TEXT, saystoomuch, hears (anything), hears TEXT (at last), collects COUNT, collects upto TEXT
  void perform(Socket& socket, const std::string& what, const Words& words) {
    if (what == "says")
      socket.write(boost::asio::buffer(words.rest(1)));
    else if (what == "saystoomuch")
      socket.write(boost::asio::buffer(std::string(link::maxMessage + 1, 'x')));
    else if (what == "hears")
      while (read(socket) != words.rest(1) && words.size() > 1) continue;
    else if (words[1] == "upto")
      for (std::string text = read(socket); text != words[2]; text = read(socket)) collected_.push_back(text);
    else
      for (int i = words.number(1); i > 0; --i) collected_.push_back(read(socket));
  }
  static std::string read(Socket& socket) {
    boost::beast::flat_buffer buffer;
    socket.read(buffer);
    return boost::beast::buffers_to_string(buffer.data());
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
  std::vector<std::string> collected_;
  std::thread thread_;
};

class FakedCase : public LinkTest {
 protected:
  FakedCase() {
    // script { ... }: what the controller does with the next link
    on("script", [this](const Words&) { scripts_.push_back(blockLines()); });
    on("timeout",
       [this](const Words& words) { options.connectTimeout = std::chrono::milliseconds(words.number(0)); });
    on("link", [this](const Words&) {
      if (!scripts_.empty())
        controller_.emplace(folder, std::exchange(scripts_, {}));
      if (!link_)
        listen(link_.emplace(options));
      tell(link_->makeLink(false) ? "" : link_->lastError());
    });
    // eager: the handlers drain again, and make the link anew
    on("eager", [this](const Words&) {
      link_->FromQrnCtrl = [this](const std::string& text) {
        received.push_back(text);
        while (received.size() < 2) link_->drain();
      };
      link_->linkLost = [this] {
        ++losses, tell(link_->makeLink(false) ? "linked again" : "not linked again");
      };
    });
    trueCommands();
    on("send", [this](const Words& words) { link_->sendToController(words.rest(0)); });
    on("vote", [this](const Words& words) { startVote(*link_, words.number(0)); });
    on("receives", [this](const Words& words) {
      pump(*link_, [&] { return static_cast<int>(received.size()) >= words.number(0); });
      for (const std::string& text : std::exchange(received, {})) tell(escaped(text));
    });
    on("lost", [this](const Words&) {
      const bool gone = pump(*link_, [&] { return losses > 0; });
      tell(gone ? link_->lastError() : "still linked");
      losses = 0;
    });
    on("losses", [this](const Words&) {
      link_->drain();
      tell(losses);
    });
    // ends [last]: the link goes; what the controller has collected
    on("ends", [this](const Words& words) {
      link_.reset();
      const std::vector<std::string> all = controller_->join();
      for (std::size_t i = words.empty() || all.empty() ? 0 : all.size() - 1; i < all.size(); ++i)
        tell(all[i]);
    });
  }
  void trueCommands() {
    // true REHEARSE [PROGRAM]: what is started, and stays when its link goes
    on("true", [this](const Words& words) {
      options.controllerPath = words.size() > 1 ? folder + "/" + words[1] : QUORIN_CONTROLLER;
      options.rehearse = words.number(0);
      options.keepRunning = true;
    });
    on("argument", [this](const Words& words) {
      options.controllerPath = QUORIN_CONTROLLER;
      options.extraArguments = words;
    });
    on("start", [this](const Words&) {
      link_.emplace(options);
      tell(link_->makeLink(true) ? "" : link_->lastError());
      started_ = link_->controllerProcess();
    });
    on("drop", [this](const Words&) { link_.reset(); });
    on("second", [this](const Words&) {
      link::WebSocketLink second(options);
      tell(second.makeLink(false) ? "linked" : second.lastError());
      tell(second.linked() && second.controllerProcess() != started_ ? "to another" : "");
    });
    on("kill", [this](const Words&) { ::kill(static_cast<pid_t>(started_), SIGTERM); });
  }

 private:
  long started_ = 0;
  std::vector<FakeController::Script> scripts_;
  std::optional<FakeController> controller_;
  std::optional<link::WebSocketLink> link_;  // goes first
};

const bool kRegistered = registerCases<FakedCase>("FakedCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
