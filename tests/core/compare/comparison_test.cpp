#include <runsieve/core/compare/Comparison.h>

#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> namesOf(std::vector<ParameterComparison> const& parameters)
{
  std::vector<std::string> names;
  for (ParameterComparison const& c : parameters) names.push_back(c.name);
  return names;
}

ParameterComparison const& named(std::string const& name, Comparison const& comparison)
{
  for (ParameterComparison const& c : comparison.parameters)
    if (c.name == name) return c;
  throw std::out_of_range(name);
}

std::vector<std::string> kindsOf(Comparison const& comparison)
{
  std::vector<std::string> kinds;
  for (ComparisonWarning const& warning : comparison.warnings) kinds.push_back(warning.kind);
  return kinds;
}

Values draws(std::size_t runs, unsigned seed)
{
  std::mt19937 random(seed);
  Values values;
  for (std::size_t i = 0; i < runs; ++i) values.push_back(static_cast<double>(random()) / 4294967296.0);
  return values;
}

RunSet firstRuns(std::size_t runs, std::size_t members)
{
  RunSet set(runs);
  for (std::size_t run = 0; run < members; ++run) set.set(run);
  return set;
}

/// A scan of 100 runs: "shifted" is larger in the first 30, "noise" and "more" are not.
Scan shiftedScan()
{
  Values shifted = draws(100, 1);
  for (std::size_t run = 0; run < 30; ++run) shifted[run] += 0.6;
  return parameterScan({{"noise", draws(100, 2)}, {"shifted", shifted}, {"more", draws(100, 3)}});
}

TEST(CompareParameters, AParameterThatSeparatesTheRunsDiffersMost)
{
  Values apart;
  Values mixed;
  for (int run = 0; run < 40; ++run) {
    apart.push_back(run);
    mixed.push_back((run * 7) % 40);
  }
  const Comparison found =
      compareParameters(parameterScan({{"mixed", mixed}, {"apart", apart}}), firstRuns(40, 20));
  ASSERT_THAT(namesOf(found.parameters), ElementsAre("apart", "mixed"));
  ParameterComparison const& best = found.parameters[0];
  EXPECT_EQ(best.d, -1.0) << "the passing runs are the smaller ones";
  EXPECT_EQ(best.value, 19.0);
  EXPECT_EQ(best.passing, 20u);
  EXPECT_EQ(best.others, 20u);
  EXPECT_EQ(best.medianPassing, 9.5);
  EXPECT_EQ(best.medianOthers, 29.5);
  EXPECT_DOUBLE_EQ(best.p, 2.0 / 137846528820.0) << "two of choose(40, 20) ways";
  EXPECT_EQ(best.source, PSource::Exact);
  EXPECT_DOUBLE_EQ(best.area, 20.0 / 39.0);
  EXPECT_DOUBLE_EQ(best.medianShift, -20.0 / 19.5);
  EXPECT_DOUBLE_EQ(best.rangeShare, 19.0 / 39.0);
  EXPECT_TRUE(best.significant);
  EXPECT_EQ(best.parameter, 1u);
  EXPECT_FALSE(found.parameters[1].significant);
  EXPECT_EQ(found.passing, 20u);
  EXPECT_EQ(found.others, 20u);
}

TEST(CompareParameters, EachRunCountsOnce)
{
  // Of nine runs four share a value: the shares are those of runs, not of values.
  const Comparison found =
      compareParameters(parameterScan({{"k", {1, 1, 1, 1, 2, 3, 5, 6, 7}}}), runSet(9, {0, 1, 2, 3, 5}));
  EXPECT_DOUBLE_EQ(found.parameters.at(0).d, -0.8);
  EXPECT_EQ(found.parameters.at(0).value, 1.0);
  EXPECT_EQ(found.parameters.at(0).medianPassing, 1.0);
}

TEST(CompareParameters, MissingValuesAreLeftOutOfTheirParameterAlone)
{
  const Scan scan = parameterScan({{"k", {nan, 1, nan, 2, 3, nan}}, {"m", {1, 2, 3, 4, 5, 6}}});
  const Comparison found = compareParameters(scan, runSet(6, {0, 1, 3}));
  ParameterComparison const& k = named("k", found);
  EXPECT_EQ(k.passing, 2u);
  EXPECT_EQ(k.others, 1u);
  EXPECT_EQ(k.medianPassing, 1.5);
  EXPECT_EQ(k.medianOthers, 3.0);
  EXPECT_EQ(named("m", found).passing, 3u);
}

TEST(CompareParameters, AParameterThatNoPassingRunHasSaysNothing)
{
  const Comparison found = compareParameters(
      parameterScan({{"k", {nan, nan, 1, 2, 3}}, {"m", {1, 2, 3, 4, 5}}}), runSet(5, {0, 1}));
  ASSERT_THAT(namesOf(found.parameters), ElementsAre("m", "k")) << "what is not defined stands last";
  ParameterComparison const& k = found.parameters[1];
  EXPECT_EQ(k.passing, 0u);
  EXPECT_TRUE(std::isnan(k.d));
  EXPECT_TRUE(std::isnan(k.p));
  EXPECT_TRUE(std::isnan(k.pHolm));
  EXPECT_FALSE(k.significant);
  EXPECT_EQ(found.family, 1u) << "no test was made";
}

TEST(CompareParameters, WhatDoesNotVaryIsLeftOut)
{
  const Scan scan = parameterScan({{"same", {2, 2, 2, 2}},
                                   {"k", {1, 2, 3, 4}},
                                   {"gaps", {nan, 5, 5, nan}},
                                   {"zeros", {0.0, -0.0, 0.0, 0.0}}});
  const Comparison found = compareParameters(scan, runSet(4, {1}));
  EXPECT_THAT(namesOf(found.parameters), ElementsAre("k"));
  ASSERT_EQ(found.leftOut.size(), 3u);
  EXPECT_EQ(found.leftOut[0].name, "same");
  EXPECT_EQ(found.leftOut[0].reason, "does not vary");
  EXPECT_EQ(found.leftOut[1].name, "gaps");
  EXPECT_EQ(found.leftOut[1].parameter, 2u);
  EXPECT_EQ(found.leftOut[2].name, "zeros");
}

TEST(CompareParameters, TextsAreComparedByTheirShares)
{
  Scan scan = parameterScan({{"strain", {0, 1, 0, 1, 1, 0, 1, nan}}});
  scan.parameters[0].texts = {"wild type", "mutant"};
  const Comparison found = compareParameters(scan, runSet(8, {0, 2, 5, 7}));
  ASSERT_EQ(found.parameters.size(), 1u);
  ParameterComparison const& strain = found.parameters[0];
  EXPECT_TRUE(strain.isText);
  EXPECT_EQ(strain.passing, 3u) << "one has no strain";
  EXPECT_EQ(strain.others, 4u);
  EXPECT_EQ(strain.d, 1.0);
  EXPECT_EQ(strain.text, "wild type");
  EXPECT_EQ(strain.source, PSource::Permutation);
  // One of choose(7, 3) = 35 ways reaches this, or another with the roles changed: none.
  EXPECT_NEAR(strain.p, 1.0 / 35.0, 0.02);
  EXPECT_TRUE(std::isnan(strain.medianPassing));
}

TEST(CompareParameters, WithoutAPassingRunNothingIsDefined)
{
  const Comparison found = compareParameters(parameterScan({{"k", {1, 2, 3}}}), RunSet(3));
  ASSERT_EQ(found.parameters.size(), 1u);
  EXPECT_EQ(found.passing, 0u);
  EXPECT_TRUE(std::isnan(found.parameters[0].d));
  EXPECT_FALSE(found.parameters[0].significant);
  EXPECT_TRUE(std::isnan(found.noiseFloor));
}

TEST(CompareParameters, IfAllRunsPassNothingIsDefinedButTheirMedian)
{
  const Comparison found = compareParameters(parameterScan({{"k", {1, 2, 3}}}), RunSet(3, true));
  ASSERT_EQ(found.parameters.size(), 1u);
  EXPECT_TRUE(std::isnan(found.parameters[0].p));
  EXPECT_EQ(found.parameters[0].medianPassing, 2.0);
  EXPECT_TRUE(std::isnan(found.parameters[0].medianOthers));
  EXPECT_FALSE(found.parameters[0].significant);
}

TEST(CompareParameters, RunsThatTakeNoPartDoNotCount)
{
  const Scan scan = parameterScan({{"k", {1, 100, 2, 3, -7, 4}}, {"m", {5, 6, 5, 5, 8, 5}}});
  const Scan without = parameterScan({{"k", {1, 2, 3, 4}}, {"m", {5, 5, 5, 5}}});
  const Comparison a = compareParameters(scan, runSet(6, {0, 1, 2}), runSet(6, {0, 2, 3, 5}));
  const Comparison b = compareParameters(without, runSet(4, {0, 1}));
  ASSERT_THAT(namesOf(a.parameters), ElementsAre("k"));
  EXPECT_EQ(a.parameters[0].p, b.parameters.at(0).p);
  EXPECT_EQ(a.parameters[0].d, b.parameters.at(0).d);
  EXPECT_EQ(a.parameters[0].pPermutation, b.parameters.at(0).pPermutation);
  EXPECT_EQ(a.parameters[0].medianPassing, 1.5);
  EXPECT_EQ(a.parameters[0].medianOthers, 3.5);
  EXPECT_EQ(a.leftOut.at(0).name, "m") << "it varies only among the others";
  EXPECT_EQ(a.passing + a.others, 4u);
}

TEST(CompareParameters, SetsOfAnotherScanAreRefused)
{
  Scan scan = parameterScan({{"k", {1, 2, 3}}});
  EXPECT_THROW((void)compareParameters(scan, RunSet(2)), std::invalid_argument);
  EXPECT_THROW((void)compareParameters(scan, RunSet(3), RunSet(4)), std::invalid_argument);
  scan.parameters[0].values.pop_back();
  EXPECT_THROW((void)compareParameters(scan, RunSet(3)), std::invalid_argument);
}

TEST(CompareParameters, MethodsThatCannotBeFollowedAreRefused)
{
  const Scan scan = parameterScan({{"k", {1, 2, 3}}});
  auto const refused = [&](auto change) {
    ComparisonMethod method;
    change(method);
    EXPECT_THROW((void)compareParameters(scan, runSet(3, {0}), method), std::invalid_argument);
  };
  refused([](ComparisonMethod& m) { m.permutations = 0; });
  refused([](ComparisonMethod& m) { m.permutations = 1000001; });
  refused([](ComparisonMethod& m) { m.mostPermutations = 1000001; });
  refused([](ComparisonMethod& m) { m.gatesTried = 0; });
  refused([](ComparisonMethod& m) { m.gatesTried = 1000001; });
  refused([](ComparisonMethod& m) { m.thresholds.largestP = nan; });
  refused([](ComparisonMethod& m) { m.thresholds.largestP = 1.5; });
}

TEST(CompareParameters, TheNoiseFloorPartsWhatDiffersFromWhatDoesNot)
{
  const Comparison found = compareParameters(shiftedScan(), firstRuns(100, 30));
  EXPECT_EQ(found.permutations, 1000u);
  EXPECT_TRUE(found.isSettled);
  for (ParameterComparison const& c : found.parameters)
    EXPECT_EQ(c.pPermutation <= 0.05, std::fabs(c.d) > found.noiseFloor) << c.name;
  EXPECT_THAT(found.parameters.at(0).name, "shifted");
  EXPECT_LT(std::fabs(found.parameters.at(1).d), found.noiseFloor);
}

TEST(CompareParameters, SeveralThreadsGiveTheSame)
{
  const Scan scan = shiftedScan();
  ComparisonWork one;
  one.threads = 1;
  ComparisonWork three;
  three.threads = 3;
  const Comparison a = compareParameters(scan, firstRuns(100, 30), {}, one);
  const Comparison b = compareParameters(scan, firstRuns(100, 30), {}, three);
  EXPECT_EQ(a.noiseFloor, b.noiseFloor);
  EXPECT_EQ(a.permutations, b.permutations);
  for (std::size_t i = 0; i < a.parameters.size(); ++i)
    EXPECT_EQ(a.parameters[i].pPermutation, b.parameters[i].pPermutation);
}

TEST(CompareParameters, StopsWhenAskedTo)
{
  ComparisonWork work;
  work.cancelled = [] { return true; };
  EXPECT_THROW((void)compareParameters(shiftedScan(), firstRuns(100, 30), {}, work), ComparisonCancelled);
}

TEST(CompareParameters, OnlyTheAdjustmentThatIsAskedForDecides)
{
  const Scan scan = shiftedScan();
  for (Adjustment const adjustment :
       {Adjustment::Permutation, Adjustment::Holm, Adjustment::BenjaminiHochberg, Adjustment::None}) {
    ComparisonMethod method;
    method.adjustment = adjustment;
    const Comparison found = compareParameters(scan, firstRuns(100, 30), method);
    for (ParameterComparison const& c : found.parameters)
      EXPECT_EQ(c.significant, isSignificant(adjustedP(c, adjustment), c.d, method.thresholds))
          << adjustmentName(adjustment) << ' ' << c.name;
    ParameterComparison const& shifted = named("shifted", found);
    EXPECT_TRUE(shifted.significant);
    EXPECT_DOUBLE_EQ(shifted.pHolm, 3.0 * shifted.p) << "the smallest of three";
    EXPECT_DOUBLE_EQ(shifted.pBenjaminiHochberg, 3.0 * shifted.p);
    EXPECT_DOUBLE_EQ(shifted.pPermutation, 1.0 / (1.0 + static_cast<double>(found.permutations)))
        << "no permutation reaches it";
  }
}

TEST(CompareParameters, GatesThatWereTriedMakeTheFamilyLarger)
{
  const Scan scan = shiftedScan();
  ComparisonMethod method;
  method.permutations = method.mostPermutations = 2000;
  const Comparison once = compareParameters(scan, firstRuns(100, 30), method);
  method.gatesTried = 10;
  const Comparison tenTimes = compareParameters(scan, firstRuns(100, 30), method);
  EXPECT_EQ(once.family, 3u);
  EXPECT_EQ(tenTimes.family, 30u);
  EXPECT_DOUBLE_EQ(named("shifted", tenTimes).pHolm, 30.0 * named("shifted", once).p);
  EXPECT_DOUBLE_EQ(named("shifted", tenTimes).pPermutation, 10.0 * named("shifted", once).pPermutation);
  EXPECT_EQ(named("noise", tenTimes).pPermutation, 1.0) << "no p-value is above 1";
  EXPECT_EQ(named("shifted", tenTimes).p, named("shifted", once).p);
  EXPECT_GT(tenTimes.noiseFloor, once.noiseFloor);
}

TEST(CompareParameters, WithoutPermutationsThereIsNoFloor)
{
  ComparisonMethod method;
  method.permutations = 0;
  method.adjustment = Adjustment::Holm;
  const Comparison found = compareParameters(shiftedScan(), firstRuns(100, 30), method);
  EXPECT_EQ(found.permutations, 0u);
  EXPECT_TRUE(std::isnan(found.noiseFloor));
  EXPECT_TRUE(std::isnan(found.parameters[0].pPermutation));
  EXPECT_TRUE(named("shifted", found).significant);
}

TEST(CompareParameters, CopiesAreOneTest)
{
  Scan scan = shiftedScan();
  ScanParameter copy = scan.parameters[1];
  copy.label.name = "falling copy";
  for (double& value : copy.values) value = -std::exp(value);
  scan.parameters.push_back(copy);
  const Comparison found = compareParameters(scan, firstRuns(100, 30));
  EXPECT_EQ(found.family, 3u);
  EXPECT_EQ(named("falling copy", found).pHolm, named("shifted", found).pHolm);
  EXPECT_EQ(named("falling copy", found).d, -named("shifted", found).d);
  ASSERT_THAT(kindsOf(found), ElementsAre("copies"));
  EXPECT_EQ(found.warnings[0].text, "\"shifted\" and \"falling copy\" order the runs alike");
}

TEST(ComparisonWarnings, TellOfSmallGroups)
{
  const Scan scan = shiftedScan();
  EXPECT_THAT(kindsOf(compareParameters(scan, firstRuns(100, 10))), IsEmpty());
  const Comparison few = compareParameters(scan, firstRuns(100, 9));
  EXPECT_THAT(few.warnings, ElementsAre(AllOf(Field(&ComparisonWarning::kind, "small group"),
                                              Field(&ComparisonWarning::text, "only 9 runs pass"),
                                              Field(&ComparisonWarning::advice, HasSubstr("more runs")))));
  EXPECT_EQ(compareParameters(scan, firstRuns(100, 1)).warnings.at(0).text, "only 1 run passes");
  EXPECT_EQ(compareParameters(scan, firstRuns(100, 99)).warnings.at(0).text, "only 1 run does not pass");
  EXPECT_EQ(compareParameters(scan, firstRuns(100, 91)).warnings.at(0).text, "only 9 runs do not pass");
}

TEST(ComparisonWarnings, TellThatThereIsNothingToCompare)
{
  const Scan scan = shiftedScan();
  auto const told = [](Comparison const& found) {
    return found.warnings.at(0).text + ": " + found.warnings.at(0).advice;
  };
  EXPECT_THAT(told(compareParameters(scan, firstRuns(100, 0))),
              HasSubstr("no run passes: there is nothing to compare"));
  EXPECT_THAT(told(compareParameters(scan, firstRuns(100, 100))),
              HasSubstr("every run passes: there is nothing to compare"));
  const Comparison none = compareParameters(scan, firstRuns(100, 10), firstRuns(100, 0));
  EXPECT_THAT(told(none), HasSubstr("no run is compared: only complete runs are"));
  ASSERT_FALSE(none.leftOut.empty());
  EXPECT_EQ(none.leftOut[0].reason, "has no complete run");
}

TEST(ComparisonWarnings, TellOfFewLevels)
{
  Values levels = draws(100, 4);
  for (double& value : levels) value = std::floor(4.0 * value);
  const Comparison found =
      compareParameters(parameterScan({{"k", draws(100, 5)}, {"dose", levels}}), firstRuns(100, 30));
  ASSERT_THAT(kindsOf(found), ElementsAre("few levels"));
  EXPECT_EQ(found.warnings[0].text, "\"dose\" has 4 values");
}

TEST(ComparisonWarnings, TellOfParametersThatAreCorrelatedByDesign)
{
  Values near = draws(100, 6);
  Values with = draws(100, 7);
  for (std::size_t i = 0; i < 100; ++i) with[i] = near[i] + 0.5 * with[i];
  const Comparison found =
      compareParameters(parameterScan({{"a", near}, {"b", draws(100, 8)}, {"c", with}}), firstRuns(100, 30));
  ASSERT_THAT(kindsOf(found), ElementsAre("correlated by design"));
  EXPECT_EQ(found.warnings[0].text, "correlated by design: \"a\" and \"c\" (0.90)");
}

TEST(ComparisonWarnings, TellOfASweepAndOfALattice)
{
  Values sweep;
  Values a;
  Values b;
  for (int run = 0; run < 100; ++run) {
    sweep.push_back(run);
    a.push_back(run / 10);
    b.push_back(run % 10);
  }
  EXPECT_THAT(kindsOf(compareParameters(parameterScan({{"k", sweep}}), firstRuns(100, 30))),
              ElementsAre("sweep"));
  EXPECT_THAT(kindsOf(compareParameters(parameterScan({{"a", a}, {"b", b}}), firstRuns(100, 35))),
              testing::Contains("lattice"));
}

TEST(ComparisonWarnings, TellOfASweepOfFewRunsAndNotOfOneWithTextsBeside)
{
  Values sweep;
  for (int run = 0; run < 11; ++run) sweep.push_back(0.1 * run);
  Scan scan = parameterScan({{"k", sweep}, {"same", Values(11, 3.0)}});
  EXPECT_THAT(kindsOf(compareParameters(scan, firstRuns(11, 4))), testing::Contains("sweep"));
  ScanParameter strain;
  strain.label = labelled("strain");
  strain.texts = {"WT", "mut"};
  for (int run = 0; run < 11; ++run) strain.values.push_back(run % 2);
  scan.parameters.push_back(strain);
  EXPECT_THAT(kindsOf(compareParameters(scan, firstRuns(11, 4))), testing::Not(testing::Contains("sweep")));
}

TEST(ComparisonWarnings, ALatinHypercubeOfOneParameterIsNoSweep)
{
  Values strata;
  for (int run = 0; run < 101; ++run) strata.push_back((run * run * run % 101 + 0.5) / 101);
  EXPECT_THAT(kindsOf(compareParameters(parameterScan({{"k", strata}}), firstRuns(101, 30))), IsEmpty());
}

TEST(ComparisonWarnings, OfVeryManyParametersTellOfCopiesAndThatNoOtherCorrelationsAreLookedFor)
{
  std::vector<std::pair<std::string, Values>> parameters;
  for (unsigned p = 0; p < 1001; ++p) parameters.emplace_back("k" + std::to_string(p), draws(40, p));
  parameters[700].second = parameters[3].second;
  ComparisonMethod method;
  method.permutations = method.mostPermutations = 20;
  const Comparison found = compareParameters(parameterScan(parameters), firstRuns(40, 15), method);
  ASSERT_THAT(kindsOf(found), ElementsAre("copies", "many parameters"));
  EXPECT_EQ(found.warnings[0].text, "\"k3\" and \"k700\" order the runs alike");
  EXPECT_THAT(found.warnings[1].text, HasSubstr("1001 parameters"));
  EXPECT_EQ(found.family, 1000u);
}

TEST(CompareParameters, AtAThresholdOf0Or1NothingHasToBeDecided)
{
  const Scan scan = parameterScan({{"a", draws(100, 1)}, {"b", draws(100, 2)}});
  for (double const threshold : {0.0, 1.0})
    for (std::size_t const tried : {1, 3}) {
      ComparisonMethod method;
      method.thresholds = {threshold, 0.0};
      method.gatesTried = tried;
      const Comparison found = compareParameters(scan, firstRuns(100, 30), method);
      EXPECT_EQ(found.permutations, 1000u) << threshold;
      EXPECT_TRUE(found.isSettled) << threshold;
      EXPECT_EQ(found.parameters[0].significant, threshold == 1.0);
    }
}

TEST(ComparisonWarnings, NameTheFirstOfMany)
{
  std::vector<std::pair<std::string, Values>> parameters;
  for (unsigned p = 0; p < 8; ++p) {
    Values levels = draws(100, 10 + p);
    for (double& value : levels) value = value < 0.5 ? 0.0 : 1.0;
    parameters.emplace_back("k" + std::to_string(p), levels);
  }
  const Comparison found = compareParameters(parameterScan(parameters), firstRuns(100, 30));
  EXPECT_THAT(found.warnings.at(0).text, testing::EndsWith("\"k4\" has 2 values and 3 more"));
}

TEST(IsSignificant, ThresholdsThemselvesAreSignificant)
{
  const Thresholds thresholds{0.25, 0.5};
  EXPECT_TRUE(isSignificant(0.25, 0.5, thresholds));
  EXPECT_TRUE(isSignificant(0.25, -0.5, thresholds)) << "the sign does not matter";
  EXPECT_FALSE(isSignificant(std::nextafter(0.25, 1), 0.5, thresholds));
  EXPECT_FALSE(isSignificant(0.25, std::nextafter(0.5, 0), thresholds));
  EXPECT_FALSE(isSignificant(nan, 0.5, thresholds));
  EXPECT_FALSE(isSignificant(0.25, nan, thresholds));
}

TEST(RankByDifference, OrdersBySignificanceThenPThenFallingD)
{
  auto const entry = [](std::string const& name, double p, double d, bool significant) {
    ParameterComparison c;
    c.name = name;
    c.pHolm = p;
    c.p = 0.5;
    c.d = d;
    c.significant = significant;
    return c;
  };
  std::vector<ParameterComparison> list = {entry("a", 0.001, 0.05, false), entry("n", nan, nan, false),
                                           entry("b", 0.01, 0.3, true),    entry("c", 0.01, -0.9, true),
                                           entry("d", 0.5, 0.2, false),    entry("e", 0.005, 0.2, true),
                                           entry("f", 0.01, 0.3, true)};
  rankByDifference(list, Adjustment::Holm);
  EXPECT_THAT(namesOf(list), ElementsAre("e", "c", "b", "f", "a", "d", "n"));
}

TEST(Adjustment, HasANameThatIsUnderstood)
{
  for (Adjustment const adjustment :
       {Adjustment::Permutation, Adjustment::Holm, Adjustment::BenjaminiHochberg, Adjustment::None})
    EXPECT_EQ(adjustmentNamed(adjustmentName(adjustment)), adjustment);
  EXPECT_STREQ(adjustmentName(Adjustment::BenjaminiHochberg), "bh");
  EXPECT_EQ(adjustmentNamed("bonferroni"), std::nullopt);
}

} // namespace
} // namespace runsieve::test
