#pragma once

#include <vtkWeakPointer.h>

#include <vector>

class vtkChart;
class vtkCommand;

namespace runsieve {

/// What a chart shows.
enum class ChartPart
{
  none,         ///< nothing that a plot has put there
  plain,        ///< one plot with axes, margins and a selection
  distribution, ///< the density of setDistribution()
  sensitivity,  ///< bars or areas of Sobol indices, with the legend beside them
  runs,         ///< all runs, in the composite view
  parameter,    ///< the distributions of one parameter, in the composite view
  pair,         ///< two parameters against each other
  largePair,    ///< the plot's own two columns, beside the pairs
  scoredPair,   ///< two parameters of a fit, coloured by its score
  iterations    ///< one parameter of a fit over its iterations
};

/// Where a chart stands.
enum class ChartPlace
{
  alone,       ///< it fills its scene within the margins
  selfLaidOut, ///< it fills its scene and measures its margins by itself
  cell         ///< in a chart matrix
};

struct ChartRole
{
  ChartPart part = ChartPart::none;
  ChartPlace place = ChartPlace::alone;
};

/// The record of which chart plays which role.
///
/// A chart that goes on in its role keeps whatever a host has set on it. One that changes its role gives up
/// what the former has left: all looks in a chart matrix, which hands its charts from cell to cell; its
/// shape, if an adapter has shaped it.
class ChartRoles
{
public:
  /// The role of a chart; part none for one that has not been given any.
  [[nodiscard]] ChartRole of(vtkChart* chart) const;

  /// Gives a chart a role. \param observer the container's own observer, which a chart loses with a former
  /// role
  void give(vtkChart* chart, ChartRole role, vtkCommand* observer);

private:
  struct Entry
  {
    vtkWeakPointer<vtkChart> chart;
    ChartRole role;
  };

  void forgetDropped();

  std::vector<Entry> entries;
};

} // namespace runsieve
