#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

// The XML DOM as the controls read it: nodes that belong to the host's document, read and
// never changed. Absent things are Nothing, never an exception; a member called through
// Nothing raises 91 (see Ref).
namespace tessaline::platform {

class XmlNamedNodeMap;
class XmlNodeList;

class XmlNode : public virtual Object {
 public:
  // "#document", "#text", "#comment", "#cdata-section", or the element's or attribute's name.
  virtual std::string nodeName() = 0;
  // The text of an attribute, a text or a comment node; Null for elements and documents.
  virtual Variant nodeValue() = 0;
  // The attributes of an element; Nothing for every node that is no element.
  virtual Ref<XmlNamedNodeMap> attributes() = 0;
  // Elements, comments and text that isn't blank, in document order. Never Nothing.
  virtual Ref<XmlNodeList> childNodes() = 0;
  // The first node that the XPath expression selects from here, or Nothing. An expression
  // that isn't XPath raises a failure to the caller.
  virtual Ref<XmlNode> selectSingleNode(const std::string& xpath) = 0;
  // The text content of the node and all beneath it.
  virtual std::string text() = 0;
};

class XmlNamedNodeMap : public virtual Object {
 public:
  // The attribute node of that name (compared with case), or Nothing when absent.
  virtual Ref<XmlNode> getNamedItem(const std::string& name) = 0;
  virtual int32_t length() = 0;
  // The attribute at a position from 0, in document order; Nothing outside.
  virtual Ref<XmlNode> item(int32_t index) = 0;
};

class XmlNodeList : public virtual Object {
 public:
  virtual int32_t length() = 0;
  // The node at a position from 0; Nothing outside.
  virtual Ref<XmlNode> item(int32_t index) = 0;
};

// The node behind an object reference: Nothing stays Nothing; an object that is no XML node
// raises 13, as the cast to a typed node variable would.
Ref<XmlNode> asXmlNode(const Ref<Object>& object);

// The value of an attribute of an element, when the element has one of that name. The one
// test that every reading makes: a node without an attribute map (a comment or text among
// the children) has no attributes at all.
std::optional<std::string> attributeValue(const Ref<XmlNode>& node, const std::string& name);

}  // namespace tessaline::platform
