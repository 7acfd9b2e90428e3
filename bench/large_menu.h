#pragma once

#include <string>

#include "tessaline/platform/xml.h"
#include "tessaline/platform/xml/pugi_dom.h"

// A large menu for the navigation's benchmarks: 5,000 entries in 20 groups, each group 25
// folders of 9 items, every entry with a condition for the host.
namespace tessaline {

constexpr int kGroups = 20;
constexpr int kFoldersPerGroup = 25;
constexpr int kItemsPerFolder = 9;  // 20 x 25 x (1 + 9) = 5,000 entries

inline Ref<platform::XmlNode> largeMenu() {
  std::string xml = "<navigation>";
  for (int g = 0; g < kGroups; ++g) {
    const std::string group = "G" + std::to_string(g);
    xml += "<menuGroup label='" + group + "_L' name='" + group + "' treename='t' icon='" + group +
           ".png'>";
    for (int f = 0; f < kFoldersPerGroup; ++f) {
      const std::string folder = group + "F" + std::to_string(f);
      xml += "<folder label='" + folder + "_L' name='" + folder +
             "' includeIf=' rev >= " + std::to_string(f) + " '>";
      for (int i = 0; i < kItemsPerFolder; ++i) {
        const std::string item = folder + "I" + std::to_string(i);
        xml += "<menuItem label='" + item + "_L' name='" + item + "' action='dlg" + item +
               "' includeIf='mode == " + std::to_string(i) + "'/>";
      }
      xml += "</folder>";
    }
    xml += "</menuGroup>";
  }
  return xml::parseElement(xml + "</navigation>");
}

}  // namespace tessaline
