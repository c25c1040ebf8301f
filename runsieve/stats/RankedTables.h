#pragma once

#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/records/TypedConcentrationName.h>

#include <vtkSmartPointer.h>

#include <cstddef>
#include <utility>
#include <vector>

class vtkTable;

namespace runsieve {

class RowSpans;
class RunIndex;

/// The parameters of a stacked table.
struct ParameterSource
{
  vtkTable* allRuns;
  std::vector<int> const& columns;
  std::vector<Kestrane::TypedConcentrationName> const& columnNames;
  std::vector<std::pair<double, double>> const&
      bounds; ///< lower and upper, one for each parameter, or they do not count
  int stride; ///< rows per run; below 1 counts as 1
};

/// Makes tables[index], sorted values and ranks, and tables[index + 1], densities on densityPoints points, of
/// the parameters of a table. Index 0 reads one row per run, any other index the distinct values of all rows.
/// \param table allRuns itself, or rows of it
/// \param rows those rows, if they are known and hold what the index knows of the columns of allRuns; with
/// them the orders of the runs serve, which are made on first use
/// \param runner does a parameter in each block
void rankParameters(ParameterSource const& source, vtkTable* table, RowSpans const* rows, RunIndex& orders,
                    std::vector<vtkSmartPointer<vtkTable>>& tables, std::size_t index,
                    BlockRunner const& runner = {});

} // namespace runsieve
