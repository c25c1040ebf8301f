#include <runsieve/items/LinkedPlotPoints.h>

#include <vtkAxis.h>
#include <vtkContextMapper2D.h>
#include <vtkIdTypeArray.h>
#include <vtkPoints2D.h>
#include <vtkScalarsToColors.h>
#include <vtkTable.h>

#include <vector>

namespace runsieve {

bool LinkedPlotPoints::Source::operator==(Source const& o) const
{
  return mapperTime == o.mapperTime && table == o.table && tableTime == o.tableTime && x == o.x &&
         xTime == o.xTime && y == o.y && yTime == o.yTime && colors == o.colors &&
         colorsTime == o.colorsTime && lookupTable == o.lookupTable && lookupTableTime == o.lookupTableTime &&
         shiftScale == o.shiftScale && logX == o.logX && logY == o.logY && negativeX == o.negativeX &&
         negativeY == o.negativeY && indexAsX == o.indexAsX && coloured == o.coloured &&
         colorArray == o.colorArray && maskName == o.maskName;
}

LinkedPlotPoints::Source LinkedPlotPoints::CurrentSource(vtkTable* table)
{
  Source now;
  now.mapperTime = this->Data->GetMTime();
  now.table = table;
  now.tableTime = table->GetMTime();
  // A table's own time does not follow those of its columns.
  auto timeOf = [](vtkAbstractArray* column) { return column ? column->GetMTime() : 0; };
  now.x = this->Data->GetInputArrayToProcess(0, table);
  now.xTime = timeOf(now.x);
  now.y = this->Data->GetInputArrayToProcess(1, table);
  now.yTime = timeOf(now.y);
  now.colors = this->ScalarVisibility ? table->GetColumnByName(this->ColorArrayName.c_str()) : nullptr;
  now.colorsTime = timeOf(now.colors);
  now.lookupTable = this->LookupTable;
  now.lookupTableTime = this->LookupTable ? this->LookupTable->GetMTime() : 0;
  now.shiftScale = this->ShiftScale;
  if (this->XAxis && this->YAxis) {
    now.logX = this->XAxis->GetLogScaleActive();
    now.logY = this->YAxis->GetLogScaleActive();
    now.negativeX = now.logX && this->XAxis->GetUnscaledMinimum() < 0.0;
    now.negativeY = now.logY && this->YAxis->GetUnscaledMinimum() < 0.0;
  }
  now.indexAsX = this->UseIndexForXSeries;
  now.coloured = this->ScalarVisibility;
  now.colorArray = this->ColorArrayName;
  now.maskName = this->ValidPointMaskName;
  return now;
}

void LinkedPlotPoints::Update()
{
  vtkTable* table = this->Visible ? this->Data->GetInput() : nullptr;
  if (table) {
    Source now = this->CurrentSource(table);
    if (this->Points && now == this->BuiltFrom) {
      // The base compares its build time with its own modification time, which the link keeps renewing.
      this->BuildTime.Modified();
    } else {
      this->Modified();
      this->BuiltFrom = std::move(now);
    }
  }
  this->Superclass::Update();
}

bool LinkedPlotPoints::SelectPoints(const vtkVector2f& min, const vtkVector2f& max)
{
  if (!this->Points) return false;
  auto const* points = static_cast<float const*>(this->Points->GetVoidPointer(0));
  const vtkIdType count = points ? this->Points->GetNumberOfPoints() : 0;
  std::vector<vtkIdType> inside;
  // A bad point holds a NaN, which compares false, or an infinity, which no finite rectangle reaches.
  for (vtkIdType i = 0; i < count; ++i) {
    const float x = points[2 * i];
    const float y = points[2 * i + 1];
    if (x >= min.GetX() && x <= max.GetX() && y >= min.GetY() && y <= max.GetY()) inside.push_back(i);
  }
  if (!this->Selection) this->Selection = vtkIdTypeArray::New();
  // In place: the plots of a linked chart share this array with the link.
  this->Selection->SetNumberOfTuples(static_cast<vtkIdType>(inside.size()));
  for (std::size_t i = 0; i < inside.size(); ++i)
    this->Selection->SetValue(static_cast<vtkIdType>(i), inside[i]);
  this->Selection->Modified();
  return !inside.empty();
}

} // namespace runsieve
