#include "support/FitRecord.h"

#include <gmock/gmock.h>
#include <QSignalSpy>

#include <limits>

using testing::DoubleEq;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;
using testing::SizeIs;

namespace runsieve::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The table of residuals, or of predictions and observations, and what becomes of the predictions.
struct ResidualTableTest : FitRecord
{
  std::vector<double> column(char const* name) { return numbers(container.plotData, name); }
};

TEST_F(ResidualTableTest, ATimeCourseHasTheTimesAndAColumnOfResidualsPerSeries)
{
  set();
  ASSERT_THAT(columnNames(container.plotData), ElementsAre("Time", "Residual A 0", "Residual B 1"));
  EXPECT_THAT(column("Time"), ElementsAre(0, 1, 2));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(container.plotData->GetColumn(i)->IsA("vtkFloatArray"));
}

TEST_F(ResidualTableTest, CurvesHaveTwoColumnsPerSeries)
{
  set(true);
  ASSERT_THAT(columnNames(container.plotData),
              ElementsAre("Time", "Prediction A 0", "Observation A 0", "Prediction B 1", "Observation B 1"));
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(container.plotData->GetColumn(i)->IsA("vtkFloatArray"));
}

TEST_F(ResidualTableTest, OtherFitsHaveNoTimes)
{
  for (int type : {0, 2, -1, 1000}) {
    fit.type = type;
    set();
    EXPECT_THAT(columnNames(container.plotData), ElementsAre("Residual A 0", "Residual B 1"));
    set(true);
    EXPECT_THAT(columnNames(container.plotData),
                ElementsAre("Prediction A 0", "Observation A 0", "Prediction B 1", "Observation B 1"));
  }
}

TEST_F(ResidualTableTest, SeriesOfOneNameAreToldApartByTheirNumber)
{
  fit.seriesNames = {{Kestrane::Molecule, "A"}, {Kestrane::Complex, "A"}};
  set();
  EXPECT_THAT(columnNames(container.plotData), ElementsAre("Time", "Residual A 0", "Residual A 1"));
}

TEST_F(ResidualTableTest, AResidualIsTheObservationLessThePrediction)
{
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(1, 2, 5));
  EXPECT_THAT(column("Residual B 1"), ElementsAre(1, 2, -7));
}

TEST_F(ResidualTableTest, ScaledResidualsAreDividedByTheErrors)
{
  set(false, true);
  EXPECT_THAT(column("Residual A 0"), ElementsAre(2, 1, 1.25));
  EXPECT_THAT(column("Residual B 1"), ElementsAre(1, 2, -3.5));
}

TEST_F(ResidualTableTest, CurvesAreNeverScaledByErrors)
{
  set(true, true);
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(1, 2, 3));
  EXPECT_THAT(column("Observation A 0"), ElementsAre(2, 4, 8));
}

TEST_F(ResidualTableTest, TheGlobalScaleMultipliesTheObservations)
{
  fit.globalScale = 0.5;
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(0, 0, 1));
  set(true);
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(1, 2, 3));
  EXPECT_THAT(column("Observation A 0"), ElementsAre(1, 2, 4));
}

TEST_F(ResidualTableTest, AFittedGlobalScaleGoesBeforeTheStatedOne)
{
  fit.globalScale = 0.5;
  fit.fitGlobalScale = true;
  run.fittedParameters["Global Scale"] = 0.1f;
  fit.observations[0] = {1e6, 2, 3};
  set(true);
  EXPECT_THAT(column("Observation A 0").front(), static_cast<float>(1e6 * static_cast<double>(0.1f)));
  fit.fitGlobalScale = false;
  set(true);
  EXPECT_THAT(column("Observation A 0"), ElementsAre(5e5, 1, 1.5));
}

TEST_F(ResidualTableTest, AMissingFittedGlobalScaleLeavesTheStatedOne)
{
  fit.globalScale = 0.5;
  fit.fitGlobalScale = true;
  run.fittedParameters["global scale"] = 7.0f;
  testing::internal::CaptureStdout();
  set(true);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_THAT(column("Observation A 0"), ElementsAre(1, 2, 4));
}

TEST_F(ResidualTableTest, TheDifferenceIsTakenInDoublePrecision)
{
  fit.observations[0] = {1e9 + 1, 1e9 + 2, 1e9 + 3};
  predictions[0] = {1e9, 1e9, 1e9};
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(1, 2, 3));
  fit.observations[0] = {0.3, 0, 0};
  set(true);
  EXPECT_EQ(column("Observation A 0")[0], static_cast<double>(0.3f)) << "stored as float";
}

TEST_F(ResidualTableTest, NormalizationDividesThePredictionsInPlace)
{
  fit.normalizeToPoint = true;
  fit.normalizationIndex = 1;
  set(true);
  EXPECT_THAT(predictions[0], ElementsAre(0.5, 1, 1.5));
  EXPECT_THAT(predictions[1], ElementsAre(DoubleEq(0.5), DoubleEq(1), DoubleEq(2)));
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(0.5, 1, 1.5));
  EXPECT_THAT(column("Observation A 0"), ElementsAre(2, 4, 8)) << "observations stay";
}

TEST_F(ResidualTableTest, NormalizationPassesOverEmptyVectors)
{
  fit.normalizeToPoint = true;
  predictions[0].clear();
  set();
  EXPECT_THAT(predictions[0], IsEmpty());
  EXPECT_THAT(predictions[1], ElementsAre(DoubleEq(1), DoubleEq(2), DoubleEq(4)));
}

TEST_F(ResidualTableTest, ANormalizationIndexOutsideAVectorSkipsThatVector)
{
  fit.normalizeToPoint = true;
  fit.normalizationIndex = 2;
  predictions[0] = {1, 2};
  set();
  EXPECT_THAT(predictions[0], ElementsAre(1, 2));
  EXPECT_THAT(predictions[1], ElementsAre(DoubleEq(0.25), DoubleEq(0.5), DoubleEq(1)));
  fit.normalizationIndex = -1;
  std::vector<std::vector<double>> const before = predictions;
  set();
  EXPECT_EQ(predictions, before);
}

TEST_F(ResidualTableTest, ASecondCallNormalizesTheChangedPredictionsAgain)
{
  fit.normalizeToPoint = true;
  predictions[0] = {2, 4, 8};
  set();
  ASSERT_THAT(predictions[0], ElementsAre(1, 2, 4));
  fit.normalizationIndex = 2;
  set(true);
  EXPECT_THAT(predictions[0], ElementsAre(0.25, 0.5, 1));
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(0.25, 0.5, 1));
}

TEST_F(ResidualTableTest, APredictionOfZeroAtTheNormalizationPassesOn)
{
  fit.normalizeToPoint = true;
  predictions[0] = {0, 1, -1};
  set(true);
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(IsNan(), infinity, -infinity));
}

TEST_F(ResidualTableTest, AnErrorOfZeroPassesOn)
{
  fit.observationErrors[0] = {0, 0, 0};
  predictions[0] = {1, 5, 8};
  set(false, true);
  EXPECT_THAT(column("Residual A 0"), ElementsAre(infinity, -infinity, IsNan()));
}

TEST_F(ResidualTableTest, StandardizedSeriesHaveAScaleOfOneAndAreNotNormalized)
{
  fit.standardizeSeries = true;
  fit.normalizeToPoint = true;
  fit.fitGlobalScale = true;
  fit.globalScale = 3;
  run.fittedParameters["Global Scale"] = 5.0f;
  set(true);
  EXPECT_THAT(predictions[0], ElementsAre(DoubleEq(-1), DoubleEq(0), DoubleEq(1)));
  EXPECT_THAT(column("Prediction A 0"), ElementsAre(-1, 0, 1));
  EXPECT_THAT(column("Observation A 0"), ElementsAre(2, 4, 8));
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(3, 4, 7));
}

TEST_F(ResidualTableTest, WithoutPreparationThePredictionsStay)
{
  std::vector<std::vector<double>> const before = predictions;
  set();
  set(true, true);
  EXPECT_EQ(predictions, before);
}

TEST_F(ResidualTableTest, AnEmptySeriesStillHasItsColumns)
{
  fit.observations[1].clear();
  predictions[1].clear();
  set();
  EXPECT_THAT(columnNames(container.plotData), ElementsAre("Time", "Residual A 0", "Residual B 1"));
  EXPECT_THAT(column("Residual B 1"), IsEmpty());
  fit.observations[0].clear();
  predictions[0].clear();
  set(true);
  EXPECT_THAT(columnNames(container.plotData), SizeIs(5));
  EXPECT_THAT(column("Prediction A 0"), IsEmpty());
  fit.type = FitSettings::steadyState;
  set();
  EXPECT_THAT(columnNames(container.plotData), ElementsAre("Residual A 0", "Residual B 1"));
}

TEST_F(ResidualTableTest, SeriesMayHaveDifferentLengths)
{
  fit.observations[0] = {2, 4, 8, 16};
  fit.observations[1] = {11};
  predictions = {{1, 2, 3, 4}, {10}};
  set(true);
  EXPECT_THAT(columnNames(container.plotData), SizeIs(5));
  EXPECT_THAT(column("Time"), ElementsAre(0, 1, 2));
  EXPECT_THAT(column("Observation A 0"), ElementsAre(2, 4, 8, 16));
  EXPECT_THAT(column("Observation B 1"), ElementsAre(11));
}

TEST_F(ResidualTableTest, MissingPredictionsAndErrorsAreUndefined)
{
  predictions = {{1, 2}};
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(1, 2, IsNan()));
  EXPECT_THAT(column("Residual B 1"), testing::AllOf(SizeIs(3), testing::Each(IsNan())));
  predictions = {{1, 2, 3}, {10, 20, 40}};
  fit.observationErrors = {{0.5}};
  set(false, true);
  EXPECT_THAT(column("Residual A 0"), ElementsAre(2, IsNan(), IsNan()));
  EXPECT_THAT(column("Residual B 1"), testing::AllOf(SizeIs(3), testing::Each(IsNan())));
}

TEST_F(ResidualTableTest, UndefinedValuesPassOn)
{
  fit.observations[0][1] = notANumber;
  set();
  EXPECT_THAT(column("Residual A 0"), ElementsAre(1, IsNan(), 5));
}

TEST_F(ResidualTableTest, EachCallMakesANewTable)
{
  set();
  vtkSmartPointer<vtkTable> former = container.plotData;
  set(true);
  EXPECT_NE(container.plotData, former);
  EXPECT_EQ(former->GetNumberOfColumns(), 3);
}

TEST_F(ResidualTableTest, WhatDescribedTheFormerTableIsNotTouched)
{
  container.typedColumnNames = {{Kestrane::Parameter, "k"}};
  container.tables = {vtkSmartPointer<vtkTable>::New()};
  settings().parameterColumns = {4, 5};
  settings().xColumns = {7};
  settings().yColumns = {8, 9};
  settings().zColumns = {10};
  set();
  EXPECT_THAT(container.typedColumnNames, SizeIs(1));
  EXPECT_THAT(container.tables, SizeIs(1));
  EXPECT_THAT(settings().parameterColumns, ElementsAre(4, 5));
  EXPECT_THAT(settings().xColumns, ElementsAre(7));
  EXPECT_THAT(settings().yColumns, ElementsAre(8, 9));
  EXPECT_THAT(settings().zColumns, ElementsAre(10));
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
}

TEST_F(ResidualTableTest, AnnouncesNothing)
{
  QSignalSpy announced(container.metaData, &PlotMetaData::redrawNeeded);
  set();
  EXPECT_EQ(announced.count(), 0);
  EXPECT_FALSE(settings().signalsBlocked());
}

} // namespace
} // namespace runsieve::test
