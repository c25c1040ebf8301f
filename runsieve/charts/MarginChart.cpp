#include <runsieve/charts/MarginChart.h>

#include <vtkContextScene.h>

#include <algorithm>

namespace runsieve {

vtkSmartPointer<MarginChart> MarginChart::create()
{
  auto* chart = new MarginChart;
  chart->InitializeObjectBase();
  return vtkSmartPointer<MarginChart>::Take(chart);
}

MarginChart::MarginChart()
{
  this->SetLayoutStrategy(vtkChart::AXES_TO_RECT);
}

void MarginChart::setMargins(int l, int b, int r, int t)
{
  left = l;
  bottom = b;
  right = r;
  top = t;
  this->SetBorders(l, b, r, t);
}

bool MarginChart::Paint(vtkContext2D* painter)
{
  if (vtkContextScene* scene = this->GetScene()) {
    const auto width = static_cast<float>(std::max(scene->GetSceneWidth() - left - right, 1));
    const auto height = static_cast<float>(std::max(scene->GetSceneHeight() - top - bottom, 1));
    const vtkRectf area(static_cast<float>(left), static_cast<float>(bottom), width, height);
    this->SetSize(area);
  }
  return this->vtkChartXY::Paint(painter);
}

} // namespace runsieve
