// Thirty runs of a decay with rates k from 0.1 to 3: the runs above, below them how k is distributed.
#include "isBlank.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <boost/make_shared.hpp>
#include <cmath>
#include <QApplication>
#include <QSurfaceFormat>

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(VtkPlotWidget::defaultFormat());
  QApplication application(argc, argv);

  auto scan = boost::make_shared<LinePlotTable>();
  scan->trajectoryCount = 30;
  scan->trajectoryLength = 41;
  scan->parameterBounds = {{0.1, 3.0}};
  double* amount = scan->addColumn(Kestrane::Molecule, "A");
  double* time = scan->addColumn(Kestrane::Unnamed, "Time [s]");
  double* run = scan->addColumn(Kestrane::Unnamed, "Run Index");
  double* rate = scan->addColumn(Kestrane::Parameter, "k");
  for (std::size_t row = 0; row < scan->rows(); ++row) {
    run[row] = std::floor(row / 41);
    time[row] = 0.1 * (row % 41);
    rate[row] = 0.1 * (run[row] + 1);
    amount[row] = 10 * std::exp(-rate[row] * time[row]);
  }

  VtkPlotWidget plot;
  PlotMetaData& settings = *plot.plotContainer->metaData;
  settings.setPlotStyle(selectionCdfPlot);
  settings.setPlotLine(true);
  settings.plotTitle = "Decay";
  plot.plotContainer->setLinePlotTable(scan, false);
  plot.updatePlot(true);
  plot.resize(800, 600);
  plot.show();
  if (application.arguments().contains("--quit-after-show")) return isBlank(plot) ? 1 : 0;
  return application.exec();
}
