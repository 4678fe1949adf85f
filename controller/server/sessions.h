// The three kinds of connection.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "controller/room/rate_limit.h"
#include "controller/room/room.h"
#include "controller/server/net.h"

namespace qrn::controller {

class Server;

// Every open connection holds one, whatever it turns into.
using Seat = std::shared_ptr<const int>;

// Serves pages, and hands the socket on when the request is for a WebSocket.
class HttpSession : public std::enable_shared_from_this<HttpSession> {
 public:
  HttpSession(Server& server, Seat seat, tcp::socket socket);
  void run() { read(); }

 private:
  void read();
  void handle();
  void upgrade(const Request& request);
  void answer(const Request& request);
  void send(const Request& request, http::status status, std::string_view type, std::string body);
  std::string_view refusal(const Request& request, http::status& status) const;

  Server& server_;
  Seat seat_;
  beast::tcp_stream stream_;
  beast::flat_buffer buffer_;
  std::unique_ptr<http::request_parser<http::empty_body>> parser_;
  std::shared_ptr<http::response<http::string_body>> response_;
};

// One phone. What goes out is bounded: a phone that does not read is dropped and comes back by itself.
class PhoneSession : public std::enable_shared_from_this<PhoneSession> {
 public:
  PhoneSession(Server& server, Seat seat, tcp::socket socket);
  ~PhoneSession();
  void run(const Request& request);
  void send(const SharedText& text);

 private:
  void read();
  void write();
  void drop();

  Server& server_;
  Seat seat_;
  websocket::stream<beast::tcp_stream> stream_;
  beast::flat_buffer buffer_;
  std::deque<SharedText> queue_;
  std::size_t queued_ = 0;  // bytes
  RateLimit rate_;
  PhoneId id_ = 0;
  bool dropped_ = false;
};

// The program's side.
class ProgramSession : public std::enable_shared_from_this<ProgramSession> {
 public:
  ProgramSession(Server& server, Seat seat, tcp::socket socket, std::string instance);
  ~ProgramSession();
  void run(const Request& request);
  void write();  // the next frame, unless one is being written
  void close();

 private:
  void accepted();
  void read();
  void transmit();

  Server& server_;
  Seat seat_;
  websocket::stream<beast::tcp_stream> stream_;
  beast::flat_buffer buffer_;
  std::string instance_;
  std::string writing_;
  bool busy_ = true;  // until the hello is out
};

}  // namespace qrn::controller
