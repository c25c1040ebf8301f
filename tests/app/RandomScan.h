#pragma once

#include "support/ScanBuilder.h"

#include <runsieve/core/scan/ParameterBounds.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

namespace runsieve::test {

/// A small scan with everything that parameters and time courses can be: ties, lattices, constant and missing
/// values, infinities, few runs. The same seed gives the same scan on every machine.
class RandomScan
{
public:
  static constexpr int mostRuns = 60;

  explicit RandomScan(unsigned seed) : random(seed)
  {
    shape.runs = below(3) == 0 ? 1 + below(5) : 1 + below(mostRuns);
    shape.times = 1 + below(below(2) == 0 ? 4 : 40);
    shape.species = 1 + below(2);
    shape.parameters = 1 + below(6);
    for (int p = 0; p < shape.parameters; ++p) {
      parameters.push_back(parameterOfKind(below(12)));
      shape.bounds.push_back(boundsOfRuns(parameters.back().data(), parameters.back().size(), 1));
    }
    for (int s = 0; s < shape.species; ++s) addCurves();
    shape.parameter = [this](int p, int r) { return parameters.at(p).at(r); };
    shape.value = [this](int s, int r, int t) { return curves.at(s * shape.runs + r).at(t); };
    table = makeScan(shape);
  }
  RandomScan(RandomScan const&) = delete;
  RandomScan& operator=(RandomScan const&) = delete;

  /// A whole number of 0 to n - 1.
  int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  /// From 0 to below 1.
  double even() { return static_cast<double>(random()) / 4294967296.0; }

  /// Whether each run passes: one, all, all but one, any, or those where a parameter is small.
  std::vector<bool> passingRuns()
  {
    const auto runs = static_cast<std::size_t>(shape.runs);
    const auto one = static_cast<std::size_t>(below(shape.runs));
    std::vector<bool> passing(runs);
    switch (below(5)) {
    case 0:
      passing[one] = true;
      break;
    case 1:
      passing.assign(runs, true);
      break;
    case 2:
      passing.assign(runs, true);
      passing[one] = runs == 1;
      break;
    case 3:
      for (std::size_t run = 0; run < runs; ++run) passing[run] = below(2) == 0;
      break;
    default:
      for (std::size_t run = 0; run < runs; ++run) passing[run] = parameters[0][run] <= parameters[0][one];
    }
    return passing;
  }

  ScanShape shape;
  boost::shared_ptr<LinePlotTable> table;

private:
  double valueOfKind(int kind, int run)
  {
    switch (kind) {
    case 0:
      return 1.0; // constant
    case 1:
      return below(2) == 0 ? 2.5 : std::nan(""); // constant but for missing values
    case 2:
      return below(3); // a small lattice
    case 3:
      return 0.1 * (run % 7);
    case 4:
      return std::round(even() * 20.0) / 10.0; // ties
    case 5:
      return below(4) == 0 ? std::nan("") : even();
    case 6:
      return below(2) == 0 ? -0.0 : (below(2) == 0 ? 0.0 : even() - 0.5);
    case 7:
      return below(8) == 0 ? (below(2) == 0 ? 1.0 : -1.0) * std::numeric_limits<double>::infinity() : even();
    case 8:
      return std::pow(10.0, 20.0 * even() - 10.0);
    case 9: // the range of the finite values alone is empty
      return below(3) == 0 ? std::numeric_limits<double>::infinity() : 0.0;
    default:
      return even();
    }
  }

  std::vector<double> parameterOfKind(int kind)
  {
    std::vector<double> values;
    for (int run = 0; run < shape.runs; ++run) values.push_back(valueOfKind(kind, run));
    return values;
  }

  /// Random walks and waves, some of them constant or with a missing value.
  void addCurves()
  {
    for (int run = 0; run < shape.runs; ++run) {
      const int kind = below(10);
      std::vector<double> curve;
      double walk = even();
      const double start = 6.0 * even();
      for (int t = 0; t < shape.times; ++t) {
        walk += even() - 0.5;
        curve.push_back(kind == 0 ? 0.1 : (kind < 6 ? walk : std::sin(start + 0.3 * kind * t)));
      }
      if (kind == 9 && below(3) == 0) curve.back() = std::nan("");
      curves.push_back(curve);
    }
  }

  std::mt19937 random;
  std::vector<std::vector<double>> parameters;
  std::vector<std::vector<double>> curves;
};

} // namespace runsieve::test
