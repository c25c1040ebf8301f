#include "DocumentScene.h"
#include "PaintRecorder.h"

#include "app/explorer/parameters/BoxLimits.h"

#include <gmock/gmock.h>

#include <QHelpEvent>
#include <QToolTip>

namespace runsieve::test {
namespace {

/// The limits of a box of three parameters, of which two are restricted.
struct PaintedLimits : DocumentScene
{
  app::ParameterRuns runs{document};
  app::BoxLimits limits{runs};
  std::shared_ptr<BoxOfRuns> box = std::make_shared<BoxOfRuns>();

  PaintedLimits()
  {
    for (std::size_t i = 0; i < 3; ++i) {
      BoxParameter parameter;
      parameter.name = "k" + std::to_string(i);
      parameter.parameter = i;
      parameter.isRestricted = i != 1;
      box->parameters.push_back(parameter);
    }
    box->parameters[0].low = 0.25;
    box->parameters[0].quasiP = 0.04;
    box->parameters[2].high = 0.75;
    box->parameters[2].quasiP = 0.01;
    limits.resize(300, 200);
    limits.show(box);
    limits.QWidget::show();
  }
  [[nodiscard]] Painting painted()
  {
    return painting(QSize(300, 200), [this](QPainter& painter) {
      limits.viewport()->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    });
  }
  [[nodiscard]] std::vector<QRectF> bars(QColor const& color)
  {
    std::vector<QRectF> found;
    for (Drawn const& each : painted().of(Drawn::Kind::Rectangle))
      if (each.brush.color() == color) found.push_back(each.box());
    return found;
  }
};

TEST_F(PaintedLimits, AreTheRestrictedParametersTheMostCertainFirst)
{
  EXPECT_EQ(limits.count(), 2u);
  const Painting picture = painted();
  const QRectF first = placeOf(picture, "k2");
  const QRectF second = placeOf(picture, "k0");
  ASSERT_FALSE(first.isNull());
  ASSERT_FALSE(second.isNull());
  EXPECT_LT(first.bottom(), second.top());
  EXPECT_TRUE(placeOf(picture, "k1").isNull());
}

TEST_F(PaintedLimits, AreSaidAtTheRightOfTheName)
{
  const Painting picture = painted();
  for (auto const& [name, text] : {std::pair{"k2", "at most 0.75"}, std::pair{"k0", "at least 0.25"}}) {
    const QRectF place = placeOf(picture, text);
    ASSERT_FALSE(place.isNull()) << text;
    EXPECT_GT(place.left(), placeOf(picture, name).right());
    EXPECT_NEAR(place.bottom(), placeOf(picture, name).bottom(), 1.0);
    EXPECT_LE(place.right(), 300.0);
  }
}

TEST_F(PaintedLimits, TellMoreOfTheRowUnderThePointerAndNothingBelowTheLastOne)
{
  auto const tipOver = [this](int y) {
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, QPoint(100, y), limits.viewport()->mapToGlobal(QPoint(100, y)));
    QApplication::sendEvent(limits.viewport(), &help);
    return QToolTip::text().toStdString();
  };
  const int row = static_cast<int>(placeOf(painted(), "k0").bottom() - placeOf(painted(), "k2").bottom());
  EXPECT_THAT(tipOver(row / 2), testing::HasSubstr("k2: at most 0.75"));
  EXPECT_THAT(tipOver(row + row / 2), testing::HasSubstr("k0: at least 0.25"));
  auto const isGone = [] { return waitFor([] { return QToolTip::text().isEmpty(); }, 2000); };
  for (int const below : {2, 3}) {
    static_cast<void>(tipOver(below * row + row / 2));
    EXPECT_TRUE(isGone()) << below;
  }
}

TEST_F(PaintedLimits, BarsReachFromALimitToTheEndOfTheRange)
{
  const app::Theme theme = app::Theme::ofPalette(limits.palette(), limits.font());
  const std::vector<QRectF> inside = bars(theme.passing);
  ASSERT_EQ(inside.size(), 2u);
  const double width = 300.0 - 20.0;
  EXPECT_NEAR(inside[0].left(), 10.0, 6.0) << "k2 has no lower limit";
  EXPECT_NEAR(inside[0].width() / width, 0.75, 0.06);
  EXPECT_NEAR(inside[1].right(), 290.0, 6.0) << "k0 has no upper limit";
  EXPECT_NEAR(inside[1].width() / width, 0.75, 0.06);
}

TEST_F(PaintedLimits, WithoutABoxNothingIsListed)
{
  limits.show(nullptr);
  EXPECT_EQ(limits.count(), 0u);
  EXPECT_TRUE(painted().texts().isEmpty());
}

} // namespace
} // namespace runsieve::test
