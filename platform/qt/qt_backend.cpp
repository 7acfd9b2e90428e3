#include "tessaline/platform/qt/qt_backend.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QLocale>
#include <QScreen>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <optional>

#include "tessaline/platform/qt/qt_widgets.h"
#include "tessaline/values/locale.h"
#include "tessaline/values/text.h"

namespace tessaline::qt {

namespace {

// Forwards the events of one object to a function; it lives as long as the object.
class Watcher : public QObject {
 public:
  Watcher(QObject* target, std::function<bool(QObject*, QEvent*)> handler)
      : QObject(target), handler_(std::move(handler)) {
    target->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override { return handler_(watched, event); }

 private:
  std::function<bool(QObject*, QEvent*)> handler_;
};

// What a child raises when the focus comes or goes, and the composite control it belongs to.
struct ChildEntry {
  UserControl* owner = nullptr;
  platform::Widget* child = nullptr;
};

struct State {
  std::map<platform::WindowHandle, QPointer<QWidget>> windows;
  std::map<QWidget*, ChildEntry> children;
  std::vector<VbError> unhandled;
  platform::WindowHandle nextHandle = 0x1000;
};

State& state() {
  thread_local State s;
  return s;
}

std::weak_ptr<Backend>& installedBackend() {
  thread_local std::weak_ptr<Backend> backend;
  return backend;
}

double dotsPerInch() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double dpi = screen ? screen->logicalDotsPerInchX() : 96.0;
  return dpi > 0 ? dpi : 96.0;
}

// The focus events of a child: GotFocus and LostFocus where the child has them.
template <class Child>
bool raiseFocusEventOf(platform::Widget* child, bool got) {
  auto* typed = dynamic_cast<Child*>(child);
  if (!typed) return false;
  const auto& handler = got ? typed->events.GotFocus : typed->events.LostFocus;
  if (handler) handler();
  return true;
}

void raiseFocusEvent(platform::Widget* child, bool got) {
  userAction([&] {
    raiseFocusEventOf<platform::TextBox>(child, got) ||
        raiseFocusEventOf<platform::ListWidget>(child, got) ||
        raiseFocusEventOf<platform::CheckBox>(child, got) ||
        raiseFocusEventOf<platform::DatePicker>(child, got);
  });
}

std::vector<UserControl*> ownersOf(const ChildEntry* entry) {
  std::vector<UserControl*> chain;
  for (UserControl* c = entry ? entry->owner : nullptr; c; c = c->parent()) chain.push_back(c);
  return chain;
}

const ChildEntry* entryOf(QWidget* widget) {
  // The focus may sit on an inner widget of a child (a combo box's line, an editor's viewport).
  for (QWidget* w = widget; w; w = w->parentWidget()) {
    const auto found = state().children.find(w);
    if (found != state().children.end()) return &found->second;
  }
  return nullptr;
}

bool contains(const std::vector<UserControl*>& chain, UserControl* c) {
  return std::find(chain.begin(), chain.end(), c) != chain.end();
}

// The focus moving from one child to another: LostFocus of the old child, ExitFocus of each
// composite control that it leaves, EnterFocus of each that it enters (outermost first),
// GotFocus of the new child, as the classic controls raise them.
void focusMoved(QWidget* from, QWidget* to) {
  const ChildEntry* old = entryOf(from);
  const ChildEntry* now = entryOf(to);
  if (old && now && old->child == now->child) return;
  const std::vector<UserControl*> left = ownersOf(old);
  const std::vector<UserControl*> entered = ownersOf(now);
  if (old) raiseFocusEvent(old->child, false);
  for (UserControl* c : left) {
    if (!contains(entered, c) && c->events.ExitFocus) userAction(c->events.ExitFocus);
  }
  for (auto c = entered.rbegin(); c != entered.rend(); ++c) {
    if (!contains(left, *c) && (*c)->events.EnterFocus) userAction((*c)->events.EnterFocus);
  }
  if (now) raiseFocusEvent(now->child, true);
}

class Clipboard : public platform::Clipboard {
 public:
  void Clear() override { QGuiApplication::clipboard()->clear(); }
  void SetText(const std::string& text) override {
    QGuiApplication::clipboard()->setText(qtText(text));
  }
  std::string GetText() override { return utf8(QGuiApplication::clipboard()->text()); }
};

QFont qtFont(const platform::FontFace& face) {
  QFont font(qtText(face.name));
  if (face.size > 0) font.setPointSizeF(face.size);
  font.setBold(face.bold);
  return font;
}

class Clock : public platform::Clock {
 public:
  platform::LocalTime now() override {
    const QDateTime moment = QDateTime::currentDateTime();
    const QDate date = moment.date();
    const QTime time = moment.time();
    return {date.year(), date.month(),  date.day(),
            time.hour(), time.minute(), time.second() + time.msec() / 1000.0};
  }
};

class TextMeasure : public platform::TextMeasure {
 public:
  void measure(const std::string& text, const platform::FontFace& font, int32_t& width,
               int32_t& height) override {
    const QFontMetrics metrics(qtFont(font));
    int32_t longest = 0, lines = 0;
    size_t start = 0;
    while (true) {
      const size_t end = text.find('\n', start);
      std::string line = text.substr(start, end == std::string::npos ? end : end - start);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      longest = std::max<int32_t>(longest, metrics.horizontalAdvance(qtText(line)));
      ++lines;
      if (end == std::string::npos) break;
      start = end + 1;
    }
    width = longest;
    height = lines * metrics.lineSpacing();
  }
};

// The system's number format; US English where the system has none of its own (the C locale).
class SystemLocale : public Locale {
 public:
  SystemLocale() {
    const QLocale system = QLocale::system();
    if (system.language() == QLocale::C) return;
    decimal_ = utf8(system.decimalPoint());
    thousands_ = utf8(system.groupSeparator());
    const std::string currency = utf8(system.currencySymbol());
    if (!currency.empty()) currency_ = currency;
  }
  std::string decimalSeparator() const override { return decimal_; }
  std::string thousandsSeparator() const override { return thousands_; }
  std::string currencySymbol() const override { return currency_; }

 private:
  std::string decimal_ = ".";
  std::string thousands_ = ",";
  std::string currency_ = "$";
};

// A tooltip window: the tools it holds, its width and its times. The tip of a tool comes up when
// the mouse has rested on the tool's window for the initial time, and stays for the visible
// time. While a tip of the window is up, or within the reshow time after it went, the mouse
// that comes to a tool brings its tip up after the reshow time instead.
struct TooltipWindow {
  platform::WindowHandle handle = 0;
  platform::WindowHandle parent = 0;
  TooltipInfo info;
  std::vector<std::pair<QPointer<QWidget>, std::string>> tools;
  // When the window's last tip went or goes (milliseconds of the backend's tooltip time); none
  // before a tip was shown.
  std::optional<qint64> tipEnds;
};

// The tooltips' time, in milliseconds, and the delay before a waiting tip shows: Qt's on the
// wall clock, or the driven clock's when the application moves time on itself, so that the
// delays pass with the rest of its time.
class TipTime {
 public:
  TipTime(platform::SettableClock* driven, std::function<void()> due) : driven_(driven) {
    if (driven_) {
      drivenTimer_ = driven_->createTimer("TooltipDelay");
      drivenTimer_->events.Timer = [this, due] {
        drivenTimer_->Enabled(false);
        due();
      };
    } else {
      wall_.start();
      timer_.setSingleShot(true);
      QObject::connect(&timer_, &QTimer::timeout, std::move(due));
    }
  }
  qint64 now() const {
    return driven_ ? std::llround(driven_->seconds() * 1000.0) : wall_.elapsed();
  }
  void start(int32_t milliseconds) {
    if (!driven_) return timer_.start(std::max(0, milliseconds));
    drivenTimer_->Enabled(false);
    drivenTimer_->Interval(std::max(1, milliseconds));
    drivenTimer_->Enabled(true);
  }
  void stop() {
    if (driven_) {
      drivenTimer_->Enabled(false);
    } else {
      timer_.stop();
    }
  }
  bool active() const { return driven_ ? drivenTimer_->Enabled() : timer_.isActive(); }

 private:
  platform::SettableClock* driven_;
  std::unique_ptr<platform::Timer> drivenTimer_;
  QElapsedTimer wall_;
  QTimer timer_;
};

}  // namespace

class Backend : public platform::Backend, public platform::TooltipService {
 public:
  explicit Backend(Time time) {
    if (time == Time::Driven) {
      driven_ = std::make_unique<platform::SettableClock>(
          [](const platform::Handler& handler) { userAction(handler); });
      driven_->set(clock_.now());
    }
    tipTime_ = std::make_unique<TipTime>(driven_.get(), [this] { showPendingTooltip(); });
    focus_ = QObject::connect(qApp, &QApplication::focusChanged, focusMoved);
  }
  ~Backend() override { QObject::disconnect(focus_); }

  std::unique_ptr<platform::UserControl> createUserControl(const std::string& className) override {
    return std::make_unique<UserControl>(className, nullptr);
  }
  platform::Clipboard& clipboard() override { return clipboard_; }
  platform::TooltipService& tooltips() override { return *this; }
  platform::TextMeasure& textMeasure() override { return measure_; }
  platform::Clock& clock() override {
    return driven_ ? static_cast<platform::Clock&>(*driven_) : clock_;
  }
  platform::SettableClock* drivenClock() { return driven_.get(); }

  // ---- Tooltips ----
  platform::WindowHandle createTooltipWindow(platform::WindowHandle parent, int32_t) override {
    TooltipWindow window;
    window.handle = state().nextHandle += 4;
    window.parent = parent;
    tooltips_.push_back(std::move(window));
    return tooltips_.back().handle;
  }
  void destroyWindow(platform::WindowHandle tooltip) override {
    std::erase_if(tooltips_, [&](const TooltipWindow& w) { return w.handle == tooltip; });
    if (pendingFrom_ == tooltip) {
      tipTime_->stop();
      pendingFrom_ = 0;
    }
  }
  void setMaxTipWidth(platform::WindowHandle tooltip, int32_t pixels) override {
    if (TooltipWindow* w = find(tooltip)) w->info.maxWidth = pixels;
  }
  void setDelayTime(platform::WindowHandle tooltip, int32_t which, int32_t ms) override {
    TooltipWindow* w = find(tooltip);
    if (!w) return;
    if (which == kInitial) w->info.initialTime = ms;
    if (which == kAutoPop) w->info.visibleTime = ms;
    if (which == kReshow) w->info.reshowTime = ms;
  }
  int32_t getDelayTime(platform::WindowHandle tooltip, int32_t which) override {
    TooltipWindow* w = find(tooltip);
    if (!w) return 0;
    if (which == kInitial) return w->info.initialTime;
    if (which == kAutoPop) return w->info.visibleTime;
    if (which == kReshow) return w->info.reshowTime;
    return 0;
  }
  void addTool(platform::WindowHandle tooltip, platform::WindowHandle window,
               const std::string& text, int32_t) override {
    TooltipWindow* owner = find(tooltip);
    QWidget* widget = windowOf(window);
    if (!owner || !widget) return;
    owner->tools.emplace_back(widget, text);
    owner->info.tools = owner->tools.size();
    // One watcher for a window, however often its tools are made anew: it asks at each event
    // which tooltip window holds the window now.
    if (widget->property("tessalineTool").toBool()) return;
    widget->setProperty("tessalineTool", true);
    new Watcher(widget, [this, widget](QObject*, QEvent* event) {
      const platform::WindowHandle handle = holderOf(widget);
      if (event->type() == QEvent::Enter && handle) hovered(handle, widget);
      if (event->type() == QEvent::Leave) left();
      // The platform's own tip (a child's ToolTipText) gives way to the tool's.
      return event->type() == QEvent::ToolTip && handle != 0;
    });
  }

  size_t liveTooltips() const { return tooltips_.size(); }
  const TooltipWindow* ownedBy(platform::WindowHandle parent) const {
    for (auto it = tooltips_.rbegin(); it != tooltips_.rend(); ++it) {
      if (it->parent == parent) return &*it;
    }
    return nullptr;
  }

  bool pending(std::string& text, int32_t& delay) const {
    if (!tipTime_->active() && !pendingTool_) return false;
    text = pendingText_;
    delay = pendingDelay_;
    return pendingTool_ != nullptr;
  }

  void showPendingTooltip() {
    tipTime_->stop();
    TooltipWindow* window = find(pendingFrom_);
    if (!window || !pendingTool_) return;
    QToolTip::showText(pendingTool_->mapToGlobal(QPoint(0, pendingTool_->height())),
                       qtText(pendingText_), pendingTool_, {}, window->info.visibleTime);
    window->tipEnds = tipTime_->now() + std::max(0, window->info.visibleTime);
    shownFrom_ = window->handle;
    pendingTool_ = nullptr;
  }

 private:
  TooltipWindow* find(platform::WindowHandle tooltip) {
    for (TooltipWindow& w : tooltips_) {
      if (w.handle == tooltip) return &w;
    }
    return nullptr;
  }

  // The text of a tool, broken into lines no wider than the tooltip's width.
  static std::string wrapped(const std::string& text, int32_t maxWidth, const QFont& font) {
    if (maxWidth <= 0) return text;
    const QFontMetrics metrics(font);
    std::string out, line;
    for (const std::string& word : split(text)) {
      const std::string candidate = line.empty() ? word : line + " " + word;
      if (!line.empty() && metrics.horizontalAdvance(qtText(candidate)) > maxWidth) {
        out += (out.empty() ? "" : "\n") + line;
        line = word;
      } else {
        line = candidate;
      }
    }
    if (!line.empty()) out += (out.empty() ? "" : "\n") + line;
    return out;
  }
  static std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> words;
    size_t start = 0;
    while (start < text.size()) {
      const size_t end = text.find(' ', start);
      words.push_back(text.substr(start, end == std::string::npos ? end : end - start));
      if (end == std::string::npos) break;
      start = end + 1;
    }
    return words;
  }

  void hovered(platform::WindowHandle tooltip, QWidget* widget) {
    TooltipWindow* window = find(tooltip);
    if (!window) return;
    std::string text;
    for (const auto& [tool, caption] : window->tools) {
      if (tool == widget) text = caption;
    }
    if (text.empty()) return;
    pendingFrom_ = tooltip;
    pendingTool_ = widget;
    pendingText_ = wrapped(text, window->info.maxWidth, QToolTip::font());
    const bool reshow =
        window->tipEnds && tipTime_->now() < *window->tipEnds + window->info.reshowTime;
    pendingDelay_ = reshow ? window->info.reshowTime : window->info.initialTime;
    tipTime_->start(pendingDelay_);
  }
  // The newest tooltip window that holds a window as a tool; 0 for none.
  platform::WindowHandle holderOf(QWidget* widget) const {
    for (auto it = tooltips_.rbegin(); it != tooltips_.rend(); ++it) {
      for (const auto& [tool, caption] : it->tools) {
        if (tool == widget) return it->handle;
      }
    }
    return 0;
  }
  // The mouse left a tool: a tip that waits stays down, one that is up goes now.
  void left() {
    tipTime_->stop();
    pendingTool_ = nullptr;
    if (TooltipWindow* shown = find(shownFrom_)) {
      const qint64 now = tipTime_->now();
      if (shown->tipEnds && *shown->tipEnds > now) shown->tipEnds = now;
    }
    QToolTip::hideText();
  }

  Clipboard clipboard_;
  TextMeasure measure_;
  Clock clock_;
  std::unique_ptr<platform::SettableClock> driven_;
  std::vector<TooltipWindow> tooltips_;
  std::unique_ptr<TipTime> tipTime_;
  platform::WindowHandle pendingFrom_ = 0;
  QPointer<QWidget> pendingTool_;
  std::string pendingText_;
  int32_t pendingDelay_ = 0;
  // The tooltip window whose tip was shown last.
  platform::WindowHandle shownFrom_ = 0;
  QMetaObject::Connection focus_;
};

// ---- Registry -----------------------------------------------------------------------------

bool userAction(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (...) {
    state().unhandled.push_back(VbError::from(std::current_exception()));
    return false;
  }
}

platform::WindowHandle registerWindow(QWidget* widget) {
  const platform::WindowHandle handle = state().nextHandle += 4;
  state().windows[handle] = widget;
  return handle;
}

void unregisterWindow(platform::WindowHandle handle) { state().windows.erase(handle); }

QWidget* windowOf(platform::WindowHandle handle) {
  const auto found = state().windows.find(handle);
  return found == state().windows.end() ? nullptr : found->second.data();
}

void registerChild(QWidget* widget, UserControl& owner, platform::Widget& child) {
  state().children[widget] = {&owner, &child};
}

void unregisterChild(QWidget* widget) { state().children.erase(widget); }

std::vector<VbError> takeUnhandledErrors() {
  std::vector<VbError> errors;
  errors.swap(state().unhandled);
  return errors;
}

int32_t pixelsOf(int32_t twips) {
  return static_cast<int32_t>(std::lround(twips * dotsPerInch() / 1440.0));
}

int32_t twipsOf(int32_t pixels) {
  return static_cast<int32_t>(std::lround(pixels * 1440.0 / dotsPerInch()));
}

double chartScale() { return dotsPerInch() / 96.0; }

std::shared_ptr<Backend> install(Time time) {
  if (!qApp) throw VbError(err::Failed, "The Qt backend needs a QApplication on this thread");
  auto backend = std::make_shared<Backend>(time);
  platform::setBackend(backend);
  installedBackend() = backend;
  setLocale(std::make_shared<SystemLocale>());
  return backend;
}

platform::SettableClock* drivenClock() {
  auto backend = installedBackend().lock();
  return backend ? backend->drivenClock() : nullptr;
}

Backend& current() {
  auto backend = installedBackend().lock();
  if (!backend || !platform::hasBackend() || &platform::backend() != backend.get()) {
    throw VbError(err::Failed, "The Qt backend is not installed on this thread");
  }
  return *backend;
}

QWidget* widgetOf(platform::UserControl& window) {
  auto* control = dynamic_cast<UserControl*>(&window);
  return control ? control->widget() : nullptr;
}

QWidget* widgetOf(platform::Widget& child) {
  for (const auto& [widget, entry] : state().children) {
    if (entry.child == &child) return widget;
  }
  return nullptr;
}

size_t liveTooltips() { return current().liveTooltips(); }

bool tooltipOwnedBy(platform::WindowHandle parent, TooltipInfo& info) {
  const TooltipWindow* window = current().ownedBy(parent);
  if (window) info = window->info;
  return window != nullptr;
}

bool pendingTooltip(std::string& text, int32_t& delayMilliseconds) {
  return current().pending(text, delayMilliseconds);
}

void showPendingTooltip() { current().showPendingTooltip(); }

// ---- UserControl --------------------------------------------------------------------------

UserControl::UserControl(std::string className, UserControl* parent)
    : className_(std::move(className)), parent_(parent), widget_(new QWidget) {
  widget_->setObjectName(qtText(className_));
  if (parent && parent->widget()) widget_->setParent(parent->widget());
  handle_ = registerWindow(widget_);
  widget_->setAutoFillBackground(false);
  if (parent) {
    widget_->show();
    parent->tabStops_.push_back({widget_, nullptr, this});
    parent->orderTabs();
  }
}

UserControl::~UserControl() {
  added_.clear();
  unregisterWindow(handle_);
  delete widget_.data();
}

void UserControl::place() {
  if (widget_) {
    widget_->setGeometry(pixelsOf(left_), pixelsOf(top_), pixelsOf(width_), pixelsOf(height_));
  }
}

void UserControl::Width(int32_t value) {
  if (value == width_) return;
  width_ = value;
  place();
  if (events.Resize) events.Resize();
}

void UserControl::Height(int32_t value) {
  if (value == height_) return;
  height_ = value;
  place();
  if (events.Resize) events.Resize();
}

void UserControl::Visible(bool value) {
  visible_ = value;
  if (widget_ && (parent_ || widget_->parentWidget())) widget_->setVisible(value);
}

void UserControl::Left(int32_t value) {
  left_ = value;
  place();
}

// The parent lives while the widget does: its window holds this one.
void UserControl::TabIndex(int32_t value) {
  tabIndex_ = value;
  if (parent_ && widget_) parent_->orderTabs();
}

void UserControl::addTabStop(QWidget* widget, const platform::Widget* child) {
  std::erase_if(tabStops_, [](const TabStop& stop) { return !stop.widget; });
  tabStops_.push_back({widget, child, nullptr});
  orderTabs();
}

void UserControl::tabChain(std::vector<QWidget*>& chain) const {
  std::vector<const TabStop*> stops;
  for (const TabStop& stop : tabStops_) {
    if (stop.widget) stops.push_back(&stop);
  }
  const auto indexOf = [](const TabStop* stop) {
    return stop->child ? stop->child->TabIndex() : stop->control->TabIndex();
  };
  std::stable_sort(stops.begin(), stops.end(),
                   [&](const TabStop* a, const TabStop* b) { return indexOf(a) < indexOf(b); });
  for (const TabStop* stop : stops) {
    if (stop->control) {
      stop->control->tabChain(chain);
    } else if (stop->widget->focusPolicy() & Qt::TabFocus) {
      chain.push_back(stop->widget);
    }
  }
}

// Qt's focus chain of the window, put in the tab order link by link.
void UserControl::orderTabs() {
  UserControl* root = this;
  while (root->parent_) root = root->parent_;
  std::vector<QWidget*> chain;
  root->tabChain(chain);
  for (size_t i = 1; i < chain.size(); ++i) {
    if (chain[i - 1]->nextInFocusChain() != chain[i]) QWidget::setTabOrder(chain[i - 1], chain[i]);
  }
}

void UserControl::Top(int32_t value) {
  top_ = value;
  place();
}

platform::Color UserControl::AmbientBackColor() const {
  const QWidget* around = widget_ ? widget_->parentWidget() : nullptr;
  const QPalette palette = around ? around->palette() : QApplication::palette();
  return classicColor(palette.color(QPalette::Window));
}

Ref<platform::StdFont> UserControl::AmbientFont() const {
  auto font = std::make_shared<platform::StdFont>();
  const QWidget* around = widget_ ? widget_->parentWidget() : nullptr;
  if (around) {
    const QFont qfont = around->font();
    font->Name = utf8(qfont.family());
    font->Size = qfont.pointSizeF() > 0 ? qfont.pointSizeF() : font->Size;
    font->Bold = qfont.bold();
    font->Italic = qfont.italic();
  }
  return Ref<platform::StdFont>(font);
}

std::unique_ptr<platform::TextBox> UserControl::createTextBox(const std::string& name,
                                                              bool multiLine) {
  return std::make_unique<TextBox>(*this, name, multiLine);
}

std::unique_ptr<platform::Label> UserControl::createLabel(const std::string& name) {
  return std::make_unique<Label>(*this, name);
}

std::unique_ptr<platform::Image> UserControl::createImage(const std::string& name) {
  return std::make_unique<Image>(*this, name);
}

std::unique_ptr<platform::ComboBox> UserControl::createComboBox(const std::string& name) {
  return std::make_unique<ComboBox>(*this, name);
}

std::unique_ptr<platform::ListBox> UserControl::createListBox(const std::string& name) {
  return std::make_unique<ListBox>(*this, name);
}

std::unique_ptr<platform::Frame> UserControl::createFrame(const std::string& name) {
  return std::make_unique<Frame>(*this, name);
}

std::unique_ptr<platform::ChartViewer> UserControl::createChartViewer(const std::string& name) {
  return std::make_unique<ChartViewer>(*this, name);
}

std::unique_ptr<platform::OptionButton> UserControl::createOptionButton(const std::string& name) {
  return std::make_unique<OptionButton>(*this, name);
}

std::unique_ptr<platform::ScrollBar> UserControl::createScrollBar(const std::string& name,
                                                                  bool horizontal) {
  return std::make_unique<ScrollBar>(*this, name, horizontal);
}

std::unique_ptr<platform::Timer> UserControl::createTimer(const std::string& name) {
  if (platform::SettableClock* driven = drivenClock()) return driven->createTimer(name);
  return std::make_unique<Timer>(name);
}

std::unique_ptr<platform::CheckBox> UserControl::createCheckBox(const std::string& name) {
  return std::make_unique<CheckBox>(*this, name);
}

std::unique_ptr<platform::DatePicker> UserControl::createDatePicker(const std::string& name) {
  return std::make_unique<DatePicker>(*this, name);
}

std::unique_ptr<platform::CommandButton> UserControl::createCommandButton(const std::string& name) {
  return std::make_unique<CommandButton>(*this, name);
}

std::unique_ptr<platform::TreeView> UserControl::createTreeView(const std::string& name) {
  return std::make_unique<TreeView>(*this, name);
}

std::unique_ptr<platform::ShortcutBar> UserControl::createShortcutBar(const std::string& name) {
  return std::make_unique<ShortcutBar>(*this, name);
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
  child = std::make_unique<Label>(*this, name);
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
  QWidget* widget = widgetOf(child);
  QWidget* holder = frame ? widgetOf(*frame) : widget_.data();
  if (!widget || !holder) return;
  const QRect geometry = widget->geometry();
  widget->setParent(holder);
  widget->setGeometry(geometry);
  widget->setVisible(child.Visible());
}

std::unique_ptr<platform::UserControl> UserControl::createChildControl(
    const std::string& className) {
  return std::make_unique<UserControl>(className, this);
}

}  // namespace tessaline::qt
