#include "app/explorer/figure/PageBytes.h"

#include "app/explorer/figure/FigureOptions.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

namespace runsieve::app {

QSizeF PaintedPage::size() const
{
  return millimetres * (unitsPerInch / millimetresPerInch);
}

QByteArray svgBytes(PaintedPage const& page)
{
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(static_cast<int>(std::lround(page.unitsPerInch)));
  generator.setSize(page.size().toSize());
  generator.setViewBox(QRectF(QPointF(), page.size()));
  generator.setTitle(page.title);
  QPainter painter(&generator);
  page.paint(painter, QRectF(QPointF(), page.size()));
  painter.end();
  // The generator tells the size in whole units.
  const int begin = bytes.indexOf("<svg width=\"");
  const int end = bytes.indexOf('\n', begin);
  if (begin >= 0 && end > begin)
    bytes.replace(begin, end - begin,
                  QString("<svg width=\"%1mm\" height=\"%2mm\"")
                      .arg(page.millimetres.width())
                      .arg(page.millimetres.height())
                      .toUtf8());
  return bytes;
}

QByteArray pdfBytes(PaintedPage const& page)
{
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setCreator("Runsieve");
    writer.setTitle(page.title);
    writer.setResolution(static_cast<int>(std::lround(page.unitsPerInch)));
    writer.setPageSize(QPageSize(page.millimetres, QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    page.paint(painter, QRectF(QPointF(), page.size()));
  }
  return bytes;
}

} // namespace runsieve::app
