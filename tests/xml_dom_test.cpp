#include <gtest/gtest.h>

#include "tessaline/platform/xml.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline {
namespace {

using platform::XmlNode;

TEST(XmlDom, ChildNodesHoldElementsCommentsAndTextThatIsNotBlank) {
  const Ref<XmlNode> root = xml::parseElement(
      "<enumeration>\n  <a/>\n  <!-- note -->\n  text\n  <b x='1'/><![CDATA[raw]]>\n"
      "</enumeration>");
  const auto children = root->childNodes();
  ASSERT_EQ(children->length(), 5);
  EXPECT_EQ(children->item(0)->nodeName(), "a");
  EXPECT_EQ(children->item(1)->nodeName(), "#comment");
  EXPECT_EQ(children->item(1)->nodeValue(), Variant(" note "));
  EXPECT_EQ(children->item(2)->nodeName(), "#text");
  EXPECT_EQ(children->item(3)->nodeName(), "b");
  EXPECT_EQ(children->item(4)->nodeName(), "#cdata-section");
  EXPECT_FALSE(children->item(5));
  EXPECT_FALSE(children->item(-1));
}

TEST(XmlDom, AttributesExistOnElementsOnly) {
  const Ref<XmlNode> root = xml::parseElement("<e name='n' Name='N'><!--c--></e>");
  EXPECT_TRUE(root->nodeValue().isNull());
  const auto map = root->attributes();
  ASSERT_TRUE(map);
  EXPECT_EQ(map->length(), 2);
  EXPECT_EQ(map->getNamedItem("name")->nodeValue(), Variant("n"));
  EXPECT_EQ(map->getNamedItem("Name")->nodeValue(), Variant("N"));
  EXPECT_FALSE(map->getNamedItem("NAME"));
  EXPECT_EQ(map->item(1)->nodeName(), "Name");

  const Ref<XmlNode> comment = root->childNodes()->item(0);
  EXPECT_FALSE(comment->attributes());
  try {
    comment->attributes()->getNamedItem("name");
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), 91);
  }
}

TEST(XmlDom, SelectSingleNodeFindsOrGivesNothing) {
  const Ref<XmlNode> root =
      xml::parseElement("<trend><trendSource item='a'/><trendSource item='b'/></trend>");
  EXPECT_EQ(root->selectSingleNode("trendSource")->attributes()->getNamedItem("item")->text(), "a");
  EXPECT_EQ(root->selectSingleNode("trendSource[2]/@item")->nodeValue(), Variant("b"));
  EXPECT_FALSE(root->selectSingleNode("rangeSource"));
  EXPECT_THROW(root->selectSingleNode("]["), VbError);
}

TEST(XmlDom, KeepsLongAndNonAsciiValues) {
  const std::string longValue(100000, 'x');
  const Ref<XmlNode> root = xml::parseElement("<e label='Durchfluß €' long='" + longValue + "'/>");
  EXPECT_EQ(root->attributes()->getNamedItem("label")->nodeValue(), Variant("Durchfluß €"));
  EXPECT_EQ(root->attributes()->getNamedItem("long")->nodeValue().toText().size(), 100000u);
}

TEST(XmlDom, MalformedTextFailsWithAReason) {
  try {
    xml::parseElement("<e><f></e>");
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_NE(e.description().find("XML parse error"), std::string::npos);
  }
  EXPECT_THROW(xml::parseDocument(""), VbError);
  EXPECT_THROW(xml::loadDocument("/nonexistent/file.xml"), VbError);
}

TEST(XmlDom, NodesOutliveTheirDocumentReference) {
  Ref<XmlNode> child;
  {
    const Ref<XmlNode> document = xml::parseDocument("<a><b c='d'/></a>");
    EXPECT_EQ(document->nodeName(), "#document");
    child = document->selectSingleNode("a/b");
  }
  EXPECT_EQ(platform::attributeValue(child, "c"), "d");
}

TEST(XmlDom, TheCastToANodeRejectsOtherObjects) {
  EXPECT_FALSE(platform::asXmlNode(Ref<Object>()));
  try {
    platform::asXmlNode(Ref<Object>(std::make_shared<Object>()));
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), 13);
  }
}

}  // namespace
}  // namespace tessaline
