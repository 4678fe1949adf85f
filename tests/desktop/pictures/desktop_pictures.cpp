// Pictures of the deck window, the slide show and the keypads page.
#include "desktop/deck_window.h"
#include "desktop/keypads_window.h"
#include "desktop/pictures/made_up_deck.h"
#include "desktop/pictures/pictures.h"
#include "desktop/slide_show_window.h"
#include "host/host.h"

namespace qrn::pictures {

namespace {

std::optional<desktop::ExerciseFacts> madeUpFacts(host::Slide& slide) {
  return desktop::ExerciseFacts{"Proposals", slide.slideIndex() % 16 == 7 ? 400 : 12,
                                3,           slide.slideIndex() % 16 == 7 ? 1200 : 36,
                                6,           slide.slideIndex() % 16 == 3 ? 36 : 0};
}

desktop::DeckWindow::Calls noCalls() {
  return {[] {}, [] {}, [] {}, [] {}, [](int) {}, [](int) {}};
}

void makeAll(desktop::SlidePictures& pictures) {
  pictures.wantAll();
  while (pictures.step()) {
  }
}

void takeDeck(Album& album, const QString& name, int slides, int at, bool readOnly, QSize size) {
  MadeUpDeck deck(slides, kDarkScheme, readOnly);
  desktop::SlidePictures pictures;
  pictures.setDeck(&deck);
  desktop::DeckWindow window(pictures, madeUpFacts, noCalls());
  window.resize(size);
  window.show();
  window.setDeck(&deck);
  window.GotoSlide(at);
  if (slides < 20)
    makeAll(pictures);
  window.slidesChanged();
  if (slides > 20)
    window.say("Making slide pictures, 388 to go");
  album.take(window, name);
}

}  // namespace

void takeDeckWindow(Album& album) {
  for (const QSize size : {QSize(512, 384), QSize(960, 540), kSizes[0], kSizes[1], kSizes[2]}) {
    desktop::SlidePictures none;
    desktop::DeckWindow empty(none, madeUpFacts, noCalls());
    empty.resize(size);
    empty.show();
    album.take(empty, "deck-empty");
    empty.notice().say(
        desktop::NoticeBar::Kind::error,
        "The deck was not opened. Harbour workshop.pptx is open for writing in another program; close "
        "it there, or open the deck for reading only.");
    album.take(empty, "deck-locked");
    takeDeck(album, "deck-typical", 8, 3, false, size);
    takeDeck(album, "deck-long-title", 8, 4, false, size);
    takeDeck(album, "deck-read-only", 8, 1, true, size);
    takeDeck(album, "deck-crowded", 400, 199, false, size);
  }
}

void takeSlideShow(Album& album) {
  for (const QSize size : kSizes) {
    MadeUpDeck deck(8);
    desktop::SlidePictures pictures;
    pictures.setDeck(&deck);
    desktop::SlideShowWindow show(deck, pictures, {});
    show.resize(size);
    show.GotoSlide(2);
    show.show();
    show.resize(size);
    album.take(show, "show-plain");
    makeAll(pictures);
    show.pictureArrived(2);
    album.take(show, "show-slide");
    show.GotoSlide(8);
    show.next();
    album.take(show, "show-end");
  }
}

void takeKeypads(Album& album) {
  host::RoomState open;
  open.address = "192.168.100.120:7878";
  open.page = "http://127.0.0.1:7878/join";
  open.candidates = {{"192.168.100.120", "wlp2s0", true}};
  open.phones = 57;
  host::RoomState choice = open, unreachable = open, rehearsal = open;
  choice.candidates.push_back({"10.8.0.3", "wg0", false});
  choice.rehearse = 20;
  unreachable.address = "";
  unreachable.candidates = {{"10.8.0.3", "wg0", false}};
  rehearsal.takesPhones = false;
  rehearsal.rehearse = 20;
  const std::pair<const char*, const host::RoomState&> rooms[] = {{"keypads", open},
                                                                  {"keypads-choice", choice},
                                                                  {"keypads-unreachable", unreachable},
                                                                  {"keypads-rehearsal", rehearsal}};
  for (const QSize size : {QSize(512, 384), kSizes[0], kSizes[1]})
    for (const auto& [name, room] : rooms) {
      desktop::KeypadsWindow window(nullptr, {});
      window.showRoom(room);
      window.show();
      window.resize(size);
      album.take(window, name);
    }
  desktop::KeypadsWindow none(nullptr, {});
  none.showNoController("The controller did not start in time.");
  none.show();
  album.take(none, "keypads-no-controller");
}

}  // namespace qrn::pictures
