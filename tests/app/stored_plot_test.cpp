#include "app/store/StoredPlot.h"

#include "StoredPlots.h"
#include "support/TableFile.h"
#include "support/TempFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <limits>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace runsieve::test {
namespace {

using app::isStoredPlot;
using app::readPlot;
using app::StoredPlot;
using app::writePlot;
using testing::IsEmpty;

StoredPlot plotOf(ScanShape const& shape)
{
  StoredPlot plot;
  plot.scan = makeScan(shape);
  return plot;
}

StoredPlot writtenAndRead(StoredPlot const& plot)
{
  const TempFolder folder;
  writePlot(plot, folder.file("plot.rsd"));
  return readPlot(folder.file("plot.rsd"));
}

TEST(StoredPlot, ComesBackWithSelectionWindowAndView)
{
  StoredPlot plot = plotOf(shapeOf(4, 5, 2, 3));
  plot.view = unusualView(1);
  plot.selectedRows = {0, 7, 19};
  plot.window = {-1.5, 0.1, 4.0 / 3.0, 1e9, true};
  EXPECT_TRUE(samePlot(writtenAndRead(plot), plot));
}

TEST(StoredPlot, ComesBackWithNothingSelectedAndNoZoom)
{
  const StoredPlot copy = writtenAndRead(plotOf({}));
  EXPECT_TRUE(samePlot(copy, plotOf({})));
  EXPECT_THAT(copy.selectedRows, IsEmpty());
  EXPECT_FALSE(copy.window.valid);
}

TEST(StoredPlot, KeepsEveryBitOfOddValues)
{
  ScanShape shape = shapeOf(2, 6, 1, 1);
  const double values[] = {std::nan(""), -std::nan("77"), HUGE_VAL, -HUGE_VAL, -0.0, 5e-324};
  shape.value = [&](int, int run, int time) { return run == 0 ? values[time] : values[5 - time]; };
  shape.parameter = [&](int, int run) { return values[run]; };
  const StoredPlot plot = plotOf(shape);
  EXPECT_TRUE(sameBits(*writtenAndRead(plot).scan, *plot.scan));
}

TEST(StoredPlot, AWindowWithoutEndsComesBack)
{
  StoredPlot plot = plotOf({});
  plot.window = {0.0, -HUGE_VAL, 3.0, HUGE_VAL, true};
  try {
    EXPECT_TRUE(samePlot(writtenAndRead(plot), plot));
  } catch (ScanError const& error) {
    ADD_FAILURE() << "a file that was just written cannot be read: " << error.what();
  }
}

TEST(StoredPlot, KeepsParametersThatNeverVary)
{
  ScanShape shape = shapeOf(3, 2, 1, 2);
  shape.parameter = [](int p, int run) { return p == 0 ? 0.25 : 1.0 + run; };
  shape.bounds = {{0.25, 0.25}, {1.0, 3.0}};
  const StoredPlot copy = writtenAndRead(plotOf(shape));
  EXPECT_EQ(column(*copy.scan, "Parameter: k1"), std::vector<double>(6, 0.25));
  EXPECT_EQ(copy.scan->parameterBounds, shape.bounds);
}

TEST(StoredPlot, KeepsNamesInLatin1AndInUtf8)
{
  StoredPlot plot = plotOf(shapeOf(2, 2, 3, 1));
  plot.scan->columnNames[0].second = "K\xf6nig \xb5g/l";
  plot.scan->columnNames[1].second = "K\xc3\xb6nig";
  plot.scan->columnNames[2] = {Kestrane::Complex, "A \"b\", c: \\d"};
  plot.scan->columnNames.back().second = "k\xff";
  EXPECT_TRUE(sameBits(*writtenAndRead(plot).scan, *plot.scan));
}

TEST(StoredPlot, TheSamePlotGivesTheSameFile)
{
  const TempFolder folder;
  StoredPlot plot = plotOf(shapeOf(3, 4, 2, 2));
  plot.selectedRows = {5};
  writePlot(plot, folder.file("a.rsd"));
  writePlot(readPlot(folder.file("a.rsd")), folder.file("b.rsd"));
  EXPECT_EQ(TempFolder::contentOf(folder.file("a.rsd")), TempFolder::contentOf(folder.file("b.rsd")));
}

double anyDouble(std::mt19937_64& random)
{
  const std::uint64_t pattern = random();
  double value = 0.0;
  std::memcpy(&value, &pattern, sizeof value);
  return value;
}

StoredPlot randomPlot(std::mt19937_64& random)
{
  auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  ScanShape shape = shapeOf(1 + below(12), 1 + below(9), 1 + below(3), below(4));
  shape.value = [&](int, int, int) { return anyDouble(random); };
  shape.parameter = [&, last = 0.0](int, int run) mutable {
    return last = run % 2 == 0 ? anyDouble(random) : last;
  };
  StoredPlot plot = plotOf(shape);
  plot.view = unusualView(static_cast<std::size_t>(below(shape.species)));
  plot.view.density = below(2) == 0;
  plot.view.points = below(2) == 0;
  plot.view.pThreshold = static_cast<double>(random()) / 1.8446744073709552e19;
  for (long long row = 0; row < static_cast<long long>(plot.scan->rows()); ++row)
    if (below(3) == 0) plot.selectedRows.push_back(row);
  if (below(2) == 0)
    plot.window = {std::ldexp(1.0, below(2000) - 1000), -1.0 / (1 + below(9)), 1.0 / 3.0, 1e300, true};
  return plot;
}

TEST(StoredPlot, AnyScanComesBack)
{
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    const StoredPlot plot = randomPlot(random);
    ASSERT_TRUE(samePlot(writtenAndRead(plot), plot));
  }
}

TEST(StoredPlot, IsToldFromTextByItsContent)
{
  const TempFolder folder;
  writePlot(plotOf({}), folder.file("plot.csv"));
  writeTable(makeScan({}), folder.file("scan.rsd"));
  EXPECT_TRUE(isStoredPlot(folder.file("plot.csv")));
  EXPECT_FALSE(isStoredPlot(folder.file("scan.rsd")));
  EXPECT_TRUE(samePlot(readPlot(folder.file("plot.csv")), plotOf({})));
  EXPECT_THROW((void)readPlot(folder.file("scan.rsd")), ScanError);
}

TEST(StoredPlot, WhatCannotBeReadIsNone)
{
  const TempFolder folder;
  for (std::string const& path :
       {folder.file("missing.rsd"), folder.file(""), folder.write("", "empty.rsd"),
        folder.write("{\"format\":\"runsieve", "short.rsd"), std::string("/dev/null")}) {
    EXPECT_FALSE(isStoredPlot(path)) << path;
    EXPECT_THROW((void)readPlot(path), ScanError) << path;
  }
}

// What a child process does that cannot save; it tells by its status whether it was told so.
void writeAndTell(std::string const& path)
{
  try {
    writePlot(plotOf(shapeOf(200, 100, 2, 2)), path);
  } catch (ScanError const& error) {
    std::cerr << error.what();
    std::_Exit(7);
  }
  std::_Exit(1);
}

// A file-size limit makes writing fail half-way, as a full disk does.
void writeUnderALimit(std::string const& path)
{
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit = {100000, 100000};
  ::setrlimit(RLIMIT_FSIZE, &limit);
  writeAndTell(path);
}

// The administrator may write anywhere, nobody may not.
void writeAsNobody(std::string const& path)
{
  constexpr uid_t nobody = 65534;
  if (::geteuid() == 0 && ::setuid(nobody) != 0) std::_Exit(2);
  writeAndTell(path);
}

TEST(StoredPlot, KeepsTheFormerFileIfTheDiskIsFull)
{
  const TempFolder folder;
  const std::string path = folder.write("former", "plot.rsd");
  EXPECT_EXIT(writeUnderALimit(path), testing::ExitedWithCode(7),
              "plot.rsd: cannot be written: File too large");
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u) << "nothing is left beside it";
}

TEST(StoredPlot, KeepsTheFormerFileIfTheFolderIsNotWritable)
{
  const TempFolder folder;
  const std::string path = folder.write("former", "plot.rsd");
  ::chmod(path.c_str(), 0666);
  ::chmod(folder.file("").c_str(), 0555);
  EXPECT_EXIT(writeAsNobody(path), testing::ExitedWithCode(7),
              "plot.rsd: cannot be written: Permission denied");
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  ::chmod(folder.file("").c_str(), 0755);
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST(StoredPlot, ReportsAFullDeviceAlsoThroughALink)
{
  const TempFolder folder;
  std::filesystem::create_symlink("/dev/full", folder.file("link.rsd"));
  EXPECT_THROW(writePlot(plotOf({}), "/dev/full"), ScanError);
  EXPECT_THROW(writePlot(plotOf({}), folder.file("link.rsd")), ScanError);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link.rsd")));
  EXPECT_THROW(writePlot(plotOf({}), folder.file("none/plot.rsd")), ScanError);
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST(StoredPlot, CanBeSavedOverTheFileItWasReadFrom)
{
  const TempFolder folder;
  const std::string path = folder.file("plot.rsd");
  writePlot(plotOf(shapeOf(50, 20, 2, 2)), path);
  StoredPlot plot = readPlot(path);
  plot.selectedRows = {3, 999};
  writePlot(plot, path);
  EXPECT_TRUE(samePlot(readPlot(path), plot));
}

} // namespace
} // namespace runsieve::test
