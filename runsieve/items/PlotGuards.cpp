#include <runsieve/items/PlotGuards.h>

#include <vtkPoints2D.h>
#include <vtkTable.h>

#include <algorithm>

namespace runsieve {

namespace {

/// Those of the selected rows that are below a number of rows: the array itself where all are.
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

} // namespace

ExistingRows::ExistingRows(vtkIdTypeArray*& selection, vtkPoints2D* points, vtkFloatArray* marks,
                           vtkMTimeType plotTime)
    : place(selection), whole(selection),
      existing(rowsBelow(selection, points ? points->GetNumberOfPoints() : 0))
{
  place = existing;
  if (plotTime > marks->GetMTime()) marks->SetNumberOfTuples(0);
}

ExistingRows::~ExistingRows()
{
  place = whole;
}

ExistingColors::ExistingColors(int& visibility, vtkStdString const& column, vtkTable* table)
    : place(visibility), whole(visibility)
{
  if (visibility && !(table && table->GetColumnByName(column.c_str()))) place = 0;
}

ExistingColors::~ExistingColors()
{
  place = whole;
}

} // namespace runsieve
