#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>

#include <functional>

class QPainter;

namespace runsieve::app {

/// A page and how it is painted.
struct PaintedPage
{
  QSizeF millimetres;
  double unitsPerInch; ///< of what is painted
  QString title;       ///< of the document
  /// \param whole the page, in units, from 0, 0
  std::function<void(QPainter& painter, QRectF const& whole)> paint;

  /// In units.
  [[nodiscard]] QSizeF size() const;
};

/// A page as a document of shapes and texts.
[[nodiscard]] QByteArray svgBytes(PaintedPage const& page);
[[nodiscard]] QByteArray pdfBytes(PaintedPage const& page);

} // namespace runsieve::app
