#include "LineScene.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkPlotLine.h>

#include <chrono>
#include <limits>

namespace runsieve::test {
namespace {

constexpr int groups = 4;

/// Grouped runs, each a line of its own, as one image; and the same runs as plots of VTK.
struct ClusterLines : LineScene
{
  explicit ClusterLines(int width = 500, int height = 360, int samples = 8)
      : LineScene(width, height, samples)
  {
    container.chartXY = chart;
  }
  ~ClusterLines() override { container.chartXY = nullptr; }

  /// Runs of four shapes, each a little different.
  static double shape(int run, int time)
  {
    const double own = std::fmod(0.618034 * run, 1.0);
    const double rate = 0.08 + 0.07 * (run % groups);
    return (4.0 + 6.0 * own) * std::sin(rate * time + 0.4 * (run % groups)) + own;
  }

  void group(int runs, Curve const& curve = shape)
  {
    auto table = vtkSmartPointer<vtkTable>::New();
    container.clusterLabels = vtkSmartPointer<vtkIntArray>::New();
    for (int run = 0; run < runs; ++run) {
      std::vector<double> values;
      for (int time = 0; time < times; ++time) values.push_back(curve(run, time));
      table->AddColumn(makeColumn(std::to_string(run), values));
      container.clusterLabels->InsertNextValue(run % groups);
    }
    std::vector<double> axis;
    for (int time = 0; time < times; ++time) axis.push_back(time);
    table->AddColumn(makeColumn("Time", axis));
    container.clusterRunTable = table;
  }

  QImage grouped(float width = 4.0F)
  {
    chart->ClearPlots();
    container.drawClusterRuns();
    for (vtkIdType i = 0; i < chart->GetNumberOfPlots(); ++i) chart->GetPlot(i)->SetWidth(width);
    return picture();
  }

  /// Shows plots of VTK with the pens of those that the chart shows now.
  QImage onePlotEach()
  {
    vtkTable* table = container.clusterRunTable;
    std::vector<vtkSmartPointer<vtkPlot>> former;
    for (vtkIdType i = 0; i < chart->GetNumberOfPlots(); ++i) former.push_back(chart->GetPlot(i));
    chart->ClearPlots();
    for (std::size_t i = 0; i < former.size(); ++i) {
      vtkNew<vtkPlotLine> line;
      line->GetPen()->DeepCopy(former[i]->GetPen());
      line->SetVisible(former[i]->GetVisible());
      line->SetInputData(table, "Time", std::to_string(i));
      chart->AddPlot(line);
    }
    return picture();
  }

  PlotContainer container{nullptr};
};

TEST_F(ClusterLines, ManyRunsLookAsIfTheirLinesWereDrawnOneOverAnother)
{
  for (const int runs : {60, 400})
    for (const float width : {4.0F, 1.01F}) {
      group(runs);
      const QImage image = grouped(width);
      const QImage plots = onePlotEach();
      EXPECT_LT(rms(image, plots), 10.0) << runs << " " << width;
    }
}

TEST_F(ClusterLines, ColoursThatLieOverOneAnotherAreTheMeanOfAllOrders)
{
  constexpr int runs = 200;
  constexpr int orders = 8;
  group(runs);
  const QImage image = grouped();
  std::vector<double> sums(3 * static_cast<std::size_t>(image.width() * image.height()), 0.0);
  for (int order = 0; order < orders; ++order) {
    // 37 and 200 have no common divisor; the labels of runs are those of other numbers then.
    auto const place = [order](int run) { return (run * 37 + order * 53) % runs; };
    group(runs, [&](int run, int time) { return shape(place(run), time); });
    for (int run = 0; run < runs; ++run) container.clusterLabels->SetValue(run, place(run) % groups);
    grouped();
    const QImage drawn = onePlotEach();
    for (int y = 0; y < drawn.height(); ++y)
      for (int x = 0; x < 3 * drawn.width(); ++x)
        sums[static_cast<std::size_t>(y * 3 * drawn.width() + x)] += drawn.constScanLine(y)[x];
  }
  QImage mean = image;
  for (int y = 0; y < mean.height(); ++y)
    for (int x = 0; x < 3 * mean.width(); ++x)
      mean.scanLine(y)[x] =
          static_cast<uchar>(sums[static_cast<std::size_t>(y * 3 * mean.width() + x)] / orders + 0.5);
  EXPECT_LT(rms(image, mean), 6.0);
}

TEST_F(ClusterLines, APlotThatAHostChangesLooksAsAPlotOfItsOwn)
{
  group(200);
  const QImage before = grouped(1.5F);
  auto const changed = [this, &before](std::function<void(vtkPlot*)> const& change) {
    grouped(1.5F);
    change(chart->GetPlot(40)); // a line of group 0
    const QImage image = picture();
    EXPECT_GT(rms(image, before), 0.3);
    EXPECT_LT(rms(image, onePlotEach()), 10.0);
    return image;
  };
  changed([](vtkPlot* plot) { plot->SetWidth(9.0F); });
  changed([](vtkPlot* plot) {
    plot->SetWidth(6.0F);
    plot->GetPen()->SetLineType(vtkPen::DASH_LINE);
  });
  changed([](vtkPlot* plot) { plot->SetColor(0, 0, 0, 255); });
  changed([](vtkPlot* plot) { vtkPlotPoints::SafeDownCast(plot)->SetMarkerStyle(vtkPlotPoints::CIRCLE); });
}

TEST_F(ClusterLines, InvisibleRunsAreNotShownAndComeBack)
{
  group(300);
  const QImage all = grouped();
  auto const show = [this](int group, bool isShown) {
    for (int run = group; run < 300; run += groups) chart->GetPlot(run)->SetVisible(isShown);
  };
  show(1, false);
  const QImage three = picture();
  EXPECT_GT(rms(all, three), 15.0);
  show(0, false); // the first of all
  show(1, true);
  const QImage others = picture();
  EXPECT_GT(rms(others, three), 15.0);
  const QImage plots = onePlotEach();
  EXPECT_LT(rms(others, plots), 10.0);
  grouped();
  for (int hidden = 0; hidden < groups; ++hidden) {
    // Each frame shows none of the lines that the one before has shown.
    for (int k = 0; k < groups; ++k) show(k, k == hidden);
    EXPECT_GT(rms(picture(), all), 15.0) << hidden;
  }
  for (int k = 0; k < groups; ++k) show(k, true);
  EXPECT_EQ(picture(), all);
}

TEST_F(ClusterLines, ARunTakenOutOfTheChartIsNotShown)
{
  group(200, [](int run, int time) { return run == 7 ? -10.0 : 5.0 + shape(run, time) / 3.0; });
  const QImage all = grouped();
  const vtkSmartPointer<vtkPlot> kept = chart->GetPlot(7);
  chart->RemovePlot(7);
  const QImage without = picture();
  EXPECT_GT(rms(all, without), 3.0);
  chart->ClearPlots();
  group(200, [](int run, int time) { return run == 7 ? std::nan("") : 5.0 + shape(run, time) / 3.0; });
  EXPECT_EQ(grouped(), without);
}

TEST_F(ClusterLines, ARepaintIsTheSamePictureAndOtherDataAnother)
{
  group(100);
  const QImage first = grouped();
  EXPECT_EQ(picture(), first);
  auto* column = vtkDoubleArray::SafeDownCast(container.clusterRunTable->GetColumn(5));
  for (int time = 0; time < times; ++time) column->SetValue(time, -11.0);
  column->Modified();
  const QImage moved = picture();
  EXPECT_GT(rms(first, moved), 3.0);
  auto const other = tableOf({0, 1}, [](int, int) { return 11.5; });
  chart->GetPlot(6)->SetInputData(other, "x", "y");
  EXPECT_GT(rms(picture(), moved), 3.0);
  chart->GetAxis(vtkAxis::LEFT)->SetRange(-20.0, 12.0);
  const QImage panned = picture();
  EXPECT_GT(rms(panned, moved), 20.0);
}

/// One that is older than the time column, too.
TEST_F(ClusterLines, AColumnThatAHostPutsInPlaceOfAnotherIsShown)
{
  auto const other = makeColumn("5", std::vector<double>(times, -11.0));
  group(100);
  grouped();
  container.clusterRunTable->AddColumn(other);
  container.clusterRunTable->Modified();
  const QImage found = picture();
  EXPECT_EQ(found, grouped());
}

TEST_F(ClusterLines, WhileAHandMovesTheAxesTheImageMoves)
{
  using Hand = MovedImages::Hand;
  MovedImages images(window());
  group(600);
  const QImage before = grouped();
  pan(2.0);
  const QImage moved = frameOf(images, Hand::moves);
  EXPECT_TRUE(images.areShown());
  EXPECT_FALSE(images.count(std::chrono::milliseconds(0)));
  EXPECT_EQ(frameOf(images, Hand::rests), moved);
  while (!images.count(std::chrono::milliseconds(0))) {
  }
  view.render();
  const QImage counted = shown();
  EXPECT_FALSE(images.areShown());
  EXPECT_NE(moved, counted);
  EXPECT_LT(rms(moved, counted), 0.5 * rms(before, counted));
  EXPECT_EQ(counted, grouped());
}

TEST_F(ClusterLines, WithoutAHandTheImageIsCountedAtOnce)
{
  MovedImages images(window());
  group(600);
  static_cast<void>(grouped());
  pan(2.0);
  static_cast<void>(frameOf(images, MovedImages::Hand::moves));
  EXPECT_FALSE(images.count(std::chrono::milliseconds(0)));
  view.render();
  EXPECT_FALSE(images.areShown());
  const QImage counted = shown();
  EXPECT_EQ(counted, grouped());
}

TEST_F(ClusterLines, RunsThatGoOrChangeWhileTheyAreCountedAreNotTouched)
{
  MovedImages images(window());
  group(600);
  static_cast<void>(grouped());
  pan(2.0);
  static_cast<void>(frameOf(images, MovedImages::Hand::moves));
  EXPECT_FALSE(images.count(std::chrono::milliseconds(0)));
  chart->RemovePlotInstance(chart->GetPlot(300));
  EXPECT_TRUE(images.count(std::chrono::milliseconds(0)));
  static_cast<void>(frameOf(images, MovedImages::Hand::moves));
  pan(1.0);
  static_cast<void>(frameOf(images, MovedImages::Hand::moves));
  EXPECT_FALSE(images.count(std::chrono::milliseconds(0)));
  auto* column = vtkDoubleArray::SafeDownCast(container.clusterRunTable->GetColumn(500));
  column->SetValue(3, -11.0);
  column->Modified();
  chart->GetPlot(500)->Update();
  while (!images.count(std::chrono::milliseconds(0))) {
  }
  const QImage counted = picture();
  chart->GetPlot(0)->SetVisible(false);
  static_cast<void>(picture());
  chart->GetPlot(0)->SetVisible(true);
  EXPECT_EQ(picture(), counted);
}

TEST_F(ClusterLines, FewRunsArePolylines)
{
  group(49);
  const QImage few = grouped();
  EXPECT_EQ(few, onePlotEach());
}

TEST_F(ClusterLines, RunsOfManyColoursArePolylines)
{
  group(60);
  grouped();
  for (int run = 0; run < 60; ++run)
    chart->GetPlot(run)->SetColor(static_cast<unsigned char>(4 * run), 0, 99, 180);
  const QImage colored = picture();
  EXPECT_EQ(colored, onePlotEach());
}

TEST_F(ClusterLines, BadPointsAreGaps)
{
  group(80, [](int run, int time) {
    if (time >= 15 && time <= 20) return std::nan("");
    return time == 30 ? std::numeric_limits<double>::infinity() : shape(run, time);
  });
  const QImage gaps = grouped();
  const QImage plots = onePlotEach();
  EXPECT_LT(rms(gaps, plots), 10.0);
  group(80);
  EXPECT_GT(rms(gaps, grouped()), 15.0);
}

TEST_F(ClusterLines, LogarithmicAxesAreFollowed)
{
  group(100, [](int run, int time) { return 20.0 + shape(run, time); });
  chart->GetAxis(vtkAxis::LEFT)->SetRange(5.0, 40.0);
  const QImage linear = grouped();
  chart->GetAxis(vtkAxis::LEFT)->LogScaleOn();
  chart->GetAxis(vtkAxis::LEFT)->SetUnscaledRange(5.0, 40.0);
  const QImage logarithmic = picture();
  EXPECT_GT(rms(linear, logarithmic), 15.0);
  const QImage plots = onePlotEach();
  EXPECT_LT(rms(logarithmic, plots), 10.0);
}

TEST_F(ClusterLines, AxesThatFollowTheRunsHaveTheSameRange)
{
  for (int side : {vtkAxis::BOTTOM, vtkAxis::LEFT}) chart->GetAxis(side)->SetBehavior(vtkAxis::AUTO);
  auto const ends = [this] {
    std::vector<double> all;
    for (int side : {vtkAxis::BOTTOM, vtkAxis::LEFT}) {
      all.push_back(chart->GetAxis(side)->GetMinimum());
      all.push_back(chart->GetAxis(side)->GetMaximum());
    }
    return all;
  };
  for (const double factor : {1.0, 1e-9, 3e12}) {
    group(60, [factor](int run, int time) { return factor * shape(run, time); });
    grouped();
    const std::vector<double> own = ends();
    onePlotEach();
    EXPECT_EQ(own, ends()) << factor;
  }
}

TEST_F(ClusterLines, AHiddenLegendHasNoPlaceForRunsAndAShownOneHas)
{
  group(60);
  grouped();
  EXPECT_FALSE(chart->GetPlot(0)->GetLegendVisibility());
  chart->SetShowLegend(true);
  EXPECT_TRUE(chart->GetPlot(0)->GetLegendVisibility());
  chart->GetPlot(0)->SetLegendVisibility(false);
  EXPECT_FALSE(chart->GetPlot(0)->GetLegendVisibility());
}

} // namespace
} // namespace runsieve::test
