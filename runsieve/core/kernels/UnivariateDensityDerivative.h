#pragma once

#include <runsieve/core/runsieve_core_export.h>

/// Gaussian kernel estimate of a density or of one of its derivatives, in one dimension.
///
/// With sources x_i, i = 1..N, bandwidth h and order r the result at target y is
///   f^(r)(y) = (-1)^r / (sqrt(2 pi) N h^(r+1)) * sum_i He_r((y - x_i)/h) exp(-((y - x_i)/h)^2 / 2),
/// He_r being the probabilists' Hermite polynomial (Bhattacharya 1967; Wand and Jones, Kernel Smoothing,
/// 1995). Order 0 is the density itself.
///
/// Sources and targets may stand in any order. A source contributes only to targets within a reach that keeps
/// the error far below the accuracy asked for. Cost: O(N M) at worst for N sources and M targets; sorted
/// sources and equally spaced ascending targets at order 0 take a fast path. NaN sources make every result
/// NaN; without sources, or with a bandwidth that is not positive and finite, all results are 0.
class RUNSIEVE_CORE_EXPORT UnivariateDensityDerivative
{
public:
  /// \param sources, targets, results arrays of sourceCount, targetCount and targetCount values; all stay the
  ///        caller's and must live until Evaluate() has run
  /// \param accuracy largest tolerated error relative to the kernel's peak, at most 1; the results are well
  /// inside it
  UnivariateDensityDerivative(int sourceCount, int targetCount, double* sources, double* targets,
                              double bandwidth, int order, double accuracy, double* results);
  ~UnivariateDensityDerivative() = default;

  /// Fills the results.
  void Evaluate();

private:
  int sourceCount;
  int targetCount;
  double* sources;
  double* targets;
  double bandwidth;
  int order;
  double accuracy;
  double* results;
};
