#include <runsieve/core/inference/RandomStream.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace runsieve::test {

TEST(RandomStream, givesTheSameNumbersOnEveryMachine)
{
  RandomStream stream(1, 0);
  std::array<std::uint32_t, 5> numbers{};
  for (std::uint32_t& number : numbers) number = stream.below(1000);
  EXPECT_EQ(numbers, (std::array<std::uint32_t, 5>{441, 328, 744, 391, 254}));
}

TEST(RandomStream, differsBySeedAndByStream)
{
  auto firstOf = [](std::uint64_t seed, std::uint64_t stream) {
    return RandomStream(seed, stream).below(1u << 31);
  };
  EXPECT_NE(firstOf(1, 0), firstOf(2, 0));
  EXPECT_NE(firstOf(1, 0), firstOf(1, 1));
  EXPECT_NE(firstOf(1, 2), firstOf(2, 1));
}

TEST(RandomStream, drawsEachNumberBelowTheBoundAboutEquallyOften)
{
  RandomStream stream(7, 3);
  std::array<int, 6> counts{};
  for (int i = 0; i < 60000; ++i) ++counts.at(stream.below(6));
  // Chi-square with 5 degrees of freedom: 20.5 is exceeded once in 1,000 seeds.
  double chiSquare = 0.0;
  for (int const count : counts) chiSquare += (count - 10000.0) * (count - 10000.0) / 10000.0;
  EXPECT_LT(chiSquare, 20.5);
}

TEST(RandomStream, knowsOnlyZeroBelowOne)
{
  EXPECT_EQ(RandomStream(9, 9).below(1), 0u);
}

} // namespace runsieve::test
