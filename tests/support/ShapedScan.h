#pragma once

#include "ScanBuilder.h"

#include <cmath>
#include <cstddef>
#include <map>
#include <random>
#include <utility>
#include <vector>

namespace runsieve::test {

/// Runs of three known shapes in random order: rising, falling, and a pulse. Each run has an amplitude, an
/// offset and a little noise of its own. Output B has the shapes in another order. k1 to k3 have nothing to
/// do with the shape, k4 tells it, and k5 tells the pulse.
struct ShapedScan
{
  static constexpr int shapes = 3;
  static constexpr int parameters = 5;
  static constexpr int times = 33;

  std::vector<int> shapeOfRun;      ///< in output A
  std::vector<int> otherShapeOfRun; ///< in output B
  boost::shared_ptr<LinePlotTable> scan;

  /// \param runs a multiple of 3 gives equally many of each shape
  explicit ShapedScan(int runs = 60, unsigned seed = 1) : random(seed)
  {
    shapeOfRun = shuffled(runs);
    otherShapeOfRun = shuffled(runs);
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.species = 2;
    shape.parameters = parameters;
    shape.bounds = {{1.0, 2.0}, {1.0, 2.0}, {1.0, 2.0}, {1.0, 3.5}, {1.0, 2.5}};
    const std::vector<double> amplitudes = uniform(2 * runs, 1.0, 5.0);
    const std::vector<double> offsets = uniform(2 * runs, 0.0, 3.0);
    const std::vector<double> noise = uniform(2 * runs * times, -0.05, 0.05);
    const std::vector<double> spread = uniform(runs * parameters, 0.0, 1.0);
    shape.value = [&](int s, int r, int t) {
      const int curve = s * runs + r;
      const int kind = (s == 0 ? shapeOfRun : otherShapeOfRun)[static_cast<std::size_t>(r)];
      return at(offsets, curve) + at(amplitudes, curve) * (form(kind, t) + at(noise, curve * times + t));
    };
    shape.parameter = [&](int p, int r) {
      const int kind = shapeOfRun[static_cast<std::size_t>(r)];
      const double even = at(spread, r * parameters + p);
      if (p == 3) return 1.0 + kind + 0.5 * even;
      return p == 4 ? 1.0 + (kind == 2 ? 0.5 : 0.0) + even : 1.0 + even;
    };
    scan = makeScan(shape);
  }

private:
  static double at(std::vector<double> const& values, int i) { return values[static_cast<std::size_t>(i)]; }

  /// In [0, 1] over the times.
  static double form(int kind, int time)
  {
    const double x = static_cast<double>(time) / (times - 1);
    if (kind == 2) return std::exp(-40.0 * (x - 0.5) * (x - 0.5));
    return kind == 0 ? 1.0 - std::exp(-4.0 * x) : std::exp(-4.0 * x);
  }

  // Written out, as the standard library's own shuffle and distributions differ between machines.
  double next() { return static_cast<double>(random()) / 4294967296.0; }

  std::vector<double> uniform(int count, double low, double high)
  {
    std::vector<double> values;
    for (int i = 0; i < count; ++i) values.push_back(low + (high - low) * next());
    return values;
  }

  std::vector<int> shuffled(int runs)
  {
    std::vector<int> kinds;
    for (int r = 0; r < runs; ++r) kinds.push_back(r % shapes);
    for (std::size_t i = kinds.size(); i > 1; --i)
      std::swap(kinds[i - 1], kinds[static_cast<std::size_t>(next() * static_cast<double>(i))]);
    return kinds;
  }

  std::mt19937 random;
};

/// How well two groupings of the same things agree, beyond chance (Hubert and Arabie, Journal of
/// Classification 2:193-218, 1985): 1 for equal ones whatever the numbers of the groups, about 0 for
/// unrelated ones.
inline double adjustedRandIndex(std::vector<int> const& a, std::vector<int> const& b)
{
  std::map<std::pair<int, int>, double> both;
  std::map<int, double> ofA;
  std::map<int, double> ofB;
  for (std::size_t i = 0; i < a.size(); ++i) {
    ++both[{a[i], b[i]}];
    ++ofA[a[i]];
    ++ofB[b[i]];
  }
  auto pairs = [](auto const& counts) {
    double sum = 0.0;
    for (auto const& entry : counts) sum += entry.second * (entry.second - 1.0) / 2.0;
    return sum;
  };
  const auto n = static_cast<double>(a.size());
  const double expected = pairs(ofA) * pairs(ofB) / (n * (n - 1.0) / 2.0);
  return (pairs(both) - expected) / ((pairs(ofA) + pairs(ofB)) / 2.0 - expected);
}

} // namespace runsieve::test
