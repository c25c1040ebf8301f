#include "app/desk/DeskCommands.h"

#include "core/compare/ParameterScan.h"
#include "support/TempFile.h"
#include "SvgTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <filesystem>
#include <limits>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

struct PairDrawing : testing::Test
{
  TempFolder folder;
  app::PairsArguments arguments;
  app::PairPicture picture;

  PairDrawing()
  {
    arguments.width = 600;
    arguments.height = 450;
    picture.title = "the gates";
  }

  void draw(Scan const& scan, RunSet const& passing, RunSet const& eligible, char const* name)
  {
    picture.passing = passing;
    picture.eligible = eligible;
    arguments.picture = folder.file(name);
    drawPairPicture(arguments, scan, picture);
  }
  [[nodiscard]] std::vector<std::string> textsOf(Scan const& scan, RunSet const& passing,
                                                 RunSet const& eligible)
  {
    draw(scan, passing, eligible, "pairs.svg");
    return svgTexts(arguments.picture);
  }
  [[nodiscard]] QImage imageOf(Scan const& scan, RunSet const& passing, RunSet const& eligible)
  {
    draw(scan, passing, eligible, "pairs.png");
    return QImage(QString::fromStdString(arguments.picture));
  }

  void addPair(std::string const& first, std::size_t x, std::string const& second, std::size_t y)
  {
    ParameterPair pair;
    pair.first = first;
    pair.second = second;
    pair.firstParameter = x;
    pair.secondParameter = y;
    pair.rPassing = 0.426;
    pair.rOthers = -0.0204;
    pair.p = 0.002;
    pair.significant = true;
    picture.pairs.push_back(pair);
  }

  /// The middle of the dots of passing runs, below the legend; nothing without any.
  static QPointF middleOfPassing(QImage const& image)
  {
    QPointF sum;
    int count = 0;
    for (int y = image.height() / 8; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        if (color.red() < color.blue() + 60) continue;
        sum += QPointF(x, y);
        ++count;
      }
    return count > 0 ? sum / count : QPointF();
  }
};

TEST_F(PairDrawing, NamesNumbersAndCountsAreTold)
{
  addPair("k1", 0, "k2", 1);
  const Scan scan = parameterScan({{"k1", {1, 2, 3, 4, 5}}, {"k2", {1, 3, 2, 5, 4}}});
  const auto texts = textsOf(scan, runSet(5, {1, 2}), RunSet(5, true));
  for (char const* text :
       {"the gates", "2 passing", "3 others", "k1", "k2", "r = +0.43 (others -0.02), p = 0.002 *"})
    EXPECT_THAT(texts, Contains(text));
}

TEST_F(PairDrawing, APointStandsWhereItsValuesAre)
{
  addPair("k1", 0, "k2", 1);
  const Scan scan = parameterScan({{"k1", {0, 10, 5}}, {"k2", {0, 10, 2}}});
  const QPointF high = middleOfPassing(imageOf(scan, runSet(3, {1}), RunSet(3, true)));
  const QPointF low = middleOfPassing(imageOf(scan, runSet(3, {0}), RunSet(3, true)));
  const QPointF between = middleOfPassing(imageOf(scan, runSet(3, {2}), RunSet(3, true)));
  EXPECT_GT(high.x(), low.x() + 200.0);
  EXPECT_LT(high.y(), low.y() - 100.0) << "up";
  EXPECT_NEAR(between.x(), 0.5 * (high.x() + low.x()), 2.0);
  EXPECT_NEAR(between.y(), low.y() + 0.2 * (high.y() - low.y()), 2.0);
}

TEST_F(PairDrawing, PassingRunsLieAboveTheOthers)
{
  addPair("k1", 0, "k2", 1);
  Values x(2000, 5.0);
  x[0] = 0.0;
  x[1] = 10.0;
  const Scan scan = parameterScan({{"k1", x}, {"k2", x}});
  const QImage image = imageOf(scan, runSet(2000, {1000}), RunSet(2000, true));
  EXPECT_FALSE(middleOfPassing(image).isNull()) << "one of 1,998 at the same place";
}

TEST_F(PairDrawing, RunsWithoutAFiniteValueAndThoseThatTakeNoPartAreLeftOut)
{
  addPair("k1", 0, "k2", 1);
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Scan scan = parameterScan({{"k1", {1, nan, 3, 4, 9, 6}}, {"k2", {1, 3, infinity, 5, 9, 9}}});
  const RunSet eligible = runSet(6, {0, 1, 2, 3, 4});
  EXPECT_TRUE(middleOfPassing(imageOf(scan, runSet(6, {1, 2}), eligible)).isNull());
  EXPECT_TRUE(middleOfPassing(imageOf(scan, runSet(6, {5}), eligible)).isNull());
  EXPECT_FALSE(middleOfPassing(imageOf(scan, runSet(6, {3}), eligible)).isNull());
  EXPECT_THAT(textsOf(scan, runSet(6, {1, 3}), eligible), Contains("2 passing"))
      << "those without a value pass all the same";
}

TEST_F(PairDrawing, AnAxisOfManyDecadesIsLogarithmic)
{
  addPair("k1", 0, "k2", 1);
  const Scan scan = parameterScan({{"k1", {0.001, 1, 1000}}, {"k2", {0, 1, 2}}});
  const auto texts = textsOf(scan, runSet(3, {1}), RunSet(3, true));
  for (char const* number : {"0.001", "0.1", "10", "1000"}) EXPECT_THAT(texts, Contains(number));
}

TEST_F(PairDrawing, SixPairsHaveAChartEach)
{
  std::vector<std::pair<std::string, Values>> parameters;
  for (int i = 0; i < 7; ++i) parameters.emplace_back("k" + std::to_string(i), Values{1.0 * i, 3.0, 2.0});
  for (std::size_t i = 1; i < 7; ++i) addPair("k0", 0, "k" + std::to_string(i), i);
  const Scan scan = parameterScan(parameters);
  const auto texts = textsOf(scan, runSet(3, {0}), RunSet(3, true));
  for (int i = 1; i < 7; ++i) EXPECT_THAT(texts, Contains("k" + std::to_string(i)).Times(1));
  EXPECT_THAT(texts, Contains("k0").Times(6));
}

TEST_F(PairDrawing, TitlesOfNarrowChartsHaveTwoLines)
{
  for (std::size_t i = 1; i < 4; ++i) addPair("k0", 0, "k" + std::to_string(i), i);
  const Values values = {1, 2, 3};
  const Scan scan = parameterScan({{"k0", values}, {"k1", values}, {"k2", values}, {"k3", values}});
  arguments.height = 150;
  const auto texts = textsOf(scan, runSet(3, {0}), RunSet(3, true));
  EXPECT_THAT(texts, Contains("r = +0.43 (others -0.02), p = 0.002 *").Times(3));
  arguments.width = 420;
  const auto narrow = textsOf(scan, runSet(3, {0}), RunSet(3, true));
  EXPECT_THAT(narrow, Contains("r = +0.43 (others -0.02)").Times(3));
  EXPECT_THAT(narrow, Contains("p = 0.002 *").Times(3));
}

TEST_F(PairDrawing, ALongNameLosesItsMiddle)
{
  const std::string name(300, 'x');
  addPair(name, 0, "k2", 1);
  const Scan scan = parameterScan({{name, {1, 2, 3}}, {"k2", {1, 3, 2}}});
  const auto texts = textsOf(scan, runSet(3, {1}), RunSet(3, true));
  EXPECT_THAT(texts, Not(Contains(name)));
  EXPECT_THAT(texts, Contains(HasSubstr("xx\u2026xx")));
}

TEST_F(PairDrawing, ADocumentOfManyRunsStaysSmall)
{
  addPair("k1", 0, "k2", 1);
  Values x;
  Values y;
  constexpr std::size_t runs = 100'000;
  for (std::size_t i = 0; i < runs; ++i) {
    x.push_back(static_cast<double>(i * 7919 % runs));
    y.push_back(static_cast<double>(i * 104'729 % runs));
  }
  const Scan scan = parameterScan({{"k1", x}, {"k2", y}});
  for (char const* name : {"pairs.pdf", "pairs.svg"}) {
    draw(scan, runSet(runs, {1, 2, 3}), RunSet(runs, true), name);
    EXPECT_LT(std::filesystem::file_size(arguments.picture), 3'000'000u) << name;
    EXPECT_GT(std::filesystem::file_size(arguments.picture), 10'000u) << name;
  }
}

TEST_F(PairDrawing, APictureOfHardlyAnySizeIsNoHarm)
{
  addPair("k1", 0, "k2", 1);
  arguments.width = 1;
  arguments.height = 1;
  const Scan scan = parameterScan({{"k1", {1, 2, 3}}, {"k2", {1, 3, 2}}});
  EXPECT_EQ(imageOf(scan, runSet(3, {1}), RunSet(3, true)).size(), QSize(1, 1));
}

} // namespace
} // namespace runsieve::test
