#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkPlotPoints.h>
#include <vtkStdString.h>
#include <vtkWeakPointer.h>

class vtkFloatArray;
class vtkTable;

/// A scatter plot with vertical error bars, drawn without caps under the markers.
///
/// The bar of point i spans y[i] - e[i] to y[i] + e[i], e being a column of floats of the input table. A
/// column of another type, or one shorter than the points, gives no bars, and one bad point (NaN or infinite)
/// leaves all bars out. Errors don't widen the bounds of the chart.
///
/// Order of use: SetInputData(table, x, y), then SelectErrorArray().
///
/// \warning The plot takes no reference to its error column, but gives one up when it is destroyed while the
/// column lives. Whoever makes such a plot registers the column once for it; the styles of
/// PlotContainer do.
class RUNSIEVE_EXPORT vtkPlotErrorPoints : public vtkPlotPoints
{
public:
  static vtkPlotErrorPoints* New();
  vtkTypeMacro(vtkPlotErrorPoints, vtkPlotPoints)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// Chooses the error column by name. An unknown name chooses none, but leaves a column that is already in
  /// use.
  void SelectErrorArray(const vtkStdString& name);
  /// Chooses the error column by number. No effect if there is no such column of numbers with a name.
  void SelectErrorArray(vtkIdType column);
  vtkStdString GetErrorArrayName() { return this->ErrorArrayName; }

  /// Looks up the error column in a table. Always true.
  bool UpdateErrorCache(vtkTable* table);

  /// Reports that log scales are not supported.
  void CalculateLogSeries();
  /// The bounds (x minimum, x maximum, y minimum, y maximum) of the good points, without their errors. Leaves
  /// `bounds` as they are without points, bad points or errors. A value that lowers a minimum is not compared
  /// with the maximum, maxima begin at the smallest positive float, and after each stretch of good points one
  /// bad point is passed over.
  void CalculateBounds(double* bounds);

  void Update() override;
  bool Paint(vtkContext2D* painter) override;

protected:
  vtkPlotErrorPoints();
  ~vtkPlotErrorPoints() override;

  /// The error column, null once the table has let it go.
  vtkFloatArray* GetLiveErrorArray();

  vtkStdString ErrorArrayName;
  vtkFloatArray* ErrorArray; ///< not registered; valid as long as GetLiveErrorArray() gives it

private:
  vtkPlotErrorPoints(vtkPlotErrorPoints const&) = delete;
  void operator=(vtkPlotErrorPoints const&) = delete;

  void PaintBars(vtkContext2D* painter);

  vtkWeakPointer<vtkFloatArray> LiveErrorArray;
};
