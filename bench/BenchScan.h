#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <vtkSelection.h>
#include <vtkSmartPointer.h>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace runsieve::bench {

/// A scan of 4 species and 20 parameters, of which 3 act, and two selections on its last species.
struct BenchScan
{
  boost::shared_ptr<LinePlotTable> table;
  std::vector<long long>
      brush; ///< rows in one rectangle over a tenth of the times and the middle half of the values
  std::vector<long long> wide; ///< rows below a threshold, over all times
};

/// W1, W2 or W3: 1,000, 10,000 or 100,000 runs of 101 times, as fillColumns() fills them.
BenchScan const& benchScan(std::string const& name);

/// Rows as a selection that an annotation link takes.
vtkSmartPointer<vtkSelection> rowSelection(std::vector<long long> const& rows);

} // namespace runsieve::bench
