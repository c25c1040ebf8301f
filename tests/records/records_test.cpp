#include <runsieve/records/CoordinateWindow.h>
#include <runsieve/records/DataType.h>
#include <runsieve/records/LinePlotData.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/ParameterSelection.h>
#include <runsieve/records/plotStyles.h>
#include <runsieve/records/ReducedMetaData.h>

#include <gmock/gmock.h>

#include <boost/unordered_map.hpp>

#include <type_traits>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

TEST(PlotStylesTest, NumbersTravelInFiles)
{
  EXPECT_EQ(scatterPlot, 0);
  EXPECT_EQ(barPlot, 1);
  EXPECT_EQ(stackedPlot, 2);
  EXPECT_EQ(scatterPlotMatrixStyle, 3);
  EXPECT_EQ(scatterPlot3D, 4);
  EXPECT_EQ(multiPlot, 5);
  EXPECT_EQ(selectionCdfPlot, 6);
  EXPECT_EQ(scatterPlotWithErrorBars, 7);
  EXPECT_EQ(fitParameterDistributionPlot, 8);
  EXPECT_EQ(parallelCoordinatesPlot, 9);
  EXPECT_EQ(sizeof(plotStyles), 4u);
}

TEST(DataTypeTest, NumbersTravelInFiles)
{
  EXPECT_EQ(Kestrane::Complex, 0);
  EXPECT_EQ(Kestrane::Molecule, 1);
  EXPECT_EQ(Kestrane::ComplexWithMolecule, 2);
  EXPECT_EQ(Kestrane::Pattern, 3);
  EXPECT_EQ(Kestrane::Unnamed, 4);
  EXPECT_EQ(Kestrane::Parameter, 5);
  EXPECT_EQ(Kestrane::UndefinedType, 6);
  EXPECT_EQ(sizeof(Kestrane::DataType), 4u);
}

TEST(ReducedMetaDataTest, EqualKeysFindTheSameWindow)
{
  boost::unordered_map<ReducedMetaData, CoordinateWindow> windows;
  windows[{1, 2, scatterPlot}].xMin = 7.0;
  EXPECT_DOUBLE_EQ(windows[(ReducedMetaData{1, 2, scatterPlot})].xMin, 7.0);
  EXPECT_EQ(hash_value(ReducedMetaData{1, 2, scatterPlot}), hash_value(ReducedMetaData{1, 2, scatterPlot}));
}

TEST(ReducedMetaDataTest, EachFieldTellsKeysApart)
{
  ReducedMetaData const key{1, 2, scatterPlot};
  boost::unordered_map<ReducedMetaData, int> seen{{key, 0}};
  for (ReducedMetaData other :
       {ReducedMetaData{3, 2, scatterPlot}, ReducedMetaData{1, 3, scatterPlot},
        ReducedMetaData{1, 2, selectionCdfPlot}, ReducedMetaData{2, 1, scatterPlot}}) {
    EXPECT_FALSE(key == other);
    EXPECT_EQ(seen.count(other), 0u);
  }
}

TEST(CoordinateWindowTest, IsNotValidUntilStored)
{
  EXPECT_FALSE(CoordinateWindow{}.valid);
  CoordinateWindow const window{1, 2, 3, 4, true};
  EXPECT_DOUBLE_EQ(window.xMin, 1);
  EXPECT_DOUBLE_EQ(window.yMin, 2);
  EXPECT_DOUBLE_EQ(window.xMax, 3);
  EXPECT_DOUBLE_EQ(window.yMax, 4);
}

TEST(ParameterSelectionTest, StartsEmptyAndKeepsRunsAscending)
{
  ParameterSelection selection;
  EXPECT_TRUE(selection.selectedRuns.empty());
  EXPECT_TRUE(selection.sourceName.empty());
  EXPECT_TRUE(selection.selectionName.empty());
  EXPECT_EQ(selection.sourceId, 0);
  selection.selectedRuns = {5, 1, 3, 1};
  EXPECT_THAT(selection.selectedRuns, ElementsAre(1, 3, 5));
}

TEST(LinePlotTableTest, OwnsTheColumnsItMakes)
{
  LinePlotTable table;
  table.trajectoryCount = 3;
  table.trajectoryLength = 4;
  EXPECT_EQ(table.rows(), 12u);
  double* values = table.addColumn(Kestrane::Parameter, "k1");
  values[11] = 5.0;
  ASSERT_EQ(table.columnData.size(), 1u);
  EXPECT_EQ(table.columnData[0], values);
  EXPECT_EQ(table.columnNames[0], Kestrane::TypedConcentrationName(Kestrane::Parameter, "k1"));
  EXPECT_FALSE(std::is_copy_constructible_v<LinePlotTable>) << "plots borrow its arrays";
}

TEST(LinePlotTableTest, TakesColumnsThatTheHostKeeps)
{
  double hosts[2] = {1, 2};
  LinePlotTable table;
  table.trajectoryCount = 1;
  table.trajectoryLength = 2;
  table.columnNames.emplace_back(Kestrane::Molecule, "A");
  table.columnData.push_back(hosts);
  EXPECT_EQ(table.columnData[0][1], 2.0);
}

TEST(LinePlotDataTest, FindsASeriesByTypeAndName)
{
  std::vector<double> a{1, 2};
  std::vector<double> b{3, 4};
  LinePlotData data;
  data.series[{Kestrane::Molecule, "A"}] = &a;
  data.series[{Kestrane::Complex, "A"}] = &b;
  EXPECT_EQ(data.times, nullptr);
  EXPECT_EQ(data.series.size(), 2u);
  EXPECT_EQ(data.series.at({Kestrane::Complex, "A"}), &b);
}

} // namespace
} // namespace runsieve::test
