#include "RankedPlot.h"

#include <gmock/gmock.h>
#include <vtkStringArray.h>

#include <cmath>

using testing::DoubleEq;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;
using testing::SizeIs;

namespace runsieve::test {
namespace {

const std::string mismatch =
    "Warning void PlotContainer::generateRankedParameters(vtkSmartPointer<vtkTable>, size_t): the number of "
    "parameter columns does not match the number of parameter bounds\n";

std::string oddList(int size, int expected)
{
  return "Huston we have a problem. Encountered a parameter list with size " + std::to_string(size) +
         ", expected " + std::to_string(expected) + "\n";
}

/// The sorted values and ranks of each parameter.
using RankedParametersTest = RankedPlot;

TEST_F(RankedParametersTest, RanksAndSortedValuesAlternateInParameterOrder)
{
  setParameters({{3, 1, 2}, {30, 20, 10}}, {{0, 5}, {0, 50}});
  generateAll();
  ASSERT_THAT(container.tables, SizeIs(2));
  EXPECT_THAT(columnNames(container.tables[0]),
              ElementsAre("Rank of k1", "Sorted k1", "Rank of k2", "Sorted k2"));
  EXPECT_THAT(columnNames(container.tables[1]),
              ElementsAre("Density of k1", "Locations of k1", "Density of k2", "Locations of k2"));
  EXPECT_EQ(container.tables[0]->GetNumberOfRows(), 3);
  EXPECT_EQ(container.tables[1]->GetNumberOfRows(), 200);
  for (int table : {0, 1})
    for (int column = 0; column < 4; ++column)
      EXPECT_TRUE(vtkDoubleArray::SafeDownCast(container.tables[table]->GetColumn(column))) << column;
}

TEST_F(RankedParametersTest, RanksRiseToOneOverTheSortedValues)
{
  generateOne({4, 1, 3, 2}, 0, 5);
  EXPECT_THAT(sorted(), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(rank(), ElementsAre(0.25, 0.5, 0.75, 1.0));
  EXPECT_EQ(warnings + messages, "");
}

TEST_F(RankedParametersTest, AllRunsCountOnceByTheirFirstRowAndDuplicatesStay)
{
  setParameters({{7, 70, 71, 5, 50, 51, 7, 72, 73}}, {{0, 10}});
  container.metaData->setStride(3);
  generateAll();
  EXPECT_THAT(sorted(), ElementsAre(5, 7, 7));
}

TEST_F(RankedParametersTest, AShortLastRunCountsToo)
{
  setParameters({{1, 9, 9, 2, 9, 9, 3}}, {{0, 10}});
  container.metaData->setStride(3);
  generateAll();
  EXPECT_THAT(sorted(), ElementsAre(1, 2, 3));
}

TEST_F(RankedParametersTest, AStrideBelowOneReadsEveryRow)
{
  for (int stride : {0, -3}) {
    container.metaData->setStride(stride);
    generateOne({3, 1, 2}, 0, 5);
    EXPECT_THAT(sorted(), ElementsAre(1, 2, 3)) << stride;
  }
}

TEST_F(RankedParametersTest, ASideTableCountsEachDistinctValueOfAllRows)
{
  setParameters({{1, 2, 3}}, {{0, 10}});
  container.metaData->setStride(3);
  generate(parameterTable({{7, 7, 7, 5, 5, 5, 7}}), 3);
  EXPECT_THAT(sorted("k1", 3), ElementsAre(5, 7));
  EXPECT_THAT(rank("k1", 3), ElementsAre(0.5, 1.0));
}

TEST_F(RankedParametersTest, TheTableVectorGrowsAsFarAsNeededAndKeepsWhatItHolds)
{
  setParameters({{1, 2}}, {{0, 10}});
  generate(parameterTable({{5, 6}}), 3);
  ASSERT_THAT(container.tables, SizeIs(5));
  EXPECT_FALSE(container.tables[0] || container.tables[1] || container.tables[2]);
  auto* kept = container.tables[4].Get();
  generateAll();
  ASSERT_THAT(container.tables, SizeIs(5));
  EXPECT_EQ(container.tables[4], kept);
}

TEST_F(RankedParametersTest, OnlyTheMainTableMakesTheRankedTablesValid)
{
  setParameters({{1, 2}}, {{0, 10}});
  generate(parameterTable({{5, 6}}), 0);
  EXPECT_FALSE(container.metaData->rankedParametersValid);
  generateAll();
  EXPECT_TRUE(container.metaData->rankedParametersValid);
}

TEST_F(RankedParametersTest, CallingTwiceDoublesNoColumn)
{
  setParameters({{1, 2, 4}, {5, 6, 8}}, {{0, 10}, {0, 10}});
  generateAll();
  const Sample before = density("k2");
  generateAll();
  EXPECT_EQ(container.tables[0]->GetNumberOfColumns(), 4);
  EXPECT_EQ(container.tables[1]->GetNumberOfColumns(), 4);
  EXPECT_THAT(columnNames(container.tables[0]),
              ElementsAre("Rank of k1", "Sorted k1", "Rank of k2", "Sorted k2"));
  EXPECT_EQ(density("k2"), before);
}

TEST_F(RankedParametersTest, ASecondCallRenewsValuesAndRowCount)
{
  generateOne({1, 2, 4}, 0, 10);
  generateOne({9, 8, 7, 6, 5}, 0, 10);
  EXPECT_THAT(sorted(), ElementsAre(5, 6, 7, 8, 9));
  EXPECT_THAT(rank(), SizeIs(5));
}

TEST_F(RankedParametersTest, ColumnsOfAParameterThatIsGoneDoNotStay)
{
  setParameters({{1, 2}, {3, 4}, {5, 6}}, {{0, 9}, {0, 9}, {0, 9}});
  generateAll();
  container.metaData->parameterColumns = {2};
  container.parameterBounds = {{0, 9}};
  generateAll();
  EXPECT_THAT(columnNames(container.tables[0]), ElementsAre("Rank of k3", "Sorted k3"));
  EXPECT_EQ(container.tables[1]->GetNumberOfColumns(), 2);
}

TEST_F(RankedParametersTest, WithoutParametersTheTablesAreEmptyAndNothingIsSaid)
{
  container.parameterBounds = {{0, 1}};
  generateAll();
  ASSERT_THAT(container.tables, SizeIs(2));
  ASSERT_TRUE(container.tables[0] && container.tables[1]);
  EXPECT_EQ(container.tables[0]->GetNumberOfColumns() + container.tables[1]->GetNumberOfColumns(), 0);
  EXPECT_TRUE(container.metaData->rankedParametersValid);
  EXPECT_EQ(warnings + messages, "");
}

TEST_F(RankedParametersTest, MissingBoundsAreReportedOncePerCall)
{
  setParameters({{1, 2}, {3, 4}}, {{0, 5}});
  generateAll();
  EXPECT_EQ(warnings, mismatch);
  EXPECT_EQ(messages, "");
  EXPECT_THAT(sorted("k2"), ElementsAre(3, 4));
}

TEST_F(RankedParametersTest, AShorterListIsReportedAndStretchedByInterpolation)
{
  setParameters({{1}, {2}, {3}}, {{0, 9}, {0, 9}, {0, 9}});
  generate(parameterTable({{1, 2, 3}, {5, 5, 5}, {4, 4, 6}}), 3);
  EXPECT_EQ(messages, oddList(1, 3) + oddList(2, 3));
  EXPECT_THAT(sorted("k1", 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(sorted("k2", 3), ElementsAre(5, 5, 5));
  EXPECT_THAT(sorted("k3", 3), ElementsAre(4, 5, 6));
  EXPECT_THAT(rank("k2", 3), ElementsAre(DoubleEq(1.0 / 3), DoubleEq(2.0 / 3), 1.0));
}

TEST_F(RankedParametersTest, AConstantParameterWithEqualBoundsIsAStepInTheMiddle)
{
  generateOne({2, 2, 2, 2, 2}, 2, 2);
  EXPECT_THAT(rank(), ElementsAre(0, 0, 1, 1, 1));
  const double lower = 2 * 0.95, width = 2 * 1.05 - 2 * 0.95;
  EXPECT_THAT(sorted(), Pointwise(DoubleEq(), Sample{lower, lower + width / 5, lower + 2 * width / 5,
                                                     lower + 3 * width / 5, lower + 4 * width / 5}));
}

TEST_F(RankedParametersTest, AConstantParameterWithoutBoundsIsAStepToo)
{
  setParameters({{2, 2, 2, 2}}, {});
  generateAll();
  EXPECT_EQ(warnings, mismatch);
  EXPECT_THAT(rank(), ElementsAre(0, 0, 1, 1));
  EXPECT_DOUBLE_EQ(sorted().front(), 1.9);
}

TEST_F(RankedParametersTest, AConstantParameterInsideItsBoundsIsNoSpecialCase)
{
  generateOne({2, 2, 2, 2}, 1, 3);
  EXPECT_THAT(rank(), ElementsAre(0.25, 0.5, 0.75, 1.0));
  EXPECT_THAT(sorted(), Each(2.0));
}

TEST_F(RankedParametersTest, ANegativeConstantRunsBackwards)
{
  setParameters({{-2, -2, -2, -2}}, {});
  generateAll();
  EXPECT_THAT(sorted(), ElementsAre(DoubleEq(-1.9), DoubleEq(-1.95), DoubleEq(-2.0), DoubleEq(-2.05)));
  EXPECT_THAT(rank(), ElementsAre(0, 0, 1, 1));
}

TEST_F(RankedParametersTest, ZeroWithAnOpenBoundStaysUsable)
{
  generateOne({0, 0, 0, 0}, 0, infinity);
  EXPECT_THAT(rank(), ElementsAre(0, 0, 1, 1));
  EXPECT_THAT(density(), SizeIs(200));
}

TEST_F(RankedParametersTest, AnEmptyTableGivesEmptyRanksAndFlatDensities)
{
  setParameters({{1, 2}, {1, 2}}, {{0, 10}, {5, 7}});
  generate(parameterTable({{}, {}}), 3);
  EXPECT_EQ(warnings + messages, "");
  EXPECT_THAT(columnNames(container.tables[3]),
              ElementsAre("Rank of k1", "Sorted k1", "Rank of k2", "Sorted k2"));
  EXPECT_EQ(container.tables[3]->GetNumberOfRows(), 0);
  EXPECT_THAT(density("k2", 3), testing::AllOf(SizeIs(200), Each(0.0)));
  EXPECT_NEAR(location("k2", 3).front(), 5.0, 1e-12);
  EXPECT_NEAR(location("k2", 3).back(), 7.0, 1e-12);
}

TEST_F(RankedParametersTest, AnEmptyTableWithoutBoundsIsEmptyToo)
{
  setParameters({{1, 2}}, {});
  generate(parameterTable({{}}), 3);
  EXPECT_EQ(warnings, mismatch);
  EXPECT_THAT(sorted("k1", 3), IsEmpty());
  EXPECT_THAT(density("k1", 3), testing::AllOf(SizeIs(200), Each(0.0)));
}

TEST_F(RankedParametersTest, WithoutTypedNamesTheColumnNameServesWithoutItsPrefix)
{
  setParameters({{1, 2}}, {{0, 10}});
  container.typedColumnNames.clear();
  generateAll();
  EXPECT_THAT(columnNames(container.tables[0]), ElementsAre("Rank of k1", "Sorted k1"));
}

TEST_F(RankedParametersTest, ANameShorterThanThePrefixIsEmpty)
{
  container.plotData = makeTable({{"k", {1, 2}}});
  container.metaData->parameterColumns = {0};
  container.parameterBounds = {{0, 10}};
  generateAll();
  EXPECT_THAT(columnNames(container.tables[0]), ElementsAre("Rank of ", "Sorted "));
}

TEST_F(RankedParametersTest, AParameterWhoseColumnIsMissingLeavesTheOthersAlone)
{
  setParameters({{1, 2}, {3, 4}}, {{0, 10}, {0, 10}});
  container.metaData->parameterColumns = {1, 9};
  generateAll();
  EXPECT_THAT(sorted("k2"), ElementsAre(3, 4));
}

TEST_F(RankedParametersTest, ATextColumnCountsAsAnEmptyList)
{
  setParameters({{1, 2}, {3, 4}}, {{0, 10}, {0, 10}});
  auto table = parameterTable({{1, 2}});
  vtkNew<vtkStringArray> text;
  text->SetName("Parameter: k2");
  text->InsertNextValue("a");
  text->InsertNextValue("b");
  table->AddColumn(text);
  generate(table, 3);
  EXPECT_THAT(sorted("k1", 3), ElementsAre(1, 2));
  EXPECT_EQ(messages, oddList(0, 2));
}

TEST_F(RankedParametersTest, TwoParametersOfOneNameDoNotCrash)
{
  setParameters({{1, 2}, {3, 4}}, {{0, 10}, {0, 10}});
  container.typedColumnNames[1].second = "k1";
  generateAll();
  EXPECT_EQ(countColumns(container.tables[0], "Sorted k1"), 1);
}

TEST_F(RankedParametersTest, ValuesThatAreNoNumbersSortLast)
{
  generateOne({std::nan(""), 3, 1}, 0, 10);
  ASSERT_THAT(sorted(), SizeIs(3));
  EXPECT_EQ(sorted()[0], 1.0);
  EXPECT_EQ(sorted()[1], 3.0);
  EXPECT_TRUE(std::isnan(sorted()[2]));
}

TEST_F(RankedParametersTest, ValuesChangedInPlaceAreReadAnew)
{
  generateOne({1, 2, 3}, 0, 100);
  vtkDoubleArray::SafeDownCast(container.plotData->GetColumn(0))->GetPointer(0)[0] = 50;
  generateAll();
  EXPECT_THAT(sorted(), ElementsAre(2, 3, 50));
}

TEST_F(RankedParametersTest, ANewStrideIsFollowed)
{
  generateOne({1, 2, 3, 4}, 0, 100);
  container.metaData->setStride(2);
  generateAll();
  EXPECT_THAT(sorted(), ElementsAre(1, 3));
}

TEST_F(RankedParametersTest, ManyRunsOfRandomLookingValuesAreSortedExactly)
{
  Sample values;
  for (int i = 0; i < 20000; ++i) values.push_back(std::sin(1.0 + i * 1234.567) * (i % 7 - 3));
  generateOne(values, -5, 5);
  std::sort(values.begin(), values.end());
  EXPECT_EQ(sorted(), values);
}

} // namespace
} // namespace runsieve::test
