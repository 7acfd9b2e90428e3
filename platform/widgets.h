#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tessaline/platform/font.h"
#include "tessaline/values/variant.h"

// The standard child controls that the composite controls are built of, and the composite
// control's own window. Lengths are twips; colours are 0x00BBGGRR numbers or system colours.
// Each behaviour that a control relies on is written down at the member it belongs to: every
// backend has to reproduce it.
//
// Events and errors. An event that a change of the program raises (Text or SelText set, a
// ListIndex, a Value, updateViewPort) runs its handler within that call: an error that escapes
// the handler comes out of the call, back to the code that made the change. An event of the
// user's runs within the user's action (a key is one action: KeyDown, KeyPress, the edit with its
// Change, KeyUp); an error that escapes its handler stops the action there and is kept by the
// backend as unhandled, as an unhandled error in an event would be.
namespace tessaline::platform {

using WindowHandle = int32_t;
class ChartViewer;
using Color = int32_t;

namespace colors {
inline constexpr Color kWindow = static_cast<Color>(0x80000005);
inline constexpr Color kWindowText = static_cast<Color>(0x80000008);
inline constexpr Color kHighlight = static_cast<Color>(0x8000000D);
inline constexpr Color kButtonFace = static_cast<Color>(0x8000000F);
inline constexpr Color kButtonText = static_cast<Color>(0x80000012);
inline constexpr Color kYellow = 0x0000FFFF;
inline constexpr Color kWhite = 0x00FFFFFF;
}  // namespace colors

// Key codes and characters that the controls look at.
namespace keys {
inline constexpr int16_t kBack = 8;
inline constexpr int16_t kReturn = 13;
inline constexpr int16_t kMinus = 45;   // the character '-'
inline constexpr int16_t kPeriod = 46;  // the character '.'
// The letter keys of copy, paste and cut with Ctrl.
inline constexpr int16_t kC = 67;
inline constexpr int16_t kV = 86;
inline constexpr int16_t kX = 88;
}  // namespace keys

// Shift states of key events.
namespace shift {
inline constexpr int16_t kShift = 1;
inline constexpr int16_t kCtrl = 2;
inline constexpr int16_t kAlt = 4;
}  // namespace shift

using Handler = std::function<void()>;
using KeyHandler = std::function<void(int16_t& KeyCode, int16_t& Shift)>;
using KeyPressHandler = std::function<void(int16_t& KeyAscii)>;

// What every child control has. Properties that the controls only pass through (Appearance,
// BorderStyle, Font, MousePointer, OLEDropMode, ...) are kept by name with property().
class Widget {
 public:
  virtual ~Widget() = default;

  // The design name on the form: "Text1", "TooltipLabel".
  virtual const std::string& Name() const = 0;
  // The window handle; 0 for windowless controls such as labels.
  virtual WindowHandle hWnd() const = 0;
  virtual bool Visible() const = 0;
  virtual void Visible(bool value) = 0;
  virtual bool Enabled() const = 0;
  virtual void Enabled(bool value) = 0;
  virtual int32_t Left() const = 0;
  virtual void Left(int32_t value) = 0;
  virtual int32_t Top() const = 0;
  virtual void Top(int32_t value) = 0;
  virtual int32_t Width() const = 0;
  virtual void Width(int32_t value) = 0;
  virtual int32_t Height() const = 0;
  virtual void Height(int32_t value) = 0;
  virtual Color BackColor() const = 0;
  virtual void BackColor(Color value) = 0;
  virtual Color ForeColor() const = 0;
  virtual void ForeColor(Color value) = 0;
  virtual int32_t TabIndex() const = 0;
  virtual void TabIndex(int32_t value) = 0;
  virtual std::string ToolTipText() const = 0;
  virtual void ToolTipText(const std::string& value) = 0;

  // A pass-through property; Empty until set.
  virtual Variant property(std::string_view name) const = 0;
  virtual void property(std::string_view name, const Variant& value) = 0;
};

// The classic single- or multi-line edit control.
// - A typed character (a KeyPress that its handler left non-zero) replaces the selection at
//   the caret; backspace (8) deletes the selection or the character before the caret. Other
//   control characters are left to the composite control (clipboard keys are its business);
//   in a multi-line box a carriage return (13) starts a new line.
// - Change is raised on every change of the text, also one made by program, and only then.
// - Text set by program puts the caret at the start with nothing selected.
// - The text has no length limit: a text of any length is kept and read back whole.
// - A Locked box takes no typed change; a disabled one takes no input at all.
class TextBox : public Widget {
 public:
  struct Events {
    Handler Change, Click, DblClick, GotFocus, LostFocus;
    KeyHandler KeyDown, KeyUp;
    KeyPressHandler KeyPress;
  };
  Events events;

  virtual std::string Text() const = 0;
  virtual void Text(const std::string& value) = 0;
  // Caret and selection in characters.
  virtual int32_t SelStart() const = 0;
  virtual void SelStart(int32_t value) = 0;
  virtual int32_t SelLength() const = 0;
  virtual void SelLength(int32_t value) = 0;
  virtual std::string SelText() const = 0;
  // Replaces the selection; the caret goes behind the new text.
  virtual void SelText(const std::string& value) = 0;
  virtual bool Locked() const = 0;
  virtual void Locked(bool value) = 0;
  // Fixed at design time.
  virtual bool MultiLine() const = 0;
};

// The classic label: windowless, a caption, and with AutoSize a size that fits the caption.
class Label : public Widget {
 public:
  struct Events {
    Handler Click, DblClick;
  };
  Events events;

  virtual std::string Caption() const = 0;
  virtual void Caption(const std::string& value) = 0;
  // With AutoSize true, Width and Height follow every caption (the text measure's size).
  virtual bool AutoSize() const = 0;
  virtual void AutoSize(bool value) = 0;
};

// The rows of a list: what the combo box and the list box share.
// - Click is raised whenever the selected row changes, by the user or by program (ListIndex
//   set to another row); Clear and AddItem raise nothing.
// - A focus that comes to the list or leaves it raises GotFocus or LostFocus.
// - Text is the text of the selected row, "" with none; ListIndex is -1 with none.
// - A ListIndex outside -1 to ListCount - 1 raises 380.
class ListWidget : public Widget {
 public:
  struct Events {
    Handler Click, DblClick, GotFocus, LostFocus;
  };
  Events events;

  virtual std::string List(int32_t index) const = 0;
  virtual int32_t ListCount() const = 0;
  virtual int32_t ListIndex() const = 0;
  virtual void ListIndex(int32_t value) = 0;
  virtual std::string Text() const = 0;
  virtual void Clear() = 0;
  virtual void AddItem(const std::string& item) = 0;
};

// How a drop-down row is painted when its control draws it: the background (which the text
// takes too), the text at (x, y) from the row's corner in pixels, and the focus rectangle.
struct RowPaint {
  Color background = 0;
  std::string text;
  int32_t textLeft = 0;
  int32_t textTop = 0;
  bool focusRectangle = false;
};

// A drop-down row's state when it is painted: whether the mouse is on it.
inline constexpr int32_t kRowFocus = 0x10;

// The combo box in drop-down list style: the user picks a row and can't type.
// - A Locked combo box opens but takes no pick of the user; a row set by program still is.
class ComboBox : public ListWidget {
 public:
  virtual bool Locked() const = 0;
  virtual void Locked(bool value) = 0;
  // Opens or closes the drop-down list, as the user's click on the arrow would.
  virtual void ShowDropDown(bool open) = 0;
  virtual bool DroppedDown() const = 0;
  // When set, the drop-down rows are drawn by the control: the backend asks it for each row
  // with its number, its state and its text. Unset, the platform draws them its own way.
  // Drawing is part of the user's opening the list: an error that escapes drawRow is kept as
  // an unhandled error of the user's action (as one escaping an event handler would be, beside
  // the errors kept before it), and that row is drawn the platform's way.
  std::function<RowPaint(int32_t itemID, int32_t itemState, const std::string& text)> drawRow;
};

// The list box: the rows always open.
class ListBox : public ListWidget {};

// The classic frame: a window that holds other children.
class Frame : public Widget {};

// The classic image control: windowless, showing a picture, stretched to its size or not.
class Image : public Widget {
 public:
  struct Events {
    Handler Click, DblClick;
  };
  Events events;

  // Nothing when no picture is shown.
  virtual Ref<Object> Picture() const = 0;
  virtual void Picture(const Ref<Object>& picture) = 0;
  virtual bool Stretch() const = 0;
  virtual void Stretch(bool value) = 0;
};

// The classic option button in graphical style: a button that shows its picture and stays
// pressed while its Value is true. Of the option buttons of one container, one is pressed.
// - A click of the user presses it (the others of its container come up) and raises Click, also
//   when it was pressed already.
// - Value set to true by program does the same, Click included; set to false, it only comes up.
class OptionButton : public Widget {
 public:
  struct Events {
    Handler Click;
  };
  Events events;

  virtual bool Value() const = 0;
  virtual void Value(bool value) = 0;
  // The picture on the button's face, or Nothing.
  virtual Ref<Object> Picture() const = 0;
  virtual void Picture(const Ref<Object>& picture) = 0;
};

// The classic check box. Value is the check state: 0 unchecked, 1 checked, 2 grayed.
// - Value set by program to another state raises Click; set to the state it has, nothing. A
//   Value outside 0 to 2 raises 380 and leaves the state.
// - A mouse press raises MouseDown with the state unchanged. The release over the box changes
//   the state (unchecked and grayed become checked, checked becomes unchecked), raises Click,
//   and then MouseUp, which thus sees the new state.
// - The space key toggles in the same way and raises Click, with no mouse event.
// - The focus that comes with the press raises GotFocus before MouseDown; a focus that leaves
//   raises LostFocus.
// - A disabled box takes no input at all.
// - Its design caption is its name ("Check1") until the caption is set.
class CheckBox : public Widget {
 public:
  struct Events {
    Handler Click, MouseDown, MouseUp, GotFocus, LostFocus;
  };
  Events events;

  virtual int16_t Value() const = 0;
  virtual void Value(int16_t value) = 0;
  virtual std::string Caption() const = 0;
  virtual void Caption(const std::string& value) = 0;
  // The picture of a graphical box, or Nothing.
  virtual Ref<Object> Picture() const = 0;
  virtual void Picture(const Ref<Object>& picture) = 0;
};

// The classic date and time picker: one date (a serial of days, the time as the fraction) shown
// by a custom format, edited field by field or picked from a drop-down calendar.
// - It starts at 1 January 1970, 00:00:00, with the custom format "MM-dd-yy hh:mm:ss tt" and the
//   range 1 January 1601 to 31 December 9999 (the whole last day).
// - Value set by program to a date outside MinDate to MaxDate raises 380 and keeps the date;
//   inside, it takes the date and raises nothing: Change is the user's alone.
// - The custom format uses the tokens of formatPickerDate; empty, the date shows in the
//   general form. The format changes what is shown, never the date.
// - The user's click on the picker (also the one that opens the calendar) raises Click before
//   anything changes, once for one click; the focus that comes with it raises GotFocus first.
//   A focus that leaves raises LostFocus.
// - A key that types a field's digit raises KeyDown, KeyPress, then, once the field takes the
//   new number, Change, then KeyUp. A day picked from the calendar keeps the time of day and
//   raises Change. A change that would leave the range is refused: nothing changes and no
//   Change is raised.
// - CalendarBackColor paints the drop-down calendar's days.
// - A disabled picker takes no input at all.
class DatePicker : public Widget {
 public:
  struct Events {
    Handler Change, Click, GotFocus, LostFocus;
    KeyHandler KeyDown, KeyUp;
    KeyPressHandler KeyPress;
  };
  Events events;

  static constexpr const char* kDesignFormat = "MM-dd-yy hh:mm:ss tt";
  // 1 January 1970, 1 January 1601 and the last second of 31 December 9999.
  static constexpr double kDesignDate = 25569.0;
  static constexpr double kMinDate = -109205.0;
  static constexpr double kMaxDate = 2958465.0 + 86399.0 / 86400.0;

  virtual DateSerial Value() const = 0;
  virtual void Value(DateSerial value) = 0;
  virtual std::string CustomFormat() const = 0;
  virtual void CustomFormat(const std::string& value) = 0;
  virtual Color CalendarBackColor() const = 0;
  virtual void CalendarBackColor(Color value) = 0;
  virtual DateSerial MinDate() const = 0;
  virtual DateSerial MaxDate() const = 0;
  // What the picker shows: the date by the custom format.
  virtual std::string Text() const = 0;
};

// The classic command button: a caption and a click.
// - A click of the user on an enabled, visible button raises Click; setting the caption
//   raises nothing.
class CommandButton : public Widget {
 public:
  struct Events {
    Handler Click;
  };
  Events events;

  virtual std::string Caption() const = 0;
  virtual void Caption(const std::string& value) = 0;
};

// A tree of entries as the navigation shows it. Entries are numbered from 1 in the order in
// which they were added (the collection order: each entry before what lies below it when
// entries are added from the top down); 0 stands for no entry.
// - AddNode with a parent of 0 adds an entry at the top level; another number adds a child of
//   that entry. A key that the tree already holds raises 35602 and adds nothing; a parent that
//   isn't there raises 35600.
// - A click of the user on an entry selects it, then raises NodeClick with its number. Selected
//   set by program raises nothing.
// - Tag is Empty until set.
// - The tree is never walked by recursion, so that any depth of entries is safe.
class TreeView : public Widget {
 public:
  struct Events {
    std::function<void(int32_t node)> NodeClick;
  };
  Events events;

  virtual int32_t AddNode(int32_t parent, const std::string& key, const std::string& text) = 0;
  virtual int32_t NodeCount() const = 0;
  // 35600 for a number that names no entry.
  virtual std::string NodeKey(int32_t node) const = 0;
  virtual std::string NodeText(int32_t node) const = 0;
  virtual int32_t NodeParent(int32_t node) const = 0;
  virtual Variant NodeTag(int32_t node) const = 0;
  virtual void NodeTag(int32_t node, const Variant& tag) = 0;
  virtual bool NodeExpanded(int32_t node) const = 0;
  virtual void NodeExpanded(int32_t node, bool value) = 0;
  // The selected entry, 0 with none.
  virtual int32_t SelectedNode() const = 0;
  virtual void SelectNode(int32_t node) = 0;
  virtual int32_t Indentation() const = 0;
  virtual void Indentation(int32_t value) = 0;
  virtual int32_t LineStyle() const = 0;
  virtual void LineStyle(int32_t value) = 0;
  virtual bool HideSelection() const = 0;
  virtual void HideSelection(bool value) = 0;
  // Places and sizes the tree in one step, in twips.
  virtual void Move(int32_t left, int32_t top, int32_t width, int32_t height) = 0;
};

// A stack of bars, one open at a time, each with a caption, an optional picture and one child
// control as its content (a shortcut bar). Bars are counted from 1.
// - AddBar adds at the end; a key that a bar already has raises 35602 and adds no bar. A bar
//   asked for by a position that isn't there raises 35600.
// - A click of the user on a bar's caption opens it (it becomes SelectedBar) and raises BarClick
//   with its position. SelectedBar or a bar's Selected set by program raise nothing.
// - Pictures are filed by key with LoadIconImageFromFile (false when the file can't be read
//   as a picture); a bar shows the picture of its icon key, or none.
// - Nothing is painted while Redraw is false; Redraw true repaints.
class ShortcutBar : public Widget {
 public:
  struct Events {
    std::function<void(int32_t bar)> BarClick;
  };
  Events events;

  virtual int32_t AddBar(const std::string& key, const std::string& caption,
                         const std::string& iconKey) = 0;
  virtual int32_t BarCount() const = 0;
  virtual std::string BarKey(int32_t bar) const = 0;
  virtual std::string BarCaption(int32_t bar) const = 0;
  // The bar's content; null until set.
  virtual Widget* BarControl(int32_t bar) const = 0;
  virtual void BarControl(int32_t bar, Widget* content) = 0;
  virtual bool BarSelected(int32_t bar) const = 0;
  virtual void BarSelected(int32_t bar, bool value) = 0;
  // The open bar, 0 with none.
  virtual int32_t SelectedBar() const = 0;
  virtual void SelectedBar(int32_t bar) = 0;
  // Whether the bar shows a picture.
  virtual bool BarHasIcon(int32_t bar) const = 0;
  virtual bool Redraw() const = 0;
  virtual void Redraw(bool value) = 0;
  virtual int32_t Style() const = 0;
  virtual void Style(int32_t value) = 0;
  virtual int16_t Align() const = 0;
  virtual void Align(int16_t value) = 0;
  virtual bool LoadIconImageFromFile(const std::string& path, const std::string& key) = 0;
};

// The classic scroll bar, horizontal or vertical as made: Min 0, Max 32767 and Value 0 until
// set, SmallChange 1, LargeChange 1.
// - Dragging the thumb raises Scroll at each move and Change at its end; a click on an arrow or
//   the track moves Value by SmallChange or LargeChange and raises Change.
// - Value set by program raises Change when it changes; a Value outside Min to Max raises 380.
class ScrollBar : public Widget {
 public:
  struct Events {
    Handler Scroll, Change;
  };
  Events events;

  virtual bool Horizontal() const = 0;
  virtual int32_t Min() const = 0;
  virtual void Min(int32_t value) = 0;
  virtual int32_t Max() const = 0;
  virtual void Max(int32_t value) = 0;
  virtual int32_t Value() const = 0;
  virtual void Value(int32_t value) = 0;
  virtual int32_t SmallChange() const = 0;
  virtual void SmallChange(int32_t value) = 0;
  virtual int32_t LargeChange() const = 0;
  virtual void LargeChange(int32_t value) = 0;
};

// The classic timer: no window. While it is Enabled with an Interval above 0, Timer is raised
// each Interval milliseconds of the platform's clock, on the control's thread between other
// events (never inside one). Turning it on, or setting another Interval, starts the count anew;
// setting Enabled or Interval to the value it has changes nothing, so a timer that is switched
// on again at every value keeps its beat.
class Timer {
 public:
  struct Events {
    Handler Timer;
  };
  Events events;

  virtual ~Timer() = default;
  virtual const std::string& Name() const = 0;
  virtual int32_t Interval() const = 0;
  virtual void Interval(int32_t milliseconds) = 0;
  virtual bool Enabled() const = 0;
  virtual void Enabled(bool value) = 0;
};

// A moment of the platform's clock, in local time.
struct LocalTime {
  int32_t year = 1970, month = 1, day = 1, hour = 0, minute = 0;
  double second = 0;
};

// The platform's clock: the local date and time, to the second.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalTime now() = 0;
};

// The composite control's own window: its size, its place on the form (the extender's
// Visible), its children, and the notification that a property changed.
// - Setting Width or Height raises Resize; a Resize handler may set them again.
// - EnterFocus is raised when the focus comes to one of its children from outside, before
//   the child's GotFocus; ExitFocus when it leaves, after the child's LostFocus.
class UserControl {
 public:
  struct Events {
    Handler Resize, EnterFocus, ExitFocus;
  };
  Events events;

  virtual ~UserControl() = default;

  virtual const std::string& ClassName() const = 0;
  virtual WindowHandle hWnd() const = 0;
  virtual int32_t Width() const = 0;
  virtual void Width(int32_t value) = 0;
  virtual int32_t Height() const = 0;
  virtual void Height(int32_t value) = 0;
  // As the form sees this control.
  virtual bool Visible() const = 0;
  virtual void Visible(bool value) = 0;
  virtual int32_t Left() const = 0;
  virtual void Left(int32_t value) = 0;
  virtual int32_t Top() const = 0;
  virtual void Top(int32_t value) = 0;
  virtual int32_t TabIndex() const = 0;
  virtual void TabIndex(int32_t value) = 0;

  // Marks the saved state of the control as stale, under a property's name.
  virtual void PropertyChanged(const std::string& name) = 0;
  // The background colour of the window that holds this control, as its device context
  // paints it.
  virtual Color AmbientBackColor() const = 0;
  // The font of the form that holds this control: what its children start with.
  virtual Ref<StdFont> AmbientFont() const { return Ref<StdFont>(std::make_shared<StdFont>()); }

  virtual std::unique_ptr<TextBox> createTextBox(const std::string& name, bool multiLine) = 0;
  virtual std::unique_ptr<Label> createLabel(const std::string& name) = 0;
  virtual std::unique_ptr<Image> createImage(const std::string& name) = 0;
  virtual std::unique_ptr<ComboBox> createComboBox(const std::string& name) = 0;
  virtual std::unique_ptr<ListBox> createListBox(const std::string& name) = 0;
  virtual std::unique_ptr<Frame> createFrame(const std::string& name) = 0;
  virtual std::unique_ptr<ChartViewer> createChartViewer(const std::string& name) = 0;
  virtual std::unique_ptr<OptionButton> createOptionButton(const std::string& name) = 0;
  virtual std::unique_ptr<ScrollBar> createScrollBar(const std::string& name, bool horizontal) = 0;
  virtual std::unique_ptr<Timer> createTimer(const std::string& name) = 0;
  virtual std::unique_ptr<CheckBox> createCheckBox(const std::string& name) = 0;
  virtual std::unique_ptr<DatePicker> createDatePicker(const std::string& name) = 0;
  virtual std::unique_ptr<CommandButton> createCommandButton(const std::string& name) = 0;
  virtual std::unique_ptr<TreeView> createTreeView(const std::string& name) = 0;
  virtual std::unique_ptr<ShortcutBar> createShortcutBar(const std::string& name) = 0;

  // The collection of children made at run time, by type name ("vb.label") and name. The
  // collection owns them; 711 for a type it doesn't know, 727 for a name that is taken, 730
  // for removing a name it doesn't hold.
  virtual Widget& Controls_Add(const std::string& progId, const std::string& name) = 0;
  virtual void Controls_Remove(const std::string& name) = 0;
  // The child of that name in the collection, or null.
  virtual Widget* Controls(const std::string& name) = 0;
  // Places a child inside a frame: its position then counts from the frame's corner.
  virtual void Container(Widget& child, Frame* frame) = 0;
  // The window of a composite control that stands on this one as a child.
  virtual std::unique_ptr<UserControl> createChildControl(const std::string& className) = 0;
};

// The system clipboard, text only.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void Clear() = 0;
  virtual void SetText(const std::string& text) = 0;
  virtual std::string GetText() = 0;
};

// Balloon tooltip windows, reduced to what the controls send them. A message to window 0, or
// to a window that is gone, goes nowhere; a question to it answers 0.
class TooltipService {
 public:
  // Which delay a delay time is: TTDT_RESHOW, TTDT_AUTOPOP, TTDT_INITIAL.
  static constexpr int32_t kReshow = 1;
  static constexpr int32_t kAutoPop = 2;
  static constexpr int32_t kInitial = 3;
  // Tool flags.
  static constexpr int32_t kIdIsHwnd = 0x01;
  static constexpr int32_t kCenterTip = 0x02;
  static constexpr int32_t kSubclass = 0x10;

  virtual ~TooltipService() = default;
  // A new tooltip window owned by the parent; 0 when none can be made.
  virtual WindowHandle createTooltipWindow(WindowHandle parent, int32_t style) = 0;
  virtual void destroyWindow(WindowHandle tooltip) = 0;
  virtual void setMaxTipWidth(WindowHandle tooltip, int32_t pixels) = 0;
  virtual void setDelayTime(WindowHandle tooltip, int32_t which, int32_t milliseconds) = 0;
  virtual int32_t getDelayTime(WindowHandle tooltip, int32_t which) = 0;
  // Registers a window as a tool over its whole client area, with its text.
  virtual void addTool(WindowHandle tooltip, WindowHandle window, const std::string& text,
                       int32_t flags) = 0;
};

// The size that a text takes on the screen, in pixels: for labels that fit their caption.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  // Width of the longest line and height of all lines ("\r\n" or "\n" ends a line).
  virtual void measure(const std::string& text, const FontFace& font, int32_t& width,
                       int32_t& height) = 0;
};

// A widget toolkit. The controls reach it through backend(); tests and applications install
// one per thread with setBackend().
class Backend {
 public:
  virtual ~Backend() = default;
  virtual std::unique_ptr<UserControl> createUserControl(const std::string& className) = 0;
  virtual Clipboard& clipboard() = 0;
  virtual TooltipService& tooltips() = 0;
  virtual TextMeasure& textMeasure() = 0;
  virtual Clock& clock() = 0;
};

// A child's property by its name, as a composite control forwards it: the typed member where
// the child has one of that name, else its pass-through property, which reads as the classic
// control's design default until it is set. "Font" is the child's font object (made at first
// use from the default font); FontBold, FontItalic, FontName, FontSize, FontStrikethru and
// FontUnderline read and change it, and the changed font is set on the child again. Writing a
// property that the child only reads raises 383.
Variant childProperty(Widget& child, std::string_view name);
void childProperty(Widget& child, std::string_view name, const Variant& value);
// The child's font object.
Ref<StdFont> childFont(Widget& child);

// The backend of this thread; a control created without one raises a failure that says so.
Backend& backend();
void setBackend(std::shared_ptr<Backend> toolkit);
bool hasBackend();

}  // namespace tessaline::platform
