#include "DocumentScene.h"

#include <runsieve/core/compare/Clusters.h>

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

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
  Gate gate;
  gate.kind = GateKind::Cluster;
  gate.column = "B";
  gate.cluster = 0;
  gate.clusters = 2;
  addGate(gate);
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

} // namespace
} // namespace runsieve::test
