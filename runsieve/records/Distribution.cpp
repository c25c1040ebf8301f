#include <runsieve/records/Distribution.h>

#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/exponential.hpp>
#include <boost/math/distributions/gamma.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/triangular.hpp>
#include <boost/math/distributions/uniform.hpp>
#include <boost/math/distributions/weibull.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

Distribution::~Distribution() = default;

namespace runsieve {

namespace {

constexpr double tail = 0.001; ///< probability that a plotted range leaves out at an unbounded end

/// Densities may be infinite at an end of the support; that is a value here, not an error.
using Tolerant =
    boost::math::policies::policy<boost::math::policies::overflow_error<boost::math::policies::ignore_error>>;

/// Boost.Math writes the largest double for an unbounded end of a support, and the smallest one for 0.
double endOfSupport(double end)
{
  using Limits = std::numeric_limits<double>;
  if (end == Limits::min()) return 0.0;
  return std::abs(end) == Limits::max() ? std::copysign(Limits::infinity(), end) : end;
}

/// Any continuous distribution of Boost.Math.
template <class Law> class ContinuousDistribution : public Distribution
{
public:
  ContinuousDistribution(Kind itsKind, Law itsLaw) : kind(itsKind), law(itsLaw) {}

  int getType() override { return kind; }

  double getPdf(double x) override
  {
    const auto [lower, upper] = getRange(support);
    if (!(x >= lower && x <= upper) || std::isinf(x)) return 0.0;
    // At 0 itself some laws answer 0 whatever the limit of their density.
    return boost::math::pdf(law, std::max(x, boost::math::support(law).first));
  }

  std::pair<double, double> getRange(int range) override
  {
    auto [lower, upper] = boost::math::support(law);
    lower = endOfSupport(lower);
    upper = endOfSupport(upper);
    if (range == support) return {lower, upper};
    if (std::isinf(lower)) lower = boost::math::quantile(law, tail);
    if (std::isinf(upper)) upper = boost::math::quantile(boost::math::complement(law, tail));
    return {lower, upper};
  }

private:
  Kind kind;
  Law law;
};

class PointDistribution : public Distribution
{
public:
  explicit PointDistribution(double itsValue) : value(itsValue) {}
  int getType() override { return pointValue; }
  double getPdf(double) override { return 0.0; }
  std::pair<double, double> getRange(int) override { return {value, value}; }

private:
  double value;
};

class LogUniformDistribution : public Distribution
{
public:
  LogUniformDistribution(double itsLower, double itsUpper) : lower(itsLower), upper(itsUpper) {}
  int getType() override { return logUniform; }
  double getPdf(double x) override
  {
    return x >= lower && x <= upper ? 1.0 / (x * std::log(upper / lower)) : 0.0;
  }
  std::pair<double, double> getRange(int) override { return {lower, upper}; }

private:
  double lower;
  double upper;
};

template <class Law> std::unique_ptr<Distribution> continuous(Distribution::Kind kind, Law law)
{
  return std::make_unique<ContinuousDistribution<Law>>(kind, law);
}

} // namespace

std::unique_ptr<Distribution> pointDistribution(double value)
{
  if (!std::isfinite(value)) throw std::domain_error("A point value must be finite.");
  return std::make_unique<PointDistribution>(value);
}

std::unique_ptr<Distribution> logUniformDistribution(double lower, double upper)
{
  if (!(lower > 0.0 && lower < upper && std::isfinite(upper)))
    throw std::domain_error("A log-uniform distribution needs 0 < lower < upper.");
  return std::make_unique<LogUniformDistribution>(lower, upper);
}

std::unique_ptr<Distribution> uniformDistribution(double lower, double upper)
{
  return continuous(Distribution::uniform, boost::math::uniform_distribution<double, Tolerant>(lower, upper));
}

std::unique_ptr<Distribution> normalDistribution(double mean, double standardDeviation)
{
  return continuous(Distribution::normal,
                    boost::math::normal_distribution<double, Tolerant>(mean, standardDeviation));
}

std::unique_ptr<Distribution> logNormalDistribution(double location, double scale)
{
  return continuous(Distribution::logNormal,
                    boost::math::lognormal_distribution<double, Tolerant>(location, scale));
}

std::unique_ptr<Distribution> gammaDistribution(double shape, double scale)
{
  return continuous(Distribution::gamma, boost::math::gamma_distribution<double, Tolerant>(shape, scale));
}

std::unique_ptr<Distribution> exponentialDistribution(double rate)
{
  return continuous(Distribution::exponential, boost::math::exponential_distribution<double, Tolerant>(rate));
}

std::unique_ptr<Distribution> weibullDistribution(double shape, double scale)
{
  return continuous(Distribution::weibull, boost::math::weibull_distribution<double, Tolerant>(shape, scale));
}

std::unique_ptr<Distribution> betaDistribution(double alpha, double beta)
{
  return continuous(Distribution::beta, boost::math::beta_distribution<double, Tolerant>(alpha, beta));
}

std::unique_ptr<Distribution> triangularDistribution(double lower, double mode, double upper)
{
  return continuous(Distribution::triangular,
                    boost::math::triangular_distribution<double, Tolerant>(lower, mode, upper));
}

} // namespace runsieve
