#include "StabilityScene.h"

#include "app/explorer/parameters/Settling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {
namespace {

using Stage = app::Settling::Stage;

struct Settled : testing::Test, MadeStability
{
  [[nodiscard]] app::Settling settling(std::size_t i = 0)
  {
    return app::settlingOf(comparison, stability)[i];
  }
  [[nodiscard]] std::string words() { return app::settlingWords(comparison, stability).toStdString(); }
};

TEST_F(Settled, AParameterBeyondTheNoiseInEachPartIsSettledAtTheSmallest)
{
  add("k", true, {0.5, 0.5, 0.5});
  EXPECT_EQ(settling().stage, Stage::Settled);
  EXPECT_EQ(settling().share, 0.1);
}

TEST_F(Settled, APartInTheNoiseCountsForSmallerOnesToo)
{
  stability.sizes[1].noiseFloor = 0.6;
  add("k", true, {0.5, 0.5, 0.5});
  EXPECT_EQ(settling().stage, Stage::MoreRunsHelp) << "at 10 % it is beyond, at 50 % it is not";
  stability.sizes[1].noiseFloor = 0.2;
  stability.sizes[0].noiseFloor = 0.5;
  EXPECT_EQ(settling().stage, Stage::Settled);
  EXPECT_EQ(settling().share, 0.5) << "as large as the floor is not beyond it";
}

TEST_F(Settled, WhatIsWithinTheNoiseOfAllRunsIsNotSettledWhateverThePartsSay)
{
  add("k", true, {0.5, 0.5, 0.09});
  EXPECT_EQ(settling().stage, Stage::WithinNoise);
  EXPECT_TRUE(std::isnan(settling().share));
}

TEST_F(Settled, ParametersThatDoNotDifferAreToldApart)
{
  add("k", false, {0.5, 0.5, 0.5});
  EXPECT_EQ(settling().stage, Stage::NotSignificant);
  comparison.parameters[0].d = std::nan("");
  EXPECT_EQ(settling().stage, Stage::Unknown);
}

TEST_F(Settled, NothingIsKnownWithoutANoiseFloorOrWithoutParts)
{
  add("k", true, {0.5, 0.5, 0.5});
  stability.sizes[1].noiseFloor = std::nan("");
  EXPECT_EQ(settling().stage, Stage::Unknown);
  EXPECT_EQ(words(), "");
  stability.sizes.erase(stability.sizes.begin(), stability.sizes.begin() + 2);
  EXPECT_EQ(settling().stage, Stage::Unknown);
  stability.sizes.clear();
  EXPECT_EQ(settling().stage, Stage::Unknown);
}

TEST_F(Settled, WordsNameTheSettledParametersByThePartOfTheRuns)
{
  add("k1", true, {0.5, 0.5, 0.5});
  add("k2", true, {0.1, 0.3, 0.3});
  add("k3", true, {0.5, 0.5, 0.5});
  add("k4", false, {0.1, 0.1, 0.05});
  EXPECT_EQ(words(),
            "Settled: k1, k3 with 10 %; k2 with 50 % of the runs. Differences below d = 0.100 cannot be "
            "told from chance with these runs.");
}

TEST_F(Settled, WordsNameThoseThatNeedMoreRunsUnlessTheVerdictDoes)
{
  add("k1", true, {0.1, 0.1, 0.3});
  add("k2", true, {0.1, 0.1, 0.09});
  stability.verdict = EnoughRuns::WithinNoiseFloor;
  EXPECT_THAT(words(), testing::StartsWith("More runs would help: k1."));
  stability.verdict = EnoughRuns::MoreWouldHelp;
  EXPECT_EQ(words(), "");
}

TEST_F(Settled, WordsNameAFewOfManyParameters)
{
  for (int i = 0; i < 20; ++i) add("k" + std::to_string(i), true, {0.5, 0.5, 0.5});
  EXPECT_THAT(words(), testing::StartsWith("Settled: k0, k1, k2, k3, k4 and 15 more with 10 % of the runs."));
}

TEST_F(Settled, TheVerdictIsThatOfTheComparisonAsASentence)
{
  stability.verdictText = "enough for what was found";
  EXPECT_EQ(app::verdictSentence(stability), "Enough for what was found.");
}

} // namespace
} // namespace runsieve::test
