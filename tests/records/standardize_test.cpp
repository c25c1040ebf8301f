#include <runsieve/records/standardize.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <vector>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::vector<double> standardized(std::vector<double> values)
{
  standardize(values);
  return values;
}

auto near(double value)
{
  return testing::DoubleNear(value, 1e-13);
}

TEST(StandardizeTest, GivesStandardScoresWithTheSampleDeviation)
{
  // x = np.array(...); (x - x.mean()) / x.std(ddof=1), NumPy 1.24.2, which is what R's scale(x) returns
  EXPECT_THAT(standardized({3.1, -0.4, 12.0, 7.25, 0.0}),
              ElementsAre(near(-0.2460246622479535), near(-0.9135334357889129), near(1.4513547904704858),
                          near(0.5454500263791839), near(-0.8372467188128032)));
  EXPECT_THAT(standardized({1, 2, 3, 4}), ElementsAre(near(-1.161895003862225), near(-0.3872983346207417),
                                                      near(0.3872983346207417), near(1.161895003862225)));
}

TEST(StandardizeTest, TwoValuesStandSymmetrically)
{
  double const half = std::sqrt(0.5);
  EXPECT_THAT(standardized({10, 20}), ElementsAre(near(-half), near(half)));
}

TEST(StandardizeTest, ScoresStayAsTheyAreTheSecondTime)
{
  std::vector<double> const once = standardized({3.1, -0.4, 12.0, 7.25, 0.0});
  std::vector<double> const twice = standardized(once);
  for (std::size_t i = 0; i < once.size(); ++i) EXPECT_NEAR(twice[i], once[i], 1e-14);
}

TEST(StandardizeTest, DoesNotDependOnOffsetAndUnit)
{
  std::vector<double> const scores = standardized({1, 2, 4});
  std::vector<double> const moved = standardized({1e9 + 1, 1e9 + 2, 1e9 + 4});
  std::vector<double> const small = standardized({1e-12, 2e-12, 4e-12});
  for (std::size_t i = 0; i < scores.size(); ++i) {
    EXPECT_NEAR(moved[i], scores[i], 1e-6);
    EXPECT_NEAR(small[i], scores[i], 1e-12);
  }
}

TEST(StandardizeTest, ASpreadWhoseSquareVanishesIsASpread)
{
  std::vector<double> const scores = standardized({1, 2, 4});
  std::vector<double> const tiny = standardized({1e-200, 2e-200, 4e-200});
  for (std::size_t i = 0; i < scores.size(); ++i) EXPECT_NEAR(tiny[i], scores[i], 1e-12);
}

TEST(StandardizeTest, ValuesWithoutSpreadBecomeZero)
{
  EXPECT_THAT(standardized({5, 5, 5}), Each(0.0));
  EXPECT_THAT(standardized({0.1, 0.1, 0.1}), Each(0.0));
  EXPECT_THAT(standardized({7}), ElementsAre(0.0));
  EXPECT_THAT(standardized({}), IsEmpty());
}

TEST(StandardizeTest, UndefinedAndInfiniteValuesCountForNothingAndStay)
{
  EXPECT_THAT(standardized({1, notANumber, 2, infinity, 3, -infinity}),
              ElementsAre(near(-1), IsNan(), near(0), infinity, near(1), -infinity));
  EXPECT_THAT(standardized({notANumber, 4}), ElementsAre(IsNan(), 0.0));
  EXPECT_THAT(standardized({notANumber, notANumber}), Each(IsNan()));
}

} // namespace
