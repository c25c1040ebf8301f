#pragma once

namespace runsieve::app {

/// A value to as many digits as a step can tell, such as that of a pixel: a number that people can read and
/// repeat. Infinite ones stay.
[[nodiscard]] double roundedValue(double value, double step);

} // namespace runsieve::app
