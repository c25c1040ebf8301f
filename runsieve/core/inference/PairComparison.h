#pragma once

#include <runsieve/core/inference/PieceWork.h>
#include <runsieve/core/inference/RankCorrelation.h>
#include <runsieve/core/inference/SeparateSelection.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

struct PairSettings
{
  std::size_t permutations = 1000;
  std::uint64_t seed = 1;
  double level =
      0.05; ///< of the noise floor: share of scans without an interaction in which any pair is beyond
  unsigned threads = 0; ///< 0 for as many as the machine has, at most 4
};

/// Two parameters; correlations are Spearman's, NaN where fewer than two different values are left.
struct PairResult
{
  std::size_t first = 0;
  std::size_t second = 0; ///< larger than first
  double passing = 0.0;   ///< correlation in the passing runs
  double others = 0.0;    ///< in the other runs
  double all = 0.0;       ///< in all runs: by design, since no simulation has a part in it
  /// Whether the parameters are correlated by design: `all` is further from 0 than that of any pair of
  /// independent parameters would be in 1 % of scans (Bonferroni's bound over the pairs).
  bool byDesign = false;
  double expected = 0.0;  ///< correlation in the passing runs without an interaction
  double statistic = 0.0; ///< see PairComparison; NaN where `passing` or `expected` is
  double p = 1.0;         ///< adjusted for all pairs; NaN where `statistic` is
  bool beyondFloor = false;
  std::size_t passingRuns = 0; ///< that have both values
  std::size_t otherRuns = 0;   ///< likewise
};

/// Interactions between parameters: pairs that are correlated in the passing runs although each parameter on
/// its own does not make them so.
///
/// **What is tested.** Two parameters don't interact if a run passes with probability f(x) g(y). Parameters
/// that are independent by design are then independent in the passing runs as well, whatever f and g are, but
/// *not* in the others: the gate x < 0.5 and y < 0.5 leaves an L-shaped set, in which x and y are correlated.
/// A large difference between passing and other runs is therefore no sign of an interaction, and permuting
/// the labels of runs, which tests just that difference, would report every pair of parameters that matter.
/// What is tested is the correlation r in the n passing runs against the one expected there:
///
/// - independent by design: expected is 0, and the statistic is |r| sqrt(n - 1), since the variance of r is
///   1 / (n - 1) under permutation, with ties or without;
/// - correlated by design: expected is separateCorrelation(), what selection by each parameter on its own
///   leaves of the correlation; the statistic is |atanh r - atanh expected| / sqrt((1 + expected^2 / 2) / (n
///   - 3)) (variance: Bonett and Wright, Psychometrika 65, 2000). As the expectation is found from the runs
///   that are tested, the test is cautious if most runs pass.
///
/// **Noise floor and p.** Each permutation shuffles the ranks of every parameter in the passing runs on its
/// own and keeps the largest statistic of all pairs (maxT; Westfall and Young, Resampling-Based Multiple
/// Testing, 1993). p = (1 + number of permutations at or above the pair's statistic) / (1 + permutations).
/// For pairs independent by design the family-wise error rate is exact; the statistic of the others is
/// standardised to the same scale.
///
/// Where values are missing, permuted ranks are those of a parameter and not taken anew for each pair.
///
/// A correlation by design that is not monotone (y = x^2 over a range around 0) is not recognised as such. A
/// gate on a sum or product of the two is found; one that is symmetric in x, as |x| < y, is not: nothing
/// monotone is left to be correlated.
class PairComparison
{
public:
  /// Finds the correlations; the permutations are done by advance().
  /// \param orders one per parameter, of the runs that take part; kept by reference
  /// \param passing 0 or 1 per run
  /// \throw std::invalid_argument if an order names a run that there is not
  PairComparison(std::vector<OrderedValues> const& orders, std::vector<unsigned char> passing,
                 PairSettings const& settings = {});

  /// Does the next pieces of the work, 0 for some 50 ms of it. The results depend neither on the slices nor
  /// on the number of threads.
  void advance(std::size_t pieces = 0);
  [[nodiscard]] bool done() const { return work.done(); }

  /// All pairs, (0, 1), (0, 2), ..., (1, 2), ...; their statistics and p only when done.
  [[nodiscard]] std::vector<PairResult> pairs() const;
  /// When done: the statistic beyond which p is at most the level; infinite if the permutations are too few
  /// for the level.
  [[nodiscard]] double noiseFloor() const;
  /// The noise floor as a correlation in the passing runs of parameters that are independent by design and
  /// have all values.
  [[nodiscard]] double correlationFloor() const;

private:
  struct Pair
  {
    std::size_t first;
    std::size_t second;
  };

  void findDesignPairs();
  void findExpected(Pair const& pair);
  void permute(std::size_t permutation);
  [[nodiscard]] double statisticOf(std::size_t place) const;

  std::vector<OrderedValues> const& orders;
  std::vector<unsigned char> passes;
  PairSettings settings;
  PairCorrelations inPassing;
  PairCorrelations inOthers;
  PairCorrelations inAll;
  RankTable passingRanks;
  std::vector<ParameterBins> bins;   ///< empty if no pair is correlated by design
  std::vector<Pair> designPairs;     ///< pairs correlated by design
  std::vector<unsigned char> design; ///< 0 or 1 per pair
  std::vector<double> expected;      ///< per pair
  std::vector<double> maxima;        ///< largest statistic of each permutation
  PieceWork work{0, 0, 1};           ///< set when the pairs by design are counted
};

} // namespace runsieve
