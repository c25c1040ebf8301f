#include "app/explorer/figure/FigureOptions.h"

#include <QSize>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// NaN becomes the low end.
double limited(double value, double low, double high)
{
  return value >= low ? std::min(value, high) : low;
}

} // namespace

QSizeF figureSize(FigureOptions const& options)
{
  return QSizeF(options.width, options.height) * (figureUnitsPerInch / millimetresPerInch);
}

QSize figurePixels(FigureOptions const& options)
{
  const double perMillimetre = options.dpi / millimetresPerInch;
  return {std::max(1, static_cast<int>(std::lround(options.width * perMillimetre))),
          std::max(1, static_cast<int>(std::lround(options.height * perMillimetre)))};
}

int finestDpi(FigureOptions const& options)
{
  auto const fits = [&](int dpi) {
    FigureOptions tried = options;
    tried.dpi = dpi;
    const QSize size = figurePixels(tried);
    return qint64(size.width()) * size.height() <= FigureOptions::mostPixels;
  };
  int dpi = FigureOptions::mostDpi;
  while (dpi > FigureOptions::leastDpi && !fits(dpi)) --dpi;
  return dpi;
}

QString tooManyPixels(FigureOptions const& options)
{
  const int most = finestDpi(options);
  if (options.dpi <= most) return {};
  const QSize size = figurePixels(options);
  return QString::fromUtf8("%1 \u00d7 %2 pixels are too many: %3 dpi are the most at this size")
      .arg(size.width())
      .arg(size.height())
      .arg(most);
}

Theme figureTheme(FigureOptions const& options)
{
  QFont font;
  if (!options.family.isEmpty()) font.setFamily(options.family);
  font.setPixelSize(static_cast<int>(std::lround(options.fontSize * figureUnitsPerPoint)));
  font.setHintingPreference(QFont::PreferNoHinting);
  Theme theme = Theme::ofPaper(font);
  if (options.palette == FigurePalette::ColourBlind) {
    theme.all = QColor(105, 105, 105);
    theme.passing = QColor(0, 114, 178);
    theme.gate = QColor(213, 94, 0);
    theme.chosen = theme.gate;
    theme.sets = {QColor(230, 159, 0), QColor(0, 158, 115),  QColor(204, 121, 167), QColor(86, 180, 233),
                  QColor(213, 94, 0),  QColor(148, 132, 10), QColor(120, 94, 190),  QColor(0, 0, 0)};
  }
  theme.line = options.lineWidth * figureUnitsPerPoint;
  theme.curve = 2.0 * theme.line;
  theme.tick = 0.4 * options.fontSize * figureUnitsPerPoint;
  theme.gap = 0.3 * options.fontSize * figureUnitsPerPoint;
  return theme;
}

FigureOptions withinLimits(FigureOptions options)
{
  using O = FigureOptions;
  options.width = limited(options.width, O::shortest, O::longest);
  options.height = limited(options.height, O::shortest, O::longest);
  options.dpi = std::clamp(options.dpi, O::leastDpi, O::mostDpi);
  options.fontSize = limited(options.fontSize, O::smallestFont, O::largestFont);
  options.lineWidth = limited(options.lineWidth, O::thinnestLine, O::widestLine);
  return options;
}

std::array<FigurePreset, 3> const& figurePresets()
{
  static const std::array<FigurePreset, 3> presets = {{{"1 column, 85 mm", 85.0, 120.0, 7.0, 0.6},
                                                       {"2 columns, 180 mm", 180.0, 130.0, 8.0, 0.75},
                                                       {"Slide, 16:9", 254.0, 142.9, 13.0, 1.25}}};
  return presets;
}

} // namespace runsieve::app
