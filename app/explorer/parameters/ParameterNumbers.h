#pragma once

#include "app/explorer/document/Document.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <limits>

namespace runsieve::app {

/// What is known of the difference between the passing runs and the others in one parameter, at this moment.
struct ParameterNumbers
{
  ParameterComparison const* compared = nullptr; ///< of the last comparison; null if it is in none
  QString leftOut; ///< why it is in none, "does not vary"; empty without a comparison
  double d = std::numeric_limits<double>::quiet_NaN(); ///< while a gate moves, the present one
  double p = std::numeric_limits<double>::quiet_NaN(); ///< adjusted; NaN while a gate moves
  double smallestD = 0.0;                              ///< that a significant one has at least
  bool significant = false;
  bool isCurrent = false; ///< false while the passing runs are others than those that were compared
};

[[nodiscard]] ParameterNumbers numbersOf(Document const& document, std::size_t parameter);

/// "d +0.43, p 0.002"; NaNs are left out. \param smallest the |d| that a star asks for: d is not rounded
/// across it
[[nodiscard]] QString differenceText(double d, double p, double smallest);

/// "d +0.43, p 0.002 ★", "d +0.05, p 0.9 n.s.", while a gate moves "d +0.43"; empty without a gate.
[[nodiscard]] QString headline(ParameterNumbers const& numbers);

/// A value in four digits at most, as precise as people compare them.
[[nodiscard]] QString shortNumber(double value);

/// "82.3 %"; "-" for NaN.
[[nodiscard]] QString shareText(double share);

/// The name with the unit: "k1 (nM)".
[[nodiscard]] QString titleOf(ColumnLabel const& label);

/// All that is known of a parameter, line by line, for a tooltip and for screen readers. \param passing runs
/// with a value \param others likewise
[[nodiscard]] QStringList parameterLines(Document const& document, std::size_t parameter, std::size_t passing,
                                         std::size_t others);

/// The same in whole sentences.
[[nodiscard]] QString parameterWords(Document const& document, std::size_t parameter, std::size_t passing,
                                     std::size_t others);

/// How gates are drawn in the chart of a parameter, for a tooltip.
[[nodiscard]] QString gestureWords(ScanParameter const& parameter);

} // namespace runsieve::app
