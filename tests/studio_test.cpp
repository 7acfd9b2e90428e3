// The studio's host side on the headless backend: device packages that are whole, broken or
// missing, the check of an edit against its parameter's validators, and Apply.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "apps/studio/session.h"
#include "support.h"
#include "tessaline/action/function_button.h"
#include "tessaline/action/launch_button.h"
#include "tessaline/display/data_label.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/gauge_control.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/server/class_catalogue.h"
#include "tessaline/trends/host_fed_chart.h"
#include "tessaline/trends/single_trend.h"

namespace tessaline {
namespace {

class Studio : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    root =
        std::filesystem::temp_directory_path() / ("tessaline-studio-" + std::to_string(::getpid()));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / "forms");
  }
  void TearDown() override {
    session.reset();
    std::filesystem::remove_all(root);
    HeadlessTest::TearDown();
  }
  void write(const std::string& name, const std::string& text) {
    std::ofstream(root / name) << text;
  }
  studio::DevicePackage load() { return studio::loadPackage(root.string(), problems); }

  std::filesystem::path root;
  std::vector<std::string> problems;
  std::unique_ptr<studio::Session> session;
};

constexpr const char* kDevice = R"(<device name="Pump">
  <texts><text key="Flow_range">Between 0 and 250</text><text key="Tag_length">1 to 4</text></texts>
  <parameters>
    <parameter name="Flow" value="120.5">
      <dataItem name="Flow" type="float" formatString="6.1f"/>
      <validators><rangeValidation min="0" max="250" errorString="Flow_range"/></validators>
    </parameter>
    <parameter name="Tag" value="P1">
      <dataItem name="Tag" type="string"/>
      <validators><lengthValidation min="1" max="4" errorString="Tag_length"/></validators>
    </parameter>
    <parameter name="PV" value="5" behaviour="process" low="0" high="10" period="60"/>
    <parameter name="Lo" value="0"/><parameter name="Hi" value="10"/><parameter name="Z" value="8"/>
  </parameters>
  <gauges><gauge name="G" lowerRange="Lo" upperRange="Hi" pointerColor="FF0000">
    <zones type="low_limit"><zone name="Z" color="00FF00"/></zones></gauge></gauges>
  <forms><form file="forms/main.xml" title="Main">
    <bind control="FlowBox" parameter="Flow"/><bind control="TagBox" parameter="Tag"/>
    <bind control="Meter" parameter="PV" gauge="G"/>
  </form></forms>
</device>)";

constexpr const char* kForm = R"(<form name="Main" width="9000" height="4000">
  <control progId="Tessaline.DTMDataTextBox" name="FlowBox" left="0" top="0" width="3000"
           height="360" tabIndex="0"/>
  <control progId="Tessaline.DTMDataTextBox" name="TagBox" left="0" top="500" width="3000"
           height="360" tabIndex="1"/>
  <control progId="Tessaline.DTMDataGuageControl" name="Meter" left="4000" top="0" width="3113"
           height="2458" tabIndex="2"/>
</form>)";

TEST_F(Studio, RunsAFormWithLiveValuesChecksEditsAndAppliesThem) {
  write("device.xml", kDevice);
  write("forms/main.xml", kForm);
  session = std::make_unique<studio::Session>(load());
  ASSERT_EQ(problems, std::vector<std::string>{});
  session->openForm(0, problems);
  ASSERT_EQ(problems, std::vector<std::string>{});
  auto& flow = dynamic_cast<DTMDataTextBox&>(*session->form()->find("FlowBox"));
  auto& meter = dynamic_cast<DTMDataGuageControl&>(*session->form()->find("Meter"));
  EXPECT_EQ(flow.Text1().Text(), "120.5");
  EXPECT_FALSE(meter.ChartViewer1().Picture().isNothing());
  const Variant before = meter.IDTMDataControl_Value();
  session->tick(5);
  EXPECT_NE(meter.IDTMDataControl_Value(), before) << "the process value moves";

  // The numeric range is compared as numbers, and its message is the device's own text.
  headless::user(flow.Text1()).select(0, 10);
  headless::user(flow.Text1()).type("300");
  EXPECT_EQ(flow.DTMStatusControl1().IDTMStatusControl_Mode(), 104);
  EXPECT_EQ(flow.DTMStatusControl1().IDTMStatusControl_Text(), "Between 0 and 250");
  headless::user(flow.Text1()).backspace();
  headless::user(flow.Text1()).backspace();
  headless::user(flow.Text1()).type("5");
  EXPECT_EQ(flow.Text1().Text(), "35");
  EXPECT_EQ(flow.DTMStatusControl1().IDTMStatusControl_Mode(), 102);

  // An edit is kept while the device moves, then written by Apply.
  session->tick(1);
  EXPECT_EQ(flow.Text1().Text(), "35");
  EXPECT_EQ(session->apply(), std::vector<std::string>{"Flow = 35"});
  EXPECT_FALSE(flow.IDTMDataControl_Hot());
  EXPECT_EQ(session->host().device.read("Flow"), Variant(35.0));
  EXPECT_TRUE(session->apply().empty());

  auto& tag = dynamic_cast<DTMDataTextBox&>(*session->form()->find("TagBox"));
  headless::user(tag.Text1()).type("XYZ");
  EXPECT_EQ(tag.DTMStatusControl1().IDTMStatusControl_Text(), "1 to 4");
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// Whether some line holds each of the words.
bool told(const std::vector<std::string>& problems, std::initializer_list<std::string> words) {
  return std::any_of(problems.begin(), problems.end(), [&](const std::string& line) {
    return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
      return line.find(word) != std::string::npos;
    });
  });
}

// A value that a control refuses with a failed call (a data trend given text) is told once;
// the session, and the window's timer that runs it, go on.
TEST_F(Studio, AValueThatAControlRefusesIsToldOnceAndTheDeviceRunsOn) {
  write("device.xml", R"(<device name="Pump"><parameters>
    <parameter name="Word" value="no number"><dataItem name="Word" type="float"/></parameter>
    <parameter name="PV" value="5" behaviour="process" low="0" high="10" period="60"/>
  </parameters><forms><form file="forms/main.xml" title="Main">
    <bind control="Trend" parameter="Word"/><bind control="Meter" parameter="PV"/>
  </form></forms></device>)");
  write("forms/main.xml", R"(<form name="Main" width="12000" height="7000">
  <control progId="Tessaline.DTMDataTrendControl" name="Trend" left="0" top="0" width="10000"
           height="6000" tabIndex="0"/>
  <control progId="Tessaline.DTMDataLabel" name="Meter" left="0" top="6200" width="3000"
           height="360" tabIndex="1"/></form>)");
  session = std::make_unique<studio::Session>(load());
  std::vector<std::string> told;
  session->onProblem = [&](const std::string& problem) { told.push_back(problem); };
  session->openForm(0, problems);
  // The device moves on to another text: told once all the same.
  session->host().device.define("Word", Variant("still none"));
  for (int tick = 0; tick < 8; ++tick) session->tick(0.25);
  ASSERT_EQ(problems.size(), 1u) << ::testing::PrintToString(problems);
  EXPECT_NE(problems[0].find("Word: a control refused the device's value"), std::string::npos);
  EXPECT_EQ(told, std::vector<std::string>{});
  auto& label = dynamic_cast<DTMDataLabel&>(*session->form()->find("Meter"));
  EXPECT_NE(label.IDTMDataControl_Value(), Variant("5")) << "the process value moves on";
}

TEST_F(Studio, ABrokenPackageShowsWhatItCanAndNamesEachProblem) {
  // No device.xml at all.
  session = std::make_unique<studio::Session>(load());
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].find("device.xml"), std::string::npos);

  problems.clear();
  write("device.xml",
        "<device name='x'><forms><form file='forms/broken.xml' title='Broken'/>"
        "<form file='forms/missing.xml' title='Missing'/>"
        "<form file='forms/odd.xml' title='Odd'><bind control='Nobody' "
        "parameter='Nothing'/></form></forms></device>");
  write("forms/broken.xml", "<form><control");
  write("forms/odd.xml",
        R"(<form name="Odd" width="1000" height="1000">
             <control progId="Tessaline.NoSuchControl" name="A" left="0" top="0" width="10" height="10" tabIndex="0"/>
             <control progId="Tessaline.DTMDataLabel" name="B" left="5000" top="0" width="10" height="10" tabIndex="1"/>
           </form>)");
  session = std::make_unique<studio::Session>(load());
  EXPECT_EQ(problems.size(), 3u) << ::testing::PrintToString(problems);
  EXPECT_TRUE(told(problems, {"Broken", "forms/broken.xml", "can't be shown", "line 1"}));
  EXPECT_TRUE(told(problems, {"Missing", "forms/missing.xml", "can't be shown", "not found"}));
  // The package told why; a visit, and another, tells nothing more.
  problems.clear();
  session->openForm(0, problems);
  session->openForm(1, problems);
  session->openForm(0, problems);
  EXPECT_EQ(problems, std::vector<std::string>{});
  EXPECT_FALSE(session->form());
  EXPECT_NE(session->package().forms[0].failure.find("line 1"), std::string::npos);

  session->openForm(2, problems);
  ASSERT_TRUE(session->form());
  EXPECT_EQ(session->form()->controls().size(), 1u);  // the label, placed off the form
  EXPECT_EQ(problems.size(), 3u) << ::testing::PrintToString(problems);
  EXPECT_TRUE(told(problems, {"Odd (forms/odd.xml)", "A", "Tessaline.NoSuchControl"}));
  EXPECT_TRUE(told(problems, {"Odd (forms/odd.xml)", "B", "off the form"}));
  session->tick(1);

  write("device.xml", "<device><broken");
  problems.clear();
  session = std::make_unique<studio::Session>(load());
  EXPECT_EQ(problems.size(), 1u);
}

// One broken value costs its property, not the form: the rest of the control and the form show.
TEST_F(Studio, ABrokenPropertyIsLeftOutAndNamedWithItsFileControlAndCause) {
  write("device.xml", kDevice);
  write("forms/main.xml", replaced(kForm, R"(tabIndex="0"/>)", R"(tabIndex="0">
    <property name="FontSize" type="Double" value="notanumber"/>
    <property name="TextType" type="Long" value="0"/></control>)"));
  session = std::make_unique<studio::Session>(load());
  ASSERT_EQ(problems.size(), 1u) << ::testing::PrintToString(problems);
  EXPECT_TRUE(
      told(problems, {"Main", "forms/main.xml", "line 4", "FlowBox", "FontSize", "notanumber"}));
  problems.clear();
  session->openForm(0, problems);
  EXPECT_EQ(problems, std::vector<std::string>{});
  EXPECT_EQ(session->form()->controls().size(), 3u);
  EXPECT_EQ(dynamic_cast<DTMDataTextBox&>(*session->form()->find("FlowBox")).Text1().Text(),
            "120.5");
}

TEST_F(Studio, SizesThatCantBeShownOrReachPastTheFormAreNamed) {
  write("device.xml", kDevice);
  write("forms/main.xml",
        replaced(replaced(kForm, R"(width="3000")", R"(width="-3000")"),
                 R"(height="360" tabIndex="1")", R"(height="99999999" tabIndex="1")"));
  session = std::make_unique<studio::Session>(load());
  session->openForm(0, problems);
  EXPECT_TRUE(told(problems, {"Main (forms/main.xml)", "FlowBox", "-3000", "can't be shown"}));
  EXPECT_TRUE(told(problems, {"Main (forms/main.xml)", "TagBox", "99999999", "reaches past"}));
  EXPECT_FALSE(session->form()->find("FlowBox"));
  // Cut at the form's bottom edge, 4000 twips down.
  ASSERT_TRUE(session->form()->find("TagBox"));
  EXPECT_EQ(session->form()->find("TagBox")->window().Height(), 3500);
}

TEST_F(Studio, AFormFileOutsideThePackageIsNeverRead) {
  write("forms/main.xml", kForm);
  std::filesystem::create_directories(root / "inner");
  for (const std::string file : {"/etc/passwd", "../outside.xml", "forms/../../outside.xml"}) {
    write("device.xml", replaced(kDevice, "forms/main.xml", file));
    problems.clear();
    session = std::make_unique<studio::Session>(load());
    ASSERT_FALSE(session->package().forms[0].loaded) << file;
    EXPECT_TRUE(told(problems, {"Main (" + file + ")", "outside the package"})) << file;
  }
  // A way round that comes back inside is a path like any other.
  const std::string roundabout = "../" + root.filename().string() + "/inner/../forms/main.xml";
  write("device.xml", replaced(kDevice, "forms/main.xml", roundabout));
  problems.clear();
  session = std::make_unique<studio::Session>(load());
  EXPECT_TRUE(session->package().forms[0].loaded) << ::testing::PrintToString(problems);
}

// Each parameter's validators decide, numbers compared as numbers; validators that can't be
// used refuse the value with a message and are told once, never escaping to the control.
TEST_F(Studio, EditsAreCheckedByTheParametersValidators) {
  write("device.xml", R"(<device name="Pump">
  <texts><text key="Delay_range">0 to 120 s</text></texts>
  <parameters>
    <parameter name="Delay" value="15"><dataItem name="Delay" type="int16"/>
      <validators><rangeValidation min="0" max="120" errorString="Delay_range"/></validators>
    </parameter>
    <parameter name="Code" value="B7"><dataItem name="Code" type="string"/>
      <validators><rangeValidation min="A0" max="C9" errorString="Code_range"/>
        <lengthValidation min="2" max="2" errorString="Code_length"/></validators>
    </parameter>
    <parameter name="Medium" value="Water"><dataItem name="Medium" type="string"/>
      <validators><discreteValidation MATCH1="Water" errorString="Medium_choice"/>
      </validators>
    </parameter>
    <parameter name="NoMax" value="1"><dataItem name="NoMax" type="int16"/>
      <validators><rangeValidation min="0" errorString="x"/></validators>
    </parameter>
    <parameter name="OddLength" value="a"><dataItem name="OddLength" type="string"/>
      <validators><lengthValidation min="abc" max="4"/></validators>
    </parameter>
  </parameters>
  <forms><form file="forms/main.xml" title="Main"><bind control="Box" parameter="NoMax"/></form>
  </forms>
</device>)");
  write("forms/main.xml", R"(<form name="Main" width="5000" height="1000">
  <control progId="Tessaline.DTMDataTextBox" name="Box" left="0" top="0" width="3000" height="360"/>
</form>)");
  session = std::make_unique<studio::Session>(load());
  std::vector<std::string> told;
  session->onProblem = [&](const std::string& problem) { told.push_back(problem); };
  std::string message;
  const auto passes = [&](const char* item, const char* value) {
    message.clear();
    return session->validate(item, Variant(value), message);
  };
  EXPECT_TRUE(passes("Delay", "99")) << "as text, 99 would lie above 120";
  EXPECT_FALSE(passes("Delay", "121"));
  EXPECT_EQ(message, "0 to 120 s");
  EXPECT_FALSE(passes("Delay", "abc"));
  EXPECT_TRUE(passes("Code", "B5"));
  EXPECT_FALSE(passes("Code", "D1"));
  EXPECT_EQ(message, "Code_range");
  EXPECT_FALSE(passes("Code", "B"));
  EXPECT_EQ(message, "Code_length");
  EXPECT_TRUE(passes("Medium", "Water"));
  EXPECT_FALSE(passes("Medium", "Gas"));
  EXPECT_EQ(message, "Medium_choice");
  EXPECT_TRUE(told.empty());

  EXPECT_FALSE(passes("OddLength", "ab"));
  EXPECT_NE(message.find("can't be checked"), std::string::npos) << message;
  session->openForm(0, problems);
  auto& box = dynamic_cast<DTMDataTextBox&>(*session->form()->find("Box"));
  headless::user(box.Text1()).type("7");
  headless::user(box.Text1()).type("8");
  EXPECT_EQ(box.DTMStatusControl1().IDTMStatusControl_Mode(), 104);
  EXPECT_NE(box.DTMStatusControl1().IDTMStatusControl_Text().find("NoMax"), std::string::npos);
  ASSERT_EQ(told.size(), 2u) << "each broken set of validators once";
  EXPECT_NE(told[0].find("Type mismatch"), std::string::npos) << told[0];
  EXPECT_NE(told[1].find("NoMax"), std::string::npos);
  EXPECT_NE(told[1].find("91"), std::string::npos) << told[1];
}

// Edits outlive a visit to another form, until Apply writes them or Discard drops them.
TEST_F(Studio, EditsLeftOnAFormAreKeptUntilAppliedOrDiscarded) {
  std::string device = kDevice;
  device = replaced(device, "</form></forms>",
                    "</form><form file='forms/other.xml' title='Other'/></forms>");
  write("device.xml", device);
  write("forms/main.xml", kForm);
  write("forms/other.xml", "<form name='Other' width='100' height='100'/>");
  session = std::make_unique<studio::Session>(load());
  ASSERT_EQ(problems, std::vector<std::string>{});
  session->openForm(0, problems);
  auto* flow = dynamic_cast<DTMDataTextBox*>(session->form()->find("FlowBox"));
  headless::user(flow->Text1()).select(0, 10);
  headless::user(flow->Text1()).type("35");

  session->openForm(1, problems);
  EXPECT_EQ(session->keptForms(), std::vector<size_t>{0});
  EXPECT_EQ(session->unappliedEdits(), std::vector<std::string>{"Main: Flow"});
  session->tick(2);
  session->openForm(0, problems);
  EXPECT_EQ(session->form()->find("FlowBox"), flow) << "the same controls, as they were left";
  EXPECT_EQ(flow->Text1().Text(), "35");
  EXPECT_TRUE(flow->IDTMDataControl_Hot());
  EXPECT_TRUE(session->keptForms().empty());

  session->openForm(1, problems);
  EXPECT_EQ(session->apply(), std::vector<std::string>{"Flow = 35"});
  EXPECT_EQ(session->host().device.read("Flow"), Variant(35.0));
  EXPECT_TRUE(session->keptForms().empty());
  EXPECT_TRUE(session->unappliedEdits().empty());

  session->openForm(0, problems);
  headless::user(dynamic_cast<DTMDataTextBox&>(*session->form()->find("TagBox")).Text1()).type("X");
  session->openForm(1, problems);
  session->discard(problems);
  EXPECT_TRUE(session->unappliedEdits().empty());
  session->openForm(0, problems);
  EXPECT_EQ(dynamic_cast<DTMDataTextBox&>(*session->form()->find("TagBox")).Text1().Text(), "P1");
  EXPECT_EQ(dynamic_cast<DTMDataTextBox&>(*session->form()->find("FlowBox")).Text1().Text(), "35");
  // A form without edits is made anew at each visit.
  session->openForm(1, problems);
  EXPECT_TRUE(session->keptForms().empty());
  EXPECT_EQ(problems, std::vector<std::string>{});
}

TEST_F(Studio, TheSamplePackageLoadsWithoutAProblemAndRunsEveryForm) {
  session = std::make_unique<studio::Session>(
      studio::loadPackage(TESSALINE_SOURCE_DIR "/devices/sample-pump", problems));
  EXPECT_EQ(problems, std::vector<std::string>{});
  for (size_t i = 0; i < session->package().forms.size(); ++i) {
    session->openForm(i, problems);
    for (int tick = 0; tick < 8; ++tick) session->tick(0.25);
    EXPECT_EQ(problems, std::vector<std::string>{}) << session->package().forms[i].title;
  }
}

// The sample device shows every control class of the library, and its charts draw live: the
// host-fed multi-trend and wave form get their values and arrays from the session.
TEST_F(Studio, TheSampleDeviceShowsEveryControlAndItsChartsDrawLive) {
  session = std::make_unique<studio::Session>(
      studio::loadPackage(TESSALINE_SOURCE_DIR "/devices/sample-pump", problems));
  std::set<std::string> shown;
  size_t pictures = 0;
  for (size_t i = 0; i < session->package().forms.size(); ++i) {
    session->openForm(i, problems);
    for (int tick = 0; tick < 12; ++tick) session->tick(1);
    for (const host::PlacedControl& placed : session->form()->controls()) {
      shown.insert(placed.progId);
      platform::ChartViewer* viewer = nullptr;
      if (auto gauge = dynamic_cast<GaugeControl*>(placed.control.get())) {
        viewer = &gauge->ChartViewer1();
      } else if (auto trend = dynamic_cast<SingleItemTrend*>(placed.control.get())) {
        viewer = &trend->frame().viewer();
      } else if (auto chart = dynamic_cast<HostFedChart*>(placed.control.get())) {
        viewer = &chart->frame().viewer();
      }
      if (viewer) {
        EXPECT_FALSE(viewer->Picture().isNothing()) << placed.progId << " shows no chart";
        pictures += !viewer->Picture().isNothing();
      }
    }
  }
  // The navigation stands on the studio's left, driven by the package's menu.
  if (session->package().navigation) shown.insert("Tessaline.DtmNavigation");
  size_t classes = 0;
  for (const CatalogueEntry& entry : catalogue()) {
    if (!entry.identity->isControl()) continue;
    ++classes;
    EXPECT_TRUE(shown.count(std::string(entry.identity->progId())))
        << entry.identity->progId() << " is on no form of the sample device";
  }
  EXPECT_EQ(classes, 23u);
  EXPECT_EQ(pictures, 7u);  // three gauges, three trends, the wave form
  for (const std::string& line : session->host().errorLines()) {
    EXPECT_NE(line.rfind("Error", 0), 0u) << line;
  }
}

// The sample's menu switches its forms, as the studio wires it: LoadDialog names the form. The
// diagnostics form's buttons get the host's answers: a message, and another form.
TEST_F(Studio, TheSampleMenuSwitchesFormsAndItsButtonsAreAnswered) {
  session = std::make_unique<studio::Session>(
      studio::loadPackage(TESSALINE_SOURCE_DIR "/devices/sample-pump", problems));
  ASSERT_TRUE(session->package().navigation);
  auto nav = DtmNavigation::create();
  nav->events.LoadDialog = [&](const std::string& key) {
    const auto index = session->formNamed(key);
    ASSERT_TRUE(index) << key;
    session->openForm(*index, problems);
  };
  const auto host =
      std::dynamic_pointer_cast<host::ReferenceHost>(session->host().shared_from_this());
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(session->package().navigation);
  EXPECT_TRUE(host->errorLines().empty());
  auto& bar = headless::user(nav->NavigationBar());
  ASSERT_EQ(bar.BarCount(), 3);
  EXPECT_TRUE(bar.BarHasIcon(3));
  // The service bar opens its first form below the folder.
  bar.click(3);
  ASSERT_TRUE(session->formIndex());
  EXPECT_EQ(session->package().forms[*session->formIndex()].title, "Diagnostics");

  auto* report = dynamic_cast<DTMLaunchButton*>(session->form()->find("SealReport"));
  auto* settings = dynamic_cast<DTMFunctionButton*>(session->form()->find("OpenSettings"));
  ASSERT_TRUE(report && settings);
  EXPECT_EQ(report->Command1().Caption(), "Seal report");
  host->takeCalls();
  headless::user(report->Command1()).click();
  headless::user(settings->Command1()).click();
  const auto calls = host->takeCalls();
  ASSERT_EQ(calls.size(), 2u);
  const auto message = session->answerTo(calls[0]);
  ASSERT_TRUE(message);
  EXPECT_FALSE(message->form);
  EXPECT_EQ(message->message, "Seal wear 12 %: the seal lasts another 4,000 hours.");
  const auto opened = session->answerTo(calls[1]);
  ASSERT_TRUE(opened && opened->form);
  EXPECT_EQ(session->package().forms[*opened->form].name, "Settings");
  EXPECT_FALSE(session->answerTo(host::HostCall{"LogInfo", {"x", "y"}}));
  EXPECT_EQ(problems, std::vector<std::string>{});
  // The host shows a form itself and the menu agrees without a new LoadDialog.
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("Settings"));
  EXPECT_EQ(bar.SelectedBar(), 1);
  EXPECT_EQ(session->package().forms[*session->formIndex()].title, "Diagnostics");
}

}  // namespace
}  // namespace tessaline
