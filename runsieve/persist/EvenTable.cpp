#include <runsieve/persist/EvenTable.h>

#include <vtkDataArray.h>
#include <vtkTable.h>
#include <vtkVariant.h>

#include <algorithm>
#include <limits>

namespace runsieve {

namespace {

bool isReal(vtkAbstractArray* column)
{
  return column->GetDataType() == VTK_DOUBLE || column->GetDataType() == VTK_FLOAT;
}

vtkSmartPointer<vtkAbstractArray> lengthened(vtkAbstractArray* column, vtkIdType rows)
{
  auto copy = vtkSmartPointer<vtkAbstractArray>::Take(column->NewInstance());
  copy->DeepCopy(column);
  const vtkVariant filler = isReal(column) ? vtkVariant(std::numeric_limits<double>::quiet_NaN())
                            : vtkDataArray::SafeDownCast(column) ? vtkVariant(0)
                                                                 : vtkVariant("");
  const vtkIdType values = rows * copy->GetNumberOfComponents();
  for (vtkIdType i = copy->GetNumberOfValues(); i < values; ++i) copy->InsertVariantValue(i, filler);
  return copy;
}

} // namespace

vtkSmartPointer<vtkTable> evenTable(vtkTable* table)
{
  vtkIdType shortest = std::numeric_limits<vtkIdType>::max();
  vtkIdType longest = 0;
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const vtkIdType rows = table->GetColumn(c)->GetNumberOfTuples();
    shortest = std::min(shortest, rows);
    longest = std::max(longest, rows);
  }
  if (shortest >= longest) return table;
  auto even = vtkSmartPointer<vtkTable>::New();
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    vtkAbstractArray* column = table->GetColumn(c);
    if (column->GetNumberOfTuples() == longest)
      even->AddColumn(column);
    else
      even->AddColumn(lengthened(column, longest));
  }
  return even;
}

} // namespace runsieve
