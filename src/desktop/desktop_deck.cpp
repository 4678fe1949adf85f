// The deck at hand and the room: opening, saving, closing, and the keypads page.
#include <QDesktopServices>
#include <QUrl>

#include "base/errors.h"
#include "desktop/desktop_parts.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "render/fonts.h"

namespace qrn::desktop {

void Desktop::Parts::askForDeck() {
  if (!mayCloseDeck())
    return;
  host::FileQuestion question;
  question.title = "Open a deck";
  question.filter = "Presentations (*.pptx)|*.pptx";
  if (deck)
    question.folder = deck->path();
  wantedDeck = host::host().dialogs->FileDialog(question);
  if (wantedDeck && making)
    window.say(render::toQt("Opening " + *wantedDeck + " when the slide pictures are ready"));
}

bool Desktop::Parts::openDeck(const std::string& file) {
  window.say(render::toQt("Opening " + file));
  window.repaint();
  try {
    if (making || running)
      throw HostError(Fault::program, 0, "The deck at hand is in use.");
    takeDeck(hooks.openDeck(file));
    return true;
  } catch (const std::exception& error) {
    report("The deck was not opened. ", error);
    return false;
  }
}

void Desktop::Parts::takeDeck(std::unique_ptr<host::Presentation> opened) {
  show.reset();
  window.setDeck(nullptr);
  pictures.setDeck(opened.get());
  deck = std::move(opened);
  window.setDeck(deck.get());
  if (hooks.deckNotice)
    if (const auto text = hooks.deckNotice(*deck))
      window.notice().say(NoticeBar::Kind::note, render::toQt(*text));
  pictures.wantAll();
  sayPictures();
}

bool Desktop::Parts::save() {
  if (!deck)
    return true;
  window.say("Saving");
  window.repaint();
  try {
    deck->Save();
    window.say("Saved");
    return true;
  } catch (const std::exception& error) {
    report("The deck was not saved. ", error);
    return false;
  }
}

void Desktop::Parts::leave() {
  if (running || !mayCloseDeck())
    return;
  leaving = true;
  window.hide();
}

bool Desktop::Parts::mayCloseDeck() {
  if (!deck || deck->ReadOnly() || deck->Saved())
    return true;
  const host::Answer answer =
      host::host().dialogs->MsgBox("Save the votes and settings into the deck?", host::kTitle,
                                   host::Buttons::yesNoCancel, host::Icon::question, host::Answer::yes);
  if (answer == host::Answer::yes)
    return save();
  return answer == host::Answer::no;
}

void Desktop::Parts::showKeypads() {
  if (!keypads)
    keypads = new KeypadsWindow(&window, {hooks.chooseAddress, [](const QString& address) {
                                            QDesktopServices::openUrl(QUrl(address));
                                          }});
  askForRoom();
  keypads->show();
  keypads->raise();
  keypads->activateWindow();
}

void Desktop::Parts::askForRoom() {
  try {
    keypads->showRoom(hooks.room());
  } catch (const std::exception& error) {
    keypads->showNoController(render::toQt(error.what()));
  }
}

}  // namespace qrn::desktop
