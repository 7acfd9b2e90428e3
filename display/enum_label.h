#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/data_control.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// What the two data labels share: a read-only caption chosen by the value from an
// enumeration, no hot mark, no status child, a child that stays enabled whatever Enable says,
// and a tooltip with the item's description. How the value becomes a caption, what a device
// value does and what a click does, each label states itself.
class EnumLabel : public virtual IDTMEnumeration,
                  public virtual IDTMEnumeration1,
                  public DataControl {
 public:
  ~EnumLabel() override;

  // IDtmControl. The container is ignored: a label never reports to one.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  // Reads Label1.Enabled and keeps it.
  bool IDtmControl_Enable() override;
  // Keeps the flag and leaves Label1 enabled whatever the flag says.
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // IDTMDataControl: no mark, no user value, no validity.
  bool IDTMDataControl_Hot() override { return false; }
  void IDTMDataControl_Hot(bool) override {}
  int32_t IDTMDataControl_Access() override { return access_; }
  void IDTMDataControl_Access(int32_t value) override;
  // Each read empties the previous value, then gives the code of the caption's entry, or the
  // stored value as it stands.
  Variant IDTMDataControl_Value() override;
  void IDTMDataControl_Value(const Variant& value) override;
  using DataControl::IDTMDataControl_DataItemDef;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  // Stores the mode; the message is ignored.
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return false; }
  bool IDTMDataControl_IsError() override { return false; }
  void IDTMDataControl_SetUserValue(const Variant&) override {}

  // IDTMEnumeration: the caption isn't touched by a new enumeration.
  Ref<Object> IDTMEnumeration_EnumDataDef() override { return enumNode_; }
  void IDTMEnumeration_EnumDataDef(Ref<Object> node) override;
  bool IDTMEnumeration_HasEnumData() { return hasEnumData(entries_); }
  // IDTMEnumeration1: the new text shows with the next value, as it is given.
  void IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                         const std::string& Label) override;

  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& value);

  platform::Label& Label1() { return *Label1_; }
  const VbArray<EnumData>& entries() const { return entries_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 protected:
  EnumLabel(const std::string& className, const std::string& loggerName);

  // The member rows of both labels, and the head of their reading order up to
  // IDTMDataControl_CanSubscribe; `own` comes behind it, then the forwarded properties that
  // both persist. Enabled, forwarded to Label1, is the one way to disable the child.
  template <class Self>
  static void addEnumLabelMembers(MemberTableBuilder<Self>& table,
                                  std::initializer_list<Persisted> own = {}) {
    addDataControlMembers(table);
    table
        .forward(
            "Label1", &EnumLabel::Label1,
            {"Alignment",    "Appearance",      "AutoSize",       "BackColor",     "BackStyle",
             "BorderStyle",  "Container",       "DataChanged",    "DataField",     "DataMember",
             "DragMode",     "Enabled",         "Font",           "FontBold",      "FontItalic",
             "FontName",     "FontSize",        "FontStrikethru", "FontUnderline", "ForeColor",
             "Height",       "LinkItem",        "LinkMode",       "LinkTimeout",   "LinkTopic",
             "MousePointer", "OLEDropMode",     "RightToLeft",    "TabIndex",      "Tag",
             "UseMnemonic",  "WhatsThisHelpID", "Width",          "WordWrap"})
        .forward("Label1", &EnumLabel::Label1, {"name", "Index"}, Forwarding::ReadOnly)
        .forward("Label1", &EnumLabel::Label1, {"DragIcon", "MouseIcon"}, Forwarding::WriteOnly)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .TESSALINE_READONLY(bool, IDTMEnumeration_HasEnumData)
        .procedure("IDTMEnumeration1_UpdateEnumString", &Self::IDTMEnumeration1_UpdateEnumString)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .persist({"IDTMDataControl_Active", "IDtmControl_Enable", "IDTMDataControl_Hot",
                  "IDtmControl_Visible", "IDTMDataControl_Name", "IDtmControl_Name",
                  Persisted("IDTMDataControl_Value").withDefault("Label1"),
                  "IDTMDataControl_PreviousValue", "IDTMDataControl_Access",
                  "IDTMDataControl_Source", "IDtmControl_DataMode", "IDTMDataControl_CanSubscribe"})
        .persist(own)
        .persist({"Appearance", "Alignment", "ForeColor", "Font", "MousePointer",
                  Persisted("MouseIcon").savedFrom(&EnumLabel::childMouseIcon),
                  Persisted("ToolTipText").restoredBy(&EnumLabel::restoreToolTipText),
                  "OLEDropMode", "RightToLeft"});
  }
  // MouseIcon has no getter: the bag takes Label1's.
  static Variant childMouseIcon(EnumLabel& label);
  // A stored tooltip text goes to Label1's own tooltip.
  static void restoreToolTipText(EnumLabel& label, const Variant& text);

  // The caption that the stored value gives.
  virtual void UpdateCaption() = 0;
  // The stored value from the caption: the code of the entry whose Local it is.
  void GetLabelValue();
  void UpdateTooltip();

  std::unique_ptr<platform::Label> Label1_;
  VbArray<EnumData> entries_;
  Variant storedValue_;
  Ref<Object> enumNode_;
  ControlTooltip tooltip_{"Error in CreateTooltip of DtmDataCombo ", 10000};
  bool visible_ = true;
  bool enable_ = true;

 private:
  void CreateTooltip();

  std::string loggerName_;
};

}  // namespace tessaline
