#include "DumpModel.h"
#include "support/DumpBytes.h"
#include "support/Dumps.h"
#include "support/MemoryPeak.h"
#include "support/Selections.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <new>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

enum class Outcome
{
  Read,
  Refused
};

/// Reads bytes of any kind. Only these exceptions may come out.
Outcome tryToRead(PlotContainer& container, QByteArray const& bytes)
{
  try {
    readInto(container, bytes);
    return Outcome::Read;
  } catch (std::length_error const&) {
  } catch (std::bad_alloc const&) { // bad_array_new_length is one
  }
  return Outcome::Refused;
}

/// A dump with everything that a dump can hold, damaged in some way.
struct DumpDamageTest : testing::Test
{
  PlotContainer container{nullptr};

  static QByteArray wholeDump()
  {
    PlotContainer source(nullptr);
    source.typedColumnNames = {
        {Kestrane::Molecule, "A"}, {Kestrane::Unnamed, ""}, {Kestrane::Parameter, "k\xe9"}};
    source.plotData = makeTable({{"Molecule: A", {1, std::nan(""), -INFINITY}}, {"", {0.5, 1.5, 2.5}}});
    source.plotData->AddColumn(makeColumn<vtkIntArray>("n", std::vector<int>{-7, 8, 9}));
    source.plotData->AddColumn(makeColumn("last double", std::vector<double>{0.5, 1.5, 2.5}));
    source.plotData->GetColumn(1)->SetName(nullptr);
    source.plotData->AddColumn(makeColumn<vtkIntArray>("selected points", std::vector<int>{1, 0, 1}));
    return dumpOf(source);
  }

  /// Reads into a container that holds something else.
  Outcome read(QByteArray const& bytes)
  {
    container.typedColumnNames = {{Kestrane::Molecule, "old"}};
    container.plotData = makeTable({{"old", {1}}});
    return tryToRead(container, bytes);
  }
  Outcome read(DumpBytes const& bytes) { return read(bytes.bytes()); }

  std::vector<std::string> names() { return columnNames(container.plotData); }
};

TEST_F(DumpDamageTest, ADumpCutOffAnywhereGoesOnWithZerosAndEmptyNames)
{
  QByteArray const whole = wholeDump();
  for (int length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE("cut to " + std::to_string(length) + " bytes");
    QByteArray const cut = whole.left(length);
    ASSERT_EQ(read(cut), Outcome::Read);
    auto const expected = DumpModel::read(cut);
    ASSERT_TRUE(expected);
    expectTable(*expected, container);
    if (HasFatalFailure()) return;
  }
}

TEST_F(DumpDamageTest, ColumnsBehindTheEndAreIntegersWithoutANameSideBySide)
{
  ASSERT_EQ(read(DumpBytes().number(2).number(1).text(u"A")), Outcome::Read);
  EXPECT_THAT(container.typedColumnNames,
              ElementsAre(std::pair(Kestrane::Molecule, "A"), std::pair(Kestrane::Complex, "")));
  ASSERT_EQ(read(DumpBytes().number(0).number(3).number(2).text(u"x").flag(true).real(1)), Outcome::Read);
  EXPECT_THAT(names(), ElementsAre("x", "", ""));
  EXPECT_THAT(numbers(container.plotData, "x"), ElementsAre(1, 0));
  for (int c : {1, 2}) {
    auto* column = vtkIntArray::SafeDownCast(container.plotData->GetColumn(c));
    ASSERT_TRUE(column);
    EXPECT_THAT(numbers(column), ElementsAre(0, 0));
  }
}

TEST_F(DumpDamageTest, ANameOfAnOddNumberOfBytesIsEmptyAndTakesNone)
{
  DumpBytes const bytes =
      DumpBytes().number(1).number(1).number(3).number(1).number(1).text(u"x").flag(true).real(5);
  ASSERT_EQ(read(bytes), Outcome::Read);
  EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Kestrane::Molecule, "")));
  EXPECT_THAT(numbers(container.plotData, "x"), ElementsAre(5));
}

TEST_F(DumpDamageTest, ANameThatClaimsMoreThanThereIsIsEmpty)
{
  ASSERT_EQ(read(DumpBytes().number(2).number(1).number(0x7ffffffe).number(0x00410042)), Outcome::Read);
  EXPECT_THAT(container.typedColumnNames,
              ElementsAre(std::pair(Kestrane::Molecule, ""), std::pair(Kestrane::Complex, "")));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(DumpDamageTest, EveryByteMayBeAnyOther)
{
  QByteArray const whole = wholeDump();
  auto const start = std::chrono::steady_clock::now();
  for (int place = 0; place < whole.size(); ++place)
    for (int value : {0x00, 0x01, 0x02, 0x7f, 0x80, 0xfe, 0xff, whole[place] ^ 0x10}) {
      SCOPED_TRACE("byte " + std::to_string(place) + " is " + std::to_string(value & 0xff));
      QByteArray damaged = whole;
      damaged[place] = static_cast<char>(value);
      PlotContainer fresh(nullptr);
      MemoryPeak const memory;
      Outcome const outcome = tryToRead(fresh, damaged);
      EXPECT_LE(memory.bytes(), 4 * whole.size() + (64 << 20));
      if (auto const expected = DumpModel::read(damaged)) {
        ASSERT_EQ(outcome, Outcome::Read);
        expectTable(*expected, fresh);
      }
      if (HasFailure()) return;
    }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(2));
}

TEST_F(DumpDamageTest, NegativeNumbersOfNamesAreRefused)
{
  for (int count : {-1, -2000000000}) {
    EXPECT_EQ(read(DumpBytes().number(count)), Outcome::Refused) << count;
    EXPECT_THAT(container.typedColumnNames, IsEmpty());
    EXPECT_THAT(names(), IsEmpty());
  }
}

TEST_F(DumpDamageTest, NegativeNumbersOfRowsAreRefusedAndTheNamesStay)
{
  for (int rows : {-1, -2000000000}) {
    EXPECT_EQ(read(DumpBytes().number(1).number(1).text(u"A").number(1).number(rows).text(u"x").flag(true)),
              Outcome::Refused)
        << rows;
    EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Kestrane::Molecule, "A")));
    EXPECT_THAT(names(), IsEmpty());
  }
}

TEST_F(DumpDamageTest, WithoutColumnsTheNumberOfRowsDoesNotMatter)
{
  for (int columns : {0, -1, -2000000000})
    for (int rows : {-1, 0, 2000000000}) {
      EXPECT_EQ(read(DumpBytes().number(0).number(columns).number(rows)), Outcome::Read)
          << columns << " " << rows;
      EXPECT_THAT(names(), IsEmpty());
    }
}

TEST_F(DumpDamageTest, ANegativeNumberOfColumnsStillEndsTheReadingProperly)
{
  container.metaData->coordinateWindow = {1, 2, 3, 4, true};
  container.selectionUpdatePending = true;
  ASSERT_EQ(read(DumpBytes().number(0).number(-5).number(3)), Outcome::Read);
  EXPECT_THAT(container.coordinateWindows, SizeIs(1));
  EXPECT_FALSE(container.selectionUpdatePending);
}

/// Counts that a dump of a few bytes cannot hold.
struct AbsurdDumpTest : DumpDamageTest, testing::WithParamInterface<int>
{
  void expectLittleMemory(DumpBytes const& bytes)
  {
    MemoryPeak const memory;
    auto const start = std::chrono::steady_clock::now();
    read(bytes);
    EXPECT_LE(memory.bytes(), 4 * bytes.bytes().size() + (64 << 20));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  }
};

TEST_P(AbsurdDumpTest, AbsurdNumbersOfNamesTakeLittleMemory)
{
  expectLittleMemory(DumpBytes().number(GetParam()).number(1).text(u"A"));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_P(AbsurdDumpTest, AbsurdNumbersOfColumnsTakeLittleMemory)
{
  for (int rows : {0, 1, 1000})
    expectLittleMemory(DumpBytes().number(0).number(GetParam()).number(rows).text(u"x"));
}

TEST_P(AbsurdDumpTest, AbsurdNumbersOfRowsTakeLittleMemory)
{
  for (bool isDouble : {true, false})
    for (int columns : {1, 5}) {
      expectLittleMemory(DumpBytes()
                             .number(1)
                             .number(1)
                             .text(u"A")
                             .number(columns)
                             .number(GetParam())
                             .text(u"x")
                             .flag(isDouble)
                             .real(1));
      EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Kestrane::Molecule, "A")));
    }
}

TEST_P(AbsurdDumpTest, AbsurdNumbersOfEverythingTakeLittleMemory)
{
  int const count = GetParam();
  expectLittleMemory(DumpBytes().number(0).number(count).number(count));
  expectLittleMemory(DumpBytes().number(count).number(count).number(count).number(count).number(count));
}

INSTANTIATE_TEST_SUITE_P(Counts, AbsurdDumpTest,
                         testing::Values(2000000000, 0x7fffffff, 1 << 24, 5000000, 100000000));

TEST_F(DumpDamageTest, WholeColumnsBeforeAnAbsurdOneStay)
{
  // Two columns whole, all others only claimed.
  DumpBytes const bytes = DumpBytes()
                              .number(0)
                              .number(2000000000)
                              .number(1)
                              .text(u"a")
                              .flag(true)
                              .real(1)
                              .text(u"b")
                              .flag(false)
                              .number(2);
  read(bytes);
  ASSERT_GE(container.plotData->GetNumberOfColumns(), 2);
  EXPECT_THAT(numbers(container.plotData, "a"), ElementsAre(1));
  EXPECT_THAT(numbers(container.plotData, "b"), ElementsAre(2));
}

TEST_F(DumpDamageTest, AContainerThatRefusedADumpReadsTheNextOne)
{
  ASSERT_EQ(read(DumpBytes().number(-1)), Outcome::Refused);
  ASSERT_EQ(read(wholeDump()), Outcome::Read);
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 5);
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 3);
}

TEST_F(DumpDamageTest, ALargeDumpIsReadWithLittleMoreThanItsOwnSize)
{
  QByteArray dump;
  {
    PlotContainer source(nullptr);
    for (int c = 0; c < 8; ++c)
      source.plotData->AddColumn(makeColumn("c" + std::to_string(c), std::vector<double>(500000, c)));
    dump = dumpOf(source);
  }
  MemoryPeak const memory;
  container.readDump(&dump);
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 500000);
  EXPECT_LE(memory.bytes(), 2 * static_cast<std::int64_t>(dump.size()));
}

} // namespace
} // namespace runsieve::test
