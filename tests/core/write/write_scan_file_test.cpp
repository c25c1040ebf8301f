#include <runsieve/core/write/WriteScan.h>

#include "support/TempFile.h"

#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace runsieve::test {
namespace {

// Runs of two outputs, with any finite bits as values.
Scan scanOf(std::size_t runs, std::size_t times)
{
  Scan scan;
  scan.time.name = "Time";
  for (std::size_t time = 0; time < times; ++time) scan.times.push_back(static_cast<double>(time));
  for (std::size_t run = 0; run < runs; ++run)
    scan.runs.push_back({std::to_string(run), RunStatus::Complete, times});
  std::mt19937_64 bits(5);
  for (char const* name : {"A", "B"}) {
    double* const values = scan.addOutput({name, "", "", "Molecule"});
    for (std::size_t row = 0; row < scan.rows(); ++row) do {
        std::uint64_t const pattern = bits();
        std::memcpy(values + row, &pattern, sizeof pattern);
      } while (!std::isfinite(values[row]));
  }
  ScanParameter parameter;
  parameter.label.name = "k1";
  for (std::size_t run = 0; run < runs; ++run)
    parameter.values.push_back(
        run % 5 == 0 ? 0.25 : std::ldexp(1.0 + static_cast<double>(run), -static_cast<int>(run)));
  scan.parameters.push_back(parameter);
  return scan;
}

TEST(WriteScanFile, EveryBitSurvivesARoundTrip)
{
  Scan const scan = scanOf(300, 7);
  TempFolder folder;
  writeScan(scan, folder.file("scan.csv"));
  Scan const copy = readScan(folder.file("scan.csv")).scan;
  EXPECT_EQ(copy.times, scan.times);
  EXPECT_EQ(copy.parameters.front().values, scan.parameters.front().values);
  ASSERT_EQ(copy.outputs.size(), 2u);
  for (std::size_t output = 0; output < 2; ++output) {
    EXPECT_EQ(copy.outputs[output].label.fullName(), scan.outputs[output].label.fullName());
    EXPECT_EQ(std::memcmp(copy.valuesOf(output, 0), scan.valuesOf(output, 0), scan.rows() * sizeof(double)),
              0);
  }
}

// A file-size limit makes writing fail half-way, as a full disk does.
void writeUnderALimit(Scan const& scan, std::string const& path)
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

TEST(WriteScanFile, KeepsTheFormerFileIfItFails)
{
  TempFolder folder;
  std::string const path = folder.write("former");
  Scan const scan = scanOf(200, 100);
  EXPECT_EXIT(writeUnderALimit(scan, path), testing::ExitedWithCode(7),
              "scan.csv: cannot be written: File too large");
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u) << "nothing is left beside it";
}

TEST(WriteScanFile, ReplacesAFileAndKeepsItsPermissionsAndLinks)
{
  TempFolder folder;
  std::string const path = folder.write("former");
  ::chmod(path.c_str(), 0640);
  std::filesystem::create_symlink("scan.csv", folder.file("link.csv"));
  writeScan(scanOf(3, 2), folder.file("link.csv"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link.csv")));
  EXPECT_EQ(readScan(path).scan.runs.size(), 3u);
  struct stat status = {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  EXPECT_EQ(folder.fileCount(), 2u);
}

TEST(WriteScanFile, ReportsAFullDiskAndAMissingFolder)
{
  Scan const scan = scanOf(3, 2);
  try {
    writeScan(scan, "/dev/full");
    FAIL() << "no error";
  } catch (ScanError const& error) {
    EXPECT_STREQ(error.what(), "/dev/full: cannot be written: No space left on device");
  }
  TempFolder folder;
  EXPECT_THROW(writeScan(scan, folder.file("none/scan.csv")), ScanError);
  EXPECT_THROW(writeScan(scan, folder.file("")), ScanError);
  EXPECT_EQ(folder.fileCount(), 0u);
}

} // namespace
} // namespace runsieve::test
