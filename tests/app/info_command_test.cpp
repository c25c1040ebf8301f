#include "app/cli/Commands.h"
#include "app/scan/ScanWriter.h"
#include "ScanColumns.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

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
  app::writeScan(*makeScan(shape), folder.file("scan.csv"));
  EXPECT_EQ(infoOf(folder.file("scan.csv")), "runs       3\n"
                                             "times      4, Time [s] 0..3\n"
                                             "outputs    2\n"
                                             "  Molecule: A  -3..0.5\n"
                                             "  Molecule: B  7..7\n"
                                             "parameters 3\n"
                                             "  Parameter: k1  0..2\n"
                                             "  Parameter: k2  2.5..2.5 (constant, not plotted)\n"
                                             "  Parameter: k3  2000..2002\n");
}

TEST(InfoCommand, CountsWhatIsNotFinite)
{
  TempFolder folder;
  ScanShape shape = shapeOf(2, 2, 1, 2);
  shape.value = [](int, int r, int t) { return r == 0 && t == 0 ? HUGE_VAL : 10.0 * r + t; };
  shape.parameter = [](int p, int r) { return r == 0 ? 3.0 : p == 0 ? std::nan("") : 4.0; };
  app::writeScan(*makeScan(shape), folder.file("scan.csv"));
  EXPECT_EQ(infoOf(folder.file("scan.csv")), "runs       2\n"
                                             "times      2, Time [s] 0..1\n"
                                             "outputs    1\n"
                                             "  Molecule: A  1..11 (1 rows not finite)\n"
                                             "parameters 2\n"
                                             "  Parameter: k1  3..3 (2 rows not finite)\n"
                                             "  Parameter: k2  3..4\n");
}

} // namespace
} // namespace runsieve::test
