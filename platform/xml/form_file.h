#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tessaline/platform/property_bag.h"

// A host's form saved as a readable XML file: the form's size, and for each control its class,
// its name, its place on the form and its property bag. Every value keeps its kind. A file that
// can't be read raises 53 (missing) or 31037 with what is wrong and on which line; a save that
// fails raises 75 and leaves the file that was there before as it was.
//
//   <form name="Pump" width="7200" height="4800">
//     <control progId="Tessaline.DTMDataTextBox" name="Pressure" left="120" top="120"
//              width="3480" height="360" tabIndex="0">
//       <property name="IDTMDataControl_Value" type="String" value="12.5"/>
//       <property name="IDtmControl_Enable" type="Boolean" value="False"/>
//       <property name="Font" type="Font" fontName="Arial" size="9.75" bold="True"/>
//     </control>
//   </form>
//
// Types: Empty, Null, Integer, Long, Byte, Single, Double, Boolean ("True"/"False"), Date
// ("1970-01-02 06:30:00", or its serial number where seconds don't describe it exactly),
// String, Font, Picture (the image file's bytes in base64), Nothing, and Array (with a
// lowerBound and <item> children of the same form). A String holding control characters or
// bytes that are no UTF-8 is written in base64, with encoding="base64".
namespace tessaline::xml {

struct FormControl {
  std::string progId;
  std::string name;
  // Twips on the form.
  int32_t left = 0;
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;
  int32_t tabIndex = 0;
  platform::MemoryPropertyBag properties;
};

struct FormDocument {
  std::string name;
  int32_t width = 0;
  int32_t height = 0;
  std::vector<FormControl> controls;
};

FormDocument parseForm(std::string_view text);
// A lenient reading for a host that shows what it can: a control whose class or place can't be
// read, and a property whose name or value can't be, is left out and told in `skipped` with its
// line ("line 7: Setpoint, property Value is left out: "notanumber" is no Double"); the rest of
// the form loads. A file that is no form at all raises as above.
FormDocument parseForm(std::string_view text, std::vector<std::string>& skipped);
std::string formText(const FormDocument& form);

FormDocument loadForm(const std::string& path);
FormDocument loadForm(const std::string& path, std::vector<std::string>& skipped);
// Writes a temporary file beside the target and renames it over the target once complete.
void saveForm(const std::string& path, const FormDocument& form);

}  // namespace tessaline::xml
