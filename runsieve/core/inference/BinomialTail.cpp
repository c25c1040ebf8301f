#include <runsieve/core/inference/BinomialTail.h>

#include <boost/math/special_functions/beta.hpp>

namespace runsieve {

double binomialUpperTail(std::uint64_t successes, std::uint64_t trials, double p)
{
  if (successes == 0) return 1.0;
  if (successes > trials || p <= 0.0) return 0.0;
  if (p >= 1.0) return 1.0;
  auto const a = static_cast<double>(successes);
  auto const b = static_cast<double>(trials - successes + 1);
  return boost::math::ibeta(a, b, p);
}

} // namespace runsieve
