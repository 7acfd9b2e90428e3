#pragma once

#include <map>
#include <string>
#include <vector>

#include "tessaline/platform/xml.h"
#include "tessaline/platform/xml/form_file.h"

// A device package: what tessaline-studio needs to run a device's dialogs. A folder with
// device.xml and the form files it names:
//
//   <device name="P-101 feed pump">
//     <texts><text key="Flow_label">Flow</text></texts>
//     <parameters>
//       <parameter name="Flow" value="42.5" behaviour="static">
//         <dataItem name="Flow" type="float" formatString="5.2f" label="Flow_label" .../>
//         <enumeration>...</enumeration>          (optional)
//         <validators>...</validators>             (optional)
//       </parameter>
//       <parameter name="PT1" value="7.4" behaviour="process" low="0" high="16" noise="0.2"
//                  period="600"/>                  (a value that moves)
//       <parameter name="Health" value="0" behaviour="status" period="20"/>
//     </parameters>
//     <gauges><gauge name="PT1_gauge" lowerRange="PT1_Low" ...>...</gauge></gauges>
//     <charts>                                      (definitions of the host-fed charts)
//       <trend name="FT1_trend" title="Flow_title" unit="m3/h" lowerRange=... isLegend="true">
//         <trendSource itemName="FT1" .../> <rangeSource itemNameHi=... itemNameLow=.../> ...
//       </trend>
//       <wave name="VT1_wave" title="..." xLabel="ms" yLabel="mm/s" points="2000" span="200"
//             lowerRange="" upperRange="" lineColor="1F4E9A" isLegend="false"/>
//     </charts>
//     <navigation>                                  (optional: the menu on the left)
//       <menuGroup label="Nav_Device" name="Device" treename="device" icon="device.png">
//         <menuItem label="Nav_Settings" name="Settings" action="forms/settings.xml"/>
//       </menuGroup>
//     </navigation>
//     <functions>                                   (optional: how the host answers launches)
//       <function id="7002" form="Settings"/>      (opens the form of that name)
//       <function module="Pump" name="Report" message="Seal_report"/>   (shows a message)
//     </functions>
//     <forms>
//       <form file="forms/settings.xml" title="Settings" name="Settings">
//         <bind control="Flow" parameter="Flow"/>
//         <bind control="Pressure" parameter="PT1" gauge="PT1_gauge"/>
//       </form>
//     </forms>
//   </device>
//
// A form file is a saved form (platform/xml/form_file.h): each control's ProgID, place and
// property bag. A bind gives a control of the form its parameter: the parameter's dataItem and
// enumeration, its device value, and for a gauge the gauge node, whose items are read from the
// device's parameters of the same names.
namespace tessaline::studio {

struct Parameter {
  std::string name;
  Ref<platform::XmlNode> dataItem;
  Ref<platform::XmlNode> enumeration;
  Ref<platform::XmlNode> validators;
  Variant initial;
  // "static": the value stays until written; "process": it moves between low and high with a
  // slow swing over `period` seconds and noise; "status": it cycles through the status modes.
  std::string behaviour = "static";
  double low = 0, high = 100, noise = 0, period = 600;
};

struct Binding {
  std::string control;
  std::string parameter;
  std::string gauge;
  // The definition of a multi-trend or a wave form, by name.
  std::string chart;
};

struct FormEntry {
  std::string title;
  // What a navigation entry or a function names the form by; the title when not given.
  std::string name;
  std::string file;
  bool loaded = false;
  // Why the form can't be shown, when it isn't loaded.
  std::string failure;
  xml::FormDocument document;
  std::vector<Binding> bindings;
};

struct DevicePackage {
  std::string name;
  std::string directory;
  std::map<std::string, std::string> texts;
  std::vector<Parameter> parameters;
  std::map<std::string, Ref<platform::XmlNode>> gauges;
  std::map<std::string, Ref<platform::XmlNode>> charts;
  std::vector<FormEntry> forms;
  // The menu for a navigation control, or Nothing.
  Ref<platform::XmlNode> navigation;
  // How the host answers a launch, by function id ("7002") or by module and function
  // ("Pump.Report"): the name of a form to open, or the key of a message to show.
  struct Answer {
    std::string form;
    std::string message;
  };
  std::map<std::string, Answer> functions;
  // The document that the parameters' nodes belong to.
  Ref<platform::XmlNode> document;

  const Parameter* parameter(const std::string& name) const;
};

// Reads a package. What can't be read (a missing or broken file, a form that names no file or
// one outside the package's folder, a parameter without a name) is told in `problems`, one line
// each naming the form and the cause, and left out; the rest loads. A form file with a control
// or a property that can't be read loads without it, and each is told with its line.
DevicePackage loadPackage(const std::string& directory, std::vector<std::string>& problems);

}  // namespace tessaline::studio
