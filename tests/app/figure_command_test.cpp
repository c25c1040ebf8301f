#include "ProgramRun.h"
#include "SvgTexts.h"

#include "app/cli/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

struct FigureCommand : testing::Test
{
  QTemporaryDir folder;
  std::string scan = path("scan.csv");

  FigureCommand()
  {
    EXPECT_EQ(runProgram({"simulate", "--runs", "60", "--times", "21", "--seed", "1", "-o", scan}).status, 0);
  }

  [[nodiscard]] std::string path(char const* name) const { return folder.filePath(name).toStdString(); }

  /// Runs `render --figure` without a display.
  [[nodiscard]] Ended figure(std::vector<std::string> const& words, char const* name) const
  {
    QStringList list = {"render", QString::fromStdString(scan), "--figure", "-o", folder.filePath(name)};
    for (std::string const& word : words) list << QString::fromStdString(word);
    QProcess process;
    QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
    for (char const* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
      bare.remove(variable);
    process.setProcessEnvironment(bare);
    return runProcess(process, programPath(), list);
  }

  [[nodiscard]] QStringList texts(char const* name) const
  {
    QStringList texts;
    for (std::string const& text : svgTexts(path(name))) texts << QString::fromStdString(text);
    return texts;
  }
};

TEST_F(FigureCommand, NeedsNoDisplayAndIsQuiet)
{
  const Ended ended = figure({"-g", "cI @ 30 in 1000.."}, "f.pdf");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  QFile file(folder.filePath("f.pdf"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().startsWith("%PDF-"));
}

TEST_F(FigureCommand, APngIsOfTheSizeInMillimetres)
{
  EXPECT_EQ(
      figure({"--width-mm", "85", "--height-mm", "60", "--dpi", "254", "--strongest", "0"}, "f.png").status,
      0);
  EXPECT_EQ(QImage(folder.filePath("f.png")).size(), QSize(850, 600));
}

TEST_F(FigureCommand, OptionsSayWhatIsShown)
{
  EXPECT_EQ(figure({"-g", "cI @ 30 in 1000..", "--title", "Early cI", "--show", "cI", "--show", "TetR",
                    "--show-parameter", "hill", "--no-gates", "--no-counts", "--no-thresholds"},
                   "f.svg")
                .status,
            0);
  const QStringList found = texts("f.svg");
  for (char const* text : {"Early cI", "cI", "TetR", "hill", "passing runs"})
    EXPECT_TRUE(found.contains(text)) << text;
  EXPECT_FALSE(found.contains("Gate 1"));
  EXPECT_FALSE(found.contains("LacI"));
}

TEST_F(FigureCommand, TheOutputOfTheFirstGateIsShown)
{
  EXPECT_EQ(figure({"-g", "TetR @ 30 in 100.."}, "f.svg").status, 0);
  EXPECT_TRUE(texts("f.svg").contains("TetR"));
  EXPECT_TRUE(texts("f.svg").contains("Gate 1"));
}

TEST_F(FigureCommand, ParametersThatHaveNoRoomAreTold)
{
  const Ended ended = figure({"--strongest", "14", "--height-mm", "70", "--width-mm", "60"}, "f.svg");
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("of 14 parameters"));
}

TEST_F(FigureCommand, BandsOfWholeRunsSayWhatTheyAre)
{
  EXPECT_EQ(figure({"--whole-bands"}, "f.svg").status, 0);
  EXPECT_EQ(texts("f.svg").filter("deepest run").size(), 1);
  EXPECT_TRUE(texts("f.svg").filter("median").isEmpty());
}

TEST_F(FigureCommand, GatesAndPinnedRunsHaveTheirNames)
{
  EXPECT_EQ(figure({"-g", "cI @ 30 in 1000..", "--gate-name", "High cI", "--pin", "3,5-6"}, "f.svg").status,
            0);
  const QStringList found = texts("f.svg");
  for (char const* text : {"High cI", "3", "5", "6"}) EXPECT_TRUE(found.contains(text)) << text;
  EXPECT_FALSE(found.contains("Gate 1"));
}

TEST_F(FigureCommand, NamesOfGatesThatAreNotThereAndUnknownRunsAreRefused)
{
  const Ended names = figure({"--gate-name", "High cI"}, "f.svg");
  EXPECT_EQ(names.status, 1);
  EXPECT_THAT(names.err, HasSubstr("1 names for 0 gates"));
  const Ended runs = figure({"--pin", "3,nobody"}, "f.svg");
  EXPECT_EQ(runs.status, 1);
  EXPECT_THAT(runs.err, HasSubstr("lacks some of the runs"));
  EXPECT_FALSE(QFile::exists(folder.filePath("f.svg")));
}

TEST_F(FigureCommand, BandsAreThoseOfThePassingAndOfTheOtherRuns)
{
  EXPECT_EQ(figure({"-g", "cI @ 30 in 3000..", "--quantiles"}, "f.svg").status, 0);
  EXPECT_FALSE(texts("f.svg").filter("other runs (").isEmpty());
  EXPECT_TRUE(texts("f.svg").filter("all runs").isEmpty());
}

TEST_F(FigureCommand, TheDataBehindItStandBesideItIfTheyAreWanted)
{
  EXPECT_EQ(figure({"-g", "cI @ 30 in 3000..", "--quantiles"}, "f.svg").status, 0);
  EXPECT_FALSE(QFile::exists(folder.filePath("f_runs.csv")));
  EXPECT_EQ(figure({"-g", "cI @ 30 in 3000..", "--quantiles", "--data"}, "f.svg").status, 0);
  for (char const* name : {"f_runs.csv", "f_curves.csv", "f_parameters.csv", "f_bands.csv"})
    EXPECT_TRUE(QFile::exists(folder.filePath(name))) << name;
  const Ended table = runProgram({"rank", scan, "-g", "cI @ 30 in 3000..", "--format", "csv"});
  QFile kept(folder.filePath("f_parameters.csv"));
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll().toStdString(), table.out) << "the same table as that of rank";
}

TEST_F(FigureCommand, TheDataBehindItAreNotWrittenOverWhatIsRead)
{
  const std::string copy = path("f_bands.csv");
  ASSERT_TRUE(QFile::copy(QString::fromStdString(scan), QString::fromStdString(copy)));
  const Ended ended = runProgram({"render", copy, "--figure", "--data", "-o", path("f.svg")});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("f_bands.csv"));
  EXPECT_FALSE(QFile::exists(folder.filePath("f.svg")));
}

TEST_F(FigureCommand, TheLegendSaysThatDarkAreTheOtherRunsInTheChartsOfParameters)
{
  EXPECT_EQ(figure({"-g", "cI @ 30 in 3000.."}, "f.svg").status, 0);
  EXPECT_EQ(texts("f.svg").filter("dark are the other runs").size(), 1);
  EXPECT_EQ(figure({"-g", "cI @ 30 in 3000..", "--strongest", "0"}, "g.svg").status, 0);
  EXPECT_TRUE(texts("g.svg").filter("dark are the other runs").isEmpty());
}

TEST_F(FigureCommand, AnUnknownOutputIsToldAndNothingIsWritten)
{
  const Ended ended = figure({"--show", "nothing"}, "f.svg");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("no output \"nothing\""));
  EXPECT_FALSE(QFile::exists(folder.filePath("f.svg")));
}

TEST_F(FigureCommand, ASieveFileGivesNamesOfGatesAndTheView)
{
  QFile sieve(folder.filePath("s.json"));
  ASSERT_TRUE(sieve.open(QIODevice::WriteOnly));
  sieve.write(R"({"format": "runsieve sieve", "version": 1,
    "gates": [{"text": "cI @ 30 in 1000..", "name": "High cI"}],
    "gates_off": [{"text": "cI @ 60 in 0..", "name": "Not asked", "place": 0}],
    "window": {"outputs": ["TetR", "cI"], "runs_look": "bands", "pinned": [[3, 3]]}})");
  sieve.close();
  EXPECT_EQ(figure({"--sieve", path("s.json")}, "f.svg").status, 0);
  const QStringList found = texts("f.svg");
  for (char const* text : {"High cI", "TetR", "cI", "3"}) EXPECT_TRUE(found.contains(text)) << text;
  EXPECT_FALSE(found.contains("Not asked"));
  EXPECT_FALSE(found.filter("median").isEmpty());
}

TEST(FigureOptionsOfRender, GoWithFigureOnly)
{
  using Words = std::vector<std::string>;
  auto const refused = [](Words words) {
    words.insert(words.begin(), {"render", "scan.csv"});
    try {
      (void)app::parseCommandLine(words);
    } catch (app::UsageError const& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_THAT(refused({"-o", "f.pdf", "--width-mm", "85"}), HasSubstr("requires --figure"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--width", "800"}), HasSubstr("does not go with --figure"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--time-range", "5"}), HasSubstr("0..60"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--time-range", "5..2"}), HasSubstr("0..60"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--value-range", "A @ 3 in 2..5"}),
              HasSubstr("cI in 0..5000"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--value-range", "A in 2.."}), HasSubstr("cI in 0..5000"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--palette", "red"}), HasSubstr("--palette"));
  EXPECT_THAT(refused({"-o", "f.pdf", "--figure", "--dpi", "20"}), HasSubstr("--dpi"));
  EXPECT_EQ(refused({"-o", "f.pdf", "--figure", "--time-range", "-5..2", "--value-range", "A in -2..5"}), "");
}

TEST(FigureOptionsOfRender, AnSvgIsForFiguresAlone)
{
  EXPECT_THAT(runProgram({"render", "scan.csv", "-o", "f.svg"}).err, HasSubstr(".png or .pdf"));
  EXPECT_THAT(runProgram({"render", "scan.csv", "--figure", "-o", "f.gif"}).err,
              HasSubstr(".png, .svg or .pdf"));
}

} // namespace
} // namespace runsieve::test
