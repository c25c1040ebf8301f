#include <runsieve/items/LinkedPlotPoints.h>

#include <runsieve/items/PlotGuards.h>

#include <vtkAxis.h>
#include <vtkContextMapper2D.h>
#include <vtkIdTypeArray.h>
#include <vtkPoints2D.h>
#include <vtkScalarsToColors.h>
#include <vtkTable.h>

#include <string>
#include <vector>

namespace runsieve {

namespace {

/// Everything that the cached points are computed from.
struct Source
{
  vtkMTimeType mapperTime = 0;
  vtkTable* table = nullptr;
  vtkMTimeType tableTime = 0;
  vtkAbstractArray* x = nullptr;
  vtkMTimeType xTime = 0;
  vtkAbstractArray* y = nullptr;
  vtkMTimeType yTime = 0;
  vtkAbstractArray* colors = nullptr;
  vtkMTimeType colorsTime = 0;
  vtkScalarsToColors* lookupTable = nullptr;
  vtkMTimeType lookupTableTime = 0;
  vtkRectd shiftScale;
  bool logX = false;
  bool logY = false;
  bool negativeX = false;
  bool negativeY = false;
  bool indexAsX = false;
  bool coloured = false;
  std::string colorArray;
  std::string maskName;
  unsigned long long changes = 0;

  bool operator==(Source const& o) const
  {
    return mapperTime == o.mapperTime && table == o.table && tableTime == o.tableTime && x == o.x &&
           xTime == o.xTime && y == o.y && yTime == o.yTime && colors == o.colors &&
           colorsTime == o.colorsTime && lookupTable == o.lookupTable &&
           lookupTableTime == o.lookupTableTime && shiftScale == o.shiftScale && logX == o.logX &&
           logY == o.logY && negativeX == o.negativeX && negativeY == o.negativeY && indexAsX == o.indexAsX &&
           coloured == o.coloured && colorArray == o.colorArray && maskName == o.maskName &&
           changes == o.changes;
  }

  /// Whether a chart has set another shift since, which is a call of Modified(), and nothing else.
  [[nodiscard]] bool isShifted(Source former) const
  {
    if (shiftScale == former.shiftScale || changes > former.changes + 1) return false;
    former.shiftScale = shiftScale;
    former.changes = changes;
    return *this == former;
  }
};

unsigned long long newVersion()
{
  static unsigned long long last = 0;
  return ++last;
}

vtkMTimeType timeOf(vtkAbstractArray* column)
{
  return column ? column->GetMTime() : 0;
}

} // namespace

struct LinkedPlotPoints::Cache
{
  Source builtFrom;
  unsigned long long version = 0; ///< of the data, whatever the shift
  unsigned long long changes = 0; ///< calls of Modified() by anybody but the link and this plot
  bool fromInside = false;        ///< the call under way is none of them

  /// What the points of a plot would be computed from now.
  Source current(LinkedPlotPoints& plot, vtkTable* input) const
  {
    Source now;
    now.mapperTime = plot.Data->GetMTime();
    now.table = input;
    now.tableTime = input->GetMTime();
    // A table's own time does not follow those of its columns.
    now.x = plot.Data->GetInputArrayToProcess(0, input);
    now.xTime = timeOf(now.x);
    now.y = plot.Data->GetInputArrayToProcess(1, input);
    now.yTime = timeOf(now.y);
    now.colors = plot.ScalarVisibility ? input->GetColumnByName(plot.ColorArrayName.c_str()) : nullptr;
    now.colorsTime = timeOf(now.colors);
    now.lookupTable = plot.LookupTable;
    now.lookupTableTime = plot.LookupTable ? plot.LookupTable->GetMTime() : 0;
    now.shiftScale = plot.ShiftScale;
    if (plot.XAxis && plot.YAxis) {
      now.logX = plot.XAxis->GetLogScaleActive();
      now.logY = plot.YAxis->GetLogScaleActive();
      now.negativeX = now.logX && plot.XAxis->GetUnscaledMinimum() < 0.0;
      now.negativeY = now.logY && plot.YAxis->GetUnscaledMinimum() < 0.0;
    }
    now.indexAsX = plot.UseIndexForXSeries;
    now.coloured = plot.ScalarVisibility;
    now.colorArray = plot.ColorArrayName;
    now.maskName = plot.ValidPointMaskName;
    now.changes = changes;
    return now;
  }
};

LinkedPlotPoints::LinkedPlotPoints() : Built(std::make_unique<Cache>()) {}

LinkedPlotPoints::~LinkedPlotPoints() = default;

void LinkedPlotPoints::Modified()
{
  if (!this->Built->fromInside) ++this->Built->changes;
  this->Superclass::Modified();
}

void LinkedPlotPoints::ModifiedByUpdate()
{
  this->Built->fromInside = true;
  this->Modified();
  this->Built->fromInside = false;
}

unsigned long long LinkedPlotPoints::Changes() const
{
  return this->Built->changes;
}

unsigned long long LinkedPlotPoints::DataVersion() const
{
  return this->Built->version;
}

vtkRectd LinkedPlotPoints::ShiftOfPoints() const
{
  return this->Built->builtFrom.shiftScale;
}

void LinkedPlotPoints::SetSelection(vtkIdTypeArray* rows)
{
  this->Built->fromInside = true;
  this->Superclass::SetSelection(rows);
  this->Built->fromInside = false;
}

void LinkedPlotPoints::Update()
{
  vtkTable* table = this->Visible ? this->Data->GetInput() : nullptr;
  const ExistingColors colors(this->ScalarVisibility, this->ColorArrayName, table);
  if (table) {
    Source now = this->Built->current(*this, table);
    if (this->Points && now == this->Built->builtFrom) {
      // The base compares its build time with its own modification time, which the link keeps renewing.
      this->BuildTime.Modified();
    } else {
      this->ModifiedByUpdate();
      if (!now.isShifted(this->Built->builtFrom)) this->Built->version = newVersion();
      this->Built->builtFrom = std::move(now);
    }
  }
  this->Superclass::Update();
}

bool LinkedPlotPoints::Paint(vtkContext2D* painter)
{
  const ExistingColors colors(this->ScalarVisibility, this->ColorArrayName, this->Data->GetInput());
  const ExistingRows rows(this->Selection, this->Points, this->SelectedPoints, this->GetMTime());
  return this->Superclass::Paint(painter);
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
