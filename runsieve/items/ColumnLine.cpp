#include <runsieve/items/ColumnLine.h>

#include <vtkNew.h>

namespace runsieve {

vtkSmartPointer<ColumnLine> ColumnLine::create()
{
  auto* plot = new ColumnLine;
  plot->InitializeObjectBase();
  return vtkSmartPointer<ColumnLine>::Take(plot);
}

void ColumnLine::setColumns(vtkTable* table, vtkIdType x, vtkIdType y)
{
  whole = table;
  columns[0] = x;
  columns[1] = y;
  takeColumns();
}

void ColumnLine::takeColumns()
{
  wholeTime = whole->GetMTime();
  vtkNew<vtkTable> own;
  for (vtkIdType column : columns)
    if (vtkAbstractArray* array = whole->GetColumn(column)) own->AddColumn(array);
  this->LinePlot::SetInputData(own, whole->GetColumnName(columns[0]), whole->GetColumnName(columns[1]));
}

vtkTable* ColumnLine::GetInput()
{
  return whole ? whole.GetPointer() : this->LinePlot::GetInput();
}

void ColumnLine::SetInputData(vtkTable* table)
{
  whole = nullptr;
  this->LinePlot::SetInputData(table);
}

void ColumnLine::SetInputData(vtkTable* table, const vtkStdString& x, const vtkStdString& y)
{
  whole = nullptr;
  this->LinePlot::SetInputData(table, x, y);
}

void ColumnLine::Update()
{
  // Somebody may have put other columns in the places of these.
  if (whole && whole->GetMTime() != wholeTime && whole->GetColumnName(columns[0]) &&
      whole->GetColumnName(columns[1]))
    takeColumns();
  this->LinePlot::Update();
}

} // namespace runsieve
