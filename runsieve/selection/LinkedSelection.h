#pragma once

#include <vtkSmartPointer.h>

class vtkAnnotationLink;
class vtkIdTypeArray;
class vtkIntArray;
class vtkTable;

namespace runsieve {

/// The name under which the flags of a selection ride in a table.
constexpr const char* selectedPoints = "selected points";

/// The selection of a link as flags, one per row of a table, named selectedPoints; null if there is nothing
/// to read.
vtkSmartPointer<vtkIntArray> selectionFlags(vtkAnnotationLink* link, vtkTable* table);

/// The rows with value 1 in the last column of a table; null if that is no vtkIntArray.
vtkSmartPointer<vtkIdTypeArray> flaggedRows(vtkTable* table);

/// Makes rows the selection of a link, which announces it.
void selectRows(vtkAnnotationLink* link, vtkIdTypeArray* rows);

} // namespace runsieve
