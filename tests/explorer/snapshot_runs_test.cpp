// What the charts of the runs paint, stroke by stroke.

#include "SnapshotScene.h"

#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/sets/SetComparison.h"
#include "app/explorer/sets/SetsPane.h"

#include <QTableView>

namespace runsieve::test {
namespace {

using app::Focus;
using app::RunsLook;

struct RunsSnapshots : SnapshotScene
{
  void SetUp() override
  {
    SnapshotScene::SetUp();
    fill();
    showAlone(window->runs(), {800, 560});
  }
  [[nodiscard]] QStringList runs() { return shown(window->runs()); }
};

TEST_F(RunsSnapshots, OfDensityWithGatesSetsAndPinnedRuns)
{
  EXPECT_TRUE(isAsKept("runs_density", runs()));
}

TEST_F(RunsSnapshots, OfLinesWithFadedOthers)
{
  show([](app::ViewState& view) {
    view.runsLook = RunsLook::Lines;
    view.focus = Focus::Faded;
  });
  EXPECT_TRUE(isAsKept("runs_lines", runs()));
}

TEST_F(RunsSnapshots, OfTheDark)
{
  app::chooseAppearance(app::Appearance::Dark);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("runs_dark", runs()));
}

TEST_F(RunsSnapshots, OfBandsOnALogAxis)
{
  show([](app::ViewState& view) {
    view.runsLook = RunsLook::Bands;
    view.outputs = {2};
    view.logOutputs[2] = true;
  });
  EXPECT_TRUE(isAsKept("runs_bands", runs()));
}

TEST_F(RunsSnapshots, OfBandsOfWholeRunsAlone)
{
  show([](app::ViewState& view) {
    view.runsLook = RunsLook::WholeBands;
    view.focus = Focus::Hidden;
    view.outputs = {1};
  });
  EXPECT_TRUE(isAsKept("runs_whole_bands", runs()));
}

TEST_F(RunsSnapshots, OfThreeOutputsWithTypedLimits)
{
  show([](app::ViewState& view) {
    view.outputs = {0, 1, 2};
    view.timeRange = app::TypedRange{2.0, 9.0};
    view.outputRanges[1] = app::TypedRange{0.0, 0.5};
  });
  EXPECT_TRUE(isAsKept("runs_three_outputs", runs()));
}

TEST_F(RunsSnapshots, OfAGateThatIsDrawnAndOfRunsUnderThePointer)
{
  Mouse mouse(view());
  mouse.move(at(5.0, document().scan().valuesOf(0, 30)[5]));
  EXPECT_EQ(document().hoveredRun(), 30u);
  EXPECT_TRUE(isAsKept("runs_pointer", runs()));
  mouse.press(at(6.0, 0.4));
  mouse.move(at(7.0, 0.6));
  mouse.move(at(8.0, 0.8));
  ASSERT_TRUE(waitFor([this] { return window->runs().isSettled(); }));
  EXPECT_TRUE(isAsKept("runs_drag", shown(view())));
  mouse.release(at(8.0, 0.8));
}

TEST_F(RunsSnapshots, OfARectangleToZoomInto)
{
  trigger("tool.zoom");
  Mouse mouse(view());
  mouse.press(at(2.0, 0.2));
  mouse.move(at(4.0, 0.6));
  mouse.move(at(6.0, 0.7));
  EXPECT_TRUE(isAsKept("runs_zoom_rectangle", shown(view())));
  mouse.release(at(6.0, 0.7));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("runs_zoomed", runs()));
}

TEST_F(RunsSnapshots, OfTheListOfGates)
{
  showAlone(window->gates(), {420, 300});
  EXPECT_TRUE(isAsKept("gates", shown(window->gates())));
  document().change("Any", [](app::State& state) {
    state.join = GateJoin::Any;
    state.gates[0].gate.negated = true;
    state.gates[3].on = false;
  });
  document().selectGate(3);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("gates_any", shown(window->gates())));
}

TEST_F(RunsSnapshots, OfTheListOfSets)
{
  showAlone(window->sets(), {420, 300});
  EXPECT_TRUE(isAsKept("sets", shown(window->sets())));
  window->sets().list()->selectAll();
  EXPECT_TRUE(isAsKept("sets_selected", shown(window->sets())));
}

TEST_F(RunsSnapshots, OfTwoSetsThatAreCompared)
{
  app::SetComparison comparison(document(), document().state().sets[0], document().state().sets[1],
                                window.get());
  comparison.show();
  ASSERT_TRUE(waitFor([&] { return comparison.isSettled(); }));
  EXPECT_TRUE(isAsKept("sets_compared", shown(comparison)));
}

} // namespace
} // namespace runsieve::test
