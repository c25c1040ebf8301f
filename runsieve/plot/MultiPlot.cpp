#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/PaddedRange.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkPlot.h>

using namespace runsieve;

namespace {

void addBlackPoints(vtkChart* chart, vtkTable* table, int x, int y)
{
  vtkPlot* points = addPointPlot(chart);
  setPlotInput(points, table, x, y);
  points->SetColor(0, 0, 0, 255);
}

} // namespace

void PlotContainer::setParameterTitle(vtkAxis* axis, int column)
{
  axis->SetTitle(chartText(bareParameterName(columnName(plotData, column))));
}

void PlotContainer::setParameterAxes(vtkChart* chart, int x, int y, bool titleX, bool titleY)
{
  auto setUp = [this, chart](int side, int column, bool titled) {
    vtkAxis* axis = chart->GetAxis(side);
    if (titled) {
      setParameterTitle(axis, column);
    } else {
      axis->SetTitle("");
      axis->SetLabelsVisible(false);
    }
    axis->SetLogScale(metaData->getLogParameterAxes());
  };
  setUp(vtkAxis::BOTTOM, x, titleX);
  setUp(vtkAxis::LEFT, y, titleY);
  // The rounded bounds of a linear axis begin at 0, which would keep a log scale from becoming active.
  if (metaData->getLogParameterAxes()) chart->RecalculateBounds();
}

void PlotContainer::drawMulitPlot(vtkContextScene* scene)
{
  if (!scene) return;
  const std::vector<int>& parameters = metaData->parameterColumns;
  const int n = static_cast<int>(parameters.size());
  chartMatrix->SetScene(scene);
  item = chartMatrix;
  layOutCells(chartMatrix, {n, n});
  chartMatrix->SetGutter({static_cast<float>(verticalGutter), static_cast<float>(horizontalGutter)});
  chartMatrix->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin);
  if (n == 0) return;

  for (int i = 0; i <= n - 2; ++i)
    for (int j = 0; j <= n - 2 - i; ++j) {
      vtkChart* chart = chartMatrix->GetChart({i, j});
      makeSelectable(chart, annotationLink);
      const int x = parameters[static_cast<std::size_t>(i)];
      const int y = parameters[static_cast<std::size_t>(n - 1 - j)];
      addBlackPoints(chart, plotData, x, y);
      setParameterAxes(chart, x, y, j == 0, i == 0);
    }

  const int half = n / 2;
  const int span = (n + 1) / 2;
  chartXY = chartMatrix->GetChart({half, half});
  makeSelectable(chartXY, annotationLink);
  chartMatrix->SetChartSpan({half, half}, {span, span});
  const int x = entry0(metaData->xColumns);
  addBlackPoints(chartXY, plotData, x, entry0(metaData->yColumns));
  vtkAxis* bottom = chartXY->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTitle(chartText(metaData->xLabel));
  setPaddedRange(bottom, doubleColumn(plotData, x));
  setCustomTicks(bottom, false);
  chartXY->GetAxis(vtkAxis::LEFT)->SetTitle(chartText(metaData->yLabel));
  chartXY->SetTitle(chartText(metaData->plotTitle));
  makeCellsReachable(chartMatrix);
}
