#include "app/explorer/parameters/PairCharts.h"

#include "app/explorer/parameters/PairsModel.h"
#include "app/explorer/parameters/ParameterNumbers.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

constexpr double leastWidth = 190.0;
constexpr double mostWidth = 340.0;

} // namespace

PairCharts::PairCharts(ParameterRuns& ofRuns, QWidget* parent)
    : QAbstractScrollArea(parent), runs(ofRuns), document(ofRuns.ofDocument()),
      theme(Theme::ofPalette(palette(), font()))
{
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName("Charts of the strongest pairs");
  setMinimumSize(180, 100);
  connect(&runs, &ParameterRuns::changed, viewport(), qOverload<>(&QWidget::update));
}

void PairCharts::show(std::vector<ParameterPair> wanted, std::size_t standsOut)
{
  pairs = std::move(wanted);
  marked = standsOut;
  relayout();
}

void PairCharts::relayout()
{
  const double width = viewport()->width();
  perRow = std::max(1, static_cast<int>(width / leastWidth));
  perRow = std::min<int>(perRow, std::max(1, static_cast<int>(pairs.size())));
  const double cellWidth = std::floor(std::min(width / perRow, mostWidth));
  size = {cellWidth, std::floor(0.8 * cellWidth + 2.0 * QFontMetricsF(theme.font).height())};
  const int rows = (static_cast<int>(pairs.size()) + perRow - 1) / perRow;
  const int height = static_cast<int>(rows * size.height());
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(40);
  viewport()->update();
}

QRectF PairCharts::cell(std::size_t place) const
{
  const auto column = static_cast<double>(place % static_cast<std::size_t>(perRow));
  const auto row = static_cast<double>(place / static_cast<std::size_t>(perRow));
  return {QPointF(column * size.width(), row * size.height() - verticalScrollBar()->value()), size};
}

PairAxis PairCharts::axisOf(std::size_t parameter) const
{
  return {titleOf(document.scan().parameters[parameter].label), runs.axis(parameter),
          runs.columns(parameter)};
}

void PairCharts::paintEvent(QPaintEvent* event)
{
  QPainter painter(viewport());
  painter.fillRect(event->rect(), theme.paper);
  if (!document.isOpen()) return;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const QRectF area = cell(i);
    if (!area.intersects(QRectF(event->rect()))) continue;
    if (i == marked) {
      painter.setPen(QPen(theme.gate, 1.0));
      painter.setBrush(Qt::NoBrush);
      painter.drawRect(area.adjusted(0.5, 0.5, -1.5, -1.5));
    }
    paintPair(painter, area, {pairHeadline(pairs[i])}, axisOf(pairs[i].firstParameter),
              axisOf(pairs[i].secondParameter), runs.passing(), runs.eligible(), theme, devicePixelRatioF());
  }
}

void PairCharts::resizeEvent(QResizeEvent*)
{
  relayout();
}

void PairCharts::changeEvent(QEvent* event)
{
  QAbstractScrollArea::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  relayout();
}

void PairCharts::mousePressEvent(QMouseEvent* event)
{
  for (std::size_t i = 0; i < pairs.size(); ++i)
    if (cell(i).contains(event->localPos())) {
      Q_EMIT chosen(i);
      return;
    }
}

} // namespace runsieve::app
