#include <runsieve/core/inference/AdjustedP.h>

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

namespace runsieve::test {

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

struct Case
{
  std::size_t family = 0;
  std::vector<double> p, holm, bh;
};

/// The cases of adjusted_p.csv: a line for each p-value.
std::vector<Case> casesOfTable()
{
  std::ifstream file(RUNSIEVE_SOURCE_DIR "/tests/core/inference/data/adjusted_p.csv");
  std::vector<Case> cases;
  std::string line;
  std::getline(file, line);
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::stringstream fields(line);
    std::vector<double> numbers;
    for (std::string field; std::getline(fields, field, ',');) numbers.push_back(std::stod(field));
    cases.resize(static_cast<std::size_t>(numbers.at(0)));
    cases.back().family = static_cast<std::size_t>(numbers.at(1));
    cases.back().p.push_back(numbers.at(2));
    cases.back().holm.push_back(numbers.at(3));
    cases.back().bh.push_back(numbers.at(4));
  }
  return cases;
}

void expectSame(std::vector<double> const& is, std::vector<double> const& expected)
{
  ASSERT_EQ(is.size(), expected.size());
  for (std::size_t i = 0; i < is.size(); ++i)
    if (std::isnan(expected[i]))
      EXPECT_TRUE(std::isnan(is[i])) << i;
    else
      EXPECT_DOUBLE_EQ(is[i], expected[i]) << i;
}

} // namespace

TEST(AdjustedP, areThoseOfR)
{
  std::vector<Case> const cases = casesOfTable();
  ASSERT_EQ(cases.size(), 12u);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE("case " + std::to_string(i + 1));
    expectSame(holmAdjusted(cases[i].p, cases[i].family), cases[i].holm);
    expectSame(benjaminiHochbergAdjusted(cases[i].p, cases[i].family), cases[i].bh);
  }
}

TEST(AdjustedP, ofNoTestsAreNone)
{
  EXPECT_TRUE(holmAdjusted({}).empty());
  EXPECT_TRUE(benjaminiHochbergAdjusted({}, 5).empty());
}

TEST(AdjustedP, leaveOutTestsThatWereNotMade)
{
  EXPECT_EQ(holmAdjusted({NOT_A_NUMBER, 0.02, 0.5}).at(1), 0.04);
  EXPECT_EQ(benjaminiHochbergAdjusted({0.02, NOT_A_NUMBER, 0.5}).at(0), 0.04);
}

TEST(AdjustedP, refuseAFamilySmallerThanItsTests)
{
  EXPECT_THROW((void)holmAdjusted({0.1, 0.2, 0.3}, 2), std::invalid_argument);
  EXPECT_THROW((void)benjaminiHochbergAdjusted({0.1, 0.2, 0.3}, 2), std::invalid_argument);
  EXPECT_NO_THROW((void)holmAdjusted({0.1, NOT_A_NUMBER, 0.3}, 2));
}

} // namespace runsieve::test
