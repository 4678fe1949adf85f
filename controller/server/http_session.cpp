#include "adapters/link/wire/wire.h"
#include "controller/server/page.h"
#include "controller/server/server.h"
#include "controller/server/sessions.h"

namespace qrn::controller {

namespace {

constexpr const char* contentPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self' ws: wss:; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

std::string_view view(boost::string_view text) {
  return {text.data(), text.size()};
}

std::string_view pathOf(const Request& request) {
  const std::string_view target = view(request.target());
  return target.substr(0, target.find('?'));
}

// A page of another site may not open a socket here in the name of its visitor.
bool ownOrigin(const Request& request) {
  const std::string_view origin = view(request[http::field::origin]);
  if (origin.empty())
    return true;
  const std::size_t host = origin.find("://");
  return host != std::string_view::npos && origin.substr(host + 3) == view(request[http::field::host]);
}

}  // namespace

HttpSession::HttpSession(Server& server, Seat seat, tcp::socket socket)
    : server_(server), seat_(std::move(seat)), stream_(std::move(socket)) {}

void HttpSession::read() {
  parser_ = std::make_unique<http::request_parser<http::empty_body>>();  // takes 8 KiB and no body
  stream_.expires_after(server_.options().patience);                     // for the request and its answer
  http::async_read(stream_, buffer_, *parser_,
                   [self = shared_from_this()](beast::error_code error, std::size_t) {
                     if (!error)
                       self->handle();
                   });
}

void HttpSession::handle() {
  const Request request = parser_->release();
  if (websocket::is_upgrade(request))
    upgrade(request);
  else
    answer(request);
}

// Why this socket is refused, or "".
std::string_view HttpSession::refusal(const Request& request, http::status& status) const {
  status = http::status::forbidden;
  if (pathOf(request) == "/phone")
    return ownOrigin(request) ? "" : "This page belongs to another site.\n";
  status = http::status::not_found;
  if (pathOf(request) != link::programPath)
    return "There is no such socket.\n";
  status = http::status::forbidden;
  beast::error_code gone;  // then the address is not a loopback one
  if (!stream_.socket().remote_endpoint(gone).address().is_loopback())
    return "The program's side is for this machine alone.\n";
  if (request.count(http::field::origin) != 0)
    return "The program's side is not for browsers.\n";
  status = http::status::unauthorized;
  if (!link::sameToken(view(request[http::field::authorization]), "Bearer " + server_.options().token))
    return "The token is wrong.\n";
  status = http::status::conflict;
  if (server_.hasProgram() && view(request[link::instanceHeader]) != server_.programInstance())
    return "Another program is linked.\n";
  return "";
}

void HttpSession::upgrade(const Request& request) {
  http::status status = http::status::ok;
  const std::string_view reason = refusal(request, status);
  if (!reason.empty()) {
    server_.log("refused a socket for " + std::string(pathOf(request).substr(0, 60)) + ": " +
                std::string(reason.substr(0, reason.size() - 1)));
    return send(request, status, "text/plain; charset=utf-8", std::string(reason));
  }
  tcp::socket socket = stream_.release_socket();
  if (pathOf(request) == "/phone")
    return std::make_shared<PhoneSession>(server_, std::move(seat_), std::move(socket))->run(request);
  std::make_shared<ProgramSession>(server_, std::move(seat_), std::move(socket),
                                   std::string(view(request[link::instanceHeader]).substr(0, 64)))
      ->run(request);
}

void HttpSession::answer(const Request& request) {
  const std::string_view path = pathOf(request);
  if (request.method() != http::verb::get && request.method() != http::verb::head)
    return send(request, http::status::method_not_allowed, "text/plain", "Only GET.\n");
  if (path == "/join")
    return send(request, http::status::ok, findAsset("/join")->type, joinPage(server_.roomState()));
  if (path == "/join.svg")
    return send(request, http::status::ok, "image/svg+xml",
                qrSvg("http://" + server_.roomState().address + "/"));
  if (path == "/room")
    return send(request, http::status::ok, "text/plain; charset=utf-8", link::roomText(server_.roomState()));
  if (const Asset* asset = findAsset(path))
    return send(request, http::status::ok, asset->type, std::string(asset->body));
  send(request, http::status::not_found, "text/plain", "There is no such page.\n");
}

void HttpSession::send(const Request& request, http::status status, std::string_view type, std::string body) {
  response_ = std::make_shared<http::response<http::string_body>>(status, request.version());
  response_->set(http::field::content_type, boost::string_view(type.data(), type.size()));
  response_->set(http::field::cache_control, "no-cache");
  response_->set("Content-Security-Policy", contentPolicy);
  response_->set("X-Content-Type-Options", "nosniff");
  response_->set("Referrer-Policy", "no-referrer");
  response_->keep_alive(request.keep_alive());
  response_->content_length(body.size());
  if (request.method() != http::verb::head)
    response_->body() = std::move(body);
  http::async_write(stream_, *response_, [self = shared_from_this()](beast::error_code error, std::size_t) {
    if (!error && self->response_->keep_alive())
      self->read();
  });
}

}  // namespace qrn::controller
