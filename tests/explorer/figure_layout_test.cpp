#include "FigureScene.h"

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

/// What a failure says of a figure.
std::string described(app::FigureOptions const& options)
{
  return QString("%1 x %2 mm, %3 pt, runs %4, parameters %5")
      .arg(options.width)
      .arg(options.height)
      .arg(options.fontSize)
      .arg(static_cast<int>(options.runsLook))
      .arg(static_cast<int>(options.parameterLook))
      .toStdString();
}

struct FigureLayout : FigureScene
{
  /// With gates whose names stand close to one another, pinned runs that end close to one another, and a set.
  void fill(std::size_t outputs, std::size_t parameters)
  {
    document.open(wordyScan(6, parameters), {});
    addGate(gateOnA(0.5, 1.0));
    addGate(gateOnA(0.45, 1.05));
    document.change("More", [&](app::State& state) {
      state.view.outputs.clear();
      for (std::size_t i = 0; i < outputs; ++i) state.view.outputs.push_back(i);
      app::NamedSet set;
      set.name = "a set of runs that was kept under a name of many words";
      set.runs = RunSet(60, true);
      set.shown = true;
      state.sets.push_back(set);
    });
    ASSERT_TRUE(settle());
  }

  void expectClear()
  {
    const auto& texts = drawing.texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      EXPECT_TRUE(paper().contains(texts[i].ink))
          << texts[i].text.toStdString() << " is cut off, " << described(options);
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_FALSE(texts[i].ink.intersects(texts[j].ink))
            << texts[i].text.toStdString() << " touches " << texts[j].text.toStdString() << ", "
            << described(options);
    }
  }
};

TEST_F(FigureLayout, TextsKeepClearOfOneAnotherAndOfTheEdges)
{
  struct Paper
  {
    double width;
    double height;
    double font;
  };
  for (std::size_t const outputs : {1, 2, 6}) {
    fill(outputs, 40);
    options.title = "A title that says at some length what the figure is about and takes more than a line";
    options.strongest = 12;
    for (Paper const& each :
         {Paper{80.0, 120.0, 7.0}, {180.0, 130.0, 8.0}, {254.0, 143.0, 13.0}, {180.0, 250.0, 5.0}})
      for (auto const look : {app::RunsLook::Density, app::RunsLook::Bands})
        for (auto const parameters :
             {app::ParameterLook::Curves, app::ParameterLook::Densities, app::ParameterLook::Scatter}) {
          options.width = each.width;
          options.height = each.height;
          options.fontSize = each.font;
          options.runsLook = look;
          options.parameterLook = parameters;
          draw();
          expectClear();
        }
  }
}

TEST_F(FigureLayout, PlotsOfOutputsAreOfOneSizeAndStandAboveOneAnother)
{
  for (std::size_t outputs = 1; outputs <= 6; ++outputs) {
    fill(outputs, 6);
    ASSERT_EQ(draw().images.size(), outputs);
    for (std::size_t i = 1; i < outputs; ++i) {
      EXPECT_EQ(plot(i).size(), plot(0).size());
      EXPECT_EQ(plot(i).left(), plot(0).left());
      EXPECT_EQ(plot(i).top() - plot(i - 1).top(), plot(1).top() - plot(0).top());
      EXPECT_GT(plot(i).top(), plot(i - 1).bottom());
    }
  }
}

TEST_F(FigureLayout, OnlyTheLowestOfSeveralPlotsHasTheNumbersAndTheTitleOfTheTime)
{
  fill(3, 6);
  options.strongest = 0;
  draw();
  const FigureText title = textOf("Time (min)");
  EXPECT_GT(title.ink.top(), plot(2).bottom());
  EXPECT_NEAR(title.ink.center().x(), plot(2).center().x(), 5.0);
  EXPECT_FALSE(title.upright);
  EXPECT_TRUE(textOf("A").upright);
  EXPECT_NEAR(textOf("A").ink.center().y(), plot(0).center().y(), 5.0);
  const FigureText ten = textOf("10"); // the last time
  EXPECT_GT(ten.ink.top(), plot(2).bottom());
  EXPECT_NEAR(ten.ink.center().x(), plot(2).right(), 10.0);
}

TEST_F(FigureLayout, LowPlotsHaveNoScaleBarsAndTheirRoom)
{
  fill(1, 6);
  const auto isBar = [](FigureShape const& shape) {
    return shape.brush.style() == Qt::LinearGradientPattern;
  };
  options.height = 125.0;
  draw();
  EXPECT_EQ(shapes(FigureShape::Kind::Rectangle, isBar).size(), 2u);
  const double withBars = plot().right();
  fill(6, 6);
  draw();
  EXPECT_TRUE(shapes(FigureShape::Kind::Rectangle, isBar).empty());
  EXPECT_GT(plot().right(), withBars + 100.0);
}

TEST_F(FigureLayout, ParametersFollowOneAnotherInLinesFromTheUpperLeft)
{
  fill(1, 40);
  options.strongest = 12;
  options.height = 180.0;
  draw();
  ASSERT_EQ(notes.parametersShown, 12u);
  const app::FigureContent drawn = content();
  QPointF former(-1.0, -1.0);
  for (std::size_t const parameter : drawn.shownParameters({}, 12)) {
    const QString name = QString::fromStdString(drawn.scan->parameters[parameter].label.name);
    if (name.size() > 20) continue; // cut in its middle
    const QPointF at = textOf(name).begin;
    EXPECT_TRUE(at.y() > former.y() + 10.0 || (at.y() == former.y() && at.x() > former.x()))
        << name.toStdString();
    former = at;
  }
}

TEST_F(FigureLayout, ParametersStandBelowTheRunsAndBesideThemInAWideFigure)
{
  fill(1, 6);
  draw();
  EXPECT_GT(textOf("k0").ink.top(), textOf("Time (min)").ink.bottom());
  options.width = 254.0;
  options.height = 143.0;
  draw();
  EXPECT_GT(textOf("k0").ink.left(), plot().right());
  EXPECT_LT(textOf("k0").ink.top(), plot().center().y());
}

TEST_F(FigureLayout, TheSmallestFiguresShowRunsAndNoLegend)
{
  fill(1, 6);
  options.width = options.height = 20.0;
  draw();
  EXPECT_FALSE(notes.legendShown);
  EXPECT_FALSE(says("all runs (60)"));
  options.width = 60.0;
  options.height = 50.0;
  draw();
  EXPECT_TRUE(notes.legendShown);
  EXPECT_TRUE(says("all runs (60)"));
  options.legend = false;
  draw();
  EXPECT_FALSE(notes.legendShown);
}

TEST_F(FigureLayout, ALongTitleTakesMoreLinesAndATooLongOneIsCut)
{
  fill(1, 6);
  options.title = "Runs";
  draw();
  const double top = plot().top();
  options.title = "Runs that end high in the late phase and what their parameters have in common, "
                  "seen against all of the others of this scan";
  draw();
  QStringList lines;
  for (FigureText const& text : drawing.texts)
    if (text.font.bold() && text.ink.bottom() < plot().top()) lines << text.text.trimmed();
  EXPECT_GE(lines.size(), 2);
  EXPECT_EQ(lines.join(' '), options.title);
  EXPECT_GT(plot().top(), top + theme().font.pixelSize()) << "the charts make room";
  options.title = QString("long ").repeated(200);
  draw();
  EXPECT_NEAR(plot().top(), top, 1.0);
}

TEST_F(FigureLayout, NumbersOfParametersAreNeverCut)
{
  fill(3, 6);
  addGate(gateOnA(0.3, 1.0));
  ASSERT_TRUE(settle());
  for (double const width : {180.0, 120.0, 85.0, 60.0}) {
    options.width = width;
    options.height = 150.0;
    draw();
    for (FigureText const& text : drawing.texts)
      if (text.text.startsWith("d ")) {
        EXPECT_FALSE(text.text.contains(QChar(0x2026))) << text.text.toStdString();
        EXPECT_LE(text.ink.right(), paper().right());
      }
  }
}

TEST_F(FigureLayout, AFigureThatIsTooSmallForParametersShowsTheRunsInAllOfIt)
{
  fill(1, 6);
  options.width = 60.0;
  options.height = 50.0;
  options.strongest = 4;
  draw();
  EXPECT_EQ(notes.parametersAsked, 4u);
  EXPECT_EQ(notes.parametersShown, 0u);
  const QRectF runs = plot();
  EXPECT_TRUE(std::none_of(drawing.texts.begin(), drawing.texts.end(),
                           [](FigureText const& text) { return text.text.contains("adjusted p"); }));
  options.strongest = 0;
  draw();
  EXPECT_EQ(plot(), runs);
}

TEST_F(FigureLayout, RunsGiveWayToMoreParametersAsLongAsTheyCanBeSeen)
{
  fill(1, 40);
  options.height = 140.0;
  options.strongest = 6;
  draw();
  EXPECT_EQ(notes.parametersShown, 6u);
  const double high = plot().height();
  options.strongest = 18;
  draw();
  EXPECT_EQ(notes.parametersShown, 18u);
  EXPECT_LT(plot().height(), high);
  options.strongest = 40;
  draw();
  EXPECT_LT(notes.parametersShown, 40u);
  EXPECT_GT(plot().height(), 4.0 * QFontMetricsF(theme().font).height());
}

TEST_F(FigureLayout, TheMorePlotsOfRunsTheMoreRoomTheyHave)
{
  fill(1, 6);
  draw();
  const double one = textOf("k0").begin.y();
  fill(6, 6);
  draw();
  EXPECT_GT(textOf("k0").begin.y(), one + 0.1 * paper().height());
}

TEST_F(FigureLayout, ATitleStandsAboveEverythingInBoldAndIsCutInItsMiddle)
{
  fill(1, 6);
  options.title = "Which parameter?";
  draw();
  const FigureText title = textOf("Which parameter?");
  EXPECT_TRUE(title.font.bold());
  EXPECT_GT(title.font.pixelSize(), theme().font.pixelSize());
  EXPECT_EQ(title.color, theme().ink);
  EXPECT_LT(title.ink.bottom(), plot().top());
  EXPECT_NEAR(title.begin.x(), 2.0 * theme().gap, 1.0);
  const double top = plot().top();
  options.title.clear();
  draw();
  EXPECT_LT(plot().top(), top - QFontMetricsF(theme().font).height());
}

TEST_F(FigureLayout, AllThatStandsInALineIsWithinItsColumn)
{
  fill(1, 40);
  options.strongest = 12;
  draw();
  std::vector<FigureText> names;
  for (FigureText const& text : drawing.texts)
    if (text.text.startsWith("d ")) names.push_back(text);
  ASSERT_GT(names.size(), 4u);
  for (std::size_t i = 1; i < names.size(); ++i) {
    const bool besides = names[i].begin.y() == names[i - 1].begin.y();
    EXPECT_TRUE(!besides || names[i].ink.left() > names[i - 1].ink.right());
  }
}

TEST_F(FigureLayout, WithoutOutputsTheParametersHaveAllOfIt)
{
  fill(1, 6);
  app::FigureContent drawn = content();
  drawn.outputs.clear();
  draw(drawn);
  EXPECT_LT(textOf("k0").ink.top(), 0.5 * paper().height());
  EXPECT_EQ(notes.parametersShown, notes.parametersAsked);
  EXPECT_EQ(drawing.images.size(), 0u);
}

TEST_F(FigureLayout, AWideFigureEndsWithLegendAndThresholdsAtOneHeight)
{
  fill(1, 6);
  document.change("Hide set", [](app::State& state) { state.sets[0].shown = false; });
  options.width = 254.0;
  options.height = 143.0;
  draw();
  double thresholds = 0.0;
  for (FigureText const& text : drawing.texts)
    if (text.text.startsWith("* adjusted")) thresholds = text.begin.y();
  double legend = 0.0;
  for (FigureText const& text : drawing.texts)
    if (text.text.startsWith("parameters: dark")) legend = text.begin.y();
  EXPECT_NEAR(legend, thresholds, 1.0);
}

TEST_F(FigureLayout, OutputsThatAreAskedForAreShownAndNoMoreThanSix)
{
  fill(1, 6);
  options.strongest = 0;
  options.outputs = {1, 0};
  draw();
  EXPECT_LT(textOf("B (nM)").ink.center().y(), textOf("A").ink.center().y());
  options.outputs = {0, 1, 2, 3, 4, 5, 0, 1, 99};
  EXPECT_EQ(draw().images.size(), 6u);
}

} // namespace
} // namespace runsieve::test
