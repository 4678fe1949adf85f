// XML parts: pugixml reads them, and every node knows where it stands in the bytes, so that a change replaces
// just those bytes and leaves all others as they were.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/deck/encoding.h"

namespace qrn::deck {

// The namespaces and relationship types come in two dialects, never mixed within a deck.
struct Dialect {
  std::string_view presentation, drawing,
      relationships;  // namespaces; types are `relationships` + "/" + kind
};
const Dialect& transitional();
const Dialect& strict();

enum class Space { presentation, drawing, relationships };

class Xml {
 public:
  // Throws HostError(badData) naming `where` for text that is not well-formed or declares a document type.
  Xml(std::string bytes, const std::string& where);
  Xml(const Xml&) = delete;
  Xml& operator=(const Xml&) = delete;
  const std::string& text() const { return text_; }  // UTF-8
  std::string encoded(std::string text) const { return encoding_.encode(std::move(text), where_); }
  pugi::xml_node root() const { return document_.document_element(); }
  const Dialect& dialect() const;  // of the root element

  // Where the node stands: its `<`, one past the `>` of its start tag, its `</`, one past its end.
  struct Extent {
    std::size_t begin, startTagEnd, contentEnd, end;
    bool selfClosing;
  };
  Extent extent(pugi::xml_node node) const;
  // Bytes of an attribute with the blank before it, and of its value without quotes. `begin` is npos when the
  // element has no such attribute.
  struct AttributeExtent {
    std::size_t begin, valueBegin, valueEnd, end;
    char quote;
  };
  AttributeExtent attribute(pugi::xml_node node, std::string_view name) const;

 private:
  std::string where_;
  Encoding encoding_;
  std::string text_;
  pugi::xml_document document_;
};

// Names without regard to the prefix in use; `space` accepts both dialects.
std::string_view localName(std::string_view qualified);
bool is(pugi::xml_node node, Space space, std::string_view local);
pugi::xml_node childOf(pugi::xml_node parent, Space space, std::string_view local);
std::vector<pugi::xml_node> childrenOf(pugi::xml_node parent, Space space, std::string_view local);
// First of this name below the node, in document order.
pugi::xml_node findBelow(pugi::xml_node parent, Space space, std::string_view local);
std::string prefixOf(pugi::xml_node node);  // with its colon, "" for the default namespace
// Prefix with colon under which `uri` is known at this node for attributes, "" when there is none.
std::string prefixFor(pugi::xml_node node, std::string_view uri);
// Value of the relationship attribute (`r:id`) of that node, "" when absent.
std::string relationshipAttribute(pugi::xml_node node, std::string_view local = "id");
bool isTrue(std::string_view value);  // "1", "true", "on"

// Changes to a text by place. Places are those of the unchanged text; they must not overlap. What is inserted
// at one place stands in the order of the calls.
class Splices {
 public:
  void replace(std::size_t begin, std::size_t end, std::string text);
  void insert(std::size_t at, std::string text) { replace(at, at, std::move(text)); }
  // New last child of the element, also when that is written as `<x/>`.
  void append(const Xml& xml, pugi::xml_node parent, const std::string& child);
  bool empty() const { return changes_.empty(); }
  std::string applyTo(const Xml& xml) const;  // in the encoding of the part

 private:
  struct Change {
    std::size_t begin, end;
    std::string text;
  };
  std::vector<Change> changes_;
};

}  // namespace qrn::deck
