#include <runsieve/charts/ChartStage.h>

#include <runsieve/charts/ChartLifetime.h>
#include <runsieve/charts/ChartLooks.h>
#include <runsieve/charts/MarginChart.h>
#include <runsieve/charts/Plots.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChartMatrix.h>
#include <vtkChartXY.h>
#include <vtkCommand.h>
#include <vtkContextScene.h>

namespace runsieve {

namespace {

constexpr int axisCount = 4;

template <class Function> void forEachCell(vtkVector2i size, Function&& function)
{
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) function(vtkVector2i(column, row));
}

} // namespace

vtkSmartPointer<vtkChart> ChartStage::newChart() const
{
  auto made = MarginChart::create();
  made->SetSelectionMode(vtkContextScene::SELECTION_ADDITION);
  makeSelectable(made, link);
  addPointPlot(made);
  setChartMargins(made, margins);
  if (item) made->SetScene(item->GetScene());
  return made;
}

vtkChart* ChartStage::alone()
{
  if (!chart || roles.of(chart).place != ChartPlace::alone) chart = newChart();
  roles.give(chart, {ChartPart::plain, ChartPlace::alone}, interactionObserver);
  return chart;
}

vtkChart* ChartStage::toFill(ChartPart part)
{
  if (!chart) item = alone();
  roles.give(chart, {part, roles.of(chart).place}, interactionObserver);
  return chart;
}

vtkChart* ChartStage::forSensitivities()
{
  lifetime.keep(chart);
  chart = vtkSmartPointer<vtkChartXY>::New();
  roles.give(chart, {ChartPart::sensitivity, ChartPlace::selfLaidOut}, interactionObserver);
  item = chart;
  return chart;
}

void ChartStage::layOutGrid(vtkVector2i size)
{
  if (matrix->GetSize() != size) {
    matrix->SetSize({0, 0});
    matrix->SetSize(size);
  }
  forEachCell(size, [this](vtkVector2i position) {
    matrix->GetChart(position)->ClearPlots();
    matrix->SetChartSpan(position, {1, 1});
  });
}

vtkChart* ChartStage::cell(vtkVector2i position, ChartPart part)
{
  vtkChart* found = matrix->GetChart(position);
  roles.give(found, {part, ChartPlace::cell}, interactionObserver);
  return found;
}

vtkChart* ChartStage::mainCell(vtkVector2i position, ChartPart part)
{
  vtkChart* found = cell(position, part);
  if (chart.GetPointer() != found) resetLooks(found);
  chart = found;
  return found;
}

void ChartStage::makeCellsReachable()
{
  forEachCell(matrix->GetSize(), [this](vtkVector2i position) {
    vtkChart* found = matrix->GetChart(position);
    if (!found) return;
    found->SetInteractive(found->GetNumberOfPlots() > 0);
    for (int i = 0; i < axisCount; ++i)
      if (vtkAxis* axis = found->GetAxis(i)) axis->SetInteractive(false);
  });
}

} // namespace runsieve
