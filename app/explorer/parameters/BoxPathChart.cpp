#include "app/explorer/parameters/BoxPathChart.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PlainTip.h"

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

BoxPathPicture BoxPathChart::picture() const
{
  return {*box, QRectF(rect()).adjusted(6.0, 4.0, -4.0, -4.0), theme};
}

void BoxPathChart::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  if (box && !box->path.empty()) picture().paint(painter);
}

QString BoxPathChart::tipAt(QPointF const& at) const
{
  constexpr double reach = 9.0;
  const ChartFrame axes = picture().frame();
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
    tip = "Each point is a box; from right to left they become smaller. Numbers: parameters that are "
          "restricted.\nDiamond: the box of the limits. Ring: the step of which it was made. Cross: boxes of "
          "halves of the runs, tried on the other halves.\nDashed: the density of all runs.";
  return tip;
}

bool BoxPathChart::event(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !box || box->path.empty()) return QWidget::event(event);
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
