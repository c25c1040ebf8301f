#include <runsieve/stats/RunsAsRows.h>

#include <runsieve/records/vtkPrepareKMeansTable.h>

#include <vtkDataObject.h>
#include <vtkNew.h>
#include <vtkTable.h>
#include <vtkTransposeTable.h>

namespace runsieve {

vtkSmartPointer<vtkTable> runsAsRows(vtkTable* table, std::string const& column, int stride)
{
  auto prepare = vtkSmartPointer<vtkPrepareKMeansTable>::Take(vtkPrepareKMeansTable::New());
  prepare->SetInputData(0, table);
  prepare->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_ROWS, column.c_str());
  prepare->SetStride(stride);
  prepare->Update();
  return prepare->GetOutput();
}

vtkSmartPointer<vtkTable> transposed(vtkTable* table)
{
  vtkNew<vtkTransposeTable> transpose;
  transpose->AddIdColumnOff();
  transpose->SetInputData(0, table);
  transpose->Update();
  return transpose->GetOutput();
}

} // namespace runsieve
