#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/host/form.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::demo {

namespace {

constexpr const char* kModes =
    R"(<enumeration><entry name="Off" code="0" label="Mode_Off"/>)"
    R"(<entry name="Auto" code="1" label="Mode_Auto"/>)"
    R"(<entry name="Service" code="2" label="Mode_Service" includeIf=" UserRole == 'Service' "/>)"
    R"(</enumeration>)";

constexpr const char* kUnits =
    R"(<enumeration><entry name="litre per minute" code="1349" label="l/min"/>)"
    R"(<entry name="cubic metre per hour" code="1347" label="m3/h"/></enumeration>)";

constexpr const char* kAlarms =
    R"(<enumeration><entry name="Sensor" code="1" label="Alarm_Sensor"/>)"
    R"(<entry name="Overrange" code="2" label="Alarm_Range"/>)"
    R"(<entry name="Supply" code="4" label="Alarm_Supply"/></enumeration>)";

}  // namespace

void playDialog(Transcript& t, const std::filesystem::path& out) {
  headless::install(".");
  regexp::install();
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"Mode_Off", "Off"},           {"Mode_Auto", "Automatic"},
                        {"Mode_Service", "Service"},   {"Alarm_Sensor", "sensor"},
                        {"Alarm_Range", "over range"}, {"Alarm_Supply", "supply"},
                        {"Alarms_Lead", "Alarms: "}};
  host->evaluate = [](const std::string& expression) {
    return expression != "UserRole == 'Service'";
  };
  host->device.define("Setpoint", Variant(42.5));
  host->device.define("Mode", Variant(int16_t{1}));
  host->device.define("Valve", Variant(int16_t{7}));
  host->device.define("Unit", Variant(int32_t{1349}));
  host->device.define("Alarms", Variant(int32_t{5}));

  t.title("A small dialog");
  t.host("creates a text box, two combo boxes, a data label and a launch label");
  auto setpoint = DTMDataTextBox::create();
  auto mode = DTMDataComboBox::create();
  auto valve = DTMDataComboBox2::create();
  auto unit = DTMDataLabel::create();
  auto alarms = DTMDataLaunchLabel::create();
  mode->InitProperties();
  valve->InitProperties();
  setpoint->IDTMControl_Init(host);
  mode->IDTMControl_Init(host);
  valve->IDTMControl_Init(host);
  unit->IDTMControl_Init(host);
  alarms->IDTMControl_Init(host);
  for (auto* control :
       std::initializer_list<DataControl*>{setpoint.get(), mode.get(), valve.get()}) {
    control->IDtmControl_DtmContainer(host);
  }
  setpoint->IDtmControl_Name("Setpoint");
  mode->IDtmControl_Name("Mode");
  valve->IDtmControl_Name("Valve");

  t.host("hands over the enumerations; the listener shows each call the controls make");
  t.listen(*host);
  mode->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
  valve->IDTMEnumeration_EnumDataDef(xml::parseElement(kModes));
  unit->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
  alarms->IDTMEnumeration_EnumDataDef(xml::parseElement(kAlarms));
  alarms->IDtmControl_DefaultText("Alarms_Lead");
  alarms->IDtmControl_LaunchType(0);
  alarms->IDTMControl_FunctionID(7001);
  host->onCall = nullptr;
  t.note("the Service entry's condition was false: Mode offers " +
         std::to_string(mode->Combo1().ListCount()) + " rows");

  t.host("reads the device and pushes each value");
  setpoint->IDTMDataControl_SetDeviceValue(host->device.read("Setpoint"));
  mode->IDTMDataControl_SetDeviceValue(host->device.read("Mode"));
  valve->IDTMDataControl_SetDeviceValue(host->device.read("Valve"));
  unit->IDTMDataControl_SetDeviceValue(host->device.read("Unit"));
  alarms->IDTMDataControl_SetDeviceValue(host->device.read("Alarms"));
  t.shows(*setpoint);
  t.shows(*mode);
  t.shows(*valve);
  t.note("the valve's value 7 has no entry: the label says so, the list keeps no row");
  t.shows(*unit);
  t.shows(*alarms);

  t.listen(*host);
  t.user("opens Mode and picks Off");
  headless::user(mode->Combo1()).pick(0);
  t.shows(*mode);
  const auto rows = headless::user(mode->Combo1()).paintedRows();
  std::string colours;
  for (const auto& row : rows)
    colours +=
        row ? (row->background == platform::colors::kWhite ? " white" : " yellow") : " plain";
  t.note("the drop-down rows are painted" + colours + ": white marks the device's row");

  t.user("clicks the valve's label: the list opens, then picks Automatic");
  headless::user(valve->Label1()).click();
  headless::user(valve->Combo1()).pick(1);
  t.shows(*valve);

  t.host("the unit becomes m3/h and a code the table lacks");
  unit->IDTMDataControl_SetDeviceValue(Variant(1347));
  t.shows(*unit);
  unit->IDTMDataControl_SetDeviceValue(Variant(9999));
  t.shows(*unit);

  t.user("clicks the alarm label, which launches function 7001");
  headless::user(alarms->Label1()).click();

  host->onCall = nullptr;
  t.host("saves the form, loads it into fresh controls and compares what they give");
  host::HostForm form;
  form.name = "Pump";
  form.width = 7200;
  form.height = 2400;
  int32_t top = 120;
  for (auto [name, control] :
       std::initializer_list<std::pair<const char*, Ref<ControlFrame>>>{{"Setpoint", setpoint},
                                                                        {"Mode", mode},
                                                                        {"Valve", valve},
                                                                        {"Unit", unit},
                                                                        {"Alarms", alarms}}) {
    control->window().Left(120);
    control->window().Top(top);
    top += 420;
    form.adopt(name, control);
  }
  const std::filesystem::path file = out / "dialog-form.xml";
  xml::saveForm(file.string(), form.save());
  t.note("wrote " + file.string());
  std::vector<std::string> problems;
  const host::HostForm loaded = host::HostForm::load(xml::loadForm(file.string()), problems);
  for (const std::string& problem : problems) t.note("problem: " + problem);
  for (const host::PlacedControl& placed : loaded.controls()) {
    ControlFrame& original = *form.find(placed.name);
    const std::vector<std::string> differences =
        host::HostForm::differences(original, *placed.control);
    t.note(placed.name + " (" + placed.control->window().ClassName() + ") at " +
           std::to_string(placed.control->window().Left()) + ", " +
           std::to_string(placed.control->window().Top()) + ": value \"" +
           placed.control->get("IDTMDataControl_Value").toText() + "\", " +
           std::to_string(original.members().persisted().size()) + " properties, " +
           (differences.empty() ? "all the same" : std::to_string(differences.size()) + " differ"));
    for (const std::string& difference : differences) t.note("  " + difference);
  }

  for (const VbError& error : headless::current().takeUnhandledErrors()) {
    t.note(std::string("unhandled: ") + error.what());
  }
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
