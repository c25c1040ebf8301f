#pragma once

#include <vtkSmartPointer.h>

#include <cstddef>
#include <string>

class vtkTable;
struct SobolPostProcessResult;

namespace runsieve {

/// A slice of Sobol indices.
struct SobolSlice
{
  bool atSingleTime;        ///< a row per species at one time, else a row per time of one species
  bool total;               ///< indices of total order instead of first order
  std::size_t timeIndex;    ///< counts only at a single time
  std::size_t speciesIndex; ///< counts only else
};

/// A table of a slice, a column of floats per parameter, then the names of the species or the times, and what
/// it shows.
struct SobolTable
{
  vtkSmartPointer<vtkTable> table; ///< null if the result has no such slice
  std::string title;
};

/// Negative indices become 0; gaps of the result become NaN.
SobolTable sobolTable(SobolPostProcessResult const& result, SobolSlice const& slice);

} // namespace runsieve
