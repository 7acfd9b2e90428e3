#include "tessaline/platform/headless/headless.h"

#include <algorithm>
#include <cmath>

#include "tessaline/platform/picture.h"
#include "tessaline/platform/text_editing.h"
#include "tessaline/values/dates.h"

namespace tessaline::headless {

namespace {

// Widgets may outlive the backend (a test's controls die after its backend is removed), so
// they reach it through a weak reference.
std::weak_ptr<Backend>& installedBackend() {
  thread_local std::weak_ptr<Backend> backend;
  return backend;
}

void unregister(platform::WindowHandle handle) {
  if (auto backend = installedBackend().lock()) backend->unregisterWindow(handle);
}

platform::WindowHandle nextHandle() {
  thread_local platform::WindowHandle next = 0x1000;
  return next += 4;
}

Focusable*& focusedChild() {
  thread_local Focusable* focused = nullptr;
  return focused;
}

template <class Handler, class... Args>
void raise(const Handler& handler, Args&... args) {
  if (handler) handler(args...);
}

// An error that escapes a user's action stops it and is kept by the backend.
template <class Action>
void userAction(Action&& action) {
  try {
    action();
  } catch (...) {
    current().recordUnhandled(VbError::from(std::current_exception()));
  }
}

std::vector<UserControl*> ownersOf(Focusable* child) {
  std::vector<UserControl*> chain;
  for (UserControl* c = child ? &child->focusOwner() : nullptr; c; c = c->parent()) {
    chain.push_back(c);
  }
  return chain;
}

bool contains(const std::vector<UserControl*>& chain, UserControl* c) {
  return std::find(chain.begin(), chain.end(), c) != chain.end();
}

// The key that types a character, as the keyboard reports it.
int16_t keyCodeOf(char32_t c, int16_t& shiftState) {
  shiftState = 0;
  if (c >= 'a' && c <= 'z') return static_cast<int16_t>(c - 'a' + 'A');
  if (c >= 'A' && c <= 'Z') {
    shiftState = platform::shift::kShift;
    return static_cast<int16_t>(c);
  }
  if ((c >= '0' && c <= '9') || c == ' ') return static_cast<int16_t>(c);
  switch (c) {
    case '.':
      return 190;
    case ',':
      return 188;
    case '-':
      return 189;
    case '\r':
      return keys::kReturn;
    case '\b':
      return keys::kBack;
    default:
      return keys::kPacket;
  }
}

}  // namespace

std::vector<VbError> Backend::takeUnhandledErrors() {
  std::vector<VbError> errors;
  errors.swap(unhandled_);
  return errors;
}

Backend::Backend() : clock_([](const platform::Handler& handler) { userAction(handler); }) {}

std::unique_ptr<platform::UserControl> Backend::createUserControl(const std::string& className) {
  return std::make_unique<UserControl>(className, nullptr, nextHandle());
}

void Backend::registerWindow(platform::WindowHandle handle,
                             std::function<void(int32_t&, int32_t&)> size) {
  windows_[handle] = std::move(size);
}

void Backend::unregisterWindow(platform::WindowHandle handle) { windows_.erase(handle); }

bool Backend::clientSize(platform::WindowHandle handle, int32_t& width, int32_t& height) const {
  const auto found = windows_.find(handle);
  if (found == windows_.end()) return false;
  found->second(width, height);
  return true;
}

// ---- Tooltips ----

platform::WindowHandle Tooltips::createTooltipWindow(platform::WindowHandle parent, int32_t style) {
  TooltipWindow window;
  window.handle = nextHandle();
  window.parent = parent;
  window.style = style;
  live_.push_back(window);
  ++created_;
  return window.handle;
}

void Tooltips::destroyWindow(platform::WindowHandle tooltip) {
  for (auto it = live_.begin(); it != live_.end(); ++it) {
    if (it->handle == tooltip) {
      live_.erase(it);
      ++destroyed_;
      return;
    }
  }
}

TooltipWindow* Tooltips::find(platform::WindowHandle tooltip) {
  for (TooltipWindow& window : live_) {
    if (window.handle == tooltip) return &window;
  }
  return nullptr;
}

void Tooltips::setMaxTipWidth(platform::WindowHandle tooltip, int32_t pixels) {
  if (TooltipWindow* window = find(tooltip)) window->maxWidth = pixels;
}

void Tooltips::setDelayTime(platform::WindowHandle tooltip, int32_t which, int32_t milliseconds) {
  TooltipWindow* window = find(tooltip);
  if (!window) return;
  if (which == kInitial) window->initialTime = milliseconds;
  if (which == kAutoPop) window->visibleTime = milliseconds;
  if (which == kReshow) window->reshowTime = milliseconds;
}

int32_t Tooltips::getDelayTime(platform::WindowHandle tooltip, int32_t which) {
  TooltipWindow* window = find(tooltip);
  if (!window) return 0;
  if (which == kInitial) return window->initialTime;
  if (which == kAutoPop) return window->visibleTime;
  if (which == kReshow) return window->reshowTime;
  return 0;
}

void Tooltips::addTool(platform::WindowHandle tooltip, platform::WindowHandle window,
                       const std::string& text, int32_t flags) {
  TooltipWindow* owner = find(tooltip);
  if (!owner) return;
  TooltipWindow::Tool tool{window, text, flags, 0, 0};
  current().clientSize(window, tool.width, tool.height);
  owner->tools.push_back(tool);
}

const TooltipWindow* Tooltips::ownedBy(platform::WindowHandle parent) const {
  for (auto it = live_.rbegin(); it != live_.rend(); ++it) {
    if (it->parent == parent) return &*it;
  }
  return nullptr;
}

std::shared_ptr<Backend> install(const std::string& decimalSeparator) {
  auto backend = std::make_shared<Backend>();
  platform::setBackend(backend);
  installedBackend() = backend;
  setDecimalSeparator(decimalSeparator);
  focusedChild() = nullptr;
  return backend;
}

Backend& current() {
  auto backend = installedBackend().lock();
  if (!backend || !platform::hasBackend() || &platform::backend() != backend.get()) {
    throw VbError(err::Failed, "The headless backend is not installed on this thread");
  }
  return *backend;
}

void setDecimalSeparator(const std::string& separator) {
  setLocale(std::make_shared<FixedLocale>(separator));
}

Focusable::~Focusable() {
  if (focusedChild() == this) focusedChild() = nullptr;
}

bool Focusable::hasFocus() const { return focusedChild() == this; }

void moveFocus(Focusable* target) {
  Focusable* old = focusedChild();
  if (old == target) return;
  const std::vector<UserControl*> left = ownersOf(old);
  const std::vector<UserControl*> entered = ownersOf(target);
  focusedChild() = target;
  if (old) old->raiseLostFocus();
  for (UserControl* c : left) {
    if (!contains(entered, c)) raise(c->events.ExitFocus);
  }
  for (auto c = entered.rbegin(); c != entered.rend(); ++c) {
    if (!contains(left, *c)) raise((*c)->events.EnterFocus);
  }
  if (target) target->raiseGotFocus();
}

// ---- ChartViewer ----

ChartViewer::ChartViewer(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

ChartViewer::~ChartViewer() { unregister(handle_); }

void ChartViewer::Picture(const Ref<Object>& picture) {
  picture_ = picture;
  if (picture) ++picturesShown_;
}

void ChartViewer::changed() {
  if (viewerEvents.ViewPortChanged) viewerEvents.ViewPortChanged(true, false);
}

void ChartViewer::updateViewPort(bool needUpdateChart, bool needUpdateImageMap) {
  view_ = platform::clampViewPort(view_);
  if (viewerEvents.ViewPortChanged)
    viewerEvents.ViewPortChanged(needUpdateChart, needUpdateImageMap);
}

void ChartViewer::mouseDown(int32_t button, int32_t x, int32_t y) {
  if (!viewerEvents.MouseDown) return;
  userAction(
      [&] { viewerEvents.MouseDown(button, 0, static_cast<float>(x), static_cast<float>(y)); });
}

void ChartViewer::click(int32_t x, int32_t y, int32_t button) {
  if (!reachable()) return;
  mouseDown(button, x, y);
  if (button != 1 || (mouseUsage_ != kMouseZoomIn && mouseUsage_ != kMouseZoomOut)) return;
  userAction([&] {
    const int32_t pixelsWide = width_ / 15, pixelsHigh = height_ / 15;
    const double fx = pixelsWide > 0 ? static_cast<double>(x) / pixelsWide : 0.5;
    const double fy = pixelsHigh > 0 ? static_cast<double>(y) / pixelsHigh : 0.5;
    view_ = platform::zoomAround(
        view_, fx, fy, mouseUsage_ == kMouseZoomIn ? kZoomStep : 1 / kZoomStep, zoomDirection_);
    changed();
  });
}

void ChartViewer::drag(int32_t fromX, int32_t fromY, int32_t toX, int32_t toY, int32_t button) {
  if (!reachable()) return;
  mouseDown(button, fromX, fromY);
  if (button != 1 || mouseUsage_ != kMouseScroll) return;
  userAction([&] {
    view_ = platform::scrollBy(view_, static_cast<double>(toX) - fromX,
                               static_cast<double>(toY) - fromY, width_ / 15, height_ / 15,
                               scrollDirection_);
    changed();
  });
}

// ---- TextBox ----

TextBox::TextBox(UserControl& owner, std::string name, platform::WindowHandle handle,
                 bool multiLine)
    : Widget(owner, std::move(name), handle), multiLine_(multiLine) {
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

TextBox::~TextBox() { unregister(handle_); }

void TextBox::Text(const std::string& value) { setText(value, 0); }

void TextBox::setText(std::string text, int32_t caret) {
  const bool changed = text != text_;
  text_ = std::move(text);
  selStart_ = std::clamp(caret, 0, static_cast<int32_t>(characterCount(text_)));
  selLength_ = 0;
  if (changed) raise(events.Change);
}

void TextBox::SelStart(int32_t value) {
  selStart_ = std::clamp(value, 0, static_cast<int32_t>(characterCount(text_)));
  selLength_ = 0;
}

void TextBox::SelLength(int32_t value) {
  selLength_ = std::clamp(value, 0, static_cast<int32_t>(characterCount(text_)) - selStart_);
}

std::string TextBox::SelText() const {
  return std::string(
      characterSlice(text_, static_cast<size_t>(selStart_), static_cast<size_t>(selLength_)));
}

void TextBox::SelText(const std::string& value) { replaceSelection(value); }

void TextBox::replaceSelection(const std::string& text) {
  platform::EditState edit{text_, selStart_, selLength_, pendingHighSurrogate_};
  platform::replaceSelection(edit, text);
  setText(std::move(edit.text), edit.selStart);
}

void TextBox::applyCharacter(int16_t character) {
  if (locked_) return;
  platform::EditState edit{text_, selStart_, selLength_, pendingHighSurrogate_};
  const bool changed = platform::applyCharacter(edit, character, multiLine_);
  pendingHighSurrogate_ = edit.pendingHighSurrogate;
  if (changed) setText(std::move(edit.text), edit.selStart);
}

void TextBox::focus() {
  if (!reachable()) return;
  userAction([&] { moveFocus(this); });
}

void TextBox::click() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    raise(events.Click);
  });
}

void TextBox::pressKey(int16_t keyCode, int16_t shift, std::optional<int16_t> character) {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    int16_t code = keyCode, state = shift;
    raise(events.KeyDown, code, state);
    if (character) {
      int16_t ascii = *character;
      raise(events.KeyPress, ascii);
      if (ascii != 0) applyCharacter(ascii);
    }
    code = keyCode, state = shift;
    raise(events.KeyUp, code, state);
  });
}

void TextBox::type(std::string_view text) {
  for (size_t offset = 0, length = 0; offset < text.size(); offset += length) {
    const char32_t cp = decodeAt(text, offset, length);
    int16_t state = 0;
    const int16_t code = keyCodeOf(cp, state);
    if (cp <= 0xFFFF) {
      pressKey(code, state, static_cast<int16_t>(cp));
    } else {
      const char32_t v = cp - 0x10000;
      pressKey(code, state, static_cast<int16_t>(0xD800 + (v >> 10)));
      pressKey(code, state, static_cast<int16_t>(0xDC00 + (v & 0x3FF)));
    }
  }
}

void TextBox::select(int32_t start, int32_t length) {
  SelStart(start);
  SelLength(length);
}

void TextBox::paste() {
  if (!reachable() || locked_) return;
  userAction([&] { replaceSelection(current().clipboard().GetText()); });
}

void TextBox::blur() {
  if (!hasFocus()) return;
  userAction([] { moveFocus(nullptr); });
}

void TextBox::raiseGotFocus() { raise(events.GotFocus); }

void TextBox::raiseLostFocus() { raise(events.LostFocus); }

// ---- Lists ----

template <class Interface>
ListRows<Interface>::ListRows(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget<Interface>(owner, std::move(name), handle) {
  current().registerWindow(this->handle_, [this](int32_t& w, int32_t& h) {
    w = this->width_ / 15;
    h = this->height_ / 15;
  });
}

template <class Interface>
ListRows<Interface>::~ListRows() {
  unregister(this->handle_);
}

template <class Interface>
std::string ListRows<Interface>::List(int32_t index) const {
  if (index < 0 || index >= ListCount()) return {};
  return rows_[static_cast<size_t>(index)];
}

template <class Interface>
void ListRows<Interface>::ListIndex(int32_t value) {
  if (value < -1 || value >= ListCount()) throw VbError(err::InvalidPropertyValue);
  if (value == index_) return;
  index_ = value;
  raise(this->events.Click);
}

template <class Interface>
void ListRows<Interface>::raiseGotFocus() {
  raise(this->events.GotFocus);
}

template <class Interface>
void ListRows<Interface>::raiseLostFocus() {
  raise(this->events.LostFocus);
}

template <class Interface>
void ListRows<Interface>::focus() {
  if (!this->reachable()) return;
  userAction([&] { moveFocus(this); });
}

template <class Interface>
void ListRows<Interface>::blur() {
  if (!hasFocus()) return;
  userAction([] { moveFocus(nullptr); });
}

template class ListRows<platform::ComboBox>;
template class ListRows<platform::ListBox>;

void ComboBox::open() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    dropped_ = true;
  });
}

void ComboBox::pick(int32_t row) {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    dropped_ = true;
    hover_ = row;
    dropped_ = false;
    if (!locked_) ListIndex(row);
  });
}

// An error of the control's drawing is kept as unhandled; that row is the platform's.
std::vector<std::optional<platform::RowPaint>> ComboBox::paintedRows() const {
  std::vector<std::optional<platform::RowPaint>> painted;
  for (int32_t row = 0; row < ListCount(); ++row) {
    painted.emplace_back(std::nullopt);
    if (!drawRow) continue;
    userAction(
        [&] { painted.back() = drawRow(row, row == hover_ ? platform::kRowFocus : 0, List(row)); });
  }
  return painted;
}

void ListBox::pick(int32_t row) {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    ListIndex(row);
  });
}

Frame::Frame(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

Frame::~Frame() { unregister(handle_); }

// ---- Label ----

void Label::Caption(const std::string& value) {
  caption_ = value;
  if (autoSize_) fit();
}

void Label::AutoSize(bool value) {
  autoSize_ = value;
  if (autoSize_) fit();
}

void Label::property(std::string_view name, const Variant& value) {
  Widget::property(name, value);
  if (autoSize_ && equalsIgnoreCaseAscii(name, "Font")) fit();
}

void Label::click() {
  if (!reachable()) return;
  userAction([&] { raise(events.Click); });
}

void Label::fit() {
  int32_t width = 0, height = 0;
  current().textMeasure().measure(caption_, platform::childFont(*this)->face(), width, height);
  width_ = width * 15;
  height_ = height * 15;
}

void FixedTextMeasure::measure(const std::string& text, const platform::FontFace& font,
                               int32_t& width, int32_t& height) {
  const double size = font.size > 0 ? font.size : 8.25;
  const int32_t charWidth = static_cast<int32_t>(std::lround(size * 0.85)) + (font.bold ? 1 : 0);
  const int32_t lineHeight = static_cast<int32_t>(std::lround(size * 1.6));
  size_t longest = 0, lines = 0, start = 0;
  while (true) {
    size_t end = text.find('\n', start);
    std::string_view line(text.data() + start,
                          (end == std::string::npos ? text.size() : end) - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    longest = std::max(longest, characterCount(line));
    ++lines;
    if (end == std::string::npos) break;
    start = end + 1;
  }
  width = static_cast<int32_t>(longest) * charWidth;
  height = static_cast<int32_t>(lines) * lineHeight;
}

// ---- Image ----

void Image::click() {
  if (!reachable()) return;
  userAction([&] { raise(events.Click); });
}

// ---- OptionButton, ScrollBar ----

OptionButton::OptionButton(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  owner_.optionButtons().push_back(this);
}

OptionButton::~OptionButton() { std::erase(owner_.optionButtons(), this); }

void OptionButton::Value(bool value) {
  value_ = value;
  if (!value) return;
  for (OptionButton* other : owner_.optionButtons()) {
    if (other != this && other->container() == container()) other->value_ = false;
  }
  raise(events.Click);
}

void OptionButton::click() {
  if (!reachable()) return;
  userAction([&] { Value(true); });
}

// ---- CheckBox, DatePicker ----

CheckBox::CheckBox(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  caption_ = name_;
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

CheckBox::~CheckBox() { unregister(handle_); }

void CheckBox::Value(int16_t value) {
  if (value < 0 || value > 2) throw VbError(err::InvalidPropertyValue);
  if (value == value_) return;
  value_ = value;
  raise(events.Click);
}

void CheckBox::toggle() { Value(value_ == 1 ? int16_t{0} : int16_t{1}); }

void CheckBox::press() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    raise(events.MouseDown);
  });
}

void CheckBox::release() {
  if (!reachable()) return;
  userAction([&] {
    toggle();
    raise(events.MouseUp);
  });
}

void CheckBox::click() {
  press();
  release();
}

void CheckBox::pressSpace() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    toggle();
  });
}

void CheckBox::raiseGotFocus() { raise(events.GotFocus); }

void CheckBox::raiseLostFocus() { raise(events.LostFocus); }

DatePicker::DatePicker(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

DatePicker::~DatePicker() { unregister(handle_); }

void DatePicker::Value(DateSerial value) {
  if (!(value.days >= kMinDate && value.days <= kMaxDate)) {
    throw VbError(err::InvalidPropertyValue);
  }
  value_ = value;
}

std::string DatePicker::Text() const { return formatPickerDate(value_, format_); }

void DatePicker::click() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    raise(events.Click);
  });
}

void DatePicker::userDate(double days) {
  if (!(days >= kMinDate && days <= kMaxDate) || days == value_.days) return;
  value_ = DateSerial{days};
  raise(events.Change);
}

void DatePicker::typeField(DateField field, int32_t number) {
  if (!reachable()) return;
  const std::string digits = std::to_string(number < 0 ? 0 : number);
  userAction([&] { moveFocus(this); });
  for (size_t i = 0; i < digits.size(); ++i) {
    if (!reachable()) return;
    userAction([&] {
      int16_t code = static_cast<int16_t>(digits[i]), state = 0;
      raise(events.KeyDown, code, state);
      int16_t ascii = static_cast<int16_t>(digits[i]);
      raise(events.KeyPress, ascii);
      if (i + 1 == digits.size()) {
        DateTimeFields f = fieldsFromSerial(value_.days);
        const DateTimeFields before = f;
        switch (field) {
          case DateField::Year:
            f.year = number;
            break;
          case DateField::Month:
            f.month = number;
            break;
          case DateField::Day:
            f.day = number;
            break;
          case DateField::Hour:
            f.hour = number;
            break;
          case DateField::Minute:
            f.minute = number;
            break;
          case DateField::Second:
            f.second = number;
            break;
        }
        const double days = serialFromFields(f);
        // A field takes only what it can hold: the other fields must come back unchanged.
        if (isDateInRange(days)) {
          const DateTimeFields after = fieldsFromSerial(days);
          const bool fits = after == f && (field == DateField::Year || after.year == before.year);
          if (fits) userDate(days);
        }
      }
      code = static_cast<int16_t>(digits[i]), state = 0;
      raise(events.KeyUp, code, state);
    });
  }
}

void DatePicker::pickFromCalendar(int32_t year, int32_t month, int32_t day) {
  if (!reachable()) return;
  click();
  userAction([&] {
    DateTimeFields f = fieldsFromSerial(value_.days);
    f.year = year;
    f.month = month;
    f.day = day;
    const double days = serialFromFields(f);
    if (isDateInRange(days) && fieldsFromSerial(days) == f) userDate(days);
  });
}

void DatePicker::raiseGotFocus() { raise(events.GotFocus); }

void DatePicker::raiseLostFocus() { raise(events.LostFocus); }

// ---- CommandButton, TreeView, ShortcutBar ----

CommandButton::CommandButton(UserControl& owner, std::string name, platform::WindowHandle handle)
    : Widget(owner, std::move(name), handle) {
  current().registerWindow(handle_, [this](int32_t& width, int32_t& height) {
    width = width_ / 15;
    height = height_ / 15;
  });
}

CommandButton::~CommandButton() { unregister(handle_); }

void CommandButton::click() {
  if (!reachable()) return;
  userAction([&] {
    moveFocus(this);
    raise(events.Click);
  });
}

TreeView::Node& TreeView::at(int32_t node) {
  if (node < 1 || node > NodeCount()) throw VbError(err::IndexOutOfBounds);
  return nodes_[static_cast<size_t>(node - 1)];
}

const TreeView::Node& TreeView::at(int32_t node) const {
  if (node < 1 || node > NodeCount()) throw VbError(err::IndexOutOfBounds);
  return nodes_[static_cast<size_t>(node - 1)];
}

int32_t TreeView::AddNode(int32_t parent, const std::string& key, const std::string& text) {
  if (parent != 0) at(parent);
  if (keys_.count(key)) throw VbError(err::KeyNotUnique);
  nodes_.push_back({parent, key, text, Variant(), false});
  keys_[key] = NodeCount();
  return NodeCount();
}

void TreeView::SelectNode(int32_t node) {
  if (node != 0) at(node);
  selected_ = node;
}

void TreeView::Move(int32_t left, int32_t top, int32_t width, int32_t height) {
  left_ = left;
  top_ = top;
  width_ = width;
  height_ = height;
}

int32_t TreeView::find(const std::string& key) const {
  const auto found = keys_.find(key);
  return found == keys_.end() ? 0 : found->second;
}

void TreeView::click(int32_t node) {
  if (!reachable()) return;
  userAction([&] {
    SelectNode(node);
    if (events.NodeClick) events.NodeClick(node);
  });
}

ShortcutBar::Bar& ShortcutBar::at(int32_t bar) {
  if (bar < 1 || bar > BarCount()) throw VbError(err::IndexOutOfBounds);
  return bars_[static_cast<size_t>(bar - 1)];
}

const ShortcutBar::Bar& ShortcutBar::at(int32_t bar) const {
  if (bar < 1 || bar > BarCount()) throw VbError(err::IndexOutOfBounds);
  return bars_[static_cast<size_t>(bar - 1)];
}

int32_t ShortcutBar::AddBar(const std::string& key, const std::string& caption,
                            const std::string& iconKey) {
  for (const Bar& bar : bars_) {
    if (bar.key == key) throw VbError(err::KeyNotUnique);
  }
  bars_.push_back({key, caption, iconKey, nullptr, false});
  return BarCount();
}

void ShortcutBar::BarSelected(int32_t bar, bool value) {
  if (value) {
    for (Bar& other : bars_) other.selected = false;
  }
  at(bar).selected = value;
}

void ShortcutBar::SelectedBar(int32_t bar) {
  at(bar);
  selectedBar_ = bar;
}

void ShortcutBar::Redraw(bool value) {
  redraw_ = value;
  if (value) ++repaints_;
}

bool ShortcutBar::LoadIconImageFromFile(const std::string& path, const std::string& key) {
  opened_.push_back(path);
  try {
    icons_[key] = platform::LoadPicture(path);
    return true;
  } catch (const VbError&) {
    return false;
  }
}

void ShortcutBar::click(int32_t bar) {
  if (!reachable()) return;
  userAction([&] {
    at(bar);
    selectedBar_ = bar;
    if (events.BarClick) events.BarClick(bar);
  });
}

ScrollBar::ScrollBar(UserControl& owner, std::string name, platform::WindowHandle handle,
                     bool horizontal)
    : Widget(owner, std::move(name), handle), horizontal_(horizontal) {}

void ScrollBar::Value(int32_t value) {
  if (value < std::min(min_, max_) || value > std::max(min_, max_)) {
    throw VbError(err::InvalidPropertyValue);
  }
  if (value == value_) return;
  value_ = value;
  raise(events.Change);
}

void ScrollBar::drag(int32_t to, int32_t steps) {
  if (!reachable()) return;
  to = std::clamp(to, std::min(min_, max_), std::max(min_, max_));
  userAction([&] {
    const int32_t from = value_;
    for (int32_t i = 1; i <= steps; ++i) {
      value_ = from + static_cast<int32_t>((int64_t{to} - from) * i / steps);
      raise(events.Scroll);
    }
    raise(events.Change);
  });
}

void ScrollBar::clickTrack(int32_t direction) {
  if (!reachable()) return;
  const int64_t next = int64_t{value_} + (direction > 0 ? largeChange_ : -largeChange_);
  userAction([&] {
    Value(static_cast<int32_t>(
        std::clamp<int64_t>(next, std::min(min_, max_), std::max(min_, max_))));
  });
}

// ---- UserControl ----

UserControl::UserControl(std::string className, UserControl* parent, platform::WindowHandle handle)
    : className_(std::move(className)), parent_(parent), handle_(handle) {
  current().registerWindow(handle_, [this](int32_t& w, int32_t& h) {
    w = width_ / 15;
    h = height_ / 15;
  });
}

UserControl::~UserControl() { unregister(handle_); }

void UserControl::Width(int32_t value) {
  if (value == width_) return;
  width_ = value;
  raise(events.Resize);
}

void UserControl::Height(int32_t value) {
  if (value == height_) return;
  height_ = value;
  raise(events.Resize);
}

void UserControl::resize(int32_t width, int32_t height) {
  if (width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  userAction([&] { raise(events.Resize); });
}

// The journal keeps the newest notifications only, so a long session doesn't grow without end.
void UserControl::PropertyChanged(const std::string& name) {
  constexpr size_t kKept = 256;
  if (propertyChanges_.size() >= kKept) propertyChanges_.pop_front();
  propertyChanges_.push_back(name);
}

std::vector<std::string> UserControl::takePropertyChanges() {
  std::vector<std::string> changes(std::make_move_iterator(propertyChanges_.begin()),
                                   std::make_move_iterator(propertyChanges_.end()));
  propertyChanges_.clear();
  return changes;
}

std::unique_ptr<platform::TextBox> UserControl::createTextBox(const std::string& name,
                                                              bool multiLine) {
  return std::make_unique<TextBox>(*this, name, nextHandle(), multiLine);
}

std::unique_ptr<platform::Label> UserControl::createLabel(const std::string& name) {
  return std::make_unique<Label>(*this, name, 0);
}

std::unique_ptr<platform::Image> UserControl::createImage(const std::string& name) {
  return std::make_unique<Image>(*this, name, 0);
}

std::unique_ptr<platform::ComboBox> UserControl::createComboBox(const std::string& name) {
  return std::make_unique<ComboBox>(*this, name, nextHandle());
}

std::unique_ptr<platform::ChartViewer> UserControl::createChartViewer(const std::string& name) {
  return std::make_unique<ChartViewer>(*this, name, nextHandle());
}

std::unique_ptr<platform::OptionButton> UserControl::createOptionButton(const std::string& name) {
  return std::make_unique<OptionButton>(*this, name, nextHandle());
}

std::unique_ptr<platform::ScrollBar> UserControl::createScrollBar(const std::string& name,
                                                                  bool horizontal) {
  return std::make_unique<ScrollBar>(*this, name, nextHandle(), horizontal);
}

std::unique_ptr<platform::Timer> UserControl::createTimer(const std::string& name) {
  return current().clock().createTimer(name);
}

std::unique_ptr<platform::CheckBox> UserControl::createCheckBox(const std::string& name) {
  return std::make_unique<CheckBox>(*this, name, nextHandle());
}

std::unique_ptr<platform::DatePicker> UserControl::createDatePicker(const std::string& name) {
  return std::make_unique<DatePicker>(*this, name, nextHandle());
}

std::unique_ptr<platform::CommandButton> UserControl::createCommandButton(const std::string& name) {
  return std::make_unique<CommandButton>(*this, name, nextHandle());
}

std::unique_ptr<platform::TreeView> UserControl::createTreeView(const std::string& name) {
  return std::make_unique<TreeView>(*this, name, nextHandle());
}

std::unique_ptr<platform::ShortcutBar> UserControl::createShortcutBar(const std::string& name) {
  return std::make_unique<ShortcutBar>(*this, name, nextHandle());
}

std::unique_ptr<platform::ListBox> UserControl::createListBox(const std::string& name) {
  return std::make_unique<ListBox>(*this, name, nextHandle());
}

std::unique_ptr<platform::Frame> UserControl::createFrame(const std::string& name) {
  return std::make_unique<Frame>(*this, name, nextHandle());
}

platform::Widget& UserControl::Controls_Add(const std::string& progId, const std::string& name) {
  const std::string key = toLowerAscii(name);
  if (added_.count(key)) {
    throw VbError(err::ControlNameTaken, "There is already a control with the name '" + name + "'");
  }
  if (toLowerAscii(progId) != "vb.label") {
    throw VbError(err::InvalidClassString,
                  "Invalid class string. Looking for object with ProgID: " + progId);
  }
  auto& child = added_[key];
  child = std::make_unique<Label>(*this, name, 0);
  return *child;
}

void UserControl::Controls_Remove(const std::string& name) {
  if (added_.erase(toLowerAscii(name)) == 0) {
    throw VbError(err::ControlNotFound, "Control '" + name + "' not found");
  }
}

platform::Widget* UserControl::Controls(const std::string& name) {
  const auto found = added_.find(toLowerAscii(name));
  return found == added_.end() ? nullptr : found->second.get();
}

void UserControl::Container(platform::Widget& child, platform::Frame* frame) {
  if (auto* label = dynamic_cast<Label*>(&child))
    label->container(frame);
  else if (auto* image = dynamic_cast<Image*>(&child))
    image->container(frame);
}

std::unique_ptr<platform::UserControl> UserControl::createChildControl(
    const std::string& className) {
  return std::make_unique<UserControl>(className, this, nextHandle());
}

TextBox& user(platform::TextBox& box) { return dynamic_cast<TextBox&>(box); }
Label& user(platform::Label& label) { return dynamic_cast<Label&>(label); }
Image& user(platform::Image& image) { return dynamic_cast<Image&>(image); }
ChartViewer& user(platform::ChartViewer& viewer) { return dynamic_cast<ChartViewer&>(viewer); }
ComboBox& user(platform::ComboBox& combo) { return dynamic_cast<ComboBox&>(combo); }
ListBox& user(platform::ListBox& list) { return dynamic_cast<ListBox&>(list); }
OptionButton& user(platform::OptionButton& button) { return dynamic_cast<OptionButton&>(button); }
ScrollBar& user(platform::ScrollBar& bar) { return dynamic_cast<ScrollBar&>(bar); }
CheckBox& user(platform::CheckBox& box) { return dynamic_cast<CheckBox&>(box); }
DatePicker& user(platform::DatePicker& picker) { return dynamic_cast<DatePicker&>(picker); }
UserControl& user(platform::UserControl& window) { return dynamic_cast<UserControl&>(window); }
CommandButton& user(platform::CommandButton& button) {
  return dynamic_cast<CommandButton&>(button);
}
TreeView& user(platform::TreeView& tree) { return dynamic_cast<TreeView&>(tree); }
ShortcutBar& user(platform::ShortcutBar& bar) { return dynamic_cast<ShortcutBar&>(bar); }

}  // namespace tessaline::headless
