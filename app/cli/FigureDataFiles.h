#pragma once

#include <string>
#include <vector>

namespace runsieve::app {

/// What of the data behind a figure has a file of its own, beside the runs and the curves of the parameters.
struct FigureDataParts
{
  bool parameters = false; ///< the table of the comparison
  bool bands = false;      ///< of runs
};

/// Where the data behind a figure stand beside it: "figure.pdf" has "figure_runs.csv", "figure_curves.csv",
/// and "figure_parameters.csv" and "figure_bands.csv" if there are such, in this order.
[[nodiscard]] std::vector<std::string> figureDataFiles(std::string const& figure, FigureDataParts parts);

} // namespace runsieve::app
