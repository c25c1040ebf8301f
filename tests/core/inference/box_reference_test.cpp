// Boxes against those of an independent program, data/make_box_paths.py, on scans that both make.

#include <runsieve/core/inference/BoxChoice.h>
#include <runsieve/core/inference/BoxSignificance.h>

#include <core/inference/BoxScan.h>
#include <core/inference/CsvRows.h>

#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {

namespace {

constexpr int scans = 16;
constexpr std::size_t parameters = 5;
constexpr std::size_t categories = 4;

/// Knuth's MMIX generator, whose upper 20 bits make a number in [0, 1).
class MmixRandom
{
public:
  explicit MmixRandom(std::uint64_t seed) : state(seed) {}
  double uniform()
  {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(state >> 44) / (1 << 20);
  }

private:
  std::uint64_t state;
};

enum Kind
{
  Numbers,
  Levels,
  WithMissing,
  Text
};

double valueOf(Kind kind, double uniform, MmixRandom& random, int scan)
{
  switch (kind) {
  case Levels:
    return std::floor(uniform * (5 + scan));
  case WithMissing:
    return random.uniform() < 0.125 ? MISSING : uniform;
  case Text:
    return std::floor(uniform * categories);
  default:
    return uniform > 0.97 ? INFINITE : uniform;
  }
}

BoxScan scanOf(int number)
{
  MmixRandom random(static_cast<std::uint64_t>(number));
  BoxScan scan;
  scan.columns.resize(parameters);
  for (std::size_t j = 0; j < parameters; ++j)
    scan.categories.push_back((number + j) % 4 == Text ? categories : 0);
  for (int run = 0; run < 100 + 25 * number; ++run) {
    double uniform[parameters];
    for (double& value : uniform) value = random.uniform();
    bool const noise = random.uniform() < 0.1;
    scan.passing.push_back((uniform[0] < 0.6 && uniform[1] > 0.3) != noise ? 1 : 0);
    for (std::size_t j = 0; j < parameters; ++j)
      scan.columns[j].push_back(valueOf(static_cast<Kind>((number + j) % 4), uniform[j], random, number));
  }
  return scan;
}

PeelOptions optionsOf(int scan)
{
  return {scan % 2 == 1 ? 0.1 : 0.05, 0.05};
}

std::vector<std::vector<std::string>> rowsOf(std::string const& file, int scan)
{
  std::vector<std::vector<std::string>> rows;
  for (auto const& row : csvRows(file))
    if (row[0] == std::to_string(scan)) rows.push_back(row);
  return rows;
}

void expectNear(double value, std::string const& truth)
{
  double const expected = std::stod(truth);
  if (std::isnan(expected))
    EXPECT_TRUE(std::isnan(value));
  else
    EXPECT_LE(std::abs(value - expected), 1e-10 * expected) << value << " and not " << truth;
}

void expectRange(BoxRange const& range, RangeSignificance const& p, std::vector<std::string> const& row)
{
  EXPECT_EQ(range.parameter, std::stoul(row[2]));
  EXPECT_EQ(range.low, std::stod(row[3]));
  EXPECT_EQ(range.high, std::stod(row[4]));
  std::string kept = range.isText() ? "" : "-";
  for (unsigned char const mark : range.kept) kept += mark != 0 ? '1' : '0';
  EXPECT_EQ(kept, row[5]);
  expectNear(p.low, row[6]);
  expectNear(p.high, row[7]);
  expectNear(p.range, row[8]);
}

} // namespace

TEST(BoxReference, hasTheSamePaths)
{
  char const* const kinds[] = {"low", "high", "category"};
  for (int number = 1; number <= scans; ++number) {
    SCOPED_TRACE(number);
    BoxScan const scan = scanOf(number);
    BoxPath const path = *findBoxPath(scan.table(), scan.sample(), optionsOf(number));
    auto const rows = rowsOf("box_paths.csv", number);
    ASSERT_EQ(path.steps.size(), rows.size() + 1);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      BoxStep const& step = path.steps[i + 1];
      EXPECT_EQ(step.peel->parameter, std::stoul(rows[i][1]));
      EXPECT_EQ(kinds[static_cast<int>(step.peel->kind)], rows[i][2]);
      EXPECT_EQ(step.peel->limit, std::stod(rows[i][3]));
      EXPECT_EQ(step.inside, (BoxTally{std::stoul(rows[i][4]), std::stoul(rows[i][5])}));
    }
  }
}

TEST(BoxReference, hasTheSamePastedAndSignificantBoxesWithTheirQuasiP)
{
  for (int number = 1; number <= scans; ++number) {
    SCOPED_TRACE(number);
    BoxScan const scan = scanOf(number);
    BoxTable const table = scan.table();
    BoxPath const path = *findBoxPath(table, scan.sample(), optionsOf(number));
    auto const rows = rowsOf("box_choices.csv", number);
    std::size_t row = 0;
    for (std::optional<double> const largest : {std::optional<double>(), std::optional<double>(0.05)}) {
      Box const box = *chosenBox(table, scan.sample(), path, optionsOf(number), {{}, true, largest});
      auto const p = quasiP(table, scan.sample(), box);
      for (std::size_t i = 0; i < box.ranges.size(); ++i, ++row) {
        ASSERT_LT(row, rows.size());
        EXPECT_EQ(rows[row][1], largest ? "significant" : "pasted");
        expectRange(box.ranges[i], p[i], rows[row]);
      }
    }
    EXPECT_EQ(row, rows.size());
  }
}

} // namespace runsieve::test
