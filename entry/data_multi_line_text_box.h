#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/text_entry.h"

namespace tessaline {

// DTMDataTextBox for texts of several lines. It differs in four things: the edit child takes
// several lines, the decimal separator is always ".", the patterns are its own, and leaving an
// empty Numbers box is refused with a message and the previous value put back. It has no
// "NaN" handling and doesn't ask the system for its separator.
class DTMDataMultiLnTextBox : public TextEntry {
 public:
  static std::shared_ptr<DTMDataMultiLnTextBox> create();
  static void describeMembers(MemberTableBuilder<DTMDataMultiLnTextBox>& table) {
    addTextEntryMembers(table);
  }
  const MemberTable& members() const override { return memberTableOf<DTMDataMultiLnTextBox>(); }

  using TextEntry::IDtmControl_Visible;
  // Doesn't apply the definition again.
  void IDtmControl_Visible(bool value) override;
  using TextEntry::IDTMDataControl_Value;
  // Takes the value as it is.
  void IDTMDataControl_Value(const Variant& value) override;
  // Hot: moves the baseline. Not hot: sets the value and leaves the baseline alone.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

 protected:
  std::string decimalSeparator() override { return "."; }
  std::string editPatternFor(const std::string& format) override;
  bool appendsSeparator(char) override { return true; }
  void applyNumbersRules(int16_t& KeyAscii) override;

 private:
  DTMDataMultiLnTextBox();

  void Text1_LostFocus();
};

}  // namespace tessaline
