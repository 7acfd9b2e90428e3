#include "tessaline/platform/xml/pugi_dom.h"

#include <pugixml.hpp>
#include <vector>

namespace tessaline::xml {

namespace {

using platform::XmlNamedNodeMap;
using platform::XmlNode;
using platform::XmlNodeList;

// Every node object keeps its document alive: a host may drop the document and keep a node.
using Document = std::shared_ptr<pugi::xml_document>;

Ref<XmlNode> wrap(const Document& doc, pugi::xml_node node);
Ref<XmlNode> wrap(const Document& doc, pugi::xml_attribute attribute);

bool isListed(pugi::xml_node child) {
  switch (child.type()) {
    case pugi::node_element:
    case pugi::node_comment:
    case pugi::node_cdata:
      return true;
    case pugi::node_pcdata: {
      for (const char* c = child.value(); *c; ++c) {
        if (*c != ' ' && *c != '\t' && *c != '\r' && *c != '\n') return true;
      }
      return false;
    }
    default:
      return false;
  }
}

void appendText(pugi::xml_node node, std::string& out) {
  for (pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      out += child.value();
    } else if (child.type() == pugi::node_element) {
      appendText(child, out);
    }
  }
}

class NodeList : public XmlNodeList {
 public:
  NodeList(Document doc, std::vector<pugi::xml_node> nodes)
      : doc_(std::move(doc)), nodes_(std::move(nodes)) {}
  int32_t length() override { return static_cast<int32_t>(nodes_.size()); }
  Ref<XmlNode> item(int32_t index) override {
    if (index < 0 || index >= length()) return nullptr;
    return wrap(doc_, nodes_[static_cast<size_t>(index)]);
  }

 private:
  Document doc_;
  std::vector<pugi::xml_node> nodes_;
};

// The attributes taken once, so that a walk by index over a long list stays linear.
class AttributeMap : public XmlNamedNodeMap {
 public:
  AttributeMap(Document doc, pugi::xml_node element) : doc_(std::move(doc)), element_(element) {
    for (pugi::xml_attribute a : element_.attributes()) attributes_.push_back(a);
  }
  Ref<XmlNode> getNamedItem(const std::string& name) override {
    for (pugi::xml_attribute a : attributes_) {
      if (name == a.name()) return wrap(doc_, a);
    }
    return nullptr;
  }
  int32_t length() override { return static_cast<int32_t>(attributes_.size()); }
  Ref<XmlNode> item(int32_t index) override {
    if (index < 0 || index >= length()) return nullptr;
    return wrap(doc_, attributes_[static_cast<size_t>(index)]);
  }

 private:
  Document doc_;
  pugi::xml_node element_;
  std::vector<pugi::xml_attribute> attributes_;
};

class Node : public XmlNode {
 public:
  Node(Document doc, pugi::xml_node node) : doc_(std::move(doc)), node_(node) {}
  Node(Document doc, pugi::xml_attribute attribute) : doc_(std::move(doc)), attribute_(attribute) {}

  std::string nodeName() override {
    if (attribute_) return attribute_.name();
    switch (node_.type()) {
      case pugi::node_document:
        return "#document";
      case pugi::node_element:
        return node_.name();
      case pugi::node_pcdata:
        return "#text";
      case pugi::node_cdata:
        return "#cdata-section";
      case pugi::node_comment:
        return "#comment";
      default:
        return std::string("#") + node_.name();
    }
  }

  Variant nodeValue() override {
    if (attribute_) return std::string(attribute_.value());
    switch (node_.type()) {
      case pugi::node_pcdata:
      case pugi::node_cdata:
      case pugi::node_comment:
        return std::string(node_.value());
      default:
        return Variant::null();
    }
  }

  Ref<XmlNamedNodeMap> attributes() override {
    if (attribute_ || node_.type() != pugi::node_element) return nullptr;
    return std::make_shared<AttributeMap>(doc_, node_);
  }

  Ref<XmlNodeList> childNodes() override {
    std::vector<pugi::xml_node> children;
    if (!attribute_) {
      for (pugi::xml_node child : node_.children()) {
        if (isListed(child)) children.push_back(child);
      }
    }
    return std::make_shared<NodeList>(doc_, std::move(children));
  }

  Ref<XmlNode> selectSingleNode(const std::string& xpath) override {
    if (attribute_) return nullptr;
    try {
      const pugi::xpath_node found = node_.select_node(xpath.c_str());
      if (found.attribute()) return wrap(doc_, found.attribute());
      if (found.node()) return wrap(doc_, found.node());
      return nullptr;
    } catch (const pugi::xpath_exception& e) {
      throw VbError(err::Failed, std::string("Invalid XPath expression: ") + e.what());
    }
  }

  std::string text() override {
    if (attribute_) return attribute_.value();
    if (node_.type() != pugi::node_element && node_.type() != pugi::node_document) {
      return node_.value();
    }
    std::string out;
    appendText(node_, out);
    return out;
  }

 private:
  Document doc_;
  pugi::xml_node node_;
  pugi::xml_attribute attribute_;
};

Ref<XmlNode> wrap(const Document& doc, pugi::xml_node node) {
  return std::make_shared<Node>(doc, node);
}
Ref<XmlNode> wrap(const Document& doc, pugi::xml_attribute attribute) {
  return std::make_shared<Node>(doc, attribute);
}

constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_comments;

Ref<XmlNode> finish(const Document& doc, const pugi::xml_parse_result& result) {
  if (!result) {
    throw VbError(err::Failed, std::string("XML parse error: ") + result.description() +
                                   " at offset " + std::to_string(result.offset));
  }
  return wrap(doc, static_cast<pugi::xml_node>(*doc));
}

}  // namespace

Ref<XmlNode> parseDocument(std::string_view text) {
  auto doc = std::make_shared<pugi::xml_document>();
  const auto result =
      doc->load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  return finish(doc, result);
}

Ref<XmlNode> parseElement(std::string_view text) {
  auto doc = std::make_shared<pugi::xml_document>();
  const auto result =
      doc->load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  finish(doc, result);
  const pugi::xml_node element = doc->document_element();
  if (!element) return nullptr;
  return wrap(doc, element);
}

Ref<XmlNode> loadDocument(const std::string& path) {
  auto doc = std::make_shared<pugi::xml_document>();
  const auto result = doc->load_file(path.c_str(), kParseOptions, pugi::encoding_auto);
  if (result.status == pugi::status_file_not_found || result.status == pugi::status_io_error) {
    throw VbError(err::FileNotFound);
  }
  return finish(doc, result);
}

}  // namespace tessaline::xml
