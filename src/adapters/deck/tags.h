// The tags of one slide or of the presentation in memory. A change is handed to the journal first; memory
// follows only when it is on the disk.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/deck/journal.h"
#include "adapters/deck/tags_part.h"
#include "host/presentation.h"

namespace qrn::deck {

// What makes `after` of the tag's value `before`: a splice when it is shorter than the value. `room` is to
// live as long as the change.
Change changeOf(std::uint32_t slide, std::string_view name, std::string_view before, std::string_view after,
                std::string& room);

class TagStore : public host::Tags {
 public:
  using Load = std::function<std::vector<Tag>()>;
  // Durable when it returns true; false for a change that is to last with the next save only. Throws
  // otherwise.
  using Keep = std::function<bool(const Change&)>;
  TagStore(std::uint32_t slide, Load load, Keep keep)
      : slide_(slide), load_(std::move(load)), keep_(std::move(keep)) {}

  std::string Item(std::string_view key) const override;
  void Add(std::string_view key, std::string_view value) override;
  void Append(std::string_view key, std::string_view tail) override;
  void Delete(std::string_view key) override;
  std::vector<std::string> Names() const override;

  const std::vector<Tag>& all() const;
  // Why the list cannot be read, "" when it can. Such a list reads as empty and takes nothing.
  const std::string& damage() const;
  bool changed() const { return changed_; }              // since reading or saving
  bool differs() const { return changed_ || passing_; }  // also by what makes no save
  void setSaved() { changed_ = passing_ = false; }
  // A change from a journal, which may hold anything. "" when it is applied, else why it cannot be.
  std::string_view replay(const Change& change);

 private:
  Tag* find(std::string_view name) const;
  void note() { (saves_ ? changed_ : passing_) = true; }
  void set(const std::string& name, std::string_view value);
  void append(Tag* tag, const std::string& name, std::string_view tail);
  void erase(const std::string& name);
  std::string_view replayAppend(const std::string& name, const Change& change);
  std::string_view replaySplice(const std::string& name, const Change& change);
  std::uint32_t slide_;
  Load load_;
  Keep keep_;
  mutable std::vector<Tag> tags_;
  mutable bool loaded_ = false;
  mutable std::string damage_;
  bool changed_ = false, passing_ = false;
  bool saves_ = true;  // what is being changed makes a save
};

}  // namespace qrn::deck
