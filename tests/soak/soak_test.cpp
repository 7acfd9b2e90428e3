// A whole dialog driven by the reference host for 24 simulated hours on a fast-forwarded clock:
// the host reads the simulated device four times a second and hands each reading to the
// controls that show it, the user edits now and then and the host takes the edit. After the
// first simulated hour the heap in use, the live objects and the windows are written down;
// after the last one they must be where they were (heap within 5 %), and the host's log must
// hold nothing but what a healthy run writes.
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/display/static_label.h"
#include "tessaline/display/status_control.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/gauges/angular_gauge.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/trends/data_trend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/trends/multi_trend.h"

namespace tessaline {
namespace {

constexpr const char* kFlowItem =
    R"(<dataItem name="Flow" type="float" formatString="5.2f" label="Flow_label" unit="l/min" )"
    R"(description="Flow_description" help="Flow_help"/>)";
constexpr const char* kModes = R"(<enumeration><e name="Off" code="0" label="Mode_Off"/>)"
                               R"(<e name="Auto" code="1" label="Mode_Auto"/>)"
                               R"(<e name="Service" code="2" includeIf=" Role == 'S' "/>)"
                               R"(</enumeration>)";
constexpr const char* kUnits = R"(<enumeration><e name="bar" code="1137" label="unit_bar"/>)"
                               R"(<e name="kPa" code="1133" label="unit_kpa"/></enumeration>)";
constexpr const char* kTrend =
    R"(<trend lowerRange="PT1_Low" upperRange="PT1_High" isLegend="true">)"
    R"(<trendSource color="1F4E9A" label="Pressure" itemName="PT1"/>)"
    R"(<limitSource color="E08A00" label="Limits" itemNameHi="PT1_Hi" itemNameLow="PT1_Lo"/>)"
    R"(</trend>)";
constexpr const char* kGauge =
    R"(<gauge lowerRange="PT1_Low" upperRange="PT1_High" pointerColor="CC0000">)"
    R"(<zones type="low_limit"><zone name="PT1_Lo" color="66CC66"/>)"
    R"(<zone name="PT1_Hi" color="FFCC00"/></zones></gauge>)";

// What the process has in use now: the heap's allocated bytes, its mapped blocks included. The
// small chunks that the allocator keeps aside for reuse count as allocated until they are
// consolidated, so they are first.
size_t heapInUse() {
  malloc_trim(0);
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

struct Counts {
  size_t heap = 0;
  int64_t objects = 0;
  size_t tooltips = 0;
};

class Dialog {
 public:
  explicit Dialog(std::shared_ptr<host::ReferenceHost> reference) : host_(std::move(reference)) {
    host_->translations = {{"Mode_Off", "Off"}, {"Mode_Auto", "Automatic"}, {"unit_bar", "bar"}};
    host_->evaluate = [](const std::string&) { return false; };
    for (auto* control : std::initializer_list<IDtmControl*>{
             flow.get(), notes.get(), mode.get(), mode2.get(), alarms.get(), unit.get(),
             launch.get(), caption.get(), status.get(), meter.get(), angular.get(), dynamic.get(),
             hour.get(), minutes.get(), bands.get()}) {
      control->IDTMControl_Init(host_);
    }
    for (DataControl* control : std::initializer_list<DataControl*>{
             flow.get(), notes.get(), mode.get(), mode2.get(), alarms.get()}) {
      control->IDtmControl_DtmContainer(host_);
    }
    flow->IDtmControl_Name("Flow");
    flow->TextType(TextDataType::Numbers);
    flow->IDTMDataControl_DataItemDef(xml::parseElement(kFlowItem));
    flow->IDTMControlFormatter_EditFormat("5.2f");
    notes->IDtmControl_Name("Notes");
    for (EnumeratedList* list :
         std::initializer_list<EnumeratedList*>{mode.get(), mode2.get(), alarms.get()}) {
      list->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
    }
    unit->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
    launch->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
    caption->IDtmControl_Name("Flow_label");
    for (GaugeControl* gauge : gauges()) {
      gauge->IDtmControl_Name("PT1");
      gauge->DTMDataGaugeControl_Unit("PT1_Unit");
      gauge->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
    }
    meter->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(kGauge));
    angular->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(kGauge));
    for (GaugeControl* gauge : gauges()) {
      gauge->IDtmDataSubscriptionControl_SubscriptionItems();
      for (auto [item, value] : {std::pair{"PT1_Unit", Variant(int32_t{1137})},
                                 {"PT1_Low", Variant(0.0)},
                                 {"PT1_High", Variant(16.0)},
                                 {"PT1_Lo", Variant(4.0)},
                                 {"PT1_Hi", Variant(12.0)}}) {
        gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, value);
      }
    }
  }

  void startTrends() {
    for (SingleItemTrend* trend :
         std::initializer_list<SingleItemTrend*>{hour.get(), minutes.get()}) {
      trend->IDtmControl_Name("PT1");
      trend->DTMDataGaugeControl_Unit("PT1_Unit");
      trend->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
      // The value first: a drawing before any value would find the empty text no number.
      trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1", Variant(8.0));
      trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1_Unit", Variant(1137));
    }
    bands->IDtmTrendControl_TrendDataDef(xml::parseElement(kTrend));
    bands->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1_High", Variant(16.0));
  }

  std::vector<GaugeControl*> gauges() { return {meter.get(), angular.get(), dynamic.get()}; }

  // One reading of the device at tick n (four a second), handed to the controls that show the
  // parameter read: the host reads one parameter a tick, in turn, each every three seconds.
  void tick(int64_t n) {
    const double seconds = static_cast<double>(n) / 4;
    // A slow ramp over the day with noise, and now and then a value that is no number.
    const double pressure = 8 + 6 * std::sin(seconds / 7200) + std::sin(static_cast<double>(n));
    switch (n % 12) {
      case 0:
      case 8:
      case 9:
        gauges()[n % 12 == 0 ? 0 : n % 12 - 7]
            ->IDtmDataSubscriptionControl_UpdateSubscriptionValues(
                "PT1", n % 4800 == 0 ? Variant(std::nan("")) : Variant(pressure));
        break;
      case 1:
        flow->IDTMDataControl_SetDeviceValue(Variant(std::round(pressure * 100) / 100));
        break;
      case 2:
        mode->IDTMDataControl_SetDeviceValue(Variant(int16_t(n / 8 % 2)));
        mode2->IDTMDataControl_SetDeviceValue(Variant(int16_t(n / 8 % 3)));
        break;
      case 3:
        alarms->IDTMDataControl_SetDeviceValue(Variant(int16_t(n / 8 % 2)));
        unit->IDTMDataControl_SetDeviceValue(Variant(n / 8 % 2 ? 1137 : 1133));
        break;
      case 4:
        launch->IDTMDataControl_SetDeviceValue(Variant(int16_t(n / 8 % 2)));
        notes->IDTMDataControl_SetDeviceValue(Variant("Reading " + std::to_string(n)));
        break;
      case 5:
        status->IDTMStatusControl_Mode(n / 8 % 2 ? 106 : 0);
        break;
      case 6:
        // Once a simulated minute the user edits the flow and the host takes the edit.
        if (n % 240 == 6) {
          headless::TextBox& text = headless::user(flow->Text1());
          text.focus();
          text.select(0, 10);
          text.type("12.5");
          text.blur();
          flow->IDTMDataControl_Value();
          flow->IDTMDataControl_Hot(false);
        }
        break;
      case 7:
        // Once a simulated minute the user picks a mode.
        if (n % 240 == 7) headless::user(mode->Combo1()).pick(static_cast<int32_t>(n / 240 % 2));
        break;
      case 10:
        caption->IDtmControl_Visible(n / 12 % 2 == 0);
        // The trends: the hour and the fast one in turn every three seconds, the band chart
        // once a minute.
        (n / 12 % 2 ? static_cast<SingleItemTrend*>(hour.get())
                    : static_cast<SingleItemTrend*>(minutes.get()))
            ->IDtmDataSubscriptionControl_UpdateSubscriptionValues(
                "PT1", n % 4800 == 10 ? Variant(std::nan("")) : Variant(pressure));
        if (n % 240 == 10) {
          bands->IDtmTrendControl_LimitHighValue(Variant(12.0));
          bands->IDtmTrendControl_LimitLowValue(Variant(4.0));
          bands->IDtmTrendControl_ItemValue(Variant(pressure));
        }
        break;
      case 11:
        mode2->IDTMDataControl_SetMode(n / 12 % 2 ? 104 : 0, n / 12 % 2 ? "checked" : "");
        break;
    }
  }

  Counts counts() {
    // What the host keeps is its own affair: its journal is taken as a host writes its log.
    for (const host::HostCall& call : host_->takeCalls()) {
      // The data trend's first value is written at the error level by design.
      if (call.text().find("GAUGE Prev Value Initialized") != std::string::npos) continue;
      if (call.operation == "LogError" || call.operation == "LogFatal") {
        unhealthy.push_back(call.text());
      }
    }
    return {heapInUse(), Object::liveObjects(), headless::current().tooltips().liveCount()};
  }

  std::vector<std::string> unhealthy;
  std::shared_ptr<DTMDataTextBox> flow = DTMDataTextBox::create();
  std::shared_ptr<DTMDataMultiLnTextBox> notes = DTMDataMultiLnTextBox::create();
  std::shared_ptr<DTMDataComboBox> mode = DTMDataComboBox::create();
  std::shared_ptr<DTMDataComboBox2> mode2 = DTMDataComboBox2::create();
  std::shared_ptr<DTMListControl> alarms = DTMListControl::create();
  std::shared_ptr<DTMDataLabel> unit = DTMDataLabel::create();
  std::shared_ptr<DTMDataLaunchLabel> launch = DTMDataLaunchLabel::create();
  std::shared_ptr<DtmStaticLabel> caption = DtmStaticLabel::create();
  std::shared_ptr<DTMStatusControl> status = DTMStatusControl::create();
  std::shared_ptr<DTMDataGuageControl> meter = DTMDataGuageControl::create();
  std::shared_ptr<DTMDataAngularGuage> angular = DTMDataAngularGuage::create();
  std::shared_ptr<DTMDynamicGuageControl> dynamic = DTMDynamicGuageControl::create();
  std::shared_ptr<DTMDataTrendControl> hour = DTMDataTrendControl::create();
  std::shared_ptr<DTMDynamicTrendControl> minutes = DTMDynamicTrendControl::create();
  std::shared_ptr<DTMMultiTrendControl> bands = DTMMultiTrendControl::create();

 private:
  std::shared_ptr<host::ReferenceHost> host_;
};

TEST(Soak, ADialogRunsADayWithoutGrowing) {
  headless::install(".");
  regexp::install();
  chart::install();
  auto host = std::make_shared<host::ReferenceHost>();
  Dialog dialog(host);
  constexpr int64_t kTicksAnHour = 4 * 3600;

  dialog.startTrends();
  headless::Clock& clock = headless::current().clock();
  const auto tick = [&](int64_t at) {
    dialog.tick(at);
    clock.advance(0.25);
  };
  int64_t n = 0;
  for (; n < kTicksAnHour; ++n) tick(n);
  const Counts firstHour = dialog.counts();
  // TESSALINE_SOAK_HOURS runs a longer or shorter day, to look at a run closely.
  const char* hours = std::getenv("TESSALINE_SOAK_HOURS");
  const int lastHour = hours ? std::max(1, std::atoi(hours)) : 24;
  for (int hour = 1; hour < lastHour; ++hour) {
    for (const int64_t end = n + kTicksAnHour; n < end; ++n) tick(n);
    const Counts now = dialog.counts();
    EXPECT_EQ(now.objects, firstHour.objects) << "after hour " << hour + 1;
    EXPECT_EQ(now.tooltips, firstHour.tooltips) << "after hour " << hour + 1;
  }
  const Counts end = dialog.counts();
  EXPECT_LE(static_cast<double>(end.heap), static_cast<double>(firstHour.heap) * 1.05)
      << "heap in use after the first hour " << firstHour.heap << ", at the end " << end.heap;
  EXPECT_EQ(dialog.unhealthy, std::vector<std::string>{});
  EXPECT_TRUE(headless::current().takeUnhandledErrors().empty());
  std::printf("%d simulated hours, %lld readings; heap %zu -> %zu bytes, %lld objects\n", lastHour,
              static_cast<long long>(n), firstHour.heap, end.heap,
              static_cast<long long>(end.objects));
  SetSharedHost(nullptr);
}

}  // namespace
}  // namespace tessaline
