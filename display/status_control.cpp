#include "display/status_control.h"

namespace tessaline {

namespace {
constexpr int32_t kFirstIconMode = 101;
constexpr int32_t kLastIconMode = 106;
}  // namespace

std::shared_ptr<DTMStatusControl> DTMStatusControl::create(platform::UserControl* parent) {
  return std::shared_ptr<DTMStatusControl>(new DTMStatusControl(parent));
}

DTMStatusControl::DTMStatusControl(platform::UserControl* parent)
    : ControlFrame("DTMStatusControl", parent) {
  IDTMStatusControl_Visible(true);
  text_.clear();
  IDTMStatusControl_Stretch(false);
  IDTMStatusControl_Mode(0);
  IDtmControl_DataMode(2);
}

void DTMStatusControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMStatusControl");
}

void DTMStatusControl::IDtmControl_DataMode(int32_t value) {
  dataMode_ = value;
  PropertyChanged("IDtmControl_DataMode");
}

std::string DTMStatusControl::modeText(int32_t mode) {
  switch (mode) {
    case 101:
      return "Read Error";
    case 102:
      return "Value Changed";
    case 103:
      return "Write Error";
    case 104:
      return "InValide Value";
    case 105:
      return "DataNot Loaded";
    case 106:
      return "Dynamic Value";
    default:
      break;
  }
  throw VbError(err::ResourceNotFound,
                "Resource with identifier '" + std::to_string(mode) + "' not found");
}

void DTMStatusControl::IDTMStatusControl_Mode(int32_t value) {
  mode_ = value;
  if (value == 0) IDTMStatusControl_Text("");
  if (value > 100) IDTMStatusControl_Text(modeText(value));
  PropertyChanged("IDTMStatusControl_Mode");
}

void DTMStatusControl::IDTMStatusControl_Text(const std::string& value) {
  text_ = value.empty() ? std::string() : LocalizeText(value);
}

void DTMStatusControl::IDTMStatusControl_Visible(bool value) { visible_ = value; }

void DTMStatusControl::IDTMStatusControl_Stretch(bool value) { stretch_ = value; }

const MemberTable& DTMStatusControl::members() const {
  using Self = DTMStatusControl;
  static const MemberTable table = MemberTableBuilder<Self>()
                                       .TESSALINE_PROPERTY(std::string, IDTMStatusControl_Text)
                                       .TESSALINE_PROPERTY(int32_t, IDTMStatusControl_Mode)
                                       .TESSALINE_PROPERTY(bool, IDTMStatusControl_Visible)
                                       .TESSALINE_PROPERTY(bool, IDTMStatusControl_Stretch)
                                       .TESSALINE_PROPERTY(int32_t, IDtmControl_DataMode)
                                       .TESSALINE_PROPERTY(std::string, IDtmControl_Name)
                                       .TESSALINE_PROPERTY(bool, IDtmControl_Enable)
                                       .TESSALINE_PROPERTY(bool, IDtmControl_Visible)
                                       .build();
  return table;
}

}  // namespace tessaline
