#include <runsieve/core/inference/WilsonInterval.h>

#include <gtest/gtest.h>

namespace runsieve::test {

// prop.test(50, 1000, conf.level = 0.99, correct = FALSE) and the same of 0 of 10, R 4.2.2.
TEST(WilsonInterval, isThatOfR)
{
  Interval const some = wilsonInterval(50, 1000, 2.5758293035489004);
  EXPECT_NEAR(some.low, 0.035025075722532, 1e-12);
  EXPECT_NEAR(some.high, 0.070906972690534, 1e-12);
  Interval const none = wilsonInterval(0, 10, 2.5758293035489004);
  EXPECT_NEAR(none.low, 0.0, 1e-15);
  EXPECT_NEAR(none.high, 0.398854093304908, 1e-12);
}

TEST(WilsonInterval, isMirroredByTheOtherShare)
{
  Interval const one = wilsonInterval(3, 20, 1.96);
  Interval const other = wilsonInterval(17, 20, 1.96);
  EXPECT_NEAR(one.low, 1.0 - other.high, 1e-15);
  EXPECT_NEAR(one.high, 1.0 - other.low, 1e-15);
}

} // namespace runsieve::test
