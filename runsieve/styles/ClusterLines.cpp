#include <runsieve/styles/ClusterLines.h>

#include <runsieve/charts/Palette.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/items/ColumnLine.h>
#include <runsieve/items/LineGroup.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChart.h>
#include <vtkIntArray.h>
#include <vtkPlot.h>
#include <vtkTable.h>

#include <memory>

namespace runsieve {

namespace {

constexpr float lineWidth = 4.0f;

void setClusterColor(vtkPlot* plot, unsigned int cluster, double brightness, unsigned char opacity)
{
  auto const& color = palette[cluster % palette.size()];
  auto channel = [&](int c) { return static_cast<unsigned char>(color[c] * brightness); };
  plot->SetColor(channel(0), channel(1), channel(2), opacity);
  plot->SetWidth(lineWidth);
}

} // namespace

void addClusterLines(vtkChart* chart, vtkTable* runs, vtkIntArray* labels)
{
  const vtkIdType count = labels->GetNumberOfTuples();
  auto const group = std::make_shared<LineGroup>();
  for (vtkIdType run = 0; run < count; ++run) {
    auto plot = ColumnLine::create(group);
    addAuxiliaryPlot(chart, plot); // its rows are time points, not rows of the main table
    setClusterColor(plot, static_cast<unsigned int>(labels->GetValue(run)), 255.0, 180);
    if (hasColumn(runs, count) && hasColumn(runs, run)) plot->setColumns(runs, count, run);
  }
}

void addMeanCurves(vtkChart* chart, vtkTable* means)
{
  const vtkIdType columns = means->GetNumberOfColumns();
  for (vtkIdType i = 0; i + 1 < columns; ++i) {
    vtkPlot* plot = addLinePlot(chart);
    plot->SetSelectable(false);
    setClusterColor(plot, static_cast<unsigned int>(i), 200.0, 230);
    setPlotInput(plot, means, columns - 1, i);
  }
}

} // namespace runsieve
