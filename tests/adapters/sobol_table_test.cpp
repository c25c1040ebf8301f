#include "support/SobolRecord.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <QSignalSpy>
#include <vtkFloatArray.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The table and the title that a Sobol result leaves.
struct SobolTableTest : SobolPlot
{
  [[nodiscard]] vtkTable* table() { return container.plotData; }
  std::vector<double> column(char const* name) { return numbers(table(), name); }
};

auto floats(std::vector<double> const& values)
{
  std::vector<testing::Matcher<double>> same;
  for (double value : values)
    same.push_back(testing::NanSensitiveDoubleEq(static_cast<double>(static_cast<float>(value))));
  return testing::ElementsAreArray(same);
}

TEST_F(SobolTableTest, BarsHaveAColumnPerParameterAndTheLabelsLast)
{
  vtkSmartPointer<vtkTable> former = table();
  setBars();
  EXPECT_NE(table(), former);
  ASSERT_THAT(columnNames(table()), ElementsAre("k1", "k2", "k3", "Name"));
  for (int p = 0; p < 3; ++p) EXPECT_TRUE(table()->GetColumn(p)->IsA("vtkFloatArray"));
  EXPECT_TRUE(table()->GetColumn(3)->IsA("vtkStringArray"));
}

TEST_F(SobolTableTest, OnlyMoleculesAndPatternsHaveABarAndNeverTheLastSpecies)
{
  setBars();
  EXPECT_THAT(strings(table()->GetColumnByName("Name")),
              ElementsAre("Molecule: A", "Pattern: P", "Complex With Molecule: C"));
  EXPECT_EQ(table()->GetNumberOfRows(), 3);
}

TEST_F(SobolTableTest, SpeciesOfAllOtherTypesAreLeftOut)
{
  record.setSpecies({{Kestrane::Parameter, "k"},
                     {Kestrane::UndefinedType, "u"},
                     {static_cast<Kestrane::DataType>(7), "seven"},
                     {static_cast<Kestrane::DataType>(-1), "minus"},
                     {Kestrane::Pattern, "P"},
                     {Kestrane::Complex, "B"},
                     {Kestrane::Molecule, "last"}});
  setBars();
  EXPECT_THAT(strings(table()->GetColumnByName("Name")), ElementsAre("Pattern: P"));
}

TEST_F(SobolTableTest, BarsAreTheIndicesOfFirstOrderAtOneTime)
{
  setBars(false, 1);
  EXPECT_THAT(column("k1"), floats({0.111, 0.211, 0.411}));
  EXPECT_THAT(column("k3"), floats({0.113, 0.213, 0.413}));
  setBars(false, 2);
  EXPECT_THAT(column("k1"), floats({0.121, 0.221, 0.421}));
}

TEST_F(SobolTableTest, BarsCanBeTheIndicesOfTotalOrder)
{
  setBars(true, 0);
  EXPECT_THAT(column("k2"), floats({1.02, 2.02, 4.02}));
}

TEST_F(SobolTableTest, BarsIgnoreTheSpeciesIndex)
{
  setStyle(barPlot);
  container.setSobolPostprocessResult(&record.result, true, false, 1, 99);
  EXPECT_THAT(column("k1"), floats({0.111, 0.211, 0.411}));
}

TEST_F(SobolTableTest, AnAreaHasAColumnPerParameterAndTheTimesLast)
{
  setArea();
  ASSERT_THAT(columnNames(table()), ElementsAre("k1", "k2", "k3", "Time"));
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(table()->GetColumn(i)->IsA("vtkFloatArray"));
  EXPECT_THAT(column("Time"), ElementsAre(0, 12.5, 50));
}

TEST_F(SobolTableTest, AnAreaIsOneSpeciesOverTime)
{
  setArea(false, 1);
  EXPECT_THAT(column("k1"), floats({0.101, 0.111, 0.121}));
  EXPECT_THAT(column("k3"), floats({0.103, 0.113, 0.123}));
  setArea(true, 0);
  EXPECT_THAT(column("k2"), floats({0.02, 0.12, 0.22}));
}

TEST_F(SobolTableTest, AnAreaIgnoresTheTimeIndex)
{
  setStyle(stackedPlot);
  container.setSobolPostprocessResult(&record.result, false, false, 99, 1);
  EXPECT_THAT(column("k1"), floats({0.101, 0.111, 0.121}));
}

TEST_F(SobolTableTest, TimesAreNarrowedToFloat)
{
  record.times[1] = 0.1;
  setArea();
  EXPECT_EQ(column("Time")[1], static_cast<double>(0.1f));
}

TEST_F(SobolTableTest, NegativeIndicesCountAsZero)
{
  record.first[1][1] = {-0.2, 0.5, -1e-9};
  setBars(false, 1);
  EXPECT_EQ(column("k1")[0], 0.0);
  EXPECT_EQ(column("k2")[0], 0.5);
  EXPECT_EQ(column("k3")[0], 0.0);
  setArea(false, 1);
  EXPECT_EQ(column("k1")[1], 0.0);
}

TEST_F(SobolTableTest, UndefinedIndicesStayUndefined)
{
  record.first[1][1][0] = notANumber;
  setBars(false, 1);
  EXPECT_THAT(column("k1"), floats({notANumber, 0.211, 0.411}));
  setArea(false, 1);
  EXPECT_THAT(column("k1"), floats({0.101, notANumber, 0.121}));
}

TEST_F(SobolTableTest, ASingleSpeciesLeavesTheBarsEmpty)
{
  record.setSpecies({{Kestrane::Molecule, "A"}});
  setBars();
  ASSERT_THAT(columnNames(table()), ElementsAre("k1", "k2", "k3", "Name"));
  EXPECT_EQ(table()->GetNumberOfRows(), 0);
  EXPECT_THAT(column("k1"), IsEmpty());
  EXPECT_THAT(strings(table()->GetColumnByName("Name")), IsEmpty());
}

TEST_F(SobolTableTest, TheNumberOfParametersIsThatOfTheNominalValues)
{
  record.result.parameters = {1, 2};
  setBars();
  EXPECT_THAT(columnNames(table()), ElementsAre("k1", "k2", "Name"));
}

TEST_F(SobolTableTest, MissingEntriesAreUndefined)
{
  record.first[1][1] = {0.5};
  record.first[2].resize(1);
  record.first.resize(4);
  setBars(false, 1);
  EXPECT_THAT(column("k1"), floats({0.5, notANumber, notANumber}));
  EXPECT_THAT(column("k2"), floats({notANumber, notANumber, notANumber}));
  setArea(false, 1);
  EXPECT_THAT(column("k2"), floats({0.102, notANumber, 0.122}));
  setArea(false, 4);
  EXPECT_THAT(column("k1"), floats({notANumber, notANumber, notANumber}));
}

TEST_F(SobolTableTest, AParameterNamedLikeTheLabelsGivesWayToThem)
{
  record.result.parameterNames = {"k1", "Name", "Time"};
  setBars();
  EXPECT_THAT(columnNames(table()), ElementsAre("k1", "Name", "Time"));
  EXPECT_THAT(strings(table()->GetColumnByName("Name")), SizeIs(3));
  setArea();
  EXPECT_THAT(columnNames(table()), ElementsAre("k1", "Name", "Time"));
  EXPECT_THAT(column("Time"), ElementsAre(0, 12.5, 50));
}

TEST_F(SobolTableTest, TheTitleOfBarsTellsOrderAndTime)
{
  settings().plotTitle = "before";
  setBars(true, 1);
  EXPECT_EQ(settings().plotTitle, "Total Sensitivities at t= 12.5 s");
  setBars(false, 2);
  EXPECT_EQ(settings().plotTitle, "Sensitivities at t= 50 s");
  record.times[2] = 1234567.0;
  setBars(false, 2);
  EXPECT_EQ(settings().plotTitle, "Sensitivities at t= 1.23457e+06 s");
}

TEST_F(SobolTableTest, TheTitleOfAnAreaTellsOrderAndSpeciesOfAnyType)
{
  setArea(false, 1);
  EXPECT_EQ(settings().plotTitle, "Sensitivity of Molecule: A");
  setArea(true, 4);
  EXPECT_EQ(settings().plotTitle, "Total Sensitivity of Complex With Molecule: C");
  setArea(false, 0);
  EXPECT_EQ(settings().plotTitle, "Sensitivity of Complex: B");
  setArea(false, 3);
  EXPECT_EQ(settings().plotTitle, "Sensitivity of : Time [s]");
  setArea(false, 5);
  EXPECT_EQ(settings().plotTitle, "Sensitivity of Molecule: last");
}

TEST_F(SobolTableTest, WhatDescribedTheFormerTableIsNotTouched)
{
  container.typedColumnNames = {{Kestrane::Parameter, "k"}};
  container.parameterBounds = {{1, 2}};
  container.tables = {vtkSmartPointer<vtkTable>::New()};
  auto lines = boost::make_shared<LinePlotTable>();
  container.linePlotTable = lines;
  settings().parameterColumns = {4, 5};
  settings().xColumns = {7};
  settings().yColumns = {8, 9};
  settings().zColumns = {10};
  setBars();
  setArea();
  EXPECT_THAT(container.typedColumnNames, SizeIs(1));
  EXPECT_THAT(container.parameterBounds, SizeIs(1));
  EXPECT_THAT(container.tables, SizeIs(1));
  EXPECT_EQ(container.linePlotTable, lines);
  EXPECT_THAT(settings().parameterColumns, ElementsAre(4, 5));
  EXPECT_THAT(settings().xColumns, ElementsAre(7));
  EXPECT_THAT(settings().yColumns, ElementsAre(8, 9));
  EXPECT_THAT(settings().zColumns, ElementsAre(10));
}

TEST_F(SobolTableTest, SetsNoStyleAndAnnouncesNothing)
{
  QSignalSpy announced(container.metaData, &PlotMetaData::redrawNeeded);
  container.setSobolPostprocessResult(&record.result, true, false, 0, 0);
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
  EXPECT_EQ(announced.count(), 0);
  EXPECT_FALSE(settings().signalsBlocked());
}

/// What cannot be shown changes nothing.
struct SobolFaultTest : SobolTableTest
{
  void expectNoEffect(SobolPostProcessResult* result, bool atSingleTime, std::size_t time,
                      std::size_t species)
  {
    setBars();
    vtkSmartPointer<vtkTable> const table = container.plotData;
    vtkSmartPointer<vtkChart> const chart = container.chartXY;
    std::string const title = settings().plotTitle;
    container.setSobolPostprocessResult(result, atSingleTime, false, time, species);
    EXPECT_EQ(container.plotData, table);
    EXPECT_EQ(container.chartXY, chart);
    EXPECT_EQ(settings().plotTitle, title);
    EXPECT_FALSE(settings().signalsBlocked());
  }
};

TEST_F(SobolFaultTest, IndicesOutsideHaveNoEffect)
{
  expectNoEffect(&record.result, true, 3, 0);
  expectNoEffect(&record.result, true, std::numeric_limits<std::size_t>::max(), 0);
  expectNoEffect(&record.result, false, 0, 6);
  expectNoEffect(&record.result, false, 0, std::numeric_limits<std::size_t>::max());
}

TEST_F(SobolFaultTest, ANullResultHasNoEffect)
{
  expectNoEffect(nullptr, true, 0, 0);
  expectNoEffect(nullptr, false, 0, 0);
}

TEST_F(SobolFaultTest, AMissingBlockHasNoEffect)
{
  SobolPostProcessResult broken = record.result;
  broken.sensitivities = nullptr;
  expectNoEffect(&broken, true, 0, 0);
  expectNoEffect(&broken, false, 0, 0);
}

TEST_F(SobolFaultTest, MissingTimesHaveNoEffect)
{
  SobolPostProcessResult broken = record.result;
  broken.times = nullptr;
  expectNoEffect(&broken, true, 0, 0);
  expectNoEffect(&broken, false, 0, 0);
}

TEST_F(SobolFaultTest, TheBlockOfTheOtherOrderMayBeMissing)
{
  record.result.totalSensitivities = nullptr;
  setBars(false, 1);
  EXPECT_THAT(column("k1"), floats({0.111, 0.211, 0.411}));
}

} // namespace
} // namespace runsieve::test
