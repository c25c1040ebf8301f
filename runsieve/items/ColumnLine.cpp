#include <runsieve/items/ColumnLine.h>

#include <runsieve/items/ChartOf.h>
#include <runsieve/items/LineGroup.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartLegend.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPen.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve {

namespace {

/// \return false if a number is not finite
bool findEnds(vtkDoubleArray* column, double ends[2])
{
  double const* const values = column->GetPointer(0);
  double lowest = values[0];
  double highest = values[0];
  double sum = 0.0; // of zeros, as long as all are finite
  for (vtkIdType i = 0; i < column->GetNumberOfTuples(); ++i) {
    lowest = std::min(lowest, values[i]);
    highest = std::max(highest, values[i]);
    sum += 0.0 * values[i];
  }
  ends[0] = lowest;
  ends[1] = highest;
  return sum == 0.0;
}

bool isLogarithmic(vtkAxis* axis)
{
  return axis && axis->GetLogScaleActive();
}

} // namespace

vtkSmartPointer<ColumnLine> ColumnLine::create(std::shared_ptr<LineGroup> group)
{
  auto* plot = new ColumnLine;
  plot->InitializeObjectBase();
  plot->group = std::move(group);
  if (plot->group) plot->group->join(*plot);
  return vtkSmartPointer<ColumnLine>::Take(plot);
}

ColumnLine::~ColumnLine()
{
  if (group) group->leave(*this);
}

void ColumnLine::setColumns(vtkTable* table, vtkIdType x, vtkIdType y)
{
  whole = table;
  columns[0] = x;
  columns[1] = y;
  takeColumns();
}

void ColumnLine::takeColumns()
{
  wholeTime = whole->GetMTime();
  direct = Direct();
  vtkNew<vtkTable> own;
  for (vtkIdType column : columns)
    if (vtkAbstractArray* array = whole->GetColumn(column)) own->AddColumn(array);
  takenTime = own->GetMTime();
  isTaking = true;
  this->LinePlot::SetInputData(own, whole->GetColumnName(columns[0]), whole->GetColumnName(columns[1]));
  isTaking = false;
}

void ColumnLine::giveColumnsUp()
{
  const vtkSmartPointer<vtkTable> table = std::move(whole);
  whole = nullptr;
  direct = Direct();
  this->LinePlot::SetInputData(table, table->GetColumnName(columns[0]), table->GetColumnName(columns[1]));
}

vtkTable* ColumnLine::GetInput()
{
  return whole ? whole.GetPointer() : this->LinePlot::GetInput();
}

void ColumnLine::SetInputData(vtkTable* table)
{
  whole = nullptr;
  direct = Direct();
  this->LinePlot::SetInputData(table);
}

void ColumnLine::SetInputData(vtkTable* table, const vtkStdString& x, const vtkStdString& y)
{
  whole = nullptr;
  direct = Direct();
  this->LinePlot::SetInputData(table, x, y);
}

void ColumnLine::SetInputArray(int index, const vtkStdString& name)
{
  if (whole && !isTaking) giveColumnsUp();
  this->LinePlot::SetInputArray(index, name);
}

void ColumnLine::lookAtColumns()
{
  if (!whole || !group) return;
  vtkTable* own = this->LinePlot::GetInput();
  auto* x = vtkArrayDownCast<vtkDoubleArray>(own->GetColumn(0));
  auto* y = vtkArrayDownCast<vtkDoubleArray>(own->GetColumn(1));
  if (!x || !y) return;
  const vtkMTimeType time = std::max(x->GetMTime(), y->GetMTime());
  if (time == direct.time) return;
  direct = Direct();
  direct.time = time;
  const vtkIdType rows = x->GetNumberOfTuples();
  const bool isEven = x->GetNumberOfComponents() == 1 && y->GetNumberOfComponents() == 1 && rows > 1 &&
                      y->GetNumberOfTuples() == rows;
  if (!isEven || !findEnds(x, direct.bounds) || !findEnds(y, direct.bounds + 2)) return;
  direct.x = x;
  direct.y = y;
}

bool ColumnLine::needsNoPoints() const
{
  vtkRectd const& shift = this->ShiftScale;
  const bool isShifted =
      shift.GetX() != 0.0 || shift.GetY() != 0.0 || shift.GetWidth() != 1.0 || shift.GetHeight() != 1.0;
  return direct.x && !this->UseIndexForXSeries && !isShifted && !isLogarithmic(this->XAxis) &&
         !isLogarithmic(this->YAxis);
}

void ColumnLine::Update()
{
  if (!this->Visible) return;
  // Somebody may have put other columns in the places of these.
  if (whole && whole->GetMTime() != wholeTime && whole->GetColumnName(columns[0]) &&
      whole->GetColumnName(columns[1]))
    takeColumns();
  lookAtColumns();
  if (!needsNoPoints()) this->LinePlot::Update();
}

void ColumnLine::makePoints()
{
  if (needsNoPoints() || !this->Points) this->LinePlot::Update();
}

bool ColumnLine::Paint(vtkContext2D* painter)
{
  if (this->Visible && group && group->paint(painter, *this)) return true;
  makePoints();
  return this->LinePlot::Paint(painter);
}

void ColumnLine::GetBounds(double bounds[4])
{
  if (needsNoPoints()) {
    std::copy_n(direct.bounds, 4, bounds);
    return;
  }
  makePoints();
  this->LinePlot::GetBounds(bounds);
}

void ColumnLine::GetUnscaledInputBounds(double bounds[4])
{
  if (needsNoPoints())
    std::copy_n(direct.bounds, 4, bounds);
  else
    this->LinePlot::GetUnscaledInputBounds(bounds);
}

bool ColumnLine::GetLegendVisibility()
{
  vtkChart* chart = chartOf(this);
  vtkChartLegend* legend = chart ? chart->GetLegend() : nullptr;
  return this->LegendVisibility && (!legend || legend->GetVisible());
}

vtkIdType ColumnLine::GetNearestPoint(const vtkVector2f& point, const vtkVector2f& tolerance,
                                      vtkVector2f* location, vtkIdType* segmentId)
{
  makePoints();
  return this->LinePlot::GetNearestPoint(point, tolerance, location, segmentId);
}

bool ColumnLine::SelectPoints(const vtkVector2f& min, const vtkVector2f& max)
{
  makePoints();
  return this->LinePlot::SelectPoints(min, max);
}

bool ColumnLine::SelectPointsInPolygon(const vtkContextPolygon& polygon)
{
  makePoints();
  return this->LinePlot::SelectPointsInPolygon(polygon);
}

bool ColumnLine::isPlain()
{
  const bool hasMarks = this->MarkerStyle != NONE || this->ScalarVisibility ||
                        (this->Selection && this->Selection->GetNumberOfTuples() > 0);
  return this->Visible && this->PolyLine && !hasMarks && this->ValidPointMaskName.empty() &&
         this->Pen->GetLineType() == vtkPen::SOLID_LINE && (needsNoPoints() || this->Points);
}

vtkMTimeType ColumnLine::pointsTime()
{
  return needsNoPoints() ? std::max(direct.time, takenTime) : this->Points->GetMTime();
}

void ColumnLine::appendPoints(std::vector<float>& points)
{
  if (!needsNoPoints()) {
    auto const* own = static_cast<float const*>(this->Points->GetVoidPointer(0));
    points.insert(points.end(), own, own + 2 * this->Points->GetNumberOfPoints());
    return;
  }
  double const* const x = direct.x->GetPointer(0);
  double const* const y = direct.y->GetPointer(0);
  const auto count = static_cast<std::size_t>(direct.x->GetNumberOfTuples());
  const std::size_t first = points.size();
  points.resize(first + 2 * count);
  for (std::size_t i = 0; i < count; ++i) {
    points[first + 2 * i] = static_cast<float>(x[i]);
    points[first + 2 * i + 1] = static_cast<float>(y[i]);
  }
}

} // namespace runsieve
