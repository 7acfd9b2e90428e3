// The studio's window on Qt, as a user works in it: forms opened, a text typed and a row picked,
// edits kept across forms and applied, debug lines hidden, and the window closed while the
// device goes on sending values.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QListWidget>
#include <QTimer>

#include "apps/studio/main_window.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/values/locale.h"
#include "user.h"

namespace tessaline {
namespace {

using studio::MainWindow;

class StudioWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    qt::install(qt::Time::Driven);
    regexp::install();
    chart::install();
  }
  void TearDown() override {
    window.reset();
    // Whatever was still queued for the window finds it gone.
    QApplication::processEvents();
    EXPECT_TRUE(qt::takeUnhandledErrors().empty());
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
    setLocale(nullptr);
  }
  void open(MainWindow::Options options) {
    std::vector<std::string> problems;
    auto package = studio::loadPackage(TESSALINE_SOURCE_DIR "/devices/sample-pump", problems);
    ASSERT_EQ(problems, std::vector<std::string>{});
    options.realTime = false;
    window = std::make_unique<MainWindow>(std::make_unique<studio::Session>(std::move(package)),
                                          problems, std::move(options));
    window->show();
    QApplication::processEvents();
  }
  template <class Control>
  Control& control(const char* name) {
    return dynamic_cast<Control&>(*window->session().form()->find(name));
  }
  Variant device(const char* parameter) { return window->session().host().device.read(parameter); }
  size_t shownLines(const QString& operation) {
    size_t shown = 0;
    for (int row = 0; row < window->calls()->count(); ++row) {
      const QListWidgetItem* item = window->calls()->item(row);
      shown += !item->isHidden() && item->text().startsWith(operation);
    }
    return shown;
  }

  std::unique_ptr<testing::User> user = testing::qtUser();
  std::unique_ptr<MainWindow> window;
};

TEST_F(StudioWindow, EditsOnTwoVisitsAreAppliedTogether) {
  open({});
  ASSERT_EQ(window->session().formIndex(), 0u);
  auto& setpoint = control<DTMDataTextBox>("Setpoint");
  user->select(setpoint.Text1(), 0, 10);
  user->type(setpoint.Text1(), "80");
  user->pick(control<DTMListControl>("AlarmReaction").List1(), 2);

  window->showForm(1);
  window->advance(5);
  window->showForm(0);
  EXPECT_EQ(&control<DTMDataTextBox>("Setpoint"), &setpoint);
  EXPECT_EQ(setpoint.Text1().Text(), "80");
  EXPECT_EQ(window->session().unappliedEdits().size(), 2u);

  window->apply();
  EXPECT_EQ(device("Setpoint"), Variant(80.0));
  EXPECT_EQ(device("AlarmReaction"), Variant(2.0));
  EXPECT_TRUE(window->session().unappliedEdits().empty());
  EXPECT_EQ(window->problems()->count(), 0);
}

TEST_F(StudioWindow, DebugLinesAreCountedButShownOnlyWhenAskedFor) {
  open({});
  window->showForm(1);
  window->advance(3);
  EXPECT_FALSE(window->debugLines()->isChecked());
  EXPECT_EQ(shownLines("LogDebug"), 0u);
  EXPECT_GT(shownLines("GetLocalizedString"), 0u);
  EXPECT_NE(window->debugLines()->text(), "Debug lines");
  window->debugLines()->setChecked(true);
  EXPECT_GT(shownLines("LogDebug"), 0u);
}

// The close asks; while it asks, the device goes on, and a value waits in the queue as the
// window goes.
TEST_F(StudioWindow, ClosingWithEditsAsksAndLosesNothing) {
  std::vector<MainWindow::Closing> answers = {MainWindow::Closing::Cancel,
                                              MainWindow::Closing::Apply};
  std::vector<std::vector<std::string>> asked;
  MainWindow::Options options;
  options.askBeforeClosing = [&](const std::vector<std::string>& edits) {
    asked.push_back(edits);
    window->advance(1);
    const MainWindow::Closing answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  };
  open(std::move(options));
  auto& tag = control<DTMDataTextBox>("Tag");
  user->select(tag.Text1(), 0, 10);
  user->type(tag.Text1(), "P7");

  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(tag.Text1().Text(), "P7");
  QTimer::singleShot(0, window.get(), [this] { window->advance(1); });
  EXPECT_TRUE(window->close());
  EXPECT_EQ(asked, (std::vector<std::vector<std::string>>(2, {"Settings: Tag"})));
  EXPECT_EQ(device("Tag"), Variant("P7"));
}

TEST_F(StudioWindow, ClosingWithoutAQuestionNeverWaits) {
  open({});
  user->type(control<DTMDataTextBox>("Tag").Text1(), "X");
  QTimer::singleShot(0, window.get(), [this] { window->advance(1); });
  EXPECT_TRUE(window->close());
}

}  // namespace
}  // namespace tessaline
