#include <runsieve/items/vtkPlotLineSet.h>

#include <runsieve/items/ChartOf.h>
#include <runsieve/items/DensityBars.h>
#include <runsieve/items/ExportedImages.h>
#include <runsieve/items/LineLegend.h>
#include <runsieve/items/LineSetPicture.h>
#include <runsieve/items/RunPicking.h>
#include <runsieve/items/SelectionHighlight.h>

#include <vtkAxis.h>
#include <vtkContextMapper2D.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLContextDevice2D.h>
#include <vtkOpenGLRenderWindow.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>
#include <vtkTable.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

namespace {

/// Fewer lines are polylines everywhere: they are quickly drawn, and exact at their ends.
constexpr vtkIdType fewLines = 50;

/// A line is painted once per selected row, which makes it denser. After so many coats at the highlight's
/// opacity of 150 / 255 less than a thousandth of the background shines through, no pixel changes any more,
/// and a selection over all times would only take a hundred times as long to draw.
constexpr vtkIdType opaqueCoats = 10;

/// Of highlighted lines in density colours, beyond that of the others: thin enough that shades of many show.
constexpr double densityHighlightWidth = 1.0; // pixels

vtkDataArray* flagsOf(vtkTable* table)
{
  return vtkDataArray::SafeDownCast(table->GetColumnByName("vtkRemainderSelection"));
}

vtkMTimeType timeOf(vtkDataArray* column)
{
  return column ? column->GetMTime() : 0;
}

runsieve::CoverageImage::Shades shadesOf(int densityColors)
{
  using Shades = runsieve::CoverageImage::Shades;
  if (densityColors == vtkPlotLineSet::DENSITY_LOGARITHMIC) return Shades::logarithmic;
  return densityColors == vtkPlotLineSet::DENSITY_EQUAL_AREA ? Shades::equalArea : Shades::opacity;
}

runsieve::LineSetPicture::Pen pictured(vtkPen* pen)
{
  return {{pen->GetColorObject().GetRed(), pen->GetColorObject().GetGreen(), pen->GetColorObject().GetBlue()},
          pen->GetOpacity() / 255.0,
          pen->GetWidth()};
}

} // namespace

/// What painting and picking find out, kept as long as it holds.
struct vtkPlotLineSet::Cache
{
  std::vector<std::uint8_t> coats; ///< of each line, for the picture
  LineSource coatsFrom;
  std::optional<std::vector<std::uint8_t>> preview; ///< coats in place of those of the selection
  std::shared_ptr<runsieve::LineSetPicture> picture;
  std::optional<runsieve::TimeColumns> columns; ///< of the points; none if runs have times of their own
  vtkMTimeType columnsTime = 0;
};

vtkPlotLineSet* vtkPlotLineSet::New()
{
  VTK_STANDARD_NEW_BODY(vtkPlotLineSet);
}

vtkPlotLineSet::vtkPlotLineSet()
    : SelectedLines(vtkIdTypeArray::New()), RemainderRows(vtkIdTypeArray::New()), Stride(1),
      UseExternalSelection(1), OnlyShowSelected(1), RemainderCount(0), Kept(std::make_unique<Cache>())
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

vtkPlotLineSet::PlainLines vtkPlotLineSet::LinesOfAll() const
{
  if (this->OnlyShowSelected) return {};
  if (!this->BadPoints || this->BadPoints->GetNumberOfTuples() < 1) return {true, 0, 0};
  const vtkIdType lastBad = this->BadPoints->GetValue(this->BadPoints->GetNumberOfTuples() - 1);
  const vtkIdType behind = this->Points->GetNumberOfPoints() - lastBad - 1;
  if (behind <= 1) return {};
  return {true, lastBad + 1, std::min<vtkIdType>(this->Stride, behind)};
}

void vtkPlotLineSet::PaintUnselected(vtkContext2D* painter)
{
  const PlainLines plain = this->LinesOfAll();
  if (!plain.shown) return;
  this->PaintPolyline(painter, plain.extra, plain.extraCount);
  const vtkIdType n = this->Points->GetNumberOfPoints();
  const std::vector<bool> hidden = this->LinesHiddenInExport();
  for (vtkIdType start = 0; start <= n - this->Stride; start += this->Stride)
    if (hidden.empty() || !hidden[static_cast<std::size_t>(start / this->Stride)])
      this->PaintPolyline(painter, start, this->Stride);
}

/// Files that hold images have opaque lines, and highlights are wider than the lines that they lie over.
std::vector<bool> vtkPlotLineSet::LinesHiddenInExport()
{
  if (!runsieve::exportsShapes() || !runsieve::ExportedImages::present()) return {};
  this->RenewSelection();
  this->CountCoats(this->Points->GetNumberOfPoints() / this->Stride);
  return {this->Kept->coats.begin(), this->Kept->coats.end()};
}

vtkPlotLineSet::LineSource vtkPlotLineSet::Present(vtkIdTypeArray* rows, vtkIdType count) const
{
  return {rows->GetMTime(), count, this->Stride, this->Changes()};
}

bool vtkPlotLineSet::LinesAreStale(vtkIdTypeArray* rows, vtkIdType count)
{
  const LineSource present = this->Present(rows, count);
  const bool same = present == this->LinesFrom;
  this->LinesFrom = present;
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
  if (runsieve::exportsShapes()) {
    this->ExportSelectedLines(painter);
    return;
  }
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

/// Each line once, as opaque as its coats are together: files would hold the same line up to ten times.
void vtkPlotLineSet::ExportSelectedLines(vtkContext2D* painter)
{
  const vtkIdType lines = this->Points->GetNumberOfPoints() / this->Stride;
  this->CountCoats(lines);
  const double through = 1.0 - painter->GetPen()->GetOpacity() / 255.0;
  for (vtkIdType line = 0; line < lines; ++line) {
    const int coats = this->Kept->coats[static_cast<std::size_t>(line)];
    if (coats == 0) continue;
    painter->GetPen()->SetOpacity(
        static_cast<unsigned char>(std::lround(255.0 * (1.0 - std::pow(through, coats)))));
    this->PaintPolyline(painter, line * this->Stride, this->Stride);
  }
}

void vtkPlotLineSet::RenewSelection()
{
  if (!this->Selection || this->Selection->GetMTime() <= this->RemainderRows->GetMTime()) return;
  if (vtkTable* table = this->Data->GetInput()) this->UpdateSelectionCache(table);
}

/// The flags of the row filter take precedence over the chart's own selection.
vtkIdTypeArray* vtkPlotLineSet::SelectedRows() const
{
  if (this->RemainderRows->GetNumberOfTuples() > 0) return this->RemainderRows;
  return this->Selection && this->Selection->GetNumberOfTuples() > 0 ? this->Selection : nullptr;
}

bool vtkPlotLineSet::Paint(vtkContext2D* painter)
{
  if (!this->Visible || !this->Points || this->Stride < 1) return false;
  painter->ApplyPen(this->Pen);
  if (this->PaintPicture(painter)) return true;
  this->PaintUnselected(painter);
  if (this->Kept->preview) {
    this->PaintPreview(painter);
    return true;
  }
  this->RenewSelection();
  vtkIdTypeArray* rows = this->SelectedRows();
  if (!rows) return true;
  if (rows == this->RemainderRows)
    this->SelectLinesOfRemainder();
  else
    this->SelectLinesOfPoints();
  this->PaintSelectedLines(painter);
  return true;
}

bool vtkPlotLineSet::PaintPicture(vtkContext2D* painter)
{
  const vtkIdType lines = this->Points->GetNumberOfPoints() / this->Stride;
  if (lines < fewLines || this->Pen->GetLineType() != vtkPen::SOLID_LINE ||
      !runsieve::takesImage(painter, static_cast<std::size_t>(lines), this->Shades != DENSITY_OFF))
    return false;
  this->RenewSelection();
  this->CountCoats(lines);
  const PlainLines plain = this->LinesOfAll();
  runsieve::LineSetPicture::Lines drawn;
  drawn.points = this->Points;
  drawn.stride = static_cast<std::size_t>(this->Stride);
  const vtkRectd shift = this->ShiftOfPoints();
  if (shift.GetWidth() == 1.0 && shift.GetHeight() == 1.0) drawn.version = this->DataVersion();
  drawn.xShift = shift.GetX();
  drawn.yShift = shift.GetY();
  drawn.all = plain.shown;
  drawn.extra = static_cast<std::size_t>(plain.extra);
  drawn.extraCount = static_cast<std::size_t>(plain.extraCount);
  drawn.coats = &this->Kept->coats;
  drawn.allPen = pictured(painter->GetPen());
  runsieve::applySelectionHighlight(painter, this->Pen->GetWidth());
  drawn.coatsPen = pictured(painter->GetPen());
  if (this->Shades != DENSITY_OFF) drawn.coatsPen.width = this->Pen->GetWidth() + densityHighlightWidth;
  drawn.shades = shadesOf(this->Shades);
  if (!this->Kept->picture) this->Kept->picture = std::make_shared<runsieve::LineSetPicture>();
  if (!this->Kept->picture->paint(painter, drawn)) {
    painter->ApplyPen(this->Pen);
    return false;
  }
  if (this->Shades != DENSITY_OFF) this->PaintBars(painter);
  return true;
}

void vtkPlotLineSet::PaintBars(vtkContext2D* painter)
{
  if (!this->XAxis || !this->YAxis) return;
  vtkChart* chart = runsieve::chartOf(this);
  const bool isRight = !(chart && chart->GetShowLegend()); // a legend stands there
  vtkAxis* end = this->XAxis;
  const float x = isRight ? end->GetPosition2().GetX() : end->GetPosition1().GetX();
  auto* device = vtkOpenGLContextDevice2D::SafeDownCast(painter->GetDevice());
  const double inch = device->GetRenderWindow()->GetDPI();
  runsieve::paintDensityBars(painter, this->Kept->picture->bars(),
                             {x, this->YAxis->GetPosition2().GetY(), isRight},
                             static_cast<float>(inch / 72.0));
}

void vtkPlotLineSet::PaintPreview(vtkContext2D* painter)
{
  runsieve::applySelectionHighlight(painter, this->Pen->GetWidth());
  std::vector<std::uint8_t> const& lit = *this->Kept->preview;
  const vtkIdType lines = this->Points->GetNumberOfPoints() / this->Stride;
  for (vtkIdType line = 0; line < std::min(lines, static_cast<vtkIdType>(lit.size())); ++line)
    if (lit[static_cast<std::size_t>(line)] != 0)
      this->PaintPolyline(painter, line * this->Stride, this->Stride);
}

void vtkPlotLineSet::SetPreview(std::vector<unsigned char> lit)
{
  for (unsigned char& coats : lit) coats = coats != 0 ? 1 : 0;
  this->Kept->preview = std::move(lit);
}

void vtkPlotLineSet::ClearPreview()
{
  this->Kept->preview.reset();
  this->Kept->coats.clear();
}

void vtkPlotLineSet::CountCoats(vtkIdType lines)
{
  if (this->Kept->preview) {
    this->Kept->coats = *this->Kept->preview;
    this->Kept->coats.resize(static_cast<std::size_t>(lines), 0);
    this->Kept->coatsFrom = LineSource();
    return;
  }
  vtkIdTypeArray* rows = this->SelectedRows();
  const bool flagged = rows == this->RemainderRows;
  const vtkIdType count = flagged ? this->RemainderCount : rows ? rows->GetNumberOfTuples() : 0;
  const LineSource present = rows ? this->Present(rows, count) : LineSource();
  if (present == this->Kept->coatsFrom && static_cast<vtkIdType>(this->Kept->coats.size()) == lines) return;
  this->Kept->coatsFrom = present;
  this->Kept->coats.assign(static_cast<std::size_t>(lines), 0);
  if (count < 1) return;
  if (flagged)
    this->CountCoatsOfFlags();
  else
    this->CountCoatsOfRows(rows);
}

/// Density colours tell how many runs there are, each once.
vtkIdType vtkPlotLineSet::MostCoats() const
{
  return this->Shades == DENSITY_OFF ? opaqueCoats : 1;
}

void vtkPlotLineSet::CountCoatsOfRows(vtkIdTypeArray* rows)
{
  vtkIdType const* ids = rows->GetPointer(0);
  const auto lines = static_cast<vtkIdType>(this->Kept->coats.size());
  for (vtkIdType i = 0; i < rows->GetNumberOfTuples(); ++i) {
    const vtkIdType line = ids[i] < 0 ? lines : ids[i] / this->Stride;
    if (line >= lines) continue; // a selection can be older than the table
    std::uint8_t& coats = this->Kept->coats[static_cast<std::size_t>(line)];
    if (coats < this->MostCoats()) ++coats;
  }
}

void vtkPlotLineSet::CountCoatsOfFlags()
{
  vtkIdType const* flags = this->RemainderRows->GetPointer(0);
  const vtkIdType rows = this->RemainderRows->GetNumberOfTuples();
  for (std::size_t line = 0; line < this->Kept->coats.size(); ++line) {
    const vtkIdType first = static_cast<vtkIdType>(line) * this->Stride;
    const vtkIdType end = std::min<vtkIdType>(first + this->Stride, rows);
    vtkIdType coats = 0;
    for (vtkIdType row = first; row < end && coats < this->MostCoats(); ++row) coats += flags[row] != 0;
    this->Kept->coats[line] = static_cast<std::uint8_t>(coats);
  }
}

void vtkPlotLineSet::SetDensityColors(int shades)
{
  const bool known = shades == DENSITY_LOGARITHMIC || shades == DENSITY_EQUAL_AREA;
  const int wanted = known ? shades : DENSITY_OFF;
  if (this->Shades == wanted) return;
  this->Shades = wanted;
  this->Modified();
}

int vtkPlotLineSet::GetDensityColors() const
{
  return this->Shades;
}

void vtkPlotLineSet::SetPicture(std::shared_ptr<runsieve::LineSetPicture> picture)
{
  this->Kept->picture = std::move(picture);
}

vtkIdType vtkPlotLineSet::GetNearestPoint(const vtkVector2f& point, const vtkVector2f& tolerance,
                                          vtkVector2f* location, vtkIdType* segmentId)
{
  if (!this->Points || this->Stride < 1) return -1;
  auto const* points = static_cast<float const*>(this->Points->GetVoidPointer(0));
  if (this->Kept->columnsTime != this->Points->GetMTime()) {
    this->Kept->columnsTime = this->Points->GetMTime();
    this->Kept->columns =
        runsieve::TimeColumns::of(points, static_cast<std::size_t>(this->Points->GetNumberOfPoints()),
                                  static_cast<std::size_t>(this->Stride));
  }
  if (!this->Kept->columns)
    return this->LinkedPlotPoints::GetNearestPoint(point, tolerance, location, segmentId);
  auto const found =
      this->Kept->columns->find(points, {point.GetX(), point.GetY(), tolerance.GetX(), tolerance.GetY()});
  if (!found) return -1;
  // As in the base class: places are those of the table, points are shifted and scaled for extreme ranges.
  const vtkRectd shift = this->GetShiftScale();
  location->SetX(static_cast<float>((points[2 * *found] - shift.GetX()) / shift.GetWidth()));
  location->SetY(static_cast<float>((points[2 * *found + 1] - shift.GetY()) / shift.GetHeight()));
  return static_cast<vtkIdType>(*found);
}

bool vtkPlotLineSet::PaintLegend(vtkContext2D* painter, const vtkRectf& rect, int)
{
  painter->ApplyPen(this->Pen);
  runsieve::paintLineLegend(painter, rect);
  this->vtkPlotPoints::PaintLegend(painter, rect, 0);
  return true;
}
