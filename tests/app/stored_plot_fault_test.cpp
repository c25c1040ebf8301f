#include "app/store/StoredPlot.h"

#include "app/store/PlotSettings.h"
#include "StoredPlots.h"
#include "support/DumpBytes.h"
#include "support/TempFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

namespace runsieve::test {
namespace {

using app::readPlot;
using app::StoredPlot;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A small plot in a file, and what reading says about changed copies of the file.
struct StoredPlotFault : testing::Test
{
  TempFolder folder;
  StoredPlot plot;
  std::string content;

  StoredPlotFault()
  {
    ScanShape shape = shapeOf(2, 3, 2, 1);
    shape.value = [](int s, int r, int t) { return t == 0 ? std::nan("") : s + 0.1 * r + 0.01 * t; };
    plot.scan = makeScan(shape);
    plot.view = unusualView(1);
    plot.selectedRows = {1, 4};
    plot.window = {0.5, 0.25, 2.5, 1.75, true};
    writePlot(plot, folder.file("plot.rsd"));
    content = TempFolder::contentOf(folder.file("plot.rsd"));
  }

  /// Where the dump begins.
  [[nodiscard]] std::size_t dump() const { return content.find('\n') + 1; }

  std::string complaint(std::string const& changed)
  {
    const std::string path = folder.write(changed, "changed.rsd");
    try {
      const StoredPlot read = readPlot(path);
      return samePlot(read, plot) ? "nothing: the same plot" : "nothing: a changed plot";
    } catch (ScanError const& error) {
      EXPECT_THAT(error.what(), StartsWith(path + ": "));
      EXPECT_THAT(error.what(), Not(HasSubstr("\n")));
      return std::string(error.what()).substr(path.size() + 2);
    }
  }

  void expectToldWhenChanged(std::size_t from, std::size_t to)
  {
    int unnoticed = 0;
    for (std::size_t at = from; at < to; ++at)
      for (int change : {0xff, 0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80}) {
        std::string changed = content;
        changed[at] = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ change);
        const std::string said = complaint(changed);
        if (said.rfind("nothing", 0) != 0) continue;
        if (++unnoticed <= 5)
          ADD_FAILURE() << said << ": byte " << at << ": " << content[at] << " -> " << changed[at] << "\n"
                        << changed.substr(0, changed.find('\n'));
      }
    EXPECT_EQ(unnoticed, 0) << "changes pass unnoticed";
  }
};

TEST_F(StoredPlotFault, TheWholeFileIsFine)
{
  EXPECT_EQ(complaint(content), "nothing: the same plot");
}

TEST_F(StoredPlotFault, AFileCutOffAnywhereIsTold)
{
  for (std::size_t length = 0; length < content.size(); ++length)
    EXPECT_THAT(complaint(content.substr(0, length)), Not(StartsWith("nothing"))) << length;
}

TEST_F(StoredPlotFault, AnyChangedByteOfTheDumpIsTold)
{
  expectToldWhenChanged(dump(), content.size());
}

TEST_F(StoredPlotFault, AnyChangedByteOfTheSettingsIsTold)
{
  expectToldWhenChanged(0, dump());
}

TEST_F(StoredPlotFault, BytesTooManyAreTold)
{
  for (std::string const more : {"\n", "x", "{}"}) {
    EXPECT_THAT(complaint(content + more), HasSubstr("appended"));
    EXPECT_THAT(complaint(std::string(content).insert(dump(), more)), Not(StartsWith("nothing")));
  }
}

TEST_F(StoredPlotFault, SettingsThatDoNotFitTheDumpAreTold)
{
  const std::string line = content.substr(0, dump() - 1);
  app::PlotSettings settings = app::fromJson(line);
  auto said = [&] {
    settings.checksum = app::checksumOf(toJson(settings), content.data() + dump(), content.size() - dump());
    return complaint(toJson(settings) + content.substr(dump() - 1));
  };
  EXPECT_EQ(said(), "nothing: the same plot");
  for (std::uint64_t stride :
       {std::uint64_t(0), std::uint64_t(4), std::uint64_t(7), std::numeric_limits<std::uint64_t>::max()}) {
    settings.stride = stride;
    EXPECT_THAT(said(), HasSubstr("whole runs")) << stride;
  }
  settings.stride = 3;
  for (std::size_t output : {std::size_t(2), std::size_t(3), std::size_t(4), std::size_t(5),
                             std::numeric_limits<std::size_t>::max()}) {
    settings.view.output = output;
    EXPECT_THAT(said(), HasSubstr("output")) << output;
  }
  settings.view.output = 1;
  for (std::uint64_t bytes : {std::uint64_t(0), settings.bytes + 1, std::uint64_t(1) << 32,
                              std::numeric_limits<std::uint64_t>::max()}) {
    settings.bytes = bytes;
    EXPECT_THAT(said(), HasSubstr("cut off")) << bytes;
  }
}

TEST_F(StoredPlotFault, NotesOfAnotherScanAreTold)
{
  app::PlotSettings const settings = app::fromJson(content.substr(0, dump() - 1));
  auto said = [&](app::ScanNotes const& notes) {
    app::PlotSettings changed = settings;
    changed.notes = notes;
    changed.checksum = app::checksumOf(toJson(changed), content.data() + dump(), content.size() - dump());
    return complaint(toJson(changed) + content.substr(dump() - 1));
  };
  EXPECT_THAT(said({{"only one"}, {}, {}}), HasSubstr("tell of other runs"));
  EXPECT_THAT(said({std::vector<std::string>(plot.scan->trajectoryCount, "same"), {}, {}}),
              HasSubstr("tell of other runs"));
  EXPECT_THAT(said({{}, {1000000}, {}}), HasSubstr("tell of other runs"));
  EXPECT_THAT(said({{}, {}, {{1000, {"a"}}}}), HasSubstr("tell of other runs"));
  EXPECT_THAT(said({{}, {}, {{0, {}}}}), HasSubstr("tell of other runs")) << "more texts are needed";
}

// A stride that divides the rows but is not that of the runs would give other runs.
TEST_F(StoredPlotFault, RunsOfAnotherLengthThanTheDumpHasAreTold)
{
  app::PlotSettings settings = app::fromJson(content.substr(0, dump() - 1));
  for (std::uint64_t stride : {1, 2, 6}) {
    settings.stride = stride;
    EXPECT_THAT(complaint(toJson(settings) + content.substr(dump() - 1)), Not(StartsWith("nothing")))
        << stride;
  }
}

/// A file whose checksum fits, as a program with malice would write it.
std::string fileOf(DumpBytes const& dump, std::uint64_t stride = 1)
{
  const std::string bytes(dump.bytes().constData(), static_cast<std::size_t>(dump.bytes().size()));
  app::PlotSettings settings;
  settings.stride = stride;
  settings.bytes = bytes.size();
  settings.checksum = app::checksumOf(toJson(settings), bytes.data(), bytes.size());
  return toJson(settings) + '\n' + bytes;
}

constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();

DumpBytes& addNames(DumpBytes& dump)
{
  return dump.number(3)
      .number(Kestrane::Molecule)
      .text(u"A")
      .number(Kestrane::Unnamed)
      .text(u"Time [s]")
      .number(Kestrane::Unnamed)
      .text(u"Run Index");
}

/// A plot of one row; each argument spoils a part of it.
DumpBytes oneRow(std::u16string const& firstColumn = u"Molecule: A", std::int64_t columns = 4,
                 std::int64_t rows = 1, std::u16string const& lastColumn = u"selected points",
                 bool lastIsDouble = false)
{
  DumpBytes dump;
  addNames(dump).number(columns).number(rows);
  for (std::u16string const& name :
       {firstColumn, std::u16string(u": Time [s]"), std::u16string(u": Run Index")})
    dump.text(name).flag(true).real(0.0);
  dump.text(lastColumn).flag(lastIsDouble);
  return lastIsDouble ? dump.real(1.0) : dump.number(1);
}

TEST_F(StoredPlotFault, APlotByHandIsRead)
{
  const StoredPlot read = readPlot(folder.write(fileOf(oneRow()), "hand.rsd"));
  EXPECT_EQ(read.scan->rows(), 1u);
  EXPECT_EQ(read.selectedRows, std::vector<long long>{0});
}

TEST_F(StoredPlotFault, HugeClaimsAreTold)
{
  std::vector<DumpBytes> dumps = {oneRow(u"Molecule: A", most),       oneRow(u"Molecule: A", 4, most),
                                  oneRow(u"Molecule: A", most, most), oneRow(u"Molecule: A", 4, -1),
                                  oneRow(u"Molecule: A", -1),         oneRow(u"Molecule: A", 4, 0)};
  for (std::int64_t count : {most, std::int64_t(-1), std::int64_t(1) << 24}) {
    dumps.push_back(DumpBytes().number(count));
    dumps.push_back(DumpBytes().number(0).number(count).number(count));
    dumps.push_back(DumpBytes().number(1).number(Kestrane::Molecule).number(count)); // length of a name
  }
  for (std::size_t i = 0; i < dumps.size(); ++i)
    EXPECT_THAT(complaint(fileOf(dumps[i])), Not(StartsWith("nothing"))) << i;
}

TEST_F(StoredPlotFault, ADumpThatIsNoScanWithASelectionIsTold)
{
  EXPECT_THAT(complaint(fileOf(DumpBytes())), Not(StartsWith("nothing")));
  EXPECT_THAT(complaint(fileOf(oneRow(u"Molecule: B"))), HasSubstr("column 1"));
  EXPECT_THAT(complaint(fileOf(oneRow(u": Run Index"))), Not(StartsWith("nothing")));
  EXPECT_THAT(complaint(fileOf(oneRow(u"Molecule: A", 4, 1, u"selection"))), HasSubstr("selection"));
  EXPECT_THAT(complaint(fileOf(oneRow(u"Molecule: A", 4, 1, u"selected points", true))),
              HasSubstr("selection"));
  EXPECT_THAT(complaint(fileOf(oneRow(u"Molecule: A", 3))), HasSubstr("names and columns"));
}

TEST_F(StoredPlotFault, AScanWithoutTimeOrRunsIsTold)
{
  DumpBytes dump;
  dump.number(1).number(Kestrane::Molecule).text(u"A").number(2).number(1);
  dump.text(u"Molecule: A").flag(true).real(0.0).text(u"selected points").flag(false).number(0);
  EXPECT_THAT(complaint(fileOf(dump)), Not(StartsWith("nothing")));
}

TEST_F(StoredPlotFault, AHugeHoleInPlaceOfTheDumpIsTold)
{
  const std::string path = folder.write(content, "sparse.rsd");
  std::filesystem::resize_file(path, std::uintmax_t(3) << 30); // takes no room on the disk
  try {
    (void)readPlot(path);
    ADD_FAILURE() << "read";
  } catch (ScanError const& error) {
    EXPECT_THAT(error.what(), AnyOf(HasSubstr("2 GiB"), HasSubstr("appended")));
  }
}

} // namespace
} // namespace runsieve::test
