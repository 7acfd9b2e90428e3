#include "tessaline/frame/definitions.h"

#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/frame/data_type_controller.h"

namespace tessaline {
namespace {

using testing::element;

constexpr const char* kFullItem =
    R"(<dataItem name="Flow" type="float" formatString="5.2f" access="ReadWrite" )"
    R"(defaultValue="1" label="FlowLabel" unit="l/min" source="dev" description="FlowDesc" )"
    R"(validators="v1" help="FlowHelp"/>)";

TEST(DataItemReading, ReadsTheElevenAttributes) {
  DeviceDataItem item;
  ASSERT_TRUE(readDataItem(element(kFullItem), item, kAllElevenAttributes));
  EXPECT_EQ(item.name, "Flow");
  EXPECT_EQ(item.Type, "float");
  EXPECT_EQ(item.FormatString, "5.2f");
  EXPECT_EQ(item.Access, "ReadWrite");
  EXPECT_EQ(item.DefaultValue, "1");
  EXPECT_EQ(item.Label, "FlowLabel");
  EXPECT_EQ(item.Unit, "l/min");
  EXPECT_EQ(item.Source, "dev");
  EXPECT_EQ(item.Description, "FlowDesc");
  EXPECT_EQ(item.Help, "FlowHelp");
  ASSERT_TRUE(item.ValidatorNode);
  EXPECT_EQ(item.ValidatorNode->nodeName(), "validators");
  EXPECT_EQ(item.ValidatorNode->nodeValue(), Variant("v1"));
}

TEST(DataItemReading, EachFamilyReadsItsOwnAttributes) {
  DeviceDataItem labels, dateTime;
  readDataItem(element(kFullItem), labels, kFirstTenAttributes);
  EXPECT_EQ(labels.Description, "FlowDesc");
  EXPECT_EQ(labels.Help, "");
  readDataItem(element(kFullItem), dateTime, kHelpAndFormatString);
  EXPECT_EQ(dateTime.Help, "FlowHelp");
  EXPECT_EQ(dateTime.FormatString, "5.2f");
  EXPECT_EQ(dateTime.name, "");
}

TEST(DataItemReading, ASecondItemKeepsWhatItLacks) {
  DeviceDataItem item;
  readDataItem(element(kFullItem), item, kAllElevenAttributes);
  readDataItem(element(R"(<dataItem name="Other" unit=""/>)"), item, kAllElevenAttributes);
  EXPECT_EQ(item.name, "Other");
  EXPECT_EQ(item.Unit, "");       // present and empty replaces
  EXPECT_EQ(item.Type, "float");  // absent keeps
  EXPECT_EQ(item.Help, "FlowHelp");
}

TEST(DataItemReading, WrongOrMissingNodesReadNothing) {
  DeviceDataItem item;
  item.name = "kept";
  EXPECT_FALSE(readDataItem(Ref<Object>(), item, kAllElevenAttributes));
  EXPECT_FALSE(readDataItem(element(R"(<DataItem name="x"/>)"), item, kAllElevenAttributes));
  EXPECT_FALSE(readDataItem(element(R"(<item name="x"/>)"), item, kAllElevenAttributes));
  EXPECT_FALSE(
      readDataItem(xml::parseDocument(R"(<dataItem name="x"/>)"), item, kAllElevenAttributes));
  const Ref<platform::XmlNode> attribute =
      element(R"(<e dataItem="x"/>)")->attributes()->getNamedItem("dataItem");
  EXPECT_FALSE(readDataItem(attribute, item, kAllElevenAttributes));
  EXPECT_TRUE(readDataItem(element("<dataItem/>"), item, kAllElevenAttributes));
  EXPECT_EQ(item.name, "kept");
  EXPECT_THROW(readDataItem(Ref<Object>(std::make_shared<Object>()), item, kAllElevenAttributes),
               VbError);
}

TEST(DataItemReading, KeepsLongAndNonAsciiValuesWhole) {
  DeviceDataItem item;
  const std::string label = "Débit volumique " + std::string(50000, 'x') + " 流量";
  readDataItem(element("<dataItem label='" + label + "'/>"), item, kAllElevenAttributes);
  EXPECT_EQ(item.Label, label);
}

class EnumerationReading : public testing::HeadlessTest {
 protected:
  VbArray<EnumData> read(const std::string& xml, IncludeIf rule) {
    auto table = readEnumeration(element(xml), rule, host);
    EXPECT_TRUE(table.has_value());
    return table ? *table : VbArray<EnumData>();
  }
};

TEST_F(EnumerationReading, EntriesTakeTheirLabelOrTheirNameAndALocalizedText) {
  host->translations["Open"] = "Offen";
  SetSharedHost(host);
  const auto table =
      read(R"(<enumeration><e name="Closed" code="0" label="Shut"/><e name="Open" code="1"/>)"
           R"(<e name="Empty" code="2" label=""/></enumeration>)",
           IncludeIf::Ignored);
  ASSERT_EQ(table.upperBound(), 3);  // three entries and the spare slot
  EXPECT_EQ(table[0].Label, "Shut");
  EXPECT_EQ(table[1].Label, "Open");
  EXPECT_EQ(table[1].Local, "Offen");
  EXPECT_EQ(table[2].Label, "");
  EXPECT_EQ(table[2].Local, "");
  EXPECT_EQ(table[3].code, "");
  EXPECT_TRUE(hasEnumData(table));
}

TEST_F(EnumerationReading, SkippedChildrenLeaveEmptySlotsWithoutConditions) {
  const auto table =
      read(R"(<enumeration><e name="A" code="1"/><e name="NoCode"/><!-- c --><e code="3"/>)"
           R"(<e name="D" code="4" includeIf="false"/></enumeration>)",
           IncludeIf::Ignored);
  ASSERT_EQ(table.upperBound(), 5);  // sized to the five child nodes
  EXPECT_EQ(table[0].name, "A");
  EXPECT_EQ(table[1].name, "D");  // includeIf is not read here
  EXPECT_EQ(table[2].name, "");
  EXPECT_TRUE(host->callsOf("EvaluateCondition").empty());
}

TEST_F(EnumerationReading, ConditionsAreAskedTrimmedAndTheTableIsCompacted) {
  host->evaluate = [](const std::string& expression) { return expression != "hide"; };
  const auto table =
      read(R"(<enumeration><e name="A" code="1" includeIf="  hide "/><e name="B" code="2" )"
           R"(includeIf="   "/><!-- c --><e name="C" code="3" includeIf="show"/>)"
           R"(<e name="NoCode" includeIf="show"/></enumeration>)",
           IncludeIf::Honoured);
  ASSERT_EQ(table.upperBound(), 2);
  EXPECT_EQ(table[0].name, "B");  // blanks only is no condition, though the host is asked
  EXPECT_EQ(table[1].name, "C");
  EXPECT_EQ(table[2].name, "");
  std::vector<std::string> asked;
  for (const auto& call : host->callsOf("EvaluateCondition")) asked.push_back(call.arguments[0]);
  EXPECT_EQ(asked, (std::vector<std::string>{"hide", "", "show", "show"}));
}

TEST_F(EnumerationReading, NoEntriesLeaveATableWithoutData) {
  const auto none = read("<enumeration><!-- nothing --></enumeration>", IncludeIf::Honoured);
  EXPECT_EQ(none.upperBound(), 0);
  EXPECT_FALSE(hasEnumData(none));
  EXPECT_FALSE(hasEnumData(VbArray<EnumData>()));
}

TEST_F(EnumerationReading, OtherNodesGiveNoTable) {
  EXPECT_FALSE(readEnumeration(Ref<Object>(), IncludeIf::Ignored, host));
  EXPECT_FALSE(readEnumeration(element("<Enumeration/>"), IncludeIf::Ignored, host));
  EXPECT_FALSE(readEnumeration(element("<dataItem/>"), IncludeIf::Honoured, host));
}

TEST_F(EnumerationReading, ConditionsNeedAHost) {
  EXPECT_THROW(readEnumeration(element(R"(<enumeration><e includeIf="x"/></enumeration>)"),
                               IncludeIf::Honoured, nullptr),
               VbError);
}

TEST_F(EnumerationReading, TenThousandEntries) {
  std::string xml = "<enumeration>";
  for (int i = 0; i < 10000; ++i) {
    xml += "<e name='n" + std::to_string(i) + "' code='" + std::to_string(i) + "'/>";
  }
  xml += "</enumeration>";
  const auto table = read(xml, IncludeIf::Honoured);
  EXPECT_EQ(table.upperBound(), 10000);
  EXPECT_EQ(table[9999].code, "9999");
}

struct Conversion {
  Variant value;
  std::optional<std::string> type;
  Variant expected;
  friend void PrintTo(const Conversion& row, std::ostream* out) {
    *out << describe(row.value) << " as " << row.type.value_or("(none)");
  }
};

class MatchTypeTable : public ::testing::TestWithParam<Conversion> {};

TEST_P(MatchTypeTable, ConvertsByTheTypeName) {
  DataTypeController controller;
  EXPECT_EQ(controller.MatchType(GetParam().value, GetParam().type), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MatchTypeTable,
    ::testing::Values(Conversion{Variant(5), "INT16", Variant(int16_t{5})},
                      Conversion{Variant(2.5), "int16", Variant(int16_t{2})},
                      Conversion{Variant(3.5), "Int16", Variant(int16_t{4})},
                      Conversion{Variant("70000"), "int32", Variant(int32_t{70000})},
                      Conversion{Variant("12.5"), "float", Variant(12.5)},
                      Conversion{Variant("True"), "bool", Variant(true)},
                      Conversion{Variant(0), "boolean", Variant(false)},
                      Conversion{Variant(2), "bool", Variant(true)},
                      Conversion{Variant(200.4), "byte", Variant(uint8_t{200})},
                      Conversion{Variant(1), "string", Variant("1")},
                      Conversion{Variant(1.5), "anything", Variant("1.5")},
                      Conversion{Variant(1.5), "", Variant("1.5")},
                      Conversion{Variant(true), std::nullopt, Variant("True")}));

TEST(DataTypeController, FailuresTravelToTheCaller) {
  DataTypeController controller;
  EXPECT_THROW(controller.MatchType(Variant(70000), std::string("int16")), VbError);
  EXPECT_THROW(controller.MatchType(Variant("abc"), std::string("float")), VbError);
  EXPECT_THROW(controller.MatchType(Variant(256), std::string("byte")), VbError);
  EXPECT_THROW(controller.MatchType(Variant::null()), VbError);
}

TEST(DataTypeController, DataTypeOfOneReadsString) {
  DataTypeController controller;
  EXPECT_EQ(controller.DataType(), Variant());
  controller.DataType(Variant(1));
  EXPECT_EQ(controller.DataType(), Variant("String"));
  controller.DataType(Variant("float"));
  EXPECT_EQ(controller.DataType(), Variant("float"));
}

TEST(DataTypeController, AccessWordsCompareWithCase) {
  DataTypeController controller;
  EXPECT_EQ(controller.GetAccessType("Read"), AccessType::ReadOnly);
  EXPECT_EQ(controller.GetAccessType("Write"), AccessType::WriteOnly);
  EXPECT_EQ(controller.GetAccessType("ReadWrite"), AccessType::ReadWrite);
  EXPECT_EQ(controller.GetAccessType("write"), AccessType::ReadOnly);
  EXPECT_EQ(controller.GetAccessType(""), AccessType::ReadOnly);
}

}  // namespace
}  // namespace tessaline
