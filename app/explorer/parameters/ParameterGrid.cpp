#include "app/explorer/parameters/ParameterGrid.h"

#include "app/explorer/parameters/ParameterNumbers.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double leastWidth = 176.0; ///< of a readable chart, texts aside
constexpr double mostWidth = 380.0;
constexpr int patience = 25; ///< ms of placing runs before what is there is shown

} // namespace

ParameterGrid::ParameterGrid(ParameterRuns& ofRuns, QWidget* parent)
    : ParameterArea(ofRuns, "Charts of the parameters", parent),
      feature(document), scene{runs, feature, spans, theme}, charts(scene)
{
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  theme = themeOf(*this);
  relayout();
}

Theme ParameterGrid::themeOf(QWidget const& widget) const
{
  QFont font = widget.font();
  if (font.pointSizeF() > 0.0)
    font.setPointSizeF(0.9 * font.pointSizeF());
  else
    font.setPixelSize(std::max(1, static_cast<int>(0.9 * font.pixelSize())));
  return Theme::ofPalette(widget.palette(), font);
}

void ParameterGrid::reset()
{
  hovered.reset();
  ParameterArea::reset();
}

double ParameterGrid::neededWidth() const
{
  // Where counts don't fit beside the difference they are left out; two charts side by side tell more.
  return std::max(leastWidth, QFontMetricsF(theme.font).horizontalAdvance("d -0.00, p 0.00001 n.s. "));
}

void ParameterGrid::relayout()
{
  charts.clear();
  const double width = viewport()->width();
  const std::size_t count = runs.order().size();
  perRow = std::max(1, static_cast<int>(width / neededWidth()));
  const double cellWidth = std::floor(std::min(width / perRow, mostWidth));
  const double line = QFontMetricsF(theme.font).height();
  size = {cellWidth, std::floor(0.44 * cellWidth + 4.8 * line)};
  const std::size_t rows = (count + static_cast<std::size_t>(perRow) - 1) / static_cast<std::size_t>(perRow);
  const int height = static_cast<int>(static_cast<double>(rows) * size.height());
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(std::max(1, static_cast<int>(size.height() / 4.0)));
  refresh();
}

void ParameterGrid::refresh()
{
  spans = spansOf(document);
  viewport()->update();
}

QRectF ParameterGrid::cellAtPlace(std::size_t place) const
{
  const auto column = static_cast<double>(place % static_cast<std::size_t>(perRow));
  const auto row = static_cast<double>(place / static_cast<std::size_t>(perRow));
  return {QPointF(column * size.width(), row * size.height() - verticalScrollBar()->value()), size};
}

QRectF ParameterGrid::cell(std::size_t parameter) const
{
  return cellAtPlace(placeInOrder(parameter));
}

ParameterChart& ParameterGrid::chart(std::size_t parameter)
{
  feature.update();
  scene.ratio = devicePixelRatioF();
  return charts.at(parameter, size);
}

QRectF ParameterGrid::plot(std::size_t parameter)
{
  return chart(parameter).plot().translated(cell(parameter).topLeft());
}

QRectF ParameterGrid::row(std::size_t parameter, std::size_t text)
{
  const TextBarRows rows = chart(parameter).bars();
  return rows.place(rows.rowOf(text)).translated(cell(parameter).topLeft());
}

std::optional<std::size_t> ParameterGrid::parameterAt(QPointF const& at) const
{
  const double y = at.y() + verticalScrollBar()->value();
  if (at.x() < 0.0 || y < 0.0 || at.x() >= size.width() * perRow) return std::nullopt;
  const auto place = static_cast<std::size_t>(y / size.height()) * static_cast<std::size_t>(perRow) +
                     static_cast<std::size_t>(at.x() / size.width());
  return place < runs.order().size() ? std::optional(runs.order()[place]) : std::nullopt;
}

std::unique_ptr<GateHold> ParameterGrid::holdAt(QPointF const& at, std::size_t parameter,
                                                Qt::KeyboardModifiers modifiers)
{
  return chart(parameter).holdAt(at - originOf(parameter), modifiers);
}

void ParameterGrid::paintEvent(QPaintEvent* event)
{
  QPainter painter(viewport());
  painter.fillRect(event->rect(), theme.paper);
  if (!document.isOpen()) return;
  if (runs.order().empty()) {
    painter.setPen(theme.faint);
    painter.setFont(theme.font);
    painter.drawText(QRectF(viewport()->rect()).adjusted(12, 12, -12, -12),
                     Qt::AlignCenter | Qt::TextWordWrap, "This scan has no parameters.");
    return;
  }
  const bool isComplete = placeVisible(event->rect());
  std::vector<std::size_t> visible;
  for (std::size_t place = 0; place < runs.order().size(); ++place) {
    const QRectF area = cellAtPlace(place);
    if (area.intersects(QRectF(viewport()->rect()))) visible.push_back(runs.order()[place]);
    if (area.intersects(QRectF(event->rect()))) paintCell(painter, runs.order()[place], area);
  }
  std::sort(visible.begin(), visible.end());
  charts.keepOnly(visible);
  if (!isComplete) QTimer::singleShot(0, viewport(), qOverload<>(&QWidget::update));
}

bool ParameterGrid::placeVisible(QRect const& visible) const
{
  QElapsedTimer elapsed;
  elapsed.start();
  for (std::size_t place = 0; place < runs.order().size(); ++place) {
    const std::size_t parameter = runs.order()[place];
    if (!cellAtPlace(place).intersects(QRectF(visible)) || isPlaced(parameter)) continue;
    if (elapsed.elapsed() > patience) return false;
    static_cast<void>(runs.columns(parameter));
  }
  return true;
}

bool ParameterGrid::isPlaced(std::size_t parameter) const
{
  return document.scan().parameters[parameter].isText() || runs.isPlaced(parameter);
}

void ParameterGrid::paintCell(QPainter& painter, std::size_t parameter, QRectF const& area)
{
  QColor ground = theme.paper;
  if (hovered == parameter) {
    constexpr double share = 0.05; // of ink
    auto const mixed = [](int paper, int ink) { return static_cast<int>(paper + share * (ink - paper)); };
    ground = QColor(mixed(ground.red(), theme.ink.red()), mixed(ground.green(), theme.ink.green()),
                    mixed(ground.blue(), theme.ink.blue()));
  }
  if (isPlaced(parameter)) {
    // From a whole device pixel on, so that images of charts stay sharp.
    const double ratio = devicePixelRatioF();
    painter.save();
    painter.translate(std::round(area.left() * ratio) / ratio, std::round(area.top() * ratio) / ratio);
    chart(parameter).paint(painter, ground);
    painter.restore();
  }
  if (!hasFocus() || current() != parameter) return;
  painter.setPen(QPen(theme.gate, 1.0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(area.adjusted(0.5, 0.5, -1.5, -1.5));
}

void ParameterGrid::prepare()
{
  // In slices, between which events go on.
  if (!document.isOpen() || document.state().view.outputs.empty()) return;
  if (!document.prepareGate(document.state().view.outputs.front()))
    QTimer::singleShot(0, this, &ParameterGrid::prepare);
}

} // namespace runsieve::app
