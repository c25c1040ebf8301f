#pragma once

#include <vtkSmartPointer.h>

#include <vector>

class vtkAnnotationLayers;
class vtkInformation;
class vtkSelection;
class vtkTable;

namespace runsieve {

/// Declares the three input ports that the row filters share. Returns 0 for any other port.
int describeRowFilterPort(int port, vtkInformation* info);

/// A selection and the enabled annotations, united.
struct UnitedSelection
{
  /// Of its own, since converting a selection writes into its nodes; lists can be those of the input.
  vtkSmartPointer<vtkSelection> selection;
  int sources = 0; ///< how many selections went in
};

/// Unites a selection with the annotations that are neither disabled nor hidden. Either may be null.
UnitedSelection uniteSelections(vtkSelection* input, vtkAnnotationLayers* annotations);

/// The selected rows of a table, in the order in which the nodes were added, then in list order; a row named
/// twice stands twice. Ids outside the table are dropped. Returns false if the selection cannot be converted
/// to rows.
bool selectedRows(vtkSelection* selection, vtkTable* table, std::vector<long long>& rows);

/// The same as a flag for each row of the table, 1 for selected ones.
bool flagSelectedRows(vtkSelection* selection, vtkTable* table, std::vector<unsigned char>& flags);

} // namespace runsieve
