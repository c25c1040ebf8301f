#pragma once

#include <runsieve/stats/ParameterOrder.h>

#include <vtkType.h>

#include <map>

class vtkDoubleArray;

namespace runsieve {

/// The orders of the runs of one table by its parameters, made on first use and kept until a column is
/// replaced or modified.
class RunIndex
{
public:
  void clear() { entries.clear(); }

  /// The order by a column, null if the column has no rows.
  ParameterOrder const* order(vtkDoubleArray* column, long long stride);

private:
  struct Entry
  {
    double const* values = nullptr;
    vtkMTimeType time = 0;
    long long rows = 0;
    long long stride = 0;
    ParameterOrder order;
  };

  std::map<vtkDoubleArray*, Entry> entries;
};

} // namespace runsieve
