// What is painted in figures, stroke by stroke, and what the dialog that makes them looks like.

#include "SnapshotScene.h"

#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/figure/FigurePreview.h"
#include "app/explorer/figure/PaintFigure.h"
#include "app/explorer/window/FigureOf.h"

namespace runsieve::test {
namespace {

struct FigureSnapshots : SnapshotScene
{
  app::FigureOptions options;

  void SetUp() override
  {
    SnapshotScene::SetUp();
    fill();
    options.family = "DejaVu Sans";
  }
  [[nodiscard]] QStringList figure()
  {
    constexpr double pixelsPerUnit = 0.2;
    const QRectF paper(QPointF(), app::figureSize(options));
    const app::FigureContent content = app::figureOf(document(), window->runs().zoom());
    return Snapshot::of(painting(paper.size().toSize(), [&](QPainter& painter) {
      app::paintFigure(painter, paper, content, options, pixelsPerUnit);
    }));
  }
};

TEST_F(FigureSnapshots, OfAFigureAsItIsOffered)
{
  EXPECT_TRUE(isAsKept("figure", figure()));
}

TEST_F(FigureSnapshots, OfAFigureWithATitleAndLittleElse)
{
  options.title = "What makes them high";
  options.gates = options.legend = options.counts = options.thresholds = options.scaleBar = false;
  options.palette = app::FigurePalette::ColourBlind;
  options.width = 90.0;
  options.height = 120.0;
  options.runsLook = app::RunsLook::Lines;
  options.strongest = 2;
  EXPECT_TRUE(isAsKept("figure_plain", figure()));
}

TEST_F(FigureSnapshots, OfBandsAndDensities)
{
  options.runsLook = app::RunsLook::Bands;
  options.parameterLook = app::ParameterLook::Densities;
  options.parameters = {6, 4, 5};
  EXPECT_TRUE(isAsKept("figure_bands", figure()));
}

TEST_F(FigureSnapshots, OfBandsOfWholeRunsAndScatter)
{
  options.runsLook = app::RunsLook::WholeBands;
  options.parameterLook = app::ParameterLook::Scatter;
  options.outputs = {1};
  EXPECT_TRUE(isAsKept("figure_whole_bands", figure()));
}

TEST_F(FigureSnapshots, OfAFigureWithoutGates)
{
  document().change("None", [](app::State& state) {
    state.gates.clear();
    state.sets.clear();
    state.view.outputs = {2};
    state.view.logOutputs[2] = true;
  });
  document().pin({});
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("figure_without_gates", figure()));
}

TEST_F(FigureSnapshots, OfColours)
{
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(40, 42, 46));
  app::FigureOptions colourBlind;
  colourBlind.palette = app::FigurePalette::ColourBlind;
  QStringList lines;
  for (app::Theme const& theme :
       {app::Theme::ofPalette(QPalette(Qt::white), {}), app::Theme::ofPalette(dark, {}),
        app::figureTheme(options), app::figureTheme(colourBlind)}) {
    lines << QString("theme line %1 curve %2 tick %3 gap %4")
                 .arg(theme.line)
                 .arg(theme.curve)
                 .arg(theme.tick)
                 .arg(theme.gap);
    for (QColor const& color : {theme.paper, theme.ink, theme.faint, theme.all, theme.passing, theme.gate,
                                theme.chosen, theme.hover})
      lines << color.name();
    for (QColor const& color : theme.sets) lines << "set " + color.name();
  }
  EXPECT_TRUE(isAsKept("colours", lines));
}

TEST_F(FigureSnapshots, OfTheDialog)
{
  app::ExportDialog dialog(app::figureOf(document(), window->runs().zoom()), document().state().view,
                           window.get());
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  QTest::qWait(500); // until the preview begins
  ASSERT_TRUE(waitFor([&] { return dialog.preview().isSettled(); }));
  EXPECT_TRUE(isAsKept("figure_dialog", shown(dialog), nearInWindow));
  dialog.reject();
}

} // namespace
} // namespace runsieve::test
