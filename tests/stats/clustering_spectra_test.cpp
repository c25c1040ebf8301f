#include "support/KMeansReference.h"

#include <gmock/gmock.h>

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

namespace runsieve::test {
namespace {

constexpr int byPhase = 2;
constexpr int byMagnitude = 3;

Curves spectra(Curves const& runs, int mode)
{
  Curves found;
  for (Curve const& run : runs) {
    Curve values;
    for (std::complex<double> const& term : fourier(run))
      values.push_back(mode == byPhase ? std::arg(term) : std::abs(term));
    found.push_back(values);
  }
  return found;
}

/// A pulse at one time over a small random background.
Curves pulses(std::vector<int> const& places, int times, unsigned seed)
{
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> background(0, 0.02);
  Curves runs;
  for (int place : places) {
    Curve run;
    for (int t = 0; t < times; ++t) run.push_back((t == place ? 1.0 : 0.0) + background(random));
    runs.push_back(run);
  }
  return runs;
}

/// Waves of one period each, at random phases, on a height that all share.
Curves waves(std::vector<int> const& periods, int times, unsigned seed)
{
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> angle(0, 2 * M_PI);
  Curves runs;
  for (int cycles : periods) {
    double const start = angle(random);
    Curve run;
    for (int t = 0; t < times; ++t) run.push_back(0.1 + std::sin(start + 2 * M_PI * cycles * t / times));
    runs.push_back(run);
  }
  return runs;
}

struct ClusteringSpectraTest : ClusterScene
{
  /// Compares the labels with those of a plain k-means on spectra from the definition of the transform.
  int compareWithReference(int mode, int times)
  {
    int compared = 0;
    for (unsigned seed = 1; seed <= 20; ++seed) {
      Curves const runs = randomCurves(seed, 14, times);
      auto const expected = kMeansLabels(spectra(runs, mode), 3);
      if (!expected) continue;
      ++compared;
      load(runs);
      cluster(3, mode);
      EXPECT_EQ(labels(), *expected) << "mode " << mode << ", " << times << " times, seed " << seed;
    }
    return compared;
  }
};

// One half of the spectrum, which holds all there is to know of a real curve, would give other labels.
TEST_F(ClusteringSpectraTest, MagnitudesAreThoseOfTheWholeTransform)
{
  EXPECT_GE(compareWithReference(byMagnitude, 9), 5);
  EXPECT_GE(compareWithReference(byMagnitude, 16), 5);
}

// With an odd number of times no term but the first is real, and no phase stands between pi and -pi.
TEST_F(ClusteringSpectraTest, PhasesAreThoseOfTheWholeTransform)
{
  EXPECT_GE(compareWithReference(byPhase, 9), 5);
  EXPECT_GE(compareWithReference(byPhase, 11), 5);
}

TEST_F(ClusteringSpectraTest, ThePhaseTellsPulsesAtDifferentTimesApart)
{
  load(pulses({1, 2, 4, 4, 1, 2, 1, 4}, 7, 5));
  cluster(3, byPhase);
  EXPECT_THAT(labels(), ElementsAre(0, 1, 2, 2, 0, 1, 0, 2));
}

TEST_F(ClusteringSpectraTest, TheMagnitudeTellsFrequenciesApartAtWhateverTimeTheyStart)
{
  load(waves({1, 3, 1, 3, 3, 1, 1, 3}, 16, 5));
  cluster(2, byMagnitude);
  EXPECT_THAT(labels(), ElementsAre(0, 1, 0, 1, 1, 0, 0, 1));
}

TEST_F(ClusteringSpectraTest, MeanCurvesAreMeansOverTimeNotSpectra)
{
  for (int mode : {byPhase, byMagnitude}) {
    Curves const runs =
        mode == byPhase ? pulses({1, 2, 4, 4, 1, 2, 1, 4}, 7, 5) : waves({1, 3, 2, 3, 2, 1, 1}, 16, 5);
    load(runs);
    cluster(3, mode);
    auto const expected = meansBy(labels(), runs, 3);
    ASSERT_TRUE(expected) << mode;
    vtkTable* means = container.decorationTable;
    EXPECT_THAT(columnNames(means), ElementsAre("0", "1", "2", "Time")) << mode;
    EXPECT_EQ(means->GetNumberOfRows(), static_cast<vtkIdType>(runs.front().size())) << mode;
    for (int c = 0; c < 3; ++c)
      EXPECT_THAT(column(means, c), Pointwise(DoubleNear(1e-12), (*expected)[c]))
          << mode << ", cluster " << c;
  }
}

TEST_F(ClusteringSpectraTest, TheRunTableHoldsTheCurvesNotTheSpectra)
{
  Curves const runs = waves({1, 3, 1, 3}, 16, 5);
  load(runs);
  for (int mode : {byPhase, byMagnitude}) {
    cluster(2, mode);
    ASSERT_EQ(container.clusterRunTable->GetNumberOfColumns(), 5) << mode;
    for (int r = 0; r < 4; ++r) EXPECT_EQ(column(container.clusterRunTable, r), runs[r]) << mode;
    EXPECT_EQ(container.clusterRunTable->GetColumn(4),
              container.decorationTable->GetColumn(container.decorationTable->GetNumberOfColumns() - 1));
  }
}

TEST_F(ClusteringSpectraTest, EveryOtherModeClustersTheCurvesThemselves)
{
  Curves const runs = randomCurves(4, 14, 9);
  load(runs);
  cluster(3, 0);
  auto const expected = labels();
  vtkSmartPointer<vtkTable> const means = container.decorationTable;
  ASSERT_EQ(expected, kMeansLabels(runs, 3));
  for (int mode : {1, 4, -1, -3, 1000}) {
    cluster(3, mode);
    EXPECT_EQ(labels(), expected) << mode;
    EXPECT_EQ(columnNames(container.decorationTable), columnNames(means)) << mode;
    for (int c = 0; c < 3; ++c) EXPECT_EQ(column(container.decorationTable, c), column(means, c)) << mode;
  }
}

TEST_F(ClusteringSpectraTest, ASingleTimeAndConstantRunsAreNoTrouble)
{
  OutputWindowLog log; // the filter warns of centres that coincide
  for (int mode : {byPhase, byMagnitude}) {
    load({{1}, {2}, {3}});
    cluster(2, mode);
    EXPECT_EQ(labels().size(), 3u) << mode;
    load(Curves(4, Curve(6, 2.0)));
    cluster(2, mode);
    EXPECT_EQ(labels().size(), 4u) << mode;
  }
}

TEST_F(ClusteringSpectraTest, ValuesThatAreNoNumbersAreNoTrouble)
{
  OutputWindowLog log; // the filter warns of centres that coincide
  for (int mode : {byPhase, byMagnitude}) {
    load({{1, 2, 4}, {4, std::nan(""), 2}, {INFINITY, 2, 3}, {5, 2, 1}});
    cluster(2, mode);
    EXPECT_EQ(labels().size(), 4u) << mode;
  }
}

} // namespace
} // namespace runsieve::test
