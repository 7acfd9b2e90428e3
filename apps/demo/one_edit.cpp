#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/values/locale.h"

namespace tessaline::demo {

namespace {

constexpr const char* kFlowRate =
    R"(<dataItem name="FlowRate" type="float" formatString="5.2f" access="ReadWrite" )"
    R"(defaultValue="0" label="FlowRate_label" unit="l/min" source="device" )"
    R"(description="FlowRate_description" help="FlowRate_help"/>)";

// The host's check at each key release: a number from 0 to 100.
bool validateFlowRate(const std::string&, const Variant& value, std::string& errorText) {
  const ParsedNumber number = parseNumber(value.toText(), FixedLocale("."));
  if (number.outcome != ParseOutcome::Number) {
    errorText = "Not a number";
    return false;
  }
  if (number.value < 0 || number.value > 100) {
    errorText = "Allowed range is 0 to 100";
    return false;
  }
  return true;
}

void typeKeys(Transcript& t, DTMDataTextBox& box, const std::string& keys) {
  headless::TextBox& text = headless::user(box.Text1());
  for (char key : keys) {
    t.user(std::string("types '") + key + "'");
    text.type(std::string(1, key));
    t.shows(box);
  }
}

}  // namespace

void playOneEdit(Transcript& t) {
  headless::install(".");
  regexp::install();
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"FlowRate_help", "Volume flow at the outlet in l/min, 0 to 100"}};
  host->validate = validateFlowRate;
  host->device.define("FlowRate", 12.5);
  t.listen(*host);

  t.title("One edit, step by step");
  t.host("creates a DTMDataTextBox, calls IDTMControl_Init and names it FlowRate");
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  box->IDtmControl_Name("FlowRate");
  box->TextType(TextDataType::Numbers);
  t.host("sets IDtmControl_DtmContainer and hands over the dataItem");
  t.note(kFlowRate);
  box->IDtmControl_DtmContainer(host);
  box->IDTMDataControl_DataItemDef(xml::parseElement(kFlowRate));

  t.host("reads FlowRate from the device and calls IDTMDataControl_SetDeviceValue(12.5)");
  box->IDTMDataControl_SetDeviceValue(host->device.read("FlowRate"));
  t.shows(*box);

  t.user("clicks into the box and selects all of its text");
  headless::TextBox& text = headless::user(box->Text1());
  text.click();
  text.select(0, static_cast<int32_t>(text.Text().size()));
  typeKeys(t, *box, "13.75");

  t.host("reads the control: IDTMDataControl_Value = " + describe(box->IDTMDataControl_Value()) +
         ", IDTMDataControl_Hot = " + (box->IDTMDataControl_Hot() ? "True" : "False"));
  t.host("writes 13.75 to the device and sets IDTMDataControl_Hot false");
  host->device.write("FlowRate", box->IDTMDataControl_Value());
  box->IDTMDataControl_Hot(false);
  t.shows(*box);

  t.user("selects all and types a value that the host refuses");
  text.select(0, static_cast<int32_t>(text.Text().size()));
  typeKeys(t, *box, "150");
  t.user("presses backspace");
  text.backspace();
  t.shows(*box);

  t.host("the device reports 15 during the edit: IDTMDataControl_SetDeviceValue(15)");
  box->IDTMDataControl_SetDeviceValue(Variant(15));
  t.shows(*box);
  t.note("the shown text stays; only the baseline moved to \"" + box->BaselineText() + "\"");
  t.user("presses backspace and types '5' again: the text equals the new baseline");
  text.backspace();
  t.shows(*box);
  typeKeys(t, *box, "5");

  t.host("shows a status of its own: IDTMDataControl_SetMode(101, \"\")");
  box->IDTMDataControl_SetMode(101, "");
  t.shows(*box);
  t.host("and with a text: IDTMDataControl_SetMode(103, \"Device did not accept the value\")");
  box->IDTMDataControl_SetMode(103, "Device did not accept the value");
  t.shows(*box);

  for (const VbError& error : headless::current().takeUnhandledErrors()) {
    t.note(std::string("unhandled: ") + error.what());
  }
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
