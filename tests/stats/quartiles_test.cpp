#include "support/OrderStatisticsFilters.h"
#include "support/PlotParts.h"
#include "support/ScanBuilder.h"
#include "support/Selections.h"

#include <boost/weak_ptr.hpp>
#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <cmath>
#include <cstring>
#include <utility>

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// Minimum, quartiles and maximum over the runs of the plotted column.
struct QuartilesTest : testing::Test
{
  PlotContainer container{nullptr};

  vtkTable* quartiles() { return container.quartileTable; }

  /// Column 0 holds the runs one below the other, column 1 the times 0, 1, 2, ...
  void setRuns(std::vector<std::vector<double>> const& runs)
  {
    std::vector<double> values, times;
    for (auto const& run : runs)
      for (std::size_t t = 0; t < run.size(); ++t) {
        values.push_back(run[t]);
        times.push_back(static_cast<double>(t));
      }
    container.plotData = makeTable({{"Molecule: A", values}, {": Time [s]", times}});
    container.metaData->xColumns = {1};
    container.metaData->yColumns = {0};
    container.metaData->setStride(runs.empty() ? 1 : static_cast<int>(runs[0].size()));
  }

  std::vector<double> valuesOf(int column)
  {
    return numbers(vtkDataArray::SafeDownCast(quartiles()->GetColumn(column)));
  }

  /// The five numbers of one time point.
  std::vector<double> at(int time)
  {
    std::vector<double> five;
    for (int column = 1; column <= 5; ++column) five.push_back(valuesOf(column).at(time));
    return five;
  }
};

/// What VTK's own filter says about one sample: minimum, quartiles, maximum.
std::vector<double> orderStatistics(std::vector<double> const& values)
{
  return numbers(filteredQuantiles(makeTable({{"x", values}})), "x");
}

/// Type, name and every bit of each cell of each column.
void expectSameColumn(vtkTable* found, vtkTable* wanted, vtkIdType number)
{
  vtkAbstractArray *column = found->GetColumn(number), *model = wanted->GetColumn(number);
  SCOPED_TRACE(model->GetName());
  EXPECT_STREQ(column->GetName(), model->GetName());
  EXPECT_STREQ(column->GetClassName(), model->GetClassName());
  EXPECT_EQ(column->GetNumberOfComponents(), model->GetNumberOfComponents());
  ASSERT_EQ(column->GetNumberOfTuples(), model->GetNumberOfTuples());
  if (auto* doubles = vtkDoubleArray::SafeDownCast(column)) {
    for (vtkIdType row = 0; row < doubles->GetNumberOfTuples(); ++row)
      EXPECT_EQ(std::memcmp(doubles->GetPointer(row), model->GetVoidPointer(row), sizeof(double)), 0) << row;
  } else {
    for (vtkIdType row = 0; row < column->GetNumberOfTuples(); ++row)
      EXPECT_EQ(column->GetVariantValue(row).ToString(), model->GetVariantValue(row).ToString()) << row;
  }
}

TEST_F(QuartilesTest, TheTableIsThatOfTheFiltersOfVtk)
{
  for (auto const& [runs, times] :
       {std::pair(1, 1), std::pair(3, 1), std::pair(7, 11), std::pair(1200, 12), std::pair(30, 101)}) {
    SCOPED_TRACE(testing::Message() << runs << " runs of " << times << " times");
    std::vector<std::vector<double>> values(runs, std::vector<double>(times));
    for (int run = 0; run < runs; ++run)
      for (int t = 0; t < times; ++t) values[run][t] = std::sin(1.7 * run + 0.3 * t) - 0.5 * (t == 3);
    setRuns(values);
    container.generateQuartiles();
    auto wanted = filteredQuartilesByTime(container.plotData, "Molecule: A", times);
    ASSERT_EQ(quartiles()->GetNumberOfColumns(), wanted->GetNumberOfColumns() + 3);
    for (vtkIdType c = 0; c < wanted->GetNumberOfColumns(); ++c) expectSameColumn(quartiles(), wanted, c);
  }
}

TEST_F(QuartilesTest, ColumnsHaveFixedPlacesAndOneRowPerTimePoint)
{
  setRuns({{1, 2, 3}, {4, 5, 6}});
  container.generateQuartiles();
  ASSERT_TRUE(quartiles());
  EXPECT_EQ(quartiles()->GetNumberOfRows(), 3);
  const auto names = columnNames(quartiles());
  ASSERT_THAT(names, SizeIs(9));
  EXPECT_THAT(std::vector<std::string>(names.begin() + 1, names.end()),
              ElementsAre("Minimum", "First Quartile", "Median", "Third Quartile", "Maximum", "Range",
                          "QRange", "Time"));
  EXPECT_TRUE(vtkStringArray::SafeDownCast(quartiles()->GetColumn(0)));
}

TEST_F(QuartilesTest, EachTimePointIsSummarisedOverAllRuns)
{
  setRuns({{1, 10, -1}, {2, 40, -2}, {3, 20, -3}, {4, 30, -4}});
  container.generateQuartiles();
  EXPECT_THAT(at(0), ElementsAre(1, 1.5, 2.5, 3.5, 4));
  EXPECT_THAT(at(1), ElementsAre(10, 15, 25, 35, 40));
  EXPECT_THAT(at(2), ElementsAre(-4, -3.5, -2.5, -1.5, -1));
}

TEST_F(QuartilesTest, QuartilesBetweenTwoRunsFollowTheFilterOfVtk)
{
  setRuns({{1}, {2}, {3}, {4}, {5}});
  container.generateQuartiles();
  EXPECT_THAT(at(0), ElementsAre(1, 1.5, 3, 4, 5));
  EXPECT_EQ(at(0), orderStatistics({1, 2, 3, 4, 5}));
}

TEST_F(QuartilesTest, EverySmallNumberOfRunsFollowsTheFilterOfVtk)
{
  std::vector<double> values;
  for (int runs = 1; runs <= 24; ++runs) {
    values.push_back(std::sin(1.7 * runs) * 10);
    std::vector<std::vector<double>> rows;
    for (double value : values) rows.push_back({value});
    setRuns(rows);
    container.generateQuartiles();
    EXPECT_EQ(at(0), orderStatistics(values)) << runs << " runs";
  }
}

TEST_F(QuartilesTest, MoreThanAThousandDifferentValuesAreBinnedAsTheFilterDoesIt)
{
  for (int runs : {1000, 1001, 2503, 5000}) {
    std::vector<double> values;
    std::vector<std::vector<double>> rows;
    for (int r = 0; r < runs; ++r) {
      values.push_back(std::sin(1.7 * r) + 0.1 * std::cos(0.3 * r));
      rows.push_back({values.back()});
    }
    setRuns(rows);
    container.generateQuartiles();
    EXPECT_EQ(at(0), orderStatistics(values)) << runs << " runs";
  }
}

TEST_F(QuartilesTest, TiedValuesFollowTheFilterOfVtk)
{
  const std::vector<double> values{2, 2, 2, 1, 1, 3, 3, 3, 3, 2, 5};
  std::vector<std::vector<double>> rows;
  for (double value : values) rows.push_back({value});
  setRuns(rows);
  container.generateQuartiles();
  EXPECT_EQ(at(0), orderStatistics(values));
}

TEST_F(QuartilesTest, TimePointsPastTheNinthKeepTheirOrder)
{
  std::vector<double> run, later;
  for (int t = 0; t < 101; ++t) {
    run.push_back(t);
    later.push_back(t + 1000);
  }
  setRuns({run, later});
  container.generateQuartiles();
  EXPECT_EQ(valuesOf(1), run);
  EXPECT_EQ(valuesOf(5), later);
  EXPECT_EQ(numbers(quartiles(), "Time"), run);
}

TEST_F(QuartilesTest, BandsArePairsOfTheirBorders)
{
  setRuns({{1, 10}, {2, 40}, {3, 20}, {4, 30}});
  container.generateQuartiles();
  auto* range = vtkDoubleArray::SafeDownCast(quartiles()->GetColumnByName("Range"));
  auto* quartileRange = vtkDoubleArray::SafeDownCast(quartiles()->GetColumnByName("QRange"));
  ASSERT_TRUE(range && quartileRange);
  ASSERT_EQ(range->GetNumberOfComponents(), 2);
  ASSERT_EQ(quartileRange->GetNumberOfComponents(), 2);
  for (int t = 0; t < 2; ++t) {
    EXPECT_EQ(range->GetComponent(t, 0), at(t)[0]);
    EXPECT_EQ(range->GetComponent(t, 1), at(t)[4]);
    EXPECT_EQ(quartileRange->GetComponent(t, 0), at(t)[1]);
    EXPECT_EQ(quartileRange->GetComponent(t, 1), at(t)[3]);
  }
}

TEST_F(QuartilesTest, TheTimesOfTheFirstRunAreSharedNotCopied)
{
  setRuns({{1, 2, 3}, {4, 5, 6}});
  container.generateQuartiles();
  auto* time = vtkDoubleArray::SafeDownCast(quartiles()->GetColumnByName("Time"));
  auto* source = vtkDoubleArray::SafeDownCast(container.plotData->GetColumn(1));
  ASSERT_TRUE(time);
  EXPECT_EQ(time->GetNumberOfTuples(), 3);
  EXPECT_EQ(time->GetPointer(0), source->GetPointer(0));
}

TEST_F(QuartilesTest, TheTimesSurviveTheTableAndTheRecordTheyCameFrom)
{
  testing::internal::CaptureStdout(); // without a scene a redraw says so
  auto scan = makeScan({});
  boost::weak_ptr<LinePlotTable> watch = scan;
  container.setLinePlotTable(scan, true);
  testing::internal::GetCapturedStdout();
  scan.reset();
  vtkSmartPointer<vtkTable> kept = container.quartileTable;
  ASSERT_TRUE(kept);
  container.linePlotTable.reset();
  container.setPlotData(vtkSmartPointer<vtkTable>::New());
  EXPECT_FALSE(watch.expired()) << "the times are borrowed from the record";
  EXPECT_EQ(numbers(kept, "Time"), (std::vector<double>{0, 1, 2}));
}

TEST_F(QuartilesTest, ARunThatIsNotCompleteStaysOut)
{
  setRuns({{1, 2}, {3, 4}, {100}});
  container.metaData->setStride(2);
  container.generateQuartiles();
  EXPECT_EQ(valuesOf(5), (std::vector<double>{3, 4}));
}

TEST_F(QuartilesTest, WithoutAStrideTheFormerTableStays)
{
  setRuns({{1, 2}, {3, 4}});
  container.generateQuartiles();
  auto* former = quartiles();
  for (int stride : {0, -1}) {
    container.metaData->setStride(stride);
    container.generateQuartiles();
    EXPECT_EQ(quartiles(), former) << stride;
  }
}

TEST_F(QuartilesTest, WithoutACompleteRunTheFormerTableStays)
{
  setRuns({{1, 2}, {3, 4}});
  container.generateQuartiles();
  auto* former = quartiles();
  container.metaData->setStride(5);
  container.generateQuartiles();
  EXPECT_EQ(quartiles(), former);
  container.plotData = vtkSmartPointer<vtkTable>::New();
  container.metaData->setStride(2);
  container.generateQuartiles();
  EXPECT_EQ(quartiles(), former);
}

TEST_F(QuartilesTest, AColumnOutsideTheTableLeavesTheFormerTable)
{
  setRuns({{1, 2}, {3, 4}});
  container.generateQuartiles();
  auto* former = quartiles();
  for (int column : {-1, 2, 900}) {
    container.metaData->yColumns[0] = column;
    container.generateQuartiles();
    EXPECT_EQ(quartiles(), former) << column;
  }
}

TEST_F(QuartilesTest, OtherKindsOfNumbersAreConverted)
{
  setRuns({{1, 2}, {3, 4}});
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("x", std::vector<double>{0.5, 1.5, 0.5, 1.5}));
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("y", std::vector<double>{7, 8, 9, 10}));
  container.metaData->xColumns[0] = 2;
  container.metaData->yColumns[0] = 3;
  container.generateQuartiles();
  ASSERT_TRUE(quartiles());
  EXPECT_EQ(numbers(quartiles(), "Time"), (std::vector<double>{0.5, 1.5}));
  EXPECT_EQ(numbers(quartiles(), "Median"), (std::vector<double>{8, 9}));
}

TEST_F(QuartilesTest, EachCallReplacesTheTableAsAWhole)
{
  setRuns({{1, 2}, {3, 4}});
  container.generateQuartiles();
  vtkSmartPointer<vtkTable> former = container.quartileTable;
  setRuns({{5, 6, 7}, {8, 9, 10}});
  container.generateQuartiles();
  EXPECT_NE(container.quartileTable, former);
  EXPECT_EQ(former->GetNumberOfRows(), 2);
  EXPECT_EQ(quartiles()->GetNumberOfRows(), 3);
}

TEST_F(QuartilesTest, AnUndefinedValueDoesNotStopTheOtherTimePoints)
{
  setRuns({{1, std::nan("")}, {3, 4}});
  container.generateQuartiles();
  EXPECT_THAT(at(0), ElementsAre(1, 1, 2, 3, 3));
  EXPECT_THAT(valuesOf(1), SizeIs(2));
}

} // namespace
} // namespace runsieve::test
