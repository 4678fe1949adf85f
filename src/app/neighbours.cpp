#include "app/neighbours.h"

#include <QCoreApplication>
#include <QWidget>
#include <iostream>
#include <map>
#include <utility>

#include "adapters/deck/deck.h"
#include "adapters/deck/open_asking.h"
#include "adapters/deck/overwrite.h"
#include "adapters/link/link.h"
#include "adapters/qt/dialogs.h"
#include "adapters/qt/loop.h"
#include "adapters/qt/slide_painter.h"
#include "adapters/qt/sound.h"
#include "adapters/qt/text_measure.h"
#include "adapters/system/files.h"
#include "adapters/system/machine.h"
#include "adapters/system/standard_streams.h"
#include "adapters/system/xml_query.h"
#include "base/errors.h"
#include "core/diagnostics.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/wait.h"
#include "render/render.h"

namespace qrn::app {

struct Neighbours::Parts {
  system::MachineClock clock;
  system::MachineRandom random;
  system::MachineEnvironment environment;
  system::DiskFiles files;
  system::PlainLoop plainLoop;
  system::Silence silence;
  system::XmlQueries xml;
  qt::QtLoop qtLoop;
  qt::QtTextMeasure textMeasure;
  qt::QtSound sound;
  qt::QtSlidePainter painter;
  host::FormRegistry forms;
  std::function<QWidget*()> dialogParent;
  std::function<void(const std::string&)> troubleNotice;
  std::function<void(const host::RoomState&)> tellRoom;
  std::unique_ptr<qt::QtDialogs> dialogs;
  std::unique_ptr<link::WebSocketLink> link;
  link::LinkOptions linkOptions;
  link::WebSocketLink* pumped = nullptr;  // the link of a windowless run, while it lives

  void drain() {
    if (link)
      drainDesktopLink();
    else if (pumped != nullptr)
      pumped->drain();
  }

 private:
  void drainDesktopLink() {
    link->drain();
    if (std::exchange(wasLinked, link->linked()) && !link->linked() && tellRoom)
      tellRoom({});
  }
  bool wasLinked = false;
};

Neighbours::Neighbours(Kind kind) : parts_(std::make_unique<Parts>()) {
  host::Host& world = host::host();
  world.clock = &parts_->clock;
  world.random = &parts_->random;
  world.environment = &parts_->environment;
  world.files = &parts_->files;
  world.textMeasure = &parts_->textMeasure;
  world.forms = &parts_->forms;
  world.xmlQuery = &parts_->xml;
  if (kind == Kind::windowless) {
    parts_->plainLoop.addPump([this] { parts_->drain(); });
    world.loop = &parts_->plainLoop;
    world.sound = &parts_->silence;
    return;
  }
  parts_->qtLoop.addPump([this] { parts_->drain(); });
  parts_->linkOptions.arrived = [loop = &parts_->qtLoop] { loop->wake(); };
  world.loop = &parts_->qtLoop;
  world.sound = &parts_->sound;
  parts_->dialogs = std::make_unique<qt::QtDialogs>(
      [this] { return parts_->dialogParent ? parts_->dialogParent() : nullptr; });
  parts_->dialogs->setWhyNotOverwritten([](const std::string& target) {
    auto* program = host::host().presentationProgram;
    const auto* deck = program != nullptr ? program->ActivePresentation() : nullptr;
    return deck::whyNotOverwritten(target, deck != nullptr ? deck->FullName() : "");
  });
  world.dialogs = parts_->dialogs.get();
}

Neighbours::~Neighbours() {
  host::host() = host::Host{};
}

void Neighbours::setTroubleNotice(std::function<void(const std::string&)> notice) {
  parts_->troubleNotice = std::move(notice);
}

void Neighbours::setDialogParent(std::function<QWidget*()> parent) {
  parts_->dialogParent = std::move(parent);
}

void Neighbours::setStatusLine(std::function<void(const std::string&)> say) const {
  parts_->dialogs->setStatusLine(std::move(say));
}

std::string Neighbours::installFolder() const {
  return QCoreApplication::applicationDirPath().toStdString();
}

std::unique_ptr<host::Presentation> Neighbours::openDeck(const cli::DeckRequest& request) {
  static const std::map<cli::Journal, deck::OtherJournal> choices{
      {cli::Journal::refuse, deck::OtherJournal::refuse},
      {cli::Journal::apply, deck::OtherJournal::apply},
      {cli::Journal::aside, deck::OtherJournal::setAside}};
  deck::OpenOptions options;
  options.readOnly = request.readOnly;
  options.fallbackPainter = &parts_->painter;
  options.otherJournal = choices.at(request.journal);
  options.tell = [](const std::string& text) { std::cerr << "quorin-matrix: " << text << std::endl; };
  try {
    return deck::Deck::open(request.file, options);
  } catch (const deck::JournalRefused& error) {
    throw HostError(
        error.fault(), error.number(),
        std::string(error.what()) +
            " Give --journal apply to store what fits in the deck, or --journal aside to move the "
            "journal aside.");
  }
}

std::unique_ptr<host::Presentation> Neighbours::openDeckWithQuestions(const std::string& file) {
  deck::OpenOptions options;
  options.fallbackPainter = &parts_->painter;
  options.tell = [this](const std::string& text) {
    reportError(HostError(Fault::world, 57, text), "Deck", "store");
    if (parts_->troubleNotice)
      parts_->troubleNotice(text);
  };
  return deck::openAsking(file, options);
}

void Neighbours::rehearse(int keypads, unsigned seed) {
  parts_->linkOptions.rehearse = keypads;
  parts_->linkOptions.seed = seed;
}

void Neighbours::setAddress(const std::string& host) const {
  parts_->linkOptions.address = host;
}

host::RoomState Neighbours::room() {
  if (!parts_->link) {
    parts_->link = std::make_unique<link::WebSocketLink>(parts_->linkOptions);
    parts_->link->roomChanged = [this] {
      if (parts_->tellRoom)
        parts_->tellRoom(parts_->link->room());
    };
    host::host().controller = parts_->link.get();
  }
  link::WebSocketLink& link = *parts_->link;
  if (!link.linked() && !link.makeLink(false) && !link.makeLink(true))
    throw HostError(Fault::world, 0, link.lastError());
  constexpr double kFirstWord = 1;  // seconds; it comes right behind the hello
  host::waitUntil([&] { return !link.room().page.empty() || !link.linked(); }, kFirstWord);
  return link.room();
}

void Neighbours::chooseAddress(const std::string& host) {
  if (parts_->link)
    parts_->link->chooseAddress(host);
}

void Neighbours::onRoomChanged(std::function<void(const host::RoomState&)> tell) {
  parts_->tellRoom = std::move(tell);
}

cli::CliHooks Neighbours::cliHooks() {
  cli::CliHooks hooks;
  hooks.openDeck = [this](const cli::DeckRequest& request) {
    auto opened = openDeck(request);
    if (const auto warning = dynamic_cast<deck::Deck&>(*opened).foreignSaveWarning())
      std::cerr << "quorin-matrix: " << *warning << "\n";
    return opened;
  };
  hooks.makeLink = [this](const cli::RehearsalOptions& rehearsal) {
    link::LinkOptions options;
    options.rehearse = rehearsal.keypads;
    options.seed = rehearsal.seed;
    // It announces itself in this run's own folder, so that it neither takes nor disturbs the controller that
    // serves the room. Nobody watches, and nobody comes back to it when the run is killed.
    options.announceFolder = parts_->environment.Environ("temp") + "/controller";
    options.extraArguments = {"--hurry", "--grace", "5", "--bind", "127.0.0.1"};
    auto made = std::make_unique<link::WebSocketLink>(options);
    parts_->pumped = made.get();
    return made;
  };
  hooks.saveSurface = render::saveSurface;
  hooks.nobodyReadsOutput = system::nobodyReadsOutput;
  hooks.whyNotOverwritten = deck::whyNotOverwritten;
  return hooks;
}

}  // namespace qrn::app
