#include "adapters/deck/tags.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "adapters/deck/splice.h"
#include "base/letter_case.h"
#include "base/storable.h"

namespace qrn::deck {

namespace {

bool isTagName(std::string_view name) {
  return !name.empty() && isStorable(name) && foldCase(name) == name;
}

std::string nameFor(std::string_view key) {
  std::string name = isStorable(key) ? foldCase(key) : "";
  if (!isTagName(name))
    throw HostError(Fault::program, 5, "Not a name for a tag: \"" + storable(key) + "\"");
  return name;
}

constexpr const char* kOtherValue = "a text is not what was changed";

}  // namespace

Change changeOf(std::uint32_t slide, std::string_view name, std::string_view before, std::string_view after,
                std::string& room) {
  std::optional<std::string> splice = spliceOf(before, after, after.size());
  if (!splice)
    return {Change::Kind::add, slide, name, after, 0};
  room = std::move(*splice);
  return {Change::Kind::splice, slide, name, room, before.size()};
}

const std::vector<Tag>& TagStore::all() const {
  if (loaded_)
    return tags_;
  try {
    tags_ = load_();
  } catch (const HostError& error) {
    if (error.fault() != Fault::badData)
      throw;
    damage_ = error.what();
  }
  loaded_ = true;
  return tags_;
}

const std::string& TagStore::damage() const {
  all();
  return damage_;
}

Tag* TagStore::find(std::string_view name) const {
  all();
  const auto found =
      std::find_if(tags_.begin(), tags_.end(), [&](const Tag& tag) { return tag.name == name; });
  return found == tags_.end() ? nullptr : &*found;
}

std::string TagStore::Item(std::string_view key) const {
  const Tag* tag = find(foldCase(key));
  return tag == nullptr ? "" : tag->value;
}

void TagStore::Add(std::string_view key, std::string_view value) {
  const std::string name = nameFor(key), clean = storable(value);
  const Tag* old = find(name);
  if (old != nullptr && old->value == clean)
    return;
  const std::string_view before = old == nullptr ? std::string_view() : old->value;
  std::string room;
  saves_ = keep_(changeOf(slide_, name, before, clean, room));
  set(name, clean);
}

void TagStore::Append(std::string_view key, std::string_view tail) {
  const std::string name = nameFor(key), clean = storable(tail);
  Tag* tag = find(name);
  if (clean.empty() && tag != nullptr)
    return;
  saves_ = keep_({Change::Kind::append, slide_, name, clean, tag == nullptr ? 0 : tag->value.size()});
  append(tag, name, clean);
}

void TagStore::Delete(std::string_view key) {
  const std::string name = foldCase(key);
  if (find(name) == nullptr)
    return;
  saves_ = keep_({Change::Kind::remove, slide_, name, "", 0});
  erase(name);
}

std::vector<std::string> TagStore::Names() const {
  std::vector<std::string> names;
  for (const Tag& tag : all()) names.push_back(tag.name);
  return names;
}

std::string_view TagStore::replay(const Change& change) {
  if (!damage().empty())
    return "what it changes is damaged";
  if (!isTagName(change.name))
    return "the name of a text is not one";
  const std::string name(change.name);
  if (change.kind == Change::Kind::splice)
    return replaySplice(name, change);
  if (!isStorable(change.value))
    return "a text holds what a deck cannot hold";
  if (change.kind == Change::Kind::append)
    return replayAppend(name, change);
  if (change.kind == Change::Kind::add)
    set(name, change.value);
  else
    erase(name);
  return "";
}

std::string_view TagStore::replayAppend(const std::string& name, const Change& change) {
  Tag* tag = find(name);
  const std::string_view value = tag == nullptr ? std::string_view() : tag->value;
  const bool there = value.size() > change.number &&
                     value.substr(change.number, change.value.size()) == change.value;  // with more behind it
  if (there)
    return "";
  if (value.size() != change.number)
    return kOtherValue;
  append(tag, name, change.value);
  return "";
}

std::string_view TagStore::replaySplice(const std::string& name, const Change& change) {
  Tag* tag = find(name);
  if (tag == nullptr || tag->value.size() != change.number)
    return kOtherValue;
  std::optional<std::string> value = spliced(tag->value, change.value);
  if (!value)
    return kOtherValue;
  tag->value = std::move(*value);
  note();
  return "";
}

void TagStore::set(const std::string& name, std::string_view value) {
  if (Tag* tag = find(name))
    tag->value = value;
  else
    tags_.push_back({name, std::string(value)});
  note();
}

// Costs nothing for the text before it. `tag` is what find() gave for the name.
void TagStore::append(Tag* tag, const std::string& name, std::string_view tail) {
  if (tag == nullptr)
    tags_.push_back({name, std::string(tail)});
  else
    tag->value += tail;
  note();
}

void TagStore::erase(const std::string& name) {
  all();
  if (std::erase_if(tags_, [&](const Tag& tag) { return tag.name == name; }) > 0)
    note();
}

}  // namespace qrn::deck
