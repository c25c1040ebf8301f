#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <runsieve/selection/FilteredRows.h>
#include <runsieve/selection/FlagColumn.h>
#include <runsieve/selection/RowFilterInput.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/core/kernels/RunIntersection.h>

#include <vtkAnnotationLayers.h>
#include <vtkDoubleArray.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkObjectFactory.h>
#include <vtkSelection.h>
#include <vtkTable.h>

#include <utility>

using namespace runsieve;

struct vtkCombinedFilterAndSelectedRows::Split
{
  RowSpans rows[2]; ///< of output 0 and output 1
};

vtkCombinedFilterAndSelectedRows* vtkCombinedFilterAndSelectedRows::New()
{
  VTK_STANDARD_NEW_BODY(vtkCombinedFilterAndSelectedRows);
}

vtkCombinedFilterAndSelectedRows::vtkCombinedFilterAndSelectedRows()
    : AddOriginalRowIdsArray(false), TimeColumnIndex(-1), ParaCount(-1), Stride(1),
      LastSplit(std::make_unique<Split>())
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

RowSpans const& FilteredRows::of(vtkCombinedFilterAndSelectedRows const& filter, int port)
{
  return filter.LastSplit->rows[port == 0 ? 0 : 1];
}

int vtkCombinedFilterAndSelectedRows::RequestData(vtkInformation*, vtkInformationVector** inputs,
                                                  vtkInformationVector* outputs)
{
  vtkTable* input = vtkTable::GetData(inputs[0], 0);
  vtkSelection* inputSelection = vtkSelection::GetData(inputs[1], 0);
  vtkAnnotationLayers* inputAnnotations = vtkAnnotationLayers::GetData(inputs[2], 0);
  vtkTable* output0 = vtkTable::GetData(outputs, 0);
  vtkTable* output1 = vtkTable::GetData(outputs, 1);
  *this->LastSplit = Split();
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
  std::vector<long long> selected;
  if (!selectedRows(united.selection, input, selected)) {
    vtkErrorMacro("Selection conversion to INDICES failed.");
    return 0;
  }

  const vtkIdType rows = input->GetNumberOfRows();
  auto* times = vtkDoubleArray::SafeDownCast(input->GetColumn(this->TimeColumnIndex));
  std::vector<unsigned char> flags(static_cast<std::size_t>(rows), 0);
  for (long long row : selected) flags[static_cast<std::size_t>(row)] = 1;

  bool evaluated = false;
  RunIntersection::Split split;
  if (times && times->GetNumberOfComponents() == 1 && !selected.empty()) {
    const RunIntersection intersection(flags.data(), times->GetPointer(0), rows, this->Stride);
    evaluated = intersection.anySelected();
    if (evaluated) split = intersection.split();
  }
  // The outputs carry the flag columns of the run before, so they are gathered first.
  gatherTable(input, split.remainder, this->AddOriginalRowIdsArray, output0);
  gatherTable(input, split.others, this->AddOriginalRowIdsArray, output1);
  if (evaluated) {
    this->LastSplit->rows[0] = split.remainder;
    this->LastSplit->rows[1] = std::move(split.others);
    FlagColumn::put(input, "vtkComplementSelection", split.complement, true);
    FlagColumn::put(input, "vtkReducedSelection", split.reduced, false);
    FlagColumn::put(input, "vtkRemainderSelection", split.remainder, false);
  }
  return 1;
}
