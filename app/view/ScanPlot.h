#pragma once

#include <runsieve/core/scan/RunSet.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/LinePlotTable.h>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>
#include <vector>

class vtkPlotLineSet;

namespace runsieve::app {

/// What the composite view of a scan shows.
struct ViewOptions
{
  std::size_t output = 0;   ///< column of the record on the vertical axis
  bool density = false;     ///< densities instead of cumulative curves
  bool commonScale = false; ///< one vertical range for all densities
  bool quantiles = false;   ///< quartile bands instead of all runs
  bool logAxes = false;     ///< logarithmic parameter axes
  bool points = false;      ///< points instead of lines
  bool plainLines = false;  ///< lines over lines instead of shades by the number of runs
  double pThreshold = 0.05; ///< largest p-value that counts as significant
  double ksThreshold = 0.1; ///< smallest statistic that counts as significant
};

/// Shows a scan in a container in the style selectionCdfPlot. The container's item must be in a scene.
void showScan(PlotContainer& plot, boost::shared_ptr<LinePlotTable> scan, ViewOptions const& options);

/// PlotContainer::densityColors of lines over lines, or of shades by the number of runs.
[[nodiscard]] int shadesOf(bool plainLines);

/// Changes the output on the vertical axis; the selection stays.
void showOutput(PlotContainer& plot, std::size_t output);

/// What the program adds to a composite view after each redraw: thin lines, through which dense places still
/// show, and, if all densities share a scale, that scale on every chart.
void polish(PlotContainer& plot);

/// Takes away the boxes that tell what is under the pointer, until it moves: after a change they tell of what
/// was there before, and nobody wants them in a picture.
void hideHover(PlotContainer& plot);

/// The lines of the runs; null while they are points or another style is shown.
[[nodiscard]] vtkPlotLineSet* runLines(PlotContainer const& plot);

/// The selected rows, ascending.
[[nodiscard]] std::vector<long long> selectedRows(PlotContainer const& plot);

/// Selects rows as a drag does.
void selectRows(PlotContainer& plot, std::vector<long long> const& rows);

/// Takes away the selection and every trace of it. (An empty selection alone leaves highlight and statistics
/// of the last one that was not empty.)
void clearSelection(PlotContainer& plot);

/// Whether any row is selected.
bool hasSelection(PlotContainer const& plot);

/// The runs that have a selected row at every time at which any row is selected; none without rows.
/// \param rows of stacked runs of so many times
[[nodiscard]] RunSet runsThrough(std::vector<long long> const& rows, std::size_t runs, std::size_t times);

/// The runs that pass through all selected places, by their position; none without a selection.
[[nodiscard]] RunSet passingRuns(PlotContainer const& plot);

/// How many these are.
[[nodiscard]] std::size_t survivingRuns(PlotContainer const& plot);

} // namespace runsieve::app
