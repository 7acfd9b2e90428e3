#include <fstream>
#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/gauges/angular_gauge.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/chart_recorder.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::demo {

namespace {

constexpr const char* kGaugeNode =
    R"(<gauge lowerRange="PT1_Low" upperRange="PT1_High" pointerColor="CC0000">)"
    R"(<zones type="low_limit"><zone name="PT1_LoLo" color="3366FF"/>)"
    R"(<zone name="PT1_Lo" color="66CC66"/><zone name="PT1_Hi" color="FFCC00"/>)"
    R"(<zone name="PT1_High" color="FF3333"/></zones></gauge>)";

constexpr const char* kUnits = R"(<enumeration><entry name="bar" code="1137" label="unit_bar"/>)"
                               R"(<entry name="kPa" code="1133" label="unit_kpa"/></enumeration>)";

std::string itemList(const Variant& items) {
  std::string text;
  for (const Variant& item : items.toArray().items) {
    text += (text.empty() ? "" : ", ") + ("\"" + item.toText() + "\"");
  }
  return "[" + text + "]";
}

void writePicture(Transcript& t, GaugeControl& gauge, const std::filesystem::path& file) {
  const auto picture = refCast<platform::Picture>(gauge.ChartViewer1().Picture());
  if (!picture) {
    t.note("no picture to write for " + file.filename().string());
    return;
  }
  const auto bytes = chart::encodePng(picture->image());
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  t.note("wrote " + file.string());
}

// The host's side of the exchange: the item list first, then each value as the device has it.
void deliver(Transcript& t, GaugeControl& gauge, host::ReferenceHost& host,
             const std::string& item) {
  const Variant value = host.device.read(item);
  t.host("UpdateSubscriptionValues(\"" + item + "\", " + value.toText() + ")");
  gauge.IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, value);
}

// What the last drawing put on the meter: its scale, pointer and text, as the chart was told.
void showValue(Transcript& t, GaugeControl& gauge, platform::chart::ChartRecording& drawing) {
  for (const auto& call : drawing.calls()) {
    if (call.operation == "setScale" || call.operation == "addPointer" ||
        call.operation == "addText" || call.operation == "setLabelFormat") {
      t.note("draws " + call.line());
    }
  }
  drawing.clear();
  t.note("value now reads " + gauge.IDTMDataControl_Value().toText() + ", picture " +
         (gauge.ChartViewer1().Picture() ? "shown" : "none"));
}

}  // namespace

void playGauges(Transcript& t, const std::filesystem::path& out) {
  headless::install(".");
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"unit_bar", "bar"},
                        {"unit_kpa", "kPa"},
                        {"PT1_caption", "Outlet pressure"},
                        {"PT1_description", "Pressure at the pump outlet"}};
  for (auto [item, value] : {std::pair{"PT1_Low", 0.0},
                             {"PT1_High", 16.0},
                             {"PT1_LoLo", 2.0},
                             {"PT1_Lo", 10.0},
                             {"PT1_Hi", 13.0},
                             {"PT1", 7.4}}) {
    host->device.define(item, Variant(value));
  }
  host->device.define("PT1_Unit", Variant(int32_t{1137}));

  t.title("Gauges: the subscription exchange with a simulated device");
  t.listen(*host);
  auto fixed = DTMDataGuageControl::create();
  auto angular = DTMDataAngularGuage::create();
  auto dynamic = DTMDynamicGuageControl::create();
  GaugeControl* all[] = {fixed.get(), angular.get(), dynamic.get()};
  for (GaugeControl* gauge : all) {
    gauge->IDTMControl_Init(host);
    gauge->IDtmControl_Name("PT1");
    gauge->DTMDataGaugeControl_Unit("PT1_Unit");
    gauge->IDTMDataControl_Caption("PT1_caption");
    gauge->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
    gauge->IDTMDataControl_DataItemDef(
        xml::parseElement(R"(<dataItem name="PT1" type="float" description="PT1_description"/>)"));
  }
  fixed->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(kGaugeNode));
  angular->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(kGaugeNode));

  const std::pair<std::string, GaugeControl*> named[] = {{"DTMDataGuageControl", fixed.get()},
                                                         {"DTMDataAngularGuage", angular.get()},
                                                         {"DTMDynamicGuageControl", dynamic.get()}};
  const auto drawing = platform::chart::recordChartCalls();
  for (const auto& [name, gauge] : named) {
    t.title(name);
    const Variant items = gauge->IDtmDataSubscriptionControl_SubscriptionItems();
    t.host("asks for the item list: " + itemList(items));
    for (const Variant& item : items.toArray().items) {
      if (!item.toText().empty() && item.toText() != "PT1")
        deliver(t, *gauge, *host, item.toText());
    }
    // A value that runs beyond the scale and back, a NaN, then a settled value.
    for (double value :
         {7.4, 12.8, 17.5, 21.0, 15.2, std::numeric_limits<double>::quiet_NaN(), 9.6}) {
      host->device.define("PT1", Variant(value));
      deliver(t, *gauge, *host, "PT1");
      showValue(t, *gauge, *drawing);
      if (value == 21.0) writePicture(t, *gauge, out / (name + "-beyond-scale.png"));
    }
    writePicture(t, *gauge, out / (name + ".png"));
  }
  platform::chart::stopRecordingChartCalls();
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
