#include "desktop/slide_pictures.h"

#include "base/errors.h"
#include "desktop/window_case.h"

namespace qrn::test {
namespace {

const QColor kGreen(0, 120, 0), kBlue(0, 0, 120);

void paint(const std::string& file, const QColor& colour, int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  image.save(QString::fromStdString(file), "PNG");
}

class PaintedSlide : public MemorySlide {
 public:
  using MemorySlide::MemorySlide;
  void Export(const std::string& file, std::string_view, int width, int height) override {
    if (broken)
      throw HostError(Fault::world, 0, "no office program");
    paint(file, kGreen, width, height);
    sizes.push_back(width);
  }
  bool broken = false;
  std::vector<int> sizes;
};

// Blue thumbnails, as many as were let through.
struct RunScript {
  std::deque<int> ready;
  bool canExport = true, ended = false, fails = false;
  int alive = 0;
};

class ScriptedRun : public host::PictureRun {
 public:
  ScriptedRun(RunScript& script, std::string folder) : script_(script), folder_(std::move(folder)) {
    ++script_.alive;
  }
  ~ScriptedRun() override { --script_.alive; }
  std::optional<host::SlidePicture> next() override {
    if (script_.fails)
      throw HostError(Fault::world, 0, "the painter is gone");
    if (script_.ready.empty())
      return std::nullopt;
    const int slide = script_.ready.front();
    script_.ready.pop_front();
    const std::string file = folder_ + "/" + std::to_string(slide) + ".jpg";
    paint(file, kBlue, 320, 180);
    return host::SlidePicture{slide, file};
  }
  bool canExport() const override { return script_.canExport; }
  bool hasEnded() const override { return script_.ended && script_.ready.empty(); }

 private:
  RunScript& script_;
  std::string folder_;
};

class PaintedDeck : public MemoryPresentation {
 public:
  explicit PaintedDeck(int count) : MemoryPresentation(count) {
    for (auto& one : slides) one = std::make_unique<PaintedSlide>(one->slideID(), one->slideIndex());
  }
  std::unique_ptr<host::PictureRun> ExportAll(int, int) override {
    return script ? std::make_unique<ScriptedRun>(*script, folder.path().toStdString()) : nullptr;
  }
  PaintedSlide& painted(int index) { return dynamic_cast<PaintedSlide&>(slide(index)); }
  std::optional<RunScript> script;
  QTemporaryDir folder;
};

class PicturesCase : public WindowCase {
 protected:
  PicturesCase() {
    pictures.setDeck(&deck);
    pictures.arrived = [this](int slide) { tell("arrived ", slide); };
    pictures.said = [this](const std::string&) { tell("said"); };
    on("thumbnail", [this](const Words& words) { tellImage(pictures.thumbnail(words.number(0))); });
    on("picture", [this](const Words& words) { tellImage(pictures.picture(words.number(0))); });
    on("all", [this](const Words&) { pictures.wantAll(); });
    on("want", [this](const Words& words) { pictures.want(words.number(0)); });
    on("wanted", [this](const Words&) {
      tell(pictures.wanted(), ", thumbnails ", pictures.thumbnailsWanted(),
           pictures.waits() ? ", waits" : "");
    });
    on("step", [this](const Words&) { tell(pictures.step() ? "" : "nothing to do"); });
    on("steps", [this](const Words&) {
      while (pictures.step()) continue;
    });
    on("sizes", [this](const Words& words) {
      for (const int width : deck.painted(words.number(0)).sizes) tell(nameOf(width));
    });
    on("broken", [this](const Words& words) { deck.painted(words.number(0)).broken = true; });
    // run [fails] [early] [ended] [SLIDE ...]: the one that brings thumbnails: early, nothing can be exported
    // yet
    on("run", [this](const Words& words) {
      RunScript& run = deck.script ? *deck.script : deck.script.emplace();
      run.fails = words.has("fails");
      run.canExport = !words.has("early");
      run.ended = words.has("ended");
      for (const std::string& word : words)
        if (std::isdigit(word[0]))
          run.ready.push_back(std::stoi(word));
    });
    on("runs", [this](const Words&) { tell(deck.script->alive); });
    on("another", [this](const Words&) { pictures.setDeck(&other); });
  }
  std::string nameOf(int width) const {
    return width == desktop::SlidePictures::kThumbnailWidth ? "small"
           : width == pictures.pictureSize().width()        ? "large"
                                                            : std::to_string(width);
  }
  // By its middle: pictures are green, thumbnails on their way blue.
  void tellImage(const QImage& image) {
    const QColor middle = image.pixelColor(image.width() / 2, image.height() / 2);
    tell(nameOf(image.width()), middle == kGreen      ? " picture"
                                : middle == kBlue     ? " picture that came"
                                : middle == Qt::white ? " drawing"
                                                      : " of another colour");
  }

  PaintedDeck deck{4}, other{2};
  desktop::SlidePictures pictures;
};

const bool kRegistered = registerCases<PicturesCase>("PicturesCase", QUORIN_CASES "/slide_pictures.case");

}  // namespace
}  // namespace qrn::test
