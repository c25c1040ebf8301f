#include <runsieve/records/MersenneTwister.h>

#include <ctime>

namespace Kestrane {

namespace {

std::mt19937& generator()
{
  static std::mt19937 instance(static_cast<std::uint32_t>(std::time(nullptr)));
  return instance;
}

// Seeds at load, so that the first number does not depend on when a host asks for it.
[[maybe_unused]] const bool seededAtLoad = (generator(), true);

} // namespace

void MersenneTwister::seed(std::uint32_t value)
{
  generator().seed(value);
}

MersenneTwister::result_type MersenneTwister::next()
{
  return generator()();
}

double MersenneTwister::nextDouble()
{
  const double high = next() >> 5;
  const double low = next() >> 6;
  return (high * 67108864.0 + low) / 9007199254740992.0;
}

} // namespace Kestrane
