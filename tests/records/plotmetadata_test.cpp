#include <runsieve/records/PlotMetaData.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <functional>

using testing::ElementsAre;
using testing::SizeIs;

namespace runsieve::test {
namespace {

struct PlotMetaDataTest : testing::Test
{
  PlotMetaData settings;
  QSignalSpy changes{&settings, &PlotMetaData::redrawNeeded};
};

TEST_F(PlotMetaDataTest, ANewRecordCanBeDrawnAtOnce)
{
  EXPECT_THAT(settings.xColumns, SizeIs(1));
  EXPECT_THAT(settings.yColumns, SizeIs(1));
  EXPECT_THAT(settings.zColumns, SizeIs(1));
  EXPECT_EQ(settings.getPlotStyle(), scatterPlot);
  EXPECT_TRUE(settings.useSolidColor) << "no column needs to be of any type";
  EXPECT_TRUE(settings.parameterColumns.empty());
  EXPECT_FALSE(settings.rankedParametersValid);
  EXPECT_FALSE(settings.coordinateWindow.valid);
  EXPECT_FALSE(settings.getPlotLine());
  EXPECT_DOUBLE_EQ(settings.getPThreshold(), 0.05);
}

/// A setting that is drawn: how to change it, and what it reads as afterwards.
struct Setting
{
  char const* name;
  std::function<void(PlotMetaData&)> change;
  std::function<bool(PlotMetaData const&)> changed;
};

std::vector<Setting> const drawnSettings{
    {"style", [](auto& s) { s.setPlotStyle(scatterPlot3D); },
     [](auto& s) { return s.getPlotStyle() == scatterPlot3D; }},
    {"lines", [](auto& s) { s.setPlotLine(true); }, [](auto& s) { return s.getPlotLine(); }},
    {"log x", [](auto& s) { s.setLogX(true); }, [](auto& s) { return s.getLogX(); }},
    {"column visibility", [](auto& s) { s.setLimitColumVisibility(true); },
     [](auto& s) { return s.getLimitColumVisibility(); }},
    {"p threshold", [](auto& s) { s.setPThreshold(0.2); }, [](auto& s) { return s.getPThreshold() == 0.2; }},
    {"statistic threshold", [](auto& s) { s.setKsThreshold(0.3); },
     [](auto& s) { return s.getKsThreshold() == 0.3; }},
    {"density", [](auto& s) { s.setUseDensity(true); }, [](auto& s) { return s.getUseDensity(); }},
    {"common scale", [](auto& s) { s.setCommonDensityScale(true); },
     [](auto& s) { return s.getCommonDensityScale(); }},
    {"quantiles", [](auto& s) { s.setShowQuantiles(true); }, [](auto& s) { return s.getShowQuantiles(); }},
    {"log parameter axes", [](auto& s) { s.setLogParameterAxes(true); },
     [](auto& s) { return s.getLogParameterAxes(); }},
};

TEST_F(PlotMetaDataTest, AChangeOfWhatIsDrawnIsStoredAndAnnouncedOnce)
{
  int announced = 0;
  for (Setting const& setting : drawnSettings) {
    EXPECT_FALSE(setting.changed(settings)) << setting.name;
    setting.change(settings);
    EXPECT_TRUE(setting.changed(settings)) << setting.name;
    EXPECT_EQ(changes.count(), ++announced) << setting.name;
  }
}

TEST_F(PlotMetaDataTest, AnEqualValueAnnouncesNothing)
{
  for (Setting const& setting : drawnSettings) setting.change(settings);
  int const announced = changes.count();
  for (Setting const& setting : drawnSettings) setting.change(settings);
  EXPECT_EQ(changes.count(), announced);
}

TEST_F(PlotMetaDataTest, StrideAndLineWidthAreNeverAnnounced)
{
  settings.setStride(7);
  settings.setLineWidth(2.5);
  EXPECT_EQ(settings.getStride(), 7);
  EXPECT_DOUBLE_EQ(settings.getLineWidth(), 2.5);
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(PlotMetaDataTest, HeldBackSignalsAreLost)
{
  settings.blockSignals(true);
  settings.setPlotLine(true);
  settings.blockSignals(false);
  EXPECT_EQ(changes.count(), 0);
  EXPECT_TRUE(settings.getPlotLine());
}

TEST_F(PlotMetaDataTest, FieldsWrittenDirectlyAnnounceNothing)
{
  settings.xColumns[0] = 3;
  settings.plotTitle = "title";
  settings.useSolidColor = false;
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(PlotMetaDataTest, ACopyHasAllSettings)
{
  for (Setting const& setting : drawnSettings) setting.change(settings);
  settings.setStride(9);
  settings.setLineWidth(4.5);
  PlotMetaData copy(settings);
  for (Setting const& setting : drawnSettings) EXPECT_TRUE(setting.changed(copy)) << setting.name;
  EXPECT_EQ(copy.getStride(), 9);
  EXPECT_DOUBLE_EQ(copy.getLineWidth(), 4.5);
}

TEST_F(PlotMetaDataTest, ACopyHasAllFields)
{
  settings.xColumns = {1, 2};
  settings.yColumns = {3, 4, 5};
  settings.zColumns = {6};
  settings.red = 11;
  settings.green = 12;
  settings.blue = 13;
  settings.alpha = 14;
  settings.markerStyle = 2;
  settings.pointSize = 8.5;
  settings.plotTitle = "title";
  settings.xLabel = "x";
  settings.yLabel = "y";
  settings.colorColumn = -1;
  settings.parameterColumns = {7, 8};
  settings.useSolidColor = false;
  settings.rankedParametersValid = true;
  settings.sourceName = "source";
  settings.sourceId = 99;
  settings.coordinateWindow = {1, 2, 3, 4, true};

  PlotMetaData copy(settings);
  EXPECT_THAT(copy.xColumns, ElementsAre(1, 2));
  EXPECT_THAT(copy.yColumns, ElementsAre(3, 4, 5));
  EXPECT_THAT(copy.zColumns, ElementsAre(6));
  EXPECT_EQ(copy.red, 11);
  EXPECT_EQ(copy.green, 12);
  EXPECT_EQ(copy.blue, 13);
  EXPECT_EQ(copy.alpha, 14);
  EXPECT_EQ(copy.markerStyle, 2);
  EXPECT_DOUBLE_EQ(copy.pointSize, 8.5);
  EXPECT_EQ(copy.plotTitle, "title");
  EXPECT_EQ(copy.xLabel, "x");
  EXPECT_EQ(copy.yLabel, "y");
  EXPECT_EQ(copy.colorColumn, -1);
  EXPECT_THAT(copy.parameterColumns, ElementsAre(7, 8));
  EXPECT_FALSE(copy.useSolidColor);
  EXPECT_TRUE(copy.rankedParametersValid);
  EXPECT_EQ(copy.sourceName, "source");
  EXPECT_EQ(copy.sourceId, 99);
  EXPECT_TRUE(copy.coordinateWindow.valid);
  EXPECT_DOUBLE_EQ(copy.coordinateWindow.xMax, 3);
}

TEST_F(PlotMetaDataTest, ACopyLivesOnItsOwn)
{
  QObject parent;
  auto* original = new PlotMetaData(&parent);
  PlotMetaData copy(*original);
  EXPECT_EQ(copy.parent(), nullptr);
  QSignalSpy originalChanges(original, &PlotMetaData::redrawNeeded);
  copy.setPlotLine(true);
  EXPECT_EQ(originalChanges.count(), 0);
  EXPECT_FALSE(original->getPlotLine());
}

} // namespace
} // namespace runsieve::test
