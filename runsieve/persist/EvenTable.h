#pragma once

#include <vtkSmartPointer.h>

class vtkTable;

namespace runsieve {

/// The table itself if all its columns have one length, else a copy in which short columns go on with NaN,
/// zeros or empty texts. Writers read each column as far as the first one goes, whether it has those rows or
/// not; residuals of series of different lengths and short lines of a text file make such tables.
vtkSmartPointer<vtkTable> evenTable(vtkTable* table);

} // namespace runsieve
