#include "FigureScene.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/figure/WriteFigure.h"

#include <gmock/gmock.h>

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

using app::FigureFormat;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A scan of runs that wander: hard to make small.
std::shared_ptr<Scan const> wanderingScan(std::size_t runs)
{
  auto scan = std::make_shared<Scan>();
  scan->time.name = "Time";
  for (int t = 0; t <= 100; ++t) scan->times.push_back(t);
  for (std::size_t run = 0; run < runs; ++run)
    scan->runs.push_back({std::to_string(run), RunStatus::Complete, scan->times.size()});
  for (std::size_t p = 0; p < 8; ++p) {
    ScanParameter parameter;
    parameter.label.name = "k" + std::to_string(p);
    for (std::size_t run = 0; run < runs; ++run) parameter.values.push_back(scattered(p, run));
    scan->parameters.push_back(std::move(parameter));
  }
  for (char const* name : {"A", "B"}) {
    double* value = scan->addOutput({name, "", "", ""});
    for (std::size_t run = 0; run < runs; ++run) {
      double at = scattered(0, run);
      for (std::size_t t = 0; t < scan->times.size(); ++t) *value++ = at += scattered(3, 101 * run + t) - 0.5;
    }
  }
  scan->check();
  return scan;
}

/// What stands in the text elements of an SVG; it must be well-formed.
QStringList textsOf(QByteArray const& svg)
{
  QStringList texts;
  QXmlStreamReader reader(svg);
  while (!reader.atEnd())
    if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "text")
      texts << reader.readElementText().trimmed();
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
  return texts;
}

/// The streams of a PDF, inflated if they are deflated.
QByteArray streamsOf(QByteArray const& pdf)
{
  QByteArray all;
  int end = 0;
  for (int begin = pdf.indexOf("\nstream\n"); begin >= 0; begin = pdf.indexOf("\nstream\n", end)) {
    end = pdf.indexOf("endstream", begin);
    if (end < 0) break;
    const QByteArray stream = pdf.mid(begin + 8, end - begin - 8);
    constexpr char likelySize[] = {0, 1, 0, 0};
    if (stream.startsWith('x')) all += qUncompress(QByteArray(likelySize, 4) + stream); // deflated
  }
  return all;
}

struct FigureFile : FigureScene
{
  [[nodiscard]] QByteArray bytes(FigureFormat format) const
  {
    return app::figureBytes(content(), options, format).bytes;
  }
  [[nodiscard]] QStringList texts() const { return textsOf(bytes(FigureFormat::Svg)); }
};

TEST_F(FigureFile, APngHasThePixelsOfItsSizeAndTellsItsResolution)
{
  options.width = 85.0;
  options.height = 100.0;
  options.dpi = 600;
  const QImage image = QImage::fromData(bytes(FigureFormat::Png), "PNG");
  EXPECT_EQ(image.size(), QSize(2008, 2362));
  EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 600.0, 0.1);
}

TEST_F(FigureFile, AnSvgHasRealTextAndOneImageForEachChart)
{
  addGate(gateOnA(0.5, 1.0));
  document.change("Add chart", [](app::State& state) { state.view.outputs = {0, 1}; });
  ASSERT_TRUE(settle());
  options.title = "Which parameter?";
  const QByteArray svg = bytes(FigureFormat::Svg);
  const QStringList found = textsOf(svg);
  for (char const* text : {"Which parameter?", "A", "B (nM)", "Time (min)", "Gate 1", "k0"})
    EXPECT_TRUE(found.contains(text)) << text << " is not among " << found.join(" | ").toStdString();
  EXPECT_EQ(svg.count("<image"), 2);
  EXPECT_THAT(svg.left(600).toStdString(), HasSubstr("width=\"180mm\""));
  const app::FigureOptions whole;
  EXPECT_THAT(svg.left(600).toStdString(),
              HasSubstr(QString("viewBox=\"0 0 %1 ").arg(app::figureSize(whole).width()).toStdString()));
}

TEST_F(FigureFile, APdfHasLettersThatCanBeSelected)
{
  const QByteArray pdf = bytes(FigureFormat::Pdf);
  EXPECT_TRUE(pdf.contains("/ToUnicode"));
  const QByteArray streams = streamsOf(pdf);
  EXPECT_TRUE(streams.contains(" Tj") || streams.contains(" TJ") || streams.contains("Tj"));
}

TEST_F(FigureFile, APdfIsAsLargeAsAskedFor)
{
  options.width = 127.0; // 360 points
  options.height = 101.6;
  EXPECT_TRUE(bytes(FigureFormat::Pdf).contains("/MediaBox [0 0 360.000000 288.000000]"));
}

TEST_F(FigureFile, AThousandWanderingRunsTakeLessThan500KilobytesAsShapes)
{
  document.open(wanderingScan(1000), {});
  document.change("Add gate", [](app::State& state) {
    Gate gate = gateOnA(-1.0, 1.0);
    state.gates.push_back({"Gate 1", gate, true});
    state.view.outputs = {0, 1};
  });
  ASSERT_TRUE(settle());
  options.dpi = 600;
  for (FigureFormat format : {FigureFormat::Svg, FigureFormat::Pdf}) {
    const auto made = app::figureBytes(content(), options, format);
    EXPECT_LT(made.bytes.size(), 500'000) << made.imageDpi;
    EXPECT_GE(made.imageDpi, 100);
  }
}

TEST_F(FigureFile, WhatThePointerIsOverIsNeverInAPicture)
{
  const QByteArray before = bytes(FigureFormat::Png);
  document.hover(3);
  EXPECT_EQ(bytes(FigureFormat::Png), before);
  document.togglePin(3);
  EXPECT_NE(bytes(FigureFormat::Png), before);
}

TEST_F(FigureFile, ParametersStandInTheOrderOfTheTableWithDAndP)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  options.strongest = 2;
  const QStringList found = texts();
  const int first = found.indexOf("k0");
  ASSERT_GE(first, 0);
  EXPECT_THAT(found[first + 1].toStdString(), AllOf(HasSubstr("d +1.00"), HasSubstr("p "), HasSubstr("*")));
  EXPECT_EQ(found.filter(QRegularExpression("^k[0-9]$")).size(), 2);
}

TEST_F(FigureFile, ListedParametersTakeThePlaceOfTheStrongest)
{
  options.parameters = {4, 2};
  EXPECT_EQ(texts().filter(QRegularExpression("^k[0-9]$")), QStringList({"k4", "k2"}));
}

TEST_F(FigureFile, WhatIsNotWantedIsLeftOut)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(texts().contains(QString("passing runs (%1)").arg(document.passing().count())));
  EXPECT_FALSE(texts().filter("adjusted p").isEmpty());
  options.counts = false;
  EXPECT_TRUE(texts().contains("passing runs"));
  options.legend = options.gates = options.thresholds = false;
  options.strongest = 0;
  const QStringList found = texts();
  EXPECT_TRUE(found.filter("passing").isEmpty());
  EXPECT_FALSE(found.contains("Gate 1"));
  EXPECT_TRUE(found.filter("adjusted p").isEmpty());
}

TEST_F(FigureFile, GatesThatAreOffAreNotDrawn)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.9));
  document.change("Switch gate", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_FALSE(texts().contains("Gate 1"));
  EXPECT_TRUE(texts().contains("Gate 2"));
}

TEST_F(FigureFile, NamesAreNoMarkup)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  scan->runs = {{"<i>1</i>", RunStatus::Complete, 2}, {"2", RunStatus::Complete, 2}};
  double* value = scan->addOutput({"<b>A</b> & \"B\"", "", "", ""});
  for (int i = 0; i < 4; ++i) value[i] = i;
  ScanParameter parameter;
  parameter.label.name = "\xce\xb1 < \xce\xb2";
  parameter.values = {1.0, 2.0};
  scan->parameters.push_back(parameter);
  document.open(scan, {});
  document.togglePin(0);
  const QStringList found = texts();
  EXPECT_TRUE(found.contains("<b>A</b> & \"B\"")) << found.join(" | ").toStdString();
  EXPECT_TRUE(found.contains(QString::fromUtf8("\xce\xb1 < \xce\xb2")));
  EXPECT_TRUE(found.contains("<i>1</i>"));
}

TEST_F(FigureFile, OddScansAreDrawnInEveryLook)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {5.0}; // a single one
  for (int run = 0; run < 30; ++run)
    scan->runs.push_back({std::to_string(run), run == 3 ? RunStatus::Failed : RunStatus::Complete, 1});
  double* value = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 30; ++run) value[run] = run == 3 ? nan : run == 4 ? 0.0 : run;
  ScanParameter text;
  text.label.name = "strain";
  text.texts = {"WT", "mutant"};
  ScanParameter missing;
  missing.label.name = "missing";
  for (int run = 0; run < 30; ++run) {
    text.values.push_back(run % 2);
    missing.values.push_back(nan);
  }
  scan->parameters = {text, missing};
  document.open(scan, {});
  Gate gate;
  gate.column = "A";
  gate.range = {10.0, 20.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  document.change("Log", [](app::State& state) { state.view.logOutputs[0] = true; });
  for (auto runs : {app::RunsLook::Density, app::RunsLook::Lines, app::RunsLook::Bands})
    for (auto parameters :
         {app::ParameterLook::Curves, app::ParameterLook::Densities, app::ParameterLook::Scatter}) {
      options.runsLook = runs;
      options.parameterLook = parameters;
      EXPECT_TRUE(texts().contains("strain"));
      EXPECT_FALSE(bytes(FigureFormat::Png).isEmpty());
    }
}

TEST_F(FigureFile, AFigureWithoutAGroundIsTransparent)
{
  options.ground = false;
  const QImage clear = QImage::fromData(bytes(FigureFormat::Png), "PNG");
  EXPECT_EQ(qAlpha(clear.pixel(2, 2)), 0);
  options.ground = true;
  const QImage white = QImage::fromData(bytes(FigureFormat::Png), "PNG");
  EXPECT_EQ(white.pixel(2, 2), qRgb(255, 255, 255));
}

TEST_F(FigureFile, OptionsOutOfRangeAreMovedIntoIt)
{
  options.width = nan;
  options.height = 1e9;
  options.fontSize = -3.0;
  options.dpi = 5;
  const app::FigureOptions limited = app::withinLimits(options);
  EXPECT_EQ(limited.width, app::FigureOptions::shortest);
  EXPECT_EQ(limited.height, app::FigureOptions::longest);
  EXPECT_EQ(limited.fontSize, app::FigureOptions::smallestFont);
  EXPECT_EQ(limited.dpi, app::FigureOptions::leastDpi);
}

TEST_F(FigureFile, MorePixelsThanAMachineHoldsAreRefusedWithTheFinestResolution)
{
  options.width = options.height = 1000.0;
  options.dpi = 1200;
  try {
    (void)app::figureBytes(content(), options, app::FigureFormat::Png);
    ADD_FAILURE() << "47244 x 47244 pixels were painted";
  } catch (std::runtime_error const& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr("47244"));
    EXPECT_THAT(error.what(), testing::HasSubstr("439 dpi are the most"));
  }
  EXPECT_EQ(app::finestDpi(options), 439);
  options.dpi = 439;
  EXPECT_TRUE(app::tooManyPixels(options).isEmpty());
  options.width = options.height = 100.0;
  EXPECT_EQ(app::finestDpi(options), 1200);
}

TEST_F(FigureFile, TheNameSaysTheFormat)
{
  EXPECT_EQ(app::figureFormatOf("a.b/c.PDF"), FigureFormat::Pdf);
  EXPECT_EQ(app::figureFormatOf("c.svg"), FigureFormat::Svg);
  EXPECT_THROW((void)app::figureFormatOf("c.gif"), std::runtime_error);
}

TEST_F(FigureFile, APdfHasAtMost300DotsPerInchInItsImagesAndAPngThoseAskedFor)
{
  options.strongest = 0;
  options.dpi = 600;
  options.width = options.height = 50.0;
  EXPECT_EQ(app::figureBytes(content(), options, FigureFormat::Pdf).imageDpi, 300);
  EXPECT_EQ(app::figureBytes(content(), options, FigureFormat::Png).imageDpi, 600);
  options.dpi = 100;
  EXPECT_EQ(app::figureBytes(content(), options, FigureFormat::Svg).imageDpi, 100);
}

TEST(ClippedLine, PartsOutsideAreCutOff)
{
  const QPolygonF line({{-10.0, 5.0}, {5.0, 5.0}, {5.0, 30.0}, {8.0, 30.0}, {8.0, 5.0}});
  const auto parts = app::clippedLine(line, QRectF(0, 0, 10, 10));
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[0], QPolygonF(QVector<QPointF>{{0.0, 5.0}, {5.0, 5.0}, {5.0, 10.0}}));
  EXPECT_EQ(parts[1], QPolygonF(QVector<QPointF>{{8.0, 10.0}, {8.0, 5.0}}));
}

TEST(ClippedLine, MissingPointsInterruptIt)
{
  const auto parts = app::clippedLine(QPolygonF(QVector<QPointF>{{1, 1}, {2, 2}, {3, nan}, {4, 4}, {5, 5}}),
                                      QRectF(0, 0, 10, 10));
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[1], QPolygonF(QVector<QPointF>{{4.0, 4.0}, {5.0, 5.0}}));
}

TEST(ClippedLine, PointsThatStandCloseAreLeftOutButForTheEnds)
{
  QPolygonF line;
  for (int i = 0; i <= 100; ++i) line << QPointF(0.1 * i, 1.0);
  const auto parts = app::clippedLine(line, QRectF(0, 0, 10, 10), 1.0);
  ASSERT_EQ(parts.size(), 1u);
  EXPECT_LE(parts[0].size(), 12);
  EXPECT_EQ(parts[0].last(), QPointF(10.0, 1.0));
}

} // namespace
} // namespace runsieve::test
