#include <runsieve/core/kernels/RankedSample.h>

#include <gmock/gmock.h>

#include <vector>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

using Values = std::vector<double>;

Values spread(AlignedSample const& sample)
{
  Values values(sample.sorted.size());
  spreadValues(sample.sorted, sample.range, values.data());
  return values;
}

TEST(AlignSample, KeepsASampleOfTheCommonLength)
{
  const ParameterBound bound{0.0, 10.0};
  const AlignedSample aligned = alignSample({1, 2, 5}, 3, &bound);
  EXPECT_THAT(aligned.sorted, ElementsAre(1, 2, 5));
  EXPECT_EQ(aligned.range.lower, 0.0);
  EXPECT_EQ(aligned.range.upper, 10.0);
  EXPECT_THAT(spread(aligned), ElementsAre(1, 2, 5));
}

TEST(AlignSample, StretchesAShorterSampleAndKeepsItsRange)
{
  const AlignedSample aligned = alignSample({1, 3}, 5, nullptr);
  EXPECT_THAT(spread(aligned), ElementsAre(1, 1.5, 2, 2.5, 3));
  EXPECT_EQ(aligned.range.upper, 3.0);
}

TEST(AlignSample, ASampleWithoutValuesIsAStepFromZeroToOne)
{
  const ParameterBound bound{7.0, 8.0};
  const AlignedSample aligned = alignSample({}, 4, &bound);
  EXPECT_TRUE(aligned.range.degenerate);
  EXPECT_THAT(spread(aligned), ElementsAre(0, 0.25, 0.5, 0.75));
  EXPECT_TRUE(alignSample({}, 0, &bound).sorted.empty());
}

TEST(SpreadValues, OfADegenerateRangeAreEvenOverTheWidenedRange)
{
  const AlignedSample aligned = alignSample({20}, 2, nullptr);
  EXPECT_THAT(spread(aligned), ElementsAre(19, 20)) << "5 % below and above";
}

} // namespace
} // namespace runsieve::test
