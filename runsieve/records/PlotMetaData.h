#pragma once

#include <runsieve/records/CoordinateWindow.h>
#include <runsieve/records/plotStyles.h>
#include <runsieve/runsieve_export.h>

#include <QObject>

#include <string>
#include <vector>

/// The settings of one plot: which columns it shows, in which style, with which looks and thresholds.
///
/// A plain store that knows nothing of charts. Setters announce a change of anything that is drawn by
/// redrawNeeded(); an equal value announces nothing. setStride() and setLineWidth() never announce. Public
/// fields are written directly and announce nothing: call PlotContainer::redraw() afterwards.
class RUNSIEVE_EXPORT PlotMetaData : public QObject
{
  Q_OBJECT

public:
  explicit PlotMetaData(QObject* parent = nullptr);
  /// Independent copy of all fields, without a parent and without connections.
  PlotMetaData(PlotMetaData const& other);
  PlotMetaData& operator=(PlotMetaData const&) = delete;

  // Columns of the main table. Entry 0 belongs to the main plot and always exists in a new record.
  std::vector<int> xColumns{0};
  std::vector<int> yColumns{0}; ///< for parallelCoordinatesPlot the columns to show
  std::vector<int> zColumns{0}; ///< entry 0: z of scatterPlot3D, error column of scatterPlotWithErrorBars

  // Solid colour of the main plot, 0 to 255 each.
  int red = 0;
  int green = 0;
  int blue = 0;
  int alpha = 255;

  int markerStyle = 4;    ///< numbering of vtkPlotPoints; 4 is a circle
  double pointSize = 5.0; ///< pixels
  std::string plotTitle;
  std::string xLabel;
  std::string yLabel;
  int colorColumn = 0;               ///< colours the points when useSolidColor is false; negative: none
  std::vector<int> parameterColumns; ///< ascending
  bool useSolidColor = true;
  bool rankedParametersValid = false; ///< the side tables 0 and 1 stand
  std::string sourceName;             ///< copied into every ParameterSelection made from this plot
  int sourceId = 0;
  CoordinateWindow coordinateWindow; ///< travels with the binary dump

  [[nodiscard]] plotStyles getPlotStyle() const { return plotStyle; }
  [[nodiscard]] bool getPlotLine() const { return plotLine; }
  [[nodiscard]] int getStride() const { return stride; }
  [[nodiscard]] bool getLogX() const { return logX; }
  [[nodiscard]] bool getLimitColumVisibility() const { return limitColumVisibility; }
  [[nodiscard]] double getLineWidth() const { return lineWidth; }
  [[nodiscard]] double getPThreshold() const { return pThreshold; }
  [[nodiscard]] double getKsThreshold() const { return ksThreshold; }
  [[nodiscard]] bool getUseDensity() const { return useDensity; }
  [[nodiscard]] bool getCommonDensityScale() const { return commonDensityScale; }
  [[nodiscard]] bool getShowQuantiles() const { return showQuantiles; }
  [[nodiscard]] bool getLogParameterAxes() const { return logParameterAxes; }

  void setPlotStyle(plotStyles style);
  void setPlotLine(bool lines);             ///< runs are lines instead of points; default false
  void setStride(int rowsPerRun);           ///< rows of one run; default 1; announces nothing
  void setLogX(bool log);                   ///< default false
  void setLimitColumVisibility(bool limit); ///< scatterPlotMatrixStyle shows only the columns in use
  void setLineWidth(double pixels);         ///< of error points; default 1; announces nothing
  void setPThreshold(double largest);       ///< largest p-value that counts as significant; default 0.05
  void setKsThreshold(double smallest);     ///< smallest statistic that counts as significant; default 0.1
  void setUseDensity(bool density);         ///< densities instead of cumulative curves; default false
  void setCommonDensityScale(bool common);  ///< one vertical range for all densities; default false
  void setShowQuantiles(bool show);         ///< quartile bands instead of all runs; default false
  void setLogParameterAxes(bool log);       ///< default false

Q_SIGNALS:
  /// Something that is drawn has changed.
  void redrawNeeded();

private:
  template <class T> void change(T& field, T value);

  plotStyles plotStyle = scatterPlot;
  bool plotLine = false;
  int stride = 1;
  bool logX = false;
  bool limitColumVisibility = false;
  double lineWidth = 1.0;
  double pThreshold = 0.05;
  double ksThreshold = 0.1;
  bool useDensity = false;
  bool commonDensityScale = false;
  bool showQuantiles = false;
  bool logParameterAxes = false;
};
