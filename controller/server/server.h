// The server around the room: one port, one thread, pages and sockets.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/link/wire/wire.h"
#include "controller/room/room.h"
#include "controller/server/net.h"

namespace qrn::controller {

class PhoneSession;
class ProgramSession;

struct ServerOptions {
  RoomOptions room;
  std::string bind = "0.0.0.0";
  int port = 0;
  bool portOrAny = false;  // takes any free port when `port` is in use
  std::string token;       // of the program's side
  std::string announce;    // file, "-" for the standard output, "" for none
  std::string state;       // file of the keypad numbers, "" for none
  std::string address;     // host name or address to show; "" to find it out
  std::size_t maxClients = 5000;
  bool endWithLink = false;
  std::chrono::seconds grace{30};     // without a program, when it ends with the link
  std::chrono::seconds patience{15};  // for a request
  std::chrono::seconds silence{40};   // until a phone that answers no ping is gone
};

class Server {
 public:
  explicit Server(ServerOptions options);  // throws boost::system::system_error when it cannot listen
  ~Server();
  void run();  // until a signal, or until the program has been gone for the grace time

  Room& room() { return room_; }
  const ServerOptions& options() const { return options_; }
  void log(const std::string& line) const;

  // With the addresses as they are now.
  host::RoomState roomState() const;
  // Another of the candidates, for as long as there is such an address; "": the likeliest.
  void chooseAddress(const std::string& host);
  // Tells the program when something has changed since the last time, or at any rate.
  void tellRoom(bool anyhow);
  void logPlace() const;

  PhoneId addPhone(const std::shared_ptr<PhoneSession>& phone);
  void removePhone(PhoneId phone);
  bool hasProgram() const { return !program_.expired(); }
  const std::string& programInstance() const { return programInstance_; }
  // Takes the place of an earlier link of the same program.
  void setProgram(const std::shared_ptr<ProgramSession>& program, const std::string& instance);
  void programGone();
  void armRehearsal();  // after anything that may have begun or ended a vote

 private:
  RoomPorts ports();
  void listen();
  void accept();
  void accepted(tcp::socket socket);
  void announce() const;
  void withdraw() const;
  void loadState();
  void keepState(long keypad, const std::string& token) const;
  void armGrace();
  void tellRoomSoon();
  void watchNetwork();
  void stop();

  ServerOptions options_;
  Room room_;
  bool stopping_ = false;
  const std::shared_ptr<const int> seats_ = std::make_shared<const int>();
  PhoneId lastPhone_ = 0;
  std::map<PhoneId, std::weak_ptr<PhoneSession>> phones_;
  std::weak_ptr<ProgramSession> program_;
  std::string programInstance_;
  std::string chosenAddress_, roomTold_;
  bool tellingSoon_ = false;
  std::array<char, 4096> networkNews_{};
  // Last, so that the connections, which live in its handlers, go while the rest is still there.
  asio::io_context io_;
  tcp::acceptor acceptor_{io_};
  asio::signal_set signals_{io_};
  asio::steady_timer acceptPause_{io_}, rehearsalTimer_{io_}, graceTimer_{io_}, tellTimer_{io_};
  asio::posix::stream_descriptor networkWatch_{io_};
};

Moment now();

}  // namespace qrn::controller
