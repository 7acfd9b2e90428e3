#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/display/static_label.h"

namespace tessaline {
namespace {

constexpr const char* kUnits =
    R"(<enumeration><e name="Litre" code="3" label="l"/><e name="Metre" code="4"/>)"
    R"(<e name="Meter" code="4"/></enumeration>)";

class DataLabel : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    label = DTMDataLabel::create();
    label->IDTMControl_Init(host);
  }
  std::string caption() { return label->Label1().Caption(); }
  std::shared_ptr<DTMDataLabel> label;
};

TEST_F(DataLabel, StartsReadOnlyAndInactive) {
  EXPECT_FALSE(label->IDTMDataControl_Active());
  EXPECT_FALSE(label->IDTMDataControl_CanSubscribe());
  EXPECT_EQ(label->IDTMDataControl_Access(), 0);
  EXPECT_EQ(caption(), "");
  EXPECT_FALSE(label->IDTMDataControl_Validate());
}

TEST_F(DataLabel, ShowsTheTextOfTheEntryWhoseCodeTheValueIs) {
  label->IDTMEnumeration_EnumDataDef(testing::element(kUnits));
  EXPECT_EQ(caption(), "");  // a new enumeration doesn't touch the caption
  label->IDTMDataControl_SetDeviceValue(Variant(3));
  EXPECT_EQ(caption(), "l");
  EXPECT_EQ(label->IDTMDataControl_Value(), Variant("3"));
  label->IDTMDataControl_SetDeviceValue(Variant("4"));
  EXPECT_EQ(caption(), "Meter");  // the later of two entries
}

TEST_F(DataLabel, AValueNoEntryKnowsIsUnknownUnitsAndAnEmptyOneChangesNothing) {
  label->IDTMDataControl_SetDeviceValue(Variant(5));
  EXPECT_EQ(caption(), "Unknown Units");
  EXPECT_EQ(label->IDTMDataControl_Value(), Variant(5));
  label->IDTMEnumeration_EnumDataDef(testing::element(kUnits));
  label->IDTMDataControl_SetDeviceValue(Variant(3));
  label->IDTMDataControl_SetDeviceValue(Variant(""));
  EXPECT_EQ(caption(), "l");
}

TEST_F(DataLabel, ANewDisplayTextShowsWithTheNextValue) {
  label->IDTMEnumeration_EnumDataDef(testing::element(kUnits));
  label->IDTMDataControl_SetDeviceValue(Variant(3));
  label->IDTMEnumeration1_UpdateEnumString("3", "Liter");
  EXPECT_EQ(caption(), "l");
  EXPECT_EQ(label->IDTMDataControl_Value(), Variant(3));  // "l" is no entry's text any more
  label->IDTMDataControl_SetDeviceValue(Variant(3));
  EXPECT_EQ(caption(), "Liter");
}

TEST_F(DataLabel, EachReadOfTheValueEmptiesThePreviousValue) {
  label->IDTMDataControl_Value(Variant("x"));
  EXPECT_EQ(label->IDTMDataControl_PreviousValue(), Variant("x"));
  label->IDTMDataControl_Value();
  EXPECT_TRUE(label->IDTMDataControl_PreviousValue().isEmpty());
}

TEST_F(DataLabel, HasNoMarkAndStaysEnabledWhateverAccessSays) {
  label->IDTMDataControl_Hot(true);
  EXPECT_FALSE(label->IDTMDataControl_Hot());
  label->IDTMDataControl_Access(0);
  label->IDtmControl_Enable(false);
  EXPECT_TRUE(label->Label1().Enabled());
  EXPECT_TRUE(label->IDtmControl_Enable());
  label->let("Enabled", false);
  EXPECT_FALSE(label->IDtmControl_Enable());
  label->IDTMDataControl_SetUserValue(Variant(3));
  EXPECT_EQ(caption(), "");
  label->IDTMDataControl_SetMode(104, "ignored");
  label->IDtmControl_DtmContainer(host);
  EXPECT_FALSE(label->IDtmControl_DtmContainer());
}

TEST_F(DataLabel, NullIsCaughtAsADeviceValueAndFailsAsAValue) {
  label->IDTMDataControl_SetDeviceValue(Variant(5));
  label->IDTMDataControl_SetDeviceValue(Variant::null());
  EXPECT_EQ(caption(), "Unknown Units");
  EXPECT_EQ(host->errorLines().back(),
            "Error on DataLabel IDTMDataControl_SetDeviceValue94 ,Description = Invalid use of "
            "Null");
  EXPECT_THROW(label->IDTMDataControl_Value(Variant::null()), VbError);
}

TEST_F(DataLabel, BuildsItsTooltipFromTheDescriptionEvenWhileInvisible) {
  host->translations["D"] = "Unit of the flow";
  label->IDtmControl_Visible(false);
  label->IDTMDataControl_DataItemDef(
      testing::element(R"(<dataItem name="U" description="D" help="H"/>)"));
  const auto* tip = headless::current().tooltips().ownedBy(label->window().hWnd());
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->tools.at(0).text, "Unit of the flow");
  EXPECT_EQ(label->dataItem().Help, "");  // the label reads no help
}

TEST_F(DataLabel, KeepsASizeOfAtLeast150Twips) {
  auto& window = headless::user(label->window());
  window.resize(100, 100);
  EXPECT_EQ(label->window().Width(), 150);
  EXPECT_EQ(label->window().Height(), 150);
  window.resize(101, 2000);
  EXPECT_EQ(label->window().Width(), 101);
  EXPECT_EQ(label->Label1().Height(), 2000);
}

class LaunchLabel : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    host->translations["Alarms"] = "Alarms: ";
    label = DTMDataLaunchLabel::create();
    label->IDtmControl_DefaultText("Alarms");
    label->IDTMControl_Init(host);
    label->IDTMEnumeration_EnumDataDef(testing::element(
        R"(<enumeration><e name="A" code="1"/><e name="B" code="2"/><e name="C" code="4"/>)"
        R"(<e name="AB" code="3"/></enumeration>)"));
  }
  std::string caption() { return label->Label1().Caption(); }
  std::shared_ptr<DTMDataLaunchLabel> label;
};

TEST_F(LaunchLabel, ShowsEveryEntryWhoseBitsAreAllSet) {
  EXPECT_EQ(label->IDtmControl_DefaultText(), "Alarms: ");  // localized once the host came
  label->IDTMDataControl_SetDeviceValue(Variant(5));
  EXPECT_EQ(caption(), "Alarms: A | C");
  label->IDTMDataControl_SetDeviceValue(Variant("3"));
  EXPECT_EQ(caption(), "Alarms: A | B | AB");
  label->IDTMDataControl_SetDeviceValue(Variant(0));
  EXPECT_EQ(caption(), "Alarms: 0");
  label->IDTMDataControl_SetDeviceValue(Variant(8));
  EXPECT_EQ(caption(), "Alarms: 0");
}

TEST_F(LaunchLabel, ATextOfZeroOnTheFirstHitIsReplacedByTheNext) {
  label->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="Zero" code="1" label="0"/><e name="B" code="2"/></enumeration>)"));
  label->IDtmControl_DefaultText("");
  label->IDTMDataControl_SetDeviceValue(Variant(3));
  EXPECT_EQ(caption(), "B");
}

TEST_F(LaunchLabel, ACodeOrValueThatIsNoNumberFailsAndTheCaptionStays) {
  label->IDTMDataControl_SetDeviceValue(Variant(1));
  label->IDTMDataControl_SetDeviceValue(Variant("x"));
  EXPECT_EQ(caption(), "Alarms: A");
  label->IDTMEnumeration_EnumDataDef(
      testing::element(R"(<enumeration><e name="Bad" code="two"/></enumeration>)"));
  label->IDTMDataControl_SetDeviceValue(Variant(1));
  EXPECT_EQ(caption(), "Alarms: A");
  EXPECT_EQ(host->errorLines().back(),
            "Error on DataLabel IDTMDataControl_SetDeviceValue13 ,Description = Type mismatch");
  EXPECT_THROW(label->IDTMDataControl_Value(Variant(2)), VbError);
}

TEST_F(LaunchLabel, SkippedChildrenLeaveEmptyCodesThatAreNoNumbers) {
  // The table keeps one slot per child node; the empty code of a skipped child fails.
  label->IDTMEnumeration_EnumDataDef(
      testing::element(R"(<enumeration><e name="A" code="1"/><!-- note --></enumeration>)"));
  label->IDTMDataControl_SetDeviceValue(Variant(1));
  EXPECT_EQ(host->errorLines().back(),
            "Error on DataLabel IDTMDataControl_SetDeviceValue13 ,Description = Type mismatch");
}

TEST_F(LaunchLabel, TheControlFollowsItsCaptionsSize) {
  label->IDTMDataControl_SetDeviceValue(Variant(1));
  const int32_t narrow = label->window().Width();
  label->IDTMDataControl_SetDeviceValue(Variant(7));
  EXPECT_GT(label->window().Width(), narrow);
  EXPECT_EQ(label->window().Width(), label->Label1().Width() + 100);
  EXPECT_EQ(label->window().Height(), label->Label1().Height() + 100);
}

TEST_F(LaunchLabel, AClickLaunchesByItsType) {
  label->IDTMControl_FunctionID(42);
  EXPECT_EQ(label->IDtmControl_LaunchType(), 1);
  headless::Label& user = headless::user(label->Label1());
  user.click();
  label->IDtmControl_LaunchType(0);
  user.click();
  label->IDtmControl_LaunchType(7);
  user.click();
  EXPECT_EQ(host->callsOf("LaunchFunctionSecondary").at(0).arguments[0], "42");
  EXPECT_EQ(host->callsOf("LaunchFunctionPrimary").size(), 1u);
  EXPECT_TRUE(host->callsOf("ControlValueChanged").empty());
}

TEST_F(LaunchLabel, ALaunchWithoutAHostOrContainerIsLogged) {
  label->IDtmControl_LaunchType(2);
  headless::user(label->Label1()).click();
  EXPECT_EQ(host->errorLines().back(),
            "Error on Label1_Click91 ,Description = Object variable or With block variable not "
            "set");
  label->IDtmControl_GenericDtm(nullptr);
  label->IDtmControl_LaunchType(0);
  headless::user(label->Label1()).click();
  EXPECT_TRUE(host->callsOf("LaunchFunctionPrimary").empty());
}

TEST_F(LaunchLabel, StoresItsHostAndStartsActive) {
  EXPECT_TRUE(label->IDTMDataControl_Active());
  EXPECT_TRUE(label->IDTMDataControl_CanSubscribe());
  EXPECT_EQ(label->IDTMDataControl_Access(), 2);
  EXPECT_EQ(label->IDtmControl_GenericDtm(), Ref<GenericDtm>(host));
}

class StaticLabel : public testing::HeadlessTest {};

TEST_F(StaticLabel, ShowsItsKeyUntilItsOwnHostTranslatesIt) {
  auto label = DtmStaticLabel::create();
  label->IDtmControl_Name("Title");
  EXPECT_EQ(label->Label1().Caption(), "Title");
  host->translations["Title"] = "Titel";
  label->IDTMControl_Init(host);
  EXPECT_EQ(label->Label1().Caption(), "Titel");
  EXPECT_EQ(label->IDtmControl_Name(), "Title");
  EXPECT_FALSE(SharedHost());  // its host is its own

  auto second = std::make_shared<host::ReferenceHost>();
  second->translations["Title"] = "Titre";
  label->IDTMControl_Init(second);
  EXPECT_EQ(label->Label1().Caption(), "Titre");
}

TEST_F(StaticLabel, AsksItsHostWithAnyKey) {
  auto label = DtmStaticLabel::create();
  label->IDTMControl_Init(host);
  label->IDtmControl_Name("");
  EXPECT_EQ(host->callsOf("GetLocalizedString").size(), 2u);  // Init and the empty key
}

TEST_F(StaticLabel, SizesByItsOwnNumbers) {
  auto label = DtmStaticLabel::create();
  auto& window = headless::user(label->window());
  window.resize(750, 615);
  EXPECT_EQ(label->window().Height(), 250);
  window.resize(751, 616);
  EXPECT_EQ(label->window().Height(), 616);
  EXPECT_EQ(label->window().Width(), 751);
  window.resize(100, 150);
  EXPECT_EQ(label->window().Width(), 750);
  EXPECT_EQ(label->window().Height(), 150);
  window.resize(800, 151);
  EXPECT_EQ(label->Label1().Height(), 151);
}

TEST_F(StaticLabel, ForwardsEnableVisibleAndTooltipToItsLabel) {
  auto label = DtmStaticLabel::create();
  label->IDtmControl_Enable(false);
  EXPECT_FALSE(label->Label1().Enabled());
  label->IDtmControl_Visible(false);
  EXPECT_FALSE(label->Label1().Visible());
  label->ToolTipText("Key");
  EXPECT_EQ(label->Label1().ToolTipText(), "Key");
  EXPECT_FALSE(queryInterface<IDTMDataControl>(Ref<Object>(label)));
}

}  // namespace
}  // namespace tessaline
