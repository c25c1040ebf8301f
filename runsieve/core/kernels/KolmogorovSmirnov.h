#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

/// The two-sample Kolmogorov-Smirnov statistic and a two-sided p-value, as the plots show them to hosts. The
/// p-value is that of a one-sample formula and no number for publication: with few runs it can be wrong by
/// many orders of magnitude (docs/statistics.md). compareParameters() gives exact ones.
///
/// ItA and ItB are the iterator types of the two sorted ranges. All operations are static and reentrant. The
/// class is instantiated once, as KolmogorovSmirnov<double*, double*>.
///
/// The p-value routine picks one of several evaluators of the one-sample distribution by size and statistic,
/// in the manner of Simard and L'Ecuyer (J. Stat. Softw. 39(11), 2011); the exact splits and the departures
/// from the published formulas noted below are settled, since moving them moves parameters across the
/// threshold.
template <class ItA, class ItB> class KolmogorovSmirnov
{
public:
  /// The statistic of two ascending ranges, in [0, 1]. Ties advance the second range, one element at a time,
  /// and the walk ends as soon as either range ends: identical ranges of n values give 1/n, not 0.
  /// An empty range gives 0.
  static double statistic(ItA a, ItA aEnd, ItB b, ItB bEnd);

  /// Probability that the statistic is at least d at sample size n, NaN for a NaN d. Can exceed 1, since some
  /// evaluators double a one-sided tail. It is not negative: where it is a difference from 1, it is far
  /// greater than the rounding.
  static double p(double d, std::size_t n);

  /// Right-tail probability by the finite sum of Miller (J. Am. Stat. Assoc. 51, 1956) without its term j =
  /// 0.
  static double miller(double d, std::size_t n);

  /// Cumulative probability by the first two orders of the series of Pelz and Good
  /// (J. R. Stat. Soc. B 38, 1976).
  static double pelzGood(double d, std::size_t n);

  /// Cumulative probability by Durbin's matrix in the form of Marsaglia, Tsang and Wang
  /// (J. Stat. Softw. 8(18), 2003), the corner term 2h - 1 being added unpowered. NaN if d n is not finite.
  static double durbin(double d, std::size_t n);
};

template <class ItA, class ItB>
double KolmogorovSmirnov<ItA, ItB>::statistic(ItA a, ItA aEnd, ItB b, ItB bEnd)
{
  if (a == aEnd) return 0.0;
  const double stepA = 1.0 / static_cast<double>(aEnd - a);
  const double stepB = -1.0 / static_cast<double>(bEnd - b);
  double running = 0.0;
  double best = 0.0;
  while (b != bEnd && a != aEnd) {
    // Without a branch: which of two mixed samples comes next can't be predicted.
    const bool first = *b > *a;
    a += first;
    b += !first;
    running += first ? stepA : stepB;
    best = std::max(std::fabs(running), best);
  }
  return std::min(1.0, std::max(best, 0.0));
}

extern template class RUNSIEVE_CORE_EXPORT KolmogorovSmirnov<double*, double*>;
