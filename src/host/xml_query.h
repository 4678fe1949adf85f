// Queries into a small XML text, for the few places that read one from a tag.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qrn::host {

class XmlDocument {
 public:
  virtual ~XmlDocument() = default;
  // Text of the first node that the XPath `query` selects, with the text of its children; none without a
  // node.
  virtual std::optional<std::string> selectSingleNode(std::string_view query) const = 0;
};

class XmlQuery {
 public:
  virtual ~XmlQuery() = default;
  // Null when the text is not well-formed.
  virtual std::unique_ptr<XmlDocument> loadXML(std::string_view text) = 0;
};

}  // namespace qrn::host
