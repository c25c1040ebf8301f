// What the pages and tables of the parameters paint and tell, stroke by stroke and cell by cell.

#include "SnapshotScene.h"

#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/RunTable.h"

namespace runsieve::test {
namespace {

using app::ParameterLook;
using app::ParametersPage;
using Stage = app::PassingWork::Stage;

struct ParameterSnapshots : SnapshotScene
{
  void SetUp() override
  {
    SnapshotScene::SetUp();
    fill();
    showAlone(pane(), {640, 700});
  }

  [[nodiscard]] app::ParametersPane& pane() { return window->parameters(); }
  void look(ParameterLook look)
  {
    show([look](app::ViewState& view) { view.parameterLook = look; });
  }
  [[nodiscard]] bool done(app::PassingWork& work)
  {
    return waitFor([&] { return work.stage() == Stage::Done; }, 60'000);
  }
  template <class Table> [[nodiscard]] QStringList table()
  {
    auto& table = *window->findChild<Table*>();
    showAlone(table, {420, 600});
    return shown(table);
  }
};

TEST_F(ParameterSnapshots, OfCurves)
{
  EXPECT_TRUE(isAsKept("parameters_curves", shown(pane())));
}

TEST_F(ParameterSnapshots, OfDensities)
{
  look(ParameterLook::Densities);
  EXPECT_TRUE(isAsKept("parameters_densities", shown(pane())));
}

TEST_F(ParameterSnapshots, OfScatter)
{
  look(ParameterLook::Scatter);
  EXPECT_TRUE(isAsKept("parameters_scatter", shown(pane())));
}

TEST_F(ParameterSnapshots, OfNoGatesAtAll)
{
  document().change("None", [](app::State& state) { state.gates.clear(); });
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("parameters_no_gates", shown(pane())));
}

TEST_F(ParameterSnapshots, OfLargeCharts)
{
  pane().openLarge(0);
  app::LargeChart& large = *pane().large();
  EXPECT_TRUE(isAsKept("large_curves", shown(large)));
  look(ParameterLook::Densities);
  pane().openLarge(4);
  EXPECT_TRUE(isAsKept("large_density_over_decades", shown(large)));
  look(ParameterLook::Scatter);
  EXPECT_TRUE(isAsKept("large_scatter", shown(large)));
  pane().openLarge(6);
  EXPECT_TRUE(isAsKept("large_texts", shown(large)));
  large.close();
}

TEST_F(ParameterSnapshots, OfPairs)
{
  pane().showPage(ParametersPage::Pairs);
  ASSERT_TRUE(done(pane().pairs()->work()));
  EXPECT_TRUE(isAsKept("page_pairs", shown(pane())));
}

TEST_F(ParameterSnapshots, OfTheBox)
{
  pane().showPage(ParametersPage::Box);
  ASSERT_TRUE(done(pane().box()->work()));
  EXPECT_TRUE(isAsKept("page_box", shown(pane())));
}

TEST_F(ParameterSnapshots, OfParallelCoordinates)
{
  pane().showPage(ParametersPage::Parallel);
  ASSERT_TRUE(waitFor([this] { return pane().parallel()->isSettled(); }));
  document().hover(40);
  EXPECT_TRUE(isAsKept("page_parallel", shown(pane())));
}

TEST_F(ParameterSnapshots, OfTheParameterThatKeysActOn)
{
  QApplication::setActiveWindow(&pane());
  pane().grid()->setFocus();
  pane().grid()->setCurrent(2);
  ASSERT_TRUE(pane().grid()->hasFocus());
  EXPECT_TRUE(isAsKept("parameters_current", shown(*pane().grid())));
  pane().showPage(ParametersPage::Parallel);
  ASSERT_TRUE(waitFor([this] { return pane().parallel()->isSettled(); }));
  pane().parallel()->setFocus();
  pane().parallel()->setCurrent(2);
  ASSERT_TRUE(pane().parallel()->hasFocus());
  EXPECT_TRUE(isAsKept("page_parallel_current", shown(*pane().parallel())));
}

TEST_F(ParameterSnapshots, OfEnoughRuns)
{
  pane().showPage(ParametersPage::Stability);
  ASSERT_TRUE(done(pane().stability()->work()));
  EXPECT_TRUE(isAsKept("page_stability", shown(pane())));
}

TEST_F(ParameterSnapshots, OfTheTableOfParameters)
{
  EXPECT_TRUE(isAsKept("table_parameters", table<app::ParameterTable>()));
}

TEST_F(ParameterSnapshots, OfTheTableOfRuns)
{
  EXPECT_TRUE(isAsKept("table_runs", table<app::RunTable>()));
}

} // namespace
} // namespace runsieve::test
