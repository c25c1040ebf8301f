#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace runsieve::test {

/// Whole numbers, the same ones for a seed on every machine.
class Dice
{
public:
  explicit Dice(unsigned seed) : random(seed) {}

  /// 0 to n - 1.
  std::size_t below(std::size_t n) { return random() % n; }
  /// From 0 to below 1.
  double even() { return static_cast<double>(random()) / 4294967296.0; }

private:
  std::mt19937 random;
};

/// What a value of a parameter may be: different for all runs, tied, on few levels, missing, infinite, signed
/// zeros, the same for all.
inline double valueOfKind(std::size_t kind, Dice& dice)
{
  switch (kind) {
  case 0:
    return dice.even();
  case 1:
    return std::floor(dice.even() * 50.0);
  case 2:
    return static_cast<double>(dice.below(3));
  case 3:
    return dice.below(4) == 0 ? std::nan("") : dice.even();
  case 4:
    return dice.below(4) == 0 ? std::nan("") : static_cast<double>(dice.below(2));
  case 5:
    return dice.below(2) == 0 ? (dice.below(2) == 0 ? 0.0 : -0.0) : dice.even() - 0.5;
  case 6:
    return dice.below(9) == 0 ? (dice.below(2) == 0 ? 1.0 : -1.0) * std::numeric_limits<double>::infinity()
                              : dice.even();
  case 7:
    return 1.0;
  default:
    return std::nan("");
  }
}
inline constexpr std::size_t kindsOfValues = 9;

inline ScanParameter textParameter(std::size_t runs, Dice& dice)
{
  ScanParameter parameter;
  parameter.texts = {"low", "middle", "high", "never used"};
  for (std::size_t run = 0; run < runs; ++run)
    parameter.values.push_back(dice.below(7) == 0 ? std::nan("") : static_cast<double>(dice.below(3)));
  return parameter;
}

/// A parameter of each kind, and one of texts.
inline void addParameters(Scan& scan, Dice& dice)
{
  for (std::size_t kind = 0; kind < kindsOfValues; ++kind) {
    ScanParameter parameter;
    parameter.label.name = "k" + std::to_string(kind);
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      parameter.values.push_back(valueOfKind(kind, dice));
    scan.parameters.push_back(parameter);
  }
  scan.parameters.push_back(textParameter(scan.runs.size(), dice));
  scan.parameters.back().label.name = "text";
}

/// One curve: mostly complete, some end early, some miss or exceed numbers.
inline void fillCurve(double* values, std::size_t times, Dice& dice)
{
  for (std::size_t t = 0; t < times; ++t) values[t] = std::floor(dice.even() * 20.0) / 2.0;
  std::size_t const flaw = dice.below(12);
  if (flaw == 0) std::fill(values + dice.below(times), values + times, std::nan(""));
  if (flaw == 1) values[dice.below(times)] = std::nan("");
  if (flaw == 2) values[dice.below(times)] = std::numeric_limits<double>::infinity();
  if (flaw == 3) values[dice.below(times)] = -std::numeric_limits<double>::infinity();
}

/// Two outputs "A" and "B", times 0, 1, 2, ...
inline Scan randomScan(std::size_t runs, std::size_t times, Dice& dice)
{
  Scan scan;
  for (std::size_t t = 0; t < times; ++t) scan.times.push_back(static_cast<double>(t));
  for (std::size_t run = 0; run < runs; ++run) scan.runs.push_back({std::to_string(run)});
  for (char const* const name : {"A", "B"}) {
    ColumnLabel label;
    label.name = name;
    double* const values = scan.addOutput(label);
    for (std::size_t run = 0; run < runs; ++run) fillCurve(values + run * times, times, dice);
  }
  addParameters(scan, dice);
  scan.findStatus();
  return scan;
}

inline RunSet randomRuns(std::size_t runs, Dice& dice)
{
  std::size_t const share = dice.below(5);
  RunSet set(runs);
  for (std::size_t run = 0; run < runs; ++run) set.set(run, dice.below(4) < share);
  return set;
}

/// A rectangle on an output as a gate; some ranges are open, some hold one value alone.
inline ResolvedGate randomRectangle(Scan const& scan, Dice& dice)
{
  Gate gate;
  gate.kind = static_cast<GateKind>(dice.below(3));
  gate.negated = dice.below(4) == 0;
  gate.column = dice.below(5) == 0 ? "B" : "A";
  std::size_t const first = dice.below(scan.times.size());
  gate.span = GateSpan{scan.times[first], scan.times[first + dice.below(scan.times.size() - first)]};
  double const low = static_cast<double>(dice.below(21)) / 2.0;
  if (dice.below(5) != 0) gate.range.low = low;
  if (dice.below(5) != 0) gate.range.high = low + static_cast<double>(dice.below(20)) / 2.0;
  return resolveGate(gate, scan);
}

} // namespace runsieve::test
