#include "app/explorer/charts/RoundedValue.h"

#include <QString>

#include <cmath>

namespace runsieve::app {

double roundedValue(double value, double step)
{
  if (!std::isfinite(value) || !(step > 0.0)) return value;
  const double unit = std::pow(10.0, std::floor(std::log10(step)));
  const double result = std::round(value / unit) * unit;
  return std::isfinite(result) ? QString::number(result, 'g', 12).toDouble() : value;
}

} // namespace runsieve::app
