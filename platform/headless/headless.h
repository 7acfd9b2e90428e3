#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaline/platform/chart_viewer.h"
#include "tessaline/platform/settable_clock.h"
#include "tessaline/platform/widgets.h"
#include "tessaline/values/locale.h"
#include "tessaline/values/text.h"
#include "tessaline/values/vb_error.h"

// The headless backend: every child control in memory, with the behaviour of the classic
// controls that the composite controls rely on, and a user that tests drive: focus, click,
// keys, paste. An error that escapes a user's action (as an unhandled error in an event
// would) stops that action and is kept, so a test can see it and the process goes on.
namespace tessaline::headless {

class UserControl;

// Key codes of the keys that tests press.
namespace keys {
using platform::keys::kBack;
using platform::keys::kReturn;
inline constexpr int16_t kShift = 16;
inline constexpr int16_t kControl = 17;
inline constexpr int16_t kDelete = 46;
inline constexpr int16_t kPacket = 231;  // a character that has no key of its own
}  // namespace keys

// A tooltip window as the user would meet it: its style, owner, width, times and tools.
struct TooltipWindow {
  platform::WindowHandle handle = 0;
  platform::WindowHandle parent = 0;
  int32_t style = 0;
  int32_t maxWidth = -1;
  int32_t initialTime = 500;  // the platform's defaults until set
  int32_t visibleTime = 5000;
  int32_t reshowTime = 100;
  struct Tool {
    platform::WindowHandle window = 0;
    std::string text;
    int32_t flags = 0;
    int32_t width = 0;  // the client rectangle, in pixels
    int32_t height = 0;
  };
  std::vector<Tool> tools;
};

class Tooltips : public platform::TooltipService {
 public:
  platform::WindowHandle createTooltipWindow(platform::WindowHandle parent, int32_t style) override;
  void destroyWindow(platform::WindowHandle tooltip) override;
  void setMaxTipWidth(platform::WindowHandle tooltip, int32_t pixels) override;
  void setDelayTime(platform::WindowHandle tooltip, int32_t which, int32_t milliseconds) override;
  int32_t getDelayTime(platform::WindowHandle tooltip, int32_t which) override;
  void addTool(platform::WindowHandle tooltip, platform::WindowHandle window,
               const std::string& text, int32_t flags) override;

  // The live tooltip window owned by that window, or null.
  const TooltipWindow* ownedBy(platform::WindowHandle parent) const;
  // Live tooltip windows; creations and destructions so far.
  size_t liveCount() const { return live_.size(); }
  int32_t created() const { return created_; }
  int32_t destroyed() const { return destroyed_; }

 private:
  TooltipWindow* find(platform::WindowHandle tooltip);

  std::vector<TooltipWindow> live_;
  int32_t created_ = 0;
  int32_t destroyed_ = 0;
};

// Fixed metrics, so that sizes are the same on every machine: a character of a font of size
// s is about 0.85 s pixels wide (one more when bold), a line 1.6 s pixels high.
class FixedTextMeasure : public platform::TextMeasure {
 public:
  void measure(const std::string& text, const platform::FontFace& font, int32_t& width,
               int32_t& height) override;
};

// The clock of the headless backend: set by tests, and moved on by them. Timers fire as the
// clock passes their moments, in order, each handler running between the others; no test sleeps.
using Clock = platform::SettableClock;

class Backend : public platform::Backend {
 public:
  Backend();
  std::unique_ptr<platform::UserControl> createUserControl(const std::string& className) override;
  platform::Clipboard& clipboard() override { return clipboard_; }
  Tooltips& tooltips() override { return tooltips_; }
  FixedTextMeasure& textMeasure() override { return measure_; }
  Clock& clock() override { return clock_; }

  // Windows by handle, so that a tool can take a window's client rectangle.
  void registerWindow(platform::WindowHandle handle, std::function<void(int32_t&, int32_t&)> size);
  void unregisterWindow(platform::WindowHandle handle);
  // The client size of a window in pixels; false for a handle that names no window.
  bool clientSize(platform::WindowHandle handle, int32_t& width, int32_t& height) const;

  // Errors that escaped a user's action, oldest first; taking them clears the list.
  std::vector<VbError> takeUnhandledErrors();
  void recordUnhandled(const VbError& error) { unhandled_.push_back(error); }

  // The background of the form around every control; a device context paints white.
  platform::Color ambientBackColor = platform::colors::kWhite;

 private:
  class MemoryClipboard : public platform::Clipboard {
   public:
    void Clear() override { text_.clear(); }
    void SetText(const std::string& text) override { text_ = text; }
    std::string GetText() override { return text_; }

   private:
    std::string text_;
  };

  MemoryClipboard clipboard_;
  Tooltips tooltips_;
  FixedTextMeasure measure_;
  Clock clock_;
  std::vector<VbError> unhandled_;
  std::map<platform::WindowHandle, std::function<void(int32_t&, int32_t&)>> windows_;
};

// Installs a fresh headless backend and a locale with this decimal separator on the thread.
std::shared_ptr<Backend> install(const std::string& decimalSeparator = ".");
// The headless backend installed on this thread.
Backend& current();
// Changes the decimal separator of this thread's locale.
void setDecimalSeparator(const std::string& separator);

// A child that can hold the focus. The focus moves with the events of the classic
// controls: LostFocus of the old child, ExitFocus of each composite control that it leaves,
// EnterFocus of each that it enters (outermost first), GotFocus of the new child.
class Focusable {
 public:
  virtual ~Focusable();
  virtual UserControl& focusOwner() const = 0;
  virtual void raiseGotFocus() = 0;
  virtual void raiseLostFocus() = 0;
  bool hasFocus() const;
};
// Moves the focus to a child, or to nothing.
void moveFocus(Focusable* target);

// What every headless child keeps.
template <class Interface>
class Widget : public Interface {
 public:
  Widget(UserControl& owner, std::string name, platform::WindowHandle handle)
      : owner_(owner), name_(std::move(name)), handle_(handle) {}

  const std::string& Name() const override { return name_; }
  platform::WindowHandle hWnd() const override { return handle_; }
  bool Visible() const override { return visible_; }
  void Visible(bool value) override { visible_ = value; }
  bool Enabled() const override { return enabled_; }
  void Enabled(bool value) override { enabled_ = value; }
  int32_t Left() const override { return left_; }
  void Left(int32_t value) override { left_ = value; }
  int32_t Top() const override { return top_; }
  void Top(int32_t value) override { top_ = value; }
  int32_t Width() const override { return width_; }
  void Width(int32_t value) override { width_ = value; }
  int32_t Height() const override { return height_; }
  void Height(int32_t value) override { height_ = value; }
  platform::Color BackColor() const override { return backColor_; }
  void BackColor(platform::Color value) override { backColor_ = value; }
  platform::Color ForeColor() const override { return foreColor_; }
  void ForeColor(platform::Color value) override { foreColor_ = value; }
  int32_t TabIndex() const override { return tabIndex_; }
  void TabIndex(int32_t value) override { tabIndex_ = value; }
  std::string ToolTipText() const override { return toolTipText_; }
  void ToolTipText(const std::string& value) override { toolTipText_ = value; }
  Variant property(std::string_view name) const override {
    const auto found = properties_.find(toLowerAscii(std::string(name)));
    return found == properties_.end() ? Variant() : found->second;
  }
  void property(std::string_view name, const Variant& value) override {
    properties_[toLowerAscii(std::string(name))] = value;
  }

  UserControl& owner() const { return owner_; }
  platform::Frame* container() const { return container_; }
  void container(platform::Frame* frame) { container_ = frame; }
  // A user can reach a control that is visible and enabled.
  bool reachable() const { return visible_ && enabled_; }

 protected:
  UserControl& owner_;
  std::string name_;
  platform::WindowHandle handle_;
  bool visible_ = true;
  bool enabled_ = true;
  int32_t left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  platform::Color backColor_ = platform::colors::kWindow;
  platform::Color foreColor_ = platform::colors::kWindowText;
  int32_t tabIndex_ = 0;
  std::string toolTipText_;
  std::map<std::string, Variant> properties_;
  platform::Frame* container_ = nullptr;
};

class TextBox : public Widget<platform::TextBox>, public Focusable {
 public:
  TextBox(UserControl& owner, std::string name, platform::WindowHandle handle, bool multiLine);
  ~TextBox() override;

  std::string Text() const override { return text_; }
  void Text(const std::string& value) override;
  int32_t SelStart() const override { return selStart_; }
  void SelStart(int32_t value) override;
  int32_t SelLength() const override { return selLength_; }
  void SelLength(int32_t value) override;
  std::string SelText() const override;
  void SelText(const std::string& value) override;
  bool Locked() const override { return locked_; }
  void Locked(bool value) override { locked_ = value; }
  bool MultiLine() const override { return multiLine_; }

  // The user's actions. Each does nothing on a box that is invisible or disabled.
  // Tab into the box: the focus comes here (EnterFocus of the control, GotFocus).
  void focus();
  // A click in the box: the focus comes here, then Click.
  void click();
  // One key: KeyDown, then (for a key with a character) KeyPress and the edit, then KeyUp.
  void pressKey(int16_t keyCode, int16_t shift = 0, std::optional<int16_t> character = {});
  // Types each character of a UTF-8 text as one key, focusing the box first if needed.
  void type(std::string_view text);
  void backspace() { pressKey(keys::kBack, 0, keys::kBack); }
  // Ctrl with a letter: its key code, and the control character that the keyboard makes of it.
  void pressCtrl(char letter) {
    const auto code = static_cast<int16_t>(letter & ~0x20);
    pressKey(code, platform::shift::kCtrl, static_cast<int16_t>(code - 64));
  }
  // Selects with the mouse or the arrow keys: no event but the caret's move.
  void select(int32_t start, int32_t length);
  // Pastes with the mouse (the context menu): the clipboard's text replaces the selection,
  // with Change and no key event.
  void paste();
  // The focus leaves the box for nothing (a click on the empty form).
  void blur();

  UserControl& focusOwner() const override { return owner_; }
  void raiseGotFocus() override;
  void raiseLostFocus() override;

 private:
  void replaceSelection(const std::string& text);
  void applyCharacter(int16_t character);
  void setText(std::string text, int32_t caret);

  std::string text_;
  int32_t selStart_ = 0;
  int32_t selLength_ = 0;
  bool locked_ = false;
  bool multiLine_;
  char16_t pendingHighSurrogate_ = 0;
};

// Rows with a selection, for the combo box and the list box.
template <class Interface>
class ListRows : public Widget<Interface>, public Focusable {
 public:
  ListRows(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~ListRows() override;

  std::string List(int32_t index) const override;
  int32_t ListCount() const override { return static_cast<int32_t>(rows_.size()); }
  int32_t ListIndex() const override { return index_; }
  void ListIndex(int32_t value) override;
  std::string Text() const override { return index_ < 0 ? std::string() : rows_[index_]; }
  void Clear() override {
    rows_.clear();
    index_ = -1;
  }
  void AddItem(const std::string& item) override { rows_.push_back(item); }

  UserControl& focusOwner() const override { return this->owner_; }
  void raiseGotFocus() override;
  void raiseLostFocus() override;

  // The user's actions; nothing happens on a list that is invisible or disabled.
  void focus();
  void blur();

 protected:
  std::vector<std::string> rows_;
  int32_t index_ = -1;
};

class ComboBox : public ListRows<platform::ComboBox> {
 public:
  using ListRows::ListRows;

  void ShowDropDown(bool open) override { dropped_ = open; }
  bool DroppedDown() const override { return dropped_; }
  bool Locked() const override { return locked_; }
  void Locked(bool value) override { locked_ = value; }

  // The user opens the list with the arrow, moves the mouse over a row and clicks it. A locked
  // box opens and closes again with its row unchanged.
  void pick(int32_t row);
  // The user opens the list and moves the mouse over a row.
  void open();
  void hover(int32_t row) { hover_ = row; }
  // How each row of the open list is painted: by the control where it draws the rows, and
  // as the platform's plain rows (nothing here) where it doesn't. An error of the control's
  // drawing is kept as an unhandled error of the user's, and that row is the platform's.
  std::vector<std::optional<platform::RowPaint>> paintedRows() const;

 private:
  bool dropped_ = false;
  bool locked_ = false;
  int32_t hover_ = -1;
};

class ListBox : public ListRows<platform::ListBox> {
 public:
  using ListRows::ListRows;
  // The user clicks a row.
  void pick(int32_t row);
};

class Frame : public Widget<platform::Frame> {
 public:
  Frame(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~Frame() override;
};

class Label : public Widget<platform::Label> {
 public:
  using Widget::Widget;

  std::string Caption() const override { return caption_; }
  void Caption(const std::string& value) override;
  bool AutoSize() const override { return autoSize_; }
  void AutoSize(bool value) override;
  using Widget::property;
  // A new font refits a self-sizing label.
  void property(std::string_view name, const Variant& value) override;

  // A click on the label.
  void click();

 private:
  void fit();

  std::string caption_;
  bool autoSize_ = false;
};

class Image : public Widget<platform::Image> {
 public:
  using Widget::Widget;

  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override { picture_ = picture; }
  bool Stretch() const override { return stretch_; }
  void Stretch(bool value) override { stretch_ = value; }

  void click();

 private:
  Ref<Object> picture_;
  bool stretch_ = false;
};

// The chart viewer. A click and a drag act as the mouse does with the viewer's MouseUsage, at
// points given in pixels (15 twips each, as on a 96 dpi screen); a picture is shown as it is set.
class ChartViewer : public Widget<platform::ChartViewer> {
 public:
  ChartViewer(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~ChartViewer() override;

  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override;
  double ViewPortLeft() const override { return view_.left; }
  void ViewPortLeft(double value) override { view_.left = value; }
  double ViewPortTop() const override { return view_.top; }
  void ViewPortTop(double value) override { view_.top = value; }
  double ViewPortWidth() const override { return view_.width; }
  void ViewPortWidth(double value) override { view_.width = value; }
  double ViewPortHeight() const override { return view_.height; }
  void ViewPortHeight(double value) override { view_.height = value; }
  int32_t MouseUsage() const override { return mouseUsage_; }
  void MouseUsage(int32_t value) override { mouseUsage_ = value; }
  int32_t ZoomDirection() const override { return zoomDirection_; }
  void ZoomDirection(int32_t value) override { zoomDirection_ = value; }
  int32_t ScrollDirection() const override { return scrollDirection_; }
  void ScrollDirection(int32_t value) override { scrollDirection_ = value; }
  int32_t MousePointer() const override { return mousePointer_; }
  void MousePointer(int32_t value) override { mousePointer_ = value; }
  void updateViewPort(bool needUpdateChart, bool needUpdateImageMap) override;

  // A click at a point of the viewer, in pixels, with a button (1 left, 2 right, 4 middle):
  // MouseDown, then with the left button a zoom with MouseUsage 3 or 4.
  void click(int32_t x, int32_t y, int32_t button = 1);
  // A drag from one point to another, in pixels: MouseDown, then with the left button a scroll
  // with MouseUsage 1.
  void drag(int32_t fromX, int32_t fromY, int32_t toX, int32_t toY, int32_t button = 1);
  // How many pictures other than Nothing were set so far.
  int32_t picturesShown() const { return picturesShown_; }

 private:
  void changed();
  void mouseDown(int32_t button, int32_t x, int32_t y);

  Ref<Object> picture_;
  platform::ViewPort view_;
  int32_t mouseUsage_ = 0;
  int32_t zoomDirection_ = platform::ChartViewer::kDirectionBoth;
  int32_t scrollDirection_ = platform::ChartViewer::kDirectionBoth;
  int32_t mousePointer_ = 0;
  int32_t picturesShown_ = 0;
};

class OptionButton : public Widget<platform::OptionButton> {
 public:
  OptionButton(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~OptionButton() override;
  bool Value() const override { return value_; }
  void Value(bool value) override;
  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override { picture_ = picture; }

  // A click of the user on the button.
  void click();

 private:
  bool value_ = false;
  Ref<Object> picture_;
};

class CheckBox : public Widget<platform::CheckBox>, public Focusable {
 public:
  CheckBox(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~CheckBox() override;
  int16_t Value() const override { return value_; }
  void Value(int16_t value) override;
  std::string Caption() const override { return caption_; }
  void Caption(const std::string& value) override { caption_ = value; }
  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override { picture_ = picture; }

  // The user's actions; nothing happens on a box that is invisible or disabled.
  // A press and release of the mouse button over the box.
  void click();
  // Only the press, or only the release (the state changes at the release).
  void press();
  void release();
  // The space key on the box: the state toggles without a mouse event.
  void pressSpace();

  UserControl& focusOwner() const override { return owner_; }
  void raiseGotFocus() override;
  void raiseLostFocus() override;

 private:
  void toggle();
  int16_t value_ = 0;
  std::string caption_;
  Ref<Object> picture_;
};

// The fields of a date picker that a user types into.
enum class DateField { Year, Month, Day, Hour, Minute, Second };

class DatePicker : public Widget<platform::DatePicker>, public Focusable {
 public:
  DatePicker(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~DatePicker() override;
  DateSerial Value() const override { return value_; }
  void Value(DateSerial value) override;
  std::string CustomFormat() const override { return format_; }
  void CustomFormat(const std::string& value) override { format_ = value; }
  platform::Color CalendarBackColor() const override { return calendarBackColor_; }
  void CalendarBackColor(platform::Color value) override { calendarBackColor_ = value; }
  DateSerial MinDate() const override { return DateSerial{kMinDate}; }
  DateSerial MaxDate() const override { return DateSerial{kMaxDate}; }
  std::string Text() const override;

  // The user's actions; nothing happens on a picker that is invisible or disabled.
  // A click on the picker: the focus comes here, then Click.
  void click();
  // The user selects a field and types its new number, digit by digit: each digit is a key
  // (KeyDown, KeyPress, KeyUp), and with the last one the field takes the number and Change is
  // raised before its KeyUp. A number that the field can't hold (month 13, day 31 in April,
  // a date out of range) changes nothing.
  void typeField(DateField field, int32_t number);
  // The user opens the calendar (a click) and picks a day; the time of day stays.
  void pickFromCalendar(int32_t year, int32_t month, int32_t day);

  UserControl& focusOwner() const override { return owner_; }
  void raiseGotFocus() override;
  void raiseLostFocus() override;

 private:
  // Takes a date of the user's: refused outside the range, else set with Change.
  void userDate(double days);
  DateSerial value_{kDesignDate};
  std::string format_ = kDesignFormat;
  platform::Color calendarBackColor_ = platform::colors::kWindow;
};

class ScrollBar : public Widget<platform::ScrollBar> {
 public:
  ScrollBar(UserControl& owner, std::string name, platform::WindowHandle handle, bool horizontal);
  bool Horizontal() const override { return horizontal_; }
  int32_t Min() const override { return min_; }
  void Min(int32_t value) override { min_ = value; }
  int32_t Max() const override { return max_; }
  void Max(int32_t value) override { max_ = value; }
  int32_t Value() const override { return value_; }
  void Value(int32_t value) override;
  int32_t SmallChange() const override { return smallChange_; }
  void SmallChange(int32_t value) override { smallChange_ = value; }
  int32_t LargeChange() const override { return largeChange_; }
  void LargeChange(int32_t value) override { largeChange_ = value; }

  // The user drags the thumb to a value: Scroll at each step on the way, then Change.
  void drag(int32_t to, int32_t steps = 4);
  // A click on the track beyond the thumb (+1) or before it (-1): a large change.
  void clickTrack(int32_t direction);

 private:
  bool horizontal_;
  int32_t min_ = 0, max_ = 32767, value_ = 0, smallChange_ = 1, largeChange_ = 1;
};

class CommandButton : public Widget<platform::CommandButton>, public Focusable {
 public:
  CommandButton(UserControl& owner, std::string name, platform::WindowHandle handle);
  ~CommandButton() override;
  std::string Caption() const override { return caption_; }
  void Caption(const std::string& value) override { caption_ = value; }

  // A click of the user: the focus comes to the button, then Click.
  void click();
  UserControl& focusOwner() const override { return owner_; }
  void raiseGotFocus() override {}
  void raiseLostFocus() override {}

 private:
  std::string caption_;
};

// The entries live in one flat list with their parents' numbers, so no operation recurses.
class TreeView : public Widget<platform::TreeView> {
 public:
  using Widget::Widget;

  int32_t AddNode(int32_t parent, const std::string& key, const std::string& text) override;
  int32_t NodeCount() const override { return static_cast<int32_t>(nodes_.size()); }
  std::string NodeKey(int32_t node) const override { return at(node).key; }
  std::string NodeText(int32_t node) const override { return at(node).text; }
  int32_t NodeParent(int32_t node) const override { return at(node).parent; }
  Variant NodeTag(int32_t node) const override { return at(node).tag; }
  void NodeTag(int32_t node, const Variant& tag) override { at(node).tag = tag; }
  bool NodeExpanded(int32_t node) const override { return at(node).expanded; }
  void NodeExpanded(int32_t node, bool value) override { at(node).expanded = value; }
  int32_t SelectedNode() const override { return selected_; }
  void SelectNode(int32_t node) override;
  int32_t Indentation() const override { return indentation_; }
  void Indentation(int32_t value) override { indentation_ = value; }
  int32_t LineStyle() const override { return lineStyle_; }
  void LineStyle(int32_t value) override { lineStyle_ = value; }
  bool HideSelection() const override { return hideSelection_; }
  void HideSelection(bool value) override { hideSelection_ = value; }
  void Move(int32_t left, int32_t top, int32_t width, int32_t height) override;

  // The number of the entry with that key, 0 with none.
  int32_t find(const std::string& key) const;
  // A click of the user on an entry: it is selected, then NodeClick. Nothing happens on a
  // hidden or disabled tree.
  void click(int32_t node);

 private:
  struct Node {
    int32_t parent = 0;
    std::string key;
    std::string text;
    Variant tag;
    bool expanded = false;
  };
  Node& at(int32_t node);
  const Node& at(int32_t node) const;

  std::vector<Node> nodes_;
  std::map<std::string, int32_t> keys_;
  int32_t selected_ = 0;
  int32_t indentation_ = 0;
  int32_t lineStyle_ = 0;
  bool hideSelection_ = true;
};

class ShortcutBar : public Widget<platform::ShortcutBar> {
 public:
  using Widget::Widget;

  int32_t AddBar(const std::string& key, const std::string& caption,
                 const std::string& iconKey) override;
  int32_t BarCount() const override { return static_cast<int32_t>(bars_.size()); }
  std::string BarKey(int32_t bar) const override { return at(bar).key; }
  std::string BarCaption(int32_t bar) const override { return at(bar).caption; }
  platform::Widget* BarControl(int32_t bar) const override { return at(bar).content; }
  void BarControl(int32_t bar, platform::Widget* content) override { at(bar).content = content; }
  bool BarSelected(int32_t bar) const override { return at(bar).selected; }
  void BarSelected(int32_t bar, bool value) override;
  int32_t SelectedBar() const override { return selectedBar_; }
  void SelectedBar(int32_t bar) override;
  bool BarHasIcon(int32_t bar) const override { return icons_.count(at(bar).iconKey) > 0; }
  bool Redraw() const override { return redraw_; }
  void Redraw(bool value) override;
  int32_t Style() const override { return style_; }
  void Style(int32_t value) override { style_ = value; }
  int16_t Align() const override { return align_; }
  void Align(int16_t value) override { align_ = value; }
  bool LoadIconImageFromFile(const std::string& path, const std::string& key) override;

  // A click of the user on a bar's caption: the bar opens, then BarClick.
  void click(int32_t bar);
  // How often the bar was repainted by Redraw true.
  int32_t repaints() const { return repaints_; }
  // The paths that LoadIconImageFromFile was asked to open, in order.
  const std::vector<std::string>& openedPaths() const { return opened_; }

 private:
  struct Bar {
    std::string key;
    std::string caption;
    std::string iconKey;
    platform::Widget* content = nullptr;
    bool selected = false;
  };
  Bar& at(int32_t bar);
  const Bar& at(int32_t bar) const;

  std::vector<Bar> bars_;
  std::map<std::string, Ref<Object>> icons_;
  std::vector<std::string> opened_;
  int32_t selectedBar_ = 0;
  int32_t style_ = 0;
  int32_t repaints_ = 0;
  int16_t align_ = 0;
  bool redraw_ = true;
};

class UserControl : public platform::UserControl {
 public:
  UserControl(std::string className, UserControl* parent, platform::WindowHandle handle);
  ~UserControl() override;

  const std::string& ClassName() const override { return className_; }
  platform::WindowHandle hWnd() const override { return handle_; }
  int32_t Width() const override { return width_; }
  void Width(int32_t value) override;
  int32_t Height() const override { return height_; }
  void Height(int32_t value) override;
  bool Visible() const override { return visible_; }
  void Visible(bool value) override { visible_ = value; }
  int32_t Left() const override { return left_; }
  void Left(int32_t value) override { left_ = value; }
  int32_t Top() const override { return top_; }
  void Top(int32_t value) override { top_ = value; }
  int32_t TabIndex() const override { return tabIndex_; }
  void TabIndex(int32_t value) override { tabIndex_ = value; }
  void PropertyChanged(const std::string& name) override;
  platform::Color AmbientBackColor() const override { return current().ambientBackColor; }

  std::unique_ptr<platform::TextBox> createTextBox(const std::string& name,
                                                   bool multiLine) override;
  std::unique_ptr<platform::Label> createLabel(const std::string& name) override;
  std::unique_ptr<platform::Image> createImage(const std::string& name) override;
  std::unique_ptr<platform::ComboBox> createComboBox(const std::string& name) override;
  std::unique_ptr<platform::ListBox> createListBox(const std::string& name) override;
  std::unique_ptr<platform::Frame> createFrame(const std::string& name) override;
  std::unique_ptr<platform::ChartViewer> createChartViewer(const std::string& name) override;
  std::unique_ptr<platform::OptionButton> createOptionButton(const std::string& name) override;
  std::unique_ptr<platform::ScrollBar> createScrollBar(const std::string& name,
                                                       bool horizontal) override;
  std::unique_ptr<platform::Timer> createTimer(const std::string& name) override;
  std::unique_ptr<platform::CheckBox> createCheckBox(const std::string& name) override;
  std::unique_ptr<platform::DatePicker> createDatePicker(const std::string& name) override;
  std::unique_ptr<platform::CommandButton> createCommandButton(const std::string& name) override;
  std::unique_ptr<platform::TreeView> createTreeView(const std::string& name) override;
  std::unique_ptr<platform::ShortcutBar> createShortcutBar(const std::string& name) override;
  platform::Widget& Controls_Add(const std::string& progId, const std::string& name) override;
  void Controls_Remove(const std::string& name) override;
  platform::Widget* Controls(const std::string& name) override;
  void Container(platform::Widget& child, platform::Frame* frame) override;
  std::unique_ptr<platform::UserControl> createChildControl(const std::string& className) override;

  UserControl* parent() const { return parent_; }
  // The option buttons on this control, of which one is pressed per container.
  std::vector<OptionButton*>& optionButtons() { return optionButtons_; }
  // The names of the property-changed notifications, in order; taking them clears the list.
  std::vector<std::string> takePropertyChanges();
  // The user resizes the control on the form.
  void resize(int32_t width, int32_t height);

 private:
  std::string className_;
  UserControl* parent_;
  platform::WindowHandle handle_;
  int32_t width_ = 0, height_ = 0, left_ = 0, top_ = 0, tabIndex_ = 0;
  bool visible_ = true;
  std::deque<std::string> propertyChanges_;
  std::map<std::string, std::unique_ptr<platform::Widget>> added_;
  std::vector<OptionButton*> optionButtons_;
};

// The headless object behind a child or window that the headless backend made.
TextBox& user(platform::TextBox& box);
Label& user(platform::Label& label);
Image& user(platform::Image& image);
ChartViewer& user(platform::ChartViewer& viewer);
ComboBox& user(platform::ComboBox& combo);
ListBox& user(platform::ListBox& list);
OptionButton& user(platform::OptionButton& button);
ScrollBar& user(platform::ScrollBar& bar);
CheckBox& user(platform::CheckBox& box);
DatePicker& user(platform::DatePicker& picker);
UserControl& user(platform::UserControl& window);
CommandButton& user(platform::CommandButton& button);
TreeView& user(platform::TreeView& tree);
ShortcutBar& user(platform::ShortcutBar& bar);

}  // namespace tessaline::headless
