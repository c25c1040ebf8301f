#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

TEST(PlotColumnsTest, SetPlotColsGrowsTheListsWithTheNewColumns)
{
  PlotScene plot;
  plot.settings().xColumns = {7};
  plot.settings().yColumns = {8};
  plot.container.setPlotCols(1, 2, 3, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(7, 1, 1, 1));
  EXPECT_THAT(plot.settings().yColumns, ElementsAre(8, 2, 2, 2));
}

TEST(PlotColumnsTest, SetPlotColsReplacesAnExistingEntryAndFillsAnEmptyList)
{
  PlotScene plot;
  plot.settings().xColumns = {7, 7, 7};
  plot.settings().yColumns = {};
  plot.container.setPlotCols(1, 2, 1, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(7, 1, 7));
  EXPECT_THAT(plot.settings().yColumns, ElementsAre(2, 2));
}

TEST(PlotColumnsTest, SetPlotColsIgnoresANegativePlotIndex)
{
  PlotScene plot;
  plot.container.setPlotCols(1, 2, -1, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(0));
  EXPECT_THAT(plot.settings().yColumns, ElementsAre(0));
}

TEST(PlotColumnsTest, SetPlotColsRedrawsWithTheNewColumns)
{
  PlotScene plot;
  plot.container.setPlotData(makeTable({{"a", {1, 2}}, {"b", {3, 4}}, {"c", {5, 6}}}));
  plot.container.setPlotCols(2, 1, 0, false);
  EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 0), "c");
  EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 1), "b");
}

TEST(PlotColumnsTest, SetPlotColsRenewsQuartilesOnlyWhenAsked)
{
  PlotScene plot;
  ScanShape shape;
  shape.species = 2;
  plot.container.setLinePlotTable(makeScan(shape), false);
  plot.container.setPlotCols(2, 1, 0, false);
  EXPECT_EQ(plot.container.quartileTable, nullptr);
  plot.container.setPlotCols(2, 1, 0, true);
  ASSERT_NE(plot.container.quartileTable, nullptr);
  EXPECT_DOUBLE_EQ(plot.container.quartileTable->GetValueByName(0, "Median").ToDouble(), 110.0);
}

TEST(PlotColumnsTest, QuartilesOfAColumnOutsideTheTableAreLeftAlone)
{
  PlotScene plot;
  plot.container.setLinePlotTable(makeScan({}), false);
  plot.container.setPlotCols(1, 99, 0, true);
  EXPECT_EQ(plot.container.quartileTable, nullptr);
  plot.container.setPlotCols(1, -3, 0, true);
  EXPECT_EQ(plot.container.quartileTable, nullptr);
}

TEST(PlotColumnsTest, SetPlotColsByNameLooksTheColumnsUpInTheMainTable)
{
  PlotScene plot;
  plot.container.setPlotData(makeTable({{"a", {1}}, {"b", {2}}, {"c", {3}}}));
  plot.container.setPlotCols("c", "b", 0, -1, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(2));
  EXPECT_THAT(plot.settings().yColumns, ElementsAre(1));
}

TEST(PlotColumnsTest, SetPlotColsByNameKeepsColumnZeroForAnUnknownName)
{
  PlotScene plot;
  plot.container.setPlotData(makeTable({{"a", {1}}, {"b", {2}}}));
  plot.settings().xColumns = {1};
  testing::internal::CaptureStdout();
  plot.container.setPlotCols("nowhere", "B", 0, -1, false);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(0));
  EXPECT_THAT(plot.settings().yColumns, ElementsAre(0)) << "names are compared exactly";
}

TEST(PlotColumnsTest, SetPlotColsByNameTakesTheLastOfEqualNames)
{
  PlotScene plot;
  auto table = makeTable({{"a", {1}}, {"b", {2}}, {"c", {3}}});
  table->GetColumn(2)->SetName("a");
  plot.container.setPlotData(table);
  plot.container.setPlotCols("a", "a", 0, -1, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(2));
}

TEST(PlotColumnsTest, SetPlotColsByNameCanLookIntoASideTable)
{
  PlotScene plot;
  plot.container.setPlotData(makeTable({{"a", {1}}, {"b", {2}}, {"c", {3}}}));
  plot.container.tables = {makeTable({{"c", {1}}, {"a", {2}}}), makeTable({})};
  plot.container.setPlotCols("a", "c", 0, 0, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(1));
  plot.container.setPlotCols("a", "c", 0, 1, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(0)) << "a table without columns";
  plot.container.setPlotCols("c", "a", 0, 2, false);
  EXPECT_THAT(plot.settings().xColumns, ElementsAre(2)) << "no such side table: the main one";
}

} // namespace
} // namespace runsieve::test
