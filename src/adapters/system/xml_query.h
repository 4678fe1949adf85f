// XPath queries through the XML library.
#pragma once

#include "host/xml_query.h"

namespace qrn::system {

class XmlQueries : public host::XmlQuery {
 public:
  std::unique_ptr<host::XmlDocument> loadXML(std::string_view text) override;
};

}  // namespace qrn::system
