#include "app/explorer/parameters/ParallelView.h"

#include "app/explorer/parameters/ParallelRuns.h"

#include <QFontMetricsF>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double leastStep = 84.0; ///< where names and numbers can be read
constexpr double mostStep = 240.0;

} // namespace

ParallelView::ParallelView(ParameterRuns& ofRuns, QWidget* parent)
    : ParameterArea(ofRuns, "Parallel coordinates of the parameters", parent)
{
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumSize(200, 150);
  connect(&picture, &RunsPicture::changed, viewport(), qOverload<>(&QWidget::update));
  relayout();
}

void ParallelView::reset()
{
  pressedRun.reset();
  ParameterArea::reset();
}

void ParallelView::relayout()
{
  const auto count = static_cast<double>(runs.order().size());
  const double width = viewport()->width();
  step = count > 0.0 ? std::clamp(width / count, leastStep, mostStep) : leastStep;
  const int needed = static_cast<int>(std::ceil(count * step));
  horizontalScrollBar()->setRange(0, std::max(0, needed - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(static_cast<int>(step));
  refresh();
}

void ParallelView::refresh()
{
  if (!isVisible()) return;
  spans = spansOf(document);
  requestPicture();
  viewport()->update();
}

QRectF ParallelView::band() const
{
  const double line = QFontMetricsF(theme.font).height();
  return QRectF(viewport()->rect()).adjusted(0.0, 2.0 * line + 10.0 + line, 0.0, -(line + 10.0));
}

double ParallelView::xOf(std::size_t place) const
{
  return (static_cast<double>(place) + 0.5) * step - horizontalScrollBar()->value();
}

QLineF ParallelView::axisLine(std::size_t parameter) const
{
  const double x = xOf(placeInOrder(parameter));
  return {QPointF(x, band().bottom()), QPointF(x, band().top())};
}

QRectF ParallelView::placeOf(std::size_t parameter) const
{
  return {xOf(placeInOrder(parameter)) - 0.5 * step, band().top(), step, band().height()};
}

SpanAxis ParallelView::spanAxis(std::size_t parameter) const
{
  return {parameter, runs.axis(parameter), band().bottom(), band().top()};
}

TextBarRows ParallelView::textRowsOf(std::size_t parameter) const
{
  constexpr double left = 8.0; // gates on texts must not cover them, which stand to the right
  const QRectF area = band();
  return TextBarRows::upwards({xOf(placeInOrder(parameter)) - left, area.top(), left - 1.0, area.height()},
                              document.scan().parameters[parameter]);
}

void ParallelView::requestPicture()
{
  auto const& order = runs.order();
  const QRectF area = band();
  if (!document.isOpen() || order.size() < 2 || area.height() < 10.0) {
    picture.request({});
    return;
  }
  // One axis beyond each side, whose lines come into view.
  const double left = horizontalScrollBar()->value();
  firstShown = static_cast<std::size_t>(std::max(0.0, std::floor(left / step - 0.5)));
  lastShown =
      std::min(order.size() - 1, static_cast<std::size_t>(std::ceil((left + viewport()->width()) / step)));
  const std::vector<std::size_t> shown(order.begin() + static_cast<std::ptrdiff_t>(firstShown),
                                       order.begin() + static_cast<std::ptrdiff_t>(lastShown) + 1);
  std::vector<bool> logs;
  for (std::size_t const parameter : shown)
    logs.push_back(!document.scan().parameters[parameter].isText() && runs.isLogarithmic(parameter));
  if (linesOf != document.sharedScan() || linesFor != shown || linesLog != logs) {
    lines = parallelRuns(runs, shown);
    linesOf = document.sharedScan();
    linesFor = shown;
    linesLog = logs;
  }
  RunsRequest request;
  const double ratio = devicePixelRatioF();
  request.scan = lines;
  request.time = AxisMap(0.0, static_cast<double>(shown.size() - 1));
  request.value = AxisMap(0.0, 1.0);
  request.size = (QSizeF(xOf(lastShown) - xOf(firstShown), area.height()) * ratio)
                     .toSize()
                     .boundedTo(QSize(RunCoverage::largestSize, RunCoverage::largestSize));
  request.width = ratio;
  request.dark = theme.dark;
  const bool shades = document.state().view.runsLook != RunsLook::Lines;
  auto const opacity = [](std::size_t count) {
    return std::clamp(5.5 / std::sqrt(count + 1.0), 0.055, 0.67);
  };
  const bool sieves = document.sieves();
  if (!sieves || document.state().view.focus != Focus::Hidden)
    request.layers.push_back({runs.eligible(), theme.all, shades, opacity(runs.eligible().size())});
  if (sieves)
    request.layers.push_back({runs.passing(), theme.passing, shades, opacity(document.passing().count())});
  picture.request(std::move(request));
}

void ParallelView::showEvent(QShowEvent* event)
{
  QAbstractScrollArea::showEvent(event);
  relayout();
}

void ParallelView::scrollContentsBy(int, int)
{
  refresh();
}

} // namespace runsieve::app
