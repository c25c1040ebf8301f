#include "support/Dumps.h"
#include "support/PlotScene.h"

#include <gmock/gmock.h>

#include <QFile>

#include <cmath>
#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Dumps that hosts have stored. Each must stay readable, and equal content must give equal bytes.
///
/// The files in tests/persist/v1 were written by DISABLED_WriteTheFiles, run with
/// --gtest_also_run_disabled_tests. Never write them anew because a test of this file fails: a format that
/// changes gets a folder of its own, and these stay.
struct KeptDumpTest : testing::Test
{
  PlotContainer written{nullptr};
  PlotContainer restored{nullptr};

  static QString path(char const* name) { return QString(RUNSIEVE_SOURCE_DIR "/tests/persist/v1/") + name; }

  static QByteArray kept(char const* name)
  {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  }

  void read(char const* name) { readInto(restored, kept(name)); }

  /// Names, numbers of both types, and the flags of a selection.
  void fillScan()
  {
    written.typedColumnNames = {{Kestrane::Molecule, "A\xe9"},
                                {Kestrane::Unnamed, "Time [s]"},
                                {Kestrane::Parameter, "k1"},
                                {Kestrane::UndefinedType, ""}};
    written.plotData = makeTable({{"Molecule: A\xe9", {0.1, -2.5e-300, INFINITY, std::nan(""), -0.0}},
                                  {": Time [s]", {0, 0.5, 1, 1.5, std::numeric_limits<double>::max()}},
                                  {"Parameter: k1", {3, 3, 3, 3, 3}}});
    written.plotData->AddColumn(makeColumn<vtkIntArray>(
        "count", std::vector<int>{std::numeric_limits<int>::min(), -1, 0, 1, 2147483647}));
    written.plotData->AddColumn(makeColumn<vtkIntArray>("selected points", std::vector<int>{0, 1, 1, 0, 0}));
  }

  void fillColumnsWithoutRows()
  {
    written.typedColumnNames = {{Kestrane::Complex, "C"}};
    written.plotData = makeTable({{"Complex: C", {}}, {"plain", {}}});
    written.plotData->AddColumn(makeColumn<vtkIntArray>("count", std::vector<int>{}));
    written.plotData->GetColumn(1)->SetName(nullptr);
  }

  void write(char const* name)
  {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name;
    file.write(dumpOf(written));
  }
};

TEST_F(KeptDumpTest, DISABLED_WriteTheFiles)
{
  write("empty.dump");
  fillScan();
  write("scan.dump");
  fillColumnsWithoutRows();
  write("no_rows.dump");
}

TEST_F(KeptDumpTest, AScanComesBackWithEveryValue)
{
  read("scan.dump");
  vtkTable* table = restored.plotData;
  EXPECT_THAT(restored.typedColumnNames,
              ElementsAre(std::pair(Kestrane::Molecule, "A\xe9"), std::pair(Kestrane::Unnamed, "Time [s]"),
                          std::pair(Kestrane::Parameter, "k1"), std::pair(Kestrane::UndefinedType, "")));
  EXPECT_THAT(columnNames(table),
              ElementsAre("Molecule: A\xe9", ": Time [s]", "Parameter: k1", "count", "selected points"));
  for (int c = 0; c < 5; ++c)
    EXPECT_TRUE(table->GetColumn(c)->IsA(c < 3 ? "vtkDoubleArray" : "vtkIntArray")) << c;
  auto const values = numbers(table, "Molecule: A\xe9");
  ASSERT_EQ(values.size(), 5u);
  EXPECT_EQ(values[0], 0.1);
  EXPECT_EQ(values[1], -2.5e-300);
  EXPECT_EQ(values[2], INFINITY);
  EXPECT_TRUE(std::isnan(values[3]));
  EXPECT_TRUE(values[4] == 0 && std::signbit(values[4]));
  EXPECT_THAT(numbers(table, ": Time [s]"), ElementsAre(0, 0.5, 1, 1.5, std::numeric_limits<double>::max()));
  EXPECT_THAT(numbers(table, "Parameter: k1"), ElementsAre(3, 3, 3, 3, 3));
  EXPECT_THAT(numbers(table, "count"), ElementsAre(-2147483648.0, -1, 0, 1, 2147483647));
  EXPECT_THAT(numbers(table, "selected points"), ElementsAre(0, 1, 1, 0, 0));
  auto flags = vtkSmartPointer<vtkIntArray>::Take(restored.getCurrentSelection());
  EXPECT_THAT(numbers(flags), ElementsAre(0, 1, 1, 0, 0));
}

TEST_F(KeptDumpTest, ColumnsWithoutRowsComeBack)
{
  read("no_rows.dump");
  vtkTable* table = restored.plotData;
  EXPECT_THAT(restored.typedColumnNames, ElementsAre(std::pair(Kestrane::Complex, "C")));
  EXPECT_THAT(columnNames(table), ElementsAre("Complex: C", "", "count"));
  EXPECT_EQ(table->GetNumberOfRows(), 0);
  for (int c = 0; c < 3; ++c)
    EXPECT_TRUE(table->GetColumn(c)->IsA(c < 2 ? "vtkDoubleArray" : "vtkIntArray")) << c;
}

TEST_F(KeptDumpTest, AnEmptyContainerComesBack)
{
  restored.plotData = makeTable({{"old", {1}}});
  read("empty.dump");
  EXPECT_EQ(restored.plotData->GetNumberOfColumns(), 0);
  EXPECT_THAT(restored.typedColumnNames, IsEmpty());
}

TEST_F(KeptDumpTest, TheSameContentStillGivesTheSameBytes)
{
  EXPECT_EQ(dumpOf(written).toHex(), kept("empty.dump").toHex());
  fillScan();
  EXPECT_EQ(dumpOf(written).toHex(), kept("scan.dump").toHex());
  fillColumnsWithoutRows();
  EXPECT_EQ(dumpOf(written).toHex(), kept("no_rows.dump").toHex());
}

} // namespace
} // namespace runsieve::test
