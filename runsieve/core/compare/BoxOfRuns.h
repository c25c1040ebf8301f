#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/compare/ComparisonWarning.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// How a box is looked for. The same method gives the same box on every machine.
struct BoxMethod
{
  double peel = 0.05;      ///< share of the runs in the box that one peel takes away; above 0, below 1
  double leastMass = 0.05; ///< share of all runs that stays in the box, in [0, 1]
  /// Share of the passing runs that the box holds at least, in [0, 1]. If nothing, it is the box of the
  /// largest harmonic mean of coverage and density.
  std::optional<double> leastCoverage = 0.8;
  /// If given, limits of a larger quasi-p-value are taken out in the end; in [0, 1]. Of few runs a box can
  /// lose all its limits, one after the other, although they matter together.
  std::optional<double> largestQuasiP;
  std::size_t resamples = 100; ///< halves of the runs in which the box is looked for again; may be 0
  std::uint64_t seed = 1;
};

/// How good a box is. What is not defined is NaN.
struct BoxQuality
{
  std::size_t runs = 0; ///< inside
  std::size_t passing = 0;
  double coverage = std::numeric_limits<double>::quiet_NaN(); ///< passing runs inside among all passing runs
  double density = std::numeric_limits<double>::quiet_NaN();  ///< passing runs among those inside
  double mass = std::numeric_limits<double>::quiet_NaN();     ///< runs inside among all runs
};

/// What a step of a path takes away.
enum class BoxSide : std::uint8_t
{
  None, ///< the first step: nothing
  Low,  ///< values below the limit
  High, ///< values above the limit
  Text  ///< one text
};

/// "", "low", "high" or "text".
[[nodiscard]] RUNSIEVE_CORE_EXPORT char const* boxSideName(BoxSide side);

/// One box on the way from all runs to few.
struct BoxPathStep
{
  BoxSide side = BoxSide::None;
  std::string name;          ///< of the parameter, without a type; empty for the first step
  std::size_t parameter = 0; ///< position in Scan::parameters
  double limit = std::numeric_limits<double>::quiet_NaN(); ///< inside itself; NaN for a text
  std::string text;                                        ///< that is taken out
  std::size_t restricted = 0;                              ///< parameters that the box restricts
  BoxQuality quality;
};

/// Values in several halves of the runs: the least ones that 5, 50 and 95 % of them don't exceed. NaN without
/// any.
struct BoxSpreads
{
  std::size_t count = 0; ///< halves that have a value
  double low = std::numeric_limits<double>::quiet_NaN();
  double median = std::numeric_limits<double>::quiet_NaN();
  double high = std::numeric_limits<double>::quiet_NaN();
};

/// A text of a parameter.
struct BoxText
{
  std::string text;
  bool isInside = true;
  std::size_t leftOut = 0; ///< halves whose box lacks it
};

/// What a box says about one parameter. Quasi-p-values of limits that are open are NaN.
struct BoxParameter
{
  std::string name;          ///< without a type
  std::size_t parameter = 0; ///< position in Scan::parameters
  bool isText = false;
  bool isRestricted = false;
  std::size_t missing = 0; ///< runs that have no value
  /// Limits, which are inside themselves; infinite if open. They lie between two values of the scan, and have
  /// as few digits as tell these apart.
  double low = -std::numeric_limits<double>::infinity();
  double high = std::numeric_limits<double>::infinity();
  std::vector<BoxText> texts; ///< of a text parameter, those that some run has, as in the scan
  double quasiPLow = std::numeric_limits<double>::quiet_NaN();
  double quasiPHigh = std::numeric_limits<double>::quiet_NaN();
  double quasiP = std::numeric_limits<double>::quiet_NaN(); ///< of both limits, or of the texts
  std::size_t restrictedIn = 0;                             ///< halves whose box restricts it
  BoxSpreads lows;                                          ///< lower limits where there is one
  BoxSpreads highs;                                         ///< upper limits where there is one
};

/// A region of the parameters that holds many of the runs that pass and few others: the runs whose parameters
/// lie in all of some ranges.
struct BoxOfRuns
{
  BoxMethod method;                      ///< the one that was asked for
  std::vector<BoxParameter> parameters;  ///< those that vary, in the order of the scan
  std::vector<LeftOutParameter> leftOut; ///< likewise
  std::size_t restricted = 0;            ///< parameters that the box restricts
  RunSet runs;                           ///< of the scan that take part and lie inside
  BoxQuality all;                        ///< of all runs that take part: their density is the base density
  BoxQuality quality;                    ///< of the box
  std::vector<BoxPathStep> path;         ///< the first is all runs
  std::size_t chosen = 0;                ///< the step of the path that the box was made of
  BoxSpreads coverage, density, mass;    ///< of the halves' boxes, each on the runs that it was not made of
  std::vector<ComparisonWarning> warnings;
};

/// Looks for the box of the runs that pass, by the patient rule induction method (Friedman and Fisher,
/// Statistics and Computing 9, 1999), as it is used to discover scenarios (Bryant and Lempert, Technological
/// Forecasting and Social Change 77, 2010):
///
/// 1. *Peeling*: from the box of all runs, again and again the peel is taken away that makes the density
///    largest for each run that it takes.
/// 2. *Choice*: of the boxes on this path the densest that covers enough passing runs.
/// 3. *Pasting*: that box is widened as long as its density does not fall.
/// 4. *Limits that don't matter* are told by their quasi-p-value, the probability that at least as many runs
///    pass in the box if its density were that of the box without the limit. They are taken out if that is
///    asked for, and in any case if they keep no run out.
/// 5. *Stability*: all that is done again for random halves of the runs, and the boxes are tried on the other
///    halves.
///
/// Quasi-p-values compare limits. They are no error rates, since limits have been sought that make them
/// small; neither are coverage and density of the box what new runs would show: those of the halves are.
///
/// Parameters whose values are all equal are left out, and text parameters of more than 1,000 texts. A run
/// without a value of a restricted parameter lies outside. If no run passes, or all do, nothing is
/// restricted. May be called from several threads.
/// \param passing runs of the scan; those that are not eligible don't count
/// \param eligible the runs that take part: the result is that of a scan that has no others
/// \throw std::invalid_argument if a set is not of as many runs as the scan has, or a parameter, or a number
/// of the method lies outside of its range
/// \throw ComparisonCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT BoxOfRuns findBox(Scan const& scan, RunSet const& passing,
                                                     RunSet const& eligible, BoxMethod const& method = {},
                                                     ComparisonWork const& work = {});

} // namespace runsieve
