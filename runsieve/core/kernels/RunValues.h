#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RunParts.h>

#include <vector>

namespace runsieve {

/// A column of a stacked table as one value per run, which is all that a parameter has to say.
class RUNSIEVE_CORE_EXPORT RunValues
{
public:
  RunValues() = default;
  /// \param column rows values, of which the first of each run counts; a last, short run counts as a run.
  /// \param stride rows per run, at least 1
  RunValues(double const* column, long long rows, long long stride);

  /// False if some run holds two different values, compared by bits: then the values say nothing about rows.
  [[nodiscard]] bool constantWithinRuns() const { return constant; }
  [[nodiscard]] std::vector<double> const& values() const { return runValue; }

  /// Writes the rows of a column that is constant within its runs, without reading it; out holds as many
  /// values as the parts have rows.
  void gather(std::vector<RunPart> const& parts, double* out) const;

private:
  std::vector<double> runValue;
  bool constant = false;
};

} // namespace runsieve
