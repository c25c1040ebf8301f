#include <runsieve/selection/RowGather.h>

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/kernels/RunParts.h>
#include <runsieve/selection/ColumnPool.h>
#include <runsieve/selection/FlagColumn.h>
#include <runsieve/selection/RunIndex.h>

#include <vtkDataSetAttributes.h>
#include <vtkDoubleArray.h>
#include <vtkIdList.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

/// Bytes of a row of an array whose values lie in memory one after another, else 0: bits and texts.
std::size_t packedRowBytes(vtkDataArray* array)
{
  if (!array || !array->HasStandardMemoryLayout()) return 0;
  return static_cast<std::size_t>(array->GetDataTypeSize() * array->GetNumberOfComponents());
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

void RowGather::add(RowSpans const& rows, bool addRowIds, vtkTable* to)
{
  Parts parts;
  if (known.index) parts = std::make_shared<std::vector<RunPart> const>(runParts(rows, known.stride));
  to->GetRowData()->CopyStructure(from->GetRowData());
  for (vtkIdType c = 0; c < from->GetNumberOfColumns(); ++c) {
    auto* source = vtkDataArray::SafeDownCast(from->GetColumn(c));
    auto* target = vtkDataArray::SafeDownCast(to->GetColumn(c));
    if (packedRowBytes(source) > 0 && packedRowBytes(target) > 0)
      addPacked(source, rows, parts, target);
    else
      gatherAny(from->GetColumn(c), rows, to->GetColumn(c));
  }
  if (!addRowIds) return;
  vtkNew<vtkIdTypeArray> ids;
  ids->SetName("vtkOriginalRowIds");
  ids->SetNumberOfTuples(rows.rowCount());
  if (rows.rowCount() > 0) rows.expand(ids->GetPointer(0));
  to->AddColumn(ids);
}

void RowGather::addPacked(vtkDataArray* source, RowSpans const& rows, Parts const& parts,
                          vtkDataArray* target)
{
  if (rows.rowCount() == 0) return;
  const std::size_t rowBytes = packedRowBytes(source);
  void* const values = ColumnPool::take(static_cast<std::size_t>(rows.rowCount()) * rowBytes);
  target->SetVoidArray(values, rows.rowCount() * source->GetNumberOfComponents(), 0,
                       vtkAbstractArray::VTK_DATA_ARRAY_USER_DEFINED);
  target->SetArrayFreeFunction(ColumnPool::release);
  if (parts && (addFlags(source, rows, values) || addKnown(source, parts, values))) return;
  blocks.emplace_back([array = source->GetVoidPointer(0), rowBytes, values, &rows] {
    gatherRows(rows, array, rowBytes, values);
  });
}

bool RowGather::addFlags(vtkDataArray* source, RowSpans const& rows, void* values)
{
  auto* flags = dynamic_cast<FlagColumn*>(source);
  RowSpans const* const ones = flags ? flags->ones() : nullptr;
  if (!ones) return false;
  blocks.emplace_back([&rows, ones, values] { gatherFlags(rows, *ones, static_cast<vtkIdType*>(values)); });
  return true;
}

bool RowGather::addKnown(vtkDataArray* source, Parts const& parts, void* values)
{
  auto* column = vtkDoubleArray::SafeDownCast(source);
  if (!column || column->GetNumberOfComponents() != 1 ||
      column->GetNumberOfTuples() != from->GetNumberOfRows())
    return false;
  auto* const out = static_cast<double*>(values);
  if (column == known.times) {
    RunGrid const* grid = known.index->grid(column, known.stride);
    if (!grid->holdsAll()) return false;
    blocks.emplace_back([grid, parts, out] { grid->gather(*parts, out); });
    return true;
  }
  RunValues const* runs = known.index->values(column, known.stride);
  if (!runs->constantWithinRuns()) return false;
  blocks.emplace_back([runs, parts, out] { runs->gather(*parts, out); });
  return true;
}

void RowGather::run(BlockRunner const& runner)
{
  runBlocks(runner, blocks.size(), [this](std::size_t i) { blocks[i](); });
  blocks.clear();
}

void gatherTable(vtkTable* from, RowSpans const& rows, bool addRowIds, vtkTable* to)
{
  RowGather gather(from);
  gather.add(rows, addRowIds, to);
  gather.run();
}

} // namespace runsieve
