#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace runsieve {

/// Compares one set of runs after the other with the rest of a scan. What does not depend on the set, above
/// all the order of the runs by each parameter, is found once: of 10,000 runs and 20 parameters nearly half
/// of the time of compareParameters(). The scan must outlive this object and stay as it is.
class RUNSIEVE_CORE_EXPORT ParameterComparer
{
public:
  /// \param eligible the runs that take part
  /// \throw std::invalid_argument if the set, or a parameter, is not of as many runs as the scan has
  ParameterComparer(Scan const& scan, RunSet const& eligible);
  ~ParameterComparer();
  ParameterComparer(ParameterComparer&&) noexcept;
  ParameterComparer& operator=(ParameterComparer&&) noexcept;

  [[nodiscard]] RunSet const& eligible() const;

  /// The same as compareParameters(). May be called from several threads.
  [[nodiscard]] Comparison compare(RunSet const& passing, ComparisonMethod const& method = {},
                                   ComparisonWork const& work = {}) const;

  /// The empirical distribution function of a parameter among those runs of a set that take part, each run
  /// counted once: values in ascending order, each with the share of the runs up to it. Empty if no run has a
  /// value, or if the parameter does not vary. \param parameter position in Scan::parameters
  /// \throw std::invalid_argument if the set is not of as many runs as the scan has
  [[nodiscard]] std::vector<std::pair<double, double>> distribution(std::size_t parameter,
                                                                    RunSet const& runs) const;

private:
  struct Prepared;
  std::unique_ptr<Prepared> prepared;
};

} // namespace runsieve
