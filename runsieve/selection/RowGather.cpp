#include <runsieve/selection/RowGather.h>

#include <runsieve/selection/ColumnPool.h>
#include <runsieve/core/kernels/RowSpans.h>

#include <vtkDataSetAttributes.h>
#include <vtkDoubleArray.h>
#include <vtkIdList.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

/// Copies through raw storage if both arrays are of this packed type.
template <class Array> bool gatherPacked(vtkAbstractArray* from, RowSpans const& rows, vtkAbstractArray* to)
{
  auto* source = Array::SafeDownCast(from);
  auto* target = Array::SafeDownCast(to);
  if (!source || !target || source->GetNumberOfComponents() != 1) return false;
  if (rows.rowCount() == 0) return true;
  using Value = typename Array::ValueType;
  auto* values =
      static_cast<Value*>(ColumnPool::take(static_cast<std::size_t>(rows.rowCount()) * sizeof(Value)));
  target->SetArray(values, rows.rowCount(), 0, Array::VTK_DATA_ARRAY_USER_DEFINED);
  target->SetArrayFreeFunction(ColumnPool::release);
  gatherRows(rows, source->GetPointer(0), values);
  return true;
}

void gatherAny(vtkAbstractArray* from, RowSpans const& rows, vtkAbstractArray* to)
{
  vtkNew<vtkIdList> ids;
  ids->SetNumberOfIds(rows.rowCount());
  rows.expand(ids->GetPointer(0));
  to->SetNumberOfTuples(rows.rowCount());
  from->GetTuples(ids, to);
}

} // namespace

void gatherTable(vtkTable* from, RowSpans const& rows, bool addRowIds, vtkTable* to)
{
  to->GetRowData()->CopyStructure(from->GetRowData());
  for (vtkIdType c = 0; c < from->GetNumberOfColumns(); ++c) {
    vtkAbstractArray* source = from->GetColumn(c);
    vtkAbstractArray* target = to->GetColumn(c);
    if (!gatherPacked<vtkDoubleArray>(source, rows, target) &&
        !gatherPacked<vtkIdTypeArray>(source, rows, target))
      gatherAny(source, rows, target);
  }
  if (!addRowIds) return;
  vtkNew<vtkIdTypeArray> ids;
  ids->SetName("vtkOriginalRowIds");
  ids->SetNumberOfTuples(rows.rowCount());
  if (rows.rowCount() > 0) rows.expand(ids->GetPointer(0));
  to->AddColumn(ids);
}

} // namespace runsieve
