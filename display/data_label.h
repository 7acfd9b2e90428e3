#pragma once

#include <memory>

#include "tessaline/display/enum_label.h"

namespace tessaline {

// Shows an enumerated device value as read-only text: the display text of the entry whose code
// equals the value, or "Unknown Units" for a value that no entry knows. An empty value without
// an entry leaves the caption as it was: the label never goes blank by itself.
class DTMDataLabel : public EnumLabel {
 public:
  static std::shared_ptr<DTMDataLabel> create();
  static void describeMembers(MemberTableBuilder<DTMDataLabel>& table) {
    addEnumLabelMembers(table);
  }
  const MemberTable& members() const override { return memberTableOf<DTMDataLabel>(); }

  // The host comes from IDTMControl_Init alone.
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  // Takes every value, hot or not.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

 protected:
  void UpdateCaption() override;

 private:
  DTMDataLabel();

  void UserControl_Resize();
};

}  // namespace tessaline
