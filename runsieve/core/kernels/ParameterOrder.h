#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RunValues.h>

#include <cstdint>
#include <vector>

namespace runsieve {

/// The runs of a stacked table in the order of one parameter.
///
/// Made once per table, it turns the sorted sample of any set of runs into a single pass. It says something
/// about rows only if the parameter is constant within every run.
class RUNSIEVE_CORE_EXPORT ParameterOrder
{
public:
  ParameterOrder() = default;
  explicit ParameterOrder(RunValues const& runs);

  /// One value per run, ascending, duplicates kept, NaN last.
  [[nodiscard]] std::vector<double> const& sorted() const { return sortedValues; }

  /// The distinct values of the marked runs, ascending; all NaN together are one value, which stands last.
  /// mask holds 0 or 1 per run.
  void distinctOf(unsigned char const* mask, std::vector<double>& out) const;

private:
  std::vector<std::int32_t> order; ///< run numbers by ascending value
  std::vector<double> sortedValues;
  std::size_t numbers = 0; ///< how many of the sorted values are no NaN
  bool ties = false;       ///< whether two runs share a number
};

} // namespace runsieve
