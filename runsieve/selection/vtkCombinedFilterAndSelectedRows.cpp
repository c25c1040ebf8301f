#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <runsieve/core/kernels/RunIntersection.h>
#include <runsieve/selection/FilteredRows.h>
#include <runsieve/selection/FlagColumn.h>
#include <runsieve/selection/RowFilterInput.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/selection/RunIndex.h>

#include <vtkAnnotationLayers.h>
#include <vtkDoubleArray.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkObjectFactory.h>
#include <vtkSelection.h>
#include <vtkTable.h>

#include <algorithm>
#include <utility>

using namespace runsieve;

struct vtkCombinedFilterAndSelectedRows::Internals
{
  RowSpans rows[2];          ///< of output 0 and output 1
  RunIndex* index = nullptr; ///< of the input, if the caller keeps one
  BlockRunner runner;
};

vtkCombinedFilterAndSelectedRows* vtkCombinedFilterAndSelectedRows::New()
{
  VTK_STANDARD_NEW_BODY(vtkCombinedFilterAndSelectedRows);
}

vtkCombinedFilterAndSelectedRows::vtkCombinedFilterAndSelectedRows()
    : AddOriginalRowIdsArray(false), TimeColumnIndex(-1), ParaCount(-1), Stride(1),
      Own(std::make_unique<Internals>())
{
  this->SetNumberOfInputPorts(3);
  this->SetNumberOfOutputPorts(2);
}

vtkCombinedFilterAndSelectedRows::~vtkCombinedFilterAndSelectedRows() = default;

void vtkCombinedFilterAndSelectedRows::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "AddOriginalRowIdsArray: " << this->AddOriginalRowIdsArray << "\n";
}

void vtkCombinedFilterAndSelectedRows::SetAddOriginalRowIdsArray(bool add)
{
  if (this->AddOriginalRowIdsArray == add) return;
  this->AddOriginalRowIdsArray = add;
  this->Modified();
}

bool vtkCombinedFilterAndSelectedRows::GetAddOriginalRowIdsArray()
{
  return this->AddOriginalRowIdsArray;
}

void vtkCombinedFilterAndSelectedRows::AddOriginalRowIdsArrayOn()
{
  this->SetAddOriginalRowIdsArray(true);
}

void vtkCombinedFilterAndSelectedRows::AddOriginalRowIdsArrayOff()
{
  this->SetAddOriginalRowIdsArray(false);
}

void vtkCombinedFilterAndSelectedRows::SetTimeColumnIndex(long long index)
{
  if (this->TimeColumnIndex == index) return;
  this->TimeColumnIndex = index;
  this->Modified();
}

long long vtkCombinedFilterAndSelectedRows::GetTimeColumnIndex()
{
  return this->TimeColumnIndex;
}

void vtkCombinedFilterAndSelectedRows::SetParaCount(long long count)
{
  if (this->ParaCount == count) return;
  this->ParaCount = count;
  this->Modified();
}

long long vtkCombinedFilterAndSelectedRows::GetParaCount()
{
  return this->ParaCount;
}

void vtkCombinedFilterAndSelectedRows::SetStride(long long stride)
{
  if (this->Stride == stride) return;
  this->Stride = stride;
  this->Modified();
}

long long vtkCombinedFilterAndSelectedRows::GetStride()
{
  return this->Stride;
}

void vtkCombinedFilterAndSelectedRows::SetSelectionConnection(vtkAlgorithmOutput* in)
{
  this->SetInputConnection(1, in);
}

void vtkCombinedFilterAndSelectedRows::SetAnnotationLayersConnection(vtkAlgorithmOutput* in)
{
  this->SetInputConnection(2, in);
}

int vtkCombinedFilterAndSelectedRows::FillInputPortInformation(int port, vtkInformation* info)
{
  return describeRowFilterPort(port, info);
}

void FilteredRows::help(vtkCombinedFilterAndSelectedRows& filter, RunIndex& index, BlockRunner const& runner)
{
  filter.Own->index = &index;
  filter.Own->runner = runner;
}

RowSpans const& FilteredRows::of(vtkCombinedFilterAndSelectedRows const& filter, int port)
{
  return filter.Own->rows[port == 0 ? 0 : 1];
}

int vtkCombinedFilterAndSelectedRows::RequestData(vtkInformation*, vtkInformationVector** inputs,
                                                  vtkInformationVector* outputs)
{
  vtkTable* input = vtkTable::GetData(inputs[0], 0);
  vtkSelection* inputSelection = vtkSelection::GetData(inputs[1], 0);
  vtkAnnotationLayers* inputAnnotations = vtkAnnotationLayers::GetData(inputs[2], 0);
  vtkTable* output0 = vtkTable::GetData(outputs, 0);
  vtkTable* output1 = vtkTable::GetData(outputs, 1);
  for (RowSpans& rows : this->Own->rows) rows = RowSpans();
  if (!inputSelection && !inputAnnotations) {
    vtkErrorMacro("No vtkSelection or vtkAnnotationLayers provided as input.");
    return 0;
  }
  if (this->TimeColumnIndex < 0) {
    vtkErrorMacro("TimeColumnIndex not set.");
    return 0;
  }
  if (this->ParaCount < 0) {
    vtkErrorMacro("ParaCount not set.");
    return 0;
  }
  const UnitedSelection united = uniteSelections(inputSelection, inputAnnotations);
  if (united.sources == 0) {
    output0->ShallowCopy(input);
    return 1;
  }
  std::vector<unsigned char> selected;
  if (!flagSelectedRows(united.selection, input, selected)) {
    vtkErrorMacro("Selection conversion to INDICES failed.");
    return 0;
  }

  const vtkIdType rows = input->GetNumberOfRows();
  const long long stride = std::max(this->Stride, 1LL);
  auto* times = vtkDoubleArray::SafeDownCast(input->GetColumn(this->TimeColumnIndex));
  bool evaluated = false;
  RunIntersection::Split split;
  if (times && times->GetNumberOfComponents() == 1 && times->GetNumberOfTuples() >= rows) {
    const bool known = this->Own->index && rows > 0 && times->GetNumberOfTuples() == rows;
    const RunGrid grid =
        known ? *this->Own->index->grid(times, stride) : RunGrid(times->GetPointer(0), rows, stride);
    const RunIntersection intersection(selected.data(), times->GetPointer(0), rows, stride, grid);
    evaluated = intersection.anySelected();
    if (evaluated) split = intersection.split();
  }
  // The outputs carry the flag columns of the run before, so they are gathered first.
  RowGather gather(input, {this->Own->index, stride, times});
  gather.add(split.remainder, this->AddOriginalRowIdsArray, output0);
  gather.add(split.others, this->AddOriginalRowIdsArray, output1);
  gather.run(this->Own->runner);
  if (evaluated) {
    FlagColumn::put(input,
                    {{"vtkComplementSelection", split.complement, true},
                     {"vtkReducedSelection", split.reduced, false},
                     {"vtkRemainderSelection", split.remainder, false}},
                    this->Own->runner);
    this->Own->rows[0] = std::move(split.remainder);
    this->Own->rows[1] = std::move(split.others);
  }
  return 1;
}
