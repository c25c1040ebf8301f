#include <runsieve/records/vtkPrepareKMeansTable.h>

#include <runsieve/records/PaddedNumber.h>

#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkDoubleArray.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkTable.h>

#include <vector>

vtkPrepareKMeansTable* vtkPrepareKMeansTable::New()
{
  VTK_STANDARD_NEW_BODY(vtkPrepareKMeansTable);
}

void vtkPrepareKMeansTable::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "Stride: " << this->Stride << "\n";
}

int vtkPrepareKMeansTable::RequestData(vtkInformation*, vtkInformationVector** inputs,
                                       vtkInformationVector* outputs)
{
  vtkTable* output = vtkTable::GetData(outputs, 0);
  if (this->Stride < 1) {
    vtkErrorMacro("Stride must be at least 1.");
    return 0;
  }
  vtkDataArray* values = this->GetInputArrayToProcess(0, inputs);
  if (!values) {
    vtkErrorMacro("No numeric input array.");
    return 0;
  }
  const vtkIdType runs = values->GetNumberOfTuples() / this->Stride;
  // One sequential pass over the input: a run's values go to one row of all columns.
  std::vector<double*> cells(static_cast<std::size_t>(this->Stride));
  for (int t = 0; t < this->Stride; ++t) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(runsieve::paddedNumber(t, this->Stride - 1).c_str());
    column->SetNumberOfTuples(runs);
    cells[static_cast<std::size_t>(t)] = column->GetPointer(0);
    output->GetRowData()->AddArray(column);
  }
  auto* doubles = vtkDoubleArray::SafeDownCast(values);
  const double* raw = doubles && doubles->GetNumberOfComponents() == 1 ? doubles->GetPointer(0) : nullptr;
  for (vtkIdType r = 0; r < runs; ++r)
    for (int t = 0; t < this->Stride; ++t) {
      const vtkIdType row = r * this->Stride + t;
      cells[static_cast<std::size_t>(t)][r] = raw ? raw[row] : values->GetComponent(row, 0);
    }
  return 1;
}
