// From a file to a figure as a user goes, with a picture at each step. If RUNSIEVE_JOURNEY_PICTURES names a
// folder the pictures are written there: those of the guide are made so.

#include "WindowScene.h"

#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/parameters/BoxPage.h"
#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/PairsPage.h"
#include "app/explorer/parameters/ParallelView.h"
#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/window/FigureOf.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#include <cstdlib>

namespace runsieve::test {
namespace {

struct Journey : WindowScene
{
  void SetUp() override
  {
    WindowScene::SetUp();
    window->resize(1180, 800);
    trigger("file.example");
    ASSERT_TRUE(waitFor([this] { return document().isOpen() && window->isSettled(); }, 60'000));
    const auto output = document().scan().findOutput("cI");
    ASSERT_TRUE(output);
    document().change("Show output", [&](app::State& state) { state.view.outputs = {*output}; });
    ASSERT_TRUE(settle());
  }

  /// What a user sees, dialogs above the window.
  void picture(char const* name, QWidget* dialog = nullptr)
  {
    if (!document().previewedGate()) { // the pointer leaves, so that nothing is told of a run
      QEvent leave(QEvent::Leave);
      QApplication::sendEvent(&view(), &leave);
    }
    // While a gate is being drawn the numbers are never those of the passing runs.
    ASSERT_TRUE(document().previewedGate() ? waitFor([this] { return window->runs().isSettled(); })
                                           : settle());
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    QImage shot = window->grab().toImage();
    if (dialog) {
      const QImage above = dialog->grab().toImage();
      QPainter painter(&shot);
      const QPoint corner((shot.width() - above.width()) / 2, (shot.height() - above.height()) / 2);
      painter.fillRect(QRect(corner, above.size()).adjusted(-1, -1, 1, 1), Qt::gray);
      painter.drawImage(corner, above);
    }
    EXPECT_GT(colorsIn(shot), 50) << name << " is nearly empty";
    char const* folder = std::getenv("RUNSIEVE_JOURNEY_PICTURES");
    EXPECT_TRUE(!folder || shot.save(QString("%1/%2.png").arg(folder, name)));
  }

  static int colorsIn(QImage const& image)
  {
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); y += 3)
      for (int x = 0; x < image.width(); x += 3) colors.insert(image.pixel(x, y));
    return static_cast<int>(colors.size());
  }

  void drawEarlyGate() { Mouse(view()).drag(at(27.5, 3000.0), at(32.5, 9000.0)); }
  void drawLateGate() { Mouse(view()).drag(at(237.5, 500.0), at(242.5, 20'000.0)); }
  void raise(char const* pane) { window->findChild<QDockWidget*>(pane)->raise(); }
  [[nodiscard]] std::size_t significant()
  {
    std::size_t count = 0;
    for (ParameterComparison const& parameter : document().comparison()->parameters)
      count += parameter.significant ? 1 : 0;
    return count;
  }
};

TEST_F(Journey, AFirstSieve)
{
  picture("sieve_1_all_runs");

  Mouse mouse(view());
  mouse.press(at(27.5, 3000.0));
  mouse.move(at(30.0, 6000.0));
  mouse.move(at(32.5, 9000.0));
  picture("sieve_2_a_gate_is_drawn");
  mouse.release(at(32.5, 9000.0));
  ASSERT_TRUE(settle());
  EXPECT_GT(document().passing().count(), 200u);
  EXPECT_LT(document().passing().count(), 500u);
  EXPECT_EQ(document().comparison()->parameters[0].name, "protein_halflife");
  picture("sieve_3_parameters_are_ranked");

  trigger("focus.faded");
  picture("sieve_4_the_others_fade");

  drawLateGate();
  ASSERT_TRUE(settle());
  EXPECT_EQ(document().state().gates.size(), 2u);
  EXPECT_GE(significant(), 1u);
  picture("sieve_5_a_second_gate");

  const std::size_t before = document().passing().count();
  Mouse(view()).drag(at(240.0, document().state().gates[1].gate.range.low), at(240.0, 3000.0));
  ASSERT_TRUE(settle());
  EXPECT_LT(document().passing().count(), before);
  picture("sieve_6_a_side_is_dragged");
  trigger("edit.undo");
  EXPECT_EQ(document().passing().count(), before);

  window->parameters().openLarge(document().comparison()->parameters[0].parameter);
  ASSERT_NE(window->parameters().large(), nullptr);
  picture("sieve_7_one_parameter_large", window->parameters().large());
  window->parameters().large()->close();

  raise("parameterTable");
  picture("sieve_8_all_numbers");

  raise("sets");
  window->sets().keepPassing("oscillating");
  ASSERT_EQ(document().state().sets.size(), 1u);
  picture("sieve_9_a_set_is_kept");

  app::ExportDialog dialog(app::figureOf(document(), window->runs().zoom()), document().state().view,
                           window.get());
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  QTest::qWait(500);
  picture("sieve_10_a_figure", &dialog);
  bool written = false;
  QObject::connect(&dialog, &app::ExportDialog::saved, [&] { written = true; });
  dialog.save(file("figure.pdf"));
  ASSERT_TRUE(waitFor([&] { return written; })) << dialog.outcome().toStdString();
  EXPECT_GT(QFileInfo(file("figure.pdf")).size(), 20'000);
  EXPECT_LT(QFileInfo(file("figure.pdf")).size(), 500'000);
}

TEST_F(Journey, SeveralOutputsBandsAndAZoom)
{
  drawEarlyGate();
  ASSERT_TRUE(window->runs().addOutput());
  ASSERT_TRUE(window->runs().addOutput());
  picture("outputs_one_above_the_other");
  trigger("look.bands");
  picture("bands");
  Mouse(view()).wheel(at(60.0, 2000.0), 4);
  picture("zoomed");
  EXPECT_FALSE(window->runs().zoom().isAll());
  trigger("zoom.reset");
  EXPECT_TRUE(window->runs().zoom().isAll());
}

TEST_F(Journey, PairsBoxAndParallelCoordinates)
{
  drawEarlyGate();
  drawLateGate();
  using Page = app::ParametersPane::Page;
  app::ParametersPane& pane = window->parameters();
  auto const isDone = [](app::PassingWork& work) {
    return waitFor([&] { return work.stage() == app::PassingWork::Stage::Done; }, 60'000);
  };
  pane.showPage(Page::Pairs);
  ASSERT_TRUE(isDone(pane.pairs()->work()));
  picture("pairs_page");
  pane.showPage(Page::Box);
  ASSERT_TRUE(isDone(pane.box()->work()));
  picture("box_page");
  pane.showPage(Page::Parallel);
  ASSERT_TRUE(waitFor([&] { return pane.parallel()->isSettled(); }));
  picture("parallel");
}

TEST_F(Journey, ASessionComesBackNextYear)
{
  writeScan(document().scan(), file("scan.csv").toStdString());
  window->open(file("scan.csv"));
  ASSERT_TRUE(waitFor([this] { return !window->files().isBusy(); }, 60'000));
  document().change("Show output",
                    [&](app::State& state) { state.view.outputs = {*document().scan().findOutput("cI")}; });
  ASSERT_TRUE(settle());
  drawEarlyGate();
  window->sets().keepPassing("early");
  trigger("focus.hidden");
  Mouse(view()).wheel(at(100.0, 2000.0), 3);
  const RunSet passing = document().passing();
  const app::AxisMap time = view().frame().horizontal();
  ASSERT_TRUE(window->files().saveTo(file("year.sieve")));

  window = std::make_unique<app::ExplorerWindow>();
  window->show();
  window->open(file("year.sieve"));
  ASSERT_TRUE(waitFor([this] { return document().isOpen() && window->isSettled(); }, 60'000));
  EXPECT_EQ(document().passing(), passing);
  ASSERT_EQ(document().state().sets.size(), 1u);
  EXPECT_EQ(document().state().sets[0].name, "early");
  EXPECT_EQ(document().state().view.focus, app::Focus::Hidden);
  EXPECT_NEAR(view().frame().horizontal().low(), time.low(), 1e-9);
  EXPECT_EQ(document().undoStack().count(), 0);
  picture("session");
}

TEST_F(Journey, SmallWindowsStayReadable)
{
  drawEarlyGate();
  window->resize(800, 600);
  picture("small_window");
  EXPECT_LE(window->width(), 800);
  EXPECT_LE(window->height(), 600);
  EXPECT_GT(view().frame().plot().width(), 150.0);
  EXPECT_GT(view().frame().plot().height(), 80.0);
}

TEST_F(Journey, DarkColours)
{
  drawEarlyGate();
  trigger("theme.dark");
  picture("dark");
  trigger("theme.desktop");
}

TEST_F(Journey, AllControlsHaveNamesForThoseWhoCannotSeeThem)
{
  drawEarlyGate();
  window->sets().keepPassing("early");
  for (QDockWidget* dock : window->findChildren<QDockWidget*>()) dock->raise();
  for (QWidget* control : window->findChildren<QWidget*>()) {
    const bool isControl =
        control->inherits("QAbstractButton") || control->inherits("QComboBox") ||
        control->inherits("QAbstractItemView") || control->inherits("QAbstractSpinBox") ||
        (control->inherits("QLineEdit") && !control->parentWidget()->inherits("QComboBox") &&
         !control->parentWidget()->inherits("QAbstractSpinBox"));
    const QString own = control->objectName();
    if (!isControl || own.startsWith("qt_") || control->inherits("QDockWidgetTitleButton")) continue;
    if (control->inherits("QComboBoxListView") || control->inherits("QTableCornerButton") ||
        control->inherits("QHeaderView") || control->inherits("QLineEditIconButton"))
      continue; // Qt's own parts
    const QString text = control->property("text").toString();
    EXPECT_FALSE(control->accessibleName().isEmpty() && text.isEmpty() && control->toolTip().isEmpty())
        << control->metaObject()->className() << " in " << control->parentWidget()->metaObject()->className();
  }
}

} // namespace
} // namespace runsieve::test
