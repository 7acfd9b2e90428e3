#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support.h"
#include "tessaline/entry/data_text_box.h"

namespace tessaline {
namespace {

using platform::colors::kWindow;
using platform::colors::kYellow;

class TextBoxBinding : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    box = DTMDataTextBox::create();
    box->IDTMControl_Init(host);
    box->IDtmControl_Name("Flow");
    box->IDtmControl_DtmContainer(host);
    host->takeCalls();
  }

  headless::TextBox& text() { return headless::user(box->Text1()); }
  int32_t statusMode() { return box->DTMStatusControl1().IDTMStatusControl_Mode(); }
  std::string statusText() { return box->DTMStatusControl1().IDTMStatusControl_Text(); }
  // The user clicks into the box, selects everything and types.
  void retype(const std::string& typed) {
    text().click();
    text().select(0, 1000);
    text().type(typed);
  }
  std::vector<std::string> keyReleaseCalls() {
    std::vector<std::string> names;
    for (const auto& call : host->calls()) {
      if (call.operation == "ValidateItemValue" || call.operation == "ControlValueChanged") {
        names.push_back(call.operation);
      }
    }
    return names;
  }

  std::shared_ptr<DTMDataTextBox> box;
};

TEST_F(TextBoxBinding, StartsWithTheDefaultsOfAFreshControl) {
  auto fresh = DTMDataTextBox::create();
  EXPECT_TRUE(fresh->IDTMDataControl_Active());
  EXPECT_TRUE(fresh->IDtmControl_Enable());
  EXPECT_FALSE(fresh->IDTMDataControl_Hot());
  EXPECT_TRUE(fresh->IDtmControl_Visible());
  EXPECT_EQ(fresh->IDtmControl_Name(), "");
  EXPECT_EQ(fresh->IDTMDataControl_Value(), Variant(""));
  EXPECT_EQ(fresh->IDTMDataControl_PreviousValue(), Variant(""));
  EXPECT_EQ(fresh->TextType(), TextDataType::AlphaNumeric);
  EXPECT_TRUE(fresh->IDTMDataControl_CanSubscribe());
  EXPECT_TRUE(fresh->IDTMDataControl_Validate());
  EXPECT_EQ(fresh->IDTMDataControl_Access(), 2);
  EXPECT_EQ(fresh->IDTMDataControl_Source(), 0);
  EXPECT_EQ(fresh->IDtmControl_DataMode(), 2);
  EXPECT_FALSE(fresh->IDTMDataControl_CanWrite());
  EXPECT_EQ(fresh->IDTMDataControl_ErrorString(), "");
  EXPECT_EQ(fresh->DTMStatusControl1().IDTMStatusControl_Mode(), 0);
  EXPECT_FALSE(fresh->DTMStatusControl1().IDTMStatusControl_Stretch());
  EXPECT_FALSE(fresh->BaselineCaptured());
  EXPECT_EQ(headless::user(fresh->window()).takePropertyChanges(),
            (std::vector<std::string>{"IDTMDataControl_Value", "IDTMDataControl_Source",
                                      "IDtmControl_DataMode"}));
}

TEST_F(TextBoxBinding, OneEditFromDeviceValueToTheContainer) {
  box->IDTMDataControl_SetDeviceValue(Variant(12.5));
  EXPECT_EQ(box->Text1().Text(), "12.5");
  EXPECT_EQ(box->BaselineText(), "12.5");
  EXPECT_FALSE(box->IDTMDataControl_Hot());

  retype("13");
  EXPECT_EQ(keyReleaseCalls(),
            (std::vector<std::string>{"ValidateItemValue", "ControlValueChanged",
                                      "ValidateItemValue", "ControlValueChanged"}));
  const auto validations = host->callsOf("ValidateItemValue");
  EXPECT_EQ(validations.back().arguments, (std::vector<std::string>{"Flow", R"(String("13"))"}));
  EXPECT_EQ(host->callsOf("ControlValueChanged").back().arguments,
            std::vector<std::string>{"Flow"});
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Text1().BackColor(), kYellow);
  EXPECT_EQ(statusMode(), 102);
  EXPECT_EQ(statusText(), "Value Changed");
  EXPECT_EQ(box->IDTMDataControl_Value(), Variant("13"));
}

TEST_F(TextBoxBinding, TheHostsRefusalShowsInvalidWithItsText) {
  host->validate = [](const std::string&, const Variant&, std::string& errorText) {
    errorText = "Too big";
    return false;
  };
  box->IDTMDataControl_SetDeviceValue(Variant(1));
  retype("9");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Text1().BackColor(), kYellow);
  EXPECT_EQ(statusMode(), 104);
  EXPECT_EQ(statusText(), "Too big");
}

TEST_F(TextBoxBinding, ARefusedTextEqualToTheBaselineEndsClean) {
  host->validate = [](const std::string&, const Variant&, std::string&) { return false; };
  box->IDTMDataControl_SetDeviceValue(Variant("5"));
  retype("5");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(statusMode(), 0);
  EXPECT_EQ(box->Text1().BackColor(), kWindow);
}

TEST_F(TextBoxBinding, AnEmptyTextWithAnEmptyBaselineLeavesHotAlone) {
  host->validate = [](const std::string&, const Variant&, std::string&) { return false; };
  text().click();  // baseline "" captured
  text().backspace();
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(statusMode(), 104);  // the one state where 104 stands on the window colour
  EXPECT_EQ(box->Text1().BackColor(), kWindow);

  text().type("a");
  text().backspace();
  EXPECT_EQ(box->Text1().Text(), "");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
}

TEST_F(TextBoxBinding, ADeviceValueDuringAnEditMovesOnlyTheBaseline) {
  box->IDTMDataControl_SetDeviceValue(Variant(10));
  text().click();
  text().select(2, 0);
  text().type("5");
  ASSERT_TRUE(box->IDTMDataControl_Hot());

  box->IDTMDataControl_SetDeviceValue(Variant(20));
  EXPECT_EQ(box->Text1().Text(), "105");
  EXPECT_EQ(box->Text1().BackColor(), kYellow);
  EXPECT_EQ(box->BaselineText(), "20");
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant(10));

  text().select(0, 3);
  text().type("20");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Text1().BackColor(), kWindow);
}

TEST_F(TextBoxBinding, BaselineBlanksAreCutOnlyAtAKeyRelease) {
  box->IDTMDataControl_SetDeviceValue(Variant("7  "));
  EXPECT_EQ(box->Text1().Text(), "7");
  EXPECT_EQ(box->BaselineText(), "7  ");
  text().pressKey(headless::keys::kShift, platform::shift::kShift);
  EXPECT_EQ(box->BaselineText(), "7");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
}

TEST_F(TextBoxBinding, HotFalseClearsEvenAnInvalidMark) {
  host->validate = [](const std::string&, const Variant&, std::string&) { return false; };
  retype("x");
  ASSERT_EQ(statusMode(), 104);
  headless::user(box->window()).takePropertyChanges();

  box->IDTMDataControl_Hot(false);
  EXPECT_EQ(statusMode(), 0);
  EXPECT_EQ(box->Text1().BackColor(), kWindow);
  EXPECT_EQ(box->BaselineText(), "x");
  EXPECT_EQ(headless::user(box->window()).takePropertyChanges(),
            (std::vector<std::string>{"IDTMDataControl_Hot", "BackColor"}));

  box->IDTMDataControl_Hot(true);
  EXPECT_EQ(statusMode(), 102);
}

TEST_F(TextBoxBinding, SetModeShowsAnyStatusWithTheHostsText) {
  box->IDTMDataControl_SetMode(101, "");
  EXPECT_EQ(statusText(), "Read Error");
  box->IDTMDataControl_SetMode(104, "Bad value");
  EXPECT_EQ(statusMode(), 104);
  EXPECT_EQ(statusText(), "Bad value");
  box->IDTMDataControl_SetMode(50, "");
  EXPECT_EQ(statusText(), "Bad value");  // 1 to 100 keep the text
  box->IDTMDataControl_SetMode(0, "");
  EXPECT_EQ(statusText(), "");
  EXPECT_THROW(box->IDTMDataControl_SetMode(107, ""), VbError);
}

TEST_F(TextBoxBinding, AccessEnablesTheEditChild) {
  headless::user(box->window()).takePropertyChanges();
  box->IDTMDataControl_Access(0);
  EXPECT_FALSE(box->Text1().Enabled());
  EXPECT_FALSE(box->IDtmControl_Enable());
  EXPECT_EQ(headless::user(box->window()).takePropertyChanges(),
            (std::vector<std::string>{"IDtmControl_Enable", "IDTMDataControl_Access"}));
  text().type("abc");
  EXPECT_EQ(box->Text1().Text(), "");
  box->IDTMDataControl_Access(1);
  EXPECT_TRUE(box->Text1().Enabled());
}

TEST_F(TextBoxBinding, NumbersBoxesShowNaNForTextThatIsNoNumber) {
  box->TextType(TextDataType::Numbers);
  for (const char* value : {"nan", "1.#IND", "$5", "-nan(ind)"}) {
    box->IDTMDataControl_Value(Variant(value));
    EXPECT_EQ(box->Text1().Text(), "NaN") << value;
  }
  box->IDTMDataControl_Value(Variant("NAN"));
  EXPECT_EQ(box->Text1().Text(), "NAN");  // the test is with case
  EXPECT_EQ(host->errorLines().front(), "BuildMenu Numbers Enter in NAN");

  box->TextType(TextDataType::AlphaNumeric);
  host->takeCalls();
  box->IDTMDataControl_Value(Variant("nan"));
  EXPECT_EQ(box->Text1().Text(), "nan");
  EXPECT_EQ(host->errorLines(), std::vector<std::string>{"BuildMenu Numbers "});
}

TEST_F(TextBoxBinding, NumbersBoxesShowNaNForInfiniteAndUndefinedDoubles) {
  box->TextType(TextDataType::Numbers);
  for (double value : {std::numeric_limits<double>::infinity(),
                       -std::numeric_limits<double>::infinity(), std::nan("")}) {
    host->takeCalls();
    box->IDTMDataControl_SetDeviceValue(Variant(value));
    EXPECT_EQ(box->Text1().Text(), "NaN") << value;
    EXPECT_EQ(host->errorLines(), std::vector<std::string>{"BuildMenu Numbers Enter in NAN"});
  }
}

TEST_F(TextBoxBinding, TheValueIsTheShownTextAsAString) {
  box->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="F" type="float"/>)"));
  box->IDTMDataControl_Value(Variant(12.5));
  EXPECT_EQ(box->IDTMDataControl_Value(), Variant("12.5"));
  retype("abc");
  EXPECT_EQ(box->IDTMDataControl_Value(), Variant("abc"));
}

TEST_F(TextBoxBinding, SettingAValueCutsTrailingBlanksAndKeepsThePreviousValue) {
  box->IDTMDataControl_Value(Variant("ab  "));
  EXPECT_EQ(box->Text1().Text(), "ab");
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant("ab  "));
  retype("zz");
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant("ab  "));
  box->IDTMDataControl_SetUserValue(Variant(3));
  EXPECT_EQ(box->Text1().Text(), "3");
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant(3));
  EXPECT_TRUE(box->IDTMDataControl_Hot());  // the user value doesn't touch the mark
}

TEST_F(TextBoxBinding, GuardedMembersLogTheirLiteralAndCarryOn) {
  box->IDTMDataControl_Value(Variant("shown"));
  host->takeCalls();
  EXPECT_NO_THROW(box->IDTMDataControl_Value(Variant::null()));
  EXPECT_EQ(box->Text1().Text(), "shown");
  EXPECT_TRUE(box->IDTMDataControl_PreviousValue().isNull());  // as far as it got
  EXPECT_NO_THROW(box->IDTMDataControl_SetDeviceValue(Variant::null()));
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{
                "BuildMenu Numbers ",
                "Error on IDTMDataControl_Value94 ,Description = Invalid use of Null",
                "BuildMenu Numbers ",
                "Error on IDTMDataControl_Value94 ,Description = Invalid use of Null",
                "Error on DataTextBox IDTMDataControl_SetDeviceValue94 ,Description = Invalid "
                "use of Null"}));
  EXPECT_NO_THROW(box->IDTMDataControl_Value(Variant(VariantArray{0, {Variant(1)}})));
  EXPECT_EQ(host->errorLines().back(),
            "Error on IDTMDataControl_Value13 ,Description = Type mismatch");
}

TEST_F(TextBoxBinding, IsErrorReportsAndClearsTheCurrentError) {
  box->IDTMDataControl_Value(Variant::null());
  host->takeCalls();
  EXPECT_FALSE(box->IDTMDataControl_IsError());
  EXPECT_FALSE(box->IDTMDataControl_IsError());
  EXPECT_EQ(host->errorLines(), (std::vector<std::string>{"94 : Invalid use of Null", "0 : "}));
}

TEST_F(TextBoxBinding, WithoutAContainerTheEditStillMarks) {
  box->IDtmControl_DtmContainer(nullptr);
  retype("1");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_TRUE(host->callsOf("ControlValueChanged").empty());
}

TEST_F(TextBoxBinding, AKeyReleaseWithoutAHostFailsOutsideTheControl) {
  auto unready = DTMDataTextBox::create();
  headless::user(unready->Text1()).type("ab");
  EXPECT_EQ(unready->Text1().Text(), "ab");  // the edit happened before the release
  const auto errors = unhandled();
  ASSERT_EQ(errors.size(), 2u);
  EXPECT_EQ(errors[0].number(), 91);
  EXPECT_TRUE(host->calls().empty());
}

TEST_F(TextBoxBinding, TheBaselineIsCapturedWhenTheUserFirstComesToTheBox) {
  box->IDTMDataControl_Value(Variant("x"));
  EXPECT_FALSE(box->BaselineCaptured());
  text().focus();
  EXPECT_EQ(box->BaselineText(), "x");
  text().select(1, 0);
  text().type("y");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  text().blur();
  box->IDTMDataControl_Hot(false);  // baseline "xy"
  text().click();
  EXPECT_EQ(box->BaselineText(), "xy");
}

TEST_F(TextBoxBinding, VisibleReachesTheChildrenAndRebuildsFromTheDefinition) {
  host->translations["FlowHelp"] = "How much flows";
  box->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="F" help="FlowHelp"/>)"));
  EXPECT_EQ(box->ToolTipText(), "How much flows");
  host->takeCalls();
  box->IDtmControl_Visible(false);
  EXPECT_FALSE(box->Text1().Visible());
  EXPECT_FALSE(box->TooltipLabel().Visible());
  EXPECT_FALSE(box->DTMStatusControl1().window().Visible());
  EXPECT_EQ(host->callsOf("GetLocalizedString").size(), 1u);
}

TEST_F(TextBoxBinding, AWrongDefinitionLeavesTheControlUnconfiguredAndSilent) {
  box->IDTMDataControl_DataItemDef(testing::element(R"(<DataItem name="F" help="H"/>)"));
  box->IDTMDataControl_DataItemDef(xml::parseDocument(R"(<dataItem name="F"/>)"));
  EXPECT_EQ(box->dataItem().name, "");
  EXPECT_TRUE(host->calls().empty());
  EXPECT_TRUE(box->IDTMDataControl_DataItemDef());  // the node is kept all the same
}

TEST_F(TextBoxBinding, ChangeIsRaisedOnEveryChangeOfTheText) {
  struct Counter : ControlEvents {
    int changes = 0;
    void Change() override { ++changes; }
  };
  auto counter = std::make_shared<Counter>();
  box->Advise(counter);
  box->IDTMDataControl_Value(Variant("a"));
  box->IDTMDataControl_Value(Variant("a"));
  EXPECT_EQ(counter->changes, 1);
  retype("bc");
  EXPECT_EQ(counter->changes, 3);
}

TEST_F(TextBoxBinding, InitEmptiesTheFormatAndStartsTheStatusChild) {
  box->IDTMControlFormatter_EditFormat("5.2f");
  box->IDTMControl_Init(host);
  EXPECT_EQ(box->IDTMControlFormatter_EditFormat(), "");
  EXPECT_EQ(box->DTMStatusControl1().IDtmControl_GenericDtm(), Ref<GenericDtm>());
  box->IDTMControlFormatter_ScaleFormat("4d");
  EXPECT_EQ(box->IDTMControlFormatter_EditFormat(), "4d");
}

TEST_F(TextBoxBinding, TwoHostsOnOneThreadTheLastInitWins) {
  auto second = std::make_shared<host::ReferenceHost>();
  auto other = DTMDataTextBox::create();
  other->IDTMControl_Init(second);
  box->IDTMDataControl_SetMode(101, "");
  EXPECT_TRUE(host->callsOf("GetLocalizedString").empty());
  EXPECT_EQ(second->callsOf("GetLocalizedString").size(), 1u);
}

TEST_F(TextBoxBinding, StoredMembersKeepWhatTheHostGives) {
  box->IDtmControl_DataMode(-17);
  EXPECT_EQ(box->IDtmControl_DataMode(), -17);
  EXPECT_EQ(box->IDtmControl_DtmContainer(), Ref<DtmContainer>(host));
  box->IDTMDataControl_Name("Renamed");
  EXPECT_EQ(box->IDtmControl_Name(), "Renamed");
  retype("1");
  EXPECT_EQ(host->callsOf("ValidateItemValue").back().arguments[0], "Renamed");
}

TEST_F(TextBoxBinding, AHostReachesEveryMemberByName) {
  box->let("idtmdatacontrol_value", Variant("by name"));
  EXPECT_EQ(box->get("IDTMDataControl_Value"), Variant("by name"));
  box->call("IDTMDataControl_SetDeviceValue", {Variant(4)});
  EXPECT_EQ(box->get("text"), Variant("4"));
  box->let("TextType", Variant(0));
  EXPECT_EQ(box->TextType(), TextDataType::Numbers);
  EXPECT_EQ(box->call("IsNotANumber", {Variant("nan")}), Variant(true));
  box->let("IDtmControl_DtmContainer", Variant(Ref<Object>(host)));
  EXPECT_TRUE(box->IDtmControl_DtmContainer());

  auto failsWith = [](auto&& action) {
    try {
      action();
    } catch (const VbError& e) {
      return e.number();
    }
    return 0;
  };
  EXPECT_EQ(failsWith([&] { box->get("NoSuchMember"); }), 438);
  EXPECT_EQ(failsWith([&] { box->let("IDTMDataControl_CanWrite", Variant(true)); }), 438);
  EXPECT_EQ(failsWith([&] { box->call("IDTMDataControl_SetDeviceValue"); }), 449);
  EXPECT_EQ(failsWith([&] { box->let("IDtmControl_DtmContainer", Variant("text")); }), 424);
}

TEST_F(TextBoxBinding, AnswersItsInterfacesByIdentifier) {
  const Ref<Object> object = box;
  EXPECT_TRUE(queryInterface(object, IDtmControl::kIid));
  EXPECT_TRUE(queryInterface(object, "D82402A0-F558-483F-AFBC-8BE377E68346"));
  EXPECT_TRUE(queryInterface<IDTMControlFormatter>(object));
  EXPECT_FALSE(queryInterface(object, IDTMEnumeration::kIid));
  EXPECT_FALSE(queryInterface(object, IDTMStatusControl::kIid));
  const Ref<Object> status = box->DTMStatusControl1().shared_from_this();
  EXPECT_TRUE(queryInterface<IDTMStatusControl>(status));
  EXPECT_FALSE(queryInterface<IDTMDataControl>(status));
}

}  // namespace
}  // namespace tessaline
