#include <runsieve/adapters/ScanTable.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

Scan twoRuns()
{
  Scan scan;
  scan.time = {"Time", "min", "", ""};
  scan.times = {0, 2, 5};
  scan.runs = {{"3", RunStatus::Complete, 3}, {"7", RunStatus::Complete, 3}};
  double* const a = scan.addOutput({"A", "", "", ""});
  double* const b = scan.addOutput({"B", "", "", "Complex"});
  for (int i = 0; i < 6; ++i) {
    a[i] = i;
    b[i] = 10 * i;
  }
  scan.parameters.push_back({{"k", "", "", ""}, {0.5, 0.25}, {}});
  scan.parameters.push_back({{"strain", "", "", ""}, {1, 0}, {"wt", "mut"}});
  return scan;
}

std::vector<double> column(LinePlotTable const& table, std::size_t i)
{
  return {table.columnData[i], table.columnData[i] + table.rows()};
}

TEST(ScanTable, OutputsAreBorrowedAndTheRestIsWrittenOut)
{
  Scan const scan = twoRuns();
  auto const table = linePlotTableOf(scan);
  EXPECT_EQ(table->columnData[0], scan.outputs[0].values.get());
  EXPECT_EQ(table->columnNames[0], Kestrane::TypedConcentrationName(Kestrane::Molecule, "A"));
  EXPECT_EQ(table->columnNames[1], Kestrane::TypedConcentrationName(Kestrane::Complex, "B"));
  EXPECT_EQ(table->columnNames[2], Kestrane::TypedConcentrationName(Kestrane::Unnamed, "Time [min]"));
  EXPECT_THAT(column(*table, 2), ElementsAre(0, 2, 5, 0, 2, 5));
  EXPECT_EQ(table->columnNames[3], Kestrane::TypedConcentrationName(Kestrane::Unnamed, "Run Index"));
  EXPECT_THAT(column(*table, 3), ElementsAre(3, 3, 3, 7, 7, 7));
  EXPECT_THAT(column(*table, 4), ElementsAre(0.5, 0.5, 0.5, 0.25, 0.25, 0.25));
  EXPECT_THAT(column(*table, 5), ElementsAre(1, 1, 1, 0, 0, 0));
  EXPECT_THAT(table->parameterBounds, ElementsAre(std::make_pair(0.25, 0.5), std::make_pair(0.0, 1.0)));
}

TEST(ScanTable, OutputsLiveAsLongAsTheRecord)
{
  auto table = [] { return linePlotTableOf(twoRuns()); }();
  EXPECT_THAT(column(*table, 1), ElementsAre(0, 10, 20, 30, 40, 50));
}

TEST(ScanTable, RunsThatAreNoRisingNumbersAreCounted)
{
  for (auto const& keys : {std::vector<std::string>{"a", "b"}, {"7", "3"}, {"1", "1.5"}, {"", "2"}}) {
    Scan scan = twoRuns();
    scan.runs[0].key = keys[0];
    scan.runs[1].key = keys[1];
    EXPECT_THAT(column(*linePlotTableOf(scan), 3), ElementsAre(0, 0, 0, 1, 1, 1));
  }
}

TEST(ScanTable, NamesThatPlotsLookForAreToldApart)
{
  Scan scan = twoRuns();
  scan.outputs[0].label.name = "Values[TimePeriod Index]";
  scan.time.name = "clock";
  auto const table = linePlotTableOf(scan);
  std::string const name = table->columnNames[0].second;
  for (char const* word : {"Time", "Value", "Period", "Index"})
    EXPECT_EQ(name.find(word), std::string::npos) << word;
  EXPECT_EQ(nameInScan(name), "Values[TimePeriod Index]");
  EXPECT_EQ(table->columnNames[2].second, "Time (clock [min])");
}

TEST(ScanTable, ATimeIsOneInAnyCase)
{
  Scan scan = twoRuns();
  for (char const* const name : {"time", "TIME", "Time"}) {
    scan.time.name = name;
    EXPECT_EQ(linePlotTableOf(scan)->columnNames[2].second, "Time [min]");
  }
}

TEST(ScanTable, AScanComesBackFromItsRecord)
{
  Scan scan = twoRuns();
  scan.outputs[0].label.name = "Values[k1]";
  scan.outputs[1].values[5] = std::numeric_limits<double>::quiet_NaN();
  scan.outputs[0].values[5] = std::numeric_limits<double>::quiet_NaN();
  Scan const back = scanOf(linePlotTableOf(scan));
  ASSERT_NO_THROW(back.check());
  EXPECT_EQ(back.outputs[0].values.get(), scan.outputs[0].values.get());
  EXPECT_EQ(back.outputs[0].label.fullName(), "Molecule: Values[k1]");
  EXPECT_EQ(back.outputs[1].label.fullName(), "Complex: B");
  EXPECT_EQ(back.times, scan.times);
  EXPECT_EQ(back.time.unit, "min");
  EXPECT_EQ(back.runs[1].key, "7");
  EXPECT_EQ(back.runs[1].status, RunStatus::Short);
  EXPECT_EQ(back.runs[1].end, 2u);
  EXPECT_EQ(back.parameters[0].values, scan.parameters[0].values);
}

TEST(ScanTable, ARecordWithoutTimeOrRunsIsRefused)
{
  auto const table = boost::shared_ptr<LinePlotTable>(new LinePlotTable);
  table->trajectoryCount = 1;
  table->trajectoryLength = 1;
  *table->addColumn(Kestrane::Molecule, "A") = 1;
  EXPECT_THROW((void)scanOf(table), std::invalid_argument);
  *table->addColumn(Kestrane::Unnamed, "Time") = 1;
  EXPECT_THROW((void)scanOf(table), std::invalid_argument);
  *table->addColumn(Kestrane::Unnamed, "Run Index") = 1;
  EXPECT_EQ(scanOf(table).runs.size(), 1u);
}

} // namespace
} // namespace runsieve::test
