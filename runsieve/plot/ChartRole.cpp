#include <runsieve/plot/ChartRole.h>

#include <runsieve/items/LinkedPlotPoints.h>
#include <runsieve/items/SelectionGuard.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkContextMouseEvent.h>
#include <vtkPlot.h>
#include <vtkPlotLine.h>
#include <vtkTextProperty.h>

namespace runsieve {

namespace {

/// A line that says nothing when it has no two points; vtkPlotLine reports that as an error at each paint.
class LinePlot : public SelectionGuard<vtkPlotLine>
{
public:
  static vtkSmartPointer<LinePlot> create()
  {
    auto* plot = new LinePlot;
    plot->InitializeObjectBase();
    return vtkSmartPointer<LinePlot>::Take(plot);
  }

  bool Paint(vtkContext2D* painter) override
  {
    const bool isLine = !this->Points || this->Points->GetNumberOfPoints() > 1;
    return isLine || this->MarkerStyle != NONE ? this->SelectionGuard<vtkPlotLine>::Paint(painter) : true;
  }

protected:
  LinePlot() = default;
  ~LinePlot() override = default;
};

constexpr int axisCount = 4;
constexpr int noButton = -1;
constexpr int defaultPrecision = 2;        ///< of vtkAxis, as the margins
constexpr int defaultMargins[2] = {15, 5}; ///< pixels

void resetAxis(vtkAxis* axis)
{
  axis->SetLogScale(false);
  axis->SetBehavior(vtkAxis::AUTO);
  axis->SetCustomTickPositions(nullptr, nullptr);
  axis->SetLabelsVisible(true);
  axis->SetRangeLabelsVisible(false);
  axis->SetTickLabelAlgorithm(vtkAxis::TICK_SIMPLE);
  axis->SetNumberOfTicks(-1);
  axis->SetNotation(vtkAxis::STANDARD_NOTATION);
  axis->SetPrecision(defaultPrecision);
  axis->SetMargins(defaultMargins[0], defaultMargins[1]);
  axis->GetLabelProperties()->SetOrientation(0.0); // bars write their names upwards
  axis->SetTitle("");
}

} // namespace

vtkPlot* plot0(vtkChart* chart)
{
  return chart && chart->GetNumberOfPlots() > 0 ? chart->GetPlot(0) : nullptr;
}

void takeRole(vtkChart* chart)
{
  chart->RemoveAllObservers();
  chart->SetAnnotationLink(nullptr);
  resetLooks(chart);
}

void resetLooks(vtkChart* chart)
{
  chart->ClearPlots();
  chart->SetInteractive(true);
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

vtkPlot* addPointPlot(vtkChart* chart)
{
  auto plot = SelectionGuard<LinkedPlotPoints>::create();
  addPlot(chart, plot);
  return plot;
}

vtkPlot* addLinePlot(vtkChart* chart)
{
  auto plot = LinePlot::create();
  addPlot(chart, plot);
  return plot;
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

void layOutCells(vtkChartMatrix* matrix, vtkVector2i size)
{
  if (matrix->GetSize() != size) {
    matrix->SetSize({0, 0});
    matrix->SetSize(size);
  }
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) {
      takeRole(matrix->GetChart({column, row}));
      matrix->SetChartSpan({column, row}, {1, 1});
    }
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
