#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/text_entry.h"

namespace tessaline {

// Edits one device parameter as text on one line. A device value is shown and becomes the
// baseline; the user's edit is filtered by TextType, guarded by the edit format, checked by
// the host at each key release, compared with the baseline and marked hot (yellow, status
// 102); the container hears of it and reads the value back. Numbers use the system's decimal
// separator, and a Numbers box shows "NaN" for a value that is no number.
class DTMDataTextBox : public TextEntry {
 public:
  static std::shared_ptr<DTMDataTextBox> create();
  static void describeMembers(MemberTableBuilder<DTMDataTextBox>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataTextBox>(); }

  using TextEntry::IDtmControl_Visible;
  // Also applies the definition again, so the tooltip is rebuilt.
  void IDtmControl_Visible(bool value) override;
  using TextEntry::IDTMDataControl_Value;
  void IDTMDataControl_Value(const Variant& value) override;
  // Sets the value unless hot; always moves the baseline.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // True for a Numbers box whose value's text holds "#", "nan" or "$" (exact case).
  bool IsNotANumber(const Variant& value);
  // The system's decimal separator, up to its first NUL.
  std::string GetDecimalSeparator();

 protected:
  std::string decimalSeparator() override { return GetDecimalSeparator(); }
  std::string editPatternFor(const std::string& format) override;
  bool appendsSeparator(char formatLetter) override;
  void applyNumbersRules(int16_t& KeyAscii) override;

 private:
  DTMDataTextBox();
};

}  // namespace tessaline
