#pragma once

#include "app/scan/ScanReader.h"
#include "app/view/ScanPlot.h"

#include <QMainWindow>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QLayout;
class VtkPlotWidget;

namespace runsieve::app {

/// The desktop explorer: one scan in the composite view, with the switches of the view beside it.
class ExplorerWindow : public QMainWindow
{
  Q_OBJECT

public:
  explicit ExplorerWindow(QWidget* parent = nullptr);
  ~ExplorerWindow() override;

  /// Opens a scan. If that fails the present scan stays, and error tells why.
  bool open(QString const& path, QString& error, ReadOptions const& read = {});
  /// Saves the view as .png or .pdf.
  bool savePicture(QString const& path, QString& error);
  /// The same with a dialog that shows the error.
  void openInteractively(QString const& path, ReadOptions const& read = {});

  [[nodiscard]] VtkPlotWidget* plotWidget() const { return widget; }
  [[nodiscard]] PlotContainer* plot() const { return container; }
  [[nodiscard]] QString statusText() const;

private:
  void buildMenu();
  QWidget* buildPanel();
  QCheckBox* addSwitch(QLayout* layout, QString const& text, QString const& hint,
                       void (PlotMetaData::*set)(bool));
  QDoubleSpinBox* addThreshold(QFormLayout* layout, QString const& text, double value,
                               void (PlotMetaData::*set)(double));
  void chooseFile();
  void choosePicture();
  void chooseOutput(int index);
  void clearSelection();
  void afterSelection();
  void refresh();
  void showStatus();
  ViewOptions options() const;

  VtkPlotWidget* widget = nullptr;
  QPointer<PlotContainer> container; ///< the plot of the open scan, null before the first
  boost::shared_ptr<LinePlotTable> scan;

  QComboBox* outputs = nullptr;
  QCheckBox* density = nullptr;
  QCheckBox* commonScale = nullptr;
  QCheckBox* quantiles = nullptr;
  QCheckBox* logAxes = nullptr;
  QCheckBox* points = nullptr;
  QDoubleSpinBox* pThreshold = nullptr;
  QDoubleSpinBox* ksThreshold = nullptr;
  QLabel* status = nullptr;
  bool selectionChanged = false; ///< a change of the selection waits to be shown
};

} // namespace runsieve::app
