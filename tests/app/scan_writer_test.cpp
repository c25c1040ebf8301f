#include "app/scan/ScanWriter.h"

#include "app/scan/ScanReader.h"
#include "ScanColumns.h"
#include "support/ScanBuilder.h"
#include "support/TempFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace runsieve::test {
namespace {

using app::readScanTable;
using app::writeScan;

std::string textOf(LinePlotTable const& scan)
{
  std::ostringstream stream;
  writeScan(scan, stream);
  return stream.str();
}

TEST(ScanWriter, WritesTheLibrarysForm)
{
  auto scan = makeScan(shapeOf(2, 2, 1, 1));
  EXPECT_EQ(textOf(*scan), "\"Molecule: A\",\": Time [s]\",\": Run Index\",\"Parameter: k1\"\n"
                           "0,0,0,1\n1,1,0,1\n10,0,1,2\n11,1,1,2\n");
}

TEST(ScanWriter, WritesShortNumbersThatReadBack)
{
  LinePlotTable scan;
  scan.trajectoryCount = 1;
  scan.trajectoryLength = 8;
  double* column = scan.addColumn(Kestrane::Molecule, "x");
  double const values[] = {0.1, -0.0, 100000000.0, 1e300, 5e-324, 1.0 / 3.0, std::nan(""), -HUGE_VAL};
  std::memcpy(column, values, sizeof values);
  EXPECT_EQ(textOf(scan),
            "\"Molecule: x\"\n0.1\n-0\n100000000\n1e+300\n5e-324\n0.3333333333333333\nnan\n-inf\n");
}

TEST(ScanWriter, DoublesQuotesInNames)
{
  LinePlotTable scan;
  scan.addColumn(Kestrane::Molecule, "A \"b\", c");
  EXPECT_EQ(textOf(scan), "\"Molecule: A \"\"b\"\", c\"\n");
}

TEST(ScanWriter, EveryBitSurvivesARoundTrip)
{
  std::mt19937_64 bits(5);
  auto anyNumber = [&](int, int, int) {
    double value = 0.0;
    do {
      std::uint64_t const pattern = bits();
      std::memcpy(&value, &pattern, sizeof value);
    } while (std::isnan(value));
    return value;
  };
  ScanShape shape = shapeOf(300, 7, 3, 2);
  shape.value = anyNumber;
  shape.parameter = [&](int, int run) { return run % 5 == 0 ? 0.25 : std::ldexp(1.0 + run, -run); };
  auto scan = makeScan(shape);
  TempFolder folder;
  writeScan(*scan, folder.file("scan.csv"));
  auto copy = readScanTable(folder.file("scan.csv"));
  ASSERT_EQ(namesOf(*copy), namesOf(*scan));
  EXPECT_EQ(copy->trajectoryLength, 7u);
  for (std::size_t i = 0; i < scan->columnData.size(); ++i)
    EXPECT_EQ(std::memcmp(scan->columnData[i], copy->columnData[i], scan->rows() * sizeof(double)), 0) << i;
}

// A file-size limit makes writing fail half-way, as a full disk does.
void writeUnderALimit(LinePlotTable const& scan, std::string const& path)
{
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit const limit = {100000, 100000};
  ::setrlimit(RLIMIT_FSIZE, &limit);
  try {
    writeScan(scan, path);
  } catch (ScanError const& error) {
    std::cerr << error.what();
    std::_Exit(7);
  }
}

TEST(ScanWriter, KeepsTheFormerFileIfItFails)
{
  TempFolder folder;
  std::string const path = folder.write("former");
  auto scan = makeScan(shapeOf(200, 100, 2, 2));
  EXPECT_EXIT(writeUnderALimit(*scan, path), testing::ExitedWithCode(7),
              "scan.csv: cannot be written: File too large");
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u) << "nothing is left beside it";
}

TEST(ScanWriter, ReplacesAFileAndKeepsItsPermissionsAndLinks)
{
  TempFolder folder;
  std::string const path = folder.write("former");
  ::chmod(path.c_str(), 0640);
  std::filesystem::create_symlink("scan.csv", folder.file("link.csv"));
  writeScan(*makeScan({}), folder.file("link.csv"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link.csv")));
  EXPECT_EQ(readScanTable(path)->trajectoryCount, 3u);
  struct stat status = {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  EXPECT_EQ(folder.fileCount(), 2u);
}

TEST(ScanWriter, ReportsAFullDiskAndAMissingFolder)
{
  auto scan = makeScan({});
  try {
    writeScan(*scan, "/dev/full");
    FAIL() << "no error";
  } catch (ScanError const& error) {
    EXPECT_STREQ(error.what(), "/dev/full: cannot be written: No space left on device");
  }
  TempFolder folder;
  EXPECT_THROW(writeScan(*scan, folder.file("none/scan.csv")), ScanError);
  EXPECT_THROW(writeScan(*scan, folder.file("")), ScanError);
  EXPECT_EQ(folder.fileCount(), 0u);
}

TEST(ScanWriter, ReportsAStreamThatFails)
{
  std::ostringstream stream;
  stream.setstate(std::ios::badbit);
  EXPECT_THROW(writeScan(*makeScan({}), stream), ScanError);
}

} // namespace
} // namespace runsieve::test
