#include "controller/server/server.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>

#include "base/disk.h"
#include "controller/room/system_cards.h"
#include "controller/server/network_watch.h"
#include "controller/server/sessions.h"

namespace qrn::controller {

namespace {

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A file that only this user can read, there as a whole or not at all.
bool writePrivate(const std::string& path, const std::string& text) {
  try {
    saveText(path, text, {"", S_IRUSR | S_IWUSR});
    return true;
  } catch (const HostError&) {
    return false;
  }
}

}  // namespace

Moment now() {
  using namespace std::chrono;
  return {duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count(),
          duration_cast<seconds>(system_clock::now().time_since_epoch()).count()};
}

Server::Server(ServerOptions options) : options_(std::move(options)), room_(options_.room, ports()) {
  listen();
  loadState();
  announce();
}

Server::~Server() {
  stopping_ = true;
  withdraw();
}

RoomPorts Server::ports() {
  RoomPorts ports;
  ports.programWaiting = [this] {
    if (const auto program = program_.lock())
      program->write();
  };
  ports.toPhone = [this](PhoneId phone, const SharedText& text) {
    const auto it = phones_.find(phone);
    if (it == phones_.end())
      return;
    if (const auto session = it->second.lock())
      session->send(text);
  };
  ports.log = [this](const std::string& line) { log(line); };
  ports.keypadGiven = [this](long keypad, const std::string& token) { keepState(keypad, token); };
  ports.phonesChanged = [this] { tellRoomSoon(); };
  ports.newToken = [] { return link::randomToken(); };
  ports.now = now;
  return ports;
}

void Server::listen() {
  const auto address = asio::ip::make_address(options_.bind);
  tcp::endpoint endpoint(address, static_cast<std::uint16_t>(options_.port));
  acceptor_.open(endpoint.protocol());
  acceptor_.set_option(tcp::acceptor::reuse_address(true));
  boost::system::error_code error;
  acceptor_.bind(endpoint, error);
  if (error && options_.portOrAny) {
    endpoint.port(0);
    acceptor_.bind(endpoint, error);
  }
  if (error)
    throw boost::system::system_error(error, "cannot listen on port " + std::to_string(endpoint.port()));
  acceptor_.listen(1024);
  options_.port = acceptor_.local_endpoint().port();
}

void Server::run() {
  signals_.add(SIGTERM);
  signals_.add(SIGINT);
  signals_.add(SIGHUP);
  signals_.async_wait([this](boost::system::error_code, int) { stop(); });
  if (options_.endWithLink)
    armGrace();
  if (const auto watch = networkWatch()) {
    networkWatch_.assign(*watch);
    watchNetwork();
  }
  accept();
  io_.run();
}

void Server::accept() {
  acceptor_.async_accept([this](boost::system::error_code error, tcp::socket socket) {
    if (!error) {
      accepted(std::move(socket));
      return accept();
    }
    // No more descriptors, say: wait until some have been given back.
    acceptPause_.expires_after(std::chrono::milliseconds(100));
    acceptPause_.async_wait([this](boost::system::error_code) { accept(); });
  });
}

void Server::accepted(tcp::socket socket) {
  beast::error_code gone;
  const auto peer = socket.remote_endpoint(gone);
  const auto taken = static_cast<std::size_t>(seats_.use_count() - 1);
  // The program's side always finds a seat: it comes from this machine.
  if (taken < options_.maxClients || peer.address().is_loopback())
    std::make_shared<HttpSession>(*this, seats_, std::move(socket))->run();
}

PhoneId Server::addPhone(const std::shared_ptr<PhoneSession>& phone) {
  phones_[++lastPhone_] = phone;
  return lastPhone_;
}

void Server::removePhone(PhoneId phone) {
  phones_.erase(phone);
  room_.phoneGone(phone);
}

void Server::setProgram(const std::shared_ptr<ProgramSession>& program, const std::string& instance) {
  if (const auto former = program_.lock())
    former->close();
  program_ = program;
  programInstance_ = instance;
  log("the program has linked up");
}

void Server::programGone() {
  // A newer link of the program may have taken over, and a refused one never was the program's.
  if (stopping_ || !program_.expired() || !room_.programLinked())
    return;
  room_.programGone();
  log("the program has gone");
  if (options_.endWithLink)
    armGrace();
}

void Server::armRehearsal() {
  const auto due = room_.nextDue();
  if (!due)
    return;
  rehearsalTimer_.expires_after(std::chrono::milliseconds(std::max<std::int64_t>(0, *due - now().ms)));
  rehearsalTimer_.async_wait([this](boost::system::error_code error) {
    if (error)
      return;
    room_.rehearse();
    armRehearsal();
  });
}

void Server::armGrace() {
  graceTimer_.expires_after(options_.grace);
  graceTimer_.async_wait([this](boost::system::error_code error) {
    if (error || room_.programLinked())
      return;
    log("no program; ending");
    stop();
  });
}

void Server::stop() {
  withdraw();
  io_.stop();
}

void Server::announce() const {
  link::Announcement announcement;
  announcement.port = options_.port;
  announcement.token = options_.token;
  announcement.process = getpid();
  announcement.rehearse = static_cast<int>(options_.room.rehearse);
  announcement.seed = options_.room.seed;
  announcement.join = roomState().page;
  const std::string text = link::announcementText(announcement);
  if (options_.announce == "-") {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
  } else if (!options_.announce.empty() && !writePrivate(options_.announce, text)) {
    log("cannot write " + options_.announce);
  }
}

void Server::withdraw() const {
  const auto there = link::readAnnouncement(readFile(options_.announce));
  if (there && there->token == options_.token)
    unlink(options_.announce.c_str());
}

void Server::loadState() {
  if (options_.state.empty())
    return;
  room_.roster().readState(readFile(options_.state), now());
  if (!writePrivate(options_.state, room_.roster().stateText()))
    log("cannot write " + options_.state);
}

void Server::keepState(long keypad, const std::string& token) const {
  if (options_.state.empty())
    return;
  const std::string line = Roster::stateLine(keypad, token, now().seconds);
  const int file = open(options_.state.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
    log("cannot write " + options_.state);
  close(file);
}

host::RoomState Server::roomState() const {
  const std::string port = ":" + std::to_string(options_.port);
  host::RoomState state;
  state.candidates = joinAddresses(options_.bind, options_.address, networkCards());
  const std::string host = joinHost(state.candidates, chosenAddress_);
  state.address = host.empty() ? "" : host + port;
  state.page = "http://" + (options_.bind == everyAddress ? "127.0.0.1" : options_.bind) + port + "/join";
  state.phones = static_cast<long>(room_.phoneCount());
  state.rehearse = room_.rehearsing();
  state.takesPhones = room_.takesPhones();
  return state;
}

void Server::chooseAddress(const std::string& host) {
  chosenAddress_ = host;
  tellRoom(true);
}

void Server::tellRoom(bool anyhow) {
  const std::string text = link::roomText(roomState());
  if (!anyhow && text == roomTold_)
    return;
  roomTold_ = text;
  room_.tellProgram(text);
}

// Phones come by the hundred, and a network that changes does so in several steps.
void Server::tellRoomSoon() {
  if (tellingSoon_)
    return;
  tellingSoon_ = true;
  tellTimer_.expires_after(std::chrono::milliseconds(200));
  tellTimer_.async_wait([this](boost::system::error_code) {
    tellingSoon_ = false;
    tellRoom(false);
  });
}

void Server::watchNetwork() {
  networkWatch_.async_read_some(asio::buffer(networkNews_),
                                [this](boost::system::error_code error, std::size_t) {
                                  // Too much news at once is news as well.
                                  if (error && error != asio::error::no_buffer_space)
                                    return;
                                  tellRoomSoon();
                                  watchNetwork();
                                });
}

void Server::logPlace() const {
  const host::RoomState state = roomState();
  log("listening on port " + std::to_string(options_.port) +
      (!state.takesPhones      ? ""
       : state.address.empty() ? "; phones cannot reach this machine"
                               : "; phones join at http://" + state.address));
}

void Server::log(const std::string& line) const {
  const std::time_t seconds = std::time(nullptr);
  std::tm parts{};
  localtime_r(&seconds, &parts);
  char stamp[32] = "";
  std::strftime(stamp, sizeof stamp, "%H:%M:%S", &parts);
  std::fprintf(stderr, "%s %s\n", stamp, line.c_str());
}

}  // namespace qrn::controller
