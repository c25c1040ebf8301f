#include "support/Picture.h"

#include <gmock/gmock.h>
#include <vtkVersionMacros.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using testing::HasSubstr;

namespace runsieve::test {
namespace {

/// White, 20 x 10, with the first pixels of the top row in a grey.
QImage pictureWith(int greyPixels, int grey)
{
  QImage picture(20, 10, QImage::Format_RGB32);
  picture.fill(Qt::white);
  for (int x = 0; x < greyPixels; ++x) picture.setPixel(x, 0, qRgb(grey, grey, grey));
  return picture;
}

struct PictureTest : testing::Test
{
  QTemporaryDir folder;
  PictureFolders folders{folder.filePath("baselines"), folder.filePath("failed")};

  PictureTest()
  {
    QDir().mkpath(folders.baselines);
    pictureWith(0, 0).save(folders.baselines + "/White.png");
  }

  bool wrote(QString const& name) { return QFile::exists(folders.failed + "/" + name); }
};

TEST_F(PictureTest, EqualPicturesDoNotDiffer)
{
  const PictureDifference difference = differenceOf(pictureWith(3, 40), pictureWith(3, 40));
  EXPECT_EQ(difference.mean, 0.0);
  EXPECT_EQ(difference.share, 0.0);
}

TEST_F(PictureTest, OneOfTwoHundredPixelsCounts)
{
  const PictureDifference difference = differenceOf(pictureWith(1, 155), pictureWith(0, 0));
  EXPECT_DOUBLE_EQ(difference.mean, 100.0 / 200);
  EXPECT_DOUBLE_EQ(difference.share, 1.0 / 200);
}

TEST_F(PictureTest, OneChannelIsEnough)
{
  QImage reddish = pictureWith(0, 0);
  reddish.setPixel(4, 5, qRgb(255, 255, 225));
  EXPECT_DOUBLE_EQ(differenceOf(reddish, pictureWith(0, 0)).mean, 30.0 / 600);
  EXPECT_DOUBLE_EQ(differenceOf(reddish, pictureWith(0, 0)).share, 1.0 / 200);
}

TEST_F(PictureTest, FaintDifferencesCountInTheMeanOnly)
{
  EXPECT_DOUBLE_EQ(differenceOf(pictureWith(20, 247), pictureWith(0, 0)).mean, 8.0 / 10);
  EXPECT_EQ(differenceOf(pictureWith(20, 247), pictureWith(0, 0)).share, 0.0);
  EXPECT_DOUBLE_EQ(differenceOf(pictureWith(20, 246), pictureWith(0, 0)).share, 0.1);
}

TEST_F(PictureTest, ThePictureOfTheBaselinePasses)
{
  EXPECT_TRUE(matchesBaseline(pictureWith(0, 0), "White", folders));
  EXPECT_FALSE(wrote("White.png"));
}

TEST_F(PictureTest, ABaselineForTheVersionOfVtkComesFirst)
{
  auto addBaseline = [this](QString const& version, QImage const& picture) {
    QDir().mkpath(folders.baselines + "/" + version);
    picture.save(folders.baselines + "/" + version + "/White.png");
  };
  addBaseline("vtk-8.0", pictureWith(9, 55));
  EXPECT_TRUE(matchesBaseline(pictureWith(0, 0), "White", folders));
  addBaseline(QString("vtk-%1.%2").arg(VTK_MAJOR_VERSION).arg(VTK_MINOR_VERSION), pictureWith(2, 55));
  EXPECT_TRUE(matchesBaseline(pictureWith(2, 55), "White", folders));
  EXPECT_FALSE(matchesBaseline(pictureWith(0, 0), "White", folders));
}

TEST_F(PictureTest, AnotherPictureFailsWithFiguresAndFiles)
{
  const auto result = matchesBaseline(pictureWith(2, 55), "White", folders);
  EXPECT_FALSE(result);
  EXPECT_THAT(result.message(),
              HasSubstr("by 2 per channel (at most 0.05) and in 1 % of the pixels (at most 0.05 %)"));
  EXPECT_THAT(result.message(), HasSubstr("/baselines/White.png"));
  EXPECT_THAT(result.message(), HasSubstr("/failed/White.png"));
  EXPECT_TRUE(wrote("White.png"));
  const QImage map(folders.failed + "/White.differences.png");
  EXPECT_EQ(map.pixel(1, 0), qRgb(200, 200, 200));
  EXPECT_EQ(map.pixel(2, 0), qRgb(0, 0, 0));
}

TEST_F(PictureTest, EachLimitCountsAlone)
{
  EXPECT_TRUE(matchesBaseline(pictureWith(2, 55), "White", folders, {2.0, 0.01}));
  EXPECT_FALSE(matchesBaseline(pictureWith(2, 55), "White", folders, {1.9, 0.01}));
  EXPECT_FALSE(matchesBaseline(pictureWith(2, 55), "White", folders, {2.0, 0.009}));
}

TEST_F(PictureTest, AnotherSizeFails)
{
  const auto result = matchesBaseline(QImage(20, 11, QImage::Format_RGB32), "White", folders);
  EXPECT_FALSE(result);
  EXPECT_THAT(result.message(), HasSubstr("White is 20 x 11, its baseline"));
  EXPECT_THAT(result.message(), HasSubstr("is 20 x 10"));
}

TEST_F(PictureTest, WithoutABaselineThePictureFailsAndIsKept)
{
  const auto result = matchesBaseline(pictureWith(2, 55), "New", folders);
  EXPECT_FALSE(result);
  EXPECT_THAT(result.message(), HasSubstr("no baseline"));
  EXPECT_EQ(QImage(folders.failed + "/New.png"), pictureWith(2, 55));
}

} // namespace
} // namespace runsieve::test
