#pragma once

#include <ostream>
#include <string>

#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/host/reference_host.h"

// Writes what happens in a scene for people to read: what the host and the user do, each
// call that reaches the host, and what the user sees afterwards.
namespace tessaline::demo {

class Transcript {
 public:
  explicit Transcript(std::ostream& out) : out_(out) {}

  void title(const std::string& text);
  void host(const std::string& action);
  void user(const std::string& action);
  void note(const std::string& text);
  // A call that a control made on the host.
  void call(const host::HostCall& call);
  // What a control shows now.
  void shows(TextEntry& box);
  void shows(EnumeratedList& list);
  void shows(DTMDataComboBox2& combo);
  void shows(EnumLabel& label);

  // Lets the host report each of its calls here.
  void listen(host::ReferenceHost& reference);

 private:
  std::ostream& out_;
};

// A colour as people read it: "&H0000FFFF (yellow)".
std::string colorName(int32_t color);

}  // namespace tessaline::demo
