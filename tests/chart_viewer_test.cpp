#include "tessaline/platform/chart_viewer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support.h"

namespace tessaline {
namespace {

using platform::ViewPort;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

void expectView(const ViewPort& v, double left, double top, double width, double height) {
  EXPECT_NEAR(v.left, left, 1e-12);
  EXPECT_NEAR(v.top, top, 1e-12);
  EXPECT_NEAR(v.width, width, 1e-12);
  EXPECT_NEAR(v.height, height, 1e-12);
}

TEST(ViewPortArithmetic, ClampingBringsEveryViewportIntoRange) {
  const struct {
    ViewPort in, out;
  } rows[] = {
      {{0, 0, 1, 1}, {0, 0, 1, 1}},
      {{0, -0.2, 1, 1.4}, {0, 0, 1, 1}},             // height above 1, negative top
      {{0.8, 0.9, 0.5, 0.5}, {0.5, 0.5, 0.5, 0.5}},  // pushed past the far edge
      {{kNaN, kNaN, kNaN, kNaN}, {0, 0, 1, 1}},
      {{kInf, -kInf, 0, -3}, {0.999, 0, 0.001, 0.001}},
      {{0.2, 0.3, kInf, 0.25}, {0, 0.3, 1, 0.25}},
  };
  for (const auto& row : rows) {
    const ViewPort v = platform::clampViewPort(row.in);
    expectView(v, row.out.left, row.out.top, row.out.width, row.out.height);
  }
}

TEST(ViewPortArithmetic, ZoomKeepsThePointUnderTheMouse) {
  ViewPort v = platform::zoomAround({}, 0.25, 0.75, 2, 2);
  expectView(v, 0.125, 0.375, 0.5, 0.5);
  // The point at a quarter of the viewer still shows the same place of the range.
  EXPECT_NEAR(v.left + 0.25 * v.width, 0.25, 1e-12);
  v = platform::zoomAround(v, 0.5, 0.5, 0.5, 2);  // out again, limited to the whole range
  expectView(v, 0, 0, 1, 1);
  expectView(platform::zoomAround({}, 0.5, 0.5, 2, 0), 0.25, 0, 0.5, 1);  // horizontal only
  expectView(platform::zoomAround({}, 0.5, 0.5, 2, 1), 0, 0.25, 1, 0.5);  // vertical only
  expectView(platform::zoomAround({}, kNaN, kInf, kNaN, 2), 0, 0, 1, 1);
  ViewPort deep;
  for (int i = 0; i < 40; ++i) deep = platform::zoomAround(deep, 0.5, 0.5, 2, 2);
  EXPECT_DOUBLE_EQ(deep.width, 0.001);
}

TEST(ViewPortArithmetic, DraggingMovesTheContentWithTheMouse) {
  const ViewPort half{0.25, 0.25, 0.5, 0.5};
  // Dragging right by a tenth of the viewer shows what lies left of it.
  expectView(platform::scrollBy(half, 20, 0, 200, 100, 2), 0.2, 0.25, 0.5, 0.5);
  expectView(platform::scrollBy(half, 0, -10, 200, 100, 2), 0.25, 0.3, 0.5, 0.5);
  expectView(platform::scrollBy(half, 1000, 1000, 200, 100, 2), 0, 0, 0.5, 0.5);
  expectView(platform::scrollBy(half, 20, 20, 200, 100, 0), 0.2, 0.25, 0.5, 0.5);
  expectView(platform::scrollBy(half, 20, 20, 200, 100, 1), 0.25, 0.15, 0.5, 0.5);
  expectView(platform::scrollBy(half, 20, 20, 0, 0, 2), 0.25, 0.25, 0.5, 0.5);
}

class HeadlessViewer : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    window = platform::backend().createUserControl("Chart");
    viewer = window->createChartViewer("ChartViewer1");
    viewer->Width(200 * 15);  // twips: 200 by 100 pixels
    viewer->Height(100 * 15);
    viewer->viewerEvents.ViewPortChanged = [this](bool chart, bool map) {
      events.emplace_back(chart, map);
    };
  }
  headless::ChartViewer& user() { return headless::user(*viewer); }
  ViewPort view() const {
    return {viewer->ViewPortLeft(), viewer->ViewPortTop(), viewer->ViewPortWidth(),
            viewer->ViewPortHeight()};
  }

  std::unique_ptr<platform::UserControl> window;
  std::unique_ptr<platform::ChartViewer> viewer;
  std::vector<std::pair<bool, bool>> events;
};

TEST_F(HeadlessViewer, StartsOnTheWholeRangeAndIgnoresAMouseWithNoUse) {
  expectView(view(), 0, 0, 1, 1);
  EXPECT_EQ(viewer->MouseUsage(), 0);
  EXPECT_EQ(viewer->ZoomDirection(), 2);
  user().click(50, 50);
  user().drag(0, 0, 100, 50);
  // Out of the user's reach, a zooming viewer takes no click either.
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  viewer->Enabled(false);
  user().click(50, 50);
  viewer->Enabled(true);
  viewer->Visible(false);
  user().click(50, 50);
  EXPECT_TRUE(events.empty());
  expectView(view(), 0, 0, 1, 1);
}

TEST_F(HeadlessViewer, ClicksZoomAndDragsScrollThenTellTheControl) {
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  user().click(100, 50);
  expectView(view(), 0.25, 0.25, 0.5, 0.5);
  EXPECT_EQ(events.size(), 1u);
  user().drag(0, 0, 50, 0);  // zooming mode: a drag does nothing
  viewer->MouseUsage(platform::ChartViewer::kMouseScroll);
  user().drag(0, 0, 40, 0);
  expectView(view(), 0.15, 0.25, 0.5, 0.5);
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomOut);
  user().click(100, 50);
  expectView(view(), 0, 0, 1, 1);
  EXPECT_EQ(events, (std::vector<std::pair<bool, bool>>(3, {true, false})));
}

TEST_F(HeadlessViewer, ClicksTurnPixelsIntoFractionsAlongTheZoomDirection) {
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  viewer->ZoomDirection(platform::ChartViewer::kDirectionVertical);
  user().click(50, 25);  // a quarter across and a quarter down
  expectView(view(), 0, 0.125, 1, 0.5);
  viewer->ZoomDirection(platform::ChartViewer::kDirectionHorizontal);
  user().click(50, 25);
  expectView(view(), 0.125, 0.125, 0.5, 0.5);
}

TEST_F(HeadlessViewer, UpdateViewPortBringsTheViewportBackAndRaisesItsArguments) {
  viewer->ViewPortHeight(1.3);
  viewer->ViewPortTop(-0.1);
  EXPECT_DOUBLE_EQ(viewer->ViewPortHeight(), 1.3);  // as written, until used
  viewer->updateViewPort(true, false);
  expectView(view(), 0, 0, 1, 1);
  viewer->updateViewPort(false, true);
  EXPECT_EQ(events, (std::vector<std::pair<bool, bool>>{{true, false}, {false, true}}));
}

TEST_F(HeadlessViewer, PicturesAndHandlerFailures) {
  auto picture = std::make_shared<Object>();
  viewer->Picture(picture);
  EXPECT_EQ(viewer->Picture(), Ref<Object>(picture));
  viewer->Picture(nullptr);
  EXPECT_TRUE(viewer->Picture().isNothing());
  viewer->Picture(picture);
  EXPECT_EQ(viewer->Picture(), Ref<Object>(picture));
  EXPECT_EQ(user().picturesShown(), 2);

  viewer->viewerEvents.ViewPortChanged = [](bool, bool) { throw VbError(err::InvalidCall); };
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  user().click(10, 10);
  const auto errors = unhandled();
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0].number(), err::InvalidCall);
  EXPECT_LT(viewer->ViewPortWidth(), 1);  // the zoom happened before the handler failed
}

}  // namespace
}  // namespace tessaline
