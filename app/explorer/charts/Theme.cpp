#include "app/explorer/charts/Theme.h"

#include <QFontMetricsF>

namespace runsieve::app {

namespace {

/// Told apart from one another and from the passing runs by people without red or green cones as well. Some
/// are of M. Okabe and K. Ito (Color Universal Design, 2008).
std::array<QColor, 8> setColors(bool dark)
{
  if (dark)
    return {QColor(86, 180, 233),  QColor(0, 205, 130),  QColor(204, 121, 167), QColor(240, 228, 66),
            QColor(136, 255, 255), QColor(150, 80, 255), QColor(250, 196, 214), QColor(0, 114, 178)};
  return {QColor(0, 114, 178), QColor(0, 158, 115), QColor(204, 121, 167), QColor(86, 180, 233),
          QColor(40, 0, 95),   QColor(150, 190, 0), QColor(120, 20, 60),   QColor(92, 84, 0)};
}

Theme themeOf(bool dark, QFont const& font)
{
  Theme theme;
  theme.dark = dark;
  theme.font = font;
  theme.paper = dark ? QColor(27, 29, 33) : QColor(255, 255, 255);
  theme.ink = dark ? QColor(222, 224, 228) : QColor(35, 38, 43);
  theme.faint = dark ? QColor(120, 125, 133) : QColor(140, 146, 155);
  theme.all = dark ? QColor(150, 160, 178) : QColor(60, 70, 90);
  theme.passing = dark ? QColor(255, 122, 66) : QColor(213, 75, 0);
  theme.gate = dark ? QColor(120, 180, 255) : QColor(0, 92, 175);
  theme.chosen = dark ? QColor(255, 214, 90) : QColor(0, 60, 130);
  theme.hover = dark ? QColor(255, 255, 255) : QColor(0, 0, 0);
  theme.sets = setColors(dark);
  return theme;
}

} // namespace

Theme Theme::ofPalette(QPalette const& palette, QFont const& font)
{
  constexpr int middle = 128;
  return themeOf(palette.color(QPalette::Window).lightness() < middle, font);
}

Theme Theme::ofPaper(QFont const& font)
{
  return themeOf(false, font);
}

QString elided(QString const& text, QFont const& font, double width)
{
  return QFontMetricsF(font).elidedText(text, Qt::ElideMiddle, width);
}

} // namespace runsieve::app
