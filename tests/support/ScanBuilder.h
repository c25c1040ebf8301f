#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <functional>
#include <string>
#include <vector>

namespace runsieve::test {

/// A small stacked scan: species "A", "B", ..., time "Time [s]" (0, 1, 2, ...), "Run Index" (0, 1, ...),
/// parameters "k1", "k2", ...
struct ScanShape
{
  int runs = 3;
  int times = 3;
  int species = 1;
  int parameters = 1;
  std::function<double(int species, int run, int time)> value = [](int s, int r, int t) {
    return 100.0 * s + 10.0 * r + t;
  };
  std::function<double(int parameter, int run)> parameter = [](int p, int r) { return p + 1.0 + r; };
  /// Declared bounds of each parameter; empty: not known.
  std::vector<std::pair<double, double>> bounds;
};

inline boost::shared_ptr<LinePlotTable> makeScan(ScanShape const& shape)
{
  auto table = boost::make_shared<LinePlotTable>();
  table->trajectoryCount = static_cast<std::uint64_t>(shape.runs);
  table->trajectoryLength = static_cast<std::uint64_t>(shape.times);
  table->parameterBounds = shape.bounds;
  auto fill = [&](Kestrane::DataType type, std::string const& name, auto cell) {
    double* column = table->addColumn(type, name);
    for (int r = 0; r < shape.runs; ++r)
      for (int t = 0; t < shape.times; ++t) column[r * shape.times + t] = cell(r, t);
  };
  for (int s = 0; s < shape.species; ++s)
    fill(Kestrane::Molecule, std::string(1, static_cast<char>('A' + s)),
         [&](int r, int t) { return shape.value(s, r, t); });
  fill(Kestrane::Unnamed, "Time [s]", [](int, int t) { return static_cast<double>(t); });
  fill(Kestrane::Unnamed, "Run Index", [](int r, int) { return static_cast<double>(r); });
  for (int p = 0; p < shape.parameters; ++p)
    fill(Kestrane::Parameter, "k" + std::to_string(p + 1), [&](int r, int) { return shape.parameter(p, r); });
  return table;
}

} // namespace runsieve::test
