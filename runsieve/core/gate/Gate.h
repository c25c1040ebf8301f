#pragma once

#include <runsieve/core/compare/ClusterMode.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/Scan.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace runsieve {

/// What a gate asks of a run.
///
/// Samples, the values at the times of the scan, decide; only Crosses looks at the line between them. A
/// sample that is missing (NaN) lies in no range.
enum class GateKind : std::uint8_t
{
  Inside,    ///< of an output: every sample of the span lies in the range. Of a parameter: its value does
  Ever,      ///< some sample of the span lies in the range
  Never,     ///< no sample of the span lies in the range; those that are missing don't
  Crosses,   ///< some point of the straight lines between samples lies in the range within the span
  Max,       ///< the largest sample of the span lies in the range; missing ones are left out, as in all below
  Min,       ///< the smallest sample
  Mean,      ///< the mean of the samples, each of the same weight
  Last,      ///< the last sample
  TimeOfMax, ///< the time of the largest sample, the first of several
  TimeOfMin, ///< the time of the smallest sample, the first of several
  Is,        ///< the value of a parameter is one of those listed
  Status,    ///< the run ended in one of the listed ways
  Runs,      ///< the run is one of those listed
  Cluster    ///< the run belongs to a cluster of runs of like shape
};

/// A span of times; an end that is left out is that of the scan.
struct GateSpan
{
  std::optional<double> first;
  std::optional<double> last; ///< equal to first for a single time
};

/// A range of values. Both ends belong to it; open ones are infinite.
struct GateRange
{
  double low = -std::numeric_limits<double>::infinity();
  double high = std::numeric_limits<double>::infinity();
};

/// Runs whose keys are whole numbers, from first to last.
struct RunNumbers
{
  long long first = 0;
  long long last = 0;

  friend bool operator==(RunNumbers const& a, RunNumbers const& b)
  {
    return a.first == b.first && a.last == b.last;
  }
};

/// One run by its key, or all runs of some numbers.
using RunKey = std::variant<std::string, RunNumbers>;

/// A condition on runs. Members that its kind does not use keep their defaults.
struct Gate
{
  GateKind kind = GateKind::Inside;
  bool negated = false;            ///< exactly the other runs pass
  std::string column;              ///< full name ("Molecule: A") or bare name ("A"); not of Status and Runs
  std::optional<GateSpan> span;    ///< of the kinds up to TimeOfMin; nothing: the whole scan
  GateRange range;                 ///< of the kinds up to TimeOfMin
  std::vector<std::string> texts;  ///< of Is: values of the parameter; numbers as text for one of numbers
  std::vector<RunStatus> statuses; ///< of Status
  std::vector<RunKey> runs;        ///< of Runs
  int cluster = 0;                 ///< of Cluster: counted from 0, as the cluster command prints them
  int clusters = 0;                ///< of Cluster: how many there are, 1 to mostClusters
  ClusterMode mode = ClusterMode::Curves; ///< of Cluster

  static constexpr int mostClusters = 1000;
};

[[nodiscard]] RUNSIEVE_CORE_EXPORT bool operator==(Gate const& a, Gate const& b);
[[nodiscard]] inline bool operator!=(Gate const& a, Gate const& b)
{
  return !(a == b);
}

/// A gate that cannot be understood, or does not fit the scan.
class RUNSIEVE_CORE_EXPORT GateError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

} // namespace runsieve
