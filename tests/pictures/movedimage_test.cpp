#include "LineScene.h"

#include <runsieve/items/MovedImages.h>

#include <QFile>
#include <QRegularExpression>

#include <chrono>
#include <memory>

namespace runsieve::test {
namespace {

using Hand = MovedImages::Hand;

constexpr int runs = 6000; ///< three slices

int everyFifth(int run)
{
  return run % 5 == 0 ? 1 : 0;
}

struct MovedImage : LineScene
{
  MovedImage() : LineScene(500, 360, 0), images(std::make_unique<MovedImages>(window()))
  {
    table = tableOf({0, runs});
    lines = add(table);
    lines->GetPen()->SetOpacity(4);
    before = picture();
  }

  void zoom(double factor)
  {
    for (int side : {vtkAxis::BOTTOM, vtkAxis::LEFT}) {
      vtkAxis* axis = chart->GetAxis(side);
      const double middle = 0.5 * (axis->GetMinimum() + axis->GetMaximum());
      const double half = 0.5 * factor * (axis->GetMaximum() - axis->GetMinimum());
      axis->SetRange(middle - half, middle + half);
    }
  }

  QImage movedFrame(Hand hand = Hand::moves) { return frameOf(*images, hand); }

  /// Counts some lines. \return whether there are none left
  bool countSlice() { return images->count(std::chrono::milliseconds(0)); }

  void countAll()
  {
    while (!countSlice()) {
    }
  }

  /// The picture of lines that have never been shown on other axes.
  QImage fresh()
  {
    chart->ClearPlots();
    lines = add(table);
    lines->GetPen()->SetOpacity(4);
    lines->SetDensityColors(shades);
    return picture();
  }

  std::unique_ptr<MovedImages> images;
  vtkSmartPointer<vtkTable> table;
  vtkPlotLineSet* lines = nullptr;
  int shades = vtkPlotLineSet::DENSITY_OFF;
  QImage before;
};

TEST_F(MovedImage, AFrameOfAHandShowsTheLastImageWhereTheAxesHaveMovedIt)
{
  pan(2.0);
  const QImage moved = movedFrame();
  EXPECT_TRUE(images->areShown());
  const QImage exact = picture();
  EXPECT_FALSE(images->areShown());
  EXPECT_NE(moved, exact);
  const QImage inside = exact.copy(0, 60, exact.width(), exact.height() - 60); // but for what came in above
  EXPECT_LT(rms(moved.copy(0, 60, exact.width(), exact.height() - 60), inside), 12.0);
  EXPECT_GT(rms(before.copy(0, 60, exact.width(), exact.height() - 60), inside), 20.0);
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, AStretchedImageLooksLikeTheLines)
{
  zoom(0.8);
  const QImage moved = movedFrame();
  const QImage exact = picture();
  EXPECT_LT(rms(moved, exact), 0.5 * rms(before, exact));
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, FramesOfOthersAreExact)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  view.render();
  EXPECT_FALSE(images->areShown());
  const QImage exact = shown();
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, FramesOfOtherWindowsAreExact)
{
  MovedImages others(nullptr);
  pan(2.0);
  const MovedImages::Frame allowed(others, Hand::moves);
  view.render();
  view.render();
  EXPECT_FALSE(others.areShown());
  const QImage exact = shown();
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, AFileIsExact)
{
  const auto fileOf = [this](char const* name) {
    const QString path = folder.filePath(name);
    view.save(path.toStdString());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromLatin1(file.readAll()).remove(QRegularExpression("/CreationDate[^\n]*"));
  };
  shades = vtkPlotLineSet::DENSITY_LOGARITHMIC; // an image in files, too
  static_cast<void>(fresh());
  pan(2.0);
  static_cast<void>(movedFrame());
  QString ofHand;
  {
    const MovedImages::Frame allowed(*images, Hand::moves);
    ofHand = fileOf("hand.pdf");
  }
  static_cast<void>(fresh());
  EXPECT_EQ(ofHand, fileOf("exact.pdf"));
}

TEST_F(MovedImage, CountedInSlicesThePictureIsThatCountedAtOnce)
{
  for (int wanted :
       {vtkPlotLineSet::DENSITY_OFF, vtkPlotLineSet::DENSITY_LOGARITHMIC, vtkPlotLineSet::DENSITY_EQUAL_AREA})
    for (bool isLit : {false, true}) {
      shades = wanted;
      flag(table, [&](int run) { return isLit ? everyFifth(run) : 0; });
      static_cast<void>(fresh());
      zoom(0.8);
      pan(1.0);
      static_cast<void>(movedFrame());
      EXPECT_FALSE(countSlice());
      static_cast<void>(movedFrame(Hand::rests));
      countAll();
      const QImage counted = picture();
      EXPECT_EQ(counted, fresh()) << wanted << isLit;
      pan(-1.0);
      zoom(1.0 / 0.8);
    }
}

TEST_F(MovedImage, CountingThatWasBegunIsFinishedByAFrameOfOthers)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  EXPECT_FALSE(countSlice());
  view.render();
  const QImage exact = shown();
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, TheFirstSliceFillsWhatCameInWithTheShapeOfAllLines)
{
  zoom(0.5); // lines go on beyond the axes
  static_cast<void>(picture());
  pan(4.0);
  const QImage blank = movedFrame();
  EXPECT_FALSE(countSlice());
  const QImage filled = movedFrame(Hand::rests);
  const QImage exact = picture();
  EXPECT_LT(rms(filled, exact), 0.5 * rms(blank, exact));
}

TEST_F(MovedImage, AHandThatMovesOnTakesAlongWhatWasCounted)
{
  zoom(0.5);
  static_cast<void>(picture());
  pan(4.0);
  static_cast<void>(movedFrame());
  EXPECT_FALSE(countSlice());
  static_cast<void>(movedFrame(Hand::rests));
  pan(0.5);
  const QImage moved = movedFrame();
  const QImage exact = picture();
  EXPECT_LT(rms(moved, exact), 15.0);
  EXPECT_EQ(exact, fresh());
}

TEST_F(MovedImage, AnotherHighlightWhileTheHandMovesIsExact)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  flag(table, everyFifth);
  const QImage lit = movedFrame();
  EXPECT_FALSE(images->areShown());
  EXPECT_EQ(lit, fresh());
}

TEST_F(MovedImage, AnotherHighlightWhileLinesAreCountedIsShownFromThoseThatAre)
{
  std::vector<unsigned char> preview(runs);
  for (int run = 0; run < runs; ++run) preview[static_cast<std::size_t>(run)] = run % 3 == 0;
  pan(2.0);
  const QImage none = movedFrame();
  lines->SetPreview(preview);
  const QImage first = movedFrame(Hand::rests);
  EXPECT_TRUE(images->areShown());
  for (std::size_t run = 0; run < preview.size(); ++run) preview[run] = run % 3 < 2;
  lines->SetPreview(preview);
  EXPECT_FALSE(countSlice());
  static_cast<void>(movedFrame(Hand::rests));
  countAll();
  const QImage counted = picture();
  EXPECT_GT(rms(first, none), 0.5 * rms(counted, none));
  chart->ClearPlots();
  lines = add(table);
  lines->GetPen()->SetOpacity(4);
  lines->SetPreview(preview);
  EXPECT_EQ(counted, picture());
}

TEST_F(MovedImage, OtherDataAreExact)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  EXPECT_FALSE(countSlice());
  auto* y = vtkDoubleArray::SafeDownCast(table->GetColumnByName("y"));
  for (vtkIdType i = 0; i < y->GetNumberOfTuples(); ++i) y->SetValue(i, 0.5 * y->GetValue(i));
  y->Modified();
  table->Modified();
  const QImage halved = movedFrame(Hand::rests);
  EXPECT_FALSE(images->areShown());
  EXPECT_EQ(halved, fresh());
}

TEST_F(MovedImage, PointsThatChangeBetweenFramesAreNotCounted)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  EXPECT_FALSE(countSlice());
  auto* y = vtkDoubleArray::SafeDownCast(table->GetColumnByName("y"));
  for (vtkIdType i = 0; i < y->GetNumberOfTuples(); ++i) y->SetValue(i, 0.5 * y->GetValue(i));
  y->Modified();
  table->Modified();
  lines->Update();
  EXPECT_TRUE(countSlice());
  const QImage halved = picture();
  EXPECT_EQ(halved, fresh());
}

TEST_F(MovedImage, BackOnTheAxesThatWereCountedTheImageIsTheSame)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  pan(-2.0);
  EXPECT_EQ(movedFrame(), before);
  EXPECT_FALSE(images->areShown());
}

TEST_F(MovedImage, AnotherSizeOfTheWindowStretchesTheImage)
{
  window()->SetSize(700, 300);
  const QImage moved = movedFrame();
  EXPECT_TRUE(images->areShown());
  const QImage exact = picture();
  EXPECT_LT(rms(moved, exact), 25.0);
  EXPECT_NE(moved, exact);
  EXPECT_EQ(exact, fresh());
}

// A chart shifts points where an axis begins close to 0, and shifts them back beyond.
TEST_F(MovedImage, PointsThatTheChartShiftsMoveAlong)
{
  auto const restart = [this](double from) {
    chart->GetAxis(vtkAxis::LEFT)->SetRange(from, 12.0);
    return fresh();
  };
  const QImage start = restart(0.3);
  const vtkRectd unshifted = lines->GetShiftScale();
  pan(-0.25);
  const QImage moved = movedFrame();
  EXPECT_TRUE(images->areShown());
  ASSERT_NE(lines->GetShiftScale(), unshifted);
  EXPECT_FALSE(countSlice());
  const QImage partly = movedFrame(Hand::rests);
  pan(0.4);
  const QImage back = movedFrame();
  EXPECT_TRUE(images->areShown());
  ASSERT_EQ(lines->GetShiftScale(), unshifted);
  pan(-0.4);
  const QImage exact = picture();
  EXPECT_LT(rms(moved, exact), 0.8 * rms(start, exact)); // blank where lines came in
  EXPECT_LT(rms(partly, exact), 0.3 * rms(start, exact));
  EXPECT_EQ(exact, fresh());
  pan(0.4);
  EXPECT_LT(rms(back, picture()), 8.0);
}

TEST_F(MovedImage, FewLinesAreCountedForEachStep)
{
  table = tableOf({0, 100});
  static_cast<void>(fresh());
  pan(2.0);
  const QImage counted = movedFrame();
  EXPECT_FALSE(images->areShown());
  EXPECT_EQ(counted, fresh());
}

TEST_F(MovedImage, LinesThatAreGoneAreNotWaitedFor)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  ASSERT_TRUE(images->areShown());
  chart->ClearPlots(); // the set was the only one that knew of its picture
  EXPECT_FALSE(images->areShown());
  EXPECT_TRUE(countSlice());
}

TEST_F(MovedImage, AWindowThatIsGoneIsNotWaitedFor)
{
  pan(2.0);
  static_cast<void>(movedFrame());
  images = std::make_unique<MovedImages>(window());
  EXPECT_FALSE(images->areShown());
  static_cast<void>(movedFrame());
  EXPECT_TRUE(images->areShown());
  const QImage exact = picture();
  EXPECT_EQ(exact, fresh());
}

} // namespace
} // namespace runsieve::test
