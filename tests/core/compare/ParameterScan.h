#pragma once

#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

using Values = std::vector<double>;

inline ColumnLabel labelled(std::string const& name)
{
  ColumnLabel label;
  label.name = name;
  return label;
}

/// A scan of one time and one output, 0, with these parameters.
inline Scan parameterScan(std::vector<std::pair<std::string, Values>> const& parameters)
{
  Scan scan;
  scan.times = {0.0};
  const std::size_t runs = parameters.front().second.size();
  for (std::size_t run = 0; run < runs; ++run) scan.runs.push_back({std::to_string(run)});
  std::fill_n(scan.addOutput(labelled("A")), runs, 0.0);
  for (auto const& [name, values] : parameters) scan.parameters.push_back({labelled(name), values, {}});
  return scan;
}

/// A scan of one output of these time courses, which are equally long.
inline Scan curveScan(std::vector<Values> const& curves)
{
  Scan scan;
  for (std::size_t t = 0; t < curves.front().size(); ++t) scan.times.push_back(static_cast<double>(t));
  for (std::size_t run = 0; run < curves.size(); ++run) scan.runs.push_back({std::to_string(run)});
  double* values = scan.addOutput(labelled("A"));
  for (Values const& curve : curves) values = std::copy(curve.begin(), curve.end(), values);
  return scan;
}

inline RunSet runSet(std::size_t runs, std::initializer_list<std::size_t> members)
{
  RunSet set(runs);
  for (std::size_t run : members) set.set(run);
  return set;
}

} // namespace runsieve::test
