#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/kernels/ParameterOrder.h>
#include <runsieve/core/kernels/RankedSample.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// Compares one set of runs after the other with the runs that are not in it. The order of the runs by each
/// parameter is found once.
class ParameterComparer
{
public:
  /// \param eligible the runs that take part
  /// \throw std::invalid_argument if this set, or a parameter, is not of as many runs as the scan has
  ParameterComparer(Scan const& scan, RunSet const& eligible);

  /// One entry for each parameter that is compared, in the order of the scan; none if no eligible run passes.
  /// \throw std::invalid_argument if the set is not of as many runs as the scan has
  [[nodiscard]] std::vector<ParameterComparison> compare(RunSet const& passing,
                                                         Thresholds const& thresholds) const;

  [[nodiscard]] std::vector<LeftOutParameter> const& leftOut() const { return left; }

private:
  struct Entry
  {
    std::string name;
    std::size_t parameter;
    ParameterBound bound;
    ParameterOrder order; ///< of the eligible runs
  };

  void add(ScanParameter const& parameter, std::size_t position);
  std::vector<std::vector<double>> samplesOf(std::vector<unsigned char> const& mask) const;

  std::size_t runCount;
  std::vector<std::size_t> members; ///< eligible runs
  std::vector<Entry> entries;
  std::vector<LeftOutParameter> left;
};

} // namespace runsieve
