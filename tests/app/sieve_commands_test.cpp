#include "support/TableFile.h"
#include "support/TempFile.h"

#include "app/cli/Commands.h"
#include "app/cli/RankReport.h"
#include "app/desk/DeskCommands.h"
#include "app/view/ShownComparison.h"
#include "app/view/SievedScan.h"
#include "support/PdfText.h"
#include "support/ScanBuilder.h"
#include "support/WorkingFolder.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

using runsieve::test::writeTable;
using testing::HasSubstr;
using testing::StartsWith;

namespace runsieve::app {
namespace {

constexpr int runs = 40;

double scattered(int parameter, int run)
{
  const double turn = (run + 1) * std::sqrt(2.0 + 3.0 * parameter);
  return turn - std::floor(turn);
}

/// A scan whose output is its first parameter at all times, and the commands on it.
struct SieveCommands : testing::Test
{
  test::TempFolder folder;
  std::string scan = folder.file("scan.csv");

  SieveCommands()
  {
    test::ScanShape shape;
    shape.runs = runs;
    shape.times = 5;
    shape.parameters = 3;
    shape.value = [](int, int r, int) { return scattered(0, r); };
    shape.parameter = scattered;
    writeTable(test::makeScan(shape), scan);
  }

  std::string rank(std::string const& format, std::string const& gate)
  {
    RankArguments arguments;
    arguments.file = scan;
    arguments.gates = {gate};
    arguments.format = format;
    testing::internal::CaptureStdout();
    EXPECT_EQ(runRank(arguments), 0);
    return testing::internal::GetCapturedStdout();
  }

  RenderArguments picture(std::string const& name) const
  {
    RenderArguments arguments;
    arguments.file = scan;
    arguments.gates = {"A @ 2 in 0.5..1"};
    arguments.output = folder.file(name);
    arguments.width = 400;
    arguments.height = 300;
    return arguments;
  }
};

TEST_F(SieveCommands, RankGivesWhatADragGives)
{
  const auto report = nlohmann::json::parse(rank("json", "A @ 2 in 0.5..1"));
  int passing = 0;
  for (int r = 0; r < runs; ++r) passing += scattered(0, r) >= 0.5;
  EXPECT_EQ(report["passing"], passing);

  RankArguments arguments;
  arguments.file = scan;
  arguments.gates = {"A @ 2 in 0.5..1"};
  const SievedScan sieved(arguments);
  vtkNew<vtkContextScene> scene;
  PlotContainer plot(nullptr);
  scene->AddItem(plot.getItem());
  sieved.applyTo(plot, {});
  const ShownComparison shown = compareSelection(
      plot, ParameterComparer(sieved.gated.scan(), sieved.gated.eligible()), sieved.gated.method);
  ASSERT_EQ(shown.numbers.parameters.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    ParameterComparison const& c = shown.numbers.parameters[i];
    EXPECT_EQ(report["parameters"][i]["name"], c.name);
    EXPECT_EQ(report["parameters"][i]["d"], c.d);
    EXPECT_EQ(report["parameters"][i]["p"], c.p);
    EXPECT_EQ(report["parameters"][i]["p_adjusted"], c.pPermutation);
    EXPECT_EQ(report["parameters"][i]["significant"], c.significant);
  }
  EXPECT_EQ(report["parameters"][0]["name"], "k1");
  EXPECT_EQ(report["parameters"][0]["significant"], true);
}

TEST_F(SieveCommands, JsonTellsTheMethod)
{
  const auto method = nlohmann::json::parse(rank("json", "A @ 2 in 0.5..1"))["method"];
  EXPECT_EQ(method["adjust"], "permutation");
  EXPECT_EQ(method["family"], 3);
  EXPECT_EQ(method["permutations"], 1000);
  EXPECT_EQ(method["most_permutations"], 10000);
  EXPECT_EQ(method["seed"], 1);
  EXPECT_GT(method["noise_floor"], 0.1);
}

TEST_F(SieveCommands, AGateThatEveryRunPassesIsNamed)
{
  RankArguments arguments;
  arguments.file = scan;
  arguments.format = "json";
  arguments.gates = {"A @ 2 in 0.5..1", "A @ 2 in -5..5"};
  testing::internal::CaptureStdout();
  EXPECT_EQ(runRank(arguments), 0);
  const auto report = nlohmann::json::parse(testing::internal::GetCapturedStdout());
  const auto& last = report["warnings"].back();
  EXPECT_EQ(last["kind"], "gate without effect");
  EXPECT_EQ(last["text"], "all runs pass \"A @ 2 in -5..5\"");
  arguments.gates = {"A @ 2 in 0.5..1", "A @ 2 in 5..6"};
  arguments.any = true;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runRank(arguments), 0);
  EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("no run passes"));
}

TEST_F(SieveCommands, CsvTellsTheMethodInEachLine)
{
  RankArguments arguments;
  arguments.file = scan;
  arguments.format = "csv";
  arguments.gates = {"A @ 2 in 0.5..1"};
  arguments.gatesTried = 4;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runRank(arguments), 0);
  std::istringstream lines(testing::internal::GetCapturedStdout());
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) EXPECT_THAT(line, HasSubstr(",true,0.05,0.1,4,"));
}

TEST_F(SieveCommands, GatesTriedAreNotToldOfAPThatTheyDoNotAdjust)
{
  RankArguments arguments;
  arguments.file = scan;
  arguments.gates = {"A @ 2 in 0.5..1"};
  arguments.gatesTried = 20;
  for (Adjustment const adjust : {Adjustment::None, Adjustment::Holm}) {
    arguments.adjust = adjust;
    testing::internal::CaptureStdout();
    EXPECT_EQ(runRank(arguments), 0);
    const std::string text = testing::internal::GetCapturedStdout();
    if (adjust == Adjustment::None)
      EXPECT_THAT(text, HasSubstr("\np adj  p, not adjusted\n"));
    else
      EXPECT_THAT(text, HasSubstr(", for 20 sets of gates tried\n"));
  }
}

TEST_F(SieveCommands, JsonTellsAtLeastAsManyMostPermutationsAsWereAskedFor)
{
  (void)folder.write(R"({"format": "runsieve sieve", "version": 1, "gates": [{"text": "A @ 2 in 0.5..1"}],
                   "method": {"permutations": 2000, "most_permutations": 500}})",
                     "sieve.json");
  RankArguments arguments;
  arguments.file = scan;
  arguments.format = "json";
  arguments.sieve = folder.file("sieve.json");
  testing::internal::CaptureStdout();
  EXPECT_EQ(runRank(arguments), 0);
  const auto method = nlohmann::json::parse(testing::internal::GetCapturedStdout())["method"];
  EXPECT_EQ(method["permutations"], 2000);
  EXPECT_EQ(method["most_permutations"], 2000);
}

TEST(ExactNumber, HasAsManyDigitsAsTellItApart)
{
  EXPECT_EQ(exact(0.1), "0.1");
  EXPECT_EQ(exact(1.0 / 3.0), "0.3333333333333333");
  EXPECT_EQ(exact(-0.0), "0");
  EXPECT_EQ(exact(std::nan("")), "");
}

TEST(JsonNumber, IsATextIfItIsInfiniteAndNullIfItIsNone)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(numberJson(infinity), "inf");
  EXPECT_EQ(numberJson(-infinity), "-inf");
  EXPECT_TRUE(numberJson(std::nan("")).is_null());
  EXPECT_EQ(numberJson(0.5), 0.5);
}

TEST_F(SieveCommands, TheTableOfParametersOfASieveFileIsFoundFromAnyFolder)
{
  std::string rows = "run,gain\n";
  for (int run = 1; run <= runs; ++run) rows += std::to_string(run) + ',' + std::to_string(run) + '\n';
  (void)folder.write(rows, "table.csv");
  const std::string sieve = folder.file("sieve.json");
  const auto ranked = [](RankArguments const& arguments) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(runRank(arguments), 0);
    return testing::internal::GetCapturedStdout();
  };
  {
    const test::WorkingFolder here(folder.file(""));
    RankArguments arguments;
    arguments.file = "scan.csv";
    arguments.read.parametersFile = "table.csv";
    arguments.gates = {"A @ 2 in 0.5..1"};
    arguments.saveSieve = "sieve.json";
    EXPECT_THAT(ranked(arguments), HasSubstr("gain"));
    arguments = {};
    arguments.file = "scan.csv";
    arguments.sieve = "sieve.json";
    arguments.saveSieve = "table.csv";
    EXPECT_THROW(runRank(arguments), std::runtime_error) << "it is read";
  }
  const test::WorkingFolder elsewhere("/");
  RankArguments arguments;
  arguments.file = scan;
  arguments.sieve = sieve;
  EXPECT_THAT(ranked(arguments), HasSubstr("gain"));
}

TEST_F(SieveCommands, ACommandThatFailsLeavesNoSieveFile)
{
  RankArguments arguments;
  arguments.file = scan;
  arguments.gates = {"A @ 2 in 5..6"};
  arguments.saveSieve = folder.file("sieve.json");
  EXPECT_THROW(runRank(arguments), std::runtime_error);
  EXPECT_EQ(folder.fileCount(), 1u);
  PairsArguments pairs;
  pairs.file = scan;
  pairs.gates = arguments.gates;
  pairs.saveSieve = arguments.saveSieve;
  EXPECT_THROW(runPairs(pairs), std::runtime_error);
  EXPECT_EQ(folder.fileCount(), 1u);
  RenderArguments render = picture("view.png");
  render.species = "none";
  render.saveSieve = arguments.saveSieve;
  EXPECT_THROW(renderPicture(render), std::runtime_error);
  EXPECT_EQ(folder.fileCount(), 1u);
  render.species.clear();
  EXPECT_EQ(renderPicture(render), 0);
  EXPECT_EQ(folder.fileCount(), 3u);
}

TEST(FormattedNumber, ANumberThatRoundsToZeroHasNoMinus)
{
  EXPECT_EQ(formatted(-0.001, "%+.2f", "-"), "+0.00");
  EXPECT_EQ(formatted(-0.006, "%+.2f", "-"), "-0.01");
  EXPECT_EQ(formatted(-0.0, "%.3g", "-"), "0");
}

TEST_F(SieveCommands, CsvHasOneLineAParameterAndNothingElse)
{
  const std::string text = rank("csv", "A @ 2 in 0.5..1");
  EXPECT_THAT(
      text,
      StartsWith("parameter,n_passing,n_others,d,at,p,p_is_bound,p_method,p_holm,p_bh,p_perm,"
                 "p_adjusted,median_passing,median_others,area,median_shift,range_kept,"
                 "significant,adjust,family,permutations,seed,noise_floor,settled,p_threshold,ks_threshold,"
                 "gates_tried,version\n\"k1\",19,21,1,"));
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_EQ(std::count(line.begin(), line.end(), ','), 27);
}

TEST_F(SieveCommands, WhatIsNotDefinedIsAnEmptyFieldInCsvAndADashInTheTable)
{
  EXPECT_THAT(rank("csv", "A @ 2 in 0..1"), HasSubstr("\"k1\",40,0,,,,false,exact,,,,,"));
  EXPECT_THAT(rank("table", "A @ 2 in 0..1"), HasSubstr(" - "));
}

TEST_F(SieveCommands, TheTableIsNoWiderThanAHundredColumns)
{
  const std::string text = rank("table", "A @ 2 in 0.5..1");
  std::istringstream lines(text.substr(0, text.find("warning")));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
}

TEST_F(SieveCommands, ATimeOffTheGridIsSnappedAndSaidSo)
{
  EXPECT_THAT(rank("table", "A @ 2.1 in 0.5..1"), HasSubstr("2.1 -> 2"));
}

TEST_F(SieveCommands, NoPassingRunIsAFailure)
{
  RankArguments arguments;
  arguments.file = scan;
  arguments.gates = {"A @ 2 in 5..6"};
  EXPECT_THROW(runRank(arguments), std::runtime_error);
}

TEST_F(SieveCommands, NothingToRankIsAFailure)
{
  test::ScanShape shape;
  shape.parameters = 0;
  writeTable(test::makeScan(shape), scan);
  RankArguments arguments;
  arguments.file = scan;
  arguments.gates = {"A @ 0 in 0..5"};
  EXPECT_THROW(runRank(arguments), std::runtime_error);
}

TEST_F(SieveCommands, RenderWritesPictures)
{
  EXPECT_EQ(renderPicture(picture("view.PNG")), 0);
  EXPECT_THAT(test::TempFolder::contentOf(folder.file("view.PNG")), StartsWith("\x89PNG"));
  EXPECT_THROW(renderPicture(picture("view.gif")), std::runtime_error);
}

TEST_F(SieveCommands, ThePdfHoldsNoOperatorThatReadersReject)
{
  EXPECT_EQ(renderPicture(picture("view.pdf")), 0);
  const std::string pdf = test::inflatedPdf(test::TempFolder::contentOf(folder.file("view.pdf")));
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_NE(pdf.find(" l\n"), std::string::npos);
  EXPECT_EQ(pdf.find(" ca\n"), std::string::npos);
  for (std::size_t at = pdf.find("/GS"); at != std::string::npos; at = pdf.find("/GS", at + 1))
    EXPECT_EQ(pdf.substr(at, 4), "/GSa") << "at byte " << at;
}

} // namespace
} // namespace runsieve::app
