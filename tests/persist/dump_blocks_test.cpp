#include "support/Dumps.h"
#include "support/Selections.h"
#include "support/TableBuilder.h"

#include <gtest/gtest.h>
#include <vtkFloatArray.h>

#include <cmath>

namespace runsieve::test {
namespace {

/// Values are turned into the bytes of a dump in blocks of 16,384 rows. No two of a column are equal here, so
/// that a row that takes the value of another one shows.
struct DumpBlocksTest : testing::Test
{
  PlotContainer written{nullptr};
  PlotContainer restored{nullptr};

  static double realAt(int row) { return 0.1 * row - 3.0; }
  static int wholeAt(int row) { return 7 * row - 100000; }

  void fill(int rows)
  {
    std::vector<double> reals;
    std::vector<int> wholes;
    std::vector<float> singles;
    for (int row = 0; row < rows; ++row) {
      reals.push_back(realAt(row));
      wholes.push_back(wholeAt(row));
      singles.push_back(static_cast<float>(row) + 0.5F);
    }
    written.plotData = vtkSmartPointer<vtkTable>::New();
    written.plotData->AddColumn(makeColumn("real", reals));
    written.plotData->AddColumn(makeColumn<vtkIntArray>("whole", wholes));
    written.plotData->AddColumn(makeColumn<vtkFloatArray>("single", singles));
  }

  template <class Function> void expectColumn(char const* name, int rows, Function&& value)
  {
    std::vector<double> const found = numbers(restored.plotData, name);
    ASSERT_EQ(static_cast<int>(found.size()), rows) << name;
    for (int row = 0; row < rows; ++row) ASSERT_EQ(found[row], value(row)) << name << ", row " << row;
  }
};

TEST_F(DumpBlocksTest, EveryRowOfSeveralBlocksComesBack)
{
  for (int rows : {16383, 16384, 16385, 3 * 16384, 3 * 16384 + 1234}) {
    SCOPED_TRACE(rows);
    fill(rows);
    readInto(restored, dumpOf(written));
    expectColumn("real", rows, realAt);
    expectColumn("whole", rows, wholeAt);
    expectColumn("single", rows, [](int row) { return row; });
  }
}

TEST_F(DumpBlocksTest, ShortColumnsGoOnBehindTheFirstBlock)
{
  constexpr int rows = 2 * 16384;
  constexpr int shorter = 16384 + 100;
  fill(rows);
  for (int column : {1, 2}) shorten(written.plotData, column, shorter);
  readInto(restored, dumpOf(written));
  expectColumn("real", rows, realAt);
  expectColumn("whole", rows, [](int row) { return row < shorter ? wholeAt(row) : 0; });
  expectColumn("single", rows, [](int row) { return row < shorter ? row : 0; });
}

TEST_F(DumpBlocksTest, ADumpOfManyRowsHasEachValueInItsPlace)
{
  constexpr int rows = 40000;
  fill(rows);
  QByteArray const dump = dumpOf(written);
  int const columnHeader = 4 + 2 * static_cast<int>(sizeof "real" - 1) + 1;
  int const firstValue = 12 + columnHeader;
  for (int row : {0, 16383, 16384, 32767, 32768, 39999}) {
    std::uint64_t bits = 0;
    for (int byte = 0; byte < 8; ++byte)
      bits = bits << 8 | static_cast<unsigned char>(dump[firstValue + 8 * row + byte]);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    EXPECT_EQ(value, realAt(row)) << row;
  }
}

} // namespace
} // namespace runsieve::test
