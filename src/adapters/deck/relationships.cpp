#include "adapters/deck/relationships.h"

#include <algorithm>

#include "adapters/deck/text.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

constexpr const char* kContentTypes = "[Content_Types].xml";
constexpr std::string_view kRelationshipsNamespace =
    "http://schemas.openxmlformats.org/package/2006/relationships";

std::string kindOf(std::string_view type) {
  for (const Dialect* dialect : {&transitional(), &strict()}) {
    const std::string_view base = dialect->relationships;
    if (type.size() > base.size() && type.substr(0, base.size()) == base && type[base.size()] == '/')
      return std::string(type.substr(base.size() + 1));
  }
  return std::string(type);
}

std::string unescapePercent(std::string_view text) {
  const auto digit = [](char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
  };
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) >= 0 && digit(text[i + 2]) >= 0) {
      out.push_back(static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2])));
      i += 2;
    } else {
      out.push_back(text[i]);
    }
  }
  return out;
}

// Path from the folder of `part` to `target`, both part names.
std::string relativeTarget(const std::string& part, const std::string& target) {
  std::string folder = part.substr(0, part.rfind('/') == std::string::npos ? 0 : part.rfind('/') + 1);
  std::string rest = target, up;
  for (std::size_t slash; (slash = folder.find('/')) != std::string::npos;) {
    const std::string step = folder.substr(0, slash + 1);
    if (up.empty() && rest.rfind(step, 0) == 0)
      rest.erase(0, step.size());
    else
      up += "../";
    folder.erase(0, slash + 1);
  }
  return up + rest;
}

std::string freeId(const std::vector<Relationship>& all) {
  for (std::size_t number = all.size() + 1;; ++number) {
    const std::string id = "rId" + std::to_string(number);
    if (byId(all, id) == nullptr)
      return id;
  }
}

}  // namespace

std::vector<Relationship> relationshipsOf(const Parts& parts, const std::string& part) {
  std::vector<Relationship> all;
  const std::string name = relationshipsPartOf(part);
  if (!parts.has(name))
    return all;
  const Xml xml(parts.read(name), parts.file() + " (" + name + ")");
  for (const pugi::xml_node node : xml.root().children()) {
    if (localName(node.name()) != "Relationship")
      continue;
    const bool outside = std::string_view(node.attribute("TargetMode").value()) == "External";
    all.push_back({node.attribute("Id").value(), kindOf(node.attribute("Type").value()),
                   outside ? "" : resolveTarget(part, node.attribute("Target").value())});
  }
  return all;
}

const Relationship* byId(const std::vector<Relationship>& all, std::string_view id) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.id == id; });
  return found == all.end() ? nullptr : &*found;
}

const Relationship* byKind(const std::vector<Relationship>& all, std::string_view kind) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.kind == kind; });
  return found == all.end() ? nullptr : &*found;
}

std::string relationshipsPartOf(const std::string& part) {
  const std::size_t slash = part.rfind('/');
  const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
  return part.substr(0, name) + "_rels/" + part.substr(name) + ".rels";
}

std::string resolveTarget(const std::string& part, std::string_view target) {
  std::string path = unescapePercent(target.substr(0, target.find('#')));
  if (path.empty() || path.find(':') != std::string::npos || path.find('\\') != std::string::npos)
    return "";
  if (path.front() != '/') {
    const std::size_t slash = part.rfind('/');
    path = (slash == std::string::npos ? "/" : "/" + part.substr(0, slash + 1)) + path;
  }
  std::vector<std::string> steps;
  for (std::size_t at = 1; at <= path.size();) {
    const std::size_t slash = std::min(path.find('/', at), path.size());
    const std::string step = path.substr(at, slash - at);
    at = slash + 1;
    if (step.empty() || step == ".")
      continue;
    if (step != "..") {
      steps.push_back(step);
    } else {
      if (steps.empty())
        return "";
      steps.pop_back();
    }
  }
  return joined(steps, "/");
}

std::string addRelationship(Parts& parts, const std::string& part, const Dialect& dialect,
                            std::string_view kind, const std::string& target) {
  const std::string name = relationshipsPartOf(part);
  if (!parts.has(name))
    parts.put(name,
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<Relationships xmlns=\"" +
                  std::string(kRelationshipsNamespace) + "\"/>");
  const std::string id = freeId(relationshipsOf(parts, part));
  const Xml xml(parts.read(name), parts.file() + " (" + name + ")");
  Splices splices;
  splices.append(xml, xml.root(),
                 "<" + prefixOf(xml.root()) + "Relationship Id=\"" + id + "\" Type=\"" +
                     std::string(dialect.relationships) + "/" + std::string(kind) + "\" Target=\"" +
                     escapeAttribute(relativeTarget(part, target)) + "\"/>");
  parts.put(name, splices.applyTo(xml));
  return id;
}

std::string contentTypeOf(const Parts& parts, const std::string& part) {
  const Xml xml(parts.read(kContentTypes), parts.file() + " (" + kContentTypes + ")");
  const std::string name = lowerCase("/" + part);
  const std::string extension = name.substr(std::min(name.rfind('.') + 1, name.size()));
  std::string byDefault;
  for (const pugi::xml_node node : xml.root().children()) {
    const std::string_view element = localName(node.name());
    if (element == "Override" && lowerCase(node.attribute("PartName").value()) == name)
      return node.attribute("ContentType").value();
    if (element == "Default" && lowerCase(node.attribute("Extension").value()) == extension)
      byDefault = node.attribute("ContentType").value();
  }
  return byDefault;
}

void addContentType(Parts& parts, const std::string& part, std::string_view type) {
  if (contentTypeOf(parts, part) == type)
    return;
  const Xml xml(parts.read(kContentTypes), parts.file() + " (" + kContentTypes + ")");
  Splices splices;
  splices.append(xml, xml.root(),
                 "<" + prefixOf(xml.root()) + "Override PartName=\"/" + escapeAttribute(part) +
                     "\" ContentType=\"" + std::string(type) + "\"/>");
  parts.put(kContentTypes, splices.applyTo(xml));
}

}  // namespace qrn::deck
