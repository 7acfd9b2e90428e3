#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/drop_down_list.h"

namespace tessaline {

// Lets the user pick one value of an enumerated parameter from a drop-down list. A device value
// without an entry leaves the row as it was.
class DTMDataComboBox : public DropDownList {
 public:
  static std::shared_ptr<DTMDataComboBox> create();
  static void describeMembers(MemberTableBuilder<DTMDataComboBox>& table) {
    addDropDownListMembers(table);
  }
  const MemberTable& members() const override { return memberTableOf<DTMDataComboBox>(); }

  using DropDownList::IDtmControl_Visible;
  void IDtmControl_Visible(bool value) override;

 private:
  DTMDataComboBox();
};

}  // namespace tessaline
