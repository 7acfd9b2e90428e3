#include "apps/studio/main_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDockWidget>
#include <QEvent>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "tessaline/platform/qt/qt_backend.h"

namespace tessaline::studio {

namespace {
// Lines of the call list kept of each kind: debug lines, and all the others.
constexpr size_t kKeptLines = 5000;
// Longer lines are shown whole in their tooltip.
constexpr int kLongLine = 80;

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

// A list line that may be longer than the list is wide: its tooltip wraps it whole.
QListWidgetItem* lineItem(const std::string& line) {
  auto* item = new QListWidgetItem(text(line));
  if (item->text().size() > kLongLine)
    item->setToolTip("<p>" + item->text().toHtmlEscaped() + "</p>");
  return item;
}
}  // namespace

MainWindow::MainWindow(std::unique_ptr<Session> session, const std::vector<std::string>& problems,
                       Options options)
    : options_(std::move(options)), session_(std::move(session)) {
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
      // The control has the room of the dock, so that every bar's caption stays in sight.
      auto* holder = new QWidget;
      holder->setMinimumSize(qt::pixelsOf(3300), qt::pixelsOf(3000));
      menu->setParent(holder);
      menu->show();
      new SizeWatcher(holder, [this](int width, int height) {
        if (!navigation_) return;
        navigation_->window().Width(qt::twipsOf(width));
        navigation_->window().Height(qt::twipsOf(height));
      });
      navigation->setWidget(holder);
      forms_->hide();
    }
  }
  navigation->setFeatures(QDockWidget::NoDockWidgetFeatures);
  addDockWidget(Qt::LeftDockWidgetArea, navigation);

  calls_ = new QListWidget;
  // Thousands of lines: one height for all spares the list from measuring each.
  calls_->setUniformItemSizes(true);
  debugLines_ = new QCheckBox("Debug lines");
  debugLines_->setToolTip("Shows the LogDebug calls among the others");
  connect(debugLines_, &QCheckBox::toggled, this, [this](bool shown) { showDebugLines(shown); });
  auto* callPanel = new QWidget;
  auto* callLayout = new QVBoxLayout(callPanel);
  callLayout->setContentsMargins(0, 0, 0, 0);
  callLayout->addWidget(debugLines_);
  callLayout->addWidget(calls_);
  auto* log = new QDockWidget("Host calls", this);
  log->setWidget(callPanel);
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
  tools->addAction("Discard", [this] { discard(); });
  clock_ = new QLabel;
  statusBar()->addPermanentWidget(clock_);

  session_->host().onCall = [this](const host::HostCall& call) {
    logCall(call);
    answer(call);
  };
  session_->onProblem = [this](const std::string& problem) { report({problem}); };
  report(problems);
  connect(forms_, &QListWidget::currentRowChanged, [this](int row) {
    if (row >= 0) showForm(static_cast<size_t>(row));
  });
  if (options_.realTime) {
    connect(&timer_, &QTimer::timeout, [this] { advance(0.25); });
    timer_.start(250);
  }
  resize(1200, 720);
  // The problems take a strip; the form has the room.
  resizeDocks({list}, {120}, Qt::Vertical);
  if (forms_->count() > 0) forms_->setCurrentRow(0);
}

MainWindow::~MainWindow() {
  timer_.stop();
  session_->host().onCall = nullptr;
  session_->onProblem = nullptr;
  // The controls go before the widgets that hold them.
  if (navigation_) navigation_->IDtmNavigation_Uninitialize();
  navigation_.reset();
  session_.reset();
  for (auto& [index, surface] : kept_) delete surface;
}

void MainWindow::showForm(size_t index) {
  if (session_->formIndex() == index && session_->form()) return;
  const std::optional<size_t> leaving = session_->formIndex();
  std::vector<std::string> problems;
  // The session keeps the old form's controls when they hold edits; otherwise they die here,
  // before the surface that held them.
  session_->openForm(index, problems);
  if (QWidget* old = area_->takeWidget()) {
    const std::vector<size_t> kept = session_->keptForms();
    if (leaving && std::count(kept.begin(), kept.end(), *leaving)) {
      old->hide();
      old->setParent(this);
      kept_[*leaving] = old;
      statusBar()->showMessage(text(session_->package().forms[*leaving].title +
                                    " keeps its edits until Apply or Discard"),
                               6000);
    } else {
      delete old;
    }
  }
  QWidget* surface = nullptr;
  if (auto found = kept_.find(index); found != kept_.end() && session_->form()) {
    surface = found->second;
    kept_.erase(found);
  } else {
    surface = makeSurface();
  }
  area_->setWidget(surface);
  surface->show();
  releaseSurfaces();
  markEditedForms();
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

QWidget* MainWindow::makeSurface() {
  auto* surface = new QWidget;
  if (host::HostForm* form = session_->form()) {
    surface->resize(std::max(qt::pixelsOf(form->width), 100),
                    std::max(qt::pixelsOf(form->height), 100));
    for (const host::PlacedControl& placed : form->controls()) {
      QWidget* widget = qt::widgetOf(placed.control->window());
      if (!widget) continue;
      widget->setParent(surface);
      widget->show();
    }
  } else if (const auto index = session_->formIndex()) {
    const FormEntry& entry = session_->package().forms[*index];
    auto* why = new QLabel(text(entry.title + " can't be shown: " + entry.failure), surface);
    why->setWordWrap(true);
    why->setGeometry(12, 12, 560, 120);
    why->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    surface->resize(600, 160);
  }
  return surface;
}

void MainWindow::releaseSurfaces() {
  const std::vector<size_t> kept = session_->keptForms();
  std::erase_if(kept_, [&](const auto& entry) {
    if (std::count(kept.begin(), kept.end(), entry.first)) return false;
    delete entry.second;
    return true;
  });
}

void MainWindow::markEditedForms() {
  const std::vector<size_t> kept = session_->keptForms();
  for (int row = 0; row < forms_->count(); ++row) {
    const bool edited = std::count(kept.begin(), kept.end(), static_cast<size_t>(row)) > 0;
    const std::string& title = session_->package().forms[static_cast<size_t>(row)].title;
    forms_->item(row)->setText(text(edited ? title + " (edited)" : title));
  }
}

void MainWindow::advance(double seconds) {
  session_->tick(seconds);
  if (platform::SettableClock* clock = qt::drivenClock()) clock->advance(seconds);
  clock_->setText(QString("device time %1 s").arg(session_->deviceTime(), 0, 'f', 1));
  // Counted at each tick rather than at each line: a new caption lays the panel out anew.
  debugLines_->setText(QString("Debug lines (%1)").arg(debugCount_));
  for (const VbError& error : qt::takeUnhandledErrors())
    report({std::string("unhandled: ") + error.what()});
}

void MainWindow::apply() {
  const std::vector<std::string> written = session_->apply();
  for (const std::string& line : written) logLine("Apply: " + line, false);
  releaseSurfaces();
  markEditedForms();
  statusBar()->showMessage(
      written.empty() ? "Nothing to apply" : QString("%1 value(s) written").arg(written.size()),
      4000);
}

void MainWindow::discard() {
  const size_t edits = session_->unappliedEdits().size();
  std::vector<std::string> problems;
  session_->discard(problems);
  // The form on show was made anew: its old surface holds nothing now.
  if (QWidget* old = area_->takeWidget()) delete old;
  area_->setWidget(makeSurface());
  releaseSurfaces();
  markEditedForms();
  report(problems);
  statusBar()->showMessage(
      edits == 0 ? "Nothing to discard" : QString("%1 edit(s) discarded").arg(edits), 4000);
}

void MainWindow::fitForm() {
  QWidget* surface = area_->widget();
  if (!surface) return;
  const int frame = 2 * area_->frameWidth();
  area_->setMinimumSize(surface->width() + frame, surface->height() + frame);
  // The window's smallest size follows from the new minimum once the layout has taken it in.
  layout()->activate();
  resize(minimumSizeHint().expandedTo(QSize(1200, 720)));
  QCoreApplication::processEvents();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  const std::vector<std::string> edits = session_->unappliedEdits();
  if (edits.empty() || !options_.askBeforeClosing) {
    event->accept();
    return;
  }
  switch (options_.askBeforeClosing(edits)) {
    case Closing::Apply:
      apply();
      event->accept();
      break;
    case Closing::Discard:
      event->accept();
      break;
    case Closing::Cancel:
      event->ignore();
      break;
  }
}

void MainWindow::report(const std::vector<std::string>& problems) {
  for (const std::string& problem : problems) problems_->addItem(lineItem(problem));
}

void MainWindow::logCall(const host::HostCall& call) {
  logLine(call.text(), call.operation == "LogDebug");
}

void MainWindow::logLine(const std::string& line, bool debug) {
  QListWidgetItem* item = lineItem(line);
  std::deque<QListWidgetItem*>& kind = debug ? debugItems_ : otherItems_;
  calls_->addItem(item);
  kind.push_back(item);
  if (debug) {
    item->setHidden(!debugLines_->isChecked());
    ++debugCount_;
  }
  while (kind.size() > kKeptLines) {
    delete kind.front();
    kind.pop_front();
  }
  if (!item->isHidden()) calls_->scrollToBottom();
}

void MainWindow::showDebugLines(bool shown) {
  for (QListWidgetItem* item : debugItems_) item->setHidden(!shown);
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
