#pragma once

#include "app/store/StoredPlot.h"
#include "app/view/LiveView.h"
#include "app/view/ScanClusters.h"
#include "app/view/ShownComparison.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>

#include <memory>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QLayout;
class QMenu;
class QPushButton;
class VtkPlotWidget;

namespace runsieve::app {

/// A window with one scan in the composite view, with the switches of the view beside it.
class CompositeWindow : public QMainWindow
{
  Q_OBJECT

public:
  explicit CompositeWindow(QWidget* parent = nullptr);
  ~CompositeWindow() override;

  /// Opens a scan or a stored plot. If that fails the present one stays, and error tells why.
  bool open(QString const& path, QString& error, ReadOptions const& read = {});
  /// Shows a plot that is open elsewhere. \param name for the title
  void show(StoredPlot const& plot, QString const& name);
  using QMainWindow::show;
  /// Saves the view as .png or .pdf.
  bool savePicture(QString const& path, QString& error);
  /// Saves scan, view, selection and zoom, to be opened again.
  bool savePlot(QString const& path, QString& error);
  /// Groups the runs of the output on show by their shape and shows the clusters. False if there is nothing
  /// to group.
  bool cluster(int clusters, ShapeOf shape);
  /// Makes the runs of a cluster the selection.
  void selectCluster(int cluster);
  /// Goes back to the plain view.
  void removeClusters();
  /// The same as open() with a dialog that shows the error.
  void openInteractively(QString const& path, ReadOptions const& read = {});

  [[nodiscard]] VtkPlotWidget* plotWidget() const { return widget; }
  [[nodiscard]] PlotContainer* plot() const { return container; }
  [[nodiscard]] QString statusText() const;
  [[nodiscard]] QMenu* clusterMenu() const { return clusterEntries; }
  /// How the open file was read, a line each; empty for a stored plot.
  [[nodiscard]] std::vector<std::string> const& howRead() const { return reading; }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void buildMenu();
  QWidget* buildPanel();
  QCheckBox* addSwitch(QLayout* layout, QString const& text, QString const& hint,
                       void (PlotMetaData::*set)(bool));
  QDoubleSpinBox* addThreshold(QFormLayout* layout, QString const& text, double value,
                               void (PlotMetaData::*set)(double));
  void chooseFile();
  void chooseFolder();
  void showReading();
  void choosePicture();
  void choosePlotFile();
  void chooseClusters(ShapeOf shape);
  void showClusters();
  void fillClusterMenu();
  void setControls(ViewOptions const& view);
  void chooseOutput(int index);
  void clearSelection();
  void afterSelection();
  void prepareLive();
  void followDrag(DragRectangle const& rectangle);
  void endDrag();
  void refresh();
  void showStatus();
  void compare();
  ParameterComparer const& comparerOfRuns();
  [[nodiscard]] ComparisonMethod method() const;
  [[nodiscard]] bool isSelectedByGates() const;
  ViewOptions options() const;

  VtkPlotWidget* widget = nullptr;
  QPointer<PlotContainer> container; ///< the plot of the open scan, null before the first
  boost::shared_ptr<LinePlotTable> scan;
  std::vector<int> clusterOfRun;               ///< empty without clusters
  std::vector<std::string> reading;            ///< how the file was read
  Scan runs;                                   ///< the open scan; its outputs are those of the record
  std::unique_ptr<LiveView> live;              ///< of runs
  std::unique_ptr<ParameterComparer> comparer; ///< of runs; none before the first comparison
  ShownComparison comparison;                  ///< of the selection
  ClusterComparison clusterComparison;         ///< of the clusters
  ScanNotes notes;                             ///< what the file has and the record has not
  std::vector<Gate> gates;                     ///< of the stored plot that was opened
  GateJoin join = GateJoin::All;
  std::vector<long long> gatedRows; ///< that these gates had selected

  QMenu* clusterEntries = nullptr;
  QComboBox* outputs = nullptr;
  QCheckBox* density = nullptr;
  QCheckBox* commonScale = nullptr;
  QCheckBox* quantiles = nullptr;
  QCheckBox* logAxes = nullptr;
  QCheckBox* points = nullptr;
  QCheckBox* plainLines = nullptr;
  QDoubleSpinBox* pThreshold = nullptr;
  QDoubleSpinBox* ksThreshold = nullptr;
  QLabel* status = nullptr;
  QPushButton* readingNotes = nullptr; ///< hidden if there is nothing to tell
  bool selectionChanged = false;       ///< a change of the selection waits to be shown
  bool comparingClusters = false;      ///< the selection changes for a calculation only
  bool dragging = false;               ///< a rectangle is being dragged, and shown
  QElapsedTimer sinceDistances;        ///< that were shown last in this drag
};

} // namespace runsieve::app
