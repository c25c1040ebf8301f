#include "support/Picture.h"

#include "app/render/OffscreenView.h"
#include "examples/gallery/pages/Pages.h"
#include "support/PlotParts.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace gallery {

void PrintTo(Page const& page, std::ostream* out)
{
  *out << page.name;
}

} // namespace gallery

namespace runsieve::test {
namespace {

const QString baselines = RUNSIEVE_SOURCE_DIR "/tests/pictures/baselines";

/// A page of the gallery, off-screen.
struct GalleryPage : testing::TestWithParam<gallery::Page>
{
  GalleryPage()
  {
    // Baselines come from this software renderer, on which the width of the processor has no influence.
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    qputenv("GALLIUM_DRIVER", "llvmpipe");
  }

  /// \param prepare what is done before the plot is made
  static QImage picture(std::function<void()> const& prepare = [] {})
  {
    app::OffscreenView view(600, 450, 0);
    prepare();
    PlotContainer plot(nullptr);
    gallery::showPage(GetParam(), plot, view.scene(), 1.0);
    const QTemporaryDir folder;
    const QString path = folder.filePath("page.png");
    view.save(path.toStdString());
    plot.setScene(nullptr); // lets go of textures while the view's context is there
    return QImage(path);
  }
};

/// Share of the pixels that are not white.
double drawnShare(QImage const& picture)
{
  long drawn = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (picture.pixel(x, y) != qRgb(255, 255, 255)) ++drawn;
  return static_cast<double>(drawn) / (picture.width() * picture.height());
}

TEST_P(GalleryPage, IsNotBlank)
{
  const QImage page = picture();
  EXPECT_EQ(page.size(), QSize(600, 450));
  EXPECT_GT(drawnShare(page), 0.01);
}

TEST_P(GalleryPage, LooksLikeItsBaseline)
{
  EXPECT_TRUE(
      matchesBaseline(picture(), "gallery_" + GetParam().name, {baselines, RUNSIEVE_BINARY_DIR "/pictures"}));
}

/// The tolerance must not hide that a page shows another page's data.
TEST_P(GalleryPage, LooksLikeNoOtherPage)
{
  const QImage own = picture();
  for (gallery::Page const& other : gallery::allPages()) {
    const QImage baseline(baselineOf(QString::fromStdString("gallery_" + other.name), baselines));
    ASSERT_EQ(baseline.size(), own.size()) << other.name;
    if (other.name != GetParam().name) {
      EXPECT_FALSE(isWithin(differenceOf(own, baseline))) << other.name;
    }
  }
}

TEST_P(GalleryPage, DrawnTwiceIsTheSame)
{
  const QImage first = picture();
  EXPECT_EQ(first, picture());
}

/// Leaves memory of many sizes that holds small numbers, where objects that do not initialise all that they
/// have find them.
void leaveNumbersInMemory(int number)
{
  constexpr std::size_t smallest = 16;
  constexpr std::size_t largest = 2048;
  constexpr int each = 64;
  std::vector<std::vector<int>> blocks;
  for (std::size_t bytes = smallest; bytes <= largest; bytes += smallest)
    for (int i = 0; i < each; ++i) blocks.emplace_back(bytes / sizeof(int), number);
}

TEST_P(GalleryPage, IsDrawnWhateverTheMemoryHeldBefore)
{
  for (int number = 1; number <= 4; ++number) {
    EXPECT_GT(drawnShare(picture([number] { leaveNumbersInMemory(number); })), 0.01) << number;
  }
}

INSTANTIATE_TEST_SUITE_P(All, GalleryPage, testing::ValuesIn(gallery::allPages()),
                         [](auto const& page) { return page.param.name; });

TEST(GalleryPagesTest, NamesAreDistinct)
{
  std::set<std::string> names;
  for (gallery::Page const& page : gallery::allPages()) names.insert(page.name);
  EXPECT_EQ(names.size(), gallery::allPages().size());
}

TEST(GalleryPagesTest, APageIsFoundByNumberAndByName)
{
  std::vector<gallery::Page> const& pages = gallery::allPages();
  EXPECT_EQ(gallery::findPage("1"), &pages.front());
  EXPECT_EQ(gallery::findPage(std::to_string(pages.size())), &pages.back());
  EXPECT_EQ(gallery::findPage(pages[3].name), &pages[3]);
}

TEST(GalleryPagesTest, OtherNumbersAndNamesFindNone)
{
  for (const char* word : {"", "0", "-1", "01", "1.0", "no_such_page"})
    EXPECT_EQ(gallery::findPage(word), nullptr) << word;
  EXPECT_EQ(gallery::findPage(std::to_string(gallery::allPages().size() + 1)), nullptr);
}

} // namespace
} // namespace runsieve::test
