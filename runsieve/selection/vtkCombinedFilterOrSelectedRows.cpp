#include <runsieve/selection/vtkCombinedFilterOrSelectedRows.h>

#include <runsieve/selection/RowFilterInput.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/core/kernels/RowSpans.h>

#include <vtkAnnotationLayers.h>
#include <vtkDataArray.h>
#include <vtkIdTypeArray.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkMath.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkSelection.h>
#include <vtkTable.h>

#include <algorithm>

using namespace runsieve;

namespace {

vtkDataArray* timeColumn(vtkTable* table, long long index)
{
  return index < 0 ? nullptr : vtkDataArray::SafeDownCast(table->GetColumn(index));
}

} // namespace

vtkCombinedFilterOrSelectedRows* vtkCombinedFilterOrSelectedRows::New()
{
  VTK_STANDARD_NEW_BODY(vtkCombinedFilterOrSelectedRows);
}

vtkCombinedFilterOrSelectedRows::vtkCombinedFilterOrSelectedRows()
    : AddOriginalRowIdsArray(false), TimeColumnIndex(-1)
{
  this->SetNumberOfInputPorts(3);
  this->SetNumberOfOutputPorts(2);
}

void vtkCombinedFilterOrSelectedRows::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "AddOriginalRowIdsArray: " << this->AddOriginalRowIdsArray << "\n";
}

void vtkCombinedFilterOrSelectedRows::SetAddOriginalRowIdsArray(bool add)
{
  if (this->AddOriginalRowIdsArray == add) return;
  this->AddOriginalRowIdsArray = add;
  this->Modified();
}

bool vtkCombinedFilterOrSelectedRows::GetAddOriginalRowIdsArray()
{
  return this->AddOriginalRowIdsArray;
}

void vtkCombinedFilterOrSelectedRows::AddOriginalRowIdsArrayOn()
{
  this->SetAddOriginalRowIdsArray(true);
}

void vtkCombinedFilterOrSelectedRows::AddOriginalRowIdsArrayOff()
{
  this->SetAddOriginalRowIdsArray(false);
}

void vtkCombinedFilterOrSelectedRows::SetTimeColumnIndex(long long index)
{
  if (this->TimeColumnIndex == index) return;
  this->TimeColumnIndex = index;
  this->Modified();
}

long long vtkCombinedFilterOrSelectedRows::GetTimeColumnIndex()
{
  return this->TimeColumnIndex;
}

void vtkCombinedFilterOrSelectedRows::SetSelectionConnection(vtkAlgorithmOutput* in)
{
  this->SetInputConnection(1, in);
}

void vtkCombinedFilterOrSelectedRows::SetAnnotationLayersConnection(vtkAlgorithmOutput* in)
{
  this->SetInputConnection(2, in);
}

int vtkCombinedFilterOrSelectedRows::FillInputPortInformation(int port, vtkInformation* info)
{
  return describeRowFilterPort(port, info);
}

int vtkCombinedFilterOrSelectedRows::RequestData(vtkInformation*, vtkInformationVector** inputs,
                                                 vtkInformationVector* outputs)
{
  vtkTable* input = vtkTable::GetData(inputs[0], 0);
  vtkSelection* inputSelection = vtkSelection::GetData(inputs[1], 0);
  vtkAnnotationLayers* inputAnnotations = vtkAnnotationLayers::GetData(inputs[2], 0);
  vtkTable* output0 = vtkTable::GetData(outputs, 0);
  vtkTable* output1 = vtkTable::GetData(outputs, 1);
  if (!inputSelection && !inputAnnotations) {
    vtkErrorMacro("No vtkSelection or vtkAnnotationLayers provided as input.");
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
  std::vector<unsigned char> flags(static_cast<std::size_t>(rows), 0);
  RowSpans chosen;
  for (long long row : selected) {
    flags[static_cast<std::size_t>(row)] = 1;
    chosen.append(row);
  }
  gatherTable(input, chosen, this->AddOriginalRowIdsArray, output0);

  double range[2] = {1.0, 0.0}; // a reversed range admits no row
  if (vtkDataArray* times = timeColumn(output0, this->TimeColumnIndex)) times->GetRange(range, 0);
  vtkDataArray* times = timeColumn(input, this->TimeColumnIndex);
  vtkNew<vtkIdTypeArray> complement;
  complement->SetName("vtkComplementSelection");
  complement->SetNumberOfTuples(rows);
  RowSpans others;
  for (vtkIdType i = 0; i < rows; ++i) {
    const double t =
        times && !flags[static_cast<std::size_t>(i)] ? times->GetComponent(i, 0) : vtkMath::Nan();
    const bool inside = t >= range[0] && range[1] >= t;
    complement->SetValue(i, inside);
    if (inside) others.append(i);
  }
  gatherTable(input, others, this->AddOriginalRowIdsArray, output1);

  input->RemoveColumnByName("vtkComplementSelection");
  input->AddColumn(complement);
  return 1;
}
