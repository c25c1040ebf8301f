#include <runsieve/tables/BorrowedColumn.h>

namespace runsieve {

vtkSmartPointer<vtkDoubleArray> BorrowedColumn::over(double* values, vtkIdType count,
                                                     std::shared_ptr<void> owner)
{
  auto* column = new BorrowedColumn;
  column->InitializeObjectBase();
  column->source = std::move(owner);
  constexpr int borrowed = 1;
  column->SetArray(values, count, borrowed, VTK_DATA_ARRAY_FREE);
  return vtkSmartPointer<vtkDoubleArray>::Take(column);
}

std::shared_ptr<void> ownedBy(vtkObjectBase* object)
{
  vtkSmartPointer<vtkObjectBase> held(object);
  return std::shared_ptr<void>(object, [held](void*) {});
}

} // namespace runsieve
