#include <runsieve/core/inference/CategoryComparison.h>
#include <runsieve/core/inference/SampleComparison.h>
#include <runsieve/core/live/LevelMarks.h>
#include <runsieve/core/live/OrderedMarks.h>

#include "RandomLiveScan.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace runsieve::test {
namespace {

using Marks = std::vector<std::uint8_t>;
using Runs = std::vector<std::uint32_t>;

/// Flips some of the marks and tells which.
Runs flipSome(Marks& marks, Dice& dice)
{
  Runs changed;
  std::size_t const every = 1 + dice.below(6);
  std::size_t const first = dice.below(marks.size());
  for (std::size_t run = first; run < marks.size(); ++run)
    if (dice.below(every) == 0) {
      marks[run] ^= 1u;
      changed.push_back(static_cast<std::uint32_t>(run));
    }
  return changed;
}

void expectSame(LargestDifference const& found, SampleComparison const& expected, double value)
{
  EXPECT_EQ(found.passing, expected.passing);
  EXPECT_EQ(found.others, expected.others);
  EXPECT_EQ(found.difference, expected.difference);
  if (expected.difference != 0) {
    EXPECT_EQ(value, expected.value);
  }
}

TEST(OrderedMarksTest, ManyRandomFlipsHaveTheDifferenceOfTheComparison)
{
  Dice dice(11);
  for (int scan = 0; scan < 150; ++scan) {
    std::size_t const runs = 1 + dice.below(scan % 3 == 0 ? 1000 : 130);
    std::size_t const kind = dice.below(kindsOfValues);
    std::vector<double> values;
    for (std::size_t run = 0; run < runs; ++run) values.push_back(valueOfKind(kind, dice));
    OrderedValues const ordered = orderedValues(values.data(), runs);
    OrderedMarks marked(ordered, runs);
    Marks marks(runs, 0);
    for (int flip = 0; flip < 20; ++flip) {
      LargestDifference const found = marked.largest();
      double const value = found.difference == 0 ? 0.0 : values[ordered.order[found.place]];
      expectSame(found, compareSamples(ordered, values.data(), marks.data()), value);
      marked.flip(flipSome(marks, dice));
    }
  }
}

TEST(OrderedMarksTest, DifferencesOfMoreThan32BitsAreExact)
{
  constexpr std::size_t runs = 150000;
  std::vector<double> values(runs);
  for (std::size_t run = 0; run < runs; ++run) values[run] = static_cast<double>(run);
  OrderedValues const ordered = orderedValues(values.data(), runs);
  OrderedMarks marked(ordered, runs);
  Runs upperHalf;
  for (std::size_t run = runs / 2; run < runs; ++run) upperHalf.push_back(static_cast<std::uint32_t>(run));
  marked.flip(upperHalf);
  LargestDifference const found = marked.largest();
  EXPECT_EQ(found.difference, std::int64_t{75000} * 75000);
  EXPECT_EQ(found.place, runs / 2 - 1);
}

/// The levels of values 0, 1, 2, ..., those that are NaN beyond all.
std::vector<std::uint32_t> levelsOf(std::vector<double> const& values)
{
  std::vector<std::uint32_t> levels;
  for (double const value : values)
    levels.push_back(std::isnan(value) ? 4000000000u : static_cast<std::uint32_t>(value));
  return levels;
}

TEST(LevelMarksTest, CumulativeStepsHaveTheDifferenceOfTheComparison)
{
  Dice dice(12);
  for (int scan = 0; scan < 150; ++scan) {
    std::size_t const runs = 1 + dice.below(400);
    std::vector<double> values;
    for (std::size_t run = 0; run < runs; ++run) values.push_back(valueOfKind(scan % 2 == 0 ? 2 : 4, dice));
    OrderedValues const ordered = orderedValues(values.data(), runs);
    LevelMarks marked(levelsOf(values), 3, Steps::CUMULATIVE);
    Marks marks(runs, 0);
    for (int flip = 0; flip < 20; ++flip) {
      LargestDifference const found = marked.largest();
      expectSame(found, compareSamples(ordered, values.data(), marks.data()),
                 static_cast<double>(found.place));
      marked.flip(flipSome(marks, dice), marks.data());
    }
  }
}

TEST(LevelMarksTest, EachGroupHasTheDifferenceOfCategories)
{
  Dice dice(13);
  for (int scan = 0; scan < 150; ++scan) {
    std::size_t const runs = 1 + dice.below(400);
    ScanParameter const parameter = textParameter(runs, dice);
    std::vector<std::int32_t> categories;
    for (double const value : parameter.values)
      categories.push_back(std::isnan(value) ? -1 : static_cast<std::int32_t>(value));
    LevelMarks marked(levelsOf(parameter.values), parameter.texts.size(), Steps::EACH_GROUP);
    Marks marks(runs, 0);
    for (int flip = 0; flip < 20; ++flip) {
      LargestDifference const found = marked.largest();
      CategoryComparison const expected =
          compareCategories(categories.data(), marks.data(), runs, parameter.texts.size());
      EXPECT_EQ(found.passing, expected.passing);
      EXPECT_EQ(found.others, expected.others);
      EXPECT_EQ(found.difference, expected.difference);
      if (expected.difference != 0) {
        EXPECT_EQ(static_cast<std::int32_t>(found.place), expected.category);
      }
      marked.flip(flipSome(marks, dice), marks.data());
    }
  }
}

} // namespace
} // namespace runsieve::test
