#include "adapters/link/link.h"

#include <sys/stat.h>
#include <unistd.h>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <deque>
#include <thread>

#include "adapters/link/connection.h"
#include "adapters/link/controller_process.h"
#include "adapters/link/wire/wire.h"
#include "base/disk.h"
#include "base/utf8.h"

namespace qrn::link {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds busyPatience{
    500};  // a controller may not have seen yet that its former program is gone
constexpr milliseconds glance{5}, farewell{500}, endPatience{1000};

milliseconds left(Clock::time_point deadline) {
  return std::max(milliseconds(0), std::chrono::duration_cast<milliseconds>(deadline - Clock::now()));
}

bool isPressBlock(std::string_view text) {
  return text.find("],") != std::string_view::npos;
}

// Why a controller could not announce itself in that folder, "" when it can.
std::string whyNothingIsWritten(const std::string& folder) {
  constexpr std::size_t kMoreThanAnnounced = 1000;
  const std::string trial = folder + "/trial." + std::to_string(::getpid());
  try {
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST)
      throwDisk("Cannot make", folder);
    saveText(trial, std::string(kMoreThanAnnounced, ' '), {"", 0600});
    ::unlink(trial.c_str());
    return "";
  } catch (const HostError& failure) {
    return std::string(failure.what()) + ".";
  }
}

}  // namespace

class WebSocketLink::Impl {
 public:
  explicit Impl(LinkOptions options);
  ~Impl();

  bool joinRunning();
  bool startController();
  bool goesOut(std::string_view command);
  void handOver(WebSocketLink& link);
  bool takeLoss();  // true once for each link that had been made and was lost

  LinkOptions options;
  host::RoomState room;
  std::string chosenAddress, scale;
  std::shared_ptr<Connection> connection;
  Announcement controller;
  std::string error;

 private:
  bool connect(const Announcement& to, Clock::time_point deadline);
  bool waitForAnnouncement(const std::string& token, Clock::time_point deadline);
  std::vector<std::string> arguments() const;
  void setLostAside();
  void deliver(WebSocketLink& link, const std::string& text);
  void greeted(std::string_view hello);
  bool isVoteOpened(std::string_view text);
  bool sameVote(std::string_view number) const;
  bool takesPresses() const { return voteWanted_ && opensAwaited_ == 0; }

  boost::asio::io_context io_;
  boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_{io_.get_executor()};
  std::thread thread_{[this] { io_.run(); }};
  ControllerProcess process_;
  const std::string instance_ = randomToken();
  // The vote as this side sees it: wanted from "StartVote" to "EndVote", open when the controller has
  // answered.
  bool voteWanted_ = false;
  bool resumed_ = false;  // it was still open when the link was made again
  int opensAwaited_ = 0;
  std::int64_t voteNumber_ = 0;
  std::uint64_t dealtWith_ = 0;      // frames of this connection, without the hello
  std::deque<std::string> carried_;  // received over a link that was lost before anybody took them
  bool lossDue_ = false;
};

WebSocketLink::Impl::Impl(LinkOptions chosen) : options(std::move(chosen)) {
  if (options.announceFolder.empty())
    options.announceFolder = defaultAnnounceFolder();
  else
    mkdir(options.announceFolder.c_str(), S_IRWXU);
  if (options.controllerPath.empty())
    options.controllerPath = controllerBesideProgram();
}

WebSocketLink::Impl::~Impl() {
  if (connection)
    connection->finish(farewell);
  if (options.keepRunning)
    process_.release();
  process_.end(endPatience);
  work_.reset();
  io_.stop();
  thread_.join();
  connection.reset();
}

bool WebSocketLink::Impl::joinRunning() {
  const auto announced = announcedIn(options.announceFolder);
  if (!announced) {
    error = "No controller has announced itself.";
    return false;
  }
  const bool otherSeed = options.rehearse > 0 && announced->seed != options.seed;
  if (announced->rehearse != options.rehearse || otherSeed) {
    error = "The running controller serves another kind of run.";
    return false;
  }
  return connect(*announced, Clock::now() + options.connectTimeout);
}

bool WebSocketLink::Impl::startController() {
  if (process_.running()) {
    if (connect(controller, Clock::now() + options.connectTimeout))
      return true;
    process_.end(endPatience);
  }
  if (options.announceFolder.empty()) {
    error = "There is no folder that is this user's alone.";
    return false;
  }
  error = whyNothingIsWritten(options.announceFolder);
  if (!error.empty())
    return false;
  const auto deadline = Clock::now() + options.startTimeout;
  const std::string token = randomToken();
  error =
      process_.start(options.controllerPath, arguments(), token, options.announceFolder + "/controller.log");
  if (!error.empty())
    return false;
  if (waitForAnnouncement(token, deadline) && connect(controller, deadline))
    return true;
  process_.end(endPatience);
  return false;
}

bool WebSocketLink::Impl::waitForAnnouncement(const std::string& token, Clock::time_point deadline) {
  while (Clock::now() < deadline) {
    const auto announced = announcedIn(options.announceFolder);
    if (announced && announced->token == token) {
      controller = *announced;
      return true;
    }
    if (!process_.running()) {
      error = "The controller ended at once: " + lastWords(options.announceFolder + "/controller.log");
      return false;
    }
    std::this_thread::sleep_for(glance);
  }
  error = "The controller did not start in time.";
  return false;
}

// A controller that takes the place of one that failed tries its port first: the phones come back to that
// one.
std::vector<std::string> WebSocketLink::Impl::arguments() const {
  std::vector<std::string> words{"--announce", announceFile(options.announceFolder), "--state",
                                 options.announceFolder + "/keypads.state"};
  if (!options.keepRunning)
    words.emplace_back("--end-with-link");
  if (options.rehearse > 0)
    words.insert(words.end(),
                 {"--rehearse", std::to_string(options.rehearse), "--seed", std::to_string(options.seed)});
  if (!options.address.empty())
    words.insert(words.end(), {"--address", options.address});
  if (controller.port > 0)
    words.insert(words.end(), {"--prefer-port", std::to_string(controller.port)});
  words.insert(words.end(), options.extraArguments.begin(), options.extraArguments.end());
  return words;
}

bool WebSocketLink::Impl::connect(const Announcement& to, Clock::time_point deadline) {
  setLostAside();
  const auto busyUntil = Clock::now() + busyPatience;
  for (;;) {
    const auto next = std::make_shared<Connection>(io_, options.arrived);
    next->start(to.port, to.token, instance_);
    if (next->waitUntilReady(left(deadline))) {
      connection = next;
      controller = to;
      dealtWith_ = 0;
      lossDue_ = false;
      error.clear();
      greeted(next->take().value_or(""));
      if (!chosenAddress.empty())
        next->send(std::string(addressWord) + chosenAddress);
      return true;
    }
    if (!next->lost())
      next->abandon("The controller does not answer.");
    error = next->reason();
    if (!next->refusedAsBusy() || Clock::now() > busyUntil || left(deadline).count() == 0)
      return false;
    std::this_thread::sleep_for(glance);
  }
}

void WebSocketLink::Impl::setLostAside() {
  if (!connection)
    return;
  lossDue_ = true;
  while (auto text = connection->take()) carried_.push_back(std::move(*text));
  connection.reset();
}

// Commands reach the controller in order, so once it has "EndVote" it knows that every press not acknowledged
// before was not taken. This side must then not take one either.
//
// A program that has lost its link in the midst of a vote opens the vote anew when it is back. Where the
// controller has held it open all the time, that would throw away what it kept meanwhile: the vote just goes
// on.
bool WebSocketLink::Impl::goesOut(std::string_view command) {
  const bool opens = command == "StartVote";
  if (resumed_ && voteWanted_ && (opens || command == "Clear")) {
    resumed_ = !opens;
    return false;
  }
  if (opens) {
    voteWanted_ = true;
    ++opensAwaited_;
  } else if (command == "EndVote" || command == "Clear") {
    voteWanted_ = false;
  }
  return true;
}

void WebSocketLink::Impl::handOver(WebSocketLink& link) {
  while (!carried_.empty()) {
    const std::string text = std::move(carried_.front());
    carried_.pop_front();
    deliver(link, text);
  }
  const std::shared_ptr<Connection> current = connection;
  const std::uint64_t before = dealtWith_;
  while (current && current == connection) {
    const auto text = current->take();
    if (!text)
      break;
    deliver(link, *text);
    if (current == connection)
      ++dealtWith_;
  }
  if (current && current == connection && dealtWith_ != before && !current->lost())
    current->send(std::string(receivedWord) + std::to_string(dealtWith_));
}

void WebSocketLink::Impl::deliver(WebSocketLink& link, const std::string& text) {
  if (startsWith(text, roomWord)) {
    room = readRoom(std::string_view(text).substr(roomWord.size()));
    if (link.roomChanged)
      link.roomChanged();
    return;
  }
  if (isVoteOpened(text) || (isPressBlock(text) && !takesPresses()))
    return;
  if (link.FromQrnCtrl)
    link.FromQrnCtrl(text);
}

bool WebSocketLink::Impl::isVoteOpened(std::string_view text) {
  if (!startsWith(text, openedWord))
    return false;
  opensAwaited_ = std::max(0, opensAwaited_ - 1);
  voteNumber_ = wholeNumber(text.substr(openedWord.size())).value_or(0);
  return true;
}

void WebSocketLink::Impl::greeted(std::string_view hello) {
  const std::string_view number = hello.substr(std::min(hello.size(), helloWord.size()));
  voteWanted_ = voteWanted_ && sameVote(number);
  resumed_ = voteWanted_;
  opensAwaited_ = 0;
  voteNumber_ = wholeNumber(number).value_or(0);
}

// Whether the vote that a controller holds open is the one this side began before the link was lost; a
// "StartVote" without an answer may or may not have arrived.
bool WebSocketLink::Impl::sameVote(std::string_view number) const {
  const std::int64_t open = wholeNumber(number).value_or(0);
  return open > 0 && (opensAwaited_ == 0 ? open == voteNumber_ : open > voteNumber_);
}

bool WebSocketLink::Impl::takeLoss() {
  if (connection && connection->lost()) {
    error = connection->reason();
    setLostAside();
  }
  const bool due = lossDue_;
  lossDue_ = false;
  return due;
}

WebSocketLink::WebSocketLink(LinkOptions options) : impl_(std::make_unique<Impl>(std::move(options))) {}

WebSocketLink::~WebSocketLink() = default;

bool WebSocketLink::makeLink(bool startNew) {
  if (linked())
    return true;
  return startNew ? impl_->startController() : impl_->joinRunning();
}

bool WebSocketLink::linked() const {
  return impl_->connection && impl_->connection->ready();
}

bool WebSocketLink::controllerReady() {
  return linked();
}

void WebSocketLink::sendToController(std::string_view text) {
  if (!linked())
    return;
  const bool goes = impl_->goesOut(text);
  if (goes && text == "StartVote")
    impl_->connection->send(std::string(scaleWord) + validUtf8(impl_->scale));
  if (goes)
    impl_->connection->send(validUtf8(text));
}

void WebSocketLink::drain() {
  impl_->handOver(*this);
  if (impl_->takeLoss() && linkLost)
    linkLost();
}

std::string WebSocketLink::lastError() const {
  return impl_->error;
}

void WebSocketLink::describeVote(const std::string& scale) {
  impl_->scale = scale;
}

host::RoomState WebSocketLink::room() const {
  return impl_->room;
}

void WebSocketLink::chooseAddress(const std::string& host) {
  impl_->chosenAddress = host;
  if (linked())
    impl_->connection->send(std::string(addressWord) + validUtf8(host));
}

long WebSocketLink::controllerProcess() const {
  return impl_->controller.process;
}

}  // namespace qrn::link
