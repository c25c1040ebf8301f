#pragma once

#include <cstdint>
#include <random>

namespace runsieve {

/// Random numbers that are the same on every machine and with every standard library.
///
/// A seed has any number of independent streams: work that is cut into pieces takes a stream for each piece,
/// so that the result depends neither on the number of threads nor on their order. The numbers are those of
/// std::mt19937_64, whose output the standard fixes; its distributions are not fixed, so none is used here.
class RandomStream
{
public:
  RandomStream(std::uint64_t seed, std::uint64_t stream) : engine(mixed(mixed(seed) + stream)) {}

  /// A whole number below `bound`, which is at least 1; all are equally likely (Lemire, ACM Trans. Model.
  /// Comput. Simul. 29, 2019).
  [[nodiscard]] std::uint32_t below(std::uint32_t bound)
  {
    std::uint64_t product = upperHalf() * bound;
    if (static_cast<std::uint32_t>(product) < bound) {
      std::uint32_t const least = (0u - bound) % bound;
      while (static_cast<std::uint32_t>(product) < least) product = upperHalf() * bound;
    }
    return static_cast<std::uint32_t>(product >> 32);
  }

private:
  std::uint64_t upperHalf() { return engine() >> 32; }

  /// SplitMix64 (Steele, Lea and Flood, OOPSLA 2014): neighbouring numbers come far apart.
  static std::uint64_t mixed(std::uint64_t x)
  {
    x += 0x9e3779b97f4a7c15u;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
    return x ^ (x >> 31);
  }

  std::mt19937_64 engine;
};

} // namespace runsieve
