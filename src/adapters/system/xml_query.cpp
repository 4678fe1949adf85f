#include "adapters/system/xml_query.h"

#include <pugixml.hpp>
#include <sstream>

namespace qrn::system {

namespace {

void collectText(const pugi::xml_node& node, std::string& text) {
  for (const pugi::xml_node& child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
      text += child.value();
    collectText(child, text);
  }
}

class Document : public host::XmlDocument {
 public:
  bool load(std::string_view text) {
    return static_cast<bool>(document_.load_buffer(text.data(), text.size(), pugi::parse_default));
  }
  std::optional<std::string> selectSingleNode(std::string_view query) const override {
    try {
      const pugi::xpath_node found = document_.select_node(std::string(query).c_str());
      if (!found.node())
        return std::nullopt;
      std::string text;
      collectText(found.node(), text);
      return text;
    } catch (const pugi::xpath_exception&) {
      return std::nullopt;
    }
  }

 private:
  pugi::xml_document document_;
};

}  // namespace

std::unique_ptr<host::XmlDocument> XmlQueries::loadXML(std::string_view text) {
  auto document = std::make_unique<Document>();
  if (!document->load(text))
    return nullptr;
  return document;
}

}  // namespace qrn::system
