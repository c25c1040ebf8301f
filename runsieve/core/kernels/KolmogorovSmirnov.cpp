#include <runsieve/core/kernels/KolmogorovSmirnov.h>

#include <boost/math/special_functions/gamma.hpp>

#include <Eigen/Dense>
#include <unsupported/Eigen/MatrixFunctions>

#include <cstdint>
#include <limits>
#include <new>
#include <vector>

namespace {

constexpr double piSquared = 9.869604401089358;
constexpr double quarterPiSquared = 2.4674011002723395;
constexpr double sqrtTwoPi = 2.5066282746310007;
constexpr double sqrtHalfPi = 1.2533141373155003;

/// lgamma(k + 1) for k = 0..n. The sizes of a session hardly change from one selection to the next while
/// lgamma is most of the cost of a tail sum, so each thread keeps the values it has computed, up to 2 MiB.
class LogFactorials
{
public:
  explicit LogFactorials(std::size_t n) : kept(upTo(std::min(n, mostKept - 1))) {}

  double operator[](std::size_t k) const { return k < mostKept ? kept[k] : compute(k); }

private:
  static constexpr std::size_t mostKept = std::size_t{1} << 18;

  static double compute(std::size_t k) { return boost::math::lgamma(static_cast<double>(k + 1)); }

  static double const* upTo(std::size_t n)
  {
    thread_local std::vector<double> values;
    for (std::size_t k = values.size(); k <= n; ++k) values.push_back(compute(k));
    return values.data();
  }

  double const* kept;
};

Eigen::MatrixXd durbinMatrix(int m, double h)
{
  Eigen::MatrixXd H = Eigen::MatrixXd::Zero(m, m);
  for (int r = 0; r < m; ++r)
    for (int c = 0; c <= std::min(r + 1, m - 1); ++c) H(r, c) = 1.0;
  for (int i = 0; i < m; ++i) {
    H(i, 0) -= std::pow(h, i + 1);
    H(m - 1, i) -= std::pow(h, m - i);
  }
  // The published recipe adds the m-th power of this term.
  if (2.0 * h - 1.0 > 0.0) H(m - 1, 0) += 2.0 * h - 1.0;
  for (int r = 0; r < m; ++r)
    for (int c = 0; c <= r; ++c)
      for (int f = 1; f <= r - c + 1; ++f) H(r, c) /= f;
  return H;
}

} // namespace

template <class ItA, class ItB> double KolmogorovSmirnov<ItA, ItB>::p(double d, std::size_t n)
{
  const double N = static_cast<double>(n);
  if (2.0 / N >= d) return 1.0;
  if (1.0 / N >= d) { // implied by the row above; kept in its place as part of the settled order
    const double w = 2.0 * d - 1.0 / N;
    double s = w;
    for (std::size_t i = 2; i <= n; ++i) s = 1.0 - (static_cast<double>(i) / w) * s;
    return s;
  }
  if (d < 1.0 && d > 1.0 - 1.0 / N) return 2.0 * std::pow(1.0 - d, N);
  const double z = (N * d) * d;
  if (n < 141) return z >= 4.0 ? miller(d, n) : 1.0 - durbin(d, n);
  if (z > 370.0) return 0.0;
  if (z > 2.2) return miller(d, n);
  return 1.0 - pelzGood(d, n);
}

template <class ItA, class ItB> double KolmogorovSmirnov<ItA, ItB>::miller(double d, std::size_t n)
{
  const double N = static_cast<double>(n);
  if (d > 1.0) return 0.0;
  const double last = std::floor(N * (1.0 - d));
  if (!(last >= 0.0)) return std::isnan(d) ? d : 0.0;
  // A negative d would ask for more terms than there are binomial coefficients.
  const std::size_t jmax = std::min(static_cast<std::size_t>(last), n);
  const LogFactorials logFactorial(n);
  const double ofAll = logFactorial[n];
  double sum = 0.0;
  for (std::size_t j = 0; j <= jmax; ++j) {
    const double t = static_cast<double>(j) / N;
    // The factor j - 1 wraps at j = 0, which sends that term to zero: the tail starts at j = 1 on purpose.
    const double jLess = static_cast<double>(static_cast<std::uint64_t>(j) - 1u);
    // Rounding can leave the rest a little below zero at the last j; it counts as zero, and the term with it.
    const double rest = std::max((1.0 - d) - t, 0.0);
    if (rest == 0.0) continue;
    sum += std::exp(ofAll - logFactorial[n - j] - logFactorial[j] + jLess * std::log(t + d) +
                    static_cast<double>(n - j) * std::log(rest));
  }
  return (d + d) * sum;
}

template <class ItA, class ItB> double KolmogorovSmirnov<ItA, ItB>::pelzGood(double d, std::size_t n)
{
  const double sn = std::sqrt(static_cast<double>(n));
  const double z = d * sn;

  double s1 = 0.0;
  for (double k = 1.0;; k += 2.0) {
    const double term = std::exp(k * -piSquared * k / ((8.0 * z) * z));
    s1 += term;
    // Written so that a NaN quotient, of two vanished terms at tiny z, stops as well.
    if (!(term / s1 > 1e-5)) break;
  }

  const double zz = z * z;
  const double w = (z + z) * z;
  double s2 = std::exp(-quarterPiSquared / w) * (quarterPiSquared - zz);
  for (double k = 1.0;; k += 1.0) {
    const double u = (k + 0.5) * (k + 0.5);
    const double v = (k - 0.5) * (k - 0.5);
    const double termU = std::exp(-piSquared * u / w) * (piSquared * u - zz);
    const double termV = std::exp(-piSquared * v / w) * (piSquared * v - zz);
    s2 += termU;
    s2 += termV;
    if (!(std::fabs(termU) / s2 > 1e-5) && !(std::fabs(termV) / s2 > 1e-5)) break;
  }
  return (sqrtHalfPi / (6.0 * z * z * z * z)) * s2 / sn + (sqrtTwoPi / z) * s1;
}

template <class ItA, class ItB> double KolmogorovSmirnov<ItA, ItB>::durbin(double d, std::size_t n)
{
  const double N = static_cast<double>(n);
  if (!std::isfinite(d * N)) return std::numeric_limits<double>::quiet_NaN();
  const double z = d * d * N;
  if (n >= 100 && z > 3.76) return 1.0 - 2.0 * std::exp(-z * (1.409 / N + (0.331 / std::sqrt(N) + 2.000071)));
  // Far outside [0, 1] the matrix has no bounds that memory could meet.
  if (d * N > 1e8) throw std::bad_alloc();
  const int k = static_cast<int>(std::floor(1.0 + d * N));
  if (k < 1) return 0.0;
  const double h = k - d * N;
  const Eigen::MatrixXd Q = durbinMatrix(2 * k - 1, h).pow(N);
  double s = Q(k - 1, k - 1);
  for (std::size_t i = 1; i <= n; ++i) s = (static_cast<double>(i) / N) * s;
  return s;
}

template class KolmogorovSmirnov<double*, double*>;
