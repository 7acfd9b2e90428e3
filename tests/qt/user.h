#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tessaline/platform/chart_viewer.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/widgets.h"
#include "tessaline/values/vb_error.h"

// A user of the controls on either backend: the same actions, as the headless test API takes
// them and as Qt receives them from the keyboard and the mouse.
namespace tessaline::testing {

class User {
 public:
  virtual ~User() = default;
  virtual const char* backend() const = 0;
  // Installs the backend (and the locale it brings) on this thread.
  virtual void install() = 0;
  // Shows a composite control's window as a host's form would, so that it can take the focus.
  virtual void show(platform::UserControl& window) = 0;

  virtual void type(platform::TextBox& box, std::string_view text) = 0;
  virtual void backspace(platform::TextBox& box) = 0;
  virtual void pressCtrl(platform::TextBox& box, char letter) = 0;
  virtual void select(platform::TextBox& box, int32_t start, int32_t length) = 0;
  // The clipboard's text pasted with the mouse (the context menu).
  virtual void paste(platform::TextBox& box) = 0;
  virtual void focus(platform::TextBox& box) = 0;
  virtual void click(platform::TextBox& box) = 0;
  // The focus leaves for another window of the form.
  virtual void blur() = 0;
  virtual void pick(platform::ComboBox& combo, int32_t row) = 0;
  virtual void pick(platform::ListBox& list, int32_t row) = 0;
  // The rows of a combo box's open list painted, as the platform paints them when it shows them.
  virtual void paintRows(platform::ComboBox& combo) = 0;
  virtual void click(platform::Label& label) = 0;
  virtual void click(platform::Image& image) = 0;
  virtual void click(platform::CommandButton& button) = 0;
  virtual void click(platform::CheckBox& box) = 0;
  // A click on the fields of a date picker.
  virtual void click(platform::DatePicker& picker) = 0;
  // The user selects a field of the picker and types its new number, digit by digit.
  virtual void typeField(platform::DatePicker& picker, headless::DateField field,
                         int32_t number) = 0;
  // The user opens the calendar with a click on the arrow and picks a day.
  virtual void pickFromCalendar(platform::DatePicker& picker, int32_t year, int32_t month,
                                int32_t day) = 0;
  // A click on an entry of a tree, by its number.
  virtual void click(platform::TreeView& tree, int32_t node) = 0;
  // A click on a bar's caption, by its position.
  virtual void click(platform::ShortcutBar& bar, int32_t position) = 0;
  // A click at a point of the viewer, in the chart's pixels (15 twips each), with a button:
  // 1 left, 2 right, 4 middle.
  virtual void click(platform::ChartViewer& viewer, int32_t x, int32_t y, int32_t button = 1) = 0;
  virtual void drag(platform::ChartViewer& viewer, int32_t fromX, int32_t fromY, int32_t toX,
                    int32_t toY) = 0;
  virtual std::vector<VbError> takeUnhandledErrors() = 0;
};

std::unique_ptr<User> headlessUser();
std::unique_ptr<User> qtUser();

// A window or a widget given its size in twips, and its place where not at the corner.
template <class Widget>
std::unique_ptr<Widget> placed(std::unique_ptr<Widget> widget, int32_t width, int32_t height,
                               int32_t left = 0, int32_t top = 0) {
  widget->Width(width);
  widget->Height(height);
  if (left) widget->Left(left);
  if (top) widget->Top(top);
  return widget;
}

// A window of the backend's to put widgets on, as a host's form.
inline std::unique_ptr<platform::UserControl> form(int32_t width = 4000, int32_t height = 400,
                                                   const char* className = "Form") {
  return placed(platform::backend().createUserControl(className), width, height);
}

}  // namespace tessaline::testing
