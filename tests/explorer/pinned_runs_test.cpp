#include "app/explorer/document/PinnedRuns.h"

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

using app::PinnedRuns;
using testing::ElementsAre;

TEST(PinnedRuns, KeepTheirNumbersWhateverComesAndGoes)
{
  PinnedRuns pins;
  pins.set({7});
  pins.set({3, 7});
  EXPECT_EQ(pins.numberOf(7), 0u);
  EXPECT_EQ(pins.numberOf(3), 1u);
  pins.set({1, 3, 7});
  EXPECT_EQ(pins.numberOf(1), 2u);
  pins.set({1, 7});
  EXPECT_EQ(pins.numberOf(1), 2u);
  pins.set({1, 7, 9});
  EXPECT_EQ(pins.numberOf(9), 1u) << "the least that is free";
  EXPECT_THAT(pins.runs(), ElementsAre(1, 7, 9));
  EXPECT_THAT(pins.inOrder(), ElementsAre(7, 9, 1));
}

TEST(PinnedRuns, ThatComeTogetherAreNumberedInTheOrderOfTheScan)
{
  PinnedRuns pins;
  pins.set({5, 2, 9});
  EXPECT_THAT(pins.inOrder(), ElementsAre(2, 5, 9));
  pins.set({});
  EXPECT_TRUE(pins.runs().empty());
  pins.set({9});
  EXPECT_EQ(pins.numberOf(9), 0u);
}

TEST(PinnedRuns, OfAnOrderAreNumberedByItAndOnce)
{
  const PinnedRuns pins({8, 3, 8, 5});
  EXPECT_THAT(pins.inOrder(), ElementsAre(8, 3, 5));
  EXPECT_EQ(pins.numberOf(5), 2u);
}

} // namespace
} // namespace runsieve::test
