#pragma once

namespace runsieve {

/// The probability that a variable of Kolmogorov's limiting distribution is greater than z:
///     2 sum_k (-1)^(k - 1) exp(-2 k^2 z^2), which converges at once for large z, and
///     1 - sqrt(2 pi) / z sum_k exp(-(2k - 1)^2 pi^2 / (8 z^2)) for small z, over k = 1, 2, ...
/// (Kolmogorov, G. Ist. Ital. Attuari 4, 1933; Smirnov, Ann. Math. Stat. 19, 1948). 1 for z <= 0.
[[nodiscard]] double kolmogorovTail(double z);

} // namespace runsieve
