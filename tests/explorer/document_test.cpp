#include "DocumentScene.h"

#include <runsieve/core/compare/Clusters.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace runsieve::test {
namespace {

using app::Document;
using testing::ElementsAre;

/// The runs of the first of two clusters of output B.
Gate clusterGate()
{
  Gate gate;
  gate.kind = GateKind::Cluster;
  gate.column = "B";
  gate.clusters = 2;
  return gate;
}

TEST_F(DocumentScene, WithoutGatesAllRunsPassAndNothingIsCompared)
{
  EXPECT_FALSE(document.sieves());
  EXPECT_EQ(document.passing().count(), 40u);
  EXPECT_EQ(document.comparison(), nullptr);
}

TEST_F(DocumentScene, AGateLeavesTheRunsThatPassIt)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.5) << run;
  ASSERT_NE(document.comparison(), nullptr);
  EXPECT_EQ(document.comparison()->parameters[0].name, "k0");
  EXPECT_TRUE(document.comparison()->parameters[0].significant);
}

TEST_F(DocumentScene, EachStepIsTakenBackAndDoneAgain)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.7));
  const std::size_t both = document.passing().count();
  document.undoStack().undo();
  EXPECT_EQ(document.state().gates.size(), 1u);
  document.undoStack().undo();
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_EQ(document.passing().count(), 40u);
  document.undoStack().redo();
  document.undoStack().redo();
  EXPECT_EQ(document.passing().count(), both);
}

TEST_F(DocumentScene, WhatChangesNothingIsNoStep)
{
  addGate(gateOnA(0.5, 1.0));
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::All; });
  document.change("Pass all gates", [](app::State& state) { state.join = GateJoin::All; });
  document.change("Same", [](app::State& state) { state.gates[0].gate.range.low = 0.5; });
  EXPECT_EQ(document.undoStack().count(), 1);
  document.change("Rename gate", [](app::State& state) { state.gates[0].name = "other"; });
  document.change("Method", [](app::State& state) { state.method.seed = 7; });
  document.change("Axis", [](app::State& state) { state.view.timeRange = app::TypedRange{1.0, 2.0}; });
  document.change("Set", [](app::State& state) {
    state.sets.push_back({"all", RunSet(40, true), 0, true, "typed"});
  });
  document.change("Hide", [](app::State& state) { state.sets[0].shown = false; });
  EXPECT_EQ(document.undoStack().count(), 6);
}

TEST_F(DocumentScene, AGateThatIsOffAsksForNothing)
{
  addGate(gateOnA(0.5, 1.0));
  document.change("Switch gate", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_EQ(document.passing().count(), 40u);
  EXPECT_FALSE(document.sieves());
}

TEST_F(DocumentScene, AnyOfTheGatesIsEnoughIfSo)
{
  addGate(gateOnA(0.0, 0.2));
  addGate(gateOnA(0.8, 1.0));
  EXPECT_EQ(document.passing().count(), 0u);
  document.change("Pass any gate", [](app::State& state) { state.join = GateJoin::Any; });
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) <= 0.2 || scattered(0, run) >= 0.8) << run;
}

TEST_F(DocumentScene, AGateThatDoesNotFitTheScanIsToldAndAsksForNothing)
{
  Gate gate = gateOnA(0.5, 1.0);
  gate.column = "nothing";
  addGate(gate);
  EXPECT_EQ(document.passing().count(), 40u);
  EXPECT_THAT(document.outcomes()[0].error, testing::HasSubstr("nothing"));
}

TEST_F(DocumentScene, APreviewShowsWhatWouldPassAndLeavesTheStateAlone)
{
  addGate(gateOnA(0.5, 1.0));
  document.previewGate(1, gateOnA(0.0, 0.75));
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.5 && scattered(0, run) <= 0.75) << run;
  EXPECT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.liveDistances().size(), 6u);
  document.cancelPreview();
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.5) << run;
}

TEST_F(DocumentScene, APreviewPassesAllTheOtherGates)
{
  addGate(gateOnA(0.2, 1.0));
  addGate(gateOnA(0.0, 0.8));
  addGate(gateOnA(0.4, 0.5));
  document.previewGate(2, gateOnA(0.1, 0.9));
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.2 && scattered(0, run) <= 0.8) << run;
  document.change("Pass any gate", [](app::State& state) { state.join = GateJoin::Any; });
  document.change("Narrow", [](app::State& state) {
    state.gates[0].gate.range = {0.0, 0.1};
    state.gates[1].gate.range = {0.2, 0.3};
  });
  document.previewGate(2, gateOnA(0.9, 1.0));
  for (std::size_t run = 0; run < 40; ++run) {
    const double k0 = scattered(0, run);
    EXPECT_EQ(document.passing().contains(run), k0 <= 0.1 || (k0 >= 0.2 && k0 <= 0.3) || k0 >= 0.9) << run;
  }
}

TEST_F(DocumentScene, APreviewOfAGateThatIsOffChangesNothing)
{
  addGate(gateOnA(0.2, 0.6));
  addGate(gateOnA(0.0, 0.4));
  document.change("Switch gate", [](app::State& state) { state.gates[1].on = false; });
  const RunSet before = document.passing();
  document.previewGate(1, gateOnA(0.5, 0.55));
  EXPECT_EQ(document.passing(), before);
}

TEST_F(DocumentScene, ACommittedPreviewIsOneStep)
{
  document.previewGate(0, gateOnA(0.2, 0.9));
  document.previewGate(0, gateOnA(0.5, 1.0));
  EXPECT_TRUE(document.commitPreview("Draw gate"));
  EXPECT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.state().gates[0].name, "Gate 1");
  EXPECT_EQ(document.selectedGate(), 0u);
  EXPECT_EQ(document.undoStack().count(), 1);
  EXPECT_EQ(document.undoStack().undoText(), "Draw gate");
}

TEST_F(DocumentScene, ANewGateThatNoRunPassesChangesNothing)
{
  document.previewGate(0, gateOnA(5.0, 6.0));
  EXPECT_EQ(document.passing().count(), 0u);
  EXPECT_FALSE(document.commitPreview("Draw gate"));
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_EQ(document.passing().count(), 40u);
  EXPECT_EQ(document.undoStack().count(), 0);
}

TEST_F(DocumentScene, TheNumbersAreThoseOfTheCore)
{
  addGate(gateOnA(0.3, 0.8));
  ASSERT_TRUE(settle());
  const Comparison expected = compareParameters(document.scan(), document.passing(), document.eligible());
  ASSERT_EQ(document.comparison()->parameters.size(), expected.parameters.size());
  for (std::size_t i = 0; i < expected.parameters.size(); ++i) {
    EXPECT_EQ(document.comparison()->parameters[i].name, expected.parameters[i].name);
    EXPECT_EQ(document.comparison()->parameters[i].d, expected.parameters[i].d);
    EXPECT_EQ(document.comparison()->parameters[i].pPermutation, expected.parameters[i].pPermutation);
  }
}

TEST_F(DocumentScene, AGateOnAClusterIsGroupedBesideTheInterfaceAndThenAsks)
{
  addGate(clusterGate());
  EXPECT_THAT(document.outcomes()[0].error, testing::HasSubstr("grouped"));
  EXPECT_EQ(document.passing().count(), 40u);
  ASSERT_TRUE(settle());
  EXPECT_EQ(document.outcomes()[0].error, "");
  const std::vector<int> labels = clusterRuns(document.scan(), 1, ClusterMode::Curves, 2);
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), labels[run] == 0) << run;
}

TEST_F(DocumentScene, AnotherScanLeavesNothingOfTheFormer)
{
  addGate(gateOnA(0.5, 1.0));
  document.togglePin(3);
  document.open(lineScan(10), {});
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_TRUE(document.pinnedRuns().empty());
  EXPECT_FALSE(document.undoStack().canUndo());
  EXPECT_EQ(document.passing().count(), 10u);
  ASSERT_TRUE(settle());
  EXPECT_EQ(document.comparison(), nullptr);
}

TEST_F(DocumentScene, OthersAreToldOfWhatChangesAndOfNothingElse)
{
  QSignalSpy states(&document, &Document::stateChanged);
  QSignalSpy passing(&document, &Document::passingChanged);
  QSignalSpy highlights(&document, &Document::highlightChanged);
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Faded; });
  EXPECT_EQ(states.count(), 1);
  EXPECT_EQ(passing.count(), 0) << "no gate has changed";
  addGate(gateOnA(0.5, 1.0));
  EXPECT_EQ(states.count(), 2);
  EXPECT_EQ(passing.count(), 1);
  document.change("Rename", [](app::State& state) { state.gates[0].name = "other"; });
  EXPECT_EQ(states.count(), 3);
  EXPECT_EQ(passing.count(), 1) << "a name lets no other runs through";
  document.change("Off", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_EQ(passing.count(), 2);
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  EXPECT_EQ(passing.count(), 3);
  EXPECT_EQ(highlights.count(), 0);
}

TEST_F(DocumentScene, HoveredAndPinnedRunsAndTheSelectedGateAreToldOnce)
{
  addGate(gateOnA(0.5, 1.0));
  QSignalSpy highlights(&document, &Document::highlightChanged);
  document.hover(3);
  document.hover(3);
  EXPECT_EQ(highlights.count(), 1);
  EXPECT_EQ(document.hoveredRun(), 3u);
  document.hover(std::nullopt);
  EXPECT_EQ(highlights.count(), 2);
  document.pin({1, 2});
  document.pin({1, 2});
  EXPECT_EQ(highlights.count(), 3);
  document.togglePin(2);
  document.togglePin(5);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(1u, 5u));
  EXPECT_EQ(highlights.count(), 5);
  document.selectGate(0);
  document.selectGate(0);
  EXPECT_EQ(highlights.count(), 6);
  EXPECT_EQ(document.undoStack().count(), 1) << "none of it is a step";
}

TEST_F(DocumentScene, AGateThatIsNotThereCannotBeSelected)
{
  addGate(gateOnA(0.5, 1.0));
  document.selectGate(1);
  EXPECT_EQ(document.selectedGate(), std::nullopt);
  document.selectGate(0);
  document.undoStack().undo();
  EXPECT_EQ(document.selectedGate(), std::nullopt) << "the selected gate is gone";
}

TEST_F(DocumentScene, TheSelectedGateStaysWhileItIsThere)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.2, 1.0));
  document.selectGate(0);
  document.undoStack().undo();
  EXPECT_EQ(document.selectedGate(), 0u);
}

TEST_F(DocumentScene, StepsOfTheSameNumberThatFollowOneAnotherAreOne)
{
  auto const setLow = [this](double low, int merge) {
    document.change(
        "Limits",
        [=](app::State& state) {
          state.view.timeRange = app::TypedRange{low, 10.0};
        },
        merge);
  };
  setLow(1.0, 7);
  setLow(2.0, 7);
  EXPECT_EQ(document.undoStack().count(), 1);
  setLow(3.0, 8);
  EXPECT_EQ(document.undoStack().count(), 2);
  setLow(4.0, 0);
  setLow(5.0, 0);
  EXPECT_EQ(document.undoStack().count(), 4) << "steps without a number stay apart";
  while (document.undoStack().canUndo()) document.undoStack().undo();
  EXPECT_FALSE(document.state().view.timeRange);
  document.undoStack().redo();
  EXPECT_EQ(document.state().view.timeRange->low, 2.0);
}

TEST_F(DocumentScene, OnlyOutputsOfTheScanAreShownAndSixAtMost)
{
  auto const shown = [this](std::vector<std::size_t> const& outputs) {
    document.change("Show", [&](app::State& state) { state.view.outputs = outputs; });
    return document.state().view.outputs;
  };
  EXPECT_THAT(shown({1, 2, 0, 7}), ElementsAre(1u, 0u));
  EXPECT_THAT(shown({2, 3}), ElementsAre(0u)) << "one shows at least";
  EXPECT_THAT(shown({1, 0, 1, 0, 1, 0, 1, 0}), testing::SizeIs(6));
}

TEST_F(DocumentScene, AStateThatIsOpenedWithAScanIsMadeToFitIt)
{
  app::State state;
  state.view.outputs = {5, 1};
  document.open(lineScan(), {}, state);
  EXPECT_THAT(document.state().view.outputs, ElementsAre(1u));
}

TEST_F(DocumentScene, NothingChangesWithoutAScan)
{
  document.close();
  QSignalSpy states(&document, &Document::stateChanged);
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Faded; });
  document.previewGate(0, gateOnA(0.5, 1.0));
  EXPECT_EQ(states.count(), 0);
  EXPECT_FALSE(document.isOpen());
  EXPECT_FALSE(document.undoStack().canUndo());
  EXPECT_FALSE(document.commitPreview("Draw gate"));
  EXPECT_TRUE(document.parameterOrder().empty());
  EXPECT_TRUE(document.prepareGate(0)) << "there is nothing to prepare";
}

TEST_F(DocumentScene, OpeningTellsOfEverything)
{
  QSignalSpy opened(&document, &Document::opened);
  QSignalSpy states(&document, &Document::stateChanged);
  QSignalSpy passing(&document, &Document::passingChanged);
  QSignalSpy compared(&document, &Document::comparisonChanged);
  document.hover(3);
  document.open(lineScan(10), {});
  EXPECT_EQ(opened.count(), 1);
  EXPECT_EQ(states.count(), 1);
  EXPECT_EQ(passing.count(), 1);
  EXPECT_GE(compared.count(), 1);
  EXPECT_EQ(document.hoveredRun(), std::nullopt);
}

TEST_F(DocumentScene, APreviewIsNoComparisonAndItsEndIsToldOfOnce)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  document.previewGate(0, gateOnA(0.2, 0.9));
  EXPECT_FALSE(document.isCompared());
  EXPECT_NE(document.comparison(), nullptr) << "the numbers of the former runs still show";
  QSignalSpy passing(&document, &Document::passingChanged);
  QSignalSpy compared(&document, &Document::comparisonChanged);
  document.cancelPreview();
  document.cancelPreview();
  EXPECT_EQ(passing.count(), 1);
  EXPECT_EQ(compared.count(), 1);
  EXPECT_TRUE(document.isCompared());
  EXPECT_TRUE(document.liveDistances().empty());
}

TEST_F(DocumentScene, EachMoveOfAPreviewIsTold)
{
  QSignalSpy passing(&document, &Document::passingChanged);
  QSignalSpy compared(&document, &Document::comparisonChanged);
  document.previewGate(0, gateOnA(0.2, 0.9));
  EXPECT_EQ(compared.count(), 1) << "with distances";
  document.previewGate(0, gateOnA(0.3, 0.9));
  EXPECT_EQ(passing.count(), 2);
  EXPECT_TRUE(document.sieves());
}

TEST_F(DocumentScene, TheFirstPreviewAsksForSomethingWithoutGates)
{
  EXPECT_FALSE(document.sieves());
  document.previewGate(0, gateOnA(0.2, 0.9));
  EXPECT_TRUE(document.sieves());
  document.cancelPreview();
  EXPECT_FALSE(document.sieves());
}

TEST_F(DocumentScene, APreviewThatDoesNotFitTheScanEndsTheOneBefore)
{
  document.previewGate(0, gateOnA(0.2, 0.9));
  Gate unknown = gateOnA(0.2, 0.9);
  unknown.column = "nothing";
  document.previewGate(0, unknown);
  EXPECT_EQ(document.previewedGate(), nullptr);
  EXPECT_EQ(document.passing().count(), 40u);
}

TEST_F(DocumentScene, AnotherChangeOfTheGatesEndsAPreviewAndOneOfTheViewDoesNot)
{
  addGate(gateOnA(0.2, 0.9));
  document.previewGate(0, gateOnA(0.3, 0.9));
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Faded; });
  std::size_t place = 9;
  ASSERT_NE(document.previewedGate(&place), nullptr);
  EXPECT_EQ(place, 0u);
  document.change("Off", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_EQ(document.previewedGate(), nullptr);
}

TEST_F(DocumentScene, ACommittedPreviewOfAGateKeepsItsNameAndSwitch)
{
  addGate(gateOnA(0.2, 0.9));
  document.change("Name", [](app::State& state) {
    state.gates[0].name = "mine";
    state.gates[0].on = false;
  });
  document.previewGate(0, gateOnA(0.3, 0.8));
  EXPECT_TRUE(document.commitPreview("Move gate"));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.state().gates[0].name, "mine");
  EXPECT_FALSE(document.state().gates[0].on);
  EXPECT_EQ(document.state().gates[0].gate, gateOnA(0.3, 0.8));
  EXPECT_EQ(document.previewedGate(), nullptr);
  EXPECT_EQ(document.selectedGate(), 0u);
}

TEST_F(DocumentScene, AGateMayBeMovedToWhereNoRunPasses)
{
  addGate(gateOnA(0.2, 0.9));
  document.previewGate(0, gateOnA(5.0, 6.0));
  EXPECT_TRUE(document.commitPreview("Move gate"));
  EXPECT_EQ(document.passing().count(), 0u);
}

TEST_F(DocumentScene, ANewGateThatRunsPassAloneIsMadeEvenIfNoneIsLeft)
{
  addGate(gateOnA(0.0, 0.3));
  document.previewGate(1, gateOnA(0.6, 1.0));
  EXPECT_EQ(document.passing().count(), 0u);
  EXPECT_TRUE(document.commitPreview("Draw gate"));
  EXPECT_EQ(document.state().gates.size(), 2u);
  EXPECT_EQ(document.state().gates[1].name, "Gate 2");
  EXPECT_EQ(document.selectedGate(), 1u);
}

TEST_F(DocumentScene, NamesOfNewGatesAreFree)
{
  addGate(gateOnA(0.2, 0.9));
  EXPECT_EQ(document.newGateName(), "Gate 2");
  document.change("Name", [](app::State& state) { state.gates[0].name = "Gate 2"; });
  EXPECT_EQ(document.newGateName(), "Gate 3");
}

TEST_F(DocumentScene, ParametersStandInTheOrderOfTheComparisonAndThoseLeftOutBehind)
{
  EXPECT_THAT(document.parameterOrder(), ElementsAre(0u, 1u, 2u, 3u, 4u, 5u));
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 30; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  for (int p = 0; p < 3; ++p) {
    ScanParameter parameter;
    parameter.label.name = "p" + std::to_string(p);
    for (int run = 0; run < 30; ++run)
      parameter.values.push_back(p == 0 ? 1.0 : p == 1 ? scattered(3, static_cast<std::size_t>(run)) : run);
    scan->parameters.push_back(std::move(parameter));
  }
  double* a = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 30; ++run) a[run] = run;
  document.open(scan, {});
  Gate gate;
  gate.column = "A";
  gate.range = {15.0, 30.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  EXPECT_THAT(document.parameterOrder(), ElementsAre(2u, 1u, 0u)) << "p0 does not vary";
}

TEST_F(DocumentScene, AnotherMethodComparesAnew)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  document.change("Method", [](app::State& state) { state.method.adjustment = Adjustment::Holm; });
  ASSERT_TRUE(settle());
  EXPECT_EQ(document.comparison()->method.adjustment, Adjustment::Holm);
}

TEST_F(DocumentScene, WithoutGatesTheComparisonIsForgotten)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  QSignalSpy compared(&document, &Document::comparisonChanged);
  document.undoStack().undo();
  EXPECT_EQ(document.comparison(), nullptr);
  EXPECT_GE(compared.count(), 1);
}

TEST_F(DocumentScene, RunsThatHaveFailedAreComparedIfAGateAsksForThem)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 30; ++run)
    scan->runs.push_back({std::to_string(run), run < 10 ? RunStatus::Failed : RunStatus::Complete, 1});
  ScanParameter parameter;
  parameter.label.name = "p";
  for (int run = 0; run < 30; ++run) parameter.values.push_back(run);
  scan->parameters.push_back(std::move(parameter));
  double* a = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 30; ++run) a[run] = run;
  document.open(scan, {});
  EXPECT_EQ(document.eligible().count(), 20u);
  Gate complete;
  complete.column = "A";
  complete.range = {15.0, 30.0};
  addGate(complete);
  ASSERT_TRUE(settle());
  EXPECT_EQ(document.comparison()->parameters[0].others, 5u);
  Gate failed;
  failed.kind = GateKind::Status;
  failed.statuses = {RunStatus::Failed};
  document.change("Status", [&](app::State& state) { state.gates[0].gate = failed; });
  EXPECT_EQ(document.eligible().count(), 30u);
  ASSERT_TRUE(settle());
  EXPECT_EQ(document.comparison()->parameters[0].passing, 10u);
  EXPECT_EQ(document.comparison()->parameters[0].others, 20u);
  document.change("Off", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_EQ(document.eligible().count(), 20u) << "a gate that is off asks for nothing";
}

TEST_F(DocumentScene, EachGateTellsWhatItDoesAloneAndWhatIsLeft)
{
  addGate(gateOnA(0.0, 0.5));
  addGate(gateOnA(0.2, 1.0));
  addGate(gateOnA(0.9, 1.0));
  document.change("Off", [](app::State& state) { state.gates[2].on = false; });
  auto const runsIn = [](double low, double high) {
    std::size_t count = 0;
    for (std::size_t run = 0; run < 40; ++run)
      count += scattered(0, run) >= low && scattered(0, run) <= high ? 1 : 0;
    return count;
  };
  auto const& found = document.outcomes();
  EXPECT_EQ(found[0].left, runsIn(0.0, 0.5));
  EXPECT_EQ(found[1].left, runsIn(0.2, 0.5));
  EXPECT_EQ(found[1].alone.count(), runsIn(0.2, 1.0));
  EXPECT_EQ(found[2].left, runsIn(0.2, 0.5)) << "as before it";
  EXPECT_EQ(found[2].alone.count(), runsIn(0.9, 1.0));
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  EXPECT_EQ(found[0].left, runsIn(0.0, 0.5));
  EXPECT_EQ(found[1].left, 40u);
}

TEST_F(DocumentScene, RunsOfAClusterAreComparedWhenItIsFound)
{
  addGate(clusterGate());
  ASSERT_TRUE(settle());
  ASSERT_NE(document.comparison(), nullptr);
  EXPECT_EQ(document.comparison()->passing, document.passing().count());
  EXPECT_LT(document.passing().count(), document.scan().runs.size());
}

TEST_F(DocumentScene, TwoClustersThatGatesAskForAreBothFound)
{
  for (std::string const column : {"A", "B"}) {
    Gate gate;
    gate.kind = GateKind::Cluster;
    gate.column = column;
    gate.cluster = 0;
    gate.clusters = column == "A" ? 1 : 2;
    addGate(gate);
  }
  EXPECT_FALSE(document.isCompared());
  ASSERT_TRUE(settle());
  EXPECT_TRUE(document.outcomes()[0].resolved);
  EXPECT_TRUE(document.outcomes()[1].resolved);
  EXPECT_EQ(document.passing(), document.outcomes()[1].alone);
  EXPECT_LT(document.passing().count(), 40u);
}

TEST_F(DocumentScene, ClustersOfAnotherScanAreFoundAnew)
{
  addGate(clusterGate());
  ASSERT_TRUE(settle());
  app::State const before = document.state();
  document.open(lineScan(25), {}, before);
  EXPECT_FALSE(document.outcomes()[0].resolved);
  ASSERT_TRUE(settle());
  const std::vector<int> labels = clusterRuns(document.scan(), 1, ClusterMode::Curves, 2);
  for (std::size_t run = 0; run < 25; ++run)
    EXPECT_EQ(document.passing().contains(run), labels[run] == 0) << run;
}

TEST_F(DocumentScene, APreviewAmongAnyGatesHasNoDistances)
{
  addGate(gateOnA(0.0, 0.2));
  addGate(gateOnA(0.8, 1.0));
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  document.previewGate(1, gateOnA(0.7, 1.0));
  EXPECT_TRUE(document.liveDistances().empty()) << "they would be those of the moved gate alone";
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) <= 0.2 || scattered(0, run) >= 0.7) << run;
}

TEST_F(DocumentScene, APreviewOfTheOnlyGateOfAnyLetsOnlyItsRunsThrough)
{
  addGate(gateOnA(0.0, 0.2));
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  document.previewGate(0, gateOnA(0.7, 1.0));
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.7) << run;
}

TEST_F(DocumentScene, APreviewSeesTheOthersAsTheyAreNow)
{
  addGate(gateOnA(0.0, 0.5));
  addGate(gateOnA(0.2, 1.0));
  document.previewGate(1, gateOnA(0.1, 1.0));
  document.cancelPreview();
  document.change("Narrow", [](app::State& state) { state.gates[0].gate.range.high = 0.3; });
  document.previewGate(1, gateOnA(0.1, 1.0));
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.1 && scattered(0, run) <= 0.3) << run;
  document.previewGate(0, gateOnA(0.0, 0.6));
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_EQ(document.passing().contains(run), scattered(0, run) >= 0.2 && scattered(0, run) <= 0.6) << run;
}

TEST_F(DocumentScene, AGateIsPreparedInSlicesUntilAllIs)
{
  bool isDone = false;
  for (int slice = 0; slice < 1000 && !isDone; ++slice) isDone = document.prepareGate(0);
  EXPECT_TRUE(isDone);
  EXPECT_TRUE(document.prepareGate(7)) << "an output that is not there";
}

TEST_F(DocumentScene, StatesDifferByEachOfTheirParts)
{
  const app::State same;
  EXPECT_TRUE(same == app::State());
  using Edit = std::function<void(app::State&)>;
  for (Edit const& edit : std::vector<Edit>{
           [](app::State& s) {
             s.gates.push_back({"g", Gate(), true});
           },
           [](app::State& s) { s.join = GateJoin::Any; },
           [](app::State& s) {
             s.sets.push_back({"s", RunSet(3), 0, true, ""});
           },
           [](app::State& s) { s.method.thresholds.largestP *= 0.5; },
           [](app::State& s) { s.method.thresholds.smallestD += 0.1; },
           [](app::State& s) { s.method.adjustment = Adjustment::Holm; },
           [](app::State& s) { ++s.method.permutations; }, [](app::State& s) { ++s.method.mostPermutations; },
           [](app::State& s) { ++s.method.seed; }, [](app::State& s) { ++s.method.gatesTried; },
           [](app::State& s) { s.view.outputs = {1}; }, [](app::State& s) { s.view.logOutputs[0] = true; },
           [](app::State& s) {
             s.view.outputRanges[0] = {0.0, 2.0};
           },
           [](app::State& s) { s.view.timeRange = app::TypedRange(); },
           [](app::State& s) { s.view.runsLook = app::RunsLook::Lines; },
           [](app::State& s) { s.view.focus = app::Focus::Hidden; },
           [](app::State& s) { s.view.parameterLook = app::ParameterLook::Scatter; },
           [](app::State& s) { s.view.logParameters[0] = true; }}) {
    app::State other;
    edit(other);
    EXPECT_FALSE(same == other);
    app::State again;
    edit(again);
    EXPECT_TRUE(again == other);
  }
}

} // namespace
} // namespace runsieve::test
