#pragma once

#include <runsieve/core/inference/ComparedParameter.h>
#include <runsieve/core/inference/Fraction.h>
#include <runsieve/core/inference/LaneWalk.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace runsieve {

/// How many permutations to make, and how.
struct PermutationOptions
{
  std::size_t permutations = 1000;      ///< of a batch; at least 1
  std::size_t mostPermutations = 10000; ///< after which no further batch begins
  double cut = 0.05; ///< p-value that decides, in [0, 1]; at 0 and 1 there is nothing to decide
  std::uint64_t seed = 1;
  unsigned threads = 0; ///< as for threadCount(); does not change the result
};

/// What the permutations made so far say.
struct PermutationResult
{
  /// False if there is nothing to permute: no parameter, or all runs on one side. Then p-values and noise
  /// floor are NaN.
  bool permutable = false;
  /// Whether no p-value could still move across the cut: its 99 % interval lies on one side. False at the end
  /// if even the most permutations could not decide.
  bool settled = false;
  std::size_t permutations = 0;
  std::vector<double> d;     ///< for each parameter, the largest difference of shares, in [0, 1]
  std::vector<double> p;     ///< for each parameter, adjusted for all parameters (maxT)
  std::vector<double> alone; ///< for each parameter, the p-value of it alone
  /// For each class the p-value of each parameter alone, where the class is compared with all others; NaN for
  /// Steps::CUMULATIVE, of which there are exact ones without permutations.
  std::map<std::uint32_t, std::vector<double>> aloneOfClass;
  /// What a difference must exceed for a p of at most the cut: with B permutations the c-th largest of the
  /// maxima, where c is the largest number with c / (1 + B) <= cut. NaN if that is none (B below 19 for 5 %).
  double noiseFloor;
  /// For each permutation, the largest difference of all parameters.
  std::vector<double> maxima;
};

/// Which parameters differ between sides of a scan's runs, such as those that pass and all others, if the
/// chance of any false positive among all parameters shall be at most that of one test.
///
/// The single-step maxT procedure of Westfall and Young (Resampling-Based Multiple Testing, Wiley 1993). The
/// statistic d of a parameter is the largest difference of shares of two sides: the two-sample
/// Kolmogorov-Smirnov statistic, or that of the shares of each category. With more than two classes it is the
/// largest of those of each class against all others. Which runs belong to which side is permuted B times
/// among all runs; sizes of sides and the values of runs, and so all dependence between parameters, stay.
/// With m_b the largest d of all parameters in permutation b,
///
///   p = (1 + #{b: m_b >= d}) / (1 + B)
///
/// and alone the same with the parameter's own d of each permutation (Phipson and Smyth, Stat. Appl. Genet.
/// Mol. Biol. 9, 2010). Ties need no care: the permutations have them too. Differences are compared as whole
/// numbers, so that rounding never decides. A side that has no run with a value of a parameter, observed or
/// by a permutation, gives d = 0.
///
/// Batches of permutations follow each other while the 99 % interval (Wilson) of any p contains the cut.
/// Permutation b takes its random numbers from RandomStream(seed, b): how the work is sliced and how many
/// threads do it changes nothing.
class PermutationTest
{
public:
  static constexpr std::uint32_t leftOut = 0xffffffff; ///< class of runs that take no part

  /// Compares runs that pass with all others.
  /// \param passing not 0 for runs that pass
  /// \throws std::invalid_argument if a parameter's runs are not those of the mask, each at most once, or the
  ///   options are out of range
  /// \throws std::length_error for more than mostLaneRuns runs
  PermutationTest(std::vector<ComparedParameter> const& parameters, std::vector<unsigned char> const& passing,
                  PermutationOptions const& options = {});

  /// Compares classes of runs.
  /// \param classes a number for each run, or leftOut; two numbers give what the mask gives
  /// \throws as the other
  PermutationTest(std::vector<ComparedParameter> const& parameters, std::vector<std::uint32_t> const& classes,
                  PermutationOptions const& options = {});

  [[nodiscard]] bool done() const { return finished; }

  /// Makes some of the permutations that are left; fewer, if not as many are needed. They are cheapest by
  /// multiples of laneCount for each thread.
  void advance(std::size_t wanted);

  /// Goes on to the end, in slices of some milliseconds.
  /// \param cancelled asked between slices; stops if true. A later call goes on from there
  /// \return done()
  bool run(std::function<bool()> const& cancelled = {});

  /// Of the permutations made so far.
  [[nodiscard]] PermutationResult result() const;

private:
  using LaneFractions = std::array<Fraction, laneCount>;

  /// Permutations of a block of lanes at which some maximum, or the parameter's own d, reached the observed
  /// d.
  struct Reached
  {
    std::size_t byMaximum = 0;
    std::size_t alone = 0;
  };

  struct Block
  {
    std::size_t begin;
    std::size_t lanes;
    std::vector<Reached> reached;
    std::vector<std::vector<std::size_t>> reachedOfSide; ///< of EACH_GROUP; for each side walked
  };

  void takeSides(std::vector<std::uint32_t> const& classes);
  void takeParameters(std::vector<ComparedParameter> const& all, std::vector<std::uint32_t> const& classes);
  void observe();
  [[nodiscard]] std::vector<LaneFractions> differences(std::size_t side, std::size_t lanes,
                                                       std::vector<LaneBits> const& bits) const;
  void countReached(std::vector<LaneFractions> const& of, std::size_t side, Block& block) const;
  void permute(Block& block);
  void permuteTo(std::size_t end);
  void endBatch();
  [[nodiscard]] std::size_t sidesWalked() const;
  [[nodiscard]] std::size_t sliceSize() const;
  [[nodiscard]] bool settled() const;
  [[nodiscard]] double shareOf(std::size_t count) const;
  [[nodiscard]] double noiseFloor() const;
  [[nodiscard]] std::map<std::uint32_t, std::vector<double>> aloneOfClass() const;

  PermutationOptions options;
  unsigned threads;
  std::size_t runs = 0;                 ///< that take part
  std::vector<std::uint32_t> sideSizes; ///< ascending
  std::vector<std::uint32_t> classOf;   ///< of each side
  std::vector<std::uint32_t> sideOf;    ///< observed, for each run that takes part
  std::vector<ComparedParameter> parameters;
  bool permutable = false;
  std::vector<Fraction> observed; ///< the largest of all sides
  std::vector<Reached> reached;
  std::vector<std::vector<Fraction>> observedOfSide; ///< for each side walked
  std::vector<std::vector<std::size_t>> reachedOfSide;
  std::vector<double> maxima;
  std::size_t made = 0;
  std::size_t batchEnd = 0;
  bool finished = false;
};

} // namespace runsieve
