#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkColorSeries.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

using Items = std::vector<Kestrane::TypedConcentrationName>;

struct LinePlotDataTest : testing::Test, PlotScene
{
  std::vector<double> times{0, 1, 2};
  std::vector<double> a{5, 6, 7};
  std::vector<double> b{8, 9, 10};
  LinePlotData data;

  LinePlotDataTest()
  {
    data.timeLabel = "Time [s]";
    data.valueLabel = "Amount";
    data.times = &times;
    data.series[{Kestrane::Molecule, "A"}] = &a;
    data.series[{Kestrane::Complex, "B"}] = &b;
  }

  vtkTable* table() { return container.plotData; }
};

TEST_F(LinePlotDataTest, TheTimeColumnComesFirstUnderItsPlainLabel)
{
  container.setLinePlotData(&data);
  EXPECT_EQ(table()->GetNumberOfColumns(), 3);
  EXPECT_EQ(table()->GetNumberOfRows(), 3);
  EXPECT_STREQ(table()->GetColumnName(0), "Time [s]");
  EXPECT_TRUE(table()->GetColumn(0)->IsA("vtkDoubleArray"));
  EXPECT_EQ(table()->GetValue(2, 0).ToDouble(), 2);
}

TEST_F(LinePlotDataTest, SeriesFollowInTheOrderOfTheRecord)
{
  container.setLinePlotData(&data);
  ASSERT_THAT(container.typedColumnNames, SizeIs(2));
  int column = 1;
  for (auto const& [name, values] : data.series) {
    EXPECT_EQ(container.typedColumnNames[column - 1], name);
    std::string const full = (name.first == Kestrane::Molecule ? "Molecule: " : "Complex: ") + name.second;
    EXPECT_EQ(table()->GetColumnName(column), full);
    EXPECT_EQ(table()->GetValue(1, column).ToDouble(), (*values)[1]);
    ++column;
  }
}

TEST_F(LinePlotDataTest, ValuesAreCopied)
{
  container.setLinePlotData(&data);
  a[0] = 99;
  times[0] = 99;
  EXPECT_EQ(table()->GetValueByName(0, "Molecule: A").ToDouble(), 5);
  EXPECT_EQ(table()->GetValueByName(0, "Time [s]").ToDouble(), 0);
}

TEST_F(LinePlotDataTest, TitlesAreSetAtOnce)
{
  settings().plotTitle = "old";
  chart()->SetTitle("old");
  container.setLinePlotData(&data);
  EXPECT_EQ(settings().plotTitle, "");
  EXPECT_EQ(chart()->GetTitle(), "");
  EXPECT_EQ(settings().xLabel, "Time [s]");
  EXPECT_EQ(bottom()->GetTitle(), "Time [s]");
  EXPECT_EQ(settings().yLabel, "Amount");
  EXPECT_EQ(left()->GetTitle(), "Amount");
  EXPECT_FALSE(settings().signalsBlocked());
}

TEST_F(LinePlotDataTest, OtherSettingsAndTheChartStayAsTheyAre)
{
  settings().xColumns = {4, 5};
  settings().yColumns = {6};
  settings().parameterColumns = {7};
  settings().setStride(8);
  auto* drawn = chart()->GetPlot(0);
  container.setLinePlotData(&data);
  EXPECT_THAT(settings().xColumns, ElementsAre(0, 5));
  EXPECT_THAT(settings().yColumns, ElementsAre(6));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(7));
  EXPECT_EQ(settings().getStride(), 8);
  EXPECT_EQ(chart()->GetPlot(0), drawn);
}

TEST_F(LinePlotDataTest, AnEmptyListOfColumnsGrows)
{
  settings().xColumns.clear();
  container.setLinePlotData(&data);
  EXPECT_THAT(settings().xColumns, ElementsAre(0));
}

TEST_F(LinePlotDataTest, NamesOfASecondRecordComeBehindThoseOfTheFirst)
{
  container.setLinePlotData(&data);
  container.setLinePlotData(&data);
  EXPECT_THAT(container.typedColumnNames, SizeIs(4));
  EXPECT_EQ(table()->GetNumberOfColumns(), 3);
}

TEST_F(LinePlotDataTest, AStackedRecordComesBackWithAnUpdate)
{
  container.setLinePlotTable(makeScan({}), false);
  container.setLinePlotData(&data);
  ASSERT_NE(container.linePlotTable.get(), nullptr);
  container.updateFromLinePlotTable(false);
  EXPECT_EQ(table()->GetNumberOfRows(), 9);
}

TEST_F(LinePlotDataTest, WorksInAStyleThatReleasedThePlainChart)
{
  container.setPlotData(makeTable({{"a", {1, 2}}, {"b", {1, 2}}}));
  container.setPlotStyle(scatterPlot3D);
  container.setLinePlotData(&data);
  Items items{{Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  ASSERT_NE(container.chartXY, nullptr);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(LinePlotDataTest, AdditionalDataIsACopiedSideTable)
{
  container.setLinePlotData(&data);
  settings().xColumns = {1};
  container.setLinePlotDataAsAdditionalData(&data);
  a[0] = 99;
  ASSERT_THAT(container.tables, SizeIs(1));
  EXPECT_STREQ(container.tables[0]->GetColumnName(0), "Time [s]");
  EXPECT_EQ(container.tables[0]->GetValueByName(0, "Molecule: A").ToDouble(), 5);
  EXPECT_THAT(settings().xColumns, ElementsAre(1));
  EXPECT_THAT(container.typedColumnNames, SizeIs(2));
}

TEST_F(LinePlotDataTest, NoRecordIsIgnored)
{
  auto before = container.plotData;
  container.setLinePlotData(nullptr);
  container.setLinePlotDataAsAdditionalData(nullptr);
  container.setLinePlotTableAsAdditionalData(nullptr);
  container.setLinePlotItems(nullptr);
  EXPECT_EQ(container.plotData, before);
  EXPECT_THAT(container.tables, IsEmpty());
}

struct LinePlotItemsTest : LinePlotDataTest
{
  LinePlotItemsTest() { container.setLinePlotData(&data); }
};

TEST_F(LinePlotItemsTest, EachItemIsALineOverTime)
{
  Items items{{Kestrane::Complex, "B"}, {Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  for (int i = 0; i < 2; ++i) {
    EXPECT_STREQ(chart()->GetPlot(i)->GetClassName(), "vtkPlotLine");
    EXPECT_EQ(drawnColumn(chart()->GetPlot(i), 0), "Time [s]");
  }
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "Complex: B");
  EXPECT_EQ(drawnColumn(chart()->GetPlot(1), 1), "Molecule: A");
  EXPECT_TRUE(vtkChartXY::SafeDownCast(chart())->GetForceAxesToBounds());
}

TEST_F(LinePlotItemsTest, ColoursComeFromTheWildFlowerSeriesAndRepeat)
{
  vtkNew<vtkColorSeries> series;
  series->SetColorScheme(vtkColorSeries::WILD_FLOWER);
  int const colors = series->GetNumberOfColors();
  Items items(colors + 2, {Kestrane::Molecule, "A"});
  container.setLinePlotItems(&items);
  ASSERT_EQ(chart()->GetNumberOfPlots(), colors + 2);
  for (int i = 0; i < colors + 2; ++i) {
    vtkColor3ub const color = series->GetColor(i % colors);
    EXPECT_EQ(penColor(chart()->GetPlot(i)), (Color{color[0], color[1], color[2], 255})) << i;
  }
}

TEST_F(LinePlotItemsTest, AnItemWithoutAColumnDrawsNothing)
{
  Items items{{Kestrane::Molecule, "B"}, {Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "");
  RecordingPainter recorder;
  paint(recorder);
  int lines = 0;
  for (Stroke const& line : recorder.polyLines())
    if (line.points.size() == 3) ++lines;
  EXPECT_EQ(lines, 1);
}

TEST_F(LinePlotItemsTest, ItemsReplaceEachOtherAndAnEmptyListClears)
{
  Items items{{Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  container.setLinePlotItems(&items);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
  items.clear();
  container.setLinePlotItems(&items);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 0);
}

TEST_F(LinePlotItemsTest, StyleColumnsAndTitleStay)
{
  settings().plotTitle = "mine";
  Items items{{Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  EXPECT_EQ(settings().plotTitle, "mine");
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
}

TEST_F(LinePlotItemsTest, ATableWithoutColumnsDoesNotBreakIt)
{
  container.setPlotData(vtkSmartPointer<vtkTable>::New());
  Items items{{Kestrane::Molecule, "A"}};
  container.setLinePlotItems(&items);
  RecordingPainter recorder;
  paint(recorder);
  settings().xColumns = {99};
  container.setLinePlotItems(&items);
  settings().xColumns = {};
  container.setLinePlotItems(&items);
}

} // namespace
} // namespace runsieve::test
