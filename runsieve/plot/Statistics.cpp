#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/stats/ColumnScaling.h>
#include <runsieve/stats/Quartiles.h>
#include <runsieve/stats/RankedTest.h>
#include <runsieve/stats/RunClusters.h>
#include <runsieve/styles/ClusterLines.h>
#include <runsieve/styles/ParametersToShow.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChart.h>
#include <vtkIntArray.h>
#include <vtkTable.h>

#include <iostream>

using namespace runsieve;

namespace {

void cluster(PlotContainer& plot, ClusterSearch const& search)
{
  if (!plot.chartXY) return;
  const RunClusters found = clusterRuns(plot.plotData, entry0(plot.metaData->xColumns),
                                        entry0(plot.metaData->yColumns), plot.metaData->getStride(), search);
  if (!found.labels) return;
  plot.clusterRunTable = found.curves;
  plot.clusterLabels = found.labels;
  plot.decorationTable = found.means;
  std::cout << plot.clusterLabels->GetNumberOfTuples() << std::endl
            << plot.clusterRunTable->GetNumberOfRows() << "  " << plot.clusterRunTable->GetNumberOfColumns()
            << std::endl;
  plot.drawClusterRuns();
}

} // namespace

void PlotContainer::ksTestSelection(std::size_t first, std::size_t second)
{
  auto at = [this](std::size_t i) { return i < tables.size() ? tables[i].GetPointer() : nullptr; };
  ksStatistics = compareRanked(at(first), at(second), d->runner);
}

std::vector<int> PlotContainer::shownParameters() const
{
  return parametersToShow(ksStatistics, metaData->parameterColumns.size(), metaData->getPThreshold(),
                          metaData->getKsThreshold(), parameterOrder);
}

void PlotContainer::generateRankedParameters(vtkSmartPointer<vtkTable> table, std::size_t index)
{
  if (!table) return;
  // Whoever asks for all runs anew may have written to columns without a word.
  if (index == 0) d->runOrders.clear();
  d->rank(table, index);
}

void PlotContainer::generateQuartiles()
{
  if (const vtkSmartPointer<vtkTable> quartiles = quartilesByTime(
          plotData, entry0(metaData->xColumns), entry0(metaData->yColumns), metaData->getStride()))
    quartileTable = quartiles;
}

void PlotContainer::scaleColumn(double* factors, int column)
{
  if (!factors || !scaleRuns(plotData, column, metaData->getStride(), factors)) return;
  d->runOrders.clear();
  generateQuartiles();
  dirty();
}

void PlotContainer::scaleRelativeToMaxWithinTrajectory(int column)
{
  if (!scaleRunsToMaximum(plotData, column, metaData->getStride())) return;
  d->runOrders.clear();
  generateQuartiles();
  dirty();
}

void PlotContainer::scaleColumnByColumn(int column, int byColumn, bool divide)
{
  if (scaleByColumn(plotData, column, byColumn, divide)) d->runOrders.clear();
}

void PlotContainer::clusterTimeSeries(int clusters, int mode)
{
  cluster(*this, {clusters, mode, 1, false});
}

void PlotContainer::clusterTimeSeries(int clusters, int mode, int starts)
{
  cluster(*this, {clusters, mode, starts, true});
}

void PlotContainer::drawClusterRuns()
{
  if (chartXY && clusterLabels && clusterRunTable) addClusterLines(chartXY, clusterRunTable, clusterLabels);
}
