#include "ScanColumns.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace runsieve::test {
namespace {

using Strings = std::vector<std::string>;
using Values = std::vector<double>;
using Bounds = std::vector<std::pair<double, double>>;

constexpr char smallScan[] = R"("Molecule: A",": Time [s]",": Run Index","Parameter: k1"
1,0,0,0.5
2,10,0,0.5
3,0,1,0.7
4,10,1,0.7
)";

boost::shared_ptr<LinePlotTable> read(std::string const& content, ReadOptions const& options = {})
{
  TempFolder folder;
  return readScanTable(folder.write(content), options);
}

// One column "x" with the texts given, one run.
Values readCells(Strings const& cells)
{
  std::string content = "Molecule: x,time\n";
  for (std::size_t i = 0; i < cells.size(); ++i) content += cells[i] + ',' + std::to_string(i) + '\n';
  return column(*read(content), "Molecule: x");
}

TEST(ScanReader, ReadsAScanInTheLibrarysForm)
{
  auto scan = read(smallScan);
  EXPECT_EQ(scan->trajectoryCount, 2u);
  EXPECT_EQ(scan->trajectoryLength, 2u);
  EXPECT_EQ(namesOf(*scan), (Strings{"Molecule: A", ": Time [s]", ": Run Index", "Parameter: k1"}));
  EXPECT_EQ(column(*scan, "Molecule: A"), (Values{1, 2, 3, 4}));
  EXPECT_EQ(column(*scan, ": Time [s]"), (Values{0, 10, 0, 10}));
  EXPECT_EQ(column(*scan, ": Run Index"), (Values{0, 0, 1, 1}));
  EXPECT_EQ(column(*scan, "Parameter: k1"), (Values{0.5, 0.5, 0.7, 0.7}));
  EXPECT_EQ(scan->parameterBounds, (Bounds{{0.5, 0.7}}));
}

TEST(ScanReader, ArrangesColumnsOfAnyOrderAndType)
{
  auto scan = read(
      "Parameter: k2,: Run Index,Complex: AB,Parameter: k1,Pattern: P,: Time [s],Complex With Molecule: C\n"
      "1,0,2,3,4,0,5\n");
  EXPECT_EQ(namesOf(*scan), (Strings{"Complex: AB", "Pattern: P", "Complex With Molecule: C", ": Time [s]",
                                     ": Run Index", "Parameter: k2", "Parameter: k1"}));
  EXPECT_EQ(scan->columnNames[2].first, Kestrane::ComplexWithMolecule);
  EXPECT_EQ(column(*scan, "Complex With Molecule: C"), Values{5});
  EXPECT_EQ(scan->parameterBounds, (Bounds{{1, 1}, {3, 3}}));
}

TEST(ScanReader, TellsFreeNamesApartByTheirValues)
{
  auto scan =
      read("run_id\tk\tTime (min)\tA\tdose\n7\t1\t0\t5\t9\n7\t1\t1\t6\t9\n9\t2\t0\t5\t9\n9\t2\t1\t5\t9\n");
  EXPECT_EQ(namesOf(*scan),
            (Strings{"Molecule: A", ": Time [min]", ": Run Index", "Parameter: k", "Parameter: dose"}));
  EXPECT_EQ(column(*scan, ": Run Index"), (Values{7, 7, 9, 9}));
  EXPECT_EQ(scan->parameterBounds, (Bounds{{1, 2}, {9, 9}}));
}

TEST(ScanReader, KnowsTheUsualNamesOfTimeAndRun)
{
  for (std::string time : {"time", "T", "Time", "TIME [s]", "time_min", "t (h)", "\"time\""})
    EXPECT_EQ(read(time + ",A\n0,1\n1,2\n")->trajectoryLength, 2u) << time;
  for (std::string run : {"run", "Run Index", "run_id", "RunID", "simulation", "sim-id", ": Run Index"})
    EXPECT_EQ(read("t,A,k," + run + "\n0,1,5,3\n1,2,5,3\n")->columnNames.at(2).second, "Run Index") << run;
}

TEST(ScanReader, NamesTheTimeAxisWithItsUnit)
{
  EXPECT_EQ(namesOf(*read("t,A\n0,1\n1,2\n"))[1], ": Time");
  EXPECT_EQ(namesOf(*read("time_min,A\n0,1\n1,2\n"))[1], ": Time [min]");
  EXPECT_EQ(namesOf(*read(": time course,time,A\n0,0,1\n1,1,2\n"))[2], ": Time");
}

TEST(ScanReader, FollowsTheOptions)
{
  ReadOptions options;
  options.time = "hours";
  options.run = "replica";
  options.parameters = Strings{"k"};
  auto scan = read("k,level,hours,replica,constant\n1,5,0,0,3\n1,6,1,0,3\n2,5,0,1,3\n2,5,1,1,3\n", options);
  EXPECT_EQ(namesOf(*scan), (Strings{"Molecule: level", "Molecule: constant", ": Time (hours)", ": Run Index",
                                     "Parameter: k"}));
}

TEST(ScanReader, StartsARunWhereTimeDoesNotRiseIfThereIsNoRunColumn)
{
  auto scan = read("time,A,k\n0,1,5\n1,2,5\n0,3,6\n1,4,6\n");
  EXPECT_EQ(scan->trajectoryCount, 2u);
  EXPECT_EQ(column(*scan, ": Run Index"), (Values{0, 0, 1, 1}));
  // One time point a run: no column varies within a run, so the outputs must be told.
  ReadOptions options;
  options.parameters = Strings{"k"};
  EXPECT_EQ(read("time,A,k\n3,1,5\n3,2,6\n3,3,7\n", options)->trajectoryCount, 3u);
}

TEST(ScanReader, ReadsWhatProgramsWrite)
{
  std::string const rows = "Molecule: A,time\r\n1,0\r\n2,1";
  for (std::string end : {"", "\r\n", "\n\n\r\n  \n"})
    EXPECT_EQ(column(*read("\xEF\xBB\xBF" + rows + end), "Molecule: A"), (Values{1, 2})) << end;
  EXPECT_EQ(column(*read("\"\",\"time\",\"A\"\n\"1\",0,5\n\"2, b\",1,6\n"), "Molecule: A"), (Values{5, 6}))
      << "row names in a first column without a name";
  EXPECT_EQ(namesOf(*read("\"A, \"\"x\"\"\";time\n1;0\n2;1\n"))[0], "Molecule: A, \"x\"");
}

TEST(ScanReader, LeavesOutTheFlagColumnsOfASavedPlot)
{
  auto scan = read("Molecule: A,: Time [s],: Run Index,Parameter: k,vtkComplementSelection,selected points\n"
                   "1,0,0,5,0,1\n2,1,0,5,1,0\n");
  EXPECT_EQ(namesOf(*scan), (Strings{"Molecule: A", ": Time [s]", ": Run Index", "Parameter: k"}));
}

TEST(ScanReader, ReadsNumbersInAllSpellings)
{
  EXPECT_EQ(readCells({"1", "+1", " 1 ", "\"1\"", "\" +1\"", "1e0", "1.", ".5", "1E+2", "-0.5e-1", "007"}),
            (Values{1, 1, 1, 1, 1, 1, 1, 0.5, 100, -0.05, 7}));
  EXPECT_EQ(
      readCells({"4.9406564584124654e-324", "1.7976931348623157e308", "1e-400", "2.2250738585072011e-308"}),
      (Values{4.9406564584124654e-324, 1.7976931348623157e308, 0, 2.2250738585072011e-308}));
}

TEST(ScanReader, ReadsNanAndInfinityInOutputsAndParameters)
{
  Values const cells = readCells({"nan", "NaN", "-nan", "inf", "-Infinity", "+INF"});
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(cells[i])) << i;
  double const infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Values(cells.begin() + 3, cells.end()), (Values{infinity, -infinity, infinity}));

  auto scan = read("Molecule: A,time,Parameter: k\n1,0,nan\n1,1,nan\n1,0,2\n1,1,2\n1,0,4\n1,1,4\n");
  EXPECT_EQ(scan->parameterBounds, (Bounds{{2, 4}}));
}

TEST(ScanReader, ReadsTheSameWithAnyNumberOfThreads)
{
  std::string content = "A,B,time,run,k\n";
  for (int run = 0; run < 4000; ++run)
    for (int time = 0; time < 50; ++time)
      content += std::to_string(0.1 * run + time) + ',' + std::to_string(run * time % 17) + ',' +
                 std::to_string(time) + ',' + std::to_string(run) + ',' + std::to_string(run % 13) + ".25\n";
  ASSERT_GT(content.size(), std::size_t(4) << 20) << "smaller files take one thread";
  TempFolder folder;
  std::string const path = folder.write(content);
  ReadOptions options;
  options.threads = 1;
  auto one = readScanTable(path, options);
  options.threads = 3;
  auto three = readScanTable(path, options);
  EXPECT_EQ(one->trajectoryCount, 4000u);
  EXPECT_EQ(namesOf(*one), namesOf(*three));
  for (auto const& name : namesOf(*one)) EXPECT_EQ(column(*one, name), column(*three, name)) << name;
  EXPECT_EQ(column(*one, "Molecule: A").back(), 448.9);
}

TEST(ScanReader, KeepsFieldsApartThatBeginAlike)
{
  EXPECT_EQ(
      readCells({"12345678", "123456789", "1234567", "12345678", "12345678901234567", "12345678901234568"}),
      (Values{12345678, 123456789, 1234567, 12345678, 12345678901234567.0, 12345678901234568.0}));
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryIsInstrumented = true;
#else
constexpr bool memoryIsInstrumented = false;
#endif

long peakMemoryInKiB()
{
  rusage usage = {};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// In a process of its own: what was the peak before does not hide this one.
TEST(ScanReader, NeedsLittleMemoryBesideTheColumns)
{
  if (memoryIsInstrumented) GTEST_SKIP() << "the sanitizer's own memory would be counted";
  std::string content = "Molecule: A,Molecule: B,time,run,Parameter: k\n";
  for (int run = 0; run < 6000; ++run)
    for (int time = 0; time < 101; ++time)
      content += std::to_string(0.123456789 * run * time) + ",-1.25000000000000e+01," + std::to_string(time) +
                 ',' + std::to_string(run) + ",0.123456789012345" + std::to_string(run % 10) + '\n';
  TempFolder folder;
  std::string const path = folder.write(content);
  long const columnsInKiB = 6000L * 101 * 5 * 8 / 1024;
  long const fileInKiB = static_cast<long>(content.size()) / 1024;
  ASSERT_GT(fileInKiB, columnsInKiB);
  content = {};
  content.shrink_to_fit();

  pid_t const child = ::fork();
  if (child == 0) {
    std::ofstream("/proc/self/clear_refs") << 5; // the peak starts anew
    long const before = peakMemoryInKiB();
    auto scan = readScanTable(path);
    long const growth = peakMemoryInKiB() - before;
    std::_Exit(scan->rows() == 606000 && growth < columnsInKiB + 20 * 1024 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

} // namespace
} // namespace runsieve::test
