// The tag list of a slide or of the presentation: where it stands in the deck, reading it, writing it.
#pragma once

#include <string>
#include <vector>

#include "adapters/deck/package.h"

namespace qrn::deck {

struct Tag {
  std::string name;  // upper case
  std::string value;
  bool operator==(const Tag&) const = default;
};

// `owner` is the presentation part or a slide part. A list that is referred to but missing reads as empty.
std::vector<Tag> readTags(const Parts& parts, const std::string& owner);
// Makes the tags of `owner` those given. Only what differs is written; whatever else stands in the list, in
// the owner and in the deck stays as it is. `apart` gives the owner a list of its own (its list is another
// slide's too).
void writeTags(Parts& parts, const std::string& owner, const std::vector<Tag>& tags, bool apart);
// Part that holds the owner's list, "" when it has none.
std::string tagsPartOf(const Parts& parts, const std::string& owner);

// Readers that count ten million characters for one value are common, so a longer value is kept in pieces:
// NAME, `NAME#2`, `NAME#3` ... A piece is followed by the next one only when it is full.
std::vector<Tag> splitLongValues(const std::vector<Tag>& tags);
std::vector<Tag> joinLongValues(std::vector<Tag> pieces);

// The owner's text without its tag list, for telling whether anything else in it differs.
std::string withoutTags(const Parts& parts, const std::string& owner);

}  // namespace qrn::deck
