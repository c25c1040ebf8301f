#include <runsieve/selection/LinkedSelection.h>

#include <runsieve/selection/RowFilterInput.h>

#include <vtkAnnotationLayers.h>
#include <vtkAnnotationLink.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkSelection.h>
#include <vtkSelectionNode.h>
#include <vtkTable.h>

#include <vector>

namespace runsieve {

vtkSmartPointer<vtkIntArray> selectionFlags(vtkAnnotationLink* link, vtkTable* table)
{
  auto* layers = vtkAnnotationLayers::SafeDownCast(link->GetAnnotationLayers());
  vtkSelection* current = link->GetCurrentSelection();
  if (!layers && !current) return nullptr;
  std::vector<long long> rows;
  const UnitedSelection united = uniteSelections(current, layers);
  if (!selectedRows(united.selection, table, rows)) return nullptr;
  const vtkIdType count = table->GetNumberOfRows();
  int* flags = new int[static_cast<std::size_t>(count)]();
  for (long long row : rows) flags[row] = 1;
  auto column = vtkSmartPointer<vtkIntArray>::New();
  column->SetName(selectedPoints);
  column->SetArray(flags, count, 0, vtkIntArray::VTK_DATA_ARRAY_DELETE);
  return column;
}

vtkSmartPointer<vtkIdTypeArray> flaggedRows(vtkTable* table)
{
  const vtkIdType columns = table->GetNumberOfColumns();
  auto* flags = columns > 0 ? vtkIntArray::SafeDownCast(table->GetColumn(columns - 1)) : nullptr;
  if (!flags || flags->GetNumberOfComponents() != 1) return nullptr;
  auto rows = vtkSmartPointer<vtkIdTypeArray>::New();
  for (vtkIdType i = 0; i < flags->GetNumberOfTuples(); ++i)
    if (flags->GetValue(i) == 1) rows->InsertNextValue(i);
  return rows;
}

void selectRows(vtkAnnotationLink* link, vtkIdTypeArray* rows)
{
  vtkNew<vtkSelectionNode> node;
  node->SetFieldType(vtkSelectionNode::ROW);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(rows);
  vtkNew<vtkSelection> selection;
  selection->AddNode(node);
  link->SetCurrentSelection(selection);
}

} // namespace runsieve
