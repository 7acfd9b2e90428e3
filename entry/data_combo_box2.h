#pragma once

#include <memory>
#include <string>

#include "tessaline/entry/drop_down_list.h"

namespace tessaline {

// The combo box that also shows a device value without an entry: a label over the combo's
// text area shows the row's text, or the value followed by " [Undefined]". The drop-down arrow
// stays uncovered, and a click on the label opens the list.
class DTMDataComboBox2 : public DropDownList {
 public:
  static std::shared_ptr<DTMDataComboBox2> create();
  static void describeMembers(MemberTableBuilder<DTMDataComboBox2>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataComboBox2>(); }
  ~DTMDataComboBox2() override;

  using DropDownList::IDtmControl_Enable;
  void IDtmControl_Enable(bool value) override;
  using DropDownList::IDtmControl_Visible;
  void IDtmControl_Visible(bool value) override;

  int32_t TabIndex() { return Combo1().TabIndex(); }
  // Combo1 n, Label1 n + 1, the status child n + 2, Frame1 n + 3, TooltipLabel n + 4.
  void TabIndex(int32_t value);

  platform::Frame& Frame1() { return *Frame1_; }
  platform::Label& Label1() { return *Label1_; }

 protected:
  void SetComboValue() override;
  void Combo1_Click() override;
  void CreateTooltip() override;
  void paintList(platform::Color color) override;

 private:
  DTMDataComboBox2();

  void Label1_Click();
  void Combo1_GotFocus();
  void Combo1_LostFocus();
  void UserControl_Resize();

  std::unique_ptr<platform::Frame> Frame1_;
  platform::Label* Label1_ = nullptr;
};

}  // namespace tessaline
