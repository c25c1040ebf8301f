#include "support/DumpBytes.h"
#include "support/Dumps.h"
#include "support/MemoryPeak.h"
#include "support/Selections.h"
#include "support/TableBuilder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <stdexcept>

using testing::ElementsAre;
using testing::SizeIs;

namespace runsieve::test {
namespace {

constexpr std::int64_t mebi = 1 << 20;
constexpr std::int64_t claimable =
    16 * mebi; ///< bytes of values behind the end, beside as many as the dump has

/// What stands in the bytes of a dump is read whatever its number; what is only claimed has limits.
struct DumpClaimsTest : testing::Test
{
  PlotContainer written{nullptr};
  PlotContainer container{nullptr};

  void read(DumpBytes const& bytes) { readInto(container, bytes.bytes()); }

  [[nodiscard]] vtkIdType columns() const { return container.plotData->GetNumberOfColumns(); }
  [[nodiscard]] vtkIdType rows() const { return container.plotData->GetNumberOfRows(); }

  /// A dump without typed names, with one value of its only column, or of each of several.
  static DumpBytes oneValue(std::int64_t columnCount, std::int64_t rowCount)
  {
    return DumpBytes().number(0).number(columnCount).number(rowCount).text(u"x").flag(true).real(1);
  }
};

TEST_F(DumpClaimsTest, TwentyThousandColumnsWithoutANameComeBack)
{
  constexpr int count = 20000;
  for (int c = 0; c < count; ++c) {
    auto const column = makeColumn("", std::vector<double>{c + 0.5, -1.0 * c});
    column->SetName(nullptr); // a second empty name would replace the first
    written.plotData->AddColumn(column);
  }
  readInto(container, dumpOf(written));
  ASSERT_EQ(columns(), count);
  for (int c = 0; c < count; ++c)
    ASSERT_THAT(numbers(vtkDataArray::SafeDownCast(container.plotData->GetColumn(c))),
                ElementsAre(c + 0.5, -1.0 * c))
        << c;
}

TEST_F(DumpClaimsTest, ManyColumnsWithoutNameAndRowsComeBack)
{
  constexpr int count = 50000;
  DumpBytes dump = DumpBytes().number(0).number(count).number(0);
  for (int c = 0; c < count; ++c) dump.nullText().flag(c % 2 == 0);
  read(dump);
  ASSERT_EQ(columns(), count);
  EXPECT_TRUE(container.plotData->GetColumn(count - 2)->IsA("vtkDoubleArray"));
  EXPECT_TRUE(container.plotData->GetColumn(count - 1)->IsA("vtkIntArray"));
}

TEST_F(DumpClaimsTest, HundredsOfThousandsOfTypedNamesComeBack)
{
  constexpr int count = 500000;
  DumpBytes dump = DumpBytes().number(count);
  for (int i = 0; i < count; ++i) dump.number(Kestrane::Parameter).text(u"");
  read(dump.number(0).number(0));
  ASSERT_THAT(container.typedColumnNames, SizeIs(count));
  EXPECT_EQ(container.typedColumnNames.back(), std::pair(Kestrane::Parameter, std::string()));
}

TEST_F(DumpClaimsTest, TenThousandNamesMayStandBehindTheEnd)
{
  read(DumpBytes().number(10001).number(Kestrane::Molecule).text(u"A"));
  EXPECT_THAT(container.typedColumnNames, SizeIs(10001));
  EXPECT_EQ(container.typedColumnNames.back(), std::pair(Kestrane::Complex, std::string()));
  container.typedColumnNames.clear();
  EXPECT_THROW(read(DumpBytes().number(10002).number(Kestrane::Molecule).text(u"A")), std::length_error);
  EXPECT_THAT(container.typedColumnNames, SizeIs(10001)) << "what was read before stays";
}

TEST_F(DumpClaimsTest, AThousandColumnsMayStandBehindTheEnd)
{
  for (int claimed : {999, 1000, 1001, 2000, 2000000000}) {
    read(oneValue(1 + claimed, 1));
    EXPECT_EQ(columns(), 1 + std::min(claimed, 1000)) << claimed;
  }
}

TEST_F(DumpClaimsTest, ValuesBehindTheEndMayTakeAsMuchAsTheDumpAndSixteenMebibytes)
{
  std::int64_t const size = oneValue(1, 1).bytes().size();
  std::int64_t const most = (claimable + size) / 8 + 1;
  read(oneValue(1, most));
  ASSERT_EQ(columns(), 1);
  ASSERT_EQ(rows(), most);
  EXPECT_EQ(container.plotData->GetValue(0, 0).ToDouble(), 1);
  EXPECT_EQ(container.plotData->GetValue(most - 1, 0).ToDouble(), 0);
  EXPECT_THROW(read(oneValue(1, most + 1)), std::length_error);
  EXPECT_EQ(columns(), 0);
}

TEST_F(DumpClaimsTest, TheLimitCountsTheClaimsOfAllColumnsTogether)
{
  // Integers of 4 bytes follow the one column of doubles, of which one value stands in the bytes.
  std::int64_t const each = 3 * mebi;
  read(oneValue(4, each / 8));
  EXPECT_EQ(columns(), 4);
  read(oneValue(100, each / 8));
  EXPECT_EQ(columns(), 1 + 8) << "3 MiB of doubles, and 8 times 1.5 MiB of integers";
}

TEST_F(DumpClaimsTest, AColumnOfWhichOnlyAFewBytesStandClaimsTheRest)
{
  for (std::int64_t rowCount : {std::int64_t(0x7fffffff), std::int64_t(100000000), 3 * mebi}) {
    MemoryPeak const memory;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_THROW(read(oneValue(1, rowCount)), std::length_error) << rowCount;
    EXPECT_LE(memory.bytes(), 4 * mebi) << rowCount;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << rowCount;
    EXPECT_EQ(columns(), 0);
  }
}

TEST_F(DumpClaimsTest, AColumnThatHasAllItsValuesIsNoClaimWhateverFollows)
{
  constexpr int count = 5 * (1 << 20);
  written.plotData->AddColumn(makeColumn("whole", std::vector<double>(count, 2.5)));
  QByteArray dump = dumpOf(written);
  dump[7] = 2; // claims a second column
  readInto(container, dump);
  ASSERT_EQ(columns(), 2) << "of integers, half as large as the dump";
  EXPECT_EQ(container.plotData->GetValue(count - 1, 0).ToDouble(), 2.5);
  EXPECT_EQ(container.plotData->GetValue(count - 1, 1).ToInt(), 0);
}

TEST_F(DumpClaimsTest, ADumpOfWhichHalfIsCutOffGoesOnWithZeros)
{
  constexpr int count = 5 * (1 << 20);
  written.plotData->AddColumn(makeColumn("whole", std::vector<double>(count, 2.5)));
  QByteArray const dump = dumpOf(written);
  readInto(container, dump.left(dump.size() / 2));
  ASSERT_EQ(rows(), count);
  EXPECT_EQ(container.plotData->GetValue(0, 0).ToDouble(), 2.5);
  EXPECT_EQ(container.plotData->GetValue(count - 1, 0).ToDouble(), 0);
  EXPECT_THROW(readInto(container, dump.left(dump.size() / 8)), std::length_error);
}

} // namespace
} // namespace runsieve::test
