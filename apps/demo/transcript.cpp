#include "apps/demo/transcript.h"

#include <cstdio>

namespace tessaline::demo {

std::string colorName(int32_t color) {
  char hex[16];
  std::snprintf(hex, sizeof hex, "&H%08X", static_cast<unsigned>(color));
  std::string name = hex;
  switch (color) {
    case platform::colors::kWindow:
      return name + " (window)";
    case platform::colors::kYellow:
      return name + " (yellow)";
    case platform::colors::kHighlight:
      return name + " (highlight)";
    default:
      return name;
  }
}

void Transcript::title(const std::string& text) { out_ << "\n== " << text << " ==\n"; }

void Transcript::host(const std::string& action) { out_ << "  host   " << action << "\n"; }

void Transcript::user(const std::string& action) { out_ << "  user   " << action << "\n"; }

void Transcript::note(const std::string& text) { out_ << "         " << text << "\n"; }

void Transcript::call(const host::HostCall& call) { out_ << "    -> " << call.text() << "\n"; }

void Transcript::shows(TextEntry& box) {
  DTMStatusControl& status = box.DTMStatusControl1();
  out_ << "  shows  text \"" << box.Text1().Text() << "\" | hot "
       << (box.IDTMDataControl_Hot() ? "True" : "False") << " | background "
       << colorName(box.Text1().BackColor()) << " | status " << status.IDTMStatusControl_Mode();
  if (!status.IDTMStatusControl_Text().empty()) {
    out_ << " \"" << status.IDTMStatusControl_Text() << "\"";
  }
  out_ << "\n";
}

void Transcript::shows(EnumeratedList& list) {
  platform::ListWidget& rows = list.listChild();
  out_ << "  shows  " << rows.Name() << " row " << rows.ListIndex() << " \"" << rows.Text()
       << "\" of " << rows.ListCount() << " | hot "
       << (list.IDTMDataControl_Hot() ? "True" : "False") << " | background "
       << colorName(rows.BackColor()) << " | status "
       << list.DTMStatusControl1().IDTMStatusControl_Mode() << "\n";
}

void Transcript::shows(DTMDataComboBox2& combo) {
  shows(static_cast<EnumeratedList&>(combo));
  out_ << "         Label1 \"" << combo.Label1().Caption() << "\" on "
       << colorName(combo.Label1().BackColor()) << "\n";
}

void Transcript::shows(EnumLabel& label) {
  out_ << "  shows  " << label.window().ClassName() << " \"" << label.Label1().Caption() << "\" ("
       << label.window().Width() << " x " << label.window().Height() << " twips)\n";
}

void Transcript::listen(host::ReferenceHost& reference) {
  reference.onCall = [this](const host::HostCall& c) { call(c); };
}

}  // namespace tessaline::demo
