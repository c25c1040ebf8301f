#pragma once

#include <runsieve/runsieve_export.h>

#include <memory>
#include <utility>

/// A probability distribution of one real quantity, as PlotContainer::setDistribution() shows it.
///
/// Hosts derive kinds of their own or take those of namespace runsieve below.
class RUNSIEVE_EXPORT Distribution
{
public:
  /// Kinds with numbers. Only pointValue is told apart when plotting: it has no density.
  enum Kind
  {
    uniform = 0,
    normal = 1,
    logUniform = 2,
    logNormal = 3,
    gamma = 4,
    pointValue = 5,
    exponential = 6,
    weibull = 7,
    beta = 8,
    triangular = 9
  };

  /// What getRange() is asked for.
  enum Range
  {
    support = 0, ///< where the density can be above 0; ends can be infinite
    shown = 1    ///< worth plotting: the whole support where it is bounded, else without one thousandth at
                 ///< each unbounded end
  };

  /// A Kind, or another number for a kind of the host's own.
  virtual int getType() = 0;
  /// The probability density at x; 0 outside the support, and everywhere for a point value.
  virtual double getPdf(double x) = 0;
  /// Lower and upper end of a Range; both are the point itself for a point value.
  virtual std::pair<double, double> getRange(int range) = 0;

  virtual ~Distribution();

protected:
  Distribution() = default;
  Distribution(Distribution const&) = default;
  Distribution& operator=(Distribution const&) = default;
};

namespace runsieve {

/// The usual kinds. Each throws std::domain_error for parameters outside its definition (a negative standard
/// deviation, ends in the wrong order, anything that is not finite).
///@{
RUNSIEVE_EXPORT std::unique_ptr<Distribution> pointDistribution(double value);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> uniformDistribution(double lower, double upper);
/// The logarithm is uniform: density 1 / (x ln(upper / lower)) for 0 < lower <= x <= upper.
RUNSIEVE_EXPORT std::unique_ptr<Distribution> logUniformDistribution(double lower, double upper);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> normalDistribution(double mean, double standardDeviation);
/// \param location, scale mean and standard deviation of the natural logarithm
RUNSIEVE_EXPORT std::unique_ptr<Distribution> logNormalDistribution(double location, double scale);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> gammaDistribution(double shape, double scale);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> exponentialDistribution(double rate);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> weibullDistribution(double shape, double scale);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> betaDistribution(double alpha, double beta);
RUNSIEVE_EXPORT std::unique_ptr<Distribution> triangularDistribution(double lower, double mode, double upper);
///@}

} // namespace runsieve
