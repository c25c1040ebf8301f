#include "app/cli/Commands.h"
#include "ScanColumns.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cmath>

namespace runsieve::test {
namespace {

/// What "info" prints of a file.
std::string infoOf(std::string const& file)
{
  app::InfoArguments arguments;
  arguments.file = file;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runInfo(arguments), 0);
  return testing::internal::GetCapturedStdout();
}

TEST(InfoCommand, TellsRunsTimesAndTheRangeOfEachColumn)
{
  TempFolder folder;
  ScanShape shape = shapeOf(3, 4, 2, 3);
  shape.value = [](int s, int r, int t) { return s == 1 ? 7.0 : 0.25 * r - t; };
  shape.parameter = [](int p, int r) { return p == 1 ? 2.5 : 1000.0 * p + r; };
  writeTable(makeScan(shape), folder.file("scan.csv"));
  EXPECT_EQ(infoOf(folder.file("scan.csv")),
            "runs       3\n"
            "times      4, Time [s] 0..3\n"
            "outputs    2\n"
            "  Molecule: A  -3..0.5\n"
            "  Molecule: B  7..7\n"
            "parameters 3\n"
            "  k1  0..2\n"
            "  k2  2.5 (constant, not plotted)\n"
            "  k3  2000..2002\n"
            "read as    comma separated text\n"
            "note       k3 is a monotone copy of k1: both give the same test: "
            "their values put the runs in the same order\n");
}

TEST(InfoCommand, CountsWhatIsNotFinite)
{
  TempFolder folder;
  ScanShape shape = shapeOf(2, 2, 1, 2);
  shape.value = [](int, int r, int t) { return r == 0 && t == 0 ? HUGE_VAL : 10.0 * r + t; };
  shape.parameter = [](int p, int r) { return r == 0 ? 3.0 : p == 0 ? std::nan("") : 4.0; };
  writeTable(makeScan(shape), folder.file("scan.csv"));
  EXPECT_EQ(infoOf(folder.file("scan.csv")),
            "runs       2\n"
            "times      2, Time [s] 0..1\n"
            "outputs    1\n"
            "  Molecule: A  1..11 (1 value not finite)\n"
            "parameters 2\n"
            "  k1  3..3 (1 value not finite)\n"
            "  k2  3..4\n"
            "failed     1 run: 0\n"
            "read as    comma separated text\n"
            "note       1 failed run: said so by a status column, or missing or "
            "infinite values\n");
}

TEST(InfoCommand, TellsWhatWasGuessedAndWhatWasLeftOut)
{
  TempFolder folder;
  std::string const scan = folder.write("# Time\t[A]\tnote\n0\t1\t5\n1\t2\t5\n\n0\t3\t6\n", "scan.txt");
  app::InfoArguments arguments;
  arguments.file = scan;
  arguments.read.ignore = {"note"};
  testing::internal::CaptureStdout();
  EXPECT_EQ(runInfo(arguments), 0);
  EXPECT_EQ(
      testing::internal::GetCapturedStdout(),
      "runs       2\n"
      "times      2, Time 0..1\n"
      "outputs    1\n"
      "  [A]  1..3 (1 value not finite)\n"
      "parameters 0\n"
      "short      1 run: 1\n"
      "read as    tab separated text\n"
      "ignored    note: by option\n"
      "guessed    runs are split at blank lines, and counted from 0: no "
      "column tells the runs apart\n"
      "guessed    \"[A]\" is taken for an output: it changes within 1 of 2 runs: --parameter \"[A]\" says "
      "otherwise\n"
      "note       1 run ends early: before the last time of the scan\n");
}

TEST(InfoCommand, TellsTheSameAsJson)
{
  TempFolder folder;
  app::InfoArguments arguments;
  arguments.file =
      folder.write("id,time (min),A,k,strain\nx,0,1,2,wt\nx,1,2,2,wt\ny,0,3,,mut\ny,1,nan,,mut\n");
  arguments.format = "json";
  testing::internal::CaptureStdout();
  EXPECT_EQ(runInfo(arguments), 0);
  auto const info = nlohmann::json::parse(testing::internal::GetCapturedStdout());
  EXPECT_EQ(info["runs"], 2);
  EXPECT_EQ(info["short"], nlohmann::json::array({"y"}));
  EXPECT_EQ(info["time"]["unit"], "min");
  EXPECT_EQ(info["outputs"][0]["not_finite"], 1);
  EXPECT_EQ(info["parameters"][0]["range"], nlohmann::json::array({2, 2}));
  EXPECT_EQ(info["parameters"][1]["texts"], nlohmann::json::array({"wt", "mut"}));
  EXPECT_EQ(info["read"]["columns"][0]["role"], "run");
  EXPECT_EQ(info["read"]["findings"][0]["guess"], true);
}

} // namespace
} // namespace runsieve::test
