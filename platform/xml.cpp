#include "tessaline/platform/xml.h"

namespace tessaline::platform {

Ref<XmlNode> asXmlNode(const Ref<Object>& object) {
  if (!object) return nullptr;
  Ref<XmlNode> node = refCast<XmlNode>(object);
  if (!node) throw VbError(err::TypeMismatch);
  return node;
}

std::optional<std::string> attributeValue(const Ref<XmlNode>& node, const std::string& name) {
  const Ref<XmlNamedNodeMap> attributes = node->attributes();
  if (!attributes) return std::nullopt;
  const Ref<XmlNode> attribute = attributes->getNamedItem(name);
  if (!attribute) return std::nullopt;
  return attribute->nodeValue().toText();
}

}  // namespace tessaline::platform
