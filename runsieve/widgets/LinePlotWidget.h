#pragma once

#include <runsieve/records/LinePlotData.h>
#include <runsieve/runsieve_export.h>
#include <runsieve/widgets/LinePlotWidgetForm.h>

#include <QWidget>

class QGroupBox;

/// The complete panel for time courses: a plot, a tree of the items that it can show, and buttons for export,
/// legend and log scale. Without data it shows a notice.
///
/// The selector stays connected to the container that the plotter had at the start; don't give the plotter
/// another one.
class RUNSIEVE_EXPORT LinePlotWidget : public QWidget
{
  Q_OBJECT

public:
  explicit LinePlotWidget(QWidget* parent = nullptr);
  ~LinePlotWidget() override;

  /// Shows the time courses of one simulation, which are copied. What was current in the tree stays current.
  void setData(LinePlotData* data);
  /// Goes back to the notice. The plot keeps its table.
  void removeData();

  Ui_LinePlotWidgetClass ui;

public Q_SLOTS:
  void toggleLegend();
  void toggleLogScale();
  /// Asks for a file and writes all columns as delimited text.
  void exportPlot();

private:
  bool logScale = false;
  bool legendVisible = false;
};

/// The options of every file dialog: QFileDialog::DontUseNativeDialog.
RUNSIEVE_EXPORT int getFileDialogOption();

/// Does nothing; hosts of the suite call it.
RUNSIEVE_EXPORT void QT_BUG_26351_WORKAROUND(QGroupBox* box);
