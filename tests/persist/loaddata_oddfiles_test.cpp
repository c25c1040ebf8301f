#include "support/TempFile.h"
#include "support/Dumps.h"
#include "support/PlotScene.h"
#include "support/SobolRecord.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsNan;

namespace runsieve::test {
namespace {

/// Files that come from elsewhere.
struct OddFileTest : testing::Test, PlotScene
{
  TempFolder folder;
  OutputWindowLog log;

  vtkTable* load(std::string const& content)
  {
    container.loadData(folder.write(content));
    expectUsable();
    return container.plotData;
  }

  /// Whatever a file held, its table can be drawn, saved, dumped and reduced.
  void expectUsable()
  {
    ASSERT_TRUE(container.plotData);
    settings().xColumns = {0};
    settings().yColumns = {0};
    container.redraw();
    RecordingPainter recorder;
    paint(recorder);
    std::unique_ptr<char[]> const text(container.saveData("", true));
    std::string const saved = text ? text.get() : "";
    vtkIdType const lines = std::count(saved.begin(), saved.end(), '\n');
    EXPECT_GE(lines, container.plotData->GetNumberOfRows());
    dumpOf(container);
  }

  std::vector<double> numbersOf(char const* column) { return numbers(container.plotData, column); }
};

TEST_F(OddFileTest, TheLastLineNeedsNoEnd)
{
  load("a,b\n1,2\n3,4");
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 3));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4));
}

TEST_F(OddFileTest, LinesMayEndInAnyWay)
{
  load("a,b\r\n1,2\r\n3,4\r\n");
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 3));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4));
  load("a,b\r\n1,2\n3,4\r5,6");
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 3, 5));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4, 6));
}

TEST_F(OddFileTest, AByteOrderMarkSpoilsNoColumnOfNumbers)
{
  vtkTable* table = load("\xef\xbb\xbf"
                         "a,b\n1,2\n3,4\n");
  ASSERT_EQ(table->GetNumberOfColumns(), 2);
  EXPECT_THAT(table->GetColumnName(0), EndsWith("a"));
  EXPECT_THAT(numbers(vtkDataArray::SafeDownCast(table->GetColumn(0))), ElementsAre(1, 3));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4));
}

TEST_F(OddFileTest, MissingFieldsAreZeroAndNaNBehindTheLastOneOfTheirColumn)
{
  vtkTable* table = load("a,b,c\n1,2,3\n4\n5,6\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a", "b", "c"));
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 4, 5));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 0, 6));
  EXPECT_THAT(numbersOf("c"), ElementsAre(3, IsNan(), IsNan()));
}

TEST_F(OddFileTest, FieldsBehindTheColumnsOfTheHeaderAreLeftOut)
{
  vtkTable* table = load("a,b\n1,2\n3,4,5,6\n7,8\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a", "b"));
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 3, 7));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4, 8));
}

TEST_F(OddFileTest, DecimalCommasDivideFieldsSoThatOnlyTheFirstWholePartIsRead)
{
  vtkTable* table = load("a;b\n1,5;2,5\n3,5;4,5\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a;b"));
  EXPECT_THAT(numbersOf("a;b"), ElementsAre(1, 3));
}

TEST_F(OddFileTest, AHeaderAloneHasNoRows)
{
  for (char const* content : {"a,b", "a,b\n", "a,b\r\n"}) {
    vtkTable* table = load(content);
    EXPECT_THAT(columnNames(table), ElementsAre("a", "b")) << content;
    EXPECT_EQ(table->GetNumberOfRows(), 0) << content;
  }
}

TEST_F(OddFileTest, AnEmptyFileHasNeitherColumnsNorRows)
{
  for (char const* content : {"", "\n", "\r\n\n"}) {
    EXPECT_EQ(load(content)->GetNumberOfColumns(), 0) << content;
    EXPECT_EQ(container.plotData->GetNumberOfRows(), 0) << content;
  }
}

TEST_F(OddFileTest, AMissingFileAFolderAndNoNameAtAllEmptyTheTable)
{
  for (std::string const& path : {folder.file("missing.csv"), folder.file(""), std::string()}) {
    container.plotData = makeTable({{"old", {1}}});
    container.loadData(path);
    expectUsable();
    EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0) << path;
  }
}

TEST_F(OddFileTest, OfColumnsOfOneNameTheFirstIsReadAndTheNextNamesMoveUp)
{
  vtkTable* table = load("a,a,\n1,2,3\n4,5,6\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a", ""));
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 4));
  EXPECT_THAT(numbersOf(""), ElementsAre(2, 5)) << "fields are counted, names are not";
}

TEST_F(OddFileTest, AQuoteThatIsNeverClosedEndsWithItsLine)
{
  vtkTable* table = load("a,b\n\"1,2\n3,4\n");
  EXPECT_THAT(strings(table->GetColumnByName("a")), ElementsAre("1,2", "3"));
  EXPECT_THAT(numbersOf("b"), ElementsAre(0, 4));
  table = load("\"a,b\n1,2\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a,b"));
  EXPECT_THAT(numbersOf("a,b"), ElementsAre(1));
}

TEST_F(OddFileTest, BinaryFilesHaveNoRows)
{
  std::mt19937 random(3);
  for (int size : {1, 7, 100, 5000}) {
    std::string bytes;
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(random());
    SCOPED_TRACE(size);
    EXPECT_EQ(load(bytes)->GetNumberOfRows(), 0);
    EXPECT_LE(container.plotData->GetNumberOfColumns(), 1);
  }
  EXPECT_EQ(load(std::string(1000, '\0'))->GetNumberOfRows(), 0);
}

TEST_F(OddFileTest, AZeroByteMakesItsColumnOneOfText)
{
  vtkTable* table = load(std::string("a,b\n1,\0002\n", 9));
  EXPECT_THAT(numbersOf("a"), ElementsAre(1));
  EXPECT_THAT(strings(table->GetColumnByName("b")), ElementsAre(std::string("\0002", 2)));
}

// What no double holds VTK 9.1 leaves as text, and VTK 9.3 makes infinite.
TEST_F(OddFileTest, AFieldOfAMillionDigitsIsTextOrInfinite)
{
  std::string const digits(1 << 20, '7');
  vtkTable* table = load("a,b\n" + digits + ",2\n");
  if (vtkDoubleArray::SafeDownCast(table->GetColumnByName("a")))
    EXPECT_THAT(numbersOf("a"), ElementsAre(std::numeric_limits<double>::infinity()));
  else
    EXPECT_TRUE(strings(table->GetColumnByName("a")) == std::vector<std::string>{digits});
  EXPECT_THAT(numbersOf("b"), ElementsAre(2));
}

/// The first line of a file of so many columns.
std::string headerOf(int columns)
{
  std::string header = "c0";
  for (int c = 1; c < columns; ++c) header += ",c" + std::to_string(c);
  return header + "\n";
}

TEST_F(OddFileTest, AHundredThousandColumnsAreRefusedAndReported)
{
  container.plotData = makeTable({{"old", {1}}});
  load(headerOf(100000));
  EXPECT_THAT(log.text(), testing::HasSubstr("more than 30000 columns"));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
}

TEST_F(OddFileTest, ThirtyThousandColumnsAreReadAndOneMoreIsRefused)
{
  container.loadData(folder.write(headerOf(30000)));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 30000);
  EXPECT_STREQ(container.plotData->GetColumnName(29999), "c29999");
  EXPECT_EQ(log.text(), "");
  container.loadData(folder.write(headerOf(30001)));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
  EXPECT_THAT(log.text(), testing::HasSubstr("more than 30000 columns"));
}

TEST_F(OddFileTest, FiveThousandColumnsComeInOrder)
{
  std::string content;
  for (int line = 0; line < 4; ++line) {
    for (int c = 0; c < 5000; ++c)
      content += (c == 0 ? "" : ",") + (line == 0 ? "c" + std::to_string(c) : std::to_string(10 * c + line));
    content += '\n';
  }
  vtkTable* table = load(content);
  ASSERT_EQ(table->GetNumberOfColumns(), 5000);
  ASSERT_EQ(table->GetNumberOfRows(), 3);
  for (int c = 0; c < 5000; ++c) {
    auto* column = vtkDoubleArray::SafeDownCast(table->GetColumn(c));
    ASSERT_TRUE(column) << c;
    EXPECT_EQ(column->GetName(), "c" + std::to_string(c));
    EXPECT_EQ(column->GetValue(2), 10 * c + 3) << c;
  }
}

} // namespace
} // namespace runsieve::test
