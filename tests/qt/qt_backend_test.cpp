// What only the Qt backend can show: pixels on real widgets, the picture shared with the
// viewer, tooltips on the screen, the system clipboard, rows painted by their control.
#include "platform/qt/qt_backend.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolBox>
#include <QToolTip>
#include <QTreeWidget>

#include "entry/data_combo_box.h"
#include "entry/data_text_box.h"
#include "gauges/data_gauge.h"
#include "host/reference_host.h"
#include "navigation/navigation.h"
#include "platform/chart/install.h"
#include "platform/picture.h"
#include "platform/regexp/pcre2_regexp.h"
#include "platform/xml/pugi_dom.h"
#include "values/locale.h"

namespace tessaline {
namespace {

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

TEST_F(QtBackend, LengthsAreTwipsFifteenToAPixelAtNinetySixDots) {
  ASSERT_EQ(qt::pixelsOf(1440), 96) << "the offscreen screen is expected at 96 dpi";
  auto gauge = DTMDataGuageControl::create();
  QWidget* viewer = qt::widgetOf(gauge->ChartViewer1());
  EXPECT_EQ(viewer->width(), 200);
  EXPECT_EQ(viewer->height(), 145);
  EXPECT_EQ(viewer->y(), 19);
  EXPECT_EQ(qt::widgetOf(gauge->window())->width(), qt::pixelsOf(3113));
  EXPECT_EQ(gauge->ChartViewer1().Width(), 3000);
}

TEST_F(QtBackend, TheViewerPaintsThePicturesOwnPixels) {
  auto gauge = DTMDataGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(
      xml::parseElement("<gauge lowerRange='L' upperRange='H' pointerColor='FF0000'>"
                        "<zones type='low_limit'>"
                        "<zone name='Z' color='00FF00'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  for (auto [item, value] : {std::pair{"L", 0.0}, {"H", 10.0}, {"Z", 5.0}, {"PV", 4.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
  }
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture) << ::testing::PrintToString(host->errorLines());
  QWidget* viewer = qt::widgetOf(gauge->ChartViewer1());
  const QImage shown = viewer->grab().toImage();
  const platform::PixelImage& pixels = picture->image();
  // What the screen shows is the chart's pixels (the viewer is narrower than the picture).
  for (QPoint p : {QPoint(10, 10), QPoint(100, 70), QPoint(150, 120)}) {
    EXPECT_EQ(shown.pixel(p) & 0xFFFFFF, pixels.pixels[p.y() * pixels.width + p.x()] & 0xFFFFFF)
        << p.x() << "," << p.y();
  }
}

TEST_F(QtBackend, TooltipsWrapToTheirWidthAndWaitTheirDelay) {
  host->translations = {{"help", std::string(60, 'w') + " " + std::string(60, 'w')}};
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  QWidget* window = qt::widgetOf(box->window());
  window->resize(300, 30);
  box->IDTMDataControl_DataItemDef(xml::parseElement("<dataItem name='F' help='help'/>"));
  qt::TooltipInfo info;
  ASSERT_TRUE(qt::tooltipOwnedBy(box->window().hWnd(), info));
  EXPECT_EQ(info.maxWidth, 400);
  EXPECT_EQ(info.initialTime, 500);
  EXPECT_EQ(info.visibleTime, 8000);
  EXPECT_EQ(info.tools, 2u);

  QWidget* edit = qt::widgetOf(box->Text1());
  QEvent enter(QEvent::Enter);
  QApplication::sendEvent(edit, &enter);
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
}

TEST_F(QtBackend, TooltipWindowsDieWithTheirControls) {
  const size_t before = qt::liveTooltips();
  {
    auto box = DTMDataTextBox::create();
    box->IDTMControl_Init(host);
    box->IDTMDataControl_DataItemDef(xml::parseElement("<dataItem name='F' help='h'/>"));
    EXPECT_GT(qt::liveTooltips(), before);
  }
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
    QPainter painter(&canvas);
    QStyleOptionViewItem option;
    option.rect = QRect(0, row * 20, 100, 20);
    option.font = box->font();
    box->view()->itemDelegate()->paint(&painter, option, box->model()->index(row, 0));
  }
  for (int row = 0; row < 2; ++row) {
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
