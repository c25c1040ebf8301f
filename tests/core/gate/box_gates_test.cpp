#include <runsieve/core/gate/BoxGates.h>

#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace runsieve::test {
namespace {

using testing::IsEmpty;

/// A scan of odd names, ties, missing values and texts, in which runs pass by some of its parameters.
struct DrawnScan
{
  std::mt19937 random;
  Scan scan;
  RunSet passing;
  RunSet eligible;

  DrawnScan(unsigned seed, std::size_t runs) : random(seed), passing(runs), eligible(runs)
  {
    scan.times = {0.0};
    for (std::size_t run = 0; run < runs; ++run) scan.runs.push_back({std::to_string(run)});
    addOutput("k1");
    addOutput("A");
    for (char const* name : {"k1", "a in 2..5", "max(A)", "k @ 3", "say \"no\""}) addNumbers(name);
    addTexts("strain is", {"WT", "mut \"1\"", "a, b", " c ", "$HOME `d` !e"});
    for (std::size_t run = 0; run < runs; ++run) {
      auto const at = [&](std::size_t k) { return scan.parameters[k].values[run]; };
      bool const passes = (at(0) > 0.2 && at(0) < 0.9 && at(1) < 0.7 && at(5) != 2.0) || random() % 20 == 0;
      passing.set(run, passes);
      eligible.set(run, random() % 8 != 0);
    }
  }

  static ColumnLabel labelOf(std::string const& name)
  {
    ColumnLabel label;
    label.name = name;
    return label;
  }

  void addOutput(std::string const& name) { std::fill_n(scan.addOutput(labelOf(name)), scan.rows(), 0.0); }

  // Some have ties.
  void addNumbers(std::string const& name)
  {
    std::vector<double> values;
    double const levels = random() % 2 == 0 ? 1e9 : 20.0;
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      values.push_back(random() % 30 == 0 ? std::numeric_limits<double>::quiet_NaN()
                                          : std::floor(levels * (random() / 4294967296.0)) / levels);
    scan.parameters.push_back({labelOf(name), values, {}});
  }

  void addTexts(std::string const& name, std::vector<std::string> const& texts)
  {
    std::vector<double> values;
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      values.push_back(static_cast<double>(random() % texts.size()));
    scan.parameters.push_back({labelOf(name), values, texts});
  }
};

TEST(BoxGates, SelectExactlyTheRunsOfTheBox)
{
  BoxMethod method;
  method.resamples = 0;
  std::size_t texts = 0;
  std::size_t ranges = 0;
  for (unsigned seed = 0; seed < 60; ++seed) {
    DrawnScan const drawn(seed, 40 + 20 * seed);
    method.peel = 0.02 + 0.002 * seed;
    BoxOfRuns const box = findBox(drawn.scan, drawn.passing, drawn.eligible, method);
    std::vector<Gate> const gates = gatesOf(box, drawn.scan);
    EXPECT_EQ(gates.size(), box.restricted);
    RunSet selected = applyGates(gates, drawn.scan).runs;
    selected &= drawn.eligible;
    EXPECT_TRUE(selected == box.runs) << seed;
    for (Gate const& gate : gates) {
      EXPECT_EQ(parseGate(formatGate(gate)), gate) << formatGate(gate);
      (gate.kind == GateKind::Is ? texts : ranges) += 1;
    }
  }
  EXPECT_GT(texts, 10u);
  EXPECT_GT(ranges, 60u);
}

TEST(BoxGates, OfAParameterThatIsCalledAsAnOutputSayWhichTheyMean)
{
  DrawnScan const drawn(1, 500);
  BoxOfRuns box;
  BoxParameter parameter;
  parameter.isRestricted = true;
  parameter.low = 0.25;
  box.parameters.push_back(parameter);
  ASSERT_EQ(drawn.scan.parameters[0].label.name, "k1");
  EXPECT_EQ(formatGate(gatesOf(box, drawn.scan).at(0)), "Parameter: k1 in 0.25..inf");
}

TEST(BoxGates, ThereAreNoneOfABoxOfAllRuns)
{
  DrawnScan const drawn(1, 50);
  BoxOfRuns const box = findBox(drawn.scan, drawn.eligible, drawn.eligible);
  EXPECT_THAT(gatesOf(box, drawn.scan), IsEmpty());
}

} // namespace
} // namespace runsieve::test
