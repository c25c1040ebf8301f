#include <runsieve/core/compare/Comparison.h>

#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> namesOf(std::vector<ParameterComparison> const& parameters)
{
  std::vector<std::string> names;
  for (ParameterComparison const& c : parameters) names.push_back(c.name);
  return names;
}

ParameterComparison entry(std::string const& name, double p, double d, bool significant)
{
  return {name, p, d, 0.0, 0.0, significant};
}

TEST(CompareParameters, AParameterThatSeparatesTheRunsDiffersMost)
{
  Values apart;
  Values mixed;
  for (int run = 0; run < 40; ++run) {
    apart.push_back(run);
    mixed.push_back((run * 7) % 40);
  }
  const Scan scan = parameterScan({{"mixed", mixed}, {"apart", apart}});
  RunSet passing(40);
  for (std::size_t run = 0; run < 20; ++run) passing.set(run);
  const Comparison found = compareParameters(scan, passing);
  ASSERT_THAT(namesOf(found.parameters), ElementsAre("apart", "mixed"));
  EXPECT_EQ(found.parameters[0].d, 1.0);
  EXPECT_LT(found.parameters[0].p, 1e-6);
  EXPECT_TRUE(found.parameters[0].significant);
  EXPECT_EQ(found.parameters[0].parameter, 1u);
  EXPECT_FALSE(found.parameters[1].significant);
  EXPECT_EQ(found.parameters[1].parameter, 0u);
}

TEST(CompareParameters, MediansAreThoseOfThePassingAndTheOtherRuns)
{
  const Scan scan = parameterScan({{"k", {9, 1, 16, 0, 25, 4, 36}}});
  const Comparison found = compareParameters(scan, runSet(7, {1, 3, 5}));
  EXPECT_EQ(found.parameters.at(0).medianPassing, 1.0) << "of 0, 1, 4";
  EXPECT_EQ(found.parameters.at(0).medianOthers, 20.5) << "of 9, 16, 25, 36";
}

TEST(CompareParameters, RunsOfOneValueCountOnce)
{
  const Scan often = parameterScan({{"k", {1, 1, 1, 1, 2, 3, 5, 6, 7}}});
  const Scan once = parameterScan({{"k", {1, 2, 3, 5, 6, 7}}});
  const Comparison a = compareParameters(often, runSet(9, {0, 1, 2, 3, 4, 5}));
  const Comparison b = compareParameters(once, runSet(6, {0, 1, 2}));
  EXPECT_EQ(a.parameters.at(0).p, b.parameters.at(0).p);
  EXPECT_EQ(a.parameters.at(0).d, b.parameters.at(0).d);
  EXPECT_EQ(a.parameters.at(0).medianPassing, 2.0);
}

TEST(CompareParameters, ShorterSamplesAreStretchedToTheLongest)
{
  // The lattice of "few" has 2 values where "many" has 5.
  const Scan scan = parameterScan({{"few", {0, 0, 1, 1, 1, 0, 1, 0}}, {"many", {1, 2, 3, 4, 5, 6, 7, 8}}});
  const Comparison found = compareParameters(scan, runSet(8, {0, 1, 2, 3, 4}));
  for (ParameterComparison const& c : found.parameters)
    if (c.name == "few") {
      EXPECT_EQ(c.medianPassing, 0.5) << "of 0, 1/4, 1/2, 3/4, 1";
      EXPECT_EQ(c.medianOthers, 0.5) << "of 0, 1/2, 1";
    }
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

TEST(CompareParameters, TextIsLeftOut)
{
  Scan scan = parameterScan({{"k", {1, 2, 3}}, {"strain", {0, 1, 0}}});
  scan.parameters[1].texts = {"wild type", "mutant"};
  const Comparison found = compareParameters(scan, runSet(3, {0}));
  EXPECT_THAT(namesOf(found.parameters), ElementsAre("k"));
  ASSERT_EQ(found.leftOut.size(), 1u);
  EXPECT_EQ(found.leftOut[0].name, "strain");
  EXPECT_EQ(found.leftOut[0].reason, "is text");
}

TEST(CompareParameters, MissingValuesAreOneValueAboveAllOthers)
{
  const Scan scan = parameterScan({{"k", {nan, 1, nan, 2, 3, nan}}});
  const Comparison found = compareParameters(scan, runSet(6, {0, 1, 2}));
  ASSERT_EQ(found.parameters.size(), 1u);
  EXPECT_TRUE(std::isnan(found.parameters[0].medianPassing)) << "of 1 and a missing one";
  EXPECT_EQ(found.parameters[0].medianOthers, 3.0) << "of 2, 3 and a missing one";
  EXPECT_LE(found.parameters[0].d, 1.0);
}

TEST(CompareParameters, WithoutAPassingRunThereIsNothing)
{
  const Scan scan = parameterScan({{"k", {1, 2, 3}}});
  EXPECT_THAT(compareParameters(scan, RunSet(3)).parameters, IsEmpty());
}

TEST(CompareParameters, IfAllRunsPassNothingDiffers)
{
  const Scan scan = parameterScan({{"k", {1, 2, 3}}});
  const Comparison found = compareParameters(scan, RunSet(3, true));
  ASSERT_EQ(found.parameters.size(), 1u);
  EXPECT_EQ(found.parameters[0].d, 0.0);
  EXPECT_EQ(found.parameters[0].medianPassing, 2.0);
  EXPECT_TRUE(std::isnan(found.parameters[0].medianOthers));
  EXPECT_FALSE(found.parameters[0].significant);
}

TEST(CompareParameters, RunsThatTakeNoPartDoNotCount)
{
  const Scan scan = parameterScan({{"k", {1, 100, 2, 3, -7, 4}}, {"m", {5, 6, 5, 5, 8, 5}}});
  const Scan without = parameterScan({{"k", {1, 2, 3, 4}}, {"m", {5, 5, 5, 5}}});
  const Comparison a = compareParameters(scan, runSet(6, {0, 1, 2}), {}, runSet(6, {0, 2, 3, 5}));
  const Comparison b = compareParameters(without, runSet(4, {0, 1}));
  ASSERT_THAT(namesOf(a.parameters), ElementsAre("k"));
  EXPECT_EQ(a.parameters[0].p, b.parameters.at(0).p);
  EXPECT_EQ(a.parameters[0].d, b.parameters.at(0).d);
  EXPECT_EQ(a.parameters[0].medianPassing, 1.5);
  EXPECT_EQ(a.parameters[0].medianOthers, 3.5);
  EXPECT_EQ(a.leftOut.at(0).name, "m") << "it varies only among the others";
}

TEST(CompareParameters, WithoutARunThatTakesPartThereIsNothing)
{
  const Scan scan = parameterScan({{"k", {1, 2, 3}}});
  EXPECT_THAT(compareParameters(scan, RunSet(3, true), {}, RunSet(3)).parameters, IsEmpty());
}

TEST(CompareParameters, SetsOfAnotherScanAreRefused)
{
  Scan scan = parameterScan({{"k", {1, 2, 3}}});
  EXPECT_THROW((void)compareParameters(scan, RunSet(2)), std::invalid_argument);
  EXPECT_THROW((void)compareParameters(scan, RunSet(3), {}, RunSet(4)), std::invalid_argument);
  scan.parameters[0].values.pop_back();
  EXPECT_THROW((void)compareParameters(scan, RunSet(3)), std::invalid_argument);
}

TEST(CompareParameters, InfiniteValuesAreValues)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Scan scan = parameterScan({{"up", {0, infinity, 0, 0}}, {"down", {-infinity, 1, 2, 3}}});
  for (std::size_t run = 0; run < 4; ++run)
    for (ParameterComparison const& c : compareParameters(scan, runSet(4, {run})).parameters) {
      EXPECT_GE(c.d, 0.0) << c.name << run;
      EXPECT_LE(c.d, 1.0) << c.name << run;
      EXPECT_LE(c.p, 1.0) << c.name << run;
    }
}

TEST(IsSignificant, ThresholdsThemselvesAreSignificant)
{
  const Thresholds thresholds{0.25, 0.5};
  EXPECT_TRUE(isSignificant(0.25, 0.5, thresholds));
  EXPECT_FALSE(isSignificant(std::nextafter(0.25, 1), 0.5, thresholds));
  EXPECT_FALSE(isSignificant(0.25, std::nextafter(0.5, 0), thresholds));
}

TEST(RankByDifference, OrdersBySignificanceThenPThenFallingD)
{
  std::vector<ParameterComparison> list = {entry("a", 0.001, 0.05, false), entry("b", 0.01, 0.3, true),
                                           entry("c", 0.01, 0.9, true),    entry("d", 0.5, 0.2, false),
                                           entry("e", 0.005, 0.2, true),   entry("f", 0.01, 0.3, true)};
  rankByDifference(list);
  EXPECT_THAT(namesOf(list), ElementsAre("e", "c", "b", "f", "a", "d"));
}

TEST(MedianOfSorted, IsTheMiddleOrTheMeanOfTwo)
{
  const Values values = {1, 2, 4, 8};
  EXPECT_EQ(medianOfSorted(values.data(), 4), 3.0);
  EXPECT_EQ(medianOfSorted(values.data(), 3), 2.0);
  EXPECT_TRUE(std::isnan(medianOfSorted(nullptr, 0)));
}

} // namespace
} // namespace runsieve::test
