#include "app/explorer/window/ExplorerWindow.h"

#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/runs/RunsPane.h"
#include "app/explorer/window/Actions.h"
#include "app/explorer/window/Icons.h"
#include "app/explorer/window/Layout.h"
#include "app/explorer/window/StartPage.h"
#include "app/scan/ReadingText.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>

namespace runsieve::app {

ExplorerWindow::ExplorerWindow(QWidget* parent) : QMainWindow(parent)
{
  setWindowTitle("Runsieve");
  setWindowIcon(programIcon());
  setAcceptDrops(true);
  table = new Actions(*this);
  buildCentre();
  buildPanes();
  buildStatus();
  connectFileActions();
  connectGateActions();
  connectViewActions();
  connect(&content, &Document::opened, this, [this] {
    centre->setCurrentIndex(content.isOpen() ? 1 : 0);
    layout->show(content.isOpen());
    refreshActions();
    refreshStatus();
  });
  for (auto changed : {&Document::stateChanged, &Document::passingChanged, &Document::comparisonChanged,
                       &Document::highlightChanged})
    connect(&content, changed, this, [this] {
      refreshActions();
      refreshStatus();
    });
  connect(&content.undoStack(), &QUndoStack::indexChanged, this, &ExplorerWindow::refreshActions);
  connect(&reader, &Opening::finished, this, &ExplorerWindow::show);
  connect(&reader, &Opening::failed, this, [this](QString const&, QString const& message) {
    QMessageBox box(QMessageBox::Warning, "Runsieve", QString(), QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText); // names in a file are no markup, whatever they look like
    box.setText(message);
    box.exec();
  });
  refreshActions();
  refreshStatus();
}

ExplorerWindow::~ExplorerWindow()
{
  content.disconnect(this);
  reader.disconnect(this);
}

ExplorerWindow* newExplorerWindow()
{
  auto* window = new ExplorerWindow;
  window->setAttribute(Qt::WA_DeleteOnClose);
  const QSize wanted(1280, 860);
  // A screen may be smaller, above all one with a scale factor; frames of windows take some of it.
  constexpr double part = 0.92;
  window->resize(wanted.boundedTo(window->screen()->availableSize() * part));
  window->QWidget::show();
  return window;
}

void ExplorerWindow::buildCentre()
{
  auto* start = new StartPage;
  connect(start, &StartPage::openWanted, table->at("file.open"), &QAction::trigger);
  connect(start, &StartPage::exampleWanted, table->at("file.example"), &QAction::trigger);
  connect(start, &StartPage::fileWanted, this, [this](QString const& path) { open(path); });
  runsPane = new RunsPane(content);
  connect(runsPane, &RunsPane::told, this, &ExplorerWindow::tell);
  connect(&runsPane->zoom(), &RunsZoom::changed, this, &ExplorerWindow::refreshActions);
  centre = new QStackedWidget;
  centre->addWidget(start);
  centre->addWidget(runsPane);
  setCentralWidget(centre);
}

void ExplorerWindow::buildPanes()
{
  layout = new Layout(*this);
  gatesPane = new GatesPane(content);
  parametersPane = new ParametersPane(content);
  layout->add("Gates", "gates", gatesPane, Qt::BottomDockWidgetArea);
  layout->add("Parameters", "parameters", parametersPane, Qt::RightDockWidgetArea);
  connect(parametersPane, &ParametersPane::told, this, &ExplorerWindow::tell);
  QMenu* panes = table->menu("&View")->addMenu("&Panes");
  for (QDockWidget* dock : layout->docks()) panes->addAction(dock->toggleViewAction());
}

void ExplorerWindow::tell(QString const& text)
{
  if (text.isEmpty())
    refreshStatus();
  else
    status->setText(text);
}

void ExplorerWindow::buildStatus()
{
  status = new QLabel;
  statusBar()->addWidget(status, 1);
  progress = new QProgressBar;
  progress->setRange(0, 1000);
  progress->setMaximumWidth(180);
  progress->setAccessibleName("Reading");
  progress->hide();
  cancelling = new QToolButton;
  cancelling->setText("Cancel");
  cancelling->hide();
  readingNotes = new QPushButton;
  readingNotes->setFlat(true);
  readingNotes->setToolTip("What the file was taken for, and what was guessed, dropped or put in order");
  readingNotes->hide();
  for (QWidget* widget : {static_cast<QWidget*>(progress), static_cast<QWidget*>(cancelling),
                          static_cast<QWidget*>(readingNotes)})
    statusBar()->addPermanentWidget(widget);
  connect(readingNotes, &QPushButton::clicked, table->at("file.reading"), &QAction::trigger);
  connect(cancelling, &QToolButton::clicked, &reader, &Opening::cancel);
  connect(&reader, &Opening::begun, this, [this](QString const& path) {
    status->setText(QString("Reading %1 ...").arg(QFileInfo(path).fileName()));
    progress->setValue(0);
    progress->show();
    cancelling->show();
  });
  connect(&reader, &Opening::progressed, this,
          [this](double share) { progress->setValue(static_cast<int>(1000.0 * share)); });
  connect(&reader, &Opening::ended, this, [this] {
    progress->hide();
    cancelling->hide();
    refreshStatus();
  });
}

void ExplorerWindow::open(QString const& path, ReadOptions const& options)
{
  reader.start(path, options);
}

void ExplorerWindow::show(std::shared_ptr<Scan const> const& scan, ScanSource const& source,
                          State const& state)
{
  content.open(scan, source, state);
  const std::size_t toTell = remarks(*scan, source.report);
  readingNotes->setText(toTell == 1 ? QString("1 note on reading")
                                    : QString("%L1 notes on reading").arg(toTell));
  readingNotes->setVisible(toTell > 0);
  setWindowTitle(QFileInfo(reader.path()).fileName() + " - Runsieve");
}

bool ExplorerWindow::isSettled() const
{
  return !reader.isBusy() && content.isCompared() && runsPane->isSettled();
}

QString ExplorerWindow::statusText() const
{
  return status->text();
}

void ExplorerWindow::refreshStatus()
{
  if (reader.isBusy()) return;
  if (!content.isOpen()) {
    status->setText("Open a scan: File, Open (Ctrl+O)");
    return;
  }
  Scan const& scan = content.scan();
  QString text = QString("%L1 runs, %L2 times").arg(scan.runs.size()).arg(scan.times.size());
  if (content.sieves()) text += QString("   |   %L1 runs pass").arg(content.passing().count());
  if (Comparison const* compared = content.comparison()) {
    std::size_t significant = 0;
    for (ParameterComparison const& parameter : compared->parameters)
      significant += parameter.significant ? 1 : 0;
    text += QString("   |   %1 of %2 parameters differ").arg(significant).arg(compared->parameters.size());
    if (!content.isCompared()) text += " ...";
  }
  const std::size_t left = scan.runs.size() - content.eligible().count();
  if (left > 0) text += QString("   |   %L1 runs are not complete, not compared").arg(left);
  status->setText(text);
}

void ExplorerWindow::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void ExplorerWindow::dropEvent(QDropEvent* event)
{
  for (QUrl const& url : event->mimeData()->urls())
    if (url.isLocalFile()) {
      open(url.toLocalFile());
      return;
    }
}

void ExplorerWindow::closeEvent(QCloseEvent* event)
{
  reader.cancel();
  layout->save();
  event->accept();
}

} // namespace runsieve::app
