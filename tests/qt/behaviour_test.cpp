// The scenarios that act as a user, run on the headless backend and on Qt: the same keys,
// pastes, focus changes, picks and clicks must give the same host calls, texts, colours and
// states on both.
#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>

#include "action/data_picture_button.h"
#include "action/data_picture_fn_button.h"
#include "action/function_button.h"
#include "action/launch_button.h"
#include "display/launch_label.h"
#include "entry/data_check_box.h"
#include "entry/data_combo_box.h"
#include "entry/data_combo_box2.h"
#include "entry/data_multi_line_text_box.h"
#include "entry/data_text_box.h"
#include "entry/list_control.h"
#include "gauges/data_gauge.h"
#include "host/reference_host.h"
#include "navigation/navigation.h"
#include "platform/chart/install.h"
#include "platform/picture.h"
#include "platform/regexp/pcre2_regexp.h"
#include "platform/xml/pugi_dom.h"
#include "trends/multi_trend.h"
#include "user.h"
#include "values/locale.h"

namespace tessaline {
namespace {

using Factory = std::unique_ptr<testing::User> (*)();

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

  std::vector<std::string> operations() {
    std::vector<std::string> names;
    for (const auto& call : host->takeCalls()) names.push_back(call.operation);
    return names;
  }

  std::unique_ptr<testing::User> user;
  std::shared_ptr<host::ReferenceHost> host;
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

constexpr const char* kModes =
    "<enumeration><e name='Off' code='0' label='Mode_Off'/><e name='Auto' code='1'/>"
    "<e name='Service' code='2'/></enumeration>";

TEST_P(Behaviour, PickingARowMarksTheComboAndReports) {
  auto combo = make<DTMDataComboBox>();
  combo->InitProperties();
  combo->IDtmControl_DtmContainer(host);
  combo->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
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
}

TEST_P(Behaviour, PickingAListRowReports) {
  auto list = make<DTMListControl>();
  list->InitProperties();
  list->IDtmControl_DtmContainer(host);
  list->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
  host->takeCalls();
  user->pick(list->List1(), 1);
  EXPECT_EQ(list->IDTMDataControl_Value(), Variant("1"));
  EXPECT_EQ(operations(), std::vector<std::string>{"ControlValueChanged"});
}

TEST_P(Behaviour, ClickingTheSecondCombosLabelOpensItsList) {
  auto combo = make<DTMDataComboBox2>();
  combo->InitProperties();
  combo->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
  user->click(combo->Label1());
  EXPECT_TRUE(combo->Combo1().DroppedDown());
  combo->Combo1().ShowDropDown(false);
}

TEST_P(Behaviour, ClickingALaunchLabelLaunchesItsFunction) {
  auto label = make<DTMDataLaunchLabel>();
  label->IDTMControl_FunctionID(7001);
  label->IDtmControl_LaunchType(1);
  host->takeCalls();
  user->click(label->Label1());
  const auto calls = host->callsOf("LaunchFunctionSecondary");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].arguments, std::vector<std::string>{"7001"});
}

TEST_P(Behaviour, AGaugeUpdateShowsItsPictureAtItsSize) {
  auto gauge = make<DTMDataGuageControl>();
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(
      "<gauge lowerRange='L' upperRange='H' pointerColor='FF0000'>"
      "<zones type='low_limit'><zone name='Z1' color='00FF00'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("L", Variant(0.0));
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("H", Variant(10.0));
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Z1", Variant(5.0));
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", Variant(4.0));
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width(), 208);
  EXPECT_EQ(picture->Height(), 145);
  EXPECT_EQ(gauge->ChartViewer1().Width(), 200 * 15);
  EXPECT_EQ(host->errorLines(), std::vector<std::string>{});
}

TEST_P(Behaviour, TheViewerZoomsOnClickAndScrollsOnDrag) {
  auto window = platform::backend().createUserControl("Chart");
  auto viewer = window->createChartViewer("ChartViewer1");
  window->Width(200 * 15);
  window->Height(100 * 15);
  viewer->Width(200 * 15);
  viewer->Height(100 * 15);
  user->show(*window);
  int changes = 0;
  viewer->viewerEvents.ViewPortChanged = [&](bool, bool) { ++changes; };
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  user->click(*viewer, 50, 25);
  EXPECT_DOUBLE_EQ(viewer->ViewPortWidth(), 0.5);
  EXPECT_DOUBLE_EQ(viewer->ViewPortLeft(), 0.125);
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

TEST_P(Behaviour, TheButtonsLaunchOnAClickAndAHiddenOneDoesNot) {
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
  EXPECT_EQ(operations(), (std::vector<std::string>{"LaunchFunctionPrimary", "CallModuleFunction",
                                                    "LaunchFunctionSecondary"}));
  launch->IDtmControl_Visible(false);
  launch->IDtmControl_Enable(true);
  user->click(launch->Command1());
  function->IDtmControl_Enable(false);
  user->click(function->Command1());
  EXPECT_EQ(operations(), std::vector<std::string>{});
}

TEST_P(Behaviour, TheNavigationTurnsClicksIntoTheNamesOfDialogs) {
  auto nav = DtmNavigation::create();
  std::vector<std::string> dialogs;
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
  EXPECT_EQ(dialogs, (std::vector<std::string>{"Two", "One", "Deep"}));
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

INSTANTIATE_TEST_SUITE_P(Backends, Behaviour,
                         ::testing::Values(&testing::headlessUser, &testing::qtUser),
                         [](const auto& info) {
                           return std::string(info.param == &testing::headlessUser ? "Headless"
                                                                                   : "Qt");
                         });

}  // namespace
}  // namespace tessaline
