#include "adapters/link/wire/wire.h"
#include "controller/server/server.h"
#include "controller/server/sessions.h"

namespace qrn::controller {

ProgramSession::ProgramSession(Server& server, Seat seat, tcp::socket socket, std::string instance)
    : server_(server), seat_(std::move(seat)), stream_(std::move(socket)), instance_(std::move(instance)) {}

ProgramSession::~ProgramSession() {
  server_.programGone();
}

void ProgramSession::run(const Request& request) {
  server_.setProgram(shared_from_this(), instance_);
  stream_.read_message_max(link::maxMessage);
  stream_.async_accept(request, [self = shared_from_this()](beast::error_code error) {
    if (!error)
      self->accepted();
  });
}

void ProgramSession::accepted() {
  beast::error_code ignored;
  beast::get_lowest_layer(stream_).socket().set_option(tcp::no_delay(true), ignored);
  writing_ = server_.room().programArrived(instance_);
  transmit();
  server_.tellRoom(true);  // goes out behind the hello
  read();
}

void ProgramSession::read() {
  stream_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
    if (error)
      return self->close();
    const std::string text = beast::buffers_to_string(self->buffer_.data());
    self->buffer_.consume(self->buffer_.size());
    if (link::startsWith(text, link::addressWord))
      self->server_.chooseAddress(text.substr(link::addressWord.size()));
    else
      self->server_.room().fromProgram(text);
    self->server_.armRehearsal();
    self->read();
  });
}

void ProgramSession::write() {
  if (busy_)
    return;
  auto text = server_.room().nextForProgram();
  if (!text)
    return;
  writing_ = std::move(*text);
  transmit();
}

void ProgramSession::transmit() {
  busy_ = true;
  stream_.async_write(asio::buffer(writing_),
                      [self = shared_from_this()](beast::error_code error, std::size_t) {
                        self->busy_ = false;
                        if (error)
                          self->close();
                        else
                          self->write();
                      });
}

// Ends every wait on the socket.
void ProgramSession::close() {
  beast::get_lowest_layer(stream_).close();
}

}  // namespace qrn::controller
