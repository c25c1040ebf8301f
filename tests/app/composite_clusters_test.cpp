#include "CompositeScene.h"

#include "app/view/ScanPlot.h"

#include <gmock/gmock.h>

#include <QInputDialog>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace runsieve::test {
namespace {

using app::ShapeOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct CompositeClusters : CompositeScene
{
  static constexpr int runs = 60;
  static constexpr vtkIdType plain = 1; ///< plots of the runs' chart without clusters

  bool cluster(int count = 3)
  {
    const bool grouped = window.cluster(count, ShapeOf::Curves);
    settle();
    return grouped;
  }

  [[nodiscard]] vtkIdType plots() { return plot().chartXY->GetNumberOfPlots(); }

  [[nodiscard]] std::vector<std::string> menu()
  {
    std::vector<std::string> entries;
    for (QAction const* action : window.clusterMenu()->actions())
      entries.push_back(action->isSeparator() ? "-" : QString(action->text()).remove('&').toStdString());
    return entries;
  }

  /// Chooses an entry as a user does.
  void choose(QString const& start)
  {
    for (QAction* action : window.clusterMenu()->actions())
      if (QString(action->text()).remove('&').startsWith(start)) {
        action->trigger();
        settle();
        return;
      }
    ADD_FAILURE() << "no entry " << start.toStdString();
  }

  /// Chooses a way of grouping, and a number of clusters in the dialog that asks for it.
  void chooseGrouping(QString const& start, int count, bool accepts = true)
  {
    QTimer user;
    int dialogs = 0;
    QObject::connect(&user, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      user.stop();
      ++dialogs;
      dialog->setIntValue(count);
      accepts ? dialog->accept() : dialog->reject();
    });
    user.start(20); // milliseconds
    choose(start);
    EXPECT_EQ(dialogs, 1) << start.toStdString();
  }

  [[nodiscard]] std::set<int> survivors()
  {
    const std::unique_ptr<ParameterSelection> selection(plot().getSelection());
    return selection ? selection->selectedRuns : std::set<int>();
  }

  [[nodiscard]] std::set<int> runsOf(int number)
  {
    std::set<int> found;
    const std::vector<int> all = labels();
    for (int run = 0; run < static_cast<int>(all.size()); ++run)
      if (all[static_cast<std::size_t>(run)] == number) found.insert(run);
    return found;
  }

  void expectNoClusters()
  {
    EXPECT_THAT(menu(), ElementsAre("Group by curves...", "Group by phase...", "Group by magnitude..."));
    EXPECT_THAT(labels(), testing::IsEmpty());
    EXPECT_THAT(status(), Not(HasSubstr("clusters")));
    EXPECT_EQ(plots(), plain);
  }

  void expectClusters()
  {
    EXPECT_EQ(labels().size(), 60u);
    EXPECT_THAT(status(), HasSubstr("3 clusters"));
    EXPECT_THAT(status(), Not(HasSubstr("pass")));
    EXPECT_EQ(plots(), plain + runs + 3) << "a line per run and a mean curve per cluster";
  }
};

/// The position behind the widest of ten gaps between sorted values: a mouse counts in pixels.
std::size_t widestGapBehind(std::vector<std::pair<double, int>> const& values, std::size_t start)
{
  std::size_t widest = start;
  for (std::size_t i = start; i < start + 10; ++i)
    if (values[i].first - values[i - 1].first > values[widest].first - values[widest - 1].first) widest = i;
  return widest;
}

TEST_F(CompositeClusters, StartsWithoutAny)
{
  expectNoClusters();
}

TEST_F(CompositeClusters, AWindowWithoutAScanHasNothingToGroup)
{
  app::CompositeWindow empty;
  const QString invitation = empty.statusText();
  EXPECT_FALSE(empty.cluster(3, ShapeOf::Curves));
  empty.selectCluster(0);
  empty.removeClusters();
  EXPECT_EQ(empty.clusterMenu()->actions().size(), 3);
  EXPECT_EQ(empty.statusText(), invitation);
  EXPECT_EQ(empty.plot(), nullptr);
}

TEST_F(CompositeClusters, ShowsThemAndSaysHowMany)
{
  ASSERT_TRUE(cluster());
  expectClusters();
  EXPECT_GE(adjustedRandIndex(labels(), shaped.shapeOfRun), 0.95);
  EXPECT_THAT(status(), StartsWith("60 runs, 33 times"));
}

TEST_F(CompositeClusters, TheMenuOffersEachClusterAndTheWayBack)
{
  ASSERT_TRUE(cluster());
  EXPECT_THAT(menu(), ElementsAre("Group by curves...", "Group by phase...", "Group by magnitude...", "-",
                                  "Select cluster 0 (20 runs)", "Select cluster 1 (20 runs)",
                                  "Select cluster 2 (20 runs)", "-", "Remove clusters"));
  ASSERT_TRUE(cluster(2));
  EXPECT_EQ(menu().size(), 8u) << "the entries of before are gone";
}

TEST_F(CompositeClusters, EachEntryGroupsByTheShapeOfItsName)
{
  const std::pair<const char*, ShapeOf> entries[] = {{"Group by curves", ShapeOf::Curves},
                                                     {"Group by phase", ShapeOf::Phase},
                                                     {"Group by magnitude", ShapeOf::Magnitude}};
  std::set<std::vector<int>> different;
  for (auto const& [entry, shape] : entries) {
    chooseGrouping(entry, 3);
    const std::vector<int> chosen = labels();
    EXPECT_EQ(chosen.size(), 60u) << entry;
    EXPECT_THAT(status(), HasSubstr("3 clusters")) << entry;
    ASSERT_TRUE(window.cluster(3, shape));
    EXPECT_EQ(chosen, labels()) << entry;
    different.insert(chosen);
  }
  EXPECT_EQ(different.size(), 3u) << "three ways, three results";
}

TEST_F(CompositeClusters, TheDialogTakesTheNumberOfClusters)
{
  chooseGrouping("Group by curves", 5);
  EXPECT_THAT(status(), HasSubstr("5 clusters"));
  chooseGrouping("Group by curves", 2, false);
  EXPECT_THAT(status(), HasSubstr("5 clusters")) << "who cancels keeps what there is";
}

TEST_F(CompositeClusters, NoClusterToMakeLeavesNone)
{
  ASSERT_TRUE(cluster());
  EXPECT_FALSE(cluster(0));
  expectNoClusters();
}

TEST_F(CompositeClusters, ASelectedClusterIsTheRunsThatPass)
{
  ASSERT_TRUE(cluster());
  for (int k = 0; k < 3; ++k) {
    window.selectCluster(k);
    settle();
    EXPECT_THAT(status(), HasSubstr("20 runs pass through all places"));
    EXPECT_THAT(status(), HasSubstr("of 5 parameters differ"));
    EXPECT_THAT(status(), HasSubstr("3 clusters"));
    EXPECT_EQ(survivors(), runsOf(k)) << k;
    EXPECT_EQ(plots(), plain + 3) << "the mean curves alone, so that the selected runs show";
  }
}

TEST_F(CompositeClusters, TheMenuSelectsTheClusterThatItNames)
{
  ASSERT_TRUE(cluster());
  choose("Select cluster 1 ");
  EXPECT_EQ(survivors(), runsOf(1));
}

TEST_F(CompositeClusters, ClearingTheSelectionGoesBackToTheClusters)
{
  ASSERT_TRUE(cluster());
  window.selectCluster(2);
  settle();
  QTest::mouseClick(child<QPushButton>(window, "Clear selection"), Qt::LeftButton);
  settle();
  expectClusters();
  EXPECT_FALSE(app::hasSelection(plot()));
}

TEST_F(CompositeClusters, AnotherOutputRemovesThem)
{
  ASSERT_TRUE(cluster());
  window.findChild<QComboBox*>()->setCurrentIndex(1);
  settle();
  expectNoClusters();
  ASSERT_TRUE(cluster());
  EXPECT_GE(adjustedRandIndex(labels(), shaped.otherShapeOfRun), 0.95);
}

TEST_F(CompositeClusters, AnotherOutputKeepsASelectedCluster)
{
  ASSERT_TRUE(cluster());
  window.selectCluster(1);
  settle();
  const std::set<int> selected = survivors();
  window.findChild<QComboBox*>()->setCurrentIndex(1);
  settle();
  expectNoClusters();
  EXPECT_THAT(status(), HasSubstr("20 runs pass"));
  EXPECT_EQ(survivors(), selected);
}

TEST_F(CompositeClusters, RemovingThemGoesBackToThePlainView)
{
  ASSERT_TRUE(cluster());
  choose("Remove clusters");
  expectNoClusters();
  EXPECT_EQ(status(), "60 runs, 33 times");
  EXPECT_TRUE(plot().ksStatistics.empty());
  window.removeClusters(); // once more does no harm
  expectNoClusters();
}

TEST_F(CompositeClusters, RemovingThemKeepsASelection)
{
  ASSERT_TRUE(cluster());
  window.selectCluster(0);
  settle();
  const std::set<int> selected = survivors();
  choose("Remove clusters");
  expectNoClusters();
  EXPECT_EQ(survivors(), selected);
  EXPECT_THAT(status(), HasSubstr("20 runs pass"));
}

TEST_F(CompositeClusters, AnotherScanHasNone)
{
  ASSERT_TRUE(cluster());
  QString error;
  ASSERT_TRUE(window.open(file("scan.csv"), error));
  settle();
  expectNoClusters();
}

TEST_F(CompositeClusters, ADragSievesAsUsual)
{
  constexpr int time = 16;
  std::vector<std::pair<double, int>> values;
  for (int run = 0; run < runs; ++run)
    values.emplace_back(shaped.scan->columnData[0][run * ShapedScan::times + time], run);
  std::sort(values.begin(), values.end());
  const std::size_t first = widestGapBehind(values, 15);
  const std::size_t end = widestGapBehind(values, 40);
  std::set<int> expected;
  for (std::size_t i = first; i < end; ++i) expected.insert(values[i].second);

  ASSERT_TRUE(cluster());
  drag(time, (values[first - 1].first + values[first].first) / 2,
       (values[end - 1].first + values[end].first) / 2);
  EXPECT_EQ(survivors(), expected);
  EXPECT_THAT(status(), HasSubstr(std::to_string(expected.size()) + " runs pass through all places"));
}

TEST_F(CompositeClusters, AnEmptyDragGoesBackToTheClusters)
{
  ASSERT_TRUE(cluster());
  drag(16, 3.0, 5.0);
  drag(16.5, 3.0, 5.0); // between two times
  expectClusters();
}

TEST_F(CompositeClusters, ASwitchOfTheViewKeepsThem)
{
  ASSERT_TRUE(cluster());
  plot().metaData->setUseDensity(true);
  settle();
  expectClusters();
}

TEST_F(CompositeClusters, TheSameScanGivesTheSameClustersAgain)
{
  ASSERT_TRUE(cluster());
  const std::vector<int> first = labels();
  drag(16, 3.0, 5.0);
  ASSERT_TRUE(cluster());
  EXPECT_EQ(labels(), first);
  expectClusters();
}

} // namespace
} // namespace runsieve::test
