#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

double const nan = std::numeric_limits<double>::quiet_NaN();
double const infinity = std::numeric_limits<double>::infinity();

/// Three runs of three times with two outputs.
Scan threeRuns(std::vector<double> const& a)
{
  Scan scan;
  scan.time.name = "Time";
  scan.times = {0, 1, 2};
  scan.runs = {{"x", RunStatus::Complete, 3}, {"y", RunStatus::Complete, 3}, {"z", RunStatus::Complete, 3}};
  double* const first = scan.addOutput({"A", "", "", "Molecule"});
  std::copy(a.begin(), a.end(), first);
  double* const second = scan.addOutput({"B", "", "", ""});
  std::fill_n(second, 9, 7.0);
  scan.parameters.push_back({{"k", "", "", ""}, {1, nan, 3}, {}});
  scan.parameters.push_back({{"strain", "", "", ""}, {0, 1, nan}, {"wt", "mut"}});
  return scan;
}

std::vector<double> const whole = {1, 2, 3, 4, 5, 6, 7, 8, 9};

TEST(ScanRecord, ValuesOfARunStandTogether)
{
  Scan const scan = threeRuns(whole);
  EXPECT_EQ(scan.rows(), 9u);
  EXPECT_EQ(scan.valuesOf(0, 1)[0], 4);
  EXPECT_EQ(scan.valuesOf(0, 2)[2], 9);
  EXPECT_NO_THROW(scan.check());
}

TEST(ScanRecord, ColumnsAreFoundByFullAndBareName)
{
  Scan scan = threeRuns(whole);
  EXPECT_EQ(scan.findOutput("Molecule: A"), 0u);
  EXPECT_EQ(scan.findOutput("A"), 0u);
  EXPECT_EQ(scan.findOutput("B"), 1u);
  EXPECT_EQ(scan.findOutput("C"), std::nullopt);
  EXPECT_EQ(scan.findParameter("strain"), 1u);
  EXPECT_EQ(scan.findRun("z"), 2u);
  EXPECT_EQ(scan.findRun("q"), std::nullopt);
  scan.outputs[1].label = {"A", "", "", "Complex"};
  EXPECT_EQ(scan.findOutput("Complex: A"), 1u);
  EXPECT_THAT([&] { (void)scan.findOutput("A"); },
              ThrowsMessage<std::invalid_argument>(
                  "the output \"A\" could be \"Molecule: A\", \"Complex: A\"; give the full name"));
}

TEST(ScanRecord, AFreeNameThatIsMeantExactlyIsNoQuestion)
{
  Scan scan = threeRuns(whole);
  scan.outputs[1].label = {"A", "", "", ""};
  EXPECT_EQ(scan.findOutput("A"), 1u);
}

TEST(ScanRecord, StatusIsThatOfTheValues)
{
  Scan scan = threeRuns({1, 2, 3, 4, nan, 6, 7, 8, infinity});
  scan.findStatus();
  EXPECT_EQ(scan.runs[0].status, RunStatus::Complete);
  EXPECT_EQ(scan.runs[1].status, RunStatus::Failed) << "a value is missing";
  EXPECT_EQ(scan.runs[2].status, RunStatus::Failed) << "a value is infinite";
  EXPECT_EQ(scan.runs[1].end, 3u);
}

TEST(ScanRecord, ARunEndsWithItsLastValueOfAnyOutput)
{
  Scan scan = threeRuns({1, 2, nan, 4, nan, nan, nan, nan, nan});
  for (std::size_t i : {2, 4, 5, 6, 7, 8}) scan.outputs[1].values[i] = nan;
  scan.findStatus();
  EXPECT_EQ(scan.runs[0].status, RunStatus::Short);
  EXPECT_EQ(scan.runs[0].end, 2u);
  EXPECT_EQ(scan.runs[1].end, 1u);
  EXPECT_EQ(scan.runs[2].status, RunStatus::Failed) << "it has no value at all";
  EXPECT_EQ(scan.runs[2].end, 0u);
  scan.outputs[1].values[2] = 1;
  scan.findStatus();
  EXPECT_EQ(scan.runs[0].status, RunStatus::Failed) << "one output ends before the other";
}

TEST(ScanRecord, WhatHasFailedStaysSo)
{
  Scan scan = threeRuns(whole);
  scan.runs[1].status = RunStatus::Failed;
  scan.findStatus();
  EXPECT_EQ(scan.runs[1].status, RunStatus::Failed);
  EXPECT_EQ(scan.runs[1].end, 3u);
  EXPECT_STREQ(statusName(RunStatus::Failed), "failed");
  EXPECT_STREQ(statusName(RunStatus::Short), "short");
  EXPECT_STREQ(statusName(RunStatus::Complete), "complete");
}

TEST(ScanRecord, CheckTellsWhatDoesNotHold)
{
  std::vector<std::pair<std::function<void(Scan&)>, std::string>> const faults = {
      {[](Scan& scan) { scan.times.clear(); }, "times"},
      {[](Scan& scan) { scan.times[1] = 0; }, "times"},
      {[](Scan& scan) { scan.times[2] = nan; }, "times"},
      {[](Scan& scan) { scan.times[2] = infinity; }, "times"},
      {[](Scan& scan) { scan.runs.clear(); }, "one run"},
      {[](Scan& scan) { scan.outputs.clear(); }, "one output"},
      {[](Scan& scan) { scan.runs[2].key = "x"; }, "keys"},
      {[](Scan& scan) { scan.runs[2].end = 4; }, "more times"},
      {[](Scan& scan) { scan.outputs[1].label = scan.outputs[0].label; }, "names of outputs"},
      {[](Scan& scan) { scan.outputs[1].values.reset(); }, "has values"},
      {[](Scan& scan) { scan.parameters[1].label.name = "k"; }, "names of parameters"},
      {[](Scan& scan) { scan.parameters[0].values.pop_back(); }, "one value per run"},
      {[](Scan& scan) { scan.parameters[1].values[0] = 2; }, "text parameter"},
      {[](Scan& scan) { scan.parameters[1].values[0] = -1; }, "text parameter"},
      {[](Scan& scan) { scan.parameters[1].values[0] = 0.5; }, "text parameter"}};
  for (auto const& [spoil, words] : faults) {
    Scan scan = threeRuns(whole);
    spoil(scan);
    EXPECT_THAT([&scan = scan] { scan.check(); }, ThrowsMessage<std::invalid_argument>(HasSubstr(words)));
  }
}

TEST(RunSet, BeginsEmptyOrFull)
{
  EXPECT_EQ(RunSet(3).count(), 0u);
  EXPECT_EQ(RunSet(3, true).count(), 3u);
  EXPECT_EQ(RunSet(3, true).complement(), RunSet(3));
  EXPECT_EQ(RunSet().runs(), 0u);
}

TEST(RunSet, MembersAreJoinedCutAndTakenAway)
{
  RunSet a(5);
  RunSet b(5);
  for (std::size_t run : {0, 1, 2}) a.set(run);
  for (std::size_t run : {2, 3}) b.set(run);
  EXPECT_THAT((RunSet(a) &= b).members(), ElementsAre(2));
  EXPECT_THAT((RunSet(a) |= b).members(), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT((RunSet(a) -= b).members(), ElementsAre(0, 1));
  EXPECT_THAT(a.complement().members(), ElementsAre(3, 4));
  a.set(1, false);
  EXPECT_THAT(a.members(), ElementsAre(0, 2));
  EXPECT_TRUE(a.contains(2));
  EXPECT_FALSE(a.contains(1));
  EXPECT_NE(a, b);
  EXPECT_THROW(a &= RunSet(4), std::invalid_argument);
  EXPECT_THROW(a |= RunSet(6), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
