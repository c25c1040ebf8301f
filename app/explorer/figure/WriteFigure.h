#pragma once

#include "app/explorer/figure/PaintFigure.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <string>

namespace runsieve::app {

/// A figure as the bytes of a file.
struct FigureBytes
{
  QByteArray bytes;
  FigureNotes notes;
  int imageDpi = 0; ///< of the images of dense runs
};

/// What a figure is written as.
enum class FigureFormat
{
  Png,
  Svg,
  Pdf
};

/// By the ending of a name, in any case. \throw std::runtime_error if it is another one
[[nodiscard]] FigureFormat figureFormatOf(QString const& path);

/// The figure in pixels. \param pixelsPerUnit of the image; its size follows
[[nodiscard]] QImage figureImage(FigureContent const& content, FigureOptions const& options,
                                 double pixelsPerUnit, FigureNotes* notes = nullptr);

/// A PNG has as many pixels as its size in mm and its resolution make, which it tells. SVG and PDF consist of
/// shapes and texts; runs are images in them, as fine as the resolution asks for, but of 300 dpi at most, and
/// coarser if the file would be larger than 480 kB. \throw std::runtime_error for a PNG with tooManyPixels()
[[nodiscard]] FigureBytes figureBytes(FigureContent const& content, FigureOptions const& options,
                                      FigureFormat format);

/// Writes a figure, which takes the place of a former file when it is complete.
/// \throw std::runtime_error, ScanError
FigureBytes writeFigure(FigureContent const& content, FigureOptions const& options, QString const& path);

} // namespace runsieve::app
