#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/document/State.h"

#include <QSizeF>
#include <QString>

#include <array>
#include <cstddef>
#include <vector>

namespace runsieve::app {

/// The colours of a figure.
enum class FigurePalette
{
  Standard,   ///< those of the screen on a light ground
  ColourBlind ///< blue on grey: told apart without red, green or blue cones, and in black and white
};

/// What a figure shows, and how large. Lengths on paper are in mm, letters and lines in points of 1/72 inch.
struct FigureOptions
{
  double width = 180.0;
  double height = 130.0;
  int dpi = 300;           ///< of a PNG; in SVG and PDF the most of the images of dense runs
  QString family;          ///< of the letters; empty: as the system has it
  double fontSize = 8.0;   ///< 3 to 72
  double lineWidth = 0.75; ///< of axes; curves are twice as wide
  QString title;           ///< empty: none
  bool gates = true;
  bool legend = true;
  bool counts = true;     ///< numbers of runs, in the legend
  bool thresholds = true; ///< what a star means, and the noise floor in the curves
  bool scaleBar = true;   ///< how many runs the shades stand for
  RunsLook runsLook = RunsLook::Density;
  ParameterLook parameterLook = ParameterLook::Curves;
  std::size_t strongest = 6;           ///< parameters, unless some are listed
  std::vector<std::size_t> parameters; ///< these, by their position in the scan
  std::vector<std::size_t> outputs;    ///< of those that the content has; empty: all of them
  FigurePalette palette = FigurePalette::Standard;
  bool ground = true; ///< white behind everything; else nothing

  static constexpr double shortest = 20.0; ///< of width and height
  static constexpr double longest = 1000.0;
  static constexpr int leastDpi = 36;
  static constexpr int mostDpi = 1200;
  static constexpr qint64 mostPixels = 300'000'000; ///< which take four bytes each while a figure is made
  static constexpr double smallestFont = 3.0;
  static constexpr double largestFont = 72.0;
  static constexpr double thinnestLine = 0.1;
  static constexpr double widestLine = 10.0;
};

/// What figures are measured in while they are painted: so fine that letters keep their spacing at any
/// resolution.
constexpr double figureUnitsPerPoint = 10.0;
constexpr double figureUnitsPerInch = 720.0;
constexpr double millimetresPerInch = 25.4;

/// Size in units.
[[nodiscard]] QSizeF figureSize(FigureOptions const& options);
/// Size in pixels of its resolution.
[[nodiscard]] QSize figurePixels(FigureOptions const& options);
/// The finest resolution that makes no more than FigureOptions::mostPixels.
[[nodiscard]] int finestDpi(FigureOptions const& options);
/// Why a figure cannot be made of pixels, with the finest resolution that can; empty if it can.
[[nodiscard]] QString tooManyPixels(FigureOptions const& options);
/// Colours, letters and lines, in units.
[[nodiscard]] Theme figureTheme(FigureOptions const& options);

/// Values out of their range are moved into it.
[[nodiscard]] FigureOptions withinLimits(FigureOptions options);

/// A size that papers and slides ask for.
struct FigurePreset
{
  char const* name;
  double width;
  double height;
  double fontSize;
  double lineWidth;
};

[[nodiscard]] std::array<FigurePreset, 3> const& figurePresets();

} // namespace runsieve::app
