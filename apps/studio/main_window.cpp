#include "apps/studio/main_window.h"

#include <QDockWidget>
#include <QEvent>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <functional>

#include "platform/qt/qt_backend.h"

namespace tessaline::studio {

namespace {
constexpr int kKeptCalls = 500;

// Tells a size in pixels each time the watched widget changes its size.
class SizeWatcher : public QObject {
 public:
  SizeWatcher(QWidget* watched, std::function<void(int, int)> resized)
      : QObject(watched), resized_(std::move(resized)) {
    watched->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) {
      const auto* widget = static_cast<QWidget*>(watched);
      resized_(widget->width(), widget->height());
    }
    return false;
  }

 private:
  std::function<void(int, int)> resized_;
};
QString text(const std::string& s) { return QString::fromStdString(s); }
}  // namespace

MainWindow::MainWindow(std::unique_ptr<Session> session, const std::vector<std::string>& problems)
    : session_(std::move(session)) {
  setWindowTitle(text("Tessaline Studio - " + session_->package().name));

  forms_ = new QListWidget;
  for (const FormEntry& form : session_->package().forms) forms_->addItem(text(form.title));
  auto* navigation = new QDockWidget("Dialogs", this);
  navigation->setWidget(forms_);
  // A package with a menu gets the navigation control in place of the list: a chosen entry
  // names the form to show.
  if (session_->package().navigation) {
    navigation_ = DtmNavigation::create();
    navigation_->window().Width(3300);
    navigation_->window().Height(9000);
    navigation_->events.LoadDialog = [this](const std::string& key) {
      if (auto index = session_->formNamed(key)) {
        QTimer::singleShot(0, this, [this, index] { showForm(*index); });
      } else {
        report({"the menu names no form " + key});
      }
    };
    const auto host =
        std::dynamic_pointer_cast<host::ReferenceHost>(session_->host().shared_from_this());
    navigation_->IDtmNavigation_Init(host, host);
    navigation_->IDtmNavigation_Load(session_->package().navigation);
    if (QWidget* menu = qt::widgetOf(navigation_->window())) {
      // The control has the room of the dock, in twips (15 to a pixel), so that every bar's
      // caption stays in sight.
      auto* holder = new QWidget;
      holder->setMinimumSize(qt::pixelsOf(3300), qt::pixelsOf(3000));
      menu->setParent(holder);
      menu->show();
      new SizeWatcher(holder, [this](int width, int height) {
        if (!navigation_) return;
        navigation_->window().Width(width * 15);
        navigation_->window().Height(height * 15);
      });
      navigation->setWidget(holder);
      forms_->hide();
    }
  }
  navigation->setFeatures(QDockWidget::NoDockWidgetFeatures);
  addDockWidget(Qt::LeftDockWidgetArea, navigation);

  calls_ = new QListWidget;
  auto* log = new QDockWidget("Host calls", this);
  log->setWidget(calls_);
  log->setFeatures(QDockWidget::NoDockWidgetFeatures);
  addDockWidget(Qt::RightDockWidgetArea, log);

  problems_ = new QListWidget;
  auto* list = new QDockWidget("Problems", this);
  list->setWidget(problems_);
  list->setFeatures(QDockWidget::NoDockWidgetFeatures);
  addDockWidget(Qt::BottomDockWidgetArea, list);

  area_ = new QScrollArea;
  area_->setBackgroundRole(QPalette::Window);
  setCentralWidget(area_);

  QToolBar* tools = addToolBar("Device");
  tools->setMovable(false);
  tools->addAction("Apply", [this] { apply(); });
  clock_ = new QLabel;
  statusBar()->addPermanentWidget(clock_);

  session_->host().onCall = [this](const host::HostCall& call) {
    logCall(call.text());
    answer(call);
  };
  report(problems);
  connect(forms_, &QListWidget::currentRowChanged, [this](int row) {
    if (row >= 0) showForm(static_cast<size_t>(row));
  });
  connect(&timer_, &QTimer::timeout, [this] { advance(0.25); });
  timer_.start(250);
  resize(1200, 720);
  if (forms_->count() > 0) forms_->setCurrentRow(0);
}

MainWindow::~MainWindow() {
  timer_.stop();
  session_->host().onCall = nullptr;
  // The controls go before the widgets that hold them.
  if (navigation_) navigation_->IDtmNavigation_Uninitialize();
  navigation_.reset();
  session_.reset();
}

void MainWindow::showForm(size_t index) {
  std::vector<std::string> problems;
  // The old form's controls die with the session's form; the surface is made anew.
  session_->openForm(index, problems);
  surface_ = new QWidget;
  if (host::HostForm* form = session_->form()) {
    surface_->resize(std::max(qt::pixelsOf(form->width), 100),
                     std::max(qt::pixelsOf(form->height), 100));
    for (const host::PlacedControl& placed : form->controls()) {
      QWidget* widget = qt::widgetOf(placed.control->window());
      if (!widget) continue;
      widget->setParent(surface_);
      widget->show();
    }
  }
  area_->setWidget(surface_);
  // The menu agrees with the form on show, without choosing anything.
  if (navigation_ && index < session_->package().forms.size()) {
    navigation_->IDtmNavigation_ActivateMenu(session_->package().forms[index].name);
  }
  if (forms_->currentRow() != static_cast<int>(index)) {
    const QSignalBlocker blocker(forms_);
    forms_->setCurrentRow(static_cast<int>(index));
  }
  report(problems);
}

void MainWindow::advance(double seconds) {
  session_->tick(seconds);
  clock_->setText(QString("device time %1 s").arg(session_->deviceTime(), 0, 'f', 1));
  for (const VbError& error : qt::takeUnhandledErrors())
    report({std::string("unhandled: ") + error.what()});
}

void MainWindow::apply() {
  const std::vector<std::string> written = session_->apply();
  for (const std::string& line : written) logCall("Apply: " + line);
  statusBar()->showMessage(
      written.empty() ? "Nothing to apply" : QString("%1 value(s) written").arg(written.size()),
      4000);
}

void MainWindow::report(const std::vector<std::string>& problems) {
  for (const std::string& problem : problems) problems_->addItem(text(problem));
}

void MainWindow::logCall(const std::string& line) {
  calls_->addItem(text(line));
  while (calls_->count() > kKeptCalls) delete calls_->takeItem(0);
  calls_->scrollToBottom();
}

void MainWindow::answer(const host::HostCall& call) {
  const auto reply = session_->answerTo(call);
  if (!reply) return;
  QTimer::singleShot(0, this, [this, reply = *reply] {
    if (reply.form) {
      showForm(*reply.form);
      return;
    }
    auto* box = new QMessageBox(QMessageBox::Information, "Device", text(reply.message),
                                QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
  });
}

}  // namespace tessaline::studio
