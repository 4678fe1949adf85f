// The presentation program as the logic sees it: slides, tags, shapes, the show. Operations keep the names
// under which a presentation program offers them. Indices of slides and shapes count from 1.
//
// Lifetimes: a Presentation owns its slides and shapes; references stay good until the shape or slide is
// deleted or the presentation is closed. Failing operations throw HostError.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::host {

// A store of named texts. Names are found in any case and kept in upper case; values come back exactly.
class Tags {
 public:
  virtual ~Tags() = default;
  virtual std::string Item(std::string_view key) const = 0;  // "" when absent
  virtual void Add(std::string_view key, std::string_view value) = 0;
  // Same result as Add(key, Item(key) + tail). Its cost does not grow with the value already there, and when
  // it returns the tail is on the disk.
  virtual void Append(std::string_view key, std::string_view tail) = 0;
  virtual void Delete(std::string_view key) = 0;  // absent: nothing happens
  virtual std::vector<std::string> Names() const = 0;
};

enum class PlaceholderType { none, title, body, other };

struct MasterFont {
  std::string name;
  double size = 0;  // points
  bool bold = false;
  bool italic = false;
  bool underline = false;
  std::int32_t colour = 0;  // red lowest
};

class Shape {
 public:
  virtual ~Shape() = default;
  virtual std::string Name() const = 0;
  virtual bool HasTextFrame() const = 0;
  virtual std::string Text() const = 0;  // paragraphs joined by CR, the program's own habit
  virtual void SetText(std::string_view text) = 0;
  virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void Delete() = 0;
  virtual PlaceholderType Placeholder() const = 0;
};

class Slide {
 public:
  virtual ~Slide() = default;
  virtual int slideID() const = 0;
  virtual int slideIndex() const = 0;
  virtual std::string Title() const = 0;  // text of the title placeholder, "" without one
  virtual bool Hidden() const = 0;
  // What is wrong with a slide that cannot be read, "" when nothing is. Such a slide has no title, shapes or
  // tags, and nothing can be stored on it.
  virtual std::string Damage() { return ""; }
  virtual Tags& tags() = 0;
  virtual std::vector<Shape*> Shapes() = 0;
  virtual std::vector<Shape*> NotesPageShapes() = 0;  // empty when the slide has no notes page
  // Writes a picture of the slide, width x height pixels; format "JPG" or "PNG".
  virtual void Export(const std::string& file, std::string_view format, int width, int height) = 0;
};

struct SlidePicture {
  int slide = 0;     // from 1
  std::string file;  // JPEG; to be read at once, for it may go
};

// Pictures of all slides on their way, while everything else goes on. What is unfinished ends with the
// object.
class PictureRun {
 public:
  virtual ~PictureRun() = default;
  // The next one, when one is ready: does a few milliseconds of work and returns. Throws HostError.
  virtual std::optional<SlidePicture> next() = 0;
  virtual bool canExport() const = 0;  // false as long as Export() would have to wait, or give a makeshift
  virtual bool hasEnded() const = 0;   // nothing more comes; a slide may have been left out
};

class Presentation {
 public:
  virtual ~Presentation() = default;
  virtual std::string path() const = 0;      // folder, without separator at the end
  virtual std::string FullName() const = 0;  // file with folder
  virtual bool ReadOnly() const = 0;
  virtual bool Saved() const {
    return true;
  }  // false: what is stored waits beside the file for the next save
  // Why votes could not be stored, "" when they can. To be asked before the room votes.
  virtual std::string WhyNoVotes() const { return ""; }
  virtual void Save() = 0;
  // Tags of the presentation that tell the state of a run. To change them is nothing to save: they go into
  // the file with what else is.
  virtual void SetRunTags(const std::vector<std::string>& names) { (void)names; }
  virtual Tags& tags() = 0;
  virtual int SlideCount() const = 0;
  virtual Slide& Slides(int index) = 0;             // 1 .. SlideCount(), else HostError
  virtual Slide& AddTitleOnlySlide(int after) = 0;  // 0 puts it first
  // Pictures of width x height pixels. Null when only Export() makes them.
  virtual std::unique_ptr<PictureRun> ExportAll(int /*width*/, int /*height*/) { return nullptr; }
  virtual double SlideWidth() const = 0;   // points
  virtual double SlideHeight() const = 0;  // points
  virtual std::optional<MasterFont> MasterTitleFont() = 0;
  virtual std::optional<MasterFont> MasterBodyFont() = 0;
  // Colour of the scheme, red lowest; entries 1 background, 2 text, 3 second background, 4 second text,
  // 5 to 10 the six accents. -1 when not available.
  virtual std::int32_t SchemeColour(int entry) = 0;
};

class View {
 public:
  virtual ~View() = default;
  virtual int SlideIndex() const = 0;
  virtual void GotoSlide(int index) = 0;
};

// Error number of a program that runs with no presentation open.
inline constexpr int kNoPresentation = static_cast<int>(0x80048240U);

// The running program. Attached once at start; a null presentation means that none is loaded.
class PresentationProgram {
 public:
  virtual ~PresentationProgram() = default;
  virtual bool Running() const = 0;
  virtual Presentation* ActivePresentation() = 0;
  virtual int SlideShowWindowsCount() const = 0;
  virtual View* SlideShowView() = 0;          // null when no show runs
  virtual View* ActiveWindowView() = 0;       // the edit window; null when there is none
  virtual std::string AddInPath() const = 0;  // folder of the installation, without separator at the end
  virtual void SendKeysToShow(std::string_view keys) = 0;  // "~" is Enter
  // Another run of this program on the same presentation, told apart by its title.
  virtual bool PreviousInstance() const { return false; }
  virtual bool AppActivate(const std::string& title) {  // false: no program of that title
    (void)title;
    return false;
  }
  virtual void CloseApplication(const std::string& title) { (void)title; }
};

}  // namespace qrn::host
