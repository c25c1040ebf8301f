#pragma once

#include "app/explorer/charts/Theme.h"

#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>

class QPainter;

namespace runsieve::app {

/// A picture of a command.
struct PaintedPicture
{
  int width = 0; ///< pixels; in a PDF points of 1/72 inch
  int height = 0;
  QString title; ///< of documents
  /// Paints on a white ground. Letters and lines are those of the theme; they grow with the picture.
  /// \param whole in units of the theme \param pixelsPerUnit of images of dense runs
  std::function<void(QPainter& painter, QRectF const& whole, Theme const& theme, double pixelsPerUnit)> paint;
};

/// Writes a picture as its name ends: .png, .svg or .pdf, in any case. It takes the place of a former file
/// when it is complete. \throw std::runtime_error if it cannot be made or written
void writePicture(std::string const& path, PaintedPicture const& picture);

/// A text in lines of a width. \param most lines; the last one is cut if there are more
[[nodiscard]] QStringList wrappedLines(QString const& text, QFont const& font, double width, int most);

} // namespace runsieve::app
