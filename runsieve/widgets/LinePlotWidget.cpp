#include <runsieve/widgets/LinePlotWidget.h>

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/PlotSelector.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <QFileDialog>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>

using Kestrane::TypedConcentrationName;

int getFileDialogOption()
{
  return QFileDialog::DontUseNativeDialog;
}

void QT_BUG_26351_WORKAROUND(QGroupBox*) {}

LinePlotWidget::LinePlotWidget(QWidget* parent) : QWidget(parent), logScale(true), legendVisible(true)
{
  ui.setupUi(this);
  connect(ui.showLegend, &QPushButton::pressed, this, &LinePlotWidget::toggleLegend);
  connect(ui.logSButton, &QPushButton::pressed, this, &LinePlotWidget::toggleLogScale);
  connect(ui.exportButton, &QPushButton::pressed, this, &LinePlotWidget::exportPlot);
  connect(ui.selector, &PlotSelector::notifySelectionChanged, ui.plotter->plotContainer,
          &PlotContainer::setLinePlotItems);
  connect(ui.selector, &PlotSelector::notifySelectionChanged, ui.plotter,
          [this] { ui.plotter->updatePlot(false); });
  ui.splitter->setStretchFactor(0, 3);
  toggleLogScale();
  toggleLegend();
}

LinePlotWidget::~LinePlotWidget() = default;

void LinePlotWidget::setData(LinePlotData* data)
{
  if (!data) return;
  std::vector<TypedConcentrationName> names;
  for (auto const& series : data->series) names.push_back(series.first);
  ui.plotter->plotContainer->setLinePlotData(data);
  ui.selector->setSelectionOptions(names);
  ui.stackedWidget->setCurrentWidget(ui.plotter);
}

void LinePlotWidget::removeData()
{
  ui.stackedWidget->setCurrentWidget(ui.page_no_data);
  std::vector<TypedConcentrationName> none;
  ui.selector->setSelectionOptions(none);
}

void LinePlotWidget::toggleLogScale()
{
  logScale = !logScale;
  ui.plotter->plotContainer->setLogScaleY(logScale);
  ui.plotter->updatePlot(true);
  ui.logSButton->setText(logScale ? tr("Use Linear Scale") : tr("Use Log Scale"));
}

void LinePlotWidget::toggleLegend()
{
  legendVisible = !legendVisible;
  ui.plotter->plotContainer->setShowLegend(legendVisible);
  ui.plotter->updatePlot(true);
  ui.showLegend->setText(legendVisible ? tr("Hide the Legend") : tr("Show the Legend"));
}

void LinePlotWidget::exportPlot()
{
  const QString name =
      QFileDialog::getSaveFileName(nullptr, tr("Save Plot data as"), QString(), tr("CSV(*.csv)"), nullptr,
                                   QFileDialog::Options(getFileDialogOption()));
  if (name.isEmpty()) return;
  ui.plotter->plotContainer->saveData(name.toLatin1().toStdString(), true);
}
