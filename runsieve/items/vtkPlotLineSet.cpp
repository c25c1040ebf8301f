#include <runsieve/items/vtkPlotLineSet.h>

#include <runsieve/items/LineLegend.h>
#include <runsieve/items/SelectionHighlight.h>

#include <vtkContextMapper2D.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>
#include <vtkTable.h>

#include <algorithm>

namespace {

/// A line is painted once per selected row, which makes it denser. After so many coats at the highlight's
/// opacity of 150 / 255 less than a thousandth of the background shines through, no pixel changes any more,
/// and a selection over all times would only take a hundred times as long to draw.
constexpr vtkIdType opaqueCoats = 10;

vtkDataArray* flagsOf(vtkTable* table)
{
  return vtkDataArray::SafeDownCast(table->GetColumnByName("vtkRemainderSelection"));
}

vtkMTimeType timeOf(vtkDataArray* column)
{
  return column ? column->GetMTime() : 0;
}

} // namespace

vtkPlotLineSet* vtkPlotLineSet::New()
{
  VTK_STANDARD_NEW_BODY(vtkPlotLineSet);
}

vtkPlotLineSet::vtkPlotLineSet()
    : SelectedLines(vtkIdTypeArray::New()), RemainderRows(vtkIdTypeArray::New()), Stride(1),
      UseExternalSelection(1), OnlyShowSelected(1), RemainderCount(0)
{}

vtkPlotLineSet::~vtkPlotLineSet()
{
  this->RemainderRows->Delete();
  this->SelectedLines->Delete();
}

void vtkPlotLineSet::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

int vtkPlotLineSet::GetStride()
{
  return this->Stride;
}

void vtkPlotLineSet::SetStride(int stride)
{
  if (this->Stride == stride) return;
  this->Stride = stride;
  this->Modified();
}

void vtkPlotLineSet::SetUseExternalSelection(int use)
{
  if (this->UseExternalSelection == use) return;
  this->UseExternalSelection = use;
  this->Modified();
}

int vtkPlotLineSet::GetUseExternalSelection()
{
  return this->UseExternalSelection;
}

void vtkPlotLineSet::UseExternalSelectionOn()
{
  this->SetUseExternalSelection(1);
}

void vtkPlotLineSet::UseExternalSelectionOff()
{
  this->SetUseExternalSelection(0);
}

void vtkPlotLineSet::SetOnlyShowSelected(int only)
{
  if (this->OnlyShowSelected == only) return;
  this->OnlyShowSelected = only;
  this->Modified();
}

int vtkPlotLineSet::GetOnlyShowSelected()
{
  return this->OnlyShowSelected;
}

void vtkPlotLineSet::OnlyShowSelectedOn()
{
  this->SetOnlyShowSelected(1);
}

void vtkPlotLineSet::OnlyShowSelectedOff()
{
  this->SetOnlyShowSelected(0);
}

bool vtkPlotLineSet::UpdateSelectionCache(vtkTable* table)
{
  this->RemainderCount = 0;
  vtkDataArray* flags = flagsOf(table);
  this->FlagsTime = timeOf(flags);
  this->FlagsChanges = this->Changes();
  if (flags) {
    const vtkIdType rows = flags->GetNumberOfTuples();
    this->RemainderRows->SetNumberOfTuples(rows);
    auto* ids = vtkIdTypeArray::SafeDownCast(flags);
    const bool isPacked = ids && ids->GetNumberOfComponents() == 1;
    if (isPacked && rows > 0)
      std::copy_n(ids->GetPointer(0), rows, this->RemainderRows->GetPointer(0));
    else // a column that came back from a file holds doubles
      for (vtkIdType i = 0; i < rows; ++i) this->RemainderRows->SetValue(i, flags->GetComponent(i, 0) != 0.0);
    vtkIdType const* copy = rows > 0 ? this->RemainderRows->GetPointer(0) : nullptr;
    this->RemainderCount = rows - std::count(copy, copy + rows, 0);
  }
  this->RemainderRows->Modified();
  return true;
}

void vtkPlotLineSet::Update()
{
  if (!this->Visible) return;
  vtkTable* table = this->Data->GetInput();
  if (!table) return;
  this->Superclass::Update();
  if (this->FlagsAreStale(table)) this->UpdateSelectionCache(table);
  this->ModifiedByUpdate();
}

bool vtkPlotLineSet::FlagsAreStale(vtkTable* table)
{
  // Copying and counting takes 2 ms per million rows, and a chart updates its plots at each hover.
  return timeOf(flagsOf(table)) != this->FlagsTime || this->FlagsChanges != this->Changes();
}

void vtkPlotLineSet::PaintPolyline(vtkContext2D* painter, vtkIdType firstPoint, vtkIdType count)
{
  // The painter reports an error for a polyline of one point and draws nothing.
  if (count < 2) return;
  auto* points = static_cast<float*>(this->Points->GetVoidPointer(0));
  painter->DrawPoly(points + 2 * firstPoint, static_cast<int>(count));
}

void vtkPlotLineSet::PaintUnselected(vtkContext2D* painter)
{
  const vtkIdType n = this->Points->GetNumberOfPoints();
  if (this->OnlyShowSelected) return;
  if (this->BadPoints && this->BadPoints->GetNumberOfTuples() > 0) {
    const vtkIdType lastBad = this->BadPoints->GetValue(this->BadPoints->GetNumberOfTuples() - 1);
    if (n - lastBad <= 2) return;
    // An extra line behind the last bad point, on top of the complete lines below.
    this->PaintPolyline(painter, lastBad + 1, std::min<vtkIdType>(this->Stride, n - lastBad - 1));
  }
  for (vtkIdType start = 0; start <= n - this->Stride; start += this->Stride)
    this->PaintPolyline(painter, start, this->Stride);
}

bool vtkPlotLineSet::LinesAreStale(vtkIdTypeArray* rows, vtkIdType count)
{
  LineSource const& from = this->LinesFrom;
  const bool same = from.time == rows->GetMTime() && from.count == count && from.stride == this->Stride &&
                    from.changes == this->Changes();
  this->LinesFrom = {rows->GetMTime(), count, this->Stride, this->Changes()};
  return !same;
}

void vtkPlotLineSet::SelectLinesOfPoints()
{
  const vtkIdType count = this->Selection->GetNumberOfTuples();
  if (!this->LinesAreStale(this->Selection, count)) return;
  this->SelectedLines->SetNumberOfTuples(count);
  for (vtkIdType i = 0; i < count; ++i) {
    const vtkIdType point = this->Selection->GetValue(i);
    this->SelectedLines->SetValue(i, point < 0 ? -1 : point / this->Stride);
  }
  this->SelectedLines->Modified();
}

void vtkPlotLineSet::SelectLinesOfRemainder()
{
  const auto count = static_cast<vtkIdType>(this->RemainderCount);
  if (!this->LinesAreStale(this->RemainderRows, count)) return;
  this->SelectedLines->SetNumberOfTuples(count);
  const vtkIdType rows = this->RemainderRows->GetNumberOfTuples();
  vtkIdType next = 0;
  for (vtkIdType i = 0; i < rows && next < count; ++i)
    if (this->RemainderRows->GetValue(i) != 0)
      this->SelectedLines->SetValue(next++, static_cast<int>(i) / this->Stride);
  this->SelectedLines->Modified();
}

void vtkPlotLineSet::PaintSelectedLines(vtkContext2D* painter)
{
  runsieve::applySelectionHighlight(painter, this->Pen->GetWidth());
  const vtkIdType n = this->Points->GetNumberOfPoints();
  vtkIdType coats = 0;
  for (vtkIdType i = 0; i < this->SelectedLines->GetNumberOfTuples(); ++i) {
    const vtkIdType line = this->SelectedLines->GetValue(i);
    coats = i > 0 && this->SelectedLines->GetValue(i - 1) == line ? coats + 1 : 1;
    if (coats > opaqueCoats) continue;
    // A selection can be older than the table, and the last run can be short.
    if (line < 0 || (line + 1) * this->Stride > n) continue;
    this->PaintPolyline(painter, line * this->Stride, this->Stride);
  }
}

bool vtkPlotLineSet::Paint(vtkContext2D* painter)
{
  if (!this->Visible || !this->Points || this->Stride < 1) return false;
  painter->ApplyPen(this->Pen);
  this->PaintUnselected(painter);

  if (this->Selection && this->Selection->GetMTime() > this->RemainderRows->GetMTime()) {
    if (vtkTable* table = this->Data->GetInput()) this->UpdateSelectionCache(table);
  }
  // The flags of the row filter take precedence over the chart's own selection.
  const bool filtered = this->RemainderRows->GetNumberOfTuples() > 0;
  if (!filtered && this->Selection && this->Selection->GetNumberOfTuples() > 0) {
    this->SelectLinesOfPoints();
    this->PaintSelectedLines(painter);
  } else if (filtered) {
    this->SelectLinesOfRemainder();
    this->PaintSelectedLines(painter);
  }
  return true;
}

bool vtkPlotLineSet::PaintLegend(vtkContext2D* painter, const vtkRectf& rect, int)
{
  painter->ApplyPen(this->Pen);
  runsieve::paintLineLegend(painter, rect);
  this->vtkPlotPoints::PaintLegend(painter, rect, 0);
  return true;
}
