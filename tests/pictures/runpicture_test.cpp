#include "LineScene.h"

#include <limits>

namespace runsieve::test {
namespace {

constexpr int runs = 200;
constexpr int few = 40; ///< runs of a set that is drawn as polylines

struct RunPicture : LineScene
{
  /// The runs as sets so small that each line is a polyline.
  QImage asPolylines(Curve const& curve = wave, std::function<int(int)> const& rowsOfRun = {})
  {
    chart->ClearPlots();
    for (int run = 0; run < runs; run += few) add(tableOf({run, run + few}, curve));
    for (int run = 0; rowsOfRun && run < runs; run += few) {
      auto table = tableOf({run, run + few}, curve);
      flag(table, [&](int k) { return rowsOfRun(run + k); });
      add(table, true);
    }
    return picture();
  }

  QImage asImage(Curve const& curve = wave, std::function<int(int)> const& rowsOfRun = {})
  {
    chart->ClearPlots();
    auto table = tableOf({0, runs}, curve);
    if (rowsOfRun) flag(table, rowsOfRun);
    add(table);
    return picture();
  }

  /// The axes alone; a chart without any plot lays them out otherwise.
  QImage empty()
  {
    chart->ClearPlots();
    add(tableOf({0, 1}), true);
    return picture();
  }
};

TEST_F(RunPicture, ManyRunsLookAsIfTheirLinesWereDrawnOneOverAnother)
{
  const QImage polylines = asPolylines();
  EXPECT_LT(rms(asImage(), polylines), 6.0);
  EXPECT_GT(rms(empty(), polylines), 20.0);
}

TEST_F(RunPicture, HighlightedRunsLookAsIfTheirLinesWereDrawnOneOverAnother)
{
  auto const everyFifth = [](int run) { return run % 5 == 0 ? 1 : 0; };
  const QImage polylines = asPolylines(wave, everyFifth);
  EXPECT_LT(rms(asImage(wave, everyFifth), polylines), 9.0);
  EXPECT_GT(rms(asImage(), polylines), 30.0);
}

TEST_F(RunPicture, MoreSelectedRowsMakeTheHighlightDenserUpToTen)
{
  auto const rows = [](int count) { return [count](int run) { return run == 7 ? count : 0; }; };
  const QImage one = asImage(wave, rows(1));
  const QImage two = asImage(wave, rows(2));
  EXPECT_GT(rms(one, two), 1.0);
  EXPECT_LT(rms(two, asPolylines(wave, rows(2))), 6.0);
  EXPECT_EQ(asImage(wave, rows(10)), asImage(wave, rows(40)));
}

TEST_F(RunPicture, SteepAndReturningLinesLookTheSameToo)
{
  auto const steps = [](int run, int time) { return (time / 4 + run) % 2 == 0 ? -8.0 + 0.02 * run : 8.0; };
  EXPECT_LT(rms(asImage(steps), asPolylines(steps)), 12.0); // polylines have specks at their joints
}

TEST_F(RunPicture, AnotherSelectionGivesThePictureThatAFreshSetGives)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  vtkPlotLineSet* lines = add(table);
  for (int divisor : {3, 4, 50, 2, 3}) {
    flag(table, [divisor](int run) { return run % divisor == 0 ? divisor : 0; });
    const QImage changed = picture();
    EXPECT_EQ(changed, asImage(wave, [divisor](int run) { return run % divisor == 0 ? divisor : 0; }))
        << divisor;
    chart->ClearPlots();
    lines = add(table);
  }
  flag(table, [](int) { return 0; });
  lines->Modified();
  const QImage cleared = picture();
  EXPECT_EQ(cleared, asImage());
}

TEST_F(RunPicture, ASelectionThatChangesWhileTheSetStaysIsFollowed)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  add(table);
  const QImage none = picture();
  flag(table, [](int run) { return run == 3 ? 5 : 0; });
  const QImage third = picture();
  flag(table, [](int run) { return run == 4 ? 5 : 0; });
  const QImage fourth = picture();
  EXPECT_GT(rms(none, third), 1.0);
  EXPECT_GT(rms(third, fourth), 1.0);
  flag(table, [](int run) { return run == 3 ? 5 : 0; });
  EXPECT_EQ(picture(), third);
  flag(table, [](int) { return 0; });
  EXPECT_EQ(picture(), none);
}

TEST_F(RunPicture, TheChartsOwnSelectionLightsTheWholeRun)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  lines->SetSelection(makeIds({7 * times + 3}));
  const QImage own = picture();
  EXPECT_EQ(own, asImage(wave, [](int run) { return run == 7 ? 1 : 0; }));
}

TEST_F(RunPicture, RowsBeyondTheTableAndBelowItAreNotLit)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  const QImage none = picture();
  lines->SetSelection(makeIds({-1, runs * times, 100000000}));
  EXPECT_EQ(picture(), none);
}

TEST_F(RunPicture, APreviewLightsItsRunsOnceEachAndEndsWithoutATrace)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  const QImage none = picture();
  std::vector<unsigned char> lit(8, 0);
  lit[7] = 9;
  lines->SetPreview(lit);
  const QImage preview = picture();
  lines->ClearPreview();
  EXPECT_EQ(picture(), none);
  EXPECT_EQ(preview, asImage(wave, [](int run) { return run == 7 ? 1 : 0; }));
}

TEST_F(RunPicture, APreviewStandsInPlaceOfTheSelection)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  flag(table, [](int run) { return run == 3 ? 5 : 0; });
  vtkPlotLineSet* lines = add(table);
  const QImage selected = picture();
  lines->SetPreview(std::vector<unsigned char>(runs, 0));
  const QImage preview = picture();
  lines->ClearPreview();
  EXPECT_EQ(picture(), selected);
  EXPECT_EQ(preview, asImage());
}

TEST_F(RunPicture, ColourOpacityAndWidthAreThoseOfThePen)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  const QImage first = picture();
  lines->GetPen()->SetColor(0, 160, 0, 40);
  const QImage green = picture();
  EXPECT_GT(rms(first, green), 5.0);
  lines->GetPen()->SetOpacity(200);
  const QImage dense = picture();
  EXPECT_GT(rms(green, dense), 5.0);
  lines->GetPen()->SetWidth(4.0f);
  EXPECT_GT(rms(dense, picture()), 5.0);
}

TEST_F(RunPicture, WithOnlyTheSelectedShownTheOthersAreNotThere)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  add(table, true);
  const QImage hidden = picture();
  EXPECT_EQ(hidden, empty());
  flag(table, [](int run) { return run == 7 ? 3 : 0; });
  add(table, true);
  const QImage seventh = picture();
  EXPECT_GT(rms(seventh, empty()), 1.0);
  EXPECT_LT(rms(seventh, asImage(wave, [](int run) { return run == 7 ? 3 : 0; })), 60.0);
}

TEST_F(RunPicture, AShortLastRunIsNotDrawn)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  add(table);
  const QImage whole = picture();
  auto longer = tableOf({0, runs + 1}, [](int run, int time) { return run < runs ? wave(run, time) : 11.5; });
  for (int i = 0; i < 5; ++i) longer->RemoveRow(longer->GetNumberOfRows() - 1);
  chart->ClearPlots();
  add(longer);
  EXPECT_EQ(picture(), whole);
}

TEST_F(RunPicture, AMissingValueLeavesAGap)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  // One run in a place of its own with a gap in the middle. A later bad point keeps the extra line away from
  // it.
  auto const gap = [nan](int run, int time) {
    if (run == runs - 1 && time == times - 5) return nan;
    if (run > 0) return -11.0;
    return time > 15 && time < 25 ? nan : 6.0;
  };
  const QImage picture = asImage(gap);
  const QImage none = empty();
  auto const drawnColumns = [&](QImage const& drawn) {
    int columns = 0;
    for (int x = 0; x < drawn.width(); ++x)
      for (int y = 0; y < drawn.height() / 2; ++y)
        if (drawn.pixel(x, y) != none.pixel(x, y)) {
          ++columns;
          break;
        }
    return columns;
  };
  const double share = static_cast<double>(drawnColumns(picture)) /
                       drawnColumns(asImage([](int run, int) { return run > 0 ? -11.0 : 6.0; }));
  EXPECT_NEAR(share, 1.0 - 10.0 / 39.0, 0.02);
}

TEST_F(RunPicture, ABadPointAmongTheLastTwoHidesAllPlainLines)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(asImage([nan](int run, int time) {
              return run == runs - 1 && time == times - 2 ? nan : wave(run, time);
            }),
            empty());
}

TEST_F(RunPicture, NothingIsDrawnOutsideTheChart)
{
  chart->GetAxis(vtkAxis::LEFT)->SetRange(-3.0, 3.0);
  const QImage lines = asImage();
  const QImage none = empty();
  const float* low = chart->GetAxis(vtkAxis::BOTTOM)->GetPoint1();
  const float* high = chart->GetAxis(vtkAxis::BOTTOM)->GetPoint2();
  const float top = chart->GetAxis(vtkAxis::LEFT)->GetPoint2()[1];
  for (int y = 0; y < lines.height(); ++y)
    for (int x = 0; x < lines.width(); ++x) {
      const int fromBelow = lines.height() - 1 - y;
      const bool inside =
          x >= low[0] - 1 && x <= high[0] + 1 && fromBelow >= low[1] - 1 && fromBelow <= top + 1;
      ASSERT_TRUE(inside || lines.pixel(x, y) == none.pixel(x, y)) << x << ' ' << y;
    }
  EXPECT_GT(rms(lines, none), 30.0);
}

TEST_F(RunPicture, LogarithmicAxesLookTheSame)
{
  auto const rising = [](int run, int time) { return std::exp(0.05 * time + 0.01 * run); };
  chart->GetAxis(vtkAxis::LEFT)->SetRange(1.0, 60.0);
  chart->GetAxis(vtkAxis::LEFT)->SetLogScale(true);
  EXPECT_LT(rms(asImage(rising), asPolylines(rising)), 6.0);
}

TEST_F(RunPicture, AnotherWindowOnTheAxesGivesThePictureOfAFreshSet)
{
  chart->ClearPlots();
  add(tableOf({0, runs}));
  const QImage before = picture();
  chart->GetAxis(vtkAxis::LEFT)->SetRange(-6.0, 9.0);
  const QImage panned = picture();
  EXPECT_GT(rms(before, panned), 10.0);
  EXPECT_EQ(panned, asImage());
}

TEST_F(RunPicture, OtherValuesInTheTableAreDrawn)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  add(table);
  static_cast<void>(picture());
  auto* y = vtkDoubleArray::SafeDownCast(table->GetColumnByName("y"));
  for (vtkIdType i = 0; i < y->GetNumberOfTuples(); ++i) y->SetValue(i, -y->GetValue(i));
  y->Modified();
  table->Modified();
  const QImage changed = picture();
  EXPECT_EQ(changed, asImage([](int run, int time) { return -wave(run, time); }));
}

TEST_F(RunPicture, ARepaintWithoutChangeIsTheSamePicture)
{
  const QImage first = asImage(wave, [](int run) { return run % 9 == 0 ? 4 : 0; });
  EXPECT_EQ(picture(), first);
}

TEST_F(RunPicture, TwoSetsThatShareAnImageAfterARedrawShowTheirOwnLines)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  flag(table, [](int run) { return run == 5 ? 2 : 0; });
  add(table);
  add(tableOf({0, runs}, [](int run, int time) { return 0.5 * wave(run, time); }));
  const QImage both = picture();
  EXPECT_EQ(picture(), both);
  EXPECT_GT(rms(both, asImage()), 5.0);
}

TEST_F(RunPicture, ADashedPenIsDrawnAsLines)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  const QImage solid = picture();
  lines->GetPen()->SetLineType(vtkPen::NO_PEN);
  const QImage hidden = picture();
  EXPECT_EQ(hidden, empty());
  EXPECT_GT(rms(solid, empty()), 5.0);
}

TEST_F(RunPicture, DensityColoursTellFewRunsFromMany)
{
  chart->ClearPlots();
  // One run above, all others in one place below.
  auto const crowd = [](int run, int) { return run == 0 ? 6.0 : -6.0; };
  vtkPlotLineSet* lines = add(tableOf({0, runs}, crowd));
  lines->SetDensityColors(vtkPlotLineSet::DENSITY_LOGARITHMIC);
  const QImage shades = picture();
  auto const darkest = [&](int from, int to) {
    int least = 255 * 3;
    for (int y = from; y < to; ++y) {
      const QColor color = shades.pixelColor(shades.width() / 2, y);
      least = std::min(least, color.red() + color.green() + color.blue());
    }
    return least;
  };
  const int one = darkest(40, 120);
  const int many = darkest(230, 300);
  EXPECT_LT(one, 3 * 245);
  EXPECT_LT(many, one - 200);
  lines->SetDensityColors(17);
  EXPECT_EQ(lines->GetDensityColors(), vtkPlotLineSet::DENSITY_OFF);
  const QImage plain = picture();
  EXPECT_EQ(plain, asImage(crowd));
}

TEST_F(RunPicture, DensityColoursHaveTwoScales)
{
  chart->ClearPlots();
  vtkPlotLineSet* lines = add(tableOf({0, runs}));
  lines->SetDensityColors(vtkPlotLineSet::DENSITY_LOGARITHMIC);
  const QImage logarithmic = picture();
  lines->SetDensityColors(vtkPlotLineSet::DENSITY_EQUAL_AREA);
  EXPECT_EQ(lines->GetDensityColors(), vtkPlotLineSet::DENSITY_EQUAL_AREA);
  const QImage equalArea = picture();
  EXPECT_GT(rms(equalArea, logarithmic), 3.0);
  EXPECT_GT(rms(equalArea, empty()), 20.0);
}

TEST_F(RunPicture, InDensityColoursARunCountsOnceHoweverManyOfItsRowsAreSelected)
{
  chart->ClearPlots();
  auto table = tableOf({0, runs});
  add(table)->SetDensityColors(vtkPlotLineSet::DENSITY_LOGARITHMIC);
  flag(table, [](int run) { return run % 3 == 0 ? 1 : 0; });
  const QImage one = picture();
  flag(table, [](int run) { return run % 3 == 0 ? 9 : 0; });
  EXPECT_EQ(picture(), one);
}

} // namespace
} // namespace runsieve::test
