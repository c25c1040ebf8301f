#pragma once

#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/records/CoordinateWindow.h>
#include <runsieve/records/KsStatistics.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/records/ReducedMetaData.h>
#include <runsieve/records/TypedConcentrationName.h>
#include <runsieve/runsieve_export.h>

#include <vtkSmartPointer.h>

#include <boost/shared_ptr.hpp>
#include <boost/unordered_map.hpp>

#include <QObject>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class Distribution;
class FitSettings;
class QByteArray;
class QStringList;
class vtkAbstractContextItem;
class vtkAnnotationLink;
class vtkChart;
class vtkChartMatrix;
class vtkChartParallelCoordinates;
class vtkChartXYZ;
class vtkContextScene;
class vtkDoubleArray;
class vtkExtractSelectedRows;
class vtkIntArray;
class vtkPlot;
class vtkScatterPlotMatrix;
class vtkSelectionUpdateCallback;
class vtkShiftScaleCallback;
class vtkStringArray;
class vtkTable;
struct FitRun;
struct LinePlotData;
struct LinePlotTable;
struct ParameterSelection;
struct SobolPostProcessResult;

/// The model of one plot: its table, its settings, its charts, its selection.
///
/// A host fills it with one of the data operations, lets redraw() build the chart of the current style and
/// shows `item` in a scene (VtkPlotWidget does both). All calls come on the GUI thread. The data members are
/// public: callbacks, hosts and tests address them by name. Failures are silent unless an operation says
/// otherwise.
///
/// Order of work: set the style, fill the plot, set columns and looks, call VtkPlotWidget::updatePlot(true).
/// A host that brings its own container hands it to VtkPlotWidget::setPlotContainer() first, since that call
/// redraws. Sobol, residual and distribution charts are built by the operation that fills them: a redraw that
/// comes later (setPlotContainer() makes one) spoils them.
///
/// The link of a container's charts takes a drag for a selection and nothing else: clicks that VTK calls
/// SELECT and NOTIFY are bound to no button, since they would add points to the link without a word, and
/// count as pans.
///
/// This header forward declares what a host reaches through the members: include what you use.
class RUNSIEVE_EXPORT PlotContainer : public QObject
{
  Q_OBJECT

  class Private;
  std::unique_ptr<Private> d; // in front of all members, so that it goes last

public:
  using KsStatistics = runsieve::KsStatistics;

  /// An empty table and all charts; nothing is drawn yet.
  explicit PlotContainer(QObject* parent);
  /// A plot with copied data and settings, a selection of its own and charts of its own, tied to no scene. A
  /// copy has no chart for parallelCoordinatesPlot; that style draws nothing in it.
  PlotContainer(PlotContainer const& other);
  PlotContainer& operator=(PlotContainer const&) = delete;
  ~PlotContainer() override;

  // ---- state

  vtkSmartPointer<vtkTable> plotData; ///< the main table; all column numbers of metaData refer to it
  /// Side tables by index. In selectionCdfPlot: 0, 1 ranked and density tables of all runs; 2 selected rows;
  /// 3, 4 their ranked and density tables; 5 the other rows at the selected times; 6, 7 theirs. In other
  /// styles additional data sets.
  std::vector<vtkSmartPointer<vtkTable>> tables;
  std::vector<Kestrane::TypedConcentrationName>
      typedColumnNames;             ///< of table-backed line data, in column order
  bool showDecorationPlots = false; ///< a host sets it to see the mean curves of clusters
  std::vector<std::pair<double, double>> parameterBounds; ///< lower and upper bound of each parameter column
  vtkSmartPointer<vtkSelectionUpdateCallback> selectionCallback;
  vtkSmartPointer<vtkShiftScaleCallback> shiftScaleCallback;
  vtkSmartPointer<vtkTable> decorationTable; ///< mean curves, the last column being x
  vtkSmartPointer<vtkTable> clusterRunTable;
  vtkSmartPointer<vtkIntArray> clusterLabels; ///< cluster number of each run
  PlotMetaData* metaData = nullptr;           ///< owned, never null
  boost::unordered_map<ReducedMetaData, CoordinateWindow> coordinateWindows;
  vtkSmartPointer<vtkChart> chartXY; ///< null after the matrix and 3D styles until it is needed again
  vtkSmartPointer<vtkAbstractContextItem> item; ///< the chart of the last redraw, never null
  vtkSmartPointer<vtkScatterPlotMatrix> scatterPlotMatrix;
  vtkSmartPointer<vtkChartMatrix> chartMatrix;
  vtkSmartPointer<vtkChartXYZ> chartXYZ;
  vtkSmartPointer<vtkChartParallelCoordinates> chartParallelCoordinates; ///< null in a copy
  vtkSmartPointer<vtkStringArray> xTickLabels;
  vtkSmartPointer<vtkDoubleArray> xTickPositions;
  vtkSmartPointer<vtkExtractSelectedRows> extractSelectedRows;
  vtkSmartPointer<vtkAnnotationLink> annotationLink; ///< carries the row selection between the charts
  boost::shared_ptr<LinePlotTable> linePlotTable;    ///< the record that plotData borrows from
  int leftMargin = 80;                               ///< pixels, as all margins and gutters
  int topMargin = 20;
  int bottomMargin = 40;
  int rightMargin = 20;
  int horizontalGutter = 28;
  int verticalGutter = 28;
  bool selectionUpdatePending = false; ///< the selection of a copy must still reach the charts
  bool useIndexForXSeries = false;
  std::vector<KsStatistics>
      ksStatistics; ///< one per parameter; the last result stays when a selection is cleared
  /// Positions of parameters in the order in which the composite view shows them, a host's own; the others
  /// follow, and without any the order is that of metaData->parameterColumns. Counts from the next redraw on.
  std::vector<int> parameterOrder;
  vtkSmartPointer<vtkTable> quartileTable;
  /// How lines of runs show how many there are, a number of vtkPlotLineSet::DensityColors; 0: as lines over
  /// lines do. Counts from the next redraw on.
  int densityColors = 0;

  /// Lends threads to the evaluation of selections and to the counting of runs in pictures; a plot makes none
  /// of its own. None, the default: all in the calling thread. Numbers and pictures are the same with any
  /// number of threads. A copy of the plot uses the same ones.
  void setRunner(runsieve::BlockRunner runner);

  // ---- data, columns, scene (plot/PlotContainer.cpp)

  /// Writes a column pair at plotIndex of the column lists, growing them, and redraws. \param quartiles renew
  /// quartileTable for the new column. A negative plotIndex has no effect on the lists.
  void setPlotCols(int x, int y, int plotIndex, bool quartiles);
  /// The same by exact column names, looked up in tables[tableIndex] or, outside its range, in plotData. An
  /// unknown name means column 0; of equal names the last counts.
  void setPlotCols(std::string x, std::string y, int plotIndex, int tableIndex, bool quartiles);
  /// Rebuilds metaData->parameterColumns from typedColumnNames.
  void findParameterColumns();
  /// The names of all columns of plotData.
  [[nodiscard]] QStringList getLabels() const;
  /// Moves the current item into a scene, clearing the scene that it leaves.
  void setScene(vtkContextScene* scene);
  /// The current item; it stays the container's.
  [[nodiscard]] vtkAbstractContextItem* getItem() const;

  // ---- appearance (plot/Appearance.cpp)

  /// Stores the marker size in pixels and applies it to the charts of the style.
  void setPointSize(double size);
  /// Colours a plot (plot 0 of chartXY if null) solid or by the column metaData->colorColumn, which must be
  /// double.
  void useColors(vtkPlot* plot);
  /// Adds the mean curves of decorationTable to chartXY if showDecorationPlots is set.
  void drawDecorations(vtkContextScene* scene);

  // These store their value in metaData, so that a redraw keeps it, and show it on chartXY if there is one.
  void setPlotTitle(std::string title);
  void setXLabel(std::string label);
  void setYLabel(std::string label);
  void setMarkerStyle(int style);  ///< numbering of vtkPlotPoints; of plot 0
  void setLineWidth(double width); ///< pixels; at once only for the bars of scatterPlotWithErrorBars
  void setColor(int red, int green, int blue, int alpha); ///< 0 to 255; shows while useSolidColor is set
  /// One colour for all points, or colours by a column of doubles. An unknown column keeps the former one;
  /// of equal names the last counts.
  void setColorScheme(std::string column, bool solid);

  // Texts and places of the ticks on the bottom axis, for the next redraw; none of them: ticks by number.
  void setXTickLabels(std::vector<std::string> const& labels);
  void setXTickPosition(std::vector<double> const& positions);

  void LogScaleX(); ///< gives chartXY the scale that metaData->getLogX() names
  /// Row numbers instead of an x column in scatterPlotWithErrorBars, from the next redraw on.
  void setUseIndexForXSeries(bool useIndex);
  [[nodiscard]] bool getUseIndexForXSeries() const { return useIndexForXSeries; }

  // Pixels. A setter applies all margins and gutters of the style at once; the two gutters change places at
  // the next redraw.
  [[nodiscard]] int getLeftMargin() const { return leftMargin; }
  [[nodiscard]] int getTopMargin() const { return topMargin; }
  [[nodiscard]] int getBottomMargin() const { return bottomMargin; }
  [[nodiscard]] int getRightMargin() const { return rightMargin; }
  [[nodiscard]] int getHorizontalGutter() const { return horizontalGutter; }
  [[nodiscard]] int getVerticalGutter() const { return verticalGutter; }
  void setLeftMargin(int pixels);
  void setTopMargin(int pixels);
  void setBottomMargin(int pixels);
  void setRightMargin(int pixels);
  void setHorizontalGutter(int pixels);
  void setVerticalGutter(int pixels);
  void updateMargins();

  // ---- styles with builders of their own; redraw() calls them (plot/Redraw.cpp, styles/)

  /// One series with error bars (column zColumns[0], of floats), and a second one as a line if xColumns or
  /// the row numbers, and yColumns, name it; its table is tables[0] if there is one.
  void drawScatterPlotWithErrorBars(vtkContextScene* scene);
  /// All pairs of parameters as a triangle of small charts, and the plot's own columns in a large one.
  void drawMulitPlot(vtkContextScene* scene);
  /// The course of a fit: all pairs of parameters, and each parameter over the iterations (column 1),
  /// coloured by the score (column 0, of doubles) on a logarithmic scale from blue over black to red.
  void drawFitParameterDistributionPlot(vtkContextScene* scene);

  // ---- selection (plot/Selection.cpp)

  /// The link's selection as flags, one per row of plotData, named "selected points". A new array that
  /// becomes the caller's (vtkSmartPointer::Take); null if there is nothing to read.
  [[nodiscard]] vtkIntArray* getCurrentSelection() const;
  /// Makes the rows with value 1 in the last column of plotData, if it is a vtkIntArray, the link's
  /// selection.
  void selectionFromFlagColumn();
  /// The current selection as run numbers; in selectionCdfPlot only the runs that pass through all places. A
  /// new record that becomes the caller's; null if plotData has no column ": Run Index" of doubles.
  [[nodiscard]] ParameterSelection* getSelection();
  /// Selects row timeIndex of each named run. The record stays the caller's.
  void setSelection(ParameterSelection* selection, int timeIndex);
  /// Adds the named runs as a further series of the distribution charts, without touching the link. Run
  /// numbers must ascend in the table; one that is missing ends the walk. The record stays the caller's.
  void setExternalSelection(ParameterSelection* selection);
  /// Appends one record per cluster, with the positions in clusterLabels. The records become the caller's.
  void selectionsFromClusters(std::string const& name, std::vector<ParameterSelection*>& selections);
  /// Reduces plotData, for good, to the columns that the settings name and the auxiliary ones, renumbers the
  /// settings and appends the selection as a column "selected points". Keeps the window of the current
  /// columns in metaData and forgets all others. Does not redraw.
  void shrinkToColumnSelection();

  // ---- statistics (plot/Statistics.cpp)

  /// Compares the "Sorted ..." columns of the ranked tables tables[first] and tables[second] pairwise and
  /// fills ksStatistics. Missing tables give an empty result.
  void ksTestSelection(std::size_t first, std::size_t second);
  /// Makes tables[index] (sorted values and ranks) and tables[index + 1] (densities on 200 points) of the
  /// parameter columns of a table. Index 0 reads one row per run, any other index the distinct values of all
  /// rows.
  void generateRankedParameters(vtkSmartPointer<vtkTable> table, std::size_t index);
  /// Positions of the parameters that the composite view shows, cell by cell, the lowest row first.
  [[nodiscard]] std::vector<int> shownParameters() const;
  /// Builds the composite view of runs and parameter distributions in a scene; redraw() calls it.
  void drawSelectionCdfPlot(vtkContextScene* scene);
  /// Renews quartileTable: minimum, quartiles and maximum over the runs of column yColumns[0], a row per time
  /// point.
  void generateQuartiles();
  /// Multiplies each run of a column by its factor (one per complete run) and renews the quartiles.
  void scaleColumn(double* factors, int column);
  /// Divides each run of a column by its own maximum, at least 0, and renews the quartiles.
  void scaleRelativeToMaxWithinTrajectory(int column);
  /// Multiplies, or divides, a column by another one, row by row; renews nothing.
  void scaleColumnByColumn(int column, int byColumn, bool divide);
  /// Groups the runs by the shape of column yColumns[0], by k-means under Pearson's correlation distance
  /// (vtkKMeansPearson), and adds one line per run to chartXY, coloured by its cluster. Fills clusterLabels,
  /// clusterRunTable (a column per run) and decorationTable (a mean curve per cluster). The same input gives
  /// the same clusters. No effect without a complete run or below one cluster.
  /// \param mode 2: by the phase of the Fourier transform, 3: by its magnitude, others: by the curve itself
  /// \param starts searches, of which the best counts: from the first runs, which may be alike, and from runs
  /// that differ. A run with a NaN or an infinity takes no part, and belongs to the first cluster
  void clusterTimeSeries(int clusters, int mode, int starts);
  /// The same from one start, the first runs, with a NaN in a run as vtkKMeansStatistics takes it.
  void clusterTimeSeries(int clusters, int mode);
  /// Adds the lines of the last clusterTimeSeries() to chartXY once more; a redraw takes them away.
  void drawClusterRuns();
  /// Samples a density into plotData ("x", "pdf") and shows it in chartXY as a filled curve, a point value as
  /// a peak. The distribution stays the caller's.
  void setDistribution(Distribution* distribution);

  // ---- adapters (plot/Adapters.cpp)

  /// Makes a record of stacked runs the main table, borrowing its columns, chooses the plot columns and
  /// redraws.
  void setLinePlotTable(boost::shared_ptr<LinePlotTable> table, bool withQuartiles);
  /// Rebuilds plotData from linePlotTable after its content changed in place. Chooses no columns, does not
  /// redraw.
  void updateFromLinePlotTable(bool withQuartiles);
  /// Appends a borrowed table to tables; the caller keeps the record alive as long as it stands there.
  /// Empties typedColumnNames.
  void setLinePlotTableAsAdditionalData(LinePlotTable* table);
  /// Replaces plotData by one slice of Sobol indices, a column per parameter, and builds its chart: bars over
  /// the species at times[timeIndex], or an area over time for species[speciesIndex]. Negative indices become
  /// 0. The style must be set before: barPlot or stackedPlot. The record stays the caller's; an index outside
  /// it has no effect.
  /// \param total indices of total order instead of first order
  void setSobolPostprocessResult(SobolPostProcessResult* result, bool atSingleTime, bool total,
                                 std::size_t timeIndex, std::size_t speciesIndex);
  /// Builds a new chart of the table that stands, for barPlot or stackedPlot. It has no scene until
  /// VtkPlotWidget::updatePlot(true).
  void setupStackedSobol(bool total);
  /// Replaces plotData by the residuals of a fit, or by predictions beside observations, and draws them in
  /// chartXY. All records stay the caller's.
  /// \param predictions one vector per data series, changed in place by normalization or standardization
  /// \param scaled residuals are divided by the errors of the observations
  /// \param showCurves predictions and observations instead of residuals
  void setResidualPlot(FitRun* run, FitSettings* settings, std::vector<std::vector<double>>& predictions,
                       bool scaled, bool showCurves);
  /// Replaces plotData by points, with error bars if there are as many errors as points, and redraws. x and y
  /// of different lengths leave an empty table, a message as the chart's title, and the settings' signals
  /// blocked until the next redraw.
  void setSimpleXYPlot(std::vector<double>& x, std::vector<double>& y, std::vector<double>& errors);
  /// Appends a column; returns its index, or -1 if its length is not the row count of plotData.
  int addColumn(std::vector<double> const& values, std::string const& name);
  /// Replaces plotData by demonstration curves.
  void example();

  // ---- persistence (plot/Persistence.cpp)

  /// plotData and typedColumnNames as bytes (docs/file_formats.md); the array becomes the caller's. Columns
  /// other than of doubles go as integers. \throw std::length_error for more than 2 GiB
  [[nodiscard]] QByteArray* binaryDump();
  /// The reverse. metaData must stand before: stride, columns, style and coordinateWindow are read. The
  /// selection comes back from a flag column, and the quartiles are renewed; nothing is redrawn. What a short
  /// dump lacks comes back as zeros and empty names. The dump stays the caller's.
  /// \throw std::length_error, std::bad_array_new_length for negative or absurd counts; what was read stays
  void readDump(QByteArray* dump);
  /// Writes plotData as delimited text into a file and returns null, or without a file name returns the text,
  /// which becomes the caller's (delete[]).
  /// \param keepAllColumns if not, shrinkToColumnSelection() comes first
  char* saveData(std::string fileName, bool keepAllColumns);
  /// Replaces plotData by a file of delimited text: columns of numbers become doubles, all others text.
  /// Nothing else changes and nothing is redrawn. VTK reports files that cannot be read, and so are files of
  /// more than 30,000 columns, for which its reader would take minutes: they leave an empty table.
  void loadData(std::string fileName);

public Q_SLOTS:
  /// Replaces the main table and drops all side tables; does not redraw.
  void setPlotData(vtkSmartPointer<vtkTable> data);
  /// Copies one simulation's time courses into plotData; setLinePlotItems() then chooses what is shown.
  void setLinePlotData(LinePlotData* data);
  /// Appends a copied table to tables.
  void setLinePlotDataAsAdditionalData(LinePlotData* data);
  /// Replaces the plots of chartXY by one line per item.
  void setLinePlotItems(std::vector<Kestrane::TypedConcentrationName>*);
  /// Forwards to the settings, whose signal redraws.
  void setPlotStyle(plotStyles plotStyle);
  // The chart alone keeps these two: a chart that takes its place starts without them.
  void setLogScaleY(bool log); ///< stays linear while there are values of 0 or below
  void setShowLegend(bool legend);
  /// Rebuilds the chart of the current style in the scene of `item`. Neither renders nor adds the item to the
  /// scene. Without a scene it prints a line and leaves the settings' signals blocked until a redraw finds
  /// one.
  void redraw();
  /// Marks the scene for repainting.
  void dirty();
  /// Runs the selection callback by hand.
  void annotationUpdate();

private:
  friend class vtkSelectionUpdateCallback;
};
