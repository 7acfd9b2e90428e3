// What only the Qt backend can show: pixels on real widgets, the picture shared with the
// viewer, tooltips on the screen, the system clipboard, rows painted by their control.
#include "tessaline/platform/qt/qt_backend.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBox>
#include <QToolTip>
#include <QTreeWidget>

#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/values/locale.h"
#include "user.h"

namespace tessaline {
namespace {

using testing::form, testing::placed;

class QtBackend : public ::testing::Test {
 protected:
  void SetUp() override {
    qt::install();
    regexp::install();
    chart::install();
    host = std::make_shared<host::ReferenceHost>();
  }
  void TearDown() override {
    EXPECT_TRUE(qt::takeUnhandledErrors().empty());
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
    setLocale(nullptr);
  }
  std::shared_ptr<host::ReferenceHost> host;
};

// Shows a window as a host's form would, active, with the focus on nothing.
void showActive(platform::UserControl& window) {
  QWidget* widget = qt::widgetOf(window);
  widget->show();
  widget->activateWindow();
  QApplication::setActiveWindow(widget);
  ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
  if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
}

// Lengths are twips, fifteen to a pixel at 96 dots an inch, and what the screen shows of a
// gauge is the chart's pixels (the viewer is narrower than the picture).
TEST_F(QtBackend, TheGaugesViewerIsMeasuredInTwipsAndPaintsThePicturesOwnPixels) {
  ASSERT_EQ(qt::pixelsOf(1440), 96) << "the offscreen screen is expected at 96 dpi";
  auto gauge = DTMDataGuageControl::create();
  QWidget* viewer = qt::widgetOf(gauge->ChartViewer1());
  EXPECT_EQ(viewer->width(), 200);
  EXPECT_EQ(viewer->height(), 145);
  EXPECT_EQ(viewer->y(), 19);
  EXPECT_EQ(qt::widgetOf(gauge->window())->width(), qt::pixelsOf(3113));
  EXPECT_EQ(gauge->ChartViewer1().Width(), 3000);

  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(
      xml::parseElement("<gauge lowerRange='L' upperRange='H' pointerColor='FF0000'>"
                        "<zones type='low_limit'><zone name='Z' color='00FF00'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  for (auto [item, value] : {std::pair{"L", 0.0}, {"H", 10.0}, {"Z", 5.0}, {"PV", 4.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
  }
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture) << ::testing::PrintToString(host->errorLines());
  const QImage shown = viewer->grab().toImage();
  const platform::PixelImage& pixels = picture->image();
  for (QPoint p : {QPoint(10, 10), QPoint(100, 70), QPoint(150, 120)}) {
    EXPECT_EQ(shown.pixel(p) & 0xFFFFFF, pixels.pixels[p.y() * pixels.width + p.x()] & 0xFFFFFF)
        << p.x() << "," << p.y();
  }
}

TEST_F(QtBackend, TooltipsWrapToTheirWidthWaitTheirDelayAndDieWithTheirControls) {
  const size_t before = qt::liveTooltips();
  host->translations = {{"help", std::string(60, 'w') + " " + std::string(60, 'w')}};
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  qt::widgetOf(box->window())->resize(300, 30);
  box->IDTMDataControl_DataItemDef(xml::parseElement("<dataItem name='F' help='help'/>"));
  qt::TooltipInfo info;
  ASSERT_TRUE(qt::tooltipOwnedBy(box->window().hWnd(), info));
  EXPECT_EQ(std::tuple(info.maxWidth, info.initialTime, info.visibleTime, info.tools),
            std::tuple(400, 500, 8000, size_t{2}));
  EXPECT_GT(qt::liveTooltips(), before);

  QEvent enter(QEvent::Enter);
  QApplication::sendEvent(qt::widgetOf(box->Text1()), &enter);
  std::string text;
  int32_t delay = 0;
  ASSERT_TRUE(qt::pendingTooltip(text, delay));
  EXPECT_EQ(delay, 500);
  // Two words that don't fit on one line of 400 pixels.
  EXPECT_EQ(text, std::string(60, 'w') + "\n" + std::string(60, 'w'));
  qt::showPendingTooltip();
  EXPECT_TRUE(QToolTip::isVisible());
  EXPECT_EQ(QToolTip::text().toStdString(), text);
  QToolTip::hideText();
  box.reset();
  EXPECT_EQ(qt::liveTooltips(), before);
}

TEST_F(QtBackend, TheClipboardIsTheSystems) {
  platform::backend().clipboard().SetText("Grüße");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("Grüße"));
  QGuiApplication::clipboard()->setText("from elsewhere");
  EXPECT_EQ(platform::backend().clipboard().GetText(), "from elsewhere");
}

TEST_F(QtBackend, ALabelThatSizesItselfFitsItsCaptionInTheScreensFont) {
  auto window = platform::backend().createUserControl("Form");
  auto label = window->createLabel("Label1");
  label->AutoSize(true);
  label->Caption("Outlet pressure");
  auto* widget = qobject_cast<QLabel*>(qt::widgetOf(*label));
  const QFontMetrics metrics(QFont("MS Sans Serif", 8));
  EXPECT_EQ(label->Width(), qt::twipsOf(metrics.horizontalAdvance("Outlet pressure")));
  EXPECT_EQ(widget->width(), qt::pixelsOf(label->Width()));
  EXPECT_EQ(widget->text(), "Outlet pressure");
}

TEST_F(QtBackend, RowsAreDrawnAsTheirControlPaintsThem) {
  auto combo = DTMDataComboBox::create();
  combo->IDTMControl_Init(host);
  combo->InitProperties();
  combo->IDTMEnumeration_EnumDataDef(xml::parseElement(
      "<enumeration><e name='Off' code='0'/><e name='On' code='1'/></enumeration>"));
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  auto* box = qobject_cast<QComboBox*>(qt::widgetOf(combo->Combo1()));
  ASSERT_TRUE(combo->Combo1().drawRow) << "the combo box draws its own rows";
  QImage canvas(100, 40, QImage::Format_ARGB32);
  canvas.fill(Qt::black);
  for (int row = 0; row < 2; ++row) {
    QStyleOptionViewItem option;
    option.rect = QRect(0, row * 20, 100, 20);
    option.font = box->font();
    QPainter painter(&canvas);
    box->view()->itemDelegate()->paint(&painter, option, box->model()->index(row, 0));
    painter.end();
    const platform::RowPaint paint = combo->Combo1().drawRow(row, 0, combo->Combo1().List(row));
    const QColor expected(paint.background & 0xFF, (paint.background >> 8) & 0xFF,
                          (paint.background >> 16) & 0xFF);
    EXPECT_EQ(canvas.pixelColor(98, row * 20 + 2), expected) << "row " << row;
  }
}

TEST_F(QtBackend, AnErrorInAHandlerStopsTheActionAndReachesNoQtCode) {
  auto window = platform::backend().createUserControl("Form");
  auto label = window->createLabel("Label1");
  label->events.Click = [] { throw VbError(err::TypeMismatch); };
  QWidget* widget = qt::widgetOf(*label);
  QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                      Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &release);
  const auto errors = qt::takeUnhandledErrors();
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0].number(), err::TypeMismatch);
}

// While a tip is up, or within the reshow time after it went, the next tool's tip comes after
// the reshow time; otherwise after the initial time.
TEST_F(QtBackend, TheReshowTimeHoldsWhileATipIsUpAndShortlyAfterItWent) {
  // On a driven clock the tooltips' delays pass as the test moves time on.
  qt::install(qt::Time::Driven);
  const auto wait = [](int milliseconds) { qt::drivenClock()->advance(milliseconds / 1000.0); };
  auto window = platform::backend().createUserControl("Form");
  auto one = window->createTextBox("Text1", false);
  auto two = window->createTextBox("Text2", false);
  platform::TooltipService& tips = platform::backend().tooltips();
  const platform::WindowHandle tip = tips.createTooltipWindow(window->hWnd(), 0);
  tips.setDelayTime(tip, platform::TooltipService::kInitial, 400);
  tips.setDelayTime(tip, platform::TooltipService::kReshow, 200);
  tips.setDelayTime(tip, platform::TooltipService::kAutoPop, 5000);
  tips.addTool(tip, one->hWnd(), "one", 0);
  tips.addTool(tip, two->hWnd(), "two", 0);
  const auto send = [](platform::Widget& tool, QEvent::Type type) {
    QEvent event(type);
    QApplication::sendEvent(qt::widgetOf(tool), &event);
  };
  const auto move = [&](platform::Widget* from, platform::Widget& to) {
    if (from) send(*from, QEvent::Leave);
    send(to, QEvent::Enter);
  };
  const auto delay = [] {
    std::string text;
    int32_t milliseconds = -1;
    EXPECT_TRUE(qt::pendingTooltip(text, milliseconds));
    return milliseconds;
  };

  move(nullptr, *one);
  EXPECT_EQ(delay(), 400);
  // The tip shows by itself once its delay has passed.
  wait(399);
  EXPECT_EQ(delay(), 400);
  wait(1);
  std::string shown;
  int32_t none = 0;
  EXPECT_FALSE(qt::pendingTooltip(shown, none));
  // The tip stays up longer than the reshow time: the next tool's tip still comes sooner.
  wait(250);
  move(one.get(), *two);
  EXPECT_EQ(delay(), 200) << "a tip is up";
  qt::showPendingTooltip();
  move(two.get(), *one);
  EXPECT_EQ(delay(), 200) << "the tip went just now";
  send(*one, QEvent::Leave);
  wait(250);
  send(*two, QEvent::Enter);
  EXPECT_EQ(delay(), 400) << "the reshow time has passed since the tip went";
  // A tip that went by itself at the end of its visible time.
  tips.setDelayTime(tip, platform::TooltipService::kAutoPop, 100);
  qt::showPendingTooltip();
  wait(350);
  move(two.get(), *one);
  EXPECT_EQ(delay(), 400);
  send(*one, QEvent::Leave);
  tips.destroyWindow(tip);
}

// BorderStyle, Appearance and BackStyle change what the widgets show.
TEST_F(QtBackend, BorderStyleAppearanceAndBackStyleReachTheWidgets) {
  auto window = platform::backend().createUserControl("Form");
  QWidget* form = qt::widgetOf(*window);
  form->resize(400, 200);
  QPalette palette = form->palette();
  palette.setColor(QPalette::Window, Qt::blue);
  form->setPalette(palette);
  form->setAutoFillBackground(true);

  auto label = placed(window->createLabel("Label1"), 1500, 300);
  label->BackColor(platform::colors::kYellow);
  auto* shown = qobject_cast<QLabel*>(qt::widgetOf(*label));
  const auto frame = [&] { return std::pair(shown->frameShape(), shown->frameShadow()); };
  label->property("BorderStyle", Variant(1));
  EXPECT_EQ(frame(), std::pair(QFrame::Panel, QFrame::Sunken)) << "3-D by default";
  label->property("Appearance", Variant(0));
  EXPECT_EQ(frame(), std::pair(QFrame::Box, QFrame::Plain));
  label->property("BorderStyle", Variant(0));
  EXPECT_EQ(shown->frameShape(), QFrame::NoFrame);
  const auto onLabel = [&] { return form->grab().toImage().pixelColor(50, 10); };
  EXPECT_EQ(onLabel(), QColor(Qt::yellow));
  label->property("BackStyle", Variant(0));
  EXPECT_EQ(onLabel(), QColor(Qt::blue)) << "transparent";
  label->BackColor(platform::colors::kWhite);
  EXPECT_EQ(onLabel(), QColor(Qt::blue));
  label->property("BackStyle", Variant(1));
  EXPECT_EQ(onLabel(), QColor(Qt::white));

  auto box = window->createTextBox("Text1", false);
  auto* line = qobject_cast<QLineEdit*>(qt::widgetOf(*box));
  EXPECT_TRUE(line->hasFrame());
  box->property("BorderStyle", Variant(0));
  EXPECT_FALSE(line->hasFrame());
  box->property("BorderStyle", Variant(1));
  EXPECT_TRUE(line->hasFrame());

  auto lines = window->createTextBox("Text2", true);
  auto* editor = qobject_cast<QPlainTextEdit*>(qt::widgetOf(*lines));
  lines->property("Appearance", Variant(0));
  EXPECT_EQ(editor->frameShape(), QFrame::Box);
  lines->property("BorderStyle", Variant(0));
  EXPECT_EQ(editor->frameShape(), QFrame::NoFrame);

  auto button = window->createCommandButton("Command1");
  auto* push = qobject_cast<QPushButton*>(qt::widgetOf(*button));
  EXPECT_FALSE(push->isFlat());
  button->property("Appearance", Variant(0));
  EXPECT_TRUE(push->isFlat());
}

// Tab goes by TabIndex, those of a composite control on the form as one place of the order.
TEST_F(QtBackend, TabFollowsTheTabIndex) {
  auto window = form(6000, 3000);
  std::vector<std::unique_ptr<platform::TextBox>> boxes;
  for (const int32_t index : {3, 1, 0, 2}) {
    const auto number = static_cast<int32_t>(boxes.size() + 1);
    boxes.push_back(placed(window->createTextBox("Text" + std::to_string(number), false), 1000, 300,
                           0, 400 * number));
    boxes.back()->TabIndex(index);
  }
  auto inner = placed(window->createChildControl("Inner"), 2000, 2000, 3000);
  inner->TabIndex(4);
  auto innerFirst = inner->createTextBox("Text5", false);
  auto innerSecond = inner->createTextBox("Text6", false);
  innerFirst->TabIndex(1);
  innerSecond->TabIndex(0);
  innerSecond->Top(500);
  showActive(*window);

  const auto tabsThrough = [](std::vector<platform::Widget*> order) {
    qt::widgetOf(*order.front())->setFocus(Qt::TabFocusReason);
    for (size_t i = 1; i <= order.size(); ++i) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      const QWidget* focused = QApplication::focusWidget();
      EXPECT_EQ(focused ? focused->objectName().toStdString() : "nothing",
                order[i % order.size()]->Name())
          << "after Tab " << i;
    }
  };
  tabsThrough({boxes[2].get(), boxes[1].get(), boxes[3].get(), boxes[0].get(), innerSecond.get(),
               innerFirst.get()});
  // Another TabIndex moves the child in the order.
  boxes[0]->TabIndex(5);
  tabsThrough({boxes[2].get(), boxes[1].get(), boxes[3].get(), innerSecond.get(), innerFirst.get(),
               boxes[0].get()});
}

// One click of the left button on the picker is one Click, on its fields as on its arrow;
// another button's is none.
TEST_F(QtBackend, TheDatePickerTakesOneClickOnceAndOnlyTheLeftButtons) {
  auto window = form();
  auto picker = placed(window->createDatePicker("DTPicker"), 3000, 375);
  showActive(*window);
  int clicks = 0;
  picker->events.Click = [&] { ++clicks; };
  auto* edit = qobject_cast<QDateTimeEdit*>(qt::widgetOf(*picker));
  QLineEdit* fields = edit->findChild<QLineEdit*>();
  QTest::mouseClick(fields, Qt::LeftButton, {}, QPoint(4, fields->height() / 2));
  EXPECT_EQ(clicks, 1);
  QTest::mouseClick(fields, Qt::RightButton, {}, QPoint(4, fields->height() / 2));
  QTest::mouseClick(edit, Qt::RightButton, {}, QPoint(edit->width() - 4, edit->height() / 2));
  EXPECT_EQ(clicks, 1);
  QTest::mouseClick(edit, Qt::LeftButton, {}, QPoint(edit->width() - 4, edit->height() / 2));
  EXPECT_EQ(clicks, 2);
  edit->calendarWidget()->window()->hide();
}

// At another resolution than 96 dpi the chart is scaled to the viewer, and the mouse reaches
// the controls in the chart's pixels. The offscreen screen is at 96 dpi: the test runs itself
// again in a process whose screen has 120 dpi, with Qt's own scaling off so that the widgets
// see that resolution.
TEST_F(QtBackend, AtAnotherResolutionTheViewerScalesTheChartAndMapsTheMouseBack) {
  if (qt::pixelsOf(1440) == 96) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QFile config(folder.filePath("screen.json"));
    ASSERT_TRUE(config.open(QIODevice::WriteOnly));
    config.write(R"({"screens": [{"name": "screen", "width": 1280, "height": 1024,
                     "logicalDpi": 120, "logicalBaseDpi": 96, "dpr": 1}]})");
    config.close();
    QProcess again;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName());
    environment.insert("QT_ENABLE_HIGHDPI_SCALING", "0");
    again.setProcessEnvironment(environment);
    again.setProcessChannelMode(QProcess::MergedChannels);
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    again.start(QCoreApplication::applicationFilePath(),
                {QString("--gtest_filter=%1.%2").arg(test->test_suite_name(), test->name())});
    ASSERT_TRUE(again.waitForFinished(120000));
    const QString output = QString::fromLocal8Bit(again.readAll());
    EXPECT_EQ(again.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test")) << output.toStdString();
    return;
  }
  ASSERT_EQ(qt::pixelsOf(1440), 120);
  EXPECT_DOUBLE_EQ(qt::chartScale(), 1.25);
  auto window = form(200 * 15, 100 * 15, "Chart");
  auto viewer = placed(window->createChartViewer("ChartViewer1"), 200 * 15, 100 * 15);
  QWidget* shown = qt::widgetOf(*viewer);
  ASSERT_EQ(shown->width(), 250);
  // A chart of 200 by 100 pixels: red on its left half, blue on its right.
  platform::PixelImage pixels{200, 100, {}};
  for (int i = 0; i < 200 * 100; ++i)
    pixels.pixels.push_back(i % 200 < 100 ? 0xFFFF0000 : 0xFF0000FF);
  viewer->Picture(Ref<Object>(std::make_shared<platform::Picture>(std::move(pixels))));
  const QImage image = shown->grab().toImage();
  EXPECT_EQ(image.pixelColor(110, 60), QColor(Qt::red)) << "the chart's x 88";
  EXPECT_EQ(image.pixelColor(140, 60), QColor(Qt::blue)) << "the chart's x 112";
  EXPECT_EQ(image.pixelColor(245, 120), QColor(Qt::blue)) << "the chart fills the viewer";

  std::vector<std::pair<float, float>> downs;
  viewer->viewerEvents.MouseDown = [&](int32_t, int32_t, float x, float y) {
    downs.emplace_back(x, y);
  };
  int changes = 0;
  viewer->viewerEvents.ViewPortChanged = [&](bool, bool) { ++changes; };
  viewer->MouseUsage(platform::ChartViewer::kMouseZoomIn);
  QTest::mouseClick(shown, Qt::LeftButton, {}, QPoint(125, 25));
  EXPECT_EQ(downs, (std::vector<std::pair<float, float>>{{100, 20}}));
  EXPECT_DOUBLE_EQ(viewer->ViewPortLeft(), 0.25);
  EXPECT_DOUBLE_EQ(viewer->ViewPortWidth(), 0.5);
  // A drag of 50 screen pixels is one of 40 chart pixels: a fifth of the chart's width, a tenth
  // of the range on show.
  viewer->MouseUsage(platform::ChartViewer::kMouseScroll);
  QTest::mousePress(shown, Qt::LeftButton, {}, QPoint(150, 50));
  QTest::mouseMove(shown, QPoint(100, 50));
  QTest::mouseRelease(shown, Qt::LeftButton, {}, QPoint(100, 50));
  EXPECT_DOUBLE_EQ(viewer->ViewPortLeft(), 0.35);
  EXPECT_EQ(changes, 2);
}

// The bars of the navigation are pages of a tool box, with the picture and caption of each
// and the tree inside; a bar whose picture can't be read has none.
TEST_F(QtBackend, TheNavigationsBarsArePagesWithTheirPicturesAndTrees) {
  host->baseFolder = TESSALINE_SOURCE_DIR "/devices/sample-pump";
  auto nav = DtmNavigation::create();
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(
      xml::parseElement("<n><menuGroup label='Device' name='D' treename='t' icon='device.png'>"
                        "<menuItem label='Settings' name='S' action='s'/></menuGroup>"
                        "<menuGroup label='None' name='N' treename='t' icon='missing.png'/></n>"));
  auto* box = qobject_cast<QToolBox*>(qt::widgetOf(nav->NavigationBar()));
  ASSERT_TRUE(box);
  ASSERT_EQ(box->count(), 2);
  EXPECT_EQ(box->itemText(0), "Device");
  EXPECT_FALSE(box->itemIcon(0).isNull());
  EXPECT_TRUE(box->itemIcon(1).isNull());
  auto* tree = qobject_cast<QTreeWidget*>(qt::widgetOf(*nav->TreeViews(1)));
  ASSERT_TRUE(tree);
  EXPECT_TRUE(box->widget(0)->isAncestorOf(tree));
  EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(0), "Settings");
}

// Ten thousand levels on real widgets: built, shown, clicked through its bar and destroyed
// without Qt recursing through the items.
TEST_F(QtBackend, ADeepMenuIsBuiltShownAndDestroyed) {
  constexpr int kDepth = 10000;
  std::string menu = "<n><menuGroup label='G' name='G' treename='t' icon='g.png'>";
  for (int i = 0; i < kDepth; ++i) menu += "<f label='L' name='F" + std::to_string(i) + "'>";
  menu += "<menuItem label='Deep' name='Deep' action='d'/>";
  for (int i = 0; i < kDepth; ++i) menu += "</f>";
  menu += "</menuGroup></n>";
  auto nav = DtmNavigation::create();
  std::vector<std::string> dialogs;
  nav->events.LoadDialog = [&](const std::string& key) { dialogs.push_back(key); };
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(xml::parseElement(menu));
  QWidget* window = qt::widgetOf(nav->window());
  window->show();
  QApplication::processEvents();
  EXPECT_EQ(nav->TreeViews(1)->NodeCount(), kDepth + 2);
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("Deep"));
  QApplication::processEvents();
  nav.reset();
}

}  // namespace
}  // namespace tessaline
