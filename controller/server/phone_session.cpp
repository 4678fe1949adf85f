#include "controller/server/server.h"
#include "controller/server/sessions.h"

namespace qrn::controller {

namespace {

constexpr std::size_t maxQueuedBytes = 512 * 1024;
constexpr double burst = 20, perSecond = 5;
constexpr long maxRefused = 200;  // frames beyond the rate until the phone is dropped

}  // namespace

PhoneSession::PhoneSession(Server& server, Seat seat, tcp::socket socket)
    : server_(server), seat_(std::move(seat)), stream_(std::move(socket)), rate_(burst, perSecond) {}

PhoneSession::~PhoneSession() {
  if (id_ != 0)
    server_.removePhone(id_);
}

void PhoneSession::run(const Request& request) {
  stream_.set_option(
      websocket::stream_base::timeout{server_.options().patience, server_.options().silence, true});
  stream_.read_message_max(maxPhoneFrame);
  stream_.async_accept(request, [self = shared_from_this()](beast::error_code error) {
    if (error)
      return;
    self->id_ = self->server_.addPhone(self);
    self->read();
  });
}

void PhoneSession::read() {
  stream_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
    if (error)
      return self->drop();
    const std::string text = beast::buffers_to_string(self->buffer_.data());
    self->buffer_.consume(self->buffer_.size());
    if (!self->rate_.allows(now().ms)) {
      if (self->rate_.refused() > maxRefused)
        return self->drop();
      self->server_.room().phoneTooFast(self->id_);
    } else if (!self->stream_.got_text() || !self->server_.room().phoneText(self->id_, text)) {
      return self->drop();
    }
    self->read();
  });
}

void PhoneSession::send(const SharedText& text) {
  if (dropped_)
    return;
  queue_.push_back(text);
  queued_ += text->size();
  if (queued_ > maxQueuedBytes)
    return drop();
  if (queue_.size() == 1)
    write();
}

void PhoneSession::write() {
  stream_.async_write(asio::buffer(*queue_.front()),
                      [self = shared_from_this()](beast::error_code error, std::size_t) {
                        if (error)
                          return self->drop();
                        self->queued_ -= self->queue_.front()->size();
                        self->queue_.pop_front();
                        if (!self->queue_.empty())
                          self->write();
                      });
}

// Ends every wait on the socket; the session goes when the last of them has returned.
void PhoneSession::drop() {
  dropped_ = true;
  beast::get_lowest_layer(stream_).close();
}

}  // namespace qrn::controller
