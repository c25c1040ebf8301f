#include "support/PlotParts.h"

#include "app/view/ScanPlot.h"
#include "app/view/ShownComparison.h"

#include "app/cli/GatedScan.h"

#include "support/PlotScene.h"
#include "support/ScanBuilder.h"
#include <runsieve/core/gate/GateText.h>

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/items/vtkPlotStepLine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkDataArray.h>
#include <vtkPlot.h>
#include <vtkTable.h>

#include <cmath>
#include <limits>
#include <optional>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr int runs = 60;
constexpr int times = 2;

double scattered(int parameter, int run)
{
  const double turn = (run + 1) * std::sqrt(2.0 + 3.0 * parameter);
  return turn - std::floor(turn);
}

/// A composite view of 60 runs with ten parameters. Of the first 20 runs, which pass, k3 and k8 are larger,
/// k8 by more; k5 has three levels.
struct ShownComparisonTest : testing::Test, PlotScene
{
  boost::shared_ptr<LinePlotTable> record;
  Scan scan;
  std::optional<ParameterComparer> comparer;
  app::ShownComparison shown;

  void show(app::ViewOptions const& options = {})
  {
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.parameters = 10;
    shape.bounds.assign(10, {0.0, 3.0});
    shape.parameter = [](int p, int r) {
      const double value = scattered(p, r);
      if (p == 2) return value + (r < 20 ? 0.5 : 0.0);
      if (p == 7) return value + (r < 20 ? 1.0 : 0.0);
      return p == 4 ? std::floor(3.0 * value) : value;
    };
    record = makeScan(shape);
    scan = scanOf(record);
    app::showScan(container, record, options);
  }

  void selectFirst(int count)
  {
    std::vector<long long> rows;
    for (int run = 0; run < count; ++run) rows.push_back(static_cast<long long>(run) * times);
    app::selectRows(container, rows);
  }

  /// What is compared of the present selection.
  [[nodiscard]] app::ShownComparison compare(std::vector<Gate> const& gates = {},
                                             ComparisonMethod const& method = {})
  {
    return app::compareSelection(container, ParameterComparer(scan, app::eligibleRuns(scan, gates)), method);
  }

  void compareFirst(int count = 20)
  {
    selectFirst(count);
    comparer.emplace(scan, app::eligibleRuns(scan, {}));
    shown = app::compareSelection(container, *comparer, {});
    app::orderBy(container, shown.numbers);
    app::label(container, *comparer, shown);
  }

  [[nodiscard]] vtkChart* cell(int column, int row) { return container.chartMatrix->GetChart({column, row}); }
  [[nodiscard]] static std::string nameOf(vtkChart* chart)
  {
    return chart->GetAxis(vtkAxis::BOTTOM)->GetTitle();
  }

  /// Heights of a curve.
  static std::vector<double> heights(vtkPlot* plot)
  {
    return numbers(vtkDataArray::SafeDownCast(plot->GetInput()->GetColumn(1)));
  }
};

TEST_F(ShownComparisonTest, TheStrongestParametersStandFirst)
{
  show();
  compareFirst();
  EXPECT_EQ(nameOf(cell(0, 0)), "k8");
  EXPECT_EQ(nameOf(cell(1, 0)), "k3");
  EXPECT_EQ(container.shownParameters().size(), 4u);
}

TEST_F(ShownComparisonTest, OfSeveralRowsTheFirstStandsOnTop)
{
  app::ViewOptions options;
  options.pThreshold = 1.0;
  options.ksThreshold = 0.0;
  show(options);
  selectFirst(20);
  ComparisonMethod method;
  method.thresholds = {1.0, 0.0};
  shown = compare({}, method);
  app::orderBy(container, shown.numbers);
  // Ten parameters fill three rows, of which the last is not full.
  EXPECT_EQ(nameOf(cell(0, 0)), "k8") << "a row that isn't full cannot stand below";
  container.metaData->parameterColumns.resize(8);
  app::orderBy(container, shown.numbers);
  EXPECT_EQ(nameOf(cell(0, 1)), "k8");
  EXPECT_EQ(nameOf(cell(1, 1)), "k3");
}

TEST_F(ShownComparisonTest, TitlesTellDAdjustedPAndWhetherTheyDiffer)
{
  show();
  compareFirst();
  EXPECT_EQ(cell(0, 0)->GetTitle(), "d +1.00, p 0.001 *");
  EXPECT_THAT(cell(3, 0)->GetTitle(), EndsWith(" n.s."));
  EXPECT_EQ(app::chartTitle(-0.426, 1.234e-9, true), "d -0.43, p 1.2e-09 *");
  EXPECT_EQ(app::chartTitle(0.1, nan, false), "d +0.10 n.s.");
  EXPECT_EQ(app::chartTitle(nan, nan, false), "");
}

TEST_F(ShownComparisonTest, CurvesCountEachRunOnce)
{
  show();
  container.metaData->parameterColumns = {container.metaData->parameterColumns[4]};
  compareFirst();
  ASSERT_EQ(nameOf(cell(0, 0)), "k5");
  // Three levels, whose shares are those of the runs.
  const std::vector<double> all = heights(cell(0, 0)->GetPlot(0));
  ASSERT_EQ(all.size(), 3u);
  std::vector<double> shares(3);
  for (int run = 0; run < runs; ++run)
    for (int level = static_cast<int>(scan.parameters[4].values[static_cast<std::size_t>(run)]); level < 3;
         ++level)
      shares[static_cast<std::size_t>(level)] += 1.0 / runs;
  for (std::size_t level = 0; level < 3; ++level) EXPECT_NEAR(all[level], shares[level], 1e-12);
  EXPECT_EQ(heights(cell(0, 0)->GetPlot(1)).back(), 1.0);
}

TEST_F(ShownComparisonTest, TheNoiseFloorIsABandAroundTheOthers)
{
  show();
  compareFirst();
  vtkChart* chart = cell(0, 0);
  ASSERT_EQ(chart->GetNumberOfPlots(), 5);
  const std::vector<double> others = heights(chart->GetPlot(2));
  const std::vector<double> upper = heights(chart->GetPlot(3));
  const std::vector<double> lower = heights(chart->GetPlot(4));
  ASSERT_EQ(upper.size(), others.size());
  for (std::size_t i = 0; i < others.size(); ++i) {
    EXPECT_NEAR(upper[i], std::min(1.0, others[i] + shown.numbers.noiseFloor), 1e-12);
    EXPECT_NEAR(lower[i], std::max(0.0, others[i] - shown.numbers.noiseFloor), 1e-12);
  }
  EXPECT_TRUE(vtkPlotStepLine::SafeDownCast(chart->GetPlot(3))) << "a staircase like the others";
  app::label(container, *comparer, shown);
  EXPECT_EQ(chart->GetNumberOfPlots(), 5) << "once is enough";
}

TEST_F(ShownComparisonTest, DensitiesStayAsTheyAreButForTheirTitle)
{
  app::ViewOptions options;
  options.density = true;
  show(options);
  compareFirst();
  EXPECT_EQ(cell(0, 0)->GetNumberOfPlots(), 3);
  EXPECT_THAT(cell(0, 0)->GetTitle(), StartsWith("d +"));
}

TEST_F(ShownComparisonTest, RunsWithoutAValueAreInNoCurve)
{
  show();
  scan.parameters[7].values[0] = nan;
  compareFirst();
  ASSERT_EQ(nameOf(cell(0, 0)), "k8");
  EXPECT_EQ(heights(cell(0, 0)->GetPlot(0)).size(), 59u);
  EXPECT_EQ(heights(cell(0, 0)->GetPlot(1)).size(), 19u);
}

TEST_F(ShownComparisonTest, RunsThatAreNotCompleteAreNotCompared)
{
  show();
  scan.runs[0].status = RunStatus::Failed;
  compareFirst();
  EXPECT_EQ(shown.numbers.passing, 19u);
  EXPECT_EQ(comparer->eligible().count(), 59u);
}

TEST_F(ShownComparisonTest, WithoutASelectionThereIsNothingToCompare)
{
  show();
  EXPECT_THAT(compare().numbers.parameters, IsEmpty());
  compareFirst();
  app::clearSelection(container);
  EXPECT_THAT(compare().numbers.parameters, IsEmpty());
}

TEST_F(ShownComparisonTest, RunsThatAreNotCompleteCountIfTheyAreEligible)
{
  show();
  scan.runs[3].status = RunStatus::Short;
  selectFirst(20);
  const std::vector<Gate> gates = {parseGate("status short")};
  EXPECT_EQ(compare(gates).numbers.passing, 20u);
  EXPECT_EQ(compare().numbers.passing, 19u);
}

TEST_F(ShownComparisonTest, WhereNoEligibleRunPassesThereIsNothingToCompare)
{
  show();
  scan.runs[0].status = RunStatus::Failed;
  selectFirst(1);
  EXPECT_THAT(compare().numbers.parameters, IsEmpty());
}

TEST(RunsThrough, HaveARowAtEveryTimeThatAnyRowIsOf)
{
  EXPECT_THAT(app::runsThrough({}, 3, 2).members(), IsEmpty());
  EXPECT_THAT(app::runsThrough({0, 2}, 3, 2).members(), ElementsAre(0, 1));
  EXPECT_THAT(app::runsThrough({0, 2, 3}, 3, 2).members(), ElementsAre(1)) << "only this one at both times";
  EXPECT_THAT(app::runsThrough({5}, 3, 2).members(), ElementsAre(2));
}

} // namespace
} // namespace runsieve::test
