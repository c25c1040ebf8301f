#include "app/explorer/runs/RunsLegend.h"

#include "app/explorer/controls/PlainText.h"

#include <QPainter>

#include <utility>

namespace runsieve::app {

RunsLegend::RunsLegend(QWidget* parent) : QWidget(parent)
{
  setAccessibleName("Legend");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void RunsLegend::setLines(std::vector<LegendLine> shown)
{
  lines = std::move(shown);
  QStringList texts;
  for (LegendLine const& line : lines) texts << legendText(line);
  setToolTip(toolTipText(texts.join('\n')));
  setAccessibleDescription(texts.join("; "));
  update();
}

QSize RunsLegend::sizeHint() const
{
  return {0, fontMetrics().height()};
}

void RunsLegend::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  paintLegend(painter, rect(), lines, Theme::ofPalette(palette(), font()));
}

} // namespace runsieve::app
