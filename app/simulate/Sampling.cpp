#include "app/simulate/Sampling.h"

#include <boost/random/sobol.hpp>

#include <limits>
#include <numeric>
#include <random>
#include <stdexcept>
#include <utility>

namespace runsieve::app {

namespace {

// The standard fixes the numbers of the engine but not those of the distributions, so they are made here.
class Generator
{
public:
  explicit Generator(std::uint64_t seed) : engine(seed) {}

  std::uint64_t bits() { return engine(); }

  // In [0, limit), each with the same chance: numbers of the incomplete last cycle are drawn again.
  std::uint64_t below(std::uint64_t limit)
  {
    std::uint64_t const cycles = std::numeric_limits<std::uint64_t>::max() / limit * limit;
    std::uint64_t number = engine();
    while (number >= cycles) number = engine();
    return number % limit;
  }

private:
  std::mt19937_64 engine;
};

// In the open interval (0, 1), by the upper 52 bits.
double unitNumber(std::uint64_t bits)
{
  return (static_cast<double>(bits >> 12) + 0.5) * 0x1p-52;
}

std::vector<double> latinHypercube(std::size_t points, std::size_t dimensions, std::uint64_t seed)
{
  Generator generator(seed);
  std::vector<double> cube(points * dimensions);
  std::vector<std::size_t> strata(points);
  for (std::size_t d = 0; d < dimensions; ++d) {
    std::iota(strata.begin(), strata.end(), std::size_t(0));
    for (std::size_t i = points; i > 1; --i) std::swap(strata[i - 1], strata[generator.below(i)]);
    for (std::size_t i = 0; i < points; ++i)
      cube[i * dimensions + d] =
          (static_cast<double>(strata[i]) + unitNumber(generator.bits())) / static_cast<double>(points);
  }
  return cube;
}

std::vector<double> sobolSequence(std::size_t points, std::size_t dimensions, std::uint64_t seed)
{
  if (dimensions > BOOST_RANDOM_SOBOL_MAX_DIMENSION)
    throw std::invalid_argument("a Sobol' sequence has at most " +
                                std::to_string(BOOST_RANDOM_SOBOL_MAX_DIMENSION) + " dimensions");
  Generator generator(seed);
  std::vector<std::uint64_t> shift(dimensions);
  for (auto& bits : shift) bits = generator.bits();
  boost::random::sobol sequence(dimensions);
  std::vector<double> cube;
  cube.reserve(points * dimensions);
  // Boost leaves out the first point, the origin. With it each power of 2 of points is balanced; the shift
  // moves it off the corner.
  for (std::size_t i = 0; i < points * dimensions; ++i)
    cube.push_back(unitNumber((i < dimensions ? 0 : sequence()) ^ shift[i % dimensions]));
  return cube;
}

} // namespace

std::vector<double> unitPoints(Sampling sampling, std::size_t points, std::size_t dimensions,
                               std::uint64_t seed)
{
  if (dimensions == 0) return {};
  return sampling == Sampling::Sobol ? sobolSequence(points, dimensions, seed)
                                     : latinHypercube(points, dimensions, seed);
}

} // namespace runsieve::app
