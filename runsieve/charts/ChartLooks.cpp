#include <runsieve/charts/ChartLooks.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkContextMouseEvent.h>
#include <vtkTextProperty.h>

namespace runsieve {

namespace {

constexpr int axisCount = 4;
constexpr int noButton = -1;
// Of a new vtkAxis.
constexpr int defaultPrecision = 2;
constexpr int defaultMargins[2] = {15, 5}; ///< pixels
constexpr int automaticTicks = -1;

void resetNumbers(vtkAxis* axis)
{
  axis->SetNumberOfTicks(automaticTicks);
  axis->SetNotation(vtkAxis::STANDARD_NOTATION);
  axis->SetPrecision(defaultPrecision);
}

void resetAxis(vtkAxis* axis)
{
  axis->SetLogScale(false);
  axis->SetBehavior(vtkAxis::AUTO);
  axis->SetCustomTickPositions(nullptr, nullptr);
  axis->SetLabelsVisible(true);
  axis->SetRangeLabelsVisible(false);
  axis->SetTickLabelAlgorithm(vtkAxis::TICK_SIMPLE);
  resetNumbers(axis);
  axis->SetMargins(defaultMargins[0], defaultMargins[1]);
  axis->GetLabelProperties()->SetOrientation(0.0); // bars write their names upwards
  axis->SetTitle("");
}

} // namespace

void resetLooks(vtkChart* chart)
{
  chart->ClearPlots();
  chart->SetAnnotationLink(nullptr);
  chart->SetInteractive(true);
  chart->SetTitle("");
  chart->SetShowLegend(false);
  chart->SetActionToButton(vtkChart::PAN, vtkContextMouseEvent::LEFT_BUTTON);
  chart->SetActionToButton(vtkChart::ZOOM, vtkContextMouseEvent::MIDDLE_BUTTON);
  chart->SetActionToButton(vtkChart::SELECT, vtkContextMouseEvent::RIGHT_BUTTON);
  for (int i = 0; i < axisCount; ++i)
    if (vtkAxis* axis = chart->GetAxis(i)) resetAxis(axis);
}

void shapeAsDistribution(vtkChart* chart, int decimals)
{
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  left->SetRangeLabelsVisible(false);
  left->SetLabelsVisible(false);
  left->SetTitle("");
  left->SetMargins(0, 0);
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTitle("");
  bottom->SetNumberOfTicks(3);
  bottom->SetPrecision(decimals);
  bottom->SetNotation(vtkAxis::FIXED_NOTATION);
  chart->SetInteractive(false);
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->DrawAxesAtOriginOff();
}

void undoDistributionShape(vtkChart* chart)
{
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  left->SetLabelsVisible(true);
  left->SetMargins(defaultMargins[0], defaultMargins[1]);
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  resetNumbers(bottom);
  bottom->SetBehavior(vtkAxis::AUTO);
  chart->SetInteractive(true);
}

void makeSelectable(vtkChart* chart, vtkAnnotationLink* link)
{
  chart->SetAnnotationLink(link);
  chart->SetActionToButton(vtkChart::SELECT, vtkContextMouseEvent::RIGHT_BUTTON);
  chart->SetClickActionToButton(vtkChart::SELECT, noButton);
  chart->SetClickActionToButton(vtkChart::NOTIFY, noButton);
}

void fixView(vtkChart* chart)
{
  chart->SetActionToButton(vtkChart::PAN, noButton);
  chart->SetActionToButton(vtkChart::ZOOM, noButton);
}

void settleLogScale(vtkChart* chart, bool log)
{
  if (log) chart->RecalculateBounds();
}

} // namespace runsieve
