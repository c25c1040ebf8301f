#include "app/simulate/SimulateScan.h"

#include "app/scan/ScanLayout.h"
#include "ScanColumns.h"
#include "support/TableFile.h"
#include "support/TempFile.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <map>
#include <set>
#include <stdexcept>

namespace runsieve::test {
namespace {

boost::shared_ptr<LinePlotTable> simulatedTable(app::Model const& model, app::SimulateOptions const& options)
{
  return linePlotTableOf(app::simulateScan(model, options));
}

using namespace app;

bool isReporter(std::string const& parameter)
{
  return parameter.rfind("gfp_", 0) == 0;
}

Model nominal(Model model)
{
  for (auto& parameter : model.parameters) parameter.low = parameter.high = parameter.nominal;
  return model;
}

TEST(Models, AreDocumentedAndConsistent)
{
  EXPECT_GE(models().size(), 3u);
  std::set<std::string> names;
  for (auto const& model : models()) {
    SCOPED_TRACE(model.name);
    EXPECT_TRUE(names.insert(model.name).second);
    EXPECT_EQ(findModel(model.name), &model);
    EXPECT_EQ(model.name.find_first_of(" /"), std::string::npos);
    EXPECT_FALSE(model.title.empty() || model.citation.empty() || model.timeUnit.empty());
    EXPECT_GT(model.duration, 0.0);
    EXPECT_EQ(model.exampleGates.size(), 2u);
    std::set<std::string> own;
    for (auto const& species : model.species) {
      EXPECT_TRUE(own.insert(species.name).second) << species.name;
      EXPECT_FALSE(species.unit.empty() || species.meaning.empty()) << species.name;
      EXPECT_GE(species.initial, 0.0);
    }
    for (auto const& parameter : model.parameters) {
      EXPECT_TRUE(own.insert(parameter.name).second) << parameter.name;
      EXPECT_FALSE(parameter.unit.empty() || parameter.meaning.empty()) << parameter.name;
      EXPECT_TRUE(parameter.low <= parameter.nominal && parameter.nominal <= parameter.high)
          << parameter.name;
      EXPECT_TRUE(parameter.scale == ModelParameter::Scale::Linear || parameter.low > 0.0) << parameter.name;
    }
  }
  EXPECT_EQ(findModel("none"), nullptr);
}

TEST(Models, TheExampleHasEnoughToLookAt)
{
  ScanLayout const layout = scanLayout(*simulatedTable(exampleModel(), {2, 2}));
  EXPECT_GE(layout.outputs.size(), 4u);
  EXPECT_GE(layout.parameters.size(), 12u);
}

// Analytic: nothing is made or lost in the cascade, phosphorylation only moves molecules.
TEST(Models, TheCascadeConservesItsKinases)
{
  Model model = *findModel("mapk_cascade");
  for (auto& species : model.species) species.recorded = true;
  auto scan = simulatedTable(model, {20, 51});
  std::map<std::string, std::vector<std::string>> const forms = {{"MKKK", {"MKKK", "MKKK-P"}},
                                                                 {"MKK", {"MKK", "MKK-P", "MKK-PP"}},
                                                                 {"MAPK", {"MAPK", "MAPK-P", "MAPK-PP"}}};
  for (auto const& [kinase, names] : forms) {
    std::vector<double> total(scan->rows(), 0.0);
    for (auto const& name : names) {
      auto const values = column(*scan, "Molecule: " + name);
      for (std::size_t i = 0; i < total.size(); ++i) total[i] += values[i];
    }
    double const expected = kinase == "MKKK" ? 100.0 : 300.0;
    for (double sum : total) ASSERT_NEAR(sum, expected, 1e-6) << kinase;
  }
}

// The published behaviour: with the published constants the cascade oscillates with a period of about 20
// minutes and MAPK-PP swings widely (Kholodenko 2000, Figure 2).
TEST(Models, TheCascadeOscillatesAsPublished)
{
  Model model = nominal(*findModel("mapk_cascade"));
  model.duration = 9000.0;
  auto scan = simulatedTable(model, {1, 901});
  auto const active = column(*scan, "Molecule: MAPK-PP");
  std::vector<std::size_t> peaks;
  for (std::size_t i = 201; i + 1 < active.size(); ++i)
    if (active[i] > active[i - 1] && active[i] >= active[i + 1]) peaks.push_back(i);
  ASSERT_GE(peaks.size(), 3u);
  double const period =
      10.0 * static_cast<double>(peaks.back() - peaks.front()) / static_cast<double>(peaks.size() - 1);
  EXPECT_NEAR(period, 1200.0, 200.0);
  auto const [low, high] = std::minmax_element(active.begin() + 200, active.end());
  EXPECT_GT(*high - *low, 150.0);
}

// Elowitz and Leibler find oscillations of about 150 minutes with their constants (Figure 1c); started from
// LacI alone the three repressors must take turns.
TEST(Models, TheRepressilatorOscillatesAsPublished)
{
  Model model = nominal(*findModel("repressilator"));
  model.duration = 1000.0;
  auto scan = simulatedTable(model, {1, 1001});
  for (char const* name : {"Molecule: LacI", "Molecule: TetR", "Molecule: cI"}) {
    auto const level = column(*scan, name);
    std::vector<std::size_t> peaks;
    for (std::size_t i = 101; i + 1 < level.size(); ++i)
      if (level[i] > level[i - 1] && level[i] >= level[i + 1]) peaks.push_back(i);
    ASSERT_GE(peaks.size(), 4u) << name;
    double const period =
        static_cast<double>(peaks.back() - peaks.front()) / static_cast<double>(peaks.size() - 1);
    EXPECT_NEAR(period, 150.0, 30.0) << name;
  }
}

// Analytic: without inducer LacI holds its state, with plenty of it the switch flips.
TEST(Models, TheToggleFlipsWithItsInducer)
{
  Model model = nominal(*findModel("toggle_switch"));
  auto dose = std::find_if(model.parameters.begin(), model.parameters.end(),
                           [](ModelParameter const& p) { return p.name == "IPTG"; });
  dose->nominal = 1e-6;
  auto const before = column(*simulatedTable(model, {1, 11}), "Molecule: Repressor 2");
  dose->nominal = 1e-2;
  auto const after = column(*simulatedTable(model, {1, 11}), "Molecule: Repressor 2");
  EXPECT_LT(before.back(), 1.0);
  EXPECT_NEAR(after.back(), 15.6, 0.1) << "full synthesis";
}

// A system with a known solution: dy/dt = -k y.
TEST(SimulateScan, SolvesAccurately)
{
  Model decay;
  decay.name = "decay";
  decay.timeUnit = "s";
  decay.duration = 10.0;
  decay.species = {{"y", 3.0, true, "1", "decays"}};
  decay.parameters = {{"k", 1.0, 0.1, 10.0, ModelParameter::Scale::Logarithmic, "1/s", "rate"}};
  decay.rates = [](double const* y, double const* p, double* dy) { dy[0] = -p[0] * y[0]; };
  auto scan = simulatedTable(decay, {50, 41});
  auto const y = column(*scan, "Molecule: y");
  auto const t = column(*scan, ": Time [s]");
  auto const k = column(*scan, "Parameter: k");
  for (std::size_t i = 0; i < y.size(); ++i) ASSERT_NEAR(y[i], 3.0 * std::exp(-k[i] * t[i]), 1e-6) << i;
  EXPECT_EQ(t[40], 10.0);
  EXPECT_EQ(t[41], 0.0);
}

TEST(SimulateScan, GivesUpOnASystemThatExplodes)
{
  Model explosion;
  explosion.name = "explosion";
  explosion.timeUnit = "s";
  explosion.duration = 10.0;
  explosion.species = {{"y", 1.0, true, "1", "y' = y * y ends at 1 s"}};
  explosion.rates = [](double const* y, double const*, double* dy) { dy[0] = y[0] * y[0]; };
  EXPECT_THROW((void)app::simulateScan(explosion, {1, 11}), std::runtime_error);
}

TEST(SimulateScan, RefusesSenselessSizes)
{
  EXPECT_THROW((void)app::simulateScan(exampleModel(), {0, 101}), std::invalid_argument);
  EXPECT_THROW((void)app::simulateScan(exampleModel(), {10, 1}), std::invalid_argument);
}

TEST(SimulateScan, TheSeedAloneDecides)
{
  SimulateOptions options{40, 11, 5, Sampling::LatinHypercube, 1};
  auto one = simulatedTable(exampleModel(), options);
  options.threads = 3;
  auto three = simulatedTable(exampleModel(), options);
  options.seed = 6;
  auto other = simulatedTable(exampleModel(), options);
  bool differs = false;
  for (std::size_t i = 0; i < one->columnData.size(); ++i) {
    EXPECT_EQ(std::memcmp(one->columnData[i], three->columnData[i], one->rows() * sizeof(double)), 0) << i;
    differs =
        differs || std::memcmp(one->columnData[i], other->columnData[i], one->rows() * sizeof(double)) != 0;
  }
  EXPECT_TRUE(differs);
}

TEST(SimulateScan, DrawsParametersFromTheirRanges)
{
  for (auto sampling : {Sampling::LatinHypercube, Sampling::Sobol}) {
    auto scan = simulatedTable(exampleModel(), {256, 2, 3, sampling});
    std::size_t k = 0;
    for (auto const& parameter : exampleModel().parameters) {
      auto const [low, high] = scan->parameterBounds.at(k++);
      EXPECT_TRUE(parameter.low <= low && high <= parameter.high) << parameter.name;
      EXPECT_GT(high / low, 0.95 * parameter.high / parameter.low) << parameter.name;
      // Half of the points lie below the middle of the range, on the scale of the range.
      auto const values = column(*scan, "Parameter: " + parameter.name);
      double const middle = parameter.scale == ModelParameter::Scale::Linear
                                ? 0.5 * (parameter.low + parameter.high)
                                : std::sqrt(parameter.low * parameter.high);
      auto const below = std::count_if(values.begin(), values.end(), [&](double v) { return v < middle; });
      EXPECT_NEAR(static_cast<double>(below), 256.0, 4.0) << parameter.name;
    }
  }
}

TEST(SimulateScan, AFileGivesTheSameRecord)
{
  auto scan = simulatedTable(exampleModel(), {15, 21});
  TempFolder folder;
  writeTable(scan, folder.file("scan.csv"));
  auto copy = readScanTable(folder.file("scan.csv"));
  EXPECT_EQ(namesOf(*copy), namesOf(*scan));
  EXPECT_EQ(copy->trajectoryCount, 15u);
  EXPECT_EQ(copy->trajectoryLength, 21u);
  EXPECT_EQ(copy->parameterBounds, scan->parameterBounds);
  for (auto const& name : namesOf(*scan)) EXPECT_EQ(column(*copy, name), column(*scan, name)) << name;
}

/// Two-sample Kolmogorov-Smirnov test with the limiting distribution of the statistic.
struct KsTest
{
  double d = 0.0;
  double p = 1.0;

  KsTest(std::vector<double> a, std::vector<double> b)
  {
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    auto const m = static_cast<double>(a.size());
    auto const n = static_cast<double>(b.size());
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
      double const x = std::min(a[i], b[j]);
      while (i < a.size() && a[i] <= x) ++i;
      while (j < b.size() && b[j] <= x) ++j;
      d = std::max(d, std::abs(static_cast<double>(i) / m - static_cast<double>(j) / n));
    }
    double const z = d * std::sqrt(m * n / (m + n));
    if (z < 0.3) return; // p is 1 to all digits
    p = 0.0;
    for (int k = 1; k < 100; ++k) p += (k % 2 == 1 ? 2.0 : -2.0) * std::exp(-2.0 * k * k * z * z);
  }
};

std::map<std::string, KsTest> compareParameters(LinePlotTable const& scan,
                                                std::vector<long long> const& passing)
{
  std::map<std::string, KsTest> tests;
  for (std::size_t i : scanLayout(scan).parameters) {
    std::vector<double> a;
    std::vector<double> b;
    for (std::size_t run = 0; run < scan.trajectoryCount; ++run)
      (std::binary_search(passing.begin(), passing.end(), static_cast<long long>(run)) ? a : b)
          .push_back(scan.columnData[i][run * scan.trajectoryLength]);
    tests.emplace(scan.columnNames[i].second, KsTest(a, b));
  }
  return tests;
}

std::vector<long long> runsThroughExampleGates(LinePlotTable const& table)
{
  boost::shared_ptr<LinePlotTable> const borrowed(const_cast<LinePlotTable*>(&table), [](LinePlotTable*) {});
  Scan const scan = scanOf(borrowed);
  std::vector<Gate> gates;
  for (auto const& text : exampleModel().exampleGates) gates.push_back(parseGate(text));
  GateResult const result = applyGates(gates, scan);
  EXPECT_EQ(result.gates.size(), 2u);
  EXPECT_EQ(result.gates[0].gate.column, result.gates[1].gate.column);
  EXPECT_EQ(result.gates[0].gate.note + result.gates[1].gate.note, "");
  auto const members = result.runs.members();
  return {members.begin(), members.end()};
}

TEST(ExampleScan, TheGateTellsActingFromIdleParameters)
{
  auto scan = simulatedTable(exampleModel(), {});
  ASSERT_EQ(scan->trajectoryCount, 1000u);
  auto const passing = runsThroughExampleGates(*scan);
  EXPECT_GE(passing.size(), 50u);
  EXPECT_LE(passing.size(), 300u);
  auto const tests = compareParameters(*scan, passing);
  for (char const* name : {"lacI_strength", "tetR_strength", "cI_strength", "mRNA_halflife",
                           "protein_halflife", "translation"}) {
    EXPECT_LT(tests.at(name).p, 1e-3) << name;
    EXPECT_GT(tests.at(name).d, 0.1) << name;
  }
  int reporters = 0;
  for (auto const& [name, test] : tests) {
    if (!isReporter(name)) continue;
    ++reporters;
    EXPECT_TRUE(test.d < 0.1 || test.p > 0.05) << name << ": d = " << test.d << ", p = " << test.p;
  }
  EXPECT_EQ(reporters, 5);
}

// Not by luck of one seed: the strongest act in every scan.
TEST(ExampleScan, TheStrongestParametersShowWithAnySeed)
{
  for (std::uint64_t seed : {2, 3, 4}) {
    auto scan = simulatedTable(exampleModel(), {1000, 11, seed, Sampling::Sobol});
    auto const tests = compareParameters(*scan, runsThroughExampleGates(*scan));
    for (char const* name : {"lacI_strength", "tetR_strength", "protein_halflife"})
      EXPECT_LT(tests.at(name).p, 1e-3) << name << ", seed " << seed;
  }
}

// The proof in numbers: what the reporter is made of changes no repressor, but the reporter itself.
TEST(ExampleScan, IdleParametersCannotActOnTheGatedOutput)
{
  Model const base = nominal(exampleModel());
  Model changed = base;
  for (auto& parameter : changed.parameters)
    if (isReporter(parameter.name)) parameter.nominal *= 1.7;
  auto a = simulatedTable(base, {1, 101});
  auto b = simulatedTable(changed, {1, 101});
  for (char const* name : {"Molecule: LacI", "Molecule: TetR", "Molecule: cI"}) {
    auto const first = column(*a, name);
    auto const second = column(*b, name);
    for (std::size_t i = 0; i < first.size(); ++i)
      ASSERT_NEAR(first[i], second[i], 1e-4 * (1.0 + first[i]))
          << name << ' ' << i; // other steps, other rounding
  }
  EXPECT_GT(column(*b, "Molecule: GFP").back(), 1.2 * column(*a, "Molecule: GFP").back());
}

// With every acting parameter doubled the gated output does change: the comparison above can fail.
TEST(ExampleScan, ActingParametersDoActOnTheGatedOutput)
{
  Model const base = nominal(exampleModel());
  auto const before = column(*simulatedTable(base, {1, 101}), "Molecule: cI");
  for (std::size_t k = 0; k < base.parameters.size(); ++k) {
    if (isReporter(base.parameters[k].name)) continue;
    Model changed = base;
    changed.parameters[k].nominal *= 1.7;
    auto const after = column(*simulatedTable(changed, {1, 101}), "Molecule: cI");
    double largest = 0.0;
    for (std::size_t i = 0; i < before.size(); ++i)
      largest = std::max(largest, std::abs(after[i] - before[i]) / (1.0 + before[i]));
    EXPECT_GT(largest, 0.1) << base.parameters[k].name;
  }
}

} // namespace
} // namespace runsieve::test
