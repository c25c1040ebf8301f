#include "support/TempFile.h"
#include "support/LoadedTable.h"
#include "support/SobolRecord.h"
#include "support/WorkingFolder.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>

#include <cmath>
#include <memory>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

namespace runsieve::test {
namespace {

/// Tables as text in files and in memory.
struct DelimitedTextTest : LoadedTable
{
  TempFolder folder;
  PlotScene target;

  std::string text(bool keepAllColumns = true)
  {
    std::unique_ptr<char[]> const saved(container.saveData("", keepAllColumns));
    return saved ? saved.get() : "";
  }

  /// Saves here and loads in the other container.
  vtkTable* pass()
  {
    EXPECT_EQ(container.saveData(folder.file("table.csv"), true), nullptr);
    target.container.loadData(folder.file("table.csv"));
    return target.container.plotData;
  }

  vtkTable* loadText(std::string const& content)
  {
    target.container.loadData(folder.write(content));
    return target.container.plotData;
  }
};

TEST_F(DelimitedTextTest, NamesInQuotesThenALinePerRow)
{
  container.plotData = makeTable({{": Time [s]", {0, 0.5}}, {"Molecule: A", {10, -2.25}}});
  EXPECT_EQ(text(), "\": Time [s]\",\"Molecule: A\"\n0,10\n0.5,-2.25\n");
}

TEST_F(DelimitedTextTest, TextIsEnclosedInQuotes)
{
  vtkNew<vtkStringArray> names;
  names->SetName("Name");
  names->InsertNextValue("k1");
  names->InsertNextValue("a,b");
  container.plotData = makeTable({{"x", {1, 2}}});
  container.plotData->AddColumn(names);
  EXPECT_EQ(text(), "\"x\",\"Name\"\n1,\"k1\"\n2,\"a,b\"\n");
}

TEST_F(DelimitedTextTest, WithoutAFileNameNoFileIsLeftBehind)
{
  WorkingFolder const here(folder.file(""));
  container.plotData = makeTable({{"x", {1}}});
  EXPECT_EQ(text(), "\"x\"\n1\n");
  EXPECT_EQ(folder.fileCount(), 0u);
}

TEST_F(DelimitedTextTest, AFileHoldsTheSameTextAndNothingIsReturned)
{
  load(makeScan({}));
  EXPECT_EQ(container.saveData(folder.file("table.csv"), true), nullptr);
  EXPECT_EQ(TempFolder::contentOf(folder.file("table.csv")), text());
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(DelimitedTextTest, NumbersHaveSixDigits)
{
  container.plotData = makeTable({{"x", {1234567, 0.123456789, 1e-10, 1e300, 100000}}});
  EXPECT_EQ(text(), "\"x\"\n1.23457e+06\n0.123457\n1e-10\n1e+300\n100000\n");
}

TEST_F(DelimitedTextTest, KeepingAllColumnsChangesNothing)
{
  load(makeScan({}));
  auto const before = columnNames(container.plotData);
  auto* table = container.plotData.Get();
  text(true);
  EXPECT_EQ(columnNames(container.plotData), before);
  EXPECT_EQ(container.plotData.Get(), table);
}

TEST_F(DelimitedTextTest, WithoutAllColumnsTheTableIsReducedForGood)
{
  ScanShape shape;
  shape.species = 3;
  load(makeScan(shape));
  settings().zColumns = {0};
  selectRows(container, {1});
  EXPECT_EQ(container.saveData(folder.file("table.csv"), false), nullptr);
  std::vector<std::string> const kept{"Molecule: A", ": Time [s]", ": Run Index", "Parameter: k1",
                                      "selected points"};
  EXPECT_EQ(columnNames(container.plotData), kept);
  target.container.loadData(folder.file("table.csv"));
  EXPECT_EQ(columnNames(target.container.plotData), kept);
  EXPECT_THAT(numbers(target.container.plotData, "selected points"), ElementsAre(0, 1, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(DelimitedTextTest, TheReducedTableIsAlsoReturnedAsText)
{
  load(makeScan({}));
  EXPECT_THAT(text(false), StartsWith("\"Molecule: A\",\": Time [s]\",\": Run Index\",\"Parameter: k1\","
                                      "\"selected points\"\n"));
}

TEST_F(DelimitedTextTest, ASaveAndALoadKeepNamesAndValues)
{
  load(makeScan({}));
  vtkTable* table = pass();
  EXPECT_EQ(columnNames(table), columnNames(container.plotData));
  for (std::string const& name : columnNames(table))
    EXPECT_EQ(numbers(table, name), numbers(container.plotData, name)) << name;
  EXPECT_EQ(columnNames(table)[1], ": Time [s]");
}

TEST_F(DelimitedTextTest, NumbersComeBackAsDoublesWhateverTheyWere)
{
  container.plotData = makeTable({{"d", {1, 2}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("i", std::vector<int>{3, -4}));
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("f", std::vector<float>{0.1F, 2.5F}));
  vtkTable* table = pass();
  for (char const* name : {"d", "i", "f"})
    EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumnByName(name))) << name;
  EXPECT_THAT(numbers(table, "i"), ElementsAre(3, -4));
  EXPECT_THAT(numbers(table, "f"), ElementsAre(0.1, 2.5));
}

TEST_F(DelimitedTextTest, TextComesBackAsText)
{
  vtkNew<vtkStringArray> names;
  names->SetName("Name");
  names->InsertNextValue("k1");
  names->InsertNextValue("a,b");
  container.plotData = makeTable({{"x", {1, 2}}});
  container.plotData->AddColumn(names);
  vtkTable* table = pass();
  EXPECT_THAT(strings(table->GetColumnByName("Name")), ElementsAre("k1", "a,b"));
}

TEST_F(DelimitedTextTest, AColumnWithOneWordIsText)
{
  vtkTable* table = loadText("a,b\n1,2\nx,3\n");
  EXPECT_THAT(strings(table->GetColumnByName("a")), ElementsAre("1", "x"));
  EXPECT_THAT(numbers(table, "b"), ElementsAre(2, 3));
}

TEST_F(DelimitedTextTest, FlagsComeBackAsNumbersThatSelectNothing)
{
  load(makeScan({}));
  selectRows(container, {1});
  container.shrinkToColumnSelection();
  vtkTable* table = pass();
  EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumnByName("selected points")));
  target.container.selectionFromFlagColumn();
  auto flags = vtkSmartPointer<vtkIntArray>::Take(target.container.getCurrentSelection());
  for (vtkIdType row = 0; flags && row < flags->GetNumberOfTuples(); ++row)
    EXPECT_EQ(flags->GetValue(row), 0);
}

TEST_F(DelimitedTextTest, LoadingChangesTheTableOnly)
{
  PlotContainer& plot = target.container;
  plot.setLinePlotTable(makeScan({}), false);
  plot.tables = {makeTable({{"side", {1}}})};
  plot.parameterBounds = {{1, 2}};
  target.settings().xColumns = {2};
  auto const names = plot.typedColumnNames;
  auto* line = target.chart()->GetPlot(0);
  auto* former = plot.plotData.Get();
  loadText("a,b\n1,2\n");
  EXPECT_NE(plot.plotData.Get(), former);
  EXPECT_EQ(plot.typedColumnNames, names);
  EXPECT_THAT(plot.metaData->parameterColumns, ElementsAre(3));
  EXPECT_THAT(plot.metaData->xColumns, ElementsAre(2));
  EXPECT_THAT(plot.tables, SizeIs(1));
  EXPECT_THAT(plot.parameterBounds, SizeIs(1));
  EXPECT_EQ(target.chart()->GetPlot(0), line);
  EXPECT_EQ(line->GetInput(), former) << "nothing is redrawn";
}

TEST_F(DelimitedTextTest, TheRecordOfRunsStaysAndReplacesTheLoadedTable)
{
  target.container.setLinePlotTable(makeScan({}), false);
  loadText("a,b\n1,2\n");
  ASSERT_TRUE(target.container.linePlotTable);
  target.container.updateFromLinePlotTable(false);
  EXPECT_THAT(columnNames(target.container.plotData),
              ElementsAre("Molecule: A", ": Time [s]", ": Run Index", "Parameter: k1"));
}

TEST_F(DelimitedTextTest, AHeaderAloneGivesColumnsOfDoublesWithoutRows)
{
  vtkTable* table = loadText("\"a\",\"b\"\n");
  EXPECT_THAT(columnNames(table), ElementsAre("a", "b"));
  EXPECT_EQ(table->GetNumberOfRows(), 0);
  for (int c : {0, 1}) EXPECT_TRUE(vtkDoubleArray::SafeDownCast(table->GetColumn(c))) << c;
}

TEST_F(DelimitedTextTest, ColumnsWithoutRowsPassThrough)
{
  container.plotData = makeTable({{"a", {}}, {"b", {}}});
  EXPECT_EQ(text(), "\"a\",\"b\"\n");
  EXPECT_THAT(columnNames(pass()), ElementsAre("a", "b"));
}

TEST_F(DelimitedTextTest, ShortColumnsGoOnWithWhatStandsForNothing)
{
  vtkNew<vtkStringArray> names;
  names->SetName("s");
  for (char const* name : {"k1", "k2"}) names->InsertNextValue(name);
  container.plotData = makeTable({{"a", {1, 2}}, {"b", {3, 0}}});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("c", std::vector<int>{4, 5}));
  container.plotData->AddColumn(names);
  for (int c : {1, 2, 3}) shorten(container.plotData, c, 1);
  EXPECT_EQ(text(), "\"a\",\"b\",\"c\",\"s\"\n1,3,4,\"k1\"\n2,nan,0,\"\"\n");
  EXPECT_EQ(container.plotData->GetColumn(1)->GetNumberOfTuples(), 1) << "the table itself stays";
}

TEST_F(DelimitedTextTest, ShortColumnsOfFloatsGoOnWithNaN)
{
  container.plotData = makeTable({{"a", {1, 2}}});
  container.plotData->AddColumn(makeColumn<vtkFloatArray>("f", std::vector<float>{0.5F, 1.5F}));
  shorten(container.plotData, 1, 1);
  EXPECT_EQ(text(), "\"a\",\"f\"\n1,0.5\n2,nan\n");
}

TEST_F(DelimitedTextTest, RowsBehindTheFirstColumnAreWrittenToo)
{
  container.plotData = makeTable({{"a", {1, 2}}, {"b", {3, 4}}});
  shorten(container.plotData, 0, 1);
  EXPECT_EQ(text(), "\"a\",\"b\"\n1,3\nnan,4\n");
}

TEST_F(DelimitedTextTest, AnEmptyContainerCanBeSaved)
{
  EXPECT_EQ(text(), "\n");
  EXPECT_EQ(container.saveData(folder.file("table.csv"), true), nullptr);
  EXPECT_EQ(TempFolder::contentOf(folder.file("table.csv")), "\n");
}

TEST_F(DelimitedTextTest, AFileThatCannotBeWrittenIsReportedByTheWriter)
{
  container.plotData = makeTable({{"x", {1}}});
  OutputWindowLog log;
  EXPECT_EQ(container.saveData(folder.file("missing/table.csv"), true), nullptr);
  EXPECT_THAT(log.text(), HasSubstr("vtkDelimitedTextWriter"));
}

TEST_F(DelimitedTextTest, AMissingFileIsReportedByTheReaderAndLeavesAnEmptyTable)
{
  target.container.plotData = makeTable({{"old", {1}}});
  OutputWindowLog log;
  target.container.loadData(folder.file("missing.csv"));
  ASSERT_TRUE(target.container.plotData);
  EXPECT_EQ(target.container.plotData->GetNumberOfColumns(), 0);
  EXPECT_THAT(log.text(), HasSubstr("vtkDelimitedTextReader"));
}

TEST_F(DelimitedTextTest, ALoadedTableLivesOnWithoutItsFile)
{
  target.container.loadData(folder.write("a\n1\n2\n"));
  std::ofstream(folder.file("scan.csv")) << "other";
  EXPECT_THAT(numbers(target.container.plotData, "a"), ElementsAre(1, 2));
}

/// Sensitivities, some of which are undefined.
struct SensitivityTextTest : SobolPlot
{
  TempFolder folder;
};

TEST_F(SensitivityTextTest, AnUndefinedOneIsSavedAsNaNAndComesBackAsNaN)
{
  record.first[1][1][0] = std::nan("");
  record.first[2][1][2] = std::nan("");
  setBars();
  std::unique_ptr<char[]> const text(container.saveData("", true));
  EXPECT_STREQ(text.get(), "\"k1\",\"k2\",\"k3\",\"Name\"\n"
                           "nan,0.112,0.113,\"Molecule: A\"\n"
                           "0.211,0.212,nan,\"Pattern: P\"\n"
                           "0.411,0.412,0.413,\"Complex With Molecule: C\"\n");

  EXPECT_EQ(container.saveData(folder.file("table.csv"), true), nullptr);
  PlotContainer loaded(nullptr);
  loaded.loadData(folder.file("table.csv"));
  std::vector<double> const k1 = numbers(loaded.plotData, "k1");
  ASSERT_THAT(k1, SizeIs(3));
  EXPECT_TRUE(std::isnan(k1[0]));
  EXPECT_EQ(k1[1], 0.211);
  EXPECT_TRUE(std::isnan(numbers(loaded.plotData, "k3")[1]));
  EXPECT_THAT(numbers(loaded.plotData, "k2"), ElementsAre(0.112, 0.212, 0.412));
}

} // namespace
} // namespace runsieve::test
