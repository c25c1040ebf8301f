#include <runsieve/items/SelectionGuard.h>

#include <algorithm>

namespace runsieve {

vtkSmartPointer<vtkIdTypeArray> rowsBelow(vtkIdTypeArray* selection, vtkIdType rows)
{
  if (!selection) return nullptr;
  vtkIdType const* first = selection->GetPointer(0);
  vtkIdType const* last = first + selection->GetNumberOfValues();
  auto exists = [rows](vtkIdType row) { return row >= 0 && row < rows; };
  if (std::all_of(first, last, exists)) return selection;
  auto existing = vtkSmartPointer<vtkIdTypeArray>::New();
  existing->SetNumberOfValues(std::count_if(first, last, exists));
  std::copy_if(first, last, existing->GetPointer(0), exists);
  return existing;
}

} // namespace runsieve
