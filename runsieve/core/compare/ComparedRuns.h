#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/inference/PermutationTest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace runsieve {

/// The parameters of the runs that take part in a comparison, put in order once: one set of runs after the
/// other can be compared with the rest.
class ComparedRuns
{
public:
  /// \throw std::invalid_argument if the set, or a parameter, is not of as many runs as the scan has
  ComparedRuns(Scan const& scan, RunSet const& eligible);

  /// Positions in the scan.
  [[nodiscard]] std::vector<std::size_t> const& members() const { return runs; }
  [[nodiscard]] std::vector<LeftOutParameter> const& leftOut() const { return left; }
  /// One per parameter that is compared, in the order of the scan.
  [[nodiscard]] std::vector<ComparedParameter> const& parameters() const { return compared; }
  /// Values of a compared parameter, one per member.
  [[nodiscard]] std::vector<double> const& valuesOf(std::size_t index) const { return entries[index].values; }
  /// Position of a compared parameter in the scan.
  [[nodiscard]] std::size_t positionOf(std::size_t index) const { return entries[index].position; }
  [[nodiscard]] ScanParameter const& parameterOf(std::size_t index) const
  {
    return scan.parameters[entries[index].position];
  }

  /// Whether each member is in a set of runs of the scan, 0 or 1.
  [[nodiscard]] std::vector<std::uint8_t> maskOf(RunSet const& set) const;

  /// All that is known of each parameter without the others: no adjusted p-value, and none of texts.
  [[nodiscard]] std::vector<ParameterComparison> compare(std::vector<std::uint8_t> const& mask,
                                                         unsigned threads) const;

  /// Values of a parameter in ascending order, each with the share of the marked members up to it. Empty if
  /// none has a value, or if the parameter is not compared. \param position of the parameter in the scan
  [[nodiscard]] std::vector<std::pair<double, double>>
  distribution(std::size_t position, std::vector<std::uint8_t> const& mask) const;

private:
  struct Entry
  {
    std::size_t position;
    std::vector<double> values;
  };

  void add(ScanParameter const& parameter, std::size_t position);
  [[nodiscard]] ParameterComparison compareOne(std::size_t index,
                                               std::vector<std::uint8_t> const& mask) const;

  Scan const& scan;
  std::vector<std::size_t> runs;
  std::vector<Entry> entries;
  std::vector<ComparedParameter> compared;
  std::vector<LeftOutParameter> left;
};

} // namespace runsieve
