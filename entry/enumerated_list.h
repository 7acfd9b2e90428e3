#pragma once

#include <memory>
#include <string>

#include "tessaline/display/status_control.h"
#include "tessaline/frame/data_control.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// What the combo boxes and the list control share: an enumeration's entries in a list child,
// the translation between a device code and a row, the mark of a changed choice, and the
// tooltip. What differs (the value's previous value, which failures are caught, the click, the
// status mode of a clean control, the tooltip's text and tools) each control states itself.
class EnumeratedList : public virtual IDTMEnumeration, public DataControl {
 public:
  ~EnumeratedList() override;

  // IDtmControl. The host comes from IDTMControl_Init alone: IDtmControl_GenericDtm keeps
  // nothing and gives Nothing.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override { container_ = value; }
  // Reads the list child, keeps what it read.
  bool IDtmControl_Enable() override;
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }

  // IDTMDataControl
  bool IDTMDataControl_Hot() override { return hot_; }
  using IDTMDataControl::IDTMDataControl_Hot;
  int32_t IDTMDataControl_Access() override { return access_; }
  void IDTMDataControl_Access(int32_t value) override;
  // The code of what the list shows, as a string; the stored value when it shows no entry.
  Variant IDTMDataControl_Value() override;
  using DataControl::IDTMDataControl_DataItemDef;
  using IDTMDataControl::IDTMDataControl_Value;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return false; }
  bool IDTMDataControl_IsError() override { return false; }

  // IDTMEnumeration
  Ref<Object> IDTMEnumeration_EnumDataDef() override { return enumNode_; }
  // Reads the entries and fills the list; no row is selected until the next value.
  void IDTMEnumeration_EnumDataDef(Ref<Object> node) override;
  bool IDTMEnumeration_HasEnumData() { return hasEnumData(entries_); }

  // A control new on its form: the defaults of its creation once more.
  void InitProperties() override;

  // Reading gives 0 or "", writing does nothing.
  int32_t SelLength() { return 0; }
  void SelLength(int32_t) {}
  int32_t SelStart() { return 0; }
  void SelStart(int32_t) {}
  std::string SelText() { return {}; }
  void SelText(const std::string&) {}
  // Stored as given; it reaches the screen at the next rebuild of the tooltip.
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& value);

  // Children and state, for the platform and for tests.
  platform::ListWidget& listChild() { return *list_; }
  platform::Label& TooltipLabel() { return *TooltipLabel_; }
  DTMStatusControl& DTMStatusControl1() { return *DTMStatusControl1_; }
  const VbArray<EnumData>& entries() const { return entries_; }
  const std::string& BaselineText() const { return baselineText_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 protected:
  // Which list child the control has: the drop-down Combo1 or the open List1.
  enum class ListKind { Combo1, List1 };
  EnumeratedList(const std::string& className, const std::string& loggerName, ListKind kind,
                 IncludeIf rule, int32_t cleanStatusMode,
                 std::string DeviceDataItem::*tooltipSource, const std::string& tooltipLiteral);

  // The member rows and the reading order of the bag of the three list controls. Where they
  // differ it is in the rows given: the value's default, whether the previous value is
  // written, and where a stored tooltip text goes.
  template <class Self>
  static void addEnumeratedListMembers(MemberTableBuilder<Self>& table, const char* listChild,
                                       Persisted value, Persisted previousValue,
                                       Persisted toolTipText) {
    addDataControlMembers(table);
    table
        .forward(
            listChild, &EnumeratedList::listChild,
            {"Appearance", "BackColor",      "ForeColor",        "Font",        "MousePointer",
             "MouseIcon",  "Locked",         "CausesValidation", "Container",   "DataChanged",
             "DataField",  "DataMember",     "FontBold",         "FontItalic",  "FontName",
             "FontSize",   "FontStrikethru", "FontUnderline",    "Height",      "HelpContextID",
             "ListIndex",  "OLEDragMode",    "OLEDropMode",      "RightToLeft", "TabIndex",
             "Tag",        "TopIndex",       "WhatsThisHelpID",  "Width"})
        .forward(
            listChild, &EnumeratedList::listChild,
            {"name", "hwnd", "ListCount", "NewIndex", "Sorted", "Style", "Index", "IntegralHeight"},
            Forwarding::ReadOnly)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .TESSALINE_READONLY(bool, IDTMEnumeration_HasEnumData)
        .TESSALINE_PROPERTY(int32_t, SelLength)
        .TESSALINE_PROPERTY(int32_t, SelStart)
        .TESSALINE_PROPERTY(std::string, SelText)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .persist({"IDTMDataControl_Active",
                  "IDtmControl_Enable",
                  "IDTMDataControl_Hot",
                  "IDtmControl_Visible",
                  "IDTMDataControl_Name",
                  "IDtmControl_Name",
                  std::move(value),
                  std::move(previousValue),
                  "IDTMDataControl_Access",
                  "IDtmControl_DataMode",
                  "IDTMDataControl_Source",
                  "IDTMDataControl_CanSubscribe",
                  "BackColor",
                  "Appearance",
                  "ForeColor",
                  "Font",
                  "MousePointer",
                  "MouseIcon",
                  std::move(toolTipText),
                  "OLEDropMode",
                  "RightToLeft"});
  }
  // A stored tooltip text that goes to TooltipLabel, not to the control's own text.
  static void restoreToolTipText(EnumeratedList& list, const Variant& text);

  void ReadEnumData();
  void FillList();
  // The rows whose code is the stored value's text get selected in turn (the last wins) and
  // remembered for the drop-down colours. Nothing happens with no entries or a Null value.
  // `onMatch` runs after each row is selected. True when a row matched.
  bool selectRowsOfValue(const std::function<void()>& onMatch = {});
  void GetComboValue();
  // Hot by the comparison of the value with the baseline.
  void compareWithBaseline();
  void notifyContainer();
  // Hot let's steps, with the clean status mode of the control.
  void markHot(bool value);
  // The device value's steps once the control isn't hot: baseline, value, clean mark.
  void takeDeviceValue(const Variant& value);
  void UpdateTooltip();
  void UserControl_Resize();

  // The colour of a changed or clean list; the second combo box paints its label too.
  virtual void paintList(platform::Color color);
  // The windows that get a tool.
  virtual void CreateTooltip() = 0;
  void createTooltipFor(std::span<const platform::WindowHandle> windows);

  std::shared_ptr<DTMStatusControl> DTMStatusControl1_;
  std::unique_ptr<platform::Label> TooltipLabel_;
  std::unique_ptr<platform::ListWidget> list_;
  VbArray<EnumData> entries_;
  Variant storedValue_ = Variant("");
  std::string baselineText_;
  bool hot_ = false;
  bool visible_ = true;
  bool deviceValueReceived_ = false;
  Ref<Object> enumNode_;
  ControlTooltip tooltip_;

 private:
  std::string loggerName_;
  IncludeIf rule_;
  int32_t cleanStatusMode_;
  std::string DeviceDataItem::*tooltipSource_;
};

}  // namespace tessaline
