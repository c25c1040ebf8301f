#include "app/composite/CompositeWindow.h"

#include "app/cli/GatedScan.h"
#include "app/render/SavePicture.h"
#include "app/scan/ColumnName.h"
#include "app/scan/ReadingText.h"
#include "app/scan/ScanLayout.h"
#include "app/view/SaveName.h"
#include "app/view/SmallCharts.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/widgets/SelectionDrag.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkAnnotationLink.h>
#include <vtkCommand.h>
#include <vtkContextView.h>
#include <vtkIntArray.h>
#include <vtkRenderWindow.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

namespace {

constexpr int noteTime = 15'000; ///< ms

constexpr float afterTheLibrary = -1.0f; ///< observer priority below that of the plot's own callback

const char* const howTo =
    "<b>Sieve</b><br>Drag with the right button over a place that runs must pass through.<br><br>"
    "<b>Plain</b> starts anew,<br><b>Ctrl</b> adds a place,<br><b>Shift</b> takes away.<br><br>"
    "<b>Esc</b> gives a drag up.<br><br>"
    "Left button pans, wheel zooms.";

QString bareName(PlotContainer const& plot, std::size_t column)
{
  return QString::fromStdString(nameInScan(plot.typedColumnNames[column].second));
}

/// Bare names, and names with their types where bare ones repeat.
QStringList namesOf(PlotContainer const& plot, std::vector<std::size_t> const& columns)
{
  QStringList bare;
  for (std::size_t const column : columns) bare << bareName(plot, column);
  QStringList names = bare;
  for (int i = 0; i < bare.size(); ++i)
    if (bare.count(bare[i]) > 1)
      names[i] =
          QString::fromStdString(columnName(plot.typedColumnNames[columns[static_cast<std::size_t>(i)]]));
  return names;
}

/// Names in a file are no markup, whatever they look like.
void warn(QWidget* parent, QString const& text)
{
  QMessageBox box(QMessageBox::Warning, "Runsieve", QString(), QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  box.exec();
}

} // namespace

CompositeWindow::CompositeWindow(QWidget* parent) : QMainWindow(parent)
{
  setWindowTitle("Runsieve");
  widget = new VtkPlotWidget;
  widget->installEventFilter(this);
  connect(widget->selectionDrag(), &SelectionDrag::moved, this, &CompositeWindow::followDrag);
  connect(widget->selectionDrag(), &SelectionDrag::ended, this, &CompositeWindow::endDrag);
  auto* middle = new QWidget;
  auto* layout = new QHBoxLayout(middle);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(widget, 1);
  layout->addWidget(buildPanel());
  setCentralWidget(middle);
  status = new QLabel("Open a scan: File, Open (Ctrl+O)");
  statusBar()->addWidget(status);
  readingNotes = new QPushButton;
  readingNotes->setFlat(true);
  readingNotes->setToolTip("What the file was taken for, and what was guessed, dropped or put in order");
  readingNotes->hide();
  connect(readingNotes, &QPushButton::clicked, this, &CompositeWindow::showReading);
  statusBar()->addPermanentWidget(readingNotes);
  buildMenu();
}

CompositeWindow::~CompositeWindow()
{
  // The widget goes first; the plot it shows must not be told by a half-destroyed window.
  delete widget;
  delete container;
}

void CompositeWindow::buildMenu()
{
  QMenu* file = menuBar()->addMenu("&File");
  file->addAction("&Open...", this, &CompositeWindow::chooseFile, QKeySequence::Open);
  file->addAction("Open &folder...", this, &CompositeWindow::chooseFolder, QKeySequence("Ctrl+Shift+O"));
  file->addAction("How the file was &read...", this, &CompositeWindow::showReading);
  file->addSeparator();
  file->addAction("Save &plot...", this, &CompositeWindow::choosePlotFile, QKeySequence::Save);
  file->addAction("Save p&icture...", this, &CompositeWindow::choosePicture, QKeySequence("Ctrl+Shift+S"));
  file->addSeparator();
  file->addAction("&Close window", this, &CompositeWindow::close, QKeySequence("Ctrl+W"));
  QMenu* selection = menuBar()->addMenu("&Selection");
  selection->addAction("&Clear", this, &CompositeWindow::clearSelection, QKeySequence("Ctrl+L"));
  clusterEntries = menuBar()->addMenu("&Clusters");
  fillClusterMenu();
}

QWidget* CompositeWindow::buildPanel()
{
  auto* panel = new QWidget;
  panel->setFixedWidth(210);
  auto* layout = new QVBoxLayout(panel);
  auto* form = new QFormLayout;
  form->setRowWrapPolicy(QFormLayout::WrapAllRows);
  outputs = new QComboBox;
  form->addRow("Output", outputs);
  connect(outputs, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CompositeWindow::chooseOutput);
  layout->addLayout(form);

  density = addSwitch(layout, "Densities", "Show densities instead of cumulative curves",
                      &PlotMetaData::setUseDensity);
  commonScale = addSwitch(layout, "Common density scale", "One vertical range for all densities",
                          &PlotMetaData::setCommonDensityScale);
  quantiles = addSwitch(layout, "Quartile bands", "Show quartiles and the passing runs only",
                        &PlotMetaData::setShowQuantiles);
  logAxes = addSwitch(layout, "Log parameter axes",
                      "Logarithmic parameter axes; parameters that reach 0 stay linear",
                      &PlotMetaData::setLogParameterAxes);
  points = new QCheckBox("Points, not lines");
  layout->addWidget(points);
  connect(points, &QCheckBox::toggled, this, [this](bool on) {
    if (container) container->metaData->setPlotLine(!on);
  });

  plainLines = new QCheckBox("Plain lines");
  plainLines->setToolTip("Lines over lines in one colour, instead of shades by the number of runs");
  layout->addWidget(plainLines);
  connect(plainLines, &QCheckBox::toggled, this, [this](bool on) {
    if (!container) return;
    container->densityColors = shadesOf(on);
    container->redraw();
    refresh();
  });

  auto* thresholds = new QFormLayout;
  thresholds->setRowWrapPolicy(QFormLayout::WrapAllRows);
  const ViewOptions defaults;
  pThreshold =
      addThreshold(thresholds, "Largest significant p", defaults.pThreshold, &PlotMetaData::setPThreshold);
  ksThreshold =
      addThreshold(thresholds, "Smallest significant d", defaults.ksThreshold, &PlotMetaData::setKsThreshold);
  layout->addLayout(thresholds);

  auto* clear = new QPushButton("Clear selection");
  connect(clear, &QPushButton::clicked, this, &CompositeWindow::clearSelection);
  layout->addWidget(clear);
  layout->addStretch(1);
  auto* hint = new QLabel(howTo);
  hint->setWordWrap(true);
  layout->addWidget(hint);
  return panel;
}

QCheckBox* CompositeWindow::addSwitch(QLayout* layout, QString const& text, QString const& hint,
                                      void (PlotMetaData::*set)(bool))
{
  auto* box = new QCheckBox(text);
  box->setToolTip(hint);
  layout->addWidget(box);
  connect(box, &QCheckBox::toggled, this, [this, box, set](bool on) {
    if (!container) return;
    if (box == quantiles && on) container->generateQuartiles();
    (container->metaData->*set)(on);
  });
  return box;
}

QDoubleSpinBox* CompositeWindow::addThreshold(QFormLayout* layout, QString const& text, double value,
                                              void (PlotMetaData::*set)(double))
{
  auto* box = new QDoubleSpinBox;
  box->setRange(0.0, 1.0);
  box->setDecimals(4);
  box->setSingleStep(0.01);
  box->setValue(value);
  layout->addRow(text, box);
  connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this, set](double v) {
    if (!container) return;
    (container->metaData->*set)(v);
    if (!hasSelection(*container) && !clusterOfRun.empty())
      showClusters();
    else
      compare();
    refresh();
  });
  return box;
}

ViewOptions CompositeWindow::options() const
{
  ViewOptions view;
  view.density = density->isChecked();
  view.commonScale = commonScale->isChecked();
  view.quantiles = quantiles->isChecked();
  view.logAxes = logAxes->isChecked();
  view.points = points->isChecked();
  view.plainLines = plainLines->isChecked();
  if (outputs->currentIndex() >= 0) view.output = static_cast<std::size_t>(outputs->currentData().toInt());
  view.pThreshold = pThreshold->value();
  view.ksThreshold = ksThreshold->value();
  return view;
}

bool CompositeWindow::open(QString const& path, QString& error, ReadOptions const& read)
{
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const std::string file = QFile::encodeName(path).toStdString();
  StoredPlot loaded;
  std::vector<std::string> lines;
  std::size_t toTell = 0;
  loaded.view = options();
  loaded.view.output = 0;
  try {
    if (isStoredPlot(file)) {
      loaded = readPlot(file);
    } else {
      const ScanFile found = readScan(file, read);
      loaded.scan = linePlotTableOf(found.scan);
      loaded.notes = notesOf(found.scan, loaded.scan);
      lines = readingLines(found.scan, found.report);
      toTell = remarks(found.scan, found.report);
    }
  } catch (std::exception const& failure) {
    error = QString::fromStdString(failure.what());
    loaded.scan.reset();
  }
  QApplication::restoreOverrideCursor();
  if (!loaded.scan) return false;
  show(loaded, QFileInfo(path).fileName());
  reading = lines;
  readingNotes->setText(toTell == 1 ? QString("1 note on reading")
                                    : QString("%L1 notes on reading").arg(toTell));
  readingNotes->setVisible(toTell > 0);
  return true;
}

void CompositeWindow::show(StoredPlot const& loaded, QString const& name)
{
  scan = loaded.scan;
  reading.clear();
  readingNotes->hide();
  notes = loaded.notes;
  gates = loaded.gates;
  join = loaded.join;
  gatedRows = loaded.selectedRows;
  runs = scanOf(scan);
  applyNotes(notes, runs);
  live = std::make_unique<LiveView>(runs, completeRuns(runs));
  comparer.reset();
  comparison = {};
  clusterOfRun.clear();
  fillClusterMenu();
  QPointer<PlotContainer> former = container;
  container = new PlotContainer(nullptr);
  widget->setPlotContainer(container);
  showPlot(*container, loaded);
  delete former;
  setControls(loaded.view);
  compare();
  connect(container->metaData, &PlotMetaData::redrawNeeded, this, &CompositeWindow::refresh);
  container->annotationLink->AddObserver(vtkCommand::AnnotationChangedEvent, this,
                                         &CompositeWindow::afterSelection, afterTheLibrary);
  setWindowTitle(name + " - Runsieve");
  refresh();
}

void CompositeWindow::setControls(ViewOptions const& view)
{
  const QSignalBlocker blockers[] = {
      QSignalBlocker(outputs),    QSignalBlocker(density),    QSignalBlocker(commonScale),
      QSignalBlocker(quantiles),  QSignalBlocker(logAxes),    QSignalBlocker(points),
      QSignalBlocker(plainLines), QSignalBlocker(pThreshold), QSignalBlocker(ksThreshold)};
  outputs->clear();
  std::vector<std::size_t> const columns = scanLayout(*scan).outputs;
  const QStringList names = namesOf(*container, columns);
  for (int i = 0; i < names.size(); ++i)
    outputs->addItem(names[i], static_cast<int>(columns[static_cast<std::size_t>(i)]));
  outputs->setCurrentIndex(outputs->findData(static_cast<int>(view.output)));
  density->setChecked(view.density);
  commonScale->setChecked(view.commonScale);
  quantiles->setChecked(view.quantiles);
  logAxes->setChecked(view.logAxes);
  points->setChecked(!container->metaData->getPlotLine());
  plainLines->setChecked(view.plainLines);
  pThreshold->setValue(view.pThreshold);
  ksThreshold->setValue(view.ksThreshold);
}

bool CompositeWindow::savePlot(QString const& path, QString& error)
{
  if (!container) {
    error = "There is no scan to save.";
    return false;
  }
  try {
    StoredPlot stored = storedPlot(*container, scan);
    stored.notes = notes;
    if (isSelectedByGates()) {
      stored.gates = gates;
      stored.join = join;
    }
    writePlot(stored, QFile::encodeName(path).toStdString());
    return true;
  } catch (std::exception const& failure) {
    error = QString::fromStdString(failure.what());
    return false;
  }
}

bool CompositeWindow::savePicture(QString const& path, QString& error)
{
  try {
    widget->makeCurrent();
    if (container) hideHover(*container);
    widget->updatePlot(false);
    const std::string note =
        app::savePicture(widget->view->GetRenderWindow(), QFile::encodeName(path).toStdString());
    if (!note.empty()) statusBar()->showMessage("Saved: " + QString::fromStdString(note), noteTime);
    return true;
  } catch (std::exception const& failure) {
    error = QString::fromStdString(failure.what());
    return false;
  }
}

void CompositeWindow::openInteractively(QString const& path, ReadOptions const& read)
{
  QString error;
  if (!open(path, error, read)) warn(this, error);
}

void CompositeWindow::chooseFile()
{
  const QString path =
      QFileDialog::getOpenFileName(this, "Open a scan", QString(),
                                   "Scans and plots (*.csv *.tsv *.txt *.dat *.gdat *.scan *.gz "
                                   "*.npy *.npz *.h5 *.hdf5 *.rsd);;All files (*)");
  if (!path.isEmpty()) openInteractively(path);
}

void CompositeWindow::chooseFolder()
{
  const QString path = QFileDialog::getExistingDirectory(this, "Open a folder with a file per run");
  if (!path.isEmpty()) openInteractively(path);
}

void CompositeWindow::showReading()
{
  QStringList lines;
  for (std::string const& line : reading) lines << QString::fromStdString(line);
  QMessageBox box(this);
  box.setWindowTitle("How the file was read");
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setText(!container      ? "No file is open."
              : lines.empty() ? "A stored plot: nothing was guessed."
                              : lines.join('\n'));
  box.exec();
}

void CompositeWindow::choosePicture()
{
  const QString path =
      askForSaveName(this, "Save picture", "view.png", "PNG picture (*.png);;PDF (*.pdf)", "png");
  if (path.isEmpty()) return;
  QString error;
  if (!savePicture(path, error)) warn(this, error);
}

void CompositeWindow::choosePlotFile()
{
  const QString path = askForSaveName(this, "Save plot", "plot.rsd", "Stored plot (*.rsd)", "rsd");
  if (path.isEmpty()) return;
  QString error;
  if (!savePlot(path, error)) warn(this, error);
}

void CompositeWindow::chooseOutput(int index)
{
  if (!container || index < 0) return;
  removeClusters(); // they are of another output
  hideHover(*container);
  showOutput(*container, static_cast<std::size_t>(outputs->itemData(index).toInt()));
  refresh();
}

void CompositeWindow::clearSelection()
{
  if (!container) return;
  if (clusterOfRun.empty())
    app::clearSelection(*container);
  else
    showClusters();
  refresh();
}

void CompositeWindow::chooseClusters(ShapeOf shape)
{
  constexpr int fewest = 1;
  constexpr int most = 100;
  if (!container) return;
  bool chosen = false;
  const int clusters = QInputDialog::getInt(this, "Group runs by their shape", "Number of clusters", 4,
                                            fewest, most, 1, &chosen);
  if (chosen && !cluster(clusters, shape)) warn(this, "The runs of this output cannot be grouped.");
}

bool CompositeWindow::cluster(int clusters, ShapeOf shape)
{
  if (!container) return false;
  removeClusters();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  clusterOfRun = clusterRuns(*container, clusters, shape);
  if (!clusterOfRun.empty()) showClusters();
  QApplication::restoreOverrideCursor();
  fillClusterMenu();
  refresh();
  return !clusterOfRun.empty();
}

void CompositeWindow::showClusters()
{
  comparingClusters = true;
  if (hasSelection(*container)) app::clearSelection(*container);
  clusterComparison = compareClusters(runs, clusterOfRun, completeRuns(runs), method());
  showClusterDistributions(*container, clusterOfRun, clusterComparison);
  container->redraw(); // lines that clustering itself has added go
  comparingClusters = false;
}

void CompositeWindow::selectCluster(int cluster)
{
  if (!container) return;
  PlotMetaData const& settings = *container->metaData;
  selectRows(*container, rowsOfCluster(clusterOfRun, cluster, settings.getStride(), !settings.getPlotLine()));
}

void CompositeWindow::removeClusters()
{
  if (!container || clusterOfRun.empty()) return;
  clusterOfRun.clear();
  container->clusterLabels = nullptr;
  fillClusterMenu();
  if (hasSelection(*container))
    container->redraw();
  else
    app::clearSelection(*container);
  refresh();
}

void CompositeWindow::fillClusterMenu()
{
  clusterEntries->clear();
  clusterEntries->addAction("Group by &curves...", this, [this] { chooseClusters(ShapeOf::Curves); });
  clusterEntries->addAction("Group by &phase...", this, [this] { chooseClusters(ShapeOf::Phase); });
  clusterEntries->addAction("Group by &magnitude...", this, [this] { chooseClusters(ShapeOf::Magnitude); });
  if (clusterOfRun.empty()) return;
  clusterEntries->addSeparator();
  const std::vector<std::size_t> sizes = clusterSizes(clusterOfRun);
  for (int k = 0; k < static_cast<int>(sizes.size()); ++k)
    clusterEntries->addAction(
        QString("Select cluster %1 (%L2 runs)").arg(k).arg(sizes[static_cast<std::size_t>(k)]), this,
        [this, k] { selectCluster(k); });
  clusterEntries->addSeparator();
  clusterEntries->addAction("&Remove clusters", this, &CompositeWindow::removeClusters);
}

void CompositeWindow::afterSelection()
{
  // The chart that was dragged on is still in its event: show the change when that is over.
  if (selectionChanged || comparingClusters) return;
  selectionChanged = true;
  QTimer::singleShot(0, this, [this] {
    selectionChanged = false;
    if (container && !hasSelection(*container) && !container->ksStatistics.empty()) clearSelection();
    compare();
    refresh();
  });
}

bool CompositeWindow::eventFilter(QObject* watched, QEvent* event)
{
  // A pointer on its way to a drag leaves time to prepare for it.
  if (watched == widget && event->type() == QEvent::Enter) prepareLive();
  return QMainWindow::eventFilter(watched, event);
}

/// In slices, between which events go on.
void CompositeWindow::prepareLive()
{
  if (!live || outputs->currentIndex() < 0) return;
  if (!live->prepare(options().output)) QTimer::singleShot(0, this, &CompositeWindow::prepareLive);
}

void CompositeWindow::followDrag(DragRectangle const& rectangle)
{
  constexpr qint64 leastPause = 100; // ms between titles that a reader can follow
  if (!container || !live) return;
  if (!dragging) {
    live->begin(*container);
    dragging = true;
    sinceDistances.invalidate();
    return; // a press has no extent yet
  }
  const std::size_t passing = live->move(rectangle, options().output);
  if (vtkPlotLineSet* lines = runLines(*container)) lines->SetPreview(live->lit());
  status->setText(QString("%L1 of %L2 runs pass through this place").arg(passing).arg(scan->trajectoryCount) +
                  (rectangle.modifiers & (Qt::ControlModifier | Qt::ShiftModifier) ? " and the others" : ""));
  if (sinceDistances.isValid() && sinceDistances.elapsed() < leastPause) return;
  labelDistances(*container, live->distances());
  sinceDistances.start();
}

void CompositeWindow::endDrag()
{
  if (!dragging || !container) return;
  dragging = false;
  if (vtkPlotLineSet* lines = runLines(*container)) lines->ClearPreview();
  labelDistances(*container, {});
  // A drag that selects nothing new leaves the view as it was.
  QTimer::singleShot(0, this, [this] {
    if (!selectionChanged) refresh();
  });
}

ComparisonMethod CompositeWindow::method() const
{
  ComparisonMethod method;
  method.thresholds = {pThreshold->value(), ksThreshold->value()};
  return method;
}

/// Whether the selection is still that of the gates of the plot that was opened.
bool CompositeWindow::isSelectedByGates() const
{
  return !gates.empty() && storedPlot(*container, scan).selectedRows == gatedRows;
}

/// Of the runs that take part at present, which are the same until a file is opened or its gates are left.
ParameterComparer const& CompositeWindow::comparerOfRuns()
{
  const RunSet eligible = eligibleRuns(runs, isSelectedByGates() ? gates : std::vector<Gate>());
  if (!comparer || comparer->eligible() != eligible)
    comparer = std::make_unique<ParameterComparer>(runs, eligible);
  return *comparer;
}

/// The numbers of the present selection, in the charts as well.
void CompositeWindow::compare()
{
  comparison = {};
  if (!container || !hasSelection(*container)) return;
  comparison = compareSelection(*container, comparerOfRuns(), method());
  if (!comparison.numbers.parameters.empty()) orderBy(*container, comparison.numbers);
}

void CompositeWindow::refresh()
{
  if (container) {
    polish(*container);
    nameTexts(*container, runs, widget->width());
    if (!clusterOfRun.empty()) drawClusters(*container);
    if (hasSelection(*container) && comparer)
      label(*container, *comparer, comparison);
    else if (!clusterOfRun.empty())
      label(*container, clusterComparison);
  }
  widget->updatePlot(true);
  showStatus();
}

void CompositeWindow::showStatus()
{
  if (!container) return;
  QString text = QString("%L1 runs, %L2 times").arg(scan->trajectoryCount).arg(scan->trajectoryLength);
  if (hasSelection(*container)) {
    const std::size_t passing = survivingRuns(*container);
    text += QString("   |   %L1 runs pass through all places").arg(passing);
    auto const& ranked = comparison.numbers.parameters;
    const auto significant =
        std::count_if(ranked.begin(), ranked.end(), [](auto const& r) { return r.significant; });
    if (!ranked.empty())
      text += QString("   |   %1 of %2 parameters differ").arg(significant).arg(ranked.size());
    const std::size_t left = comparer ? comparer->eligible().complement().count() : 0;
    if (left > 0) text += QString("   |   %L1 not complete, not compared").arg(left);
  }
  if (!clusterOfRun.empty()) text += QString("   |   %1 clusters").arg(clusterSizes(clusterOfRun).size());
  status->setText(text);
}

QString CompositeWindow::statusText() const
{
  return status->text();
}

} // namespace runsieve::app
