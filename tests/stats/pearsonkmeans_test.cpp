#include <runsieve/records/vtkKMeansPearson.h>
#include <runsieve/stats/PearsonKMeans.h>

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

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Curves
{
  std::size_t points;
  std::vector<double> values;

  std::size_t count() const { return values.size() / points; }
  ShapeClusters cluster(int clusters) const
  {
    return clusterByShape(values.data(), count(), points, clusters);
  }
};

/// The same by the filter of VTK.
ShapeClusters reference(Curves const& curves, int clusters)
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
  filter->Update();

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
  RandomCurves() : random(GetParam()) { vtkObject::GlobalWarningDisplayOff(); }
  ~RandomCurves() override { vtkObject::GlobalWarningDisplayOn(); }

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
  const ShapeClusters found = clusterByShape(curves.values.data(), curves.count(), curves.points, 3, 10);
  EXPECT_THAT(found.sizes, testing::UnorderedElementsAre(20, 20, 20));
  for (std::size_t i = 0; i < curves.count(); ++i) EXPECT_EQ(found.labels[i], found.labels[i / 20 * 20]) << i;
  EXPECT_LE(found.spread, curves.cluster(3).spread);
}

TEST(PearsonKMeans, FurtherStartsAreTheSameOnEveryCall)
{
  const Curves curves = threeShapesOneByOne();
  auto labels = [&curves] {
    return clusterByShape(curves.values.data(), curves.count(), curves.points, 4, 5).labels;
  };
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

TEST(PearsonKMeans, NothingGivesNothing)
{
  EXPECT_THAT(clusterByShape(nullptr, 0, 5, 3).labels, IsEmpty());
  const Curves curves{2, {1, 2, 2, 1}};
  EXPECT_THAT(curves.cluster(0).labels, IsEmpty());
}

} // namespace
} // namespace runsieve::test
