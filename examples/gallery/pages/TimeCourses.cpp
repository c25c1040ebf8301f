// Many runs as lines, many runs with the distributions of their parameters, and single time courses.
#include "ExampleData.h"
#include "Pages.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/LinePlotData.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/ParameterSelection.h>

#include <vtkChart.h>
#include <vtkChartLegend.h>

#include <set>

namespace gallery {

namespace {

constexpr int runs = 160;

/// Runs with much active ERK after so many seconds.
std::set<int> sustainedRuns(LinePlotTable const& scan, double seconds, double least)
{
  double const* kinase = scan.columnData[0];
  double const* time = scan.columnData[2];
  double const* run = scan.columnData[3];
  std::set<int> found;
  for (std::size_t row = 0; row < scan.rows(); ++row)
    if (time[row] == seconds && kinase[row] > least) found.insert(static_cast<int>(run[row]));
  return found;
}

void fillRunsOverTime(PlotContainer& plot)
{
  plot.metaData->blockSignals(true);
  plot.metaData->setPlotStyle(scatterPlot);
  plot.metaData->setPlotLine(true);
  plot.setLinePlotTable(stimulationScan(runs), false);
  plot.setColor(0, 90, 160, 90);
  plot.setPlotTitle("160 runs of the stimulation by EGF");
  plot.setYLabel("ERK-PP [nM]");
}

void fillSelectionView(PlotContainer& plot)
{
  plot.metaData->blockSignals(true);
  plot.metaData->setPlotStyle(selectionCdfPlot);
  plot.metaData->setPlotLine(true);
  plot.metaData->plotTitle = "Runs with more than 90 nM of active ERK after 20 min";
  plot.metaData->red = 60;
  plot.metaData->green = 70;
  plot.metaData->blue = 90;
  plot.metaData->alpha = 90;
  const boost::shared_ptr<LinePlotTable> scan = stimulationScan(runs);
  plot.setLinePlotTable(scan, false);
  ParameterSelection sustained;
  sustained.selectionName = "sustained";
  sustained.selectedRuns = sustainedRuns(*scan, 1200.0, 90.0);
  constexpr int afterTwentyMinutes = 40; // rows of a run until 1200 s
  plot.setSelection(&sustained, afterTwentyMinutes);
  plot.setYLabel("ERK-PP [nM]");
}

void fillTimeCourses(PlotContainer& plot)
{
  const Stimulation cell;
  std::vector<double> times = timesUntil(3600.0, 121);
  std::vector<double> receptor;
  std::vector<double> kinase;
  std::vector<double> inactive;
  for (double t : times) {
    receptor.push_back(cell.receptor(t));
    kinase.push_back(cell.activeKinase(t));
    inactive.push_back(Stimulation::kinase - cell.activeKinase(t));
  }
  const Kestrane::TypedConcentrationName egfr(Kestrane::Molecule, "EGFR-P");
  const Kestrane::TypedConcentrationName erk(Kestrane::Molecule, "ERK");
  const Kestrane::TypedConcentrationName erkPP(Kestrane::Molecule, "ERK-PP");
  LinePlotData data;
  data.timeLabel = "Time [s]";
  data.valueLabel = "Concentration [nM]";
  data.times = &times;
  data.series = {{egfr, &receptor}, {erk, &inactive}, {erkPP, &kinase}};
  plot.setLinePlotData(&data);
  std::vector<Kestrane::TypedConcentrationName> items = {egfr, erk, erkPP};
  plot.setLinePlotItems(&items);
  plot.setPlotTitle("Answer to EGF");
  plot.setShowLegend(true);
  plot.chartXY->GetLegend()->SetVerticalAlignment(vtkChartLegend::CENTER); // the corners hold curves
}

} // namespace

Page runsOverTimePage()
{
  return {"runs_over_time", "Runs over time as lines", fillRunsOverTime};
}

Page selectionViewPage()
{
  return {"selection_view", "Runs and parameters with a selection", fillSelectionView, {80, 48, 36, 20, 44}};
}

Page timeCoursesPage()
{
  return {"time_courses", "Time courses with a legend", fillTimeCourses};
}

} // namespace gallery
