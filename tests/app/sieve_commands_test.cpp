#include "support/TableFile.h"
#include "support/TempFile.h"

#include "app/cli/Commands.h"
#include "app/desk/DeskCommands.h"
#include "app/view/SievedScan.h"
#include "support/ScanBuilder.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

using testing::HasSubstr;
using testing::StartsWith;
using runsieve::test::writeTable;

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
  ASSERT_EQ(plot.ksStatistics.size(), 3u);
  EXPECT_EQ(report["parameters"][0]["name"], "k1");
  EXPECT_EQ(report["parameters"][0]["d"], plot.ksStatistics[0].d);
  EXPECT_EQ(report["parameters"][0]["p"], plot.ksStatistics[0].p);
  EXPECT_EQ(report["parameters"][0]["significant"], true);
}

TEST_F(SieveCommands, CsvHasOneLineAParameterAndNothingElse)
{
  const std::string text = rank("csv", "A @ 2 in 0.5..1");
  EXPECT_THAT(text, StartsWith("parameter,p,d,median_passing,median_others,significant\n\"k1\","));
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
}

TEST_F(SieveCommands, AMissingMedianIsAnEmptyFieldInCsvAndADashInTheTable)
{
  EXPECT_THAT(rank("csv", "A @ 2 in 0..1"), HasSubstr(",,false\n"));
  EXPECT_THAT(rank("table", "A @ 2 in 0..1"), HasSubstr(" - "));
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
  const std::string pdf = test::TempFolder::contentOf(folder.file("view.pdf"));
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_EQ(pdf.find(" ca\n"), std::string::npos);
  for (std::size_t at = pdf.find("/GS"); at != std::string::npos; at = pdf.find("/GS", at + 1))
    EXPECT_EQ(pdf.substr(at, 4), "/GSa") << "at byte " << at;
}

} // namespace
} // namespace runsieve::app
