#include "PaintRecorder.h"
#include "ParametersScene.h"

#include "app/explorer/parameters/PinMarks.h"

#include <gmock/gmock.h>

#include <QHelpEvent>
#include <QToolTip>

#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::ParameterLook;
using app::PinLabel;
using app::State;

/// Charts keep images of what stays as it is.
struct KeptCharts : ParametersScene
{
  /// The charts of a pane that has kept nothing.
  [[nodiscard]] QImage fresh()
  {
    app::ParametersPane other(document);
    other.setPalette(pane->palette());
    other.resize(pane->size());
    other.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&other));
    other.grid()->clearFocus();
    return other.grid()->viewport()->grab().toImage();
  }
  void expectFresh(char const* when)
  {
    ASSERT_TRUE(settle());
    grid().clearFocus();
    EXPECT_EQ(shot(), fresh()) << when;
  }
};

TEST_F(KeptCharts, AreThoseThatWouldBePaintedAnew)
{
  auto scan = lineScan(400);
  ScanParameter& texts = const_cast<Scan&>(*scan).parameters[5];
  texts.texts = {"wild type", "mutant"};
  for (double& value : texts.values) value = value < 0.5 ? 0.0 : 1.0;
  openScan(scan);
  static_cast<void>(shot());
  for (ParameterLook const look : {ParameterLook::Curves, ParameterLook::Densities, ParameterLook::Scatter}) {
    setLook(look);
    expectFresh("another look");
    addGate(gateOnA(0.3, 0.9));
    expectFresh("a gate");
    document.previewGate(0, gateOnA(0.6, 0.9));
    static_cast<void>(shot());
    document.cancelPreview();
    expectFresh("a gate that was moved and left");
    document.change("Log", [](State& state) { state.view.logParameters[1] = true; });
    expectFresh("a logarithmic axis");
    document.change("Output", [](State& state) { state.view.outputs = {1}; });
    expectFresh("another output");
    document.pin({3, 17});
    expectFresh("pinned runs");
    document.undoStack().undo();
    document.undoStack().undo();
    document.undoStack().undo();
    document.pin({});
    expectFresh("steps taken back");
  }
  pane->resize(700, 560);
  QCoreApplication::processEvents();
  expectFresh("another size");
}

TEST_F(KeptCharts, FollowTheColoursOfTheDesktop)
{
  static_cast<void>(shot());
  QPalette dark;
  dark.setColor(QPalette::Window, Qt::black);
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::Text, Qt::white);
  pane->setPalette(dark);
  QCoreApplication::processEvents();
  EXPECT_GT(pixelsOf(shot(), theme().paper), shot().width() * shot().height() / 2);
  EXPECT_LT(theme().paper.lightness(), 60);
}

TEST_F(KeptCharts, OfAnotherScanAreItsOwn)
{
  const QImage before = shot();
  auto scan = lineScan(60);
  for (double& value : const_cast<Scan&>(*scan).parameters[2].values) value *= 7.0;
  openScan(scan);
  EXPECT_NE(shot(), before);
  expectFresh("another scan");
}

TEST_F(KeptCharts, LightUpUnderThePointer)
{
  const QImage before = shot();
  Mouse(*grid().viewport()).move(grid().cell(2).center());
  EXPECT_NE(shot(), before);
  Mouse(*grid().viewport()).move(grid().cell(3).center());
  Mouse(*grid().viewport())
      .move(QPointF(grid().viewport()->width() - 1.0, grid().viewport()->height() - 1.0));
  EXPECT_EQ(shot(), before);
}

TEST_F(KeptCharts, StayAsLongAsTheSameRunsPass)
{
  auto const version = [this] { return pane->runs().version(); };
  addGate(gateOnA(0.3, 0.9));
  const std::uint64_t first = version();
  document.hover(3);
  document.pin({3});
  document.previewGate(0, gateOnA(0.3 - 1e-9, 0.9));
  EXPECT_EQ(version(), first);
  document.previewGate(0, gateOnA(0.5, 0.9));
  EXPECT_NE(version(), first);
  document.cancelPreview();
  openScan(lineScan());
  EXPECT_NE(version(), first);
}

const QRectF plot(0.0, 0.0, 200.0, 100.0);

app::Theme paper()
{
  return app::Theme::ofPaper(QApplication::font());
}

TEST(PinLabels, StandAtTheirPlacesAndWithinThePlot)
{
  const std::vector<PinLabel> labels =
      app::pinLabels({100.0, 0.0, 200.0}, {"12", "345", "678"}, plot, paper());
  ASSERT_EQ(labels.size(), 3u);
  EXPECT_EQ(labels[0].pin, 1u);
  EXPECT_DOUBLE_EQ(labels[0].left, 0.0);
  EXPECT_LT(labels[1].left, 100.0);
  EXPECT_GT(labels[1].left, 80.0);
  EXPECT_LT(labels[2].left, 200.0);
  for (PinLabel const& label : labels) EXPECT_EQ(label.line, 0);
}

TEST(PinLabels, NeverTouchAndAreLeftOutWhereTheyAreTooMany)
{
  constexpr double between = 5.0;
  for (unsigned seed = 0; seed < 60; ++seed) {
    std::vector<double> places;
    QStringList names;
    for (std::size_t i = 0; i < 60; ++i) {
      places.push_back(200.0 * scattered(seed, i));
      names << QString("run %1").arg(i) + QString(static_cast<int>((seed + 7 * i) % 5), 'x');
    }
    const std::vector<PinLabel> labels = app::pinLabels(places, names, plot, paper());
    EXPECT_GT(labels.size(), 3u);
    EXPECT_LT(labels.size(), 20u);
    for (PinLabel const& a : labels)
      for (PinLabel const& b : labels) {
        if (&a != &b && a.line == b.line && a.left <= b.left) {
          EXPECT_LE(a.left + a.width + between, b.left) << seed;
        }
        if (a.line > b.line) {
          EXPECT_TRUE(places[a.pin] <= b.left - between || places[a.pin] >= b.left + b.width + between)
              << "a line through a name, " << seed;
        }
      }
  }
}

TEST_F(DocumentScene, NamesOfPinsThatStandHigherAreTiedToTheirMarks)
{
  document.pin({4, 9});
  const double first = std::min(scattered(0, 4), scattered(0, 9));
  const double second = std::max(scattered(0, 4), scattered(0, 9));
  // So near that the names would touch, and so far that the line down passes the lower one.
  const double away = 1.5 + QFontMetricsF(paper().font).horizontalAdvance("10") / 2.0 + 5.0;
  const double all = (second - first) * 250.0 / away;
  const app::ChartFrame frame({0.0, 0.0, 300.0, 200.0}, {AxisMap(first - 0.5 * all, first + 0.5 * all), "k"},
                              {AxisMap(0.0, 1.0), ""}, paper());
  ASSERT_NEAR(frame.xAt(second) - frame.xAt(first), away, 2.0);
  const Painting painted =
      painting({300, 200}, [&](QPainter& painter) { app::paintPins(painter, document, 0, frame, paper()); });
  const auto lines = painted.of(Drawn::Kind::Line);
  ASSERT_EQ(lines.size(), 3u) << "two marks, and from one of them to its name";
  EXPECT_LT(lines[2].box().bottom(), lines[0].box().top());
  const double x = lines[2].points.first().x();
  EXPECT_TRUE(x == lines[0].points.first().x() || x == lines[1].points.first().x());
  EXPECT_EQ(painted.of(Drawn::Kind::Text).size(), 2u);
}

TEST_F(DocumentScene, GroupsOfOtherDataAreOthers)
{
  app::ParameterRuns runs(document);
  const auto before = runs.version();
  document.open(lineScan(), {});
  EXPECT_NE(runs.version(), before);
}

TEST(PinLabels, AreCutWhereTheyAreLong)
{
  const std::vector<PinLabel> labels =
      app::pinLabels({100.0}, {"a run with a name that is longer than the chart"}, plot, paper());
  ASSERT_EQ(labels.size(), 1u);
  EXPECT_LT(QFontMetricsF(paper().font).horizontalAdvance(labels[0].text), 80.0);
}

TEST(PinLabels, OfRunsWithoutAValueAreNone)
{
  EXPECT_TRUE(app::pinLabels({std::numeric_limits<double>::quiet_NaN()}, {"1"}, plot, paper()).empty());
  EXPECT_TRUE(app::pinLabels({5.0}, {"1"}, QRectF(0.0, 0.0, 100.0, 4.0), paper()).empty());
}

TEST_F(KeptCharts, ShowPinnedRunsWithTheirNames)
{
  const QColor color = theme().sets[0];
  const int before = pixelsOf(shot(), color);
  document.pin({4});
  EXPECT_GT(pixelsOf(shot(), color), before + 6 * 8);
  const QPoint at = grid().cell(2).center().toPoint();
  QHelpEvent event(QEvent::ToolTip, at, grid().viewport()->mapToGlobal(at));
  QApplication::sendEvent(grid().viewport(), &event);
  EXPECT_THAT(QToolTip::text().toStdString(), testing::HasSubstr("run 5: "));
  QToolTip::hideText();
}

TEST_F(KeptCharts, NamePinnedRunsInTheirColoursWhateverTheOrder)
{
  document.pin({8});
  document.pin({3, 8});
  PaintRecorder paper;
  QPainter painter(&paper);
  const app::ChartFrame frame({0, 0, 600, 300}, {app::AxisMap(-0.2, 1.2), {}}, {app::AxisMap(0, 1), {}},
                              theme());
  app::paintPins(painter, document, 2, frame, theme());
  const Painting drawn = paper.painting();
  EXPECT_EQ(drawn.text("9")->pen.color(), theme().sets[0]);
  EXPECT_EQ(drawn.text("4")->pen.color(), theme().sets[1]);
}

TEST_F(KeptCharts, TellOfManyPinnedRunsTheFirstOnes)
{
  std::set<std::size_t> pins;
  for (std::size_t run = 0; run < 30; ++run) pins.insert(run);
  document.pin(pins);
  const QStringList lines = app::pinLines(document, 2);
  EXPECT_EQ(lines.size(), 11);
  EXPECT_EQ(lines.last(), "and 20 more pinned runs");
  EXPECT_FALSE(shot().isNull());
}

} // namespace
} // namespace runsieve::test
