#include <runsieve/widgets/SelectionDrag.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextMouseEvent.h>

#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

/// The value of an axis at a pixel of its direction; beyond its ends those of the axis.
double valueAt(vtkAxis* axis, double pixel, double first, double last)
{
  const double share = std::clamp((pixel - first) / (last - first), 0.0, 1.0);
  const double value = axis->GetMinimum() + share * (axis->GetMaximum() - axis->GetMinimum());
  return axis->GetLogScaleActive() ? std::pow(10.0, value) : value;
}

bool hasPlane(vtkChart* chart)
{
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  return bottom && left && bottom->GetPosition1().GetX() < bottom->GetPosition2().GetX() &&
         left->GetPosition1().GetY() < left->GetPosition2().GetY();
}

int buttonOf(Qt::MouseButton button)
{
  switch (button) {
  case Qt::LeftButton:
    return vtkContextMouseEvent::LEFT_BUTTON;
  case Qt::MiddleButton:
    return vtkContextMouseEvent::MIDDLE_BUTTON;
  case Qt::RightButton:
    return vtkContextMouseEvent::RIGHT_BUTTON;
  default:
    return vtkContextMouseEvent::NO_BUTTON;
  }
}

} // namespace

bool SelectionDrag::begin(vtkChart* pressedChart, QMouseEvent const& press, QPointF const& scene)
{
  end();
  if (!pressedChart || !pressedChart->GetInteractive() || !hasPlane(pressedChart)) return false;
  if (buttonOf(press.button()) != pressedChart->GetActionToButton(vtkChart::SELECT)) return false;
  vtkAxis* bottom = pressedChart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = pressedChart->GetAxis(vtkAxis::LEFT);
  const bool inside = scene.x() >= bottom->GetPosition1().GetX() &&
                      scene.x() <= bottom->GetPosition2().GetX() &&
                      scene.y() >= left->GetPosition1().GetY() && scene.y() <= left->GetPosition2().GetY();
  if (!inside) return false;
  chart = pressedChart;
  selects = press.button();
  start = press.localPos();
  sceneStart = scene;
  return true;
}

std::optional<DragRectangle> SelectionDrag::to(QPointF const& scene, Qt::KeyboardModifiers modifiers) const
{
  if (!chart || !hasPlane(chart)) return std::nullopt;
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  auto const x = [&](double pixel) {
    return valueAt(bottom, pixel, bottom->GetPosition1().GetX(), bottom->GetPosition2().GetX());
  };
  auto const y = [&](double pixel) {
    return valueAt(left, pixel, left->GetPosition1().GetY(), left->GetPosition2().GetY());
  };
  const auto [first, last] = std::minmax({x(sceneStart.x()), x(scene.x())});
  const auto [low, high] = std::minmax({y(sceneStart.y()), y(scene.y())});
  return DragRectangle{first, last, low, high, modifiers};
}

} // namespace runsieve
