#include "tessaline/support/tooltip.h"

#include <gtest/gtest.h>

#include "support.h"

namespace tessaline {
namespace {

class TooltipTest : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    owner = platform::backend().createUserControl("Owner");
  }
  headless::Tooltips& tooltips() { return headless::current().tooltips(); }
  std::unique_ptr<platform::UserControl> owner;
};

TEST_F(TooltipTest, TimesAreClampedAndGoBackToTheCaller) {
  cTooltip tip;
  tip.Create(owner->hWnd());
  int32_t time = 40000;
  tip.VisibleTime(time);
  EXPECT_EQ(time, 32767);
  EXPECT_EQ(tip.VisibleTime(), 32767);
  time = -5;
  tip.DelayTime(time);
  EXPECT_EQ(time, 0);
  EXPECT_EQ(tip.DelayTime(), 0);
  tip.VisibleTime(8000);
  EXPECT_EQ(tooltips().ownedBy(owner->hWnd())->visibleTime, 8000);
}

TEST_F(TooltipTest, TheWidthIsKeptAcrossDestroyAndCreate) {
  cTooltip tip;
  EXPECT_EQ(tip.MaxWidth(), 300);
  tip.MaxWidth(250);
  tip.Create(owner->hWnd());
  const headless::TooltipWindow* window = tooltips().ownedBy(owner->hWnd());
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->maxWidth, 250);
  EXPECT_EQ(window->style, 0x41);
  tip.Destroy();
  tip.Destroy();
  EXPECT_EQ(tooltips().destroyed(), 1);
  EXPECT_EQ(tooltips().ownedBy(owner->hWnd()), nullptr);
  tip.Create(owner->hWnd());
  EXPECT_EQ(tooltips().ownedBy(owner->hWnd())->maxWidth, 250);
}

TEST_F(TooltipTest, WithoutAWindowEverythingGoesNowhere) {
  cTooltip tip;
  tip.VisibleTime(5);
  tip.AddControl(owner->hWnd(), "text");
  EXPECT_EQ(tip.VisibleTime(), 0);
  EXPECT_EQ(tip.DelayTime(), 0);
  EXPECT_EQ(tooltips().liveCount(), 0u);
}

TEST_F(TooltipTest, ToolsCoverTheClientAreaOfTheirWindow) {
  auto box = owner->createTextBox("Text1", false);
  box->Width(3000);
  box->Height(375);
  cTooltip tip;
  tip.Create(owner->hWnd());
  tip.AddControl(box->hWnd(), "Help text");
  tip.AddControl(owner->hWnd(), "", true);
  const auto& tools = tooltips().ownedBy(owner->hWnd())->tools;
  ASSERT_EQ(tools.size(), 2u);
  EXPECT_EQ(tools[0].window, box->hWnd());
  EXPECT_EQ(tools[0].text, "Help text");
  EXPECT_EQ(tools[0].flags, 0x11);
  EXPECT_EQ(tools[0].width, 200);
  EXPECT_EQ(tools[0].height, 25);
  EXPECT_EQ(tools[1].text, "");
  EXPECT_EQ(tools[1].flags, 0x13);
}

TEST_F(TooltipTest, TheControlsPatternBuildsInItsOrderAndCatchesFailures) {
  ControlTooltip tooltip("Error in CreateTooltip of X ", 10000);
  Ref<Logger> logger = MakeLogger(host, "X");
  const platform::WindowHandle windows[] = {owner->hWnd()};
  tooltip.create(*logger, owner->hWnd(), windows, "tip");
  ASSERT_TRUE(tooltip.object());
  const headless::TooltipWindow* window = tooltips().ownedBy(owner->hWnd());
  EXPECT_EQ(window->maxWidth, 400);
  EXPECT_EQ(window->visibleTime, 10000);
  EXPECT_EQ(window->initialTime, 500);
  EXPECT_EQ(window->tools.size(), 1u);

  tooltip.destroy();
  EXPECT_EQ(tooltips().liveCount(), 0u);
  platform::setBackend(nullptr);
  tooltip.create(*logger, owner->hWnd(), windows, "tip");
  EXPECT_EQ(
      host->errorLines().at(0).rfind("Error in CreateTooltip of X -2147467259:No platform", 0), 0u);
  headless::install();
}

}  // namespace
}  // namespace tessaline
