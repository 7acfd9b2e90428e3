#include "user.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <string>

#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/platform/qt/qt_widgets.h"
#include "tessaline/values/text.h"

namespace tessaline::testing {

namespace {

class HeadlessUser : public User {
 public:
  const char* backend() const override { return "headless"; }
  void install() override { headless::install("."); }
  void show(platform::UserControl&) override {}
  void type(platform::TextBox& box, std::string_view text) override {
    headless::user(box).type(text);
  }
  void backspace(platform::TextBox& box) override { headless::user(box).backspace(); }
  void pressCtrl(platform::TextBox& box, char letter) override {
    headless::user(box).pressCtrl(letter);
  }
  void select(platform::TextBox& box, int32_t start, int32_t length) override {
    headless::user(box).select(start, length);
  }
  void paste(platform::TextBox& box) override { headless::user(box).paste(); }
  void focus(platform::TextBox& box) override { headless::user(box).focus(); }
  void click(platform::TextBox& box) override { headless::user(box).click(); }
  void blur() override { headless::moveFocus(nullptr); }
  void pick(platform::ComboBox& combo, int32_t row) override { headless::user(combo).pick(row); }
  void pick(platform::ListBox& list, int32_t row) override { headless::user(list).pick(row); }
  void paintRows(platform::ComboBox& combo) override { headless::user(combo).paintedRows(); }
  void click(platform::Label& label) override { headless::user(label).click(); }
  void click(platform::Image& image) override { headless::user(image).click(); }
  void click(platform::CommandButton& button) override { headless::user(button).click(); }
  void click(platform::CheckBox& box) override { headless::user(box).click(); }
  void click(platform::DatePicker& picker) override { headless::user(picker).click(); }
  void typeField(platform::DatePicker& picker, headless::DateField field, int32_t number) override {
    headless::user(picker).typeField(field, number);
  }
  void pickFromCalendar(platform::DatePicker& picker, int32_t year, int32_t month,
                        int32_t day) override {
    headless::user(picker).pickFromCalendar(year, month, day);
  }
  void click(platform::TreeView& tree, int32_t node) override { headless::user(tree).click(node); }
  void click(platform::ShortcutBar& bar, int32_t position) override {
    headless::user(bar).click(position);
  }
  void click(platform::ChartViewer& viewer, int32_t x, int32_t y, int32_t button) override {
    headless::user(viewer).click(x, y, button);
  }
  void drag(platform::ChartViewer& viewer, int32_t fromX, int32_t fromY, int32_t toX,
            int32_t toY) override {
    headless::user(viewer).drag(fromX, fromY, toX, toY);
  }
  std::vector<VbError> takeUnhandledErrors() override {
    return headless::current().takeUnhandledErrors();
  }
};

// The key that types a character on a US keyboard, and whether Shift is down for it.
int keyOf(char16_t unit, Qt::KeyboardModifiers& modifiers) {
  modifiers = Qt::NoModifier;
  if (unit >= u'a' && unit <= u'z') return Qt::Key_A + (unit - u'a');
  if (unit >= u'A' && unit <= u'Z') {
    modifiers = Qt::ShiftModifier;
    return Qt::Key_A + (unit - u'A');
  }
  if (unit >= u'0' && unit <= u'9') return Qt::Key_0 + (unit - u'0');
  switch (unit) {
    case u' ':
      return Qt::Key_Space;
    case u'.':
      return Qt::Key_Period;
    case u',':
      return Qt::Key_Comma;
    case u'-':
      return Qt::Key_Minus;
    case u'\r':
      return Qt::Key_Return;
    case u'\b':
      return Qt::Key_Backspace;
    default:
      return Qt::Key_unknown;
  }
}

class QtUser : public User {
 public:
  const char* backend() const override { return "qt"; }
  void install() override { qt::install(); }
  void show(platform::UserControl& window) override {
    QWidget* widget = qt::widgetOf(window);
    widget->show();
    widget->activateWindow();
    QApplication::setActiveWindow(widget);
    // The window becomes active when the platform has handled the request.
    if (!QTest::qWaitForWindowActive(widget)) ADD_FAILURE() << "the window never became active";
    // A shown window gives its first child the focus; a headless form starts with none, and
    // the scenarios start there.
    if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
  }

  void type(platform::TextBox& box, std::string_view text) override {
    focus(box);
    const QString units = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar unit : units) {
      Qt::KeyboardModifiers modifiers;
      const int key = keyOf(unit.unicode(), modifiers);
      send(box, key, modifiers, QString(unit));
    }
  }
  void backspace(platform::TextBox& box) override {
    focus(box);
    send(box, Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
  }
  void pressCtrl(platform::TextBox& box, char letter) override {
    focus(box);
    const int key = Qt::Key_A + ((letter | 0x20) - 'a');
    send(box, key, Qt::ControlModifier, QString(QChar(char16_t((letter | 0x20) - 'a' + 1))));
  }
  void select(platform::TextBox& box, int32_t start, int32_t length) override {
    box.SelStart(start);
    box.SelLength(length);
  }
  void paste(platform::TextBox& box) override {
    if (!box.Visible() || !box.Enabled()) return;
    QWidget* widget = qt::widgetOf(box);
    // What the context menu's Paste does; the menu offers no Paste on a read-only box.
    if (auto* line = qobject_cast<QLineEdit*>(widget); line && !line->isReadOnly()) line->paste();
    if (auto* lines = qobject_cast<QPlainTextEdit*>(widget); lines && !lines->isReadOnly()) {
      lines->paste();
    }
  }
  void focus(platform::TextBox& box) override {
    QWidget* widget = qt::widgetOf(box);
    if (!widget->hasFocus()) widget->setFocus(Qt::OtherFocusReason);
  }
  void click(platform::TextBox& box) override {
    QWidget* widget = qt::widgetOf(box);
    if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) widget = lines->viewport();
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(2, 2));
  }
  void blur() override {
    if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
  }
  void pick(platform::ComboBox& combo, int32_t row) override {
    auto* box = qobject_cast<QComboBox*>(qt::widgetOf(combo));
    if (!box->isVisible() || !box->isEnabled()) return;
    box->setFocus(Qt::MouseFocusReason);
    box->showPopup();
    QAbstractItemView* view = box->view();
    const QRect rect = view->visualRect(box->model()->index(row, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, rect.center());
    box->hidePopup();
  }
  // What the open list's view does with each row: its delegate paints it.
  void paintRows(platform::ComboBox& combo) override {
    auto* box = qobject_cast<QComboBox*>(qt::widgetOf(combo));
    QImage canvas(200, 20 * std::max(1, box->count()), QImage::Format_ARGB32);
    for (int row = 0; row < box->count(); ++row) {
      QPainter painter(&canvas);
      QStyleOptionViewItem option;
      option.rect = QRect(0, row * 20, 200, 20);
      option.font = box->font();
      box->view()->itemDelegate()->paint(&painter, option, box->model()->index(row, 0));
    }
  }
  void pick(platform::ListBox& list, int32_t row) override {
    auto* widget = qobject_cast<QListWidget*>(qt::widgetOf(list));
    if (!widget->isVisible() || !widget->isEnabled()) return;
    widget->setFocus(Qt::MouseFocusReason);
    const QRect rect = widget->visualItemRect(widget->item(row));
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, rect.center());
  }
  void click(platform::Label& label) override {
    QTest::mouseClick(qt::widgetOf(label), Qt::LeftButton, {}, QPoint(1, 1));
  }
  void click(platform::Image& image) override {
    QTest::mouseClick(qt::widgetOf(image), Qt::LeftButton, {}, QPoint(1, 1));
  }
  void click(platform::CommandButton& button) override {
    QWidget* widget = qt::widgetOf(button);
    QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
  }
  void click(platform::CheckBox& box) override {
    QWidget* widget = qt::widgetOf(box);
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
  }
  // The fields are the picker's inner line edit.
  void click(platform::DatePicker& picker) override {
    auto* edit = qobject_cast<QDateTimeEdit*>(qt::widgetOf(picker));
    QLineEdit* fields = edit->findChild<QLineEdit*>();
    QTest::mouseClick(fields, Qt::LeftButton, {}, QPoint(4, fields->height() / 2));
  }
  void typeField(platform::DatePicker& picker, headless::DateField field, int32_t number) override {
    auto* edit = qobject_cast<QDateTimeEdit*>(qt::widgetOf(picker));
    if (!edit->isVisible() || !edit->isEnabled()) return;
    if (!edit->hasFocus()) edit->setFocus(Qt::OtherFocusReason);
    edit->setSelectedSection(sectionOf(field));
    for (const char digit : std::to_string(number < 0 ? 0 : number)) {
      QTest::keyClick(edit, static_cast<Qt::Key>(Qt::Key_0 + (digit - '0')));
    }
  }
  void pickFromCalendar(platform::DatePicker& picker, int32_t year, int32_t month,
                        int32_t day) override {
    auto* edit = qobject_cast<QDateTimeEdit*>(qt::widgetOf(picker));
    if (!edit->isVisible() || !edit->isEnabled()) return;
    // The arrow at the right end opens the calendar.
    QTest::mouseClick(edit, Qt::LeftButton, {}, QPoint(edit->width() - 4, edit->height() / 2));
    QCalendarWidget* calendar = edit->calendarWidget();
    if (!calendar->isVisible()) {
      ADD_FAILURE() << "the calendar didn't open";
      return;
    }
    // The user pages to the month, then clicks the day in its grid: in the grid the month's days
    // up to 21 come first, those from 22 last (the days of the months around it are outside).
    calendar->setCurrentPage(year, month);
    auto* view = calendar->findChild<QTableView*>();
    QModelIndex cell;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      for (int column = 0; column < view->model()->columnCount(); ++column) {
        const QModelIndex index = view->model()->index(row, column);
        bool number = false;
        if (index.data().toString().toInt(&number) != day || !number) continue;
        if (!cell.isValid() || day >= 22) cell = index;
      }
    }
    if (!cell.isValid()) {
      ADD_FAILURE() << "no day " << day << " in the calendar";
      return;
    }
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
    if (calendar->isVisible()) calendar->window()->hide();
  }
  void click(platform::TreeView& tree, int32_t node) override {
    auto* widget = qobject_cast<QTreeWidget*>(qt::widgetOf(tree));
    QTreeWidgetItem* item = dynamic_cast<qt::TreeView&>(tree).item(node);
    if (!widget->isVisible() || !widget->isEnabled()) return;
    widget->scrollToItem(item);
    const QRect rect = widget->visualItemRect(item);
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, rect.center());
  }
  // The caption of a bar is a button of the tool box, one per page in order.
  void click(platform::ShortcutBar& bar, int32_t position) override {
    QWidget* box = qt::widgetOf(bar);
    QList<QAbstractButton*> buttons;
    for (QAbstractButton* button : box->findChildren<QAbstractButton*>()) {
      if (button->objectName() == QLatin1String("qt_toolbox_toolboxbutton"))
        buttons.push_back(button);
    }
    if (position < 1 || position > buttons.size()) return;
    QAbstractButton* caption = buttons[position - 1];
    QTest::mouseClick(caption, Qt::LeftButton, {}, caption->rect().center());
  }
  void click(platform::ChartViewer& viewer, int32_t x, int32_t y, int32_t button) override {
    const Qt::MouseButton qtButton = button == 2   ? Qt::RightButton
                                     : button == 4 ? Qt::MiddleButton
                                                   : Qt::LeftButton;
    QTest::mouseClick(qt::widgetOf(viewer), qtButton, {}, onScreen(x, y));
  }
  void drag(platform::ChartViewer& viewer, int32_t fromX, int32_t fromY, int32_t toX,
            int32_t toY) override {
    QWidget* widget = qt::widgetOf(viewer);
    QTest::mousePress(widget, Qt::LeftButton, {}, onScreen(fromX, fromY));
    QTest::mouseMove(widget, onScreen(toX, toY));
    QTest::mouseRelease(widget, Qt::LeftButton, {}, onScreen(toX, toY));
  }
  std::vector<VbError> takeUnhandledErrors() override { return qt::takeUnhandledErrors(); }

 private:
  // A point of a chart on the viewer's widget, at the screen's resolution.
  static QPoint onScreen(int32_t x, int32_t y) {
    const double scale = qt::chartScale();
    return QPoint(static_cast<int>(std::lround(x * scale)),
                  static_cast<int>(std::lround(y * scale)));
  }
  static QDateTimeEdit::Section sectionOf(headless::DateField field) {
    switch (field) {
      case headless::DateField::Year:
        return QDateTimeEdit::YearSection;
      case headless::DateField::Month:
        return QDateTimeEdit::MonthSection;
      case headless::DateField::Day:
        return QDateTimeEdit::DaySection;
      case headless::DateField::Hour:
        return QDateTimeEdit::HourSection;
      case headless::DateField::Minute:
        return QDateTimeEdit::MinuteSection;
      case headless::DateField::Second:
        return QDateTimeEdit::SecondSection;
    }
    return QDateTimeEdit::NoSection;
  }
  void send(platform::TextBox& box, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QWidget* widget = qt::widgetOf(box);
    if (!widget->isVisible() || !widget->isEnabled()) return;
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(widget, &release);
  }
};

}  // namespace

std::unique_ptr<User> headlessUser() { return std::make_unique<HeadlessUser>(); }
std::unique_ptr<User> qtUser() { return std::make_unique<QtUser>(); }

}  // namespace tessaline::testing
