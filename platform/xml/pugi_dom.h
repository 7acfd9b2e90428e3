#pragma once

#include <string>
#include <string_view>

#include "tessaline/platform/xml.h"

// The XML DOM on pugixml: documents for hosts, tests and the demo. The controls never parse;
// they read the nodes that a host hands them.
namespace tessaline::xml {

// The document node of an XML text (as UTF-8). Malformed text raises a failure that says
// what is wrong and where.
Ref<platform::XmlNode> parseDocument(std::string_view text);
// The document element of an XML text.
Ref<platform::XmlNode> parseElement(std::string_view text);
// The document node of a file, in the encoding that its declaration names.
Ref<platform::XmlNode> loadDocument(const std::string& path);

}  // namespace tessaline::xml
