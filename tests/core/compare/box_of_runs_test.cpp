#include <runsieve/core/compare/BoxOfRuns.h>

#include "ParameterScan.h"

#include <runsieve/core/inference/RandomStream.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

Values uniform(std::size_t runs, std::uint64_t stream)
{
  RandomStream random(11, stream);
  Values values;
  for (std::size_t run = 0; run < runs; ++run) values.push_back(random.below(1u << 30) / 1073741824.0);
  return values;
}

/// Runs that pass where k0 is in 0.3..0.7 and k1 above 0.5; m has no part in it.
struct BoxFound : testing::Test
{
  static constexpr std::size_t runs = 1000;
  Scan scan = parameterScan({{"m", uniform(runs, 2)}, {"k0", uniform(runs, 0)}, {"k1", uniform(runs, 1)}});
  RunSet passing = RunSet(runs);
  RunSet all = RunSet(runs, true);
  BoxMethod method;

  BoxFound()
  {
    method.resamples = 20;
    for (std::size_t run = 0; run < runs; ++run)
      passing.set(run, std::fabs(valueOf(1, run) - 0.5) < 0.2 && valueOf(2, run) > 0.5);
  }

  [[nodiscard]] double valueOf(std::size_t parameter, std::size_t run) const
  {
    return scan.parameters[parameter].values[run];
  }

  [[nodiscard]] BoxOfRuns find() const { return findBox(scan, passing, all, method); }

  /// The text is "a" where k0 is below 0.3, else "b" or "c".
  void addStrain()
  {
    Values strain;
    for (std::size_t run = 0; run < runs; ++run)
      strain.push_back(valueOf(1, run) < 0.3 ? 0.0 : 1.0 + static_cast<double>(run % 2));
    scan.parameters.push_back({labelled("strain"), strain, {"a", "b", "c"}});
  }
};

bool holds(BoxOfRuns const& box, Scan const& scan, std::size_t run)
{
  for (BoxParameter const& parameter : box.parameters) {
    if (!parameter.isRestricted) continue;
    ScanParameter const& of = scan.parameters[parameter.parameter];
    double const value = of.values[run];
    if (std::isnan(value)) return false;
    if (!parameter.isText && !(value >= parameter.low && value <= parameter.high)) return false;
    for (BoxText const& text : parameter.texts)
      if (text.text == of.texts[static_cast<std::size_t>(value)] && !text.isInside) return false;
  }
  return true;
}

std::vector<std::string> kindsOf(std::vector<ComparisonWarning> const& warnings)
{
  std::vector<std::string> kinds;
  for (ComparisonWarning const& warning : warnings) kinds.push_back(warning.kind);
  return kinds;
}

TEST_F(BoxFound, HoldsTheRegionThatMakesRunsPass)
{
  BoxOfRuns const box = find();
  ASSERT_EQ(box.parameters.size(), 3u);
  EXPECT_EQ(box.parameters[1].name, "k0");
  EXPECT_EQ(box.parameters[1].parameter, 1u);
  EXPECT_NEAR(box.parameters[1].low, 0.3, 0.05);
  EXPECT_NEAR(box.parameters[1].high, 0.7, 0.05);
  EXPECT_NEAR(box.parameters[2].low, 0.5, 0.05);
  EXPECT_EQ(box.parameters[2].high, infinity);
  EXPECT_FALSE(box.parameters[0].isRestricted);
  EXPECT_EQ(box.restricted, 2u);
  EXPECT_GE(box.quality.coverage, 0.8);
  EXPECT_GT(box.quality.density, 0.95);
  EXPECT_LT(box.parameters[1].quasiPLow, 1e-10);
  EXPECT_LT(box.parameters[2].quasiPLow, 1e-10);
  EXPECT_TRUE(std::isnan(box.parameters[2].quasiPHigh)) << "it is open";
  EXPECT_EQ(box.parameters[1].restrictedIn, 20u);
  EXPECT_EQ(box.parameters[1].lows.count, 20u);
  EXPECT_NEAR(box.parameters[1].lows.median, 0.3, 0.05);
  EXPECT_NEAR(box.parameters[1].highs.median, 0.7, 0.05);
  EXPECT_GT(box.density.median, 0.9) << "on the runs that it was not made of";
}

TEST_F(BoxFound, IsTheRunsWithinItsRoundedLimits)
{
  addStrain();
  for (std::size_t run = 0; run < runs; run += 9) scan.parameters[2].values[run] = nan;
  BoxOfRuns const box = find();
  ASSERT_GT(box.restricted, 1u);
  std::size_t inside = 0;
  std::size_t both = 0;
  for (std::size_t run = 0; run < runs; ++run) {
    EXPECT_EQ(box.runs.contains(run), holds(box, scan, run)) << run;
    inside += box.runs.contains(run) ? 1 : 0;
    both += box.runs.contains(run) && passing.contains(run) ? 1 : 0;
  }
  EXPECT_EQ(box.quality.runs, inside);
  EXPECT_EQ(box.quality.passing, both);
  EXPECT_EQ(box.quality.density, static_cast<double>(both) / static_cast<double>(inside));
  EXPECT_EQ(box.quality.coverage, static_cast<double>(both) / static_cast<double>(passing.count()));
  EXPECT_EQ(box.quality.mass, static_cast<double>(inside) / runs);
}

TEST_F(BoxFound, HasAPathFromAllRunsToFew)
{
  BoxOfRuns const box = find();
  ASSERT_GT(box.path.size(), 10u);
  BoxPathStep const& first = box.path.front();
  EXPECT_EQ(first.side, BoxSide::None);
  EXPECT_EQ(first.quality.coverage, 1.0);
  EXPECT_EQ(first.quality.density, box.all.density);
  EXPECT_EQ(box.all.passing, passing.count());
  for (std::size_t step = 1; step < box.path.size(); ++step) {
    EXPECT_LT(box.path[step].quality.runs, box.path[step - 1].quality.runs);
    EXPECT_GE(box.path[step].restricted, box.path[step - 1].restricted);
    EXPECT_EQ(box.path[step].name, scan.parameters[box.path[step].parameter].label.name);
    EXPECT_TRUE(box.path[step].side == BoxSide::Low || box.path[step].side == BoxSide::High);
  }
  BoxQuality const& chosen = box.path[box.chosen].quality;
  EXPECT_GE(box.quality.density, chosen.density);
  for (BoxPathStep const& step : box.path)
    if (step.quality.coverage >= 0.8) EXPECT_LE(step.quality.density, chosen.density);
}

TEST_F(BoxFound, HasNoLimitThatKeepsNoRunOut)
{
  scan.parameters.push_back(scan.parameters[1]);
  scan.parameters.back().label = labelled("copy");
  for (std::size_t run = 0; run < runs; ++run) scan.parameters.back().values[run] += 0.001 * valueOf(0, run);
  BoxOfRuns const box = find();
  for (std::size_t k = 0; k < box.parameters.size(); ++k) {
    if (!box.parameters[k].isRestricted) continue;
    BoxOfRuns wider = box;
    wider.parameters[k].isRestricted = false;
    std::size_t inside = 0;
    for (std::size_t run = 0; run < runs; ++run) inside += holds(wider, scan, run) ? 1 : 0;
    EXPECT_GT(inside, box.quality.runs) << box.parameters[k].name;
  }
}

TEST_F(BoxFound, CoversAsMuchAsIsAskedFor)
{
  for (double const coverage : {0.5, 0.95, 1.0}) {
    method.leastCoverage = coverage;
    EXPECT_GE(find().quality.coverage, coverage);
  }
  method.leastCoverage.reset();
  BoxOfRuns const box = find();
  auto const mean = [](BoxQuality const& q) {
    return 2.0 * q.coverage * q.density / (q.coverage + q.density);
  };
  for (BoxPathStep const& step : box.path)
    EXPECT_LE(mean(step.quality), mean(box.path[box.chosen].quality) + 1e-12);
}

TEST_F(BoxFound, RunsThatTakeNoPartChangeNothing)
{
  Scan larger = parameterScan(
      {{"m", uniform(2 * runs, 3)}, {"k0", uniform(2 * runs, 4)}, {"k1", uniform(2 * runs, 5)}});
  RunSet eligible(2 * runs);
  RunSet largerPassing(2 * runs, true);
  for (std::size_t run = 0; run < runs; ++run) {
    eligible.set(2 * run);
    largerPassing.set(2 * run, passing.contains(run));
    for (std::size_t k = 0; k < 3; ++k) larger.parameters[k].values[2 * run] = valueOf(k, run);
  }
  BoxOfRuns const a = find();
  BoxOfRuns const b = findBox(larger, largerPassing, eligible, method);
  ASSERT_EQ(a.path.size(), b.path.size());
  for (std::size_t step = 0; step < a.path.size(); ++step) {
    EXPECT_EQ(a.path[step].quality.passing, b.path[step].quality.passing);
    EXPECT_EQ(a.path[step].quality.runs, b.path[step].quality.runs);
  }
  EXPECT_EQ(a.quality.density, b.quality.density);
  EXPECT_EQ(a.density.median, b.density.median);
  for (std::size_t k = 0; k < 3; ++k) EXPECT_EQ(a.parameters[k].restrictedIn, b.parameters[k].restrictedIn);
  EXPECT_EQ(a.parameters[1].lows.median, b.parameters[1].lows.median);
  for (std::size_t run = 0; run < runs; ++run) {
    EXPECT_EQ(a.runs.contains(run), b.runs.contains(2 * run));
    EXPECT_FALSE(b.runs.contains(2 * run + 1));
  }
}

TEST_F(BoxFound, LeavesOutTexts)
{
  addStrain();
  scan.parameters[1].values.assign(runs, 1.0); // the text alone tells it now
  for (std::size_t run = 0; run < runs; ++run)
    passing.set(run, scan.parameters[3].values[run] != 0.0 && valueOf(2, run) > 0.5);
  BoxOfRuns const box = find();
  EXPECT_THAT(box.leftOut, testing::SizeIs(1)) << "k0 does not vary";
  BoxParameter const& strain = box.parameters.back();
  EXPECT_TRUE(strain.isText && strain.isRestricted);
  ASSERT_EQ(strain.texts.size(), 3u);
  EXPECT_EQ(strain.texts[0].text, "a");
  EXPECT_FALSE(strain.texts[0].isInside);
  EXPECT_EQ(strain.texts[0].leftOut, 20u);
  EXPECT_TRUE(strain.texts[1].isInside && strain.texts[2].isInside);
  EXPECT_LT(strain.quasiP, 1e-6);
  EXPECT_TRUE(std::any_of(box.path.begin(), box.path.end(), [](BoxPathStep const& step) {
    return step.side == BoxSide::Text && step.text == "a" && std::isnan(step.limit);
  }));
}

TEST_F(BoxFound, TextsOfNoRunThatTakesPartAreUnknown)
{
  addStrain();
  scan.parameters[3].texts = {"a", "b", "c", "d"};
  scan.parameters[3].values[7] = 3.0;
  all.set(7, false);
  BoxOfRuns const box = find();
  EXPECT_EQ(box.parameters.back().texts.size(), 3u);
}

TEST_F(BoxFound, TooManyTextsAreLeftOutWithAReason)
{
  constexpr std::size_t many = 1001;
  ScanParameter names{labelled("name"), {}, {}};
  Values numbers;
  RunSet some(many);
  for (std::size_t run = 0; run < many; ++run) {
    names.values.push_back(static_cast<double>(run));
    names.texts.push_back("r" + std::to_string(run));
    numbers.push_back(static_cast<double>(run));
    some.set(run, run < 200);
  }
  scan = parameterScan({{"same", Values(many, 1.0)}, {"k", numbers}});
  scan.parameters.insert(scan.parameters.begin(), names);
  BoxOfRuns const box = findBox(scan, some, RunSet(many, true), method);
  ASSERT_EQ(box.leftOut.size(), 2u);
  EXPECT_EQ(box.leftOut[0].name, "name");
  EXPECT_EQ(box.leftOut[0].reason, "has 1001 texts; a box takes at most 1000");
  EXPECT_EQ(box.leftOut[1].name, "same");
  EXPECT_EQ(box.leftOut[1].parameter, 1u);
  ASSERT_EQ(box.parameters.size(), 1u);
  EXPECT_EQ(box.parameters[0].parameter, 2u);
  EXPECT_EQ(box.quality.density, 1.0);
  RunSet fewer(many, true);
  fewer.set(1000, false);
  EXPECT_EQ(findBox(scan, some, fewer, method).leftOut.size(), 1u) << "1,000 texts are not too many";
}

TEST_F(BoxFound, IsTheSameForAnyNumberOfThreads)
{
  auto const numbersOf = [&](unsigned threads, std::uint64_t seed) {
    method.seed = seed;
    ComparisonWork work;
    work.threads = threads;
    BoxOfRuns const box = findBox(scan, passing, all, method, work);
    Values numbers = {box.coverage.low, box.density.median, box.mass.high};
    for (BoxParameter const& parameter : box.parameters)
      for (double const number : {parameter.lows.low, parameter.highs.high, parameter.lows.median})
        if (!std::isnan(number)) numbers.push_back(number);
    return numbers;
  };
  EXPECT_EQ(numbersOf(1, 1), numbersOf(3, 1));
  EXPECT_NE(numbersOf(1, 1), numbersOf(1, 2)) << "another seed draws other halves";
}

TEST_F(BoxFound, CanBeStopped)
{
  int questions = 0;
  ComparisonWork work;
  work.cancelled = [&] { return ++questions > 1; };
  EXPECT_THROW((void)findBox(scan, passing, all, method, work), ComparisonCancelled);
  questions = -1000000;
  EXPECT_NO_THROW((void)findBox(scan, passing, all, method, work));
}

TEST_F(BoxFound, WithoutHalvesSaysNothingOfStability)
{
  method.resamples = 0;
  BoxOfRuns const box = find();
  EXPECT_EQ(box.density.count, 0u);
  EXPECT_TRUE(std::isnan(box.density.median));
  EXPECT_EQ(box.parameters[1].restrictedIn, 0u);
  EXPECT_THAT(box.warnings, IsEmpty());
}

TEST_F(BoxFound, RestrictsNothingIfAllRunsPassOrNone)
{
  passing = all;
  EXPECT_EQ(find().restricted, 0u);
  EXPECT_EQ(find().quality.density, 1.0);
  EXPECT_EQ(find().runs.count(), runs);
  passing = RunSet(runs);
  EXPECT_EQ(find().restricted, 0u);
  EXPECT_EQ(find().path.size(), 1u);
  EXPECT_TRUE(std::isnan(find().quality.coverage));
}

TEST_F(BoxFound, OfNoRunsOrOneIsEmpty)
{
  BoxOfRuns const none = findBox(scan, passing, RunSet(runs), method);
  EXPECT_THAT(none.parameters, IsEmpty());
  EXPECT_EQ(none.leftOut.size(), 3u);
  EXPECT_EQ(none.quality.runs, 0u);
  BoxOfRuns const one = findBox(scan, all, runSet(runs, {4}), method);
  EXPECT_EQ(one.quality.runs, 1u);
  EXPECT_EQ(one.restricted, 0u);
}

TEST_F(BoxFound, TakesInfiniteValuesForTheLargestAndSmallest)
{
  for (std::size_t run = 0; run < runs; ++run)
    if (valueOf(2, run) > 0.9) scan.parameters[2].values[run] = infinity;
  for (std::size_t run = 0; run < runs; ++run)
    if (valueOf(2, run) < 0.1) scan.parameters[2].values[run] = -infinity;
  BoxOfRuns const box = find();
  EXPECT_NEAR(box.parameters[2].low, 0.5, 0.05);
  for (std::size_t run = 0; run < runs; ++run)
    EXPECT_EQ(box.runs.contains(run), holds(box, scan, run)) << run;
}

TEST_F(BoxFound, WarnsOfMissingValues)
{
  for (std::size_t run = 0; run < 12; ++run) scan.parameters[0].values[run] = nan;
  scan.parameters[1].values[0] = nan;
  BoxOfRuns const box = find();
  ASSERT_THAT(kindsOf(box.warnings), ElementsAre("missing values"));
  EXPECT_EQ(box.warnings[0].text, "12 runs have no value of \"m\", 1 run has no value of \"k0\"");
  EXPECT_EQ(box.parameters[0].missing, 12u);
  EXPECT_FALSE(box.runs.contains(0)) << "nothing says that it lies inside";
}

TEST_F(BoxFound, WarnsOfFewPassingRuns)
{
  std::size_t left = 9;
  for (std::size_t run = 0; run < runs; ++run)
    if (passing.contains(run) && left-- == 0) {
      for (std::size_t later = run; later < runs; ++later) passing.set(later, false);
      break;
    }
  ASSERT_EQ(passing.count(), 9u);
  BoxOfRuns const box = find();
  ASSERT_FALSE(box.warnings.empty());
  EXPECT_EQ(box.warnings[0].text, "only 9 runs pass");
}

TEST_F(BoxFound, WarnsOfLimitsThatChanceMakes)
{
  RandomStream random(5, 0);
  for (std::size_t run = 0; run < runs; ++run) passing.set(run, random.below(5) == 0);
  method.leastCoverage = 0.3;
  method.resamples = 40;
  BoxOfRuns const box = find();
  ASSERT_GT(box.restricted, 0u);
  EXPECT_THAT(kindsOf(box.warnings), testing::Contains("weak limits"));
  EXPECT_LT(box.density.low, box.quality.density) << "other runs don't bear it out";
  method.largestQuasiP = 0.01;
  EXPECT_THAT(kindsOf(find().warnings), testing::Not(testing::Contains("weak limits")));
  EXPECT_LT(find().restricted, box.restricted);
}

TEST_F(BoxFound, WarnsIfMostHalvesDoNotRestrictAParameter)
{
  // Halves of so few runs find less than all of them.
  method.largestQuasiP = 0.05;
  for (std::size_t run = 0; run < runs; ++run) passing.set(run, run % 4 == 0 || valueOf(2, run) > 0.93);
  BoxOfRuns const box = find();
  for (BoxParameter const& parameter : box.parameters) {
    bool const isTold = std::any_of(box.warnings.begin(), box.warnings.end(), [&](auto const& warning) {
      return warning.kind == "not stable" &&
             warning.text.find('"' + parameter.name + '"') != std::string::npos;
    });
    EXPECT_EQ(isTold, parameter.isRestricted && 2 * parameter.restrictedIn < method.resamples)
        << parameter.name;
  }
}

TEST_F(BoxFound, RefusesNumbersOutOfRange)
{
  auto const refuses = [&](auto const& change) {
    BoxMethod bad = method;
    change(bad);
    EXPECT_THROW((void)findBox(scan, passing, all, bad), std::invalid_argument);
  };
  refuses([](BoxMethod& m) { m.peel = 0.0; });
  refuses([](BoxMethod& m) { m.peel = 1.0; });
  refuses([](BoxMethod& m) { m.peel = nan; });
  refuses([](BoxMethod& m) { m.leastMass = 1.5; });
  refuses([](BoxMethod& m) { m.leastCoverage = -0.1; });
  refuses([](BoxMethod& m) { m.largestQuasiP = nan; });
  EXPECT_THROW((void)findBox(scan, RunSet(3), all, method), std::invalid_argument);
  EXPECT_THROW((void)findBox(scan, passing, RunSet(3), method), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
