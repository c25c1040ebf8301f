#include "app/explorer/figure/WriteFigure.h"

#include <runsieve/core/files/SafeFile.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

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
  const QImage image = figureImage(content, options, options.dpi / figureUnitsPerInch, &notes);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) return {};
  return bytes;
}

QByteArray svgOf(FigureContent const& content, FigureOptions const& options, int imageDpi, FigureNotes& notes)
{
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(static_cast<int>(figureUnitsPerInch));
  const QSizeF size = figureSize(options);
  generator.setSize(size.toSize());
  generator.setViewBox(QRectF(QPointF(), size));
  generator.setTitle(options.title.isEmpty() ? QString("Runsieve figure") : options.title);
  QPainter painter(&generator);
  notes = paintFigure(painter, QRectF(QPointF(), size), content, options, imageDpi / figureUnitsPerInch);
  painter.end();
  // The generator tells the size in whole units.
  const int begin = bytes.indexOf("<svg width=\"");
  const int end = bytes.indexOf('\n', begin);
  if (begin >= 0 && end > begin)
    bytes.replace(
        begin, end - begin,
        QString("<svg width=\"%1mm\" height=\"%2mm\"").arg(options.width).arg(options.height).toUtf8());
  return bytes;
}

QByteArray pdfOf(FigureContent const& content, FigureOptions const& options, int imageDpi, FigureNotes& notes)
{
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setCreator("Runsieve");
    writer.setTitle(options.title);
    writer.setResolution(static_cast<int>(figureUnitsPerInch));
    writer.setPageSize(
        QPageSize(QSizeF(options.width, options.height), QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    notes = paintFigure(painter, QRectF(QPointF(), figureSize(options)), content, options,
                        imageDpi / figureUnitsPerInch);
  }
  return bytes;
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
    made.bytes = format == FigureFormat::Svg ? svgOf(content, options, made.imageDpi, made.notes)
                                             : pdfOf(content, options, made.imageDpi, made.notes);
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
