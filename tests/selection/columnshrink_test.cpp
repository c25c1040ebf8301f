#include "support/LoadedTable.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace runsieve::test {
namespace {

using Kestrane::Molecule;
using Kestrane::Parameter;
using Kestrane::Unnamed;

/// A table of columns "c0", "c1", ... of four rows, reduced to the columns in use.
struct ColumnShrinkTest : LoadedTable
{
  void setColumns(int count)
  {
    std::vector<std::pair<std::string, std::vector<double>>> columns;
    for (int c = 0; c < count; ++c) columns.push_back({"c" + std::to_string(c), std::vector<double>(4, c)});
    container.plotData = makeTable(columns);
  }

  void use(std::vector<int> x, std::vector<int> y, std::vector<int> z, std::vector<int> parameters, int color)
  {
    settings().xColumns = std::move(x);
    settings().yColumns = std::move(y);
    settings().zColumns = std::move(z);
    settings().parameterColumns = std::move(parameters);
    settings().colorColumn = color;
  }

  /// Shrinks, and returns what that wrote to the error stream.
  std::string shrink()
  {
    testing::internal::CaptureStderr();
    container.shrinkToColumnSelection();
    return testing::internal::GetCapturedStderr();
  }

  vtkTable* table() { return container.plotData; }
  std::vector<std::string> names() { return columnNames(table()); }
  std::vector<double> flags() { return numbers(table(), "selected points"); }
};

TEST_F(ColumnShrinkTest, KeepsTheColumnsInUseAndRenumbersThem)
{
  setColumns(10);
  use({3}, {1}, {1}, {6, 7}, 6);
  EXPECT_EQ(shrink(), "");
  EXPECT_THAT(names(), ElementsAre("c1", "c3", "c6", "c7", "selected points"));
  EXPECT_THAT(settings().xColumns, ElementsAre(1));
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
  EXPECT_THAT(settings().zColumns, ElementsAre(0));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(2, 3));
  EXPECT_EQ(settings().colorColumn, 2);
}

TEST_F(ColumnShrinkTest, AllEntriesOfTheListsCount)
{
  setColumns(10);
  use({9, 2, 9}, {4, 0}, {8}, {}, 5);
  shrink();
  EXPECT_THAT(names(), ElementsAre("c0", "c2", "c4", "c5", "c8", "c9", "selected points"));
  EXPECT_THAT(settings().xColumns, ElementsAre(5, 1, 5));
  EXPECT_THAT(settings().yColumns, ElementsAre(2, 0));
  EXPECT_THAT(settings().zColumns, ElementsAre(4));
  EXPECT_EQ(settings().colorColumn, 3);
}

TEST_F(ColumnShrinkTest, KeptColumnsKeepTheirValues)
{
  setColumns(5);
  use({3}, {1}, {1}, {}, 1);
  shrink();
  EXPECT_THAT(numbers(table(), "c1"), Each(1));
  EXPECT_THAT(numbers(table(), "c3"), Each(3));
}

TEST_F(ColumnShrinkTest, AColourColumnThatNothingElseUsesIsKept)
{
  setColumns(5);
  use({1}, {2}, {2}, {}, 4);
  EXPECT_EQ(shrink(), "");
  EXPECT_THAT(names(), ElementsAre("c1", "c2", "c4", "selected points"));
  EXPECT_EQ(settings().colorColumn, 2);
}

TEST_F(ColumnShrinkTest, AColourColumnOutsideTheTableIsReportedAndStays)
{
  for (int color : {0, -1, -20, 5, 900}) {
    setColumns(5);
    use({1}, {2}, {2}, {}, color);
    EXPECT_EQ(shrink(), "invalid color column :" + std::to_string(color) + "\n");
    EXPECT_THAT(names(), ElementsAre("c1", "c2", "selected points")) << color;
    EXPECT_EQ(settings().colorColumn, color);
  }
}

TEST_F(ColumnShrinkTest, TheColourColumnIsJudgedByTheTableBeforeTheRemoval)
{
  setColumns(10);
  use({1}, {2}, {2}, {}, 9);
  shrink();
  EXPECT_EQ(settings().colorColumn, 2);
}

TEST_F(ColumnShrinkTest, AuxiliaryColumnsStayEvenIfNoPlotUsesThem)
{
  setColumns(6);
  container.typedColumnNames = {{Molecule, "0"}, {Unnamed, "1"},   {Molecule, "2"},
                                {Unnamed, "3"},  {Parameter, "4"}, {Parameter, "5"}};
  use({2}, {2}, {2}, {5}, 2);
  shrink();
  EXPECT_THAT(names(), ElementsAre("c1", "c2", "c3", "c5", "selected points"));
  EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Unnamed, "1"), std::pair(Molecule, "2"),
                                                      std::pair(Unnamed, "3"), std::pair(Parameter, "5")));
}

TEST_F(ColumnShrinkTest, AScanKeepsTimeRunIndexAndParameters)
{
  ScanShape shape;
  shape.species = 4;
  shape.parameters = 2;
  load(makeScan(shape));
  settings().yColumns = {2};
  settings().zColumns = {2};
  shrink();
  EXPECT_THAT(names(), ElementsAre("Molecule: C", ": Time [s]", ": Run Index", "Parameter: k1",
                                   "Parameter: k2", "selected points"));
  EXPECT_THAT(settings().xColumns, ElementsAre(1));
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3, 4));
  EXPECT_EQ(settings().colorColumn, 3);
  EXPECT_THAT(container.typedColumnNames, SizeIs(5));
  EXPECT_EQ(container.typedColumnNames[0].second, "C");
}

TEST_F(ColumnShrinkTest, NamesAreNumberedAsColumnsAlsoBehindAColumnWithoutAName)
{
  std::vector<double> times{0, 1}, values{2, 3};
  LinePlotData data;
  data.timeLabel = "Time";
  data.times = &times;
  data.series[{Molecule, "A"}] = &values;
  container.setLinePlotData(&data);
  container.typedColumnNames = {{Unnamed, "A"}};
  use({1}, {1}, {1}, {}, 1);
  shrink();
  EXPECT_THAT(names(), ElementsAre("Time", "Molecule: A", "selected points")) << "name 0 stands for column 0";
  EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Unnamed, "A")));
}

TEST_F(ColumnShrinkTest, ColumnsBehindTheLastNameLeaveNoName)
{
  setColumns(5);
  container.typedColumnNames = {{Molecule, "0"}, {Molecule, "1"}};
  use({1}, {4}, {4}, {}, 1);
  shrink();
  EXPECT_THAT(names(), ElementsAre("c1", "c4", "selected points"));
  EXPECT_THAT(container.typedColumnNames, ElementsAre(std::pair(Molecule, "1")));
}

TEST_F(ColumnShrinkTest, AnAuxiliaryNameBehindTheLastColumnTakesAllColumnsAway)
{
  setColumns(3);
  container.typedColumnNames = {{Molecule, "0"}, {Molecule, "1"}, {Molecule, "2"}, {Unnamed, "3"}};
  use({1}, {2}, {2}, {}, 1);
  shrink();
  EXPECT_THAT(names(), Each("selected points"));
  EXPECT_THAT(container.typedColumnNames, IsEmpty());
}

TEST_F(ColumnShrinkTest, AColumnNumberPastTheTableTakesAllColumnsAway)
{
  for (int list = 0; list < 4; ++list)
    for (int past : {5, 900}) {
      setColumns(5);
      use({1}, {2}, {2}, {3}, 1);
      (list == 0   ? settings().xColumns
       : list == 1 ? settings().yColumns
       : list == 2 ? settings().zColumns
                   : settings().parameterColumns)
          .push_back(past);
      shrink();
      EXPECT_THAT(names(), Each("selected points")) << "list " << list << ", column " << past;
      EXPECT_THAT(settings().xColumns.front(), 0);
      EXPECT_THAT(settings().yColumns.front(), 1);
      EXPECT_EQ(settings().parameterColumns.front(), 2);
    }
}

TEST_F(ColumnShrinkTest, ANegativeColumnNumberBecomesTheFirstAndShiftsTheOthers)
{
  setColumns(5);
  use({-1}, {2}, {3}, {4}, 2);
  shrink();
  EXPECT_THAT(names(), ElementsAre("c2", "c3", "c4", "selected points"));
  EXPECT_THAT(settings().xColumns, ElementsAre(0));
  EXPECT_THAT(settings().yColumns, ElementsAre(1));
  EXPECT_THAT(settings().zColumns, ElementsAre(2));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(3));
  EXPECT_EQ(settings().colorColumn, 1);
}

TEST_F(ColumnShrinkTest, TheSelectionBecomesTheLastColumn)
{
  setColumns(5);
  use({1}, {2}, {2}, {}, 1);
  selectRows(container, {1, 3});
  shrink();
  EXPECT_TRUE(vtkIntArray::SafeDownCast(table()->GetColumn(table()->GetNumberOfColumns() - 1)));
  EXPECT_EQ(names().back(), "selected points");
  EXPECT_THAT(flags(), ElementsAre(0, 1, 0, 1));
}

TEST_F(ColumnShrinkTest, WithoutASelectionAllFlagsAreZero)
{
  setColumns(5);
  use({1}, {2}, {2}, {}, 1);
  shrink();
  EXPECT_THAT(flags(), ElementsAre(0, 0, 0, 0));
}

TEST_F(ColumnShrinkTest, SelectedRowsOutsideTheTableAreDropped)
{
  setColumns(5);
  use({1}, {2}, {2}, {}, 1);
  selectRows(container, {0, 4, -1, 1000000});
  shrink();
  EXPECT_THAT(flags(), ElementsAre(1, 0, 0, 0));
}

TEST_F(ColumnShrinkTest, ASecondShrinkMakesFreshFlags)
{
  setColumns(5);
  use({1}, {2}, {2}, {}, 1);
  selectRows(container, {1});
  shrink();
  selectRows(container, {2, 3});
  shrink();
  EXPECT_THAT(names(), ElementsAre("c1", "c2", "selected points"));
  EXPECT_THAT(flags(), ElementsAre(0, 0, 1, 1));
}

TEST_F(ColumnShrinkTest, TheFlagColumnsOfTheFilterGo)
{
  ScanShape shape;
  shape.runs = 6;
  shape.bounds = {{0, 10}};
  load(makeScan(shape));
  selectRows(container, {0, 3});
  ASSERT_THAT(names(), Contains("vtkRemainderSelection"));
  shrink();
  for (char const* name : {"vtkRemainderSelection", "vtkReducedSelection", "vtkComplementSelection"})
    EXPECT_THAT(names(), Not(Contains(name)));
  EXPECT_THAT(names().back(), Eq("selected points"));
}

TEST_F(ColumnShrinkTest, TheWindowOfThePlotGoesToTheSettingsAndAllOthersAreForgotten)
{
  setColumns(10);
  use({3}, {1}, {1}, {}, 1);
  container.coordinateWindows[{3, 1, scatterPlot}] = {1, 2, 3, 4, true};
  container.coordinateWindows[{1, 0, scatterPlot}] = {5, 6, 7, 8, true};
  shrink();
  EXPECT_TRUE(container.coordinateWindows.empty());
  CoordinateWindow const& window = settings().coordinateWindow;
  EXPECT_EQ(window.xMin, 1);
  EXPECT_EQ(window.yMin, 2);
  EXPECT_EQ(window.xMax, 3);
  EXPECT_EQ(window.yMax, 4);
  EXPECT_TRUE(window.valid);
}

TEST_F(ColumnShrinkTest, WindowsOfOtherColumnsAndStylesAreForgottenOnly)
{
  setColumns(10);
  use({3}, {1}, {1}, {}, 1);
  settings().coordinateWindow = {9, 9, 10, 10, true};
  container.coordinateWindows[{1, 0, scatterPlot}] = {5, 6, 7, 8, true};
  container.coordinateWindows[{3, 1, selectionCdfPlot}] = {5, 6, 7, 8, true};
  shrink();
  EXPECT_TRUE(container.coordinateWindows.empty());
  EXPECT_EQ(settings().coordinateWindow.xMin, 9);
}

TEST_F(ColumnShrinkTest, WithoutWindowsTheOneOfTheSettingsStays)
{
  setColumns(10);
  use({3}, {1}, {1}, {}, 1);
  settings().coordinateWindow = {9, 9, 10, 10, true};
  shrink();
  EXPECT_EQ(settings().coordinateWindow.xMin, 9);
  EXPECT_TRUE(settings().coordinateWindow.valid);
}

TEST_F(ColumnShrinkTest, ARedrawShowsTheSameColumnsUnderTheirNewNumbers)
{
  setColumns(10);
  use({7}, {5}, {5}, {}, 5);
  shrink();
  container.redraw();
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 0), "c7");
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "c5");
}

TEST_F(ColumnShrinkTest, SideTablesBoundsAndTicksStay)
{
  setColumns(5);
  use({1}, {2}, {2}, {3}, 1);
  container.tables = {makeTable({{"side", {1}}})};
  container.parameterBounds = {{1, 2}, {3, 4}};
  container.xTickLabels = vtkSmartPointer<vtkStringArray>::New();
  container.xTickLabels->InsertNextValue("tick");
  shrink();
  ASSERT_THAT(container.tables, SizeIs(1));
  EXPECT_THAT(columnNames(container.tables[0]), ElementsAre("side"));
  EXPECT_THAT(container.parameterBounds, SizeIs(2));
  EXPECT_EQ(container.xTickLabels->GetNumberOfValues(), 1);
}

TEST_F(ColumnShrinkTest, AnEmptyTableIsNoTrouble)
{
  container.plotData = vtkSmartPointer<vtkTable>::New();
  use({0}, {0}, {0}, {}, 3);
  EXPECT_EQ(shrink(), "invalid color column :3\n");
  EXPECT_THAT(names(), Each("selected points"));
}

TEST_F(ColumnShrinkTest, EmptyListsLeaveTheAuxiliaryColumns)
{
  setColumns(3);
  container.typedColumnNames = {{Molecule, "0"}, {Unnamed, "1"}, {Molecule, "2"}};
  use({}, {}, {}, {}, -1);
  container.coordinateWindows[{0, 0, scatterPlot}] = {1, 2, 3, 4, true};
  shrink();
  EXPECT_THAT(names(), ElementsAre("c1", "selected points"));
  EXPECT_TRUE(container.coordinateWindows.empty());
}

} // namespace
} // namespace runsieve::test
