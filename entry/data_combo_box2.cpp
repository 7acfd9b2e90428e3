#include "tessaline/entry/data_combo_box2.h"

namespace tessaline {

namespace colors = platform::colors;

std::shared_ptr<DTMDataComboBox2> DTMDataComboBox2::create() {
  return std::shared_ptr<DTMDataComboBox2>(new DTMDataComboBox2());
}

DTMDataComboBox2::DTMDataComboBox2() : DropDownList("DTMDataComboBox2", "DTMDataComboBox2") {
  Frame1_ = window_->createFrame("Frame1");
  Frame1_->Left(600);
  Frame1_->Top(0);
  Frame1_->Width(2618);
  Frame1_->Height(315);
  Label1_ = &dynamic_cast<platform::Label&>(window_->Controls_Add("vb.label", "Label1"));
  window_->Container(*Label1_, Frame1_.get());
  Label1_->Width(Frame1_->Width());
  Label1_->Height(Frame1_->Height());
  Label1_->Caption("");
  Label1_->Visible(true);
  Label1_->BackColor(colors::kWindow);
  Label1_->ForeColor(colors::kButtonText);
  Label1_->property("BorderStyle",
                    Variant(static_cast<int32_t>(BorderStylePropertyValues::FixedSingle)));
  Label1_->events.Click = [this] { Label1_Click(); };
  Combo1().events.GotFocus = [this] { Combo1_GotFocus(); };
  Combo1().events.LostFocus = [this] { Combo1_LostFocus(); };
  window_->events.Resize = [this] { UserControl_Resize(); };
  UserControl_Resize();
}

// A failure ends the sequence there; its line would be lost, the logger has no host by then.
DTMDataComboBox2::~DTMDataComboBox2() {
  try {
    tooltip_.destroy();
    window_->Controls_Remove("Label1");
  } catch (...) {
  }
}

void DTMDataComboBox2::IDtmControl_Enable(bool value) {
  DropDownList::IDtmControl_Enable(value);
  Label1_->Enabled(value);
}

void DTMDataComboBox2::IDtmControl_Visible(bool value) {
  visible_ = value;
  Combo1().Visible(value);
  DTMStatusControl1().window().Visible(value);
  TooltipLabel_->Visible(value);
  Frame1_->Visible(value);
  Label1_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataComboBox2::TabIndex(int32_t value) {
  Combo1().TabIndex(value);
  Label1_->TabIndex(value + 1);
  DTMStatusControl1().window().TabIndex(value + 2);
  Frame1_->TabIndex(value + 3);
  TooltipLabel_->TabIndex(value + 4);
  PropertyChanged("TabIndex");
}

// What the label shows: the row's text when a row matches, the value and " [Undefined]" when
// none does, and what it showed when the value is empty.
void DTMDataComboBox2::SetComboValue() {
  guarded(*logger_, "Error on SetComboValue", [&] {
    const bool found = selectRowsOfValue([this] { Label1_->Caption(Combo1().Text()); });
    if (!found && !storedValue_.toText().empty()) {
      Label1_->Caption(storedValue_.toText() + " [Undefined]");
    }
  });
}

void DTMDataComboBox2::Combo1_Click() {
  compareWithBaseline();
  Label1_->Caption(Combo1().Text());
  notifyContainer();
}

// The label opens the list; the value changes only with the pick of a row.
void DTMDataComboBox2::Label1_Click() { Combo1().ShowDropDown(true); }

void DTMDataComboBox2::Combo1_GotFocus() { Label1_->BackColor(colors::kHighlight); }

// A hot control keeps the label as it is, so gaining the focus while hot loses the yellow
// until the next change of the mark.
void DTMDataComboBox2::Combo1_LostFocus() {
  if (!hot_) Label1_->BackColor(colors::kWindow);
}

void DTMDataComboBox2::paintList(platform::Color color) {
  Combo1().BackColor(color);
  Label1_->BackColor(color);
}

void DTMDataComboBox2::CreateTooltip() {
  const platform::WindowHandle windows[] = {Frame1_->hWnd(), window_->hWnd()};
  createTooltipFor(windows);
}

// Lengths in twips; the frame leaves 277 for the drop-down arrow.
void DTMDataComboBox2::UserControl_Resize() {
  window_->Height(Combo1().Height());
  if (window_->Width() < 500) window_->Width(500);
  const int32_t statusWidth = DTMStatusControl1().window().Width();
  Combo1().Width(window_->Width() - statusWidth - 10);
  Combo1().Top(0);
  Frame1_->Top(0);
  Label1_->Top(Frame1_->Top());
  Combo1().Left(statusWidth + 10);
  Frame1_->Width(Combo1().Width() - 277);
  Frame1_->Left(Combo1().Left());
  Label1_->Width(Frame1_->Width());
  Label1_->Height(Frame1_->Height());
}

void DTMDataComboBox2::describeMembers(MemberTableBuilder<DTMDataComboBox2>& table) {
  using Self = DTMDataComboBox2;
  addDropDownListMembers(table);
  // Set on both children, Combo1 first, and read from Combo1. These rows come after the bag's
  // reading order was taken: what the bag brings back goes to Combo1 alone.
  for (const char* name : {"BackColor", "ForeColor", "Font", "MousePointer", "MouseIcon",
                           "FontBold", "FontItalic", "FontName", "FontSize", "FontStrikethru",
                           "FontUnderline", "RightToLeft", "Tag", "WhatsThisHelpID"}) {
    const std::string property = name;
    table.row({property,
               [property](Dispatchable& d) {
                 return platform::childProperty(dynamic_cast<Self&>(d).Combo1(), property);
               },
               [property](Dispatchable& d, const Variant& value) {
                 auto& self = dynamic_cast<Self&>(d);
                 platform::childProperty(self.Combo1(), property, value);
                 platform::childProperty(*self.Label1_, property, value);
                 self.PropertyChanged(property);
               },
               {},
               "Combo1"});
  }
  table.TESSALINE_PROPERTY(int32_t, TabIndex);
}

}  // namespace tessaline
