#include "app/desk/DeskCommands.h"

#include "app/desk/PaintedPicture.h"
#include "app/explorer/parameters/StabilityPicture.h"

#include <runsieve/core/text/ShownText.h>

#include <QFontMetricsF>
#include <QPainter>

namespace runsieve::app {

namespace {

/// \return where they end
double paintLines(QPainter& painter, QStringList const& lines, QPointF at, QFontMetricsF const& metrics)
{
  for (QString const& line : lines) {
    painter.drawText(at + QPointF(0.0, metrics.ascent()), line);
    at.ry() += 1.15 * metrics.height();
  }
  return at.y();
}

} // namespace

void drawStabilityPicture(RankArguments const& arguments, Comparison const& comparison,
                          ComparisonStability const& stability)
{
  const QString verdict = "Enough runs? " + QString::fromStdString(printable(stability.verdictText));
  const QString meaning =
      QString("magnitude of d: median and 5 % .. 95 % of %1 samples of a part of the runs; "
              "full circles are beyond the noise floor in at least 95 % of them")
          .arg(stability.method.subsamples);
  auto const paint = [&](QPainter& painter, QRectF const& whole, Theme const& theme, double) {
    constexpr int most = 4;
    const QFontMetricsF metrics(theme.font);
    const QRectF room = whole.adjusted(3.0 * theme.gap, 2.0 * theme.gap, -2.0 * theme.gap, -2.0 * theme.gap);
    painter.setFont(theme.font);
    painter.setPen(theme.ink);
    double top =
        paintLines(painter, wrappedLines(verdict, theme.font, room.width(), most), room.topLeft(), metrics);
    if (stability.sizes.empty()) return;
    painter.setPen(theme.faint);
    top = paintLines(painter, wrappedLines(meaning, theme.font, room.width(), most), {room.left(), top},
                     metrics);
    StabilityPicture(comparison, stability, QRectF(QPointF(room.left(), top + theme.gap), room.bottomRight()),
                     theme)
        .paint(painter);
  };
  writePicture(arguments.stabilityPicture, {arguments.width, arguments.height, "Enough runs?", paint});
}

} // namespace runsieve::app
