#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/enumerated_list.h"

namespace tessaline {

// The combo box with an open list. It reads no includeIf (a child without name or code
// leaves an empty row at the end), shows status 100 when clean, takes its tooltip from the
// item's description, marks a pick only once a device value has come, and lets its failures
// in selecting a row and in a user value go to the caller.
class DTMListControl : public EnumeratedList {
 public:
  static std::shared_ptr<DTMListControl> create();
  static void describeMembers(MemberTableBuilder<DTMListControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMListControl>(); }

  using EnumeratedList::IDtmControl_Visible;
  // TooltipLabel stays as it is.
  void IDtmControl_Visible(bool value) override;
  using EnumeratedList::IDTMDataControl_Hot;
  void IDTMDataControl_Hot(bool value) override;
  using EnumeratedList::IDTMDataControl_Value;
  // The previous value takes the value held until now.
  void IDTMDataControl_Value(const Variant& value) override;
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // Reads false; writing only announces the change.
  bool Locked() { return false; }
  void Locked(bool);

  platform::ListBox& List1() { return static_cast<platform::ListBox&>(*list_); }
  bool deviceValueReceived() const { return deviceValueReceived_; }

 protected:
  void CreateTooltip() override;

 private:
  DTMListControl();

  void SetComboValue();
  void List1_Click();
};

}  // namespace tessaline
