#include <runsieve/items/vtkPlotInvisiblePoints.h>

#include <runsieve/items/SelectionHighlight.h>

#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>

#include <algorithm>

vtkPlotInvisiblePoints* vtkPlotInvisiblePoints::New()
{
  VTK_STANDARD_NEW_BODY(vtkPlotInvisiblePoints);
}

vtkPlotInvisiblePoints::vtkPlotInvisiblePoints() : OnlyShowSelected(1) {}

vtkPlotInvisiblePoints::~vtkPlotInvisiblePoints() = default;

void vtkPlotInvisiblePoints::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

void vtkPlotInvisiblePoints::SetOnlyShowSelected(int only)
{
  if (this->OnlyShowSelected == only) return;
  this->OnlyShowSelected = only;
  this->Modified();
}

int vtkPlotInvisiblePoints::GetOnlyShowSelected()
{
  return this->OnlyShowSelected;
}

void vtkPlotInvisiblePoints::OnlyShowSelectedOn()
{
  this->SetOnlyShowSelected(1);
}

void vtkPlotInvisiblePoints::OnlyShowSelectedOff()
{
  this->SetOnlyShowSelected(0);
}

void vtkPlotInvisiblePoints::UpdateSelectedPoints()
{
  auto const* points = static_cast<float const*>(this->Points->GetVoidPointer(0));
  const vtkIdType count = this->Points->GetNumberOfPoints();
  const vtkIdType selected = this->Selection->GetNumberOfTuples();
  this->SelectedPoints->SetNumberOfComponents(2);
  this->SelectedPoints->SetNumberOfTuples(selected);
  float* out = this->SelectedPoints->GetPointer(0);
  vtkIdType kept = 0;
  for (vtkIdType i = 0; i < selected; ++i) {
    // A selection can be older than the table.
    const vtkIdType id = this->Selection->GetValue(i);
    if (id < 0 || id >= count) continue;
    out[2 * kept] = points[2 * id];
    out[2 * kept + 1] = points[2 * id + 1];
    ++kept;
  }
  this->SelectedPoints->SetNumberOfTuples(kept);
  this->SelectedPoints->Modified();
}

bool vtkPlotInvisiblePoints::Paint(vtkContext2D* painter)
{
  if (!this->Visible || !this->Points || this->Points->GetNumberOfPoints() == 0) return false;
  if (!this->OnlyShowSelected) return this->Superclass::Paint(painter);

  float width = this->MarkerSize;
  if (width < 0.0f) width = std::max(static_cast<float>(this->Pen->GetWidth() * 2.3), 8.0f);
  if (!this->Selection || this->Selection->GetNumberOfTuples() == 0) return true;

  const vtkMTimeType drawn = this->SelectedPoints->GetMTime();
  if (this->Selection->GetMTime() > drawn || this->GetMTime() > drawn) this->UpdateSelectedPoints();
  const int count = static_cast<int>(this->SelectedPoints->GetNumberOfTuples());
  if (count == 0) return true;
  runsieve::applySelectionHighlight(painter, width);
  painter->DrawMarkers(this->MarkerStyle, true, this->SelectedPoints->GetPointer(0), count);
  return true;
}
