// One connection to a controller, from the first try to its end. Its socket lives on the thread of the
// io_context; everything public may be called from the main thread and returns at once unless it says
// otherwise.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace qrn::link {

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  // `arrived` is called on the socket's thread after each frame and after the loss.
  Connection(boost::asio::io_context& io, std::function<void()> arrived)
      : socket_(io), arrived_(std::move(arrived)) {}

  void start(int port, const std::string& token, const std::string& instance);
  // Blocks until the controller has said hello, the connection has failed, or the time is over.
  bool waitUntilReady(std::chrono::milliseconds limit);
  bool ready() const;
  bool lost() const;
  bool refusedAsBusy() const;  // another program is linked
  std::string reason() const;  // why it failed or was lost

  void send(std::string text);
  std::optional<std::string> take();  // the next frame received; the first is the hello

  void abandon(const std::string& reason);
  // Blocks until what was sent has left and the socket is closed, or the time is over.
  void finish(std::chrono::milliseconds limit);

 private:
  using Socket = boost::beast::websocket::stream<boost::beast::tcp_stream>;
  using Error = boost::beast::error_code;
  void connected(const std::string& token, const std::string& instance);
  void shaken(Error error);
  void read();
  void received(std::string text);
  void write();
  void fail(const std::string& reason);
  void tellArrival();

  Socket socket_;
  const std::function<void()> arrived_;
  boost::beast::flat_buffer buffer_;
  boost::beast::websocket::response_type response_;
  std::deque<std::string> outbox_;  // on the socket's thread
  std::size_t outboxBytes_ = 0;
  bool finishing_ = false;

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::string> inbox_;
  std::size_t inboxBytes_ = 0;
  bool ready_ = false;
  bool lost_ = false;
  bool busy_ = false;
  std::string reason_;
};

}  // namespace qrn::link
