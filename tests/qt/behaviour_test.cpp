// The scenarios that act as a user, run on the headless backend and on Qt: the same keys,
// pastes, focus changes, picks and clicks must give the same host calls, texts, colours and
// states on both.
#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>

#include "../support.h"
#include "tessaline/action/data_picture_button.h"
#include "tessaline/action/data_picture_fn_button.h"
#include "tessaline/action/function_button.h"
#include "tessaline/action/launch_button.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/entry/data_check_box.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/frame/events.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/trends/multi_trend.h"
#include "tessaline/values/locale.h"
#include "user.h"

namespace tessaline {
namespace {

using Factory = std::unique_ptr<testing::User> (*)();
using Names = std::vector<std::string>;
using testing::errorOf, testing::form, testing::placed;

class Behaviour : public ::testing::TestWithParam<Factory> {
 protected:
  void SetUp() override {
    user = GetParam()();
    user->install();
    regexp::install();
    chart::install();
    SetSharedHost(nullptr);
    host = std::make_shared<host::ReferenceHost>();
  }
  void TearDown() override {
    for (const VbError& error : user->takeUnhandledErrors()) {
      ADD_FAILURE() << "unexpected unhandled error: " << error.what();
    }
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
    setLocale(nullptr);
  }

  // A control on its own window; shown, unless the test shows it later.
  template <class Control>
  std::shared_ptr<Control> make(bool shown = true) {
    auto control = Control::create();
    control->IDTMControl_Init(host);
    control->window().Width(3000);
    control->window().Height(400);
    if (shown) user->show(control->window());
    return control;
  }

  Names operations() {
    Names names;
    for (const auto& call : host->takeCalls()) names.push_back(call.operation);
    return names;
  }

  // The numbers of the errors that escaped the user's actions since the last look.
  std::vector<int32_t> unhandled() {
    std::vector<int32_t> numbers;
    for (const VbError& error : user->takeUnhandledErrors()) numbers.push_back(error.number());
    return numbers;
  }

  // A combo box or a list of the modes, reporting to the host.
  template <class Control>
  std::shared_ptr<Control> modes() {
    auto control = make<Control>();
    control->InitProperties();
    control->IDtmControl_DtmContainer(host);
    control->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
    return control;
  }

  static constexpr const char* kModes =
      "<enumeration><e name='Off' code='0' label='Mode_Off'/><e name='Auto' code='1'/>"
      "<e name='Service' code='2'/></enumeration>";
  std::unique_ptr<testing::User> user;
  std::shared_ptr<host::ReferenceHost> host;
};

// A sink of a control's events that fails in one of them.
struct FailingEvents : ControlEvents {
  bool inChange = false, inKeyDown = false;
  void Change() override {
    if (inChange) throw VbError(err::TypeMismatch);
  }
  void KeyDown(int16_t&, int16_t&) override {
    if (inKeyDown) throw VbError(err::TypeMismatch);
  }
};

TEST_P(Behaviour, TypingIntoANumberMarksTheEditAndReportsEachKeyRelease) {
  auto box = make<DTMDataTextBox>();
  box->IDtmControl_DtmContainer(host);
  box->IDtmControl_Name("Flow");
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("5.2f");
  box->IDTMDataControl_SetDeviceValue(Variant(12.5));
  host->takeCalls();

  user->select(box->Text1(), 0, 10);
  user->type(box->Text1(), "3x4.567");
  EXPECT_EQ(box->Text1().Text(), "34.56");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Text1().BackColor(), platform::colors::kYellow);
  EXPECT_EQ(box->DTMStatusControl1().IDTMStatusControl_Mode(), 102);
  // Every key released asks the host and reports, the refused ones too.
  const auto calls = host->callsOf("ValidateItemValue");
  ASSERT_EQ(calls.size(), 7u);
  EXPECT_EQ(calls.back().arguments.at(1), "String(\"34.56\")");
  EXPECT_EQ(host->callsOf("ControlValueChanged").size(), 7u);

  user->backspace(box->Text1());
  EXPECT_EQ(box->Text1().Text(), "34.5");
  box->IDTMDataControl_Hot(false);
  EXPECT_EQ(box->Text1().BackColor(), platform::colors::kWindow);
  EXPECT_EQ(box->DTMStatusControl1().IDTMStatusControl_Mode(), 0);
}

// Punctuation reaches the key filter as the character typed, whatever key carries it: the
// same characters pass and the same are refused on both backends.
TEST_P(Behaviour, TypedPunctuationPassesTheSameFilterOnBothBackends) {
  struct Case {
    TextDataType type;
    const char* format;
    const char* typed;
    const char* kept;
  };
  // Letters, digits and the blank alone for AlphaNumeric; a number's characters for Numbers;
  // everything printable for Latin1 and PackedAscii.
  for (const Case& c : {Case{TextDataType::AlphaNumeric, "20s", "P-7 x.y,z/#_+", "P7 xyz"},
                        Case{TextDataType::Latin1, "20s", "a-b (c) [d] {e}", "a-b (c) [d] {e}"},
                        Case{TextDataType::Numbers, "5.2f", "-1x.5,", "-1.5"},
                        Case{TextDataType::PackedAscii, "20s", "TAG-01 @A", "TAG-01 @A"}}) {
    auto box = make<DTMDataTextBox>();
    box->TextType(c.type);
    box->IDTMControlFormatter_EditFormat(c.format);
    user->type(box->Text1(), c.typed);
    EXPECT_EQ(box->Text1().Text(), c.kept) << c.typed;
  }
}

TEST_P(Behaviour, TheHostsRefusalShowsInvalidAndTheTextStays) {
  auto box = make<DTMDataTextBox>();
  box->IDtmControl_Name("Flow");
  host->validate = [](const std::string&, const Variant& value, std::string& errorText) {
    errorText = "too long";
    return value.toText().size() < 3;
  };
  user->type(box->Text1(), "abcd");
  EXPECT_EQ(box->Text1().Text(), "abcd");
  EXPECT_EQ(box->DTMStatusControl1().IDTMStatusControl_Mode(), 104);
  EXPECT_EQ(box->DTMStatusControl1().IDTMStatusControl_Text(), "too long");
}

TEST_P(Behaviour, PastesByKeyAndByMouse) {
  auto box = make<DTMDataTextBox>();
  box->IDtmControl_DtmContainer(host);
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("2d");
  box->IDTMDataControl_SetDeviceValue(Variant("12"));
  host->takeCalls();
  // A paste with the mouse is no key: no release, no report, and no format guards it.
  platform::backend().clipboard().SetText("999");
  user->select(box->Text1(), 2, 0);
  user->paste(box->Text1());
  EXPECT_EQ(box->Text1().Text(), "12999");
  EXPECT_TRUE(host->calls().empty());

  platform::backend().clipboard().SetText("345678");
  user->select(box->Text1(), 0, 5);
  user->pressCtrl(box->Text1(), 'V');
  EXPECT_EQ(box->Text1().Text(), "345678");
  EXPECT_TRUE(box->IDTMDataControl_Hot());

  user->select(box->Text1(), 0, 2);
  user->pressCtrl(box->Text1(), 'C');
  EXPECT_EQ(platform::backend().clipboard().GetText(), "34");
}

TEST_P(Behaviour, ALockedBoxTakesNoKeyNorPaste) {
  auto box = make<DTMDataTextBox>();
  box->IDTMDataControl_SetDeviceValue(Variant("12"));
  box->let("Locked", Variant(true));
  user->type(box->Text1(), "34");
  platform::backend().clipboard().SetText("99");
  user->paste(box->Text1());
  EXPECT_EQ(box->Text1().Text(), "12");
  box->IDTMDataControl_SetDeviceValue(Variant("56"));
  EXPECT_EQ(box->Text1().Text(), "56");
}

TEST_P(Behaviour, TheFocusCapturesTheBaselineOfABoxWithoutDeviceValue) {
  auto box = make<DTMDataTextBox>(false);
  box->IDTMDataControl_Value(Variant("abc"));
  user->show(box->window());
  int entered = 0;
  box->window().events.EnterFocus = [&] { ++entered; };
  user->focus(box->Text1());
  EXPECT_EQ(entered, 1);
  user->type(box->Text1(), "d");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  user->backspace(box->Text1());
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  user->blur();
  user->click(box->Text1());
  EXPECT_EQ(entered, 2);
}

// Lines end with "\r\n", two characters for the caret, on every backend.
TEST_P(Behaviour, AMultiLineBoxCountsItsLineEndsAsTwoCharacters) {
  auto box = make<DTMDataMultiLnTextBox>();
  box->IDTMDataControl_Value(Variant("one\r\ntwo"));
  EXPECT_EQ(box->Text1().Text(), "one\r\ntwo");
  user->select(box->Text1(), 3, 2);
  EXPECT_EQ(box->Text1().SelText(), "\r\n");
  user->select(box->Text1(), 8, 0);
  user->type(box->Text1(), "s");
  EXPECT_EQ(box->Text1().Text(), "one\r\ntwos");
  EXPECT_EQ(box->Text1().SelStart(), 9);
  // Return is no key that an AlphaNumeric box takes.
  user->type(box->Text1(), "\r");
  EXPECT_EQ(box->Text1().Text(), "one\r\ntwos");
}

TEST_P(Behaviour, PickingARowMarksTheComboAndReportsAsTheListDoes) {
  auto combo = modes<DTMDataComboBox>();
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
  host->takeCalls();
  user->pick(combo->Combo1(), 2);
  EXPECT_EQ(combo->Combo1().Text(), "Service");
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("2"));
  EXPECT_TRUE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(combo->Combo1().BackColor(), platform::colors::kYellow);
  EXPECT_EQ(host->callsOf("ControlValueChanged").size(), 1u);

  host->takeCalls();
  combo->let("Locked", Variant(true));
  user->pick(combo->Combo1(), 0);
  EXPECT_EQ(combo->Combo1().ListIndex(), 2);
  EXPECT_TRUE(host->callsOf("ControlValueChanged").empty());

  auto list = modes<DTMListControl>();
  host->takeCalls();
  user->pick(list->List1(), 1);
  EXPECT_EQ(list->IDTMDataControl_Value(), Variant("1"));
  EXPECT_EQ(operations(), Names{"ControlValueChanged"});
}

TEST_P(Behaviour, ClickingTheSecondCombosLabelOpensItsList) {
  auto combo = modes<DTMDataComboBox2>();
  user->click(combo->Label1());
  EXPECT_TRUE(combo->Combo1().DroppedDown());
  combo->Combo1().ShowDropDown(false);
}

TEST_P(Behaviour, AGaugeUpdateShowsItsPictureAtItsSize) {
  auto gauge = make<DTMDataGuageControl>();
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(
      "<gauge lowerRange='L' upperRange='H' pointerColor='FF0000'>"
      "<zones type='low_limit'><zone name='Z1' color='00FF00'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  for (auto [item, value] : {std::pair{"L", 0.0}, {"H", 10.0}, {"Z1", 5.0}, {"PV", 4.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
  }
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width(), 208);
  EXPECT_EQ(picture->Height(), 145);
  EXPECT_EQ(gauge->ChartViewer1().Width(), 200 * 15);
  EXPECT_EQ(host->errorLines(), Names{});
}

// Only the left button zooms and scrolls; every button raises MouseDown with its number.
TEST_P(Behaviour, TheViewerZoomsOnALeftClickAndScrollsOnDrag) {
  auto window = form(200 * 15, 100 * 15, "Chart");
  auto viewer = placed(window->createChartViewer("ChartViewer1"), 200 * 15, 100 * 15);
  user->show(*window);
  int changes = 0;
  viewer->viewerEvents.ViewPortChanged = [&](bool, bool) { ++changes; };
  Names downs;
  viewer->viewerEvents.MouseDown = [&](int32_t button, int32_t, float x, float y) {
    downs.push_back(std::to_string(button) + " " + std::to_string(static_cast<int>(x)) + "," +
                    std::to_string(static_cast<int>(y)));
  };
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  user->click(*viewer, 50, 25, 2);
  user->click(*viewer, 60, 30, 4);
  EXPECT_DOUBLE_EQ(viewer->ViewPortWidth(), 1);
  user->click(*viewer, 50, 25);
  EXPECT_DOUBLE_EQ(viewer->ViewPortWidth(), 0.5);
  EXPECT_DOUBLE_EQ(viewer->ViewPortLeft(), 0.125);
  EXPECT_EQ(downs, (Names{"2 50,25", "4 60,30", "1 50,25"}));
  viewer->MouseUsage(platform::ChartViewer::kMouseScroll);
  user->drag(*viewer, 100, 50, 80, 50);
  EXPECT_DOUBLE_EQ(viewer->ViewPortLeft(), 0.175);
  EXPECT_EQ(changes, 2);
}

TEST_P(Behaviour, AClickOnTheCheckBoxTogglesItMarksTheEditAndReports) {
  auto box = make<DTMDataCheckBox>();
  box->IDtmControl_DtmContainer(host);
  box->IDTMDataControl_SetDeviceValue(Variant(0));
  host->takeCalls();
  user->click(box->Check1());
  EXPECT_EQ(box->Check1().Value(), 1);
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  const auto calls = operations();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ControlValueChanged"), 1);
  user->click(box->Check1());
  EXPECT_EQ(box->Check1().Value(), 0);
  EXPECT_FALSE(box->IDTMDataControl_Hot()) << "back to the device's value";
}

// The multi-trend's zoom button only arms the mode: the press on the chart puts it into effect
// before the viewer acts on the click, so the first click already zooms.
TEST_P(Behaviour, AnArmedZoomTakesEffectAtThePressOnTheChart) {
  auto trend = make<DTMMultiTrendControl>(false);
  trend->window().Width(11070);
  trend->window().Height(7260);
  user->show(trend->window());
  trend->IDtmTrendControl_TrendDataDef(xml::parseElement(
      R"(<t lowerRange="L" upperRange="U" isLegend="false"><trendSource color="FF" label="F" )"
      R"(itemName="F"/></t>)"));
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("U", Variant(100));
  trend->IDtmTrendControl_ItemValue(Variant(40));
  trend->zoomIn_Click();
  EXPECT_EQ(trend->MultiChartViewer().MouseUsage(), 0);
  user->click(trend->MultiChartViewer(), 200, 150);
  EXPECT_EQ(trend->MultiChartViewer().MouseUsage(), 3);
  EXPECT_DOUBLE_EQ(trend->MultiChartViewer().ViewPortHeight(), 0.5);
  EXPECT_TRUE(trend->hasZoomedIn());
}

TEST_P(Behaviour, TheButtonsAndTheLabelLaunchOnAClickAndAHiddenOneDoesNot) {
  auto label = make<DTMDataLaunchLabel>();
  label->IDTMControl_FunctionID(7001);
  label->IDtmControl_LaunchType(1);
  host->takeCalls();
  user->click(label->Label1());
  const auto calls = host->takeCalls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].operation, "LaunchFunctionSecondary");
  EXPECT_EQ(calls[0].arguments, Names{"7001"});

  auto launch = make<DTMLaunchButton>();
  launch->IDTMControl_FunctionID(42);
  auto function = make<DTMFunctionButton>();
  function->IDTMControl_ModuleName("Pump");
  function->IDTMControl_FunctionName("Prime");
  auto picture = make<DTMDataPictureButton>();
  picture->IDTMControl_FunctionID(5);
  picture->IDtmControl_LaunchType(1);
  host->takeCalls();
  user->click(launch->Command1());
  user->click(function->Command1());
  user->click(picture->ImgIcon());
  EXPECT_EQ(operations(),
            (Names{"LaunchFunctionPrimary", "CallModuleFunction", "LaunchFunctionSecondary"}));
  launch->IDtmControl_Visible(false);
  launch->IDtmControl_Enable(true);
  user->click(launch->Command1());
  function->IDtmControl_Enable(false);
  user->click(function->Command1());
  EXPECT_EQ(operations(), Names{});
}

TEST_P(Behaviour, TheNavigationTurnsClicksIntoTheNamesOfDialogs) {
  auto nav = DtmNavigation::create();
  Names dialogs;
  nav->events.LoadDialog = [&](const std::string& key) { dialogs.push_back(key); };
  nav->window().Width(3000);
  nav->window().Height(6000);
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(xml::parseElement(
      "<n><menuGroup label='A' name='A' treename='t' icon='a.png'>"
      "<folder label='F' name='F'><menuItem label='One' name='One' action='1'/></folder>"
      "<menuItem label='Two' name='Two' action='2'/></menuGroup>"
      "<menuGroup label='B' name='B' treename='t' icon='b.png'>"
      "<folder label='G' name='G'><folder label='H' name='H'>"
      "<menuItem label='Deep' name='Deep' action='3'/></folder></folder></menuGroup></n>"));
  user->show(nav->window());
  platform::TreeView& first = *nav->TreeViews(1);
  user->click(first, 4);
  user->click(first, 2);
  user->click(first, 3);
  user->click(nav->NavigationBar(), 2);
  EXPECT_EQ(dialogs, (Names{"Two", "One", "Deep"}));
  EXPECT_EQ(nav->TreeViews(2)->SelectedNode(), 4);
  EXPECT_EQ(nav->NavigationBar().SelectedBar(), 2);
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("Two"));
  EXPECT_EQ(nav->NavigationBar().SelectedBar(), 1);
  EXPECT_EQ(first.SelectedNode(), 4);
  EXPECT_EQ(dialogs.size(), 3u);
  nav->IDtmNavigation_Uninitialize();
  user->click(first, 3);
  EXPECT_EQ(dialogs.size(), 3u);
}

// An event that the program's change raises runs inside that change: the error of its handler
// comes back out of the property set, and no unhandled error is left behind.
TEST_P(Behaviour, AnErrorOfAnEventThatTheProgramRaisedComesBackToTheProgram) {
  auto window = platform::backend().createUserControl("Form");
  auto box = window->createTextBox("Text1", false);
  auto combo = window->createComboBox("Combo1");
  auto list = window->createListBox("List1");
  auto option = window->createOptionButton("Option1");
  auto bar = window->createScrollBar("HScroll1", true);
  auto viewer = window->createChartViewer("ChartViewer1");
  auto check = window->createCheckBox("Check1");
  user->show(*window);
  for (platform::ListWidget* rows : {static_cast<platform::ListWidget*>(combo.get()),
                                     static_cast<platform::ListWidget*>(list.get())}) {
    rows->AddItem("A");
    rows->AddItem("B");
  }
  const auto fail = [] { throw VbError(err::TypeMismatch); };
  box->events.Change = fail;
  combo->events.Click = fail;
  list->events.Click = fail;
  option->events.Click = fail;
  bar->events.Change = fail;
  check->events.Click = fail;
  viewer->viewerEvents.ViewPortChanged = [](bool, bool) { throw VbError(err::Overflow); };

  EXPECT_EQ(errorOf([&] { box->Text("text"); }), err::TypeMismatch);
  EXPECT_EQ(box->Text(), "text");
  EXPECT_EQ(errorOf([&] { box->SelText("more "); }), err::TypeMismatch);
  EXPECT_EQ(box->Text(), "more text");
  EXPECT_EQ(errorOf([&] { combo->ListIndex(1); }), err::TypeMismatch);
  EXPECT_EQ(combo->ListIndex(), 1);
  EXPECT_EQ(errorOf([&] { list->ListIndex(0); }), err::TypeMismatch);
  EXPECT_EQ(errorOf([&] { option->Value(true); }), err::TypeMismatch);
  EXPECT_EQ(errorOf([&] { bar->Value(5); }), err::TypeMismatch);
  EXPECT_EQ(bar->Value(), 5);
  EXPECT_EQ(errorOf([&] { check->Value(1); }), err::TypeMismatch);
  EXPECT_EQ(errorOf([&] { viewer->updateViewPort(true, false); }), err::Overflow);
  EXPECT_EQ(unhandled(), std::vector<int32_t>{});
}

// So a guarded member that changed a child logs the error through the host and stops there.
TEST_P(Behaviour, AGuardedMemberLogsTheErrorOfTheEventThatItsChangeRaised) {
  auto box = make<DTMDataTextBox>();
  auto failing = std::make_shared<FailingEvents>();
  box->Advise(failing);
  failing->inChange = true;
  host->takeCalls();
  box->IDTMDataControl_SetDeviceValue(Variant("5"));
  // The member's own line first (an AlphaNumeric box), then the error that stopped it.
  EXPECT_EQ(host->errorLines(),
            (Names{"BuildMenu Numbers ",
                   "Error on IDTMDataControl_Value13 ,Description = Type mismatch"}));
  EXPECT_EQ(operations(), (Names{"LogError", "LogError"}));

  auto combo = modes<DTMDataComboBox>();
  host->onCall = [](const host::HostCall& call) {
    if (call.operation == "ControlValueChanged") throw VbError(err::Overflow);
  };
  host->takeCalls();
  combo->IDTMDataControl_SetDeviceValue(Variant("2"));
  EXPECT_EQ(host->errorLines(), Names{"Error on SetComboValue6 ,Description = Overflow"});
  EXPECT_EQ(operations(), (Names{"ControlValueChanged", "LogError"}));
  EXPECT_EQ(combo->Combo1().ListIndex(), 2);
}

// A key is one action: an error in KeyDown stops it, with no KeyPress, edit, Change or KeyUp.
TEST_P(Behaviour, AnErrorInKeyDownStopsTheKey) {
  auto box = make<DTMDataTextBox>();
  box->IDtmControl_DtmContainer(host);
  auto failing = std::make_shared<FailingEvents>();
  box->Advise(failing);
  user->focus(box->Text1());
  failing->inKeyDown = true;
  host->takeCalls();
  user->type(box->Text1(), "5");
  EXPECT_EQ(box->Text1().Text(), "");
  EXPECT_EQ(operations(), Names{}) << "KeyUp reports to the host";
  EXPECT_EQ(unhandled(), std::vector<int32_t>{err::TypeMismatch});

  // The picker's key too, with the field's change.
  auto window = form();
  auto picker = placed(window->createDatePicker("DTPicker"), 3000, 375);
  user->show(*window);
  Names events;
  picker->events.KeyDown = [](int16_t&, int16_t&) { throw VbError(err::Overflow); };
  picker->events.KeyPress = [&](int16_t&) { events.push_back("KeyPress"); };
  picker->events.Change = [&] { events.push_back("Change"); };
  picker->events.KeyUp = [&](int16_t&, int16_t&) { events.push_back("KeyUp"); };
  user->typeField(*picker, headless::DateField::Day, 5);
  EXPECT_EQ(events, Names{});
  EXPECT_EQ(picker->Value().days, platform::DatePicker::kDesignDate);
  EXPECT_EQ(unhandled(), std::vector<int32_t>{err::Overflow});
  // An error in Change stops the key's KeyUp.
  picker->events.KeyDown = nullptr;
  picker->events.Change = [] { throw VbError(err::TypeMismatch); };
  user->typeField(*picker, headless::DateField::Day, 6);
  EXPECT_EQ(events, Names{"KeyPress"});
  EXPECT_EQ(picker->Value().days, platform::DatePicker::kDesignDate + 5);
  EXPECT_EQ(unhandled(), std::vector<int32_t>{err::TypeMismatch});
}

// The rows are drawn as part of the user's opening the list: an error of the drawing is kept
// beside the errors kept before it.
TEST_P(Behaviour, AnErrorWhileDrawingARowIsKeptWithTheOthers) {
  auto window = form(4000, 800);
  auto combo = placed(window->createComboBox("Combo1"), 2000, 300);
  auto label = placed(window->createLabel("Label1"), 1000, 300, 0, 400);
  combo->AddItem("A");
  combo->AddItem("B");
  combo->drawRow = [](int32_t itemID, int32_t, const std::string& text) {
    if (itemID == 1) throw VbError(err::Overflow);
    platform::RowPaint paint;
    paint.text = text;
    return paint;
  };
  label->events.Click = [] { throw VbError(err::TypeMismatch); };
  user->show(*window);
  user->click(*label);
  user->paintRows(*combo);
  EXPECT_EQ(unhandled(), (std::vector<int32_t>{err::TypeMismatch, err::Overflow}));
}

// A check box and a date picker raise GotFocus and LostFocus as the focus comes and goes.
TEST_P(Behaviour, TheCheckBoxAndTheDatePickerRaiseTheirFocusEvents) {
  auto window = form(6000, 800);
  auto check = placed(window->createCheckBox("Check1"), 1500, 300);
  auto picker = placed(window->createDatePicker("DTPicker"), 3000, 375, 2000);
  user->show(*window);
  Names events;
  const auto record = [&](std::string name) { return [&events, name] { events.push_back(name); }; };
  check->events.GotFocus = record("Check1.GotFocus");
  check->events.LostFocus = record("Check1.LostFocus");
  check->events.MouseDown = record("Check1.MouseDown");
  check->events.Click = record("Check1.Click");
  picker->events.GotFocus = record("DTPicker.GotFocus");
  picker->events.LostFocus = record("DTPicker.LostFocus");
  picker->events.Click = record("DTPicker.Click");
  user->click(*check);
  user->click(*picker);
  user->click(*check);
  EXPECT_EQ(events,
            (Names{"Check1.GotFocus", "Check1.MouseDown", "Check1.Click", "Check1.LostFocus",
                   "DTPicker.GotFocus", "DTPicker.Click", "DTPicker.LostFocus", "Check1.GotFocus",
                   "Check1.MouseDown", "Check1.Click"}));
}

// A click on the picker raises Click once; a digit typed into a field KeyDown, KeyPress, then
// Change once the field takes the number, then KeyUp; a day from the calendar keeps the time and
// raises Change. A date set by program raises no Change.
TEST_P(Behaviour, TheDatePickerRaisesClickKeysAndChangeInTheirOrder) {
  auto window = form();
  auto picker = placed(window->createDatePicker("DTPicker"), 3000, 375);
  user->show(*window);
  Names events;
  const auto note = [&](const char* event, std::string what) {
    events.push_back(event + (" " + what));
  };
  picker->events.Click = [&] { events.push_back("Click"); };
  picker->events.KeyDown = [&](int16_t& code, int16_t&) { note("KeyDown", std::to_string(code)); };
  picker->events.KeyPress = [&](int16_t& ascii) { note("KeyPress", std::to_string(ascii)); };
  picker->events.KeyUp = [&](int16_t& code, int16_t&) { note("KeyUp", std::to_string(code)); };
  picker->events.Change = [&] { note("Change", picker->Text()); };

  picker->Value(DateSerial{platform::DatePicker::kDesignDate + 0.5});
  EXPECT_EQ(picker->Text(), "01-01-70 12:00:00 PM");
  EXPECT_EQ(events, Names{}) << "a date set by program raises no Change";

  user->click(*picker);
  EXPECT_EQ(events, Names{"Click"});
  events.clear();
  user->typeField(*picker, headless::DateField::Month, 12);
  EXPECT_EQ(events, (Names{"KeyDown 49", "KeyPress 49", "KeyUp 49", "KeyDown 50", "KeyPress 50",
                           "Change 12-01-70 12:00:00 PM", "KeyUp 50"}));
  events.clear();
  user->pickFromCalendar(*picker, 1970, 12, 24);
  EXPECT_EQ(events, (Names{"Click", "Change 12-24-70 12:00:00 PM"}));
  EXPECT_EQ(picker->Text(), "12-24-70 12:00:00 PM");
}

// Of the option buttons of one container one is pressed; one set to false only comes up.
TEST_P(Behaviour, AnOptionButtonSetToFalseComesUp) {
  auto window = platform::backend().createUserControl("Form");
  auto first = window->createOptionButton("Option1");
  auto second = window->createOptionButton("Option2");
  user->show(*window);
  int clicks = 0;
  first->events.Click = [&] { ++clicks; };
  first->Value(true);
  EXPECT_TRUE(first->Value());
  second->Value(true);
  EXPECT_FALSE(first->Value());
  EXPECT_TRUE(second->Value());
  first->Value(true);
  first->Value(false);
  EXPECT_FALSE(first->Value());
  EXPECT_FALSE(second->Value());
  EXPECT_EQ(clicks, 2);
}

// A text box takes a text of any length, and the same text again is no change.
TEST_P(Behaviour, ATextBoxKeepsALongTextWhole) {
  auto window = platform::backend().createUserControl("Form");
  auto box = window->createTextBox("Text1", false);
  int changes = 0;
  box->events.Change = [&] { ++changes; };
  std::string text;
  for (int i = 0; i < 100000; ++i) text += static_cast<char>('a' + i % 26);
  box->Text(text);
  EXPECT_EQ(box->Text().size(), 100000u);
  EXPECT_EQ(box->Text(), text);
  box->Text(text);
  EXPECT_EQ(changes, 1);
}

INSTANTIATE_TEST_SUITE_P(Backends, Behaviour,
                         ::testing::Values(&testing::headlessUser, &testing::qtUser),
                         [](const auto& info) {
                           return std::string(info.param == &testing::headlessUser ? "Headless"
                                                                                   : "Qt");
                         });

}  // namespace
}  // namespace tessaline
