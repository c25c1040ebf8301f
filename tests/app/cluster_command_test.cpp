#include "app/cli/Commands.h"
#include "app/simulate/SimulateScan.h"
#include "app/store/StoredPlot.h"
#include "app/view/ScanClusters.h"
#include "support/PlotScene.h"
#include "support/ShapedScan.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <runsieve/core/write/WriteScan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <iostream>
#include <set>
#include <sstream>

namespace runsieve::test {
namespace {

using namespace app;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::HasSubstr;
using testing::Lt;
using testing::StartsWith;

/// A scan of three shapes whose run numbers are 10, 13, 16, ...
struct ClusterCommand : testing::Test
{
  TempFolder folder;
  ShapedScan shaped;
  std::string scan = folder.file("scan.csv");
  ClusterArguments arguments;

  ClusterCommand()
  {
    LinePlotTable const& table = *shaped.scan;
    for (std::size_t row = 0; row < table.rows(); ++row)
      table.columnData[3][row] = number(row / ShapedScan::times);
    writeTable(shaped.scan, scan);
    arguments.file = scan;
    arguments.clusters = ShapedScan::shapes;
  }

  static double number(std::size_t run) { return 10.0 + 3.0 * static_cast<double>(run); }

  /// What it prints.
  std::string cluster()
  {
    testing::internal::CaptureStdout();
    const int status = runCluster(arguments);
    std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, 0);
    return text;
  }

  std::string failure()
  {
    testing::internal::CaptureStdout();
    std::string message = "nothing";
    try {
      (void)runCluster(arguments);
    } catch (std::runtime_error const& error) {
      message = error.what();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    return message;
  }

  /// The clusters of the lines "run,cluster"; the runs must be those of the file, in their order.
  static std::vector<int> labelsIn(std::string const& text)
  {
    std::istringstream lines(text);
    std::string line;
    std::vector<int> labels;
    EXPECT_TRUE(std::getline(lines, line) && line == "run,cluster") << line;
    while (std::getline(lines, line) && !line.empty()) {
      const std::string run = std::to_string(static_cast<int>(number(labels.size())));
      EXPECT_THAT(line, StartsWith(run + ','));
      labels.push_back(std::stoi(line.substr(line.find(',') + 1)));
    }
    return labels;
  }
};

TEST_F(ClusterCommand, PrintsRunNumbersOfTheFileWithClusters)
{
  const std::vector<int> labels = labelsIn(cluster());
  EXPECT_EQ(labels.size(), shaped.shapeOfRun.size());
  EXPECT_THAT(labels, Each(AllOf(Ge(0), Lt(3))));
  EXPECT_EQ(clusterSizes(labels), std::vector<std::size_t>(3, 20));
}

TEST_F(ClusterCommand, AFileHoldsWhatStandardOutputWould)
{
  const std::string printed = cluster();
  arguments.output = "-";
  EXPECT_EQ(cluster(), printed);
  arguments.output = folder.file("labels.csv");
  EXPECT_EQ(cluster(), "");
  EXPECT_EQ(TempFolder::contentOf(arguments.output), printed);
}

TEST_F(ClusterCommand, AFileThatCannotBeWrittenIsAFailure)
{
  arguments.output = folder.file("none/labels.csv");
  EXPECT_THAT(failure(), HasSubstr("cannot be written"));
}

TEST_F(ClusterCommand, NoFileIsWrittenOverAnotherOneOfTheCommand)
{
  const std::string before = TempFolder::contentOf(scan);
  arguments.output = scan;
  EXPECT_THROW(app::runCluster(arguments), app::UsageError);
  arguments.output = "";
  arguments.picture = folder.file("same.png");
  arguments.output = arguments.picture;
  EXPECT_THROW(app::runCluster(arguments), app::UsageError);
  EXPECT_EQ(TempFolder::contentOf(scan), before);
}

TEST_F(ClusterCommand, AnotherKindOfPictureIsRefusedBeforeAnyWork)
{
  arguments.picture = folder.file("picture.jpg");
  EXPECT_THROW(app::runCluster(arguments), app::UsageError);
}

/// Five scans of known shapes in random order; the numbers are printed, as 1 is not the only one that passes.
TEST_F(ClusterCommand, RecoversTheShapesOfCurves)
{
  for (unsigned seed = 1; seed <= 5; ++seed) {
    const ShapedScan known(90, seed);
    writeTable(known.scan, scan);
    arguments.output = folder.file("labels.csv");
    cluster();
    std::istringstream lines(TempFolder::contentOf(arguments.output));
    std::vector<int> labels;
    for (std::string line; std::getline(lines, line);)
      if (line != "run,cluster") labels.push_back(std::stoi(line.substr(line.find(',') + 1)));
    ASSERT_EQ(labels.size(), 90u);
    const double index = adjustedRandIndex(labels, known.shapeOfRun);
    std::cout << "adjusted Rand index of curves, seed " << seed << ": " << index << '\n';
    EXPECT_GE(index, 0.95) << "seed " << seed << "; the first runs have the shapes " << known.shapeOfRun[0]
                           << ' ' << known.shapeOfRun[1] << ' ' << known.shapeOfRun[2];
  }
}

TEST_F(ClusterCommand, AnotherSpeciesHasOtherClusters)
{
  for (std::string const name : {"B", "Molecule: B"}) {
    arguments.species = name;
    const std::vector<int> labels = labelsIn(cluster());
    EXPECT_GE(adjustedRandIndex(labels, shaped.otherShapeOfRun), 0.95);
    EXPECT_LT(adjustedRandIndex(labels, shaped.shapeOfRun), 0.5);
  }
  arguments.species = "C";
  EXPECT_THAT(failure(), HasSubstr("C"));
}

TEST_F(ClusterCommand, OfAStoredPlotTheOutputOnShowIsGrouped)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  plot.view.output = 1;
  plot.view.quantiles = true;
  plot.selectedRows = {0, 1, 2};
  arguments.file = folder.file("plot.rsd");
  writePlot(plot, arguments.file);
  EXPECT_GE(adjustedRandIndex(labelsIn(cluster()), shaped.otherShapeOfRun), 0.95);
}

TEST_F(ClusterCommand, EachModeGroupsByTheShapeOfItsName)
{
  const std::pair<const char*, ShapeOf> modes[] = {
      {"curves", ShapeOf::Curves}, {"phase", ShapeOf::Phase}, {"magnitude", ShapeOf::Magnitude}};
  std::set<std::vector<int>> different;
  for (auto const& [mode, shape] : modes) {
    PlotScene plot;
    app::showScan(plot.container, shaped.scan, {});
    arguments.mode = mode;
    const std::vector<int> labels = labelsIn(cluster());
    EXPECT_EQ(labels, clusterRuns(plot.container, ShapedScan::shapes, shape)) << mode;
    EXPECT_EQ(labels.size(), 60u) << mode;
    different.insert(labels);
  }
  EXPECT_EQ(different.size(), 3u);
}

TEST_F(ClusterCommand, GroupsRunsOfTheExampleModels)
{
  for (Model const& model : models()) {
    SimulateOptions options;
    options.runs = 40;
    options.times = 26;
    runsieve::writeScan(simulateScan(model, options), scan);
    const std::string first = cluster();
    EXPECT_EQ(std::count(first.begin(), first.end(), '\n'), 41) << model.name;
    EXPECT_EQ(cluster(), first) << model.name;
  }
}

TEST_F(ClusterCommand, RanksTheParametersOfEachClusterAndOfAllTogether)
{
  arguments.rank = true;
  const std::string printed = cluster();
  const std::string tables = printed.substr(printed.find("\n\n") + 1);
  for (int k = 0; k < 3; ++k)
    EXPECT_THAT(tables, HasSubstr("\ncluster " + std::to_string(k) + ": 20 of 60 runs\nparameter "));
  EXPECT_THAT(tables, HasSubstr("\nall clusters, by permutation\nparameter  cluster"));
  EXPECT_THAT(tables, HasSubstr("\np adj  largest |d| of 15 tests in 1000 permutations (seed 1)\n"));
  EXPECT_THAT(tables, HasSubstr("\nfloor  chance alone exceeds |d| = "));

  arguments.output = folder.file("labels.csv");
  EXPECT_EQ(cluster(), tables) << "the tables stay on standard output";
}

TEST_F(ClusterCommand, TheParameterThatTellsTheShapeComesFirstInEachTable)
{
  arguments.rank = true;
  arguments.output = folder.file("labels.csv");
  std::istringstream lines(cluster());
  int tables = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("parameter  cluster", 0) == 0) break;
    if (line.rfind("parameter ", 0) != 0) continue;
    ++tables;
    std::getline(lines, line);
    EXPECT_TRUE(line.rfind("k4 ", 0) == 0 || line.rfind("k5 ", 0) == 0) << line;
    EXPECT_THAT(line, HasSubstr(" * "));
  }
  EXPECT_EQ(tables, 3);
}

TEST_F(ClusterCommand, TheStarGoesByTheAdjustmentThatIsAskedFor)
{
  arguments.rank = true;
  arguments.adjust = Adjustment::Holm;
  arguments.permutations = 0;
  const std::string printed = cluster();
  EXPECT_THAT(printed, HasSubstr("\np adj  Holm of 15 tests\n"));
  EXPECT_THAT(printed, testing::Not(HasSubstr("all clusters"))) << "they need permutations";
}

/// Runs of two shapes; those with a large k1 fail, and so have no shape.
std::string scanWithFailures()
{
  std::ostringstream text;
  text << "run,time,A,k1,k2\n";
  for (int run = 0; run < 60; ++run) {
    bool const fails = run % 3 == 0;
    for (int time = 0; time < 4; ++time)
      text << run << ',' << time << ','
           << (fails ? "nan" : std::to_string(run % 2 == 0 ? time * time : -time * time)) << ','
           << (fails ? 100 : 0) + run * 37 % 60 << ',' << run * 23 % 60 << '\n';
  }
  return text.str();
}

TEST_F(ClusterCommand, WhatMakesRunsFailIsNoDifferenceOfAClusterUnlessAskedFor)
{
  arguments.file = folder.write(scanWithFailures(), "failures.csv");
  arguments.clusters = 2;
  arguments.rank = true;
  arguments.output = folder.file("labels.csv");
  std::string printed = cluster();
  EXPECT_THAT(printed, HasSubstr("\n20 runs are not complete and not compared"));
  EXPECT_EQ(printed.find(" *"), std::string::npos) << printed;
  arguments.gates = {"status complete, short, failed"};
  printed = cluster();
  EXPECT_EQ(printed.find("not complete"), std::string::npos);
  EXPECT_NE(printed.find(" *"), std::string::npos) << "all take part";
}

TEST_F(ClusterCommand, TextsCanSetAClusterApartByHolm)
{
  std::ostringstream text;
  text << "run,time,A,k,strain\n";
  for (int run = 0; run < 40; ++run)
    for (int time = 0; time < 4; ++time)
      text << run << ',' << time << ',' << (run % 2 == 0 ? time : -time) << ',' << run * 37 % 40 << ','
           << (run % 2 == 0 ? "WT" : "mut") << '\n';
  arguments.file = folder.write(text.str(), "strains.csv");
  arguments.clusters = 2;
  arguments.rank = true;
  arguments.adjust = Adjustment::Holm;
  const std::string printed = cluster();
  EXPECT_THAT(printed, HasSubstr("Holm of 4 tests"));
  EXPECT_THAT(printed, testing::ContainsRegex("\nstrain .*0\\.004 \\*"));
}

TEST_F(ClusterCommand, ALongNameOfAParameterIsShortenedInAllTables)
{
  std::string const name(120, 'x');
  std::ostringstream text;
  text << "run,time,A,k" << name << ",k2\n";
  for (int run = 0; run < 40; ++run)
    for (int time = 0; time < 4; ++time)
      text << run << ',' << time << ',' << (run % 2 == 0 ? time : -time) << ',' << run * 37 % 40 << ','
           << run * 23 % 40 << '\n';
  arguments.file = folder.write(text.str(), "long.csv");
  arguments.clusters = 2;
  arguments.rank = true;
  const std::string printed = cluster();
  std::istringstream lines(printed.substr(printed.find("\n\n")));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 104u) << line;
}

TEST_F(ClusterCommand, NothingToRankIsAFailureThatLeavesNoFile)
{
  ScanShape shape;
  shape.runs = 9;
  shape.times = 5;
  shape.value = [](int, int r, int t) { return r % 3 == 0 ? t : r % 3 == 1 ? -t : (t - 2.0) * (t - 2.0); };
  shape.parameter = [](int, int) { return 2.0; };
  for (int parameters : {0, 2}) {
    shape.parameters = parameters;
    writeTable(makeScan(shape), scan);
    arguments.rank = true;
    arguments.output = folder.file("labels.csv");
    arguments.picture = folder.file("view.png");
    EXPECT_THAT(failure(), AllOf(HasSubstr("scan.csv"), HasSubstr("no parameter varies")));
    EXPECT_EQ(folder.fileCount(), 1u);
    arguments.rank = false;
    arguments.output.clear();
    arguments.picture.clear();
    EXPECT_THAT(cluster(), StartsWith("run,cluster\n0,")) << "without ranking there is no need of parameters";
  }
}

TEST_F(ClusterCommand, MoreClustersThanRunsIsNoMisfortune)
{
  const ShapedScan few(3);
  writeTable(few.scan, scan);
  arguments.clusters = 50;
  const std::string printed = cluster();
  EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 4) << printed;
}

TEST_F(ClusterCommand, DrawsAPicture)
{
  arguments.picture = folder.file("view.PNG");
  arguments.output = folder.file("labels.csv");
  arguments.width = 500;
  arguments.height = 400;
  EXPECT_EQ(cluster(), "");
  const QImage picture(QString::fromStdString(arguments.picture));
  ASSERT_EQ(picture.size(), QSize(500, 400));
  std::set<QRgb> colors;
  int painted = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      colors.insert(picture.pixel(x, y));
      painted += picture.pixel(x, y) != qRgb(255, 255, 255);
    }
  EXPECT_GT(colors.size(), 50u);
  EXPECT_GT(painted, 500 * 400 / 20);

  arguments.picture = folder.file("view.pdf");
  cluster();
  EXPECT_THAT(TempFolder::contentOf(arguments.picture), StartsWith("%PDF-"));
}

TEST_F(ClusterCommand, ThePictureOfAStoredPlotWithBandsShowsItsRunsAsWell)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  arguments.file = folder.file("plot.rsd");
  arguments.picture = folder.file("view.png");
  arguments.width = 500;
  arguments.height = 400;
  std::string pictures[2];
  for (bool bands : {false, true}) {
    plot.view.quantiles = bands;
    writePlot(plot, arguments.file);
    cluster();
    pictures[bands] = TempFolder::contentOf(arguments.picture);
  }
  EXPECT_TRUE(pictures[0] == pictures[1])
      << "the lines of the runs in the colours of their clusters, no bands";
}

TEST_F(ClusterCommand, ThePictureOfAStoredPlotKeepsItsOtherSwitches)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  arguments.file = folder.file("plot.rsd");
  arguments.picture = folder.file("view.png");
  std::string pictures[2];
  for (bool density : {false, true}) {
    plot.view.density = density;
    writePlot(plot, arguments.file);
    cluster();
    pictures[density] = TempFolder::contentOf(arguments.picture);
  }
  EXPECT_FALSE(pictures[0] == pictures[1]) << "densities instead of cumulative curves";
}

TEST_F(ClusterCommand, ThePictureGoesByTheThresholdsOfTheSieveFile)
{
  arguments.picture = folder.file("view.png");
  cluster();
  const std::string usual = TempFolder::contentOf(arguments.picture);
  arguments.pThreshold = 0.0;
  cluster();
  const std::string given = TempFolder::contentOf(arguments.picture);
  arguments.pThreshold.reset();
  arguments.sieve = folder.write(
      R"({"format":"runsieve sieve","version":1,"gates":[],"thresholds":{"p_threshold":0.0}})", "sieve.json");
  cluster();
  EXPECT_TRUE(TempFolder::contentOf(arguments.picture) == given);
  EXPECT_FALSE(given == usual);
}

TEST_F(ClusterCommand, APictureOfAnotherKindIsAFailure)
{
  arguments.output = folder.file("labels.csv");
  arguments.picture = folder.file("view.gif");
  EXPECT_THAT(failure(), HasSubstr(".png or .pdf"));
}

TEST_F(ClusterCommand, GivesTheSameTwice)
{
  arguments.rank = true;
  arguments.picture = folder.file("view.png");
  arguments.width = 400;
  arguments.height = 300;
  const std::string printed = cluster();
  const std::string picture = TempFolder::contentOf(arguments.picture);
  EXPECT_EQ(cluster(), printed);
  EXPECT_EQ(TempFolder::contentOf(arguments.picture), picture);
}

} // namespace
} // namespace runsieve::test
