#pragma once

#include <runsieve/charts/ChartLifetime.h>
#include <runsieve/charts/ChartRoles.h>
#include <runsieve/charts/CustomTicks.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/selection/RunIndex.h>
#include <runsieve/stats/RankedTables.h>
#include <runsieve/styles/Style.h>

#include <vtkSmartPointer.h>
#include <vtkWeakPointer.h>

class vtkAnnotationLink;
class vtkContextScene;
class vtkTable;

/// What a plot keeps for itself beside the members that hosts address, and the calls that more than one of
/// its subjects makes.
class PlotContainer::Private
{
public:
  explicit Private(PlotContainer& itsPlot);
  ~Private();

  void createCharts();
  void observeSelection();

  /// The charts of the plot, and the plot as builders see it.
  runsieve::ChartStage stage();
  runsieve::StyleModel model();
  /// Builds a style in a scene, after what it needs. Without a scene nothing happens.
  void build(plotStyles style, vtkContextScene* scene);
  /// What every redraw ends with, whatever the style.
  void finishRedraw(vtkContextScene* scene);

  /// Replaces the main table and forgets what was computed from the former.
  void replaceTable(vtkSmartPointer<vtkTable> table);

  void rebuildFromLinePlotTable();

  /// Whether the tables of all runs are those of the present table.
  [[nodiscard]] bool rankedTablesStand() const;
  /// Makes the ranked tables at an index from a table. \param rows those of plotData that the table holds, if
  /// known
  void rank(vtkTable* table, std::size_t index, runsieve::RowSpans const* rows = nullptr);

  /// Turns the selection of a link into flag columns, tables and statistics, and redraws.
  void evaluateSelection(vtkAnnotationLink* link);

  runsieve::ChartLifetime lifetime; ///< charts that an event may still stand in
  runsieve::ChartRoles roles;
  runsieve::CustomTicks ticks;
  runsieve::RunIndex runOrders; ///< of plotData
  runsieve::BlockRunner runner;
  std::shared_ptr<runsieve::LineSetPicture> linePicture;

private:
  void finishSelectionOfCopy();

  PlotContainer& plot;
  vtkWeakPointer<vtkTable> rankedFrom; ///< the table that tables 0 and 1 were made from
  bool drawing = false;                ///< a drawing that needs the selection evaluates it, and goes on
};
