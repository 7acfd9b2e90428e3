// A text box and a gauge of Tessaline in an application's own QMainWindow, with a host of its
// own. Run with --check to build the window, feed it one value and quit.
#include <tessaline/entry/data_text_box.h>
#include <tessaline/gauges/data_gauge.h>
#include <tessaline/platform/chart/install.h>
#include <tessaline/platform/qt/qt_backend.h>
#include <tessaline/platform/regexp/pcre2_regexp.h>
#include <tessaline/platform/xml/pugi_dom.h>

#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace tessaline;

// The fourteen operations a host offers; this one shows what the controls tell it.
class Host : public GenericDtm, public DtmContainer {
 public:
  QStatusBar* status = nullptr;
  void LaunchFunctionPrimary(int32_t) override {}
  void LaunchFunctionSecondary(int32_t) override {}
  void CallModuleFunction(const std::string&, const std::string&, const std::string&) override {}
  void ValidateItemValue(const std::string&, const Variant& value, std::string& error,
                         bool& valid) override {
    valid = value.toText().size() <= 6;
    if (!valid) error = "At most six characters";
  }
  std::string BaseFolder() override { return "."; }
  std::string ShowMessage(const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&) override {
    return "buttonOk";
  }
  std::string GetLocalizedString(const std::string& key) override { return key; }
  void LogFatal(const std::string&, const std::string&) override {}
  void LogError(const std::string& logger, const std::string& text) override {
    status->showMessage(QString::fromStdString(logger + ": " + text));
  }
  void LogDebug(const std::string&, const std::string&) override {}
  void LogInfo(const std::string&, const std::string&) override {}
  bool EvaluateCondition(const std::string&) override { return true; }
  void ControlValueChanged(Ref<IDtmControl>) override { status->showMessage("Edited"); }
  void LaunchFunctionInContainer(int32_t) override {}
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  qt::install();
  regexp::install();
  chart::install();

  QMainWindow window;
  auto* central = new QWidget;
  auto* layout = new QVBoxLayout(central);
  window.setCentralWidget(central);
  auto host = std::make_shared<Host>();
  host->status = window.statusBar();

  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  box->IDtmControl_DtmContainer(host);
  box->IDtmControl_Name("Setpoint");
  box->window().Width(3000);
  box->window().Height(420);
  box->IDTMDataControl_SetDeviceValue(Variant(42.5));

  auto gauge = DTMDataGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(
      "<gauge lowerRange='Low' upperRange='High' pointerColor='CC0000'><zones type='low_limit'>"
      "<zone name='Hi' color='FF3333'/></zones></gauge>"));
  gauge->IDtmDataSubscriptionControl_SubscriptionItems();
  for (auto [item, value] : {std::pair{"Low", 0.0}, {"High", 16.0}, {"Hi", 12.0}, {"PV", 7.4}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
  }

  for (QWidget* control : {qt::widgetOf(box->window()), qt::widgetOf(gauge->window())}) {
    control->setMinimumSize(control->size());
    layout->addWidget(control);
  }
  window.show();
  const bool drawn = !gauge->ChartViewer1().Picture().isNothing();
  if (argc > 1 && std::string(argv[1]) == "--check") return drawn ? 0 : 1;
  return app.exec();
}
