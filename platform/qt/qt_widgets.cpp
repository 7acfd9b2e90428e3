#include "tessaline/platform/qt/qt_widgets.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <vector>

#include "tessaline/platform/picture.h"
#include "tessaline/values/dates.h"
#include "tessaline/values/text.h"

namespace tessaline::qt {

namespace {

// Forwards the events of one widget to a function; it lives as long as the widget.
class Filter : public QObject {
 public:
  Filter(QObject* target, std::function<bool(QEvent*)> handler)
      : QObject(target), handler_(std::move(handler)) {
    target->installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override { return handler_(event); }

 private:
  std::function<bool(QEvent*)> handler_;
};

// The classic key codes and shift states of a Qt key event.
int16_t keyCodeOf(int key) {
  if (key >= Qt::Key_A && key <= Qt::Key_Z) return static_cast<int16_t>(key);
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return static_cast<int16_t>(key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return static_cast<int16_t>(112 + key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Backspace:
      return 8;
    case Qt::Key_Tab:
      return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Shift:
      return 16;
    case Qt::Key_Control:
      return 17;
    case Qt::Key_Alt:
      return 18;
    case Qt::Key_Escape:
      return 27;
    case Qt::Key_Space:
      return 32;
    case Qt::Key_PageUp:
      return 33;
    case Qt::Key_PageDown:
      return 34;
    case Qt::Key_End:
      return 35;
    case Qt::Key_Home:
      return 36;
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    case Qt::Key_Insert:
      return 45;
    case Qt::Key_Delete:
      return 46;
    case Qt::Key_Comma:
      return 188;
    case Qt::Key_Minus:
      return 189;
    case Qt::Key_Period:
      return 190;
    default:
      // A character that has no key of its own.
      return 231;
  }
}

int16_t shiftOf(Qt::KeyboardModifiers modifiers) {
  int16_t state = 0;
  if (modifiers & Qt::ShiftModifier) state |= platform::shift::kShift;
  if (modifiers & Qt::ControlModifier) state |= platform::shift::kCtrl;
  if (modifiers & Qt::AltModifier) state |= platform::shift::kAlt;
  return state;
}

// Positions of the control (characters, a line end "\r\n" two of them) and of Qt (UTF-16 units
// of its text, a line end "\n" one).
int toQtPosition(const QString& text, int32_t position, bool multiLine) {
  int unit = 0;
  for (int32_t counted = 0; counted < position && unit < text.size();) {
    const QChar c = text.at(unit);
    if (c.isHighSurrogate() && unit + 1 < text.size() && text.at(unit + 1).isLowSurrogate()) {
      unit += 2;
      counted += 1;
    } else {
      unit += 1;
      counted += multiLine && c == QLatin1Char('\n') ? 2 : 1;
    }
  }
  return unit;
}

int32_t fromQtPosition(const QString& text, int position, bool multiLine) {
  int32_t counted = 0;
  for (int unit = 0; unit < position && unit < text.size();) {
    const QChar c = text.at(unit);
    if (c.isHighSurrogate() && unit + 1 < text.size() && text.at(unit + 1).isLowSurrogate()) {
      unit += 2;
      counted += 1;
    } else {
      unit += 1;
      counted += multiLine && c == QLatin1Char('\n') ? 2 : 1;
    }
  }
  return counted;
}

void setFontOf(QWidget* widget, const Variant& value) {
  if (!value.isObject()) return;
  const auto font = std::dynamic_pointer_cast<platform::StdFont>(value.toObject());
  if (!font) return;
  QFont qfont(qtText(font->Name));
  if (font->Size > 0) qfont.setPointSizeF(font->Size);
  qfont.setBold(font->Bold);
  qfont.setItalic(font->Italic);
  qfont.setUnderline(font->Underline);
  qfont.setStrikeOut(font->Strikethrough);
  widget->setFont(qfont);
}

Qt::Alignment alignmentOf(const Variant& value) {
  try {
    switch (value.toInt32()) {
      case 1:
        return Qt::AlignRight | Qt::AlignVCenter;
      case 2:
        return Qt::AlignHCenter | Qt::AlignVCenter;
      default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
  } catch (const VbError&) {
    return Qt::AlignLeft | Qt::AlignVCenter;
  }
}

// Qt isn't exception-safe: an error must never unwind through its frames. Where our code makes a
// Qt call inside one of its actions and Qt calls back into a slot of ours that raises an event,
// the call goes through throughQt: the slot raises the event with raiseFromQt, which keeps its
// error (and raises nothing more for that call), and throughQt throws the error once Qt has
// returned. The error thus stops the action, as it does where the headless backend raises the
// event directly. Outside such a call, an event raised from a slot is a user's action of its own.
struct QtCall {
  std::exception_ptr error;
};

std::vector<QtCall*>& qtCalls() {
  thread_local std::vector<QtCall*> calls;
  return calls;
}

template <class Call>
void throughQt(Call&& call) {
  QtCall frame;
  qtCalls().push_back(&frame);
  struct Pop {
    ~Pop() { qtCalls().pop_back(); }
  } pop;
  call();
  if (frame.error) std::rethrow_exception(frame.error);
}

void raiseFromQt(const std::function<void()>& raiseEvent) {
  if (qtCalls().empty()) {
    userAction(raiseEvent);
    return;
  }
  QtCall& frame = *qtCalls().back();
  if (frame.error) return;
  try {
    raiseEvent();
  } catch (...) {
    frame.error = std::current_exception();
  }
}

// Hands an event to the widget's own handling, past the event filters: what Qt would do next
// with an event that a filter let through.
void deliver(QWidget* widget, QEvent* event) { static_cast<QObject*>(widget)->event(event); }

// The classic numbers of the mouse buttons: 1 left, 2 right, 4 middle; 0 for another.
int32_t buttonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return 1;
    case Qt::RightButton:
      return 2;
    case Qt::MiddleButton:
      return 4;
    default:
      return 0;
  }
}

// A look property as the child reads it (its design default until set); -1 for one that isn't
// a number.
int32_t lookOf(platform::Widget& child, std::string_view name) {
  try {
    return platform::childProperty(child, name).toInt32();
  } catch (const VbError&) {
    return -1;
  }
}

// BorderStyle and Appearance on a widget with a frame of its own: 3-D is a sunken panel two
// pixels deep, flat a single line.
void frameLook(QFrame* frame, bool border, bool flat) {
  frame->setFrameShape(!border ? QFrame::NoFrame : flat ? QFrame::Box : QFrame::Panel);
  frame->setFrameShadow(flat ? QFrame::Plain : QFrame::Sunken);
  frame->setLineWidth(border && !flat ? 2 : 1);
}

// The picture of a value as Qt paints it, sharing its pixels.
QImage imageOf(const Ref<Object>& object) {
  const auto picture = refCast<platform::Picture>(object);
  if (!picture || picture->Width() <= 0 || picture->Height() <= 0) return {};
  const platform::PixelImage& pixels = picture->image();
  return QImage(reinterpret_cast<const uchar*>(pixels.pixels.data()), pixels.width, pixels.height,
                pixels.width * 4, QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

QColor qtColor(platform::Color color) {
  const auto bits = static_cast<uint32_t>(color);
  if (bits & 0x80000000u) {
    const QPalette palette = QApplication::palette();
    switch (bits & 0xFF) {
      case 5:  // the window's background
        return palette.color(QPalette::Base);
      case 8:  // the window's text
        return palette.color(QPalette::Text);
      case 13:  // highlight
        return palette.color(QPalette::Highlight);
      case 14:  // highlighted text
        return palette.color(QPalette::HighlightedText);
      case 15:  // button face
        return palette.color(QPalette::Button);
      case 18:  // button text
        return palette.color(QPalette::ButtonText);
      default:
        return palette.color(QPalette::Window);
    }
  }
  return QColor(bits & 0xFF, (bits >> 8) & 0xFF, (bits >> 16) & 0xFF);
}

platform::Color classicColor(const QColor& color) {
  return static_cast<platform::Color>(color.red() | color.green() << 8 | color.blue() << 16);
}

QString qtText(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string utf8(const QString& text) { return text.toUtf8().toStdString(); }

// ---- Child --------------------------------------------------------------------------------

template <class Interface, class QtWidget>
Child<Interface, QtWidget>::Child(UserControl& owner, std::string name, QtWidget* widget,
                                  bool windowed)
    : owner_(owner), name_(std::move(name)), widget_(widget) {
  widget->setParent(owner.widget());
  widget->setObjectName(qtText(name_));
  handle_ = windowed ? registerWindow(widget) : 0;
  registerChild(widget, owner, *this);
  applyColors();
  widget->show();
  if (windowed) owner.addTabStop(widget, this);
}

template <class Interface, class QtWidget>
Child<Interface, QtWidget>::~Child() {
  if (handle_) unregisterWindow(handle_);
  if (widget_) {
    unregisterChild(widget_);
    delete widget_.data();
  }
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Visible(bool value) {
  visible_ = value;
  if (widget_) widget_->setVisible(value);
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Enabled(bool value) {
  enabled_ = value;
  if (widget_) widget_->setEnabled(value);
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::place() {
  if (widget_) {
    widget_->setGeometry(pixelsOf(left_), pixelsOf(top_), pixelsOf(width_), pixelsOf(height_));
  }
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Left(int32_t value) {
  left_ = value;
  place();
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Top(int32_t value) {
  top_ = value;
  place();
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Width(int32_t value) {
  width_ = value;
  place();
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::Height(int32_t value) {
  height_ = value;
  place();
}

// A palette costs Qt a restyle of the widget: it is set only when a colour changes.
template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::BackColor(platform::Color value) {
  if (value == backColor_) return;
  backColor_ = value;
  applyColors();
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::ForeColor(platform::Color value) {
  if (value == foreColor_) return;
  foreColor_ = value;
  applyColors();
}

// The owner lives while the widget does: its window holds the widget.
template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::TabIndex(int32_t value) {
  tabIndex_ = value;
  if (widget_) owner_.orderTabs();
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::applyColors() {
  if (!widget_) return;
  QPalette palette = widget_->palette();
  const QColor back = qtColor(backColor_), fore = qtColor(foreColor_);
  for (QPalette::ColorRole role : {QPalette::Base, QPalette::Window, QPalette::Button}) {
    palette.setColor(role, back);
  }
  for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(role, fore);
  }
  widget_->setPalette(palette);
  widget_->setAutoFillBackground(opaque());
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::applyLook() {
  if (!widget_) return;
  const bool flat = lookOf(*this, "Appearance") == 0;
  const bool border = lookOf(*this, "BorderStyle") != 0;
  if constexpr (std::is_base_of_v<QFrame, QtWidget>) {
    frameLook(widget_, border, flat);
  } else if constexpr (std::is_base_of_v<QPushButton, QtWidget>) {
    widget_->setFlat(flat);
  } else if constexpr (std::is_base_of_v<QToolButton, QtWidget>) {
    widget_->setAutoRaise(flat);
  }
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::ToolTipText(const std::string& value) {
  toolTipText_ = value;
  if (widget_) widget_->setToolTip(qtText(value));
}

template <class Interface, class QtWidget>
Variant Child<Interface, QtWidget>::property(std::string_view name) const {
  const auto found = properties_.find(toLowerAscii(std::string(name)));
  return found == properties_.end() ? Variant() : found->second;
}

template <class Interface, class QtWidget>
void Child<Interface, QtWidget>::property(std::string_view name, const Variant& value) {
  const std::string key = toLowerAscii(std::string(name));
  properties_[key] = value;
  if (!widget_) return;
  if (key == "font") setFontOf(widget_, value);
  if (key == "alignment") {
    if constexpr (std::is_base_of_v<QLabel, QtWidget>) {
      widget_->setAlignment(alignmentOf(value));
    } else if (auto* line = qobject_cast<QLineEdit*>(widget_.data())) {
      line->setAlignment(alignmentOf(value));
    }
  }
  if (key == "borderstyle" || key == "appearance") applyLook();
  if (key == "backstyle") applyColors();
}

template class Child<platform::TextBox, QWidget>;
template class Child<platform::Label, QLabel>;
template class Child<platform::Image, QLabel>;
template class Child<platform::Frame, QFrame>;
template class Child<platform::ComboBox, QComboBox>;
template class Child<platform::ListBox, QListWidget>;
template class Child<platform::ChartViewer, QWidget>;
template class Child<platform::OptionButton, QToolButton>;
template class Child<platform::ScrollBar, QScrollBar>;
template class Child<platform::CheckBox, QCheckBox>;
template class Child<platform::DatePicker, QDateTimeEdit>;
template class Child<platform::CommandButton, QPushButton>;
template class Child<platform::TreeView, QTreeWidget>;
template class Child<platform::ShortcutBar, QToolBox>;

// ---- TextBox ------------------------------------------------------------------------------

namespace {
QWidget* makeEditor(bool multiLine) {
  if (!multiLine) return new QLineEdit;
  auto* editor = new QPlainTextEdit;
  editor->setTabChangesFocus(true);
  return editor;
}
}  // namespace

TextBox::TextBox(UserControl& owner, const std::string& name, bool multiLine)
    : Child(owner, name, makeEditor(multiLine), true), multiLine_(multiLine) {
  line_ = qobject_cast<QLineEdit*>(widget_.data());
  lines_ = qobject_cast<QPlainTextEdit*>(widget_.data());
  // The classic box takes a text of any length; Qt's line edit would cut it at 32767.
  if (line_) line_->setMaxLength(std::numeric_limits<int>::max());
  QWidget* target = line_ ? static_cast<QWidget*>(line_) : lines_->viewport();
  const auto onEvent = [this](QEvent* event) {
    switch (event->type()) {
      case QEvent::KeyPress: {
        return keyPress(static_cast<QKeyEvent*>(event));
      }
      case QEvent::KeyRelease: {
        auto* key = static_cast<QKeyEvent*>(event);
        if (!key->isAutoRepeat()) keyRelease(key->key(), key->modifiers());
        return false;
      }
      case QEvent::ShortcutOverride:
        // Every key is the control's: Qt's own shortcuts (paste, undo) don't run here.
        event->accept();
        return true;
      case QEvent::MouseButtonRelease:
        raiseClick();
        return false;
      case QEvent::MouseButtonDblClick:
        raiseDblClick();
        return false;
      default:
        return false;
    }
  };
  new Filter(widget_, onEvent);
  if (lines_)
    new Filter(target, [this](QEvent* event) {
      if (event->type() == QEvent::MouseButtonRelease) raiseClick();
      if (event->type() == QEvent::MouseButtonDblClick) raiseDblClick();
      return false;
    });
  if (line_) {
    QObject::connect(line_, &QLineEdit::textChanged, [this] { textChangedByQt(); });
  } else {
    QObject::connect(lines_, &QPlainTextEdit::textChanged, [this] { textChangedByQt(); });
  }
}

QString TextBox::qtTextNow() const {
  if (!widget_) return {};
  return line_ ? line_->text() : lines_->toPlainText();
}

std::string TextBox::Text() const {
  std::string text = utf8(qtTextNow());
  if (!multiLine_) return text;
  std::string crlf;
  for (char c : text) {
    if (c == '\n') crlf += '\r';
    crlf += c;
  }
  return crlf;
}

void TextBox::selection(int& anchor, int& position) const {
  anchor = position = 0;
  if (line_) {
    position = line_->cursorPosition();
    anchor = line_->hasSelectedText()
                 ? (line_->selectionStart() == position ? line_->selectionEnd()
                                                        : line_->selectionStart())
                 : position;
  } else if (lines_) {
    const QTextCursor cursor = lines_->textCursor();
    position = cursor.position();
    anchor = cursor.anchor();
  }
}

platform::EditState TextBox::state() const {
  int anchor = 0, position = 0;
  selection(anchor, position);
  const QString text = qtTextNow();
  const int32_t from = fromQtPosition(text, std::min(anchor, position), multiLine_);
  const int32_t to = fromQtPosition(text, std::max(anchor, position), multiLine_);
  return {Text(), from, to - from, pendingHighSurrogate_};
}

// The edit's text and caret on the widget, then Change when the text is another.
void TextBox::show(const platform::EditState& edit) {
  if (!widget_) return;
  const bool changed = edit.text != Text();
  std::string plain = edit.text;
  if (multiLine_) plain.erase(std::remove(plain.begin(), plain.end(), '\r'), plain.end());
  const QString text = qtText(plain);
  ownChange_ = true;
  if (changed) {
    if (line_) {
      line_->setText(text);
    } else {
      lines_->setPlainText(text);
    }
  }
  const QString shown = qtTextNow();
  const int start = toQtPosition(shown, edit.selStart, multiLine_);
  const int end = toQtPosition(shown, edit.selStart + edit.selLength, multiLine_);
  if (line_) {
    line_->setSelection(start, end - start);
    if (end == start) line_->setCursorPosition(start);
  } else {
    QTextCursor cursor = lines_->textCursor();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    lines_->setTextCursor(cursor);
  }
  ownChange_ = false;
  // Raised here, with Qt's call returned: an error of the handler goes back to whoever changed
  // the text, the program or the user's key.
  if (changed) raise(events.Change);
}

void TextBox::Text(const std::string& value) {
  platform::EditState edit{value, 0, 0, pendingHighSurrogate_};
  // A text set by program puts the caret at the start with nothing selected.
  show(edit);
}

int32_t TextBox::SelStart() const { return state().selStart; }

void TextBox::SelStart(int32_t value) {
  platform::EditState edit = state();
  edit.selStart = std::clamp(value, 0, static_cast<int32_t>(characterCount(edit.text)));
  edit.selLength = 0;
  show(edit);
}

int32_t TextBox::SelLength() const { return state().selLength; }

void TextBox::SelLength(int32_t value) {
  platform::EditState edit = state();
  edit.selLength =
      std::clamp(value, 0, static_cast<int32_t>(characterCount(edit.text)) - edit.selStart);
  show(edit);
}

std::string TextBox::SelText() const {
  const platform::EditState edit = state();
  return std::string(characterSlice(edit.text, static_cast<size_t>(edit.selStart),
                                    static_cast<size_t>(edit.selLength)));
}

void TextBox::SelText(const std::string& value) {
  platform::EditState edit = state();
  platform::replaceSelection(edit, value);
  show(edit);
}

// Qt's line edit has one kind of frame, the style's: BorderStyle shows on it, Appearance doesn't.
void TextBox::applyLook() {
  if (!widget_) return;
  const bool flat = lookOf(*this, "Appearance") == 0;
  const bool border = lookOf(*this, "BorderStyle") != 0;
  if (line_) line_->setFrame(border);
  if (lines_) frameLook(lines_, border, flat);
}

void TextBox::Locked(bool value) {
  locked_ = value;
  if (line_) line_->setReadOnly(value);
  if (lines_) lines_->setReadOnly(value);
}

bool TextBox::keyPress(QKeyEvent* event) {
  if (!reachable()) return true;
  const int qtKey = event->key();
  const Qt::KeyboardModifiers modifiers = event->modifiers();
  const QString text = event->text();
  int16_t code = keyCodeOf(qtKey), shift = shiftOf(modifiers);
  // Ctrl with a letter makes the control character of that letter, as a keyboard does.
  QString characters = text;
  if ((modifiers & Qt::ControlModifier) && qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) {
    characters = QString(QChar(static_cast<char16_t>(qtKey - Qt::Key_A + 1)));
  } else if (qtKey == Qt::Key_Backspace) {
    characters = QString(QChar(u'\b'));
  } else if (qtKey == Qt::Key_Return || qtKey == Qt::Key_Enter) {
    characters = QString(QChar(u'\r'));
  }
  // A key without a character (arrows, Delete, Home) is the editor's own.
  const bool editorsKey = characters.isEmpty() || qtKey == Qt::Key_Delete || qtKey == Qt::Key_Tab;
  // KeyDown, then each character's KeyPress, edit and Change, or the editor's handling: one
  // action, as on the classic box, which an error stops there.
  QWidget* editor = widget_;
  const bool completed = userAction([&] {
    raise(events.KeyDown, code, shift);
    if (editorsKey) {
      if (widget_) throughQt([&] { deliver(editor, event); });
      return;
    }
    for (QChar unit : characters) {
      int16_t ascii = static_cast<int16_t>(unit.unicode());
      raise(events.KeyPress, ascii);
      if (ascii == 0 || locked_ || !widget_) continue;
      platform::EditState edit = state();
      const bool changed = platform::applyCharacter(edit, ascii, multiLine_);
      pendingHighSurrogate_ = edit.pendingHighSurrogate;
      if (changed) show(edit);
    }
  });
  if (!completed) stoppedKey_ = qtKey;
  return true;
}

void TextBox::keyRelease(int qtKey, Qt::KeyboardModifiers modifiers) {
  if (stoppedKey_ != 0 && stoppedKey_ == qtKey) {
    stoppedKey_ = 0;
    return;
  }
  if (!reachable()) return;
  int16_t code = keyCodeOf(qtKey), shift = shiftOf(modifiers);
  userAction([&] { raise(events.KeyUp, code, shift); });
}

void TextBox::textChangedByQt() {
  if (ownChange_) return;
  // A change that Qt made (Delete, a paste from the context menu, a drop): Change, and the caret
  // stays where Qt put it.
  raiseFromQt([&] { raise(events.Change); });
}

// ---- Label, Image, Frame ------------------------------------------------------------------

Label::Label(UserControl& owner, const std::string& name) : Child(owner, name, new QLabel, false) {
  // A windowless control paints on its container, beneath every windowed child.
  widget_->lower();
  new Filter(widget_, [this](QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && reachable()) {
      userAction([&] {
        if (events.Click) events.Click();
      });
    } else if (event->type() == QEvent::MouseButtonDblClick && reachable()) {
      userAction([&] {
        if (events.DblClick) events.DblClick();
      });
    }
    return false;
  });
}

void Label::Caption(const std::string& value) {
  caption_ = value;
  if (widget_) widget_->setText(qtText(value));
  if (autoSize_) fit();
}

void Label::AutoSize(bool value) {
  autoSize_ = value;
  if (autoSize_) fit();
}

void Label::property(std::string_view name, const Variant& value) {
  Child::property(name, value);
  if (autoSize_ && equalsIgnoreCaseAscii(name, "Font")) fit();
}

bool Label::opaque() const {
  const Variant style = property("BackStyle");
  try {
    return style.isEmpty() || style.toInt32() != 0;
  } catch (const VbError&) {
    return true;
  }
}

void Label::fit() {
  int32_t width = 0, height = 0;
  platform::backend().textMeasure().measure(caption_, platform::childFont(*this)->face(), width,
                                            height);
  width_ = twipsOf(width);
  height_ = twipsOf(height);
  place();
}

Image::Image(UserControl& owner, const std::string& name) : Child(owner, name, new QLabel, false) {
  widget_->lower();
  widget_->setAutoFillBackground(false);
  widget_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  new Filter(widget_, [this](QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && reachable()) {
      userAction([&] {
        if (events.Click) events.Click();
      });
    } else if (event->type() == QEvent::MouseButtonDblClick && reachable()) {
      userAction([&] {
        if (events.DblClick) events.DblClick();
      });
    }
    return false;
  });
}

void Image::Picture(const Ref<Object>& picture) {
  picture_ = picture;
  if (!widget_) return;
  const QImage image = imageOf(picture);
  widget_->setPixmap(image.isNull() ? QPixmap() : QPixmap::fromImage(image));
}

void Image::Stretch(bool value) {
  stretch_ = value;
  if (widget_) widget_->setScaledContents(value);
}

Frame::Frame(UserControl& owner, const std::string& name) : Child(owner, name, new QFrame, true) {}

// ---- Rows ---------------------------------------------------------------------------------

template <class Interface, class QtWidget>
void Rows<Interface, QtWidget>::ListIndex(int32_t value) {
  if (value < -1 || value >= ListCount()) throw VbError(err::InvalidPropertyValue);
  if (value == index_) return;
  index_ = value;
  showRow(value);
  // With Qt's call returned: an error of the handler goes back to the program.
  if (this->events.Click) this->events.Click();
}

template <class Interface, class QtWidget>
void Rows<Interface, QtWidget>::pickedByUser(int row) {
  if (row == index_ || row < -1 || row >= ListCount()) return;
  index_ = row;
  userAction([&] {
    if (this->events.Click) this->events.Click();
  });
}

template <>
std::string Rows<platform::ComboBox, QComboBox>::List(int32_t index) const {
  if (!this->widget_ || index < 0 || index >= this->widget_->count()) return {};
  return utf8(this->widget_->itemText(index));
}
template <>
std::string Rows<platform::ListBox, QListWidget>::List(int32_t index) const {
  if (!this->widget_ || index < 0 || index >= this->widget_->count()) return {};
  return utf8(this->widget_->item(index)->text());
}

template <class Interface, class QtWidget>
int32_t Rows<Interface, QtWidget>::ListCount() const {
  return this->widget_ ? this->widget_->count() : 0;
}

template <class Interface, class QtWidget>
void Rows<Interface, QtWidget>::Clear() {
  index_ = -1;
  if (!this->widget_) return;
  const QSignalBlocker blocker(this->widget_);
  this->widget_->clear();
}

template <class Interface, class QtWidget>
void Rows<Interface, QtWidget>::AddItem(const std::string& item) {
  if (!this->widget_) return;
  const QSignalBlocker blocker(this->widget_);
  this->widget_->addItem(qtText(item));
  // Qt selects the first row it is given; the classic list selects nothing.
  showRow(index_);
}

template class Rows<platform::ComboBox, QComboBox>;
template class Rows<platform::ListBox, QListWidget>;

namespace {

// Draws the rows of a combo box's open list as its control says, where it says.
class RowPainter : public QStyledItemDelegate {
 public:
  explicit RowPainter(platform::ComboBox& combo, QObject* parent)
      : QStyledItemDelegate(parent), combo_(combo) {}
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    if (!combo_.drawRow) {
      QStyledItemDelegate::paint(painter, option, index);
      return;
    }
    const bool hot = option.state & (QStyle::State_MouseOver | QStyle::State_Selected);
    platform::RowPaint row;
    // Painting is part of the user's opening the list: an error of the control's drawing is
    // kept as unhandled, and the row is drawn the platform's way.
    const bool drawn = userAction([&] {
      row =
          combo_.drawRow(index.row(), hot ? platform::kRowFocus : 0, utf8(index.data().toString()));
    });
    if (!drawn) {
      QStyledItemDelegate::paint(painter, option, index);
      return;
    }
    painter->fillRect(option.rect, qtColor(row.background));
    painter->setPen(qtColor(platform::colors::kWindowText));
    const QFontMetrics metrics(option.font);
    painter->drawText(option.rect.left() + row.textLeft,
                      option.rect.top() + row.textTop + metrics.ascent(), qtText(row.text));
    if (row.focusRectangle) {
      QPen dotted(Qt::DotLine);
      painter->setPen(dotted);
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
  }

 private:
  platform::ComboBox& combo_;
};

}  // namespace

ComboBox::ComboBox(UserControl& owner, const std::string& name)
    : Rows(owner, name, new QComboBox, true) {
  widget_->setEditable(false);
  widget_->setItemDelegate(new RowPainter(*this, widget_));
  widget_->view()->setMouseTracking(true);
  QObject::connect(widget_, &QComboBox::currentIndexChanged, [this](int row) {
    // A locked box opens and closes again with its row unchanged.
    if (locked_) {
      showRow(index_);
      return;
    }
    pickedByUser(row);
  });
}

void ComboBox::showRow(int row) {
  if (!widget_) return;
  const QSignalBlocker blocker(widget_);
  widget_->setCurrentIndex(row);
}

void ComboBox::ShowDropDown(bool open) {
  if (!widget_) return;
  if (open) {
    widget_->showPopup();
  } else {
    widget_->hidePopup();
  }
}

bool ComboBox::DroppedDown() const { return widget_ && widget_->view()->isVisible(); }

ListBox::ListBox(UserControl& owner, const std::string& name)
    : Rows(owner, name, new QListWidget, true) {
  QObject::connect(widget_, &QListWidget::currentRowChanged,
                   [this](int row) { pickedByUser(row); });
}

void ListBox::showRow(int row) {
  if (!widget_) return;
  const QSignalBlocker blocker(widget_);
  widget_->setCurrentRow(row);
}

// ---- ChartViewer --------------------------------------------------------------------------

namespace {

class ViewerWidget : public QWidget {
 public:
  // The viewer that this widget shows; set once the viewer is made.
  ChartViewer* viewer_ = nullptr;

 protected:
  // The chart's pixels at the screen's: scaled where the screen isn't at 96 dpi.
  void paintEvent(QPaintEvent*) override {
    if (!viewer_ || viewer_->image().isNull()) return;
    QPainter painter(this);
    const double scale = chartScale();
    if (scale != 1.0) {
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.scale(scale, scale);
    }
    painter.drawImage(0, 0, viewer_->image());
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (!viewer_) return;
    const QPointF at = event->position() / chartScale();
    if (event->button() == Qt::LeftButton) {
      pressed_ = event->position();
      leftDown_ = true;
    }
    viewer_->press(buttonOf(event->button()), shiftOf(event->modifiers()), at.x(), at.y());
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!viewer_ || event->button() != Qt::LeftButton || !leftDown_) return;
    leftDown_ = false;
    const double scale = chartScale();
    const QPointF at = event->position();
    if ((at - pressed_).manhattanLength() < QApplication::startDragDistance()) {
      viewer_->click(at.x() / scale, at.y() / scale);
    } else {
      viewer_->drag(pressed_.x() / scale, pressed_.y() / scale, at.x() / scale, at.y() / scale);
    }
  }

 private:
  // Where the left button went down, in the widget's pixels.
  QPointF pressed_;
  bool leftDown_ = false;
};

}  // namespace

ChartViewer::ChartViewer(UserControl& owner, const std::string& name)
    : Child(owner, name, new ViewerWidget, true) {
  static_cast<ViewerWidget*>(widget_.data())->viewer_ = this;
}

void ChartViewer::Picture(const Ref<Object>& picture) {
  picture_ = picture;
  image_ = imageOf(picture);
  if (widget_) widget_->update();
}

void ChartViewer::MousePointer(int32_t value) {
  mousePointer_ = value;
  if (!widget_) return;
  switch (value) {
    case 50:
      widget_->setCursor(Qt::OpenHandCursor);
      break;
    case 51:
    case 52:
    case 53:
      widget_->setCursor(Qt::CrossCursor);
      break;
    case 1:
      widget_->setCursor(Qt::ArrowCursor);
      break;
    default:
      widget_->unsetCursor();
  }
}

// The program's call: an error of the handler goes back to it.
void ChartViewer::updateViewPort(bool needUpdateChart, bool needUpdateImageMap) {
  view_ = platform::clampViewPort(view_);
  if (viewerEvents.ViewPortChanged) {
    viewerEvents.ViewPortChanged(needUpdateChart, needUpdateImageMap);
  }
}

void ChartViewer::press(int32_t button, int32_t shift, double x, double y) {
  if (!reachable() || button == 0 || !viewerEvents.MouseDown) return;
  userAction(
      [&] { viewerEvents.MouseDown(button, shift, static_cast<float>(x), static_cast<float>(y)); });
}

// The chart is width_ / 15 pixels wide, as the controls draw it.
void ChartViewer::click(double x, double y) {
  if (!reachable()) return;
  if (mouseUsage_ != kMouseZoomIn && mouseUsage_ != kMouseZoomOut) return;
  const int32_t wide = width_ / 15, high = height_ / 15;
  const double fx = wide > 0 ? x / wide : 0.5;
  const double fy = high > 0 ? y / high : 0.5;
  view_ = platform::zoomAround(
      view_, fx, fy, mouseUsage_ == kMouseZoomIn ? kZoomStep : 1 / kZoomStep, zoomDirection_);
  userAction([&] {
    if (viewerEvents.ViewPortChanged) viewerEvents.ViewPortChanged(true, false);
  });
}

void ChartViewer::drag(double fromX, double fromY, double toX, double toY) {
  if (!reachable() || mouseUsage_ != kMouseScroll) return;
  view_ = platform::scrollBy(view_, toX - fromX, toY - fromY, width_ / 15, height_ / 15,
                             scrollDirection_);
  userAction([&] {
    if (viewerEvents.ViewPortChanged) viewerEvents.ViewPortChanged(true, false);
  });
}

}  // namespace tessaline::qt

namespace tessaline::qt {

// ---- CheckBox, DatePicker ------------------------------------------------------------------

CheckBox::CheckBox(UserControl& owner, const std::string& name)
    : Child(owner, name, new QCheckBox(qtText(name)), true) {
  new Filter(widget_, [this](QEvent* event) {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton && reachable()) {
          widget_->setFocus(Qt::MouseFocusReason);
          userAction([&] {
            if (events.MouseDown) events.MouseDown();
          });
        }
        return true;
      case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && reachable() &&
            widget_->rect().contains(mouse->position().toPoint())) {
          userAction([&] {
            toggle();
            if (events.MouseUp) events.MouseUp();
          });
        }
        return true;
      }
      case QEvent::KeyPress:
        return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
      case QEvent::KeyRelease:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space) return false;
        if (!static_cast<QKeyEvent*>(event)->isAutoRepeat() && reachable()) {
          userAction([&] { toggle(); });
        }
        return true;
      default:
        return false;
    }
  });
}

void CheckBox::Value(int16_t value) {
  if (value < 0 || value > 2) throw VbError(err::InvalidPropertyValue);
  if (value == value_) return;
  value_ = value;
  if (widget_) {
    const QSignalBlocker blocker(widget_);
    widget_->setTristate(value == 2);
    widget_->setCheckState(value == 0   ? Qt::Unchecked
                           : value == 1 ? Qt::Checked
                                        : Qt::PartiallyChecked);
  }
  if (events.Click) events.Click();
}

void CheckBox::toggle() { Value(value_ == 1 ? int16_t{0} : int16_t{1}); }

std::string CheckBox::Caption() const { return widget_ ? utf8(widget_->text()) : std::string(); }

void CheckBox::Caption(const std::string& value) {
  if (widget_) widget_->setText(qtText(value));
}

void CheckBox::Picture(const Ref<Object>& picture) {
  picture_ = picture;
  if (!widget_) return;
  const QImage image = imageOf(picture);
  widget_->setIcon(image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image)));
}

namespace {

QDateTime qtMoment(double days) {
  const DateTimeFields f = fieldsFromSerial(days);
  return QDateTime(QDate(f.year, f.month, f.day), QTime(f.hour, f.minute, f.second));
}

double serialOf(const QDateTime& moment) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  return serialFromFields(
      {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()});
}

// The picker's tokens as Qt's display format writes them: Qt has no one-letter year and shows
// AM and PM as "AP"; "t" would be Qt's time zone.
QString qtDisplayFormat(const std::string& format) {
  if (format.empty()) return QStringLiteral("M/d/yyyy h:mm:ss AP");
  QString out;
  for (size_t i = 0; i < format.size();) {
    const char c = format[i];
    size_t run = 1;
    while (i + run < format.size() && format[i + run] == c) ++run;
    if (c == '\'') {
      const size_t end = format.find('\'', i + 1);
      const size_t stop = end == std::string::npos ? format.size() : end + 1;
      out += qtText(format.substr(i, stop - i));
      i = stop;
      continue;
    }
    if (c == 't') {
      out += QStringLiteral("AP");
    } else if (c == 'y') {
      out += run <= 2 ? QStringLiteral("yy") : QStringLiteral("yyyy");
    } else {
      out += QString(static_cast<int>(run), QChar(c));
    }
    i += run;
  }
  return out;
}

}  // namespace

DatePicker::DatePicker(UserControl& owner, const std::string& name)
    : Child(owner, name, new QDateTimeEdit, true) {
  widget_->setCalendarPopup(true);
  widget_->setDateTimeRange(qtMoment(kMinDate), qtMoment(kMaxDate));
  CustomFormat(format_);
  show();
  QObject::connect(widget_, &QDateTimeEdit::dateTimeChanged,
                   [this](const QDateTime& moment) { changedByQt(moment); });
  // A press on the fields lands on the inner line edit, which takes it; one on the arrow lands on
  // the picker: each raises Click once.
  filter_ = new Filter(widget_, [this](QEvent* event) { return onEvent(event); });
  if (auto* line = widget_->findChild<QLineEdit*>()) {
    fieldsFilter_ = new Filter(line, [this](QEvent* event) {
      if (event->type() == QEvent::MouseButtonPress && reachable() &&
          static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        raiseClick();
      }
      return false;
    });
  }
}

DatePicker::~DatePicker() {
  delete filter_.data();
  delete fieldsFilter_.data();
}

void DatePicker::raiseClick() {
  userAction([&] {
    if (events.Click) events.Click();
  });
}

bool DatePicker::onEvent(QEvent* event) {
  if (!reachable()) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) raiseClick();
      return false;
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(event);
      QWidget* picker = widget_;
      // KeyDown, KeyPress, then Qt's edit of the field with its Change: one action, which an
      // error stops there.
      const bool completed = userAction([&] {
        int16_t code = keyCodeOf(key->key()), state = shiftOf(key->modifiers());
        if (events.KeyDown) events.KeyDown(code, state);
        const QString text = key->text();
        if (!text.isEmpty() && text.at(0).unicode() >= 32) {
          int16_t ascii = static_cast<int16_t>(text.at(0).unicode());
          if (events.KeyPress) events.KeyPress(ascii);
          if (ascii == 0) return;
        }
        if (widget_) throughQt([&] { deliver(picker, event); });
      });
      if (!completed) stoppedKey_ = key->key();
      return true;
    }
    case QEvent::KeyRelease: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->isAutoRepeat()) return false;
      if (stoppedKey_ != 0 && stoppedKey_ == key->key()) {
        stoppedKey_ = 0;
        return false;
      }
      userAction([&] {
        int16_t code = keyCodeOf(key->key()), state = shiftOf(key->modifiers());
        if (events.KeyUp) events.KeyUp(code, state);
      });
      return false;
    }
    default:
      return false;
  }
}

void DatePicker::show() {
  if (!widget_) return;
  ownChange_ = true;
  widget_->setDateTime(qtMoment(value_.days));
  ownChange_ = false;
}

void DatePicker::changedByQt(const QDateTime& moment) {
  if (ownChange_) return;
  const double days = serialOf(moment);
  if (days == value_.days) return;
  value_ = DateSerial{days};
  raiseFromQt([&] {
    if (events.Change) events.Change();
  });
}

void DatePicker::Value(DateSerial value) {
  if (!(value.days >= kMinDate && value.days <= kMaxDate)) {
    throw VbError(err::InvalidPropertyValue);
  }
  value_ = value;
  show();
}

void DatePicker::CustomFormat(const std::string& value) {
  format_ = value;
  if (!widget_) return;
  ownChange_ = true;
  widget_->setDisplayFormat(qtDisplayFormat(value));
  ownChange_ = false;
}

void DatePicker::CalendarBackColor(platform::Color value) {
  calendarBackColor_ = value;
  if (!widget_ || !widget_->calendarWidget()) return;
  QPalette palette = widget_->calendarWidget()->palette();
  palette.setColor(QPalette::Base, qtColor(value));
  widget_->calendarWidget()->setPalette(palette);
}

std::string DatePicker::Text() const { return formatPickerDate(value_, format_); }

// ---- OptionButton, ScrollBar, Timer -------------------------------------------------------

OptionButton::OptionButton(UserControl& owner, const std::string& name)
    : Child(owner, name, new QToolButton, true) {
  widget_->setCheckable(true);
  widget_->setAutoExclusive(true);
  widget_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  QObject::connect(widget_, &QToolButton::clicked, [this] {
    userAction([&] {
      if (events.Click) events.Click();
    });
  });
}

// Qt keeps one button of an exclusive group pressed: the button that only comes up leaves the
// group for that moment. Click is raised with Qt's call returned, so that an error of its
// handler goes back to the program.
void OptionButton::Value(bool value) {
  if (!widget_) return;
  {
    const QSignalBlocker blocker(widget_);
    if (!value) widget_->setAutoExclusive(false);
    widget_->setChecked(value);
    if (!value) widget_->setAutoExclusive(true);
  }
  if (value && events.Click) events.Click();
}

void OptionButton::Picture(const Ref<Object>& picture) {
  picture_ = picture;
  if (!widget_) return;
  const QImage image = imageOf(picture);
  widget_->setIcon(image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image)));
  if (!image.isNull()) widget_->setIconSize(image.size());
}

ScrollBar::ScrollBar(UserControl& owner, const std::string& name, bool horizontal)
    : Child(owner, name, new QScrollBar(horizontal ? Qt::Horizontal : Qt::Vertical), true),
      horizontal_(horizontal) {
  // The value moves with the thumb only where it is let go: Scroll while it moves, Change then.
  widget_->setTracking(false);
  range();
  QObject::connect(widget_, &QScrollBar::sliderMoved, [this](int position) {
    value_ = position;
    userAction([&] {
      if (events.Scroll) events.Scroll();
    });
  });
  QObject::connect(widget_, &QScrollBar::valueChanged, [this](int value) {
    value_ = value;
    userAction([&] {
      if (events.Change) events.Change();
    });
  });
}

void ScrollBar::range() {
  if (!widget_) return;
  const QSignalBlocker blocker(widget_);
  widget_->setRange(std::min(min_, max_), std::max(min_, max_));
  widget_->setInvertedAppearance(min_ > max_);
  widget_->setSingleStep(smallChange_);
  widget_->setPageStep(largeChange_);
  widget_->setValue(value_);
}

void ScrollBar::Min(int32_t value) {
  min_ = value;
  range();
}

void ScrollBar::Max(int32_t value) {
  max_ = value;
  range();
}

void ScrollBar::SmallChange(int32_t value) {
  smallChange_ = value;
  range();
}

void ScrollBar::LargeChange(int32_t value) {
  largeChange_ = value;
  range();
}

void ScrollBar::Value(int32_t value) {
  if (value < std::min(min_, max_) || value > std::max(min_, max_)) {
    throw VbError(err::InvalidPropertyValue);
  }
  if (value == value_) return;
  value_ = value;
  range();
  // With Qt's call returned: an error of the handler goes back to the program.
  if (events.Change) events.Change();
}

Timer::Timer(std::string name) : name_(std::move(name)) {
  QObject::connect(&timer_, &QTimer::timeout, [this] {
    userAction([&] {
      if (events.Timer) events.Timer();
    });
  });
}

void Timer::Interval(int32_t milliseconds) {
  if (milliseconds == interval_) return;
  interval_ = milliseconds;
  restart();
}

void Timer::Enabled(bool value) {
  if (value == enabled_) return;
  enabled_ = value;
  restart();
}

void Timer::restart() {
  timer_.stop();
  if (enabled_ && interval_ > 0) timer_.start(interval_);
}

// ---- CommandButton, TreeView, ShortcutBar -------------------------------------------------

CommandButton::CommandButton(UserControl& owner, const std::string& name)
    : Child(owner, name, new QPushButton, true) {
  QObject::connect(widget_, &QPushButton::clicked, [this] {
    if (!reachable()) return;
    userAction([&] {
      if (events.Click) events.Click();
    });
  });
}

void CommandButton::Caption(const std::string& value) {
  caption_ = value;
  if (widget_) widget_->setText(qtText(value));
}

TreeView::TreeView(UserControl& owner, const std::string& name)
    : Child(owner, name, new QTreeWidget, true) {
  widget_->setHeaderHidden(true);
  widget_->setColumnCount(1);
  widget_->hide();
  // The user opens and closes entries too.
  const auto follow = [this](QTreeWidgetItem* item, bool expanded) {
    const int32_t node = item ? item->data(0, Qt::UserRole).toInt() : 0;
    if (node >= 1 && node <= NodeCount()) nodes_[static_cast<size_t>(node - 1)].expanded = expanded;
  };
  QObject::connect(widget_, &QTreeWidget::itemExpanded,
                   [follow](QTreeWidgetItem* item) { follow(item, true); });
  QObject::connect(widget_, &QTreeWidget::itemCollapsed,
                   [follow](QTreeWidgetItem* item) { follow(item, false); });
  QObject::connect(widget_, &QTreeWidget::itemClicked, [this](QTreeWidgetItem* item, int) {
    if (!reachable() || !item) return;
    const int32_t node = item->data(0, Qt::UserRole).toInt();
    userAction([&] {
      SelectNode(node);
      if (events.NodeClick) events.NodeClick(node);
    });
  });
}

// Out of the widget in one step, then children before their parents: each item is a leaf
// that belongs to no model when it goes.
TreeView::~TreeView() {
  if (widget_ && flushed_) {
    while (widget_->topLevelItemCount() > 0) widget_->takeTopLevelItem(0);
  }
  for (auto node = nodes_.rbegin(); node != nodes_.rend(); ++node) {
    if (QTreeWidgetItem* parent = node->item->parent()) parent->removeChild(node->item);
    delete node->item;
  }
}

void TreeView::flush() {
  if (flushed_ || !widget_) return;
  flushed_ = true;
  widget_->addTopLevelItems(QList<QTreeWidgetItem*>(pendingTop_.begin(), pendingTop_.end()));
  pendingTop_.clear();
  for (const Node& node : nodes_) {
    if (node.expanded) node.item->setExpanded(true);
  }
  if (selected_ != 0) {
    const QSignalBlocker blocker(widget_);
    widget_->setCurrentItem(at(selected_).item);
  }
}

TreeView::Node& TreeView::at(int32_t node) {
  if (node < 1 || node > NodeCount()) throw VbError(err::IndexOutOfBounds);
  return nodes_[static_cast<size_t>(node - 1)];
}

const TreeView::Node& TreeView::at(int32_t node) const {
  if (node < 1 || node > NodeCount()) throw VbError(err::IndexOutOfBounds);
  return nodes_[static_cast<size_t>(node - 1)];
}

void TreeView::Visible(bool value) {
  visible_ = value;
  if (value && attached_) flush();
  if (widget_) widget_->setVisible(value && attached_);
}

void TreeView::attached() {
  attached_ = true;
  if (visible_) flush();
  if (widget_) widget_->setVisible(visible_);
}

int32_t TreeView::AddNode(int32_t parent, const std::string& key, const std::string& text) {
  QTreeWidgetItem* parentItem = parent != 0 ? at(parent).item : nullptr;
  if (keys_.count(key)) throw VbError(err::KeyNotUnique);
  auto* item = parentItem ? new QTreeWidgetItem(parentItem) : new QTreeWidgetItem();
  item->setText(0, qtText(text));
  if (!parentItem) {
    if (flushed_ && widget_) {
      widget_->addTopLevelItem(item);
    } else {
      pendingTop_.push_back(item);
    }
  }
  nodes_.push_back({parent, key, Variant(), item, false});
  const int32_t node = NodeCount();
  item->setData(0, Qt::UserRole, node);
  keys_[key] = node;
  return node;
}

std::string TreeView::NodeText(int32_t node) const { return utf8(at(node).item->text(0)); }

bool TreeView::NodeExpanded(int32_t node) const { return at(node).expanded; }

void TreeView::NodeExpanded(int32_t node, bool value) {
  Node& entry = at(node);
  entry.expanded = value;
  if (flushed_) entry.item->setExpanded(value);
}

void TreeView::SelectNode(int32_t node) {
  QTreeWidgetItem* item = node != 0 ? at(node).item : nullptr;
  selected_ = node;
  if (!widget_ || !flushed_) return;
  const QSignalBlocker blocker(widget_);
  widget_->setCurrentItem(item);
}

// Indentation counts in twips; Qt's in pixels.
void TreeView::Indentation(int32_t value) {
  indentation_ = value;
  if (widget_) widget_->setIndentation(std::max(pixelsOf(value), 12));
}

void TreeView::LineStyle(int32_t value) {
  lineStyle_ = value;
  if (widget_) widget_->setRootIsDecorated(true);
}

void TreeView::Move(int32_t left, int32_t top, int32_t width, int32_t height) {
  left_ = left;
  top_ = top;
  width_ = width;
  height_ = height;
  if (!attached_) place();
}

ShortcutBar::ShortcutBar(UserControl& owner, const std::string& name)
    : Child(owner, name, new QToolBox, true) {}

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
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto icon = icons_.find(iconKey);
  {
    const QSignalBlocker blocker(widget_);
    widget_->addItem(page, icon == icons_.end() ? QIcon() : icon->second, qtText(caption));
  }
  bars_.push_back({key, caption, iconKey, nullptr, page, false});
  const int32_t bar = BarCount();
  // The caption is a button of the tool box, made by addItem: a click on it raises BarClick
  // after the tool box opened the page, also when the page was open already.
  const QList<QAbstractButton*> buttons = widget_->findChildren<QAbstractButton*>(
      QStringLiteral("qt_toolbox_toolboxbutton"), Qt::FindDirectChildrenOnly);
  if (!buttons.isEmpty()) {
    QObject::connect(buttons.back(), &QAbstractButton::clicked, [this, bar] {
      if (!reachable()) return;
      userAction([&] {
        selectedBar_ = bar;
        if (events.BarClick) events.BarClick(bar);
      });
    });
  }
  return bar;
}

void ShortcutBar::BarControl(int32_t bar, platform::Widget* content) {
  Bar& target = at(bar);
  target.content = content;
  if (auto* tree = dynamic_cast<TreeView*>(content); tree && tree->widget()) {
    target.page->layout()->addWidget(tree->widget());
    tree->attached();
  }
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
  const QSignalBlocker blocker(widget_);
  widget_->setCurrentIndex(bar - 1);
}

void ShortcutBar::Redraw(bool value) {
  redraw_ = value;
  widget_->setUpdatesEnabled(value);
  if (value) widget_->update();
}

// Read through the picture service, so that the formats are those of every other picture.
bool ShortcutBar::LoadIconImageFromFile(const std::string& path, const std::string& key) {
  try {
    const Ref<platform::Picture> picture = platform::LoadPicture(path);
    // A deep copy: the picture's pixels go with the picture, and the icon outlives it.
    const QImage image = imageOf(picture).copy();
    if (image.isNull()) return false;
    icons_[key] = QIcon(QPixmap::fromImage(image));
    return true;
  } catch (const VbError&) {
    return false;
  }
}

}  // namespace tessaline::qt
