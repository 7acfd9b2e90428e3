// The four buttons: what a click starts and when it starts nothing, the pictures an
// enumeration names (and the names that would leave the images folder), layout, caption and
// tooltip, and the differences between the siblings.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "support.h"
#include "tessaline/action/data_picture_button.h"
#include "tessaline/action/data_picture_fn_button.h"
#include "tessaline/action/function_button.h"
#include "tessaline/action/launch_button.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/property_bag.h"
#include "tessaline/support/image_files.h"

namespace tessaline {
namespace {

namespace fs = std::filesystem;

class Buttons : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    base = fs::temp_directory_path() / ("tessaline-buttons-" + std::to_string(::getpid()));
    fs::create_directories(base / "images");
    host->baseFolder = base.string();
    for (const auto& [name, width] : {std::pair{"green.png", 2}, {"red.png", 3}, {"off.png", 4}}) {
      picture(base / "images" / name, width);
    }
    // A picture outside the images folder that no enumeration may reach.
    picture(base / "secret.png", 9);
    std::ofstream(base / "images" / "broken.png") << "no picture";
  }
  void TearDown() override {
    fs::remove_all(base);
    HeadlessTest::TearDown();
  }
  static void picture(const fs::path& path, int32_t width) {
    platform::PixelImage image{width, 1, std::vector<uint32_t>(static_cast<size_t>(width), ~0u)};
    const auto bytes = chart::encodePng(image);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  // The width of the picture shown, which tells the files apart; 0 for none.
  static int32_t shown(PictureButtonControl& button) {
    const auto picture = refCast<platform::Picture>(button.ImgIcon().Picture());
    return picture ? picture->Width() : 0;
  }
  std::vector<std::string> launches() {
    std::vector<std::string> made;
    for (const auto& call : host->calls()) {
      if (call.operation.starts_with("Launch") || call.operation == "CallModuleFunction") {
        made.push_back(call.text());
      }
    }
    host->takeCalls();
    return made;
  }

  fs::path base;
};

// ---- DTMLaunchButton ----

TEST_F(Buttons, TheLaunchTypeChoosesTheOperationAndZeroIsPassedOn) {
  auto button = DTMLaunchButton::create();
  button->IDTMControl_Init(host);
  button->IDtmControl_DtmContainer(host);
  const std::pair<int32_t, const char*> cases[] = {{0, "LaunchFunctionPrimary(0)"},
                                                   {1, "LaunchFunctionSecondary(0)"},
                                                   {2, "LaunchFunctionInContainer(0)"}};
  for (const auto& [type, call] : cases) {
    button->IDtmControl_LaunchType(type);
    host->takeCalls();
    headless::user(button->Command1()).click();
    EXPECT_EQ(launches(), std::vector<std::string>{call});
  }
  button->IDtmControl_LaunchType(3);
  button->IDTMControl_FunctionID(12);
  host->takeCalls();
  headless::user(button->Command1()).click();
  EXPECT_TRUE(host->calls().empty());
}

TEST_F(Buttons, ALaunchWithoutItsContainerIsOneLogLineAndNoCall) {
  auto button = DTMLaunchButton::create();
  button->IDTMControl_Init(host);
  button->IDtmControl_LaunchType(2);
  button->IDTMControl_FunctionID(7);
  host->takeCalls();
  headless::user(button->Command1()).click();
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"Error on Command1_Click91 ,Description = Object variable or "
                                     "With block variable not set"});
  EXPECT_TRUE(launches().empty());
}

TEST_F(Buttons, ItKeepsAMinimumSizeAndTheButtonFillsIt) {
  auto button = DTMLaunchButton::create();
  auto& window = button->window();
  window.Height(90);
  EXPECT_EQ(window.Height(), 150);
  EXPECT_EQ(button->Command1().Height(), 150);
  window.Height(101);
  EXPECT_EQ(window.Height(), 101);
  window.Width(400);
  EXPECT_EQ(window.Width(), 500);
  EXPECT_EQ(button->Command1().Width(), 500);
}

TEST_F(Buttons, ACaptionSetBeforeTheHostIsLocalizedAtInit) {
  host->translations = {{"Calibrate", "Kalibrieren"}};
  auto button = DTMLaunchButton::create();
  button->IDTMControl_Caption("Calibrate");
  EXPECT_EQ(button->Command1().Caption(), "Calibrate");
  button->IDTMControl_Init(host);
  EXPECT_EQ(button->Command1().Caption(), "Kalibrieren");
  EXPECT_EQ(button->IDTMControl_Caption(), "Kalibrieren");
}

TEST_F(Buttons, TheClickEventIsDeclaredAndNeverRaised) {
  struct Sink : ControlEvents {
    int clicks = 0;
    void Click() override { ++clicks; }
  };
  auto sink = std::make_shared<Sink>();
  auto launch = DTMLaunchButton::create();
  auto function = DTMFunctionButton::create();
  launch->Advise(sink);
  function->Advise(sink);
  launch->IDTMControl_Init(host);
  function->IDTMControl_Init(host);
  headless::user(launch->Command1()).click();
  headless::user(function->Command1()).click();
  EXPECT_EQ(sink->clicks, 0);
}

// The launch button rebuilds its tooltip at Init and only while visible; the function button
// waits for the focus or Visible, and builds it hidden too.
TEST_F(Buttons, TheSiblingsBuildTheirToolWindowsAtDifferentMoments) {
  const auto& tooltips = headless::current().tooltips();
  auto launch = DTMLaunchButton::create();
  launch->ToolTipText("Tip");
  launch->IDTMControl_Init(host);
  EXPECT_TRUE(tooltips.ownedBy(launch->window().hWnd()));
  launch->IDtmControl_Visible(false);
  // The focus coming to the hidden button rebuilds nothing.
  headless::moveFocus(&headless::user(launch->Command1()));
  EXPECT_FALSE(tooltips.ownedBy(launch->window().hWnd()));
  headless::moveFocus(nullptr);

  auto function = DTMFunctionButton::create();
  function->IDTMControl_Init(host);
  EXPECT_FALSE(tooltips.ownedBy(function->window().hWnd()));
  function->IDtmControl_Visible(false);
  EXPECT_TRUE(tooltips.ownedBy(function->window().hWnd()));
  const size_t live = tooltips.liveCount();
  function->IDtmControl_Visible(true);
  EXPECT_EQ(tooltips.liveCount(), live);
}

TEST_F(Buttons, TheBagGetsEnableUnderItsOtherSpellingAndTheCaptionAsText) {
  auto button = DTMFunctionButton::create();
  button->Caption("Run");
  button->IDtmControl_Enable(false);
  platform::MemoryPropertyBag bag;
  button->WriteProperties(bag);
  ASSERT_TRUE(bag.find("Text"));
  EXPECT_EQ(*bag.find("Text"), Variant("Run"));
  std::vector<std::string> names;
  for (const auto& [name, value] : bag.entries()) names.push_back(name);
  EXPECT_NE(std::find(names.begin(), names.end(), "IDTMControl_Enable"), names.end());
  EXPECT_EQ(std::find(names.begin(), names.end(), "IDtmControl_Enable"), names.end());
}

TEST_F(Buttons, IsErrorLogsThePendingErrorClearsItAndAnswersFalse) {
  auto button = DTMLaunchButton::create();
  button->IDTMControl_Init(host);
  button->IDtmControl_LaunchType(2);
  headless::user(button->Command1()).click();
  host->takeCalls();
  EXPECT_FALSE(button->IDTMControl_IsError());
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"91 : Object variable or With block variable not set"});
  EXPECT_EQ(currentError().number, 0);
  EXPECT_EQ(button->IDTMControl_ErrorString(), "");
}

// ---- DTMFunctionButton ----

TEST_F(Buttons, TheFunctionButtonCallsByNameWithAnEmptyDataText) {
  auto button = DTMFunctionButton::create();
  button->IDTMControl_Init(host);
  headless::user(button->Command1()).click();
  button->IDTMControl_ModuleName("Pump");
  button->IDTMControl_FunctionName("Prime");
  button->IDTMControl_Data("kept, not sent");
  headless::user(button->Command1()).click();
  EXPECT_EQ(launches(), (std::vector<std::string>{"CallModuleFunction(, , )",
                                                  "CallModuleFunction(Pump, Prime, )"}));

  auto orphan = DTMFunctionButton::create();
  orphan->IDTMControl_Init(host);
  orphan->IDtmControl_GenericDtm(nullptr);
  host->takeCalls();
  headless::user(orphan->Command1()).click();
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_TRUE(host->errorLines()[0].starts_with("Error on Command1_Click91"));
}

TEST_F(Buttons, TheFunctionButtonsCaptionIsTheChildsTextUnlocalized) {
  host->translations = {{"Run", "Start"}};
  auto button = DTMFunctionButton::create();
  button->IDTMControl_Init(host);
  auto& window = headless::user(button->window());
  window.takePropertyChanges();
  button->Caption("Run");
  EXPECT_EQ(button->Command1().Caption(), "Run");
  EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{"Text"});
  button->IDTMControl_Caption("Run");
  EXPECT_EQ(button->Caption(), "Start");
}

// ---- DTMDataPictureButton ----

constexpr const char* kEnumeration =
    "<enumeration defaultImage='off.png'>"
    "<e name='On' code='1' functionId='11' image='green.png'/>"
    "<e name='Fault' code='2' functionId='22' image='red.png'/>"
    "</enumeration>";

TEST_F(Buttons, AValueShowsItsEntryAndAnUnknownOneTheDefaultKeepingTheFunction) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  button->IDTMEnumeration_EnumDataDef(testing::element(kEnumeration));
  button->IDTMDataControl_SetDeviceValue(Variant(2));
  EXPECT_EQ(shown(*button), 3);
  EXPECT_EQ(button->IDTMControl_FunctionID(), 22);
  button->IDTMDataControl_SetDeviceValue(Variant(7));
  EXPECT_EQ(shown(*button), 4);
  EXPECT_EQ(button->IDTMControl_FunctionID(), 22);
  host->takeCalls();
  button->IDtmControl_Enable(false);
  headless::user(button->ImgIcon()).click();
  EXPECT_EQ(launches(), std::vector<std::string>{"LaunchFunctionPrimary(22)"});
}

TEST_F(Buttons, WithEqualCodesTheLastEntryWins) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  button->IDTMEnumeration_EnumDataDef(
      testing::element("<enumeration><e name='a' code='1' functionId='5' image='green.png'/>"
                       "<e name='b' code='1' functionId='6' image='red.png'/></enumeration>"));
  button->IDTMDataControl_Value(Variant("1"));
  EXPECT_EQ(shown(*button), 3);
  EXPECT_EQ(button->IDTMControl_FunctionID(), 6);
}

TEST_F(Buttons, APictureThatCantBeLoadedIsOneLineAndStopsTheWrite) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  button->IDTMEnumeration_EnumDataDef(testing::element(
      "<enumeration><e name='On' code='1' functionId='11' image='green.png'/>"
      "<e name='Bad' code='2' functionId='22' image='broken.png'/></enumeration>"));
  button->IDTMDataControl_Value(Variant(1));
  host->takeCalls();
  // No default picture: the path ends in the folder, and the old picture stays.
  button->IDTMDataControl_Value(Variant(9));
  EXPECT_EQ(shown(*button), 2);
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_EQ(host->errorLines()[0],
            "Error on IDTMDataControl_Value 53 ,Description = File not found");
  host->takeCalls();
  // A matching entry's broken file: the old picture is gone, the number not taken.
  auto& window = headless::user(button->window());
  window.takePropertyChanges();
  button->IDTMDataControl_Value(Variant(2));
  EXPECT_EQ(shown(*button), 0);
  EXPECT_EQ(button->IDTMControl_FunctionID(), 11);
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"Error on IDTMDataControl_Value 481 ,Description = Invalid "
                                     "picture"});
  EXPECT_TRUE(window.takePropertyChanges().empty());
}

// The folder is asked for before the old picture goes: a host that fails there leaves it.
// A definition node that is no element has no default picture to read: one debug line.
TEST_F(Buttons, AFailingFolderKeepsTheOldPictureAndANodeWithoutAttributesIsADebugLine) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  button->IDTMEnumeration_EnumDataDef(testing::element(
      "<enumeration><e name='On' code='1' functionId='11' image='green.png'/></enumeration>"));
  button->IDTMDataControl_Value(Variant(1));
  host->onCall = [](const host::HostCall& call) {
    if (call.operation == "BaseFolder") throw VbError(err::ObjectRequired);
  };
  button->IDTMDataControl_Value(Variant(1));
  EXPECT_EQ(shown(*button), 2);
  host->onCall = nullptr;
  host->takeCalls();

  const Ref<platform::XmlNode> comment =
      testing::element("<enumeration><!-- no element --></enumeration>")->childNodes()->item(0);
  button->IDTMEnumeration_EnumDataDef(comment);
  EXPECT_EQ(host->callsOf("LogDebug").size(), 1u);
  EXPECT_EQ(host->callsOf("LogDebug").at(0).arguments.at(1),
            "Failed to find defaultImage attribute;Assigning null to defaultImage");
}

// The path keeps the doubled backslashes of its literal; the file opened has one '/' for each
// run of them, so that a base folder written either way reaches the same file.
TEST(ImagesFolder, ThePathKeepsItsLiteralAndOpensWithOneSeparatorPerRun) {
  EXPECT_EQ(imagesFolderPath("C:\\Dtm", "pump.png"), "C:\\Dtm\\\\images\\\\pump.png");
  EXPECT_EQ(platformPath(imagesFolderPath("/opt/dtm", "pump.png")), "/opt/dtm/images/pump.png");
  EXPECT_EQ(platformPath(imagesFolderPath("/opt/dtm/", "sub\\pump.png")),
            "/opt/dtm//images/sub/pump.png");
}

// A name that climbs out of the images folder is never opened, though a picture is there.
TEST_F(Buttons, NamesThatLeaveTheImagesFolderAreNeverOpened) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  for (const char* name :
       {"..\\secret.png", "../secret.png", "sub\\..\\..\\secret.png", "..\\..\\etc\\passwd"}) {
    button->IDTMEnumeration_EnumDataDef(testing::element(
        std::string("<enumeration defaultImage='") + name +
        "'><e name='x' code='1' functionId='3' image='" + name + "'/></enumeration>"));
    host->takeCalls();
    button->IDTMDataControl_Value(Variant(1));
    button->IDTMDataControl_Value(Variant(2));
    EXPECT_EQ(shown(*button), 0) << name;
    EXPECT_EQ(host->errorLines().size(), 2u) << name;
  }
}

TEST_F(Buttons, EveryChildTakesASlotAndFunctionIdDefaultsToZero) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  EXPECT_FALSE(button->IDTMEnumeration_HasEnumData());
  button->IDTMEnumeration_EnumDataDef(
      testing::element("<enumeration><e functionId='4' image='green.png'/></enumeration>"));
  EXPECT_TRUE(button->IDTMEnumeration_HasEnumData());
  // The slot without a code matches the empty text.
  button->IDTMDataControl_Value(Variant(""));
  EXPECT_EQ(shown(*button), 2);
  EXPECT_EQ(button->IDTMControl_FunctionID(), 4);

  button->IDTMEnumeration_EnumDataDef(
      testing::element("<enumeration><e name='n' code='1' image='red.png'/></enumeration>"));
  button->IDTMDataControl_Value(Variant(1));
  EXPECT_EQ(button->IDTMControl_FunctionID(), 0);
  host->takeCalls();
  headless::user(button->ImgIcon()).click();
  EXPECT_TRUE(launches().empty());
}

TEST_F(Buttons, ReadingTheValueEmptiesThePreviousOneAndTheDefinitionBuildsTheTooltip) {
  auto button = DTMDataPictureButton::create();
  button->IDTMControl_Init(host);
  button->IDTMDataControl_Value(Variant("5"));
  EXPECT_EQ(button->IDTMDataControl_PreviousValue(), Variant("5"));
  EXPECT_EQ(button->IDTMDataControl_Value(), Variant("5"));
  EXPECT_TRUE(button->IDTMDataControl_PreviousValue().isEmpty());

  const auto& tooltips = headless::current().tooltips();
  button->IDTMDataControl_DataItemDef(testing::element("<dataItem name='P' description='Pump'/>"));
  EXPECT_FALSE(tooltips.ownedBy(button->window().hWnd()));
  button->IDTMDataControl_DataItemDef();
  button->IDTMDataControl_DataItemDef();
  const auto* window = tooltips.ownedBy(button->window().hWnd());
  ASSERT_TRUE(window);
  EXPECT_EQ(window->tools.at(0).text, "Pump");
}

TEST_F(Buttons, AccessZeroDisablesAndAnEmptyBagGivesTheValue101) {
  auto button = DTMDataPictureButton::create();
  EXPECT_EQ(button->IDTMDataControl_Value(), Variant("0"));
  button->IDTMDataControl_Access(0);
  EXPECT_FALSE(button->IDtmControl_Enable());
  platform::MemoryPropertyBag empty;
  button->ReadProperties(empty);
  EXPECT_EQ(button->IDTMDataControl_Value(), Variant("101"));
  EXPECT_TRUE(button->IDtmControl_Enable());
}

// ---- DTMDataPictureFnButton ----

TEST_F(Buttons, OnlyACompleteEntryChangesWhatThePictureFunctionButtonCalls) {
  auto button = DTMDataPictureFnButton::create();
  button->IDTMControl_Init(host);
  headless::user(button->ImgIcon()).click();
  button->IDTMEnumeration_EnumDataDef(testing::element(
      "<enumeration defaultImage='off.png'>"
      "<e name='a' code='1' moduleName='Pump' functionName='Prime' image='green.png'/>"
      "<e name='b' code='2' functionName='Stop' image='red.png'/></enumeration>"));
  button->IDTMDataControl_Value(Variant(1));
  button->IDTMDataControl_Value(Variant(2));
  EXPECT_EQ(shown(*button), 3);
  headless::user(button->ImgIcon()).click();
  button->IDTMDataControl_Value(Variant(8));
  EXPECT_EQ(shown(*button), 4);
  headless::user(button->ImgIcon()).click();
  EXPECT_EQ(launches(), (std::vector<std::string>{"CallModuleFunction(, , )",
                                                  "CallModuleFunction(Pump, Prime, )",
                                                  "CallModuleFunction(Pump, Prime, )"}));
}

TEST_F(Buttons, ThePictureFunctionButtonLogsItsClickUnderItsOwnLiteral) {
  auto button = DTMDataPictureFnButton::create();
  button->IDTMControl_Init(host);
  button->IDtmControl_GenericDtm(nullptr);
  host->takeCalls();
  headless::user(button->ImgIcon()).click();
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_TRUE(host->errorLines()[0].starts_with("Error on Image_Click91"));
}

}  // namespace
}  // namespace tessaline
