// What is written beside a figure, for those who want to draw it themselves.

#include "FigureScene.h"

#include "app/explorer/figure/FigureBandsData.h"
#include "app/explorer/figure/FigureData.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <limits>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using FigureData = FigureScene;

TEST_F(FigureData, AreTheRunsAndTimesThatAreShown)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  app::FigureContent zoomed = content();
  zoomed.time = {2.0, 4.0};
  const QStringList rows = QString::fromStdString(app::figureRunsCsv(zoomed, options)).split('\n');
  EXPECT_EQ(rows[0], "\"run\",\"group\",\"Time\",\"A\"");
  EXPECT_EQ(rows.size(), 1 + 3 * 40 + 1);
  EXPECT_EQ(rows.filter(",passing,").size(), 3 * static_cast<int>(document.passing().count()));
  zoomed.focus = app::Focus::Hidden;
  EXPECT_TRUE(
      QString::fromStdString(app::figureRunsCsv(zoomed, options)).split('\n').filter(",other,").isEmpty());
}

TEST_F(FigureData, CurvesEndAtAllRunsAndTheTableHasAllParameters)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  options.strongest = 1;
  const QStringList rows = QString::fromStdString(app::figureCurvesCsv(content(), options)).split('\n');
  EXPECT_EQ(rows[0], "parameter,group,value,share");
  EXPECT_EQ(rows.filter("\"k0\",passing,").size(), static_cast<int>(document.passing().count()));
  EXPECT_TRUE(rows.filter("\"k0\",passing,").last().endsWith(",1"));
  const QString table = QString::fromStdString(app::figureParametersCsv(content()));
  for (int i = 0; i < 6; ++i) EXPECT_TRUE(table.contains(QString("k%1").arg(i)));
}

TEST_F(FigureData, CurvesHaveEqualValuesAtTheirEndsOnceToo)
{
  auto scan = lineScan(4, 1);
  const_cast<Scan&>(*scan).parameters[0].values = {1.0, 1.0, 2.0, 2.0};
  document.open(scan, {});
  const QStringList rows = QString::fromStdString(app::figureCurvesCsv(content(), options)).split('\n');
  EXPECT_EQ(rows.filter("\"k0\"").size(), 2);
  EXPECT_EQ(rows.filter(",1,0.5").size(), 1);
  EXPECT_EQ(rows.filter(",2,1").size(), 1);
}

TEST_F(FigureData, CurvesHaveEachDifferentValueOnceWithTheShareUpToIt)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  for (int run = 0; run < 5; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 2});
  double* value = scan->addOutput({"A", "", "", ""});
  for (int i = 0; i < 10; ++i) value[i] = i;
  ScanParameter parameter;
  parameter.label.name = "k";
  parameter.values = {2.0, 1.0, 2.0, 4.0, 2.0};
  ScanParameter strain;
  strain.label.name = "strain";
  strain.texts = {"WT", "mutant"};
  strain.values = {0.0, 1.0, 1.0, nan, 1.0};
  scan->parameters = {parameter, strain};
  document.open(scan, {});
  EXPECT_EQ(app::figureCurvesCsv(content(), options),
            "parameter,group,value,share\n"
            "\"k\",other,1,0.2\n\"k\",other,2,0.8\n\"k\",other,4,1\n"
            "\"strain\",other,\"WT\",0.25\n\"strain\",other,\"mutant\",0.75\n");
}

TEST_F(FigureData, WithoutGatesThereIsNoTableAndAllRunsAreOthers)
{
  EXPECT_TRUE(app::figureParametersCsv(content()).empty());
  const QStringList rows = QString::fromStdString(app::figureRunsCsv(content(), options)).split('\n');
  EXPECT_EQ(rows.size(), 1 + 11 * 40 + 1);
  EXPECT_EQ(rows.filter(",other,").size(), 11 * 40);
  EXPECT_TRUE(rows[1].startsWith("\"1\",other,0,0.41421"));
}

/// Rows of a CSV, without its head.
QStringList rowsOf(std::string const& csv)
{
  QStringList rows = QString::fromStdString(csv).split('\n', Qt::SkipEmptyParts);
  if (!rows.isEmpty()) rows.removeFirst();
  return rows;
}

/// Four runs that rise evenly from 0, and at time 1 are at 1, 2, 3 and 11.
std::shared_ptr<Scan const> fanScan()
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0, 2.0};
  for (int run = 1; run <= 4; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 3});
  double* value = scan->addOutput({"A, total", "", "", ""});
  for (double const slope : {1.0, 2.0, 3.0, 11.0})
    for (double const time : scan->times) *value++ = slope * time;
  return scan;
}

TEST_F(FigureData, OfBandsAreTheirQuantilesAtTheTimesThatAreShown)
{
  document.open(fanScan(), {});
  options.runsLook = app::RunsLook::Bands;
  app::FigureContent zoomed = content();
  zoomed.time = {0.5, 1.5};
  // R 4.2.2: quantile(c(1, 2, 3, 11), c(0.25, 0.5, 0.75)); those of 5 and 95 % have no short digits
  const QStringList rows = rowsOf(app::figureBandsCsv(zoomed, options));
  ASSERT_EQ(rows.size(), 5);
  EXPECT_EQ(rows[1], "\"A, total\",\"all runs\",\"25 %\",1,1.75");
  EXPECT_EQ(rows[2], "\"A, total\",\"all runs\",\"50 %\",1,2.5");
  EXPECT_EQ(rows[3], "\"A, total\",\"all runs\",\"75 %\",1,5");
  EXPECT_TRUE(rows[0].startsWith("\"A, total\",\"all runs\",\"5 %\",1,1.15"));
  EXPECT_NEAR(rows[4].section(',', -1).toDouble(), 9.8, 1e-12);
  EXPECT_TRUE(QString::fromStdString(app::figureBandsCsv(zoomed, options))
                  .startsWith("output,group,line,time,value\n"));
}

TEST_F(FigureData, OfBandsAreThoseOfEachGroupThatHasRuns)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  options.runsLook = app::RunsLook::Bands;
  const QStringList rows = rowsOf(app::figureBandsCsv(content(), options));
  EXPECT_EQ(rows.size(), 2 * 5 * 11);
  EXPECT_EQ(rows.filter("\"passing runs\"").size(), 5 * 11);
  EXPECT_EQ(rows.filter("\"other runs\"").size(), 5 * 11);
  app::FigureContent none = content();
  none.passing = RunSet(40);
  EXPECT_TRUE(rowsOf(app::figureBandsCsv(none, options)).filter("passing").isEmpty());
}

TEST_F(FigureData, OfBandsOfWholeRunsHaveTheOutlyingOnesThatAreDrawn)
{
  auto scan = lineScan(40, 1);
  double* value = const_cast<Scan&>(*scan).outputs[0].values.get();
  for (std::size_t time = 0; time < scan->times.size(); ++time) value[time] = 500.0;
  document.open(scan, {});
  options.runsLook = app::RunsLook::WholeBands;
  const QStringList rows = rowsOf(app::figureBandsCsv(content(), options));
  for (char const* line : {"lowest", "lower half", "deepest", "upper half", "highest"})
    EXPECT_EQ(rows.filter(QString(",\"%1\",").arg(line)).size(), 11) << line;
  EXPECT_EQ(rows.filter(",\"run 1\",").size(), 11);
  EXPECT_EQ(rows.filter(",\"run 1\",").filter(",500").size(), 11);
  EXPECT_EQ(rows.size(), 6 * 11);
}

TEST_F(FigureData, WithoutBandsThereAreNone)
{
  for (app::RunsLook look : {app::RunsLook::Density, app::RunsLook::Lines}) {
    options.runsLook = look;
    EXPECT_TRUE(app::figureBandsCsv(content(), options).empty());
  }
}

TEST_F(FigureData, StandBesideTheFigure)
{
  QTemporaryDir folder;
  const QString begin = folder.filePath("my.figure");
  EXPECT_EQ(app::writeFigureData(content(), options, begin + ".pdf"),
            (QStringList{begin + "_runs.csv", begin + "_curves.csv"}));
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  options.runsLook = app::RunsLook::Bands;
  const QStringList files = app::writeFigureData(content(), options, begin + ".pdf");
  EXPECT_EQ(files, (QStringList{begin + "_runs.csv", begin + "_curves.csv", begin + "_parameters.csv",
                                begin + "_bands.csv"}));
  const std::string wanted[] = {app::figureRunsCsv(content(), options),
                                app::figureCurvesCsv(content(), options), app::figureParametersCsv(content()),
                                app::figureBandsCsv(content(), options)};
  for (int i = 0; i < files.size(); ++i) {
    QFile file(files[i]);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), wanted[i]) << files[i].toStdString();
  }
}

} // namespace
} // namespace runsieve::test
