#include "app/explorer/figure/WriteFigure.h"

#include "app/explorer/figure/PageBytes.h"

#include <runsieve/core/files/SafeFile.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve::app {

namespace {

constexpr int mostBytes = 480'000;
constexpr int finestImage = 300; ///< dpi in SVG and PDF: what printers make of shades
constexpr int coarsestImage = 72;

QByteArray pngOf(FigureContent const& content, FigureOptions const& options, FigureNotes& notes)
{
  if (const QString fault = tooManyPixels(options); !fault.isEmpty())
    throw std::runtime_error(fault.toStdString());
  const QImage image = figureImage(content, options, options.dpi / figureUnitsPerInch, &notes);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) return {};
  return bytes;
}

PaintedPage pageOf(FigureContent const& content, FigureOptions const& options, int imageDpi,
                   FigureNotes& notes)
{
  return {QSizeF(options.width, options.height), figureUnitsPerInch,
          options.title.isEmpty() ? QString("Runsieve figure") : options.title,
          [&content, &options, &notes, imageDpi](QPainter& painter, QRectF const& whole) {
            notes = paintFigure(painter, whole, content, options, imageDpi / figureUnitsPerInch);
          }};
}

} // namespace

FigureFormat figureFormatOf(QString const& path)
{
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == "png") return FigureFormat::Png;
  if (ending == "svg") return FigureFormat::Svg;
  if (ending == "pdf") return FigureFormat::Pdf;
  throw std::runtime_error(path.toStdString() + ": the name of a figure must end in .png, .svg or .pdf");
}

QImage figureImage(FigureContent const& content, FigureOptions const& options, double pixelsPerUnit,
                   FigureNotes* notes)
{
  const double dpi = pixelsPerUnit * figureUnitsPerInch;
  const QSize size(std::max(1, static_cast<int>(std::lround(options.width * dpi / millimetresPerInch))),
                   std::max(1, static_cast<int>(std::lround(options.height * dpi / millimetresPerInch))));
  QImage image(size, options.ground ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) throw std::runtime_error("the figure has too many pixels");
  image.fill(options.ground ? Qt::white : Qt::transparent);
  const int perMetre = static_cast<int>(std::lround(1000.0 * dpi / millimetresPerInch));
  image.setDotsPerMeterX(perMetre);
  image.setDotsPerMeterY(perMetre);
  QPainter painter(&image);
  painter.scale(pixelsPerUnit, pixelsPerUnit);
  const FigureNotes found =
      paintFigure(painter, QRectF(QPointF(), figureSize(options)), content, options, pixelsPerUnit);
  if (notes) *notes = found;
  return image;
}

FigureBytes figureBytes(FigureContent const& content, FigureOptions const& asked, FigureFormat format)
{
  const FigureOptions options = withinLimits(asked);
  FigureBytes made;
  if (format == FigureFormat::Png) {
    made.bytes = pngOf(content, options, made.notes);
    made.imageDpi = options.dpi;
    return made;
  }
  for (made.imageDpi = std::min(options.dpi, finestImage);;) {
    const PaintedPage page = pageOf(content, options, made.imageDpi, made.notes);
    made.bytes = format == FigureFormat::Svg ? svgBytes(page) : pdfBytes(page);
    if (made.bytes.size() <= mostBytes || made.imageDpi <= coarsestImage) return made;
    // Pixels, and with them bytes, go with the square of the resolution.
    const double ratio = std::sqrt(0.9 * mostBytes / made.bytes.size());
    made.imageDpi = std::max(coarsestImage, static_cast<int>(made.imageDpi * std::clamp(ratio, 0.5, 0.9)));
  }
}

FigureBytes writeFigure(FigureContent const& content, FigureOptions const& options, QString const& path)
{
  FigureBytes made = figureBytes(content, options, figureFormatOf(path));
  if (made.bytes.isEmpty()) throw std::runtime_error(path.toStdString() + ": the figure could not be made");
  SafeFile file(QFile::encodeName(path).toStdString());
  file.write({made.bytes.constData(), static_cast<std::size_t>(made.bytes.size())});
  file.commit();
  return made;
}

} // namespace runsieve::app
