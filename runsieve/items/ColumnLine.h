#pragma once

#include <runsieve/items/LinePlot.h>

#include <vtkSmartPointer.h>
#include <vtkTable.h>

#include <cstdint>
#include <memory>
#include <vector>

class vtkDoubleArray;

namespace runsieve {

class LineGroup;

/// A line of two columns of a table that has thousands of them, each with a line of its own. To everybody
/// else it is a vtkPlotLine of the whole table.
///
/// A plot looks its columns up by name, several times a paint, which for as many lines takes a time with the
/// square of their number; this one looks among its own two. It copies its points only when it paints itself,
/// which its group spares it on the screen. And it has no place in a legend that isn't shown, since a chart
/// measures the texts of a hidden one, too.
class ColumnLine : public LinePlot
{
public:
  /// \param group of the lines that are painted together; null: none
  static vtkSmartPointer<ColumnLine> create(std::shared_ptr<LineGroup> group = nullptr);

  /// Both numbers must be those of named columns.
  void setColumns(vtkTable* table, vtkIdType x, vtkIdType y);

  vtkTable* GetInput() override;
  void SetInputData(vtkTable* table) override;
  void SetInputData(vtkTable* table, const vtkStdString& x, const vtkStdString& y) override;
  using vtkPlot::SetInputData;
  void SetInputArray(int index, const vtkStdString& name) override;

  void Update() override;
  bool Paint(vtkContext2D* painter) override;
  void GetBounds(double bounds[4]) override;
  void GetUnscaledInputBounds(double bounds[4]) override;
  bool GetLegendVisibility() override;
  vtkIdType GetNearestPoint(const vtkVector2f& point, const vtkVector2f& tolerance, vtkVector2f* location,
                            vtkIdType* segmentId) override;
  using vtkPlot::GetNearestPoint;
  bool SelectPoints(const vtkVector2f& min, const vtkVector2f& max) override;
  bool SelectPointsInPolygon(const vtkContextPolygon& polygon) override;

  /// Whether it is a solid polyline and nothing else. \sa LineGroup
  [[nodiscard]] bool isPlain();
  /// Changes with the points.
  [[nodiscard]] vtkMTimeType pointsTime();
  /// Appends x and y of each point in turn, as they are painted: logarithms on a logarithmic axis.
  void appendPoints(std::vector<float>& points);

  /// Numbers of frames, which belong to the group.
  struct Frames
  {
    std::uint64_t toCome = 0; ///< in which it has not been painted yet
    std::uint64_t shown = 0;  ///< whose image shows it
  };
  Frames frames;
  std::size_t place = 0; ///< in the group, which sets it

protected:
  ColumnLine() = default;
  ~ColumnLine() override;

private:
  /// Columns that are painted without a copy: doubles, as many of both, all of them finite.
  struct Direct
  {
    vtkDoubleArray* x = nullptr; ///< belongs to the table of the line; null: there are none
    vtkDoubleArray* y = nullptr;
    vtkMTimeType time = 0;
    double bounds[4] = {0, 0, 0, 0}; ///< of x, of y
  };

  void takeColumns();
  void giveColumnsUp();
  void lookAtColumns();
  [[nodiscard]] bool needsNoPoints() const;
  void makePoints();

  std::shared_ptr<LineGroup> group;
  vtkSmartPointer<vtkTable> whole; ///< null: the plot has an input like any other
  vtkMTimeType wholeTime = 0;
  vtkIdType columns[2] = {0, 0};
  bool isTaking = false; ///< its columns from the whole table, now
  vtkMTimeType takenTime = 0;
  Direct direct;
};

} // namespace runsieve
