#include "app/explorer/parameters/BoxLimits.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PlainTip.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

QString limitsText(BoxParameter const& parameter)
{
  if (parameter.isText) {
    QStringList inside;
    for (BoxText const& text : parameter.texts)
      if (text.isInside) inside << QString::fromStdString(text.text);
    return inside.isEmpty() ? QString("none of its texts") : inside.join(", ");
  }
  const bool hasLow = std::isfinite(parameter.low);
  const bool hasHigh = std::isfinite(parameter.high);
  if (hasLow && hasHigh)
    return QString("%1 to %2").arg(numberText(parameter.low), numberText(parameter.high));
  if (hasLow) return "at least " + numberText(parameter.low);
  if (hasHigh) return "at most " + numberText(parameter.high);
  return "any value";
}

BoxLimits::BoxLimits(ParameterRuns& ofRuns, QWidget* parent)
    : QAbstractScrollArea(parent), runs(ofRuns), theme(Theme::ofPalette(palette(), font()))
{
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName("Limits of the box");
  setMinimumSize(180, 60);
  connect(&runs, &ParameterRuns::changed, viewport(), qOverload<>(&QWidget::update));
}

void BoxLimits::show(std::shared_ptr<BoxOfRuns const> wanted)
{
  box = std::move(wanted);
  rows.clear();
  QStringList told;
  for (std::size_t i = 0; box && i < box->parameters.size(); ++i) {
    if (!box->parameters[i].isRestricted) continue;
    rows.push_back(i);
    told << QString::fromStdString(box->parameters[i].name) + " " + limitsText(box->parameters[i]);
  }
  // The limits that matter most come first.
  auto const quasiP = [&](std::size_t i) {
    const double p = box->parameters[i].quasiP;
    return std::isnan(p) ? 1.0 : p;
  };
  std::stable_sort(rows.begin(), rows.end(),
                   [&](std::size_t a, std::size_t b) { return quasiP(a) < quasiP(b); });
  setAccessibleDescription(told.join("; "));
  relayout();
}

double BoxLimits::rowHeight() const
{
  return std::ceil(2.0 * QFontMetricsF(theme.font).height() + 22.0);
}

void BoxLimits::relayout()
{
  const int height = static_cast<int>(rowHeight() * static_cast<double>(rows.size()));
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(static_cast<int>(rowHeight()));
  viewport()->update();
}

void BoxLimits::paintRow(QPainter& painter, BoxParameter const& row, QRectF const& area) const
{
  const QFontMetricsF metrics(theme.font);
  Scan const& scan = runs.ofDocument().scan();
  const QRectF inner = area.adjusted(10.0, 4.0, -10.0, 0.0);
  const QString limits = elided(limitsText(row), theme.font, 0.55 * inner.width());
  const double limitsWidth = metrics.horizontalAdvance(limits);
  QFont bold = theme.font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(theme.ink);
  const double base = inner.top() + metrics.ascent();
  painter.drawText(QPointF(inner.left(), base), elided(titleOf(scan.parameters[row.parameter].label), bold,
                                                       inner.width() - limitsWidth - 12.0));
  painter.setFont(theme.font);
  painter.drawText(QPointF(inner.right() - limitsWidth, base), limits);
  QRectF bar(inner.left(), inner.top() + metrics.height() + 3.0, inner.width(), 9.0);
  QColor ground = theme.all;
  ground.setAlphaF(0.18);
  painter.fillRect(bar, ground);
  if (row.isText) {
    const double part = bar.width() / static_cast<double>(std::max<std::size_t>(1, row.texts.size()));
    for (std::size_t i = 0; i < row.texts.size(); ++i)
      if (row.texts[i].isInside)
        painter.fillRect(
            QRectF(bar.left() + part * static_cast<double>(i) + 0.5, bar.top(), part - 1.0, bar.height()),
            theme.passing);
    return;
  }
  const AxisMap axis = runs.axis(row.parameter);
  auto const placeOf = [&](double value, double open) {
    const double place = axis.place(value);
    return std::isfinite(place) ? std::clamp(place, 0.0, 1.0) : open;
  };
  const double low = placeOf(row.low, 0.0);
  const double high = placeOf(row.high, 1.0);
  painter.fillRect(QRectF(bar.left() + low * bar.width(), bar.top(),
                          std::max(2.0, (high - low) * bar.width()), bar.height()),
                   theme.passing);
  painter.setPen(theme.faint);
  const double below = bar.bottom() + metrics.ascent() + 1.0;
  const QString first = shortNumber(axis.low());
  const QString last = shortNumber(axis.high());
  painter.drawText(QPointF(bar.left(), below), first);
  painter.drawText(QPointF(bar.right() - metrics.horizontalAdvance(last), below), last);
}

void BoxLimits::paintEvent(QPaintEvent* event)
{
  QPainter painter(viewport());
  painter.fillRect(event->rect(), theme.paper);
  if (!box || !runs.ofDocument().isOpen()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const QRectF area(0.0, static_cast<double>(i) * rowHeight() - verticalScrollBar()->value(),
                      viewport()->width(), rowHeight());
    if (area.intersects(QRectF(event->rect()))) paintRow(painter, box->parameters[rows[i]], area);
  }
}

bool BoxLimits::viewportEvent(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !box) return QAbstractScrollArea::viewportEvent(event);
  auto* help = static_cast<QHelpEvent*>(event);
  const auto place = static_cast<std::size_t>((help->pos().y() + verticalScrollBar()->value()) / rowHeight());
  if (place >= rows.size()) {
    hidePlainTip();
    return true;
  }
  BoxParameter const& row = box->parameters[rows[place]];
  QString tip = QString::fromStdString(row.name) + ": " + limitsText(row);
  if (!std::isnan(row.quasiP))
    tip += "\nquasi-p " + QString::fromStdString(pText(row.quasiP)) +
           ": how likely a box without these limits would be as dense by chance";
  if (box->method.resamples > 0)
    tip += QString("\nrestricted in %1 of %2 halves of the runs")
               .arg(row.restrictedIn)
               .arg(box->method.resamples);
  showPlainTip(help->globalPos(), tip, viewport());
  return true;
}

void BoxLimits::resizeEvent(QResizeEvent*)
{
  relayout();
}

void BoxLimits::changeEvent(QEvent* event)
{
  QAbstractScrollArea::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  relayout();
}

} // namespace runsieve::app
