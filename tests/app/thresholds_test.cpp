#include "app/cli/Commands.h"
#include "app/store/StoredPlot.h"
#include "support/ScanBuilder.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace runsieve::test {
namespace {

using app::RankArguments;
using testing::ElementsAre;

using Threshold = std::optional<double>;

/// Ranks scans in which the parameters of one half of the runs are those of the other half, shifted: d is the
/// shift, and p follows from it and from the number of runs.
struct Thresholds : testing::Test
{
  TempFolder folder;

  static boost::shared_ptr<LinePlotTable> shifted(int runs, std::vector<double> const& shifts)
  {
    ScanShape shape;
    shape.runs = runs;
    shape.times = 2;
    shape.parameters = static_cast<int>(shifts.size());
    shape.value = [](int, int r, int) { return r % 2; };
    shape.parameter = [=](int p, int r) {
      const double even = (r / 2 + 0.5) / (runs / 2);
      return even + r % 2 * (shifts[static_cast<std::size_t>(p)] + 0.1 / runs);
    };
    return makeScan(shape);
  }

  std::string scanOf(boost::shared_ptr<LinePlotTable> const& scan) const
  {
    writeTable(scan, folder.file("scan.csv"));
    return folder.file("scan.csv");
  }

  std::string plotOf(boost::shared_ptr<LinePlotTable> scan, double p, double d) const
  {
    app::StoredPlot plot;
    plot.scan = std::move(scan);
    plot.view.pThreshold = p;
    plot.view.ksThreshold = d;
    app::writePlot(plot, folder.file("plot.rsd"));
    return folder.file("plot.rsd");
  }

  static nlohmann::json rank(std::string const& file, Threshold p = {}, Threshold d = {})
  {
    RankArguments arguments;
    arguments.file = file;
    arguments.gates = {"A @ 0 in 1..1"};
    arguments.format = "json";
    arguments.pThreshold = p;
    arguments.ksThreshold = d;
    testing::internal::CaptureStdout();
    EXPECT_EQ(runRank(arguments), 0);
    return nlohmann::json::parse(testing::internal::GetCapturedStdout())["parameters"];
  }

  static std::vector<std::string> significant(std::string const& file, Threshold p = {}, Threshold d = {})
  {
    std::vector<std::string> names;
    for (auto const& parameter : rank(file, p, d))
      if (parameter["significant"]) names.push_back(parameter["name"]);
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(Thresholds, OfAScanAreATwentiethForPAndATenthForD)
{
  const std::string many = scanOf(shifted(3000, {0.04, 0.08, 0.12}));
  for (auto const& parameter : rank(many))
    EXPECT_EQ(parameter["p"] < 0.05, parameter["name"] != "k1") << parameter;
  EXPECT_THAT(significant(many), ElementsAre("k3")) << "a d of 0.08 is too small, whatever its p";
  const std::string few = scanOf(shifted(60, {0.2, 0.3, 0.4}));
  EXPECT_THAT(significant(few), ElementsAre("k3")) << "a p of 0.1 is too large, whatever its d";
}

TEST_F(Thresholds, EitherCanBeGivenAlone)
{
  const std::string many = scanOf(shifted(3000, {0.04, 0.08, 0.12}));
  EXPECT_THAT(significant(many, {}, 0.06), ElementsAre("k2", "k3"));
  EXPECT_THAT(significant(many, {}, 0.0), ElementsAre("k2", "k3"));
  EXPECT_THAT(significant(many, {}, 0.2), ElementsAre());
  EXPECT_THAT(significant(many, 1.0, {}), ElementsAre("k3"));
  EXPECT_THAT(significant(many, 1e-30, {}), ElementsAre());
  EXPECT_THAT(significant(many, 1.0, 0.0), ElementsAre("k1", "k2", "k3"));
  const std::string few = scanOf(shifted(60, {0.2, 0.3, 0.4}));
  EXPECT_THAT(significant(few, 0.2, {}), ElementsAre("k2", "k3"));
}

TEST_F(Thresholds, OfAStoredPlotHoldForWhatIsNotGiven)
{
  const auto scan = shifted(3000, {0.04, 0.08, 0.12});
  const std::string lenient = plotOf(scan, 1.0, 0.0);
  EXPECT_THAT(significant(lenient), ElementsAre("k1", "k2", "k3"));
  EXPECT_THAT(significant(lenient, 0.05, {}), ElementsAre("k2", "k3"));
  EXPECT_THAT(significant(lenient, {}, 0.1), ElementsAre("k3"));
  const std::string strict = plotOf(scan, 0.0, 1.0);
  EXPECT_THAT(significant(strict), ElementsAre());
  EXPECT_THAT(significant(strict, 1.0, {}), ElementsAre());
  EXPECT_THAT(significant(strict, {}, 0.0), ElementsAre());
}

} // namespace
} // namespace runsieve::test
