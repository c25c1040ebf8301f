#include <runsieve/core/kernels/ParameterOrder.h>
#include <runsieve/core/kernels/SortedSample.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;
using testing::SizeIs;

namespace runsieve::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using Sample = std::vector<double>;

Sample distinctOfRows(Sample const& rows)
{
  return sortedDistinct(rows.data(), rows.size());
}

/// By the order of the runs; a run for each value.
Sample distinctOfRuns(Sample const& runs, std::vector<unsigned char> const& mask)
{
  Sample found;
  const RunValues values(runs.data(), static_cast<long long>(runs.size()), 1);
  ParameterOrder(values).distinctOf(mask.data(), found);
  return found;
}

Sample distinctOfRuns(Sample const& runs)
{
  return distinctOfRuns(runs, std::vector<unsigned char>(runs.size(), 1));
}

TEST(SortedSample, EachValueCountsOnceWhereverItStands)
{
  EXPECT_THAT(distinctOfRows({3, 3, 1, 2, 2, 3, 1}), ElementsAre(1, 2, 3));
  EXPECT_THAT(distinctOfRuns({3, 3, 1, 2, 2, 3, 1}), ElementsAre(1, 2, 3));
  EXPECT_THAT(distinctOfRows({}), IsEmpty());
}

TEST(SortedSample, WhatStandsBeforeTheValuesDoesNotCount)
{
  const Sample values{5, 5, 6};
  EXPECT_THAT(sortedDistinct(values.data() + 1, 1), ElementsAre(5));
}

TEST(SortedSample, AllUndefinedValuesAreOneWhichStandsLast)
{
  const Sample values{nan, 5, -nan, nan, -infinity, 5, infinity, nan};
  for (Sample const& found : {distinctOfRows(values), distinctOfRuns(values)})
    EXPECT_THAT(found, ElementsAre(-infinity, 5, infinity, IsNan()));
  EXPECT_THAT(distinctOfRows({nan, nan}), ElementsAre(IsNan()));
  EXPECT_THAT(distinctOfRuns({nan, -nan}), ElementsAre(IsNan()));
}

TEST(SortedSample, OfTheMarkedRunsOnly)
{
  EXPECT_THAT(distinctOfRuns({4, nan, 2, nan, 3}, {1, 0, 1, 0, 0}), ElementsAre(2, 4));
  EXPECT_THAT(distinctOfRuns({4, nan, 2, nan, 3}, {0, 0, 1, 1, 0}), ElementsAre(2, IsNan()));
  EXPECT_THAT(distinctOfRuns({4, nan, 4, nan, 3}, {0, 1, 1, 1, 0}), ElementsAre(4, IsNan()));
  EXPECT_THAT(distinctOfRuns({4, nan, 2}, {0, 0, 0}), IsEmpty());
}

TEST(SortedSample, IsTheSameByRowsAndByRuns)
{
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    const auto levels = 1 + random() % 40;
    Sample runs, rows;
    std::vector<unsigned char> mask;
    for (int run = 0; run < 50; ++run) {
      const auto level = random() % levels;
      runs.push_back(level % 7 == 3 ? nan : static_cast<double>(level) - 5.0);
      mask.push_back(random() % 2);
      if (mask.back() != 0) rows.insert(rows.end(), 1 + random() % 3, runs.back());
    }
    const Sample byRuns = distinctOfRuns(runs, mask), byRows = distinctOfRows(rows);
    ASSERT_THAT(byRuns, testing::Pointwise(testing::NanSensitiveDoubleEq(), byRows)) << round;
  }
}

TEST(SortedSample, NumbersSortByValueAndUndefinedOnesLast)
{
  Sample values{nan, 2, -infinity, -nan, -1, infinity, -2.5};
  sortSample(values);
  ASSERT_THAT(values, SizeIs(7));
  EXPECT_THAT(Sample(values.begin(), values.begin() + 5), ElementsAre(-infinity, -2.5, -1, 2, infinity));
  EXPECT_THAT(Sample(values.begin() + 5, values.end()), testing::Each(IsNan()));
}

} // namespace
} // namespace runsieve::test
