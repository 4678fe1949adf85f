#include "adapters/link/wire/wire.h"
#include "controller/server/server.h"
#include "controller/server/sessions.h"

namespace qrn::controller {

namespace {

constexpr std::size_t maxWaitingFrames = 10000;

}  // namespace

ProgramSession::ProgramSession(Server& server, ClientSeat seat, tcp::socket socket, std::string instance)
    : server_(server), seat_(std::move(seat)), stream_(std::move(socket)), instance_(std::move(instance)) {}

ProgramSession::~ProgramSession() {
  server_.programGone();
}

void ProgramSession::run(const Request& request) {
  stream_.read_message_max(link::maxMessage);
  stream_.async_accept(request, [self = shared_from_this()](beast::error_code error) {
    if (!error)
      self->accepted();
  });
}

void ProgramSession::accepted() {
  if (server_.hasProgram() && server_.programInstance() != instance_) {
    server_.log("refused a second program");
    return close();
  }
  beast::error_code ignored;
  beast::get_lowest_layer(stream_).socket().set_option(tcp::no_delay(true), ignored);
  server_.setProgram(shared_from_this(), instance_);
  writing_ = server_.room().programArrived(instance_);
  open_ = busy_ = true;
  server_.tellRoom(true);  // goes out behind the hello
  stream_.text(true);
  stream_.async_write(asio::buffer(writing_),
                      [self = shared_from_this()](beast::error_code error, std::size_t) {
                        self->busy_ = false;
                        if (!error)
                          self->write();
                      });
  read();
}

void ProgramSession::read() {
  stream_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
    if (error || !self->open_)
      return self->close();
    const std::string text = beast::buffers_to_string(self->buffer_.data());
    self->buffer_.consume(self->buffer_.size());
    if (link::startsWith(text, link::addressWord))
      self->server_.chooseAddress(text.substr(link::addressWord.size()));
    else
      self->server_.room().fromProgram(text);
    self->server_.armRehearsal();
    if (self->server_.room().waitingForProgram() > maxWaitingFrames) {
      self->server_.log("the program does not read; the link is closed");
      return self->close();
    }
    self->read();
  });
}

void ProgramSession::write() {
  if (busy_ || !open_)
    return;
  auto text = server_.room().nextForProgram();
  if (!text)
    return;
  writing_ = std::move(*text);
  busy_ = true;
  stream_.text(true);
  stream_.async_write(asio::buffer(writing_),
                      [self = shared_from_this()](beast::error_code error, std::size_t) {
                        self->busy_ = false;
                        if (error)
                          self->close();
                        else
                          self->write();
                      });
}

void ProgramSession::close() {
  open_ = false;
  beast::get_lowest_layer(stream_).close();
}

}  // namespace qrn::controller
