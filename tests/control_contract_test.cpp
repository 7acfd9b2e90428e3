// What every control shares, run over all of them: the interfaces it answers, its members by
// name, its data mode, and device values of every kind that never escape a guarded member.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include "display/data_label.h"
#include "display/launch_label.h"
#include "display/static_label.h"
#include "display/status_control.h"
#include "entry/data_combo_box.h"
#include "entry/data_combo_box2.h"
#include "entry/data_multi_line_text_box.h"
#include "entry/data_text_box.h"
#include "entry/list_control.h"
#include "gauges/angular_gauge.h"
#include "gauges/data_gauge.h"
#include "gauges/dynamic_gauge.h"
#include "support.h"

namespace tessaline {
namespace {

struct ControlKind {
  std::string name;
  std::function<Ref<Object>()> create;
  std::set<std::string_view> interfaces;
  friend void PrintTo(const ControlKind& kind, std::ostream* out) { *out << kind.name; }
};

template <class Control>
std::function<Ref<Object>()> maker() {
  return [] { return Ref<Object>(Control::create()); };
}

const std::set<std::string_view> kEntry = {IDtmControl::kIid, IDTMDataControl::kIid,
                                           IDTMEnumeration::kIid};
const std::set<std::string_view> kText = {IDTMControlFormatter::kIid, IDtmControl::kIid,
                                          IDTMDataControl::kIid};
const std::set<std::string_view> kLabel = {IDtmControl::kIid, IDTMDataControl::kIid,
                                           IDTMEnumeration::kIid, IDTMEnumeration1::kIid};

const std::set<std::string_view> kRangedGauge = {
    IDtmControl::kIid, IDTMEnumeration::kIid, IDtmDataSubscriptionControl::kIid,
    IDtmDataSubscriptionControlRange::kIid, IDTMEnumeration1::kIid};

const ControlKind kControls[] = {
    {"DTMDataTextBox", maker<DTMDataTextBox>(), kText},
    {"DTMDataMultiLnTextBox", maker<DTMDataMultiLnTextBox>(), kText},
    {"DTMDataComboBox", maker<DTMDataComboBox>(), kEntry},
    {"DTMDataComboBox2", maker<DTMDataComboBox2>(), kEntry},
    {"DTMListControl", maker<DTMListControl>(), kEntry},
    {"DTMDataLabel", maker<DTMDataLabel>(), kLabel},
    {"DTMDataLaunchLabel", maker<DTMDataLaunchLabel>(), kLabel},
    {"DtmStaticLabel", maker<DtmStaticLabel>(), {IDtmControl::kIid}},
    {"DTMStatusControl", maker<DTMStatusControl>(), {IDtmControl::kIid, IDTMStatusControl::kIid}},
    {"DTMDataGuageControl", maker<DTMDataGuageControl>(), kRangedGauge},
    {"DTMDataAngularGuage", maker<DTMDataAngularGuage>(), kRangedGauge},
    {"DTMDynamicGuageControl",
     maker<DTMDynamicGuageControl>(),
     {IDtmControl::kIid, IDtmDataSubscriptionControl::kIid, IDTMEnumeration::kIid}},
};

const std::string_view kAllInterfaces[] = {
    IDtmControl::kIid,
    IDTMDataControl::kIid,
    IDTMEnumeration::kIid,
    IDTMEnumeration1::kIid,
    IDTMControlFormatter::kIid,
    IDtmDataControlCaption::kIid,
    IDTMStatusControl::kIid,
    IDtmDataSubscriptionControl::kIid,
    IDtmDataSubscriptionControlRange::kIid,
    IDtmNavigation::kIid,
    IDtmTrendControl::kIid,
    IDtmWaveFormControl::kIid,
};

class EveryControl : public testing::HeadlessTest,
                     public ::testing::WithParamInterface<ControlKind> {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    control = GetParam().create();
  }
  Ref<Object> control;
};

TEST_P(EveryControl, AnswersExactlyItsInterfaces) {
  for (std::string_view iid : kAllInterfaces) {
    EXPECT_EQ(static_cast<bool>(queryInterface(control, iid)), GetParam().interfaces.count(iid) > 0)
        << iid;
  }
}

TEST_P(EveryControl, StartsInDataModeTwoAndTakesItsHost) {
  Ref<IDtmControl> frame = queryInterface<IDtmControl>(control);
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->IDtmControl_DataMode(), 2);
  frame->IDTMControl_Init(host);
  frame->IDtmControl_DataMode(-3);
  EXPECT_EQ(frame->IDtmControl_DataMode(), -3);
}

TEST_P(EveryControl, ReadsEveryPropertyByName) {
  auto dispatch = refCast<Dispatchable>(control);
  ASSERT_TRUE(dispatch);
  EXPECT_TRUE(dispatch->hasMember("idtmcontrol_datamode"));
  EXPECT_EQ(dispatch->get("IDtmControl_DataMode"), Variant(2));
  EXPECT_THROW(dispatch->get("NoSuchMember"), VbError);
  dispatch->call("IDTMControl_Init", {Variant(Ref<Object>(host))});
}

TEST_P(EveryControl, NoDeviceValueEscapesItsGuard) {
  Ref<IDTMDataControl> data = queryInterface<IDTMDataControl>(control);
  if (!data) GTEST_SKIP() << "no data control";
  const Variant values[] = {
      Variant(),
      Variant::null(),
      Variant::nothing(),
      Variant(VariantArray{0, {Variant(1), Variant("x")}}),
      Variant(std::nan("")),
      Variant(std::numeric_limits<double>::infinity()),
      Variant(1.7e308),
      Variant(std::string(1 << 20, '9')),
      Variant(std::string("\xff\xfe bad utf-8")),
      Variant("Grüße 流量 😀"),
      Variant(int16_t{-32768}),
      Variant(DateSerial{2958465.5}),
  };
  for (bool withHost : {false, true}) {
    if (withHost) queryInterface<IDtmControl>(control)->IDTMControl_Init(host);
    for (const Variant& value : values) {
      EXPECT_NO_THROW(data->IDTMDataControl_SetDeviceValue(value)) << describe(value).substr(0, 40);
    }
  }
  EXPECT_FALSE(data->IDTMDataControl_CanWrite());
  EXPECT_EQ(data->IDTMDataControl_ErrorString(), "");
}

TEST_P(EveryControl, MalformedDefinitionsLeaveItUnconfiguredAndWorking) {
  Ref<IDTMDataControl> data = queryInterface<IDTMDataControl>(control);
  if (!data) GTEST_SKIP() << "no data control";
  queryInterface<IDtmControl>(control)->IDTMControl_Init(host);
  for (const char* xml : {"<DataItem name='x'/>", "<dataItem><!-- c -->text</dataItem>",
                          "<enumeration/>", "<dataItem name=''/>"}) {
    EXPECT_NO_THROW(data->IDTMDataControl_DataItemDef(testing::element(xml))) << xml;
  }
  EXPECT_NO_THROW(data->IDTMDataControl_DataItemDef(nullptr));
  if (auto enumeration = queryInterface<IDTMEnumeration>(control)) {
    for (const char* xml : {"<Enumeration/>",
                            "<enumeration><!-- c --> text <e/><e name='a'/>"
                            "<e code='1'/></enumeration>"}) {
      EXPECT_NO_THROW(enumeration->IDTMEnumeration_EnumDataDef(testing::element(xml))) << xml;
    }
  }
  EXPECT_NO_THROW(data->IDTMDataControl_SetDeviceValue(Variant("1")));
}

INSTANTIATE_TEST_SUITE_P(All, EveryControl, ::testing::ValuesIn(kControls),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace tessaline
