#include "adapters/link/connection.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>

#include "adapters/link/wire/wire.h"

namespace qrn::link {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;
using tcp = asio::ip::tcp;

namespace {

constexpr std::size_t maxQueued = std::size_t{16} << 20;  // bytes, either way

std::string refusalText(beast::http::status status) {
  if (status == beast::http::status::unauthorized)
    return "The controller does not know this program's token.";
  if (status == beast::http::status::conflict)
    return "The controller is linked to another program.";
  return "What answers there is no quorin controller.";
}

}  // namespace

void Connection::start(int port, const std::string& token, const std::string& instance) {
  asio::post(socket_.get_executor(), [self = shared_from_this(), port, token, instance] {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(port));
    beast::get_lowest_layer(self->socket_).async_connect(endpoint, [self, token, instance](Error error) {
      if (error)
        self->fail("There is no controller: " + error.message() + ".");
      else
        self->connected(token, instance);
    });
  });
}

void Connection::connected(const std::string& token, const std::string& instance) {
  Error ignored;
  beast::get_lowest_layer(socket_).socket().set_option(tcp::no_delay(true), ignored);
  socket_.read_message_max(maxMessage);
  socket_.set_option(websocket::stream_base::decorator([token, instance](websocket::request_type& request) {
    request.set(beast::http::field::authorization, "Bearer " + token);
    request.set(instanceHeader, instance);
  }));
  socket_.async_handshake(response_, "127.0.0.1", programPath,
                          [self = shared_from_this()](Error error) { self->shaken(error); });
}

void Connection::shaken(Error error) {
  if (!error)
    return read();
  if (error == websocket::error::upgrade_declined) {
    const std::lock_guard<std::mutex> lock(mutex_);
    busy_ = response_.result() == beast::http::status::conflict;
  }
  fail(error == websocket::error::upgrade_declined
           ? refusalText(response_.result())
           : "The controller does not answer: " + error.message() + ".");
}

void Connection::read() {
  socket_.async_read(buffer_, [self = shared_from_this()](Error error, std::size_t) {
    if (error == websocket::error::message_too_big || error == websocket::error::buffer_overflow)
      return self->fail("The controller sent a message that is too long.");
    if (error)
      return self->fail("The controller has gone: " + error.message() + ".");
    std::string text = beast::buffers_to_string(self->buffer_.data());
    self->buffer_.consume(self->buffer_.size());
    self->received(std::move(text));
    self->read();
  });
}

// The first frame must be the hello; it stays in the queue, since it says which vote is open.
void Connection::received(std::string text) {
  std::unique_lock<std::mutex> lock(mutex_);
  if (lost_)
    return;
  const bool hello = startsWith(text, helloWord);
  if (!ready_ && !hello) {
    lock.unlock();
    return fail("What answers there is no quorin controller.");
  }
  inboxBytes_ += text.size();
  inbox_.push_back(std::move(text));
  ready_ = true;
  const bool full = inboxBytes_ > maxQueued;
  lock.unlock();
  tellArrival();
  if (full)
    fail("The controller sends faster than the program takes.");
}

bool Connection::waitUntilReady(std::chrono::milliseconds limit) {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_for(lock, limit, [this] { return ready_ || lost_; });
  return ready_ && !lost_;
}

bool Connection::ready() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return ready_ && !lost_;
}

bool Connection::lost() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return lost_;
}

bool Connection::refusedAsBusy() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return busy_;
}

std::string Connection::reason() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return reason_;
}

void Connection::send(std::string text) {
  asio::post(socket_.get_executor(), [self = shared_from_this(), text = std::move(text)]() mutable {
    if (self->lost())
      return;
    self->outboxBytes_ += text.size();
    self->outbox_.push_back(std::move(text));
    if (self->outboxBytes_ > maxQueued)
      return self->fail("The controller does not take what the program sends.");
    if (self->outbox_.size() == 1)
      self->write();
  });
}

void Connection::write() {
  socket_.text(true);
  socket_.async_write(asio::buffer(outbox_.front()), [self = shared_from_this()](Error error, std::size_t) {
    if (error)
      return self->fail("The controller has gone: " + error.message() + ".");
    self->outboxBytes_ -= self->outbox_.front().size();
    self->outbox_.pop_front();
    if (!self->outbox_.empty())
      self->write();
    else if (self->finishing_)
      self->socket_.async_close(websocket::close_code::normal,
                                [self](Error) { self->fail("The link was closed."); });
  });
}

std::optional<std::string> Connection::take() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (inbox_.empty())
    return std::nullopt;
  std::string first = std::move(inbox_.front());
  inbox_.pop_front();
  inboxBytes_ -= first.size();
  return first;
}

void Connection::abandon(const std::string& reason) {
  asio::post(socket_.get_executor(), [self = shared_from_this(), reason] { self->fail(reason); });
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!lost_)
    reason_ = reason;
  lost_ = true;
}

void Connection::finish(std::chrono::milliseconds limit) {
  asio::post(socket_.get_executor(), [self = shared_from_this()] {
    self->finishing_ = true;
    if (self->outbox_.empty())
      self->socket_.async_close(websocket::close_code::normal,
                                [self](Error) { self->fail("The link was closed."); });
  });
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_for(lock, limit, [this] { return lost_; });
}

void Connection::fail(const std::string& reason) {
  beast::get_lowest_layer(socket_).close();
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!lost_)
      reason_ = reason;
    lost_ = true;
  }
  tellArrival();
}

void Connection::tellArrival() {
  changed_.notify_all();
  if (arrived_)
    arrived_();
}

}  // namespace qrn::link
