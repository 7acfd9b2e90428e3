#pragma once

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFrame>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolBox>
#include <QToolButton>
#include <QTreeWidget>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tessaline/platform/chart_viewer.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/platform/text_editing.h"
#include "tessaline/platform/widgets.h"

// The widgets of the Qt backend. Each class maps one interface of platform/widgets.h to a Qt
// widget and nothing more: the rules that the composite controls rely on are those of the
// interface, the state that the Qt widget holds is read from it, and what Qt does by itself
// (its own editing, its own signals for changes made by program) is kept out where the classic
// control behaves otherwise.
namespace tessaline::qt {

class UserControl;

// A colour of the controls (0x00BBGGRR or a system colour 0x800000nn) as Qt paints it, and back.
QColor qtColor(platform::Color color);
platform::Color classicColor(const QColor& color);
QString qtText(const std::string& text);
std::string utf8(const QString& text);

// Runs what Qt delivered of a user's action (its event handlers); an error that escapes it
// stops it and is kept as unhandled, and never reaches Qt. True when it ran to its end.
bool userAction(const std::function<void()>& action);

// What every Qt child keeps beside its widget: the name, the handle, the lengths in twips (the
// widget's geometry follows in pixels), the place in its control's tab order, and the
// pass-through properties, of which these also reach the widget once they are set:
// - Font, on every widget; Alignment, on labels and single-line text boxes.
// - BorderStyle (0 none, 1 fixed single) and Appearance (0 flat, 1 3-D): on the widgets that
//   Qt gives a frame of their own (labels, images, frames, multi-line text boxes, list boxes,
//   trees, shortcut bars) a 3-D border is a sunken panel and a flat one a single line. A
//   single-line text box shows BorderStyle as its frame or none; Qt's line edit has one kind of
//   frame, so Appearance doesn't show on it. Command and option buttons are flat (raised only
//   under the mouse) with Appearance 0.
// - BackStyle on labels: 0 transparent (the container shows through), 1 opaque.
// On combo boxes, check boxes, date pickers and scroll bars Qt draws one look of its style:
// Appearance and BorderStyle are only kept there.
template <class Interface, class QtWidget>
class Child : public Interface {
 public:
  Child(UserControl& owner, std::string name, QtWidget* widget, bool windowed);
  ~Child() override;

  const std::string& Name() const override { return name_; }
  platform::WindowHandle hWnd() const override { return handle_; }
  bool Visible() const override { return visible_; }
  void Visible(bool value) override;
  bool Enabled() const override { return enabled_; }
  void Enabled(bool value) override;
  int32_t Left() const override { return left_; }
  void Left(int32_t value) override;
  int32_t Top() const override { return top_; }
  void Top(int32_t value) override;
  int32_t Width() const override { return width_; }
  void Width(int32_t value) override;
  int32_t Height() const override { return height_; }
  void Height(int32_t value) override;
  platform::Color BackColor() const override { return backColor_; }
  void BackColor(platform::Color value) override;
  platform::Color ForeColor() const override { return foreColor_; }
  void ForeColor(platform::Color value) override;
  int32_t TabIndex() const override { return tabIndex_; }
  // The control's tab order follows.
  void TabIndex(int32_t value) override;
  std::string ToolTipText() const override { return toolTipText_; }
  void ToolTipText(const std::string& value) override;
  Variant property(std::string_view name) const override;
  void property(std::string_view name, const Variant& value) override;

  QtWidget* widget() const { return widget_; }
  UserControl& owner() const { return owner_; }
  // A user can reach a widget that is visible and enabled.
  bool reachable() const { return visible_ && enabled_; }

 protected:
  void place();
  virtual void applyColors();
  // Whether the widget paints its background.
  virtual bool opaque() const { return true; }
  // BorderStyle and Appearance on the widget, as they read now.
  virtual void applyLook();

  UserControl& owner_;
  std::string name_;
  QPointer<QtWidget> widget_;
  platform::WindowHandle handle_;
  bool visible_ = true;
  bool enabled_ = true;
  int32_t left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  platform::Color backColor_ = platform::colors::kWindow;
  platform::Color foreColor_ = platform::colors::kWindowText;
  int32_t tabIndex_ = 0;
  std::string toolTipText_;
  std::map<std::string, Variant> properties_;
};

// The edit control on a QLineEdit or, multi-line, a QPlainTextEdit. Typed characters go through
// KeyPress and the classic rules (platform/text_editing.h); keys without a character (arrows,
// Delete) are Qt's, and a change they make raises Change as any change does.
class TextBox : public Child<platform::TextBox, QWidget> {
 public:
  TextBox(UserControl& owner, const std::string& name, bool multiLine);

  std::string Text() const override;
  void Text(const std::string& value) override;
  int32_t SelStart() const override;
  void SelStart(int32_t value) override;
  int32_t SelLength() const override;
  void SelLength(int32_t value) override;
  std::string SelText() const override;
  void SelText(const std::string& value) override;
  bool Locked() const override { return locked_; }
  void Locked(bool value) override;
  bool MultiLine() const override { return multiLine_; }

  // Qt's events, turned into the control's.
  // A key pressed on the widget: true when Qt is to do nothing more with it.
  bool keyPress(QKeyEvent* event);
  void keyRelease(int qtKey, Qt::KeyboardModifiers modifiers);
  void textChangedByQt();
  void raiseClick() {
    userAction([&] { raise(events.Click); });
  }
  void raiseDblClick() {
    userAction([&] { raise(events.DblClick); });
  }

 private:
  template <class Handler, class... Args>
  static void raise(const Handler& handler, Args&... args) {
    if (handler) handler(args...);
  }
  QString qtTextNow() const;
  void selection(int& anchor, int& position) const;
  platform::EditState state() const;
  void show(const platform::EditState& edit);

  void applyLook() override;

  QLineEdit* line_ = nullptr;
  QPlainTextEdit* lines_ = nullptr;
  bool multiLine_;
  bool locked_ = false;
  char16_t pendingHighSurrogate_ = 0;
  // Changes made by this class raise Change themselves; Qt's signal for them is not wanted.
  bool ownChange_ = false;
  // The key whose press an error stopped: its release raises no KeyUp.
  int stoppedKey_ = 0;
};

class Label : public Child<platform::Label, QLabel> {
 public:
  Label(UserControl& owner, const std::string& name);
  std::string Caption() const override { return caption_; }
  void Caption(const std::string& value) override;
  bool AutoSize() const override { return autoSize_; }
  void AutoSize(bool value) override;
  using Child::property;
  void property(std::string_view name, const Variant& value) override;

 private:
  // BackStyle 0 lets the container show through.
  bool opaque() const override;
  void fit();
  std::string caption_;
  bool autoSize_ = false;
};

class Image : public Child<platform::Image, QLabel> {
 public:
  Image(UserControl& owner, const std::string& name);
  ~Image() override = default;
  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override;
  bool Stretch() const override { return stretch_; }
  void Stretch(bool value) override;

 private:
  // An image control has no background of its own: its container shows around the picture.
  void applyColors() override {}

  Ref<Object> picture_;
  bool stretch_ = false;
};

class Frame : public Child<platform::Frame, QFrame> {
 public:
  Frame(UserControl& owner, const std::string& name);
};

// The rows of a combo box or a list box. Clear and AddItem raise nothing; a row selected by
// program raises Click once, and so does a row the user picks.
template <class Interface, class QtWidget>
class Rows : public Child<Interface, QtWidget> {
 public:
  using Child<Interface, QtWidget>::Child;
  std::string List(int32_t index) const override;
  int32_t ListCount() const override;
  int32_t ListIndex() const override { return index_; }
  void ListIndex(int32_t value) override;
  std::string Text() const override { return List(index_); }
  void Clear() override;
  void AddItem(const std::string& item) override;

 protected:
  // A row that the user picked in the widget.
  void pickedByUser(int row);
  virtual void showRow(int row) = 0;

  int32_t index_ = -1;
};

class ComboBox : public Rows<platform::ComboBox, QComboBox> {
 public:
  ComboBox(UserControl& owner, const std::string& name);
  bool Locked() const override { return locked_; }
  void Locked(bool value) override { locked_ = value; }
  void ShowDropDown(bool open) override;
  bool DroppedDown() const override;

 protected:
  void showRow(int row) override;

 private:
  bool locked_ = false;
};

class ListBox : public Rows<platform::ListBox, QListWidget> {
 public:
  ListBox(UserControl& owner, const std::string& name);

 protected:
  void showRow(int row) override;
};

// The chart viewer: the picture drawn straight from its pixels (cairo's ARGB32 is Qt's
// premultiplied ARGB32), a click that zooms and a drag that scrolls as MouseUsage says. Charts
// are drawn at 15 twips a pixel, the widget is sized at the screen's resolution: on a screen of
// another resolution than 96 dpi the picture is scaled by chartScale() to the widget, and the
// mouse is mapped back to the chart's pixels, so that the controls see the same coordinates on
// every screen.
class ChartViewer : public Child<platform::ChartViewer, QWidget> {
 public:
  ChartViewer(UserControl& owner, const std::string& name);
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
  void MousePointer(int32_t value) override;
  void updateViewPort(bool needUpdateChart, bool needUpdateImageMap) override;

  // The mouse, in pixels of the chart (the widget's pixels divided by chartScale()).
  // A button pressed on the viewer (1 left, 2 right, 4 middle) with the shift state: MouseDown,
  // before the release of the left button decides between a click and a drag.
  void press(int32_t button, int32_t shift, double x, double y);
  // The left button's click and drag; the other buttons only raise MouseDown.
  void click(double x, double y);
  void drag(double fromX, double fromY, double toX, double toY);
  // The picture's pixels as Qt paints them, sharing their memory; null without a picture.
  const QImage& image() const { return image_; }

 private:
  Ref<Object> picture_;
  QImage image_;
  platform::ViewPort view_;
  int32_t mouseUsage_ = 0;
  int32_t zoomDirection_ = platform::ChartViewer::kDirectionBoth;
  int32_t scrollDirection_ = platform::ChartViewer::kDirectionBoth;
  int32_t mousePointer_ = 0;
};

// The option button on a checkable QToolButton: Qt keeps one pressed among the buttons of one
// parent, as the classic container does.
class OptionButton : public Child<platform::OptionButton, QToolButton> {
 public:
  OptionButton(UserControl& owner, const std::string& name);
  bool Value() const override { return widget_ && widget_->isChecked(); }
  void Value(bool value) override;
  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override;

 private:
  Ref<Object> picture_;
};

// The check box on a QCheckBox whose mouse and space key this class handles itself, so that
// the state changes, Click and MouseUp come in the classic order and grayed goes to checked.
class CheckBox : public Child<platform::CheckBox, QCheckBox> {
 public:
  CheckBox(UserControl& owner, const std::string& name);
  int16_t Value() const override { return value_; }
  void Value(int16_t value) override;
  std::string Caption() const override;
  void Caption(const std::string& value) override;
  Ref<Object> Picture() const override { return picture_; }
  void Picture(const Ref<Object>& picture) override;

 private:
  void toggle();
  int16_t value_ = 0;
  Ref<Object> picture_;
};

// The date and time picker on a QDateTimeEdit with a calendar popup. The date is kept here to
// the fraction of a second; the Qt widget shows it, and only its user's changes raise Change.
class DatePicker : public Child<platform::DatePicker, QDateTimeEdit> {
 public:
  DatePicker(UserControl& owner, const std::string& name);
  ~DatePicker() override;
  DateSerial Value() const override { return value_; }
  void Value(DateSerial value) override;
  std::string CustomFormat() const override { return format_; }
  void CustomFormat(const std::string& value) override;
  platform::Color CalendarBackColor() const override { return calendarBackColor_; }
  void CalendarBackColor(platform::Color value) override;
  DateSerial MinDate() const override { return DateSerial{kMinDate}; }
  DateSerial MaxDate() const override { return DateSerial{kMaxDate}; }
  std::string Text() const override;

 private:
  void show();
  void changedByQt(const QDateTime& moment);
  bool onEvent(QEvent* event);
  void raiseClick();
  DateSerial value_{kDesignDate};
  std::string format_ = kDesignFormat;
  platform::Color calendarBackColor_ = platform::colors::kWindow;
  bool ownChange_ = false;
  // The key whose press an error stopped: its release raises no KeyUp.
  int stoppedKey_ = 0;
  // The filters of the picker and its fields, which call this object: they go with it, before
  // the widget's own end sends its last events (the focus that leaves).
  QPointer<QObject> filter_, fieldsFilter_;
};

class ScrollBar : public Child<platform::ScrollBar, QScrollBar> {
 public:
  ScrollBar(UserControl& owner, const std::string& name, bool horizontal);
  bool Horizontal() const override { return horizontal_; }
  int32_t Min() const override { return min_; }
  void Min(int32_t value) override;
  int32_t Max() const override { return max_; }
  void Max(int32_t value) override;
  int32_t Value() const override { return value_; }
  void Value(int32_t value) override;
  int32_t SmallChange() const override { return smallChange_; }
  void SmallChange(int32_t value) override;
  int32_t LargeChange() const override { return largeChange_; }
  void LargeChange(int32_t value) override;

 private:
  void range();
  bool horizontal_;
  int32_t min_ = 0, max_ = 32767, value_ = 0, smallChange_ = 1, largeChange_ = 1;
};

// The command button on a QPushButton: a click of the user raises Click.
class CommandButton : public Child<platform::CommandButton, QPushButton> {
 public:
  CommandButton(UserControl& owner, const std::string& name);
  std::string Caption() const override { return caption_; }
  void Caption(const std::string& value) override;

 private:
  std::string caption_;
};

// The tree on a QTreeWidget. The entries are also kept in a flat list by number, so that no
// operation of ours recurses. Entries added while the tree isn't shown are built apart from the
// widget and handed to it in one step when it shows (with their expanded state and the
// selection): Qt's model would otherwise update every expanded entry at each insertion, which
// makes a deep menu quadratic. They are taken out of the widget in one step and deleted deepest
// first, so that nothing recurses through them. The widget shows only once a shortcut bar
// holds it.
class TreeView : public Child<platform::TreeView, QTreeWidget> {
 public:
  TreeView(UserControl& owner, const std::string& name);
  ~TreeView() override;

  using Child::Visible;
  void Visible(bool value) override;
  int32_t AddNode(int32_t parent, const std::string& key, const std::string& text) override;
  int32_t NodeCount() const override { return static_cast<int32_t>(nodes_.size()); }
  std::string NodeKey(int32_t node) const override { return at(node).key; }
  std::string NodeText(int32_t node) const override;
  int32_t NodeParent(int32_t node) const override { return at(node).parent; }
  Variant NodeTag(int32_t node) const override { return at(node).tag; }
  void NodeTag(int32_t node, const Variant& tag) override { at(node).tag = tag; }
  bool NodeExpanded(int32_t node) const override;
  void NodeExpanded(int32_t node, bool value) override;
  int32_t SelectedNode() const override { return selected_; }
  void SelectNode(int32_t node) override;
  int32_t Indentation() const override { return indentation_; }
  void Indentation(int32_t value) override;
  int32_t LineStyle() const override { return lineStyle_; }
  void LineStyle(int32_t value) override;
  bool HideSelection() const override { return hideSelection_; }
  void HideSelection(bool value) override { hideSelection_ = value; }
  void Move(int32_t left, int32_t top, int32_t width, int32_t height) override;

  // The Qt item of an entry, for a user that clicks it.
  QTreeWidgetItem* item(int32_t node) const { return at(node).item; }
  // A shortcut bar took the widget into one of its pages.
  void attached();

 private:
  struct Node {
    int32_t parent = 0;
    std::string key;
    Variant tag;
    QTreeWidgetItem* item = nullptr;
    bool expanded = false;
  };
  Node& at(int32_t node);
  const Node& at(int32_t node) const;
  // Hands the entries built apart to the widget, once it is to be seen.
  void flush();

  std::vector<Node> nodes_;
  std::vector<QTreeWidgetItem*> pendingTop_;
  bool flushed_ = false;
  std::map<std::string, int32_t> keys_;
  int32_t selected_ = 0;
  int32_t indentation_ = 0;
  int32_t lineStyle_ = 0;
  bool hideSelection_ = true;
  bool attached_ = false;
};

// The shortcut bar on a QToolBox: one page per bar, holding the bar's content.
class ShortcutBar : public Child<platform::ShortcutBar, QToolBox> {
 public:
  ShortcutBar(UserControl& owner, const std::string& name);

  int32_t AddBar(const std::string& key, const std::string& caption,
                 const std::string& iconKey) override;
  int32_t BarCount() const override { return static_cast<int32_t>(bars_.size()); }
  std::string BarKey(int32_t bar) const override { return at(bar).key; }
  std::string BarCaption(int32_t bar) const override { return at(bar).caption; }
  platform::Widget* BarControl(int32_t bar) const override { return at(bar).content; }
  void BarControl(int32_t bar, platform::Widget* content) override;
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

 private:
  struct Bar {
    std::string key;
    std::string caption;
    std::string iconKey;
    platform::Widget* content = nullptr;
    QWidget* page = nullptr;
    bool selected = false;
  };
  Bar& at(int32_t bar);
  const Bar& at(int32_t bar) const;

  std::vector<Bar> bars_;
  std::map<std::string, QIcon> icons_;
  int32_t selectedBar_ = 0;
  int32_t style_ = 0;
  int16_t align_ = 0;
  bool redraw_ = true;
};

class Timer : public platform::Timer {
 public:
  explicit Timer(std::string name);
  const std::string& Name() const override { return name_; }
  int32_t Interval() const override { return interval_; }
  void Interval(int32_t milliseconds) override;
  bool Enabled() const override { return enabled_; }
  void Enabled(bool value) override;

 private:
  void restart();
  std::string name_;
  int32_t interval_ = 0;
  bool enabled_ = false;
  QTimer timer_;
};

class UserControl : public platform::UserControl {
 public:
  UserControl(std::string className, UserControl* parent);
  ~UserControl() override;

  const std::string& ClassName() const override { return className_; }
  platform::WindowHandle hWnd() const override { return handle_; }
  int32_t Width() const override { return width_; }
  void Width(int32_t value) override;
  int32_t Height() const override { return height_; }
  void Height(int32_t value) override;
  bool Visible() const override { return visible_; }
  void Visible(bool value) override;
  int32_t Left() const override { return left_; }
  void Left(int32_t value) override;
  int32_t Top() const override { return top_; }
  void Top(int32_t value) override;
  int32_t TabIndex() const override { return tabIndex_; }
  void TabIndex(int32_t value) override;
  void PropertyChanged(const std::string&) override {}
  platform::Color AmbientBackColor() const override;
  Ref<platform::StdFont> AmbientFont() const override;

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

  QWidget* widget() const { return widget_; }
  UserControl* parent() const { return parent_; }

  // The tab order: Tab goes through the windows of a control's children by their TabIndex,
  // those of equal TabIndex in the order they were made; a composite control on this one is
  // one place in the order, its own children taking their turn there in their order.
  void addTabStop(QWidget* widget, const platform::Widget* child);
  // Puts the tab order of the outermost control, and so of this one, in place.
  void orderTabs();

 private:
  struct TabStop {
    QPointer<QWidget> widget;
    // The child, or else the composite control, whose TabIndex gives the place; read only
    // while the widget lives.
    const platform::Widget* child = nullptr;
    const UserControl* control = nullptr;
  };
  void place();
  // The widgets that take the focus, in the tab order of this control.
  void tabChain(std::vector<QWidget*>& chain) const;

  std::string className_;
  UserControl* parent_;
  QPointer<QWidget> widget_;
  platform::WindowHandle handle_;
  int32_t width_ = 0, height_ = 0, left_ = 0, top_ = 0, tabIndex_ = 0;
  bool visible_ = true;
  std::map<std::string, std::unique_ptr<platform::Widget>> added_;
  std::vector<TabStop> tabStops_;
};

// The window handles that this backend hands out, with their widgets.
platform::WindowHandle registerWindow(QWidget* widget);
void unregisterWindow(platform::WindowHandle handle);
QWidget* windowOf(platform::WindowHandle handle);
// The composite control that a widget belongs to, and the child it is, for focus changes.
void registerChild(QWidget* widget, UserControl& owner, platform::Widget& child);
void unregisterChild(QWidget* widget);

}  // namespace tessaline::qt
