#pragma once

#include <memory>
#include <string>

#include "tessaline/display/status_control.h"
#include "tessaline/frame/data_control.h"
#include "tessaline/frame/data_type_controller.h"
#include "tessaline/frame/events.h"
#include "tessaline/support/tooltip.h"
#include "tessaline/validation/validators.h"

namespace tessaline {

// What the two text boxes share: the children and their layout, the binding of a value to
// the edit child, the mark of an edit, the key filter by TextType, the guard of the text by
// the edit pattern, the clipboard keys and the tooltip. Where the two differ (the separator,
// the patterns, the minus rules, NaN, what a device value and Visible do, the key release,
// leaving the box) each says so in its own class.
class TextEntry : public virtual IDTMControlFormatter, public DataControl {
 public:
  ~TextEntry() override;

  // IDtmControl
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override { host_ = value; }
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override { container_ = value; }
  bool IDtmControl_Enable() override;
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }

  // IDTMDataControl
  bool IDTMDataControl_Hot() override { return hot_; }
  void IDTMDataControl_Hot(bool value) override;
  int32_t IDTMDataControl_Access() override { return access_; }
  void IDTMDataControl_Access(int32_t value) override;
  Variant IDTMDataControl_Value() override;
  using DataControl::IDTMDataControl_DataItemDef;
  using IDTMDataControl::IDTMDataControl_Value;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return validationFlag_; }
  bool IDTMDataControl_IsError() override;
  void IDTMDataControl_SetUserValue(const Variant& value) override;

  // IDTMControlFormatter
  std::string IDTMControlFormatter_EditFormat() override { return editFormat_; }
  // An empty format leaves the old pattern in place, unused.
  void IDTMControlFormatter_EditFormat(const std::string& value) override;
  // A second name of the edit format.
  std::string IDTMControlFormatter_ScaleFormat() { return IDTMControlFormatter_EditFormat(); }
  void IDTMControlFormatter_ScaleFormat(const std::string& value);

  TextDataType TextType() { return textType_; }
  void TextType(TextDataType value);
  // Text1.Text.
  std::string text();
  void text(const std::string& value);
  // Stored localized; it reaches the screen at the next rebuild of the tooltip.
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& value);

  // The key, or 0 when the text with the key's character appended fails the edit pattern.
  // The backspace is never tested. No code of the library calls it.
  int16_t ValidateInput(int16_t& KeyAscii);
  // Whether the present text fits the edit pattern.
  bool ValidateInputOnChange();
  // Whether the text matches the pattern; a pattern the engine refuses fails to the caller.
  bool TestRegExp(const std::string& myPattern, const std::string& myString);

  // Where the events of the full set go: Change, KeyDown and KeyPress are raised.
  void Advise(std::shared_ptr<ControlEvents> sink) { events_ = std::move(sink); }

  // Children and state, for the platform and for tests that act as the user.
  platform::TextBox& Text1() { return *Text1_; }
  platform::Label& TooltipLabel() { return *TooltipLabel_; }
  DTMStatusControl& DTMStatusControl1() { return *DTMStatusControl1_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }
  const std::string& BaselineText() const { return baselineText_; }
  bool BaselineCaptured() const { return baselineCaptured_; }
  const std::string& editPattern() const { return editPattern_; }

 protected:
  TextEntry(const std::string& className, bool multiLine, int32_t tabIndex,
            int32_t tooltipVisibleTime);

  // The end of creation, once the box is complete: the empty value, source 0, data mode 2,
  // the status child unstretched.
  void completeCreation();

  // The member rows and the reading order of the bag that both text boxes have.
  template <class Self>
  static void addTextEntryMembers(MemberTableBuilder<Self>& table) {
    addDataControlMembers(table);
    table
        .forward("Text1", &TextEntry::Text1,
                 {"BackColor",        "Appearance",  "Alignment",    "BorderStyle", "DataMember",
                  "ForeColor",        "Font",        "MousePointer", "MouseIcon",   "Locked",
                  "CausesValidation", "OLEDropMode", "OLEDragMode",  "RightToLeft", "PasswordChar",
                  "SelText",          "SelStart",    "SelLength",    "LinkTopic",   "LinkTimeout",
                  "LinkMode",         "LinkItem"})
        .forward("Text1", &TextEntry::Text1, {"HideSelection", "MultiLine", "ScrollBars"},
                 Forwarding::ReadOnly)
        .TESSALINE_PROPERTY(std::string, IDTMControlFormatter_EditFormat)
        .TESSALINE_PROPERTY(std::string, IDTMControlFormatter_ScaleFormat)
        .TESSALINE_PROPERTY(TextDataType, TextType)
        .TESSALINE_PROPERTY(std::string, text)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .method("ValidateInput",
                [](Self& s, DispatchArgs& a) {
                  int16_t key = argument(a, 0).toInt16();
                  const int16_t result = s.ValidateInput(key);
                  a[0] = Variant(key);
                  return Variant(result);
                })
        .function("ValidateInputOnChange", &Self::ValidateInputOnChange)
        .method("TestRegExp",
                [](Self& s, DispatchArgs& a) {
                  return Variant(s.TestRegExp(argument(a, 0).toText(), argument(a, 1).toText()));
                })
        .persist({"IDTMDataControl_Active",
                  "IDtmControl_Enable",
                  "IDTMDataControl_Hot",
                  "IDtmControl_Visible",
                  "IDTMDataControl_Name",
                  "IDtmControl_Name",
                  "IDTMControlFormatter_EditFormat",
                  "IDTMDataControl_CanSubscribe",
                  Persisted("IDTMDataControl_Value").withDefault("Text1"),
                  "IDTMDataControl_PreviousValue",
                  "IDTMDataControl_Access",
                  "IDtmControl_DataMode",
                  "IDTMDataControl_Source",
                  "DataMember",
                  "BackColor",
                  "BorderStyle",
                  "Appearance",
                  "Alignment",
                  "ForeColor",
                  "Font",
                  "MousePointer",
                  "MouseIcon",
                  "Locked",
                  Persisted("ToolTipText").restoredBy(&TextEntry::restoreToolTipText),
                  "TextType",
                  "Text",
                  "CausesValidation",
                  "LinkMode",
                  "LinkItem",
                  "LinkTopic",
                  "LinkTimeout",
                  "SelText",
                  "SelStart",
                  "SelLength",
                  "PasswordChar",
                  "OLEDropMode",
                  "OLEDragMode",
                  "RightToLeft"});
  }
  // A stored tooltip text goes to TooltipLabel, not to the control's own tooltip text.
  static void restoreToolTipText(TextEntry& box, const Variant& text);

  // The differences of each text box.
  // The decimal separator of the patterns and of the appended separator.
  virtual std::string decimalSeparator() = 0;
  virtual std::string editPatternFor(const std::string& format) = 0;
  // Whether a text without the separator gets one appended before the test.
  virtual bool appendsSeparator(char formatLetter) = 0;
  // The further rules of Numbers, applied to a key that its class kept.
  virtual void applyNumbersRules(int16_t& KeyAscii) = 0;

  // Steps 2 to 4 of setting a value: previous value, value, the shown text without trailing
  // blanks, the notification.
  void showValue(const Variant& value);
  // Visible of the edit child, TooltipLabel and the status child.
  void showChildren(bool visible);
  enum class BaselineComparison { Trimmed, AsItStands };
  // The key release: the host's check, the comparison with the baseline, the report.
  void releaseKey(BaselineComparison comparison);
  // The definition applied: DataType, the localized help as tooltip text, the rebuild.
  void ApplyDefinition();
  // Destroys the tooltip and, while the control is visible, builds it anew.
  void UpdateTooltip();

  bool visible_ = true;
  bool hot_ = false;
  std::string baselineText_;
  bool baselineCaptured_ = false;
  TextDataType textType_ = TextDataType::AlphaNumeric;
  std::unique_ptr<platform::TextBox> Text1_;
  // One validator of each kind, kept empty: the check that runs is the host's
  // ValidateItemValue, and the validators stand ready for a host that wants them.
  Ref<RangeValidator> rangeValidator_;
  Ref<LengthValidator> lengthValidator_;
  Ref<DiscreteValidator> discreteValidator_;

 private:
  void Text1_Change();
  void Text1_Click();
  void Text1_GotFocus();
  void Text1_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void Text1_KeyPress(int16_t& KeyAscii);
  void UserControl_Resize();
  void UserControl_EnterFocus();

  bool fitsEditPattern(std::string text);
  void CaptureBaseline();
  void CheckValueWithHost();
  void CreateTooltip();
  DataTypeController& dataTypeController();

  // Children in the order they are made; the window (in ControlFrame) outlives them.
  std::shared_ptr<DTMStatusControl> DTMStatusControl1_;
  std::unique_ptr<platform::Label> TooltipLabel_;

  std::shared_ptr<ControlEvents> events_;
  std::unique_ptr<DataTypeController> dataTypeController_;
  ControlTooltip tooltip_;
  bool validationFlag_ = true;
  Variant value_;
  std::string editFormat_;
  std::string editPattern_;
  std::string savedText_;
  bool keyPending_ = false;
};

}  // namespace tessaline
