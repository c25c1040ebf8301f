#include "FigureScene.h"

#include "app/explorer/charts/AxisTicks.h"

#include <gmock/gmock.h>

#include <QLinearGradient>

namespace runsieve::test {
namespace {

using Kind = FigureShape::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

/// Runs whose k0 is 0.5 or more pass.
struct FigureColours : FigureScene
{
  void gate()
  {
    addGate(gateOnA(0.5, 1.0));
    EXPECT_TRUE(settle());
  }

  /// Values of a parameter in the passing runs or the others, ascending.
  [[nodiscard]] std::vector<double> valuesOf(std::size_t parameter, bool passing) const
  {
    std::vector<double> values;
    for (std::size_t run = 0; run < document.scan().runs.size(); ++run)
      if (document.passing().contains(run) == passing)
        values.push_back(document.scan().parameters[parameter].values[run]);
    std::sort(values.begin(), values.end());
    return values;
  }

  /// Texts right of the plot of the runs.
  [[nodiscard]] std::vector<std::string> besideThePlot() const
  {
    std::vector<std::string> texts;
    for (FigureText const& text : drawing.texts)
      if (text.ink.left() > plot().right() && text.ink.bottom() < plot().bottom())
        texts.push_back(text.text.toStdString());
    return texts;
  }

  [[nodiscard]] static double shareUpTo(std::vector<double> const& values, double value)
  {
    return static_cast<double>(std::upper_bound(values.begin(), values.end(), value) - values.begin()) /
           static_cast<double>(values.size());
  }
};

/// Lowest and highest point of a curve in a column of the page.
std::pair<double, double> heightsAt(QPolygonF const& curve, double x)
{
  double low = 1e9;
  double high = -1e9;
  for (int i = 1; i < curve.size(); ++i) {
    const QLineF part(curve[i - 1], curve[i]);
    if (std::min(part.x1(), part.x2()) > x || std::max(part.x1(), part.x2()) < x) continue;
    const double share = part.dx() == 0.0 ? 0.0 : (x - part.x1()) / part.dx();
    const double y = part.y1() + share * part.dy();
    for (double const each :
         part.dx() == 0.0 ? std::vector<double>{part.y1(), part.y2()} : std::vector<double>{y}) {
      low = std::min(low, each);
      high = std::max(high, each);
    }
  }
  return {low, high};
}

TEST_F(FigureColours, CumulativeCurvesShowTheSharesOfThePassingRunsAndOfTheOthersInTheirColours)
{
  gate();
  options.parameters = {0};
  draw();
  const QRectF plot = plotBelow("k0");
  ASSERT_GT(plot.height(), 100.0);
  const std::vector<double> all = document.scan().parameters[0].values;
  const app::AxisMap axis =
      app::AxisMap(*std::min_element(all.begin(), all.end()), *std::max_element(all.begin(), all.end()))
          .widened(0.02);
  for (bool const passing : {false, true}) {
    const auto curves = lines(passing ? theme().passing : theme().all);
    ASSERT_THAT(curves, SizeIs(1));
    EXPECT_EQ(curves[0].pen.widthF(), theme().curve);
    const std::vector<double> values = valuesOf(0, passing);
    for (double const value : {0.1, 0.3, 0.55, 0.7, 0.9}) {
      const auto [top, bottom] = heightsAt(curves[0].points, plot.left() + axis.place(value) * plot.width());
      const double y = plot.bottom() - shareUpTo(values, value) * plot.height();
      EXPECT_GT(y, top - 8.0) << passing << ' ' << value;
      EXPECT_LT(y, bottom + 8.0) << passing << ' ' << value;
    }
  }
}

TEST_F(FigureColours, TheNoiseFloorIsAGreyAreaAroundTheCurveOfTheOthers)
{
  gate();
  options.parameters = {1};
  draw();
  const QRectF plot = plotBelow("k1");
  QColor grey = theme().faint;
  grey.setAlphaF(0.3);
  const auto areas = fills(Kind::Polygon, grey);
  ASSERT_THAT(areas, SizeIs(1));
  EXPECT_FALSE(areas[0].isStroked());
  const double reach = document.comparison()->noiseFloor * plot.height();
  const auto curve = lines(theme().all).at(0).points;
  for (double const x : {plot.left() + 0.3 * plot.width(), plot.center().x()}) {
    const auto [top, bottom] = heightsAt(areas[0].points, x);
    const auto [upper, lower] = heightsAt(curve, x);
    EXPECT_NEAR(top, std::max(plot.top(), upper - reach), 12.0);
    EXPECT_NEAR(bottom, std::min(plot.bottom(), lower + reach), 12.0);
  }
  EXPECT_NEAR(areas[0].box().width(), plot.width(), 3.0);
  EXPECT_TRUE(says(QString("* adjusted p \u2264 0.05 (permutation), |d| \u2265 0.1; grey: noise floor %1")
                       .arg(app::numberText(document.comparison()->noiseFloor, 0.01))));
}

TEST_F(FigureColours, ThresholdsAreToldInFaintLettersAndTheFloorOnlyWhereItIsDrawn)
{
  gate();
  options.parameters = {1};
  options.parameterLook = app::ParameterLook::Densities;
  draw();
  EXPECT_EQ(textOf(QString("* adjusted p \u2264 0.05 (permutation), |d| \u2265 0.1")).color, theme().faint);
  QColor grey = theme().faint;
  grey.setAlphaF(0.3);
  EXPECT_THAT(fills(Kind::Polygon, grey), SizeIs(0));
  options.parameterLook = app::ParameterLook::Curves;
  options.thresholds = false;
  draw();
  EXPECT_THAT(fills(Kind::Polygon, grey), SizeIs(0));
}

TEST_F(FigureColours, DensitiesAreInTheColoursOfTheirRunsAndHighestAtTheTop)
{
  gate();
  options.parameters = {0};
  options.parameterLook = app::ParameterLook::Densities;
  draw();
  const QRectF plot = plotBelow("k0");
  const auto others = lines(theme().all);
  const auto passing = lines(theme().passing);
  ASSERT_THAT(others, SizeIs(1));
  ASSERT_THAT(passing, SizeIs(1));
  // Those below 0.5 are the others.
  const double left = plot.left() + 0.25 * plot.width();
  const double right = plot.left() + 0.75 * plot.width();
  EXPECT_LT(heightsAt(others[0].points, left).first, heightsAt(passing[0].points, left).first);
  EXPECT_GT(heightsAt(others[0].points, right).first, heightsAt(passing[0].points, right).first);
  const double highest = std::min(others[0].box().top(), passing[0].box().top());
  EXPECT_GT(highest, plot.top());
  EXPECT_LT(highest, plot.top() + 0.1 * plot.height());
  EXPECT_NEAR(others[0].box().left(), plot.left(), theme().curve);
  EXPECT_NEAR(others[0].box().right(), plot.right(), theme().curve);
}

TEST_F(FigureColours, FewPassingRunsAreMarksAtTheBottomInsteadOfADensity)
{
  document.change("Add gate", [](app::State& state) {
    state.gates.push_back({"Gate 1", gateOnA(0.8, 1.0), true});
  });
  ASSERT_TRUE(settle());
  const std::vector<double> few = valuesOf(1, true);
  ASSERT_GT(few.size(), 5u);
  ASSERT_LT(few.size(), 11u);
  options.parameters = {1};
  options.parameterLook = app::ParameterLook::Densities;
  draw();
  const QRectF plot = plotBelow("k1");
  const auto marks =
      shapes(Kind::Line, [&](FigureShape const& shape) { return shape.pen.color() == theme().passing; });
  ASSERT_EQ(marks.size(), few.size());
  std::vector<double> all = document.scan().parameters[1].values;
  const app::AxisMap axis(*std::min_element(all.begin(), all.end()),
                          *std::max_element(all.begin(), all.end()));
  for (std::size_t i = 0; i < few.size(); ++i) {
    EXPECT_NEAR(marks[i].box().left(), plot.left() + axis.place(few[i]) * plot.width(), 1.0);
    EXPECT_NEAR(marks[i].box().bottom(), plot.bottom(), 1.0);
    EXPECT_NEAR(marks[i].box().height(), 0.2 * plot.height(), 1.0);
  }
}

TEST_F(FigureColours, TextsHaveABarOfThePassingRunsAboveOneOfTheOthers)
{
  document.open(wordyScan(2, 4), {});
  gate();
  options.parameters = {1}; // the strain
  draw();
  ScanParameter const& strain = document.scan().parameters[1];
  ASSERT_EQ(strain.label.name, "strain");
  QColor pale = theme().all;
  pale.setAlphaF(0.8);
  for (bool const passing : {true, false}) {
    const auto bars = fills(Kind::Rectangle, passing ? theme().passing : pale);
    std::vector<QRectF> inChart;
    for (FigureShape const& bar : bars)
      if (bar.box().top() > textOf("strain").begin.y()) inChart.push_back(bar.box());
    ASSERT_EQ(inChart.size(), 3u) << passing;
    std::vector<double> shares(3);
    const std::vector<double> values = valuesOf(1, passing);
    for (double const value : values)
      shares[static_cast<std::size_t>(value)] += 1.0 / static_cast<double>(values.size());
    const double unit = inChart[0].width() / shares[0];
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(inChart[i].width(), shares[i] * unit, 1.0) << i;
      const FigureText name = textOf(QString::fromStdString(strain.texts[i]));
      EXPECT_LT(name.ink.right(), inChart[i].left());
      EXPECT_NEAR(name.ink.center().y(), passing ? inChart[i].bottom() : inChart[i].top(), 15.0) << i;
    }
  }
}

TEST_F(FigureColours, WithoutGatesThereIsOneColourOfRuns)
{
  options.strongest = 3;
  for (auto const look :
       {app::ParameterLook::Curves, app::ParameterLook::Densities, app::ParameterLook::Scatter}) {
    options.parameterLook = look;
    draw();
    EXPECT_THAT(lines(theme().passing), SizeIs(0));
    EXPECT_THAT(fills(Kind::Rectangle, theme().passing), SizeIs(0));
    EXPECT_THAT(lines(theme().all), SizeIs(look == app::ParameterLook::Scatter ? 0 : 3));
    EXPECT_TRUE(says("all runs (40)"));
    EXPECT_TRUE(says("k0")) << "in the order of the scan";
    EXPECT_FALSE(says("k3"));
  }
}

TEST_F(FigureColours, EntriesOfTheLegendStandBesideTheirColours)
{
  gate();
  document.change("Add set", [](app::State& state) {
    app::NamedSet set;
    set.name = "kept";
    set.runs = RunSet(40);
    set.runs.set(3);
    set.color = 2;
    set.shown = true;
    state.sets.push_back(set);
    set.name = "hidden";
    set.shown = false;
    state.sets.push_back(set);
  });
  draw();
  const std::vector<std::pair<QString, QColor>> entries = {
      {"all runs (40)", theme().all},
      {QString("passing runs (%1)").arg(document.passing().count()), theme().passing},
      {"kept (1)", theme().sets[2]}};
  for (auto const& [text, color] : entries) {
    const FigureText entry = textOf(text);
    EXPECT_EQ(entry.color, theme().ink);
    const auto swatches = fills(Kind::Rectangle, color);
    ASSERT_THAT(swatches, SizeIs(1)) << text.toStdString();
    EXPECT_NEAR(swatches[0].box().center().y(), entry.begin.y() - 0.35 * theme().font.pixelSize(), 12.0);
    EXPECT_LT(swatches[0].box().right(), entry.ink.left());
    EXPECT_GT(swatches[0].box().right(), entry.ink.left() - 3.0 * theme().gap);
    EXPECT_FALSE(swatches[0].isStroked());
  }
  EXPECT_FALSE(says("hidden (1)"));
  EXPECT_EQ(textOf("shades: runs at a point").color, theme().faint);
}

TEST_F(FigureColours, FadedRunsArePaleInTheLegendAndHiddenOnesAreNotInIt)
{
  gate();
  app::FigureContent drawn = content();
  drawn.focus = app::Focus::Faded;
  draw(drawn);
  QColor pale = theme().all;
  pale.setAlphaF(0.3);
  EXPECT_THAT(fills(Kind::Rectangle, pale), SizeIs(1));
  drawn.focus = app::Focus::Hidden;
  draw(drawn);
  EXPECT_FALSE(says("all runs (40)"));
  EXPECT_THAT(fills(Kind::Rectangle, pale), SizeIs(0));
}

TEST_F(FigureColours, BandsHaveTheColoursOfTheirRunsAndTheLegendTellsWhatTheyAre)
{
  gate();
  options.runsLook = app::RunsLook::Bands;
  options.strongest = 0;
  draw();
  EXPECT_TRUE(says(QString::fromUtf8("line: median; bands: 25\u201375 % and 5\u201395 % of the runs")));
  EXPECT_THAT(lines(theme().all), SizeIs(1));
  EXPECT_THAT(lines(theme().passing), SizeIs(1));
  EXPECT_EQ(drawing.images.size(), 0u);
  for (QColor color : {theme().all, theme().passing})
    EXPECT_THAT(shapes(Kind::Polygon,
                       [&](FigureShape const& shape) {
                         return shape.brush.color().rgb() == color.rgb() && shape.brush.color().alpha() < 90;
                       }),
                SizeIs(2));
  // The median of the passing runs lies above.
  EXPECT_LT(lines(theme().passing)[0].box().center().y(), lines(theme().all)[0].box().center().y());
}

TEST_F(FigureColours, RunsAreInTheirColoursOverOneAnother)
{
  gate();
  options.strongest = 0;
  options.runsLook = app::RunsLook::Lines;
  draw();
  const QImage image = drawing.images.at(0).image;
  ASSERT_FALSE(image.isNull());
  bool isPassing = false;
  bool isOther = false;
  for (int y = 0; y < image.height(); ++y) {
    const QColor color = image.pixelColor(image.width() / 2, y);
    const bool isUpper = y < image.height() / 2;
    const bool isWarm = color.red() > color.blue() + 60;
    EXPECT_FALSE(isWarm && !isUpper) << "runs below 0.5 don't pass";
    isPassing = isPassing || (isWarm && isUpper);
    isOther = isOther || (!isUpper && color.lightness() < 200);
  }
  EXPECT_TRUE(isPassing);
  EXPECT_TRUE(isOther);
}

TEST_F(FigureColours, AScatterHasADotForEachRunAtItsLastValue)
{
  gate();
  options.parameters = {1};
  options.parameterLook = app::ParameterLook::Scatter;
  app::FigureContent drawn = content();
  drawn.values[0] = app::AxisMap(-0.1, 1.1);
  draw(drawn);
  ASSERT_EQ(drawing.images.size(), 2u);
  FigureImage const& dots = drawing.images.at(1); // below the runs
  std::vector<double> all = document.scan().parameters[1].values;
  const app::AxisMap axis =
      app::AxisMap(*std::min_element(all.begin(), all.end()), *std::max_element(all.begin(), all.end()))
          .widened(0.02);
  std::size_t shown = 0;
  for (std::size_t run = 0; run < 40; ++run) {
    const double k0 = document.scan().parameters[0].values[run];
    const auto x = static_cast<int>(axis.place(all[run]) * dots.image.width());
    const auto y = static_cast<int>((1.0 - drawn.values[0].place(k0)) * dots.image.height());
    const QColor color = dots.image.pixelColor(std::clamp(x, 0, dots.image.width() - 1),
                                               std::clamp(y, 0, dots.image.height() - 1));
    EXPECT_GT(color.alpha(), 40) << run;
    const bool isWarm = color.red() > color.blue() + 30;
    if (isWarm == (k0 >= 0.5)) ++shown;
  }
  EXPECT_GE(shown, 38u) << "but for dots over one another";
}

TEST_F(FigureColours, NamesOfSignificantParametersAreBoldAndHaveAStar)
{
  gate();
  draw();
  const app::FigureContent drawn = content();
  ASSERT_TRUE(drawn.numbersOf(0)->significant);
  EXPECT_TRUE(textOf("k0").font.bold());
  for (std::size_t parameter = 0; parameter < 6; ++parameter) {
    const QString name = QString("k%1").arg(parameter);
    EXPECT_EQ(textOf(name).font.bold(), drawn.numbersOf(parameter)->significant) << parameter;
    EXPECT_EQ(textOf(name).color, theme().ink);
  }
  std::size_t stars = 0;
  for (FigureText const& text : drawing.texts)
    if (text.text.startsWith("d ") && text.text.endsWith(" *")) ++stars;
  auto const& compared = drawn.comparison->parameters;
  EXPECT_EQ(stars, static_cast<std::size_t>(
                       std::count_if(compared.begin(), compared.end(),
                                     [](ParameterComparison const& each) { return each.significant; })));
  EXPECT_GT(stars, 0u);
}

TEST_F(FigureColours, AxesAreInInkAndAsWideAsAskedFor)
{
  options.lineWidth = 1.5;
  options.strongest = 0;
  draw();
  const auto axes = shapes(Kind::Line, [](FigureShape const&) { return true; });
  ASSERT_GT(axes.size(), 10u);
  for (FigureShape const& axis : axes) {
    EXPECT_EQ(axis.pen.color(), theme().ink);
    EXPECT_EQ(axis.pen.widthF(), 1.5 * app::figureUnitsPerPoint);
  }
}

TEST_F(FigureColours, ThePaletteForColourBlindPeopleIsBlueOnGreyWithOrangeGates)
{
  gate();
  document.togglePin(2);
  options.palette = app::FigurePalette::ColourBlind;
  draw();
  EXPECT_THAT(lines(QColor(0, 114, 178)), SizeIs(testing::Ge(1u)));
  EXPECT_THAT(lines(QColor(105, 105, 105)), SizeIs(testing::Ge(1u)));
  EXPECT_EQ(textOf("Gate 1").color, QColor(213, 94, 0));
  const auto keys = found("3"); // that of the pinned run, and perhaps a number of an axis
  EXPECT_TRUE(std::any_of(keys.begin(), keys.end(),
                          [](FigureText const& key) { return key.color == QColor(230, 159, 0); }));
}

TEST_F(FigureColours, ScaleBarsTellTheLargestAndTheSmallestNumberOfRunsFromTheirEnds)
{
  gate();
  showOutputs({1}); // whose runs begin at one point
  options.strongest = 0;
  draw();
  const auto bars = shapes(Kind::Rectangle, [](FigureShape const& shape) {
    return shape.brush.style() == Qt::LinearGradientPattern;
  });
  ASSERT_THAT(bars, SizeIs(2));
  for (FigureShape const& bar : bars) {
    EXPECT_GT(bar.box().left(), plot().right());
    EXPECT_LT(bar.box().right(), paper().right());
    const QGradientStops stops = bar.brush.gradient()->stops();
    auto const* gradient = static_cast<QLinearGradient const*>(bar.brush.gradient());
    EXPECT_GT(gradient->start().y(), gradient->finalStop().y()) << "from its lower end";
    EXPECT_GT(stops.front().second.lightness(), stops.back().second.lightness()) << "more are darker";
    int numbers = 0;
    for (FigureText const& text : drawing.texts)
      if (text.ink.left() > bar.box().right() && text.ink.top() >= bar.box().top() - 20.0 &&
          text.ink.bottom() <= bar.box().bottom() + 20.0 && text.text != "runs") {
        ++numbers;
        const bool isUpper = text.ink.center().y() < bar.box().center().y();
        EXPECT_EQ(text.text == "1", !isUpper) << text.text.toStdString();
        EXPECT_NEAR(isUpper ? text.ink.top() : text.ink.bottom(),
                    isUpper ? bar.box().top() : bar.box().bottom(), 12.0);
      }
    EXPECT_EQ(numbers, 2);
  }
  EXPECT_LT(bars[0].box().bottom(), bars[1].box().top());
  const QColor upper = bars[0].brush.gradient()->stops().back().second;
  EXPECT_GT(upper.red(), upper.blue()) << "that of the passing runs";
  EXPECT_THAT(found("runs"), SizeIs(2));
}

TEST_F(FigureColours, BesideSetsScaleBarsAreThoseOfAllRunsAndOfThePassingRuns)
{
  gate();
  document.change("Sets", [](app::State& state) {
    for (char const* name : {"one", "two"}) state.sets.push_back({name, RunSet(40, true), 1, true, ""});
  });
  showOutputs({1});
  options.strongest = 0;
  draw();
  const auto bars = shapes(Kind::Rectangle, [](FigureShape const& shape) {
    return shape.brush.style() == Qt::LinearGradientPattern;
  });
  ASSERT_THAT(bars, SizeIs(2));
  const QColor upper = bars[0].brush.gradient()->stops().back().second;
  EXPECT_GT(upper.red(), upper.green()) << "passing";
  const QColor lower = bars[1].brush.gradient()->stops().back().second;
  EXPECT_GE(lower.blue(), lower.green()) << "all";
}

TEST_F(FigureColours, ScaleBarsHaveRoomForFiveDigits)
{
  document.open(lineScan(12'000, 1), {});
  showOutputs({1});
  options.strongest = 0;
  draw();
  EXPECT_THAT(besideThePlot(), Contains(SizeIs(5))); // more than 10,000 runs at their beginning
  for (FigureText const& text : drawing.texts)
    EXPECT_LT(text.ink.right(), paper().right() - theme().gap) << text.text.toStdString();
}

TEST_F(FigureColours, AScaleBarOfOneNumberHasItOnce)
{
  options.strongest = 0; // runs of A never meet
  draw();
  EXPECT_THAT(besideThePlot(), ElementsAre("1", "runs"));
  EXPECT_THAT(
      shapes(Kind::Rectangle,
             [](FigureShape const& shape) { return shape.brush.style() == Qt::LinearGradientPattern; }),
      SizeIs(1));
}

} // namespace
} // namespace runsieve::test
