#include "CoreScan.h"
#include "RandomScan.h"

#include "app/view/QuietLibrary.h"
#include "app/view/RankTable.h"
#include "app/view/ScanPlot.h"
#include "support/PlotScene.h"

#include <runsieve/core/compare/Comparison.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace runsieve::test {
namespace {

bool anyPasses(std::vector<bool> const& passing)
{
  return std::find(passing.begin(), passing.end(), true) != passing.end();
}

/// Rows that let exactly these runs pass: theirs at some times, and those of others at one time fewer.
std::vector<long long> rowsThatPass(RandomScan& scan, std::vector<bool> const& passing)
{
  std::vector<int> times;
  for (int t = 0; t < scan.shape.times; ++t)
    if (t == 0 || scan.below(3) == 0) times.push_back(t);
  std::vector<long long> rows;
  for (std::size_t run = 0; run < passing.size(); ++run) {
    const int missed = times[static_cast<std::size_t>(scan.below(static_cast<int>(times.size())))];
    for (int time : times)
      if (passing[run] || (time != missed && anyPasses(passing)))
        rows.push_back(static_cast<long long>(run) * scan.shape.times + time);
  }
  return rows;
}

/// What has been seen in all scans, so that the test is known to cover it.
struct Seen
{
  int scans = 0;
  int significant = 0;
  int leftOut = 0;
  int withoutOthers = 0;
  int missingMedians = 0;
};

void expectSame(std::vector<ParameterComparison> const& found,
                std::vector<app::RankedParameter> const& expected)
{
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_EQ(found[i].name, expected[i].name) << i;
    EXPECT_TRUE(sameNumber(found[i].p, expected[i].p)) << i << ": " << found[i].p << ", " << expected[i].p;
    EXPECT_TRUE(sameNumber(found[i].d, expected[i].d)) << i << ": " << found[i].d << ", " << expected[i].d;
    EXPECT_TRUE(sameNumber(found[i].medianPassing, expected[i].medianPassing)) << i;
    EXPECT_TRUE(sameNumber(found[i].medianOthers, expected[i].medianOthers)) << i;
    EXPECT_EQ(found[i].significant, expected[i].significant) << i;
  }
}

void compare(unsigned seed, Seen& seen)
{
  RandomScan random(seed);
  const std::vector<bool> passing = random.passingRuns();
  app::ViewOptions options;
  options.pThreshold = random.even();
  options.ksThreshold = 0.5 * random.even();
  PlotScene plot;
  const app::QuietLibrary quiet;
  app::showScan(plot.container, random.table, options);

  const Scan scan = coreScan(*random.table);
  RunSet passingRuns(scan.runs.size());
  for (std::size_t run = 0; run < passing.size(); ++run) passingRuns.set(run, passing[run]);
  const Comparison found = compareParameters(scan, passingRuns, {options.pThreshold, options.ksThreshold});
  seen.leftOut += static_cast<int>(found.leftOut.size());
  ASSERT_EQ(found.leftOut.size() + plot.settings().parameterColumns.size(), scan.parameters.size());
  if (plot.settings().parameterColumns.empty()) return;

  app::selectRows(plot.container, rowsThatPass(random, passing));
  const std::vector<app::RankedParameter> expected = app::rankedParameters(plot.container);
  expectSame(found.parameters, expected);
  if (passingRuns.count() > 0) {
    EXPECT_EQ(app::survivingRuns(plot.container), passingRuns.count());
  }
  ++seen.scans;
  seen.withoutOthers += passingRuns.count() == scan.runs.size();
  for (ParameterComparison const& c : found.parameters) {
    seen.significant += c.significant;
    seen.missingMedians += std::isnan(c.medianPassing);
  }
}

TEST(CoreRank, HasTheNumbersOfThePlotToTheLastBit)
{
  Seen seen;
  for (unsigned seed = 1; seed <= 400; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    compare(seed, seen);
    if (HasFatalFailure()) return;
  }
  EXPECT_GE(seen.scans, 200);
  EXPECT_GE(seen.significant, 20);
  EXPECT_GE(seen.leftOut, 20);
  EXPECT_GE(seen.withoutOthers, 20);
  EXPECT_GE(seen.missingMedians, 5);
}

} // namespace
} // namespace runsieve::test
