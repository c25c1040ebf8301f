#include <runsieve/items/vtkPlotErrorPoints.h>

#include <vtkBrush.h>
#include <vtkContext2D.h>
#include <vtkContextMapper2D.h>
#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>
#include <vtkTable.h>

#include <limits>

namespace {

/// Running bounds of points, by rules of their own: see vtkPlotErrorPoints::CalculateBounds().
void extend(double* minimum, double* maximum, float value)
{
  if (value < *minimum)
    *minimum = value;
  else if (value > *maximum)
    *maximum = value;
}

} // namespace

vtkPlotErrorPoints* vtkPlotErrorPoints::New()
{
  VTK_STANDARD_NEW_BODY(vtkPlotErrorPoints);
}

vtkPlotErrorPoints::vtkPlotErrorPoints() : ErrorArray(nullptr) {}

vtkPlotErrorPoints::~vtkPlotErrorPoints()
{
  if (vtkFloatArray* errors = this->GetLiveErrorArray()) errors->Delete();
  this->ErrorArray = nullptr;
}

void vtkPlotErrorPoints::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

vtkFloatArray* vtkPlotErrorPoints::GetLiveErrorArray()
{
  if (this->LiveErrorArray != this->ErrorArray) this->ErrorArray = nullptr;
  return this->ErrorArray;
}

void vtkPlotErrorPoints::SelectErrorArray(const vtkStdString& name)
{
  vtkTable* table = this->Data->GetInput();
  if (!table || name == this->ErrorArrayName) return;
  this->ErrorArrayName.clear();
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const char* column = table->GetColumnName(c);
    if (column && name == column) {
      this->ErrorArrayName = name;
      break;
    }
  }
  this->Modified();
}

void vtkPlotErrorPoints::SelectErrorArray(vtkIdType column)
{
  vtkTable* table = this->Data->GetInput();
  auto* errors = table ? vtkDataArray::SafeDownCast(table->GetColumn(column)) : nullptr;
  const char* name = errors ? errors->GetName() : nullptr;
  if (!name || this->ErrorArrayName == name) return;
  this->ErrorArrayName = name;
  this->Modified();
}

bool vtkPlotErrorPoints::UpdateErrorCache(vtkTable* table)
{
  if (this->ErrorArrayName.empty()) return true;
  this->ErrorArray =
      table ? vtkFloatArray::SafeDownCast(table->GetColumnByName(this->ErrorArrayName.c_str())) : nullptr;
  this->LiveErrorArray = this->ErrorArray;
  return true;
}

void vtkPlotErrorPoints::CalculateLogSeries()
{
  vtkErrorMacro(<< "Log scale not yet supported for vtkPlotErrorPoints");
}

void vtkPlotErrorPoints::CalculateBounds(double* bounds)
{
  if (!this->Points || !this->BadPoints || !this->GetLiveErrorArray()) return;
  const vtkIdType nBad = this->BadPoints->GetNumberOfTuples();
  const vtkIdType n = this->Points->GetNumberOfPoints();
  vtkIdType const* bad = this->BadPoints->GetPointer(0);
  vtkIdType i = 0;
  vtkIdType start = 0;
  if (nBad > 0 && bad[0] == 0) {
    while (i < nBad && bad[i] == i) start = bad[i++] + 1;
    if (start >= n) return;
  }
  vtkIdType end = i < nBad ? bad[i++] : n;

  bounds[0] = bounds[2] = std::numeric_limits<float>::max();
  bounds[1] = bounds[3] = std::numeric_limits<float>::min();
  float const* points = static_cast<vtkFloatArray*>(this->Points->GetData())->GetPointer(0);
  while (start < n) {
    for (vtkIdType k = start; k < end; ++k) {
      extend(&bounds[0], &bounds[1], points[2 * k]);
      extend(&bounds[2], &bounds[3], points[2 * k + 1]);
    }
    start = end + 1;
    while (i < nBad && start == bad[i]) start = bad[i++] + 1;
    ++i;
    end = i < nBad ? bad[i] : n;
  }
}

void vtkPlotErrorPoints::Update()
{
  if (!this->Visible) return;
  vtkTable* table = this->Data->GetInput();
  if (!table) return;
  this->UpdateErrorCache(table);
  this->Superclass::Update();
}

bool vtkPlotErrorPoints::Paint(vtkContext2D* painter)
{
  if (!this->Visible || !this->Points || this->Points->GetNumberOfPoints() == 0) return false;
  painter->ApplyPen(this->Pen);
  painter->ApplyBrush(this->Brush);
  if (!this->BadPoints || this->BadPoints->GetNumberOfTuples() == 0) this->PaintBars(painter);
  return this->Superclass::Paint(painter);
}

void vtkPlotErrorPoints::PaintBars(vtkContext2D* painter)
{
  vtkFloatArray* errors = this->GetLiveErrorArray();
  const vtkIdType n = this->Points->GetNumberOfPoints();
  if (!errors || errors->GetNumberOfValues() < n) return;
  float const* e = errors->GetPointer(0);
  float const* points = static_cast<vtkFloatArray*>(this->Points->GetData())->GetPointer(0);
  // The cached points are scaled for extreme ranges, and their errors with them.
  const auto scale = static_cast<float>(this->ShiftScale.GetHeight());
  for (vtkIdType i = 0; i < n; ++i) {
    const float x = points[2 * i];
    const float y = points[2 * i + 1];
    painter->DrawLine(x, y - e[i] * scale, x, y + e[i] * scale);
  }
}
