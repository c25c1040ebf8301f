#include <runsieve/core/inference/ShuffledLabels.h>

#include <gtest/gtest.h>

#include <map>

namespace runsieve::test {

namespace {

/// The side of each run in a lane.
std::vector<int> sidesOf(ShuffledLabels const& labels, std::size_t sides, std::size_t runs, std::size_t lane)
{
  std::vector<int> result(runs, -1);
  std::vector<LaneBits> bits(runs);
  for (std::size_t side = 0; side < sides; ++side) {
    labels.mark(side, laneCount, bits);
    for (std::size_t run = 0; run < runs; ++run)
      if (bits[run] >> lane & 1) {
        EXPECT_EQ(result[run], -1) << "run " << run << " has two sides";
        result[run] = static_cast<int>(side);
      }
  }
  return result;
}

} // namespace

TEST(ShuffledLabels, dealEveryRunToOneSideOfTheSizeAskedFor)
{
  std::vector<std::uint32_t> const sizes = {2, 3, 7};
  ShuffledLabels labels(sizes);
  for (std::size_t lane = 0; lane < laneCount; ++lane) labels.shuffle(lane, RandomStream(1, lane));
  for (std::size_t lane = 0; lane < laneCount; ++lane) {
    std::map<int, std::uint32_t> counts;
    for (int const side : sidesOf(labels, 3, 12, lane)) ++counts[side];
    EXPECT_EQ(counts, (std::map<int, std::uint32_t>{{0, 2}, {1, 3}, {2, 7}}));
  }
}

TEST(ShuffledLabels, dealEveryWayAboutEquallyOften)
{
  ShuffledLabels labels({1, 2, 2}); // 30 ways
  std::map<std::vector<int>, double> counts;
  constexpr int deals = 30000;
  for (int i = 0; i < deals; ++i) {
    std::size_t const lane = static_cast<std::size_t>(i) % laneCount;
    labels.shuffle(lane, RandomStream(2, static_cast<std::uint64_t>(i)));
    if (lane + 1 == laneCount)
      for (std::size_t of = 0; of < laneCount; ++of) ++counts[sidesOf(labels, 3, 5, of)];
  }
  EXPECT_EQ(counts.size(), 30u);
  double chiSquare = 0.0;
  for (auto const& [sides, count] : counts) chiSquare += (count - 1000.0) * (count - 1000.0) / 1000.0;
  EXPECT_LT(chiSquare, 58.3); // 29 degrees of freedom: exceeded once in 1,000 seeds
}

TEST(ShuffledLabels, forgetFormerDealsOfALane)
{
  ShuffledLabels labels({4, 6});
  labels.shuffle(3, RandomStream(5, 1));
  std::vector<int> const first = sidesOf(labels, 2, 10, 3);
  labels.shuffle(3, RandomStream(5, 2));
  EXPECT_NE(sidesOf(labels, 2, 10, 3), first);
  labels.shuffle(3, RandomStream(5, 1));
  EXPECT_EQ(sidesOf(labels, 2, 10, 3), first);
}

TEST(ShuffledLabels, markOnlyTheLanesAskedFor)
{
  ShuffledLabels labels({4, 6});
  for (std::size_t lane = 0; lane < laneCount; ++lane) labels.shuffle(lane, RandomStream(1, lane));
  std::vector<LaneBits> bits(10, 0xffff);
  for (std::size_t side = 0; side < 2; ++side) {
    labels.mark(side, 3, bits);
    for (LaneBits const of : bits) EXPECT_EQ(of & ~7, 0);
  }
}

} // namespace runsieve::test
