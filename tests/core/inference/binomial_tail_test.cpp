#include <runsieve/core/inference/BinomialTail.h>

#include <core/inference/CsvRows.h>

#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {

TEST(BinomialTail, isThatOfSciPy)
{
  for (auto const& row : csvRows("binomial_tails.csv")) {
    double const truth = std::stod(row[3]);
    double const tail = binomialUpperTail(std::stoull(row[0]), std::stoull(row[1]), std::stod(row[2]));
    EXPECT_LE(std::abs(tail - truth), 1e-10 * truth) << row[0] << " of " << row[1] << " at " << row[2];
  }
}

TEST(BinomialTail, isSureWithoutTrialsOrAtTheEndsOfP)
{
  EXPECT_EQ(binomialUpperTail(0, 0, 0.5), 1.0);
  EXPECT_EQ(binomialUpperTail(0, 5, 0.0), 1.0);
  EXPECT_EQ(binomialUpperTail(1, 5, 0.0), 0.0);
  EXPECT_EQ(binomialUpperTail(5, 5, 1.0), 1.0);
  EXPECT_EQ(binomialUpperTail(6, 5, 1.0), 0.0);
}

TEST(BinomialTail, goesToZeroWhereNoNumberIsSmallEnough)
{
  EXPECT_EQ(binomialUpperTail(1000000, 1000000, 0.001), 0.0);
}

} // namespace runsieve::test
