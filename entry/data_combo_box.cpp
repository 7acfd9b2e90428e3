#include "tessaline/entry/data_combo_box.h"

namespace tessaline {

std::shared_ptr<DTMDataComboBox> DTMDataComboBox::create() {
  return std::shared_ptr<DTMDataComboBox>(new DTMDataComboBox());
}

DTMDataComboBox::DTMDataComboBox() : DropDownList("DTMDataComboBox", "DTMDataComboBox") {}

void DTMDataComboBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  list_->Visible(value);
  DTMStatusControl1().window().Visible(value);
  TooltipLabel_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

}  // namespace tessaline
