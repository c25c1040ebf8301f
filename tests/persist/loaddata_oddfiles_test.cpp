#include "app/TempFile.h"
#include "support/Dumps.h"
#include "support/PlotScene.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <random>

using testing::ElementsAre;
using testing::EndsWith;

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

TEST_F(OddFileTest, ShortRowsLeaveTheirFieldsUndefined)
{
  vtkTable* table = load("a,b,c\n1,2,3\n4\n5,6\n");
  ASSERT_EQ(table->GetNumberOfColumns(), 3);
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 4, 5));
}

TEST_F(OddFileTest, LongRowsAreNoTrouble)
{
  load("a,b\n1,2\n3,4,5,6\n7,8\n");
  EXPECT_THAT(numbersOf("a"), ElementsAre(1, 3, 7));
  EXPECT_THAT(numbersOf("b"), ElementsAre(2, 4, 8));
}

TEST_F(OddFileTest, DecimalCommasDivideFieldsAndMakeNoNumbers)
{
  vtkTable* table = load("a;b\n1,5;2,5\n3,5;4,5\n");
  ASSERT_GE(table->GetNumberOfColumns(), 1);
  EXPECT_STREQ(table->GetColumnName(0), "a;b");
}

TEST_F(OddFileTest, AHeaderAloneHasNoRows)
{
  for (char const* content : {"a,b", "a,b\n", "a,b\r\n"}) {
    vtkTable* table = load(content);
    EXPECT_THAT(columnNames(table), ElementsAre("a", "b")) << content;
    EXPECT_EQ(table->GetNumberOfRows(), 0) << content;
  }
}

TEST_F(OddFileTest, AnEmptyFileHasNoRows)
{
  for (char const* content : {"", "\n", "\r\n\n"}) EXPECT_EQ(load(content)->GetNumberOfRows(), 0) << content;
}

TEST_F(OddFileTest, AMissingFileAndAFolderAreNoTrouble)
{
  container.plotData = makeTable({{"old", {1}}});
  container.loadData(folder.file("missing.csv"));
  expectUsable();
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
  container.loadData(folder.file(""));
  expectUsable();
  container.loadData("");
  expectUsable();
}

TEST_F(OddFileTest, ColumnsOfOneNameAreNoTrouble)
{
  load("a,a,\n1,2,3\n4,5,6\n");
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 2);
}

TEST_F(OddFileTest, AQuoteThatIsNeverClosedIsNoTrouble)
{
  load("a,b\n\"1,2\n3,4\n");
  load("\"a,b\n1,2\n");
}

TEST_F(OddFileTest, BinaryFilesAreNoTrouble)
{
  std::mt19937 random(3);
  for (int size : {1, 7, 100, 5000}) {
    std::string bytes;
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(random());
    SCOPED_TRACE(size);
    load(bytes);
  }
  load(std::string(1000, '\0'));
  load(std::string("a,b\n1,\0002\n", 9));
}

TEST_F(OddFileTest, FieldsOfManyCharactersAreNoTrouble)
{
  load("a,b\n" + std::string(1 << 20, '7') + ",2\n");
  EXPECT_THAT(numbersOf("b"), ElementsAre(2));
}

TEST_F(OddFileTest, AHundredThousandColumnsAreRefusedAndReported)
{
  container.plotData = makeTable({{"old", {1}}});
  std::string content = "a";
  for (int c = 1; c < 100000; ++c) content += ",c" + std::to_string(c);
  load(content + "\n");
  EXPECT_THAT(log.text(), testing::HasSubstr("more than 30000 columns"));
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
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
