// The neighbours that stand behind the logic in this program: chosen here, wired here, nowhere else.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "cli/cli.h"
#include "host/controller.h"

class QWidget;

namespace qrn::host {
class Presentation;
}

namespace qrn::app {

class Neighbours {
 public:
  enum class Kind { windowless, desktop };
  // Puts the world into host(): clock, files, loop, fonts, forms. A QGuiApplication (desktop: QApplication)
  // exists.
  explicit Neighbours(Kind kind);
  ~Neighbours();
  Neighbours(const Neighbours&) = delete;
  Neighbours& operator=(const Neighbours&) = delete;

  std::unique_ptr<host::Presentation> openDeck(const cli::DeckRequest& request);
  // For the desktop: offers what can be done about a deck that is in use, has a journal of another state, or
  // has lost its exercises and votes to another program.
  std::unique_ptr<host::Presentation> openDeckWithQuestions(const std::string& file);
  // The controller of the desktop, joined or started when needed; throws HostError when there is none.
  host::RoomState room();
  void chooseAddress(const std::string& host);
  // Told a room without a page when the controller is lost.
  void onRoomChanged(std::function<void(const host::RoomState&)> tell);
  // Rehearsal keypads for the controller that the desktop starts; 0 for phones.
  void rehearse(int keypads, unsigned seed);
  // Where a deck's trouble with its disk is told while the work goes on.
  void setTroubleNotice(std::function<void(const std::string&)> notice);
  // The address at which phones join; "" to find it out.
  void setAddress(const std::string& host) const;
  // Who is told what a step that takes time is at; "" when it is over.
  void setStatusLine(std::function<void(const std::string&)> say) const;
  void setDialogParent(std::function<QWidget*()> parent);
  // Folder of the program, without separator at the end.
  std::string installFolder() const;

  cli::CliHooks cliHooks();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace qrn::app
