#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/enumerated_list.h"

namespace tessaline {

// What the two combo boxes share: entries whose includeIf the host answers false take no row,
// a device value selects the row of its code, a pick compares with the device's value and marks
// the control hot, and the drop-down rows are coloured by the device's row. How a value without
// an entry shows, and what the children around Combo1 do, each combo box states itself.
class DropDownList : public EnumeratedList {
 public:
  // The defaults once more, the shown text as value, and the drop-down rows coloured by the
  // device's row. Restoring from stored properties doesn't attach the row painter.
  void InitProperties() override;

  using EnumeratedList::IDTMDataControl_Hot;
  // Clean: status 0. Changed: yellow and 102, whatever the status showed.
  void IDTMDataControl_Hot(bool value) override;
  using EnumeratedList::IDTMDataControl_Value;
  void IDTMDataControl_Value(const Variant& value) override;
  // The value, then the hot flag set directly, without colours or status.
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  // Ignored while hot; else baseline, value and a clean mark.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  platform::ComboBox& Combo1() { return static_cast<platform::ComboBox&>(*list_); }

 protected:
  DropDownList(const std::string& className, const std::string& loggerName);

  template <class Self>
  static void addDropDownListMembers(MemberTableBuilder<Self>& table) {
    addEnumeratedListMembers(
        table, "Combo1", Persisted("IDTMDataControl_Value").withDefault("Combo1"),
        "IDTMDataControl_PreviousValue",
        Persisted("ToolTipText").restoredBy(&EnumeratedList::restoreToolTipText));
  }

  virtual void SetComboValue();
  virtual void Combo1_Click();
  void CreateTooltip() override;
};

}  // namespace tessaline
