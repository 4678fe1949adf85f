// Relationships between the parts of a deck, and the list of content types.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/deck/package.h"
#include "adapters/deck/xml.h"

namespace qrn::deck {

struct Relationship {
  std::string id;
  std::string kind;    // last step of the type ("slide", "tags"); the whole type when it is a foreign one
  std::string target;  // part name; "" for what is outside the deck
};

// Those of `part`; of the deck itself for "". Empty when there are none.
std::vector<Relationship> relationshipsOf(const Parts& parts, const std::string& part);
const Relationship* byId(const std::vector<Relationship>& all, std::string_view id);
const Relationship* byKind(const std::vector<Relationship>& all, std::string_view kind);
std::string relationshipsPartOf(const std::string& part);
// Part name of a relationship's target, relative or absolute; "" when it leads out of the deck.
std::string resolveTarget(const std::string& part, std::string_view target);

// Adds a relationship from `part` to `target` and gives its id.
std::string addRelationship(Parts& parts, const std::string& part, const Dialect& dialect,
                            std::string_view kind, const std::string& target);
// "" when neither an override nor a default names one.
std::string contentTypeOf(const Parts& parts, const std::string& part);
void addContentType(Parts& parts, const std::string& part, std::string_view type);

}  // namespace qrn::deck
