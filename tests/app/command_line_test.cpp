#include "app/cli/CommandLine.h"

#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

using namespace app;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Words = std::vector<std::string>;

template <class Arguments> Arguments parse(Words const& words)
{
  Command const command = parseCommandLine(words);
  EXPECT_TRUE(std::holds_alternative<Arguments>(command));
  return std::get<Arguments>(command);
}

std::string usageError(Words const& words)
{
  try {
    (void)parseCommandLine(words);
    return "nothing";
  } catch (UsageError const& error) {
    EXPECT_THAT(error.what(), Not(HasSubstr("\n")));
    return error.what();
  }
}

TEST(CommandLine, WithoutACommandItExplores)
{
  EXPECT_EQ(parse<ExploreArguments>({}).file, "");
  EXPECT_EQ(parse<ExploreArguments>({"scan.csv"}).file, "scan.csv");
  EXPECT_EQ(parse<ExploreArguments>({"explore", "scan.csv"}).file, "scan.csv");
  EXPECT_THAT(parse<ExploreArguments>({"explore", "a.csv", "b.csv", "c.csv"}).more,
              testing::ElementsAre("b.csv", "c.csv"));
}

TEST(CommandLine, ReadsRank)
{
  auto const rank =
      parse<RankArguments>({"rank", "scan.csv", "--gate", "A @ 1 in 2..3", "-g", "B @ 2 in -inf..3",
                            "--format", "json", "--p-threshold", "0.01", "--ks-threshold", "0.2"});
  EXPECT_EQ(rank.file, "scan.csv");
  EXPECT_THAT(rank.gates, ElementsAre("A @ 1 in 2..3", "B @ 2 in -inf..3"));
  EXPECT_EQ(rank.format, "json");
  EXPECT_EQ(rank.pThreshold, 0.01);
  EXPECT_EQ(rank.ksThreshold, 0.2);
  EXPECT_FALSE(rank.read.parameters);
}

TEST(CommandLine, GatesMayStandBeforeTheFile)
{
  auto const rank = parse<RankArguments>({"rank", "--gate", "A @ 1 in 2..3", "scan.csv"});
  EXPECT_EQ(rank.file, "scan.csv");
  EXPECT_THAT(rank.gates, ElementsAre("A @ 1 in 2..3"));
}

TEST(CommandLine, ReadsRender)
{
  auto const plain = parse<RenderArguments>({"render", "scan.csv", "-o", "view.png"});
  EXPECT_EQ(plain.output, "view.png");
  EXPECT_EQ(plain.width, 1200);
  EXPECT_EQ(plain.height, 900);
  EXPECT_FALSE(plain.density || plain.commonScale || plain.quantiles || plain.logAxes || plain.points);
  auto const full = parse<RenderArguments>({"render", "scan.csv", "-o", "view.pdf", "--width", "600",
                                            "--height", "400", "--species", "A", "--density",
                                            "--common-scale", "--quantiles", "--log-axes", "--points"});
  EXPECT_EQ(full.width, 600);
  EXPECT_EQ(full.height, 400);
  EXPECT_EQ(full.species, "A");
  EXPECT_TRUE(full.density && full.commonScale && full.quantiles && full.logAxes && full.points);
}

TEST(CommandLine, ReadsSimulate)
{
  auto const plain = parse<SimulateArguments>({"simulate", "-o", "scan.csv"});
  EXPECT_EQ(plain.model, "");
  EXPECT_EQ(plain.runs, 1000u);
  EXPECT_EQ(plain.times, 101u);
  EXPECT_FALSE(plain.seed);
  EXPECT_EQ(plain.sampling, Sampling::LatinHypercube);
  auto const full =
      parse<SimulateArguments>({"simulate", "toggle_switch", "--runs", "5", "--times", "7", "--seed",
                                "18446744073709551615", "--sampling", "sobol", "-o", "-"});
  EXPECT_EQ(full.model, "toggle_switch");
  EXPECT_EQ(full.runs, 5u);
  EXPECT_EQ(full.times, 7u);
  EXPECT_EQ(full.seed, 18446744073709551615u);
  EXPECT_EQ(full.sampling, Sampling::Sobol);
  EXPECT_TRUE(parse<SimulateArguments>({"simulate", "--list"}).list);
}

TEST(CommandLine, NamesColumns)
{
  auto const info = parse<InfoArguments>({"info", "x.csv", "--time-column", "h", "--run-column", "r",
                                          "--parameter-column", "k", "--parameter-column", "m"});
  EXPECT_EQ(info.read.time, "h");
  EXPECT_EQ(info.read.run, "r");
  ASSERT_TRUE(info.read.parameters);
  EXPECT_THAT(*info.read.parameters, ElementsAre("k", "m"));
}

TEST(CommandLine, TellsHelpAndVersion)
{
  EXPECT_THAT(parse<Information>({"--version"}).text, testing::MatchesRegex("runsieve [0-9.]+\n"));
  for (char const* command : {"simulate", "info", "rank", "render", "explore"})
    EXPECT_THAT(parse<Information>({command, "--help"}).text,
                HasSubstr(std::string("Example:\n  runsieve ") + command));
  EXPECT_THAT(parse<Information>({"--help"}).text, HasSubstr("Example:\n  runsieve "));
}

TEST(CommandLine, RefusesBadUsageInOneLine)
{
  EXPECT_THAT(usageError({"rank", "scan.csv"}), HasSubstr("--gate"));
  EXPECT_THAT(usageError({"rank", "--gate", "A @ 1 in 2..3"}), HasSubstr("file"));
  EXPECT_THAT(usageError({"rank", "scan.csv", "--gate", "A 1"}),
              HasSubstr("there is no \"in\" with a range"));
  EXPECT_THAT(usageError({"rank", "scan.csv", "-g", "A @ 1 in 2..3", "--format", "xml"}), HasSubstr("xml"));
  EXPECT_THAT(usageError({"rank", "scan.csv", "-g", "A @ 1 in 2..3", "--p-threshold", "2"}), HasSubstr("2"));
  EXPECT_THAT(usageError({"render", "scan.csv"}), HasSubstr("--out"));
  EXPECT_THAT(usageError({"render", "scan.csv", "-o", "x.png", "--width", "0"}), HasSubstr("--width"));
  EXPECT_THAT(usageError({"simulate"}), HasSubstr("-o"));
  EXPECT_THAT(usageError({"simulate", "-o", "x", "--runs", "0"}), HasSubstr("--runs"));
  EXPECT_THAT(usageError({"simulate", "-o", "x", "--runs", "-5"}), HasSubstr("--runs"));
  EXPECT_THAT(usageError({"simulate", "-o", "x", "--seed", "-1"}), HasSubstr("--seed"));
  EXPECT_THAT(usageError({"simulate", "-o", "x", "--sampling", "dice"}), HasSubstr("dice"));
  EXPECT_THAT(usageError({"info", "a.csv", "b.csv"}), HasSubstr("b.csv"));
  EXPECT_THAT(usageError({"--nonsense"}), HasSubstr("--nonsense"));
  EXPECT_THAT(usageError({"--time-column", "h", "info", "a.csv"}), HasSubstr("behind the command info"));
}

TEST(Commands, SimulateAndInfoWorkTogether)
{
  TempFolder folder;
  SimulateArguments simulate;
  simulate.runs = 4;
  simulate.times = 3;
  simulate.output = folder.file("scan.csv");
  testing::internal::CaptureStdout();
  EXPECT_EQ(runSimulate(simulate), 0);
  std::string report = testing::internal::GetCapturedStdout();
  EXPECT_THAT(report, HasSubstr("seed "));
  EXPECT_THAT(report, HasSubstr("Elowitz"));

  // The seed that was printed makes the same scan again.
  std::string const first = TempFolder::contentOf(simulate.output);
  simulate.seed = std::stoull(report.substr(report.find("seed ") + 5));
  testing::internal::CaptureStdout();
  EXPECT_EQ(runSimulate(simulate), 0);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(TempFolder::contentOf(simulate.output), first);

  InfoArguments info;
  info.file = simulate.output;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runInfo(info), 0);
  report = testing::internal::GetCapturedStdout();
  EXPECT_THAT(report, HasSubstr("runs       4\n"));
  EXPECT_THAT(report, HasSubstr("times      3, Time [min] 0..300\n"));
  EXPECT_THAT(report, HasSubstr("outputs    4\n"));
  EXPECT_THAT(report, HasSubstr("parameters 14\n"));
}

TEST(Commands, SimulateListsItsModels)
{
  SimulateArguments list;
  list.list = true;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runSimulate(list), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "repressilator\nmapk_cascade\ntoggle_switch\n");
}

TEST(Commands, AnUnknownModelIsBadUsage)
{
  SimulateArguments arguments;
  arguments.model = "perpetuum";
  arguments.output = "-";
  EXPECT_THROW(runSimulate(arguments), UsageError);
}

TEST(Commands, InfoTellsOddValues)
{
  TempFolder folder;
  InfoArguments info;
  info.file = folder.write("A,B,time,k\n1,nan,0,3\n2,nan,1,3\nnan,nan,0,3\n-1,nan,1,3\n");
  info.read.parameters = std::vector<std::string>{"k"};
  testing::internal::CaptureStdout();
  EXPECT_EQ(runInfo(info), 0);
  std::string const report = testing::internal::GetCapturedStdout();
  EXPECT_THAT(report, HasSubstr("  A  -1..2 (1 value not finite)\n"));
  EXPECT_THAT(report, HasSubstr("  B  no finite value (4 values not finite)\n"));
  EXPECT_THAT(report, HasSubstr("  k  3 (constant, not plotted)\n"));
}

} // namespace
} // namespace runsieve::test
