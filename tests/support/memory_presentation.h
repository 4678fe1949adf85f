// A presentation in memory for tests of the logic.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/storable.h"
#include "base/text.h"
#include "host/presentation.h"

namespace qrn::test {

struct FullDisk {
  int failAtWrite = 0;  // the nth write from now reports a full disk; 0 never

 protected:
  void failWhenTold(const std::string& what = "") {
    if (failAtWrite > 0 && --failAtWrite == 0)
      throw HostError(Fault::world, 61, "The disk is full" + what);
  }
};

class MemoryTags : public host::Tags, public FullDisk {
 public:
  std::string Item(std::string_view key) const override {
    const auto it = values.find(upperCase(key));
    return it == values.end() ? "" : it->second;
  }
  void Add(std::string_view key, std::string_view value) override {
    failWhenTold();
    values[upperCase(key)] = storable(value);
  }
  void Append(std::string_view key, std::string_view tail) override {
    failWhenTold();
    values[upperCase(key)] += storable(tail);
  }
  void Delete(std::string_view key) override {
    failWhenTold();
    values.erase(upperCase(key));
  }
  std::vector<std::string> Names() const override {
    std::vector<std::string> names;
    for (const auto& [name, value] : values) names.push_back(name);
    return names;
  }
  std::map<std::string, std::string> values;
};

class MemoryShape : public host::Shape {
 public:
  explicit MemoryShape(std::string shapeName, std::string shapeText = "")
      : name(std::move(shapeName)), text(std::move(shapeText)) {}
  std::string Name() const override { return name; }
  bool HasTextFrame() const override { return hasText; }
  std::string Text() const override { return text; }
  void SetText(std::string_view value) override { text = std::string(value); }
  bool Visible() const override { return visible; }
  void SetVisible(bool on) override { visible = on; }
  void Delete() override { deleted = true; }
  host::PlaceholderType Placeholder() const override { return placeholder; }

  std::string name, text;
  bool visible = true, hasText = true, deleted = false;
  host::PlaceholderType placeholder = host::PlaceholderType::none;
};

class MemorySlide : public host::Slide {
 public:
  MemorySlide(int id, int place) : id_(id), place_(place) {}
  int slideID() const override { return id_; }
  int slideIndex() const override { return place_; }
  std::string Title() const override { return title; }
  bool Hidden() const override { return hidden; }
  host::Tags& tags() override { return tagStore; }
  std::vector<host::Shape*> Shapes() override { return alive(shapes); }
  std::vector<host::Shape*> NotesPageShapes() override { return alive(notes); }
  void Export(const std::string& file, std::string_view, int, int) override { exported.push_back(file); }

  std::string title;
  bool hidden = false;
  MemoryTags tagStore;
  std::vector<MemoryShape> shapes, notes;
  std::vector<std::string> exported;

 private:
  static std::vector<host::Shape*> alive(std::vector<MemoryShape>& all) {
    std::vector<host::Shape*> result;
    for (MemoryShape& shape : all)
      if (!shape.deleted)
        result.push_back(&shape);
    return result;
  }
  int id_, place_;
};

class MemoryPresentation : public host::Presentation {
 public:
  explicit MemoryPresentation(int slideCount) {
    for (int i = 1; i <= slideCount; ++i) slides.push_back(std::make_unique<MemorySlide>(255 + i, i));
  }
  std::string path() const override { return folder; }
  std::string FullName() const override { return folder + "/deck.pptx"; }
  bool ReadOnly() const override { return false; }
  bool Saved() const override { return saved; }
  void Save() override {
    ++saves;
    saved = true;
  }
  void SetRunTags(const std::vector<std::string>& names) override { runTags = names; }
  std::string WhyNoVotes() const override { return whyNoVotes; }
  host::Tags& tags() override { return tagStore; }
  int SlideCount() const override { return static_cast<int>(slides.size()); }
  host::Slide& Slides(int index) override { return slide(index); }
  MemorySlide& slide(int index) {
    if (index < 1 || index > SlideCount())
      throw HostError(Fault::program, 9, "There is no slide " + std::to_string(index));
    return *slides[static_cast<std::size_t>(index - 1)];
  }
  host::Slide& AddTitleOnlySlide(int after) override {
    const int place = after + 1;
    slides.insert(slides.begin() + after, std::make_unique<MemorySlide>(255 + SlideCount() + 1, place));
    return slide(place);
  }
  double SlideWidth() const override { return 960; }
  double SlideHeight() const override { return 540; }
  std::optional<host::MasterFont> MasterTitleFont() override { return titleFont; }
  std::optional<host::MasterFont> MasterBodyFont() override { return bodyFont; }
  std::int32_t SchemeColour(int entry) override {
    const auto it = scheme.find(entry);
    return it == scheme.end() ? -1 : it->second;
  }

  std::string folder = "/work", whyNoVotes;
  std::vector<std::string> runTags;
  MemoryTags tagStore;
  std::vector<std::unique_ptr<MemorySlide>> slides;
  std::optional<host::MasterFont> titleFont, bodyFont;
  std::map<int, std::int32_t> scheme;
  int saves = 0;
  bool saved = true;
};

class MemoryView : public host::View {
 public:
  int SlideIndex() const override { return index; }
  void GotoSlide(int to) override { index = to; }
  int index = 1;
};

class MemoryProgram : public host::PresentationProgram {
 public:
  bool Running() const override { return running; }
  host::Presentation* ActivePresentation() override { return presentation; }
  int SlideShowWindowsCount() const override { return showRuns ? 1 : 0; }
  host::View* SlideShowView() override { return showRuns ? &show : nullptr; }
  host::View* ActiveWindowView() override { return &window; }
  std::string AddInPath() const override { return "/install"; }
  void SendKeysToShow(std::string_view keys) override { keysSent += std::string(keys); }

  bool running = true, showRuns = false;
  MemoryPresentation* presentation = nullptr;
  MemoryView show, window;
  std::string keysSent;
};

}  // namespace qrn::test
