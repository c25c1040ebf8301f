#include <runsieve/core/kernels/ParameterOrder.h>

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace runsieve {

inline bool operator==(RunPart a, RunPart b)
{
  return a.run == b.run && a.count == b.count;
}

} // namespace runsieve

namespace runsieve::test {
namespace {

using Values = std::vector<double>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

ParameterOrder orderOf(Values const& column, long long stride)
{
  return {column.data(), static_cast<long long>(column.size()), stride};
}

std::vector<RunPart> partsOf(std::vector<long long> const& rows, long long stride)
{
  RowSpans spans;
  for (long long row : rows) spans.append(row);
  return runParts(spans, stride);
}

TEST(ParameterOrderTest, EachRunCountsByItsFirstRow)
{
  EXPECT_THAT(orderOf({4, 4, 2, 2, 4, 4, 1}, 2).sorted(), ElementsAre(1, 2, 4, 4));
}

TEST(ParameterOrderTest, TellsWhetherEveryRunHasOneValue)
{
  EXPECT_TRUE(orderOf({4, 4, 2, 2, nan, nan, 1}, 2).constantWithinRuns());
  EXPECT_FALSE(orderOf({4, 4, 2, 3}, 2).constantWithinRuns());
  EXPECT_FALSE(orderOf({4, 4, 2, 2, 1, 1, 1, 0}, 4).constantWithinRuns());
  EXPECT_FALSE(orderOf({0.0, -0.0}, 2).constantWithinRuns()) << "by bits";
}

TEST(ParameterOrderTest, AgreesWithTheRowsThatItWasMadeOf)
{
  const ParameterOrder order = orderOf({4, 4, 2, 2, 7, 7}, 2);
  const auto parts = partsOf({1, 2, 3, 4}, 2);
  EXPECT_TRUE(order.agreesWith(parts, Values{4, 2, 2, 7}.data()));
  EXPECT_FALSE(order.agreesWith(parts, Values{5, 2, 2, 7}.data()));
  EXPECT_FALSE(order.agreesWith(parts, Values{4, 2, 5, 7}.data()));
  EXPECT_FALSE(order.agreesWith(parts, Values{4, 2, 2, 5}.data()));
  EXPECT_TRUE(order.agreesWith({}, nullptr));
}

TEST(ParameterOrderTest, RowsAreSplitWhereRunsEnd)
{
  EXPECT_THAT(partsOf({0, 1, 2, 3, 4, 5, 6}, 3),
              ElementsAreArray({RunPart{0, 3}, RunPart{1, 3}, RunPart{2, 1}}));
  EXPECT_THAT(partsOf({2, 3, 8}, 3), ElementsAreArray({RunPart{0, 1}, RunPart{1, 1}, RunPart{2, 1}}));
  EXPECT_THAT(partsOf({0, 2, 11, 12}, 3),
              ElementsAreArray({RunPart{0, 1}, RunPart{0, 1}, RunPart{3, 1}, RunPart{4, 1}}));
}

} // namespace
} // namespace runsieve::test
