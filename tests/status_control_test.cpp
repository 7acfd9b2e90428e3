#include "tessaline/display/status_control.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support.h"
#include "tessaline/support/resources.h"

namespace tessaline {
namespace {

class StatusControl : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    status = DTMStatusControl::create();
    status->IDTMControl_Init(host);
  }
  const headless::TooltipWindow* tip() {
    return headless::current().tooltips().ownedBy(status->window().hWnd());
  }
  std::shared_ptr<DTMStatusControl> status;
};

TEST_F(StatusControl, EachModeAboveOneHundredShowsItsIconAndText) {
  for (int32_t mode = 101; mode <= 106; ++mode) {
    status->IDTMStatusControl_Mode(mode);
    EXPECT_EQ(status->Image1().Picture(), LoadResPicture(mode));
    EXPECT_EQ(status->IDTMStatusControl_Text(), LoadResString(mode));
  }
  EXPECT_EQ(LoadResString(104), "InValide Value");
  EXPECT_EQ(LoadResString(105), "DataNot Loaded");
}

TEST_F(StatusControl, IconsComeInTwoSizesFromTheResourceFiles) {
  for (int32_t mode = 101; mode <= 106; ++mode) {
    auto icon = refCast<IconResource>(LoadResPicture(mode));
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->id(), mode);
    EXPECT_FALSE(resourceBytes(icon->smallName()).empty());
    EXPECT_FALSE(resourceBytes(icon->largeName()).empty());
    // Read through the picture service: sixteen pixels, with transparent corners.
    ASSERT_EQ(icon->Width(), 16);
    EXPECT_EQ(icon->image().pixels.front() >> 24, 0u);
  }
}

TEST_F(StatusControl, TextsAreLocalizedThroughTheHost) {
  host->translations["Value Changed"] = "Wert geändert";
  status->IDTMStatusControl_Mode(102);
  EXPECT_EQ(status->IDTMStatusControl_Text(), "Wert geändert");
  ASSERT_NE(tip(), nullptr);
  EXPECT_EQ(tip()->tools.at(0).text, "Wert geändert");
  EXPECT_EQ(tip()->visibleTime, 15000);
  EXPECT_EQ(tip()->maxWidth, 400);
}

TEST_F(StatusControl, AHostsTextReplacesTheModesText) {
  status->IDTMStatusControl_Mode(104);
  status->IDTMStatusControl_Text("Out of range");
  EXPECT_EQ(status->Image1().Picture(), LoadResPicture(104));
  EXPECT_EQ(tip()->tools.at(0).text, "Out of range");
  EXPECT_EQ(headless::current().tooltips().liveCount(), 1u);
}

TEST_F(StatusControl, ModeZeroClearsIconAndTooltipOneToHundredKeepTheText) {
  status->IDTMStatusControl_Mode(104);
  status->IDTMStatusControl_Mode(100);
  EXPECT_FALSE(status->Image1().Picture());
  EXPECT_EQ(status->IDTMStatusControl_Text(), "InValide Value");
  status->IDTMStatusControl_Mode(0);
  EXPECT_FALSE(status->Image1().Picture());
  EXPECT_EQ(status->IDTMStatusControl_Text(), "");
  EXPECT_EQ(tip(), nullptr);
}

TEST_F(StatusControl, AModeWithoutResourceFailsToTheCallerWithTheModeStored) {
  try {
    status->IDTMStatusControl_Mode(107);
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), 326);
  }
  EXPECT_EQ(status->IDTMStatusControl_Mode(), 107);
}

TEST_F(StatusControl, FrameMembersAreAcceptedAndIgnored) {
  status->IDtmControl_Name("x");
  status->IDtmControl_Enable(true);
  status->IDtmControl_Visible(true);
  status->IDtmControl_DtmContainer(host);
  EXPECT_EQ(status->IDtmControl_Name(), "");
  EXPECT_FALSE(status->IDtmControl_Enable());
  EXPECT_FALSE(status->IDtmControl_Visible());
  EXPECT_FALSE(status->IDtmControl_DtmContainer());
  status->IDtmControl_DataMode(7);
  EXPECT_EQ(status->IDtmControl_DataMode(), 7);
}

TEST_F(StatusControl, VisibleAndStretchGoToTheImage) {
  status->IDTMStatusControl_Visible(false);
  EXPECT_FALSE(status->Image1().Visible());
  status->IDTMStatusControl_Stretch(true);
  EXPECT_TRUE(status->Image1().Stretch());
  status->Image1().Stretch(false);
  EXPECT_FALSE(status->IDTMStatusControl_Stretch());
}

}  // namespace
}  // namespace tessaline
