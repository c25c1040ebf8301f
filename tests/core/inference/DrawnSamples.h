#pragma once

#include "core/inference/TruthTable.h"

#include <runsieve/core/inference/SampleComparison.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace runsieve::test {

/// The samples of a row of a truth table, drawn as data/drawn_samples.py does.
struct DrawnSamples
{
  DrawnSamples(TruthTable const& table, std::size_t row)
      : passing(static_cast<std::size_t>(table.number(row, "passing"))),
        others(static_cast<std::size_t>(table.number(row, "others")))
  {
    std::minstd_rand0 generator(static_cast<std::uint32_t>(table.number(row, "seed")));
    double const levels = table.number(row, "levels");
    for (std::size_t run = 0; run < passing + others; ++run) {
      double const value = std::floor(static_cast<double>(generator()) * levels / 2147483647.0);
      passes.push_back(run < passing ? 1 : 0);
      values.push_back(value + (run < passing ? table.number(row, "shift") : 0.0));
    }
    ordered = orderedValues(values.data(), values.size());
  }

  [[nodiscard]] SampleComparison compared() const
  {
    return compareSamples(ordered, values.data(), passes.data());
  }

  std::size_t passing;
  std::size_t others;
  std::vector<double> values;
  std::vector<std::uint8_t> passes;
  OrderedValues ordered;
};

} // namespace runsieve::test
