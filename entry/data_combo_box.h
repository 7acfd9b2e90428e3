#pragma once

#include <memory>
#include <string>

#include "entry/enumerated_list.h"

namespace tessaline {

// Lets the user pick one value of an enumerated parameter from a drop-down list. Entries whose
// includeIf the host answers false take no row. A device value selects the row of its code;
// a pick compares with the device's value and marks the control hot.
class DTMDataComboBox : public EnumeratedList {
 public:
  static std::shared_ptr<DTMDataComboBox> create();

  // A control new on its form: the defaults once more, the shown text as value, and the
  // drop-down rows coloured by the device's row.
  void InitProperties();

  using EnumeratedList::IDtmControl_Visible;
  void IDtmControl_Visible(bool value) override;
  using EnumeratedList::IDTMDataControl_Hot;
  // Clean: status 0. Changed: yellow and 102, whatever the status showed.
  void IDTMDataControl_Hot(bool value) override;
  using EnumeratedList::IDTMDataControl_Value;
  void IDTMDataControl_Value(const Variant& value) override;
  // The value, then the hot flag set directly, without colours or status.
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  // Ignored while hot; else baseline, value and a clean mark.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  bool Locked();
  void Locked(bool value);

  platform::ComboBox& Combo1() { return static_cast<platform::ComboBox&>(*list_); }

 protected:
  DTMDataComboBox(const std::string& className, const std::string& loggerName);

  const MemberTable& members() const override;
  virtual void SetComboValue();
  virtual void Combo1_Click();
  void CreateTooltip() override;
};

}  // namespace tessaline
