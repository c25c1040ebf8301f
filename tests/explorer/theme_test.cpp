#include "app/explorer/charts/Theme.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace runsieve::test {
namespace {

using app::Theme;
using Linear = std::array<double, 3>;
using Matrix = std::array<Linear, 3>;

// Simulated vision without red and without green cones (G. M. Machado, M. M. Oliveira, L. A. F. Fernandes,
// IEEE TVCG 15, 2009, table of severity 1.0), of linear sRGB.
constexpr Matrix protanopia = {
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix deuteranopia = {
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};

double linear(double value)
{
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// OKLab (B. Ottosson, A perceptual color space for image processing, 2020) of a colour as somebody sees it.
std::array<double, 3> seen(QColor const& color, Matrix const* vision)
{
  const Linear rgb = {linear(color.redF()), linear(color.greenF()), linear(color.blueF())};
  Linear s = rgb;
  if (vision)
    for (std::size_t i = 0; i < 3; ++i) {
      s[i] = 0.0;
      for (std::size_t k = 0; k < 3; ++k) s[i] += (*vision)[i][k] * rgb[k];
      s[i] = std::max(s[i], 0.0);
    }
  const double l = std::cbrt(0.4122214708 * s[0] + 0.5363325363 * s[1] + 0.0514459929 * s[2]);
  const double m = std::cbrt(0.2119034982 * s[0] + 0.6806995451 * s[1] + 0.1073969566 * s[2]);
  const double k = std::cbrt(0.0883024619 * s[0] + 0.2817188376 * s[1] + 0.6299787005 * s[2]);
  return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * k,
          1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * k,
          0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * k};
}

double distance(QColor const& a, QColor const& b, Matrix const* vision)
{
  const auto x = seen(a, vision);
  const auto y = seen(b, vision);
  return std::hypot(x[0] - y[0], x[1] - y[1], x[2] - y[2]);
}

std::vector<Theme> themes()
{
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(40, 42, 46));
  return {Theme::ofPaper(QFont()), Theme::ofPalette(dark, QFont())};
}

TEST(Theme, ColoursThatTellThingsApartDoSoWithoutRedOrGreenCones)
{
  constexpr double least = 0.055; // of OKLab, in which black and white are 1 apart
  for (Theme const& theme : themes())
    for (Matrix const* vision : {static_cast<Matrix const*>(nullptr), &protanopia, &deuteranopia}) {
      EXPECT_GT(distance(theme.all, theme.passing, vision), least);
      EXPECT_GT(distance(theme.gate, theme.passing, vision), least);
      for (QColor const& set : theme.sets)
        EXPECT_GT(distance(set, theme.passing, vision), least) << set.name().toStdString();
      for (std::size_t i = 0; i < theme.sets.size(); ++i)
        for (std::size_t k = i + 1; k < theme.sets.size(); ++k)
          EXPECT_GT(distance(theme.sets[i], theme.sets[k], vision), least)
              << i << ' ' << k << " dark " << theme.dark;
    }
}

TEST(Theme, EverythingStandsOutFromThePaper)
{
  for (Theme const& theme : themes()) {
    std::vector<QColor> colors = {theme.ink,  theme.faint,  theme.all,  theme.passing,
                                  theme.gate, theme.chosen, theme.hover};
    colors.insert(colors.end(), theme.sets.begin(), theme.sets.end());
    for (QColor const& color : colors)
      EXPECT_GT(distance(color, theme.paper, nullptr), 0.2) << color.name().toStdString();
  }
}

TEST(Theme, FollowsThePaletteOfTheWidget)
{
  EXPECT_FALSE(themes()[0].dark);
  EXPECT_TRUE(themes()[1].dark);
  EXPECT_LT(themes()[1].paper.lightness(), 60);
}

TEST(Theme, LongTextsAreCutInTheirMiddle)
{
  const QFont font;
  const QString text = "a_very_long_name_of_a_parameter_that_ends_with_its_difference";
  const QString cut = app::elided(text, font, 150.0);
  EXPECT_LE(QFontMetricsF(font).horizontalAdvance(cut), 150.0);
  EXPECT_EQ(cut.left(3), text.left(3));
  EXPECT_EQ(cut.right(3), text.right(3));
}

} // namespace
} // namespace runsieve::test
