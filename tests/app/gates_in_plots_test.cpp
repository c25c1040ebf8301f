// What passes is computed by the core; plots must show the same runs through their own selection.
#include "app/view/QuietLibrary.h"
#include "app/view/ScanPlot.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/gate/GateRows.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/ParameterSelection.h>

#include <gtest/gtest.h>

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>

namespace runsieve::test {
namespace {

Scan randomScan(std::mt19937& random)
{
  auto const below = [&](unsigned count) { return random() % count; };
  Scan scan;
  scan.time = {"Time", "s", "", ""};
  std::size_t const times = 2 + below(8);
  for (std::size_t i = 0; i < times; ++i) scan.times.push_back(0.5 * static_cast<double>(i));
  for (unsigned run = 0; run < 5 + below(40); ++run)
    scan.runs.push_back({std::to_string(run), RunStatus::Complete, times});
  for (char const* name : {"A", "Values[B]"}) {
    double* const values = scan.addOutput({name, "", "", ""});
    for (std::size_t i = 0; i < scan.rows(); ++i)
      values[i] = below(40) == 0 ? std::numeric_limits<double>::quiet_NaN() : static_cast<double>(below(10));
  }
  ScanParameter parameter{{"k", "", "", ""}, {}, {}};
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    parameter.values.push_back(static_cast<double>(below(6)) + 0.1 * static_cast<double>(run));
  scan.parameters.push_back(parameter);
  scan.findStatus();
  return scan;
}

std::string randomGate(std::mt19937& random, Scan const& scan)
{
  static std::vector<std::string> const forms = {"OUT @ T..U in L..",
                                                 "ever OUT @ T..U in L..",
                                                 "never OUT @ T..U in L..",
                                                 "not OUT @ T..U in L..",
                                                 "max(OUT) @ T..U in L..",
                                                 "mean(OUT) in 3..",
                                                 "crosses OUT @ T..U in L..",
                                                 "k in 2..",
                                                 "status failed",
                                                 "not status short"};
  std::string gate = forms[random() % forms.size()];
  auto const replace = [&](std::string const& word, std::string const& text) {
    if (auto const at = gate.find(word); at != std::string::npos) gate.replace(at, word.size(), text);
  };
  std::size_t const first = random() % scan.times.size();
  std::size_t const last = first + random() % (scan.times.size() - first);
  replace("T..", std::to_string(scan.times[first]) + "..");
  replace("U in", std::to_string(scan.times[last]) + " in");
  replace("L..", std::to_string(random() % 5) + "..");
  replace("OUT", random() % 2 == 0 ? "A" : "Values[B]");
  return gate;
}

TEST(GatesInPlots, TheRunsThatPassAreThoseThatThePlotsLetSurvive)
{
  app::QuietLibrary const quiet;
  int notTrivial = 0;
  for (unsigned seed = 0; seed < 150; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    Scan const scan = randomScan(random);
    std::vector<Gate> gates;
    for (unsigned i = 0; i < 1 + seed % 3; ++i) gates.push_back(parseGate(randomGate(random, scan)));
    GateResult const result = applyGates(gates, scan, seed % 4 == 0 ? GateJoin::Any : GateJoin::All);
    auto const members = result.runs.members();
    if (members.empty()) continue; // nothing to select: the plots then show all runs

    vtkNew<vtkContextScene> scene;
    PlotContainer plot(nullptr);
    scene->AddItem(plot.getItem());
    app::showScan(plot, linePlotTableOf(scan), {});
    app::selectRows(plot, rowsToSelect(result.runs, result.resolved(), scan));
    std::unique_ptr<ParameterSelection> const selection(plot.getSelection());
    ASSERT_NE(selection, nullptr);
    std::vector<std::size_t> shown(selection->selectedRuns.begin(), selection->selectedRuns.end());
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown, members);
    if (members.size() < scan.runs.size()) ++notTrivial;
  }
  EXPECT_GT(notTrivial, 60);
}

} // namespace
} // namespace runsieve::test
