#include "support/DumpBytes.h"
#include "support/Dumps.h"
#include "support/Selections.h"
#include "support/TableBuilder.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <cmath>
#include <limits>

using testing::ElementsAre;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// The bytes that a container writes, for a person to compare.
struct DumpBytesTest : testing::Test
{
  PlotContainer container{nullptr};

  std::string hex() { return dumpOf(container).toHex().toStdString(); }
  void expectBytes(DumpBytes const& expected) { EXPECT_EQ(hex(), expected.bytes().toHex().toStdString()); }
};

/// The start of a dump without typed names.
DumpBytes nameless(int columns, int rows)
{
  return DumpBytes().number(0).number(columns).number(rows);
}

TEST_F(DumpBytesTest, OneNameAndOneValueMakeThirtySevenBytes)
{
  container.typedColumnNames = {{Kestrane::Molecule, "A"}};
  container.plotData = makeTable({{"x", {1.0}}});
  EXPECT_EQ(dumpOf(container).size(), 37);
  EXPECT_EQ(hex(), "00000001"
                   "00000001"
                   "000000020041"
                   "00000001"
                   "00000001"
                   "000000020078"
                   "01"
                   "3ff0000000000000");
}

TEST_F(DumpBytesTest, AnEmptyContainerMakesTwelveZeroBytes)
{
  EXPECT_EQ(hex(), std::string(24, '0'));
}

TEST_F(DumpBytesTest, TheTypeOfANameGoesAsItsNumber)
{
  container.typedColumnNames = {{Kestrane::Complex, "a"},
                                {Kestrane::UndefinedType, "b"},
                                {static_cast<Kestrane::DataType>(42), ""},
                                {static_cast<Kestrane::DataType>(-1), "c"}};
  expectBytes(DumpBytes()
                  .number(4)
                  .number(0)
                  .text(u"a")
                  .number(6)
                  .text(u"b")
                  .number(42)
                  .text(u"")
                  .number(-1)
                  .text(u"c")
                  .number(0)
                  .number(0));
}

TEST_F(DumpBytesTest, NamesAndColumnsNeedNotAgreeInNumber)
{
  container.typedColumnNames = {{Kestrane::Molecule, "A"}, {Kestrane::Molecule, "B"}};
  container.plotData = makeTable({{"x", {2.5}}});
  expectBytes(DumpBytes()
                  .number(2)
                  .number(1)
                  .text(u"A")
                  .number(1)
                  .text(u"B")
                  .number(1)
                  .number(1)
                  .text(u"x")
                  .flag(true)
                  .real(2.5));
}

TEST_F(DumpBytesTest, CharactersOfOneByteGoAsTheyAre)
{
  container.typedColumnNames = {{Kestrane::Molecule, "\xe9\xff\x7f"}};
  container.plotData = makeTable({{"\xb5M", {}}});
  expectBytes(DumpBytes()
                  .number(1)
                  .number(1)
                  .text(u"\u00e9\u00ff\u007f")
                  .number(1)
                  .number(0)
                  .text(u"\u00b5M")
                  .flag(true));
}

TEST_F(DumpBytesTest, ATypedNameGoesWithItsStoredLength)
{
  container.typedColumnNames = {{Kestrane::Molecule, std::string("A\0B", 3)}};
  expectBytes(DumpBytes().number(1).number(1).text(std::u16string(u"A\0B", 3)).number(0).number(0));
}

TEST_F(DumpBytesTest, AColumnWithoutANameGoesAsTheNullString)
{
  container.plotData = makeTable({{"x", {}}});
  container.plotData->GetColumn(0)->SetName(nullptr);
  expectBytes(nameless(1, 0).nullText().flag(true));
}

TEST_F(DumpBytesTest, AnEmptyNameIsNoNullString)
{
  container.plotData = makeTable({{"", {}}});
  expectBytes(nameless(1, 0).text(u"").flag(true));
}

TEST_F(DumpBytesTest, ColumnsFollowInTableOrderWithAllTheirRows)
{
  container.plotData = makeTable({{"a", {1, -2}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("b", std::vector<int>{3, -4}));
  expectBytes(
      nameless(2, 2).text(u"a").flag(true).real(1).real(-2).text(u"b").flag(false).number(3).number(-4));
}

TEST_F(DumpBytesTest, ExtremeIntegersGoWhole)
{
  int const least = std::numeric_limits<int>::min();
  int const largest = std::numeric_limits<int>::max();
  container.plotData->AddColumn(makeColumn<vtkIntArray>("i", std::vector<int>{least, largest, -1}));
  expectBytes(nameless(1, 3).text(u"i").flag(false).number(least).number(largest).number(-1));
}

TEST_F(DumpBytesTest, SpecialDoublesPassBitForBit)
{
  std::vector<double> const values{std::nan(""),
                                   -std::nan("0x123"),
                                   INFINITY,
                                   -INFINITY,
                                   -0.0,
                                   std::numeric_limits<double>::denorm_min(),
                                   std::numeric_limits<double>::max()};
  container.plotData = makeTable({{"x", values}});
  DumpBytes expected = nameless(1, static_cast<int>(values.size())).text(u"x").flag(true);
  for (double value : values) expected.real(value);
  expectBytes(expected);
}

TEST_F(DumpBytesTest, ColumnsWithoutRowsGoAsNamesAndFlags)
{
  container.plotData = makeTable({{"a", {}}, {"b", {}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("c", std::vector<int>{}));
  expectBytes(nameless(3, 0).text(u"a").flag(true).text(u"b").flag(true).text(u"c").flag(false));
}

TEST_F(DumpBytesTest, WithoutRowsOtherColumnsGoAsIntegers)
{
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("f", std::vector<float>{}));
  vtkNew<vtkStringArray> text;
  text->SetName("s");
  container.plotData->AddColumn(text);
  expectBytes(nameless(2, 0).text(u"f").flag(false).text(u"s").flag(false));
}

TEST_F(DumpBytesTest, ValuesOfOtherArraysAreCastToIntegers)
{
  float const infinity = INFINITY;
  container.plotData->AddColumn(
      makeColumn<vtkFloatArray>("f", std::vector<float>{1.9F, -1.9F, NAN, infinity, -infinity, 1e20F}));
  container.plotData->AddColumn(makeColumn<vtkIdTypeArray>(
      "i", std::vector<vtkIdType>{7, -7, vtkIdType(1) << 40, -(vtkIdType(1) << 40), 0, 1}));
  int const least = std::numeric_limits<int>::min();
  int const largest = std::numeric_limits<int>::max();
  DumpBytes expected = nameless(2, 6).text(u"f").flag(false);
  for (int value : {1, -1, 0, largest, least, largest}) expected.number(value);
  expected.text(u"i").flag(false);
  for (int value : {7, -7, largest, least, 0, 1}) expected.number(value);
  expectBytes(expected);
}

TEST_F(DumpBytesTest, TextGoesAsZeros)
{
  vtkNew<vtkStringArray> text;
  text->SetName("s");
  for (char const* value : {"12", "b"}) text->InsertNextValue(value);
  container.plotData->AddColumn(text);
  expectBytes(nameless(1, 2).text(u"s").flag(false).number(0).number(0));
}

TEST_F(DumpBytesTest, ShortColumnsGoOnWithNaNOrZero)
{
  container.plotData = makeTable({{"a", {1, 2, 3}}, {"b", {4, 0, 0}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("c", std::vector<int>{5, 6, 7}));
  for (int c : {1, 2}) shorten(container.plotData, c, 1);
  PlotContainer read(nullptr);
  readInto(read, dumpOf(container));
  ASSERT_EQ(read.plotData->GetNumberOfRows(), 3);
  auto const b = numbers(read.plotData, "b");
  ASSERT_THAT(b, SizeIs(3));
  EXPECT_EQ(b[0], 4);
  EXPECT_TRUE(std::isnan(b[1]) && std::isnan(b[2]));
  EXPECT_THAT(numbers(read.plotData, "c"), ElementsAre(5, 0, 0));
  EXPECT_EQ(dumpOf(container).size(), 12 + 3 * (4 + 2 + 1) + 3 * 8 + 3 * 8 + 3 * 4);
}

TEST_F(DumpBytesTest, ShortColumnsOfFloatsGoOnWithZero)
{
  container.plotData = makeTable({{"a", {1, 2, 3}}});
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("f", std::vector<float>{5.5F, 6.5F, 7.5F}));
  shorten(container.plotData, 1, 2);
  expectBytes(nameless(2, 3)
                  .text(u"a")
                  .flag(true)
                  .real(1)
                  .real(2)
                  .real(3)
                  .text(u"f")
                  .flag(false)
                  .number(5)
                  .number(6)
                  .number(0));
}

TEST_F(DumpBytesTest, AShortFirstColumnOfFloatsCutsNoOther)
{
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("f", std::vector<float>{5.5F, 6.5F}));
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("g", std::vector<float>{1, 2}));
  shorten(container.plotData, 0, 1);
  expectBytes(
      nameless(2, 2).text(u"f").flag(false).number(5).number(0).text(u"g").flag(false).number(1).number(2));
}

TEST_F(DumpBytesTest, WritingChangesNothing)
{
  container.typedColumnNames = {{Kestrane::Molecule, "A"}};
  container.plotData = makeTable({{"x", {1, 2, 3}}, {"short", {4, 5, 6}}});
  shorten(container.plotData, 1, 1);
  auto* table = container.plotData.Get();
  auto* column = table->GetColumn(1);
  std::string const first = hex();
  EXPECT_EQ(hex(), first);
  EXPECT_EQ(container.plotData.Get(), table);
  EXPECT_EQ(table->GetColumn(1), column);
  EXPECT_EQ(column->GetNumberOfTuples(), 1);
  EXPECT_THAT(container.typedColumnNames, SizeIs(1));
}

TEST_F(DumpBytesTest, EachDumpIsANewArray)
{
  std::unique_ptr<QByteArray> const first(container.binaryDump());
  std::unique_ptr<QByteArray> const second(container.binaryDump());
  EXPECT_NE(first, second);
  first->clear();
  EXPECT_THAT(*second, SizeIs(12));
}

} // namespace
} // namespace runsieve::test
