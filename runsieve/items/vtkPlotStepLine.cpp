#include <runsieve/items/vtkPlotStepLine.h>

#include <runsieve/items/LineLegend.h>
#include <runsieve/items/PixelPainter.h>
#include <runsieve/items/VtkVersion.h>

#include <vtkAxis.h>
#include <vtkCharArray.h>
#include <vtkContextMapper2D.h>
#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>
#include <vtkScalarsToColors.h>
#include <vtkTable.h>

#include <vector>

namespace {

/// Writes the corners of the staircase through n points; out holds 2 n + 2 pairs.
void writeStaircase(float const* points, vtkIdType n, float bottom, float top, float* out)
{
  auto corner = [&out](float x, float y) {
    *out++ = x;
    *out++ = y;
  };
  corner(points[0], bottom);
  corner(points[0], points[1]);
  for (vtkIdType i = 1; i < n; ++i) {
    corner(points[2 * i], points[2 * i - 1]);
    corner(points[2 * i], points[2 * i + 1]);
  }
  corner(points[2 * n - 2], points[2 * n - 1]);
  corner(points[2 * n - 2], top);
}

/// A sample of 100,000 runs has 200,000 corners, for a chart of 300 pixels.
void paintThinned(vtkContext2D* painter, vtkPoints2D* corners, runsieve::ColumnScale columns)
{
  std::vector<float> seen;
  runsieve::thinToColumns(static_cast<float const*>(corners->GetVoidPointer(0)),
                          static_cast<std::size_t>(corners->GetNumberOfPoints()), columns, seen);
  painter->DrawPoly(seen.data(), static_cast<int>(seen.size() / 2));
}

} // namespace

vtkPlotStepLine* vtkPlotStepLine::New()
{
  VTK_STANDARD_NEW_BODY(vtkPlotStepLine);
}

vtkPlotStepLine::vtkPlotStepLine() : StepPoints(nullptr)
{
  this->MarkerStyle = VTK_MARKER_NONE;
}

vtkPlotStepLine::~vtkPlotStepLine()
{
  if (this->StepPoints) this->StepPoints->Delete();
}

void vtkPlotStepLine::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

bool vtkPlotStepLine::UpdateStepPointsCache(vtkTable* table)
{
  if (!this->Points) runsieve::rebuildPoints(this, table);
  if (!this->StepPoints) this->StepPoints = vtkPoints2D::New();

  auto* source = this->Points ? vtkFloatArray::SafeDownCast(this->Points->GetData()) : nullptr;
  auto* target = vtkFloatArray::SafeDownCast(this->StepPoints->GetData());
  const vtkIdType n = source ? source->GetNumberOfTuples() : 0;
  target->SetNumberOfComponents(2);
  target->SetNumberOfTuples(n < 1 ? 0 : 2 * n + 2);
  if (n > 0) {
    // The cached points are shifted and scaled for extreme ranges; heights 0 and 1 go the same way.
    const double shift = this->ShiftScale.GetY();
    const double scale = this->ShiftScale.GetHeight();
    writeStaircase(source->GetPointer(0), n, static_cast<float>(shift * scale),
                   static_cast<float>((1.0 + shift) * scale), target->GetPointer(0));
  }
  this->StepPoints->Modified();
  this->BuildTime.Modified();
  return true;
}

void vtkPlotStepLine::UpdateValidPointMask(vtkTable* table)
{
  const bool named = table && !this->ValidPointMaskName.empty();
  this->ValidPointMask =
      named ? vtkCharArray::SafeDownCast(table->GetColumnByName(this->ValidPointMaskName.c_str())) : nullptr;
}

bool vtkPlotStepLine::PointCacheIsStale(vtkTable* table)
{
  return this->Data->GetMTime() > this->BuildTime || table->GetMTime() > this->BuildTime ||
         (this->LookupTable && this->LookupTable->GetMTime() > this->BuildTime) ||
         this->MTime > this->BuildTime || (this->XAxis && this->LogX != this->XAxis->GetLogScale()) ||
         (this->YAxis && this->LogY != this->YAxis->GetLogScale());
}

void vtkPlotStepLine::Update()
{
  if (!this->Visible) return;
  vtkTable* table = this->Data->GetInput();
  this->UpdateValidPointMask(table);
  if (!table) return;
  if (this->PointCacheIsStale(table)) runsieve::rebuildPoints(this, table);
  this->UpdateStepPointsCache(table);
}

bool vtkPlotStepLine::Paint(vtkContext2D* painter)
{
  if (!this->Visible || !this->Points) return false;
  painter->ApplyPen(this->Pen);
  if (this->BadPoints && this->BadPoints->GetNumberOfTuples() > 0) return true;
  // An empty polyline is nothing to draw, and the painter would report it as an error.
  if (!this->StepPoints || this->StepPoints->GetNumberOfPoints() < 2) return true;
  const auto columns = runsieve::fineColumns(painter);
  if (columns)
    paintThinned(painter, this->StepPoints, *columns);
  else
    painter->DrawPoly(this->StepPoints);
  return true;
}

bool vtkPlotStepLine::PaintLegend(vtkContext2D* painter, const vtkRectf& rect, int)
{
  painter->ApplyPen(this->Pen);
  runsieve::paintLineLegend(painter, rect);
  this->Superclass::PaintLegend(painter, rect, 0);
  return true;
}
