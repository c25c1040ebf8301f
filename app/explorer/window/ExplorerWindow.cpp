#include "app/explorer/window/ExplorerWindow.h"

#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/runs/RunsPane.h"
#include "app/explorer/session/ChangedFileBar.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/SessionZoom.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/window/Actions.h"
#include "app/explorer/window/Icons.h"
#include "app/explorer/window/Layout.h"
#include "app/explorer/window/Plots.h"
#include "app/explorer/window/StartPage.h"
#include "app/explorer/window/StatusLine.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

namespace runsieve::app {

namespace {

constexpr char geometryKey[] = "geometry";

} // namespace

ExplorerWindow::ExplorerWindow(QWidget* parent) : QMainWindow(parent)
{
  setWindowIcon(programIcon());
  setAcceptDrops(true);
  table = new Actions(*this);
  buildCentre();
  const WindowView view{[this](Session& session) { keepView(session); },
                        [this](Session const& session) { showView(session); }};
  disk = std::make_unique<Files>(content, view, *this);
  buildPanes();
  status = new StatusLine(content, *disk, *statusBar());
  plots = new Plots(content, *this);
  connect(plots, &Plots::told, this, [this](QString const& text) { status->tell(text); });
  connectFileActions();
  connectExportActions();
  connectGateActions();
  connectViewActions();
  connectSetActions();
  connect(&content, &Document::opened, this, [this] {
    centre->setCurrentIndex(content.isOpen() ? 1 : 0);
    layout->show(content.isOpen());
    changedBar->hide();
    // Keys zoom and move the chart, and type nothing into the name of its output.
    if (RunsView* chart = runsPane->view()) chart->setFocus();
  });
  for (auto changed : {&Document::opened, &Document::stateChanged, &Document::highlightChanged})
    connect(&content, changed, this, &ExplorerWindow::refreshActions);
  connect(&content.undoStack(), &QUndoStack::indexChanged, this, &ExplorerWindow::refreshActions);
  connect(disk.get(), &Files::changed, this, &ExplorerWindow::refresh);
  connect(disk.get(), &Files::changedOnDisk, changedBar, &ChangedFileBar::tell);
  connect(disk.get(), &Files::goneFromDisk, changedBar, &ChangedFileBar::tellGone);
  connect(disk.get(), &Files::backOnDisk, changedBar, &QWidget::hide);
  connect(changedBar, &ChangedFileBar::rereadWanted, disk.get(), &Files::reread);
  refresh();
}

ExplorerWindow::~ExplorerWindow()
{
  // What panes and files still have to say is for no window any more.
  content.disconnect(this);
  content.undoStack().disconnect(this);
  disk->disconnect();
  disk.reset();
  // Panes that are hidden as they go look at the document once more: they go before it does.
  const std::vector<QDockWidget*> docks = layout->docks();
  delete layout;
  qDeleteAll(docks);
  delete takeCentralWidget();
}

ExplorerWindow* newExplorerWindow()
{
  auto* window = new ExplorerWindow;
  window->setAttribute(Qt::WA_DeleteOnClose);
  const QSize wanted(1280, 860);
  // A screen may be smaller, above all one with a scale factor; frames of windows take some of it.
  constexpr double part = 0.92;
  window->resize(wanted.boundedTo(window->screen()->availableSize() * part));
  window->restoreGeometry(QSettings().value(geometryKey).toByteArray());
  window->show();
  return window;
}

void ExplorerWindow::buildCentre()
{
  start = new StartPage;
  connect(start, &StartPage::openWanted, table->at("file.open"), &QAction::trigger);
  connect(start, &StartPage::exampleWanted, table->at("file.example"), &QAction::trigger);
  connect(start, &StartPage::fileWanted, this,
          [this](QString const& path) { open(path, RecentFiles::optionsOf(path)); });
  runsPane = new RunsPane(content);
  connect(runsPane, &RunsPane::told, this, [this](QString const& text) { status->tell(text); });
  connect(&runsPane->zoom(), &RunsZoom::changed, this, &ExplorerWindow::refreshActions);
  changedBar = new ChangedFileBar;
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(changedBar);
  column->addWidget(runsPane, 1);
  centre = new QStackedWidget;
  centre->addWidget(start);
  centre->addWidget(page);
  setCentralWidget(centre);
}

void ExplorerWindow::buildPanes()
{
  layout = new Layout(*this);
  gatesPane = new GatesPane(content);
  setsPane = new SetsPane(content);
  parametersPane = new ParametersPane(content);
  parameterTable = new ParameterTable(content);
  runTable = new RunTable(content);
  QDockWidget* gates = layout->add("Gates", "gates", gatesPane, Qt::BottomDockWidgetArea);
  layout->add("Sets", "sets", setsPane, Qt::BottomDockWidgetArea, gates);
  QDockWidget* charts = layout->add("Parameters", "parameters", parametersPane, Qt::RightDockWidgetArea);
  layout->add("Table", "parameterTable", parameterTable, Qt::RightDockWidgetArea, charts);
  layout->add("Runs", "runs", runTable, Qt::RightDockWidgetArea, charts);
  connect(parametersPane, &ParametersPane::told, this, [this](QString const& text) { status->tell(text); });
  connect(parametersPane, &ParametersPane::pageChanged, this, &ExplorerWindow::refreshActions);
  connect(parameterTable, &ParameterTable::parameterWanted, parametersPane, &ParametersPane::openLarge);
  QMenu* panes = table->menu("&View")->addMenu("&Panes");
  for (QDockWidget* dock : layout->docks()) panes->addAction(dock->toggleViewAction());
}

void ExplorerWindow::keepView(Session& session) const
{
  keepZoom(runsPane->zoom(), content, session);
  session.view.parametersPage = parametersPane->page();
}

void ExplorerWindow::showView(Session const& session)
{
  showZoom(session, content, runsPane->zoom());
  parametersPane->showPage(session.view.parametersPage);
}

void ExplorerWindow::open(QString const& path, ReadOptions const& options)
{
  disk->open(path, options);
}

void ExplorerWindow::refresh()
{
  QString title = disk->title();
  if (const QString folder = disk->folder(); !folder.isEmpty()) title += QString(" (%1)").arg(folder);
  setWindowTitle(title.isEmpty() ? QString("Runsieve") : title + " - Runsieve");
  if (!content.isOpen()) start->setRecent(RecentFiles::list());
  refreshActions();
}

bool ExplorerWindow::isSettled() const
{
  return !disk->isBusy() && content.isCompared() && runsPane->isSettled() && setsPane->isSettled() &&
         runTable->isSettled() && !plots->isBusy();
}

QString ExplorerWindow::statusText() const
{
  return status->text();
}

bool ExplorerWindow::focusNextPrevChild(bool next)
{
  // Panes behind others are not hidden, only out of sight: keys must not go there.
  auto const isBehind = [](QWidget const* widget) {
    for (; widget; widget = widget->parentWidget())
      if (qobject_cast<QDockWidget const*>(widget)) return widget->visibleRegion().isEmpty();
    return false;
  };
  QWidget const* const first = focusWidget();
  bool moved = QMainWindow::focusNextPrevChild(next);
  while (moved && focusWidget() != first && isBehind(focusWidget()))
    moved = QMainWindow::focusNextPrevChild(next);
  return moved;
}

void ExplorerWindow::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void ExplorerWindow::dropEvent(QDropEvent* event)
{
  ExplorerWindow* window = this;
  for (QUrl const& url : event->mimeData()->urls()) {
    if (!url.isLocalFile()) continue;
    if (!window) window = newExplorerWindow(); // a window holds one scan
    window->open(url.toLocalFile());
    window = nullptr;
  }
}

void ExplorerWindow::closeEvent(QCloseEvent* event)
{
  if (!disk->mayClose()) {
    event->ignore();
    return;
  }
  disk->cancel();
  layout->save();
  QSettings().setValue(geometryKey, saveGeometry());
  event->accept();
}

} // namespace runsieve::app
