#include "DocumentScene.h"

#include "app/explorer/figure/WriteFigure.h"

#include <gmock/gmock.h>

#include <QDir>

namespace runsieve::test {
namespace {

struct FigureScene : DocumentScene
{
  app::FigureOptions options;

  [[nodiscard]] app::FigureContent content() const
  {
    return app::figureContentOf(document, {0.0, 10.0}, {});
  }
};

TEST_F(FigureScene, APngHasThePixelsOfItsSizeAndTellsItsResolution)
{
  options.width = 85.0;
  options.height = 100.0;
  options.dpi = 600;
  const auto made = app::figureBytes(content(), options, app::FigureFormat::Png);
  const QImage image = QImage::fromData(made.bytes, "PNG");
  EXPECT_EQ(image.width(), 2008);
  EXPECT_EQ(image.height(), 2362);
  EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 600.0, 0.1);
}

} // namespace
} // namespace runsieve::test
