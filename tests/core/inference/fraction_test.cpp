#include <runsieve/core/inference/Fraction.h>

#include <gtest/gtest.h>

#include <limits>

namespace runsieve::test {

TEST(Fraction, comparesAllSmallFractionsLikeTheirProducts)
{
  for (std::uint64_t a = 0; a < 12; ++a)
    for (std::uint64_t b = 1; b < 12; ++b)
      for (std::uint64_t c = 0; c < 12; ++c)
        for (std::uint64_t d = 1; d < 12; ++d)
          EXPECT_EQ((Fraction{a, b} < Fraction{c, d}), a * d < c * b)
              << a << '/' << b << ' ' << c << '/' << d;
}

TEST(Fraction, comparesWhereFloatingPointCannot)
{
  std::uint64_t const most = std::numeric_limits<std::uint64_t>::max();
  Fraction const less{most - 2, most - 1};
  Fraction const more{most - 1, most};
  EXPECT_EQ(less.value(), more.value());
  EXPECT_TRUE(less < more);
  EXPECT_FALSE(more < less);
  EXPECT_FALSE((more < Fraction{(most - 2) / 2, most / 2}));
}

TEST(Fraction, hasOneValueHoweverWritten)
{
  EXPECT_FALSE((Fraction{1, 3} < Fraction{2000000000, 6000000000}));
  EXPECT_FALSE((Fraction{2000000000, 6000000000} < Fraction{1, 3}));
  EXPECT_FALSE((Fraction{0, 7} < Fraction{}));
}

} // namespace runsieve::test
