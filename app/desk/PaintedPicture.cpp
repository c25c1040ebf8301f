#include "app/desk/PaintedPicture.h"

#include "app/desk/OffscreenApplication.h"
#include "app/explorer/figure/FigureOptions.h"
#include "app/explorer/figure/PageBytes.h"
#include "app/explorer/figure/WriteFigure.h"

#include <runsieve/core/files/SafeFile.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <stdexcept>

namespace runsieve::app {

namespace {

constexpr double unitsPerPixel = figureUnitsPerPoint; ///< so fine that letters keep their spacing
constexpr double screenPixelsPerInch = 96.0;          ///< those of SVG
constexpr double pointsPerInch = 72.0;
constexpr double imagePixelsPerPixel = 2.0; ///< of images of runs in documents

/// Letters of a 56th of the picture, which can be read in a small one as well.
Theme themeOf(PaintedPicture const& picture)
{
  constexpr double smallest = 9.0;
  constexpr double part = 1.0 / 56.0;
  FigureOptions options;
  options.fontSize = std::max(smallest, part * std::min(0.8 * picture.width, 1.0 * picture.height));
  options.lineWidth = 0.075 * options.fontSize;
  return figureTheme(options);
}

QByteArray pngOf(PaintedPicture const& picture)
{
  QImage image(picture.width, picture.height, QImage::Format_RGB32);
  if (image.isNull()) throw std::runtime_error("the picture has too many pixels");
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    painter.scale(1.0 / unitsPerPixel, 1.0 / unitsPerPixel);
    picture.paint(painter, QRectF(0.0, 0.0, unitsPerPixel * picture.width, unitsPerPixel * picture.height),
                  themeOf(picture), 1.0 / unitsPerPixel);
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

PaintedPage pageOf(PaintedPicture const& picture, double pixelsPerInch)
{
  return {QSizeF(picture.width, picture.height) * (millimetresPerInch / pixelsPerInch),
          unitsPerPixel * pixelsPerInch, picture.title, [&picture](QPainter& painter, QRectF const& whole) {
            const Theme theme = themeOf(picture);
            painter.fillRect(whole, theme.paper);
            picture.paint(painter, whole, theme, imagePixelsPerPixel / unitsPerPixel);
          }};
}

QByteArray bytesOf(PaintedPicture const& picture, FigureFormat format)
{
  switch (format) {
  case FigureFormat::Png:
    return pngOf(picture);
  case FigureFormat::Svg:
    return svgBytes(pageOf(picture, screenPixelsPerInch));
  case FigureFormat::Pdf:
    return pdfBytes(pageOf(picture, pointsPerInch));
  }
  return {};
}

} // namespace

void writePicture(std::string const& path, PaintedPicture const& picture)
{
  const FigureFormat format = figureFormatOf(QFile::decodeName(path.c_str()));
  const auto application = offscreenApplication();
  const QByteArray bytes = bytesOf(picture, format);
  if (bytes.isEmpty()) throw std::runtime_error(path + ": the picture could not be made");
  SafeFile file(path);
  file.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  file.commit();
}

QStringList wrappedLines(QString const& text, QFont const& font, double width, int most)
{
  QTextLayout layout(text, font);
  layout.setTextOption(QTextOption(Qt::AlignLeft));
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    if (lines.size() + 1 == most) { // what is left, as far as it fits
      lines << elided(text.mid(line.textStart()), font, width);
      break;
    }
    lines << text.mid(line.textStart(), line.textLength()).trimmed();
  }
  layout.endLayout();
  return lines;
}

} // namespace runsieve::app
