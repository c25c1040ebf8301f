#include "support/Selections.h"

#include <runsieve/records/vtkPrepareKMeansTable.h>

#include <gmock/gmock.h>
#include <vtkDataObject.h>
#include <vtkIntArray.h>
#include <vtkNew.h>

#include <algorithm>
#include <cmath>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;

namespace runsieve::test {
namespace {

/// A stacked column as a table of runs and time points.
struct PrepareKMeansTest : testing::Test
{
  vtkNew<vtkPrepareKMeansTable> filter;
  vtkSmartPointer<vtkTable> output;

  void reshape(vtkTable* table, char const* column, int stride)
  {
    filter->SetInputData(table);
    filter->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_ROWS, column);
    filter->SetStride(stride);
    filter->Update();
    output = filter->GetOutput();
  }

  void reshape(std::vector<double> const& values, int stride)
  {
    reshape(makeTable({{"other", std::vector<double>(values.size(), -1.0)}, {"y", values}}), "y", stride);
  }

  std::vector<double> column(int time)
  {
    return numbers(vtkDataArray::SafeDownCast(output->GetColumn(time)));
  }
};

TEST_F(PrepareKMeansTest, OneRowPerRunAndOneColumnPerTimePoint)
{
  reshape({1, 2, 3, 4, 5, 6}, 3);
  EXPECT_EQ(output->GetNumberOfRows(), 2);
  ASSERT_EQ(output->GetNumberOfColumns(), 3);
  EXPECT_THAT(column(0), ElementsAre(1, 4));
  EXPECT_THAT(column(1), ElementsAre(2, 5));
  EXPECT_THAT(column(2), ElementsAre(3, 6));
}

TEST_F(PrepareKMeansTest, RowsAfterTheLastCompleteRunAreLeftOut)
{
  reshape({1, 2, 3, 4, 5}, 2);
  EXPECT_THAT(column(0), ElementsAre(1, 3));
  EXPECT_THAT(column(1), ElementsAre(2, 4));
}

TEST_F(PrepareKMeansTest, ByDefaultEachRowIsARun)
{
  EXPECT_EQ(filter->GetStride(), 1);
  reshape({7, 8, 9}, 1);
  ASSERT_EQ(output->GetNumberOfColumns(), 1);
  EXPECT_THAT(column(0), ElementsAre(7, 8, 9));
}

TEST_F(PrepareKMeansTest, AlphabeticalOrderOfTheNamesIsTheOrderOfTime)
{
  for (int times : {1, 9, 10, 11, 100, 101, 1000}) {
    reshape(std::vector<double>(2 * times, 0.0), times);
    const auto names = columnNames(output);
    ASSERT_EQ(names.size(), static_cast<std::size_t>(times));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end())) << times;
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end()) << times << ": names repeat";
    EXPECT_EQ(std::count(names.begin(), names.end(), ""), 0) << times;
    EXPECT_EQ(names.front().size(), names.back().size()) << times;
  }
}

TEST_F(PrepareKMeansTest, CellsAreDoublesWhateverTheInputHolds)
{
  vtkNew<vtkTable> table;
  table->AddColumn(makeColumn<vtkIntArray>("y", std::vector<int>{1, 2, 3, 4}));
  reshape(table, "y", 2);
  ASSERT_EQ(output->GetNumberOfColumns(), 2);
  for (int t : {0, 1}) EXPECT_TRUE(vtkDoubleArray::SafeDownCast(output->GetColumn(t)));
  EXPECT_THAT(column(1), ElementsAre(2, 4));
}

TEST_F(PrepareKMeansTest, ValuesThatAreNoNumbersPassThrough)
{
  reshape({std::nan(""), INFINITY, 3, -INFINITY}, 2);
  EXPECT_TRUE(std::isnan(column(0)[0]));
  EXPECT_THAT(column(1), ElementsAre(INFINITY, -INFINITY));
}

TEST_F(PrepareKMeansTest, FewerRowsThanARunGiveNoRow)
{
  reshape({1, 2}, 5);
  EXPECT_EQ(output->GetNumberOfRows(), 0);
  reshape(std::vector<double>{}, 5);
  EXPECT_EQ(output->GetNumberOfRows(), 0);
}

TEST_F(PrepareKMeansTest, AStrideBelowOneIsAnError)
{
  ErrorLog errors(filter);
  reshape({1, 2}, 0);
  EXPECT_THAT(errors.text(), HasSubstr("vtkPrepareKMeansTable"));
}

TEST_F(PrepareKMeansTest, AMissingColumnIsAnErrorOrEmptyButNoCrash)
{
  ErrorLog errors(filter);
  OutputWindowLog log;
  reshape(makeTable({{"y", {1, 2}}}), "z", 1);
  EXPECT_EQ(output->GetNumberOfRows(), 0);
}

TEST_F(PrepareKMeansTest, ANewStrideOrInputRunsAgain)
{
  reshape({1, 2, 3, 4}, 2);
  reshape({1, 2, 3, 4}, 4);
  EXPECT_EQ(output->GetNumberOfColumns(), 4);
  EXPECT_EQ(output->GetNumberOfRows(), 1);
}

TEST_F(PrepareKMeansTest, TheInputIsNotChanged)
{
  auto table = makeTable({{"y", {1, 2, 3, 4}}});
  reshape(table, "y", 2);
  vtkDoubleArray::SafeDownCast(output->GetColumn(0))->SetValue(0, 99.0);
  EXPECT_THAT(numbers(table, "y"), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(table->GetNumberOfColumns(), 1);
}

TEST_F(PrepareKMeansTest, PrintsItsStride)
{
  filter->SetStride(17);
  std::ostringstream out;
  filter->PrintSelf(out, vtkIndent());
  EXPECT_THAT(out.str(), HasSubstr("Stride: 17"));
}

} // namespace
} // namespace runsieve::test
