// What every control shares, run over every control of the class catalogue: the interfaces it
// answers, its members by name, its data mode, device values of every kind that never escape a
// guarded member, malformed definitions, and its property bag: saved and restored it comes back
// the same, an empty bag gives the defaults, and values of the wrong kind follow the conversion
// rules without a crash.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "support.h"
#include "tessaline/frame/control_frame.h"
#include "tessaline/host/form.h"
#include "tessaline/platform/xml/form_file.h"
#include "tessaline/server/class_catalogue.h"

namespace tessaline {
namespace {

const std::set<std::string_view> kEntry = {IDtmControl::kIid, IDTMDataControl::kIid,
                                           IDTMEnumeration::kIid};
const std::set<std::string_view> kText = {IDTMControlFormatter::kIid, IDtmControl::kIid,
                                          IDTMDataControl::kIid};
const std::set<std::string_view> kLabel = {IDtmControl::kIid, IDTMDataControl::kIid,
                                           IDTMEnumeration::kIid, IDTMEnumeration1::kIid};
const std::set<std::string_view> kRangedGauge = {
    IDtmControl::kIid, IDTMEnumeration::kIid, IDtmDataSubscriptionControl::kIid,
    IDtmDataSubscriptionControlRange::kIid, IDTMEnumeration1::kIid};

const std::set<std::string_view> kSingleTrend = {IDtmControl::kIid, IDTMEnumeration::kIid,
                                                 IDtmDataSubscriptionControl::kIid,
                                                 IDTMEnumeration1::kIid};

// The interfaces of each control class, as hosts rely on them.
const std::map<std::string_view, std::set<std::string_view>> kInterfaces = {
    {"DTMDataTextBox", kText},
    {"DTMDataMultiLnTextBox", kText},
    {"DTMDataComboBox", kEntry},
    {"DTMDataComboBox2", kEntry},
    {"DTMListControl", kEntry},
    {"DTMDataLabel", kLabel},
    {"DTMDataLaunchLabel", kLabel},
    {"DtmStaticLabel", {IDtmControl::kIid}},
    {"DTMStatusControl", {IDtmControl::kIid, IDTMStatusControl::kIid}},
    {"DTMDataGuageControl", kRangedGauge},
    {"DTMDataAngularGuage", kRangedGauge},
    {"DTMDynamicGuageControl",
     {IDtmControl::kIid, IDtmDataSubscriptionControl::kIid, IDTMEnumeration::kIid}},
    {"DTMDataTrendControl", kSingleTrend},
    {"DTMDynamicTrendControl", kSingleTrend},
    {"DTMMultiTrendControl",
     {IDtmControl::kIid, IDtmTrendControl::kIid, IDtmDataSubscriptionControl::kIid}},
    {"DTMWaveFormControl", {IDtmControl::kIid, IDtmWaveFormControl::kIid}},
    {"DTMDataCheckBox", {IDtmDataControlCaption::kIid, IDtmControl::kIid, IDTMDataControl::kIid}},
    {"DTMDateTimeControl", {IDtmControl::kIid, IDTMDataControl::kIid}},
    {"DTMLaunchButton", {IDtmControl::kIid}},
    {"DTMFunctionButton", {IDtmControl::kIid}},
    {"DTMDataPictureButton", kEntry},
    {"DTMDataPictureFnButton", kEntry},
    {"DtmNavigation", {IDtmNavigation::kIid}},
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

std::vector<const CatalogueEntry*> controls() {
  std::vector<const CatalogueEntry*> list;
  for (const CatalogueEntry& entry : catalogue()) {
    if (entry.identity->isControl()) list.push_back(&entry);
  }
  return list;
}

// A value of the same kind that differs from the one given.
Variant anotherValue(const std::string& name, const Variant& value) {
  if (value.isObject()) {
    if (auto font = refCast<platform::StdFont>(value.toObject())) {
      auto changed = font->clone();
      changed->Name = "Arial";
      changed->Size = 12;
      changed->Bold = !changed->Bold;
      return Variant(changed);
    }
    return value;
  }
  switch (value.type()) {
    case VarType::Boolean:
      return Variant(!value.toBool());
    case VarType::Integer:
      return Variant(static_cast<int16_t>(value.toInt16() + 1));
    case VarType::Long:
      // A status mode must stay one that has a resource.
      return Variant(name == "IDTMStatusControl_Mode" ? 103 : value.toInt32() + 1);
    case VarType::String:
    case VarType::Empty:
      return Variant(value.toText() + "7");
    default:
      return value;
  }
}

class EveryControl : public testing::HeadlessTest,
                     public ::testing::WithParamInterface<const CatalogueEntry*> {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    control = make();
  }
  Ref<Object> make() const { return CreateObject(GetParam()->identity->progId()); }
  Dispatchable& byName(const Ref<Object>& object) const {
    return dynamic_cast<Dispatchable&>(*object);
  }
  ControlFrame& frame(const Ref<Object>& object) const {
    return dynamic_cast<ControlFrame&>(*object);
  }

  Ref<Object> control;
};

TEST_P(EveryControl, AnswersExactlyItsInterfaces) {
  const auto expected = kInterfaces.find(GetParam()->identity->name);
  ASSERT_NE(expected, kInterfaces.end()) << "no interfaces listed for this control";
  for (std::string_view iid : kAllInterfaces) {
    EXPECT_EQ(static_cast<bool>(queryInterface(control, iid)), expected->second.count(iid) > 0)
        << iid;
  }
}

// The navigation alone has no IDtmControl: it starts through IDtmNavigation_Init.
void start(const Ref<Object>& control, const std::shared_ptr<host::ReferenceHost>& host) {
  if (auto frame = queryInterface<IDtmControl>(control)) {
    frame->IDTMControl_Init(host);
  } else {
    queryInterface<IDtmNavigation>(control)->IDtmNavigation_Init(host, host);
  }
}

TEST_P(EveryControl, StartsInDataModeTwoAndTakesItsHost) {
  Ref<IDtmControl> frame = queryInterface<IDtmControl>(control);
  if (!frame) GTEST_SKIP() << "no IDtmControl";
  EXPECT_EQ(frame->IDtmControl_DataMode(), 2);
  frame->IDTMControl_Init(host);
  frame->IDtmControl_DataMode(-3);
  EXPECT_EQ(frame->IDtmControl_DataMode(), -3);
}

TEST_P(EveryControl, ReadsEveryPropertyByName) {
  Dispatchable& dispatch = byName(control);
  EXPECT_THROW(dispatch.get("NoSuchMember"), VbError);
  if (queryInterface<IDtmControl>(control)) {
    EXPECT_TRUE(dispatch.hasMember("idtmcontrol_datamode"));
    EXPECT_EQ(dispatch.get("IDtmControl_DataMode"), Variant(2));
    dispatch.call("IDTMControl_Init", {Variant(Ref<Object>(host))});
  } else {
    dispatch.call("IDtmNavigation_Init", {Variant(Ref<Object>(host)), Variant(Ref<Object>(host))});
  }
  for (const Member& member : dispatch.members().all()) {
    if (member.get) {
      EXPECT_NO_THROW(member.get(dispatch)) << member.name;
    }
  }
}

// Termination destroys the tooltip window of the control and of the status child it owns,
// however often a definition, a status and Visible rebuilt them. A status icon has a window
// only while it has a text, so every control that shows one is given a status.
TEST_P(EveryControl, LeavesNoTooltipWindowBehind) {
  const headless::Tooltips& tooltips = headless::current().tooltips();
  const size_t before = tooltips.liveCount();
  {
    Ref<Object> fresh = make();
    Ref<IDtmControl> frame = queryInterface<IDtmControl>(fresh);
    start(fresh, host);
    // By name: the gauges and trends take a data item without the data control interface.
    Dispatchable& dispatch = byName(fresh);
    if (dispatch.hasMember("IDTMDataControl_DataItemDef")) {
      for (const char* item : {"<dataItem name='x' help='Help' description='Text'/>",
                               "<dataItem name='y' help='More' description='Other'/>"}) {
        dispatch.let("IDTMDataControl_DataItemDef", Variant(Ref<Object>(testing::element(item))));
      }
    }
    if (dispatch.hasMember("IDTMDataControl_SetMode")) {
      dispatch.call("IDTMDataControl_SetMode", {Variant(104), Variant("Out of range")});
    }
    if (auto status = queryInterface<IDTMStatusControl>(fresh)) {
      status->IDTMStatusControl_Mode(104);
      status->IDTMStatusControl_Text("Out of range");
    }
    if (auto range = queryInterface<IDtmDataSubscriptionControlRange>(fresh)) {
      range->IDtmDataSubscriptionControlRange_GaugeDataDef(
          testing::element("<gauge lowerRange='L' upperRange='H'/>"));
    }
    if (frame) {
      frame->IDtmControl_Visible(false);
      frame->IDtmControl_Visible(true);
    }
  }
  EXPECT_EQ(tooltips.liveCount(), before);
}

// A forwarded property marks the saved state stale under its own name once the child took the
// value; a child that refuses a value (a row beyond its list) raises, and nothing is marked.
TEST_P(EveryControl, ForwardedPropertiesMarkTheirOwnName) {
  Dispatchable& dispatch = byName(control);
  auto& window = headless::user(frame(control).window());
  window.takePropertyChanges();
  for (const Member& member : dispatch.members().all()) {
    if (!member.forwarded() || !member.get || !member.let) continue;
    const Variant value = anotherValue(member.name, member.get(dispatch));
    try {
      member.let(dispatch, value);
    } catch (const VbError& error) {
      EXPECT_EQ(error.number(), err::InvalidPropertyValue) << member.name;
      EXPECT_TRUE(window.takePropertyChanges().empty()) << member.name;
      continue;
    }
    EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{member.name});
    EXPECT_NO_THROW(member.get(dispatch)) << member.name;
  }
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

// ---- The property bag ---------------------------------------------------------------------

// The rows whose value comes back as it was saved: read and written, and restored through the
// member whose getter gives it.
std::vector<const PersistedProperty*> roundTripRows(const Dispatchable& control) {
  std::vector<const PersistedProperty*> rows;
  for (const PersistedProperty& row : control.members().persisted()) {
    if (!row.readAs.empty() && !row.writtenAs.empty() && row.restoresItsOwnMember) {
      rows.push_back(&row);
    }
  }
  return rows;
}

bool sameValue(const Variant& a, const Variant& b) { return platform::equalsDefault(a, b); }

TEST_P(EveryControl, ComesBackTheSameFromItsSavedForm) {
  Dispatchable& original = byName(control);
  for (const PersistedProperty* row : roundTripRows(original)) {
    if (row->readAs.starts_with("Sel")) continue;
    const Member* member = original.members().find(row->readAs);
    if (!member || !member->get || !member->let) continue;
    member->let(original, anotherValue(row->readAs, member->get(original)));
  }
  // Through the bag and through the form file's text.
  platform::MemoryPropertyBag bag;
  frame(control).WriteProperties(bag);
  xml::FormDocument form;
  form.controls.push_back({GetParam()->identity->progId(), "C", 0, 0, 0, 0, 0, bag});
  const xml::FormDocument loaded = xml::parseForm(xml::formText(form));
  platform::MemoryPropertyBag reread = loaded.controls.at(0).properties;

  Ref<Object> restored = make();
  frame(restored).ReadProperties(reread);
  EXPECT_EQ(host::HostForm::differences(original, byName(restored)), std::vector<std::string>{});
}

TEST_P(EveryControl, AnEmptyBagGivesTheDefaults) {
  Dispatchable& fresh = byName(control);
  platform::MemoryPropertyBag empty;
  std::vector<std::pair<std::string, Variant>> defaults;
  for (const PersistedProperty* row : roundTripRows(fresh)) {
    defaults.emplace_back(row->readAs, row->defaultValue(fresh));
  }
  frame(control).ReadProperties(empty);
  for (const auto& [name, value] : defaults) {
    // The text boxes read Text after the value, and the text is what the value reads back.
    if (name == "IDTMDataControl_Value" && fresh.hasMember("TextType")) continue;
    // The check box and the date control refuse their design default: what reads back is
    // the state that their child kept.
    const std::string_view control = GetParam()->identity->name;
    if (name == "IDTMDataControl_Value" &&
        (control == "DTMDataCheckBox" || control == "DTMDateTimeControl")) {
      continue;
    }
    const Member* member = fresh.members().find(name);
    if (!member || !member->get) continue;
    EXPECT_TRUE(sameValue(member->get(fresh), value)) << name << ": " << describe(value);
  }
}

TEST_P(EveryControl, WrongKindsInTheBagFollowTheConversionRules) {
  const Variant wrong[] = {Variant("not a number"), Variant(std::string(1 << 20, 'x')),
                           Variant::null(), Variant(1e300), Variant("Grüße 😀")};
  for (const PersistedProperty& row : byName(control).members().persisted()) {
    if (row.readAs.empty()) continue;
    const Member* member = byName(control).members().find(row.readAs);
    for (const Variant& value : wrong) {
      Ref<Object> fresh = make();
      platform::MemoryPropertyBag bag;
      bag.put(row.readAs, value);
      try {
        frame(fresh).ReadProperties(bag);
        // Taken, the value reads back in the property's own kind: a number, flag or object
        // property never keeps the text or the double it was handed.
        if (!member || !member->get) continue;
        const VarType own = member->get(byName(control)).type();
        const VarType kept = member->get(byName(fresh)).type();
        if (own == VarType::Boolean || own == VarType::Integer || own == VarType::Long ||
            own == VarType::Object) {
          EXPECT_EQ(kept, own) << row.readAs << " took " << describe(value);
        }
      } catch (const VbError& error) {
        // A setter that can't take the value raises out of ReadProperties with the rules'
        // number; nothing else may come out.
        EXPECT_TRUE(
            error.number() == err::TypeMismatch || error.number() == err::Overflow ||
            error.number() == err::InvalidUseOfNull || error.number() == err::SubscriptOutOfRange ||
            error.number() == err::ResourceNotFound || error.number() == err::ObjectRequired)
            << row.readAs << ": " << error.what();
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, EveryControl, ::testing::ValuesIn(controls()),
                         [](const auto& info) { return std::string(info.param->identity->name); });

}  // namespace
}  // namespace tessaline
