#include <runsieve/records/vtkKMeansPearson.h>
#include <runsieve/core/kernels/PearsonKMeans.h>

#include <gmock/gmock.h>
#include <vtkDoubleArray.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkKMeansStatistics.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkObject.h>
#include <vtkTable.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Those that the filter of VTK has unless told otherwise.
SearchLimits usualLimits()
{
  vtkNew<vtkKMeansStatistics> filter;
  return {filter->GetMaxNumIterations(), filter->GetTolerance()};
}

struct Curves
{
  std::size_t points;
  std::vector<double> values;

  std::size_t count() const { return values.size() / points; }
  ShapeClusters cluster(int clusters, SearchLimits limits = usualLimits(), int starts = 1) const
  {
    return clusterByShape(values.data(), count(), points, clusters, limits, starts);
  }
};

/// The same by the filter of VTK.
ShapeClusters reference(Curves const& curves, int clusters, SearchLimits limits = usualLimits())
{
  vtkNew<vtkTable> table;
  vtkNew<vtkKMeansStatistics> filter;
  for (std::size_t p = 0; p < curves.points; ++p) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(std::to_string(1000 + p).c_str());
    for (std::size_t i = 0; i < curves.count(); ++i)
      column->InsertNextValue(curves.values[i * curves.points + p]);
    table->AddColumn(column);
    filter->SetColumnStatus(column->GetName(), 1);
  }
  vtkNew<vtkKMeansPearson> distance;
  filter->RequestSelectedColumns();
  filter->SetInputData(0, table);
  filter->SetDistanceFunctor(distance);
  filter->SetAssessOption(true);
  filter->SetDefaultNumberOfClusters(clusters);
  filter->SetMaxNumIterations(limits.mostSteps);
  filter->SetTolerance(limits.tolerance);
  vtkObject::GlobalWarningDisplayOff(); // empty clusters
  filter->Update();
  vtkObject::GlobalWarningDisplayOn();

  ShapeClusters found;
  auto* assessed = vtkTable::SafeDownCast(filter->GetOutputDataObject(0));
  auto* labels = vtkIntArray::SafeDownCast(assessed->GetColumn(assessed->GetNumberOfColumns() - 1));
  for (vtkIdType i = 0; i < labels->GetNumberOfTuples(); ++i) found.labels.push_back(labels->GetValue(i));
  auto* blocks = vtkMultiBlockDataSet::SafeDownCast(filter->GetOutputDataObject(1));
  auto* model = vtkTable::SafeDownCast(blocks->GetBlock(0));
  auto* sizes = vtkIdTypeArray::SafeDownCast(model->GetColumnByName("Cardinality"));
  for (vtkIdType k = 0; k < model->GetNumberOfRows(); ++k) {
    found.sizes.push_back(sizes->GetValue(k));
    for (std::size_t p = 0; p < curves.points; ++p)
      found.centres.push_back(model->GetValueByName(k, std::to_string(1000 + p).c_str()).ToDouble());
  }
  return found;
}

/// Equal bit for bit, but for NaN.
void expectSame(ShapeClusters const& found, ShapeClusters const& wanted)
{
  EXPECT_EQ(found.labels, wanted.labels);
  EXPECT_EQ(found.sizes, wanted.sizes);
  ASSERT_EQ(found.centres.size(), wanted.centres.size());
  for (std::size_t i = 0; i < found.centres.size(); ++i) {
    if (std::isnan(wanted.centres[i]))
      EXPECT_TRUE(std::isnan(found.centres[i])) << i;
    else
      EXPECT_EQ(found.centres[i], wanted.centres[i]) << i;
  }
}

class RandomCurves : public testing::TestWithParam<unsigned>
{
protected:
  RandomCurves() : random(GetParam()) {}

  Curves make(std::size_t count, std::size_t points)
  {
    Curves curves{points, {}};
    std::normal_distribution<double> noise(0.0, 1.0);
    std::uniform_int_distribution<int> shape(0, 3);
    for (std::size_t i = 0; i < count; ++i) {
      const int kind = shape(random);
      const double size = std::exp(3.0 * noise(random));
      for (std::size_t p = 0; p < points; ++p)
        curves.values.push_back(size * (std::sin(0.3 * (kind + 1) * static_cast<double>(p)) + noise(random)));
    }
    return curves;
  }

  std::mt19937 random;
};

TEST_P(RandomCurves, GiveWhatTheFilterGives)
{
  const Curves curves = make(60, 17);
  for (int clusters : {1, 2, 5, 60}) {
    SCOPED_TRACE(clusters);
    expectSame(curves.cluster(clusters), reference(curves, clusters));
  }
}

TEST_P(RandomCurves, WithConstantOnesAndGapsGiveWhatTheFilterGives)
{
  Curves curves = make(40, 9);
  for (std::size_t i = 0; i < 40; i += 7)
    std::fill_n(curves.values.begin() + static_cast<std::ptrdiff_t>(9 * i), 9, 2.5);
  curves.values[9 * 11 + 3] = nan;
  expectSame(curves.cluster(4), reference(curves, 4));
}

/// The greatest tolerances end the search after the first step, the least one never does.
TEST_P(RandomCurves, WithOtherLimitsGiveWhatTheFilterGives)
{
  const Curves curves = make(60, 17);
  for (int steps : {1, 3, 70})
    for (double tolerance : {0.0, 0.1, 2.0}) {
      SCOPED_TRACE(testing::Message() << steps << " steps, tolerance " << tolerance);
      expectSame(curves.cluster(5, {steps, tolerance}), reference(curves, 5, {steps, tolerance}));
    }
}

TEST_P(RandomCurves, ThatBeginAlikeGiveWhatTheFilterGives)
{
  Curves curves = make(30, 9);
  for (std::size_t i = 1; i < 4; ++i) std::copy_n(curves.values.begin(), 9, curves.values.begin() + 9 * i);
  for (int clusters : {2, 4, 6}) {
    SCOPED_TRACE(clusters);
    expectSame(curves.cluster(clusters), reference(curves, clusters));
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomCurves, testing::Range(1U, 21U));

TEST(PearsonKMeans, OffsetAndScaleDoNotMatter)
{
  const Curves curves{3, {1, 2, 4, 9, 5, 1, 101, 102, 104, 0.09, 0.05, 0.01, -10, 0, 20}};
  EXPECT_THAT(curves.cluster(2).labels, ElementsAre(0, 1, 0, 1, 0));
}

TEST(PearsonKMeans, ACentreIsTheMeanOfItsCurves)
{
  const Curves curves{2, {0, 1, 1, 0, 0, 5, 3, 2}};
  EXPECT_THAT(curves.cluster(2).centres, ElementsAre(0, 3, 2, 1));
  EXPECT_THAT(curves.cluster(2).sizes, ElementsAre(2, 2));
}

TEST(PearsonKMeans, ConstantCurvesJoinTheFirstCluster)
{
  const Curves curves{3, {1, 2, 4, 9, 5, 1, 7, 7, 7, 0, 0, 0}};
  EXPECT_THAT(curves.cluster(2).labels, ElementsAre(0, 1, 0, 0));
}

TEST(PearsonKMeans, OfAlikeFirstCurvesTheFirstTakesAllAndTheOthersStayEmpty)
{
  const Curves curves{3, {1, 2, 4, 1, 2, 4, 1, 2, 4, 2, 3, 5, 0, 2, 4}};
  const ShapeClusters found = curves.cluster(3);
  EXPECT_THAT(found.sizes, ElementsAre(5, 0, 0));
  EXPECT_THAT(found.labels, Each(0));
  EXPECT_THAT(std::vector<double>(found.centres.begin() + 3, found.centres.end()), Each(0.0));
  expectSame(found, reference(curves, 3));
}

/// Large curves pull the means, so that the search goes round in a circle and ends by the number of steps.
TEST(PearsonKMeans, WithoutAnEndTheSearchStopsAfterTheMostSteps)
{
  const Curves curves{
      3, {384, 320, 256, 512, 256, 0, 250, 875, 500, 1000, 750, 500, 0, 81, 243, 500, 1000, 875}};
  ASSERT_EQ(usualLimits().mostSteps, 50) << "what follows holds for an even number";
  const ShapeClusters found = curves.cluster(4);
  expectSame(found, reference(curves, 4));
  EXPECT_THAT(found.sizes, ElementsAre(2, 0, 3, 1));
  EXPECT_THAT(found.labels, ElementsAre(3, 3, 2, 0, 2, 2)) << "one more assignment than the sizes";
  SearchLimits oneMore = usualLimits();
  ++oneMore.mostSteps;
  EXPECT_THAT(curves.cluster(4, oneMore).sizes, ElementsAre(1, 0, 3, 2));
}

/// The last step changed one curve in 120, which is below the tolerance. The final centres take further ones.
TEST(PearsonKMeans, LabelsFollowTheFinalCentresSizesTheLastStep)
{
  std::mt19937 random(26);
  Curves curves{3, {}};
  for (int i = 0; i < 360; ++i) curves.values.push_back(static_cast<double>(random() % 10));
  const ShapeClusters found = curves.cluster(3);
  expectSame(found, reference(curves, 3));
  EXPECT_THAT(found.sizes, ElementsAre(38, 44, 38));
  std::vector<int> labelled(3);
  for (int label : found.labels) ++labelled[static_cast<std::size_t>(label)];
  EXPECT_THAT(labelled, ElementsAre(43, 39, 38));
}

/// Rises first, so that all starting centres are alike; then falls, and curves with a hill.
Curves threeShapesOneByOne()
{
  Curves curves{9, {}};
  for (int kind = 0; kind < 3; ++kind)
    for (int i = 0; i < 20; ++i)
      for (int p = 0; p < 9; ++p) {
        const double shape = kind == 0 ? p : kind == 1 ? -p : -std::abs(p - 4.0);
        curves.values.push_back((i + 1) * shape + 0.3 * std::sin(5.0 * i + 3.0 * p));
      }
  return curves;
}

TEST(PearsonKMeans, FurtherStartsFindShapesThatTheFirstCurvesLack)
{
  const Curves curves = threeShapesOneByOne();
  const ShapeClusters found = curves.cluster(3, usualLimits(), 10);
  EXPECT_THAT(found.sizes, testing::UnorderedElementsAre(20, 20, 20));
  for (std::size_t i = 0; i < curves.count(); ++i) EXPECT_EQ(found.labels[i], found.labels[i / 20 * 20]) << i;
  EXPECT_LE(found.spread, curves.cluster(3).spread);
}

/// As many shapes as clusters, each at a right angle to all others: centres that lie far from each other are
/// one of each, so that one further start is enough.
TEST(PearsonKMeans, AFurtherStartChoosesAsManyCentresAsThereAreClusters)
{
  constexpr std::size_t kinds = 8, ofEach = 5, points = 32;
  Curves curves{points, {}};
  for (std::size_t i = 0; i < kinds * ofEach; ++i)
    for (std::size_t p = 0; p < points; ++p) {
      const auto wave = static_cast<double>(i / ofEach + 1) * (static_cast<double>(p) + 0.5) / points;
      curves.values.push_back(std::cos(M_PI * wave) + 1e-3 * std::sin(static_cast<double>(7 * i + 3 * p)));
    }
  const ShapeClusters found = curves.cluster(kinds, usualLimits(), 2);
  EXPECT_THAT(found.sizes, Each(static_cast<long long>(ofEach)));
  EXPECT_LT(found.spread, 1e-3);
}

TEST(PearsonKMeans, FurtherStartsAreTheSameOnEveryCall)
{
  const Curves curves = threeShapesOneByOne();
  auto labels = [&curves] { return curves.cluster(4, usualLimits(), 5).labels; };
  EXPECT_EQ(labels(), labels());
}

TEST(PearsonKMeans, SpreadIsTheSumOfTheDistances)
{
  // Correlations with the only centre, the mean (2, 2, 5) of all: 0.5, 0.5 and 1.
  const Curves curves{3, {0, 1, 1, 1, 0, 1, 5, 5, 13}};
  EXPECT_NEAR(curves.cluster(1).spread, 1.0, 1e-12);
}

TEST(PearsonKMeans, FewerCurvesThanClustersGiveAClusterEach)
{
  const Curves curves{2, {1, 2, 2, 1}};
  EXPECT_THAT(curves.cluster(9).sizes, ElementsAre(1, 1));
}

TEST(FiniteCurves, AreGroupedAsIfTheOthersWereNotThere)
{
  const double infinity = std::numeric_limits<double>::infinity();
  const Curves curves = {4, {nan, nan, nan, nan, 0, 1, 2, 4, 9, 5, 3, 2, 0, infinity, 1, 2, 1, 3, 5, 9}};
  const Curves finite = {4, {0, 1, 2, 4, 9, 5, 3, 2, 1, 3, 5, 9}};
  const ShapeClusters found = clusterFiniteByShape(curves.values.data(), 5, 4, 2, usualLimits());
  const ShapeClusters wanted = finite.cluster(2);
  EXPECT_THAT(found.labels, ElementsAre(0, 0, 1, 0, 0));
  EXPECT_THAT(found.sizes, ElementsAre(4, 1));
  EXPECT_EQ(found.centres, wanted.centres);
  EXPECT_DOUBLE_EQ(found.spread, wanted.spread + 2);
}

TEST(FiniteCurves, AreAllWhereNoneIsAnother)
{
  const Curves curves = {3, {0, 1, 2, 5, 3, 1, 2, 4, 7}};
  const ShapeClusters found = clusterFiniteByShape(curves.values.data(), 3, 3, 2, usualLimits());
  EXPECT_EQ(found.labels, curves.cluster(2).labels);
  EXPECT_EQ(found.spread, curves.cluster(2).spread);
}

TEST(FiniteCurves, MayBeFewerThanTheClustersOrNone)
{
  const Curves curves = {2, {nan, 0, 1, 2, nan, 3}};
  const ShapeClusters found = clusterFiniteByShape(curves.values.data(), 3, 2, 2, usualLimits());
  EXPECT_THAT(found.labels, ElementsAre(0, 0, 0));
  EXPECT_THAT(found.sizes, ElementsAre(3, 0));
  EXPECT_THAT(found.centres, ElementsAre(1, 2, 0, 0));
  const ShapeClusters none = clusterFiniteByShape(curves.values.data(), 1, 2, 2, usualLimits());
  EXPECT_THAT(none.labels, ElementsAre(0));
  EXPECT_THAT(none.centres, ElementsAre(0, 0));
  EXPECT_THAT(clusterFiniteByShape(nullptr, 0, 5, 3, usualLimits()).labels, IsEmpty());
}

TEST(PearsonKMeans, NothingGivesNothing)
{
  EXPECT_THAT(clusterByShape(nullptr, 0, 5, 3, usualLimits()).labels, IsEmpty());
  const Curves curves{2, {1, 2, 2, 1}};
  EXPECT_THAT(curves.cluster(0).labels, IsEmpty());
}

} // namespace
} // namespace runsieve::test
