// The Qt backend against the headless one, in one run: a gauge update through to the pixels on
// the viewer widget, one key typed into a text box from Qt's key event to the host's call, and
// the navigation's large menu built and shown on Qt widgets.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "large_menu.h"
#include "quiet_host.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace {

using namespace tessaline;

void installBackend(bool qt) {
  if (qt) {
    qt::install();
  } else {
    headless::install(".");
  }
  regexp::install();
  chart::install();
}

void gaugeUpdate(benchmark::State& state, bool qt) {
  installBackend(qt);
  auto host = std::make_shared<QuietHost>();
  auto gauge = DTMDataGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(
      "<gauge lowerRange='Low' upperRange='High' pointerColor='CC0000'><zones type='low_limit'>"
      "<zone name='Z1' color='3366FF'/><zone name='High' color='FF3333'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  for (auto [item, value] : {std::pair{"Low", 0.0}, {"High", 150.0}, {"Z1", 60.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
  }
  QWidget* viewer = qt ? qt::widgetOf(gauge->ChartViewer1()) : nullptr;
  if (viewer) qt::widgetOf(gauge->window())->show();
  double value = 40;
  for (auto _ : state) {
    value = value > 140 ? 40 : value + 1.5;
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", Variant(value));
    // The new picture painted on the widget now, as the next paint event would.
    if (viewer) viewer->repaint();
  }
  SetSharedHost(nullptr);
  platform::setBackend(nullptr);
}

void BM_GaugeUpdate_Headless(benchmark::State& state) { gaugeUpdate(state, false); }
void BM_GaugeUpdate_QtToPixels(benchmark::State& state) { gaugeUpdate(state, true); }
BENCHMARK(BM_GaugeUpdate_Headless)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GaugeUpdate_QtToPixels)->Unit(benchmark::kMillisecond);

// Each iteration types a digit and a backspace into a 5.2f box: two keys.
void BM_QtKeystroke(benchmark::State& state) {
  installBackend(true);
  auto host = std::make_shared<QuietHost>();
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  box->IDtmControl_DtmContainer(host);
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("5.2f");
  box->IDTMDataControl_SetDeviceValue(Variant("12.5"));
  QWidget* edit = qt::widgetOf(box->Text1());
  qt::widgetOf(box->window())->show();
  box->Text1().SelStart(4);
  const auto key = [edit](int code, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
    QApplication::sendEvent(edit, &press);
    QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, text);
    QApplication::sendEvent(edit, &release);
  };
  for (auto _ : state) {
    key(Qt::Key_4, "4");
    key(Qt::Key_Backspace, "\b");
  }
  if (box->Text1().Text() != "12.5") state.SkipWithError("the box didn't take the key");
  state.counters["per_key"] =
      benchmark::Counter(2.0 * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  SetSharedHost(nullptr);
  platform::setBackend(nullptr);
}
BENCHMARK(BM_QtKeystroke)->Unit(benchmark::kMicrosecond);

// The 5,000-entry menu loaded into a navigation and its window shown and laid out.
void BM_QtNavigationLoadAndShow(benchmark::State& state) {
  installBackend(true);
  auto host = std::make_shared<QuietHost>();
  const Ref<platform::XmlNode> menu = largeMenu();
  for (auto _ : state) {
    state.PauseTiming();
    auto nav = DtmNavigation::create();
    nav->IDtmNavigation_Init(host, host);
    state.ResumeTiming();
    nav->IDtmNavigation_Load(menu);
    QWidget* window = qt::widgetOf(nav->window());
    window->show();
    QApplication::processEvents();
    state.PauseTiming();
    nav.reset();
    QApplication::processEvents();
    state.ResumeTiming();
  }
  platform::setBackend(nullptr);
}
BENCHMARK(BM_QtNavigationLoadAndShow)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
