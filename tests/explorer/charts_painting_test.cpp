#include "DocumentScene.h"
#include "PaintRecorder.h"

#include "app/explorer/charts/BandsPicture.h"
#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/DensityLegend.h"
#include "app/explorer/charts/PinColors.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/charts/RoundedValue.h"
#include "app/explorer/charts/StackedPlaces.h"
#include "app/explorer/charts/TextBars.h"

#include <runsieve/core/coverage/ColorRamp.h>
#include <runsieve/core/coverage/DensityScale.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::BandsLook;
using app::ChartAxis;
using app::ChartFrame;
using app::LegendLine;
using app::RunBands;
using app::Theme;
using app::Tick;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
using Kind = Drawn::Kind;

struct PaintedCharts : testing::Test
{
  Theme theme = Theme::ofPaper(QFont());
  QFontMetricsF metrics{theme.font};
  QRectF plot{50, 20, 500, 300};

  [[nodiscard]] Painting frameOf(ChartFrame const& frame) const
  {
    PaintRecorder paper;
    QPainter painter(&paper);
    frame.paint(painter, theme);
    EXPECT_TRUE(isAsNew(painter));
    return paper.painting();
  }
  [[nodiscard]] Painting legendOf(std::vector<LegendLine> const& lines) const
  {
    PaintRecorder paper;
    QPainter painter(&paper);
    app::paintLegend(painter, plot, lines, theme);
    EXPECT_TRUE(isAsNew(painter));
    return paper.painting();
  }
};

/// The shades of a picture whose pixels have these numbers of runs.
DensityScale shadesOf(std::vector<std::uint32_t> runs)
{
  for (std::uint32_t& each : runs) each *= RunCoverage::perRun;
  CountHistogram counts;
  counts.add(runs.data(), runs.size());
  return DensityScale(DensityScale::Kind::logarithmic, counts);
}

TEST_F(PaintedCharts, MarksWithNumbersAreLongerThanThoseBetween)
{
  const ChartFrame frame({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, {AxisMap(0, 1), "y"}, theme);
  const std::vector<Drawn> lines = frameOf(frame).of(Kind::Line);
  auto const lengthAt = [&](double x) {
    for (Drawn const& line : lines) {
      const QRectF box = line.box();
      if (box.width() < 0.1 && std::fabs(box.center().x() - x) <= 1.0 && box.height() < 20.0)
        return box.height();
    }
    return 0.0;
  };
  int small = 0;
  for (Tick const& tick : frame.horizontalTicks()) {
    const double length = lengthAt(frame.xAt(tick.value));
    if (tick.label.isEmpty()) {
      EXPECT_GT(length, 1.0);
      EXPECT_LT(length, 0.8 * theme.tick);
      ++small;
    } else {
      EXPECT_EQ(length, theme.tick) << tick.label.toStdString();
    }
  }
  EXPECT_GT(small, 5);
}

TEST_F(PaintedCharts, MarksPointAwayFromThePlot)
{
  const ChartFrame frame({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, {AxisMap(0, 1), "y"}, theme);
  const QRectF within = frame.plot().adjusted(1.0, 1.0, -1.0, -1.0);
  const std::vector<Drawn> lines = frameOf(frame).of(Kind::Line);
  ASSERT_GT(lines.size(), 10u);
  for (Drawn const& line : lines) {
    EXPECT_FALSE(within.contains(line.points[0])) << line.points[0].x() << ' ' << line.points[0].y();
    EXPECT_FALSE(within.contains(line.points[1])) << line.points[1].x() << ' ' << line.points[1].y();
    EXPECT_TRUE(line.isWithin({0, 0, 500, 300}));
    EXPECT_EQ(line.pen.color(), theme.ink);
  }
}

TEST_F(PaintedCharts, AxesReachFromCornerToCornerOfThePlot)
{
  const ChartFrame frame({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, {AxisMap(0, 1), "y"}, theme);
  double widest = 0.0;
  double highest = 0.0;
  for (Drawn const& line : frameOf(frame).of(Kind::Line)) {
    widest = std::max(widest, line.box().width());
    highest = std::max(highest, line.box().height());
  }
  EXPECT_NEAR(widest, frame.plot().width(), 1.5);
  EXPECT_NEAR(highest, frame.plot().height(), 1.5);
}

TEST_F(PaintedCharts, LinesCoverWholePixels)
{
  const ChartFrame frame({0.3, 0.7, 500, 300}, {AxisMap(0, 7), "x"}, {AxisMap(0, 1), "y"}, theme);
  for (Drawn const& line : frameOf(frame).of(Kind::Line)) {
    const QRectF box = line.box();
    const double across = box.width() < box.height() ? box.left() : box.top();
    EXPECT_EQ(across - std::floor(across), 0.5);
  }
}

TEST_F(PaintedCharts, TextsOfAChartKeepClearOfOneAnotherAndWithinIt)
{
  for (QSizeF const& size : {QSizeF(160, 110), QSizeF(300, 200), QSizeF(900, 500)}) {
    const ChartFrame frame({10, 10, size.width(), size.height()}, {AxisMap(0, 10000), "time (min)"},
                           {AxisMap(-1000, 1000), "output (nM)"}, theme);
    std::vector<QRectF> boxes;
    for (Drawn const& text : frameOf(frame).of(Kind::Text)) {
      const QPointF from = text.points[0];
      const QPointF to = text.points[1];
      const bool upright = std::fabs(to.y() - from.y()) > std::fabs(to.x() - from.x());
      boxes.push_back(upright
                          ? QRectF(from.x() - metrics.ascent(), to.y(), metrics.height(), from.y() - to.y())
                          : QRectF(from.x(), from.y() - 0.7 * metrics.ascent(), to.x() - from.x(),
                                   0.7 * metrics.ascent()));
      EXPECT_TRUE(QRectF(9, 9, size.width() + 2, size.height() + 2).contains(boxes.back()))
          << text.text.toStdString() << " in " << size.width();
      EXPECT_FALSE(frame.plot().intersects(boxes.back())) << text.text.toStdString();
    }
    EXPECT_GE(boxes.size(), 4u);
    for (std::size_t i = 0; i < boxes.size(); ++i)
      for (std::size_t k = i + 1; k < boxes.size(); ++k)
        EXPECT_FALSE(boxes[i].intersects(boxes[k])) << size.width() << ": " << i << ' ' << k;
  }
}

TEST_F(PaintedCharts, TitlesStandInTheMiddleOfTheirAxes)
{
  const ChartFrame frame({0, 0, 500, 300}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "value"}, theme);
  const Painting paper = frameOf(frame);
  ASSERT_NE(paper.text("time"), nullptr);
  EXPECT_NEAR(paper.text("time")->box().center().x(), frame.plot().center().x(), 2.0);
  ASSERT_NE(paper.text("value"), nullptr);
  EXPECT_NEAR(paper.text("value")->box().center().y(), frame.plot().center().y(), 2.0);
  EXPECT_GT(paper.text("value")->points[0].y(), paper.text("value")->points[1].y()) << "read upwards";
  EXPECT_LT(paper.text("value")->box().left(), frame.left());
}

TEST_F(PaintedCharts, LongTitlesAreCutInTheirMiddle)
{
  const QString name = "an output with a name that is far longer than the axis beside which it stands";
  const ChartFrame frame({0, 0, 200, 150}, {AxisMap(0, 10), name}, {AxisMap(0, 1), name}, theme);
  int cut = 0;
  for (Drawn const& text : frameOf(frame).of(Kind::Text))
    if (text.text.startsWith("an")) {
      ++cut;
      EXPECT_TRUE(text.text.contains(QString::fromUtf8("\u2026")));
      EXPECT_TRUE(QRectF(-0.5, -0.5, 201, 151).contains(text.box().topLeft()));
      EXPECT_TRUE(QRectF(-0.5, -0.5, 201, 151).contains(text.box().bottomRight()));
    }
  EXPECT_EQ(cut, 2);
}

TEST_F(PaintedCharts, AnAxisWithoutNumbersHasMarksAloneAndLeavesTheRoomToThePlot)
{
  const ChartAxis vertical{AxisMap(0, 1), "y"};
  const ChartFrame with({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, vertical, theme);
  const ChartFrame without({0, 0, 500, 300}, {AxisMap(0, 10), "", false}, vertical, theme);
  EXPECT_GT(without.plot().height(), with.plot().height() + metrics.height());
  EXPECT_EQ(frameOf(without).text("10"), nullptr);
  EXPECT_NE(frameOf(with).text("10"), nullptr);
  EXPECT_EQ(frameOf(without).of(Kind::Line).size(),
            2 + without.horizontalTicks().size() + without.verticalTicks().size());
  const ChartFrame bare({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, {AxisMap(0, 1), "", false}, theme);
  EXPECT_LT(bare.left(), with.left() - metrics.height());
  EXPECT_EQ(frameOf(bare).text("0.5"), nullptr);
}

TEST_F(PaintedCharts, WhereNotEvenTwoNumbersHaveRoomOneStandsAlone)
{
  bool alone = false;
  for (double width = 200.0; width > 30.0; width -= 2.0) {
    const ChartFrame frame({0, 0, width, 150}, {AxisMap(100'000, 900'000), "x"}, {AxisMap(0, 1), "", false},
                           theme);
    std::vector<double> numbers;
    for (Tick const& tick : frame.horizontalTicks())
      if (!tick.label.isEmpty()) numbers.push_back(tick.value);
    ASSERT_FALSE(numbers.empty()) << width;
    alone = alone || numbers.size() == 1;
  }
  EXPECT_TRUE(alone);
}

TEST_F(PaintedCharts, TextsInPlaceOfNumbersStandAtTheirPlaces)
{
  ChartAxis horizontal{AxisMap(-0.5, 1.5), "medium"};
  horizontal.texts = {{0.0, "LB"}, {1.0, "M9"}};
  const ChartFrame frame({0, 0, 500, 300}, horizontal, {AxisMap(0, 1), "y"}, theme);
  const Painting paper = frameOf(frame);
  ASSERT_NE(paper.text("M9"), nullptr);
  EXPECT_NEAR(paper.text("M9")->box().center().x(), frame.xAt(1.0), 1.0);
  EXPECT_NEAR(paper.text("LB")->box().center().x(), frame.xAt(0.0), 1.0);
}

TEST_F(PaintedCharts, ALegendTellsWhatColoursAndShadesStandFor)
{
  const Painting paper =
      legendOf({{"all runs", Qt::darkBlue, shadesOf({1, 20, 1500})}, {"passing", Qt::red}});
  EXPECT_EQ(paper.texts(), (QStringList{"all runs", QString::fromUtf8("1\u20131500"), "passing"}));
  const std::vector<Drawn> bars = paper.of(Kind::Rectangle);
  ASSERT_EQ(bars.size(), 2u);
  EXPECT_NE(bars[0].brush.gradient(), nullptr);
  EXPECT_EQ(bars[1].brush.color(), QColor(Qt::red));
  EXPECT_LT(bars[1].box().height(), bars[0].box().height()) << "a colour is shown as a line";
  EXPECT_NEAR(bars[1].box().center().y(), bars[0].box().center().y(), 0.01);
  EXPECT_EQ(bars[0].box().width(), bars[1].box().width());
  for (Drawn const& bar : bars) EXPECT_EQ(bar.pen.style(), Qt::NoPen);
  EXPECT_EQ(paper.text("all runs")->pen.color(), theme.ink);
  EXPECT_EQ(paper.text("passing")->pen.color(), theme.ink);
}

TEST_F(PaintedCharts, TheBarOfShadesGoesFromTheColourOfFewRunsToThatOfMany)
{
  const DensityScale shades = shadesOf({2, 20, 200});
  const Painting paper = legendOf({{"all runs", Qt::darkBlue, shades}});
  const Drawn bar = paper.of(Kind::Rectangle).at(0);
  auto const* gradient = static_cast<QLinearGradient const*>(bar.brush.gradient());
  ASSERT_NE(gradient, nullptr);
  const ColorRamp ramp({0, 0, 128}, false);
  auto const colorOf = [&](double runs) {
    const Color color = ramp.at(shades.shade(runs));
    return QColor(color[0], color[1], color[2]);
  };
  EXPECT_EQ(gradient->stops().first(), QGradientStop(0.0, colorOf(2.0)));
  EXPECT_EQ(gradient->stops().last(), QGradientStop(1.0, colorOf(200.0)));
  EXPECT_EQ(gradient->stops().at(gradient->stops().size() / 2), QGradientStop(0.5, colorOf(20.0)));
  EXPECT_EQ(gradient->start().x(), bar.box().left());
  EXPECT_EQ(gradient->finalStop().x(), bar.box().right());
}

TEST_F(PaintedCharts, ShadesOfASingleCountTellThatOne)
{
  EXPECT_EQ(legendOf({{"all runs", Qt::darkBlue, shadesOf({7, 7})}}).texts(), (QStringList{"all runs", "7"}));
}

TEST_F(PaintedCharts, ALineOfALegendWithoutAColourIsAPaleNote)
{
  const Painting paper = legendOf({{"median", {}}});
  EXPECT_EQ(paper.texts(), QStringList{"median"});
  EXPECT_TRUE(paper.of(Kind::Rectangle).empty());
  EXPECT_EQ(paper.text("median")->pen.color(), theme.faint);
}

TEST_F(PaintedCharts, ALegendInWordsTellsOfRunsAtAPoint)
{
  EXPECT_EQ(app::legendText({"passing", Qt::red}), "passing");
  EXPECT_EQ(app::legendText({"all", Qt::red, shadesOf({1, 1})}), "all: 1 run at a point");
  EXPECT_EQ(app::legendText({"all", Qt::red, shadesOf({7, 7})}), "all: 7 runs at a point");
  EXPECT_EQ(app::legendText({"all", Qt::red, shadesOf({1, 7})}),
            QString::fromUtf8("all: 1\u20137 runs at a point"));
}

/// Five lines of a legend in rooms of different widths.
struct PaintedLegend : PaintedCharts
{
  std::vector<LegendLine> lines = {{"all runs", Qt::darkBlue, shadesOf({1, 20, 1500})},
                                   {"passing", Qt::red, shadesOf({1, 90})},
                                   {"a set of runs with a long name", Qt::green},
                                   {"another set of runs", Qt::cyan},
                                   {"a note", {}}};

  [[nodiscard]] Painting inRoom(double width)
  {
    plot = QRectF(50, 20, width, metrics.height());
    return legendOf(lines);
  }
  /// The room that all lines take in full.
  [[nodiscard]] double fullWidth()
  {
    const Painting paper = inRoom(5000.0);
    return plot.right() - paper.of(Kind::Rectangle).at(0).box().left();
  }
};

TEST_F(PaintedLegend, EndsAtTheRightOfItsRoom)
{
  const Painting paper = inRoom(2000.0);
  double end = 0.0;
  for (Drawn const& each : paper.all) end = std::max(end, each.box().right());
  EXPECT_LE(end, plot.right() + 25.0); // fonts of the recorder are a little wider
  EXPECT_GT(end, plot.right() - 25.0);
}

TEST_F(PaintedLegend, StandsOnOneLineAndNothingTouches)
{
  const Painting paper = inRoom(2000.0);
  EXPECT_EQ(paper.texts().size(), 7);
  double last = 0.0;
  for (Drawn const& each : paper.all) {
    EXPECT_GT(each.box().left(), last) << each.text.toStdString();
    last = each.box().right();
    EXPECT_GE(each.box().top(), plot.top());
    EXPECT_LE(each.box().bottom(), plot.bottom());
  }
}

TEST_F(PaintedLegend, InASmallRoomBarsBecomeShortThenNumbersGoThenTextsAreCutThenLinesGo)
{
  const double full = fullWidth();
  auto const barIn = [this](double width) { return inRoom(width).of(Kind::Rectangle).at(0).box().width(); };
  auto const hasNumbers = [this](double width) {
    return inRoom(width).texts().contains(QString::fromUtf8("1\u20131500"));
  };
  auto const hasLongName = [this](double width) {
    return inRoom(width).texts().contains("a set of runs with a long name");
  };
  const double wide = barIn(full + 1.0);
  EXPECT_LT(barIn(full - 1.0), wide);
  EXPECT_TRUE(hasNumbers(full - 1.0)) << "bars are the first to give way";
  double width = full;
  while (width > 0.0 && hasNumbers(width)) width -= 4.0;
  EXPECT_EQ(barIn(width), barIn(full - 1.0)) << "then numbers";
  EXPECT_TRUE(hasLongName(width));
  while (width > 0.0 && hasLongName(width)) width -= 4.0;
  EXPECT_EQ(barIn(width), barIn(full - 1.0)) << "then long texts are cut";
  while (width > 0.0 && barIn(width) == barIn(full - 1.0)) width -= 4.0;
  EXPECT_GT(barIn(width), 5.0) << "bars once more";
  EXPECT_EQ(inRoom(width).texts().size(), 5);
  while (width > 0.0 && inRoom(width).texts().size() == 5) width -= 4.0;
  EXPECT_EQ(inRoom(width).texts().size(), 4) << "then lines at the end go";
  EXPECT_EQ(inRoom(width).texts().first(), "all runs");
  EXPECT_TRUE(inRoom(20.0).all.empty());
}

TEST_F(PaintedLegend, KeepsThePassingRunsLongerThanTheGround)
{
  lines = {{"all runs", Qt::gray}, {"high end", Qt::blue}, {"passing", Qt::red}, {"a note", QColor()}};
  const QStringList wanted[] = {{"all runs", "high end", "passing"}, {"high end", "passing"}, {"high end"}};
  double width = 600.0;
  for (QStringList const& left : wanted) {
    while (width > 0.0 && inRoom(width).texts().size() > left.size()) width -= 2.0;
    const QStringList texts = inRoom(width).texts();
    ASSERT_EQ(texts.size(), left.size());
    EXPECT_EQ(texts.first().left(3), left.first().left(3));
  }
}

TEST_F(PaintedLegend, OfNothingIsNothing)
{
  lines.clear();
  EXPECT_TRUE(inRoom(300.0).all.empty());
}

struct PaintedLabels : PaintedCharts
{
  Painting labelsAt(std::vector<std::pair<QString, QPointF>> const& ends) const
  {
    PaintRecorder paper;
    QPainter painter(&paper);
    app::PlotNames names(plot, theme);
    painter.setFont(theme.font);
    std::vector<app::EndName> all;
    for (auto const& [name, end] : ends) all.push_back({name, Qt::red, end});
    names.paintAtEnds(painter, all);
    return paper.painting();
  }
};

TEST_F(PaintedLabels, StandLeftAboveTheEndOfTheCurveOnAGround)
{
  const Painting paper = labelsAt({{"17", {500, 200}}});
  const Drawn label = *paper.text("17");
  EXPECT_LT(label.box().right(), 500.0);
  EXPECT_GT(label.box().right(), 485.0);
  EXPECT_LT(label.box().top(), 200.0);
  EXPECT_GT(label.box().top(), 190.0);
  EXPECT_EQ(label.pen.color(), QColor(Qt::red));
  const Drawn ground = paper.of(Kind::Rectangle).at(0);
  EXPECT_TRUE(ground.box().contains(label.box().center()));
  EXPECT_EQ(ground.brush.color().rgb(), theme.paper.rgb());
  EXPECT_GT(ground.brush.color().alphaF(), 0.5);
  EXPECT_EQ(ground.pen.style(), Qt::NoPen);
}

TEST_F(PaintedLabels, KeepApartWhileThereIsRoomAbove)
{
  const Painting paper =
      labelsAt({{"1", {500, 200}}, {"2", {500, 201}}, {"3", {500, 199}}, {"4", {300, 200}}});
  std::vector<double> bases;
  for (char const* name : {"1", "2", "3"}) bases.push_back(paper.text(name)->box().top());
  std::sort(bases.begin(), bases.end());
  EXPECT_GT(bases[1] - bases[0], 0.8 * metrics.height());
  EXPECT_GT(bases[2] - bases[1], 0.8 * metrics.height());
  EXPECT_GT(paper.text("4")->box().top(), 190.0) << "nothing is in its way";
}

TEST_F(PaintedLabels, StandInTheOrderOfTheEndsWhateverTheirOwn)
{
  const Painting paper =
      labelsAt({{"low", {500, 210}}, {"high", {500, 190}}, {"next", {500, 191}}, {"middle", {500, 200}}});
  double former = 0.0;
  for (char const* name : {"high", "next", "middle", "low"}) {
    const double base = paper.text(name)->box().top();
    EXPECT_GE(base, former + 0.99 * metrics.height()) << name;
    former = base;
  }
}

TEST_F(PaintedLabels, ThatHadToGoAwayHaveALineToTheirEnds)
{
  std::vector<std::pair<QString, QPointF>> ends = {{"alone", {300, 150}}};
  for (int i = 0; i < 7; ++i) ends.push_back({QString::number(i), {500.0, 200.0}});
  const Painting paper = labelsAt(ends);
  std::vector<double> leads;
  for (Drawn const& line : paper.of(Kind::Line)) {
    EXPECT_EQ(line.pen.color(), QColor(Qt::red));
    EXPECT_EQ(line.box().right(), 500.0);
    leads.push_back(line.box().height());
  }
  ASSERT_EQ(leads.size(), 5u) << "three above and two below; the others are near";
  EXPECT_GT(leads[0], metrics.height());
}

TEST_F(PaintedLabels, AreLeftOutWhereThePlotIsTooLow)
{
  std::vector<std::pair<QString, QPointF>> ends;
  for (int i = 0; i < 100; ++i) ends.push_back({QString::number(i), {500.0, plot.top() + i}});
  const Painting paper = labelsAt(ends);
  const auto room = static_cast<int>(plot.height() / metrics.height());
  EXPECT_EQ(paper.texts().size(), room);
  EXPECT_NE(paper.text("0"), nullptr);
  EXPECT_EQ(paper.text("99"), nullptr);
}

TEST(StackedPlaces, AreThoseThatAreWantedIfNoneIsInTheWay)
{
  EXPECT_THAT(app::stackedPlaces({1.0, 30.0, 50.0}, 10.0, 0.0, 100.0), testing::ElementsAre(1.0, 30.0, 50.0));
  EXPECT_THAT(app::stackedPlaces({}, 10.0, 0.0, 100.0), testing::IsEmpty());
}

TEST(StackedPlaces, MoveAsLittleAsCanBe)
{
  EXPECT_THAT(app::stackedPlaces({40.0, 40.0}, 10.0, 0.0, 100.0), testing::ElementsAre(35.0, 45.0));
  EXPECT_THAT(app::stackedPlaces({40.0, 41.0, 48.0}, 10.0, 0.0, 100.0),
              testing::ElementsAre(33.0, 43.0, 53.0));
}

TEST(StackedPlaces, StayBetweenTheEnds)
{
  EXPECT_THAT(app::stackedPlaces({-5.0, 3.0}, 10.0, 0.0, 100.0), testing::ElementsAre(0.0, 10.0));
  EXPECT_THAT(app::stackedPlaces({95.0, 99.0}, 10.0, 0.0, 100.0), testing::ElementsAre(80.0, 90.0));
  EXPECT_THAT(app::stackedPlaces({5.0, 6.0}, 10.0, 0.0, 15.0), testing::ElementsAre(0.0, 10.0))
      << "too short";
}

TEST_F(PaintedLabels, OfRectanglesStandInTheirOwnIfTheNextOneIsAbove)
{
  const QRectF upper(plot.left(), plot.top() - 5.0, plot.width(), 65.0);
  const QRectF lower(plot.left(), upper.bottom() + 0.5 * metrics.height(), plot.width(), 100.0);
  auto const named = [&](std::vector<QRectF> const& expected) {
    return painting({1000, 1000}, [&](QPainter& painter) {
      painter.setFont(theme.font);
      app::PlotNames names(plot, theme);
      names.expect(expected);
      names.paintAtShape(painter, "upper", Qt::red, upper, 1.0);
      names.paintAtShape(painter, "lower", Qt::red, lower, 1.0);
    });
  };
  const Painting apart = named({upper, lower});
  EXPECT_TRUE(upper.contains(apart.text("upper")->box().center()));
  EXPECT_TRUE(lower.contains(apart.text("lower")->box().center()));
  const Painting alone = named({});
  EXPECT_LT(alone.text("lower")->box().bottom(), lower.top()) << "above it, if nothing is there";
}

TEST_F(PaintedCharts, BandsOfAnotherOutputOrKindAreNotThoseThatWereShown)
{
  const std::shared_ptr<Scan const> scan = lineScan(20);
  const ChartFrame frame({0, 0, 500, 300}, {AxisMap(0, 10), "x"}, {AxisMap(0, 1), "y"}, theme);
  app::BandsPicture bands;
  const app::BandsPicture::Group all{std::vector<std::uint8_t>(20, 1), Qt::black, 1.0};
  auto const strokes = [&] {
    return painting({600, 400}, [&](QPainter& painter) { bands.paint(painter, frame, theme); }).all.size();
  };
  auto const begin = [&](std::size_t output, app::BandsKind kind) {
    bands.request(scan, output, kind, {all});
  };
  begin(0, app::BandsKind::Quantiles);
  ASSERT_TRUE(waitFor([&] { return bands.isSettled() && strokes() > 0; }));
  begin(1, app::BandsKind::Quantiles);
  EXPECT_EQ(strokes(), 0u) << "those of another output";
  ASSERT_TRUE(waitFor([&] { return bands.isSettled() && strokes() > 0; }));
  begin(1, app::BandsKind::WholeRuns);
  EXPECT_EQ(strokes(), 0u) << "those of another kind";
}

TEST_F(PaintedCharts, PinnedRunsHaveColoursThatNoShownSetHas)
{
  app::NamedSet shown;
  app::NamedSet hidden;
  hidden.color = 1;
  hidden.shown = false;
  const app::PinnedRuns pins({30, 20, 10});
  const app::PinColors colors({shown, hidden}, pins, theme);
  EXPECT_EQ(colors.of(20), theme.sets[1]);
  EXPECT_EQ(colors.of(10), theme.sets[2]);
  EXPECT_EQ(colors.of(30), theme.sets[3]) << "its own, the first, is that of the set";
  std::vector<app::NamedSet> all(theme.sets.size());
  for (std::size_t i = 0; i < all.size(); ++i) all[i].color = i;
  EXPECT_EQ(app::PinColors(all, pins, theme).of(30), theme.sets[0]) << "better one that is taken than none";
  EXPECT_EQ(app::PinColors({}, pins, theme).of(10), theme.sets[2]);
}

TEST_F(PaintedCharts, MorePinnedRunsThanColoursBeginAnewWithThem)
{
  std::vector<std::size_t> runs(theme.sets.size() + 2);
  std::iota(runs.begin(), runs.end(), std::size_t(0));
  const app::PinnedRuns pins(runs);
  EXPECT_EQ(app::PinColors({}, pins, theme).of(theme.sets.size() + 1), theme.sets[1]);
  app::NamedSet shown;
  const app::PinColors colors({shown}, pins, theme);
  EXPECT_EQ(colors.of(0), theme.sets[1]) << "all that are left have a run";
  EXPECT_EQ(colors.of(theme.sets.size()), theme.sets[2]);
}

TEST_F(PaintedLabels, StayBelowTheTopOfThePlot)
{
  const Painting paper = labelsAt({{"1", {500, 22}}, {"2", {500, 22}}, {"3", {500, 30}}});
  for (char const* name : {"1", "2", "3"})
    EXPECT_GE(paper.text(name)->box().top() - metrics.ascent(), plot.top() - 0.01) << name;
}

TEST_F(PaintedLabels, LongNamesAreCut)
{
  const Painting paper = labelsAt({{QString(300, 'x'), {500, 200}}});
  EXPECT_LT(paper.of(Kind::Text)[0].box().width(), 0.35 * plot.width());
}

struct PaintedBands : PaintedCharts
{
  ChartFrame frame{{0, 0, 600, 400}, {AxisMap(0, 4), "x"}, {AxisMap(0, 10), "y"}, theme};
  std::vector<double> times{0, 1, 2, 3, 4};

  /// Quantiles that stand still, but for the times at which there are none.
  static RunBands level(std::initializer_list<std::size_t> missing = {})
  {
    RunBands bands;
    const double values[] = {1, 3, 5, 6, 9};
    for (std::size_t i = 0; i < 5; ++i) {
      bands.lines[i].assign(5, values[i]);
      for (std::size_t time : missing) bands.lines[i][time] = nan;
    }
    return bands;
  }
  [[nodiscard]] Painting bandsOf(RunBands const& bands, BandsLook const& look = {}) const
  {
    PaintRecorder paper;
    QPainter painter(&paper);
    app::paintBands(painter, bands, times, frame, Qt::red, look);
    EXPECT_TRUE(isAsNew(painter));
    return paper.painting();
  }
};

TEST_F(PaintedBands, AreAPaleAreaWithADenserOneWithinAndALineOfTheMedian)
{
  const Painting paper = bandsOf(level());
  const std::vector<Drawn> areas = paper.of(Kind::Polygon);
  ASSERT_EQ(areas.size(), 2u);
  EXPECT_NEAR(areas[0].box().top(), frame.yAt(9), 0.01);
  EXPECT_NEAR(areas[0].box().bottom(), frame.yAt(1), 0.01);
  EXPECT_NEAR(areas[1].box().top(), frame.yAt(6), 0.01);
  EXPECT_NEAR(areas[1].box().bottom(), frame.yAt(3), 0.01);
  for (Drawn const& area : areas) {
    EXPECT_NEAR(area.box().left(), frame.xAt(0), 0.01);
    EXPECT_NEAR(area.box().right(), frame.xAt(4), 0.01);
    EXPECT_EQ(area.pen.style(), Qt::NoPen);
  }
  EXPECT_GT(areas[1].brush.color().alphaF(), areas[0].brush.color().alphaF());
  EXPECT_LT(areas[1].brush.color().alphaF(), 0.5);
  const std::vector<Drawn> lines = paper.of(Kind::Polyline);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NEAR(lines[0].box().top(), frame.yAt(5), 0.01);
  EXPECT_EQ(lines[0].pen.color(), QColor(Qt::red));
  EXPECT_EQ(lines[0].pen.widthF(), BandsLook().middle);
}

TEST_F(PaintedBands, TheirLookIsThatAskedFor)
{
  BandsLook look;
  look.middle = 3.0;
  look.opacity = 0.5;
  look.finest = 1000.0;
  const Painting plain = bandsOf(level());
  const Painting paper = bandsOf(level(), look);
  EXPECT_NEAR(paper.of(Kind::Polygon)[0].brush.color().alphaF(),
              0.5 * plain.of(Kind::Polygon)[0].brush.color().alphaF(), 0.01);
  EXPECT_EQ(paper.of(Kind::Polyline)[0].pen.widthF(), 3.0);
  EXPECT_EQ(paper.of(Kind::Polyline)[0].points.size(), 2) << "the ends stay";
  EXPECT_EQ(plain.of(Kind::Polyline)[0].points.size(), 5);
}

TEST_F(PaintedBands, OutlyingRunsAreThinPaleDashes)
{
  RunBands bands = level();
  bands.outlying = {7};
  bands.outlyingValues = {{9.5, 9.5, nan, 9.5, 9.5}};
  const std::vector<Drawn> lines = bandsOf(bands).of(Kind::Polyline);
  ASSERT_EQ(lines.size(), 3u) << "two parts and the line in the middle";
  for (std::size_t part : {0u, 1u}) {
    EXPECT_EQ(lines[part].pen.style(), Qt::DashLine);
    EXPECT_LT(lines[part].pen.widthF(), lines[2].pen.widthF());
    EXPECT_LT(lines[part].pen.color().alphaF(), 0.8);
    EXPECT_NEAR(lines[part].box().top(), frame.yAt(9.5), 0.01);
  }
  EXPECT_EQ(lines[2].pen.style(), Qt::SolidLine);
  EXPECT_EQ(lines[2].pen.color().alphaF(), 1.0);
}

TEST_F(PaintedBands, TimesWithoutRunsPartThem)
{
  const Painting paper = bandsOf(level({2}));
  const std::vector<Drawn> areas = paper.of(Kind::Polygon);
  ASSERT_EQ(areas.size(), 4u);
  EXPECT_NEAR(areas[0].box().right(), frame.xAt(1), 0.01);
  EXPECT_NEAR(areas[1].box().left(), frame.xAt(3), 0.01);
  EXPECT_EQ(paper.of(Kind::Polyline).size(), 2u);
}

TEST_F(PaintedBands, StayWithinThePlot)
{
  frame = ChartFrame({0, 0, 600, 400}, {AxisMap(1, 3), "x"}, {AxisMap(2, 5.5), "y"}, theme);
  for (Drawn const& each : bandsOf(level()).all)
    EXPECT_TRUE(each.isWithin(frame.plot().adjusted(-0.01, -0.01, 0.01, 0.01)));
}

TEST_F(PaintedBands, OnALogarithmicAxisWhatIsNotPositiveLiesBelowThePlot)
{
  frame = ChartFrame({0, 0, 600, 400}, {AxisMap(0, 4), "x"}, {AxisMap(1, 100, true), "y"}, theme);
  RunBands bands = level();
  bands.lines[0].assign(5, -1.0);
  const std::vector<Drawn> areas = bandsOf(bands).of(Kind::Polygon);
  ASSERT_EQ(areas.size(), 2u);
  EXPECT_NEAR(areas[0].box().top(), frame.yAt(9), 0.01);
  EXPECT_NEAR(areas[0].box().bottom(), frame.plot().bottom(), 0.01);
}

TEST(RoundedValue, KeepsAsManyDigitsAsAPixelTells)
{
  EXPECT_EQ(app::roundedValue(1.23456, 0.01), 1.23);
  EXPECT_EQ(app::roundedValue(1.23456, 0.03), 1.23);
  EXPECT_EQ(app::roundedValue(1234.56, 20.0), 1230.0);
  EXPECT_EQ(app::roundedValue(-1.237, 0.01), -1.24);
  EXPECT_EQ(app::roundedValue(1.23456, 0.0), 1.23456);
  EXPECT_TRUE(std::isinf(app::roundedValue(std::numeric_limits<double>::infinity(), 0.1)));
  EXPECT_TRUE(std::isnan(app::roundedValue(nan, 0.1)));
}

/// Texts a to f; of the passing runs 4 have a, 2 b, 1 each c and d, of the others 1 has a, 3 b, none the
/// rest.
struct RowsOfTexts : testing::Test
{
  ScanParameter parameter;
  app::TextGroups groups{{4, 2, 1, 1, 0, 0}, {1, 3, 0, 0, 0, 0}, 8, 4};

  RowsOfTexts() { parameter.texts = {"a", "b", "c", "d", "e", "f"}; }
};

TEST_F(RowsOfTexts, AreAllTextsInTheirOrderIfThereIsRoom)
{
  const auto rows = app::textRows(parameter, groups, 6);
  ASSERT_EQ(rows.size(), 6u);
  EXPECT_EQ(rows[1].text, "b");
  EXPECT_EQ(rows[1].passing, 0.25);
  EXPECT_EQ(rows[1].others, 0.75);
  EXPECT_FALSE(rows[5].isRest);
}

TEST_F(RowsOfTexts, AreTheMostFrequentOnesAndTheRestIfThereIsNot)
{
  const auto rows = app::textRows(parameter, groups, 3);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].text, "a");
  EXPECT_EQ(rows[1].text, "b");
  EXPECT_TRUE(rows[2].isRest);
  EXPECT_EQ(rows[2].text, "4 others");
  EXPECT_EQ(rows[2].texts, (std::vector<std::size_t>{2, 3, 4, 5}));
  EXPECT_EQ(rows[2].passing, 0.25);
  EXPECT_EQ(rows[2].others, 0.0);
}

TEST_F(RowsOfTexts, HaveTheOneWhoseSharesDifferMostAmongThem)
{
  groups = {{3, 3, 0, 0, 2, 0}, {9, 8, 7, 6, 0, 0}, 8, 30}; // e: 0.25, a: 0.075, c: 0.23
  const auto rows = app::textRows(parameter, groups, 3);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].text, "a") << "the most frequent one";
  EXPECT_EQ(rows[1].text, "e");
  EXPECT_EQ(rows[1].passing, 0.25);
  EXPECT_EQ(rows[2].texts, (std::vector<std::size_t>{1, 2, 3, 5}));
  EXPECT_EQ(app::textRows(parameter, groups, 2)[0].text, "e");
}

TEST_F(RowsOfTexts, OfAGroupWithoutRunsHaveNoShares)
{
  groups.others.assign(6, 0);
  groups.allOthers = 0;
  const auto rows = app::textRows(parameter, groups, 2);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].others, 0.0);
  EXPECT_EQ(rows[1].passing, 0.5);
  EXPECT_EQ(rows[1].others, 0.0);
}

TEST_F(RowsOfTexts, OfAnAxisRiseOverItsWholeHeight)
{
  const auto rows = app::TextBarRows::upwards({10.0, 20.0, 5.0, 60.0}, parameter);
  ASSERT_EQ(rows.size(), 6u);
  EXPECT_EQ(rows.place(), QRectF(10.0, 20.0, 5.0, 60.0));
  EXPECT_EQ(rows.place(rows.rowOf(0)), QRectF(10.0, 70.0, 5.0, 10.0));
  EXPECT_EQ(rows.place(rows.rowOf(5)), QRectF(10.0, 20.0, 5.0, 10.0));
  EXPECT_EQ(rows.at(rows.nearest({12.0, 69.9})).text, "b");
  EXPECT_EQ(rows.at(rows.nearest({12.0, 70.0})).text, "a");
  EXPECT_EQ(rows.at(rows.nearest({12.0, 500.0})).text, "a");
  EXPECT_EQ(rows.at(rows.nearest({12.0, -500.0})).text, "f");
}

TEST(PlotNames, StayWithinThePlotHoweverManyTheyAre)
{
  const app::Theme theme = app::Theme::ofPaper(QFont());
  const double line = QFontMetricsF(theme.font).height();
  const QRectF plot(50.0, 40.0, 60.0, 3.5 * line);
  const Painting painted = painting({300, 300}, [&](QPainter& painter) {
    painter.setFont(theme.font);
    app::PlotNames names(plot, theme);
    for (int i = 0; i < 12; ++i)
      names.paintAtShape(painter, QString("gate %1").arg(i), Qt::black, plot.adjusted(5, 5, -5, -5), 2.0);
  });
  const auto texts = painted.of(Drawn::Kind::Text);
  ASSERT_EQ(texts.size(), 12u);
  for (Drawn const& text : texts) {
    const double base = text.points.first().y();
    EXPECT_GE(base, plot.top() + 0.5 * line) << text.text.toStdString();
    EXPECT_LE(base, plot.bottom()) << text.text.toStdString();
    EXPECT_GE(text.points.first().x(), plot.left());
  }
}

TEST(PlotNames, TakeAnotherPlaceWhereOneStands)
{
  const app::Theme theme = app::Theme::ofPaper(QFont());
  const QRectF plot(0.0, 0.0, 400.0, 300.0);
  const QRectF shape(100.0, 100.0, 80.0, 60.0);
  const Painting painted = painting({400, 300}, [&](QPainter& painter) {
    painter.setFont(theme.font);
    app::PlotNames names(plot, theme);
    for (char const* name : {"first", "second", "third"})
      names.paintAtShape(painter, name, Qt::black, shape, 2.0);
  });
  const auto texts = painted.of(Drawn::Kind::Text);
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_LT(texts[0].ink.bottom(), shape.top() + 1.0) << "above the gate";
  EXPECT_GT(texts[1].ink.top(), shape.top() - 1.0) << "within it";
  EXPECT_GT(texts[2].ink.top(), shape.bottom() - 1.0) << "below it";
}

} // namespace
} // namespace runsieve::test
