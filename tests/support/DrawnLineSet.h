#pragma once

#include "RecordingDevice.h"
#include "TableBuilder.h"

#include <runsieve/items/vtkPlotLineSet.h>

#include <vtkTable.h>

#include <gtest/gtest.h>

#include <vector>

namespace runsieve::test {

/// A line set over columns "x" and "y" whose x values are the row numbers.
struct DrawnLineSet : testing::Test
{
  vtkNew<vtkPlotLineSet> plot;
  RecordingPainter recorder;
  vtkSmartPointer<vtkTable> table;

  DrawnLineSet() { plot->SetOnlyShowSelected(0); }

  void setHeights(std::vector<double> const& y, int stride)
  {
    std::vector<double> x;
    for (std::size_t row = 0; row < y.size(); ++row) x.push_back(static_cast<double>(row));
    table = makeTable({{"x", x}, {"y", y}});
    plot->SetInputData(table, "x", "y");
    plot->SetStride(stride);
  }

  void setRows(int rows, int stride) { setHeights(std::vector<double>(rows, 0.0), stride); }

  template <class Array = vtkIdTypeArray, class Value = vtkIdType>
  void setFlags(std::vector<Value> const& flags)
  {
    table->AddColumn(makeColumn<Array>("vtkRemainderSelection", flags));
  }

  bool draw()
  {
    plot->Update();
    return plot->Paint(recorder.painter);
  }

  /// First row of each line drawn in the colour of selected runs, or of each other line.
  std::vector<int> firstRows(bool selected) const
  {
    std::vector<int> rows;
    for (Stroke const& line : recorder.polyLines())
      if ((line.pen == selectionColor) == selected)
        rows.push_back(static_cast<int>(line.points.front().first));
    return rows;
  }
};

} // namespace runsieve::test
