#pragma once

#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/TypedConcentrationName.h>

#include <vtkSmartPointer.h>

#include <boost/shared_ptr.hpp>

#include <utility>
#include <vector>

class vtkTable;
struct LinePlotData;

namespace runsieve {

/// A record of stacked runs as a table whose columns borrow its memory and keep it alive.
struct StackedTable
{
  vtkSmartPointer<vtkTable> table;
  std::vector<Kestrane::TypedConcentrationName> names; ///< of the columns
  std::vector<std::pair<double, double>> bounds;       ///< of its parameters, none if the record has none
};

/// Parameters whose bounds are equal are left out.
StackedTable stackedTable(boost::shared_ptr<LinePlotTable> const& record);

/// All columns of a record, which must stay alive as long as the table.
vtkSmartPointer<vtkTable> borrowedTable(LinePlotTable const& record);

/// A copy of time courses: the times, then a column for each item.
vtkSmartPointer<vtkTable> copiedTable(LinePlotData const& data);

/// The position of the time column among typed names, -1 if no auxiliary column offers itself.
int timeColumnOf(std::vector<Kestrane::TypedConcentrationName> const& names);

} // namespace runsieve
