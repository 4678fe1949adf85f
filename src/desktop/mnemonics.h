// The letters that Alt reaches in a window. They follow its captions; no two are the same.
#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace qrn::desktop {

class Mnemonics {
 public:
  using Caption = std::function<std::string()>;
  using Show = std::function<void(const QString& caption)>;  // "&" stands before the letter
  static constexpr bool choosesFirst = true;
  void add(Caption caption, Show show, bool first = false) {
    parts_.insert(first ? parts_.begin() : parts_.end(), {std::move(caption), std::move(show)});
  }
  void sync();  // gives letters where captions have changed; a caption that stands twice gets none

 private:
  struct Part {
    Caption caption;
    Show show;
  };
  std::vector<Part> parts_;
  std::vector<std::string> shown_;
};

}  // namespace qrn::desktop
