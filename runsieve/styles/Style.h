#pragma once

#include <runsieve/charts/ChartStage.h>
#include <runsieve/records/CoordinateWindow.h>
#include <runsieve/records/KsStatistics.h>
#include <runsieve/records/plotStyles.h>
#include <runsieve/records/ReducedMetaData.h>
#include <runsieve/records/TypedConcentrationName.h>

#include <vtkSmartPointer.h>

#include <boost/unordered_map.hpp>

#include <memory>
#include <string>
#include <vector>

class PlotMetaData;
class vtkContextScene;
class vtkDoubleArray;
class vtkStringArray;
class vtkTable;

namespace runsieve {

class LineSetPicture;

/// What a plot shows, and the charts that show it.
struct StyleModel
{
  PlotMetaData& settings;
  vtkTable* data;
  std::vector<vtkSmartPointer<vtkTable>> const& sideTables;
  std::vector<Kestrane::TypedConcentrationName> const& columnNames;
  std::vector<KsStatistics> const& statistics; ///< one per parameter, or fewer
  std::vector<int> const& parameterOrder;      ///< positions of parameters; may be empty
  vtkTable* quartiles;                         ///< may be null
  vtkStringArray* tickTexts;                   ///< of the bottom axis; may be null, as the positions
  vtkDoubleArray* tickPositions;
  boost::unordered_map<ReducedMetaData, CoordinateWindow> const& windows;
  bool indexAsX;
  std::shared_ptr<LineSetPicture> const& linePicture; ///< of the lines of runs, from one drawing to the next
  int densityColors;                                  ///< of them, a number of vtkPlotLineSet
  ChartStage stage;
};

/// One plot style: what it needs, and how it is built. A further style is a pair of files and a line in
/// Styles.cpp.
struct Style
{
  plotStyles number;
  /// Whether the distributions of the parameters must stand in the side tables before it is built.
  bool needsDistributions;
  /// Builds the plots of the chart in the scene and makes that chart the item.
  void (*build)(StyleModel& model, vtkContextScene* scene);
  /// Applies margins and gutters at once; null if that is left to the next redraw.
  void (*applyMargins)(ChartStage& stage);
  /// Applies a marker size in pixels at once; null for styles without one.
  void (*applyPointSize)(StyleModel& model, double size);
};

} // namespace runsieve
