#include "app/explorer/charts/ChartFrame.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace runsieve::app {

namespace {

constexpr double smallMark = 0.55; ///< length of marks without a number, of that of the others

/// Whether numbers along an axis keep clear of one another.
bool areClear(std::vector<Tick> const& ticks, AxisMap const& map, double length, QFontMetricsF const& metrics,
              bool horizontal)
{
  double end = -1e9;
  const double gap = horizontal ? metrics.averageCharWidth() * 1.5 : metrics.height() * 0.1;
  for (Tick const& tick : ticks) {
    if (tick.label.isEmpty()) continue;
    const double half = 0.5 * (horizontal ? metrics.horizontalAdvance(tick.label) : metrics.height());
    const double place = map.place(tick.value) * length;
    if (place - half < end + gap) return false;
    end = place + half;
  }
  return true;
}

std::ptrdiff_t numbersOf(std::vector<Tick> const& ticks)
{
  return std::count_if(ticks.begin(), ticks.end(), [](Tick const& tick) { return !tick.label.isEmpty(); });
}

/// The same marks with numbers at the first and the last one that have them.
std::vector<Tick> endsOf(std::vector<Tick> ticks)
{
  const std::ptrdiff_t last = numbersOf(ticks) - 1;
  std::ptrdiff_t number = 0;
  for (Tick& tick : ticks) {
    if (tick.label.isEmpty()) continue;
    if (number > 0 && number < last) tick.label.clear();
    ++number;
  }
  return ticks;
}

/// As many numbers as there is room for.
std::vector<Tick> fittingTicks(ChartAxis const& axis, double length, QFontMetricsF const& metrics,
                               bool horizontal)
{
  if (!axis.texts.empty()) return axis.texts;
  if (length < 2.0) return {};
  const double wanted = horizontal ? metrics.averageCharWidth() * 9.0 : metrics.height() * 2.4;
  std::vector<Tick> ticks;
  const int first = std::clamp(static_cast<int>(length / wanted), horizontal ? 5 : 4, 12);
  for (int labels = first; labels >= 2; --labels) {
    ticks = ticksOf(axis.map, labels);
    if (numbersOf(ticks) >= 2 && areClear(ticks, axis.map, length, metrics, horizontal)) return ticks;
  }
  // Where neighbours have no room for their numbers, the outermost ones may.
  for (int labels = first; labels >= 2; --labels) {
    ticks = endsOf(ticksOf(axis.map, labels));
    if (numbersOf(ticks) == 2 && areClear(ticks, axis.map, length, metrics, horizontal)) return ticks;
  }
  // Not even two have room: the first one alone tells more than none.
  bool isFirst = true;
  for (Tick& tick : ticks) {
    if (!tick.label.isEmpty() && !std::exchange(isFirst, false)) tick.label.clear();
  }
  return ticks;
}

double widest(std::vector<Tick> const& ticks, QFontMetricsF const& metrics)
{
  double width = 0.0;
  for (Tick const& tick : ticks) width = std::max(width, metrics.horizontalAdvance(tick.label));
  return width;
}

/// A line one pixel wide there covers whole pixels.
double crisp(double place)
{
  return std::floor(place) + 0.5;
}

} // namespace

ChartFrame::ChartFrame(QRectF const& whole, ChartAxis horizontal, ChartAxis vertical, Theme const& theme,
                       double leastLeft)
    : outer(whole), x(std::move(horizontal)), y(std::move(vertical))
{
  const QFontMetricsF metrics(theme.font);
  const double text = metrics.height();
  const double height = std::max(outer.height() - below(x, theme) - 0.6 * text, 1.0);
  yTicks = fittingTicks(y, height, metrics, false);
  const double yNumbers = y.hasNumbers ? theme.tick + theme.gap + widest(yTicks, metrics) : theme.tick;
  const double yTitle = y.title.isEmpty() ? 0.0 : text + theme.gap;
  const double left = std::max(yNumbers + yTitle + theme.gap, leastLeft);
  // Half of the last number may stand beyond the axis.
  const double right = std::min(0.12 * outer.width(), metrics.averageCharWidth() * 3.0);
  const double top = std::ceil(outer.top() + 0.6 * text);
  const double start = std::ceil(outer.left() + left);
  inner = QRectF(start, top, std::max(std::floor(outer.right() - right) - start, 1.0),
                 std::max(std::floor(outer.top() + 0.6 * text + height) - top, 1.0));
  xTicks = fittingTicks(x, inner.width(), metrics, true);
}

double ChartFrame::below(ChartAxis const& horizontal, Theme const& theme)
{
  const double text = QFontMetricsF(theme.font).height();
  const double numbers = horizontal.hasNumbers ? theme.tick + theme.gap + text : theme.tick;
  return numbers + (horizontal.title.isEmpty() ? 0.0 : text + theme.gap);
}

void ChartFrame::paintHorizontal(QPainter& painter, Theme const& theme) const
{
  const QFontMetricsF metrics(theme.font);
  const double base = crisp(inner.bottom());
  painter.drawLine(QPointF(crisp(inner.left() - 1.0), base), QPointF(inner.right(), base));
  for (Tick const& tick : xTicks) {
    const double place = xAt(tick.value);
    const double length = tick.label.isEmpty() ? smallMark * theme.tick : theme.tick;
    painter.drawLine(QPointF(crisp(place), base), QPointF(crisp(place), base + length));
    if (!x.hasNumbers || tick.label.isEmpty()) continue;
    const double width = metrics.horizontalAdvance(tick.label);
    const double start =
        std::clamp(place - 0.5 * width, outer.left(), std::max(outer.left(), outer.right() - width));
    painter.drawText(QPointF(start, base + theme.tick + theme.gap + metrics.ascent()), tick.label);
  }
  if (x.title.isEmpty()) return;
  const QString title = elided(x.title, theme.font, inner.width());
  painter.drawText(QPointF(inner.center().x() - 0.5 * metrics.horizontalAdvance(title),
                           outer.bottom() - metrics.descent()),
                   title);
}

void ChartFrame::paintVertical(QPainter& painter, Theme const& theme) const
{
  const QFontMetricsF metrics(theme.font);
  const double base = crisp(inner.left() - 1.0);
  painter.drawLine(QPointF(base, inner.top()), QPointF(base, inner.bottom()));
  for (Tick const& tick : yTicks) {
    const double place = yAt(tick.value);
    const double length = tick.label.isEmpty() ? smallMark * theme.tick : theme.tick;
    painter.drawLine(QPointF(base - length, crisp(place)), QPointF(base, crisp(place)));
    if (!y.hasNumbers || tick.label.isEmpty()) continue;
    const double end = inner.left() - theme.tick - theme.gap;
    painter.drawText(QPointF(end - metrics.horizontalAdvance(tick.label),
                             place + 0.5 * (metrics.ascent() - metrics.descent())),
                     tick.label);
  }
  if (y.title.isEmpty()) return;
  // Titles of charts one above the other keep clear of one another.
  const QString title = elided(y.title, theme.font, outer.height() - 2.0 * theme.gap);
  const double half = 0.5 * metrics.horizontalAdvance(title) + theme.gap;
  const double middle =
      std::clamp(inner.center().y(), outer.top() + half, std::max(outer.top() + half, outer.bottom() - half));
  painter.save();
  painter.translate(outer.left() + metrics.ascent(), middle);
  painter.rotate(-90.0);
  painter.drawText(QPointF(theme.gap - half, 0.0), title);
  painter.restore();
}

void ChartFrame::paint(QPainter& painter, Theme const& theme) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  painter.setPen(QPen(theme.ink, theme.line, Qt::SolidLine, Qt::FlatCap));
  paintHorizontal(painter, theme);
  paintVertical(painter, theme);
  painter.restore();
}

} // namespace runsieve::app
