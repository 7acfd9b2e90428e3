// The Qt backend on a driven clock: time stands still until the application moves it on, and the
// controls' timers fire as it passes their moments.
#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>

#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/values/locale.h"

namespace tessaline {
namespace {

class DrivenClock : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_TRUE(qt::takeUnhandledErrors().empty());
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
    setLocale(nullptr);
    platform::chart::setChartEngine(nullptr);
  }
  std::shared_ptr<DTMDynamicTrendControl> trend() {
    chart::install();
    auto trend = DTMDynamicTrendControl::create();
    trend->IDTMControl_Init(std::make_shared<host::ReferenceHost>());
    trend->IDtmControl_Name("PV");
    return trend;
  }
  static size_t samples(const DTMDynamicTrendControl& trend) {
    const std::vector<double> stamps = trend.timeStamps();
    return std::count_if(stamps.begin(), stamps.end(), [](double t) { return t != 1.7e308; });
  }
};

TEST_F(DrivenClock, AFastTrendSamplesAsTheApplicationMovesTheClockOn) {
  qt::install();
  EXPECT_FALSE(qt::drivenClock()) << "the wall clock unless asked";
  qt::install(qt::Time::Driven);
  platform::SettableClock* clock = qt::drivenClock();
  ASSERT_TRUE(clock);
  EXPECT_EQ(&platform::backend().clock(), clock);
  clock->set({2026, 11, 23, 8, 0, 0});
  auto fast = trend();
  fast->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", Variant(4.0));
  const platform::LocalTime before = clock->now();
  QApplication::processEvents();
  EXPECT_EQ(clock->now().second, before.second) << "no time passes by itself";
  EXPECT_EQ(samples(*fast), 0u);
  // Four samples a second, each firing of its timer taking the whole seconds passed.
  clock->advance(60);
  EXPECT_EQ(samples(*fast), 240u);
  clock->advance(0.5);
  EXPECT_EQ(samples(*fast), 240u);
  clock->advance(0.5);
  EXPECT_EQ(samples(*fast), 244u);
}

}  // namespace
}  // namespace tessaline
