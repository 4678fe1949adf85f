// A deck in memory with made-up slides, for pictures of the windows.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/presentation.h"

namespace qrn::pictures {

class MadeUpTags : public host::Tags {
 public:
  std::string Item(std::string_view key) const override;
  void Add(std::string_view key, std::string_view value) override;
  void Append(std::string_view key, std::string_view tail) override {
    Add(key, Item(key) + std::string(tail));
  }
  void Delete(std::string_view key) override;
  std::vector<std::string> Names() const override;

 private:
  std::map<std::string, std::string> values_;
};

class MadeUpShape : public host::Shape {
 public:
  explicit MadeUpShape(std::string text) : text_(std::move(text)) {}
  std::string Name() const override { return "Text"; }
  bool HasTextFrame() const override { return true; }
  std::string Text() const override { return text_; }
  void SetText(std::string_view text) override { text_ = std::string(text); }
  bool Visible() const override { return true; }
  void SetVisible(bool) override {}
  void Delete() override {}
  host::PlaceholderType Placeholder() const override { return host::PlaceholderType::body; }

 private:
  std::string text_;
};

class MadeUpSlide : public host::Slide {
 public:
  MadeUpSlide(int index, std::string title, std::string text, bool hidden)
      : index_(index), title_(std::move(title)), hidden_(hidden), shape_(std::move(text)) {}
  int slideID() const override { return 255 + index_; }
  int slideIndex() const override { return index_; }
  std::string Title() const override { return title_; }
  bool Hidden() const override { return hidden_; }
  host::Tags& tags() override { return tags_; }
  std::vector<host::Shape*> Shapes() override { return {&shape_}; }
  std::vector<host::Shape*> NotesPageShapes() override { return {}; }
  void Export(const std::string& file, std::string_view format, int width, int height) override;

 private:
  int index_;
  std::string title_;
  bool hidden_;
  MadeUpShape shape_;
  MadeUpTags tags_;
};

// Ground and text of the slides; red lowest.
struct Scheme {
  std::int32_t ground, text;
};
inline constexpr Scheme kNavyScheme{0x5a2d12, 0xffffff}, kDarkScheme{0x3a2313, 0xfbf7f4},
    kLightScheme{0xfafcfb, 0x2e2014};

class MadeUpDeck : public host::Presentation {
 public:
  explicit MadeUpDeck(int slides, bool readOnly = false);
  std::string path() const override { return "/workshops/harbour"; }
  std::string FullName() const override { return "/workshops/harbour/Harbour workshop.pptx"; }
  bool ReadOnly() const override { return readOnly_; }
  void Save() override {}
  host::Tags& tags() override { return tags_; }
  int SlideCount() const override { return static_cast<int>(slides_.size()); }
  host::Slide& Slides(int index) override { return *slides_.at(static_cast<std::size_t>(index - 1)); }
  host::Slide& AddTitleOnlySlide(int after) override { return Slides(after); }
  double SlideWidth() const override { return 960; }
  double SlideHeight() const override { return 540; }
  std::optional<host::MasterFont> MasterTitleFont() override { return std::nullopt; }
  std::optional<host::MasterFont> MasterBodyFont() override { return std::nullopt; }
  std::int32_t SchemeColour(int entry) override;
  void setScheme(const Scheme& scheme) { scheme_ = scheme; }

 private:
  bool readOnly_;
  Scheme scheme_ = kNavyScheme;
  MadeUpTags tags_;
  std::vector<std::unique_ptr<MadeUpSlide>> slides_;
};

}  // namespace qrn::pictures
