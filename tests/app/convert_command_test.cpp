#include "app/cli/CommandLine.h"
#include "app/desk/DeskCommands.h"
#include "app/scan/OpenScan.h"
#include "StoredPlots.h"
#include "support/ShapedScan.h"
#include "support/TableFile.h"
#include "support/TempFile.h"
#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>

namespace runsieve::test {
namespace {

using namespace app;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ConvertCommandLine, TakesTwoFilesAndGates)
{
  const auto convert = std::get<ConvertArguments>(parseCommandLine(
      {"convert", "scan.csv", "plot.rsd", "--gate", "A @ 1 in 2..3", "-g", "B @ 2 in 0..1"}));
  EXPECT_EQ(convert.file, "scan.csv");
  EXPECT_EQ(convert.output, "plot.rsd");
  EXPECT_THAT(convert.gates, ElementsAre("A @ 1 in 2..3", "B @ 2 in 0..1"));
  EXPECT_THROW((void)parseCommandLine({"convert", "scan.csv"}), UsageError);
  EXPECT_THROW((void)parseCommandLine({"convert", "scan.csv", "plot.rsd", "more"}), UsageError);
  EXPECT_THROW((void)parseCommandLine({"convert", "scan.csv", "plot.rsd", "-g", "nonsense"}), UsageError);
}

struct ConvertCommand : testing::Test
{
  TempFolder folder;
  ShapedScan shaped;
  std::string scan = folder.file("scan.csv");
  std::string gate = "A @ 16 in 4..inf";

  ConvertCommand() { writeTable(shaped.scan, scan); }

  static ConvertArguments from(std::string const& file, std::string const& output,
                               std::vector<std::string> const& gates = {})
  {
    ConvertArguments arguments;
    arguments.file = file;
    arguments.output = output;
    arguments.gates = gates;
    return arguments;
  }

  static void convert(std::string const& file, std::string const& output,
                      std::vector<std::string> const& gates = {})
  {
    testing::internal::CaptureStdout();
    EXPECT_EQ(runConvert(from(file, output, gates)), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  }

  std::string plotWith(std::vector<std::string> const& gates)
  {
    convert(scan, folder.file("plot.rsd"), gates);
    return folder.file("plot.rsd");
  }

  static std::string rank(std::vector<std::string> const& words)
  {
    testing::internal::CaptureStdout();
    const int status = runRank(std::get<RankArguments>(parseCommandLine(words)));
    std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, 0);
    return text;
  }

  /// The distributions below the runs; above them stands the title, which names the gates.
  QImage distributions(std::string const& file, std::vector<std::string> const& gates)
  {
    RenderArguments arguments;
    arguments.file = file;
    arguments.gates = gates;
    arguments.output = folder.file("view.png");
    arguments.width = 500;
    arguments.height = 400;
    EXPECT_EQ(renderPicture(arguments), 0);
    return QImage(QString::fromStdString(arguments.output)).copy(0, 200, 500, 200);
  }
};

TEST_F(ConvertCommand, AStoredPlotKeepsNamesOfRunsTextsAndFailures)
{
  const std::string odd = folder.write("id,time,A,k,strain,status\n"
                                       "r 1,0,1,0.5,wt,ok\nr 1,1,2,0.5,wt,ok\n"
                                       "r 2,0,1,1.5,mu,failed\nr 2,1,5,1.5,mu,failed\n"
                                       "r 3,0,1,2.5,,ok\nr 3,1,9,2.5,,ok\n",
                                       "odd.csv");
  convert(odd, folder.file("odd.rsd"));
  convert(folder.file("odd.rsd"), folder.file("again.rsd"));
  const OpenedScan before = openScan(odd);
  const OpenedScan after = openScan(folder.file("again.rsd"));
  ASSERT_EQ(after.scan.runs.size(), 3u);
  for (std::size_t run = 0; run < 3; ++run) {
    EXPECT_EQ(after.scan.runs[run].key, before.scan.runs[run].key);
    EXPECT_EQ(after.scan.runs[run].status, before.scan.runs[run].status);
  }
  EXPECT_EQ(after.scan.runs[1].status, RunStatus::Failed);
  const ScanParameter& strain = after.scan.parameters.at(after.scan.findParameter("strain").value());
  EXPECT_THAT(strain.texts, ElementsAre("wt", "mu"));
  EXPECT_TRUE(std::isnan(strain.values[2]));
  convert(folder.file("again.rsd"), folder.file("text.csv"));
  EXPECT_EQ(openScan(folder.file("text.csv")).scan.runs[1].status, RunStatus::Failed);
}

TEST_F(ConvertCommand, ThereAndBackGivesTheSameBytes)
{
  const std::string text = TempFolder::contentOf(scan);
  convert(plotWith({}), folder.file("back.csv"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("back.csv")), text);
}

TEST_F(ConvertCommand, OddValuesAndFreeNamesComeBackAsFromTheScanItself)
{
  const std::string odd = folder.write("A;t;k\n1e-310;0;0.1\n-0;1;0.1\ninf;0;0.3\nnan;1;0.3\n-inf;0;nan\n"
                                       "0.30000000000000004;1;nan\n",
                                       "odd.csv");
  writeTable(readScanTable(odd), folder.file("direct.csv"));
  convert(odd, folder.file("odd.rsd"));
  convert(folder.file("odd.rsd"), folder.file("back.csv"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("back.csv")), TempFolder::contentOf(folder.file("direct.csv")));
}

TEST_F(ConvertCommand, KeepsParametersThatNeverVary)
{
  ScanShape shape = shapeOf(3, 2, 1, 2);
  shape.parameter = [](int p, int run) { return p == 0 ? 7.0 : run; };
  writeTable(makeScan(shape), scan);
  convert(plotWith({}), folder.file("back.csv"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("back.csv")), TempFolder::contentOf(scan));
}

TEST_F(ConvertCommand, StoredGatesRankAsTheGatesThemselves)
{
  auto stored = nlohmann::json::parse(rank({"rank", plotWith({gate}), "--format", "json"}));
  auto given = nlohmann::json::parse(rank({"rank", scan, "--gate", gate, "--format", "json"}));
  EXPECT_EQ(given["gates"].size(), 1u);
  EXPECT_GT(given["passing"], 5);
  EXPECT_LT(given["passing"], 55);
  EXPECT_EQ(stored, given);
}

TEST_F(ConvertCommand, StoredGatesAreKeptAsGates)
{
  const std::string plot = plotWith({gate, "not k1 in ..0"});
  const StoredPlot stored = readPlot(plot);
  ASSERT_EQ(stored.gates.size(), 2u);
  EXPECT_EQ(formatGate(stored.gates[0]), gate);
  EXPECT_TRUE(stored.gates[1].negated);
  convert(plot, folder.file("again.rsd"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("again.rsd")), TempFolder::contentOf(plot));
}

TEST_F(ConvertCommand, GatesThatSelectOtherRunsGiveWayToTheStoredSelection)
{
  StoredPlot stored = readPlot(plotWith({gate}));
  const auto before = nlohmann::json::parse(rank({"rank", folder.file("plot.rsd"), "--format", "json"}));
  for (std::string const other : {"A @ 16 in 1..inf", "Nothing @ 16 in 1..inf"}) {
    stored.gates = {parseGate(other)};
    writePlot(stored, folder.file("plot.rsd"));
    const auto after = nlohmann::json::parse(rank({"rank", folder.file("plot.rsd"), "--format", "json"}));
    EXPECT_EQ(after["passing"], before["passing"]);
    EXPECT_EQ(after["parameters"], before["parameters"]);
    EXPECT_EQ(after["gates"].size(), 0u);
  }
}

TEST_F(ConvertCommand, StoredGatesOfTwoOutputsRankAsTheGatesThemselves)
{
  const std::vector<std::string> gates = {"A @ 10..16 in 2.5..inf", "B @ 12 in 0..5"};
  EXPECT_EQ(rank({"rank", plotWith(gates), "--format", "csv"}),
            rank({"rank", scan, "-g", gates[0], "-g", gates[1], "--format", "csv"}));
}

TEST_F(ConvertCommand, StoredGatesAreDrawn)
{
  const QImage given = distributions(scan, {gate});
  EXPECT_NE(given, distributions(scan, {}));
  EXPECT_EQ(distributions(plotWith({gate}), {}), given);
  EXPECT_EQ(distributions(plotWith({}), {}), distributions(scan, {}));
}

TEST_F(ConvertCommand, AGateTakesThePlaceOfTheStoredOnes)
{
  const std::string plot = plotWith({gate});
  EXPECT_EQ(rank({"rank", plot, "-g", "A @ 0 in 0..3", "--format", "csv"}),
            rank({"rank", scan, "-g", "A @ 0 in 0..3", "--format", "csv"}));
}

TEST_F(ConvertCommand, ShowsTheOutputOfTheFirstGate)
{
  EXPECT_EQ(readPlot(plotWith({})).view.output, 0u);
  EXPECT_EQ(readPlot(plotWith({"B @ 16 in 0..4", gate})).view.output, 1u);
}

TEST_F(ConvertCommand, WithoutASelectionThereIsNothingToRankBy)
{
  const std::string plot = plotWith({});
  EXPECT_THAT(readPlot(plot).selectedRows, IsEmpty());
  EXPECT_THROW(rank({"rank", plot}), UsageError);
  testing::internal::GetCapturedStdout();
}

TEST_F(ConvertCommand, ATimeOffTheGridIsSnappedAndSaidSo)
{
  testing::internal::CaptureStderr();
  const std::string plot = plotWith({"A @ 16.2 in 4..inf"});
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("16.2 -> 16"));
  EXPECT_EQ(readPlot(plot).selectedRows, readPlot(plotWith({gate})).selectedRows);
}

TEST_F(ConvertCommand, RefusesOtherEndings)
{
  for (std::string const name : {"plot", "plot.rs", "plot.rsd.txt", "rsd", "plot.rsd.", "plot.png"})
    EXPECT_THROW(runConvert(from(scan, folder.file(name))), UsageError) << name;
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(ConvertCommand, RefusesAnEndingBeforeItReads)
{
  const std::string missing = folder.file("missing.csv");
  EXPECT_THROW(runConvert(from(missing, folder.file("plot.png"))), UsageError);
  EXPECT_THROW(runConvert(from(missing, folder.file("plot.rsd"))), ScanError);
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(ConvertCommand, TakesEndingsInCapitals)
{
  convert(scan, folder.file("PLOT.RSD"), {gate});
  EXPECT_TRUE(isStoredPlot(folder.file("PLOT.RSD")));
  convert(folder.file("PLOT.RSD"), folder.file("BACK.Csv"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("BACK.Csv")), TempFolder::contentOf(scan));
}

TEST_F(ConvertCommand, APlotWhoseEndingIsInCapitalsNeedsNoGateToRank)
{
  convert(scan, folder.file("PLOT.RSD"), {gate});
  try {
    EXPECT_EQ(rank({"rank", folder.file("PLOT.RSD")}), rank({"rank", plotWith({gate})}));
  } catch (UsageError const& error) {
    testing::internal::GetCapturedStdout();
    ADD_FAILURE() << error.what();
  }
}

TEST_F(ConvertCommand, APlotOfAnyNameNeedsNoGateToRank)
{
  const std::string plot = plotWith({gate});
  const std::string expected = rank({"rank", plot});
  std::filesystem::rename(plot, folder.file("plot.txt"));
  EXPECT_EQ(rank({"rank", folder.file("plot.txt")}), expected);
  EXPECT_THROW((void)parseCommandLine({"rank", scan}), UsageError) << "a scan needs one";
}

TEST_F(ConvertCommand, ASelectionThatNoGatesMadeIsNotSavedAsASieve)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  plot.selectedRows = {16, 49};
  writePlot(plot, folder.file("dragged.rsd"));
  const std::string sieve = folder.file("sieve.json");
  try {
    rank({"rank", folder.file("dragged.rsd"), "--save-sieve", sieve});
    ADD_FAILURE() << "saved";
  } catch (UsageError const& error) {
    EXPECT_THAT(error.what(), HasSubstr("--save-sieve: no gates made the selection"));
  }
  testing::internal::GetCapturedStdout();
  EXPECT_FALSE(std::filesystem::exists(sieve));
  EXPECT_THAT(rank({"rank", plotWith({gate}), "--save-sieve", sieve}), HasSubstr("runs pass"));
  EXPECT_TRUE(std::filesystem::exists(sieve)) << "gates made this one";
}

TEST_F(ConvertCommand, ASieveFileWithoutGatesKeepsThoseOfTheStoredPlot)
{
  const std::string plot = plotWith({gate});
  const std::string sieve =
      folder.write(R"({"format": "runsieve sieve", "version": 1, "gates": []})", "s.json");
  EXPECT_EQ(rank({"rank", plot, "--sieve", sieve}), rank({"rank", plot}));
}

TEST_F(ConvertCommand, APlotOfAPlotKeepsSelectionViewAndZoom)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  plot.view = unusualView(1);
  plot.selectedRows = {16, 49};
  plot.window = {1.0, 2.0, 3.0, 4.0, true};
  writePlot(plot, folder.file("a.rsd"));
  convert(folder.file("a.rsd"), folder.file("b.rsd"));
  EXPECT_TRUE(samePlot(readPlot(folder.file("b.rsd")), plot));
  convert(folder.file("a.rsd"), folder.file("a.rsd"));
  EXPECT_TRUE(samePlot(readPlot(folder.file("a.rsd")), plot)) << "in place";
}

TEST_F(ConvertCommand, AGateReplacesTheSelectionOfAPlot)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  plot.selectedRows = {0, 1, 2};
  plot.window = {1.0, 2.0, 3.0, 4.0, true};
  writePlot(plot, folder.file("a.rsd"));
  convert(folder.file("a.rsd"), folder.file("b.rsd"), {gate});
  StoredPlot const changed = readPlot(folder.file("b.rsd"));
  EXPECT_EQ(changed.selectedRows, readPlot(plotWith({gate})).selectedRows);
  EXPECT_TRUE(changed.window.valid) << "the output is still the same";
}

TEST_F(ConvertCommand, TheZoomOfAnotherOutputGoes)
{
  StoredPlot plot;
  plot.scan = shaped.scan;
  plot.window = {1.0, 2.0, 3.0, 4.0, true};
  writePlot(plot, folder.file("a.rsd"));
  convert(folder.file("a.rsd"), folder.file("b.rsd"), {"B @ 16 in 0..4"});
  EXPECT_FALSE(readPlot(folder.file("b.rsd")).window.valid);
}

TEST_F(ConvertCommand, AnUnknownOutputLeavesTheFormerFile)
{
  const std::string former = TempFolder::contentOf(plotWith({gate}));
  const std::string path = folder.file("plot.rsd");
  EXPECT_THROW(runConvert(from(scan, path, {"Z @ 1 in 0..1"})), GateError);
  EXPECT_EQ(TempFolder::contentOf(path), former);
}

} // namespace
} // namespace runsieve::test
