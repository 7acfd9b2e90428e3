#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/entry/data_check_box.h"
#include "tessaline/entry/date_time_control.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::demo {

namespace {

constexpr const char* kAutoRestart =
    R"(<dataItem name="AutoRestart" type="int16" access="ReadWrite" label="AutoRestart_label" )"
    R"(help="AutoRestart_help"/>)";
constexpr const char* kServiceDue =
    R"(<dataItem name="ServiceDue" type="date" formatString="yyyy-MM-dd HH:mm" )"
    R"(access="ReadWrite" label="ServiceDue_label" help="ServiceDue_help"/>)";

void showCheckBox(Transcript& t, DTMDataCheckBox& box) {
  t.note("check box: caption \"" + box.Check1().Caption() + "\", state " +
         std::to_string(box.Check1().Value()) + ", background " +
         colorName(box.Check1().BackColor()) + ", hot " +
         (box.IDTMDataControl_Hot() ? "True" : "False") + ", status " +
         std::to_string(box.DTMStatusControl1().IDTMStatusControl_Mode()));
}

void showPicker(Transcript& t, DTMDateTimeControl& control) {
  t.note("picker: shows \"" + control.DTPicker().Text() + "\", calendar " +
         colorName(control.DTPicker().CalendarBackColor()) + ", hot " +
         (control.IDTMDataControl_Hot() ? "True" : "False") + ", status " +
         std::to_string(control.DTMStatusControl1().IDTMStatusControl_Mode()));
}

}  // namespace

void playCheckAndDate(Transcript& t) {
  headless::install(".");
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"AutoRestart_label", "Restart after a power failure"},
                        {"ServiceDue_help", "The day and hour of the next service visit"}};
  t.listen(*host);

  t.title("A check box and a date");
  t.host("creates a DTMDataCheckBox for AutoRestart and hands over its dataItem");
  auto box = DTMDataCheckBox::create();
  box->InitProperties();
  box->IDTMControl_Init(host);
  box->IDtmControl_DtmContainer(host);
  box->IDTMDataControl_DataItemDef(xml::parseElement(kAutoRestart));
  t.host("IDTMDataControl_SetDeviceValue(\"0\")");
  box->IDTMDataControl_SetDeviceValue(Variant("0"));
  showCheckBox(t, *box);
  t.user("clicks the box");
  headless::user(box->Check1()).click();
  showCheckBox(t, *box);
  t.host("reads IDTMDataControl_Value = " + describe(box->IDTMDataControl_Value()) +
         " and sets IDTMDataControl_Hot false");
  box->IDTMDataControl_Hot(false);
  showCheckBox(t, *box);
  t.host("IDTMDataControl_SetDeviceValue(True): no check state, the box stays as it is");
  box->IDTMDataControl_SetDeviceValue(Variant(true));
  showCheckBox(t, *box);

  t.host("creates a DTMDateTimeControl for ServiceDue and hands over its dataItem");
  auto date = DTMDateTimeControl::create();
  date->InitProperties();
  date->IDTMControl_Init(host);
  date->IDtmControl_DtmContainer(host);
  date->IDTMDataControl_DataItemDef(xml::parseElement(kServiceDue));
  t.host("IDTMDataControl_SetDeviceValue(\"3/1/2027 8:00 AM\"), then IDTMDataControl_Hot false");
  date->IDTMDataControl_SetDeviceValue(Variant("3/1/2027 8:00 AM"));
  date->IDTMDataControl_Hot(false);
  showPicker(t, *date);
  t.user("picks 15 March 2027 from the calendar");
  headless::user(date->DTPicker()).pickFromCalendar(2027, 3, 15);
  showPicker(t, *date);
  t.user("types 14 into the hour field");
  headless::user(date->DTPicker()).typeField(headless::DateField::Hour, 14);
  showPicker(t, *date);
  t.host("reads IDTMDataControl_Value = " + describe(date->IDTMDataControl_Value()));
  t.host("IDTMDataControl_SetDeviceValue(\"not a date\") while hot: dropped");
  date->IDTMDataControl_SetDeviceValue(Variant("not a date"));
  showPicker(t, *date);

  for (const VbError& error : headless::current().takeUnhandledErrors()) {
    t.note(std::string("unhandled: ") + error.what());
  }
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
