// Where gates on parameters lie on an axis, and what of them is under a pointer.

#include "DocumentScene.h"

#include "app/explorer/parameters/FoldingSplitter.h"
#include "app/explorer/parameters/OutputFeature.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QLabel>
#include <QWidget>

#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::ParameterSpan;
using app::SpanAxis;
using app::SpanGrip;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// An axis on which values are pixels, with one span.
struct SpanUnderPointer : testing::Test
{
  SpanAxis axis{0, AxisMap(0.0, 100.0), 0.0, 100.0};
  std::vector<ParameterSpan> spans = {{0, {20.0, 60.0}}};

  [[nodiscard]] std::optional<SpanGrip> grip(double pixel) const
  {
    auto const found = app::spanAt(spans, axis, pixel);
    return found ? std::optional(found->grip) : std::nullopt;
  }
  void expectLow(std::vector<double> const& pixels) const { expect(pixels, SpanGrip::Low); }
  void expectHigh(std::vector<double> const& pixels) const { expect(pixels, SpanGrip::High); }
  void expectWhole(std::vector<double> const& pixels) const { expect(pixels, SpanGrip::Whole); }
  void expectNone(std::vector<double> const& pixels) const
  {
    for (double const pixel : pixels) EXPECT_FALSE(grip(pixel)) << pixel;
  }

private:
  void expect(std::vector<double> const& pixels, SpanGrip wanted) const
  {
    for (double const pixel : pixels) {
      ASSERT_TRUE(grip(pixel)) << pixel;
      EXPECT_EQ(*grip(pixel), wanted) << pixel;
    }
  }
};

TEST_F(SpanUnderPointer, IsHeldByAnEndWithinFivePixelsOfItElseByItsMiddle)
{
  expectNone({14.9, 65.1});
  expectLow({15.0, 20.0, 25.0});
  expectWhole({25.1, 40.0, 54.9});
  expectHigh({55.0, 60.0, 65.0});
}

TEST_F(SpanUnderPointer, IsMovedByItsMiddleAlsoIfItIsNarrow)
{
  spans[0].range = {20.0, 28.0};
  expectLow({15.0, 22.0});
  expectWhole({22.1, 25.9});
  expectHigh({26.001, 32.999});
}

TEST_F(SpanUnderPointer, IsFoundOnAnAxisThatRisesAsWell)
{
  axis.first = 100.0;
  axis.last = 0.0;
  expectNone({85.1, 34.9});
  expectLow({85.0, 75.0});
  expectWhole({74.9, 45.1});
  expectHigh({45.0, 35.0});
}

TEST_F(SpanUnderPointer, HasNoEndWhereItIsOpen)
{
  spans[0].range = {-infinity, 60.0};
  expectNone({-0.1});
  expectWhole({0.0, 2.0});
  spans[0].range = {20.0, infinity};
  expectWhole({98.0, 100.0});
  expectNone({100.1});
}

TEST_F(SpanUnderPointer, BeginsAtTheAxisWhereThatDoesNotHaveItsEnd)
{
  axis.map = AxisMap(1.0, 100.0, true);
  ParameterSpan const below{0, {-5.0, 10.0}};
  EXPECT_EQ(axis.lowPixel(below), 0.0);
  EXPECT_EQ(axis.highPixel(below), 50.0);
  ParameterSpan const negative{0, {-5.0, -1.0}};
  EXPECT_EQ(axis.highPixel(negative), 0.0) << "all of it is below the axis";
  ParameterSpan const open{0, {10.0, infinity}};
  EXPECT_EQ(axis.highPixel(open), 100.0);
}

TEST_F(SpanUnderPointer, IsTheChosenOneOfSeveralElseTheOneAbove)
{
  spans = {{0, {20.0, 60.0}}, {1, {30.0, 70.0}}};
  EXPECT_EQ(app::spanAt(spans, axis, 45.0)->span.gate, 1u);
  spans[0].isChosen = true;
  EXPECT_EQ(app::spanAt(spans, axis, 45.0)->span.gate, 0u);
  spans[0].isChosen = false;
  spans[1].isChosen = true;
  EXPECT_EQ(app::spanAt(spans, axis, 45.0)->span.gate, 1u);
  EXPECT_EQ(app::spanAt(spans, axis, 23.0)->span.gate, 0u);
}

using OutputFeatureScene = DocumentScene;

TEST_F(OutputFeatureScene, IsMadeAnewOnlyForAnotherOutputAnotherAxisOrOtherData)
{
  app::OutputFeature feature(document);
  ASSERT_TRUE(feature.update());
  EXPECT_EQ(feature.title(), "last A");
  const auto first = feature.version();
  ASSERT_TRUE(feature.update());
  EXPECT_EQ(feature.version(), first);
  document.change("Output", [](app::State& state) { state.view.outputs = {1}; });
  ASSERT_TRUE(feature.update());
  EXPECT_EQ(feature.title(), "last B (nM)");
  EXPECT_NE(feature.version(), first);
  const auto second = feature.version();
  document.change("Log", [](app::State& state) { state.view.logOutputs[1] = true; });
  ASSERT_TRUE(feature.update());
  EXPECT_NE(feature.version(), second);
  EXPECT_TRUE(feature.axis().isLogarithmic());
  const auto third = feature.version();
  document.open(lineScan(), {});
  ASSERT_TRUE(feature.update());
  EXPECT_NE(feature.version(), third);
  document.close();
  EXPECT_FALSE(feature.update());
}

TEST(FoldingSplitter, PutsItsPartsBesideOneAnotherWhereThereIsRoomForTwo)
{
  // Within a window, as a window's own size is the window system's, which may still answer show().
  QWidget host;
  app::FoldingSplitter splitter;
  splitter.setParent(&host);
  splitter.addWidget(new QLabel("left"));
  splitter.addWidget(new QLabel("right"));
  host.show();
  for (auto const& [width, wanted] :
       {std::pair(700, Qt::Horizontal), {559, Qt::Vertical}, {560, Qt::Horizontal}}) {
    splitter.resize(width, 300);
    EXPECT_EQ(splitter.orientation(), wanted) << width;
  }
  EXPECT_FALSE(splitter.childrenCollapsible());
}

} // namespace
} // namespace runsieve::test
