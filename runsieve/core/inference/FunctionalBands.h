#pragma once

#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace runsieve {

/// Bands of whole curves: a functional boxplot (Sun and Genton, J. Comput. Graph. Stat. 20, 2011). Curves are
/// ordered by how deep they lie among the others; unlike quantiles at each time, which may follow another
/// curve at every time, the middle line is a curve that is there.
struct FunctionalBands
{
  /// Fences lie as far from the central half as this multiple of its height.
  static constexpr double REACH = 1.5;

  /// Modified band depth with bands of two curves (Lopez-Pintado and Romo, J. Am. Stat. Assoc. 104, 2009),
  /// from 0 to 1: the share of pairs of curves that enclose the curve, mean of its times; ties enclose.
  /// A missing value is left out, at its time, as curve and as one of a pair; a curve that is never among
  /// others has 0. NaN of curves that take no part or have no finite value.
  std::vector<double> depths;
  /// The deepest curve, of several the first; nothing if no curve has a depth.
  std::optional<std::size_t> deepest;
  /// Envelope of the deeper half of the curves (of an odd number the larger half), one value per time; NaN
  /// where none of them has a value.
  std::vector<double> centralLow;
  std::vector<double> centralHigh;
  /// Envelope of the curves that are not outlying, likewise.
  std::vector<double> low;
  std::vector<double> high;
  /// Curves that leave the fences at some time, the least deep first.
  std::vector<std::size_t> outlying;
};

/// \param values curve after curve, `times` values each; values that are not finite are missing
/// \param mask one per curve, 1 if it takes part, else 0
/// \param cancelled asked now and then, from the threads of the runner; may be empty
/// \param threads may be empty; the results do not depend on it
/// \return nothing if cancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::optional<FunctionalBands>
functionalBandsOf(double const* values, std::size_t times, std::vector<std::uint8_t> const& mask,
                  std::function<bool()> const& cancelled = {}, BlockRunner const& threads = {});

} // namespace runsieve
