#include "deck/scratch.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace qrn::fuzz {

void write(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string freshDeck(std::string_view bytes) {
  static const std::string folder = "/dev/shm/quorin-deck-fuzz-" + std::to_string(::getpid());
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  const std::string file = folder + "/talk.pptx";
  write(file, bytes);
  return file;
}

void readAll(deck::Deck& deck) {
  const auto readShapes = [](const std::vector<host::Shape*>& shapes) {
    for (host::Shape* shape : shapes) {
      (void)(shape->Name() + shape->Text());
      (void)shape->Visible();
      (void)shape->Placeholder();
      if (shape->HasTextFrame())
        shape->SetText("changed\r\ntext");
      shape->SetVisible(!shape->Visible());
    }
  };
  (void)deck.MasterTitleFont();
  (void)deck.MasterBodyFont();
  for (int entry = 1; entry <= 10; ++entry) (void)deck.SchemeColour(entry);
  (void)deck.foreignSaveWarning();
  for (int i = 1; i <= deck.SlideCount(); ++i) {
    (void)deck.Slides(i).Title();
    readShapes(deck.Slides(i).Shapes());
    readShapes(deck.Slides(i).NotesPageShapes());
  }
}

void useDeck(const std::string& file) {
  int slides = 0;
  try {
    const auto deck = deck::Deck::open(file);
    slides = deck->SlideCount();
    for (int i = 1; i <= slides; ++i) deck->Slides(i).tags().Add("QRNVOTES", "vote\r\n");
    try {
      readAll(*deck);
      deck->AddTitleOnlySlide(slides);
    } catch (const HostError&) {
    }
    deck->Save();
  } catch (const HostError&) {
    return;
  }
  try {
    const auto deck = deck::Deck::open(file);
    for (int i = 1; i <= slides; ++i)
      if (deck->Slides(i).tags().Item("qrnVotes") != "vote\r\n")
        throw HostError(Fault::program, 0, "a tag is gone");
  } catch (const HostError& error) {
    std::fprintf(stderr, "saved, but: %s\n", error.what());
    std::abort();
  }
}

}  // namespace qrn::fuzz
