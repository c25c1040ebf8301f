#pragma once

#include <runsieve/core/inference/BoxChoice.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace runsieve {

/// Values of several samples. A quantile is the least value that at least its share of them does not exceed.
struct BoxSpread
{
  std::size_t count = 0; ///< samples that have a value; without any the others are NaN
  double low = std::numeric_limits<double>::quiet_NaN();    ///< 5 % quantile
  double median = std::numeric_limits<double>::quiet_NaN(); ///< 50 %
  double high = std::numeric_limits<double>::quiet_NaN();   ///< 95 %
};

/// How firmly one parameter belongs to a box.
struct RangeStability
{
  std::size_t restricted = 0;       ///< samples whose box restricts it
  BoxSpread low;                    ///< lower limits where there is one
  BoxSpread high;                   ///< upper limits where there is one
  std::vector<std::size_t> leftOut; ///< of a text parameter: samples whose box lacks each category
};

/// How much a box owes to the runs that happen to be in the scan.
struct BoxStability
{
  std::size_t samples = 0;
  std::vector<RangeStability> parameters; ///< one per parameter of the table
  /// Of the boxes on the runs that were not used to find them. Samples where a measure has no value are left
  /// out: density if no run left out lies inside, coverage if none of them passes.
  BoxSpread coverage, density, mass;
};

/// Samples of a stability.
struct HalfSamples
{
  std::size_t count = 100;
  std::uint64_t seed = 1;
  unsigned threads = 0; ///< as threadCount() takes it; the result is the same for any
};

/// Looks for the same kind of box in random halves of the runs, drawn without replacement, and tries each on
/// the other half (subsampling; Meinshausen and Buehlmann, Journal of the Royal Statistical Society B 72,
/// 2010; for boxes Bryant and Lempert, Technological Forecasting and Social Change 77, 2010). Of an odd
/// number of runs the smaller half is searched. Half i is drawn by RandomStream(seed, i).
/// \param stopAsked asked by the calling thread alone, after every few samples
/// \return nothing if it says so
/// \throw std::invalid_argument as findBoxPath() and chosenBox()
[[nodiscard]] std::optional<BoxStability> boxStability(BoxTable const& table, BoxSample const& sample,
                                                       PeelOptions const& options, BoxRule const& rule,
                                                       HalfSamples const& halves = {},
                                                       StopAsked const& stopAsked = {});

} // namespace runsieve
