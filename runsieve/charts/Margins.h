#pragma once

class vtkChart;
class vtkChartMatrix;

namespace runsieve {

/// Pixels around a chart or a grid of charts, and between the charts of a grid.
struct Margins
{
  int left;
  int bottom;
  int right;
  int top;
  int horizontalGutter;
  int verticalGutter;
};

/// Margins of a chart that stands alone.
void setChartMargins(vtkChart* chart, Margins const& margins);

/// Margins of a grid, with the horizontal gutter between its columns and titleSpace more pixels above each
/// row.
void setGridMargins(vtkChartMatrix* matrix, Margins const& margins, int titleSpace = 0);

/// The same with the two gutters in each other's place.
void setGridMarginsTurned(vtkChartMatrix* matrix, Margins const& margins);

} // namespace runsieve
