#include "support/TempFile.h"
#include "support/Dumps.h"
#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <random>
#include <set>

namespace runsieve::test {
namespace {

constexpr unsigned firstSeed = 20240;
constexpr int scans = 1000;

/// Random small scans whose run numbers ascend with gaps.
class RandomScan
{
public:
  explicit RandomScan(unsigned seed) : random(seed)
  {
    shape.runs = upTo(8);
    shape.times = upTo(6);
    shape.species = upTo(3);
    shape.parameters = upTo(3) - 1;
    shape.bounds.assign(shape.parameters, {0.0, 1.0});
    shape.value = [this](int, int, int) { return anyNumber(); };
    shape.parameter = [this](int, int) { return anyNumber(); };
    int number = upTo(5) - 1;
    for (int r = 0; r < shape.runs; ++r) runNumbers.push_back(number += upTo(3));
  }

  ScanShape shape;
  std::vector<int> runNumbers;

  int upTo(int largest) { return std::uniform_int_distribution<int>(1, largest)(random); }

  double anyNumber()
  {
    double const mantissa = std::uniform_real_distribution<double>(-1, 1)(random);
    return mantissa * std::pow(10.0, upTo(40) - 20);
  }

  std::set<int> someRuns()
  {
    std::set<int> chosen;
    for (int run : runNumbers)
      if (upTo(2) == 1) chosen.insert(run);
    return chosen;
  }

  boost::shared_ptr<LinePlotTable> record()
  {
    auto table = makeScan(shape);
    for (std::size_t c = 0; c < table->columnNames.size(); ++c)
      if (table->columnNames[c].second == "Run Index")
        for (std::size_t row = 0; row < table->rows(); ++row)
          table->columnData[c][row] = runNumbers[row / table->trajectoryLength];
    return table;
  }

private:
  std::mt19937 random;
};

std::vector<double> flagsOf(PlotContainer const& plot)
{
  return numbers(vtkSmartPointer<vtkIntArray>::Take(plot.getCurrentSelection()));
}

/// Runs a property over many random scans.
struct ConversionsTest : testing::Test
{
  template <class Property> void forAllScans(Property holds)
  {
    for (unsigned seed = firstSeed; seed < firstSeed + scans; ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      RandomScan scan(seed);
      PlotScene plot;
      plot.container.setLinePlotTable(scan.record(), false);
      holds(scan, plot.container);
      if (HasFailure()) return;
    }
  }
};

TEST_F(ConversionsTest, RunsThatAreSelectedAtOneTimeComeBackAsRuns)
{
  forAllScans([](RandomScan& scan, PlotContainer& plot) {
    ParameterSelection selection;
    selection.selectedRuns = scan.someRuns();
    int const time = scan.upTo(scan.shape.times) - 1;
    plot.setSelection(&selection, time);
    std::unique_ptr<ParameterSelection> const found(plot.getSelection());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->selectedRuns, selection.selectedRuns);
    auto const flags = flagsOf(plot);
    ASSERT_EQ(static_cast<int>(flags.size()), scan.shape.runs * scan.shape.times);
    for (std::size_t row = 0; row < flags.size(); ++row) {
      bool const chosen = static_cast<int>(row) % scan.shape.times == time &&
                          selection.selectedRuns.count(scan.runNumbers[row / scan.shape.times]) > 0;
      EXPECT_EQ(flags[row], chosen ? 1 : 0) << "row " << row;
    }
  });
}

TEST_F(ConversionsTest, FlagsTravelThroughADump)
{
  forAllScans([](RandomScan& scan, PlotContainer& plot) {
    Rows rows;
    for (int row = 0; row < scan.shape.runs * scan.shape.times; ++row)
      if (scan.upTo(3) == 1) rows.push_back(row);
    selectRows(plot, rows);
    auto flags = vtkSmartPointer<vtkIntArray>::Take(plot.getCurrentSelection());
    ASSERT_TRUE(flags);
    auto const before = numbers(flags);
    plot.plotData->AddColumn(flags);
    PlotContainer copy(nullptr);
    readInto(copy, dumpOf(plot));
    EXPECT_EQ(flagsOf(copy), before);
    EXPECT_EQ(copy.typedColumnNames, plot.typedColumnNames);
  });
}

TEST_F(ConversionsTest, ClustersAsSelectionsHoldEachRunOnce)
{
  forAllScans([](RandomScan& scan, PlotContainer& plot) {
    plot.clusterLabels = vtkSmartPointer<vtkIntArray>::New();
    for (int r = 0; r < scan.shape.runs; ++r) plot.clusterLabels->InsertNextValue(scan.upTo(4) - 1);
    std::vector<ParameterSelection*> records;
    plot.selectionsFromClusters("c", records);
    std::vector<std::unique_ptr<ParameterSelection>> const owned(records.begin(), records.end());
    std::vector<int> count(scan.shape.runs, 0);
    for (std::size_t k = 0; k < owned.size(); ++k)
      for (int run : owned[k]->selectedRuns) {
        ++count.at(run);
        EXPECT_EQ(plot.clusterLabels->GetValue(run), static_cast<int>(k));
      }
    EXPECT_THAT(count, testing::Each(1));
  });
}

TEST_F(ConversionsTest, TextKeepsNamesAndSixDigits)
{
  TempFolder const folder;
  forAllScans([&folder](RandomScan&, PlotContainer& plot) {
    ASSERT_EQ(plot.saveData(folder.file("scan.csv"), true), nullptr);
    PlotContainer loaded(nullptr);
    loaded.loadData(folder.file("scan.csv"));
    ASSERT_EQ(columnNames(loaded.plotData), columnNames(plot.plotData));
    for (std::string const& name : columnNames(plot.plotData)) {
      auto const expected = numbers(plot.plotData, name);
      auto const found = numbers(loaded.plotData, name);
      ASSERT_EQ(found.size(), expected.size()) << name;
      for (std::size_t row = 0; row < expected.size(); ++row)
        EXPECT_NEAR(found[row], expected[row], 5.01e-6 * std::fabs(expected[row])) << name << ", row " << row;
    }
  });
}

TEST_F(ConversionsTest, ADumpKeepsEveryValue)
{
  forAllScans([](RandomScan&, PlotContainer& plot) {
    PlotContainer copy(nullptr);
    readInto(copy, dumpOf(plot));
    ASSERT_EQ(columnNames(copy.plotData), columnNames(plot.plotData));
    for (std::string const& name : columnNames(plot.plotData))
      EXPECT_EQ(numbers(copy.plotData, name), numbers(plot.plotData, name)) << name;
  });
}

} // namespace
} // namespace runsieve::test
