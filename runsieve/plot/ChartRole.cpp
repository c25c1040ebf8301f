#include <runsieve/plot/ChartRole.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkContextMouseEvent.h>
#include <vtkPlot.h>

namespace runsieve {

namespace {

constexpr int axisCount = 4;
constexpr int noButton = -1;

void resetAxis(vtkAxis* axis)
{
  axis->SetLogScale(false);
  axis->SetBehavior(vtkAxis::AUTO);
  axis->SetCustomTickPositions(nullptr, nullptr);
  axis->SetLabelsVisible(true);
  axis->SetTickLabelAlgorithm(vtkAxis::TICK_SIMPLE);
  axis->SetTitle("");
}

} // namespace

void takeRole(vtkChart* chart)
{
  chart->RemoveAllObservers();
  chart->ClearPlots();
  chart->SetAnnotationLink(nullptr);
  chart->SetTitle("");
  chart->SetShowLegend(false);
  chart->SetActionToButton(vtkChart::PAN, vtkContextMouseEvent::LEFT_BUTTON);
  chart->SetActionToButton(vtkChart::ZOOM, vtkContextMouseEvent::MIDDLE_BUTTON);
  chart->SetActionToButton(vtkChart::SELECT, vtkContextMouseEvent::RIGHT_BUTTON);
  for (int i = 0; i < axisCount; ++i)
    if (vtkAxis* axis = chart->GetAxis(i)) resetAxis(axis);
}

void makeSelectable(vtkChart* chart, vtkAnnotationLink* link)
{
  chart->SetAnnotationLink(link);
  chart->SetActionToButton(vtkChart::SELECT, vtkContextMouseEvent::RIGHT_BUTTON);
  chart->SetClickActionToButton(vtkChart::SELECT, noButton);
  chart->SetClickActionToButton(vtkChart::NOTIFY, noButton);
}

void addPlot(vtkChart* chart, vtkPlot* plot)
{
  plot->SetInteractive(false);
  chart->AddPlot(plot);
}

void addAuxiliaryPlot(vtkChart* chart, vtkPlot* plot)
{
  plot->SetSelectable(false);
  addPlot(chart, plot);
}

void makeCellsReachable(vtkChartMatrix* matrix)
{
  const vtkVector2i size = matrix->GetSize();
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) {
      vtkChart* chart = matrix->GetChart({column, row});
      if (!chart) continue;
      chart->SetInteractive(chart->GetNumberOfPlots() > 0);
      for (int i = 0; i < axisCount; ++i)
        if (vtkAxis* axis = chart->GetAxis(i)) axis->SetInteractive(false);
    }
}

} // namespace runsieve
