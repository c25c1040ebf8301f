#pragma once

#include <runsieve/items/LinePlot.h>

#include <vtkSmartPointer.h>
#include <vtkTable.h>

namespace runsieve {

/// A line of two columns of a table that has thousands of them, each with a line of its own. A plot looks its
/// columns up by name, several times a paint, which for as many lines takes a time with the square of their
/// number; this one looks among its own two. To everybody else it is a vtkPlotLine of the whole table.
class ColumnLine : public LinePlot
{
public:
  static vtkSmartPointer<ColumnLine> create();

  /// Both numbers must be those of named columns.
  void setColumns(vtkTable* table, vtkIdType x, vtkIdType y);

  vtkTable* GetInput() override;
  void SetInputData(vtkTable* table) override;
  void SetInputData(vtkTable* table, const vtkStdString& x, const vtkStdString& y) override;
  using vtkPlot::SetInputData;

  void Update() override;

protected:
  ColumnLine() = default;
  ~ColumnLine() override = default;

private:
  void takeColumns();

  vtkSmartPointer<vtkTable> whole;
  vtkMTimeType wholeTime = 0;
  vtkIdType columns[2] = {0, 0};
};

} // namespace runsieve
