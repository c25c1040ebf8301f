#include "app/explorer/parameters/BoxPathChart.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PlainTip.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

QString stepText(BoxPathStep const& step)
{
  const QString name = QString::fromStdString(step.name);
  switch (step.side) {
  case BoxSide::None:
    return "all runs";
  case BoxSide::Low:
    return QString("%1 at least %2").arg(name, numberText(step.limit));
  case BoxSide::High:
    return QString("%1 at most %2").arg(name, numberText(step.limit));
  case BoxSide::Text:
    return QString("%1 is not %2").arg(name, QString::fromStdString(step.text));
  }
  return {};
}

} // namespace

BoxPathChart::BoxPathChart(QWidget* parent) : QWidget(parent), theme(Theme::ofPalette(palette(), font()))
{
  setAccessibleName("Coverage and density along the path of boxes");
}

void BoxPathChart::show(std::shared_ptr<BoxOfRuns const> wanted)
{
  box = std::move(wanted);
  update();
}

ChartFrame BoxPathChart::frame() const
{
  return {QRectF(rect()).adjusted(6.0, 4.0, -4.0, -4.0),
          {AxisMap(0.0, 1.0).widened(0.03), "coverage: share of the passing runs inside"},
          {AxisMap(0.0, 1.0).widened(0.03), "density: share that passes"},
          theme};
}

void BoxPathChart::paintHalves(QPainter& painter, ChartFrame const& axes) const
{
  if (box->coverage.count == 0 || box->density.count == 0) return;
  painter.setPen(QPen(theme.gate, 1.6));
  painter.drawLine(axes.at(box->coverage.low, box->density.median),
                   axes.at(box->coverage.high, box->density.median));
  painter.drawLine(axes.at(box->coverage.median, box->density.low),
                   axes.at(box->coverage.median, box->density.high));
}

void BoxPathChart::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  if (!box || box->path.empty()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  const ChartFrame axes = frame();
  const double base = axes.yAt(box->all.density);
  if (std::isfinite(base)) {
    painter.setPen(QPen(theme.faint, 1.0, Qt::DashLine));
    painter.drawLine(QPointF(axes.plot().left(), base), QPointF(axes.plot().right(), base));
  }
  QPolygonF line;
  for (BoxPathStep const& step : box->path) {
    const QPointF at = axes.at(step.quality.coverage, step.quality.density);
    if (std::isfinite(at.x()) && std::isfinite(at.y())) line << at;
  }
  painter.setPen(QPen(theme.all, 1.0));
  painter.drawPolyline(line);
  painter.setBrush(theme.all);
  for (QPointF const& at : line) painter.drawEllipse(at, 2.4, 2.4);
  paintHalves(painter, axes);
  const QPointF chosen = axes.at(box->quality.coverage, box->quality.density);
  if (std::isfinite(chosen.x()) && std::isfinite(chosen.y())) {
    painter.setPen(QPen(theme.paper, 1.5));
    painter.setBrush(theme.passing);
    const double r = 6.5;
    painter.drawPolygon(QPolygonF({chosen + QPointF(-r, 0.0), chosen + QPointF(0.0, -r),
                                   chosen + QPointF(r, 0.0), chosen + QPointF(0.0, r)}));
  }
  axes.paint(painter, theme);
}

QString BoxPathChart::tipAt(QPointF const& at) const
{
  constexpr double reach = 9.0;
  const ChartFrame axes = frame();
  double nearest = reach;
  QString tip;
  for (std::size_t i = 0; i < box->path.size(); ++i) {
    BoxPathStep const& step = box->path[i];
    const QPointF place = axes.at(step.quality.coverage, step.quality.density) - at;
    const double away = std::hypot(place.x(), place.y());
    if (!(away < nearest)) continue;
    nearest = away;
    tip = QString("step %1: %2\ncoverage %3, density %4\n%L5 runs, %6 restricted parameters")
              .arg(QString::number(i), stepText(step), shareText(step.quality.coverage),
                   shareText(step.quality.density))
              .arg(step.quality.runs)
              .arg(step.restricted);
  }
  if (tip.isEmpty())
    tip = "Each point is a box; from right to left they become smaller.\nDiamond: the box of the limits. "
          "Cross: "
          "boxes of halves of the runs, tried on the other halves.\nDashed: the density of all runs.";
  return tip;
}

bool BoxPathChart::event(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !box) return QWidget::event(event);
  auto* help = static_cast<QHelpEvent*>(event);
  showPlainTip(help->globalPos(), tipAt(help->pos()), this);
  return true;
}

void BoxPathChart::changeEvent(QEvent* event)
{
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  update();
}

} // namespace runsieve::app
