#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RowSpans.h>

#include <cstdint>
#include <vector>

namespace runsieve {

/// Consecutive rows of one run.
struct RunPart
{
  std::int32_t run;
  std::int32_t count;
};

/// Rows of a stacked table, split where runs end.
RUNSIEVE_CORE_EXPORT std::vector<RunPart> runParts(RowSpans const& rows, long long stride);

/// The runs of a stacked table in the order of one parameter.
///
/// Made once per table, it turns the sorted sample of any set of runs into a single pass. It stands only for
/// a parameter that is constant within every run.
class RUNSIEVE_CORE_EXPORT ParameterOrder
{
public:
  ParameterOrder() = default;
  /// \param column rows values, of which the first of each run counts; a last, short run counts as a run
  ParameterOrder(double const* column, long long rows, long long stride);

  /// False if some run holds two different values: then the order says nothing about rows.
  [[nodiscard]] bool constantWithinRuns() const { return constant; }
  /// One value per run, ascending, duplicates kept, NaN last.
  [[nodiscard]] std::vector<double> const& sorted() const { return sortedValues; }

  /// The distinct values of the marked runs, ascending; all NaN together are one value, which stands last.
  /// mask holds 0 or 1 per run.
  void distinctOf(unsigned char const* mask, std::vector<double>& out) const;

  /// Whether gathered rows still hold what was read: a column may have been written in place since.
  [[nodiscard]] bool agreesWith(std::vector<RunPart> const& parts, double const* gathered) const;

private:
  std::vector<double> runValue;
  std::vector<std::int32_t> order; ///< run numbers by ascending value
  std::vector<double> sortedValues;
  bool constant = false;
  std::size_t numbers = 0; ///< how many of the sorted values are no NaN
  bool ties = false;       ///< whether two runs share a number
};

} // namespace runsieve
