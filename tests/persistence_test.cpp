// The property bag of each control: reading orders and what they bring about, defaults, the
// names that are read and not written (or the other way round), where a stored tooltip text
// goes, forwarded properties and their notifications, and the form's first call.
#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/display/static_label.h"
#include "tessaline/display/status_control.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/support/combo_rows.h"

namespace tessaline {
namespace {

using platform::MemoryPropertyBag;
namespace colors = platform::colors;

// A bag that keeps the order in which a control asks for its properties.
class RecordingBag : public MemoryPropertyBag {
 public:
  Variant ReadProperty(const std::string& name, const Variant& defaultValue) override {
    read.push_back(name);
    return MemoryPropertyBag::ReadProperty(name, defaultValue);
  }
  std::vector<std::string> read;
};

std::vector<std::string> writtenNames(ControlFrame& control) {
  MemoryPropertyBag bag;
  // Every property away from its default, so that each written name is kept.
  control.WriteProperties(bag);
  std::vector<std::string> names;
  for (const auto& [name, value] : bag.entries()) names.push_back(name);
  return names;
}

bool contains(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

class Persistence : public testing::HeadlessTest {};

TEST_F(Persistence, BagNamesCompareWithoutCaseAndDefaultsStayOut) {
  MemoryPropertyBag bag;
  bag.WriteProperty("IDTMControl_Enable", Variant(false), Variant(true));
  EXPECT_EQ(bag.ReadProperty("IDtmControl_Enable", Variant(true)), Variant(false));
  bag.WriteProperty("idtmcontrol_enable", Variant(true), Variant(true));
  EXPECT_TRUE(bag.empty()) << "a value equal to its default drops what was stored";
  bag.WriteProperty("Mode", Variant(int16_t{2}), Variant(int32_t{2}));
  EXPECT_TRUE(bag.empty()) << "2 as a 16-bit and as a 32-bit integer is the same value";
  bag.WriteProperty("Mode", Variant::null(), Variant());
  EXPECT_EQ(bag.ReadProperty("Mode", Variant(1)), Variant::null());
}

TEST_F(Persistence, TextBoxFromAnEmptyBagHasTheDesignValueAndAnEmptyText) {
  auto box = DTMDataTextBox::create();
  RecordingBag bag;
  box->ReadProperties(bag);
  EXPECT_EQ(box->Text1().Text(), "") << "Text is read after the value";
  const auto at = [&](std::string_view name) {
    return std::find(bag.read.begin(), bag.read.end(), name) - bag.read.begin();
  };
  EXPECT_LT(at("IDTMDataControl_Value"), at("IDTMDataControl_PreviousValue"));
  EXPECT_LT(at("IDtmControl_Enable"), at("IDTMDataControl_Access"));
  EXPECT_LT(at("IDTMDataControl_Hot"), at("BackColor"));
  EXPECT_LT(at("IDTMDataControl_Value"), at("Text"));
  EXPECT_EQ(bag.read.front(), "IDTMDataControl_Active");
  EXPECT_EQ(bag.read.back(), "RightToLeft");
  ASSERT_EQ(bag.read.size(), 38u);
}

TEST_F(Persistence, AccessReadAfterEnableWins) {
  auto box = DTMDataTextBox::create();
  MemoryPropertyBag bag;
  bag.put("IDTMDataControl_Access", Variant(0));
  bag.put("IDtmControl_Enable", Variant(true));
  box->ReadProperties(bag);
  EXPECT_FALSE(box->Text1().Enabled());
}

// The colour is read after Hot, so its stored value (or its default) has the last word.
TEST_F(Persistence, StoredColourReplacesTheOneThatHotChose) {
  auto hot = DTMDataTextBox::create();
  hot->IDTMDataControl_Hot(true);
  MemoryPropertyBag saved;
  hot->WriteProperties(saved);
  auto back = DTMDataTextBox::create();
  back->ReadProperties(saved);
  EXPECT_TRUE(back->IDTMDataControl_Hot());
  EXPECT_EQ(back->Text1().BackColor(), colors::kYellow);
  EXPECT_EQ(back->DTMStatusControl1().IDTMStatusControl_Mode(), 102);

  MemoryPropertyBag hotOnly;
  hotOnly.put("IDTMDataControl_Hot", Variant(true));
  auto other = DTMDataTextBox::create();
  other->ReadProperties(hotOnly);
  EXPECT_TRUE(other->IDTMDataControl_Hot());
  EXPECT_EQ(other->Text1().BackColor(), colors::kWindow);
}

TEST_F(Persistence, AFormatThatCantBeSplitRaisesOutOfReading) {
  auto box = DTMDataTextBox::create();
  MemoryPropertyBag bag;
  bag.put("IDTMControlFormatter_EditFormat", Variant("5f"));
  bag.put("IDTMDataControl_Value", Variant("kept"));
  EXPECT_EQ(testing::errorOf([&] { box->ReadProperties(bag); }), err::SubscriptOutOfRange);
  EXPECT_EQ(box->Text1().Text(), "") << "reading stopped before the value";
}

TEST_F(Persistence, NamesAndFormatsAreSavedThoughTheirReadingDefaultIsTheirOwn) {
  auto box = DTMDataTextBox::create();
  box->IDTMDataControl_Name("Pressure");
  box->IDTMControlFormatter_EditFormat("5.2f");
  MemoryPropertyBag bag;
  box->WriteProperties(bag);
  auto back = DTMDataTextBox::create();
  back->ReadProperties(bag);
  EXPECT_EQ(back->IDtmControl_Name(), "Pressure");
  EXPECT_EQ(back->editPattern(), box->editPattern());
}

TEST_F(Persistence, StoredTooltipTextGoesWhereEachControlPutsIt) {
  MemoryPropertyBag bag;
  bag.put("ToolTipText", Variant("Pump pressure"));
  auto box = DTMDataTextBox::create();
  box->ReadProperties(bag);
  EXPECT_EQ(box->TooltipLabel().ToolTipText(), "Pump pressure");
  EXPECT_EQ(box->ToolTipText(), "");
  auto combo = DTMDataComboBox::create();
  combo->ReadProperties(bag);
  EXPECT_EQ(combo->TooltipLabel().ToolTipText(), "Pump pressure");
  auto list = DTMListControl::create();
  list->ReadProperties(bag);
  EXPECT_EQ(list->ToolTipText(), "Pump pressure");
  EXPECT_EQ(list->TooltipLabel().ToolTipText(), "");
  auto label = DTMDataLabel::create();
  label->ReadProperties(bag);
  EXPECT_EQ(label->Label1().ToolTipText(), "Pump pressure");
  auto gauge = DTMDataGuageControl::create();
  gauge->ReadProperties(bag);
  EXPECT_EQ(gauge->ToolTipText(), "") << "not persisted on gauges";
}

TEST_F(Persistence, TheListReadsItsPreviousValueAndNeverWritesIt) {
  auto list = DTMListControl::create();
  list->IDTMDataControl_PreviousValue(Variant("old"));
  EXPECT_FALSE(contains(writtenNames(*list), "IDTMDataControl_PreviousValue"));
  auto combo = DTMDataComboBox::create();
  combo->IDTMDataControl_PreviousValue(Variant("old"));
  EXPECT_TRUE(contains(writtenNames(*combo), "IDTMDataControl_PreviousValue"));
  RecordingBag bag;
  list->ReadProperties(bag);
  EXPECT_TRUE(contains(bag.read, "IDTMDataControl_PreviousValue"));
  EXPECT_EQ(list->IDTMDataControl_Value(), Variant("List1"));
}

TEST_F(Persistence, GaugesWriteAnAccessTheyNeverRead) {
  auto gauge = DTMDynamicGuageControl::create();
  MemoryPropertyBag bag;
  gauge->WriteProperties(bag);
  ASSERT_NE(bag.find("IDTMDataControl_Access"), nullptr);
  EXPECT_EQ(*bag.find("IDTMDataControl_Access"), Variant(0));
  RecordingBag reading;
  gauge->ReadProperties(reading);
  EXPECT_FALSE(contains(reading.read, "IDTMDataControl_Access"));
  EXPECT_TRUE(contains(reading.read, "IDTMDataControl_Name"))
      << "read into the gauge's one name, though no member has that second name";
  EXPECT_FALSE(gauge->hasMember("IDTMDataControl_Name"));
  EXPECT_EQ(gauge->Label1().BackColor(), 0) << "the bag's default colour";
}

TEST_F(Persistence, StaticLabelMeetsItsOtherSpellingAndDropsForeignNames) {
  auto label = DtmStaticLabel::create();
  label->IDtmControl_Name("Pump");
  label->IDtmControl_Enable(false);
  label->let("MousePointer", Variant(int16_t{11}));
  const auto written = writtenNames(*label);
  EXPECT_TRUE(contains(written, "IDTMControl_Enable"));
  EXPECT_TRUE(contains(written, "IDTMControl_Name"));
  EXPECT_FALSE(contains(written, "MousePointer"));
  EXPECT_FALSE(contains(written, "IDTMControl_Caption"));

  MemoryPropertyBag bag;
  label->WriteProperties(bag);
  bag.put("IDTMControl_Caption", Variant("ignored"));
  bag.put("IDTMControl_FunctionID", Variant("not even a number"));
  auto back = DtmStaticLabel::create();
  back->ReadProperties(bag);
  EXPECT_FALSE(back->Label1().Enabled());
  EXPECT_EQ(back->Label1().Caption(), "Pump") << "the key until a host translates it";
  host->translations["Pump"] = "Pumpe";
  back->IDTMControl_Init(host);
  EXPECT_EQ(back->Label1().Caption(), "Pumpe");
}

TEST_F(Persistence, LaunchLabelsLeadingTextOverwritesTheCaptionOfTheValue) {
  auto label = DTMDataLaunchLabel::create();
  MemoryPropertyBag bag;
  bag.put("IDtmControl_DefaultText", Variant("Flags: "));
  label->ReadProperties(bag);
  EXPECT_EQ(label->Label1().Caption(), "Flags: ");
  auto plain = DTMDataLabel::create();
  plain->ReadProperties(bag);
  EXPECT_EQ(plain->Label1().Caption(), "Unknown Units") << "the default value Label1 has no entry";
}

TEST_F(Persistence, StatusIconsStartFromTheBagInModeHundred) {
  auto status = DTMStatusControl::create();
  MemoryPropertyBag empty;
  status->ReadProperties(empty);
  EXPECT_EQ(status->IDTMStatusControl_Mode(), 100);
  EXPECT_FALSE(status->Image1().Picture());
}

TEST_F(Persistence, NewComboGetsInitPropertiesAndASavedOneItsBag) {
  auto fresh = DTMDataComboBox::create();
  fresh->InitProperties();
  EXPECT_TRUE(fresh->Combo1().drawRow) << "a new combo box colours its rows";
  EXPECT_EQ(fresh->window().Width(), 3000);
  auto saved = DTMDataComboBox::create();
  MemoryPropertyBag bag;
  saved->ReadProperties(bag);
  EXPECT_FALSE(saved->Combo1().drawRow) << "a restored one keeps the platform's rows";
  EXPECT_EQ(saved->IDTMDataControl_Value(), Variant("Combo1"));
}

TEST_F(Persistence, SecondComboTakesStoredColoursOnItsComboAlone) {
  auto combo = DTMDataComboBox2::create();
  MemoryPropertyBag bag;
  bag.put("BackColor", Variant(0x00112233));
  combo->ReadProperties(bag);
  EXPECT_EQ(combo->Combo1().BackColor(), 0x00112233);
  EXPECT_EQ(combo->Label1().BackColor(), colors::kWindow);
  combo->let("BackColor", Variant(0x00445566));
  EXPECT_EQ(combo->Label1().BackColor(), 0x00445566) << "a let reaches both children";
}

TEST_F(Persistence, NotificationsGoUnderThePropertysNameWithTheListedExceptions) {
  auto box = DTMDataTextBox::create();
  auto& window = headless::user(box->window());
  window.takePropertyChanges();
  box->IDTMDataControl_Hot(true);
  EXPECT_EQ(window.takePropertyChanges(),
            (std::vector<std::string>{"IDTMDataControl_Hot", "BackColor"}));
  box->text("x");
  EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{"Text"});
  box->IDTMControlFormatter_ScaleFormat("4d");
  EXPECT_EQ(window.takePropertyChanges(),
            std::vector<std::string>{"IDTMControlFormatter_EditFormat"});
  box->let("Locked", Variant(true));
  EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{"Locked"});
  EXPECT_TRUE(box->Text1().Locked());
}

TEST_F(Persistence, FontsAreSetByReferenceAndTheirPartsChangeTheChildsFont) {
  auto label = DTMDataLaunchLabel::create();
  label->IDtmControl_DefaultText("Flags");
  const int32_t narrow = label->Label1().Width();
  auto font = std::make_shared<platform::StdFont>();
  font->Size = 16;
  label->let("Font", Variant(Ref<platform::StdFont>(font)));
  EXPECT_EQ(label->get("Font").toObject(), font) << "the same object, not a copy";
  EXPECT_GT(label->Label1().Width(), narrow) << "a self-sizing label fits the new font";
  label->let("FontBold", Variant(true));
  EXPECT_TRUE(font->Bold);
  EXPECT_EQ(label->get("FontSize"), Variant(16.0));
  EXPECT_EQ(testing::errorOf([&] { label->let("Font", Variant("Arial")); }), err::ObjectRequired);
}

TEST_F(Persistence, ALockedDropDownTakesNoPickButAValueByProgram) {
  auto combo = DTMDataComboBox::create();
  combo->IDTMControl_Init(host);
  combo->IDtmControl_DtmContainer(host);
  combo->IDTMEnumeration_EnumDataDef(
      testing::element("<enumeration><e name='a' code='1'/><e name='b' code='2'/></enumeration>"));
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  combo->let("Locked", Variant(true));
  host->takeCalls();
  headless::user(combo->Combo1()).pick(1);
  EXPECT_EQ(combo->Combo1().ListIndex(), 0);
  EXPECT_FALSE(combo->IDTMDataControl_Hot());
  EXPECT_TRUE(host->callsOf("ControlValueChanged").empty());
  combo->IDTMDataControl_SetDeviceValue(Variant("2"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
}

}  // namespace
}  // namespace tessaline
